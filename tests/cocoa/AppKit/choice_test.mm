/// Which of an image's representations is taken.

#include "support.h"

/// As one of a drawing, it has a size but no pixels.
@interface AppKitTestDrawing : NSImageRep
@end

@implementation AppKitTestDrawing
@end

namespace appkit_test {
namespace {

class Choice : public AppKitTest {};

NSImageRep* colorRep(NSInteger side) { return makeBitmap({.width = side, .height = side}); }

NSImageRep* grayRep(NSInteger side, NSInteger bits = 8) {
    return makeBitmap({.width = side,
                       .height = side,
                       .bits = bits,
                       .samples = 1,
                       .space = NSCalibratedWhiteColorSpace});
}

NSImageRep* drawingRep() {
    NSImageRep* rep = [[[AppKitTestDrawing alloc] init] autorelease];
    [rep setSize:NSMakeSize(10, 10)];
    [rep setColorSpaceName:NSDeviceRGBColorSpace];
    return rep;
}

/// 10 by 10 points.
NSImage* imageOf(std::initializer_list<NSImageRep*> reps) {
    NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(10, 10)] autorelease];
    for (NSImageRep* rep : reps)
        [image addRepresentation:rep];
    return image;
}

NSImageRep* bestFor(NSImage* image, CGFloat side) {
    return [image bestRepresentationForRect:NSMakeRect(0, 0, side, side) context:nil hints:nil];
}

NSDictionary* description(CGFloat dotsAnInch, NSString* space = NSDeviceRGBColorSpace,
                          int bits = 8) {
    return [NSDictionary
        dictionaryWithObjectsAndKeys:[NSValue valueWithSize:NSMakeSize(dotsAnInch, dotsAnInch)],
                                     NSDeviceResolution, space, NSDeviceColorSpaceName,
                                     [NSNumber numberWithInt:bits], NSDeviceBitsPerSample, nil];
}

TEST_F(Choice, IsOfTheDevicesResolution) {
    NSImage* image = imageOf({colorRep(40), colorRep(10), colorRep(20)});
    EXPECT_EQ(10, [[image bestRepresentationForDevice:nil] pixelsWide]);
    EXPECT_EQ(10, [[image bestRepresentationForDevice:description(72)] pixelsWide]);
    EXPECT_EQ(20, [[image bestRepresentationForDevice:description(144)] pixelsWide]);
    EXPECT_EQ(40, [[image bestRepresentationForDevice:description(288)] pixelsWide]);
}

TEST_F(Choice, IsOfTheNearestWholeMultipleOfTheResolution) {
    NSImage* image = imageOf({colorRep(90), colorRep(45), colorRep(60), colorRep(20)});
    EXPECT_EQ(60, [bestFor(image, 30) pixelsWide]);
    EXPECT_EQ(20, [bestFor(image, 5) pixelsWide]);
    [image setMatchesOnMultipleResolution:NO];
    EXPECT_EQ(45, [bestFor(image, 30) pixelsWide]);
    EXPECT_EQ(60, [bestFor(image, 60) pixelsWide]);
}

TEST_F(Choice, MustMatchInBothDirections) {
    NSImage* image = imageOf({makeBitmap({.width = 20, .height = 15}), colorRep(30)});
    EXPECT_EQ(30, [bestFor(image, 10) pixelsWide]);
}

TEST_F(Choice, IsTheLargestWhereNoneIsLargeEnough) {
    NSImage* image = imageOf({colorRep(10), colorRep(30), colorRep(20)});
    EXPECT_EQ(30, [bestFor(image, 100) pixelsWide]);
}

TEST_F(Choice, TakesFloatNoiseForNothing) {
    NSImage* image = imageOf({colorRep(50), colorRep(49)});
    EXPECT_EQ(50, [bestFor(image, static_cast<CGFloat>(50.00001)) pixelsWide]);
}

TEST_F(Choice, PrefersColourToResolutionUnlessToldOtherwise) {
    NSImage* image = imageOf({grayRep(10), colorRep(7)});
    EXPECT_EQ(7, [bestFor(image, 10) pixelsWide]);
    [image setPrefersColorMatch:NO];
    EXPECT_EQ(10, [bestFor(image, 10) pixelsWide]);
    [image addRepresentation:colorRep(10)];
    EXPECT_EQ([[image representations] lastObject], bestFor(image, 10));
}

TEST_F(Choice, IsGreyOnAGreyDevice) {
    NSImage* image = imageOf({colorRep(10), grayRep(10)});
    NSImageRep* gray = [[image representations] objectAtIndex:1];
    EXPECT_EQ(gray, [image bestRepresentationForDevice:description(72, NSDeviceWhiteColorSpace)]);
    NSBitmapImageRep* page =
        makeBitmap({.width = 10, .height = 10, .samples = 1, .space = NSCalibratedWhiteColorSpace});
    NSGraphicsContext* context = [NSGraphicsContext graphicsContextWithBitmapImageRep:page];
    ASSERT_NE(nil, context);
    EXPECT_EQ(gray, [image bestRepresentationForRect:NSMakeRect(0, 0, 10, 10)
                                             context:context
                                               hints:nil]);
}

TEST_F(Choice, CountsTheDevicesPixels) {
    NSImage* image = imageOf({colorRep(10), colorRep(20)});
    [image setMatchesOnMultipleResolution:NO];
    NSGraphicsContext* context = [NSGraphicsContext
        graphicsContextWithBitmapImageRep:makeRGBA(30, 30, std::vector<Pixel>(900, nothing))];
    CGContextScaleCTM(static_cast<CGContextRef>([context graphicsPort]), 2, 2);
    EXPECT_EQ(20, [[image bestRepresentationForRect:NSMakeRect(0, 0, 10, 10)
                                            context:context
                                              hints:nil] pixelsWide]);
}

TEST_F(Choice, IsOfTheDevicesDepthElseTheDeepest) {
    NSImage* image = imageOf({grayRep(10, 4), grayRep(10, 8), grayRep(10, 16)});
    const auto bits = [image](int device) {
        return [[image bestRepresentationForDevice:description(72, NSDeviceWhiteColorSpace, device)]
            bitsPerSample];
    };
    EXPECT_EQ(8, bits(8));
    EXPECT_EQ(4, bits(4));
    EXPECT_EQ(16, bits(2));
}

TEST_F(Choice, IsADrawingOnlyWhereNoBitmapMatchesAndTheImageSaysSo) {
    NSImageRep* shapes = drawingRep();
    NSImage* image = imageOf({shapes, colorRep(10)});
    EXPECT_EQ(10, [bestFor(image, 10) pixelsWide]);
    EXPECT_EQ(10, [bestFor(image, 15) pixelsWide]);
    [image setUsesEPSOnResolutionMismatch:YES];
    EXPECT_EQ(10, [bestFor(image, 10) pixelsWide]);
    EXPECT_EQ(shapes, bestFor(image, 15));
    EXPECT_EQ(shapes, bestFor(imageOf({shapes}), 15));
}

TEST_F(Choice, IsTheFirstAmongEquals) {
    NSImage* image = imageOf({colorRep(10), colorRep(10)});
    EXPECT_EQ([[image representations] objectAtIndex:0], bestFor(image, 10));
    EXPECT_EQ(nil, bestFor(imageOf({}), 10));
}

TEST_F(Choice, IsMadeForSizesThatAreNone) {
    NSImage* image = imageOf({colorRep(10), colorRep(20)});
    for (const CGFloat side : {CGFloat(0), CGFloat(-5), CGFloat(NAN), CGFloat(INFINITY)})
        EXPECT_NE(nil, bestFor(image, side)) << side;
    EXPECT_NE(nil, [image bestRepresentationForDevice:[NSDictionary dictionary]]);
    EXPECT_NE(
        nil,
        [image bestRepresentationForDevice:[NSDictionary dictionaryWithObject:@"wrong"
                                                                       forKey:NSDeviceResolution]]);
    EXPECT_NE(nil, [image bestRepresentationForDevice:description(0, NSCustomColorSpace, -1)]);
}

} // namespace
} // namespace appkit_test
