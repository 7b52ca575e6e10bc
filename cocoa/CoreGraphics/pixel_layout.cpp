#include "cocoa/CoreGraphics/pixel_layout.h"

namespace cocoa::cg {
namespace {

int colorSamplesOf(CGColorSpaceModel model) {
    switch (model) {
    case kCGColorSpaceModelMonochrome:
        return 1;
    case kCGColorSpaceModelRGB:
        return 3;
    case kCGColorSpaceModelCMYK:
        return 4;
    default:
        return 0;
    }
}

/// 0 for an unknown order.
std::uint8_t swapUnitOf(CGBitmapInfo order) {
    switch (order) {
    case kCGBitmapByteOrderDefault:
    case kCGBitmapByteOrder16Big:
    case kCGBitmapByteOrder32Big:
        return 1;
    case kCGBitmapByteOrder16Little:
        return 2;
    case kCGBitmapByteOrder32Little:
        return 4;
    default:
        return 0;
    }
}

} // namespace

std::uint64_t PixelLayout::usedBytesPerRow() const {
    const std::uint64_t bytes = (std::uint64_t{width} * bitsPerPixel + 7) / 8;
    return (bytes + swapUnit - 1) / swapUnit * swapUnit;
}

std::optional<std::size_t> PixelLayout::usedBytes() const {
    std::uint64_t bytes = 0;
    if (__builtin_mul_overflow(std::uint64_t{bytesPerRow}, std::uint64_t{height - 1}, &bytes) ||
        __builtin_add_overflow(bytes, usedBytesPerRow(), &bytes) || bytes > PTRDIFF_MAX) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(bytes);
}

std::optional<PixelLayout> makeLayout(std::size_t width, std::size_t height,
                                      std::size_t bitsPerComponent, std::size_t bitsPerPixel,
                                      std::size_t bytesPerRow, CGColorSpaceModel model,
                                      CGBitmapInfo info) {
    constexpr CGBitmapInfo known =
        kCGBitmapAlphaInfoMask | kCGBitmapFloatComponents | kCGBitmapByteOrderMask;
    const auto alphaInfo = static_cast<CGImageAlphaInfo>(info & kCGBitmapAlphaInfoMask);
    const std::uint8_t swapUnit = swapUnitOf(info & kCGBitmapByteOrderMask);
    if (width == 0 || height == 0 || width > INT32_MAX || height > INT32_MAX) return std::nullopt;
    if ((info & ~known) != 0 || alphaInfo > kCGImageAlphaOnly || swapUnit == 0) return std::nullopt;

    PixelLayout layout;
    layout.width = width;
    layout.height = height;
    layout.bytesPerRow = bytesPerRow;
    layout.model = model;
    layout.isFloat = (info & kCGBitmapFloatComponents) != 0;
    layout.swapUnit = swapUnit;
    if (layout.isFloat ? bitsPerComponent != 32 : bitsPerComponent < 1 || bitsPerComponent > 16) {
        return std::nullopt;
    }
    if (bitsPerPixel < 1 || bitsPerPixel > 160) return std::nullopt;
    const auto bits = static_cast<std::uint8_t>(bitsPerComponent);
    layout.bitsPerSample = bits;
    layout.bitsPerPixel = static_cast<std::uint8_t>(bitsPerPixel);

    const int colorSamples = colorSamplesOf(model);
    if ((colorSamples == 0) != (alphaInfo == kCGImageAlphaOnly)) return std::nullopt;
    layout.colorSamples = static_cast<std::uint8_t>(colorSamples);
    const auto colorBits = static_cast<std::uint8_t>(colorSamples * bits);
    int usedBits = colorBits;
    switch (alphaInfo) {
    case kCGImageAlphaNone:
        break;
    case kCGImageAlphaPremultipliedLast:
    case kCGImageAlphaLast:
        layout.alphaBit = colorBits;
        usedBits += bits;
        break;
    case kCGImageAlphaPremultipliedFirst:
    case kCGImageAlphaFirst:
        layout.firstColorBit = bits;
        usedBits += bits;
        break;
    case kCGImageAlphaNoneSkipLast:
        usedBits += bits;
        break;
    case kCGImageAlphaNoneSkipFirst:
        // A pixel of 16 bits has one bit left for what is skipped.
        layout.firstColorBit = bitsPerPixel == 16 && colorBits == 15 ? 1 : bits;
        usedBits += layout.firstColorBit;
        break;
    case kCGImageAlphaOnly:
        usedBits = bits;
        break;
    }
    switch (alphaInfo) {
    case kCGImageAlphaPremultipliedLast:
    case kCGImageAlphaPremultipliedFirst:
        layout.alpha = AlphaKind::Premultiplied;
        break;
    case kCGImageAlphaLast:
    case kCGImageAlphaFirst:
    case kCGImageAlphaOnly:
        layout.alpha = AlphaKind::Straight;
        break;
    default:
        break;
    }
    if (bitsPerPixel < static_cast<std::size_t>(usedBits)) return std::nullopt;
    // A float must not straddle the units that are swapped.
    if (layout.isFloat && (bitsPerPixel % 32 != 0 || bytesPerRow % 4 != 0)) return std::nullopt;
    if (bytesPerRow < layout.usedBytesPerRow() || !layout.usedBytes()) return std::nullopt;
    return layout;
}

} // namespace cocoa::cg
