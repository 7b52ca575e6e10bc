#include "cocoa/CoreGraphics/image.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace cocoa::cg {

std::unique_ptr<Image> Image::copy() const {
    auto result = std::make_unique<Image>();
    result->layout = layout;
    result->bitmapInfo = bitmapInfo;
    result->isMask = isMask;
    result->shouldInterpolate = shouldInterpolate;
    result->intent = intent;
    result->space = space;
    result->provider = provider;
    result->decode = decode;
    result->mask = mask;
    return result;
}

namespace {

/// The image of the layout on the provider; null when the provider has too few bytes.
std::unique_ptr<Image> imageOn(CGDataProviderRef provider, const PixelLayout& layout,
                               const CGFloat* decode) {
    if (provider == nullptr || bodyOf(provider)->bytes().size() < *layout.usedBytes()) {
        return nullptr;
    }
    auto image = std::make_unique<Image>();
    image->layout = layout;
    image->provider = Owned<CGDataProviderRef>::retain(provider);
    if (decode != nullptr) {
        const std::size_t samples = std::max<std::size_t>(layout.colorSamples, 1);
        image->decode.assign(decode, decode + 2 * samples);
        if (!std::all_of(image->decode.begin(), image->decode.end(),
                         [](CGFloat value) { return std::isfinite(value); })) {
            return nullptr;
        }
    }
    return image;
}

void deleteBytes(void*, const void* data, std::size_t) {
    delete[] static_cast<const std::uint8_t*>(data);
}

/// A rectangle of pixels within an image.
struct Part {
    std::size_t x, y, width, height;
};

/// The bytes of a provider from an offset on, shared with it.
CGDataProviderRef sharedProvider(CGDataProviderRef provider, std::size_t offset, std::size_t size) {
    const std::uint8_t* bytes = bodyOf(provider)->bytes().data() + offset;
    return CGDataProviderCreateWithData(CGDataProviderRetain(provider), bytes, size, releaseOwner);
}

/// Sets the layout and the provider of a part that does not start at a byte of its own: the bits
/// are moved to the front of new rows, in the order in which they are read.
bool copyPart(Image& image, const Part& part) {
    PixelLayout layout = image.layout;
    layout.width = part.width;
    layout.height = part.height;
    const std::size_t swap = layout.swapUnit - 1U;
    layout.bytesPerRow = static_cast<std::size_t>(layout.usedBytesPerRow());
    const auto size = layout.usedBytes();
    if (!size) return false;
    auto* copy = new (std::nothrow) std::uint8_t[*size]();
    if (copy == nullptr) return false;

    const std::uint64_t firstBit = std::uint64_t{part.x} * layout.bitsPerPixel;
    const auto firstByte = static_cast<std::size_t>(firstBit / 8);
    const unsigned shift = firstBit % 8;
    const auto available = static_cast<std::size_t>(image.layout.usedBytesPerRow());
    for (std::size_t y = 0; y < part.height; ++y) {
        const std::uint8_t* source = image.row(part.y + y);
        std::uint8_t* target = copy + y * layout.bytesPerRow;
        for (std::size_t i = 0; i < layout.bytesPerRow && firstByte + i < available; ++i) {
            unsigned value = source[(firstByte + i) ^ swap] << shift;
            if (shift != 0 && firstByte + i + 1 < available) {
                value |= source[(firstByte + i + 1) ^ swap] >> (8 - shift);
            }
            target[i ^ swap] = static_cast<std::uint8_t>(value);
        }
    }
    image.layout = layout;
    image.provider = Owned<CGDataProviderRef>::adopt(
        CGDataProviderCreateWithData(nullptr, copy, *size, deleteBytes));
    return true;
}

bool takePart(Image& image, const Part& part) {
    const std::uint64_t firstBit = std::uint64_t{part.x} * image.layout.bitsPerPixel;
    if (firstBit % (image.layout.swapUnit * 8U) != 0) return copyPart(image, part);
    const std::size_t offset =
        part.y * image.layout.bytesPerRow + static_cast<std::size_t>(firstBit / 8);
    image.layout.width = part.width;
    image.layout.height = part.height;
    image.provider = Owned<CGDataProviderRef>::adopt(
        sharedProvider(image.provider.get(), offset, *image.layout.usedBytes()));
    return true;
}

} // namespace
} // namespace cocoa::cg

using namespace cocoa::cg;

CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                         size_t bytesPerRow, CGColorSpaceRef space, CGBitmapInfo bitmapInfo,
                         CGDataProviderRef provider, const CGFloat decode[], bool shouldInterpolate,
                         CGColorRenderingIntent intent) {
    const auto layout = makeLayout(width, height, bitsPerComponent, bitsPerPixel, bytesPerRow,
                                   CGColorSpaceGetModel(space), bitmapInfo);
    if (!layout) return nullptr;
    auto image = imageOn(provider, *layout, decode);
    if (!image) return nullptr;
    image->bitmapInfo = bitmapInfo;
    image->shouldInterpolate = shouldInterpolate;
    image->intent = intent;
    image->space = Owned<CGColorSpaceRef>::retain(space);
    return makeImage(std::move(image));
}

CGImageRef CGImageMaskCreate(size_t width, size_t height, size_t bitsPerComponent,
                             size_t bitsPerPixel, size_t bytesPerRow, CGDataProviderRef provider,
                             const CGFloat decode[], bool shouldInterpolate) {
    if (bitsPerComponent > 8 || (bitsPerComponent & (bitsPerComponent - 1)) != 0) return nullptr;
    const auto layout = makeLayout(width, height, bitsPerComponent, bitsPerPixel, bytesPerRow,
                                   kCGColorSpaceModelMonochrome, kCGImageAlphaNone);
    if (!layout) return nullptr;
    auto image = imageOn(provider, *layout, decode);
    if (!image) return nullptr;
    image->isMask = true;
    image->shouldInterpolate = shouldInterpolate;
    return makeImage(std::move(image));
}

CGImageRef CGImageCreateWithMask(CGImageRef image, CGImageRef mask) {
    if (image == nullptr || mask == nullptr || bodyOf(image)->isMask) return nullptr;
    const Image& coverage = *bodyOf(mask);
    if (!coverage.isMask && (coverage.layout.model != kCGColorSpaceModelMonochrome ||
                             coverage.layout.alpha != AlphaKind::None || coverage.mask)) {
        return nullptr;
    }
    auto masked = bodyOf(image)->copy();
    masked->mask = Owned<CGImageRef>::retain(mask);
    return makeImage(std::move(masked));
}

CGImageRef CGImageCreateWithImageInRect(CGImageRef image, CGRect rect) {
    if (image == nullptr) return nullptr;
    const Image& whole = *bodyOf(image);
    const CGRect bounds = CGRectMake(0, 0, static_cast<CGFloat>(whole.layout.width),
                                     static_cast<CGFloat>(whole.layout.height));
    const CGRect cut = CGRectIntersection(CGRectIntegral(rect), bounds);
    if (CGRectIsEmpty(cut)) return nullptr;
    const Part part = {
        static_cast<std::size_t>(cut.origin.x), static_cast<std::size_t>(cut.origin.y),
        static_cast<std::size_t>(cut.size.width), static_cast<std::size_t>(cut.size.height)};
    if (part.width == whole.layout.width && part.height == whole.layout.height) {
        return CGImageRetain(image);
    }
    auto result = whole.copy();
    if (whole.mask) {
        // The mask is stretched over the image: the part has the same part of it.
        const PixelLayout& mask = bodyOf(whole.mask.get())->layout;
        const CGFloat scaleX = static_cast<CGFloat>(mask.width) / bounds.size.width;
        const CGFloat scaleY = static_cast<CGFloat>(mask.height) / bounds.size.height;
        result->mask = Owned<CGImageRef>::adopt(CGImageCreateWithImageInRect(
            whole.mask.get(), CGRectMake(cut.origin.x * scaleX, cut.origin.y * scaleY,
                                         cut.size.width * scaleX, cut.size.height * scaleY)));
        if (!result->mask) return nullptr;
    }
    return takePart(*result, part) ? makeImage(std::move(result)) : nullptr;
}

CGImageRef CGImageCreateCopy(CGImageRef image) {
    return image != nullptr ? makeImage(bodyOf(image)->copy()) : nullptr;
}

CGImageRef CGImageCreateCopyWithColorSpace(CGImageRef image, CGColorSpaceRef space) {
    if (image == nullptr || space == nullptr || bodyOf(image)->isMask) return nullptr;
    if (bodyOf(image)->layout.colorSamples != CGColorSpaceGetNumberOfComponents(space)) {
        return nullptr;
    }
    auto copy = bodyOf(image)->copy();
    copy->space = Owned<CGColorSpaceRef>::retain(space);
    copy->layout.model = CGColorSpaceGetModel(space);
    return makeImage(std::move(copy));
}

CGImageRef CGImageRetain(CGImageRef image) {
    retainObject(image);
    return image;
}

void CGImageRelease(CGImageRef image) { releaseObject(image); }

bool CGImageIsMask(CGImageRef image) { return image != nullptr && bodyOf(image)->isMask; }

size_t CGImageGetWidth(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->layout.width : 0;
}

size_t CGImageGetHeight(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->layout.height : 0;
}

size_t CGImageGetBitsPerComponent(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->layout.bitsPerSample : 0;
}

size_t CGImageGetBitsPerPixel(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->layout.bitsPerPixel : 0;
}

size_t CGImageGetBytesPerRow(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->layout.bytesPerRow : 0;
}

CGColorSpaceRef CGImageGetColorSpace(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->space.get() : nullptr;
}

CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image) {
    return static_cast<CGImageAlphaInfo>(CGImageGetBitmapInfo(image) & kCGBitmapAlphaInfoMask);
}

CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->bitmapInfo : 0;
}

CGDataProviderRef CGImageGetDataProvider(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->provider.get() : nullptr;
}

const CGFloat* CGImageGetDecode(CGImageRef image) {
    return image != nullptr && !bodyOf(image)->decode.empty() ? bodyOf(image)->decode.data()
                                                              : nullptr;
}

bool CGImageGetShouldInterpolate(CGImageRef image) {
    return image != nullptr && bodyOf(image)->shouldInterpolate;
}

CGColorRenderingIntent CGImageGetRenderingIntent(CGImageRef image) {
    return image != nullptr ? bodyOf(image)->intent : kCGRenderingIntentDefault;
}
