#include "jpeg_file.h"

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::Each;
using testing::Optional;

constexpr std::uint32_t width = 47;
constexpr std::uint32_t height = 33;

JpegRecipe recipe(J_COLOR_SPACE given = JCS_RGB, J_COLOR_SPACE stored = JCS_YCbCr) {
    return {.width = width, .height = height, .given = given, .stored = stored};
}

JpegRecipe with_exif(const ByteVector& block) {
    JpegRecipe made = recipe();
    made.markers = {{JPEG_APP0 + 1, exif_marker(block)}};
    return made;
}

ByteVector color_file(const JpegRecipe& made = recipe()) {
    return make_jpeg(made, gradient(width, height, 3));
}

ByteVector inverted(ByteVector samples) {
    for (auto& sample : samples)
        sample = static_cast<std::uint8_t>(255 - sample);
    return samples;
}

PixelLayout layout(ColorModel model) { return {width, height, model, Alpha::None, 8}; }

TEST(JpegReading, GivesGray) {
    const auto file = make_jpeg(recipe(JCS_GRAYSCALE, JCS_GRAYSCALE), gradient(width, height, 1));
    EXPECT_EQ(header(file)->layout, layout(ColorModel::Gray));
    EXPECT_EQ(decode(file), read_jpeg(file, JCS_GRAYSCALE));
}

TEST(JpegReading, GivesYCbCrAsRGB) {
    const auto file = color_file();
    EXPECT_EQ(header(file)->layout, layout(ColorModel::RGB));
    EXPECT_EQ(decode(file), read_jpeg(file, JCS_RGB));
}

TEST(JpegReading, KeepsColorsAndRowsInPlace) {
    ByteVector samples(16 * 16 * 3);
    for (std::size_t y = 0; y < 16; ++y) {
        for (std::size_t x = 0; x < 16; ++x) {
            // Red, green; blue, white: each a whole block.
            const std::uint8_t pixels[4][3] = {
                {255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};
            std::copy_n(pixels[y / 8 * 2 + x / 8], 3, &samples[(y * 16 + x) * 3]);
        }
    }
    JpegRecipe made{.width = 16, .height = 16, .stored = JCS_RGB, .quality = 100};
    const auto pixels = decode(make_jpeg(made, samples));
    ASSERT_TRUE(pixels);
    for (std::size_t i = 0; i < samples.size(); ++i)
        EXPECT_NEAR((*pixels)[i], samples[i], 2) << i;
}

TEST(JpegReading, GivesRGBThatIsStoredAsSuch) {
    const auto file = color_file(recipe(JCS_RGB, JCS_RGB));
    EXPECT_EQ(decode(file), read_jpeg(file, JCS_RGB));
}

TEST(JpegReading, GivesProgressiveFiles) {
    JpegRecipe made = recipe();
    made.progressive = true;
    const auto file = color_file(made);
    EXPECT_EQ(decode(file), read_jpeg(file, JCS_RGB));
}

TEST(JpegReading, GivesFilesWithRestartMarkers) {
    JpegRecipe made = recipe();
    made.restartRows = 1;
    const auto file = color_file(made);
    EXPECT_EQ(decode(file), read_jpeg(file, JCS_RGB));
}

class JpegInkReading : public testing::TestWithParam<J_COLOR_SPACE> {};
INSTANTIATE_TEST_SUITE_P(Stored, JpegInkReading, testing::Values(JCS_CMYK, JCS_YCCK),
                         [](const auto& spaces) {
                             return spaces.param == JCS_CMYK ? "CMYK" : "YCCK";
                         });

TEST_P(JpegInkReading, TurnsAdobesLightIntoInk) {
    const auto file = make_jpeg(recipe(JCS_CMYK, GetParam()), gradient(width, height, 4));
    EXPECT_EQ(header(file)->layout, layout(ColorModel::CMYK));
    EXPECT_EQ(decode(file), inverted(read_jpeg(file, JCS_CMYK)));
}

TEST(JpegReading, GivesNoInkAsZero) {
    const ByteVector fullLight(width * height * 4, 255);
    const auto file = make_jpeg(recipe(JCS_CMYK, JCS_CMYK), fullLight);
    EXPECT_THAT(decode(file), Optional(Each(0)));
}

TEST(JpegReading, LeavesInkWithoutAdobesMarkerAsItIs) {
    JpegRecipe made = recipe(JCS_CMYK, JCS_CMYK);
    made.adobeMarker = false;
    const auto file = make_jpeg(made, gradient(width, height, 4));
    EXPECT_EQ(decode(file), read_jpeg(file, JCS_CMYK));
}

TEST(JpegReading, RefusesTwoComponents) {
    // The frame header of a colour file, told to have two components.
    auto file = color_file();
    for (std::size_t i = 0; i + 9 < file.size(); ++i) {
        if (file[i] == 0xFF && file[i + 1] == 0xC0) {
            file[i + 3] = 8 + 2 * 3;
            file[i + 9] = 2;
            file.erase(file.begin() + static_cast<std::ptrdiff_t>(i) + 16,
                       file.begin() + static_cast<std::ptrdiff_t>(i) + 19);
            break;
        }
    }
    EXPECT_FALSE(header(file));
}

class JpegReduction : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Of, JpegReduction, testing::Values(1, 2, 4, 8));

TEST_P(JpegReduction, DecodesAtThatScaleWithSidesRoundedUp) {
    const auto reduction = static_cast<unsigned>(GetParam());
    const auto file = color_file();
    const auto opened = open(file);
    const PixelLayout reduced = opened.reader->reducedLayout(0, GetParam());
    EXPECT_EQ(reduced.width, (width + reduction - 1) / reduction);
    EXPECT_EQ(reduced.height, (height + reduction - 1) / reduction);
    EXPECT_EQ(decode(file, 0, GetParam()), read_jpeg(file, JCS_RGB, reduction));
}

TEST(JpegReading, TakesAnUnknownReductionForNone) {
    const auto file = color_file();
    EXPECT_EQ(open(file).reader->reducedLayout(0, 3), layout(ColorModel::RGB));
    EXPECT_EQ(decode(file, 0, 3), read_jpeg(file, JCS_RGB));
}

TEST(JpegReading, ReadsTheDensityInDotsPerInch) {
    JpegRecipe made = recipe();
    made.densityUnit = 1;
    made.densityX = 300;
    made.densityY = 150;
    EXPECT_EQ(header(color_file(made))->dpiX, 300);
    EXPECT_EQ(header(color_file(made))->dpiY, 150);
}

TEST(JpegReading, ReadsTheDensityInDotsPerCentimeter) {
    JpegRecipe made = recipe();
    made.densityUnit = 2;
    made.densityX = 100;
    made.densityY = 50;
    EXPECT_DOUBLE_EQ(header(color_file(made))->dpiX, 254);
    EXPECT_DOUBLE_EQ(header(color_file(made))->dpiY, 127);
}

TEST(JpegReading, TakesAnAspectRatioForAnUnsetResolution) {
    JpegRecipe made = recipe();
    made.densityX = 2;
    EXPECT_EQ(header(color_file(made))->dpiX, 0);
    EXPECT_EQ(header(color_file(made))->dpiY, 0);
}

/// An EXIF block with 240 by 120 dots an inch.
ByteVector exif_resolution() {
    const auto order = ByteOrder::Little;
    ByteVector block = bytes_of("II");
    append_16(block, order, 42);
    append_32(block, order, 8);
    append_16(block, order, 2);
    constexpr std::uint32_t valuesAt = 8 + 2 + 2 * 12 + 4;
    for (std::uint16_t axis = 0; axis < 2; ++axis) {
        append_16(block, order, 0x011A + axis);
        append_16(block, order, 5);
        append_32(block, order, 1);
        append_32(block, order, valuesAt + 8U * axis);
    }
    append_32(block, order, 0);
    for (const std::uint32_t value : {480U, 2U, 120U, 1U})
        append_32(block, order, value);
    return block;
}

TEST(JpegReading, FallsBackOnTheResolutionOfTheExifBlock) {
    JpegRecipe made = with_exif(exif_resolution());
    EXPECT_EQ(header(color_file(made))->dpiX, 240);
    EXPECT_EQ(header(color_file(made))->dpiY, 120);
    made.jfifMarker = false;
    EXPECT_EQ(header(color_file(made))->dpiX, 240);
}

TEST(JpegReading, PrefersTheDensityOfItsOwnHeaderToTheExifBlocks) {
    JpegRecipe made = with_exif(exif_resolution());
    made.densityUnit = 1;
    made.densityX = made.densityY = 96;
    EXPECT_EQ(header(color_file(made))->dpiX, 96);
}

TEST(JpegReading, ReadsTheExifBlockAndItsOrientation) {
    const auto file = color_file(with_exif(exif_block(6)));
    EXPECT_EQ(header(file)->orientation, 6);
    EXPECT_EQ(header(file)->exif, exif_block(6));
    EXPECT_EQ(header(file)->layout, layout(ColorModel::RGB)) << "rows are as stored";
}

TEST(JpegReading, PassesOverAnAppMarkerThatHoldsNoExifBlock) {
    JpegRecipe made = with_exif(exif_block(8));
    made.markers.insert(made.markers.begin(), {JPEG_APP0 + 1, bytes_of("http://ns.adobe.com/")});
    EXPECT_EQ(header(color_file(made))->orientation, 8);
}

TEST(JpegReading, TakesAnOrientationThatDoesNotExistForUpright) {
    EXPECT_EQ(header(color_file(with_exif(exif_block(9))))->orientation, 1);
    EXPECT_EQ(header(color_file(with_exif(exif_block(0))))->orientation, 1);
}

TEST(JpegReading, PutsAProfileOfSeveralMarkersTogether) {
    JpegRecipe made = recipe();
    made.profile = noise(150000, 3);
    EXPECT_EQ(header(color_file(made))->iccProfile, made.profile);
}

TEST(JpegReading, OpensWhatHasBytesBehindItsEnd) {
    auto file = color_file();
    const auto expected = decode(file);
    append(file, noise(100, 4));
    EXPECT_EQ(decode(file), expected);
}

/// Where the entropy-coded data of the first scan begins.
std::size_t scan_start(const ByteVector& file) {
    std::size_t at = 2;
    while (file[at + 1] != 0xDA)
        at += 2U + (file[at + 2] << 8 | file[at + 3]);
    return at + 2U + (file[at + 2] << 8 | file[at + 3]);
}

TEST(JpegReading, FailsWhereAScanEndsTooEarly) {
    const auto whole = color_file();
    ASSERT_TRUE(decode(whole));
    ByteVector file(whole.begin(),
                    whole.begin() + static_cast<std::ptrdiff_t>(scan_start(whole)) + 40);
    append(file, {0xFF, 0xD9});
    EXPECT_TRUE(header(file)) << "the header is all there";
    EXPECT_FALSE(decode(file));
}

TEST(JpegReading, RefusesMoreScansThanAnyFileHas) {
    JpegRecipe made = recipe(JCS_GRAYSCALE, JCS_GRAYSCALE);
    made.progressive = true;
    auto file = make_jpeg(made, gradient(width, height, 1));
    ASSERT_TRUE(decode(file));
    // A scan header for bits that are all zero: each costs the decoder a pass over the image.
    const ByteVector scan{0xFF, 0xDA, 0, 8, 1, 1, 0, 1, 5, 0x00, 0};
    file.resize(file.size() - 2);
    for (int i = 0; i < 2000; ++i)
        append(file, scan);
    append(file, {0xFF, 0xD9});
    EXPECT_FALSE(decode(file));
}

} // namespace
} // namespace codecs_test
