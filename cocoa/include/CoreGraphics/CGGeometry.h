#pragma once

/// Points, sizes and rectangles. Plain structs, distinct from Foundation's NSPoint and its like.

#include <CoreGraphics/CGBase.h>

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
typedef struct CGPoint CGPoint;

struct CGSize {
    CGFloat width;
    CGFloat height;
};
typedef struct CGSize CGSize;

struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef struct CGRect CGRect;

typedef enum CGRectEdge : int32_t {
    CGRectMinXEdge,
    CGRectMinYEdge,
    CGRectMaxXEdge,
    CGRectMaxYEdge
} CGRectEdge;

CG_EXTERN const CGPoint CGPointZero;
CG_EXTERN const CGSize CGSizeZero;
CG_EXTERN const CGRect CGRectZero;
/// The rectangle of no place at all: what two rectangles that do not meet have in common. An empty
/// rectangle still has a place.
CG_EXTERN const CGRect CGRectNull;
CG_EXTERN const CGRect CGRectInfinite;

CG_INLINE CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint point = {x, y};
    return point;
}

CG_INLINE CGSize CGSizeMake(CGFloat width, CGFloat height) {
    CGSize size = {width, height};
    return size;
}

CG_INLINE CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    CGRect rect = {{x, y}, {width, height}};
    return rect;
}

// A rectangle may have a negative width or height; every function here takes it for the same
// rectangle with positive ones.
CG_EXTERN CGFloat CGRectGetMinX(CGRect rect);
CG_EXTERN CGFloat CGRectGetMidX(CGRect rect);
CG_EXTERN CGFloat CGRectGetMaxX(CGRect rect);
CG_EXTERN CGFloat CGRectGetMinY(CGRect rect);
CG_EXTERN CGFloat CGRectGetMidY(CGRect rect);
CG_EXTERN CGFloat CGRectGetMaxY(CGRect rect);
CG_EXTERN CGFloat CGRectGetWidth(CGRect rect);
CG_EXTERN CGFloat CGRectGetHeight(CGRect rect);

CG_EXTERN bool CGPointEqualToPoint(CGPoint first, CGPoint second);
CG_EXTERN bool CGSizeEqualToSize(CGSize first, CGSize second);
CG_EXTERN bool CGRectEqualToRect(CGRect first, CGRect second);

/// The same rectangle with positive width and height.
CG_EXTERN CGRect CGRectStandardize(CGRect rect);
/// Null, or without width or height.
CG_EXTERN bool CGRectIsEmpty(CGRect rect);
CG_EXTERN bool CGRectIsNull(CGRect rect);
CG_EXTERN bool CGRectIsInfinite(CGRect rect);
/// Each side moved inwards by dx or dy (outwards when negative); null when nothing is left.
CG_EXTERN CGRect CGRectInset(CGRect rect, CGFloat dx, CGFloat dy);
/// The smallest rectangle of whole numbers that contains it.
CG_EXTERN CGRect CGRectIntegral(CGRect rect);
CG_EXTERN CGRect CGRectUnion(CGRect first, CGRect second);
/// Null when they do not meet; empty when they only touch.
CG_EXTERN CGRect CGRectIntersection(CGRect first, CGRect second);
CG_EXTERN CGRect CGRectOffset(CGRect rect, CGFloat dx, CGFloat dy);
/// Cuts a slice of the given thickness from one edge. `slice` and `remainder` may be null.
CG_EXTERN void CGRectDivide(CGRect rect, CGRect* slice, CGRect* remainder, CGFloat amount,
                            CGRectEdge edge);
/// A point on the minimum edges lies inside, one on the maximum edges outside.
CG_EXTERN bool CGRectContainsPoint(CGRect rect, CGPoint point);
CG_EXTERN bool CGRectContainsRect(CGRect outer, CGRect inner);
CG_EXTERN bool CGRectIntersectsRect(CGRect first, CGRect second);
