#include <CoreGraphics/CGGeometry.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
}

const CGPoint CGPointZero = {0, 0};
const CGSize CGSizeZero = {0, 0};
const CGRect CGRectZero = {{0, 0}, {0, 0}};
const CGRect CGRectNull = {{infinity, infinity}, {0, 0}};
const CGRect CGRectInfinite = {{-CGFLOAT_MAX / 2, -CGFLOAT_MAX / 2}, {CGFLOAT_MAX, CGFLOAT_MAX}};

CGRect CGRectStandardize(CGRect rect) {
    if (CGRectIsNull(rect)) return CGRectNull;
    if (rect.size.width < 0) {
        rect.origin.x += rect.size.width;
        rect.size.width = -rect.size.width;
    }
    if (rect.size.height < 0) {
        rect.origin.y += rect.size.height;
        rect.size.height = -rect.size.height;
    }
    return rect;
}

CGFloat CGRectGetMinX(CGRect rect) { return CGRectStandardize(rect).origin.x; }
CGFloat CGRectGetMinY(CGRect rect) { return CGRectStandardize(rect).origin.y; }
CGFloat CGRectGetMidX(CGRect rect) { return rect.origin.x + rect.size.width / 2; }
CGFloat CGRectGetMidY(CGRect rect) { return rect.origin.y + rect.size.height / 2; }
CGFloat CGRectGetMaxX(CGRect rect) { return rect.origin.x + std::max<CGFloat>(rect.size.width, 0); }
CGFloat CGRectGetMaxY(CGRect rect) {
    return rect.origin.y + std::max<CGFloat>(rect.size.height, 0);
}
CGFloat CGRectGetWidth(CGRect rect) { return std::abs(rect.size.width); }
CGFloat CGRectGetHeight(CGRect rect) { return std::abs(rect.size.height); }

bool CGPointEqualToPoint(CGPoint first, CGPoint second) {
    return first.x == second.x && first.y == second.y;
}

bool CGSizeEqualToSize(CGSize first, CGSize second) {
    return first.width == second.width && first.height == second.height;
}

bool CGRectEqualToRect(CGRect first, CGRect second) {
    if (CGRectIsNull(first) || CGRectIsNull(second)) {
        return CGRectIsNull(first) && CGRectIsNull(second);
    }
    first = CGRectStandardize(first);
    second = CGRectStandardize(second);
    return CGPointEqualToPoint(first.origin, second.origin) &&
           CGSizeEqualToSize(first.size, second.size);
}

bool CGRectIsNull(CGRect rect) { return rect.origin.x == infinity || rect.origin.y == infinity; }

bool CGRectIsEmpty(CGRect rect) {
    return CGRectIsNull(rect) || rect.size.width == 0 || rect.size.height == 0;
}

bool CGRectIsInfinite(CGRect rect) {
    return CGPointEqualToPoint(rect.origin, CGRectInfinite.origin) &&
           CGSizeEqualToSize(rect.size, CGRectInfinite.size);
}

CGRect CGRectInset(CGRect rect, CGFloat dx, CGFloat dy) {
    if (CGRectIsNull(rect)) return rect;
    rect = CGRectStandardize(rect);
    rect.origin.x += dx;
    rect.origin.y += dy;
    rect.size.width -= 2 * dx;
    rect.size.height -= 2 * dy;
    return rect.size.width < 0 || rect.size.height < 0 ? CGRectNull : rect;
}

CGRect CGRectIntegral(CGRect rect) {
    if (CGRectIsNull(rect) || CGRectIsInfinite(rect)) return rect;
    const CGFloat left = std::floor(CGRectGetMinX(rect));
    const CGFloat bottom = std::floor(CGRectGetMinY(rect));
    const CGFloat right = std::ceil(CGRectGetMaxX(rect));
    const CGFloat top = std::ceil(CGRectGetMaxY(rect));
    return CGRectMake(left, bottom, right - left, top - bottom);
}

CGRect CGRectUnion(CGRect first, CGRect second) {
    if (CGRectIsNull(first)) return CGRectStandardize(second);
    if (CGRectIsNull(second)) return CGRectStandardize(first);
    const CGFloat left = std::min(CGRectGetMinX(first), CGRectGetMinX(second));
    const CGFloat bottom = std::min(CGRectGetMinY(first), CGRectGetMinY(second));
    const CGFloat right = std::max(CGRectGetMaxX(first), CGRectGetMaxX(second));
    const CGFloat top = std::max(CGRectGetMaxY(first), CGRectGetMaxY(second));
    return CGRectMake(left, bottom, right - left, top - bottom);
}

CGRect CGRectIntersection(CGRect first, CGRect second) {
    if (CGRectIsNull(first) || CGRectIsNull(second)) return CGRectNull;
    const CGFloat left = std::max(CGRectGetMinX(first), CGRectGetMinX(second));
    const CGFloat bottom = std::max(CGRectGetMinY(first), CGRectGetMinY(second));
    const CGFloat right = std::min(CGRectGetMaxX(first), CGRectGetMaxX(second));
    const CGFloat top = std::min(CGRectGetMaxY(first), CGRectGetMaxY(second));
    if (!(right >= left) || !(top >= bottom)) return CGRectNull;
    return CGRectMake(left, bottom, right - left, top - bottom);
}

CGRect CGRectOffset(CGRect rect, CGFloat dx, CGFloat dy) {
    if (CGRectIsNull(rect)) return rect;
    rect = CGRectStandardize(rect);
    rect.origin.x += dx;
    rect.origin.y += dy;
    return rect;
}

void CGRectDivide(CGRect rect, CGRect* slice, CGRect* remainder, CGFloat amount, CGRectEdge edge) {
    CGRect cut = CGRectStandardize(rect);
    CGRect rest = cut;
    if (!CGRectIsNull(cut)) {
        const bool across = edge == CGRectMinXEdge || edge == CGRectMaxXEdge;
        const CGFloat whole = across ? cut.size.width : cut.size.height;
        const CGFloat part = std::clamp<CGFloat>(amount, 0, whole);
        (across ? cut.size.width : cut.size.height) = part;
        (across ? rest.size.width : rest.size.height) = whole - part;
        switch (edge) {
        case CGRectMinXEdge:
            rest.origin.x += part;
            break;
        case CGRectMinYEdge:
            rest.origin.y += part;
            break;
        case CGRectMaxXEdge:
            cut.origin.x += whole - part;
            break;
        case CGRectMaxYEdge:
            cut.origin.y += whole - part;
            break;
        }
    }
    if (slice != nullptr) *slice = cut;
    if (remainder != nullptr) *remainder = rest;
}

bool CGRectContainsPoint(CGRect rect, CGPoint point) {
    if (CGRectIsEmpty(rect)) return false;
    return point.x >= CGRectGetMinX(rect) && point.x < CGRectGetMaxX(rect) &&
           point.y >= CGRectGetMinY(rect) && point.y < CGRectGetMaxY(rect);
}

bool CGRectContainsRect(CGRect outer, CGRect inner) {
    return CGRectEqualToRect(CGRectUnion(outer, inner), outer);
}

bool CGRectIntersectsRect(CGRect first, CGRect second) {
    return !CGRectIsEmpty(CGRectIntersection(first, second));
}
