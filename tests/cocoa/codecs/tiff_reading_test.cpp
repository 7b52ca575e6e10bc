#include "tiff_file.h"

#include <bit>

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::ElementsAre;
using testing::Optional;

PixelLayout layout(std::uint32_t width, std::uint32_t height, ColorModel model, Alpha alpha,
                   int bits) {
    return {width, height, model, alpha, static_cast<std::uint8_t>(bits)};
}

/// Every test runs on files of both byte orders.
class TiffReading : public testing::TestWithParam<ByteOrder> {
protected:
    static ByteVector file(const TiffImage& image) {
        return TiffFile(GetParam()).page(image).bytes();
    }
    static TiffImage gray(std::uint32_t width, std::uint32_t height, std::uint16_t bits) {
        return {width, height, PHOTOMETRIC_MINISBLACK, 1, bits};
    }
    static TiffImage rgb(std::uint32_t width, std::uint32_t height, std::uint16_t samples = 3,
                         std::uint16_t bits = 8) {
        return {width, height, PHOTOMETRIC_RGB, samples, bits};
    }
};
INSTANTIATE_TEST_SUITE_P(Order, TiffReading, testing::Values(ByteOrder::Little, ByteOrder::Big),
                         [](const auto& orders) {
                             return orders.param == ByteOrder::Little ? "Little" : "Big";
                         });

TEST_P(TiffReading, GivesOneBitGrayPacked) {
    const auto data = file(gray(10, 2, 1).data({0b10110000, 0b01000000, 0xFF, 0x80}));
    EXPECT_EQ(header(data)->layout, layout(10, 2, ColorModel::Gray, Alpha::None, 1));
    EXPECT_THAT(decode(data), Optional(ElementsAre(0b10110000, 0b01000000, 0xFF, 0x80)));
}

TEST_P(TiffReading, GivesTwoBitGrayPacked) {
    const auto data = file(gray(3, 2, 2).data({0b00011000, 0b11100100}));
    EXPECT_EQ(header(data)->layout, layout(3, 2, ColorModel::Gray, Alpha::None, 2));
    EXPECT_THAT(decode(data), Optional(ElementsAre(0b00011000, 0b11100100)));
}

TEST_P(TiffReading, GivesFourBitGrayPacked) {
    const auto data = file(gray(3, 1, 4).data({0x1A, 0xF0}));
    EXPECT_EQ(header(data)->layout, layout(3, 1, ColorModel::Gray, Alpha::None, 4));
    EXPECT_THAT(decode(data), Optional(ElementsAre(0x1A, 0xF0)));
}

TEST_P(TiffReading, GivesEightBitGrayFromTheTop) {
    const auto data = file(tiny_gray());
    EXPECT_EQ(header(data)->layout, layout(3, 2, ColorModel::Gray, Alpha::None, 8));
    EXPECT_THAT(decode(data), Optional(ElementsAre(1, 2, 3, 4, 5, 6)));
}

TEST_P(TiffReading, GivesSixteenBitGrayInTheMachinesByteOrder) {
    const auto data = file(gray(2, 1, 16).data(samples_16(GetParam(), {0x1234, 0xFEDC})));
    EXPECT_EQ(header(data)->layout, layout(2, 1, ColorModel::Gray, Alpha::None, 16));
    EXPECT_EQ(decode(data), words({0x1234, 0xFEDC}));
}

TEST_P(TiffReading, TurnsGrayWhoseWhiteIsZeroAround) {
    TiffImage bits(10, 1, PHOTOMETRIC_MINISWHITE, 1, 1);
    EXPECT_THAT(decode(file(bits.data({0b10110000, 0b01000000}))),
                Optional(ElementsAre(0b01001111, 0b10000000)));
    TiffImage bytes(2, 1, PHOTOMETRIC_MINISWHITE, 1, 8);
    EXPECT_THAT(decode(file(bytes.data({0, 200}))), Optional(ElementsAre(255, 55)));
    TiffImage wide(2, 1, PHOTOMETRIC_MINISWHITE, 1, 16);
    EXPECT_EQ(decode(file(wide.data(samples_16(GetParam(), {0, 0x1234})))),
              words({0xFFFF, 0xEDCB}));
}

TEST_P(TiffReading, LeavesTheAlphaBesideTurnedGrayAlone) {
    TiffImage image(2, 1, PHOTOMETRIC_MINISWHITE, 2, 8);
    image.shorts(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_UNASSALPHA}).data({0, 10, 200, 20});
    EXPECT_THAT(decode(file(image)), Optional(ElementsAre(255, 10, 55, 20)));
}

TEST_P(TiffReading, TurnsPackedGrayWithAlphaAround) {
    TiffImage image(2, 1, PHOTOMETRIC_MINISWHITE, 2, 4);
    image.shorts(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_UNASSALPHA}).data({0x1A, 0xF3});
    EXPECT_EQ(header(file(image))->layout, layout(2, 1, ColorModel::Gray, Alpha::Straight, 4));
    EXPECT_THAT(decode(file(image)), Optional(ElementsAre(0xEA, 0x03)));
}

TEST_P(TiffReading, GivesRGB) {
    const auto data = file(rgb(2, 2).data({255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}));
    EXPECT_EQ(header(data)->layout, layout(2, 2, ColorModel::RGB, Alpha::None, 8));
    EXPECT_THAT(decode(data),
                Optional(ElementsAre(255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255)));
}

TEST_P(TiffReading, GivesSixteenBitRGB) {
    const auto data = file(rgb(1, 1, 3, 16).data(samples_16(GetParam(), {0x0102, 0x0304, 0xF506})));
    EXPECT_EQ(header(data)->layout, layout(1, 1, ColorModel::RGB, Alpha::None, 16));
    EXPECT_EQ(decode(data), words({0x0102, 0x0304, 0xF506}));
}

TEST_P(TiffReading, GivesAssociatedAlphaAsPremultiplied) {
    const auto data = file(rgb(2, 1, 4)
                               .shorts(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_ASSOCALPHA})
                               .data({1, 2, 3, 4, 50, 60, 70, 80}));
    EXPECT_EQ(header(data)->layout, layout(2, 1, ColorModel::RGB, Alpha::Premultiplied, 8));
    EXPECT_THAT(decode(data), Optional(ElementsAre(1, 2, 3, 4, 50, 60, 70, 80)));
}

TEST_P(TiffReading, GivesUnassociatedAlphaAsStraight) {
    const auto data = file(rgb(1, 1, 4)
                               .shorts(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_UNASSALPHA})
                               .data({200, 150, 100, 50}));
    EXPECT_EQ(header(data)->layout, layout(1, 1, ColorModel::RGB, Alpha::Straight, 8));
    EXPECT_THAT(decode(data), Optional(ElementsAre(200, 150, 100, 50)));
}

TEST_P(TiffReading, DropsAnExtraSampleOfUnspecifiedMeaning) {
    const auto data = file(rgb(2, 1, 4)
                               .shorts(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_UNSPECIFIED})
                               .data({1, 2, 3, 99, 4, 5, 6, 99}));
    EXPECT_EQ(header(data)->layout, layout(2, 1, ColorModel::RGB, Alpha::None, 8));
    EXPECT_THAT(decode(data), Optional(ElementsAre(1, 2, 3, 4, 5, 6)));
}

TEST_P(TiffReading, FindsTheAlphaBehindAnotherExtraSample) {
    const auto data =
        file(rgb(1, 1, 5)
                 .shorts(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_UNSPECIFIED, EXTRASAMPLE_UNASSALPHA})
                 .data({1, 2, 3, 99, 4}));
    EXPECT_EQ(header(data)->layout, layout(1, 1, ColorModel::RGB, Alpha::Straight, 8));
    EXPECT_THAT(decode(data), Optional(ElementsAre(1, 2, 3, 4)));
}

TEST_P(TiffReading, GivesCMYKWithZeroForNoInk) {
    TiffImage image(2, 1, PHOTOMETRIC_SEPARATED, 4, 8);
    const auto data = file(image.data({0, 10, 20, 255, 1, 2, 3, 4}));
    EXPECT_EQ(header(data)->layout, layout(2, 1, ColorModel::CMYK, Alpha::None, 8));
    EXPECT_THAT(decode(data), Optional(ElementsAre(0, 10, 20, 255, 1, 2, 3, 4)));
}

TEST_P(TiffReading, GivesCMYKWithAlpha) {
    TiffImage image(1, 1, PHOTOMETRIC_SEPARATED, 5, 8);
    image.shorts(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_UNASSALPHA}).data({1, 2, 3, 4, 5});
    EXPECT_EQ(header(file(image))->layout, layout(1, 1, ColorModel::CMYK, Alpha::Straight, 8));
    EXPECT_THAT(decode(file(image)), Optional(ElementsAre(1, 2, 3, 4, 5)));
}

TEST_P(TiffReading, ExpandsAPaletteToRGB) {
    TiffImage image(3, 1, PHOTOMETRIC_PALETTE, 1, 2);
    image.shorts(TIFFTAG_COLORMAP, {0x1000, 0x2000, 0x3000, 0xFFFF,   // red
                                    0x4000, 0x5000, 0x6000, 0x0000,   // green
                                    0x7000, 0x8000, 0x9000, 0x1234}); // blue
    const auto data = file(image.data({0b11000100}));
    EXPECT_EQ(header(data)->layout, layout(3, 1, ColorModel::RGB, Alpha::None, 8));
    EXPECT_THAT(decode(data),
                Optional(ElementsAre(0xFF, 0, 0x12, 0x10, 0x40, 0x70, 0x20, 0x50, 0x80)));
}

TEST_P(TiffReading, TakesAPaletteOfSmallNumbersForOneOfEightBits) {
    TiffImage image(2, 1, PHOTOMETRIC_PALETTE, 1, 1);
    image.shorts(TIFFTAG_COLORMAP, {10, 255, 20, 0, 30, 7});
    EXPECT_THAT(decode(file(image.data({0b01000000}))),
                Optional(ElementsAre(10, 20, 30, 255, 0, 7)));
}

TEST_P(TiffReading, ExpandsAPaletteOfEightBits) {
    std::vector<std::uint32_t> colors(3 * 256);
    for (std::uint32_t i = 0; i < colors.size(); ++i)
        colors[i] = (i * 7 % 256) << 8;
    TiffImage image(2, 1, PHOTOMETRIC_PALETTE, 1, 8);
    image.shorts(TIFFTAG_COLORMAP, colors);
    EXPECT_THAT(decode(file(image.data({3, 200}))),
                Optional(ElementsAre(3 * 7, 259 * 7 % 256, 515 * 7 % 256, 200 * 7 % 256,
                                     456 * 7 % 256, 712 * 7 % 256)));
}

TEST_P(TiffReading, ReadsStripAfterStrip) {
    auto image = gray(2, 3, 8);
    image.longs(TIFFTAG_ROWSPERSTRIP, {2}).data({1, 2, 3, 4}).data({5, 6});
    EXPECT_THAT(decode(file(image)), Optional(ElementsAre(1, 2, 3, 4, 5, 6)));
}

TEST_P(TiffReading, PutsSeparatePlanesTogether) {
    auto image = rgb(2, 2);
    image.shorts(TIFFTAG_PLANARCONFIG, {PLANARCONFIG_SEPARATE})
        .data({1, 2, 3, 4})
        .data({11, 12, 13, 14})
        .data({21, 22, 23, 24});
    EXPECT_EQ(header(file(image))->layout, layout(2, 2, ColorModel::RGB, Alpha::None, 8));
    EXPECT_THAT(decode(file(image)),
                Optional(ElementsAre(1, 11, 21, 2, 12, 22, 3, 13, 23, 4, 14, 24)));
}

TEST_P(TiffReading, PutsPackedSeparatePlanesTogether) {
    auto image = rgb(3, 1, 3, 4);
    image.shorts(TIFFTAG_PLANARCONFIG, {PLANARCONFIG_SEPARATE})
        .data({0x12, 0x30})
        .data({0x45, 0x60})
        .data({0x78, 0x90});
    EXPECT_EQ(header(file(image))->layout, layout(3, 1, ColorModel::RGB, Alpha::None, 4));
    EXPECT_THAT(decode(file(image)), Optional(ElementsAre(0x14, 0x72, 0x58, 0x36, 0x90)));
}

/// A tile of 16 by 16 that starts with the given number and counts up.
ByteVector tile_from(int first, int samples = 1) {
    ByteVector content;
    for (int i = 0; i < 256 * samples; ++i)
        content.push_back(static_cast<std::uint8_t>(first + i));
    return content;
}

TEST_P(TiffReading, PutsTilesTogetherAndCutsThemAtTheEdges) {
    auto image = gray(18, 17, 8);
    image.shorts(TIFFTAG_TILEWIDTH, {16}).shorts(TIFFTAG_TILELENGTH, {16});
    const int starts[] = {1, 50, 100, 150};
    for (const int start : starts)
        image.data(tile_from(start));
    const auto pixels = decode(file(image));
    ASSERT_TRUE(pixels);
    for (std::size_t y = 0; y < 17; ++y) {
        for (std::size_t x = 0; x < 18; ++x) {
            const int start = starts[y / 16 * 2 + x / 16];
            const auto expected = static_cast<std::uint8_t>(start + y % 16 * 16 + x % 16);
            EXPECT_EQ((*pixels)[y * 18 + x], expected) << x << ", " << y;
        }
    }
}

TEST_P(TiffReading, PutsTilesOfSeparatePlanesTogether) {
    auto image = rgb(2, 1);
    image.shorts(TIFFTAG_TILEWIDTH, {16})
        .shorts(TIFFTAG_TILELENGTH, {16})
        .shorts(TIFFTAG_PLANARCONFIG, {PLANARCONFIG_SEPARATE})
        .data(tile_from(10))
        .data(tile_from(100))
        .data(tile_from(200));
    EXPECT_THAT(decode(file(image)), Optional(ElementsAre(10, 100, 200, 11, 101, 201)));
}

TEST_P(TiffReading, TakesTheHighHalfOfThirtyTwoBitSamples) {
    const auto data = file(gray(2, 1, 32).data(samples_32(GetParam(), {0x12345678, 0xFEDCBA98})));
    EXPECT_EQ(header(data)->layout, layout(2, 1, ColorModel::Gray, Alpha::None, 16));
    EXPECT_EQ(decode(data), words({0x1234, 0xFEDC}));
}

TEST_P(TiffReading, TurnsFloatsIntoSixteenBitsWithinBlackAndWhite) {
    auto image = gray(5, 1, 32);
    const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    image.shorts(TIFFTAG_SAMPLEFORMAT, {SAMPLEFORMAT_IEEEFP})
        .data(samples_32(GetParam(), {bits(0), bits(0.5F), bits(1), bits(7), bits(-3)}));
    EXPECT_EQ(header(file(image))->layout, layout(5, 1, ColorModel::Gray, Alpha::None, 16));
    EXPECT_EQ(decode(file(image)), words({0, 0x8000, 0xFFFF, 0xFFFF, 0}));
}

TEST_P(TiffReading, RefusesSignedSamples) {
    auto image = tiny_gray();
    ASSERT_TRUE(header(file(image)));
    EXPECT_FALSE(header(file(image.shorts(TIFFTAG_SAMPLEFORMAT, {SAMPLEFORMAT_INT}))));
}

TEST_P(TiffReading, RefusesSamplesOfTwelveBits) {
    EXPECT_FALSE(header(file(gray(2, 1, 12).data({1, 2, 3}))));
}

TEST_P(TiffReading, RefusesAPaletteWithoutColors) {
    TiffImage image(2, 1, PHOTOMETRIC_PALETTE, 1, 4);
    EXPECT_FALSE(header(file(image.data({0x01}))));
    image.shorts(TIFFTAG_COLORMAP, std::vector<std::uint32_t>(3 * 16, 0x1234));
    EXPECT_TRUE(header(file(image)));
}

TEST_P(TiffReading, GivesEveryDirectoryAsAPage) {
    TiffFile made(GetParam());
    made.page(tiny_gray());
    made.page(rgb(1, 1).data({7, 8, 9}));
    made.page(gray(10, 1, 1).data({0xAA, 0x80}));
    const auto data = made.bytes();
    ASSERT_EQ(open(data).reader->pageCount(), 3U);
    // Out of order, since a reader may be asked for any page at any time.
    EXPECT_THAT(decode(data, 2), Optional(ElementsAre(0xAA, 0x80)));
    EXPECT_THAT(decode(data, 0), Optional(ElementsAre(1, 2, 3, 4, 5, 6)));
    EXPECT_THAT(decode(data, 1), Optional(ElementsAre(7, 8, 9)));
    EXPECT_EQ(header(data, 1)->layout, layout(1, 1, ColorModel::RGB, Alpha::None, 8));
}

TEST_P(TiffReading, ReadsPagesInAnyOrderFromOneReader) {
    const auto data =
        TiffFile(GetParam()).page(tiny_gray()).page(rgb(1, 1).data({7, 8, 9})).bytes();
    const auto opened = open(data);
    for (const std::size_t page : {1U, 0U, 0U, 1U}) {
        ByteVector pixels(6);
        ASSERT_TRUE(opened.reader->read(page, 1, pixels.data(), 3));
        EXPECT_EQ(pixels[0], page == 0 ? 1 : 7);
    }
}

TEST_P(TiffReading, PassesOverADirectoryThatIsNoImage) {
    TiffImage mask(8, 1, PHOTOMETRIC_MASK, 1, 1);
    const auto data = TiffFile(GetParam()).page(mask.data({0xFF})).page(tiny_gray()).bytes();
    ASSERT_EQ(open(data).reader->pageCount(), 1U);
    EXPECT_THAT(decode(data), Optional(ElementsAre(1, 2, 3, 4, 5, 6)));
}

TEST_P(TiffReading, ReadsTheResolutionInInches) {
    auto image = tiny_gray();
    image.rational(TIFFTAG_XRESOLUTION, 600, 2).rational(TIFFTAG_YRESOLUTION, 301, 2);
    EXPECT_DOUBLE_EQ(header(file(image))->dpiX, 300) << "inches are the default";
    EXPECT_DOUBLE_EQ(header(file(image))->dpiY, 150.5);
    image.shorts(TIFFTAG_RESOLUTIONUNIT, {RESUNIT_INCH});
    EXPECT_DOUBLE_EQ(header(file(image))->dpiX, 300);
}

TEST_P(TiffReading, ReadsTheResolutionInCentimeters) {
    auto image = tiny_gray();
    image.rational(TIFFTAG_XRESOLUTION, 11811, 100)
        .rational(TIFFTAG_YRESOLUTION, 50, 1)
        .shorts(TIFFTAG_RESOLUTIONUNIT, {RESUNIT_CENTIMETER});
    EXPECT_DOUBLE_EQ(header(file(image))->dpiX, 300);
    EXPECT_DOUBLE_EQ(header(file(image))->dpiY, 127);
}

TEST_P(TiffReading, TakesAMissingOrUselessResolutionForUnset) {
    EXPECT_EQ(header(file(tiny_gray()))->dpiX, 0);
    auto image = tiny_gray();
    image.rational(TIFFTAG_XRESOLUTION, 300, 0).rational(TIFFTAG_YRESOLUTION, 0, 1);
    EXPECT_EQ(header(file(image))->dpiX, 0);
    EXPECT_EQ(header(file(image))->dpiY, 0);
    image.rational(TIFFTAG_XRESOLUTION, 2, 1).shorts(TIFFTAG_RESOLUTIONUNIT, {RESUNIT_NONE});
    EXPECT_EQ(header(file(image))->dpiX, 0);
}

TEST_P(TiffReading, ReadsTheOrientationAndLeavesTheRowsAsStored) {
    for (std::uint32_t orientation = 1; orientation <= 8; ++orientation) {
        const auto data = file(tiny_gray().shorts(TIFFTAG_ORIENTATION, {orientation}));
        EXPECT_EQ(header(data)->orientation, static_cast<int>(orientation));
        EXPECT_THAT(decode(data), Optional(ElementsAre(1, 2, 3, 4, 5, 6)));
    }
    EXPECT_EQ(header(file(tiny_gray()))->orientation, 1);
}

TEST_P(TiffReading, ReadsTheColorProfile) {
    const auto profile = noise(300, 5);
    EXPECT_EQ(header(file(tiny_gray().bytes(TIFFTAG_ICCPROFILE, profile)))->iccProfile, profile);
}

} // namespace
} // namespace codecs_test
