#pragma once

/// EXIF blocks: TIFF-structured, without the "Exif" marker.

#include "cocoa/codecs/codec.h"

namespace cocoa::codecs {

/// What an EXIF block says that bears on showing the image. A broken block says nothing.
struct ExifSummary {
    int orientation = 1; ///< 1 to 8
    double dpiX = 0;     ///< 0 when it does not say
    double dpiY = 0;
};
ExifSummary exif_summary(Bytes block);

/// The block with another orientation (1 to 8), everything else byte for byte as it was, maker
/// notes included. A block that states no orientation is given back unchanged, since 1 is what it
/// means.
std::vector<std::uint8_t> exif_with_orientation(Bytes block, int orientation);

} // namespace cocoa::codecs
