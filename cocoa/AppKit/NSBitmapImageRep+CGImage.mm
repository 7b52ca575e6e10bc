/// Bitmaps as CoreGraphics images, and the other way round.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSGraphicsContext.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/cg_image_layout.h"
#include "cocoa/AppKit/color_spaces.h"
#include "cocoa/AppKit/graphics.h"
#include "cocoa/AppKit/row_converter.h"

#include <cstdlib>

using namespace cocoa::appkit;

namespace {

CGBitmapInfo bitmapInfo(const BitmapLayout& layout) {
    CGBitmapInfo info = kCGImageAlphaNone;
    if (layout.hasAlpha) {
        if (layout.alphaFirst)
            info = layout.straightAlpha ? kCGImageAlphaFirst : kCGImageAlphaPremultipliedFirst;
        else
            info = layout.straightAlpha ? kCGImageAlphaLast : kCGImageAlphaPremultipliedLast;
    } else if (layout.bitsPerPixel > layout.bitsPerSample * layout.samplesPerPixel) {
        info = kCGImageAlphaNoneSkipLast;
    }
    if (layout.floatingPoint) return info | kCGBitmapFloatComponents | kCGBitmapByteOrder32Host;
    if (layout.bitsPerSample == 16) return info | kCGBitmapByteOrder16Host;
    return info;
}

void freePixels(void* info, const void* data, size_t size) { std::free(const_cast<void*>(data)); }

/// Takes over the pixels, which are from malloc.
OwnedRef<CGDataProviderRef> providerOwning(void* pixels, std::size_t size) {
    return OwnedRef<CGDataProviderRef>::adopt(
        CGDataProviderCreateWithData(nullptr, pixels, size, freePixels));
}

OwnedRef<CGImageRef> makeImage(const BitmapLayout& layout, CGDataProviderRef provider,
                               CGColorSpaceRef space) {
    return OwnedRef<CGImageRef>::adopt(
        CGImageCreate(layout.width, layout.height, static_cast<std::size_t>(layout.bitsPerSample),
                      static_cast<std::size_t>(layout.bitsPerPixel), layout.bytesPerRow, space,
                      bitmapInfo(layout), provider, nullptr, true, kCGRenderingIntentDefault));
}

/// An image of planes, or of samples that say how black, which CoreGraphics does not have.
OwnedRef<CGImageRef> makeConvertedImage(const NSBitmapState& bitmap, CGColorSpaceRef space) {
    const auto pixels = bitmap.layout.pixelLayout();
    auto converted = convertPixels(bitmap.layout, bitmap.pixels.constPlanes(), pixels);
    const auto layout = layoutOf(pixels);
    if (!converted || !layout) return {};
    const auto provider = providerOwning(converted.bytes.release(), converted.size);
    return makeImage(*layout, provider.get(), space);
}

bool needsConversion(const BitmapLayout& layout) { return layout.planar || layout.zeroIsWhite; }

/// The layouts that CoreGraphics draws into.
bool canBeDrawnInto(const BitmapLayout& layout) {
    if (needsConversion(layout) || layout.bitsPerSample != 8) return false;
    if (layout.hasAlpha && layout.straightAlpha) return false;
    return layout.model == ColorModel::RGB
               ? layout.bitsPerPixel == 32
               : layout.model == ColorModel::Gray && layout.bitsPerPixel == 8;
}

void endDrawing(void* releaseInfo, void* data) {
    auto* bitmap = static_cast<NSBitmapImageRep*>(releaseInfo);
    --[bitmap state]->drawingPorts;
    [bitmap release];
}

} // namespace

@implementation NSBitmapImageRep (NSBitmapCGImage)

- (CGImageRef)CGImage {
    NSBitmapState& bitmap = *[self state];
    if (bitmap.image && bitmap.drawingPorts == 0) return bitmap.image.get();
    const auto space = [self drawingSpace];
    if (needsConversion(bitmap.layout)) {
        bitmap.image = makeConvertedImage(bitmap, space.get());
    } else {
        auto copy = BitmapPixels::copy(bitmap.layout, bitmap.pixels.constPlanes());
        if (!copy) return nullptr;
        const auto provider = providerOwning(copy.memory.release(), bitmap.layout.totalBytes());
        bitmap.image = makeImage(bitmap.layout, provider.get(), space.get());
    }
    return bitmap.image.get();
}

- (CGImageRef)CGImageForProposedRect:(NSRect*)proposedDestRect
                             context:(NSGraphicsContext*)context
                               hints:(NSDictionary*)hints {
    return [self CGImage];
}

- (CGImageRef)newTransientImageOfPixels:(CGSize)pixels {
    const NSBitmapState* bitmap = [self state];
    if (!bitmap) return nullptr;
    const auto space = [self drawingSpace];
    if (needsConversion(bitmap->layout))
        return CGImageRetain(makeConvertedImage(*bitmap, space.get()).get());
    const auto provider = OwnedRef<CGDataProviderRef>::adopt(CGDataProviderCreateWithData(
        nullptr, bitmap->pixels.planes[0], bitmap->layout.totalBytes(), nullptr));
    return CGImageRetain(makeImage(bitmap->layout, provider.get(), space.get()).get());
}

- (BOOL)draw {
    CGContextRef port = currentPort();
    const auto image = OwnedRef<CGImageRef>::adopt([self newTransientImageOfPixels:CGSizeZero]);
    if (!port || !image) return NO;
    const NSSize size = [self size];
    CGContextDrawImage(port, CGRectMake(0, 0, size.width, size.height), image.get());
    return YES;
}

- (id)initWithCGImage:(CGImageRef)cgImage {
    BitmapLayout layout;
    BitmapPixels pixels;
    if (!copyPixels(cgImage, layout, pixels)) {
        [self release];
        return nil;
    }
    self = [self initWithLayout:layout pixels:pixels colorSpaceName:defaultSpaceName(layout.model)];
    if (!self) return nil;
    const auto profile =
        OwnedRef<CFDataRef>::adopt(CGColorSpaceCopyICCProfile(CGImageGetColorSpace(cgImage)));
    if (profile && modelOf(CGImageGetColorSpace(cgImage)) == layout.model)
        [self state]->colorSpace = Owned<NSColorSpace*>::adopt(
            [[NSColorSpace alloc] initWithCGColorSpace:CGImageGetColorSpace(cgImage)]);
    [self state]->image = OwnedRef<CGImageRef>::retain(cgImage);
    return self;
}

- (id)initWithFocusedViewRect:(NSRect)rect {
    CGContextRef port = currentPort();
    const auto picture = OwnedRef<CGImageRef>::adopt(CGBitmapContextCreateImage(port));
    CGRect pixels = CGRectIntersection(
        CGRectIntegral(CGContextConvertRectToDeviceSpace(port, toCG(rect))),
        CGRectMake(0, 0, CGBitmapContextGetWidth(port), CGBitmapContextGetHeight(port)));
    if (!picture || CGRectIsEmpty(pixels)) {
        [self release];
        return nil;
    }
    const CGSize size = CGContextConvertRectToUserSpace(port, pixels).size;
    // Images count rows from the top.
    pixels.origin.y = CGBitmapContextGetHeight(port) - CGRectGetMaxY(pixels);
    const auto part =
        OwnedRef<CGImageRef>::adopt(CGImageCreateWithImageInRect(picture.get(), pixels));
    self = [self initWithCGImage:part.get()];
    [self setSize:NSMakeSize(size.width, size.height)];
    return self;
}

@end

@implementation NSBitmapImageRep (DrawingPrivate)

- (OwnedRef<CGColorSpaceRef>)drawingSpace {
    const NSBitmapState& bitmap = *[self state];
    if (bitmap.colorSpace)
        return OwnedRef<CGColorSpaceRef>::retain([bitmap.colorSpace CGColorSpace]);
    return deviceSpace(bitmap.layout.model);
}

- (CGContextRef)newDrawingPort {
    NSBitmapState* bitmap = [self state];
    if (!bitmap || !canBeDrawnInto(bitmap->layout)) return nullptr;
    const BitmapLayout& layout = bitmap->layout;
    CGContextRef port = CGBitmapContextCreateWithData(
        bitmap->pixels.planes[0], layout.width, layout.height,
        static_cast<std::size_t>(layout.bitsPerSample), layout.bytesPerRow,
        [self drawingSpace].get(), bitmapInfo(layout), endDrawing, self);
    if (!port) return nullptr;
    [self retain]; // for endDrawing
    ++bitmap->drawingPorts;
    bitmap->pixelsChange();
    return port;
}

@end
