#pragma once

/// Encoded images put together without AppKit.

#include "support.h"

namespace appkit_test {

/// 8-bit PNG of 2 by 2: red, green; blue, white.
ByteVector fourColorPNG();
/// 8-bit RGBA PNG of one pixel.
ByteVector onePixelPNG(const Pixel& pixel);
ByteVector pngWithDensity(std::uint32_t pixelsAMeterX, std::uint32_t pixelsAMeterY);

/// 32 by 16 pixels in quarters: red, green; blue, white. Stored as they are, with an EXIF block.
ByteVector quarteredJPEG(std::uint8_t orientation);
ByteVector inkJPEG(); ///< CMYK, 8 by 8 of full magenta

/// Grey pages of 3 by 2 (1 to 6) and 1 by 1 (9).
ByteVector twoPageTIFF();
/// RGB, 3 by 2, samples 1 to 18, with an orientation.
ByteVector turnedTIFF(std::uint8_t orientation);
ByteVector tiffWithDensity(std::uint32_t dotsAnInch);
ByteVector premultipliedTIFF(const Pixel& pixel);

} // namespace appkit_test
