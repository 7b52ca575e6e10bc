#include "plugin/picture/pixel_kernels.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::array<PixelOrder, pixelOrderCount> orders = {PixelOrder::RGBx, PixelOrder::xRGB,
                                                            PixelOrder::BGRx};

/// The place of red, green or blue (0, 1, 2) within a pixel.
std::size_t place(PixelOrder order, std::size_t component) {
    constexpr std::size_t places[pixelOrderCount][3] = {{0, 1, 2}, {1, 2, 3}, {2, 1, 0}};
    return places[static_cast<std::size_t>(order)][component];
}

Bytes noise(std::size_t size) {
    static std::mt19937 generator(20131109);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(generator());
    return bytes;
}

/// A row that starts at an odd address, with bytes in front and behind that nobody may touch.
class Row {
public:
    explicit Row(std::size_t size)
        : bytes_(size + 2 * margin, untouched)
        , size_(size) {}
    std::uint8_t* start() { return bytes_.data() + margin; }
    Bytes content() const { return {bytes_.begin() + margin, bytes_.end() - margin}; }
    bool is_intact() const {
        for (std::size_t i = 0; i < margin; ++i)
            if (bytes_[i] != untouched || bytes_[margin + size_ + i] != untouched) return false;
        return true;
    }

private:
    static constexpr std::size_t margin = 33;
    static constexpr std::uint8_t untouched = 0xA5;
    Bytes bytes_;
    std::size_t size_;
};

class PixelKernelsOf : public testing::TestWithParam<const PixelKernels*> {
protected:
    const PixelKernels& kernels = *GetParam();
};
INSTANTIATE_TEST_SUITE_P(Machine, PixelKernelsOf, testing::ValuesIn(usable_pixel_kernels()),
                         [](const auto& test) { return std::string(test.param->name); });

TEST_P(PixelKernelsOf, CopyTheColoursOfEveryWidthAndOrder) {
    for (std::size_t o = 0; o < orders.size(); ++o)
        for (std::size_t count = 0; count <= 70; ++count) {
            const Bytes pixels = noise(count * 4 + 1);
            Row rgb(count * 3);
            kernels.copyRGB[o](pixels.data() + 1, count, rgb.start());
            Bytes expected;
            for (std::size_t i = 0; i < count; ++i)
                for (std::size_t component = 0; component < 3; ++component)
                    expected.push_back(pixels[1 + i * 4 + place(orders[o], component)]);
            ASSERT_EQ(rgb.content(), expected) << "order " << o << ", " << count << " pixels";
            ASSERT_TRUE(rgb.is_intact()) << "order " << o << ", " << count << " pixels";
        }
}

Bytes premultiplied(const std::uint8_t* pixels, PixelOrder order, const std::uint8_t* mask,
                    PixelOrder maskOrder, std::size_t count) {
    Bytes rgba;
    for (std::size_t i = 0; i < count; ++i) {
        const int alpha = 255 - mask[i * 4 + place(maskOrder, 0)];
        for (std::size_t component = 0; component < 3; ++component)
            rgba.push_back(
                static_cast<std::uint8_t>(pixels[i * 4 + place(order, component)] * alpha / 255));
        rgba.push_back(static_cast<std::uint8_t>(alpha));
    }
    return rgba;
}

TEST_P(PixelKernelsOf, PremultiplyEveryWidthAndPairOfOrders) {
    for (std::size_t o = 0; o < orders.size(); ++o)
        for (std::size_t m = 0; m < orders.size(); ++m)
            for (std::size_t count = 0; count <= 35; ++count) {
                const Bytes pixels = noise(count * 4 + 1);
                const Bytes mask = noise(count * 4 + 3);
                Row rgba(count * 4);
                kernels.premultiply[o][m](pixels.data() + 1, mask.data() + 3, count, rgba.start());
                ASSERT_EQ(rgba.content(), premultiplied(pixels.data() + 1, orders[o],
                                                        mask.data() + 3, orders[m], count))
                    << "orders " << o << " and " << m << ", " << count << " pixels";
                ASSERT_TRUE(rgba.is_intact());
            }
}

TEST_P(PixelKernelsOf, TruncateTheQuotientOfEveryPairOfValueAndMask) {
    Bytes pixels, mask;
    for (int value = 0; value < 256; ++value)
        for (int masked = 0; masked < 256; ++masked) {
            const auto colour = static_cast<std::uint8_t>(value);
            const auto gray = static_cast<std::uint8_t>(masked);
            pixels.insert(pixels.end(), {colour, static_cast<std::uint8_t>(255 - value), gray, 7});
            mask.insert(mask.end(), {gray, 1, 2, 3});
        }
    const std::size_t count = pixels.size() / 4;
    Row rgba(count * 4);
    kernels.premultiply[0][0](pixels.data(), mask.data(), count, rgba.start());
    EXPECT_EQ(rgba.content(),
              premultiplied(pixels.data(), PixelOrder::RGBx, mask.data(), PixelOrder::RGBx, count));
}

TEST_P(PixelKernelsOf, MakeAMidGrayMaskOnWhiteHalfTransparent) {
    const Bytes white(4, 255), gray(4, 128);
    Bytes rgba(4);
    kernels.premultiply[0][0](white.data(), gray.data(), 1, rgba.data());
    EXPECT_EQ(rgba, Bytes({127, 127, 127, 127}));
}

TEST_P(PixelKernelsOf, WriteMasksOfEveryWidthAndOrder) {
    for (std::size_t o = 0; o < orders.size(); ++o)
        for (std::size_t count = 0; count <= 70; ++count) {
            const Bytes alphas = noise(count + 1);
            Row mask(count * 4);
            kernels.writeMask[o](alphas.data() + 1, count, mask.start());
            Bytes expected;
            for (std::size_t i = 0; i < count; ++i) {
                const auto value = static_cast<std::uint8_t>(255 - alphas[1 + i]);
                const Bytes pixel = orders[o] == PixelOrder::RGBx ? Bytes{value, value, value, 255}
                                    : orders[o] == PixelOrder::xRGB
                                        ? Bytes{255, value, value, value}
                                        : Bytes{value, value, value, 0};
                expected.insert(expected.end(), pixel.begin(), pixel.end());
            }
            ASSERT_EQ(mask.content(), expected) << "order " << o << ", " << count << " pixels";
            ASSERT_TRUE(mask.is_intact()) << "order " << o << ", " << count << " pixels";
        }
}

TEST(PixelKernels, ThatAreFastestAreTheLastThatTheMachineRuns) {
    EXPECT_EQ(&fastest_pixel_kernels(), usable_pixel_kernels().back());
    EXPECT_STREQ(usable_pixel_kernels().front()->name, "plain");
}

} // namespace
