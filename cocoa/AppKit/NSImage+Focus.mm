/// Drawing into images.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSGraphicsContext.h>
#import <AppKit/NSImage.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/graphics.h"
#include "cocoa/AppKit/image_state.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

using namespace cocoa::appkit;

namespace {

struct Focus {
    Owned<NSImage*> image;
    Owned<NSBitmapImageRep*> bitmap;
};

/// The images that the thread has locked, the innermost last.
thread_local std::vector<Focus> focused;

/// A pixel a point, and one more for a part of a point that is more than the noise of floats.
/// Nothing for a side that no bitmap has.
std::optional<NSInteger> pixelsFor(CGFloat points) {
    constexpr CGFloat noise = CGFloat(1e-3);
    constexpr CGFloat most = 1 << 30;
    if (!(points > 0 && points <= most)) return std::nullopt;
    return std::max<NSInteger>(1, static_cast<NSInteger>(std::ceil(points - noise)));
}

void raiseCacheException(NSImage* image, NSString* why) {
    [NSException raise:NSImageCacheException
                format:@"Cannot lock focus on image %@, because %@.", image, why];
}

Owned<NSBitmapImageRep*> makeBitmap(NSSize size) {
    const auto width = pixelsFor(size.width);
    const auto height = pixelsFor(size.height);
    if (!width || !height) return {};
    auto bitmap = makeCanvas(static_cast<CGFloat>(*width), static_cast<CGFloat>(*height));
    [bitmap.get() setSize:size];
    return bitmap;
}

} // namespace

@implementation NSImage (NSImageFocus)

- (void)lockFocus {
    [self lockFocusFlipped:[self isFlipped]];
}

- (void)lockFocusFlipped:(BOOL)flipped {
    const NSSize size = [self size];
    if (!(size.width > 0) || !(size.height > 0)) raiseCacheException(self, @"it is size zero");
    Focus focus{self, makeBitmap(size)};
    NSGraphicsContext* upright = [NSGraphicsContext contextWithBitmap:focus.bitmap
                                                                 size:size
                                                              flipped:NO];
    if (!upright) raiseCacheException(self, @"there is not enough memory");

    [NSGraphicsContext saveGraphicsState];
    const NSRect whole = NSMakeRect(0, 0, size.width, size.height);
    // Without the background colour, which every drawing of the image lays behind it anew.
    [NSGraphicsContext setCurrentContext:upright];
    [[self bestRepresentationForRect:whole context:upright
                               hints:nil] drawPart:CGRectMake(0, 0, 1, 1)
                                            inRect:whole
                                         operation:NSCompositeCopy
                                          fraction:1
                                    respectFlipped:NO
                                             hints:nil];
    [NSGraphicsContext setCurrentContext:[NSGraphicsContext contextWithBitmap:focus.bitmap
                                                                         size:size
                                                                      flipped:flipped]];
    focused.push_back(std::move(focus));
}

/// Images that were locked later and never unlocked, since an exception passed, lose the focus too.
- (void)unlockFocus {
    const auto found = std::find_if(focused.rbegin(), focused.rend(), [self](const Focus& focus) {
        return focus.image.get() == self;
    });
    if (found == focused.rend())
        [NSException raise:NSInternalInconsistencyException
                    format:@"unlockFocus was sent to %@, which does not have the focus", self];
    const Focus focus = *found;
    const auto kept = static_cast<std::size_t>(focused.rend() - found) - 1;
    for (; focused.size() > kept; focused.pop_back())
        [NSGraphicsContext restoreGraphicsState];
    NSImageState* state = [self state];
    state->size = [self size];
    state->sizeIsSet = true;
    [state->representations removeAllObjects];
    [state->representations addObject:focus.bitmap];
}

@end
