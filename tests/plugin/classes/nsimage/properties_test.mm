#include "plugin/classes/support/images.h"

#include <gmock/gmock.h>

namespace {

class ImageProperties : public testing::Test {
protected:
    Host host;
    const host::ObjectRef image = host.create("NSImageZNT", 30.0, 20.0);
    const host::ObjectRef empty = host.instance("NSImageZNT");
};

constexpr const char* flags[] = {
    "isTemplate",         "isFlipped",         "cacheDepthMatchesImageDepth",
    "prefersColorMatch",  "scalesWhenResized", "usesEPSOnResolutionMismatch",
    "isCachedSeparately", "isDataRetained",    "matchesOnMultipleResolution",
};

TEST_F(ImageProperties, FlagsAreForwardedEachToItsOwnMessage) {
    for (const char* flag : flags) {
        const host::ObjectRef other = host.create("NSImageZNT", 1.0, 1.0);
        const bool before = host.get<bool>(other, flag);
        host.set(other, flag, !before);
        EXPECT_EQ(host.get<bool>(other, flag), !before) << flag;
        for (const char* unchanged : flags)
            if (unchanged != flag) {
                EXPECT_EQ(host.get<bool>(other, unchanged), host.get<bool>(image, unchanged))
                    << flag << " changes " << unchanged;
            }
        host.set(other, flag, before);
        EXPECT_EQ(host.get<bool>(other, flag), before) << flag;
    }
}

TEST_F(ImageProperties, FlagsReachTheCocoaObject) {
    host.set(image, "isFlipped", true);
    host.set(image, "isTemplate", true);
    host.set(image, "isDataRetained", true);
    EXPECT_TRUE([image_in(host, image) isFlipped]);
    EXPECT_TRUE([image_in(host, image) isTemplate]);
    EXPECT_TRUE([image_in(host, image) isDataRetained]);
}

TEST_F(ImageProperties, TheCacheModeIsForwarded) {
    EXPECT_EQ(host.get<int>(image, "cacheMode"), NSImageCacheDefault);
    host.set(image, "cacheMode", REALword{NSImageCacheNever});
    EXPECT_EQ([image_in(host, image) cacheMode], static_cast<NSUInteger>(NSImageCacheNever));
    EXPECT_EQ(host.get<int>(image, "cacheMode"), 3);
}

TEST_F(ImageProperties, AreNeutralWithoutAnImageAndSettingThemDoesNothing) {
    for (const char* flag : flags) {
        host.set(empty, flag, true);
        EXPECT_FALSE(host.get<bool>(empty, flag)) << flag;
    }
    host.set(empty, "cacheMode", REALword{3});
    for (const char* number : {"cacheMode", "MinimumPixelWidth", "MinimumPixelHeight",
                               "MaximumPixelWidth", "MaximumPixelHeight", "RepresentationsCount"})
        EXPECT_EQ(host.get<int>(empty, number), 0) << number;
    host.set(empty, "accessibilityDescription", "nobody");
    for (const char* text : {"Name", "accessibilityDescription"})
        EXPECT_EQ(host.get(empty, text).string(), nullptr) << text;
    host.set(empty, "size", nullptr);
    host.set(empty, "backgroundColor", nullptr);
    EXPECT_FALSE(host.get<host::ObjectRef>(empty, "size"));
    EXPECT_FALSE(host.get<host::ObjectRef>(empty, "backgroundColor"));
    EXPECT_FALSE(host.get<bool>(empty, "isValid"));
    EXPECT_EQ(host.get<double>(empty, "width"), 0.0);
    EXPECT_EQ(host.get<double>(empty, "height"), 0.0);
    host.call(empty, "recache");
    host.call(empty, "cancelIncrementalLoad");
    EXPECT_EQ(host.raised(), "");
}

TEST_F(ImageProperties, SizeIsANewHostObjectAtEveryReading) {
    const auto first = host.get<host::ObjectRef>(image, "size");
    const auto second = host.get<host::ObjectRef>(image, "size");
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(host.references(first), 1);
    for (const auto& size : {first, second}) {
        EXPECT_EQ(host.get<double>(size, "width"), 30);
        EXPECT_EQ(host.get<double>(size, "height"), 20);
    }
}

TEST_F(ImageProperties, SizeIsSetFromAHostSize) {
    const auto size = host.get<host::ObjectRef>(host.create("NSImageZNT", 7.5, 3.25), "size");
    host.set(image, "size", size);
    EXPECT_EQ(host.get<double>(image, "width"), 7.5);
    EXPECT_EQ(host.get<double>(image, "height"), 3.25);
}

TEST_F(ImageProperties, SizeSetToNilIsZero) {
    host.set(image, "size", nullptr);
    EXPECT_EQ(host.raised(), "");
    EXPECT_EQ(host.get<double>(image, "width"), 0);
    EXPECT_EQ(host.get<double>(image, "height"), 0);
}

TEST_F(ImageProperties, WidthAndHeightAreOfSinglePrecision) {
    host.call(image, "setSize", 100.1, 0.3);
    EXPECT_EQ(host.get<double>(image, "width"), static_cast<double>(100.1f));
    EXPECT_EQ(host.get<double>(image, "height"), static_cast<double>(0.3f));
}

TEST_F(ImageProperties, TheAccessibilityDescriptionTravelsBothWays) {
    EXPECT_EQ(host.get(image, "accessibilityDescription").string(), nullptr);
    host.set(image, "accessibilityDescription", "gr\xC3\xBCner Baum");
    EXPECT_EQ(host.get<std::string>(image, "accessibilityDescription"), "gr\xC3\xBCner Baum");
    host.set(image, "accessibilityDescription", "");
    EXPECT_EQ([image_in(host, image) accessibilityDescription], nil);
}

TEST_F(ImageProperties, TheBackgroundColorIsOneHostObjectWhileItLives) {
    [image_in(host, image) setBackgroundColor:[NSColor redColor]];
    const auto first = host.get<host::ObjectRef>(image, "backgroundColor");
    const auto second = host.get<host::ObjectRef>(image, "backgroundColor");
    ASSERT_TRUE(first);
    EXPECT_EQ(first, second);
    EXPECT_EQ(host.references(first), 2);
}

TEST_F(ImageProperties, TheBackgroundColorIsSetFromAHostColor) {
    [image_in(host, image) setBackgroundColor:[NSColor redColor]];
    const host::ObjectRef other = host.create("NSImageZNT", 1.0, 1.0);
    host.set(other, "backgroundColor", host.get(image, "backgroundColor"));
    EXPECT_TRUE([[image_in(host, other) backgroundColor] isEqual:[NSColor redColor]]);
    host.set(other, "backgroundColor", nullptr);
    EXPECT_EQ(host.raised(), "");
}

TEST_F(ImageProperties, IsValidTellsWhetherThereIsARepresentation) {
    EXPECT_FALSE(host.get<bool>(host.createBy("NSImageZNT", "Constructor"), "isValid"));
    EXPECT_TRUE(host.get<bool>(new_image(host, {four_colors()}), "isValid"));
}

TEST_F(ImageProperties, ThePixelExtremesSpanTheRepresentations) {
    const auto pages = new_image(host, {plain_page(50, 7), plain_page(30, 40), plain_page(41, 9)});
    EXPECT_EQ(host.get<int>(pages, "RepresentationsCount"), 3);
    EXPECT_EQ(host.get<int>(pages, "MinimumPixelWidth"), 30);
    EXPECT_EQ(host.get<int>(pages, "MaximumPixelWidth"), 50);
    EXPECT_EQ(host.get<int>(pages, "MinimumPixelHeight"), 7);
    EXPECT_EQ(host.get<int>(pages, "MaximumPixelHeight"), 40);
}

TEST_F(ImageProperties, TheSmallestOf0And50And30PixelsIs30) {
    NSImage* const held = image_in(host, image);
    for (const NSInteger width : {0, 50, 30}) {
        NSImageRep* const representation = [[NSImageRep alloc] init];
        [representation setPixelsWide:width];
        [representation setPixelsHigh:width];
        [held addRepresentation:representation];
        [representation release];
    }
    EXPECT_EQ(host.get<int>(image, "MinimumPixelWidth"), 30);
    EXPECT_EQ(host.get<int>(image, "MinimumPixelHeight"), 30);
    EXPECT_EQ(host.get<int>(image, "MaximumPixelWidth"), 50);
    NSImageRep* const last = [[[NSImageRep alloc] init] autorelease];
    [held addRepresentation:last];
    EXPECT_EQ(host.get<int>(image, "MinimumPixelWidth"), 0) << "a last 0 is not replaced";
}

TEST_F(ImageProperties, TheHandleIsTheCocoaObjectItself) {
    NSImage* const replacement = [[NSImage alloc] initWithSize:NSMakeSize(5, 6)];
    NSImage* const original = image_in(host, image);
    host.set(image, "Handle", reinterpret_cast<REALword>(replacement));
    EXPECT_EQ(host.get<double>(image, "width"), 5);
    host.set(image, "Handle", reinterpret_cast<REALword>(original));
    [replacement release];
}

} // namespace
