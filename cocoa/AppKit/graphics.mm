#include "cocoa/AppKit/graphics.h"

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/codecs/codec.h"

#import <AppKit/NSImage.h>

#include <cmath>

namespace cocoa::appkit {
namespace {

/// What is left of the float noise of sizes in points, in pixels.
constexpr CGFloat tolerance = CGFloat(1e-3);

bool nearWhole(CGFloat value) { return std::abs(value - std::round(value)) < tolerance; }

/// `unit` in pixels of an image, counted from the top.
CGRect pixelRect(CGImageRef image, CGRect unit) {
    const auto width = static_cast<CGFloat>(CGImageGetWidth(image));
    const auto height = static_cast<CGFloat>(CGImageGetHeight(image));
    return CGRectMake(unit.origin.x * width, (1 - unit.origin.y - unit.size.height) * height,
                      unit.size.width * width, unit.size.height * height);
}

bool isWhole(CGRect rect) {
    return nearWhole(rect.origin.x) && nearWhole(rect.origin.y) &&
           nearWhole(rect.origin.x + rect.size.width) &&
           nearWhole(rect.origin.y + rect.size.height);
}

bool liesInside(CGRect rect, CGImageRef image) {
    return rect.origin.x > -tolerance && rect.origin.y > -tolerance &&
           rect.origin.x + rect.size.width <
               static_cast<CGFloat>(CGImageGetWidth(image)) + tolerance &&
           rect.origin.y + rect.size.height <
               static_cast<CGFloat>(CGImageGetHeight(image)) + tolerance;
}

CGRect rounded(CGRect rect) {
    const CGFloat left = std::round(rect.origin.x);
    const CGFloat top = std::round(rect.origin.y);
    return CGRectMake(left, top, std::round(rect.origin.x + rect.size.width) - left,
                      std::round(rect.origin.y + rect.size.height) - top);
}

NSImageInterpolation interpolationOf(NSGraphicsContext* context, NSDictionary* hints) {
    id hint = [hints objectForKey:NSImageHintInterpolation];
    if ([hint respondsToSelector:@selector(unsignedIntegerValue)])
        return [hint unsignedIntegerValue];
    return [context imageInterpolation];
}

} // namespace

Owned<NSBitmapImageRep*> makeCanvas(CGFloat pixelsWide, CGFloat pixelsHigh) {
    const CGFloat wide = std::ceil(pixelsWide);
    const CGFloat high = std::ceil(pixelsHigh);
    if (!(wide >= 1) || !(high >= 1)) return {};
    if (static_cast<double>(wide) * static_cast<double>(high) >
        static_cast<double>(codecs::maximumPixels))
        return {};
    return Owned<NSBitmapImageRep*>::adopt([[NSBitmapImageRep alloc]
        initWithBitmapDataPlanes:nullptr
                      pixelsWide:static_cast<NSInteger>(wide)
                      pixelsHigh:static_cast<NSInteger>(high)
                   bitsPerSample:8
                 samplesPerPixel:4
                        hasAlpha:YES
                        isPlanar:NO
                  colorSpaceName:NSCalibratedRGBColorSpace
                     bytesPerRow:0
                    bitsPerPixel:0]);
}

CGBlendMode blendMode(NSCompositingOperation operation) {
    switch (operation) {
    case NSCompositeClear:
        return kCGBlendModeClear;
    case NSCompositeCopy:
        return kCGBlendModeCopy;
    case NSCompositeSourceOver:
        return kCGBlendModeNormal;
    case NSCompositeSourceIn:
        return kCGBlendModeSourceIn;
    case NSCompositeSourceOut:
        return kCGBlendModeSourceOut;
    case NSCompositeSourceAtop:
        return kCGBlendModeSourceAtop;
    case NSCompositeDestinationOver:
        return kCGBlendModeDestinationOver;
    case NSCompositeDestinationIn:
        return kCGBlendModeDestinationIn;
    case NSCompositeDestinationOut:
        return kCGBlendModeDestinationOut;
    case NSCompositeDestinationAtop:
        return kCGBlendModeDestinationAtop;
    case NSCompositeXOR:
        return kCGBlendModeXOR;
    case NSCompositePlusDarker:
        return kCGBlendModePlusDarker;
    case NSCompositeHighlight:
        return kCGBlendModeNormal;
    case NSCompositePlusLighter:
        return kCGBlendModePlusLighter;
    case NSCompositeMultiply:
        return kCGBlendModeMultiply;
    case NSCompositeScreen:
        return kCGBlendModeScreen;
    case NSCompositeOverlay:
        return kCGBlendModeOverlay;
    case NSCompositeDarken:
        return kCGBlendModeDarken;
    case NSCompositeLighten:
        return kCGBlendModeLighten;
    case NSCompositeColorDodge:
        return kCGBlendModeColorDodge;
    case NSCompositeColorBurn:
        return kCGBlendModeColorBurn;
    case NSCompositeSoftLight:
        return kCGBlendModeSoftLight;
    case NSCompositeHardLight:
        return kCGBlendModeHardLight;
    case NSCompositeDifference:
        return kCGBlendModeDifference;
    case NSCompositeExclusion:
        return kCGBlendModeExclusion;
    case NSCompositeHue:
        return kCGBlendModeHue;
    case NSCompositeSaturation:
        return kCGBlendModeSaturation;
    case NSCompositeColor:
        return kCGBlendModeColor;
    case NSCompositeLuminosity:
        return kCGBlendModeLuminosity;
    default:
        break;
    }
    [NSException raise:NSInvalidArgumentException
                format:@"Expected a compositing operation from 0 to 28, got %lu",
                       static_cast<unsigned long>(operation)];
    return kCGBlendModeNormal;
}

CGContextRef currentPort() {
    return static_cast<CGContextRef>([[NSGraphicsContext currentContext] graphicsPort]);
}

CGSize deviceSize(NSGraphicsContext* context, CGSize size) {
    if (!context) return size;
    const CGSize pixels =
        CGContextConvertSizeToDeviceSpace(static_cast<CGContextRef>([context graphicsPort]), size);
    return CGSizeMake(std::abs(pixels.width), std::abs(pixels.height));
}

void drawImage(NSGraphicsContext* context, CGImageRef image, CGRect unit, CGRect destination,
               const DrawOptions& options) {
    const CGBlendMode mode = blendMode(options.operation);
    CGContextRef port = static_cast<CGContextRef>([context graphicsPort]);
    if (!port || !image || CGRectIsEmpty(destination) || CGRectIsEmpty(unit)) return;

    SavedState saved(port);
    CGContextSetBlendMode(port, mode);
    CGContextSetAlpha(port, options.fraction);
    CGContextSetInterpolationQuality(
        port, static_cast<CGInterpolationQuality>(interpolationOf(context, options.hints)));
    if (options.respectFlipped && [context isFlipped]) {
        CGContextTranslateCTM(port, 0, 2 * destination.origin.y + destination.size.height);
        CGContextScaleCTM(port, 1, -1);
    }

    const CGRect pixels = pixelRect(image, unit);
    if (isWhole(pixels) && liesInside(pixels, image)) {
        const auto part =
            OwnedRef<CGImageRef>::adopt(CGImageCreateWithImageInRect(image, rounded(pixels)));
        CGContextDrawImage(port, destination, part.get());
        return;
    }
    // A part of pixels, or more than there is: the whole image, so placed that the part meets the
    // destination, and cut to it.
    const CGFloat scaleX = destination.size.width / unit.size.width;
    const CGFloat scaleY = destination.size.height / unit.size.height;
    CGContextClipToRect(port, destination);
    CGContextDrawImage(port,
                       CGRectMake(destination.origin.x - unit.origin.x * scaleX,
                                  destination.origin.y - unit.origin.y * scaleY, scaleX, scaleY),
                       image);
}

} // namespace cocoa::appkit
