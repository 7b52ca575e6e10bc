#pragma once

/// Which of an image's representations is shown.

#import <AppKit/NSGraphicsContext.h>
#import <AppKit/NSImageRep.h>

#include <CoreGraphics/CoreGraphics.h>

namespace cocoa::appkit {

/// What the image is shown on.
struct Device {
    CGSize pixels; ///< that the whole image covers
    bool isColor = true;
    NSInteger bitsPerSample = 8;
};

/// What a context draws on; an ordinary screen without one.
Device deviceOf(NSGraphicsContext* context, CGSize size);

/// What a description says of a device, where it leaves nothing out: else an ordinary screen of 72
/// dots an inch.
Device deviceOf(NSDictionary* description, NSSize size);

struct ChoiceRules {
    bool prefersColorMatch = true;           ///< the kind of colour goes before the resolution
    bool matchesOnMultipleResolution = true; ///< whole multiples of the resolution match too
    bool usesEPSOnResolutionMismatch = false;
};

/// One whose pixels are as many as the device's, or else the whole multiple that is nearest. Where
/// no bitmap matches so: one without pixels of its own if the rules say so, the smallest bitmap
/// that has enough pixels, or the largest. Among equals that of the device's kind of colour, then
/// that of its depth or else the deepest, then the first. Nil for none.
NSImageRep* chooseRepresentation(NSArray* representations, const Device& device,
                                 const ChoiceRules& rules);

} // namespace cocoa::appkit
