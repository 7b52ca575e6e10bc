#include "tiff_file.h"

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::uint32_t width = 45;
constexpr std::uint32_t height = 70;

PixelLayout layout(ColorModel model, Alpha alpha, int bits) {
    return {width, height, model, alpha, static_cast<std::uint8_t>(bits)};
}

ByteVector samples_for(const PixelLayout& layout) {
    return noise(static_cast<std::size_t>(layout.packedRowBytes() * layout.height), 21);
}

std::string description(const Encoded& encoded) {
    const TemporaryFolder folder;
    const auto result = run("tiffinfo " + folder.write("file.tiff", view(encoded)));
    EXPECT_EQ(result.status, 0) << result.output;
    return result.output;
}

ByteVector stored_rows(const Encoded& encoded, unsigned page = 0) {
    const TemporaryFolder folder;
    return rows_by_libtiff(folder.write("file.tiff", view(encoded)), page);
}

struct Written {
    ColorModel model;
    Alpha alpha;
    int bits;
    TIFFCompression compression;
};
void PrintTo(const Written& written, std::ostream* stream) {
    *stream << testing::PrintToString(layout(written.model, written.alpha, written.bits))
            << ", compression " << static_cast<int>(written.compression);
}

std::vector<Written> every_layout() {
    std::vector<Written> all;
    for (const auto compression :
         {TIFFCompression::None, TIFFCompression::LZW, TIFFCompression::PackBits}) {
        for (const auto model : {ColorModel::Gray, ColorModel::RGB, ColorModel::CMYK}) {
            for (const auto alpha : {Alpha::None, Alpha::Straight, Alpha::Premultiplied}) {
                for (const int bits : {1, 2, 4, 8, 16}) {
                    all.push_back({model, alpha, bits, compression});
                }
            }
        }
    }
    return all;
}

std::string name_of(const testing::TestParamInfo<Written>& written) {
    static constexpr const char* models[] = {"Gray", "RGB", "CMYK"};
    static constexpr const char* alphas[] = {"", "Straight", "Premultiplied"};
    const Written& how = written.param;
    return std::string(models[static_cast<int>(how.model)]) + alphas[static_cast<int>(how.alpha)] +
           std::to_string(how.bits) + "Compression" +
           std::to_string(static_cast<int>(how.compression));
}

class TiffWriting : public testing::TestWithParam<Written> {};
INSTANTIATE_TEST_SUITE_P(Layouts, TiffWriting, testing::ValuesIn(every_layout()), name_of);

TEST_P(TiffWriting, KeepsEverySample) {
    const auto [model, alpha, bits, compression] = GetParam();
    const PixelLayout given = layout(model, alpha, bits);
    const auto samples = samples_for(given);
    const auto file = encode(tiff, picture(given, samples), {.compression = compression});
    EXPECT_EQ(stored_rows(file), samples);
    EXPECT_EQ(header(view(file))->layout, given);

    ByteVector storage;
    const auto padded =
        encode(tiff, padded_picture(given, samples, storage), {.compression = compression});
    EXPECT_EQ(copy(padded), copy(file));
}

const PixelLayout color = layout(ColorModel::RGB, Alpha::None, 8);
const PixelLayout bilevel = layout(ColorModel::Gray, Alpha::None, 1);

TEST(TiffFileWriting, NamesTheCompressionAndTheColors) {
    const auto samples = samples_for(color);
    const auto page = picture(color, samples);
    const auto described = [&](TIFFCompression compression) {
        return description(encode(tiff, page, {.compression = compression}));
    };
    EXPECT_THAT(described(TIFFCompression::None), HasSubstr("Compression Scheme: None"));
    EXPECT_THAT(described(TIFFCompression::LZW), HasSubstr("Compression Scheme: LZW"));
    EXPECT_THAT(described(TIFFCompression::PackBits), HasSubstr("Compression Scheme: PackBits"));
    EXPECT_THAT(described(TIFFCompression::JPEG), HasSubstr("Compression Scheme: JPEG"));
    EXPECT_THAT(described(TIFFCompression::JPEG), HasSubstr("Interpretation: YCbCr"));
    EXPECT_THAT(described(TIFFCompression::None), HasSubstr("Interpretation: RGB color"));
}

TEST(TiffFileWriting, MakesAPhotoSmallerWithAPredictor) {
    const PixelLayout large{400, 300, ColorModel::RGB, Alpha::None, 8};
    const auto samples = gradient(400, 300, 3);
    const auto file = encode(tiff, picture(large, samples), {.compression = TIFFCompression::LZW});
    EXPECT_LT(file.size, samples.size() / 8);
    EXPECT_EQ(stored_rows(file), samples);
    EXPECT_THAT(description(file), HasSubstr("Predictor: horizontal differencing"));
}

class TiffFax : public testing::TestWithParam<TIFFCompression> {};
INSTANTIATE_TEST_SUITE_P(Group, TiffFax,
                         testing::Values(TIFFCompression::CCITTFax3, TIFFCompression::CCITTFax4),
                         [](const auto& compressions) {
                             return std::to_string(static_cast<int>(compressions.param));
                         });

TEST_P(TiffFax, StoresWhiteAsZero) {
    const auto samples = samples_for(bilevel);
    const auto file = encode(tiff, picture(bilevel, samples), {.compression = GetParam()});
    EXPECT_THAT(description(file), HasSubstr("min-is-white"));
    auto stored = stored_rows(file);
    auto expected = samples;
    constexpr std::size_t rowBytes = (width + 7) / 8;
    constexpr auto used = static_cast<std::uint8_t>(0xFF << (rowBytes * 8 - width));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        expected[i] = static_cast<std::uint8_t>(~expected[i]);
        if (i % rowBytes != rowBytes - 1) continue;
        expected[i] &= used;
        stored[i] &= used;
    }
    EXPECT_EQ(stored, expected);
}

TEST_P(TiffFax, RefusesWhatIsNotBlackAndWhite) {
    for (const PixelLayout& layout :
         {layout(ColorModel::Gray, Alpha::None, 8), layout(ColorModel::Gray, Alpha::Straight, 1),
          layout(ColorModel::RGB, Alpha::None, 1)}) {
        const auto samples = samples_for(layout);
        EXPECT_FALSE(encode(tiff, picture(layout, samples), {.compression = GetParam()}));
    }
}

class TiffJpeg : public testing::TestWithParam<ColorModel> {};
INSTANTIATE_TEST_SUITE_P(Colors, TiffJpeg,
                         testing::Values(ColorModel::Gray, ColorModel::RGB, ColorModel::CMYK),
                         [](const auto& models) {
                             return std::to_string(static_cast<int>(models.param));
                         });

TEST_P(TiffJpeg, KeepsSmoothImagesNearly) {
    const PixelLayout given = layout(GetParam(), Alpha::None, 8);
    const auto samples = gradient(width, height, given.samplesPerPixel());
    const auto file =
        encode(tiff, picture(given, samples), {.quality = 1, .compression = TIFFCompression::JPEG});
    const auto pixels = decode(view(file));
    ASSERT_TRUE(pixels);
    ASSERT_EQ(pixels->size(), samples.size());
    // Colours of blocks of 2 by 2 are stored as one.
    constexpr int tolerance = 8;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        ASSERT_NEAR((*pixels)[i], samples[i], tolerance) << i;
    }
}

TEST(TiffFileWriting, GrowsWithTheQualityOfJpegCompression) {
    const auto samples = samples_for(color);
    const auto at = [&](float quality) {
        return encode(tiff, picture(color, samples),
                      {.quality = quality, .compression = TIFFCompression::JPEG})
            .size;
    };
    EXPECT_LT(at(0.1F), at(0.5F));
    EXPECT_LT(at(0.5F), at(1));
}

TEST(TiffFileWriting, RefusesJpegCompressionOfWhatJpegCannotHold) {
    for (const PixelLayout& layout : {layout(ColorModel::RGB, Alpha::Straight, 8),
                                      layout(ColorModel::RGB, Alpha::None, 16), bilevel}) {
        const auto samples = samples_for(layout);
        EXPECT_FALSE(
            encode(tiff, picture(layout, samples), {.compression = TIFFCompression::JPEG}));
    }
}

TEST(TiffFileWriting, RefusesAnUnknownCompression) {
    const auto samples = samples_for(color);
    EXPECT_FALSE(encode(tiff, picture(color, samples),
                        {.compression = static_cast<TIFFCompression>(32766)}));
}

TEST(TiffFileWriting, StoresTheResolution) {
    const auto samples = samples_for(color);
    Picture page = picture(color, samples);
    page.dpiX = 300;
    page.dpiY = 150.5;
    EXPECT_THAT(description(encode(tiff, page)), HasSubstr("Resolution: 300, 150.5 pixels/inch"));
}

TEST(TiffFileWriting, LeavesAnUnsetResolutionOut) {
    const auto samples = samples_for(color);
    EXPECT_THAT(description(encode(tiff, picture(color, samples))), Not(HasSubstr("Resolution")));
}

TEST(TiffFileWriting, TellsPremultipliedFromStraightAlpha) {
    const auto described = [](Alpha alpha) {
        const PixelLayout given = layout(ColorModel::RGB, alpha, 8);
        const auto samples = samples_for(given);
        return description(encode(tiff, picture(given, samples)));
    };
    EXPECT_THAT(described(Alpha::Premultiplied), HasSubstr("Extra Samples: 1<assoc-alpha>"));
    EXPECT_THAT(described(Alpha::Straight), HasSubstr("Extra Samples: 1<unassoc-alpha>"));
    EXPECT_THAT(described(Alpha::None), Not(HasSubstr("Extra Samples")));
}

TEST(TiffFileWriting, StoresTheColorProfile) {
    const auto samples = samples_for(color);
    const auto profile = noise(3000, 22);
    Picture page = picture(color, samples);
    page.iccProfile = profile;
    EXPECT_EQ(header(view(encode(tiff, page)))->iccProfile, profile);
}

TEST(TiffFileWriting, WritesEveryPage) {
    const auto first = samples_for(color);
    const auto second = samples_for(bilevel);
    Picture pages[] = {picture(color, first), picture(bilevel, second)};
    pages[1].dpiX = pages[1].dpiY = 204;
    const Encoded file = tiff.encode(pages, {.compression = TIFFCompression::PackBits});
    EXPECT_EQ(stored_rows(file, 0), first);
    EXPECT_EQ(stored_rows(file, 1), second);
    EXPECT_THAT(description(file), HasSubstr("Page Number: 1-2"));
    EXPECT_EQ(header(view(file), 0)->dpiX, 0);
    EXPECT_EQ(header(view(file), 1)->dpiX, 204);
}

TEST(TiffFileWriting, RefusesAllWhenOnePageCannotBeWritten) {
    const auto first = samples_for(bilevel);
    const auto second = samples_for(color);
    const Picture pages[] = {picture(bilevel, first), picture(color, second)};
    EXPECT_TRUE(tiff.encode({pages, 1}, {.compression = TIFFCompression::CCITTFax4}));
    EXPECT_FALSE(tiff.encode(pages, {.compression = TIFFCompression::CCITTFax4}));
    EXPECT_FALSE(tiff.encode({pages, 0}, {}));
}

TEST(TiffFileWriting, LeavesTheCallersPixelsAlone) {
    const auto samples = samples_for(color);
    for (const auto compression : {TIFFCompression::None, TIFFCompression::LZW,
                                   TIFFCompression::PackBits, TIFFCompression::JPEG}) {
        const auto kept = samples;
        ASSERT_TRUE(encode(tiff, picture(color, samples), {.compression = compression}));
        EXPECT_EQ(samples, kept) << static_cast<int>(compression);
    }
}

} // namespace
} // namespace codecs_test
