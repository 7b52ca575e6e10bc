#pragma once

/// What drawing functions of AppKit share.

#include "cocoa/AppKit/ownership.h"

#import <AppKit/NSColor.h>
#import <AppKit/NSGraphicsContext.h>

namespace cocoa::appkit {

inline CGRect toCG(NSRect rect) {
    return CGRectMake(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

/// Raises NSInvalidArgumentException for a number that is no operation.
CGBlendMode blendMode(NSCompositingOperation operation);

/// The current context's CGContext, or null.
CGContextRef currentPort();

/// The pixels that a size in a context's coordinates covers; as many as points without a context.
CGSize deviceSize(NSGraphicsContext* context, CGSize size);

/// Restores what was saved, however the scope is left.
class SavedState {
public:
    explicit SavedState(CGContextRef port)
        : port_(port) {
        CGContextSaveGState(port_);
    }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;
    ~SavedState() { CGContextRestoreGState(port_); }

private:
    CGContextRef port_;
};

/// How an image is drawn.
struct DrawOptions {
    NSCompositingOperation operation = NSCompositeSourceOver;
    CGFloat fraction = 1;
    bool respectFlipped = false;
    NSDictionary* hints = nil;
};

/// Draws the part of an image that `unit` names (fractions of its sides, from its bottom left) into
/// `destination` of a context.
void drawImage(NSGraphicsContext* context, CGImageRef image, CGRect unit, CGRect destination,
               const DrawOptions& options);

} // namespace cocoa::appkit

@interface NSGraphicsContext (Private)
/// What maps the coordinates of the context as it was made to pixels.
- (CGAffineTransform)baseTransform;
/// A context over a bitmap of the given size in points, stretched over all its pixels.
+ (NSGraphicsContext*)contextWithBitmap:(NSBitmapImageRep*)bitmap
                                   size:(NSSize)size
                                flipped:(BOOL)flipped;
@end

@interface NSColor (Drawing)
/// Owned by the caller.
- (CGColorRef)newCGColor;
@end
