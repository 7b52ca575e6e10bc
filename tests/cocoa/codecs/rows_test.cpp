/// Pictures that are encoded row by row, without ever being in memory as a whole.

#include "support.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

class RowsOf : public RowSource {
public:
    RowsOf(const ByteVector& samples, std::size_t rowBytes)
        : samples_(samples)
        , rowBytes_(rowBytes) {}

    void make_row(std::uint32_t y, std::uint8_t* out) override {
        std::copy_n(&samples_[y * rowBytes_], rowBytes_, out);
    }

private:
    const ByteVector& samples_;
    std::size_t rowBytes_;
};

struct Case {
    const Codec* codec;
    ColorModel model;
};
void PrintTo(const Case& example, std::ostream* stream) {
    *stream << example.codec->name << static_cast<int>(example.model);
}

class PictureOfRows : public testing::TestWithParam<Case> {};
INSTANTIATE_TEST_SUITE_P(Of, PictureOfRows,
                         testing::Values(Case{&jpeg, ColorModel::RGB},
                                         Case{&jpeg, ColorModel::Gray},
                                         Case{&jpeg, ColorModel::CMYK}, Case{&bmp, ColorModel::RGB},
                                         Case{&bmp, ColorModel::Gray}),
                         testing::PrintToStringParamName());

TEST_P(PictureOfRows, IsEncodedAsOneInMemory) {
    const PixelLayout layout{37, 21, GetParam().model, Alpha::None, 8};
    const auto samples = gradient(37, 21, layout.samplesPerPixel());
    const Encoded whole = encode(*GetParam().codec, picture(layout, samples));
    RowsOf rows(samples, static_cast<std::size_t>(layout.packedRowBytes()));
    Picture page;
    page.layout = layout;
    page.rows = &rows;
    const Encoded byRows = encode(*GetParam().codec, page);
    ASSERT_TRUE(byRows);
    EXPECT_EQ(copy(byRows), copy(whole));
}

TEST(PicturesOfRows, AreRefusedByCodecsThatDoNotTakeThem) {
    const ByteVector samples(3);
    RowsOf rows(samples, 3);
    Picture page;
    page.layout = {1, 1, ColorModel::RGB, Alpha::None, 8};
    page.rows = &rows;
    for (const Codec* codec : all_codecs())
        EXPECT_EQ(static_cast<bool>(encode(*codec, page)), codec->takesRows) << codec->name;
}

} // namespace
} // namespace codecs_test
