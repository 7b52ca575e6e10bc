#pragma once

/// Drawings that are kept to be drawn again.

#include <CoreFoundation/CFDictionary.h>
#include <CoreGraphics/CGContext.h>

typedef struct CGLayer* CGLayerRef;

CG_EXTERN CFTypeID CGLayerGetTypeID(void);

/// An empty layer, transparent, in the colour space of the context where that is an RGB space. It
/// has one pixel a unit; of what a fraction of a unit cuts off nothing is drawn. No auxiliary
/// information is known. Null without a context, and for a size that is not above 0 or too large.
CG_EXTERN CGLayerRef CGLayerCreateWithContext(CGContextRef context, CGSize size,
                                              CFDictionaryRef auxiliaryInfo);
CG_EXTERN CGLayerRef CGLayerRetain(CGLayerRef layer);
CG_EXTERN void CGLayerRelease(CGLayerRef layer);

CG_EXTERN CGSize CGLayerGetSize(CGLayerRef layer);
/// What to draw into the layer with.
CG_EXTERN CGContextRef CGLayerGetContext(CGLayerRef layer);

/// The layer scaled to the rectangle.
CG_EXTERN void CGContextDrawLayerInRect(CGContextRef context, CGRect rect, CGLayerRef layer);
/// The layer in its own size, its bottom left corner at the point.
CG_EXTERN void CGContextDrawLayerAtPoint(CGContextRef context, CGPoint point, CGLayerRef layer);
