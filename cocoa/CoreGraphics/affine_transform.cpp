#include <CoreGraphics/CGAffineTransform.h>

#include <algorithm>
#include <cmath>

const CGAffineTransform CGAffineTransformIdentity = {1, 0, 0, 1, 0, 0};

CGAffineTransform CGAffineTransformMake(CGFloat a, CGFloat b, CGFloat c, CGFloat d, CGFloat tx,
                                        CGFloat ty) {
    return {a, b, c, d, tx, ty};
}

CGAffineTransform CGAffineTransformMakeTranslation(CGFloat tx, CGFloat ty) {
    return {1, 0, 0, 1, tx, ty};
}

CGAffineTransform CGAffineTransformMakeScale(CGFloat sx, CGFloat sy) {
    return {sx, 0, 0, sy, 0, 0};
}

CGAffineTransform CGAffineTransformMakeRotation(CGFloat angle) {
    const CGFloat sine = std::sin(angle);
    const CGFloat cosine = std::cos(angle);
    return {cosine, sine, -sine, cosine, 0, 0};
}

bool CGAffineTransformIsIdentity(CGAffineTransform transform) {
    return CGAffineTransformEqualToTransform(transform, CGAffineTransformIdentity);
}

CGAffineTransform CGAffineTransformTranslate(CGAffineTransform transform, CGFloat tx, CGFloat ty) {
    return CGAffineTransformConcat(CGAffineTransformMakeTranslation(tx, ty), transform);
}

CGAffineTransform CGAffineTransformScale(CGAffineTransform transform, CGFloat sx, CGFloat sy) {
    return CGAffineTransformConcat(CGAffineTransformMakeScale(sx, sy), transform);
}

CGAffineTransform CGAffineTransformRotate(CGAffineTransform transform, CGFloat angle) {
    return CGAffineTransformConcat(CGAffineTransformMakeRotation(angle), transform);
}

CGAffineTransform CGAffineTransformInvert(CGAffineTransform t) {
    const double determinant = double{t.a} * t.d - double{t.b} * t.c;
    if (determinant == 0 || !std::isfinite(determinant)) return t;
    const auto divided = [determinant](double value) {
        return static_cast<CGFloat>(value / determinant);
    };
    return {divided(t.d),
            divided(-t.b),
            divided(-t.c),
            divided(t.a),
            divided(double{t.c} * t.ty - double{t.d} * t.tx),
            divided(double{t.b} * t.tx - double{t.a} * t.ty)};
}

CGAffineTransform CGAffineTransformConcat(CGAffineTransform first, CGAffineTransform second) {
    return {first.a * second.a + first.b * second.c,
            first.a * second.b + first.b * second.d,
            first.c * second.a + first.d * second.c,
            first.c * second.b + first.d * second.d,
            first.tx * second.a + first.ty * second.c + second.tx,
            first.tx * second.b + first.ty * second.d + second.ty};
}

bool CGAffineTransformEqualToTransform(CGAffineTransform first, CGAffineTransform second) {
    return first.a == second.a && first.b == second.b && first.c == second.c &&
           first.d == second.d && first.tx == second.tx && first.ty == second.ty;
}

CGPoint CGPointApplyAffineTransform(CGPoint point, CGAffineTransform transform) {
    return {transform.a * point.x + transform.c * point.y + transform.tx,
            transform.b * point.x + transform.d * point.y + transform.ty};
}

CGSize CGSizeApplyAffineTransform(CGSize size, CGAffineTransform transform) {
    return {transform.a * size.width + transform.c * size.height,
            transform.b * size.width + transform.d * size.height};
}

CGRect CGRectApplyAffineTransform(CGRect rect, CGAffineTransform transform) {
    if (CGRectIsNull(rect)) return rect;
    const CGFloat left = CGRectGetMinX(rect);
    const CGFloat right = CGRectGetMaxX(rect);
    const CGFloat bottom = CGRectGetMinY(rect);
    const CGFloat top = CGRectGetMaxY(rect);
    const CGPoint corners[] = {{left, bottom}, {right, bottom}, {left, top}, {right, top}};
    CGPoint least = CGPointApplyAffineTransform(corners[0], transform);
    CGPoint most = least;
    for (const CGPoint corner : corners) {
        const CGPoint mapped = CGPointApplyAffineTransform(corner, transform);
        least = {std::min(least.x, mapped.x), std::min(least.y, mapped.y)};
        most = {std::max(most.x, mapped.x), std::max(most.y, mapped.y)};
    }
    return CGRectMake(least.x, least.y, most.x - least.x, most.y - least.y);
}
