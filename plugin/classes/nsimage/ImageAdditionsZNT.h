#pragma once

#include <Cocoa/Cocoa.h>

/// What the plug-in adds to NSImage. Objects are autoreleased; nil stands for every failure.
@interface NSImage (ImageAdditionsZNT)

/// Of the first bitmap that has one.
- (NSDictionary*)EXIFData;

- (NSInteger)representationsCount;

/// The extremes of `pixelsWide` and `pixelsHigh` over the representations, 0 without any. A
/// representation of 0 pixels does not count as the smallest when another one follows it.
- (NSInteger)MaximumWidth;
- (NSInteger)MaximumHeight;
- (NSInteger)MinimumWidth;
- (NSInteger)MinimumHeight;

/// The image over white.
- (NSBitmapImageRep*)opaqueBitmapImageRepZNT;

/// Opaque, over white. The factor is from 0 (smallest) to 1 (best); 0.8 when none is given.
- (NSData*)BMPRepresentationZNT;
- (NSData*)JPEGRepresentationZNT;
- (NSData*)JPEGRepresentationWithCompressionFactorZNT:(float)factor;

/// With the image's transparency, which GIF has by the pixel. An image without size gives no GIF.
- (NSData*)GIFRepresentationZNT;
- (NSData*)PNGRepresentationZNT;

/// A new image; a copy of this one when nothing would change. `fraction` is the opacity, 0 to 1.
/// Proportional scaling keeps the target's width for an image that is wider than high and the
/// target's height for one that is higher than wide, even where the other side then exceeds the
/// target. The forms without these arguments are opaque, not flipped and proportional.
- (NSImage*)imageByScalingToSizeZNT:(NSSize)targetSize;
- (NSImage*)imageByScalingToSizeZNT:(NSSize)targetSize fraction:(float)fraction;
- (NSImage*)imageByScalingToSizeZNT:(NSSize)targetSize
                           fraction:(float)fraction
                          flipImage:(BOOL)flip
                     proportionally:(BOOL)proportionally;

/// The image at its own size.
- (NSImage*)imageByFadingToFraction:(float)fraction;

@end
