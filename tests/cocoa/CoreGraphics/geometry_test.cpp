#include "cocoa/CoreGraphics/support.h"

#include <cmath>
#include <numbers>

namespace {

const CGRect rect = CGRectMake(1, 2, 10, 20);

TEST(Rectangle, WithNegativeSidesIsTheSameOneWithPositiveSides) {
    const CGRect mirrored = CGRectMake(11, 22, -10, -20);
    EXPECT_TRUE(CGRectEqualToRect(mirrored, rect));
    EXPECT_EQ(CGRectStandardize(mirrored).origin.x, 1);
    EXPECT_EQ(CGRectGetMinX(mirrored), 1);
    EXPECT_EQ(CGRectGetMidX(mirrored), 6);
    EXPECT_EQ(CGRectGetMaxX(mirrored), 11);
    EXPECT_EQ(CGRectGetMinY(mirrored), 2);
    EXPECT_EQ(CGRectGetMidY(mirrored), 12);
    EXPECT_EQ(CGRectGetMaxY(mirrored), 22);
    EXPECT_EQ(CGRectGetWidth(mirrored), 10);
    EXPECT_EQ(CGRectGetHeight(mirrored), 20);
}

TEST(Rectangle, MeetsAnotherInWhatBothCover) {
    EXPECT_TRUE(CGRectEqualToRect(CGRectIntersection(rect, CGRectMake(5, 0, 100, 10)),
                                  CGRectMake(5, 2, 6, 8)));
    EXPECT_TRUE(CGRectIntersectsRect(rect, CGRectMake(5, 0, 100, 10)));
}

TEST(Rectangle, ApartFromAnotherMeetsItInNothing) {
    const CGRect apart = CGRectIntersection(rect, CGRectMake(50, 50, 1, 1));
    EXPECT_TRUE(CGRectIsNull(apart));
    EXPECT_TRUE(CGRectIsEmpty(apart));
    EXPECT_FALSE(CGRectIntersectsRect(rect, CGRectMake(50, 50, 1, 1)));
}

TEST(Rectangle, TouchingAnotherMeetsItInAnEmptyOneThatIsNotNull) {
    const CGRect touching = CGRectIntersection(rect, CGRectMake(11, 2, 5, 5));
    EXPECT_FALSE(CGRectIsNull(touching));
    EXPECT_TRUE(CGRectIsEmpty(touching));
    EXPECT_FALSE(CGRectIntersectsRect(rect, CGRectMake(11, 2, 5, 5)));
}

TEST(Rectangle, UnitedWithNothingStaysItself) {
    EXPECT_TRUE(CGRectEqualToRect(CGRectUnion(rect, CGRectNull), rect));
    EXPECT_TRUE(CGRectEqualToRect(CGRectUnion(CGRectNull, rect), rect));
    EXPECT_TRUE(
        CGRectEqualToRect(CGRectUnion(rect, CGRectMake(0, 0, 1, 1)), CGRectMake(0, 0, 11, 22)));
}

TEST(Rectangle, MadeIntegralGrowsToWholeNumbers) {
    EXPECT_TRUE(
        CGRectEqualToRect(CGRectIntegral(CGRectMake(-0.5, 1.25, 2, 0.5)), CGRectMake(-1, 1, 3, 1)));
    EXPECT_TRUE(CGRectIsNull(CGRectIntegral(CGRectNull)));
}

TEST(Rectangle, InsetByMoreThanItHasIsNull) {
    EXPECT_TRUE(CGRectEqualToRect(CGRectInset(rect, 2, 3), CGRectMake(3, 5, 6, 14)));
    EXPECT_TRUE(CGRectEqualToRect(CGRectInset(rect, -1, -1), CGRectMake(0, 1, 12, 22)));
    EXPECT_TRUE(CGRectIsNull(CGRectInset(rect, 6, 0)));
}

TEST(Rectangle, IsDividedAtEveryEdge) {
    CGRect slice;
    CGRect rest;
    CGRectDivide(rect, &slice, &rest, 3, CGRectMinXEdge);
    EXPECT_TRUE(CGRectEqualToRect(slice, CGRectMake(1, 2, 3, 20)));
    EXPECT_TRUE(CGRectEqualToRect(rest, CGRectMake(4, 2, 7, 20)));
    CGRectDivide(rect, &slice, &rest, 3, CGRectMaxYEdge);
    EXPECT_TRUE(CGRectEqualToRect(slice, CGRectMake(1, 19, 10, 3)));
    EXPECT_TRUE(CGRectEqualToRect(rest, CGRectMake(1, 2, 10, 17)));
    CGRectDivide(rect, &slice, nullptr, 99, CGRectMaxXEdge);
    EXPECT_TRUE(CGRectEqualToRect(slice, rect));
}

TEST(Rectangle, ContainsPointsOnItsLowerEdgesOnly) {
    EXPECT_TRUE(CGRectContainsPoint(rect, CGPointMake(1, 2)));
    EXPECT_FALSE(CGRectContainsPoint(rect, CGPointMake(11, 2)));
    EXPECT_FALSE(CGRectContainsPoint(rect, CGPointMake(1, 22)));
    EXPECT_FALSE(CGRectContainsPoint(CGRectNull, CGPointMake(0, 0)));
    EXPECT_TRUE(CGRectContainsRect(rect, rect));
    EXPECT_FALSE(CGRectContainsRect(rect, CGRectMake(0, 2, 5, 5)));
}

TEST(Transform, AppliesTheNewestStepToPointsFirst) {
    CGAffineTransform transform = CGAffineTransformMakeTranslation(10, 20);
    transform = CGAffineTransformScale(transform, 2, 3);
    const CGPoint scaledThenMoved = CGPointApplyAffineTransform(CGPointMake(1, 1), transform);
    EXPECT_TRUE(CGPointEqualToPoint(scaledThenMoved, CGPointMake(12, 23)));
    EXPECT_TRUE(CGSizeEqualToSize(CGSizeApplyAffineTransform(CGSizeMake(1, 1), transform),
                                  CGSizeMake(2, 3)));
}

TEST(Transform, TurnsCounterClockwise) {
    const auto quarter = static_cast<CGFloat>(std::numbers::pi / 2);
    const CGPoint turned =
        CGPointApplyAffineTransform(CGPointMake(1, 0), CGAffineTransformMakeRotation(quarter));
    EXPECT_NEAR(turned.x, 0, 1e-6);
    EXPECT_NEAR(turned.y, 1, 1e-6);
}

TEST(Transform, AndItsInverseCancelOut) {
    const CGAffineTransform transform = {2, 1, -1, 3, 5, 7};
    const CGAffineTransform both =
        CGAffineTransformConcat(transform, CGAffineTransformInvert(transform));
    EXPECT_NEAR(both.a, 1, 1e-6);
    EXPECT_NEAR(both.b, 0, 1e-6);
    EXPECT_NEAR(both.c, 0, 1e-6);
    EXPECT_NEAR(both.d, 1, 1e-6);
    EXPECT_NEAR(both.tx, 0, 1e-5);
    EXPECT_NEAR(both.ty, 0, 1e-5);
}

TEST(Transform, WithoutAnInverseIsItsOwn) {
    const CGAffineTransform flat = {1, 2, 2, 4, 0, 0};
    EXPECT_TRUE(CGAffineTransformEqualToTransform(CGAffineTransformInvert(flat), flat));
}

TEST(Transform, OfARectangleEnclosesItsCorners) {
    const CGAffineTransform sheared = {1, 0, 1, -1, 0, 0};
    EXPECT_TRUE(CGRectEqualToRect(CGRectApplyAffineTransform(CGRectMake(0, 0, 2, 3), sheared),
                                  CGRectMake(0, -3, 5, 3)));
}

} // namespace
