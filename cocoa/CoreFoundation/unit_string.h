#pragma once

/// Strings of any UTF-16 units.

#import <Foundation/Foundation.h>

#include <string>

namespace cocoa {

/// A new string, which the caller owns, of just these units. Foundation's own refuse unpaired
/// surrogates and drop a byte order mark at the start; Cocoa's do not.
NSString* newStringOfUnits(std::u16string_view units);

} // namespace cocoa
