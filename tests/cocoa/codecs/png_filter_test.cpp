#include "png_file.h"

#include <cstdlib>

#include <gmock/gmock.h>

namespace codecs_test {
namespace {

constexpr std::uint32_t width = 9;
constexpr std::uint32_t height = 4;

struct Layout {
    PngColor color;
    std::size_t pixelBytes;
};
void PrintTo(const Layout& layout, std::ostream* stream) { *stream << layout.pixelBytes; }

/// A byte of a filtered image, as the format defines it.
std::uint8_t filtered(int filter, const ByteVector& samples, std::size_t rowBytes,
                      std::size_t pixelBytes, std::size_t y, std::size_t x) {
    const auto at = [&](std::size_t up, std::size_t back) {
        return y < up || x < back ? 0 : int{samples[(y - up) * rowBytes + x - back]};
    };
    const int left = at(0, pixelBytes);
    const int above = at(1, 0);
    const int corner = at(1, pixelBytes);
    const int guess = left + above - corner;
    const int toLeft = std::abs(guess - left);
    const int toAbove = std::abs(guess - above);
    const int toCorner = std::abs(guess - corner);
    const int paeth = toLeft <= toAbove && toLeft <= toCorner ? left
                      : toAbove <= toCorner                   ? above
                                                              : corner;
    const int foretold[] = {0, left, above, (left + above) / 2, paeth};
    return static_cast<std::uint8_t>(samples[y * rowBytes + x] - foretold[filter % 5]);
}

/// Rows filtered by turns, the first by `first`.
ByteVector filtered_rows(const ByteVector& samples, std::size_t pixelBytes, int first) {
    ByteVector rows;
    const std::size_t rowBytes = width * pixelBytes;
    for (std::size_t y = 0; y < height; ++y) {
        const int filter = (first + static_cast<int>(y)) % 5;
        rows.push_back(static_cast<std::uint8_t>(filter));
        for (std::size_t x = 0; x < rowBytes; ++x)
            rows.push_back(filtered(filter, samples, rowBytes, pixelBytes, y, x));
    }
    return rows;
}

class PngFilters : public testing::TestWithParam<Layout> {};
INSTANTIATE_TEST_SUITE_P(PixelBytes, PngFilters,
                         testing::Values(Layout{PngGray, 1}, Layout{PngGrayAlpha, 2},
                                         Layout{PngRGB, 3}, Layout{PngRGBA, 4}),
                         testing::PrintToStringParamName());

TEST_P(PngFilters, AreUndone) {
    const auto [color, pixelBytes] = GetParam();
    const auto samples = noise(width * height * pixelBytes, 5);
    for (int first = 0; first < 5; ++first) {
        const auto zlib = stored_zlib(filtered_rows(samples, pixelBytes, first));
        EXPECT_EQ(decode(PngFile(width, height, 8, color).chunk("IDAT", zlib).end()), samples)
            << first;
    }
}

TEST_P(PngFilters, AreUndoneInSeveralChunks) {
    const auto [color, pixelBytes] = GetParam();
    const auto samples = noise(width * height * pixelBytes, 6);
    const auto zlib = stored_zlib(filtered_rows(samples, pixelBytes, 2));
    PngFile file(width, height, 8, color);
    constexpr std::size_t step = 10;
    for (std::size_t at = 0; at < zlib.size(); at += step) {
        const auto end = std::min(at + step, zlib.size());
        file.chunk("IDAT", ByteVector(zlib.begin() + static_cast<std::ptrdiff_t>(at),
                                      zlib.begin() + static_cast<std::ptrdiff_t>(end)));
    }
    EXPECT_EQ(decode(file.end()), samples);
}

TEST_P(PngFilters, OfOtherNumbersAreRefused) {
    const auto [color, pixelBytes] = GetParam();
    auto rows = filtered_rows(noise(width * height * pixelBytes, 7), pixelBytes, 0);
    rows[width * pixelBytes + 1] = 5;
    EXPECT_FALSE(decode(PngFile(width, height, 8, color).chunk("IDAT", stored_zlib(rows)).end()));
}

TEST_P(PngFilters, AreChosenForSmoothPictures) {
    const auto [color, pixelBytes] = GetParam();
    const auto samples = gradient(200, 150, static_cast<int>(pixelBytes));
    const PixelLayout layout{200, 150, color & PngRGB ? ColorModel::RGB : ColorModel::Gray,
                             pixelBytes % 2 ? Alpha::None : Alpha::Straight, 8};
    const Encoded file = encode(png, picture(layout, samples));
    EXPECT_EQ(take_apart(view(file)).samples, samples);
    EXPECT_LT(file.size, samples.size() / 15);
}

} // namespace
} // namespace codecs_test
