#import <AppKit/NSGraphicsContext.h>
#import <AppKit/NSImageRep.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/graphics.h"
#include "cocoa/AppKit/ownership.h"

#include <cmath>

using namespace cocoa::appkit;

@implementation NSImageRep

- (void)dealloc {
    [_colorSpaceName release];
    [super dealloc];
}

- (id)copyWithZone:(NSZone*)zone {
    NSImageRep* copy = (NSImageRep*)NSCopyObject(self, 0, zone);
    [copy->_colorSpaceName retain];
    return copy;
}

- (BOOL)draw {
    return NO;
}

- (BOOL)drawAtPoint:(NSPoint)point {
    CGContextRef port = currentPort();
    if (!port) return NO;
    SavedState saved(port);
    CGContextTranslateCTM(port, point.x, point.y);
    return [self draw];
}

- (BOOL)drawInRect:(NSRect)rect {
    CGContextRef port = currentPort();
    if (!port || !(_size.width > 0) || !(_size.height > 0)) return NO;
    SavedState saved(port);
    CGContextTranslateCTM(port, rect.origin.x, rect.origin.y);
    CGContextScaleCTM(port, rect.size.width / _size.width, rect.size.height / _size.height);
    return [self draw];
}

- (BOOL)drawInRect:(NSRect)dstRect
          fromRect:(NSRect)srcRect
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)delta
    respectFlipped:(BOOL)respectContextIsFlipped
             hints:(NSDictionary*)hints {
    CGRect unit = CGRectMake(0, 0, 1, 1);
    if (!NSEqualRects(srcRect, NSZeroRect)) {
        if (!(_size.width > 0) || !(_size.height > 0)) return NO;
        unit = CGRectMake(srcRect.origin.x / _size.width, srcRect.origin.y / _size.height,
                          srcRect.size.width / _size.width, srcRect.size.height / _size.height);
    }
    return [self drawPart:unit
                   inRect:dstRect
                operation:operation
                 fraction:delta
           respectFlipped:respectContextIsFlipped
                    hints:hints];
}

- (void)setSize:(NSSize)size {
    _size = size;
}
- (NSSize)size {
    return _size;
}
- (void)setAlpha:(BOOL)flag {
    _alpha = flag ? YES : NO;
}
- (BOOL)hasAlpha {
    return _alpha;
}
- (void)setOpaque:(BOOL)flag {
    _opaque = flag ? YES : NO;
}
- (BOOL)isOpaque {
    return _opaque;
}

- (void)setColorSpaceName:(NSString*)name {
    NSString* copy = [name copy];
    [_colorSpaceName release];
    _colorSpaceName = copy;
}

- (NSString*)colorSpaceName {
    return _colorSpaceName;
}
- (void)setBitsPerSample:(NSInteger)bits {
    _bitsPerSample = bits;
}
- (NSInteger)bitsPerSample {
    return _bitsPerSample;
}
- (void)setPixelsWide:(NSInteger)pixels {
    _pixelsWide = pixels;
}
- (NSInteger)pixelsWide {
    return _pixelsWide;
}
- (void)setPixelsHigh:(NSInteger)pixels {
    _pixelsHigh = pixels;
}
- (NSInteger)pixelsHigh {
    return _pixelsHigh;
}

- (NSString*)description {
    return [NSString
        stringWithFormat:@"<%@ %p Size=%@ ColorSpace=%@ BPS=%ld Pixels=%ldx%ld "
                         @"Alpha=%@>",
                         NSStringFromClass([self class]), self, NSStringFromSize(_size),
                         _colorSpaceName, static_cast<long>([self bitsPerSample]),
                         static_cast<long>([self pixelsWide]), static_cast<long>([self pixelsHigh]),
                         [self hasAlpha] ? @"YES" : @"NO"];
}

- (CGImageRef)CGImageForProposedRect:(NSRect*)proposedDestRect
                             context:(NSGraphicsContext*)context
                               hints:(NSDictionary*)hints {
    CGSize pixels = CGSizeMake(_pixelsWide > 0 ? _pixelsWide : _size.width,
                               _pixelsHigh > 0 ? _pixelsHigh : _size.height);
    if (proposedDestRect) pixels = deviceSize(context, toCG(*proposedDestRect).size);
    return OwnedRef<CGImageRef>::adopt([self newTransientImageOfPixels:pixels]).autoreleased();
}

@end

@implementation NSImageRep (Private)

- (CGImageRef)newTransientImageOfPixels:(CGSize)pixels {
    if (!(_size.width > 0) || !(_size.height > 0)) return nullptr;
    const auto canvas = makeCanvas(pixels.width, pixels.height);
    NSGraphicsContext* target =
        canvas.get() ? [NSGraphicsContext contextWithBitmap:canvas size:_size flipped:NO] : nil;
    if (!target) return nullptr;
    [NSGraphicsContext saveGraphicsState];
    [NSGraphicsContext setCurrentContext:target];
    BOOL drawn = NO;
    @try {
        drawn = [self draw];
    } @finally {
        [NSGraphicsContext restoreGraphicsState];
    }
    return drawn ? CGImageRetain([canvas.get() CGImage]) : nullptr;
}

- (BOOL)drawPart:(CGRect)unit
            inRect:(NSRect)rect
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction
    respectFlipped:(BOOL)respectFlipped
             hints:(NSDictionary*)hints {
    NSGraphicsContext* context = [NSGraphicsContext currentContext];
    if (!context) return NO;
    const CGSize whole =
        CGSizeMake(rect.size.width / unit.size.width, rect.size.height / unit.size.height);
    const auto image =
        OwnedRef<CGImageRef>::adopt([self newTransientImageOfPixels:deviceSize(context, whole)]);
    if (!image) return NO;
    drawImage(context, image.get(), unit, toCG(rect),
              {.operation = operation,
               .fraction = fraction,
               .respectFlipped = static_cast<bool>(respectFlipped),
               .hints = hints});
    return YES;
}

@end
