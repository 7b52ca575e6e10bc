#pragma once

/// GIF files put together by hand, with codes that never make use of the compression.

#include "support.h"

namespace codecs_test {

struct GifFrameRecipe {
    std::uint16_t left = 0;
    std::uint16_t top = 0;
    std::uint16_t width = 1;
    std::uint16_t height = 1;
    ByteVector indices; ///< in the order in which they are stored
    bool interlaced = false;
    ByteVector colors{}; ///< a table of its own, of 4 colours
    int transparentIndex = -1;
    int disposal = 0;
    std::uint16_t hundredths = 0; ///< of a second
};

class GifFile {
public:
    /// With a table of 4 colours: red, green, blue, white unless others are given.
    GifFile(std::uint16_t width, std::uint16_t height, const ByteVector& colors = fourColors);

    GifFile& repeats(std::uint16_t count);
    GifFile& comment(std::string_view text);
    GifFile& frame(const GifFrameRecipe& recipe);
    ByteVector end(); ///< the file, with its end

    static const ByteVector fourColors;

private:
    ByteVector bytes_;
};

/// The 2-bit pixels as blocks, led by the number of bits.
ByteVector gif_codes(const ByteVector& indices);

/// The red, green, blue of all pixels of the first picture, as the program giftopnm reads them;
/// `alpha` gets 0 and 255 where asked for.
ByteVector pixels_by_giftopnm(Bytes file, ByteVector* alpha = nullptr);

/// The pixels behind the header of a PGM or PPM file of up to 255; fails the test otherwise.
ByteVector portable_pixels(const ByteVector& file);
ByteVector portable_pixmap(std::uint32_t width, std::uint32_t height, const ByteVector& rgb);

} // namespace codecs_test
