#pragma once

/// JPEG files made and read with the library's own calls, as a second opinion on the codec's use of
/// it.

#include "support.h"

#include <cstdio>

#include <jpeglib.h>

namespace codecs_test {

struct JpegRecipe {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    J_COLOR_SPACE given = JCS_RGB;
    J_COLOR_SPACE stored = JCS_YCbCr;
    int quality = 90;
    bool progressive = false;
    int restartRows = 0;
    std::optional<bool> adobeMarker; ///< unset: as the library does for the colours
    bool jfifMarker = true;
    int densityUnit = 0;
    std::uint16_t densityX = 1;
    std::uint16_t densityY = 1;
    std::vector<std::pair<int, ByteVector>> markers;
    ByteVector profile;
};

ByteVector make_jpeg(const JpegRecipe& recipe, const ByteVector& samples);

/// The decoded samples as the library gives them, in `colors` and at 1 / `reduction` of the size.
ByteVector read_jpeg(Bytes file, J_COLOR_SPACE colors, unsigned reduction = 1);

/// The content of an APP1 marker that holds an EXIF block.
ByteVector exif_marker(const ByteVector& block);

} // namespace codecs_test
