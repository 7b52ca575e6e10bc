#include "bmp_file.h"
#include "gif_file.h"
#include "jpeg_file.h"
#include "png_file.h"
#include "tiff_file.h"

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

std::string opened_as(Bytes data) {
    const Opened opened = open(data);
    EXPECT_EQ(opened.codec != nullptr, opened.reader != nullptr);
    return opened.codec ? std::string(opened.codec->name) : "nothing";
}

TEST(Open, TellsTheFormatsApart) {
    EXPECT_EQ(opened_as(PngFile(1, 1, 8, PngGray).rows({{7}}).end()), "PNG");
    EXPECT_EQ(opened_as(make_jpeg({.width = 8, .height = 8}, gradient(8, 8, 3))), "JPEG");
    EXPECT_EQ(opened_as(TiffFile(ByteOrder::Little).page(tiny_gray()).bytes()), "TIFF");
    EXPECT_EQ(opened_as(TiffFile(ByteOrder::Big).page(tiny_gray()).bytes()), "TIFF");
    EXPECT_EQ(opened_as(GifFile(1, 1).frame({.indices = {0}}).end()), "GIF");
    EXPECT_EQ(opened_as(BmpFile({}).pixels({1, 2, 3, 0})), "BMP");
}

TEST(Open, GivesNothingForNoData) {
    EXPECT_EQ(opened_as({}), "nothing");
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(opened_as(ByteVector{static_cast<std::uint8_t>(byte)}), "nothing");
    }
}

TEST(Open, GivesNothingForOtherData) {
    EXPECT_EQ(opened_as(bytes_of("GIF89b is no version")), "nothing");
    EXPECT_EQ(opened_as(noise(5000, 1)), "nothing");
}

TEST(Codecs, NameTheirTypesAndExtensions) {
    std::vector<std::string> lines;
    for (const Codec* codec : all_codecs()) {
        lines.push_back(std::string(codec->name) + ": " + std::string(codec->typeIdentifier) +
                        ", " + std::string(codec->extensions));
    }
    EXPECT_THAT(lines,
                testing::ElementsAre("PNG: public.png, png", "JPEG: public.jpeg, jpg jpeg jpe jfif",
                                     "TIFF: public.tiff, tiff tif", "GIF: com.compuserve.gif, gif",
                                     "BMP: com.microsoft.bmp, bmp dib"));
}

} // namespace
} // namespace codecs_test
