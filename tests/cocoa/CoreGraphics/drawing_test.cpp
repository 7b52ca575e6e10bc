#include "cocoa/CoreGraphics/support.h"

#include <cmath>
#include <limits>
#include <numbers>

using namespace cgtest;
using testing::Each;
using testing::ElementsAre;

namespace {

constexpr double quarter = std::numbers::pi / 2;

/// A bitmap of the size of the image that is drawn into it, at its full size in user space.
struct Drawing : testing::Test {
    static constexpr int width = 47;
    static constexpr int height = 33;
    std::vector<Pixel> pixels = translucentGradient(width, height);
    Image image = imageOf(width, height, pixels);
    CGRect own = CGRectMake(0, 0, width, height);

    Pixel original(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
};

TEST_F(Drawing, PutsTheTopRowOfTheImageAtTheTop) {
    Bitmap bitmap(width, height);
    CGContextDrawImage(bitmap, own, image);
    EXPECT_EQ(bitmap.pixels(), pixels);
}

TEST_F(Drawing, AtWholePixelsCopiesThem) {
    Bitmap bitmap(60, 50);
    CGContextTranslateCTM(bitmap, 3, 4);
    CGContextDrawImage(bitmap, CGRectMake(2, 1, width, height), image);
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 60; ++x) {
            // Five pixels from the left and from the bottom.
            const int column = x - 5;
            const int row = y - (50 - 5 - height);
            const bool inside = column >= 0 && column < width && row >= 0 && row < height;
            ASSERT_EQ(bitmap.at(x, y), inside ? original(column, row) : clear) << x << ' ' << y;
        }
    }
}

TEST_F(Drawing, BeyondTheBitmapIsCutOff) {
    Bitmap bitmap(20, 10);
    CGContextDrawImage(bitmap, CGRectMake(-7, -5, width, height), image);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 20; ++x) {
            ASSERT_EQ(bitmap.at(x, y), original(x + 7, y + height - 10 - 5));
        }
    }
}

TEST_F(Drawing, MirrorsWithANegativeScale) {
    Bitmap bitmap(width, height);
    CGContextTranslateCTM(bitmap, width, 0);
    CGContextScaleCTM(bitmap, -1, 1);
    CGContextDrawImage(bitmap, own, image);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            ASSERT_EQ(bitmap.at(x, y), original(width - 1 - x, y));
    }
}

TEST_F(Drawing, TurnsUpsideDownInAFlippedContext) {
    Bitmap bitmap(width, height);
    CGContextTranslateCTM(bitmap, 0, height);
    CGContextScaleCTM(bitmap, 1, -1);
    CGContextDrawImage(bitmap, own, image);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            ASSERT_EQ(bitmap.at(x, y), original(x, height - 1 - y));
    }
}

TEST_F(Drawing, TurnsByAQuarterWithoutLoss) {
    Bitmap left(height, width);
    CGContextTranslateCTM(left, height, 0);
    CGContextRotateCTM(left, static_cast<CGFloat>(quarter));
    CGContextDrawImage(left, own, image);
    Bitmap right(height, width);
    CGContextTranslateCTM(right, 0, width);
    CGContextRotateCTM(right, static_cast<CGFloat>(-quarter));
    CGContextDrawImage(right, own, image);
    for (int y = 0; y < width; ++y) {
        for (int x = 0; x < height; ++x) {
            // The image's right end comes to the top, or to the bottom.
            ASSERT_EQ(left.at(x, y), original(width - 1 - y, x));
            ASSERT_EQ(right.at(x, y), original(y, height - 1 - x));
        }
    }
}

TEST_F(Drawing, TransposesWithAMirroredQuarterTurn) {
    Bitmap bitmap(height, width);
    CGContextConcatCTM(bitmap, CGAffineTransformMake(0, 1, 1, 0, 0, 0));
    CGContextDrawImage(bitmap, own, image);
    for (int y = 0; y < width; ++y) {
        for (int x = 0; x < height; ++x) {
            ASSERT_EQ(bitmap.at(x, y), original(width - 1 - y, height - 1 - x));
        }
    }
}

TEST_F(Drawing, TakesARectangleOfNegativeSizeForTheSameOne) {
    Bitmap bitmap(width, height);
    CGContextDrawImage(bitmap, CGRectMake(width, height, -width, -height), image);
    EXPECT_EQ(bitmap.pixels(), pixels);
}

TEST_F(Drawing, FadesWithTheContextsAlpha) {
    Bitmap bitmap(width, height);
    CGContextSetAlpha(bitmap, 0.5);
    CGContextDrawImage(bitmap, own, image);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Pixel p = original(x, y);
            const auto half = [](int sample) {
                return static_cast<int>(std::lround(sample * 128 / 255.0));
            };
            ASSERT_THAT(bitmap.at(x, y),
                        IsNear(Pixel{half(p.red), half(p.green), half(p.blue), half(p.alpha)}, 0));
        }
    }
}

TEST_F(Drawing, DoesNotReachOutsideTheClip) {
    Bitmap bitmap(width, height);
    CGContextClipToRect(bitmap, CGRectMake(10, 5, 20, 10));
    CGContextSetBlendMode(bitmap, kCGBlendModeCopy);
    CGContextDrawImage(bitmap, own, image);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool inside = x >= 10 && x < 30 && y >= height - 15 && y < height - 5;
            ASSERT_EQ(bitmap.at(x, y), inside ? original(x, y) : clear);
        }
    }
}

TEST_F(Drawing, NeedsAPlaceOnTheNumberLine) {
    Bitmap bitmap(4, 4);
    constexpr auto infinity = std::numeric_limits<CGFloat>::infinity();
    constexpr auto nan = std::numeric_limits<CGFloat>::quiet_NaN();
    for (const CGRect rect :
         {CGRectNull, CGRectMake(nan, 0, 1, 1), CGRectMake(0, 0, infinity, 1),
          CGRectMake(0, 0, 0, 4), CGRectMake(1e9, 1e9, 5, 5), CGRectMake(0, 0, 1, nan)}) {
        CGContextDrawImage(bitmap, rect, image);
        CGContextFillRect(bitmap, rect);
    }
    EXPECT_THAT(bitmap.pixels(), Each(clear));
}

TEST_F(Drawing, EnlargesWithoutEndOnlyWhereItIsSeen) {
    Bitmap bitmap(4, 4);
    CGContextDrawImage(bitmap, CGRectMake(-1e7, -1e7, 2e7, 2e7), imageOf(1, 1, {blue}));
    EXPECT_THAT(bitmap.pixels(), Each(blue));
}

TEST_F(Drawing, OfNothingDoesNothing) {
    Bitmap bitmap(2, 2);
    CGContextDrawImage(bitmap, bitmap.bounds(), nullptr);
    CGContextScaleCTM(bitmap, 0, 0);
    CGContextDrawImage(bitmap, bitmap.bounds(), image);
    CGContextFillRect(bitmap, bitmap.bounds());
    EXPECT_THAT(bitmap.pixels(), Each(clear));
}

TEST(Interpolation, NoneRepeatsPixels) {
    Bitmap bitmap(4, 4);
    CGContextSetInterpolationQuality(bitmap, kCGInterpolationNone);
    EXPECT_EQ(CGContextGetInterpolationQuality(bitmap), kCGInterpolationNone);
    CGContextDrawImage(bitmap, bitmap.bounds(), fourColors());
    EXPECT_THAT(bitmap.pixels(), ElementsAre(red, red, green, green, red, red, green, green, blue,
                                             blue, white, white, blue, blue, white, white));
}

TEST(Interpolation, LowIsLinear) {
    Bitmap bitmap(4, 1);
    CGContextSetInterpolationQuality(bitmap, kCGInterpolationLow);
    CGContextDrawImage(bitmap, bitmap.bounds(), imageOf(2, 1, {black, white}));
    // Centres at 0.25, 0.75, 1.25 and 1.75 of two pixels with centres at 0.5 and 1.5.
    EXPECT_THAT(bitmap.pixels(),
                ElementsAre(black, Pixel{64, 64, 64}, Pixel{191, 191, 191}, white));
}

TEST(Interpolation, OfEveryQualityKeepsAPlainColourToTheEdges) {
    const Pixel plain = {50, 100, 150, 200};
    const Image image = imageOf(5, 5, std::vector<Pixel>(25, plain));
    for (const auto quality : {kCGInterpolationDefault, kCGInterpolationNone, kCGInterpolationLow,
                               kCGInterpolationMedium, kCGInterpolationHigh}) {
        for (const int size : {2, 3, 13}) {
            Bitmap bitmap(size, size);
            CGContextSetInterpolationQuality(bitmap, quality);
            CGContextDrawImage(bitmap, bitmap.bounds(), image);
            EXPECT_THAT(bitmap.pixels(), Each(plain)) << quality << ' ' << size;
        }
    }
}

TEST(Edges, BetweenPixelsCoverThemInPart) {
    Bitmap bitmap(4, 3);
    bitmap.fill(black);
    const Image plain = imageOf(1, 1, {white});
    CGContextDrawImage(bitmap, CGRectMake(0.5, 0.75, 2.25, 1.25), plain);
    const auto gray = [](double part) {
        const int value = static_cast<int>(std::lround(part * 255));
        return Pixel{value, value, value};
    };
    const std::array<double, 4> columns = {0.5, 1, 0.75, 0};
    const std::array<double, 3> rows = {0, 1, 0.25}; // from the top
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x) {
            EXPECT_THAT(bitmap.at(x, y), IsNear(gray(columns[x] * rows[y]), 1));
        }
    }
}

TEST(Edges, OfAFillCoverPixelsInPartToo) {
    Bitmap bitmap(3, 1);
    CGContextSetRGBFillColor(bitmap, 1, 1, 1, 1);
    CGContextFillRect(bitmap, CGRectMake(0.25, 0, 1.5, 1));
    EXPECT_THAT(bitmap.pixels(),
                ElementsAre(Pixel{191, 191, 191, 191}, Pixel{191, 191, 191, 191}, clear));
}

TEST(Edges, WithoutAntialiasingTakeAPixelOrLeaveIt) {
    Bitmap bitmap(4, 1);
    CGContextSetShouldAntialias(bitmap, false);
    CGContextSetRGBFillColor(bitmap, 1, 0, 0, 1);
    CGContextFillRect(bitmap, CGRectMake(0.25, 0, 2.0, 1));
    EXPECT_THAT(bitmap.pixels(), ElementsAre(red, red, clear, clear));
}

TEST(Edges, ThatHardlyMissAPixelBorderLieOnIt) {
    Bitmap bitmap(2, 2);
    CGContextDrawImage(bitmap, CGRectMake(CGFloat(0.0004), CGFloat(-0.0003), CGFloat(2.0002), 2),
                       fourColors());
    EXPECT_THAT(bitmap.pixels(), ElementsAre(red, green, blue, white));
}

/// The share of a pixel that lies in a turned square, by counting points.
double countedCoverage(int x, int y, double center, double halfSide, double angle) {
    constexpr int points = 40;
    int inside = 0;
    for (int j = 0; j < points; ++j) {
        for (int i = 0; i < points; ++i) {
            const double dx = x + (i + 0.5) / points - center;
            const double dy = y + (j + 0.5) / points - center;
            const double u = dx * std::cos(angle) + dy * std::sin(angle);
            const double v = -dx * std::sin(angle) + dy * std::cos(angle);
            if (std::abs(u) < halfSide && std::abs(v) < halfSide) ++inside;
        }
    }
    return static_cast<double>(inside) / (points * points);
}

struct TurnedSquare : testing::Test {
    static constexpr int size = 40;
    static constexpr double angle = 0.4;
    Bitmap bitmap{size, size};

    TurnedSquare() {
        CGContextTranslateCTM(bitmap, size / 2, size / 2);
        CGContextRotateCTM(bitmap, static_cast<CGFloat>(angle));
    }
    static CGRect square() { return CGRectMake(-10, -10, 20, 20); }

    void expectCovered() {
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                // Seen from above, y down, the square is turned the other way.
                const double part = countedCoverage(x, y, size / 2, 10, -angle);
                ASSERT_NEAR(bitmap.at(x, y).alpha, part * 255, 5) << x << ' ' << y;
            }
        }
    }
};

TEST_F(TurnedSquare, IsFilledWithSmoothEdges) {
    CGContextSetRGBFillColor(bitmap, 1, 1, 1, 1);
    CGContextFillRect(bitmap, square());
    expectCovered();
}

TEST_F(TurnedSquare, ClipsWithSmoothEdges) {
    CGContextClipToRect(bitmap, square());
    CGContextFillRect(bitmap, CGRectMake(-50, -50, 100, 100));
    expectCovered();
}

TEST_F(TurnedSquare, OfAnImageHasSmoothEdges) {
    CGContextDrawImage(bitmap, square(), imageOf(1, 1, {black}));
    expectCovered();
}

TEST_F(TurnedSquare, ShowsTheImageTurned) {
    CGContextDrawImage(bitmap, square(), fourColors());
    const auto at = [&](double u, double v) { // in the square, y up
        const double x = u * std::cos(angle) - v * std::sin(angle);
        const double y = u * std::sin(angle) + v * std::cos(angle);
        return bitmap.at(static_cast<int>(size / 2 + x), static_cast<int>(size / 2 - y));
    };
    EXPECT_THAT(at(-8, 8), IsNear(red, 8));
    EXPECT_THAT(at(8, 8), IsNear(green, 8));
    EXPECT_THAT(at(-8, -8), IsNear(blue, 8));
    EXPECT_THAT(at(8, -8), IsNear(white, 8));
}

TEST_F(TurnedSquare, MadeSmallerCountsEveryPixel) {
    // A checkerboard of single pixels, made a fifth of its size.
    std::vector<Pixel> board;
    for (int i = 0; i < 100 * 100; ++i)
        board.push_back((i + i / 100) % 2 == 0 ? white : black);
    CGContextDrawImage(bitmap, square(), imageOf(100, 100, board));
    for (int y = 14; y < 26; ++y) {
        for (int x = 14; x < 26; ++x) {
            ASSERT_THAT(bitmap.at(x, y), IsNear(Pixel{128, 128, 128}, 3));
        }
    }
}

TEST(State, IsSavedAndRestored) {
    Bitmap bitmap(2, 1);
    CGContextSetRGBFillColor(bitmap, 0, 0, 1, 1);
    CGContextSaveGState(bitmap);
    CGContextTranslateCTM(bitmap, 1, 0);
    CGContextClipToRect(bitmap, CGRectMake(0, 0, 0, 0));
    CGContextSetRGBFillColor(bitmap, 1, 0, 0, 1);
    CGContextSetAlpha(bitmap, 0);
    CGContextSetBlendMode(bitmap, kCGBlendModeClear);
    CGContextSetInterpolationQuality(bitmap, kCGInterpolationNone);
    CGContextRestoreGState(bitmap);
    EXPECT_EQ(CGContextGetInterpolationQuality(bitmap), kCGInterpolationDefault);
    CGContextFillRect(bitmap, CGRectMake(0, 0, 1, 1));
    EXPECT_THAT(bitmap.pixels(), ElementsAre(blue, clear));
}

TEST(State, IsNotRestoredMoreOftenThanItWasSaved) {
    Bitmap bitmap(1, 1);
    CGContextTranslateCTM(bitmap, 5, 0);
    CGContextRestoreGState(bitmap);
    EXPECT_EQ(CGContextGetCTM(bitmap).tx, 5);
}

TEST(State, TransformsFromUserSpaceToPixels) {
    Bitmap bitmap(10, 10);
    EXPECT_TRUE(CGAffineTransformIsIdentity(CGContextGetCTM(bitmap)));
    CGContextTranslateCTM(bitmap, 2, 3);
    CGContextScaleCTM(bitmap, 4, 5);
    EXPECT_TRUE(CGAffineTransformEqualToTransform(CGContextGetCTM(bitmap),
                                                  CGAffineTransformMake(4, 0, 0, 5, 2, 3)));
    const CGPoint device = CGContextConvertPointToDeviceSpace(bitmap, CGPointMake(1, 1));
    EXPECT_TRUE(CGPointEqualToPoint(device, CGPointMake(6, 8)));
    EXPECT_TRUE(
        CGPointEqualToPoint(CGContextConvertPointToUserSpace(bitmap, device), CGPointMake(1, 1)));
    EXPECT_TRUE(CGRectEqualToRect(CGContextConvertRectToDeviceSpace(bitmap, CGRectMake(0, 0, 1, 1)),
                                  CGRectMake(2, 3, 4, 5)));
    EXPECT_TRUE(CGSizeEqualToSize(CGContextConvertSizeToUserSpace(bitmap, CGSizeMake(4, 5)),
                                  CGSizeMake(1, 1)));
}

TEST(Clip, OnlyEverGetsSmaller) {
    Bitmap bitmap(6, 1);
    CGContextClipToRect(bitmap, CGRectMake(0, 0, 4, 1));
    CGContextClipToRect(bitmap, CGRectMake(2, 0, 4, 1));
    EXPECT_TRUE(CGRectEqualToRect(CGContextGetClipBoundingBox(bitmap), CGRectMake(2, 0, 2, 1)));
    CGContextSetRGBFillColor(bitmap, 1, 0, 0, 1);
    CGContextFillRect(bitmap, bitmap.bounds());
    EXPECT_THAT(bitmap.pixels(), ElementsAre(clear, clear, red, red, clear, clear));
}

TEST(Clip, ToSeveralRectanglesIsWhatAnyOfThemCovers) {
    Bitmap bitmap(6, 1);
    const CGRect rects[] = {CGRectMake(0, 0, 1, 1), CGRectMake(4, 0, 1, 1)};
    CGContextClipToRects(bitmap, rects, 2);
    CGContextSetRGBFillColor(bitmap, 1, 0, 0, 1);
    CGContextFillRect(bitmap, bitmap.bounds());
    EXPECT_THAT(bitmap.pixels(), ElementsAre(red, clear, clear, clear, red, clear));
}

TEST(Clip, ToNothingLetsNothingBeDrawn) {
    Bitmap bitmap(2, 2);
    CGContextClipToRects(bitmap, nullptr, 0);
    CGContextFillRect(bitmap, bitmap.bounds());
    const CGRect none[] = {CGRectMake(9, 9, 1, 1)};
    CGContextClipToRects(bitmap, none, 1);
    CGContextFillRect(bitmap, bitmap.bounds());
    CGContextDrawImage(bitmap, bitmap.bounds(), fourColors());
    EXPECT_TRUE(CGRectIsNull(CGContextGetClipBoundingBox(bitmap)));
    EXPECT_THAT(bitmap.at(0, 0), black) << "of the fill before the clip was empty";
    Bitmap other(2, 2);
    CGContextClipToRects(other, none, 1);
    CGContextDrawImage(other, other.bounds(), fourColors());
    EXPECT_THAT(other.pixels(), Each(clear));
}

TEST(ClearRect, ClearsWhateverTheModeAndAlpha) {
    Bitmap bitmap(2, 1);
    bitmap.fill(white);
    CGContextSetAlpha(bitmap, 0.1);
    CGContextSetBlendMode(bitmap, kCGBlendModePlusLighter);
    CGContextClearRect(bitmap, CGRectMake(0, 0, 1, 1));
    EXPECT_THAT(bitmap.pixels(), ElementsAre(clear, white));
}

TEST(FillRects, FillsEachOfThem) {
    Bitmap bitmap(3, 1);
    CGContextSetRGBFillColor(bitmap, 0, 1, 0, 1);
    const CGRect rects[] = {CGRectMake(0, 0, 1, 1), CGRectMake(2, 0, 1, 1)};
    CGContextFillRects(bitmap, rects, 2);
    EXPECT_THAT(bitmap.pixels(), ElementsAre(green, clear, green));
}

TEST(LongBitmaps, AreDrawnIntoToTheEnd) {
    // Longer than a compositing library takes at a time.
    constexpr int length = 40000;
    Bitmap wide(length, 1);
    CGContextSetRGBFillColor(wide, 0, 0, 1, 0.5);
    CGContextFillRect(wide, wide.bounds());
    CGContextDrawImage(wide, CGRectMake(length - 2, 0, 2, 1), imageOf(2, 1, {red, green}));
    EXPECT_EQ(wide.at(length - 3, 0), (Pixel{0, 0, 128, 128}));
    EXPECT_EQ(wide.at(length - 2, 0), red);
    EXPECT_EQ(wide.at(length - 1, 0), green);
    Bitmap tall(1, length);
    CGContextDrawImage(tall, tall.bounds(), imageOf(1, 2, {red, blue}));
    EXPECT_EQ(tall.at(0, 0), red);
    EXPECT_EQ(tall.at(0, length - 1), blue);
}

} // namespace
