#include "cocoa/CoreGraphics/object.h"

#include <CoreGraphics/CGBitmapContext.h>
#include <CoreGraphics/CGLayer.h>

#include <cmath>
#include <cstdint>
#include <memory>

namespace cocoa::cg {
namespace {

class Layer final : public Body {
public:
    Layer(Owned<CGContextRef> context, CGSize size)
        : context(std::move(context))
        , size(size) {}

    const Owned<CGContextRef> context;
    const CGSize size;
};

Layer* bodyOf(CGLayerRef layer) { return static_cast<Layer*>(bodyOfObject(layer)); }

Owned<CGColorSpaceRef> spaceFor(CGContextRef context) {
    CGColorSpaceRef const space = CGBitmapContextGetColorSpace(context);
    if (CGColorSpaceGetModel(space) == kCGColorSpaceModelRGB)
        return Owned<CGColorSpaceRef>::retain(space);
    return Owned<CGColorSpaceRef>::adopt(CGColorSpaceCreateDeviceRGB());
}

/// Whole pixels; 0 for what no bitmap can have.
std::size_t pixelsOf(CGFloat length) {
    const double pixels = std::ceil(static_cast<double>(length));
    return pixels > 0 && pixels <= INT32_MAX ? static_cast<std::size_t>(pixels) : 0;
}

} // namespace
} // namespace cocoa::cg

using namespace cocoa::cg;

CGLayerRef CGLayerCreateWithContext(CGContextRef context, CGSize size, CFDictionaryRef) {
    const std::size_t width = pixelsOf(size.width);
    const std::size_t height = pixelsOf(size.height);
    if (context == nullptr || width == 0 || height == 0) return nullptr;
    auto drawing = Owned<CGContextRef>::adopt(CGBitmapContextCreate(
        nullptr, width, height, 8, 0, spaceFor(context).get(), kCGImageAlphaPremultipliedLast));
    if (!drawing) return nullptr;
    CGContextClipToRect(drawing.get(), CGRectMake(0, 0, size.width, size.height));
    return (CGLayerRef)makeObject(Kind::Layer, std::make_unique<Layer>(std::move(drawing), size));
}

CGLayerRef CGLayerRetain(CGLayerRef layer) {
    retainObject(layer);
    return layer;
}

void CGLayerRelease(CGLayerRef layer) { releaseObject(layer); }

CGSize CGLayerGetSize(CGLayerRef layer) {
    return layer != nullptr ? bodyOf(layer)->size : CGSizeMake(0, 0);
}

CGContextRef CGLayerGetContext(CGLayerRef layer) {
    return layer != nullptr ? bodyOf(layer)->context.get() : nullptr;
}

void CGContextDrawLayerInRect(CGContextRef context, CGRect rect, CGLayerRef layer) {
    if (context == nullptr || layer == nullptr) return;
    CGContextRef const drawing = CGLayerGetContext(layer);
    const CGSize size = CGLayerGetSize(layer);
    // The last pixels may reach beyond the layer.
    rect.size.width *= static_cast<CGFloat>(CGBitmapContextGetWidth(drawing)) / size.width;
    rect.size.height *= static_cast<CGFloat>(CGBitmapContextGetHeight(drawing)) / size.height;
    const auto image = Owned<CGImageRef>::adopt(CGBitmapContextCreateImage(drawing));
    CGContextDrawImage(context, rect, image.get());
}

void CGContextDrawLayerAtPoint(CGContextRef context, CGPoint point, CGLayerRef layer) {
    const CGSize size = CGLayerGetSize(layer);
    CGContextDrawLayerInRect(context, CGRectMake(point.x, point.y, size.width, size.height), layer);
}
