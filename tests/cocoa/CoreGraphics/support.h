#pragma once

/// What the CoreGraphics tests share: owned references, images from samples, bitmaps that are read
/// back pixel by pixel.

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <ostream>
#include <utility>
#include <vector>

namespace cgtest {

/// Owns the reference that a Create function returned.
template <typename Ref>
class Made {
public:
    Made() = default;
    Made(Ref object)
        : object(object) {}
    Made(Made&& other) noexcept
        : object(std::exchange(other.object, nullptr)) {}
    Made& operator=(Made other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~Made() {
        if (object != nullptr) CFRelease(object);
    }
    operator Ref() const { return object; }

private:
    Ref object = nullptr;
};

using Space = Made<CGColorSpaceRef>;
using Image = Made<CGImageRef>;
using Context = Made<CGContextRef>;
using Provider = Made<CGDataProviderRef>;

inline Space deviceRGB() { return CGColorSpaceCreateDeviceRGB(); }
inline Space deviceGray() { return CGColorSpaceCreateDeviceGray(); }

/// What a pixel of a bitmap holds: premultiplied where it has alpha, opaque where it has none.
struct Pixel {
    int red = 0, green = 0, blue = 0, alpha = 255;

    bool operator==(const Pixel&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Pixel& p) {
        return out << '(' << p.red << ' ' << p.green << ' ' << p.blue << " / " << p.alpha << ')';
    }
};

constexpr Pixel black{0, 0, 0}, white{255, 255, 255}, red{255, 0, 0}, green{0, 255, 0},
    blue{0, 0, 255}, clear{0, 0, 0, 0};

/// Flags of one type, so that they can be combined with an alpha info.
constexpr CGBitmapInfo little16 = kCGBitmapByteOrder16Little, little32 = kCGBitmapByteOrder32Little,
                       big32 = kCGBitmapByteOrder32Big, floats = kCGBitmapFloatComponents;

/// A layout of 32-bit RGB, with the places of its bytes written out.
struct ByteOrder {
    const char* name;
    CGBitmapInfo info;
    std::array<int, 4> places; ///< of red, green, blue and alpha; alpha -1 for none
};

inline const std::vector<ByteOrder> rgbOrders = {
    {"RGBA", kCGImageAlphaPremultipliedLast, {0, 1, 2, 3}},
    {"ARGB", kCGImageAlphaPremultipliedFirst, {1, 2, 3, 0}},
    {"RGBx", kCGImageAlphaNoneSkipLast, {0, 1, 2, -1}},
    {"xRGB", kCGImageAlphaNoneSkipFirst, {1, 2, 3, -1}},
    {"RGBABig", kCGImageAlphaPremultipliedLast | big32, {0, 1, 2, 3}},
    {"ARGBBig", kCGImageAlphaPremultipliedFirst | big32, {1, 2, 3, 0}},
    {"ABGR", kCGImageAlphaPremultipliedLast | little32, {3, 2, 1, 0}},
    {"BGRA", kCGImageAlphaPremultipliedFirst | little32, {2, 1, 0, 3}},
    {"xBGR", kCGImageAlphaNoneSkipLast | little32, {3, 2, 1, -1}},
    {"BGRx", kCGImageAlphaNoneSkipFirst | little32, {2, 1, 0, -1}},
};

/// A 32-bit bitmap to draw into, RGBA unless said otherwise.
class Bitmap {
public:
    Bitmap(int width, int height, const ByteOrder& order = rgbOrders[0])
        : order(order)
        , context(CGBitmapContextCreate(nullptr, width, height, 8, 0, deviceRGB(), order.info)) {}

    operator CGContextRef() const { return context; }
    int width() const { return static_cast<int>(CGBitmapContextGetWidth(context)); }
    int height() const { return static_cast<int>(CGBitmapContextGetHeight(context)); }

    /// y counted down from the top row.
    Pixel at(int x, int y) const {
        const auto* data = static_cast<const std::uint8_t*>(CGBitmapContextGetData(context));
        const std::uint8_t* pixel = data + y * CGBitmapContextGetBytesPerRow(context) + x * 4;
        const auto sample = [&](int place) { return place < 0 ? 255 : pixel[place]; };
        return {sample(order.places[0]), sample(order.places[1]), sample(order.places[2]),
                sample(order.places[3])};
    }
    std::vector<Pixel> pixels() const {
        std::vector<Pixel> all;
        for (int y = 0; y < height(); ++y) {
            for (int x = 0; x < width(); ++x)
                all.push_back(at(x, y));
        }
        return all;
    }
    CGRect bounds() const { return CGRectMake(0, 0, width(), height()); }
    void fill(const Pixel& p) {
        CGContextSaveGState(context);
        CGContextSetBlendMode(context, kCGBlendModeCopy);
        CGContextSetAlpha(context, 1);
        const double alpha = p.alpha == 0 ? 1 : p.alpha;
        CGContextSetRGBFillColor(context, p.red / alpha, p.green / alpha, p.blue / alpha,
                                 p.alpha / 255.0);
        CGContextFillRect(context, bounds());
        CGContextRestoreGState(context);
    }

private:
    const ByteOrder& order;
    Context context;
};

/// The layout of an image's memory.
struct Layout {
    std::size_t bitsPerComponent = 8;
    std::size_t bitsPerPixel = 32;
    CGBitmapInfo info = kCGImageAlphaPremultipliedLast;
    CGColorSpaceModel model = kCGColorSpaceModelRGB;
};

inline Space spaceOf(CGColorSpaceModel model) {
    switch (model) {
    case kCGColorSpaceModelMonochrome:
        return CGColorSpaceCreateDeviceGray();
    case kCGColorSpaceModelRGB:
        return CGColorSpaceCreateDeviceRGB();
    case kCGColorSpaceModelCMYK:
        return CGColorSpaceCreateDeviceCMYK();
    default:
        return nullptr;
    }
}

inline void freeBytes(void* info, const void*, std::size_t) {
    delete static_cast<std::vector<std::uint8_t>*>(info);
}

/// A provider with a copy of the bytes.
inline Provider provide(std::vector<std::uint8_t> bytes) {
    auto* kept = new std::vector<std::uint8_t>(std::move(bytes));
    return CGDataProviderCreateWithData(kept, kept->data(), kept->size(), freeBytes);
}

/// An image of rows without padding, but for whole bytes.
inline Image makeImage(std::size_t width, std::size_t height, const Layout& layout,
                       std::vector<std::uint8_t> bytes, const CGFloat* decode = nullptr) {
    const std::size_t bytesPerRow = (width * layout.bitsPerPixel + 7) / 8;
    return CGImageCreate(width, height, layout.bitsPerComponent, layout.bitsPerPixel, bytesPerRow,
                         spaceOf(layout.model), layout.info, provide(std::move(bytes)), decode,
                         true, kCGRenderingIntentDefault);
}

/// Premultiplied RGBA.
inline Image imageOf(std::size_t width, std::size_t height, const std::vector<Pixel>& pixels) {
    std::vector<std::uint8_t> bytes;
    for (const Pixel& p : pixels) {
        for (const int sample : {p.red, p.green, p.blue, p.alpha}) {
            bytes.push_back(static_cast<std::uint8_t>(sample));
        }
    }
    return makeImage(width, height, {}, std::move(bytes));
}

/// Red, green over blue, white: no flip or turn leaves it as it is.
inline Image fourColors() { return imageOf(2, 2, {red, green, blue, white}); }

/// Opaque, every pixel of another colour.
inline std::vector<Pixel> gradient(int width, int height) {
    std::vector<Pixel> pixels;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            pixels.push_back({x * 255 / width, y * 255 / height, (x * 7 + y * 13) % 256});
        }
    }
    return pixels;
}

/// With an alpha of its own in every column.
inline std::vector<Pixel> translucentGradient(int width, int height) {
    std::vector<Pixel> pixels = gradient(width, height);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        Pixel& p = pixels[i];
        p.alpha = static_cast<int>(i * 37 % 256);
        p.red = p.red * p.alpha / 255;
        p.green = p.green * p.alpha / 255;
        p.blue = p.blue * p.alpha / 255;
    }
    return pixels;
}

MATCHER_P2(IsNear, expected, tolerance, "") {
    const auto close = [this_tolerance = tolerance](int a, int b) {
        return std::abs(a - b) <= this_tolerance;
    };
    return close(arg.red, expected.red) && close(arg.green, expected.green) &&
           close(arg.blue, expected.blue) && close(arg.alpha, expected.alpha);
}

} // namespace cgtest
