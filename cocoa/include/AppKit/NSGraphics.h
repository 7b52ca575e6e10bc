#pragma once

#include <AppKit/AppKitDefines.h>

/// How source pixels S meet destination pixels D, both premultiplied; Sa and Da are their alphas.
enum {
    NSCompositeClear = 0,           ///< 0
    NSCompositeCopy = 1,            ///< S
    NSCompositeSourceOver = 2,      ///< S + D (1 - Sa)
    NSCompositeSourceIn = 3,        ///< S Da
    NSCompositeSourceOut = 4,       ///< S (1 - Da)
    NSCompositeSourceAtop = 5,      ///< S Da + D (1 - Sa)
    NSCompositeDestinationOver = 6, ///< S (1 - Da) + D
    NSCompositeDestinationIn = 7,   ///< D Sa
    NSCompositeDestinationOut = 8,  ///< D (1 - Sa)
    NSCompositeDestinationAtop = 9, ///< S (1 - Da) + D Sa
    NSCompositeXOR = 10,            ///< S (1 - Da) + D (1 - Sa)
    NSCompositePlusDarker = 11,     ///< max(0, 1 - ((1 - D) + (1 - S)))
    NSCompositeHighlight = 12,      ///< the same as source over
    NSCompositePlusLighter = 13,    ///< min(1, S + D)
    NSCompositeMultiply = 14,
    NSCompositeScreen,
    NSCompositeOverlay,
    NSCompositeDarken,
    NSCompositeLighten,
    NSCompositeColorDodge,
    NSCompositeColorBurn,
    NSCompositeSoftLight,
    NSCompositeHardLight,
    NSCompositeDifference,
    NSCompositeExclusion,
    NSCompositeHue,
    NSCompositeSaturation,
    NSCompositeColor,
    NSCompositeLuminosity = 28,
};
typedef NSUInteger NSCompositingOperation;

/// Names of colour spaces, as representations and colours bear them.
APPKIT_EXTERN NSString* const NSCalibratedWhiteColorSpace;
APPKIT_EXTERN NSString* const NSCalibratedBlackColorSpace;
APPKIT_EXTERN NSString* const NSCalibratedRGBColorSpace;
APPKIT_EXTERN NSString* const NSDeviceWhiteColorSpace;
APPKIT_EXTERN NSString* const NSDeviceBlackColorSpace;
APPKIT_EXTERN NSString* const NSDeviceRGBColorSpace;
APPKIT_EXTERN NSString* const NSDeviceCMYKColorSpace;
APPKIT_EXTERN NSString* const NSCustomColorSpace;

/// The colour components of a named space without alpha; 0 for an unknown name.
APPKIT_EXTERN NSInteger NSNumberOfColorComponents(NSString* colorSpaceName);

/// Keys of the description of a device.
APPKIT_EXTERN NSString* const NSDeviceResolution;     ///< NSValue of an NSSize, dots an inch
APPKIT_EXTERN NSString* const NSDeviceColorSpaceName; ///< NSString, one of the names above
APPKIT_EXTERN NSString* const NSDeviceBitsPerSample;  ///< NSNumber

/// Fill with the current context's fill colour. All do nothing without a current context.
APPKIT_EXTERN void NSRectFill(NSRect rect); ///< replaces what is there (NSCompositeCopy)
APPKIT_EXTERN void NSRectFillList(const NSRect* rects, NSInteger count);
APPKIT_EXTERN void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation operation);
APPKIT_EXTERN void NSRectFillListUsingOperation(const NSRect* rects, NSInteger count,
                                                NSCompositingOperation operation);
APPKIT_EXTERN void NSEraseRect(NSRect rect); ///< fills with white, leaves the fill colour as it was

/// Draw a frame inside `rect`, as NSRectFill fills; 1 unit wide, or `width`.
APPKIT_EXTERN void NSFrameRect(NSRect rect);
APPKIT_EXTERN void NSFrameRectWithWidth(NSRect rect, CGFloat width);
APPKIT_EXTERN void NSFrameRectWithWidthUsingOperation(NSRect rect, CGFloat width,
                                                      NSCompositingOperation operation);

/// Narrow the current context's clip to what it has in common with `rect`, or with all `rects`
/// together.
APPKIT_EXTERN void NSRectClip(NSRect rect);
APPKIT_EXTERN void NSRectClipList(const NSRect* rects, NSInteger count);
