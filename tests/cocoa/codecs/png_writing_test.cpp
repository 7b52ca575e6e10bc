#include "png_file.h"

#include <cstring>

#include <gmock/gmock.h>
#include <png.h>

namespace codecs_test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr std::uint32_t width = 13;
constexpr std::uint32_t height = 7;

PixelLayout layout(ColorModel model, Alpha alpha, int bits) {
    return {width, height, model, alpha, static_cast<std::uint8_t>(bits)};
}

ByteVector samples_for(const PixelLayout& layout) {
    return noise(static_cast<std::size_t>(layout.packedRowBytes() * layout.height), 11);
}

/// The samples as the format stores them: high byte first.
ByteVector as_stored(const PixelLayout& layout, ByteVector samples) {
    if (layout.bitsPerSample != 16) return samples;
    ByteVector stored;
    for (std::size_t i = 0; i < samples.size(); i += 2) {
        std::uint16_t sample = 0;
        std::memcpy(&sample, &samples[i], 2);
        append_16(stored, ByteOrder::Big, sample);
    }
    return stored;
}

/// Clears what of each row's last byte is no pixel.
ByteVector used_bits(const PixelLayout& layout, ByteVector samples) {
    const auto rowBytes = static_cast<std::size_t>(layout.packedRowBytes());
    const std::size_t unused = rowBytes * 8 - width * static_cast<unsigned>(layout.bitsPerPixel());
    for (std::size_t end = rowBytes; end <= samples.size(); end += rowBytes) {
        samples[end - 1] &= static_cast<std::uint8_t>(0xFF << unused);
    }
    return samples;
}

CommandResult check(const Encoded& file, const std::string& options) {
    const TemporaryFolder folder;
    return run("pngcheck " + options + " " + folder.write("file.png", view(file)));
}

struct Written {
    PixelLayout layout;
    int color;
};
void PrintTo(const Written& written, std::ostream* stream) {
    *stream << testing::PrintToString(written.layout);
}

class PngWriting : public testing::TestWithParam<Written> {};
INSTANTIATE_TEST_SUITE_P(
    Layouts, PngWriting,
    testing::Values(Written{layout(ColorModel::Gray, Alpha::None, 1), PngGray},
                    Written{layout(ColorModel::Gray, Alpha::None, 2), PngGray},
                    Written{layout(ColorModel::Gray, Alpha::None, 4), PngGray},
                    Written{layout(ColorModel::Gray, Alpha::None, 8), PngGray},
                    Written{layout(ColorModel::Gray, Alpha::None, 16), PngGray},
                    Written{layout(ColorModel::Gray, Alpha::Straight, 8), PngGrayAlpha},
                    Written{layout(ColorModel::Gray, Alpha::Straight, 16), PngGrayAlpha},
                    Written{layout(ColorModel::RGB, Alpha::None, 8), PngRGB},
                    Written{layout(ColorModel::RGB, Alpha::None, 16), PngRGB},
                    Written{layout(ColorModel::RGB, Alpha::Straight, 8), PngRGBA},
                    Written{layout(ColorModel::RGB, Alpha::Straight, 16), PngRGBA}),
    [](const auto& cases) {
        return std::string(1, "GRC"[static_cast<int>(cases.param.layout.model)]) +
               (cases.param.layout.alpha == Alpha::None ? "" : "A") +
               std::to_string(cases.param.layout.bitsPerSample);
    });

TEST_P(PngWriting, KeepsEverySample) {
    const auto [layout, color] = GetParam();
    const auto samples = samples_for(layout);
    const auto content = take_apart(view(encode(png, picture(layout, samples))));
    EXPECT_EQ(content.width, width);
    EXPECT_EQ(content.height, height);
    EXPECT_EQ(content.bits, layout.bitsPerSample);
    EXPECT_EQ(content.color, color);
    EXPECT_EQ(used_bits(layout, content.samples), used_bits(layout, as_stored(layout, samples)));
}

TEST_P(PngWriting, TakesRowsWithPadding) {
    const auto layout = GetParam().layout;
    const auto samples = samples_for(layout);
    ByteVector storage;
    const auto content = take_apart(view(encode(png, padded_picture(layout, samples, storage))));
    EXPECT_EQ(used_bits(layout, content.samples), used_bits(layout, as_stored(layout, samples)));
}

TEST_P(PngWriting, MakesFilesThatPass) {
    const auto layout = GetParam().layout;
    const auto samples = samples_for(layout);
    const auto result = check(encode(png, picture(layout, samples)), "-q");
    EXPECT_EQ(result.status, 0) << result.output;
}

TEST_P(PngWriting, KeepsEverySampleOfInterlacedFiles) {
    const auto layout = GetParam().layout;
    const auto samples = samples_for(layout);
    const auto file = encode(png, picture(layout, samples), {.interlaced = true});
    EXPECT_EQ(take_apart(view(file)).interlace, 1);
    EXPECT_EQ(check(file, "-q").status, 0);
    EXPECT_EQ(decode(view(file)), used_bits(layout, samples));
}

const PixelLayout color = layout(ColorModel::RGB, Alpha::None, 8);

TEST(PngFileWriting, IsReadByTheLibrarysOwnReaderAsItWasGiven) {
    const auto samples = samples_for(color);
    const auto file = encode(png, picture(color, samples), {.interlaced = true});
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_memory(&image, file.bytes.get(), file.size));
    image.format = PNG_FORMAT_RGB;
    ByteVector read(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, read.data(), 0, nullptr));
    EXPECT_EQ(read, samples);
}

TEST(PngFileWriting, StoresTheResolutionInPixelsPerMeter) {
    const auto samples = samples_for(color);
    Picture page = picture(color, samples);
    page.dpiX = 300;
    page.dpiY = 72;
    ByteVector expected;
    append_32(expected, ByteOrder::Big, 11811);
    append_32(expected, ByteOrder::Big, 2835);
    expected.push_back(1);
    EXPECT_EQ(take_apart(view(encode(png, page))).chunk("pHYs"), expected);
}

TEST(PngFileWriting, LeavesAnUnsetResolutionOut) {
    const auto samples = samples_for(color);
    const auto content = take_apart(view(encode(png, picture(color, samples))));
    EXPECT_THAT(content.chunks, Not(Contains(testing::Key("pHYs"))));
    EXPECT_THAT(content.chunks, Not(Contains(testing::Key("iCCP"))));
}

/// A profile that libpng lets pass: a header and one tag.
ByteVector profile() {
    constexpr std::uint8_t size = 200;
    constexpr std::uint8_t tagAt = 144;
    ByteVector bytes(size);
    const auto put = [&](std::size_t at, const ByteVector& content) {
        std::copy(content.begin(), content.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
    };
    put(0, {0, 0, 0, size});
    put(8, {2});
    put(12, bytes_of("mntrRGB XYZ "));
    put(36, bytes_of("acsp"));
    put(68, {0, 0, 0xF6, 0xD6, 0, 1, 0, 0, 0, 0, 0xD3, 0x2D}); // the white of D50
    put(128, {0, 0, 0, 1});
    put(132, bytes_of("desc"));
    put(136, {0, 0, 0, tagAt, 0, 0, 0, size - tagAt});
    put(tagAt, noise(size - tagAt, 23));
    return bytes;
}

TEST(PngFileWriting, StoresTheColorProfile) {
    const auto samples = samples_for(color);
    const auto colors = profile();
    Picture page = picture(color, samples);
    page.iccProfile = colors;
    const auto file = encode(png, page);
    EXPECT_EQ(header(view(file))->iccProfile, colors);
    EXPECT_THAT(check(file, "-v").output, HasSubstr("iCCP"));
}

TEST(PngFileWriting, LeavesOutAProfileThatIsNone) {
    const auto samples = samples_for(color);
    const auto garbage = noise(40, 8);
    Picture page = picture(color, samples);
    page.iccProfile = garbage;
    const auto content = take_apart(view(encode(png, page)));
    EXPECT_EQ(content.samples, samples);
    EXPECT_THAT(content.chunks, Not(Contains(testing::Key("iCCP"))));
}

TEST(PngFileWriting, StoresTheExifBlock) {
    const auto samples = samples_for(color);
    const auto block = exif_block(6);
    Picture page = picture(color, samples);
    page.exif = block;
    EXPECT_EQ(take_apart(view(encode(png, page))).chunk("eXIf"), block);
}

TEST(PngFileWriting, RefusesWhatTheFormatCannotHold) {
    for (const PixelLayout& layout :
         {layout(ColorModel::CMYK, Alpha::None, 8), layout(ColorModel::RGB, Alpha::None, 4),
          layout(ColorModel::RGB, Alpha::Premultiplied, 8),
          layout(ColorModel::Gray, Alpha::Straight, 4), layout(ColorModel::Gray, Alpha::None, 7)}) {
        const auto samples = samples_for(layout);
        EXPECT_FALSE(encode(png, picture(layout, samples))) << testing::PrintToString(layout);
    }
}

TEST(PngFileWriting, RefusesPicturesThatAreNone) {
    const auto samples = samples_for(color);
    const Picture good = picture(color, samples);
    EXPECT_TRUE(encode(png, good));
    Picture bad = good;
    bad.pixels = nullptr;
    EXPECT_FALSE(encode(png, bad));
    bad = good;
    bad.rowBytes -= 1;
    EXPECT_FALSE(encode(png, bad));
    bad = good;
    bad.layout.width = 0;
    EXPECT_FALSE(encode(png, bad));
    bad = good;
    bad.layout.height = 0;
    EXPECT_FALSE(encode(png, bad));
}

TEST(PngFileWriting, TakesExactlyOnePage) {
    const auto samples = samples_for(color);
    const Picture pages[] = {picture(color, samples), picture(color, samples)};
    EXPECT_FALSE(png.encode({pages, 0}, {}));
    EXPECT_TRUE(png.encode({pages, 1}, {}));
    EXPECT_FALSE(png.encode({pages, 2}, {}));
}

} // namespace
} // namespace codecs_test
