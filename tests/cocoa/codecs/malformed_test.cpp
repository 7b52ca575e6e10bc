/// Files that are cut short, damaged or lie: each gives nothing, and is read only where it has
/// bytes. The address sanitizer makes these tests strict.

#include "bmp_file.h"
#include "gif_file.h"
#include "jpeg_file.h"
#include "png_file.h"
#include "tiff_file.h"

#include <algorithm>
#include <random>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <zlib.h>

namespace codecs_test {
namespace {

struct Sample {
    std::string name;
    ByteVector file;
};
void PrintTo(const Sample& sample, std::ostream* stream) { *stream << sample.name; }

ByteVector made_tiff(const PixelLayout& layout, TIFFCompression compression) {
    const auto samples =
        noise(static_cast<std::size_t>(layout.packedRowBytes() * layout.height), 31);
    return copy(encode(tiff, picture(layout, samples), {.compression = compression}));
}

std::vector<Sample> samples() {
    const auto colors = gradient(16, 12, 3);
    const auto profile = noise(300, 32);
    const PixelLayout color{16, 12, ColorModel::RGB, Alpha::None, 8};
    const PixelLayout bilevel{16, 12, ColorModel::Gray, Alpha::None, 1};
    return {
        {"Png", PngFile(3, 3, 8, PngRGBA)
                    .chunk("eXIf", exif_block(6))
                    .rows(std::vector<ByteVector>(3, noise(12, 33)))
                    .end()},
        {"PngPalette", PngFile(3, 1, 2, PngPalette)
                           .chunk("PLTE", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12})
                           .chunk("tRNS", {0, 99})
                           .rows({{0b00011000}})
                           .end()},
        {"Jpeg", make_jpeg({.width = 16,
                            .height = 12,
                            .markers = {{JPEG_APP0 + 1, exif_marker(exif_block(6))}},
                            .profile = profile},
                           colors)},
        {"JpegProgressive", make_jpeg({.width = 16, .height = 12, .progressive = true}, colors)},
        {"TiffLittle", TiffFile(ByteOrder::Little).page(tiny_gray()).page(tiny_gray()).bytes()},
        {"TiffBig", TiffFile(ByteOrder::Big).page(tiny_gray()).page(tiny_gray()).bytes()},
        {"TiffLZW", made_tiff(color, TIFFCompression::LZW)},
        {"TiffPackBits", made_tiff(color, TIFFCompression::PackBits)},
        {"TiffFax3", made_tiff(bilevel, TIFFCompression::CCITTFax3)},
        {"TiffFax4", made_tiff(bilevel, TIFFCompression::CCITTFax4)},
        {"TiffJpeg", made_tiff(color, TIFFCompression::JPEG)},
        {"Gif", copy(encode(gif, picture(color, colors), {.interlaced = true}))},
        {"GifMoving", GifFile(3, 2)
                          .repeats(2)
                          .frame({.left = 1, .width = 2, .indices = {1, 2}, .disposal = 3})
                          .frame({.height = 2, .indices = {3, 0}, .transparentIndex = 0})
                          .end()},
        {"Bmp", copy(encode(bmp, picture(color, colors)))},
        {"BmpFields", BmpFile({.headerSize = 108,
                               .bits = 32,
                               .compression = 3,
                               .masks = {0xFF, 0xFF00, 0xFF0000, 0xFF000000}})
                          .pixels({1, 2, 3, 4})},
        {"BmpRuns", BmpFile({.width = 4, .height = 3, .bits = 8, .compression = 1})
                        .pixels({3, 1, 0, 0, 0, 3, 1, 2, 3, 0, 0, 2, 1, 1, 2, 3, 0, 1})},
    };
}

/// Reads all that opens, small enough that a loop over many files stays quick.
void read_everything(Bytes data) {
    const Opened opened = open(data);
    if (!opened.reader) return;
    for (std::size_t page = 0; page < opened.reader->pageCount(); ++page) {
        const PixelLayout layout = opened.reader->page(page).layout;
        constexpr std::uint64_t small = 1 << 20;
        if (layout.packedRowBytes() * layout.height > small) continue;
        decode(data, page);
        decode(data, page, 8);
    }
}

class Damaged : public testing::TestWithParam<Sample> {};
INSTANTIATE_TEST_SUITE_P(File, Damaged, testing::ValuesIn(samples()),
                         [](const auto& files) { return files.param.name; });

TEST_P(Damaged, IsReadWhenWhole) { EXPECT_TRUE(decode(GetParam().file)); }

TEST_P(Damaged, GivesNothingWhereverItIsCut) {
    const ByteVector& file = GetParam().file;
    for (std::size_t size = 0; size < file.size(); ++size) {
        // A copy of its own, so that a byte read behind it is found out.
        const ByteVector cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
        ASSERT_FALSE(decode(cut)) << "cut to " << size << " of " << file.size() << " bytes";
    }
}

TEST_P(Damaged, SurvivesEveryByteBeingWrong) {
    for (std::size_t at = 0; at < GetParam().file.size(); ++at) {
        for (const std::uint8_t value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            ByteVector file = GetParam().file;
            file[at] = value;
            read_everything(file);
        }
    }
}

TEST_P(Damaged, SurvivesFlippedBits) {
    std::mt19937 random(34);
    for (int round = 0; round < 2000; ++round) {
        ByteVector file = GetParam().file;
        const unsigned flips = 1 + random() % 8;
        for (unsigned i = 0; i < flips; ++i) {
            file[random() % file.size()] ^= static_cast<std::uint8_t>(1U << random() % 8);
        }
        read_everything(file);
    }
}

TEST_P(Damaged, SurvivesNoiseBehindItsSignature) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        ByteVector file(GetParam().file.begin(), GetParam().file.begin() + 8);
        append(file, noise(64 + seed, seed));
        read_everything(file);
    }
}

TEST(Malformed, PngWithAWrongChecksumIsBroken) {
    auto file = PngFile(2, 1, 8, PngGray).rows({{1, 2}}).end();
    ASSERT_TRUE(decode(file));
    const auto lastOfImageData = file.end() - 12 - 1; // before the whole of IEND
    *lastOfImageData ^= 1;
    EXPECT_FALSE(decode(file));
}

TEST(Malformed, PngWithTooFewRowsIsBroken) {
    EXPECT_TRUE(decode(PngFile(2, 2, 8, PngGray).rows({{1, 2}, {3, 4}}).end()));
    EXPECT_FALSE(decode(PngFile(2, 2, 8, PngGray).rows({{1, 2}}).end()));
}

TEST(Malformed, PngKeepsTheRowsBeforeTheBrokenOne) {
    const auto file = PngFile(2, 3, 8, PngGray).rows({{1, 2}, {3, 4}}).end();
    const auto opened = open(file);
    ByteVector pixels(6, 99);
    EXPECT_FALSE(opened.reader->read(0, 1, pixels.data(), 2));
    EXPECT_THAT(pixels, testing::ElementsAre(1, 2, 3, 4, 99, 99));
}

TEST(Malformed, TiffWhosePagesGoInACircleIsRefused) {
    auto file = TiffFile(ByteOrder::Little).page(tiny_gray()).bytes();
    ASSERT_TRUE(header(file));
    std::copy(file.begin() + 4, file.begin() + 8, file.end() - 4); // next: the first
    EXPECT_FALSE(header(file));
}

ByteVector two_strips(const ByteVector& second) {
    TiffImage image(3, 2, PHOTOMETRIC_MINISBLACK, 1, 8);
    image.longs(TIFFTAG_ROWSPERSTRIP, {1}).data({1, 2, 3}).data(second);
    return TiffFile(ByteOrder::Little).page(image).bytes();
}

TEST(Malformed, TiffWithAStripThatIsTooShortIsRefused) {
    EXPECT_TRUE(header(two_strips({4, 5, 6})));
    EXPECT_FALSE(header(two_strips({4, 5})));
}

TEST(Malformed, TiffWithAStripOutsideTheFileIsRefused) {
    auto file = two_strips({4, 5, 6});
    ASSERT_TRUE(header(file));
    // The strips' places, 8 and 11, stand in the file before the directory.
    const ByteVector places{8, 0, 0, 0, 11, 0, 0, 0};
    const auto found = std::search(file.begin(), file.end(), places.begin(), places.end());
    ASSERT_NE(found, file.end());
    *(found + 4) = static_cast<std::uint8_t>(file.size() - 2);
    EXPECT_FALSE(header(file));
}

/// What the process has come to use, in bytes.
std::uint64_t peak_memory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return std::uint64_t(usage.ru_maxrss) * 1024;
}

constexpr std::uint64_t little = 32 << 20;

TEST(Lying, PngOfSixtyThousandASideIsRefusedWithoutTakingMemory) {
    const auto before = peak_memory();
    EXPECT_FALSE(header(PngFile(60000, 60000, 8, PngRGBA).rows({{1}}).end()));
    EXPECT_LT(peak_memory() - before, little);
}

TEST(Lying, JpegOfSixtyThousandASideIsRefusedWithoutTakingMemory) {
    auto file = make_jpeg({.width = 16, .height = 12}, gradient(16, 12, 3));
    for (std::size_t i = 0; i + 9 < file.size(); ++i) {
        if (file[i] != 0xFF || file[i + 1] != 0xC0) continue;
        ASSERT_EQ(file[i + 6], 12);
        file[i + 5] = file[i + 7] = 60000 >> 8;
        file[i + 6] = file[i + 8] = 60000 & 0xFF;
    }
    const auto before = peak_memory();
    EXPECT_FALSE(header(file));
    EXPECT_LT(peak_memory() - before, little);
}

TEST(Lying, TiffOfSixtyThousandASideIsRefusedWithoutTakingMemory) {
    for (const std::uint32_t compression :
         {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_CCITTFAX4, COMPRESSION_JPEG}) {
        TiffImage image(60000, 60000, PHOTOMETRIC_MINISBLACK, 1, 8);
        image.shorts(TIFFTAG_COMPRESSION, {compression}).data({1, 2, 3});
        const auto before = peak_memory();
        EXPECT_FALSE(header(TiffFile(ByteOrder::Little).page(image).bytes())) << compression;
        EXPECT_LT(peak_memory() - before, little);
    }
}

TEST(Lying, GifOfSixtyThousandASideIsRefusedWithoutTakingMemory) {
    const auto before = peak_memory();
    EXPECT_FALSE(header(
        GifFile(60000, 60000).frame({.width = 60000, .height = 60000, .indices = {1}}).end()));
    EXPECT_FALSE(header(GifFile(30000, 30000).frame({.indices = {1}}).end()));
    EXPECT_LT(peak_memory() - before, little);
}

TEST(Lying, BmpOfSixtyThousandASideIsRefusedWithoutTakingMemory) {
    for (const std::uint32_t compression : {0U, 1U}) {
        const auto before = peak_memory();
        EXPECT_FALSE(
            header(BmpFile({.width = 30000, .height = 30000, .bits = 8, .compression = compression})
                       .pixels({0, 1})));
        EXPECT_LT(peak_memory() - before, little);
    }
}

TEST(Lying, SidesThatOverflowWhenMultipliedAreRefused) {
    const std::uint32_t most = 0x7FFFFFFF;
    EXPECT_FALSE(header(PngFile(most, most, 16, PngRGBA).rows({{1}}).end()));
    TiffImage image(0xFFFFFFFF, 0xFFFFFFFF, PHOTOMETRIC_RGB, 4, 16);
    EXPECT_FALSE(header(TiffFile(ByteOrder::Big).page(image.data({1})).bytes()));
}

/// The rows of a white 1-bit image, deflated: some 100 KB for 100 MB.
ByteVector deflated_white(std::uint32_t width, std::uint32_t height) {
    ByteVector row((width + 7) / 8 + 1, 0xFF);
    row[0] = 0;
    ByteVector deflated(1 << 20);
    z_stream stream{};
    deflateInit(&stream, Z_BEST_SPEED);
    stream.next_out = deflated.data();
    stream.avail_out = static_cast<uInt>(deflated.size());
    for (std::uint32_t y = 0; y < height; ++y) {
        stream.next_in = row.data();
        stream.avail_in = static_cast<uInt>(row.size());
        deflate(&stream, y + 1 == height ? Z_FINISH : Z_NO_FLUSH);
    }
    deflated.resize(stream.total_out);
    deflateEnd(&stream);
    return deflated;
}

TEST(Large, PngOfThirtyThousandASideOpensWithoutTakingMemory) {
    constexpr std::uint32_t side = 30000;
    const auto file =
        PngFile(side, side, 1, PngGray).chunk("IDAT", deflated_white(side, side)).end();
    const auto before = peak_memory();
    const auto opened = open(file);
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(opened.reader->page(0).layout.width, side);
    EXPECT_LT(peak_memory() - before, little);
}

TEST(Large, MorePixelsThanThereMayBeAreRefused) {
    constexpr std::uint32_t side = 32768; // 2 to the 30 pixels
    const auto file = [](std::uint32_t width) {
        return PngFile(width, side, 1, PngGray)
            .chunk("IDAT", ByteVector(std::size_t{width} * side / 8 / 1032 + 1000))
            .end();
    };
    EXPECT_TRUE(header(file(side)));
    EXPECT_FALSE(header(file(side + 1)));
}

} // namespace
} // namespace codecs_test
