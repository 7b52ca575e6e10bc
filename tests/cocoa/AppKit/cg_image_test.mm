/// Bitmaps as CoreGraphics images and from them.

#include "support.h"

namespace appkit_test {
namespace {

using testing::ElementsAre;

class BitmapAsCGImage : public AppKitTest {};
class BitmapFromCGImage : public AppKitTest {};

/// A CGImage of a copy of bytes; the caller's.
CGImageRef makeCGImage(std::size_t width, std::size_t height, std::size_t bits,
                       std::size_t pixelBits, CGBitmapInfo info, const ByteVector& bytes,
                       CGColorSpaceRef space = [[NSColorSpace deviceRGBColorSpace] CGColorSpace]) {
    CGDataProviderRef provider = CGDataProviderCreateWithCFData((CFDataRef)toData(bytes));
    CGImageRef image = CGImageCreate(width, height, bits, pixelBits, bytes.size() / height, space,
                                     info, provider, nullptr, false, kCGRenderingIntentDefault);
    CGDataProviderRelease(provider);
    EXPECT_NE(nullptr, image);
    [(id)image autorelease];
    return image;
}

NSBitmapImageRep* bitmapFrom(CGImageRef image) {
    return [[[NSBitmapImageRep alloc] initWithCGImage:image] autorelease];
}

TEST_F(BitmapAsCGImage, HasTheSameLayout) {
    CGImageRef image = [makeBitmap({.width = 3, .height = 2, .bits = 16}) CGImage];
    EXPECT_EQ(3U, CGImageGetWidth(image));
    EXPECT_EQ(2U, CGImageGetHeight(image));
    EXPECT_EQ(16U, CGImageGetBitsPerComponent(image));
    EXPECT_EQ(48U, CGImageGetBitsPerPixel(image));
    EXPECT_EQ(kCGImageAlphaNone, CGImageGetAlphaInfo(image));
}

TEST_F(BitmapAsCGImage, SaysWhatItsAlphaIs) {
    const auto info = [](NSBitmapFormat format) {
        return CGImageGetAlphaInfo(
            [makeBitmap({.samples = 4, .alpha = true, .format = format}) CGImage]);
    };
    EXPECT_EQ(kCGImageAlphaPremultipliedLast, info(0));
    EXPECT_EQ(kCGImageAlphaPremultipliedFirst, info(NSAlphaFirstBitmapFormat));
    EXPECT_EQ(kCGImageAlphaLast, info(NSAlphaNonpremultipliedBitmapFormat));
    EXPECT_EQ(kCGImageAlphaFirst,
              info(NSAlphaFirstBitmapFormat | NSAlphaNonpremultipliedBitmapFormat));
}

TEST_F(BitmapAsCGImage, IsTheSameUntilThePixelsChange) {
    NSBitmapImageRep* bitmap = fourColors();
    CGImageRef image = CGImageRetain([bitmap CGImage]);
    EXPECT_EQ(image, [bitmap CGImage]);
    [bitmap bitmapData][0] = 7;
    EXPECT_NE(image, [bitmap CGImage]);
    EXPECT_EQ(red, pixelAt(bitmapFrom(image), 0, 0));
    EXPECT_EQ(7, pixelAt(bitmapFrom([bitmap CGImage]), 0, 0).red);
    CGImageRelease(image);
}

TEST_F(BitmapAsCGImage, OutlivesTheBitmap) {
    CGImageRef image = nullptr;
    {
        NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
        image = CGImageRetain([fourColors() CGImage]);
        [pool drain];
    }
    EXPECT_THAT(pixelsOf(bitmapFrom(image)), ElementsAre(red, green, blue, white));
    CGImageRelease(image);
}

TEST_F(BitmapAsCGImage, ShowsWhatAContextHasDrawnSince) {
    NSBitmapImageRep* bitmap = makeRGBA(1, 1, {red});
    NSGraphicsContext* context = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
    EXPECT_EQ(red, pixelAt(bitmapFrom([bitmap CGImage]), 0, 0));
    [NSGraphicsContext setCurrentContext:context];
    [[NSColor greenColor] set];
    NSRectFill(NSMakeRect(0, 0, 1, 1));
    EXPECT_EQ(green, pixelAt(bitmapFrom([bitmap CGImage]), 0, 0));
}

TEST_F(BitmapAsCGImage, OfPlanesIsMeshed) {
    NSBitmapImageRep* bitmap = makeBitmap({.width = 2, .planar = true}, {1, 2, 3, 4, 5, 6});
    EXPECT_THAT(rowsOf(bitmapFrom([bitmap CGImage])), ElementsAre(1, 3, 5, 2, 4, 6));
}

TEST_F(BitmapFromCGImage, HasItsLayoutAndPixels) {
    CGImageRef image = makeCGImage(2, 1, 8, 32, kCGImageAlphaLast, {1, 2, 3, 4, 5, 6, 7, 8});
    NSBitmapImageRep* bitmap = bitmapFrom(image);
    EXPECT_EQ(NSUInteger{NSAlphaNonpremultipliedBitmapFormat}, [bitmap bitmapFormat]);
    EXPECT_TRUE([bitmap hasAlpha]);
    EXPECT_THAT(rowsOf(bitmap), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_EQUAL_STRINGS(NSCalibratedRGBColorSpace, [bitmap colorSpaceName]);
}

TEST_F(BitmapFromCGImage, GivesTheSameImageBack) {
    CGImageRef image = makeCGImage(1, 1, 8, 24, kCGImageAlphaNone, {1, 2, 3});
    NSBitmapImageRep* bitmap = bitmapFrom(image);
    EXPECT_EQ(image, [bitmap CGImage]);
}

struct Order {
    CGBitmapInfo info;
    ByteVector bytes;
    NSBitmapFormat format;
    ByteVector expected;
};

TEST_F(BitmapFromCGImage, PutsBytesInABitmapsOrder) {
    const Order orders[] = {
        {kCGImageAlphaNoneSkipLast, {1, 2, 3, 9}, 0, {1, 2, 3, 9}},
        {kCGImageAlphaNoneSkipFirst, {9, 1, 2, 3}, 0, {1, 2, 3, 9}},
        {CGBitmapInfo{kCGImageAlphaNoneSkipFirst} | kCGBitmapByteOrder32Little,
         {3, 2, 1, 9},
         0,
         {1, 2, 3, 9}},
        {CGBitmapInfo{kCGImageAlphaPremultipliedFirst} | kCGBitmapByteOrder32Little,
         {3, 2, 1, 9},
         NSAlphaFirstBitmapFormat,
         {9, 1, 2, 3}},
        {CGBitmapInfo{kCGImageAlphaPremultipliedLast} | kCGBitmapByteOrder32Little,
         {9, 3, 2, 1},
         0,
         {1, 2, 3, 9}},
        {CGBitmapInfo{kCGImageAlphaPremultipliedFirst} | kCGBitmapByteOrder32Big,
         {9, 1, 2, 3},
         NSAlphaFirstBitmapFormat,
         {9, 1, 2, 3}},
    };
    for (const Order& order : orders) {
        NSBitmapImageRep* bitmap = bitmapFrom(makeCGImage(1, 1, 8, 32, order.info, order.bytes));
        EXPECT_EQ(order.expected, rowsOf(bitmap)) << order.info;
        EXPECT_EQ(order.format, [bitmap bitmapFormat]) << order.info;
        EXPECT_EQ(32, [bitmap bitsPerPixel]);
    }
}

TEST_F(BitmapFromCGImage, PutsWordsInTheMachinesOrder) {
    NSBitmapImageRep* bitmap = bitmapFrom(
        makeCGImage(1, 1, 16, 48, kCGImageAlphaNone, {0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC}));
    NSUInteger samples[3];
    [bitmap getPixel:samples atX:0 y:0];
    EXPECT_THAT(samples, ElementsAre(0x1234, 0x5678, 0x9ABC));
    EXPECT_EQ(16, [bitmap bitsPerSample]);
}

TEST_F(BitmapFromCGImage, DrawsLayoutsThatNoBitmapHas) {
    // x1 5 5 5: full red.
    NSBitmapImageRep* bitmap = bitmapFrom(
        makeCGImage(1, 1, 5, 16, CGBitmapInfo{kCGImageAlphaNoneSkipFirst} | kCGBitmapByteOrder16Big,
                    {0x7C, 0x00}));
    EXPECT_EQ(4, [bitmap samplesPerPixel]);
    EXPECT_EQ(red, pixelAt(bitmap, 0, 0));
}

TEST_F(BitmapFromCGImage, DrawsMasksIn) {
    CGImageRef image = makeCGImage(2, 1, 8, 24, kCGImageAlphaNone, {255, 0, 0, 255, 0, 0});
    CGImageRef gray = makeCGImage(2, 1, 8, 8, kCGImageAlphaNone, {255, 0},
                                  [[NSColorSpace deviceGrayColorSpace] CGColorSpace]);
    CGImageRef masked = CGImageCreateWithMask(image, gray);
    NSBitmapImageRep* bitmap = bitmapFrom(masked);
    EXPECT_TRUE([bitmap hasAlpha]);
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, nothing));
    CGImageRelease(masked);
}

TEST_F(BitmapFromCGImage, TakesOnlyThePart) {
    CGImageRef image =
        makeCGImage(2, 2, 8, 24, kCGImageAlphaNone, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    CGImageRef part = CGImageCreateWithImageInRect(image, CGRectMake(1, 0, 1, 2));
    EXPECT_THAT(rowsOf(bitmapFrom(part)), ElementsAre(4, 5, 6, 10, 11, 12));
    CGImageRelease(part);
}

TEST_F(BitmapFromCGImage, MakesAnImageOfAnySize) {
    CGImageRef cgImage = makeCGImage(2, 1, 8, 24, kCGImageAlphaNone, {255, 0, 0, 0, 255, 0});
    NSImage* image = [[[NSImage alloc] initWithCGImage:cgImage
                                                  size:NSMakeSize(20, 10)] autorelease];
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(20, 10), [image size]));
    EXPECT_EQ(2, [bitmapOf(image) pixelsWide]);
    NSImage* plain = [[[NSImage alloc] initWithCGImage:cgImage size:NSZeroSize] autorelease];
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(2, 1), [plain size]));
    EXPECT_EQ(cgImage, [image CGImageForProposedRect:nullptr context:nil hints:nil]);
}

} // namespace
} // namespace appkit_test
