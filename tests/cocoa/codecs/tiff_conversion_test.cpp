/// Files that libtiff's own programs made of ones that were put together by hand.

#include "tiff_file.h"

#include <cctype>
#include <cstring>

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

constexpr std::uint32_t width = 47;
constexpr std::uint32_t height = 33;

TiffImage image(std::uint16_t photometric, std::uint16_t samples, std::uint16_t bits,
                const ByteVector& content) {
    return TiffImage(width, height, photometric, samples, bits).data(content);
}

/// The file that `command` makes of an image.
ByteVector converted(const std::string& command, const TiffImage& from) {
    const TemporaryFolder folder;
    const auto source = folder.write("from.tiff", TiffFile(ByteOrder::Big).page(from).bytes());
    const auto result = run(command + " " + source + " " + folder.path("to.tiff"));
    EXPECT_EQ(result.status, 0) << result.output;
    return folder.read("to.tiff");
}

ByteVector rendered(const ByteVector& file) {
    const TemporaryFolder folder;
    return rendered_by_libtiff(folder.write("file.tiff", file));
}

/// Red, green and blue without the alpha beside them.
ByteVector without_alpha(const ByteVector& pixels) {
    ByteVector colors;
    for (std::size_t i = 0; i + 3 < pixels.size(); i += 4) {
        colors.insert(colors.end(), &pixels[i], &pixels[i] + 3);
    }
    return colors;
}

std::string name_of(const testing::TestParamInfo<std::string>& arguments) {
    std::string name;
    for (const char letter : arguments.param) {
        if (std::isalnum(static_cast<unsigned char>(letter))) name += letter;
    }
    return name;
}

class TiffLossless : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Of, TiffLossless,
                         testing::Values("-c none -L", "-c none -B", "-c none -r 5", "-c lzw:1",
                                         "-c lzw:2", "-c packbits", "-c zip:1", "-c zip:2",
                                         "-c none -t -w 16 -l 32", "-c lzw -t -w 32 -l 16",
                                         "-c zip -p separate -t -w 16 -l 16", "-8 -c lzw"),
                         name_of);

TEST_P(TiffLossless, ColorsComeOutAsTheyWentIn) {
    auto samples = gradient(width, height, 3);
    const auto speckles = noise(200, 6);
    std::copy(speckles.begin(), speckles.end(), samples.begin() + 1000);
    const auto file = converted("tiffcp " + GetParam(), image(PHOTOMETRIC_RGB, 3, 8, samples));
    EXPECT_EQ(decode(file), samples);
}

TEST_P(TiffLossless, SixteenBitGrayComesOutAsItWentIn) {
    ByteVector big(width * height * 2);
    ByteVector expected(big.size());
    for (std::size_t i = 0; i < width * height; ++i) {
        const auto sample = static_cast<std::uint16_t>(i * 37);
        big[2 * i] = static_cast<std::uint8_t>(sample >> 8);
        big[2 * i + 1] = static_cast<std::uint8_t>(sample);
        std::memcpy(&expected[2 * i], &sample, 2);
    }
    const auto file = converted("tiffcp " + GetParam(), image(PHOTOMETRIC_MINISBLACK, 1, 16, big));
    EXPECT_EQ(decode(file), expected);
}

class TiffBlackAndWhite : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Of, TiffBlackAndWhite,
                         testing::Values("-c none -f lsb2msb", "-c g3", "-c g3:2d", "-c g3:fill",
                                         "-c g4", "-c g4 -f lsb2msb", "-c g4 -t -w 16 -l 16",
                                         "-c packbits"),
                         name_of);

TEST_P(TiffBlackAndWhite, ComesOutAsItWentIn) {
    constexpr std::size_t rowBytes = (width + 7) / 8;
    ByteVector samples = noise(rowBytes * height, 7);
    constexpr auto used = static_cast<std::uint8_t>(0xFF << (8 * rowBytes - width));
    for (std::size_t y = 0; y < height; ++y)
        samples[y * rowBytes + rowBytes - 1] &= used;
    const auto file =
        converted("tiffcp " + GetParam(), image(PHOTOMETRIC_MINISBLACK, 1, 1, samples));
    EXPECT_EQ(decode(file), samples);
}

TEST(TiffConversion, JpegCompressedYCbCrIsWhatLibtiffMakesOfIt) {
    const auto file =
        converted("tiffcp -c jpeg:90", image(PHOTOMETRIC_RGB, 3, 8, gradient(width, height, 3)));
    EXPECT_EQ(header(file)->layout, (PixelLayout{width, height, ColorModel::RGB, Alpha::None, 8}));
    EXPECT_EQ(decode(file), without_alpha(rendered(file)));
}

TEST(TiffConversion, JpegCompressedTilesAreWhatLibtiffMakesOfThem) {
    const auto file = converted("tiffcp -c jpeg:90 -t -w 32 -l 32",
                                image(PHOTOMETRIC_RGB, 3, 8, gradient(width, height, 3)));
    EXPECT_EQ(decode(file), without_alpha(rendered(file)));
}

TEST(TiffConversion, JpegCompressedRGBIsWhatLibtiffMakesOfIt) {
    const auto file =
        converted("tiffcp -c jpeg:r:90", image(PHOTOMETRIC_RGB, 3, 8, gradient(width, height, 3)));
    EXPECT_EQ(decode(file), without_alpha(rendered(file)));
}

TEST(TiffConversion, JpegCompressedGrayIsWhatLibtiffMakesOfIt) {
    const auto file = converted("tiffcp -c jpeg:90",
                                image(PHOTOMETRIC_MINISBLACK, 1, 8, gradient(width, height, 1)));
    const auto pixels = decode(file);
    ASSERT_TRUE(pixels);
    const auto expected = rendered(file);
    for (std::size_t i = 0; i < pixels->size(); ++i) {
        ASSERT_EQ((*pixels)[i], expected[i * 4]) << "pixel " << i;
    }
}

/// Blocks of 2 by 2: four of light and one each of blue and red difference.
ByteVector subsampled_ycbcr(std::uint32_t orientation) {
    TiffImage made(4, 4, PHOTOMETRIC_YCBCR, 3, 8);
    made.shorts(TIFFTAG_YCBCRSUBSAMPLING, {2, 2}).shorts(TIFFTAG_ORIENTATION, {orientation});
    made.data({200, 180, 160, 140, 128, 128, 90, 80, 70, 60, 100, 200,   // upper blocks
               20,  40,  60,  80,  220, 50,  99, 98, 97, 96, 128, 160}); // lower blocks
    return TiffFile(ByteOrder::Little).page(made).bytes();
}

TEST(TiffConversion, SubsampledYCbCrIsWhatLibtiffMakesOfIt) {
    const auto file = subsampled_ycbcr(ORIENTATION_TOPLEFT);
    EXPECT_EQ(header(file)->layout, (PixelLayout{4, 4, ColorModel::RGB, Alpha::None, 8}));
    EXPECT_EQ(decode(file), without_alpha(rendered(file)));
}

TEST(TiffConversion, RowsOfSubsampledYCbCrStayAsStoredWhateverTheOrientation) {
    const auto upright = decode(subsampled_ycbcr(ORIENTATION_TOPLEFT));
    ASSERT_TRUE(upright);
    const auto turned = subsampled_ycbcr(ORIENTATION_BOTLEFT);
    EXPECT_EQ(header(turned)->orientation, 4);
    EXPECT_EQ(decode(turned), upright);
}

} // namespace
} // namespace codecs_test
