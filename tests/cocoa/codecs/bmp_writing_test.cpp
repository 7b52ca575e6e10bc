#include "gif_file.h"
#include "support.h"

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::HasSubstr;

PixelLayout layout(ColorModel model, std::uint32_t width, std::uint32_t height) {
    return {width, height, model, Alpha::None, 8};
}

/// As the program bmptopnm reads it.
ByteVector pixels_by_bmptopnm(const Encoded& file) {
    const TemporaryFolder folder;
    const auto result =
        run("bmptopnm -quiet " + folder.write("a.bmp", view(file)) + " > " + folder.path("a.pnm"));
    EXPECT_EQ(result.status, 0);
    return portable_pixels(folder.read("a.pnm"));
}

TEST(BmpWriting, KeepsPixelsForEveryWidthOfPadding) {
    for (const std::uint32_t width : {1U, 2U, 3U, 4U, 13U}) {
        const auto samples = noise(std::size_t{width} * 3 * 5, width);
        const Encoded file = encode(bmp, picture(layout(ColorModel::RGB, width, 5), samples));
        EXPECT_EQ(pixels_by_bmptopnm(file), samples);
        EXPECT_EQ(decode(view(file)), samples);
        EXPECT_EQ(file.size, 54 + (width * 3 + 3) / 4 * 4 * 5);
    }
}

TEST(BmpWriting, KeepsGrey) {
    const auto grays = noise(7 * 3, 9);
    ByteVector storage;
    const Encoded file =
        encode(bmp, padded_picture(layout(ColorModel::Gray, 7, 3), grays, storage));
    EXPECT_EQ(pixels_by_bmptopnm(file), grays);
}

TEST(BmpWriting, StatesSizeDepthAndResolution) {
    Picture page;
    const ByteVector samples(20 * 10 * 3, 1);
    page = picture(layout(ColorModel::RGB, 20, 10), samples);
    page.dpiX = 144;
    page.dpiY = 300;
    const Encoded file = encode(bmp, page);
    const TemporaryFolder folder;
    const std::string text = run("file " + folder.write("a.bmp", view(file))).output;
    EXPECT_THAT(text, HasSubstr("PC bitmap, Windows 3.x format, 20 x 10 x 24"));
    EXPECT_THAT(text, HasSubstr("resolution 5669 x 11811 px/m"));
    EXPECT_THAT(text, HasSubstr("cbSize 654, bits offset 54"));
}

TEST(BmpWriting, RefusesWhatTheFormatCannotHold) {
    const ByteVector samples(1000, 0);
    for (const PixelLayout& wrong : {PixelLayout{2, 2, ColorModel::CMYK, Alpha::None, 8},
                                     PixelLayout{2, 2, ColorModel::RGB, Alpha::Straight, 8},
                                     PixelLayout{2, 2, ColorModel::RGB, Alpha::None, 16},
                                     PixelLayout{0, 2, ColorModel::RGB, Alpha::None, 8}})
        EXPECT_FALSE(encode(bmp, picture(wrong, samples)));
    EXPECT_FALSE(bmp.encode({}, {}));
}

} // namespace
} // namespace codecs_test
