#include "cocoa/AppKit/cg_image_layout.h"

#include "cocoa/AppKit/color_spaces.h"
#include "cocoa/AppKit/ownership.h"
#include "cocoa/CoreGraphics/image.h"

#include <algorithm>
#include <cstring>

namespace cocoa::appkit {
namespace {

/// How samples have to be moved to lie as a bitmap's.
enum class Move {
    None,
    SwapSamples,          ///< 16-bit samples of the other byte order
    ReversePixels,        ///< the four bytes of a pixel back to front
    SkippedLast,          ///< the unused byte from the front of four to their end
    ReverseWithoutSkipped ///< both
};

struct Plan {
    LayoutRequest request;
    Move move = Move::None;
};

bool setAlpha(LayoutRequest& request, CGImageAlphaInfo info) {
    switch (info) {
    case kCGImageAlphaNone:
    case kCGImageAlphaNoneSkipLast:
    case kCGImageAlphaNoneSkipFirst:
        return true;
    case kCGImageAlphaPremultipliedLast:
    case kCGImageAlphaPremultipliedFirst:
    case kCGImageAlphaLast:
    case kCGImageAlphaFirst:
        request.hasAlpha = true;
        request.alphaFirst = info == kCGImageAlphaPremultipliedFirst || info == kCGImageAlphaFirst;
        request.straightAlpha = info == kCGImageAlphaLast || info == kCGImageAlphaFirst;
        return true;
    default:
        return false;
    }
}

/// Nothing when the order of the bytes is none that a bitmap has or can be given.
std::optional<Move> moveFor(CGImageRef image) {
    const CGBitmapInfo info = CGImageGetBitmapInfo(image);
    const CGBitmapInfo order = info & kCGBitmapByteOrderMask;
    const std::size_t bits = CGImageGetBitsPerComponent(image);
    const bool skipFirst = CGImageGetAlphaInfo(image) == kCGImageAlphaNoneSkipFirst;
    if (info & kCGBitmapFloatComponents) {
        if (order != kCGBitmapByteOrder32Host || skipFirst) return std::nullopt;
        return Move::None;
    }
    if (bits == 8 && CGImageGetBitsPerPixel(image) == 32) {
        switch (order) {
        case kCGBitmapByteOrderDefault:
        case kCGBitmapByteOrder32Big:
            return skipFirst ? Move::SkippedLast : Move::None;
        case kCGBitmapByteOrder32Little:
            return skipFirst ? Move::ReverseWithoutSkipped : Move::ReversePixels;
        default:
            return std::nullopt;
        }
    }
    if (skipFirst) return std::nullopt;
    if (bits == 16) {
        if (order == kCGBitmapByteOrder16Host) return Move::None;
        if (order == kCGBitmapByteOrderDefault || order == kCGBitmapByteOrder16Big ||
            order == kCGBitmapByteOrder16Little)
            return Move::SwapSamples;
        return std::nullopt;
    }
    if (order != kCGBitmapByteOrderDefault) return std::nullopt;
    return Move::None;
}

std::optional<Plan> planFor(CGImageRef image) {
    if (CGImageIsMask(image) || CGImageGetDecode(image) || cg::bodyOf(image)->mask)
        return std::nullopt;
    const auto model = modelOf(CGImageGetColorSpace(image));
    const auto move = moveFor(image);
    if (!model || !move) return std::nullopt;
    Plan plan;
    plan.move = *move;
    LayoutRequest& request = plan.request;
    if (!setAlpha(request, CGImageGetAlphaInfo(image))) return std::nullopt;
    request.width = static_cast<std::int64_t>(CGImageGetWidth(image));
    request.height = static_cast<std::int64_t>(CGImageGetHeight(image));
    request.model = *model;
    request.bitsPerSample = static_cast<std::int64_t>(CGImageGetBitsPerComponent(image));
    request.samplesPerPixel =
        static_cast<std::int64_t>(CGColorSpaceGetNumberOfComponents(CGImageGetColorSpace(image))) +
        (request.hasAlpha ? 1 : 0);
    request.floatingPoint = CGImageGetBitmapInfo(image) & kCGBitmapFloatComponents;
    request.bitsPerPixel = static_cast<std::int64_t>(CGImageGetBitsPerPixel(image));
    return plan;
}

void moveRow(std::uint8_t* row, std::size_t size, Move move) {
    const auto eachPixel = [row, size](auto change) {
        for (std::size_t start = 0; start + 4 <= size; start += 4)
            change(row + start);
    };
    const auto reverse = [](std::uint8_t* pixel) { std::reverse(pixel, pixel + 4); };
    const auto skippedLast = [](std::uint8_t* pixel) { std::rotate(pixel, pixel + 1, pixel + 4); };
    switch (move) {
    case Move::None:
        return;
    case Move::SwapSamples:
        for (std::size_t start = 0; start + 2 <= size; start += 2)
            std::swap(row[start], row[start + 1]);
        return;
    case Move::ReversePixels:
        return eachPixel(reverse);
    case Move::SkippedLast:
        return eachPixel(skippedLast);
    case Move::ReverseWithoutSkipped:
        eachPixel(reverse);
        return eachPixel(skippedLast);
    }
}

bool copySamples(CGImageRef image, const Plan& plan, BitmapLayout& layout, BitmapPixels& pixels) {
    const auto made = makeLayout(plan.request);
    if (!made) return false;
    pixels = BitmapPixels::allocate(*made);
    if (!pixels) return false;
    const std::size_t row = made->bytesPerRow;
    for (std::uint32_t y = 0; y < made->height; ++y) {
        std::uint8_t* out = pixels.planes[0] + y * row;
        std::memcpy(out, cg::bodyOf(image)->row(y), row);
        moveRow(out, row, plan.move);
    }
    layout = *made;
    return true;
}

bool drawPixels(CGImageRef image, BitmapLayout& layout, BitmapPixels& pixels) {
    const std::size_t width = CGImageGetWidth(image);
    const std::size_t height = CGImageGetHeight(image);
    const auto made = makeLayout({.width = static_cast<std::int64_t>(width),
                                  .height = static_cast<std::int64_t>(height),
                                  .samplesPerPixel = 4,
                                  .hasAlpha = true});
    if (made) pixels = BitmapPixels::allocate(*made);
    if (!made || !pixels) return false;
    const auto port = OwnedRef<CGContextRef>::adopt(
        CGBitmapContextCreate(pixels.planes[0], width, height, 8, made->bytesPerRow,
                              deviceSpace(ColorModel::RGB).get(), kCGImageAlphaPremultipliedLast));
    if (!port) return false;
    CGContextDrawImage(port.get(),
                       CGRectMake(0, 0, static_cast<CGFloat>(width), static_cast<CGFloat>(height)),
                       image);
    layout = *made;
    return true;
}

} // namespace

bool copyPixels(CGImageRef image, BitmapLayout& layout, BitmapPixels& pixels) {
    if (!image) return false;
    const auto plan = planFor(image);
    if (plan && copySamples(image, *plan, layout, pixels)) return true;
    return drawPixels(image, layout, pixels);
}

} // namespace cocoa::appkit
