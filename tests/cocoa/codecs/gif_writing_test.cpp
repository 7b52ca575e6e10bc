#include "gif_file.h"

#include <cmath>

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

PixelLayout rgb_layout(std::uint32_t width, std::uint32_t height, Alpha alpha = Alpha::None) {
    return {width, height, ColorModel::RGB, alpha, 8};
}

Encoded written(const PixelLayout& layout, const ByteVector& samples,
                const EncodeOptions& options = {}) {
    return encode(gif, picture(layout, samples), options);
}

std::string text_of(const Encoded& file) {
    const TemporaryFolder folder;
    return run("giftext " + folder.write("a.gif", view(file))).output;
}

/// `count` different colours, over and over in no order.
ByteVector few_colors(std::size_t pixels, unsigned count) {
    const auto choice = noise(pixels * 2, count);
    ByteVector samples;
    for (std::size_t i = 0; i < pixels; ++i) {
        const unsigned color = (choice[i * 2] << 8 | choice[i * 2 + 1]) % count;
        append(samples, {static_cast<std::uint8_t>(color), static_cast<std::uint8_t>(color * 7),
                         static_cast<std::uint8_t>(255 - color)});
    }
    return samples;
}

/// In decibels.
double peak_ratio(const ByteVector& a, const ByteVector& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    return 10 * std::log10(255.0 * 255.0 * static_cast<double>(a.size()) / sum);
}

class FewColors : public testing::TestWithParam<unsigned> {};
INSTANTIATE_TEST_SUITE_P(Of, FewColors, testing::Values(1, 2, 3, 4, 5, 16, 17, 128, 129, 256));

TEST_P(FewColors, AreKeptExactly) {
    const auto samples = few_colors(150 * 90, GetParam());
    const Encoded file = written(rgb_layout(150, 90), samples);
    EXPECT_TRUE(pixels_by_giftopnm(view(file)) == samples);
    EXPECT_TRUE(decode(view(file)) == samples);
}

TEST(GifWriting, StatesSizeDepthAndTheSmallestTable) {
    const std::string text = text_of(written(rgb_layout(30, 20), few_colors(600, 5)));
    EXPECT_THAT(text, HasSubstr("Screen Size - Width = 30, Height = 20."));
    EXPECT_THAT(text, HasSubstr("BackGround = 0, Aspect = 0."));
    EXPECT_THAT(text, HasSubstr("Has Global Color Map."));
    EXPECT_THAT(text, HasSubstr("Image is Non Interlaced."));
    EXPECT_THAT(text, Not(HasSubstr("Transparent")));
    const auto file = copy(written(rgb_layout(30, 20), few_colors(600, 5)));
    EXPECT_EQ(file[10] & 7, 2); // 2 to the 3 colours
}

TEST(GifWriting, InterlacesOnRequest) {
    for (const std::uint32_t height : {1U, 2U, 3U, 5U, 9U, 50U}) {
        const auto samples = few_colors(std::size_t{20} * height, 40);
        const Encoded file = written(rgb_layout(20, height), samples, {.interlaced = true});
        EXPECT_THAT(text_of(file), HasSubstr("Image is Interlaced."));
        EXPECT_EQ(pixels_by_giftopnm(view(file)), samples) << height;
    }
}

TEST(GifWriting, TakesGreyAndPaddedRows) {
    const PixelLayout gray{17, 9, ColorModel::Gray, Alpha::None, 8};
    const auto grays = noise(17 * 9, 3);
    ByteVector storage;
    const Encoded file = encode(gif, padded_picture(gray, grays, storage));
    ByteVector expected;
    for (const std::uint8_t value : grays)
        expected.insert(expected.end(), 3, value);
    EXPECT_EQ(pixels_by_giftopnm(view(file)), expected);
}

TEST(GifWriting, KeepsTransparentPixelsClear) {
    const ByteVector samples{10, 20, 30, 255, 40, 50, 60, 0, 70, 80, 90, 255, 1, 2, 3, 0};
    const Encoded file = written(rgb_layout(4, 1, Alpha::Straight), samples);
    ByteVector alpha;
    const auto colors = pixels_by_giftopnm(view(file), &alpha);
    EXPECT_THAT(alpha, testing::ElementsAre(255, 0, 255, 0));
    EXPECT_THAT(ByteVector(colors.begin(), colors.begin() + 3), testing::ElementsAre(10, 20, 30));
    EXPECT_THAT(ByteVector(colors.begin() + 6, colors.begin() + 9),
                testing::ElementsAre(70, 80, 90));
    EXPECT_THAT(text_of(file), HasSubstr("Transparency on"));
}

TEST(GifWriting, WithOpaqueAlphaHasNoTransparency) {
    const ByteVector samples{10, 20, 30, 255, 40, 50, 60, 255};
    const Encoded file = written(rgb_layout(2, 1, Alpha::Straight), samples);
    EXPECT_EQ(header(view(file))->layout.alpha, Alpha::None);
    EXPECT_EQ(pixels_by_giftopnm(view(file)), (ByteVector{10, 20, 30, 40, 50, 60}));
}

TEST(GifWriting, OfNothingButClearPixelsIsClear) {
    const Encoded file = written(rgb_layout(2, 1, Alpha::Straight), ByteVector(8, 0));
    ByteVector alpha;
    pixels_by_giftopnm(view(file), &alpha);
    EXPECT_THAT(alpha, testing::ElementsAre(0, 0));
}

TEST(GifWriting, Keeps255ColoursBesideTheClearOne) {
    ByteVector samples;
    for (int i = 0; i < 256; ++i)
        append(samples,
               {static_cast<std::uint8_t>(i), 3, 9, static_cast<std::uint8_t>(i ? 255 : 0)});
    const Encoded file = written(rgb_layout(256, 1, Alpha::Straight), samples);
    samples[0] = samples[1] = samples[2] = 0;
    EXPECT_EQ(decode(view(file)), samples);
}

/// `count` pixels of one opacity.
std::size_t shown(std::uint8_t opacity, bool dithered) {
    ByteVector samples;
    for (int i = 0; i < 64 * 64; ++i)
        append(samples, {200, 100, 50, opacity});
    const Encoded file =
        written(rgb_layout(64, 64, Alpha::Straight), samples, {.ditherTransparency = dithered});
    ByteVector alpha;
    pixels_by_giftopnm(view(file), &alpha);
    return static_cast<std::size_t>(std::count(alpha.begin(), alpha.end(), 255));
}

TEST(GifWriting, RoundsTransparencyToClearOrOpaque) {
    EXPECT_EQ(shown(127, false), 0U);
    EXPECT_EQ(shown(128, false), 4096U);
}

TEST(GifWriting, DithersTransparencyOnRequest) {
    EXPECT_EQ(shown(0, true), 0U);
    EXPECT_EQ(shown(255, true), 4096U);
    EXPECT_NEAR(static_cast<double>(shown(64, true)), 1028, 64);
    EXPECT_NEAR(static_cast<double>(shown(128, true)), 2056, 64);
    EXPECT_NEAR(static_cast<double>(shown(200, true)), 3213, 64);
}

TEST(GifWriting, OfManyColoursIsNearAndRightOnAverage) {
    const auto samples = gradient(400, 300, 3);
    const Encoded file = written(rgb_layout(400, 300), samples);
    const auto back = pixels_by_giftopnm(view(file));
    ASSERT_EQ(back.size(), samples.size());
    EXPECT_GT(peak_ratio(samples, back), 32);
    // Errors spread over neighbours cancel out over an area.
    for (const std::size_t channel : {0U, 1U, 2U}) {
        for (const std::size_t top : {0U, 150U, 250U}) {
            double error = 0;
            for (std::size_t y = top; y < top + 40; ++y)
                for (std::size_t x = 100; x < 140; ++x)
                    error +=
                        back[(y * 400 + x) * 3 + channel] - samples[(y * 400 + x) * 3 + channel];
            EXPECT_NEAR(error / 1600, 0, 0.75) << channel << " at " << top;
        }
    }
}

TEST(GifWriting, OfManyColoursKeepsItsClearPixels) {
    const auto colors = gradient(100, 100, 3);
    ByteVector samples;
    for (std::size_t i = 0; i < 100 * 100; ++i) {
        samples.insert(samples.end(), &colors[i * 3], &colors[i * 3 + 3]);
        samples.push_back(i % 3 == 0 ? 0 : 255);
    }
    ByteVector alpha;
    pixels_by_giftopnm(view(written(rgb_layout(100, 100, Alpha::Straight), samples)), &alpha);
    ASSERT_EQ(alpha.size(), 100U * 100U);
    for (std::size_t i = 0; i < alpha.size(); ++i)
        ASSERT_EQ(alpha[i], samples[i * 4 + 3]) << i;
}

TEST(GifWriting, UsesTheTableThatIsGiven) {
    const ByteVector table{0, 0, 0, 255, 255, 255, 255, 0, 0};
    const ByteVector samples{250, 250, 250, 240, 10, 3, 2, 8, 0};
    const Encoded file = written(rgb_layout(3, 1), samples, {.colorTable = table});
    EXPECT_EQ(pixels_by_giftopnm(view(file)), (ByteVector{255, 255, 255, 255, 0, 0, 0, 0, 0}));
}

TEST(GifWriting, RefusesWhatTheFormatCannotHold) {
    const ByteVector samples(70000 * 8, 9);
    for (const PixelLayout& layout : {PixelLayout{2, 2, ColorModel::CMYK, Alpha::None, 8},
                                      rgb_layout(2, 2, Alpha::Premultiplied),
                                      PixelLayout{2, 2, ColorModel::RGB, Alpha::None, 16},
                                      rgb_layout(65536, 1), rgb_layout(0, 1)})
        EXPECT_FALSE(written(layout, samples));
    EXPECT_TRUE(written(rgb_layout(65535, 1), samples));
    const Picture two[] = {picture(rgb_layout(1, 1), samples), picture(rgb_layout(1, 1), samples)};
    EXPECT_FALSE(gif.encode(two, {}));
    EXPECT_FALSE(gif.encode({}, {}));
}

} // namespace
} // namespace codecs_test
