#include "jpeg_file.h"

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::uint32_t width = 47;
constexpr std::uint32_t height = 33;

PixelLayout layout(ColorModel model, Alpha alpha = Alpha::None, int bits = 8) {
    return {width, height, model, alpha, static_cast<std::uint8_t>(bits)};
}

const PixelLayout color = layout(ColorModel::RGB);

/// What `file` says of a file.
std::string description(const Encoded& encoded) {
    const TemporaryFolder folder;
    return run("file " + folder.write("file.jpg", view(encoded))).output;
}

/// The samples that djpeg decodes, behind the header of its plain formats.
ByteVector decoded_by_djpeg(const Encoded& encoded) {
    const TemporaryFolder folder;
    const auto source = folder.write("file.jpg", view(encoded));
    const auto result = run("djpeg -pnm -outfile " + folder.path("file.pnm") + " " + source);
    EXPECT_EQ(result.status, 0) << result.output;
    const auto file = folder.read("file.pnm");
    auto start = file.begin();
    for (int lines = 0; lines < 3 && start != file.end(); ++start)
        lines += *start == '\n';
    return {start, file.end()};
}

int largest_difference(const ByteVector& a, const ByteVector& b) {
    EXPECT_EQ(a.size(), b.size());
    int largest = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        largest = std::max(largest, std::abs(a[i] - b[i]));
    }
    return largest;
}

TEST(JpegWriting, KeepsColorsAtTheBestQuality) {
    const auto samples = gradient(width, height, 3);
    const auto file = encode(jpeg, picture(color, samples), {.quality = 1});
    // Rounding, there and back through YCbCr.
    EXPECT_LE(largest_difference(decoded_by_djpeg(file), samples), 3);
}

TEST(JpegWriting, KeepsGrayAtTheBestQuality) {
    const auto samples = gradient(width, height, 1);
    const auto file = encode(jpeg, picture(layout(ColorModel::Gray), samples), {.quality = 1});
    EXPECT_LE(largest_difference(decoded_by_djpeg(file), samples), 2);
    EXPECT_THAT(description(file), HasSubstr("components 1"));
}

TEST(JpegWriting, StoresInkInvertedAsAdobeDoes) {
    const auto samples = gradient(width, height, 4);
    const auto file = encode(jpeg, picture(layout(ColorModel::CMYK), samples), {.quality = 1});
    auto light = read_jpeg(view(file), JCS_CMYK);
    for (auto& sample : light)
        sample = static_cast<std::uint8_t>(255 - sample);
    EXPECT_LE(largest_difference(light, samples), 2);
    const auto marker = bytes_of("Adobe");
    EXPECT_THAT(copy(file), testing::Truly([&](const ByteVector& bytes) {
                    return std::search(bytes.begin(), bytes.end(), marker.begin(), marker.end()) !=
                           bytes.end();
                }));
}

TEST(JpegWriting, TakesRowsWithPadding) {
    const auto samples = gradient(width, height, 3);
    ByteVector storage;
    const auto padded = encode(jpeg, padded_picture(color, samples, storage));
    EXPECT_EQ(copy(padded), copy(encode(jpeg, picture(color, samples))));
}

TEST(JpegWriting, GrowsWithTheQuality) {
    const auto samples = noise(width * height * 3, 2);
    std::size_t last = 0;
    for (const float quality : {0.0F, 0.25F, 0.5F, 0.75F, 1.0F}) {
        const auto file = encode(jpeg, picture(color, samples), {.quality = quality});
        EXPECT_GT(file.size, last) << quality;
        last = file.size;
    }
}

TEST(JpegWriting, TakesAQualityOutsideItsRangeForTheNearest) {
    const auto samples = gradient(width, height, 3);
    const auto at = [&](float quality) {
        return copy(encode(jpeg, picture(color, samples), {.quality = quality}));
    };
    EXPECT_EQ(at(-3), at(0));
    EXPECT_EQ(at(NAN), at(0));
    EXPECT_EQ(at(7), at(1));
}

TEST(JpegWriting, UsesTheQuantizationOfTheQualityInPercent) {
    const auto samples = gradient(width, height, 3);
    const auto file = encode(jpeg, picture(color, samples), {.quality = 0.8F});
    const auto expected = make_jpeg({.width = width, .height = height, .quality = 80}, samples);
    EXPECT_EQ(read_jpeg(view(file), JCS_RGB), read_jpeg(expected, JCS_RGB));
}

TEST(JpegWriting, CanBeProgressive) {
    const auto samples = gradient(width, height, 3);
    const auto plain = encode(jpeg, picture(color, samples));
    const auto file = encode(jpeg, picture(color, samples), {.progressive = true});
    EXPECT_THAT(description(file), HasSubstr("progressive"));
    EXPECT_THAT(description(plain), HasSubstr("baseline"));
    EXPECT_EQ(decoded_by_djpeg(file), decoded_by_djpeg(plain));
}

TEST(JpegWriting, StoresTheResolution) {
    const auto samples = gradient(width, height, 3);
    Picture page = picture(color, samples);
    page.dpiX = 300;
    page.dpiY = 149.6;
    EXPECT_THAT(description(encode(jpeg, page)), HasSubstr("resolution (DPI), density 300x150"));
}

TEST(JpegWriting, LeavesAnUnsetResolutionUnset) {
    const auto samples = gradient(width, height, 3);
    EXPECT_THAT(description(encode(jpeg, picture(color, samples))), Not(HasSubstr("DPI")));
}

TEST(JpegWriting, StoresTheResolutionOfInk) {
    const auto samples = gradient(width, height, 4);
    Picture page = picture(layout(ColorModel::CMYK), samples);
    page.dpiX = page.dpiY = 240;
    const auto file = encode(jpeg, page);
    EXPECT_EQ(header(view(file))->dpiX, 240);
    EXPECT_EQ(header(view(file))->layout.model, ColorModel::CMYK);
}

TEST(JpegWriting, StoresTheExifBlock) {
    const auto samples = gradient(width, height, 3);
    const auto block = exif_block(6);
    Picture page = picture(color, samples);
    page.exif = block;
    const auto file = encode(jpeg, page);
    EXPECT_THAT(description(file), HasSubstr("orientation=upper-right"));
    EXPECT_EQ(header(view(file))->exif, block);
}

TEST(JpegWriting, LeavesOutAnExifBlockThatFitsNoMarker) {
    const auto samples = gradient(width, height, 3);
    const auto block = noise(65530, 9);
    Picture page = picture(color, samples);
    page.exif = block;
    const auto file = encode(jpeg, page);
    ASSERT_TRUE(file);
    EXPECT_TRUE(header(view(file))->exif.empty());
}

TEST(JpegWriting, StoresAProfileThatNeedsSeveralMarkers) {
    const auto samples = gradient(width, height, 3);
    const auto profile = noise(150000, 10);
    Picture page = picture(color, samples);
    page.iccProfile = profile;
    EXPECT_EQ(header(view(encode(jpeg, page)))->iccProfile, profile);
}

TEST(JpegWriting, WritesFilesLargerThanItsFirstRoom) {
    const PixelLayout large{600, 400, ColorModel::RGB, Alpha::None, 8};
    const auto samples = noise(600 * 400 * 3, 12);
    const auto file = encode(jpeg, picture(large, samples), {.quality = 1});
    EXPECT_GT(file.size, 300000U);
    EXPECT_EQ(decode(view(file)), decoded_by_djpeg(file));
}

TEST(JpegWriting, RefusesWhatTheFormatCannotHold) {
    const auto samples = noise(width * height * 10, 13);
    for (const PixelLayout& layout :
         {layout(ColorModel::RGB, Alpha::Straight), layout(ColorModel::RGB, Alpha::Premultiplied),
          layout(ColorModel::Gray, Alpha::Straight), layout(ColorModel::RGB, Alpha::None, 16),
          layout(ColorModel::Gray, Alpha::None, 1)}) {
        EXPECT_FALSE(encode(jpeg, picture(layout, samples))) << testing::PrintToString(layout);
    }
    EXPECT_TRUE(encode(jpeg, picture(color, samples)));
}

TEST(JpegWriting, RefusesSidesThatTheFormatHasNoNumberFor) {
    PixelLayout wide{65500, 1, ColorModel::Gray, Alpha::None, 8};
    const auto samples = noise(65501, 14);
    EXPECT_TRUE(encode(jpeg, picture(wide, samples)));
    wide.width = 65501;
    EXPECT_FALSE(encode(jpeg, picture(wide, samples)));
}

TEST(JpegWriting, TakesExactlyOnePage) {
    const auto samples = gradient(width, height, 3);
    const Picture pages[] = {picture(color, samples), picture(color, samples)};
    EXPECT_FALSE(jpeg.encode({pages, 0}, {}));
    EXPECT_FALSE(jpeg.encode({pages, 2}, {}));
}

} // namespace
} // namespace codecs_test
