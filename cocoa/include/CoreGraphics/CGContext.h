#pragma once

/// Drawing. User space has its origin at the bottom left, y runs up.

#include <CoreGraphics/CGAffineTransform.h>
#include <CoreGraphics/CGColor.h>
#include <CoreGraphics/CGImage.h>

typedef struct CGContext* CGContextRef;

typedef enum CGInterpolationQuality : int32_t {
    kCGInterpolationDefault = 0,
    kCGInterpolationNone = 1,   ///< the nearest pixel
    kCGInterpolationLow = 2,    ///< linear
    kCGInterpolationMedium = 4, ///< cubic
    kCGInterpolationHigh = 3    ///< Lanczos over three lobes, and what Default stands for
} CGInterpolationQuality;

/// R = result, S = source, D = destination, all multiplied with their alphas Ra, Sa, Da.
typedef enum CGBlendMode : int32_t {
    kCGBlendModeNormal,
    kCGBlendModeMultiply,
    kCGBlendModeScreen,
    kCGBlendModeOverlay,
    kCGBlendModeDarken,
    kCGBlendModeLighten,
    kCGBlendModeColorDodge,
    kCGBlendModeColorBurn,
    kCGBlendModeSoftLight,
    kCGBlendModeHardLight,
    kCGBlendModeDifference,
    kCGBlendModeExclusion,
    kCGBlendModeHue,
    kCGBlendModeSaturation,
    kCGBlendModeColor,
    kCGBlendModeLuminosity,
    kCGBlendModeClear,           ///< R = 0
    kCGBlendModeCopy,            ///< R = S
    kCGBlendModeSourceIn,        ///< R = S Da
    kCGBlendModeSourceOut,       ///< R = S (1 - Da)
    kCGBlendModeSourceAtop,      ///< R = S Da + D (1 - Sa)
    kCGBlendModeDestinationOver, ///< R = S (1 - Da) + D
    kCGBlendModeDestinationIn,   ///< R = D Sa
    kCGBlendModeDestinationOut,  ///< R = D (1 - Sa)
    kCGBlendModeDestinationAtop, ///< R = S (1 - Da) + D Sa
    kCGBlendModeXOR,             ///< R = S (1 - Da) + D (1 - Sa)
    kCGBlendModePlusDarker,      ///< R = max(0, 1 - ((1 - D) + (1 - S))) of opaque colours
    kCGBlendModePlusLighter      ///< R = min(1, S + D)
} CGBlendMode;

CG_EXTERN CFTypeID CGContextGetTypeID(void);

CG_EXTERN CGContextRef CGContextRetain(CGContextRef context);
CG_EXTERN void CGContextRelease(CGContextRef context);

// The graphics state: transform, clip, fill colour, alpha, blend mode, interpolation quality.
CG_EXTERN void CGContextSaveGState(CGContextRef context);
/// Does nothing when no state was saved.
CG_EXTERN void CGContextRestoreGState(CGContextRef context);

CG_EXTERN void CGContextScaleCTM(CGContextRef context, CGFloat sx, CGFloat sy);
CG_EXTERN void CGContextTranslateCTM(CGContextRef context, CGFloat tx, CGFloat ty);
CG_EXTERN void CGContextRotateCTM(CGContextRef context, CGFloat angle);
CG_EXTERN void CGContextConcatCTM(CGContextRef context, CGAffineTransform transform);
/// From user space to the pixels of the bitmap, counted from its bottom left corner.
CG_EXTERN CGAffineTransform CGContextGetCTM(CGContextRef context);
CG_EXTERN CGPoint CGContextConvertPointToDeviceSpace(CGContextRef context, CGPoint point);
CG_EXTERN CGPoint CGContextConvertPointToUserSpace(CGContextRef context, CGPoint point);
CG_EXTERN CGSize CGContextConvertSizeToDeviceSpace(CGContextRef context, CGSize size);
CG_EXTERN CGSize CGContextConvertSizeToUserSpace(CGContextRef context, CGSize size);
CG_EXTERN CGRect CGContextConvertRectToDeviceSpace(CGContextRef context, CGRect rect);
CG_EXTERN CGRect CGContextConvertRectToUserSpace(CGContextRef context, CGRect rect);

// Clipping only ever makes the clip smaller; a saved state brings the larger one back.
CG_EXTERN void CGContextClipToRect(CGContextRef context, CGRect rect);
CG_EXTERN void CGContextClipToRects(CGContextRef context, const CGRect* rects, size_t count);
/// The upright rectangle of user space around what can be drawn on; null when that is nothing.
CG_EXTERN CGRect CGContextGetClipBoundingBox(CGContextRef context);

CG_EXTERN void CGContextSetFillColorWithColor(CGContextRef context, CGColorRef color);
CG_EXTERN void CGContextSetGrayFillColor(CGContextRef context, CGFloat gray, CGFloat alpha);
CG_EXTERN void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green,
                                        CGFloat blue, CGFloat alpha);
CG_EXTERN void CGContextSetCMYKFillColor(CGContextRef context, CGFloat cyan, CGFloat magenta,
                                         CGFloat yellow, CGFloat black, CGFloat alpha);
/// Multiplied with the alpha of everything drawn; cut to 0 to 1.
CG_EXTERN void CGContextSetAlpha(CGContextRef context, CGFloat alpha);
CG_EXTERN void CGContextSetBlendMode(CGContextRef context, CGBlendMode mode);
CG_EXTERN void CGContextSetInterpolationQuality(CGContextRef context,
                                                CGInterpolationQuality quality);
CG_EXTERN CGInterpolationQuality CGContextGetInterpolationQuality(CGContextRef context);
/// When off, an edge between pixels takes a pixel wholly or not at all. On in a new context.
CG_EXTERN void CGContextSetShouldAntialias(CGContextRef context, bool shouldAntialias);

CG_EXTERN void CGContextFillRect(CGContextRef context, CGRect rect);
CG_EXTERN void CGContextFillRects(CGContextRef context, const CGRect* rects, size_t count);
/// To transparent, or to black in a context without alpha, whatever the blend mode and alpha.
CG_EXTERN void CGContextClearRect(CGContextRef context, CGRect rect);
/// The whole image in the rectangle, its top row at the rectangle's larger y. An image mask paints
/// the fill colour.
CG_EXTERN void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image);

/// Drawing is never delayed, so that neither has anything left to do.
CG_EXTERN void CGContextFlush(CGContextRef context);
CG_EXTERN void CGContextSynchronize(CGContextRef context);
