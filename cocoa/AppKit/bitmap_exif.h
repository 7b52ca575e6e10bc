#pragma once

/// The camera's settings of a picture, as image properties.

#import <Foundation/Foundation.h>

#include "cocoa/codecs/codec.h"

namespace cocoa::appkit {

/// The fields of an EXIF block by their names: NSNumbers, NSStrings, and NSArrays of NSNumbers.
/// Autoreleased; nil where there are none.
NSDictionary* exifDictionary(codecs::Bytes block);

/// The way back; what a dictionary holds that no camera could have meant is left out. Empty when
/// that is everything.
std::vector<std::uint8_t> exifBlock(NSDictionary* dictionary);

} // namespace cocoa::appkit
