#pragma once

/// Affine maps: x' = a x + c y + tx, y' = b x + d y + ty.

#include <CoreGraphics/CGGeometry.h>

struct CGAffineTransform {
    CGFloat a, b, c, d;
    CGFloat tx, ty;
};
typedef struct CGAffineTransform CGAffineTransform;

CG_EXTERN const CGAffineTransform CGAffineTransformIdentity;

CG_EXTERN CGAffineTransform CGAffineTransformMake(CGFloat a, CGFloat b, CGFloat c, CGFloat d,
                                                  CGFloat tx, CGFloat ty);
CG_EXTERN CGAffineTransform CGAffineTransformMakeTranslation(CGFloat tx, CGFloat ty);
CG_EXTERN CGAffineTransform CGAffineTransformMakeScale(CGFloat sx, CGFloat sy);
/// Angles are radians, counter-clockwise where y runs up.
CG_EXTERN CGAffineTransform CGAffineTransformMakeRotation(CGFloat angle);
CG_EXTERN bool CGAffineTransformIsIdentity(CGAffineTransform transform);

// The new map is applied to a point first, the given one afterwards.
CG_EXTERN CGAffineTransform CGAffineTransformTranslate(CGAffineTransform transform, CGFloat tx,
                                                       CGFloat ty);
CG_EXTERN CGAffineTransform CGAffineTransformScale(CGAffineTransform transform, CGFloat sx,
                                                   CGFloat sy);
CG_EXTERN CGAffineTransform CGAffineTransformRotate(CGAffineTransform transform, CGFloat angle);

/// The inverse, or the map itself when it has none.
CG_EXTERN CGAffineTransform CGAffineTransformInvert(CGAffineTransform transform);
/// First `first`, then `second`.
CG_EXTERN CGAffineTransform CGAffineTransformConcat(CGAffineTransform first,
                                                    CGAffineTransform second);
CG_EXTERN bool CGAffineTransformEqualToTransform(CGAffineTransform first, CGAffineTransform second);

CG_EXTERN CGPoint CGPointApplyAffineTransform(CGPoint point, CGAffineTransform transform);
CG_EXTERN CGSize CGSizeApplyAffineTransform(CGSize size, CGAffineTransform transform);
/// The smallest upright rectangle that contains the four mapped corners.
CG_EXTERN CGRect CGRectApplyAffineTransform(CGRect rect, CGAffineTransform transform);
