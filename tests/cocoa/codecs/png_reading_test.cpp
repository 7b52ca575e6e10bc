#include "png_file.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::ElementsAre;
using testing::Optional;

constexpr double inch = 0.0254; // metres

PixelLayout layout(std::uint32_t width, std::uint32_t height, ColorModel model, Alpha alpha,
                   int bits) {
    return {width, height, model, alpha, static_cast<std::uint8_t>(bits)};
}

ByteVector density(std::uint32_t x, std::uint32_t y, std::uint8_t unit) {
    ByteVector content;
    append_32(content, ByteOrder::Big, x);
    append_32(content, ByteOrder::Big, y);
    content.push_back(unit);
    return content;
}

ByteVector small_gray() { return PngFile(2, 2, 8, PngGray).rows({{1, 2}, {3, 4}}).end(); }

TEST(PngReading, GivesOneBitGrayPackedWithTheFirstPixelHigh) {
    const auto file =
        PngFile(10, 2, 1, PngGray).rows({{0b10110000, 0b01000000}, {0xFF, 0x80}}).end();
    EXPECT_EQ(header(file)->layout, layout(10, 2, ColorModel::Gray, Alpha::None, 1));
    EXPECT_THAT(decode(file), Optional(ElementsAre(0b10110000, 0b01000000, 0xFF, 0x80)));
}

TEST(PngReading, GivesTwoBitGrayPacked) {
    const auto file = PngFile(3, 2, 2, PngGray).rows({{0b00011000}, {0b11100100}}).end();
    EXPECT_EQ(header(file)->layout, layout(3, 2, ColorModel::Gray, Alpha::None, 2));
    EXPECT_THAT(decode(file), Optional(ElementsAre(0b00011000, 0b11100100)));
}

TEST(PngReading, GivesFourBitGrayPacked) {
    const auto file = PngFile(3, 1, 4, PngGray).rows({{0x1A, 0xF0}}).end();
    EXPECT_EQ(header(file)->layout, layout(3, 1, ColorModel::Gray, Alpha::None, 4));
    EXPECT_THAT(decode(file), Optional(ElementsAre(0x1A, 0xF0)));
}

TEST(PngReading, GivesEightBitGray) {
    EXPECT_EQ(header(small_gray())->layout, layout(2, 2, ColorModel::Gray, Alpha::None, 8));
    EXPECT_THAT(decode(small_gray()), Optional(ElementsAre(1, 2, 3, 4)));
}

TEST(PngReading, GivesSixteenBitGrayInTheMachinesByteOrder) {
    const auto file = PngFile(2, 1, 16, PngGray).rows({{0x12, 0x34, 0xFE, 0xDC}}).end();
    EXPECT_EQ(header(file)->layout, layout(2, 1, ColorModel::Gray, Alpha::None, 16));
    EXPECT_EQ(decode(file), words({0x1234, 0xFEDC}));
}

TEST(PngReading, GivesGrayWithStraightAlpha) {
    const auto file = PngFile(2, 1, 8, PngGrayAlpha).rows({{200, 10, 7, 255}}).end();
    EXPECT_EQ(header(file)->layout, layout(2, 1, ColorModel::Gray, Alpha::Straight, 8));
    EXPECT_THAT(decode(file), Optional(ElementsAre(200, 10, 7, 255)));
}

TEST(PngReading, GivesSixteenBitGrayWithAlpha) {
    const auto file = PngFile(1, 1, 16, PngGrayAlpha).rows({{0x01, 0x02, 0x03, 0x04}}).end();
    EXPECT_EQ(header(file)->layout, layout(1, 1, ColorModel::Gray, Alpha::Straight, 16));
    EXPECT_EQ(decode(file), words({0x0102, 0x0304}));
}

TEST(PngReading, GivesRowsFromTheTopAndSamplesAsRedGreenBlue) {
    const auto file =
        PngFile(2, 2, 8, PngRGB).rows({{255, 0, 0, 0, 255, 0}, {0, 0, 255, 255, 255, 255}}).end();
    EXPECT_EQ(header(file)->layout, layout(2, 2, ColorModel::RGB, Alpha::None, 8));
    EXPECT_THAT(decode(file),
                Optional(ElementsAre(255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255)));
}

TEST(PngReading, GivesSixteenBitRGB) {
    const auto file = PngFile(1, 1, 16, PngRGB).rows({{1, 2, 3, 4, 5, 6}}).end();
    EXPECT_EQ(header(file)->layout, layout(1, 1, ColorModel::RGB, Alpha::None, 16));
    EXPECT_EQ(decode(file), words({0x0102, 0x0304, 0x0506}));
}

TEST(PngReading, GivesRGBAWithStraightAlpha) {
    const auto file = PngFile(2, 1, 8, PngRGBA).rows({{255, 128, 64, 0, 9, 8, 7, 6}}).end();
    EXPECT_EQ(header(file)->layout, layout(2, 1, ColorModel::RGB, Alpha::Straight, 8));
    EXPECT_THAT(decode(file), Optional(ElementsAre(255, 128, 64, 0, 9, 8, 7, 6)));
}

TEST(PngReading, GivesSixteenBitRGBA) {
    const auto file = PngFile(1, 1, 16, PngRGBA).rows({{1, 2, 3, 4, 5, 6, 7, 8}}).end();
    EXPECT_EQ(header(file)->layout, layout(1, 1, ColorModel::RGB, Alpha::Straight, 16));
    EXPECT_EQ(decode(file), words({0x0102, 0x0304, 0x0506, 0x0708}));
}

class PngPaletteReading : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Bits, PngPaletteReading, testing::Values(1, 2, 4, 8));

TEST_P(PngPaletteReading, ExpandsToRGB) {
    const int bits = GetParam();
    const ByteVector entries0And1 =
        bits == 8 ? ByteVector{0, 1} : ByteVector{static_cast<std::uint8_t>(1 << (8 - 2 * bits))};
    const auto file = PngFile(2, 1, bits, PngPalette)
                          .chunk("PLTE", {10, 20, 30, 40, 50, 60})
                          .rows({entries0And1})
                          .end();
    EXPECT_EQ(header(file)->layout, layout(2, 1, ColorModel::RGB, Alpha::None, 8));
    EXPECT_THAT(decode(file), Optional(ElementsAre(10, 20, 30, 40, 50, 60)));
}

TEST(PngReading, GivesAPaletteWithTransparencyAsRGBA) {
    const auto file = PngFile(3, 1, 2, PngPalette)
                          .chunk("PLTE", {10, 20, 30, 40, 50, 60, 70, 80, 90})
                          .chunk("tRNS", {0, 99})
                          .rows({{0b00011000}})
                          .end();
    EXPECT_EQ(header(file)->layout, layout(3, 1, ColorModel::RGB, Alpha::Straight, 8));
    EXPECT_THAT(decode(file),
                Optional(ElementsAre(10, 20, 30, 0, 40, 50, 60, 99, 70, 80, 90, 255)));
}

TEST(PngReading, TurnsATransparentGrayIntoAlpha) {
    const auto file = PngFile(2, 1, 8, PngGray).chunk("tRNS", {0, 77}).rows({{77, 78}}).end();
    EXPECT_EQ(header(file)->layout, layout(2, 1, ColorModel::Gray, Alpha::Straight, 8));
    EXPECT_THAT(decode(file), Optional(ElementsAre(77, 0, 78, 255)));
}

TEST(PngReading, WidensPackedGrayWithATransparentGrayToEightBits) {
    const auto file = PngFile(3, 1, 2, PngGray).chunk("tRNS", {0, 2}).rows({{0b01101100}}).end();
    EXPECT_EQ(header(file)->layout, layout(3, 1, ColorModel::Gray, Alpha::Straight, 8));
    EXPECT_THAT(decode(file), Optional(ElementsAre(85, 255, 170, 0, 255, 255)));
}

TEST(PngReading, KeepsSixteenBitsWithATransparentGray) {
    const auto file = PngFile(2, 1, 16, PngGray)
                          .chunk("tRNS", {0x12, 0x34})
                          .rows({{0x12, 0x34, 0x12, 0x35}})
                          .end();
    EXPECT_EQ(decode(file), words({0x1234, 0, 0x1235, 0xFFFF}));
}

TEST(PngReading, TurnsATransparentColorIntoAlpha) {
    const auto file =
        PngFile(2, 1, 8, PngRGB).chunk("tRNS", {0, 1, 0, 2, 0, 3}).rows({{1, 2, 3, 3, 2, 1}}).end();
    EXPECT_EQ(header(file)->layout, layout(2, 1, ColorModel::RGB, Alpha::Straight, 8));
    EXPECT_THAT(decode(file), Optional(ElementsAre(1, 2, 3, 0, 3, 2, 1, 255)));
}

TEST(PngReading, PutsTheSevenPassesOfAnInterlacedFileTogether) {
    constexpr std::uint32_t side = 9;
    struct Pass {
        std::uint32_t x, y, stepX, stepY;
    };
    constexpr Pass passes[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                               {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    ByteVector expected(side * side);
    for (std::uint32_t i = 0; i < expected.size(); ++i) {
        expected[i] = static_cast<std::uint8_t>(i * 3);
    }
    std::vector<ByteVector> rows;
    for (const Pass& pass : passes) {
        for (std::uint32_t y = pass.y; y < side; y += pass.stepY) {
            ByteVector row;
            for (std::uint32_t x = pass.x; x < side; x += pass.stepX) {
                row.push_back(expected[y * side + x]);
            }
            rows.push_back(row);
        }
    }
    const auto file = PngFile(side, side, 8, PngGray, 1).rows(rows).end();
    EXPECT_EQ(decode(file), expected);
}

TEST(PngReading, ReadsImageDataThatIsSplitIntoManyChunks) {
    PngFile file(2, 2, 8, PngGray);
    const ByteVector filtered{0, 1, 2, 0, 3, 4};
    for (const std::uint8_t byte : stored_zlib(filtered))
        file.chunk("IDAT", {byte});
    EXPECT_THAT(decode(file.end()), Optional(ElementsAre(1, 2, 3, 4)));
}

TEST(PngReading, ReadsPixelsPerMeterAsDotsPerInch) {
    const auto file =
        PngFile(1, 1, 8, PngGray).chunk("pHYs", density(4000, 8000, 1)).rows({{5}}).end();
    EXPECT_DOUBLE_EQ(header(file)->dpiX, 4000 * inch);
    EXPECT_DOUBLE_EQ(header(file)->dpiY, 8000 * inch);
}

TEST(PngReading, GivesWholeDotsPerInchThatWereRoundedToPixelsPerMeter) {
    const auto file =
        PngFile(1, 1, 8, PngGray).chunk("pHYs", density(2835, 11811, 1)).rows({{5}}).end();
    EXPECT_EQ(header(file)->dpiX, 72);
    EXPECT_EQ(header(file)->dpiY, 300);
}

TEST(PngReading, TakesADensityOfUnknownUnitForUnset) {
    const auto file = PngFile(1, 1, 8, PngGray).chunk("pHYs", density(2, 1, 0)).rows({{5}}).end();
    EXPECT_EQ(header(file)->dpiX, 0);
    EXPECT_EQ(header(file)->dpiY, 0);
    EXPECT_EQ(header(small_gray())->dpiX, 0);
}

TEST(PngReading, ReadsTheOrientationOfAnExifChunk) {
    const auto file = PngFile(1, 1, 8, PngGray).chunk("eXIf", exif_block(6)).rows({{5}}).end();
    EXPECT_EQ(header(file)->orientation, 6);
    EXPECT_EQ(header(file)->exif, exif_block(6));
    EXPECT_EQ(header(small_gray())->orientation, 1);
}

TEST(PngReading, ReadsAnExifChunkBehindTheImageData) {
    const auto file = PngFile(1, 1, 8, PngGray).rows({{5}}).chunk("eXIf", exif_block(3)).end();
    EXPECT_EQ(header(file)->orientation, 3);
}

TEST(PngReading, IgnoresAnExifChunkWhoseChecksumIsWrong) {
    auto file = PngFile(1, 1, 8, PngGray).chunk("eXIf", exif_block(6)).rows({{5}}).end();
    const auto block = exif_block(6);
    const auto found = std::search(file.begin(), file.end(), block.begin(), block.end());
    *(found + 19) = 8;
    EXPECT_EQ(header(file)->orientation, 1);
    EXPECT_THAT(decode(file), Optional(ElementsAre(5)));
}

TEST(PngReading, DecodesAtFullSizeWhateverTheReduction) {
    const auto file = small_gray();
    const auto opened = open(file);
    EXPECT_EQ(opened.reader->reducedLayout(0, 4), opened.reader->page(0).layout);
    EXPECT_THAT(decode(file, 0, 4), Optional(ElementsAre(1, 2, 3, 4)));
}

TEST(PngReading, RefusesACallersRowsThatAreTooShort) {
    const auto file = small_gray();
    const auto opened = open(file);
    ByteVector pixels(4, 9);
    EXPECT_FALSE(opened.reader->read(0, 1, pixels.data(), 1));
    EXPECT_FALSE(opened.reader->read(1, 1, pixels.data(), 2));
    EXPECT_FALSE(opened.reader->read(0, 1, nullptr, 2));
    EXPECT_THAT(pixels, ElementsAre(9, 9, 9, 9));
    EXPECT_TRUE(opened.reader->read(0, 1, pixels.data(), 2));
}

TEST(PngReading, CanReadTwice) {
    const auto file = small_gray();
    const auto opened = open(file);
    for (int i = 0; i < 2; ++i) {
        ByteVector pixels(4);
        EXPECT_TRUE(opened.reader->read(0, 1, pixels.data(), 2));
        EXPECT_THAT(pixels, ElementsAre(1, 2, 3, 4));
    }
}

} // namespace
} // namespace codecs_test
