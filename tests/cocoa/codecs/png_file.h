#pragma once

/// PNG files put together and taken apart by hand, without the library that the codec uses.

#include "support.h"

namespace codecs_test {

enum PngColor : std::uint8_t {
    PngGray = 0,
    PngRGB = 2,
    PngPalette = 3,
    PngGrayAlpha = 4,
    PngRGBA = 6
};

std::uint32_t crc_of(Bytes bytes);
/// A zlib stream of stored blocks.
ByteVector stored_zlib(Bytes content);

class PngFile {
public:
    PngFile(std::uint32_t width, std::uint32_t height, int bits, PngColor color, int interlace = 0);

    PngFile& chunk(std::string_view type, const ByteVector& content);
    /// The image data: unfiltered rows.
    PngFile& rows(const std::vector<ByteVector>& rows);
    /// The file, with its end.
    ByteVector end();

private:
    ByteVector bytes_;
};

/// What stands in a file that is not interlaced; a wrong checksum or filter fails the test.
struct PngContent {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int bits = 0;
    int color = 0;
    int interlace = 0;
    std::vector<std::pair<std::string, ByteVector>> chunks;
    ByteVector samples; ///< unfiltered rows, as the file has them

    ByteVector chunk(std::string_view type) const;
};
PngContent take_apart(Bytes file);

} // namespace codecs_test
