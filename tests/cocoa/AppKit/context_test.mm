/// Graphics contexts.

#include "files.h"

namespace appkit_test {
namespace {

using testing::ElementsAre;

class GraphicsContext : public AppKitTest {
protected:
    GraphicsContext()
        : bitmap(makeRGBA(4, 1, std::vector<Pixel>(4, nothing)))
        , context([NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap]) {}

    CGContextRef port() { return static_cast<CGContextRef>([context graphicsPort]); }

    NSBitmapImageRep* bitmap;
    NSGraphicsContext* context;
};

class Transform : public GraphicsContext {};

void fillPixel(CGFloat x) { NSRectFill(NSMakeRect(x, 0, 1, 1)); }

TEST_F(GraphicsContext, DrawsIntoTheBitmap) {
    [NSGraphicsContext setCurrentContext:context];
    [[NSColor redColor] set];
    fillPixel(2);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(nothing, nothing, red, nothing));
    EXPECT_FALSE([context isFlipped]);
    EXPECT_FALSE([context isDrawingToScreen]);
    EXPECT_FALSE([NSGraphicsContext currentContextDrawingToScreen]);
}

TEST_F(GraphicsContext, IsNotMadeForLayoutsThatCannotBeDrawnInto) {
    const auto make = [](const BitmapRecipe& recipe) {
        return [NSGraphicsContext graphicsContextWithBitmapImageRep:makeBitmap(recipe)];
    };
    EXPECT_EQ(nil, make({}));
    EXPECT_EQ(nil, make({.bits = 16}));
    EXPECT_EQ(nil, make({.samples = 4, .alpha = true, .planar = true}));
    EXPECT_EQ(nil,
              make({.samples = 4, .alpha = true, .format = NSAlphaNonpremultipliedBitmapFormat}));
    EXPECT_EQ(nil, make({.samples = 4, .space = NSDeviceCMYKColorSpace}));
    EXPECT_NE(nil, make({.pixelBits = 32}));
    EXPECT_NE(nil, make({.samples = 1, .space = NSDeviceWhiteColorSpace}));
    EXPECT_EQ(nil, [NSGraphicsContext graphicsContextWithBitmapImageRep:nil]);
    EXPECT_EQ(nil, [NSGraphicsContext graphicsContextWithGraphicsPort:nullptr flipped:NO]);
}

TEST_F(GraphicsContext, KeepsItsPortAndOrientation) {
    NSGraphicsContext* flipped = [NSGraphicsContext graphicsContextWithGraphicsPort:port()
                                                                            flipped:YES];
    EXPECT_EQ(port(), [flipped graphicsPort]);
    EXPECT_TRUE([flipped isFlipped]);
}

TEST_F(GraphicsContext, BringsItsStateBack) {
    [NSGraphicsContext setCurrentContext:context];
    [[NSColor redColor] set];
    [context setImageInterpolation:NSImageInterpolationNone];
    [context saveGraphicsState];
    [[NSColor greenColor] set];
    [context setImageInterpolation:NSImageInterpolationHigh];
    [context setCompositingOperation:NSCompositeCopy];
    [context setShouldAntialias:NO];
    CGContextTranslateCTM(port(), 1, 0);
    EXPECT_EQ(kCGInterpolationHigh, CGContextGetInterpolationQuality(port()));
    [context restoreGraphicsState];
    EXPECT_EQ(NSUInteger{NSImageInterpolationNone}, [context imageInterpolation]);
    EXPECT_EQ(NSUInteger{NSCompositeSourceOver}, [context compositingOperation]);
    EXPECT_TRUE([context shouldAntialias]);
    EXPECT_EQ(kCGInterpolationNone, CGContextGetInterpolationQuality(port()));
    fillPixel(0);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, nothing, nothing, nothing));
}

TEST_F(GraphicsContext, IgnoresARestoreWithoutASave) {
    [context restoreGraphicsState];
    [NSGraphicsContext restoreGraphicsState];
    EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
}

TEST_F(GraphicsContext, IsRememberedByTheClassLevelSave) {
    [NSGraphicsContext setCurrentContext:context];
    [context setImageInterpolation:NSImageInterpolationLow];
    [NSGraphicsContext saveGraphicsState];
    [context setImageInterpolation:NSImageInterpolationHigh];
    [NSGraphicsContext setCurrentContext:nil];
    [NSGraphicsContext restoreGraphicsState];
    EXPECT_EQ(context, [NSGraphicsContext currentContext]);
    EXPECT_EQ(NSUInteger{NSImageInterpolationLow}, [context imageInterpolation]);
}

TEST_F(GraphicsContext, CanBeNoneWhenTheClassLevelSaveIsMade) {
    [NSGraphicsContext saveGraphicsState];
    [NSGraphicsContext setCurrentContext:context];
    [NSGraphicsContext restoreGraphicsState];
    EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
}

TEST_F(GraphicsContext, IsRetainedWhileItIsCurrent) {
    NSGraphicsContext* own = [[NSGraphicsContext graphicsContextWithGraphicsPort:port()
                                                                         flipped:NO] retain];
    const NSUInteger before = [own retainCount];
    [NSGraphicsContext setCurrentContext:own];
    EXPECT_EQ(before + 1, [own retainCount]);
    [NSGraphicsContext setCurrentContext:nil];
    EXPECT_EQ(before, [own retainCount]);
    [own release];
}

TEST_F(Transform, MovesDrawingAfterwards) {
    [NSGraphicsContext setCurrentContext:context];
    [[NSColor redColor] set];
    NSAffineTransform* move = [NSAffineTransform transform];
    [move translateXBy:1 yBy:0];
    [move concat];
    fillPixel(0);
    [move concat];
    fillPixel(1);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(nothing, red, nothing, red));
}

TEST_F(Transform, WhenSetTakesThePlaceOfOthers) {
    CGContextTranslateCTM(port(), 1, 0);
    NSGraphicsContext* moved = [NSGraphicsContext graphicsContextWithGraphicsPort:port()
                                                                          flipped:NO];
    [NSGraphicsContext setCurrentContext:moved];
    [[NSColor redColor] set];
    CGContextScaleCTM(port(), 3, 3);
    NSAffineTransform* move = [NSAffineTransform transform];
    [move translateXBy:2 yBy:0];
    [move set];
    fillPixel(0);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(nothing, nothing, nothing, red));
}

TEST_F(Transform, NeedsNoContext) {
    EXPECT_EQ(nil, raisedBy([] {
                  [[NSAffineTransform transform] set];
                  [[NSAffineTransform transform] concat];
              }));
}

} // namespace
} // namespace appkit_test
