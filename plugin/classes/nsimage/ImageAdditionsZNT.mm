#include "plugin/classes/nsimage/ImageAdditionsZNT.h"

#include <algorithm>

namespace {

/// The largest or smallest answer of the representations, which `better` picks, starting at 0.
template <typename Pixels, typename Better>
NSInteger extreme_of(NSArray* representations, Pixels pixels, Better better) {
    NSInteger extreme = 0;
    for (NSUInteger index = 0; index < [representations count]; ++index)
        extreme = better(extreme, pixels([representations objectAtIndex:index]));
    return extreme;
}

NSInteger pixels_wide(NSImageRep* representation) { return [representation pixelsWide]; }
NSInteger pixels_high(NSImageRep* representation) { return [representation pixelsHigh]; }

NSInteger larger(NSInteger first, NSInteger second) { return std::max(first, second); }

/// A smallest value of 0 is none yet.
NSInteger smaller(NSInteger smallest, NSInteger value) {
    return smallest != 0 && value > smallest ? smallest : value;
}

NSBitmapImageRep* first_bitmap(NSImage* image) {
    NSEnumerator* const representations = [[image representations] objectEnumerator];
    while (id representation = [representations nextObject])
        if ([representation isKindOfClass:[NSBitmapImageRep class]]) return representation;
    return nil;
}

/// A bitmap of the image through its TIFF form, which keeps the transparency.
NSBitmapImageRep* bitmap_through_TIFF(NSImage* image) {
    NSData* const data = [image TIFFRepresentation];
    return data ? [NSBitmapImageRep imageRepWithData:data] : nil;
}

/// In single precision on every system, so that every system gives the same size.
NSSize proportional_size(NSSize sourceSize, NSSize targetSize) {
    const auto sourceWidth = static_cast<float>(sourceSize.width);
    const auto sourceHeight = static_cast<float>(sourceSize.height);
    auto width = static_cast<float>(targetSize.width);
    auto height = static_cast<float>(targetSize.height);
    if (sourceWidth == sourceHeight) return targetSize;
    if (sourceWidth > sourceHeight)
        height = width / sourceWidth * sourceHeight;
    else
        width = height / sourceHeight * sourceWidth;
    return NSMakeSize(width, height);
}

/// Drawing goes into the image as long as this lives, also when something is thrown.
class Focus {
public:
    explicit Focus(NSImage* image)
        : image_(image) {
        [image_ lockFocus];
    }
    Focus(const Focus&) = delete;
    Focus& operator=(const Focus&) = delete;
    ~Focus() { [image_ unlockFocus]; }

private:
    NSImage* image_;
};

NSRect bounds_of(NSSize size) { return NSMakeRect(0, 0, size.width, size.height); }

} // namespace

@implementation NSImage (ImageAdditionsZNT)

- (NSDictionary*)EXIFData {
    NSArray* const all = [self representations];
    for (NSUInteger index = 0; index < [all count]; ++index) {
        id const representation = [all objectAtIndex:index];
        if (![representation isKindOfClass:[NSBitmapImageRep class]]) continue;
        if (NSDictionary* const data = [representation valueForProperty:NSImageEXIFData])
            return data;
    }
    return nil;
}

- (NSInteger)representationsCount {
    return static_cast<NSInteger>([[self representations] count]);
}

- (NSInteger)MaximumWidth {
    return extreme_of([self representations], pixels_wide, larger);
}

- (NSInteger)MaximumHeight {
    return extreme_of([self representations], pixels_high, larger);
}

- (NSInteger)MinimumWidth {
    return extreme_of([self representations], pixels_wide, smaller);
}

- (NSInteger)MinimumHeight {
    return extreme_of([self representations], pixels_high, smaller);
}

- (NSBitmapImageRep*)opaqueBitmapImageRepZNT {
    const NSSize size = [self size];
    NSImage* const opaque = [[[NSImage alloc] initWithSize:size] autorelease];
    if (!opaque) return nil;
    {
        const Focus focus(opaque);
        [[NSColor whiteColor] set];
        NSRectFill(bounds_of(size));
        [self compositeToPoint:NSZeroPoint operation:NSCompositeSourceOver];
    }
    if (NSBitmapImageRep* const bitmap = first_bitmap(opaque)) return bitmap;
    return [NSBitmapImageRep imageRepWithData:[opaque TIFFRepresentation]];
}

- (NSData*)JPEGRepresentationZNT {
    return [self JPEGRepresentationWithCompressionFactorZNT:0.8f];
}

- (NSData*)JPEGRepresentationWithCompressionFactorZNT:(float)factor {
    NSBitmapImageRep* const bitmap = [self opaqueBitmapImageRepZNT];
    if (!bitmap) return nil;
    NSDictionary* const properties =
        [NSDictionary dictionaryWithObject:[NSNumber numberWithFloat:factor]
                                    forKey:NSImageCompressionFactor];
    return [bitmap representationUsingType:NSJPEGFileType properties:properties];
}

- (NSData*)BMPRepresentationZNT {
    return [[self opaqueBitmapImageRepZNT] representationUsingType:NSBMPFileType properties:nil];
}

- (NSData*)PNGRepresentationZNT {
    return [bitmap_through_TIFF(self) representationUsingType:NSPNGFileType properties:nil];
}

- (NSData*)GIFRepresentationZNT {
    NSBitmapImageRep* const bitmap = bitmap_through_TIFF(self);
    NSDictionary* const properties =
        [NSDictionary dictionaryWithObject:[NSNumber numberWithBool:YES]
                                    forKey:NSImageDitherTransparency];
    const NSSize size = [self size];
    if (!bitmap || !properties || !(size.width > 0) || !(size.height > 0)) return nil;
    return [bitmap representationUsingType:NSGIFFileType properties:properties];
}

- (NSImage*)imageByScalingToSizeZNT:(NSSize)targetSize {
    return [self imageByScalingToSizeZNT:targetSize fraction:1.0f];
}

- (NSImage*)imageByScalingToSizeZNT:(NSSize)targetSize fraction:(float)fraction {
    return [self imageByScalingToSizeZNT:targetSize
                                fraction:fraction
                               flipImage:NO
                          proportionally:YES];
}

- (NSImage*)imageByFadingToFraction:(float)fraction {
    return [self imageByScalingToSizeZNT:[self size]
                                fraction:fraction
                               flipImage:NO
                          proportionally:NO];
}

- (NSImage*)imageByScalingToSizeZNT:(NSSize)targetSize
                           fraction:(float)fraction
                          flipImage:(BOOL)flip
                     proportionally:(BOOL)proportionally {
    const NSSize size = [self size];
    if (NSEqualSizes(size, targetSize) && fraction == 1.0f && !flip)
        return [[self copy] autorelease];

    const NSSize scaledSize = proportionally ? proportional_size(size, targetSize) : targetSize;
    NSImage* const scaled = [[[NSImage alloc] initWithSize:scaledSize] autorelease];
    if (!scaled) return nil;
    if (flip) [scaled setFlipped:YES];
    const Focus focus(scaled);
    [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationHigh];
    [self drawInRect:bounds_of(scaledSize)
            fromRect:bounds_of(size)
           operation:NSCompositeCopy
            fraction:fraction];
    return scaled;
}

@end
