#include "support.h"

namespace appkit_test {
namespace {

class Colors : public AppKitTest {};
class ColorSpaces : public AppKitTest {};

TEST_F(Colors, KeepTheirComponentsAndSpace) {
    NSColor* color = [NSColor colorWithCalibratedRed:0.1 green:0.2 blue:0.3 alpha:0.4];
    CGFloat r, g, b, a;
    [color getRed:&r green:&g blue:&b alpha:&a];
    EXPECT_FLOAT_EQ(0.1F, r);
    EXPECT_FLOAT_EQ(0.2F, g);
    EXPECT_FLOAT_EQ(0.3F, b);
    EXPECT_FLOAT_EQ(0.4F, a);
    EXPECT_EQUAL_STRINGS(NSCalibratedRGBColorSpace, [color colorSpaceName]);
    EXPECT_EQ(4, [color numberOfComponents]);
    EXPECT_EQUAL_STRINGS(@"NSCalibratedRGBColorSpace 0.1 0.2 0.3 0.4", [color description]);
}

TEST_F(Colors, AreBroughtIntoRange) {
    NSColor* color = [NSColor colorWithDeviceRed:-1 green:2 blue:NAN alpha:9];
    EXPECT_EQ(0, [color redComponent]);
    EXPECT_EQ(1, [color greenComponent]);
    EXPECT_EQ(0, [color blueComponent]);
    EXPECT_EQ(1, [color alphaComponent]);
}

TEST_F(Colors, WithNamesHaveTheirValues) {
    EXPECT_EQUAL_STRINGS(@"NSCalibratedWhiteColorSpace 1 1", [[NSColor whiteColor] description]);
    EXPECT_EQUAL_STRINGS(@"NSCalibratedWhiteColorSpace 0 0", [[NSColor clearColor] description]);
    EXPECT_EQUAL_STRINGS(@"NSCalibratedRGBColorSpace 1 0.5 0 1",
                         [[NSColor orangeColor] description]);
    EXPECT_EQUAL_STRINGS(@"NSCalibratedRGBColorSpace 0.6 0.4 0.2 1",
                         [[NSColor brownColor] description]);
}

TEST_F(Colors, RaiseWhenAskedForComponentsOfAnotherSpace) {
    EXPECT_EQUAL_STRINGS(NSInvalidArgumentException,
                         raisedBy([] { [[NSColor whiteColor] redComponent]; }));
    EXPECT_EQUAL_STRINGS(NSInvalidArgumentException,
                         raisedBy([] { [[NSColor redColor] whiteComponent]; }));
    EXPECT_EQUAL_STRINGS(NSInvalidArgumentException,
                         raisedBy([] { [[NSColor redColor] cyanComponent]; }));
    EXPECT_EQ(nil, raisedBy([] { [[NSColor redColor] redComponent]; }));
}

TEST_F(Colors, BecomeGrayWithTheEyesWeights) {
    NSColor* gray = [[NSColor greenColor] colorUsingColorSpaceName:NSCalibratedWhiteColorSpace];
    EXPECT_NEAR(0.59, [gray whiteComponent], 1e-6);
    EXPECT_EQ(1, [gray alphaComponent]);
}

TEST_F(Colors, OfGrayHaveEqualRedGreenAndBlue) {
    NSColor* color = [[NSColor colorWithDeviceWhite:0.25 alpha:0.5]
        colorUsingColorSpaceName:NSDeviceRGBColorSpace];
    EXPECT_EQUAL_STRINGS(@"NSDeviceRGBColorSpace 0.25 0.25 0.25 0.5", [color description]);
}

TEST_F(Colors, OfInkSubtractFromWhite) {
    NSColor* color =
        [[NSColor colorWithDeviceCyan:1 magenta:0.5 yellow:0 black:0.5
                                alpha:1] colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
    EXPECT_NEAR(0, [color redComponent], 1e-6);
    EXPECT_NEAR(0.25, [color greenComponent], 1e-6);
    EXPECT_NEAR(0.5, [color blueComponent], 1e-6);
}

TEST_F(Colors, ComeBackFromInk) {
    NSColor* color = [NSColor colorWithDeviceRed:0.2 green:0.4 blue:0.8 alpha:1];
    NSColor* ink = [color colorUsingColorSpaceName:NSDeviceCMYKColorSpace];
    EXPECT_EQ(5, [ink numberOfComponents]);
    NSColor* back = [ink colorUsingColorSpaceName:NSDeviceRGBColorSpace];
    EXPECT_NEAR(0.2, [back redComponent], 1e-6);
    EXPECT_NEAR(0.4, [back greenComponent], 1e-6);
    EXPECT_NEAR(0.8, [back blueComponent], 1e-6);
    NSColor* black = [[NSColor blackColor] colorUsingColorSpaceName:NSDeviceCMYKColorSpace];
    EXPECT_EQ(1, [black blackComponent]);
}

TEST_F(Colors, AreThemselvesInTheirOwnSpace) {
    NSColor* color = [NSColor redColor];
    EXPECT_EQ(color, [color colorUsingColorSpaceName:NSCalibratedRGBColorSpace]);
    EXPECT_EQ(color, [color colorUsingColorSpace:[NSColorSpace genericRGBColorSpace]]);
}

TEST_F(Colors, CannotBeHadInUnknownSpaces) {
    EXPECT_EQ(nil, [[NSColor redColor] colorUsingColorSpaceName:@"no space"]);
    EXPECT_EQ(nil, [[NSColor redColor] colorUsingColorSpace:nil]);
}

TEST_F(Colors, OfASpaceObjectNeedAllItsComponents) {
    const CGFloat components[] = {0.5, 0.25, 0.125, 1};
    NSColorSpace* space = [NSColorSpace sRGBColorSpace];
    EXPECT_EQ(nil, [NSColor colorWithColorSpace:space components:components count:3]);
    NSColor* color = [NSColor colorWithColorSpace:space components:components count:4];
    EXPECT_EQ(space, [color colorSpace]);
    EXPECT_EQ(0.25, [color greenComponent]);
}

TEST_F(Colors, AreEqualByValue) {
    EXPECT_TRUE([[NSColor redColor] isEqual:[NSColor colorWithCalibratedRed:1
                                                                      green:0
                                                                       blue:0
                                                                      alpha:1]]);
    EXPECT_EQ([[NSColor redColor] hash], [[NSColor redColor] hash]);
    EXPECT_FALSE([[NSColor redColor] isEqual:[NSColor greenColor]]);
    EXPECT_FALSE([[NSColor redColor] isEqual:[NSColor colorWithDeviceRed:1
                                                                   green:0
                                                                    blue:0
                                                                   alpha:1]]);
    EXPECT_FALSE([[NSColor redColor] isEqual:@"red"]);
}

TEST_F(Colors, TakeAnotherAlpha) {
    NSColor* color = [[NSColor redColor] colorWithAlphaComponent:0.5];
    EXPECT_EQUAL_STRINGS(@"NSCalibratedRGBColorSpace 1 0 0 0.5", [color description]);
}

TEST_F(Colors, SetTheFillOfTheCurrentContext) {
    NSBitmapImageRep* drawn = drawing(1, 1, [] {
        [[NSColor colorWithDeviceRed:0.2 green:0.4 blue:0.6 alpha:1] set];
        NSRectFill(NSMakeRect(0, 0, 1, 1));
    });
    EXPECT_EQ((Pixel{51, 102, 153}), pixelAt(drawn, 0, 0));
}

TEST_F(Colors, CanBeSetWithoutAContext) {
    EXPECT_EQ(nil, raisedBy([] { [[NSColor redColor] set]; }));
}

TEST_F(ColorSpaces, AreSharedObjects) {
    EXPECT_EQ([NSColorSpace deviceRGBColorSpace], [NSColorSpace deviceRGBColorSpace]);
    EXPECT_NE([NSColorSpace deviceRGBColorSpace], [NSColorSpace genericRGBColorSpace]);
}

TEST_F(ColorSpaces, KnowTheirModelAndComponents) {
    EXPECT_EQ(NSRGBColorSpaceModel, [[NSColorSpace sRGBColorSpace] colorSpaceModel]);
    EXPECT_EQ(3, [[NSColorSpace sRGBColorSpace] numberOfColorComponents]);
    EXPECT_EQ(NSGrayColorSpaceModel, [[NSColorSpace genericGrayColorSpace] colorSpaceModel]);
    EXPECT_EQ(1, [[NSColorSpace deviceGrayColorSpace] numberOfColorComponents]);
    EXPECT_EQ(NSCMYKColorSpaceModel, [[NSColorSpace deviceCMYKColorSpace] colorSpaceModel]);
    EXPECT_EQ(4, [[NSColorSpace genericCMYKColorSpace] numberOfColorComponents]);
    EXPECT_EQUAL_STRINGS(@"sRGB IEC61966-2.1", [[NSColorSpace sRGBColorSpace] localizedName]);
}

TEST_F(ColorSpaces, AreNotMadeOfOtherData) {
    EXPECT_EQ(nil, [[NSColorSpace alloc] initWithICCProfileData:nil]);
    EXPECT_EQ(nil, [[NSColorSpace alloc] initWithICCProfileData:[NSData data]]);
    EXPECT_EQ(nil, [[NSColorSpace alloc] initWithICCProfileData:toData(ByteVector(200, 7))]);
    EXPECT_EQ(nil, [[NSColorSpace alloc] initWithCGColorSpace:nullptr]);
}

TEST_F(ColorSpaces, WrapOthers) {
    CGColorSpaceRef space = CGColorSpaceCreateDeviceGray();
    NSColorSpace* wrapped = [[[NSColorSpace alloc] initWithCGColorSpace:space] autorelease];
    EXPECT_EQ(space, [wrapped CGColorSpace]);
    EXPECT_EQ(NSGrayColorSpaceModel, [wrapped colorSpaceModel]);
    EXPECT_EQ(nil, [wrapped ICCProfileData]);
    EXPECT_TRUE([wrapped isEqual:[NSColorSpace deviceGrayColorSpace]]);
    CGColorSpaceRelease(space);
}

TEST_F(ColorSpaces, HaveTheNamesOfOldCocoa) {
    EXPECT_EQUAL_STRINGS(@"NSCalibratedRGBColorSpace", NSCalibratedRGBColorSpace);
    EXPECT_EQUAL_STRINGS(@"NSDeviceCMYKColorSpace", NSDeviceCMYKColorSpace);
    EXPECT_EQ(3, NSNumberOfColorComponents(NSDeviceRGBColorSpace));
    EXPECT_EQ(4, NSNumberOfColorComponents(NSDeviceCMYKColorSpace));
    EXPECT_EQ(1, NSNumberOfColorComponents(NSCalibratedBlackColorSpace));
    EXPECT_EQ(0, NSNumberOfColorComponents(nil));
}

} // namespace
} // namespace appkit_test
