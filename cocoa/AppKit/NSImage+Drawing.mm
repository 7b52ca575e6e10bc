/// Drawing images.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSGraphicsContext.h>
#import <AppKit/NSImage.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/graphics.h"
#include "cocoa/AppKit/image_state.h"
#include "cocoa/AppKit/representation_choice.h"

using namespace cocoa::appkit;

namespace {

bool hasArea(NSSize size) { return size.width > 0 && size.height > 0; }

/// A rectangle of an image's points in fractions of its sides.
CGRect unitRect(NSRect rect, NSSize size) {
    if (NSEqualRects(rect, NSZeroRect)) return CGRectMake(0, 0, 1, 1);
    return CGRectMake(rect.origin.x / size.width, rect.origin.y / size.height,
                      rect.size.width / size.width, rect.size.height / size.height);
}

/// A picture over an opaque or half-opaque colour; null when there is not enough memory.
OwnedRef<CGImageRef> overColor(CGImageRef image, NSColor* color) {
    const auto width = static_cast<CGFloat>(CGImageGetWidth(image));
    const auto height = static_cast<CGFloat>(CGImageGetHeight(image));
    const auto bitmap = makeCanvas(width, height);
    const auto port = OwnedRef<CGContextRef>::adopt([bitmap.get() newDrawingPort]);
    const auto fill = OwnedRef<CGColorRef>::adopt(
        [[color colorUsingColorSpaceName:NSCalibratedRGBColorSpace] newCGColor]);
    if (!port || !fill) return {};
    const CGRect all = CGRectMake(0, 0, width, height);
    CGContextSetFillColorWithColor(port.get(), fill.get());
    CGContextFillRect(port.get(), all);
    CGContextDrawImage(port.get(), all, image);
    return OwnedRef<CGImageRef>::adopt(CGBitmapContextCreateImage(port.get()));
}

ChoiceRules rulesOf(const NSImageState* state) {
    return {.prefersColorMatch = state->prefersColorMatch != NO,
            .matchesOnMultipleResolution = state->matchesOnMultipleResolution != NO,
            .usesEPSOnResolutionMismatch = state->usesEPSOnResolutionMismatch != NO};
}

} // namespace

@implementation NSImage (NSImageDrawing)

- (NSImageRep*)bestRepresentationForRect:(NSRect)rect
                                 context:(NSGraphicsContext*)referenceContext
                                   hints:(NSDictionary*)hints {
    return chooseRepresentation([self loadedRepresentations],
                                deviceOf(referenceContext, toCG(rect).size), rulesOf([self state]));
}

- (NSImageRep*)bestRepresentationForDevice:(NSDictionary*)deviceDescription {
    return chooseRepresentation([self loadedRepresentations],
                                deviceOf(deviceDescription, [self size]), rulesOf([self state]));
}

- (CGImageRef)CGImageForProposedRect:(NSRect*)proposedDestRect
                             context:(NSGraphicsContext*)referenceContext
                               hints:(NSDictionary*)hints {
    const NSSize size = [self size];
    NSRect rect = NSMakeRect(0, 0, size.width, size.height);
    if (proposedDestRect) rect = *proposedDestRect;
    NSImageRep* rep = [self bestRepresentationForRect:rect context:referenceContext hints:hints];
    return [rep CGImageForProposedRect:proposedDestRect context:referenceContext hints:hints];
}

- (void)drawInRect:(NSRect)dstSpacePortionRect
          fromRect:(NSRect)srcSpacePortionRect
         operation:(NSCompositingOperation)op
          fraction:(CGFloat)requestedAlpha
    respectFlipped:(BOOL)respectContextIsFlipped
             hints:(NSDictionary*)hints {
    NSGraphicsContext* context = [NSGraphicsContext currentContext];
    const NSSize size = [self size];
    if (!context || !hasArea(size)) return;
    // The best representation is that for the whole image, of which a part is drawn.
    const CGRect unit = unitRect(srcSpacePortionRect, size);
    if (CGRectIsEmpty(unit)) return;
    const NSRect whole = NSMakeRect(0, 0, dstSpacePortionRect.size.width / unit.size.width,
                                    dstSpacePortionRect.size.height / unit.size.height);
    NSImageRep* rep = [self bestRepresentationForRect:whole context:context hints:hints];
    NSColor* background = [self state]->backgroundColor;
    if (!background || [background alphaComponent] == 0) {
        [rep drawPart:unit
                    inRect:dstSpacePortionRect
                 operation:op
                  fraction:requestedAlpha
            respectFlipped:respectContextIsFlipped
                     hints:hints];
        return;
    }
    const auto image = OwnedRef<CGImageRef>::adopt(
        [rep newTransientImageOfPixels:deviceSize(context, toCG(whole).size)]);
    if (!image) return;
    drawImage(context, overColor(image.get(), background).get(), unit, toCG(dstSpacePortionRect),
              {.operation = op,
               .fraction = requestedAlpha,
               .respectFlipped = static_cast<bool>(respectContextIsFlipped),
               .hints = hints});
}

- (void)drawInRect:(NSRect)rect
          fromRect:(NSRect)fromRect
         operation:(NSCompositingOperation)op
          fraction:(CGFloat)delta {
    [self drawInRect:rect
              fromRect:fromRect
             operation:op
              fraction:delta
        respectFlipped:NO
                 hints:nil];
}

- (void)drawInRect:(NSRect)rect {
    [self drawInRect:rect
              fromRect:NSZeroRect
             operation:NSCompositeSourceOver
              fraction:1
        respectFlipped:YES
                 hints:nil];
}

- (void)drawAtPoint:(NSPoint)point
           fromRect:(NSRect)fromRect
          operation:(NSCompositingOperation)op
           fraction:(CGFloat)delta {
    const NSSize size = NSEqualRects(fromRect, NSZeroRect) ? [self size] : fromRect.size;
    [self drawInRect:NSMakeRect(point.x, point.y, size.width, size.height)
            fromRect:fromRect
           operation:op
            fraction:delta];
}

- (BOOL)drawRepresentation:(NSImageRep*)imageRep inRect:(NSRect)rect {
    NSColor* background = [self state]->backgroundColor;
    CGContextRef port = currentPort();
    if (!port) return NO;
    if (background && [background alphaComponent] > 0) {
        SavedState saved(port);
        [background setFill];
        NSRectFill(rect);
    }
    return [imageRep drawInRect:rect];
}

- (void)compositeToPoint:(NSPoint)point
                fromRect:(NSRect)rect
               operation:(NSCompositingOperation)op
                fraction:(CGFloat)delta {
    const NSSize size = NSEqualRects(rect, NSZeroRect) ? [self size] : rect.size;
    NSRect destination = NSMakeRect(point.x, point.y, size.width, size.height);
    // In a flipped context the picture stands above the point, which is towards smaller y.
    if ([[NSGraphicsContext currentContext] isFlipped]) destination.origin.y -= size.height;
    [self drawInRect:destination
              fromRect:rect
             operation:op
              fraction:delta
        respectFlipped:YES
                 hints:nil];
}

- (void)compositeToPoint:(NSPoint)point fromRect:(NSRect)rect operation:(NSCompositingOperation)op {
    [self compositeToPoint:point fromRect:rect operation:op fraction:1];
}

- (void)compositeToPoint:(NSPoint)point operation:(NSCompositingOperation)op {
    [self compositeToPoint:point fromRect:NSZeroRect operation:op fraction:1];
}

- (void)compositeToPoint:(NSPoint)point
               operation:(NSCompositingOperation)op
                fraction:(CGFloat)delta {
    [self compositeToPoint:point fromRect:NSZeroRect operation:op fraction:delta];
}

- (void)dissolveToPoint:(NSPoint)point fraction:(CGFloat)delta {
    [self compositeToPoint:point operation:NSCompositeSourceOver fraction:delta];
}

- (void)dissolveToPoint:(NSPoint)point fromRect:(NSRect)rect fraction:(CGFloat)delta {
    [self compositeToPoint:point fromRect:rect operation:NSCompositeSourceOver fraction:delta];
}

@end
