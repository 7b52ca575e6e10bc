#pragma once

/// Which icon of a freedesktop.org icon theme stands for which of AppKit's names.

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

namespace cocoa::appkit {

/// The names of icons for one of AppKit's names, the best first; empty for any other name.
std::vector<std::string> iconNamesFor(NSString* imageName);

} // namespace cocoa::appkit
