/// Every layout of an image into every order of a bitmap.

#include "cocoa/CoreGraphics/support.h"

#include <cmath>
#include <cstring>
#include <functional>
#include <string>

using namespace cgtest;

namespace {

constexpr int width = 47;
constexpr int height = 33;

/// Colour and alpha from 0 to 1, not multiplied.
struct Tone {
    std::array<double, 4> color{};
    double alpha = 1;
};

/// Appends bits, the highest first, as every layout has them before bytes are swapped.
class BitWriter {
public:
    void write(std::uint32_t value, int bits) {
        for (int i = bits - 1; i >= 0; --i) {
            if (used % 8 == 0) bytes.push_back(0);
            bytes.back() |= static_cast<std::uint8_t>((value >> i & 1) << (7 - used % 8));
            ++used;
        }
    }
    void padTo(std::size_t size) { bytes.resize(size); }
    std::vector<std::uint8_t> bytes;

private:
    std::size_t used = 0;
};

struct SourceLayout {
    std::string name;
    Layout layout;
    int swapUnit = 1;

    int colors() const {
        return layout.model == kCGColorSpaceModelMonochrome ? 1
               : layout.model == kCGColorSpaceModelRGB      ? 3
               : layout.model == kCGColorSpaceModelCMYK     ? 4
                                                            : 0;
    }
    CGImageAlphaInfo alphaInfo() const {
        return static_cast<CGImageAlphaInfo>(layout.info & kCGBitmapAlphaInfoMask);
    }
    bool premultiplied() const {
        return alphaInfo() == kCGImageAlphaPremultipliedFirst ||
               alphaInfo() == kCGImageAlphaPremultipliedLast;
    }
    bool hasAlpha() const {
        return premultiplied() || alphaInfo() == kCGImageAlphaFirst ||
               alphaInfo() == kCGImageAlphaLast || alphaInfo() == kCGImageAlphaOnly;
    }
    bool somethingFirst() const {
        return alphaInfo() == kCGImageAlphaPremultipliedFirst ||
               alphaInfo() == kCGImageAlphaFirst || alphaInfo() == kCGImageAlphaNoneSkipFirst;
    }
    bool isFloat() const { return (layout.info & floats) != 0; }
    std::size_t bytesPerRow() const { return (width * layout.bitsPerPixel + 7) / 8 + 3 & ~3U; }

    /// What a sample of the layout can say of a value.
    double quantized(double value) const {
        const double range = std::ldexp(1, static_cast<int>(layout.bitsPerComponent)) - 1;
        return isFloat() ? value : std::round(value * range) / range;
    }
    void writeSample(BitWriter& writer, double value) const {
        const auto bits = static_cast<int>(layout.bitsPerComponent);
        if (isFloat()) {
            const auto number = static_cast<float>(value);
            std::uint32_t word;
            std::memcpy(&word, &number, sizeof word);
            writer.write(word, 32);
        } else {
            const double range = std::ldexp(1, bits) - 1;
            writer.write(static_cast<std::uint32_t>(std::lround(value * range)), bits);
        }
    }
    void writePixel(BitWriter& writer, const Tone& tone) const {
        const int total = static_cast<int>(layout.bitsPerPixel);
        const int bits = static_cast<int>(layout.bitsPerComponent);
        int left = total;
        if (somethingFirst()) {
            const int first = total == 16 && bits == 5 ? 1 : bits;
            left -= first;
            if (hasAlpha()) writeSample(writer, tone.alpha);
            if (!hasAlpha()) writer.write(0x55555555, first);
        }
        const double factor = premultiplied() ? quantized(tone.alpha) : 1;
        for (int i = 0; i < colors(); ++i, left -= bits) {
            writeSample(writer, tone.color[static_cast<std::size_t>(i)] * factor);
        }
        if (hasAlpha() && !somethingFirst()) {
            writeSample(writer, tone.alpha);
            left -= bits;
        }
        if (left > 0) writer.write(0x2A, left);
    }

    Image image(const std::function<Tone(int, int)>& tones) const {
        std::vector<std::uint8_t> bytes;
        for (int y = 0; y < height; ++y) {
            BitWriter row;
            for (int x = 0; x < width; ++x)
                writePixel(row, tones(x, y));
            row.padTo(bytesPerRow());
            for (std::size_t i = 0; i < row.bytes.size(); ++i) {
                bytes.push_back(row.bytes[i ^ static_cast<std::size_t>(swapUnit - 1)]);
            }
        }
        return CGImageCreate(width, height, layout.bitsPerComponent, layout.bitsPerPixel,
                             bytesPerRow(), spaceOf(layout.model), layout.info,
                             provide(std::move(bytes)), nullptr, false, kCGRenderingIntentDefault);
    }

    /// What the samples say, as premultiplied 8-bit RGBA.
    Pixel meaning(const Tone& tone) const {
        const double alpha = hasAlpha() ? quantized(tone.alpha) : 1;
        std::array<double, 4> stored{};
        for (std::size_t i = 0; i < 4; ++i) {
            stored[i] = quantized(tone.color[i] * (premultiplied() ? alpha : 1));
        }
        std::array<double, 3> rgb{};
        for (std::size_t i = 0; i < 3; ++i) {
            switch (colors()) {
            case 0:
                break;
            case 1:
                rgb[i] = stored[0];
                break;
            case 3:
                rgb[i] = stored[i];
                break;
            default:
                rgb[i] = (1 - stored[i]) * (1 - stored[3]);
            }
        }
        const auto sample = [&](double value) {
            return static_cast<int>(std::lround(value * (premultiplied() ? 1 : alpha) * 255));
        };
        return {sample(rgb[0]), sample(rgb[1]), sample(rgb[2]),
                static_cast<int>(std::lround(alpha * 255))};
    }
};

std::vector<SourceLayout> sourceLayouts() {
    constexpr auto RGB = kCGColorSpaceModelRGB;
    constexpr auto gray = kCGColorSpaceModelMonochrome;
    constexpr auto CMYK = kCGColorSpaceModelCMYK;
    std::vector<SourceLayout> all;
    const auto add = [&all](std::string name, Layout layout, int swapUnit = 1) {
        all.push_back({std::move(name), layout, swapUnit});
    };
    const std::pair<const char*, CGBitmapInfo> alphas[] = {
        {"PremultipliedLast", kCGImageAlphaPremultipliedLast},
        {"PremultipliedFirst", kCGImageAlphaPremultipliedFirst},
        {"Last", kCGImageAlphaLast},
        {"First", kCGImageAlphaFirst},
        {"SkipLast", kCGImageAlphaNoneSkipLast},
        {"SkipFirst", kCGImageAlphaNoneSkipFirst},
    };
    for (const auto& [name, info] : alphas) {
        const std::string suffix = name;
        add("RGB8" + suffix, {8, 32, info, RGB});
        add("RGB8Big" + suffix, {8, 32, info | big32, RGB});
        add("RGB8Little" + suffix, {8, 32, info | little32, RGB}, 4);
        add("RGB16" + suffix, {16, 64, info, RGB});
        add("RGB16Little" + suffix, {16, 64, info | little16, RGB}, 2);
        add("RGB4" + suffix, {4, 16, info, RGB});
        add("Gray8" + suffix, {8, 16, info, gray});
        add("Gray8Little" + suffix, {8, 16, info | little16, gray}, 2);
        add("RGBFloat" + suffix, {32, 128, info | floats | little32, RGB}, 4);
    }
    add("RGB8None", {8, 24, kCGImageAlphaNone, RGB});
    add("RGB8NonePadded", {8, 32, kCGImageAlphaNone, RGB});
    add("RGB16None", {16, 48, kCGImageAlphaNone, RGB});
    add("RGB10None", {10, 32, kCGImageAlphaNone, RGB});
    add("RGB555", {5, 16, kCGImageAlphaNoneSkipFirst, RGB});
    add("RGB555Little", {5, 16, kCGImageAlphaNoneSkipFirst | little16, RGB}, 2);
    for (const std::size_t bits : {1U, 2U, 4U, 8U, 12U, 16U}) {
        add("Gray" + std::to_string(bits) + "None", {bits, bits, kCGImageAlphaNone, gray});
    }
    add("CMYK8None", {8, 32, kCGImageAlphaNone, CMYK});
    add("CMYK16None", {16, 64, kCGImageAlphaNone, CMYK});
    add("CMYK8Last", {8, 40, kCGImageAlphaLast, CMYK});
    add("AlphaOnly", {8, 8, kCGImageAlphaOnly, kCGColorSpaceModelUnknown});
    add("AlphaOnly4", {4, 4, kCGImageAlphaOnly, kCGColorSpaceModelUnknown});
    return all;
}

/// No two pixels alike, no channel like another; alpha from nothing to opaque.
Tone toneAt(int x, int y) {
    return {{x / 46.0, y / 32.0, (x * 7 + y * 13) % 47 / 46.0, (x + y) % 33 / 32.0},
            (x * 5 + y * 3) % 41 / 40.0};
}

class ImageLayout : public testing::TestWithParam<SourceLayout> {};

TEST_P(ImageLayout, IsDrawnAsItsSamplesSayIntoEveryBitmap) {
    const SourceLayout& source = GetParam();
    const Image image = source.image(toneAt);
    ASSERT_NE(static_cast<CGImageRef>(image), nullptr);
    // Exact where a sample is a byte of the result; one product of rounded samples otherwise.
    const bool exact =
        source.layout.bitsPerComponent == 8 && source.layout.model != kCGColorSpaceModelCMYK;
    for (const ByteOrder& order : rgbOrders) {
        Bitmap bitmap(width, height, order);
        CGContextSetBlendMode(bitmap, kCGBlendModeCopy);
        CGContextDrawImage(bitmap, bitmap.bounds(), image);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                Pixel expected = source.meaning(toneAt(x, y));
                if (order.places[3] < 0) expected.alpha = 255;
                ASSERT_THAT(bitmap.at(x, y), IsNear(expected, exact ? 0 : 1))
                    << x << ' ' << y << " in " << order.name;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ImageLayout, testing::ValuesIn(sourceLayouts()),
                         [](const auto& info) { return info.param.name; });

TEST(PremultipliedSamples, AreCutToTheirAlpha) {
    Bitmap bitmap(1, 1);
    CGContextDrawImage(bitmap, bitmap.bounds(), makeImage(1, 1, {}, {200, 100, 50, 100}));
    EXPECT_EQ(bitmap.at(0, 0), (Pixel{100, 100, 50, 100}));
}

TEST(StraightSamples, OfHalfAGrayAtHalfAlphaOverBlackGiveAQuarter) {
    Bitmap bitmap(1, 1);
    bitmap.fill(black);
    const Layout straight = {8, 32, kCGImageAlphaLast, kCGColorSpaceModelRGB};
    CGContextDrawImage(bitmap, bitmap.bounds(), makeImage(1, 1, straight, {128, 128, 128, 128}));
    EXPECT_EQ(bitmap.at(0, 0), (Pixel{64, 64, 64}));
}

TEST(StraightSamples, WithoutAlphaGiveNothing) {
    Bitmap bitmap(1, 1);
    const Layout straight = {8, 32, kCGImageAlphaLast, kCGColorSpaceModelRGB};
    CGContextDrawImage(bitmap, bitmap.bounds(), makeImage(1, 1, straight, {255, 128, 3, 0}));
    EXPECT_EQ(bitmap.at(0, 0), clear);
}

} // namespace
