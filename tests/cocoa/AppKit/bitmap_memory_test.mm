/// Bitmaps made from numbers, and the single pixels of them.

#include "support.h"

#include <cstring>

namespace appkit_test {
namespace {

using testing::Each;
using testing::ElementsAre;

class BitmapMemory : public AppKitTest {};
class BitmapPixels : public AppKitTest {};

TEST_F(BitmapMemory, IsZeroedAndAsLargeAsNeeded) {
    NSBitmapImageRep* bitmap = makeBitmap({.width = 3, .height = 2});
    EXPECT_EQ(9, [bitmap bytesPerRow]);
    EXPECT_EQ(18, [bitmap bytesPerPlane]);
    EXPECT_EQ(24, [bitmap bitsPerPixel]);
    EXPECT_EQ(1, [bitmap numberOfPlanes]);
    EXPECT_THAT(rowsOf(bitmap), Each(0));
}

TEST_F(BitmapMemory, AnswersWhatItWasMadeWith) {
    NSBitmapImageRep* bitmap = makeBitmap({.width = 5,
                                           .height = 4,
                                           .bits = 16,
                                           .samples = 4,
                                           .alpha = true,
                                           .space = NSDeviceRGBColorSpace,
                                           .format = NSAlphaFirstBitmapFormat,
                                           .rowBytes = 48,
                                           .pixelBits = 64});
    EXPECT_EQ(5, [bitmap pixelsWide]);
    EXPECT_EQ(4, [bitmap pixelsHigh]);
    EXPECT_EQ(16, [bitmap bitsPerSample]);
    EXPECT_EQ(4, [bitmap samplesPerPixel]);
    EXPECT_TRUE([bitmap hasAlpha]);
    EXPECT_FALSE([bitmap isOpaque]);
    EXPECT_FALSE([bitmap isPlanar]);
    EXPECT_EQUAL_STRINGS(NSDeviceRGBColorSpace, [bitmap colorSpaceName]);
    EXPECT_EQ(NSUInteger{NSAlphaFirstBitmapFormat}, [bitmap bitmapFormat]);
    EXPECT_EQ(48, [bitmap bytesPerRow]);
    EXPECT_EQ(64, [bitmap bitsPerPixel]);
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(5, 4), [bitmap size]));
    EXPECT_EQ([NSColorSpace deviceRGBColorSpace], [bitmap colorSpace]);
}

TEST_F(BitmapMemory, RoundsRowsOfPackedSamplesUpToBytes) {
    const BitmapRecipe oneBit{
        .width = 9, .bits = 1, .samples = 1, .space = NSCalibratedWhiteColorSpace};
    EXPECT_EQ(2, [makeBitmap(oneBit) bytesPerRow]);
    EXPECT_EQ(3, [makeBitmap({.width = 3, .bits = 2}) bytesPerRow]);
}

TEST_F(BitmapMemory, OfPlanesLiesPlaneAfterPlane) {
    NSBitmapImageRep* bitmap = makeBitmap({.width = 3, .height = 2, .planar = true});
    EXPECT_TRUE([bitmap isPlanar]);
    EXPECT_EQ(3, [bitmap numberOfPlanes]);
    EXPECT_EQ(3, [bitmap bytesPerRow]);
    EXPECT_EQ(8, [bitmap bitsPerPixel]);
    unsigned char* planes[5];
    [bitmap getBitmapDataPlanes:planes];
    EXPECT_EQ(planes[0], [bitmap bitmapData]);
    EXPECT_EQ(planes[0] + 6, planes[1]);
    EXPECT_EQ(planes[1] + 6, planes[2]);
    EXPECT_EQ(nullptr, planes[3]);
    EXPECT_EQ(nullptr, planes[4]);
}

TEST_F(BitmapMemory, OfTheCallerIsUsedInPlace) {
    ByteVector pixels(2 * 8);
    unsigned char* planes[5] = {pixels.data()};
    NSBitmapImageRep* bitmap = makeBitmap({.width = 2, .height = 2, .rowBytes = 8}, planes);
    EXPECT_EQ(pixels.data(), [bitmap bitmapData]);
    NSUInteger samples[] = {1, 2, 3};
    [bitmap setPixel:samples atX:1 y:1];
    EXPECT_THAT(ByteVector(pixels.begin() + 8, pixels.end()), ElementsAre(0, 0, 0, 1, 2, 3, 0, 0));
}

TEST_F(BitmapMemory, NeedsEveryPlaneOfTheCaller) {
    ByteVector plane(4);
    unsigned char* planes[5] = {plane.data(), plane.data(), nullptr};
    EXPECT_EQ(nil, makeBitmap({.width = 2, .height = 2, .planar = true}, planes));
    planes[2] = plane.data();
    EXPECT_NE(nil, makeBitmap({.width = 2, .height = 2, .planar = true}, planes));
}

TEST_F(BitmapMemory, RefusesNumbersThatDoNotGoTogether) {
    const BitmapRecipe good{.width = 2, .height = 2};
    ASSERT_NE(nil, makeBitmap(good));
    const auto refuses = [&good](auto change) {
        BitmapRecipe bad = good;
        change(bad);
        return makeBitmap(bad) == nil;
    };
    EXPECT_TRUE(refuses([](auto& r) { r.width = 0; }));
    EXPECT_TRUE(refuses([](auto& r) { r.width = -1; }));
    EXPECT_TRUE(refuses([](auto& r) { r.height = 0; }));
    EXPECT_TRUE(refuses([](auto& r) { r.bits = 0; }));
    EXPECT_TRUE(refuses([](auto& r) { r.bits = 3; }));
    EXPECT_TRUE(refuses([](auto& r) { r.bits = -8; }));
    EXPECT_TRUE(refuses([](auto& r) { r.bits = 32; }));
    EXPECT_TRUE(refuses([](auto& r) { r.samples = 0; }));
    EXPECT_TRUE(refuses([](auto& r) { r.samples = 4; }));
    EXPECT_TRUE(refuses([](auto& r) { r.alpha = true; }));
    EXPECT_TRUE(refuses([](auto& r) { r.space = nil; }));
    EXPECT_TRUE(refuses([](auto& r) { r.space = @"no space"; }));
    EXPECT_TRUE(refuses([](auto& r) { r.space = NSDeviceWhiteColorSpace; }));
    EXPECT_TRUE(refuses([](auto& r) { r.space = NSDeviceCMYKColorSpace; }));
    EXPECT_TRUE(refuses([](auto& r) { r.rowBytes = 5; }));
    EXPECT_TRUE(refuses([](auto& r) { r.rowBytes = -6; }));
    EXPECT_TRUE(refuses([](auto& r) { r.pixelBits = 23; }));
    EXPECT_TRUE(refuses([](auto& r) { r.pixelBits = 25; }));
    EXPECT_TRUE(refuses([](auto& r) { r.pixelBits = -24; }));
    EXPECT_TRUE(refuses([](auto& r) { r.format = 8; }));
    EXPECT_TRUE(refuses([](auto& r) { r.format = NSFloatingPointSamplesBitmapFormat; }));
}

TEST_F(BitmapMemory, RefusesSizesThatNoMemoryHolds) {
    constexpr NSInteger most = NSIntegerMax;
    EXPECT_EQ(nil, makeBitmap({.width = most, .height = 1}));
    EXPECT_EQ(nil, makeBitmap({.width = 1, .height = most}));
    EXPECT_EQ(nil, makeBitmap({.width = 0x7FFFFFFF, .height = 0x7FFFFFFF}));
    EXPECT_EQ(nil, makeBitmap({.width = 1, .height = 2, .rowBytes = most}));
    EXPECT_EQ(nil, makeBitmap({.width = 1, .height = 1, .pixelBits = most}));
}

TEST_F(BitmapMemory, TakesEveryDepth) {
    for (const NSInteger bits : {1, 2, 4, 8, 12, 16})
        EXPECT_EQ(3 * bits, [makeBitmap({.bits = bits}) bitsPerPixel]) << bits;
    EXPECT_EQ(
        96, [makeBitmap({.bits = 32, .format = NSFloatingPointSamplesBitmapFormat}) bitsPerPixel]);
}

TEST_F(BitmapMemory, IsNotMadeByInit) { EXPECT_EQ(nil, [[NSBitmapImageRep alloc] init]); }

TEST_F(BitmapMemory, IsNotSharedWithACopy) {
    NSBitmapImageRep* bitmap = fourColors();
    [bitmap setProperty:@"key" withValue:@"value"];
    [bitmap setSize:NSMakeSize(7, 9)];
    NSBitmapImageRep* copy = [[bitmap copy] autorelease];
    [bitmap bitmapData][0] = 7;
    [bitmap setProperty:@"key" withValue:@"other"];
    EXPECT_THAT(pixelsOf(copy), ElementsAre(red, green, blue, white));
    EXPECT_EQUAL_STRINGS(@"value", [copy valueForProperty:@"key"]);
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(7, 9), [copy size]));
    EXPECT_EQUAL_STRINGS(NSCalibratedRGBColorSpace, [copy colorSpaceName]);
    EXPECT_TRUE([copy hasAlpha]);
}

TEST_F(BitmapMemory, OfACallerIsNotSharedWithACopy) {
    ByteVector pixels{1, 2, 3};
    unsigned char* planes[5] = {pixels.data()};
    NSBitmapImageRep* copy = [[makeBitmap({}, planes) copy] autorelease];
    pixels = {7, 8, 9};
    EXPECT_THAT(rowsOf(copy), ElementsAre(1, 2, 3));
}

TEST_F(BitmapMemory, KeepsPropertiesUntilTheyAreRemoved) {
    NSBitmapImageRep* bitmap = fourColors();
    EXPECT_EQ(nil, [bitmap valueForProperty:NSImageGamma]);
    [bitmap setProperty:NSImageGamma withValue:[NSNumber numberWithFloat:2]];
    EXPECT_EQ(2, [[bitmap valueForProperty:NSImageGamma] floatValue]);
    [bitmap setProperty:NSImageGamma withValue:nil];
    EXPECT_EQ(nil, [bitmap valueForProperty:NSImageGamma]);
    [bitmap setProperty:nil withValue:@"lost"];
    EXPECT_EQ(nil, [bitmap valueForProperty:nil]);
}

TEST_F(BitmapPixels, AreCountedFromTheTopLeft) {
    EXPECT_EQ(red, pixelAt(fourColors(), 0, 0));
    EXPECT_EQ(green, pixelAt(fourColors(), 1, 0));
    EXPECT_EQ(blue, pixelAt(fourColors(), 0, 1));
}

TEST_F(BitmapPixels, OutOfBoundsAreNeitherReadNorWritten) {
    NSBitmapImageRep* bitmap = fourColors();
    for (const auto& [x, y] : {std::pair{-1, 0}, {0, -1}, {2, 0}, {0, 2}}) {
        NSUInteger samples[] = {9, 9, 9, 9};
        [bitmap setPixel:samples atX:x y:y];
        [bitmap getPixel:samples atX:x y:y];
        EXPECT_THAT(samples, Each(9));
        EXPECT_EQ(nil, [bitmap colorAtX:x y:y]);
        [bitmap setColor:[NSColor grayColor] atX:x y:y];
    }
    EXPECT_THAT(pixelsOf(bitmap), ElementsAre(red, green, blue, white));
}

TEST_F(BitmapPixels, OfLessThanAByteArePackedWithTheFirstHigh) {
    NSBitmapImageRep* bitmap =
        makeBitmap({.width = 10, .bits = 1, .samples = 1, .space = NSCalibratedWhiteColorSpace});
    NSUInteger on[] = {1};
    [bitmap setPixel:on atX:1 y:0];
    [bitmap setPixel:on atX:9 y:0];
    EXPECT_THAT(rowsOf(bitmap), ElementsAre(0b01000000, 0b01000000));
}

TEST_F(BitmapPixels, OfTwelveBitsRunOverBytes) {
    NSBitmapImageRep* bitmap =
        makeBitmap({.width = 2, .bits = 12, .samples = 1, .space = NSCalibratedWhiteColorSpace});
    NSUInteger first[] = {0xABC};
    NSUInteger second[] = {0x123};
    [bitmap setPixel:first atX:0 y:0];
    [bitmap setPixel:second atX:1 y:0];
    EXPECT_THAT(rowsOf(bitmap), ElementsAre(0xAB, 0xC1, 0x23));
    NSUInteger read[1];
    [bitmap getPixel:read atX:1 y:0];
    EXPECT_EQ(0x123U, read[0]);
}

TEST_F(BitmapPixels, OfPlanesAreWrittenToEachPlane) {
    NSBitmapImageRep* bitmap = makeBitmap({.width = 2, .planar = true});
    NSUInteger samples[] = {10, 20, 30};
    [bitmap setPixel:samples atX:1 y:0];
    const unsigned char* bytes = [bitmap bitmapData];
    EXPECT_THAT(ByteVector(bytes, bytes + 6), ElementsAre(0, 10, 0, 20, 0, 30));
}

TEST_F(BitmapPixels, GiveColoursThatAreNotPremultiplied) {
    NSBitmapImageRep* bitmap = makeRGBA(1, 1, {{51, 102, 0, 102}});
    NSColor* color = [bitmap colorAtX:0 y:0];
    EXPECT_NEAR(0.5, [color redComponent], 1e-6);
    EXPECT_NEAR(1.0, [color greenComponent], 1e-6);
    EXPECT_NEAR(0.4, [color alphaComponent], 1e-6);
    EXPECT_EQUAL_STRINGS(NSCalibratedRGBColorSpace, [color colorSpaceName]);
}

TEST_F(BitmapPixels, WithoutAlphaGiveClearBlackWithoutDividingByZero) {
    NSColor* color = [makeRGBA(1, 1, {nothing}) colorAtX:0 y:0];
    EXPECT_EQ(0, [color redComponent]);
    EXPECT_EQ(0, [color alphaComponent]);
}

TEST_F(BitmapPixels, TakeColoursPremultipliedAsTheFormatSays) {
    NSColor* color = [NSColor colorWithDeviceRed:1 green:0.5 blue:0 alpha:0.4];
    NSBitmapImageRep* bitmap = makeRGBA(1, 1, {nothing});
    [bitmap setColor:color atX:0 y:0];
    EXPECT_EQ((Pixel{102, 51, 0, 102}), pixelAt(bitmap, 0, 0));
    NSBitmapImageRep* straight =
        makeBitmap({.samples = 4,
                    .alpha = true,
                    .format = NSAlphaNonpremultipliedBitmapFormat | NSAlphaFirstBitmapFormat});
    [straight setColor:color atX:0 y:0];
    EXPECT_THAT(rowsOf(straight), ElementsAre(102, 255, 128, 0));
}

TEST_F(BitmapPixels, OfBlackSpacesSayHowBlack) {
    NSBitmapImageRep* bitmap =
        makeBitmap({.samples = 1, .space = NSCalibratedBlackColorSpace}, ByteVector{51});
    EXPECT_NEAR(0.8, [[bitmap colorAtX:0 y:0] whiteComponent], 1e-6);
    [bitmap setColor:[NSColor whiteColor] atX:0 y:0];
    EXPECT_THAT(rowsOf(bitmap), ElementsAre(0));
}

TEST_F(BitmapPixels, OfCMYKGiveInk) {
    NSBitmapImageRep* bitmap =
        makeBitmap({.samples = 4, .space = NSDeviceCMYKColorSpace}, ByteVector{0, 51, 102, 255});
    NSColor* color = [bitmap colorAtX:0 y:0];
    EXPECT_NEAR(0.2, [color magentaComponent], 1e-6);
    EXPECT_NEAR(0.4, [color yellowComponent], 1e-6);
    EXPECT_NEAR(1, [color blackComponent], 1e-6);
}

TEST_F(BitmapPixels, OfFloatsGiveTheirValues) {
    NSBitmapImageRep* bitmap =
        makeBitmap({.bits = 32, .format = NSFloatingPointSamplesBitmapFormat});
    [bitmap setColor:[NSColor colorWithDeviceRed:0.25 green:0.5 blue:1 alpha:1] atX:0 y:0];
    float values[3];
    std::memcpy(values, [bitmap bitmapData], sizeof values);
    EXPECT_THAT(values, ElementsAre(0.25F, 0.5F, 1.0F));
    EXPECT_NEAR(0.25, [[bitmap colorAtX:0 y:0] redComponent], 1e-6);
}

} // namespace
} // namespace appkit_test
