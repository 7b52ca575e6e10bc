/// Drawing into images.

#include "support.h"

#include <thread>

namespace appkit_test {
namespace {

using testing::Each;
using testing::ElementsAre;

class Focus : public AppKitTest {};

NSImage* imageOfSize(CGFloat width, CGFloat height) {
    return [[[NSImage alloc] initWithSize:NSMakeSize(width, height)] autorelease];
}

void fill(NSColor* color, CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    [color set];
    NSRectFill(NSMakeRect(x, y, width, height));
}

TEST_F(Focus, LeavesOneBitmapOfPremultipliedRGBA) {
    NSBitmapImageRep* bitmap = drawing(3, 2, [] {});
    EXPECT_EQ(3, [bitmap pixelsWide]);
    EXPECT_EQ(2, [bitmap pixelsHigh]);
    EXPECT_EQ(8, [bitmap bitsPerSample]);
    EXPECT_EQ(4, [bitmap samplesPerPixel]);
    EXPECT_TRUE([bitmap hasAlpha]);
    EXPECT_EQ(0U, [bitmap bitmapFormat]);
    EXPECT_EQUAL_STRINGS(NSCalibratedRGBColorSpace, [bitmap colorSpaceName]);
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(3, 2), [bitmap size]));
    EXPECT_THAT(pixelsOf(bitmap), Each(nothing));
}

TEST_F(Focus, HasItsOriginAtTheBottomLeft) {
    NSBitmapImageRep* bitmap = drawing(2, 2, [] { fill([NSColor redColor], 0, 0, 1, 1); });
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(nothing, nothing, red, nothing));
}

TEST_F(Focus, OnAFlippedImageHasItsOriginAtTheTopLeft) {
    NSImage* image = imageOfSize(2, 2);
    [image setFlipped:YES];
    [image lockFocus];
    EXPECT_TRUE([[NSGraphicsContext currentContext] isFlipped]);
    fill([NSColor redColor], 0, 0, 1, 1);
    [image unlockFocus];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, nothing, nothing, nothing));
}

TEST_F(Focus, OnAFlippedImageTurnsAPlainDrawingUpsideDown) {
    NSImage* image = imageOfSize(2, 2);
    [image setFlipped:YES];
    [image lockFocus];
    [makeImage(fourColors()) drawInRect:NSMakeRect(0, 0, 2, 2)
                               fromRect:NSMakeRect(0, 0, 2, 2)
                              operation:NSCompositeCopy
                               fraction:1];
    [image unlockFocus];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(blue, white, red, green));
}

TEST_F(Focus, KeepsThePixelsThatAreThere) {
    NSImage* image = makeImage(fourColors());
    [image lockFocus];
    fill([NSColor blackColor], 1, 0, 1, 1);
    [image unlockFocus];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green, blue, black));
}

TEST_F(Focus, KeepsThePixelsUprightOnAFlippedImage) {
    NSImage* image = makeImage(fourColors());
    [image lockFocusFlipped:YES];
    fill([NSColor blackColor], 1, 0, 1, 1);
    [image unlockFocus];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, black, blue, white));
}

TEST_F(Focus, AddsToWhatAnEarlierFocusDrew) {
    NSImage* image = imageOfSize(2, 1);
    [image lockFocus];
    fill([NSColor redColor], 0, 0, 1, 1);
    [image unlockFocus];
    [image lockFocus];
    fill([NSColor greenColor], 1, 0, 1, 1);
    [image unlockFocus];
    EXPECT_THAT(pixelsOf(bitmapOf(image)), ElementsAre(red, green));
}

TEST_F(Focus, DoesNotBakeTheBackgroundColourIn) {
    NSImage* image = makeImage(makeRGBA(1, 1, {nothing}));
    [image setBackgroundColor:[NSColor redColor]];
    [image lockFocus];
    [image unlockFocus];
    EXPECT_EQ(nothing, pixelAt(bitmapOf(image), 0, 0));
}

TEST_F(Focus, GivesFractionsOfPointsAPixel) {
    NSBitmapImageRep* bitmap = drawing(2.5, 1, [] { fill([NSColor redColor], 0, 0, 2.5, 1); });
    EXPECT_EQ(3, [bitmap pixelsWide]);
    EXPECT_THAT(pixelsOf(bitmap), Each(red));
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(2.5, 1), [bitmap size]));
}

TEST_F(Focus, TakesTheNoiseOfFloatsForWholePoints) {
    EXPECT_EQ(50, [drawing(static_cast<CGFloat>(50.00001), 1, [] {}) pixelsWide]);
    EXPECT_EQ(50, [drawing(static_cast<CGFloat>(49.99999), 1, [] {}) pixelsWide]);
}

TEST_F(Focus, GivesBackTheContextThatWasCurrent) {
    EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
    NSImage* outer = imageOfSize(2, 1);
    [outer lockFocus];
    NSGraphicsContext* context = [NSGraphicsContext currentContext];
    drawing(1, 1, [context] { EXPECT_NE(context, [NSGraphicsContext currentContext]); });
    EXPECT_EQ(context, [NSGraphicsContext currentContext]);
    fill([NSColor redColor], 0, 0, 1, 1);
    [outer unlockFocus];
    EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
    EXPECT_THAT(pixelsOf(bitmapOf(outer)), ElementsAre(red, nothing));
}

TEST_F(Focus, CannotBeHadOnAnImageWithoutSize) {
    for (const NSSize& size :
         {NSZeroSize, NSMakeSize(5, 0), NSMakeSize(-3, 4), NSMakeSize(NAN, 4)}) {
        NSImage* image = imageOfSize(size.width, size.height);
        EXPECT_EQUAL_STRINGS(NSImageCacheException, raisedBy([image] { [image lockFocus]; }));
        EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
    }
}

TEST_F(Focus, CannotBeHadOnAnImageThatNoMemoryHolds) {
    NSImage* image = imageOfSize(60000, 60000);
    EXPECT_EQUAL_STRINGS(NSImageCacheException, raisedBy([image] { [image lockFocus]; }));
    NSImage* infinite = imageOfSize(INFINITY, 1);
    EXPECT_EQUAL_STRINGS(NSImageCacheException, raisedBy([infinite] { [infinite lockFocus]; }));
}

TEST_F(Focus, IsNotUnlockedWithoutALock) {
    NSImage* image = imageOfSize(1, 1);
    EXPECT_EQUAL_STRINGS(NSInternalInconsistencyException,
                         raisedBy([image] { [image unlockFocus]; }));
    NSImage* other = imageOfSize(1, 1);
    [image lockFocus];
    EXPECT_EQUAL_STRINGS(NSInternalInconsistencyException,
                         raisedBy([other] { [other unlockFocus]; }));
    [image unlockFocus];
}

TEST_F(Focus, IsTakenFromInnerImagesThatWereNotUnlocked) {
    NSImage* outer = imageOfSize(1, 1);
    NSImage* inner = imageOfSize(1, 1);
    [outer lockFocus];
    fill([NSColor redColor], 0, 0, 1, 1);
    [inner lockFocus];
    [outer unlockFocus];
    EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
    EXPECT_EQ(red, pixelAt(bitmapOf(outer), 0, 0));
    EXPECT_FALSE([inner isValid]);
    EXPECT_EQUAL_STRINGS(NSInternalInconsistencyException,
                         raisedBy([inner] { [inner unlockFocus]; }));
}

TEST_F(Focus, IsEachThreadsOwn) {
    NSImage* image = imageOfSize(1, 1);
    [image lockFocus];
    std::thread([] {
        [NSThread currentThread];
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        EXPECT_EQ(nil, [NSGraphicsContext currentContext]);
        EXPECT_EQ(red, pixelAt(drawing(1, 1, [] { fill([NSColor redColor], 0, 0, 1, 1); }), 0, 0));
        [pool drain];
    }).join();
    EXPECT_NE(nil, [NSGraphicsContext currentContext]);
    [image unlockFocus];
}

TEST_F(Focus, CanBeReadAsABitmap) {
    drawing(4, 3, [] {
        fill([NSColor redColor], 1, 0, 1, 1);
        fill([NSColor greenColor], 2, 0, 1, 1);
        fill([NSColor blueColor], 1, 1, 1, 1);
        NSBitmapImageRep* read =
            [[[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(1, 0, 2, 2)] autorelease];
        EXPECT_THAT(pixelsOf(read), ElementsAre(blue, nothing, red, green));
        EXPECT_TRUE(NSEqualSizes(NSMakeSize(2, 2), [read size]));
    });
}

TEST_F(Focus, IsReadAsItLooksWhenFlipped) {
    NSImage* image = imageOfSize(2, 3);
    [image lockFocusFlipped:YES];
    fill([NSColor redColor], 0, 0, 1, 1);
    NSBitmapImageRep* read =
        [[[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(0, 0, 1, 2)] autorelease];
    [image unlockFocus];
    EXPECT_THAT(pixelsOf(read), ElementsAre(red, nothing));
}

TEST_F(Focus, IsReadNoFurtherThanItReaches) {
    drawing(2, 2, [] {
        NSBitmapImageRep* read = [[[NSBitmapImageRep alloc]
            initWithFocusedViewRect:NSMakeRect(1, 1, 50, 50)] autorelease];
        EXPECT_EQ(1, [read pixelsWide]);
        EXPECT_TRUE(NSEqualSizes(NSMakeSize(1, 1), [read size]));
        EXPECT_EQ(nil, [[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(5, 5, 1, 1)]);
        EXPECT_EQ(nil, [[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(NAN, 0, 1, 1)]);
    });
    EXPECT_EQ(nil, [[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(0, 0, 1, 1)]);
}

TEST_F(Focus, LeavesThePictureWhenTheContextOutlivesIt) {
    CGContextRef port = nullptr;
    {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        NSImage* image = imageOfSize(2, 2);
        [image lockFocus];
        port = CGContextRetain(
            static_cast<CGContextRef>([[NSGraphicsContext currentContext] graphicsPort]));
        [image unlockFocus];
        [pool drain];
    }
    CGContextFillRect(port, CGRectMake(0, 0, 2, 2)); // into memory that it keeps
    EXPECT_NE(nullptr, CGBitmapContextGetData(port));
    CGContextRelease(port);
}

} // namespace
} // namespace appkit_test
