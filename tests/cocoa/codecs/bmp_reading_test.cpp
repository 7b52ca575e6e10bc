#include "bmp_file.h"

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::ElementsAre;
using testing::Optional;

TEST(BmpReading, GivesRowsFromTheTop) {
    const auto file = BmpFile({.width = 2, .height = 2, .bits = 24})
                          .pixels({1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0});
    EXPECT_EQ(header(file)->layout, (PixelLayout{2, 2, ColorModel::RGB, Alpha::None, 8}));
    EXPECT_THAT(decode(file), Optional(ElementsAre(9, 8, 7, 12, 11, 10, 3, 2, 1, 6, 5, 4)));
}

TEST(BmpReading, LeavesRowsFromTheTopWhereTheyAre) {
    const auto file =
        BmpFile({.width = 1, .height = -2, .bits = 24}).pixels({1, 2, 3, 0, 4, 5, 6, 0});
    EXPECT_EQ(header(file)->layout.height, 2U);
    EXPECT_THAT(decode(file), Optional(ElementsAre(3, 2, 1, 6, 5, 4)));
}

const std::vector<ByteVector> colors{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}};

ByteVector colored(const ByteVector& indices) {
    ByteVector samples;
    for (const std::uint8_t index : indices)
        append(samples, colors[index]);
    return samples;
}

TEST(BmpReading, LooksIndicesUp) {
    struct Case {
        int bits;
        ByteVector row;
    };
    for (const Case& example :
         {Case{1, {0b01000000, 0, 0, 0}}, Case{4, {0x01, 0x00, 0, 0}}, Case{8, {0, 1, 0, 0}}}) {
        const auto file =
            BmpFile({.width = 3, .bits = example.bits, .palette = {colors[0], colors[1]}})
                .pixels(example.row);
        EXPECT_THAT(decode(file), Optional(colored({0, 1, 0}))) << example.bits;
    }
    const auto file =
        BmpFile({.width = 4, .bits = 2, .palette = colors}).pixels({0b11100100, 0, 0, 0});
    EXPECT_THAT(decode(file), Optional(colored({3, 2, 1, 0})));
}

TEST(BmpReading, TakesIndicesWithoutAColourForBlack) {
    const auto file =
        BmpFile({.width = 2, .bits = 8, .palette = {colors[1]}}).pixels({0, 200, 0, 0});
    EXPECT_THAT(decode(file), Optional(ElementsAre(4, 5, 6, 0, 0, 0)));
}

TEST(BmpReading, WidensFiveBits) {
    const auto file =
        BmpFile({.width = 3, .bits = 16}).pixels({0x00, 0x7C, 0xE0, 0x03, 0x10, 0x00, 0, 0});
    EXPECT_THAT(decode(file), Optional(ElementsAre(255, 0, 0, 0, 255, 0, 0, 0, 132))); // 16 of 31
}

TEST(BmpReading, TakesBitFields) {
    const auto narrow =
        BmpFile({.width = 2, .bits = 16, .compression = 3, .masks = {0xF800, 0x07E0, 0x1F}})
            .pixels({0x00, 0xF8, 0xFF, 0x07});
    EXPECT_THAT(decode(narrow), Optional(ElementsAre(255, 0, 0, 0, 255, 255)));
    const auto wide = BmpFile({.bits = 32, .compression = 3, .masks = {0xFF, 0xFF00, 0xFF0000}})
                          .pixels({1, 2, 3, 4});
    EXPECT_THAT(decode(wide), Optional(ElementsAre(1, 2, 3)));
    const auto deep = BmpFile({.bits = 32, .compression = 3, .masks = {0x3FF00000, 0xFFC00, 0x3FF}})
                          .pixels({0xFF, 0x01, 0x08, 0x20});
    EXPECT_THAT(decode(deep), Optional(ElementsAre(128, 128, 127))); // 512, 512 and 511 of 1023
}

TEST(BmpReading, RefusesMasksWithHoles) {
    for (const std::uint32_t mask : {0xF0F0U, 0x80000001U})
        EXPECT_FALSE(header(BmpFile({.bits = 32, .compression = 3, .masks = {mask, 0xFF, 0xFF}})
                                .pixels({1, 2, 3, 4})));
    EXPECT_FALSE(header(
        BmpFile({.bits = 16, .compression = 3, .masks = {0xFF0000, 0, 0}}).pixels({1, 2, 3, 4})));
}

TEST(BmpReading, GivesAlphaWhereAMaskSaysSo) {
    for (const std::uint32_t size : {56U, 108U, 124U}) {
        const auto file = BmpFile({.headerSize = size,
                                   .bits = 32,
                                   .compression = 3,
                                   .masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000}})
                              .pixels({3, 2, 1, 99});
        EXPECT_EQ(header(file)->layout.alpha, Alpha::Straight);
        EXPECT_THAT(decode(file), Optional(ElementsAre(1, 2, 3, 99)));
    }
    const auto behind =
        BmpFile({.bits = 16, .compression = 6, .masks = {0x0F00, 0x00F0, 0x000F, 0xF000}})
            .pixels({0x21, 0xF3, 0, 0});
    EXPECT_THAT(decode(behind), Optional(ElementsAre(51, 34, 17, 255)));
}

TEST(BmpReading, TakesTheFourthByteForNothingWithoutAMask) {
    const auto file = BmpFile({.bits = 32}).pixels({3, 2, 1, 99});
    EXPECT_EQ(header(file)->layout.alpha, Alpha::None);
    EXPECT_THAT(decode(file), Optional(ElementsAre(1, 2, 3)));
}

TEST(BmpReading, KnowsTheHeaderOfOS2) {
    const auto file =
        BmpFile({.headerSize = 12, .width = 3, .height = 2, .bits = 4, .palette = colors})
            .pixels({0x12, 0x30, 0, 0, 0x01, 0x20, 0, 0});
    EXPECT_THAT(decode(file), Optional(colored({0, 1, 2, 1, 2, 3})));
}

TEST(BmpReading, DecodesRunsOfBytes) {
    const auto file =
        BmpFile({.width = 4, .height = 3, .bits = 8, .compression = 1, .palette = colors})
            .pixels({3, 1, 1, 2, 0, 0,       // lowest row: 1 1 1 2
                     0, 3, 3, 2, 1, 0, 0, 0, // 3 2 1 as they are, filled up
                     0, 2, 2, 0, 2, 3,       // two to the right: 3 3
                     0, 1});
    EXPECT_THAT(decode(file), Optional(colored({0, 0, 3, 3, 3, 2, 1, 0, 1, 1, 1, 2})));
}

TEST(BmpReading, DecodesRunsOfNibbles) {
    const auto file =
        BmpFile({.width = 5, .height = 2, .bits = 4, .compression = 2, .palette = colors})
            .pixels({5, 0x12, 0, 0,             // 1 2 1 2 1
                     0, 5, 0x32, 0x10, 0x30, 0, // 3 2 1 0 3, filled up
                     0, 1});
    EXPECT_THAT(decode(file), Optional(colored({3, 2, 1, 0, 3, 1, 2, 1, 2, 1})));
}

TEST(BmpReading, KeepsRunsInsideThePicture) {
    const auto file =
        BmpFile({.width = 2, .height = 1, .bits = 8, .compression = 1, .palette = colors})
            .pixels({255, 1, 0, 0, 255, 2, 0, 2, 255, 255, 9, 3, 0, 1});
    EXPECT_THAT(decode(file), Optional(colored({1, 1})));
}

TEST(BmpReading, RefusesRunsWithoutAnEnd) {
    const auto file =
        BmpFile({.width = 2, .height = 1, .bits = 8, .compression = 1, .palette = colors})
            .pixels({2, 1, 0, 0});
    EXPECT_FALSE(decode(file));
}

TEST(BmpReading, TellsTheResolution) {
    const auto file =
        BmpFile({.bits = 24, .dotsPerMeterX = 11811, .dotsPerMeterY = 2835}).pixels({1, 2, 3, 0});
    EXPECT_EQ(header(file)->dpiX, 300);
    EXPECT_EQ(header(file)->dpiY, 72);
    EXPECT_EQ(header(BmpFile({.bits = 24}).pixels({1, 2, 3, 0}))->dpiX, 0);
}

TEST(BmpReading, GivesAnEmbeddedProfile) {
    const ByteVector profile = noise(60, 5);
    auto file = BmpFile({.headerSize = 124, .bits = 24, .profileSize = 60}).pixels({3, 2, 1, 0});
    append(file, profile);
    EXPECT_EQ(header(file)->iccProfile, profile);
    EXPECT_THAT(decode(file), Optional(ElementsAre(1, 2, 3)));
    file.pop_back();
    EXPECT_TRUE(header(file)->iccProfile.empty());
}

TEST(BmpReading, RefusesWhatItDoesNotDecode) {
    const ByteVector pixels(64, 0);
    EXPECT_TRUE(header(BmpFile({.bits = 8}).pixels(pixels)));
    EXPECT_FALSE(header(BmpFile({.bits = 7}).pixels(pixels)));
    EXPECT_FALSE(header(BmpFile({.bits = 0}).pixels(pixels)));
    EXPECT_FALSE(header(BmpFile({.headerSize = 41, .bits = 8}).pixels(pixels)));
    for (const std::uint32_t compression : {1U, 2U, 3U, 4U, 5U, 9U})
        EXPECT_FALSE(header(BmpFile({.bits = 24, .compression = compression}).pixels(pixels)));
    EXPECT_FALSE(header(BmpFile({.height = -1, .bits = 8, .compression = 1}).pixels({0, 1})));
    EXPECT_FALSE(header(BmpFile({.width = 0, .bits = 8}).pixels(pixels)));
    EXPECT_FALSE(header(BmpFile({.width = -1, .bits = 8}).pixels(pixels)));
    EXPECT_FALSE(
        header(BmpFile({.height = std::int32_t{-0x7FFFFFFF} - 1, .bits = 8}).pixels(pixels)));
}

} // namespace
} // namespace codecs_test
