/// Where images are drawn, and what of them.

#include "support.h"

namespace appkit_test {
namespace {

using testing::ElementsAre;

class Drawing : public AppKitTest {};
class FilledRectangles : public AppKitTest {};

NSImage* fourColorImage() { return makeImage(fourColors()); }

TEST_F(Drawing, KeepsThePictureUpright) {
    NSBitmapImageRep* drawn = drawing(2, 2, [] {
        [fourColorImage() drawInRect:NSMakeRect(0, 0, 2, 2)
                            fromRect:NSZeroRect
                           operation:NSCompositeCopy
                            fraction:1];
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(red, green, blue, white));
}

TEST_F(Drawing, CountsYFromTheBottom) {
    NSBitmapImageRep* drawn = drawing(2, 3, [] {
        [fourColorImage() drawAtPoint:NSMakePoint(0, 1)
                             fromRect:NSZeroRect
                            operation:NSCompositeSourceOver
                             fraction:1];
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(red, green, blue, white, nothing, nothing));
}

TEST_F(Drawing, TakesThePartOfTheSourceCountedFromItsBottomLeft) {
    NSBitmapImageRep* drawn = drawing(2, 1, [] {
        [fourColorImage() drawInRect:NSMakeRect(0, 0, 1, 1)
                            fromRect:NSMakeRect(0, 0, 1, 1)
                           operation:NSCompositeCopy
                            fraction:1];
        [fourColorImage() drawAtPoint:NSMakePoint(1, 0)
                             fromRect:NSMakeRect(1, 1, 1, 1)
                            operation:NSCompositeCopy
                             fraction:1];
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(blue, green));
}

TEST_F(Drawing, MapsPointsOfTheSourceToItsPixels) {
    NSBitmapImageRep* bitmap = makeRGBA(4, 2, {red, red, green, green, blue, blue, white, white});
    [bitmap setSize:NSMakeSize(2, 1)];
    NSBitmapImageRep* drawn = drawing(2, 2, [bitmap] {
        [makeImage(bitmap) drawInRect:NSMakeRect(0, 0, 2, 2)
                             fromRect:NSMakeRect(1, 0, 1, 1)
                            operation:NSCompositeCopy
                             fraction:1];
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(green, green, white, white));
}

TEST_F(Drawing, MapsTheImagesSizeToTheRepresentations) {
    NSImage* image = fourColorImage();
    [image setSize:NSMakeSize(20, 20)];
    NSBitmapImageRep* drawn = drawing(1, 1, [image] {
        [image drawInRect:NSMakeRect(0, 0, 1, 1)
                 fromRect:NSMakeRect(10, 0, 10, 10)
                operation:NSCompositeCopy
                 fraction:1];
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(white));
}

TEST_F(Drawing, OfAPartOfAPixelShowsThatPart) {
    NSBitmapImageRep* drawn = drawing(4, 4, [] {
        [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationNone];
        [fourColorImage() drawInRect:NSMakeRect(0, 0, 4, 4)
                            fromRect:NSMakeRect(0.5, 0.5, 1, 1)
                           operation:NSCompositeCopy
                            fraction:1];
    });
    EXPECT_EQ(red, pixelAt(drawn, 0, 0));
    EXPECT_EQ(green, pixelAt(drawn, 3, 1));
    EXPECT_EQ(blue, pixelAt(drawn, 1, 3));
    EXPECT_EQ(white, pixelAt(drawn, 2, 2));
}

TEST_F(Drawing, BeyondTheSourceLeavesTheDestination) {
    NSBitmapImageRep* drawn = drawing(4, 2, [] {
        [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationNone];
        [fourColorImage() drawInRect:NSMakeRect(0, 0, 4, 2)
                            fromRect:NSMakeRect(0, 0, 4, 2)
                           operation:NSCompositeSourceOver
                            fraction:1];
    });
    EXPECT_THAT(pixelsOf(drawn),
                ElementsAre(red, green, nothing, nothing, blue, white, nothing, nothing));
}

TEST_F(Drawing, WithoutInterpolationRepeatsPixels) {
    NSBitmapImageRep* drawn = drawing(4, 2, [] {
        [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationNone];
        [fourColorImage() drawInRect:NSMakeRect(0, 0, 4, 2)
                            fromRect:NSZeroRect
                           operation:NSCompositeCopy
                            fraction:1];
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(red, red, green, green, blue, blue, white, white));
}

TEST_F(Drawing, TakesTheInterpolationOfAHintBeforeTheContexts) {
    NSDictionary* hints =
        [NSDictionary dictionaryWithObject:[NSNumber numberWithInt:NSImageInterpolationNone]
                                    forKey:NSImageHintInterpolation];
    NSBitmapImageRep* drawn = drawing(4, 1, [hints] {
        [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationHigh];
        [makeImage(makeRGBA(2, 1, {red, green})) drawInRect:NSMakeRect(0, 0, 4, 1)
                                                   fromRect:NSZeroRect
                                                  operation:NSCompositeCopy
                                                   fraction:1
                                             respectFlipped:NO
                                                      hints:hints];
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(red, red, green, green));
}

TEST_F(Drawing, WithHighInterpolationAveragesWhatItShrinks) {
    std::vector<Pixel> checks;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            checks.push_back((x + y) % 2 ? white : black);
    NSBitmapImageRep* drawn = drawing(2, 2, [&checks] {
        [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationHigh];
        [makeImage(makeRGBA(16, 16, checks)) drawInRect:NSMakeRect(0, 0, 2, 2)
                                               fromRect:NSZeroRect
                                              operation:NSCompositeCopy
                                               fraction:1];
    });
    EXPECT_THAT(pixelsOf(drawn), testing::Each(IsNear(Pixel{128, 128, 128}, 3)));
}

TEST_F(Drawing, OfStraightAlphaMultipliesOnce) {
    NSBitmapImageRep* straight =
        makeBitmap({.samples = 4, .alpha = true, .format = NSAlphaNonpremultipliedBitmapFormat},
                   ByteVector{128, 128, 128, 128});
    NSBitmapImageRep* drawn = drawing(1, 1, [straight] {
        [[NSColor blackColor] set];
        NSRectFill(NSMakeRect(0, 0, 1, 1));
        [makeImage(straight) compositeToPoint:NSZeroPoint operation:NSCompositeSourceOver];
    });
    EXPECT_THAT(pixelAt(drawn, 0, 0), IsNear(Pixel{64, 64, 64}, 1));
}

struct Format {
    const char* name;
    BitmapRecipe recipe;
    ByteVector row;
    Pixel expected;
};

ByteVector wordBytes(std::initializer_list<std::uint16_t> samples) {
    return codecs_test::words(samples);
}

std::vector<Format> formats() {
    const ByteVector planes{255, 0, 0, 255, 51, 0}; // two pixels
    return {
        {"16 bits", {.bits = 16}, wordBytes({0xFFFF, 0x8080, 0}), {255, 128, 0}},
        {"grey", {.samples = 1, .space = NSCalibratedWhiteColorSpace}, {77}, {77, 77, 77}},
        {"grey with alpha",
         {.samples = 2, .alpha = true, .space = NSCalibratedWhiteColorSpace},
         {77, 128},
         {77, 77, 77, 128}},
        {"black", {.samples = 1, .space = NSDeviceBlackColorSpace}, {55}, {200, 200, 200}},
        {"black with alpha",
         {.samples = 2, .alpha = true, .space = NSDeviceBlackColorSpace},
         {55, 128},
         {73, 73, 73, 128}},
        {"ink", {.samples = 4, .space = NSDeviceCMYKColorSpace}, {0, 255, 255, 0}, {255, 0, 0}},
        {"one bit",
         {.bits = 1, .samples = 1, .space = NSCalibratedWhiteColorSpace},
         {0x80},
         {255, 255, 255}},
        {"four bits", {.bits = 4}, {0xF5, 0x00}, {255, 85, 0}},
        {"12 bits", {.bits = 12}, {0xFF, 0xF5, 0x55, 0, 0}, {255, 85, 0}},
        {"alpha first",
         {.samples = 4, .alpha = true, .format = NSAlphaFirstBitmapFormat},
         {128, 100, 50, 0},
         {100, 50, 0, 128}},
        {"unused byte", {.pixelBits = 32}, {10, 20, 30, 99}, {10, 20, 30}},
        {"planes", {.width = 2, .planar = true}, planes, {255, 0, 51}},
    };
}

TEST_F(Drawing, OfEveryFormatShowsItsColours) {
    for (const Format& format : formats()) {
        NSBitmapImageRep* bitmap = makeBitmap(format.recipe, format.row);
        NSBitmapImageRep* drawn = drawing(1, 1, [bitmap] {
            [makeImage(bitmap) compositeToPoint:NSZeroPoint operation:NSCompositeCopy];
        });
        EXPECT_THAT(pixelAt(drawn, 0, 0), IsNear(format.expected, 1)) << format.name;
    }
}

TEST_F(Drawing, InAFlippedContextIsUpsideDownUnlessToldToRespectIt) {
    for (const bool respect : {false, true}) {
        NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(2, 2)] autorelease];
        [image lockFocusFlipped:YES];
        [fourColorImage() drawInRect:NSMakeRect(0, 0, 2, 2)
                            fromRect:NSZeroRect
                           operation:NSCompositeCopy
                            fraction:1
                      respectFlipped:respect
                               hints:nil];
        [image unlockFocus];
        if (respect)
            EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white));
        else
            EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(blue, white, red, green));
    }
}

TEST_F(Drawing, InAFlippedContextTakesTheSamePartOfTheSource) {
    NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(2, 1)] autorelease];
    [image lockFocusFlipped:YES];
    [fourColorImage() drawInRect:NSMakeRect(0, 0, 2, 1)
                        fromRect:NSMakeRect(0, 1, 2, 1)
                       operation:NSCompositeCopy
                        fraction:1];
    [image unlockFocus];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green));
}

TEST_F(Drawing, ByCompositeToPointStandsUprightAboveThePointInAFlippedContext) {
    NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(2, 3)] autorelease];
    [image lockFocusFlipped:YES];
    [fourColorImage() compositeToPoint:NSMakePoint(0, 2) operation:NSCompositeSourceOver];
    [image unlockFocus];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, white, nothing, nothing));
}

TEST_F(Drawing, ByCompositeToPointTakesAPartAndAFraction) {
    NSBitmapImageRep* drawn = drawing(1, 1, [] {
        [fourColorImage() compositeToPoint:NSZeroPoint
                                  fromRect:NSMakeRect(0, 0, 1, 1)
                                 operation:NSCompositeCopy
                                  fraction:0.5];
    });
    EXPECT_THAT(pixelAt(drawn, 0, 0), IsNear(Pixel{0, 0, 128, 128}, 1));
}

TEST_F(Drawing, ByDissolvingGoesOverWhatIsThere) {
    NSBitmapImageRep* drawn = drawing(1, 1, [] {
        [[NSColor whiteColor] set];
        NSRectFill(NSMakeRect(0, 0, 1, 1));
        [makeImage(makeRGBA(1, 1, {black})) dissolveToPoint:NSZeroPoint fraction:0.25];
    });
    EXPECT_THAT(pixelAt(drawn, 0, 0), IsNear(Pixel{191, 191, 191}, 1));
}

TEST_F(Drawing, WithABackgroundColourShowsItThrough) {
    NSImage* image = makeImage(makeRGBA(2, 1, {{0, 0, 128, 128}, nothing}));
    [image setBackgroundColor:[NSColor redColor]];
    NSBitmapImageRep* drawn =
        drawing(2, 1, [image] { [image compositeToPoint:NSZeroPoint operation:NSCompositeCopy]; });
    EXPECT_THAT(pixelAt(drawn, 0, 0), IsNear(Pixel{127, 0, 128}, 1));
    EXPECT_EQ(red, pixelAt(drawn, 1, 0));
}

TEST_F(Drawing, DoesNothingWithoutAContext) {
    EXPECT_EQ(nil, raisedBy([] {
                  [fourColorImage() drawInRect:NSMakeRect(0, 0, 2, 2)];
                  [fourColorImage() compositeToPoint:NSZeroPoint operation:NSCompositeCopy];
                  EXPECT_FALSE([fourColors() drawInRect:NSMakeRect(0, 0, 2, 2)]);
                  EXPECT_FALSE([fourColors() draw]);
              }));
}

TEST_F(Drawing, OfNothingDrawsNothing) {
    const NSRect rectangles[] = {NSZeroRect, NSMakeRect(0, 0, 0, 5), NSMakeRect(NAN, 0, 2, 2),
                                 NSMakeRect(0, 0, INFINITY, 2), NSMakeRect(0, 0, NAN, NAN)};
    NSBitmapImageRep* drawn = drawing(2, 2, [&rectangles] {
        [[[[NSImage alloc] init] autorelease] drawInRect:NSMakeRect(0, 0, 2, 2)];
        [[[[NSImage alloc] initWithSize:NSMakeSize(2, 2)] autorelease]
            drawInRect:NSMakeRect(0, 0, 2, 2)];
        for (const NSRect& rectangle : rectangles)
            [fourColorImage() drawInRect:rectangle];
    });
    EXPECT_EQ(nothing, pixelAt(drawn, 1, 0));
}

TEST_F(Drawing, TakesTheSmallestRepresentationThatIsLargeEnough) {
    NSImage* image = makeImage(makeRGBA(2, 2, {red, red, red, red}));
    [image addRepresentation:makeRGBA(8, 8, std::vector<Pixel>(64, green))];
    [image addRepresentation:makeRGBA(4, 4, std::vector<Pixel>(16, blue))];
    const auto shown = [image](CGFloat side) {
        return pixelAt(
            drawing(side, side, [image, side] { [image drawInRect:NSMakeRect(0, 0, side, side)]; }),
            0, 0);
    };
    EXPECT_EQ(red, shown(2));
    EXPECT_EQ(blue, shown(3));
    EXPECT_EQ(green, shown(5));
    EXPECT_EQ(green, shown(20));
}

TEST_F(Drawing, OfARepresentationFillsTheRectangle) {
    NSBitmapImageRep* drawn = drawing(4, 4, [] {
        [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationNone];
        EXPECT_TRUE([fourColors() drawInRect:NSMakeRect(0, 0, 4, 2)]);
        EXPECT_TRUE([fourColors() drawAtPoint:NSMakePoint(1, 2)]);
    });
    EXPECT_THAT(pixelsOf(drawn),
                ElementsAre(nothing, red, green, nothing, nothing, blue, white, nothing, red, red,
                            green, green, blue, blue, white, white));
}

TEST_F(Drawing, OfARepresentationByPartTakesItsPoints) {
    NSBitmapImageRep* bitmap = fourColors();
    [bitmap setSize:NSMakeSize(20, 20)];
    NSBitmapImageRep* drawn = drawing(1, 1, [bitmap] {
        EXPECT_TRUE([bitmap drawInRect:NSMakeRect(0, 0, 1, 1)
                              fromRect:NSMakeRect(10, 10, 10, 10)
                             operation:NSCompositeCopy
                              fraction:1
                        respectFlipped:NO
                                 hints:nil]);
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(green));
}

TEST_F(Drawing, OfARepresentationByAnImageLaysItsBackgroundFirst) {
    NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(1, 1)] autorelease];
    [image setBackgroundColor:[NSColor greenColor]];
    NSBitmapImageRep* drawn = drawing(1, 1, [image] {
        EXPECT_TRUE([image drawRepresentation:makeRGBA(1, 1, {nothing})
                                       inRect:NSMakeRect(0, 0, 1, 1)]);
        EXPECT_FALSE([image drawRepresentation:nil inRect:NSMakeRect(0, 0, 1, 1)]);
    });
    EXPECT_EQ(green, pixelAt(drawn, 0, 0));
}

TEST_F(Drawing, GoesStraightIntoABitmapsPixels) {
    NSBitmapImageRep* bitmap = makeBitmap(
        {.width = 2, .height = 2, .samples = 4, .alpha = true, .format = NSAlphaFirstBitmapFormat});
    NSGraphicsContext* context = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
    [NSGraphicsContext setCurrentContext:context];
    [makeImage(makeRGBA(1, 1, {{10, 20, 30, 255}})) compositeToPoint:NSMakePoint(1, 0)
                                                           operation:NSCompositeCopy];
    [context flushGraphics];
    EXPECT_THAT(rowsOf(bitmap), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 10, 20, 30));
}

TEST_F(FilledRectangles, ReplaceWhatIsThere) {
    NSBitmapImageRep* drawn = drawing(3, 2, [] {
        [[NSColor redColor] set];
        NSRectFill(NSMakeRect(0, 0, 3, 2));
        [[NSColor clearColor] set];
        NSRectFill(NSMakeRect(0, 0, 1, 1));
        [[NSColor greenColor] set];
        const NSRect two[] = {NSMakeRect(1, 0, 1, 1), NSMakeRect(2, 1, 1, 1)};
        NSRectFillList(two, 2);
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(red, red, green, nothing, green, red));
}

TEST_F(FilledRectangles, AreErasedToWhiteWithoutLosingTheColour) {
    NSBitmapImageRep* drawn = drawing(2, 1, [] {
        [[NSColor redColor] set];
        NSEraseRect(NSMakeRect(0, 0, 1, 1));
        NSRectFill(NSMakeRect(1, 0, 1, 1));
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(white, red));
}

TEST_F(FilledRectangles, AreFramedInside) {
    NSBitmapImageRep* drawn = drawing(4, 4, [] {
        [[NSColor blueColor] set];
        NSFrameRect(NSMakeRect(0, 0, 3, 4));
    });
    EXPECT_THAT(pixelsOf(drawn),
                ElementsAre(blue, blue, blue, nothing, blue, nothing, blue, nothing, blue, nothing,
                            blue, nothing, blue, blue, blue, nothing));
}

TEST_F(FilledRectangles, AreFramedOncePerPixelWhenTheFrameIsWide) {
    NSBitmapImageRep* drawn = drawing(3, 3, [] {
        [[NSColor colorWithDeviceWhite:0 alpha:0.5] set];
        NSFrameRectWithWidthUsingOperation(NSMakeRect(0, 0, 3, 3), 2, NSCompositeSourceOver);
    });
    EXPECT_THAT(pixelsOf(drawn), testing::Each(IsNear(Pixel{0, 0, 0, 128}, 1)));
}

TEST_F(FilledRectangles, AreCutByTheClip) {
    NSBitmapImageRep* drawn = drawing(3, 1, [] {
        [[NSColor redColor] set];
        [NSGraphicsContext saveGraphicsState];
        NSRectClip(NSMakeRect(1, 0, 1, 1));
        NSRectFill(NSMakeRect(0, 0, 3, 1));
        [NSGraphicsContext restoreGraphicsState];
        const NSRect ends[] = {NSMakeRect(0, 0, 1, 1), NSMakeRect(2, 0, 1, 1)};
        NSRectClipList(ends, 2);
        [[NSColor greenColor] set];
        NSRectFill(NSMakeRect(0, 0, 3, 1));
    });
    EXPECT_THAT(pixelsOf(drawn), ElementsAre(green, red, green));
}

TEST_F(FilledRectangles, NeedNoContext) {
    EXPECT_EQ(nil, raisedBy([] {
                  NSRectFill(NSMakeRect(0, 0, 1, 1));
                  NSFrameRect(NSMakeRect(0, 0, 5, 5));
                  NSRectClip(NSMakeRect(0, 0, 1, 1));
                  NSEraseRect(NSZeroRect);
              }));
}

} // namespace
} // namespace appkit_test
