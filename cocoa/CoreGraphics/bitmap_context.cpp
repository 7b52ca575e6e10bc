#include "cocoa/CoreGraphics/bitmap_context.h"

#include "cocoa/CoreGraphics/context.h"
#include "cocoa/CoreGraphics/image.h"
#include "cocoa/CoreGraphics/pixel_layout.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

namespace cocoa::cg {
namespace {

void freeData(void*, void* data) { std::free(data); }
void freeCopy(void*, const void* data, std::size_t) { std::free(const_cast<void*>(data)); }

/// The bits that CGBitmapContextCreate gives a pixel; 0 for what it refuses.
std::size_t publicBitsPerPixel(CGColorSpaceModel model, CGImageAlphaInfo alpha) {
    switch (alpha) {
    case kCGImageAlphaPremultipliedLast:
    case kCGImageAlphaPremultipliedFirst:
    case kCGImageAlphaNoneSkipLast:
    case kCGImageAlphaNoneSkipFirst:
        return model == kCGColorSpaceModelRGB ? 32 : 0;
    case kCGImageAlphaNone:
        return model == kCGColorSpaceModelMonochrome ? 8 : 0;
    case kCGImageAlphaOnly:
        return model == kCGColorSpaceModelMonochrome || model == kCGColorSpaceModelUnknown ? 8 : 0;
    default:
        return 0;
    }
}

/// Where the samples lie when every one is a byte that can be drawn into.
std::optional<SurfaceFormat> surfaceFormat(const PixelLayout& layout) {
    if (layout.bitsPerSample != 8 || layout.isFloat || layout.bitsPerPixel % 8 != 0 ||
        layout.colorSamples > 3 || (layout.alpha == AlphaKind::Straight && !layout.alphaOnly())) {
        return std::nullopt;
    }
    const int bytes = layout.bitsPerPixel / 8;
    if (bytes > 4 || (layout.swapUnit != 1 && layout.swapUnit != bytes)) return std::nullopt;
    const auto place = [&layout](int bit) {
        return static_cast<std::int8_t>((bit / 8) ^ (layout.swapUnit - 1));
    };
    SurfaceFormat format;
    format.bytes = static_cast<std::int8_t>(bytes);
    if (!layout.alphaOnly()) {
        const int step = layout.colorSamples == 3 ? 8 : 0;
        format.red = place(layout.firstColorBit);
        format.green = place(layout.firstColorBit + step);
        format.blue = place(layout.firstColorBit + 2 * step);
    }
    if (layout.alpha != AlphaKind::None) format.alpha = place(layout.alphaBit);
    return format;
}

/// Whole vectors; 0 when that is more than memory can be.
std::size_t chosenBytesPerRow(std::size_t width, std::size_t bitsPerPixel) {
    constexpr std::uint64_t multiple = 16;
    const std::uint64_t bytes = (std::uint64_t{width} * bitsPerPixel + 7) / 8;
    const std::uint64_t padded = (bytes + multiple - 1) / multiple * multiple;
    return padded <= PTRDIFF_MAX ? static_cast<std::size_t>(padded) : 0;
}

} // namespace

CGContextRef createBitmapContext(void* data, std::size_t width, std::size_t height,
                                 std::size_t bitsPerComponent, std::size_t bitsPerPixel,
                                 std::size_t bytesPerRow, CGColorSpaceRef space,
                                 CGBitmapInfo bitmapInfo,
                                 CGBitmapContextReleaseDataCallback releaseCallback,
                                 void* releaseInfo) {
    const bool alphaOnly = (bitmapInfo & kCGBitmapAlphaInfoMask) == kCGImageAlphaOnly;
    if (data == nullptr && bytesPerRow == 0 && width <= INT32_MAX) {
        bytesPerRow = chosenBytesPerRow(width, bitsPerPixel);
    }
    const auto layout =
        makeLayout(width, height, bitsPerComponent, bitsPerPixel, bytesPerRow,
                   alphaOnly ? kCGColorSpaceModelUnknown : CGColorSpaceGetModel(space), bitmapInfo);
    if (!layout) return nullptr;
    const auto format = surfaceFormat(*layout);
    if (!format) return nullptr;
    if (data == nullptr) {
        data = std::calloc(height, bytesPerRow);
        if (data == nullptr) return nullptr;
        releaseCallback = freeData;
        releaseInfo = nullptr;
    }
    auto context = std::make_unique<Context>();
    context->surface = {static_cast<std::uint8_t*>(data), static_cast<int>(width),
                        static_cast<int>(height), bytesPerRow, *format};
    context->bitmapInfo = bitmapInfo;
    if (!alphaOnly) context->space = Owned<CGColorSpaceRef>::retain(space);
    context->releaseData = releaseCallback;
    context->releaseInfo = releaseInfo;
    context->state.clip.bounds = context->surface.bounds();
    return (CGContextRef)makeObject(Kind::Context, std::move(context));
}

} // namespace cocoa::cg

using namespace cocoa::cg;

CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                   size_t bytesPerRow, CGColorSpaceRef space,
                                   CGBitmapInfo bitmapInfo) {
    return CGBitmapContextCreateWithData(data, width, height, bitsPerComponent, bytesPerRow, space,
                                         bitmapInfo, nullptr, nullptr);
}

CGContextRef CGBitmapContextCreateWithData(void* data, size_t width, size_t height,
                                           size_t bitsPerComponent, size_t bytesPerRow,
                                           CGColorSpaceRef space, CGBitmapInfo bitmapInfo,
                                           CGBitmapContextReleaseDataCallback releaseCallback,
                                           void* releaseInfo) {
    const auto alpha = static_cast<CGImageAlphaInfo>(bitmapInfo & kCGBitmapAlphaInfoMask);
    const std::size_t bitsPerPixel = publicBitsPerPixel(CGColorSpaceGetModel(space), alpha);
    if (bitsPerPixel == 0) return nullptr;
    return createBitmapContext(data, width, height, bitsPerComponent, bitsPerPixel, bytesPerRow,
                               space, bitmapInfo, releaseCallback, releaseInfo);
}

void* CGBitmapContextGetData(CGContextRef context) {
    return context != nullptr ? bodyOf(context)->surface.data : nullptr;
}

size_t CGBitmapContextGetWidth(CGContextRef context) {
    return context != nullptr ? static_cast<size_t>(bodyOf(context)->surface.width) : 0;
}

size_t CGBitmapContextGetHeight(CGContextRef context) {
    return context != nullptr ? static_cast<size_t>(bodyOf(context)->surface.height) : 0;
}

size_t CGBitmapContextGetBitsPerComponent(CGContextRef context) {
    return context != nullptr ? 8 : 0;
}

size_t CGBitmapContextGetBitsPerPixel(CGContextRef context) {
    return context != nullptr ? static_cast<size_t>(bodyOf(context)->surface.format.bytes) * 8 : 0;
}

size_t CGBitmapContextGetBytesPerRow(CGContextRef context) {
    return context != nullptr ? bodyOf(context)->surface.rowBytes : 0;
}

CGColorSpaceRef CGBitmapContextGetColorSpace(CGContextRef context) {
    return context != nullptr ? bodyOf(context)->space.get() : nullptr;
}

CGImageAlphaInfo CGBitmapContextGetAlphaInfo(CGContextRef context) {
    return static_cast<CGImageAlphaInfo>(CGBitmapContextGetBitmapInfo(context) &
                                         kCGBitmapAlphaInfoMask);
}

CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef context) {
    return context != nullptr ? bodyOf(context)->bitmapInfo : 0;
}

CGImageRef CGBitmapContextCreateImage(CGContextRef context) {
    if (context == nullptr) return nullptr;
    const Context& body = *bodyOf(context);
    const Surface& surface = body.surface;
    const auto height = static_cast<std::size_t>(surface.height);
    // The last row of a caller's memory may end with its last pixel.
    const std::size_t lastRow =
        static_cast<std::size_t>(surface.width) * static_cast<unsigned>(surface.format.bytes);
    const std::size_t size = (height - 1) * surface.rowBytes + lastRow;
    void* copy = std::malloc(size);
    if (copy == nullptr) return nullptr;
    std::memcpy(copy, surface.data, size);
    const auto provider = Owned<CGDataProviderRef>::adopt(
        CGDataProviderCreateWithData(nullptr, copy, size, freeCopy));
    return CGImageCreate(static_cast<std::size_t>(surface.width), height, 8,
                         CGBitmapContextGetBitsPerPixel(context), surface.rowBytes,
                         body.space.get(), body.bitmapInfo, provider.get(), nullptr, true,
                         kCGRenderingIntentDefault);
}
