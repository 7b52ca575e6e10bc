#pragma once

/// The pixels of CoreGraphics images in the layouts of bitmaps.

#include "cocoa/AppKit/bitmap_layout.h"

#include <CoreGraphics/CoreGraphics.h>

namespace cocoa::appkit {

/// Copies an image's samples as they are where a bitmap can have them so, else draws the image as
/// 8-bit premultiplied RGBA. False for null and when there is not enough memory.
bool copyPixels(CGImageRef image, BitmapLayout& layout, BitmapPixels& pixels);

} // namespace cocoa::appkit
