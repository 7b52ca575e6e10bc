#include "gif_file.h"

#include <gtest/gtest.h>

namespace codecs_test {

const ByteVector GifFile::fourColors{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};

GifFile::GifFile(std::uint16_t width, std::uint16_t height, const ByteVector& colors)
    : bytes_(bytes_of("GIF89a")) {
    append_16(bytes_, ByteOrder::Little, width);
    append_16(bytes_, ByteOrder::Little, height);
    append(bytes_, {static_cast<std::uint8_t>(colors.empty() ? 0 : 0x81), 0, 0});
    append(bytes_, colors);
}

GifFile& GifFile::repeats(std::uint16_t count) {
    append(bytes_, {0x21, 0xFF, 11});
    append(bytes_, bytes_of("NETSCAPE2.0"));
    append(bytes_, {3, 1});
    append_16(bytes_, ByteOrder::Little, count);
    append(bytes_, {0});
    return *this;
}

GifFile& GifFile::comment(std::string_view text) {
    append(bytes_, {0x21, 0xFE, static_cast<std::uint8_t>(text.size())});
    append(bytes_, bytes_of(text));
    append(bytes_, {0});
    return *this;
}

GifFile& GifFile::frame(const GifFrameRecipe& recipe) {
    const bool transparent = recipe.transparentIndex >= 0;
    append(bytes_, {0x21, 0xF9, 4});
    append(bytes_, {static_cast<std::uint8_t>(recipe.disposal << 2 | (transparent ? 1 : 0))});
    append_16(bytes_, ByteOrder::Little, recipe.hundredths);
    append(bytes_, {static_cast<std::uint8_t>(transparent ? recipe.transparentIndex : 0), 0});
    append(bytes_, {0x2C});
    for (const std::uint16_t side : {recipe.left, recipe.top, recipe.width, recipe.height})
        append_16(bytes_, ByteOrder::Little, side);
    append(bytes_, {static_cast<std::uint8_t>((recipe.colors.empty() ? 0 : 0x81) |
                                              (recipe.interlaced ? 0x40 : 0))});
    append(bytes_, recipe.colors);
    append(bytes_, gif_codes(recipe.indices));
    return *this;
}

ByteVector GifFile::end() {
    append(bytes_, {0x3B});
    return bytes_;
}

ByteVector gif_codes(const ByteVector& indices) {
    constexpr unsigned clear = 4;
    constexpr unsigned end = 5;
    ByteVector codes;
    unsigned bits = 0;
    int count = 0;
    const auto put = [&](unsigned code) {
        bits |= code << count;
        count += 3;
        for (; count >= 8; count -= 8, bits >>= 8)
            codes.push_back(static_cast<std::uint8_t>(bits));
    };
    for (std::size_t i = 0; i < indices.size(); ++i) {
        // A third code in a row would be one bit wider.
        if (i % 2 == 0) put(clear);
        put(indices[i]);
    }
    put(end);
    put(0);
    put(0);
    ByteVector blocks{2};
    for (std::size_t at = 0; at < codes.size(); at += 255) {
        const std::size_t size = std::min<std::size_t>(255, codes.size() - at);
        blocks.push_back(static_cast<std::uint8_t>(size));
        blocks.insert(blocks.end(), codes.begin() + static_cast<std::ptrdiff_t>(at),
                      codes.begin() + static_cast<std::ptrdiff_t>(at + size));
    }
    blocks.push_back(0);
    return blocks;
}

ByteVector pixels_by_giftopnm(Bytes file, ByteVector* alpha) {
    const TemporaryFolder folder;
    const std::string gif = folder.write("a.gif", file);
    const std::string alphaFile = folder.path("alpha");
    const std::string options = alpha ? "--alphaout=" + alphaFile + " " : "";
    const auto result =
        run("giftopnm -quiet " + options + gif + " | ppmtoppm > " + folder.path("a.ppm"));
    EXPECT_EQ(result.status, 0) << result.output;
    if (alpha) {
        EXPECT_EQ(run("pgmtopgm < " + alphaFile + " > " + folder.path("deep")).status, 0);
        *alpha = portable_pixels(folder.read("deep"));
    }
    return portable_pixels(folder.read("a.ppm"));
}

ByteVector portable_pixels(const ByteVector& file) {
    unsigned width = 0;
    unsigned height = 0;
    unsigned most = 0;
    int headerSize = 0;
    char kind = 0;
    const std::string text(file.begin(), file.end());
    const int fields =
        std::sscanf(text.c_str(), "P%c %u %u %u%n", &kind, &width, &height, &most, &headerSize);
    EXPECT_EQ(fields, 4);
    EXPECT_EQ(most, 255U);
    return {file.begin() + headerSize + 1, file.end()};
}

ByteVector portable_pixmap(std::uint32_t width, std::uint32_t height, const ByteVector& rgb) {
    ByteVector file =
        bytes_of("P6 " + std::to_string(width) + " " + std::to_string(height) + " 255\n");
    append(file, rgb);
    return file;
}

} // namespace codecs_test
