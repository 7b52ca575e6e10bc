#include "cocoa/CoreGraphics/context.h"

#include "cocoa/CoreGraphics/arithmetic.h"
#include "cocoa/CoreGraphics/color.h"
#include "cocoa/CoreGraphics/color_conversion.h"
#include "cocoa/CoreGraphics/composite.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace cocoa::cg {
namespace {

Quad mappedQuad(const Matrix& matrix, const CGRect& rect) {
    const double left = CGRectGetMinX(rect);
    const double bottom = CGRectGetMinY(rect);
    const double right = left + CGRectGetWidth(rect);
    const double top = bottom + CGRectGetHeight(rect);
    return {matrix.apply({left, bottom}), matrix.apply({right, bottom}), matrix.apply({right, top}),
            matrix.apply({left, top})};
}

void setFill(Context& context, const ColorSpace& space, const CGFloat* components) {
    const RGB rgb = convertColor(space, components, context.colorSpace());
    const auto alpha = static_cast<double>(components[space.components()]);
    context.state.fill = {rgb.red, rgb.green, rgb.blue, alpha > 0 ? std::min(alpha, 1.0) : 0};
}

void setDeviceFill(CGContextRef context, CGColorSpaceModel model, const CGFloat* components) {
    if (context == nullptr) return;
    const ColorSpace space(model, nullptr, ColorSpace::Origin::Device);
    setFill(*bodyOf(context), space, components);
}

/// What there is no memory for stays undrawn.
void paint(Context& context, const CGRect& rect, std::uint32_t color, CGBlendMode mode) try {
    const Region region = context.regionOf(rect);
    if (region.isEmpty()) return;
    composite(context.surface, region.bounds, {nullptr, 0, color}, mode, region.coverage.get());
} catch (const std::bad_alloc&) {
}

/// A shape that there is no memory for lets nothing through, rather than everything.
void clip(Context& context, const CGRect* rects, std::size_t count) try {
    Region all;
    for (std::size_t i = 0; i < count; ++i)
        all = unionOf(all, context.regionOf(rects[i]));
    context.state.clip = std::move(all);
} catch (const std::bad_alloc&) {
    context.state.clip = {};
}

} // namespace

std::uint32_t fillPixel(const GraphicsState& state) {
    const double alpha = state.fill.alpha * state.alpha;
    const auto sample = [alpha](double component) {
        return static_cast<unsigned>(std::lround(component * alpha * 255));
    };
    return pixel(sample(1), sample(state.fill.red), sample(state.fill.green),
                 sample(state.fill.blue));
}

Region Context::regionOf(const CGRect& rect) const {
    if (CGRectIsNull(rect)) return {};
    const Region shape =
        covered(mappedQuad(pixelMatrix(), rect), state.clip.bounds, state.antialias);
    return intersection(shape, state.clip);
}

} // namespace cocoa::cg

using namespace cocoa::cg;

CGContextRef CGContextRetain(CGContextRef context) {
    retainObject(context);
    return context;
}

void CGContextRelease(CGContextRef context) { releaseObject(context); }

void CGContextSaveGState(CGContextRef context) {
    if (context != nullptr) bodyOf(context)->saved.push_back(bodyOf(context)->state);
}

void CGContextRestoreGState(CGContextRef context) {
    if (context == nullptr || bodyOf(context)->saved.empty()) return;
    bodyOf(context)->state = std::move(bodyOf(context)->saved.back());
    bodyOf(context)->saved.pop_back();
}

void CGContextScaleCTM(CGContextRef context, CGFloat sx, CGFloat sy) {
    CGContextConcatCTM(context, CGAffineTransformMakeScale(sx, sy));
}

void CGContextTranslateCTM(CGContextRef context, CGFloat tx, CGFloat ty) {
    CGContextConcatCTM(context, CGAffineTransformMakeTranslation(tx, ty));
}

void CGContextRotateCTM(CGContextRef context, CGFloat angle) {
    if (context == nullptr) return;
    const double sine = std::sin(static_cast<double>(angle));
    const double cosine = std::cos(static_cast<double>(angle));
    GraphicsState& state = bodyOf(context)->state;
    state.ctm = concat({cosine, sine, -sine, cosine, 0, 0}, state.ctm);
}

void CGContextConcatCTM(CGContextRef context, CGAffineTransform transform) {
    if (context == nullptr) return;
    GraphicsState& state = bodyOf(context)->state;
    state.ctm = concat(Matrix::from(transform), state.ctm);
}

CGAffineTransform CGContextGetCTM(CGContextRef context) {
    return context != nullptr ? bodyOf(context)->state.ctm.transform() : CGAffineTransformIdentity;
}

// Device space is the bitmap's: the transform of the state leads there.
static CGAffineTransform toUserSpace(CGContextRef context) {
    return CGAffineTransformInvert(CGContextGetCTM(context));
}

CGPoint CGContextConvertPointToDeviceSpace(CGContextRef context, CGPoint point) {
    return CGPointApplyAffineTransform(point, CGContextGetCTM(context));
}

CGPoint CGContextConvertPointToUserSpace(CGContextRef context, CGPoint point) {
    return CGPointApplyAffineTransform(point, toUserSpace(context));
}

CGSize CGContextConvertSizeToDeviceSpace(CGContextRef context, CGSize size) {
    return CGSizeApplyAffineTransform(size, CGContextGetCTM(context));
}

CGSize CGContextConvertSizeToUserSpace(CGContextRef context, CGSize size) {
    return CGSizeApplyAffineTransform(size, toUserSpace(context));
}

CGRect CGContextConvertRectToDeviceSpace(CGContextRef context, CGRect rect) {
    return CGRectApplyAffineTransform(rect, CGContextGetCTM(context));
}

CGRect CGContextConvertRectToUserSpace(CGContextRef context, CGRect rect) {
    return CGRectApplyAffineTransform(rect, toUserSpace(context));
}

void CGContextClipToRect(CGContextRef context, CGRect rect) {
    if (context == nullptr) return;
    clip(*bodyOf(context), &rect, 1);
}

void CGContextClipToRects(CGContextRef context, const CGRect* rects, size_t count) {
    if (context == nullptr || rects == nullptr) return;
    clip(*bodyOf(context), rects, count);
}

CGRect CGContextGetClipBoundingBox(CGContextRef context) {
    if (context == nullptr || bodyOf(context)->state.clip.isEmpty()) return CGRectNull;
    const Context& body = *bodyOf(context);
    const PixelRect& box = body.state.clip.bounds;
    const CGRect rect = CGRectMake(
        static_cast<CGFloat>(box.left), static_cast<CGFloat>(body.surface.height - box.bottom),
        static_cast<CGFloat>(box.width()), static_cast<CGFloat>(box.height()));
    return CGContextConvertRectToUserSpace(context, rect);
}

void CGContextSetFillColorWithColor(CGContextRef context, CGColorRef color) {
    if (context == nullptr || color == nullptr) return;
    const Color& body = *bodyOf(color);
    setFill(*bodyOf(context), *bodyOf(body.space.get()), body.components.data());
}

void CGContextSetGrayFillColor(CGContextRef context, CGFloat gray, CGFloat alpha) {
    const CGFloat components[] = {gray, alpha};
    setDeviceFill(context, kCGColorSpaceModelMonochrome, components);
}

void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue,
                              CGFloat alpha) {
    const CGFloat components[] = {red, green, blue, alpha};
    setDeviceFill(context, kCGColorSpaceModelRGB, components);
}

void CGContextSetCMYKFillColor(CGContextRef context, CGFloat cyan, CGFloat magenta, CGFloat yellow,
                               CGFloat black, CGFloat alpha) {
    const CGFloat components[] = {cyan, magenta, yellow, black, alpha};
    setDeviceFill(context, kCGColorSpaceModelCMYK, components);
}

void CGContextSetAlpha(CGContextRef context, CGFloat alpha) {
    if (context == nullptr) return;
    bodyOf(context)->state.alpha = alpha > 0 ? std::min(static_cast<double>(alpha), 1.0) : 0;
}

void CGContextSetBlendMode(CGContextRef context, CGBlendMode mode) {
    if (context != nullptr && mode >= kCGBlendModeNormal && mode <= kCGBlendModePlusLighter) {
        bodyOf(context)->state.mode = mode;
    }
}

void CGContextSetInterpolationQuality(CGContextRef context, CGInterpolationQuality quality) {
    if (context != nullptr) bodyOf(context)->state.quality = quality;
}

CGInterpolationQuality CGContextGetInterpolationQuality(CGContextRef context) {
    return context != nullptr ? bodyOf(context)->state.quality : kCGInterpolationDefault;
}

void CGContextSetShouldAntialias(CGContextRef context, bool shouldAntialias) {
    if (context != nullptr) bodyOf(context)->state.antialias = shouldAntialias;
}

void CGContextFillRect(CGContextRef context, CGRect rect) {
    if (context == nullptr) return;
    Context& body = *bodyOf(context);
    paint(body, rect, fillPixel(body.state), body.state.mode);
}

void CGContextFillRects(CGContextRef context, const CGRect* rects, size_t count) {
    for (size_t i = 0; rects != nullptr && i < count; ++i)
        CGContextFillRect(context, rects[i]);
}

void CGContextClearRect(CGContextRef context, CGRect rect) {
    if (context != nullptr) paint(*bodyOf(context), rect, 0, kCGBlendModeClear);
}

void CGContextFlush(CGContextRef) {}
void CGContextSynchronize(CGContextRef) {}
