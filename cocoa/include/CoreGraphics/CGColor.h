#pragma once

/// Colours: components in a colour space, 0 to 1, not multiplied with the alpha that follows them.

#include <CoreGraphics/CGColorSpace.h>

typedef struct CGColor* CGColorRef;

CG_EXTERN CFTypeID CGColorGetTypeID(void);

/// Copies as many components as the space has, and the alpha behind them.
CG_EXTERN CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components);
CG_EXTERN CGColorRef CGColorCreateGenericGray(CGFloat gray, CGFloat alpha);
CG_EXTERN CGColorRef CGColorCreateGenericRGB(CGFloat red, CGFloat green, CGFloat blue,
                                             CGFloat alpha);
CG_EXTERN CGColorRef CGColorCreateGenericCMYK(CGFloat cyan, CGFloat magenta, CGFloat yellow,
                                              CGFloat black, CGFloat alpha);
CG_EXTERN CGColorRef CGColorCreateCopy(CGColorRef color);
CG_EXTERN CGColorRef CGColorCreateCopyWithAlpha(CGColorRef color, CGFloat alpha);

CG_EXTERN CGColorRef CGColorRetain(CGColorRef color);
CG_EXTERN void CGColorRelease(CGColorRef color);

CG_EXTERN bool CGColorEqualToColor(CGColorRef first, CGColorRef second);
/// Components and alpha.
CG_EXTERN size_t CGColorGetNumberOfComponents(CGColorRef color);
CG_EXTERN const CGFloat* CGColorGetComponents(CGColorRef color);
CG_EXTERN CGFloat CGColorGetAlpha(CGColorRef color);
CG_EXTERN CGColorSpaceRef CGColorGetColorSpace(CGColorRef color);
