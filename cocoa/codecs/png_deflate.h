#pragma once

/// PNG's image data by libdeflate, which takes a fraction of zlib's time but all bytes at once.

#include "cocoa/codecs/output.h"

namespace cocoa::codecs {

/// Whether the image is of a layout, and of a size, that the functions below are for: 8-bit samples
/// that are not interlaced.
bool fits_png_deflate(const PixelLayout& layout);

/// Appends the rows as one IDAT chunk. False, with nothing appended, when memory runs out.
bool append_png_image_data(const Picture& picture, Output& output);

/// Decodes the IDAT chunks of a file, whose chunks are known to be whole, into rows. False when
/// there is something the matter with them; the rows are then untouched.
bool read_png_image_data(Bytes file, const PixelLayout& layout, std::uint8_t* pixels,
                         std::size_t rowBytes);

} // namespace cocoa::codecs
