#pragma once

/// Affine maps in double precision, whatever CGFloat is.

#include <CoreGraphics/CGAffineTransform.h>

namespace cocoa::cg {

struct Point {
    double x = 0;
    double y = 0;
};

/// x' = a x + c y + tx, y' = b x + d y + ty.
struct Matrix {
    double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;

    static Matrix from(const CGAffineTransform& t) { return {t.a, t.b, t.c, t.d, t.tx, t.ty}; }
    CGAffineTransform transform() const {
        return {static_cast<CGFloat>(a), static_cast<CGFloat>(b),  static_cast<CGFloat>(c),
                static_cast<CGFloat>(d), static_cast<CGFloat>(tx), static_cast<CGFloat>(ty)};
    }

    Point apply(Point p) const { return {a * p.x + c * p.y + tx, b * p.x + d * p.y + ty}; }
    double determinant() const { return a * d - b * c; }
    Matrix inverse() const {
        const double k = 1 / determinant();
        return {d * k, -b * k, -c * k, a * k, (c * ty - d * tx) * k, (b * tx - a * ty) * k};
    }
};

/// First `first`, then `second`.
inline Matrix concat(const Matrix& first, const Matrix& second) {
    const Point origin = second.apply({first.tx, first.ty});
    return {first.a * second.a + first.b * second.c,
            first.a * second.b + first.b * second.d,
            first.c * second.a + first.d * second.c,
            first.c * second.b + first.d * second.d,
            origin.x,
            origin.y};
}

} // namespace cocoa::cg
