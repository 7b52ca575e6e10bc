#pragma once

/// What an NSBitmapImageRep holds, and how the parts of AppKit reach it.

#include "cocoa/AppKit/bitmap_frames.h"
#include "cocoa/AppKit/bitmap_layout.h"
#include "cocoa/AppKit/ownership.h"

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSColorSpace.h>

struct NSBitmapState {
    cocoa::appkit::BitmapLayout layout;
    cocoa::appkit::BitmapPixels pixels;
    cocoa::appkit::Owned<NSColorSpace*> colorSpace; ///< where pixels have a profile of their own
    cocoa::appkit::Owned<NSMutableDictionary*> properties;
    cocoa::appkit::OwnedRef<CGImageRef> image; ///< of the pixels, until `pixelsChange`
    cocoa::appkit::BitmapFrames frames;
    std::vector<std::uint8_t>
        exif;             ///< the block that was read with the pixels, as a codec gives it
    int drawingPorts = 0; ///< contexts that may change the pixels at any time
    NSTIFFCompression compression = NSTIFFCompressionNone;
    float compressionFactor = 0;

    void pixelsChange() { image = {}; }
};

namespace cocoa::appkit {

/// The reps of all pages of encoded data; nil when one of them is broken or there is none.
/// `upright`: turned as the orientation that a page states demands.
NSArray* bitmapRepsOfData(Class repClass, NSData* data, bool upright, bool firstPageOnly);

/// A transparent bitmap to draw into, 8-bit premultiplied RGBA, the sides rounded up to whole
/// pixels; nil for sides without pixels and for more pixels than an image may have.
Owned<NSBitmapImageRep*> makeCanvas(CGFloat pixelsWide, CGFloat pixelsHigh);

} // namespace cocoa::appkit

@interface NSBitmapImageRep (Private)

/// Takes over the pixels. The size in points is the size in pixels.
- (id)initWithLayout:(const cocoa::appkit::BitmapLayout&)layout
              pixels:(cocoa::appkit::BitmapPixels&)pixels
      colorSpaceName:(NSString*)name;

/// Null before initialisation is done.
- (NSBitmapState*)state;

@end

@interface NSBitmapImageRep (DrawingPrivate)

/// The space that drawing takes the samples for.
- (cocoa::appkit::OwnedRef<CGColorSpaceRef>)drawingSpace;

/// A context on the pixels themselves, which keeps the receiver alive; owned by the caller. Null
/// for a layout that cannot be drawn into.
- (CGContextRef)newDrawingPort;

@end

@interface NSImageRep (Private)

/// What `draw` would show, for one drawing: it may share the receiver's pixels. Rendered at the
/// given size in pixels unless it has pixels of its own. Owned by the caller.
- (CGImageRef)newTransientImageOfPixels:(CGSize)pixels;

/// As the public method, with the source in fractions of the receiver's sides.
- (BOOL)drawPart:(CGRect)unit
            inRect:(NSRect)rect
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction
    respectFlipped:(BOOL)respectFlipped
             hints:(NSDictionary*)hints;

@end
