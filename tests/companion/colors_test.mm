#include "companion/base_host.h"

/// Throws what it is told when it is asked for its red.
@interface ThrowingColor : NSColor {
@public
    id thrown;
}
@end

@implementation ThrowingColor
- (CGFloat)redComponent {
    @throw thrown;
}
@end

namespace {

using host::ObjectRef;

TEST(Colors, AreMadeOfComponents) {
    BaseHost host;
    const auto color =
        host.shared<ObjectRef>("NSColorZNT", "colorWithDeviceRGB", 0.25, 0.5, 0.75, 0.125);
    EXPECT_EQ(host.get<double>(color, "redComponent"), 0.25);
    EXPECT_EQ(host.get<double>(color, "greenComponent"), 0.5);
    EXPECT_EQ(host.get<double>(color, "blueComponent"), 0.75);
    EXPECT_EQ(host.get<double>(color, "alphaComponent"), 0.125);
    EXPECT_EQ(host.get<int>(color, "numberOfComponents"), 4);
    EXPECT_EQ(host.get<std::string>(color, "colorSpaceName"), "NSDeviceRGBColorSpace");
    const auto opaque =
        host.shared<ObjectRef>("NSColorZNT", "colorWithCalibratedRGB", 1.0, 0.0, 0.5);
    EXPECT_EQ(host.get<double>(opaque, "alphaComponent"), 1);
    EXPECT_EQ(host.get<std::string>(opaque, "colorSpaceName"), "NSCalibratedRGBColorSpace");
    const auto gray = host.shared<ObjectRef>("NSColorZNT", "colorWithDeviceWhite", 0.25);
    EXPECT_EQ(host.get<double>(gray, "whiteComponent"), 0.25);
    const auto calibrated =
        host.shared<ObjectRef>("NSColorZNT", "colorWithCalibratedWhite", 0.75, 0.5);
    EXPECT_EQ(host.get<double>(calibrated, "whiteComponent"), 0.75);
    EXPECT_EQ(host.get<double>(calibrated, "alphaComponent"), 0.5);
    const auto ink =
        host.shared<ObjectRef>("NSColorZNT", "colorWithDeviceCMYK", 0.125, 0.25, 0.5, 0.75);
    EXPECT_EQ(host.get<double>(ink, "cyanComponent"), 0.125);
    EXPECT_EQ(host.get<double>(ink, "magentaComponent"), 0.25);
    EXPECT_EQ(host.get<double>(ink, "yellowComponent"), 0.5);
    EXPECT_EQ(host.get<double>(ink, "blackComponent"), 0.75);
}

TEST(Colors, HaveTheirNames) {
    struct Named {
        const char* name;
        double red, green, blue;
    };
    BaseHost host;
    for (const Named& named :
         {Named{"redColor", 1, 0, 0}, Named{"greenColor", 0, 1, 0}, Named{"blueColor", 0, 0, 1},
          Named{"cyanColor", 0, 1, 1}, Named{"yellowColor", 1, 1, 0},
          Named{"magentaColor", 1, 0, 1}, Named{"orangeColor", 1, 0.5, 0},
          Named{"purpleColor", 0.5, 0, 0.5}, Named{"brownColor", 0.6, 0.4, 0.2}}) {
        const auto color = host.shared<ObjectRef>("NSColorZNT", named.name);
        // The components are single-precision on 32-bit systems.
        EXPECT_NEAR(host.get<double>(color, "redComponent"), named.red, 1e-6) << named.name;
        EXPECT_NEAR(host.get<double>(color, "greenComponent"), named.green, 1e-6) << named.name;
        EXPECT_NEAR(host.get<double>(color, "blueComponent"), named.blue, 1e-6) << named.name;
    }
    const auto white = [&](const char* name) {
        return host.get<double>(host.shared<ObjectRef>("NSColorZNT", name), "whiteComponent");
    };
    EXPECT_EQ(white("blackColor"), 0);
    EXPECT_NEAR(white("darkGrayColor"), 1.0 / 3, 1e-3);
    EXPECT_EQ(white("grayColor"), 0.5);
    EXPECT_NEAR(white("lightGrayColor"), 2.0 / 3, 1e-3);
    EXPECT_EQ(white("whiteColor"), 1);
    EXPECT_EQ(
        host.get<double>(host.shared<ObjectRef>("NSColorZNT", "clearColor"), "alphaComponent"), 0);
}

TEST(Colors, RaiseForAComponentThatTheirSpaceLacks) {
    BaseHost host;
    const auto gray = host.shared<ObjectRef>("NSColorZNT", "colorWithDeviceWhite", 0.5);
    EXPECT_EQ(host.get<double>(gray, "redComponent"), 0);
    EXPECT_TRUE(host.raised().starts_with("RuntimeException: NSInvalidArgumentException: "));
}

TEST(Colors, LetAForeignObjectPassUnchanged) {
    BaseHost host;
    const ObjectRef wrapper = host.instance("NSColorZNT");
    ThrowingColor* const color = [[ThrowingColor alloc] init];
    color->thrown = @"a string";
    field<NSColor*>(wrapper, 0) = color;
    id caught = nil;
    @try {
        host.get(wrapper, "redComponent");
    } @catch (id object) {
        caught = object;
    }
    EXPECT_EQ(caught, @"a string");
    EXPECT_EQ(host.raised(), "");
}

TEST(Colors, GiveOtherColors) {
    BaseHost host;
    const auto red = host.shared<ObjectRef>("NSColorZNT", "redColor");
    const auto faint = host.call<ObjectRef>(red, "colorWithAlphaComponent", 0.25);
    EXPECT_EQ(host.get<double>(faint, "alphaComponent"), 0.25);
    EXPECT_EQ(host.get<double>(red, "alphaComponent"), 1);
    const auto space = host.shared<ObjectRef>("NSColorSpaceZNT", "deviceGrayColorSpace");
    const auto gray = host.call<ObjectRef>(red, "colorUsingColorSpace", space);
    ASSERT_TRUE(gray);
    EXPECT_EQ(host.get<int>(gray, "numberOfComponents"), 2);
    EXPECT_FALSE(host.call<ObjectRef>(red, "colorUsingColorSpace", nullptr));
}

TEST(Colors, AreNeutralWithoutAColor) {
    BaseHost host;
    const ObjectRef empty = host.create("NSColorZNT");
    EXPECT_EQ(host.get<REALword>(empty, "Handle"), 0);
    EXPECT_EQ(host.get<double>(empty, "redComponent"), 0);
    EXPECT_EQ(host.get<int>(empty, "numberOfComponents"), 0);
    EXPECT_EQ(host.get<std::string>(empty, "colorSpaceName"), "");
    EXPECT_FALSE(host.get<ObjectRef>(empty, "colorSpace"));
    EXPECT_FALSE(host.call<ObjectRef>(empty, "colorWithAlphaComponent", 0.5));
}

TEST(Colors, HaveOneWrapperAtATime) {
    BaseHost host;
    const auto first = host.shared<ObjectRef>("NSColorZNT", "redColor");
    const void* const color = host.handle(first);
    const auto second = host.shared<ObjectRef>("NSColorZNT", "redColor");
    if (host.handle(second) == color) EXPECT_EQ(first.get(), second.get());
    EXPECT_EQ(Host::wrapper(color), first.get());
}

TEST(Colors, AreRetainedByTheirWrapperAlone) {
    BaseHost host;
    NSColor* const color = [[NSColor colorWithDeviceRed:1 green:0 blue:0 alpha:0.5] retain];
    const long before = Host::retainCount(color);
    {
        const ObjectRef wrapper = host.instance("NSColorZNT");
        field<NSColor*>(wrapper, 0) = [color retain];
        CFDictionarySetValue([NSException GetInstancesDictionaryZNT], color, wrapper.get());
        EXPECT_EQ(host.get<double>(wrapper, "alphaComponent"), 0.5);
        EXPECT_EQ(Host::wrapperCount(), 1);
    }
    EXPECT_EQ(Host::wrapperCount(), 0);
    EXPECT_EQ(Host::retainCount(color), before);
    [color release];
}

TEST(Colors, LeaveTheEntryOfAnotherWrapperAlone) {
    BaseHost host;
    const auto registered = host.shared<ObjectRef>("NSColorZNT", "redColor");
    auto* const color = static_cast<NSColor*>(host.handle(registered));
    {
        const ObjectRef other = host.instance("NSColorZNT");
        field<NSColor*>(other, 0) = [color retain];
    }
    EXPECT_EQ(Host::wrapper(color), registered.get());
}

TEST(ColorSpaces, TellWhatTheyAre) {
    BaseHost host;
    struct Space {
        const char* maker;
        int components;
        const char* model;
    };
    for (const Space& space : {Space{"deviceRGBColorSpace", 3, "NSRGBColorSpaceModel"},
                               Space{"genericRGBColorSpace", 3, "NSRGBColorSpaceModel"},
                               Space{"sRGBColorSpace", 3, "NSRGBColorSpaceModel"},
                               Space{"deviceGrayColorSpace", 1, "NSGrayColorSpaceModel"},
                               Space{"genericGrayColorSpace", 1, "NSGrayColorSpaceModel"},
                               Space{"deviceCMYKColorSpace", 4, "NSCMYKColorSpaceModel"},
                               Space{"genericCMYKColorSpace", 4, "NSCMYKColorSpaceModel"}}) {
        const auto made = host.shared<ObjectRef>("NSColorSpaceZNT", space.maker);
        ASSERT_TRUE(made) << space.maker;
        EXPECT_EQ(host.get<int>(made, "numberOfColorComponents"), space.components);
        EXPECT_EQ(host.get<int>(made, "colorSpaceModel"),
                  host.constant<int>("NSColorSpaceZNT", space.model));
        EXPECT_NE(host.get<std::string>(made, "localizedName"), "");
        EXPECT_NE(host.get<REALword>(made, "Handle"), 0);
    }
}

TEST(ColorSpaces, OfColorsKeepTheirWrapper) {
    BaseHost host;
    const auto space = host.shared<ObjectRef>("NSColorSpaceZNT", "deviceRGBColorSpace");
    const auto color = host.shared<ObjectRef>("NSColorZNT", "colorWithDeviceRGB", 1.0, 0.0, 0.0);
    EXPECT_EQ(host.get<ObjectRef>(color, "colorSpace").get(), space.get());
    EXPECT_EQ(host.references(space), 1);
}

TEST(ColorSpaces, AreNeutralWithoutASpace) {
    BaseHost host;
    const ObjectRef empty = host.create("NSColorSpaceZNT");
    EXPECT_EQ(host.get<int>(empty, "numberOfColorComponents"), 0);
    EXPECT_EQ(host.get<std::string>(empty, "localizedName"), "");
}

TEST(Images, TellTheirMeasures) {
    BaseHost host;
    CGColorSpaceRef const space = CGColorSpaceCreateDeviceRGB();
    CGContextRef const context =
        CGBitmapContextCreate(nullptr, 5, 3, 8, 32, space, kCGImageAlphaPremultipliedLast);
    CGImageRef const image = CGBitmapContextCreateImage(context);
    ASSERT_NE(image, nullptr);
    const long before = Host::retainCount(image);
    {
        const ObjectRef wrapper = host.create("CGImageZNT");
        EXPECT_EQ(host.get<int>(wrapper, "width"), 0);
        field<CGImageRef>(wrapper, 0) = CGImageRetain(image);
        EXPECT_EQ(host.get<int>(wrapper, "width"), 5);
        EXPECT_EQ(host.get<int>(wrapper, "height"), 3);
        EXPECT_EQ(host.get<int>(wrapper, "bitsPerComponent"), 8);
        EXPECT_EQ(host.get<int>(wrapper, "bitsPerPixel"), 32);
        EXPECT_EQ(host.get<std::size_t>(wrapper, "bytesPerRow"), CGImageGetBytesPerRow(image));
        EXPECT_EQ(host.handle(wrapper), image);
        EXPECT_EQ(Host::retainCount(image), before + 1);
    }
    EXPECT_EQ(Host::retainCount(image), before);
    CGImageRelease(image);
    CGContextRelease(context);
    CGColorSpaceRelease(space);
}

} // namespace
