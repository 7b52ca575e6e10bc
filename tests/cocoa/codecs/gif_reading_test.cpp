#include "gif_file.h"

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Optional;

constexpr std::uint8_t red = 0, green = 1, blue = 2, white = 3;

ByteVector rgb(const ByteVector& indices) {
    ByteVector samples;
    for (const std::uint8_t index : indices)
        for (std::size_t i = 0; i < 3; ++i)
            samples.push_back(GifFile::fourColors[index * 3U + i]);
    return samples;
}

constexpr int clear = -1;
/// Straight alpha; clear pixels are all 0.
ByteVector rgba(const std::vector<int>& indices) {
    ByteVector samples;
    for (const int index : indices) {
        if (index != clear) append(samples, rgb({static_cast<std::uint8_t>(index)}));
        append(samples, index == clear ? ByteVector(4, 0) : ByteVector{255});
    }
    return samples;
}

TEST(GifReading, GivesOpaqueFramesWithoutAlpha) {
    const auto file =
        GifFile(2, 2).frame({.width = 2, .height = 2, .indices = {red, green, blue, white}}).end();
    const auto info = header(file);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->layout, (PixelLayout{2, 2, ColorModel::RGB, Alpha::None, 8}));
    EXPECT_EQ(info->dpiX, 0);
    EXPECT_THAT(decode(file), Optional(rgb({red, green, blue, white})));
}

TEST(GifReading, GivesTheTransparentColourAlpha) {
    const auto file =
        GifFile(3, 1)
            .frame({.width = 3, .indices = {red, blue, red}, .transparentIndex = blue})
            .end();
    EXPECT_EQ(header(file)->layout, (PixelLayout{3, 1, ColorModel::RGB, Alpha::Straight, 8}));
    EXPECT_THAT(decode(file), Optional(rgba({red, clear, red})));
}

TEST(GifReading, PutsInterlacedRowsInTheirPlaces) {
    const ByteVector indices{red, green, blue, white, white, blue, green, red, blue, blue, red};
    const std::vector<std::size_t> stored{0, 8, 4, 2, 6, 10, 1, 3, 5, 7, 9};
    ByteVector inFileOrder;
    for (const std::size_t row : stored)
        inFileOrder.push_back(indices[row]);
    const auto file =
        GifFile(1, 11).frame({.height = 11, .indices = inFileOrder, .interlaced = true}).end();
    EXPECT_THAT(decode(file), Optional(rgb(indices)));
}

TEST(GifReading, UsesAFramesOwnColours) {
    const ByteVector own{9, 8, 7, 6, 5, 4, 3, 2, 1, 0, 10, 20};
    EXPECT_THAT(decode(GifFile(1, 1).frame({.indices = {3}, .colors = own}).end()),
                Optional(ElementsAre(0, 10, 20)));
    EXPECT_THAT(decode(GifFile(1, 1, {}).frame({.indices = {1}, .colors = own}).end()),
                Optional(ElementsAre(6, 5, 4)));
    EXPECT_FALSE(decode(GifFile(1, 1, {}).frame({.indices = {1}}).end()));
}

TEST(GifReading, LeavesWhatNoFrameCoversClear) {
    const auto file =
        GifFile(3, 2).frame({.left = 1, .top = 1, .width = 1, .indices = {green}}).end();
    EXPECT_THAT(decode(file), Optional(rgba({clear, clear, clear, clear, green, clear})));
}

TEST(GifReading, CutsFramesAtThePicturesEdges) {
    const ByteVector indices{red, green, blue, white, blue, red, green, green, white};
    const auto file =
        GifFile(2, 2).frame({.left = 1, .width = 3, .height = 3, .indices = indices}).end();
    EXPECT_THAT(decode(file), Optional(rgba({clear, red, clear, white})));
    const auto outside = GifFile(1, 1).frame({.left = 9, .top = 7, .indices = {red}}).end();
    EXPECT_THAT(decode(outside), Optional(rgba({clear})));
    const auto larger = GifFile(2, 2).frame({.width = 3, .height = 3, .indices = indices}).end();
    EXPECT_THAT(decode(larger), Optional(rgb({red, green, white, blue})));
}

TEST(GifReading, TakesThePicturesSizeFromTheFirstFrameWhereTheFileHasNone) {
    const auto file = GifFile(0, 0).frame({.width = 2, .indices = {red, blue}}).end();
    EXPECT_THAT(decode(file), Optional(rgb({red, blue})));
}

/// Two pixels red, then their right one changed in some way, then the left one white.
ByteVector moving(int disposal) {
    return GifFile(2, 1)
        .repeats(7)
        .frame({.width = 2, .indices = {red, red}, .hundredths = 10})
        .frame({.left = 1, .indices = {blue}, .disposal = disposal, .hundredths = 25})
        .frame({.indices = {white}})
        .end();
}

TEST(GifReading, LaysFramesOverThoseBefore) {
    const auto file = moving(1);
    EXPECT_THAT(decode(file, 0), Optional(rgb({red, red})));
    EXPECT_THAT(decode(file, 1), Optional(rgb({red, blue})));
    EXPECT_THAT(decode(file, 2), Optional(rgb({white, blue})));
}

TEST(GifReading, ClearsTheAreaOfAFrameThatSaysSo) {
    const auto file = moving(2);
    EXPECT_THAT(decode(file, 1), Optional(rgba({red, blue})));
    EXPECT_THAT(decode(file, 2), Optional(rgba({white, clear})));
}

TEST(GifReading, RestoresWhatWasThereBeforeAFrameThatSaysSo) {
    EXPECT_THAT(decode(moving(3), 2), Optional(rgb({white, red})));
}

TEST(GifReading, ShowsEarlierFramesThroughTransparentPixels) {
    const auto file = GifFile(2, 1)
                          .frame({.width = 2, .indices = {red, green}})
                          .frame({.width = 2, .indices = {white, blue}, .transparentIndex = white})
                          .end();
    EXPECT_THAT(decode(file, 1), Optional(rgb({red, blue})));
}

TEST(GifReading, GivesFramesInAnyOrder) {
    const auto file = moving(3);
    const auto opened = open(file);
    const std::pair<std::size_t, ByteVector> frames[] = {{2, rgb({white, red})},
                                                         {1, rgb({red, blue})},
                                                         {1, rgb({red, blue})},
                                                         {0, rgb({red, red})},
                                                         {2, rgb({white, red})}};
    for (const auto& [frame, expected] : frames) {
        ByteVector pixels(6);
        ASSERT_TRUE(opened.reader->read(frame, 1, pixels.data(), 6));
        EXPECT_EQ(pixels, expected) << frame;
    }
}

TEST(GifReading, TellsHowFramesFollowOneAnother) {
    const auto opened = open(moving(1));
    EXPECT_EQ(opened.reader->pageCount(), 3U);
    const Animation* animation = opened.reader->animation();
    ASSERT_TRUE(animation);
    EXPECT_THAT(animation->durations, ElementsAre(0.1, 0.25, 0));
    EXPECT_EQ(animation->repeats, 7U);

    const auto unrepeated = GifFile(1, 1).frame({.indices = {0}}).frame({.indices = {1}}).end();
    EXPECT_EQ(open(unrepeated).reader->animation()->repeats, std::nullopt);
}

TEST(GifReading, TellsNoAnimationOfOneFrame) {
    const auto file = GifFile(1, 1).frame({.indices = {0}}).end();
    EXPECT_EQ(open(file).reader->animation(), nullptr);
}

TEST(GifReading, PassesOverCommentsAndOtherExtensions) {
    const auto file = GifFile(1, 1).comment("hello").frame({.indices = {blue}}).comment("x").end();
    EXPECT_THAT(decode(file), Optional(rgb({blue})));
}

TEST(GifReading, RefusesFilesWithoutAFrame) {
    EXPECT_FALSE(header(GifFile(1, 1).end()));
    EXPECT_FALSE(header(GifFile(1, 1).comment("nothing else").end()));
}

TEST(GifReading, RefusesFramesWithTooFewPixels) {
    EXPECT_TRUE(decode(GifFile(3, 1).frame({.width = 3, .indices = {0, 1, 2}}).end()));
    EXPECT_FALSE(decode(GifFile(3, 1).frame({.width = 3, .indices = {0, 1}}).end()));
}

/// What another program makes of a picture, with real compression.
ByteVector made_by_ppmtogif(std::uint32_t width, std::uint32_t height, const ByteVector& rgb,
                            const std::string& options = "") {
    const TemporaryFolder folder;
    const std::string ppm = folder.write("a.ppm", portable_pixmap(width, height, rgb));
    const std::string made = folder.path("a.gif");
    // The program talks to standard error even when told to be quiet.
    const std::string command = "{ ppmtogif " + options + " " + ppm + " 2> /dev/null; } > " + made;
    EXPECT_EQ(run(command).status, 0);
    return folder.read("a.gif");
}

/// Grey noise: all codes up to the longest, and tables that fill up.
ByteVector gray_noise(std::size_t count, unsigned seed, unsigned levels) {
    ByteVector samples;
    for (const std::uint8_t byte : noise(count, seed))
        samples.insert(samples.end(), 3,
                       static_cast<std::uint8_t>(byte % levels * (255 / (levels - 1))));
    return samples;
}

TEST(GifReading, DecodesWhatOtherProgramsWrite) {
    for (const unsigned levels : {2U, 3U, 16U, 256U}) {
        const auto samples = gray_noise(200 * 150, levels, levels);
        EXPECT_TRUE(decode(made_by_ppmtogif(200, 150, samples)) == samples) << levels;
        EXPECT_TRUE(decode(made_by_ppmtogif(200, 150, samples, "-interlace")) == samples) << levels;
    }
}

TEST(GifReading, DecodesLongStrings) {
    const ByteVector black(700 * 600 * 3, 0); // strings of hundreds of pixels
    EXPECT_TRUE(decode(made_by_ppmtogif(700, 600, black)) == black);
}

} // namespace
} // namespace codecs_test
