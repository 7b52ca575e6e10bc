/// Images by name and of other objects.

#include "plugin/classes/support/images.h"

#include <gmock/gmock.h>

#include <dlfcn.h>

namespace {

// imageNamed

class NamedImages : public testing::Test {
protected:
    host::ObjectRef named(const char* name) {
        return host.shared<host::ObjectRef>("NSImageZNT", "imageNamed", name);
    }

    Host host;
};

TEST_F(NamedImages, AreFoundByTheNameThatTheProgramGave) {
    const auto image = host.create("NSImageZNT", 5.0, 4.0);
    EXPECT_FALSE(named("my own tree"));
    ASSERT_TRUE(host.call<bool>(image, "setName", "my own tree"));
    EXPECT_EQ(named("my own tree"), image) << "one wrapper for one image";
    EXPECT_EQ(host.references(image), 1);
}

TEST_F(NamedImages, ThatCocoaOwnsAreWrappedWithARetainOfTheWrappersOwn) {
    NSImage* const image = [[NSImage alloc] initWithSize:NSMakeSize(5, 4)];
    [image setName:@"Cocoa's own"];
    const long before = Host::retainCount(image);
    {
        const auto wrapper = named("Cocoa's own");
        EXPECT_EQ(host.handle(wrapper), image);
        EXPECT_EQ(Host::retainCount(image), before + 1);
        EXPECT_EQ(host.references(wrapper), 1);
    }
    EXPECT_EQ(Host::retainCount(image), before);
    [image setName:nil];
    [image release];
}

TEST_F(NamedImages, AreNilWithoutAnExceptionForAnUnknownOrEmptyName) {
    EXPECT_FALSE(named("no image bears this name"));
    EXPECT_FALSE(named(""));
    EXPECT_EQ(host.raised(), "");
}

// The names of the system's images

const char* const systemNames[] = {
    "NSImageNameQuickLookTemplate",
    "NSImageNameBluetoothTemplate",
    "NSImageNameIChatTheaterTemplate",
    "NSImageNameSlideshowTemplate",
    "NSImageNameActionTemplate",
    "NSImageNameSmartBadgeTemplate",
    "NSImageNameIconViewTemplate",
    "NSImageNameListViewTemplate",
    "NSImageNameColumnViewTemplate",
    "NSImageNameFlowViewTemplate",
    "NSImageNamePathTemplate",
    "NSImageNameInvalidDataFreestandingTemplate",
    "NSImageNameLockLockedTemplate",
    "NSImageNameLockUnlockedTemplate",
    "NSImageNameGoRightTemplate",
    "NSImageNameGoLeftTemplate",
    "NSImageNameRightFacingTriangleTemplate",
    "NSImageNameLeftFacingTriangleTemplate",
    "NSImageNameAddTemplate",
    "NSImageNameRemoveTemplate",
    "NSImageNameRevealFreestandingTemplate",
    "NSImageNameFollowLinkFreestandingTemplate",
    "NSImageNameEnterFullScreenTemplate",
    "NSImageNameExitFullScreenTemplate",
    "NSImageNameStopProgressTemplate",
    "NSImageNameStopProgressFreestandingTemplate",
    "NSImageNameRefreshTemplate",
    "NSImageNameRefreshFreestandingTemplate",
    "NSImageNameBonjour",
    "NSImageNameComputer",
    "NSImageNameFolderBurnable",
    "NSImageNameFolderSmart",
    "NSImageNameFolder",
    "NSImageNameNetwork",
    "NSImageNameDotMac",
    "NSImageNameMobileMe",
    "NSImageNameMultipleDocuments",
    "NSImageNameUserAccounts",
    "NSImageNamePreferencesGeneral",
    "NSImageNameAdvanced",
    "NSImageNameInfo",
    "NSImageNameFontPanel",
    "NSImageNameColorPanel",
    "NSImageNameUser",
    "NSImageNameUserGroup",
    "NSImageNameEveryone",
    "NSImageNameUserGuest",
    "NSImageNameMenuOnStateTemplate",
    "NSImageNameMenuMixedStateTemplate",
    "NSImageNameApplicationIcon",
    "NSImageNameTrashEmpty",
    "NSImageNameTrashFull",
    "NSImageNameHomeTemplate",
    "NSImageNameBookmarksTemplate",
    "NSImageNameCaution",
    "NSImageNameStatusAvailable",
    "NSImageNameStatusPartiallyAvailable",
    "NSImageNameStatusUnavailable",
    "NSImageNameStatusNone",
    "NSImageNameShareTemplate",
};

TEST_F(NamedImages, OfTheSystemHaveCocoasNames) {
    static_assert(std::size(systemNames) == 60);
    for (const char* name : systemNames) {
        const auto* const constant = static_cast<NSString* const*>(dlsym(RTLD_DEFAULT, name));
        ASSERT_NE(constant, nullptr) << name;
        EXPECT_EQ(host.shared<std::string>("NSImageZNT", name), [*constant UTF8String]) << name;
    }
    EXPECT_EQ(host.shared<std::string>("NSImageZNT", "NSImageNameTrashFull"), "NSTrashFull");
}

TEST_F(NamedImages, OfTheSystemAreGivenAsTextTheHostKnowsTheEncodingOf) {
    const host::Value name = host.shared("NSImageZNT", "NSImageNameInfo");
    EXPECT_EQ(name.string()->encoding, REALtextEncodingUTF8);
}

// imageWithCGImage

/// 6 by 5 opaque pixels.
CGImageRef new_cg_image() {
    CGColorSpaceRef const space = CGColorSpaceCreateDeviceRGB();
    CGContextRef const context =
        CGBitmapContextCreate(nullptr, 6, 5, 8, 24, space, kCGImageAlphaNoneSkipLast);
    CGImageRef const image = CGBitmapContextCreateImage(context);
    CGContextRelease(context);
    CGColorSpaceRelease(space);
    return image;
}

class ImageWithCGImage {
public:
    explicit ImageWithCGImage(const HostOptions& options = {})
        : host(options) {}

    /// The base part's wrapper, which takes the image over.
    host::ObjectRef wrapper_of(CGImageRef image) {
        const host::ObjectRef wrapper = host.instance("CGImageZNT");
        *static_cast<CGImageRef*>(REALfirstClassData(wrapper.get())) = image;
        return wrapper;
    }
    /// "6x5", or "none".
    std::string size_of(auto... arguments) {
        const auto image =
            host.shared<host::ObjectRef>("NSImageZNT", "imageWithCGImage", arguments...);
        if (!image) return "none";
        EXPECT_EQ(host.references(image), 1);
        EXPECT_EQ(Host::retainCount(host.handle(image)), 1);
        EXPECT_EQ(host.get<int>(image, "MaximumPixelWidth"), 6);
        return std::to_string(static_cast<int>(host.get<double>(image, "width"))) + "x" +
               std::to_string(static_cast<int>(host.get<double>(image, "height")));
    }

    Host host;
};

TEST(ImageOfACGImage, HasTheGivenSizeOrOnEachSideThatIsNotAbove0TheImagesOwn) {
    ImageWithCGImage factory;
    const auto wrapper = factory.wrapper_of(new_cg_image());
    EXPECT_EQ(factory.size_of(wrapper), "6x5") << "the defaults";
    EXPECT_EQ(factory.size_of(wrapper, 0.0, 50.0), "6x50");
    EXPECT_EQ(factory.size_of(wrapper, 60.0, 0.0), "60x5");
    EXPECT_EQ(factory.size_of(wrapper, 60.0), "60x5");
    EXPECT_EQ(factory.size_of(wrapper, -1.0, -0.5), "6x5");
    EXPECT_EQ(factory.size_of(wrapper, 12.0, 10.0), "12x10");
    EXPECT_EQ(factory.size_of(wrapper, std::nan(""), 10.0), "6x10");
    EXPECT_EQ(factory.host.references(wrapper), 1);
}

TEST(ImageOfACGImage, HasTheSizeInSinglePrecision) {
    ImageWithCGImage factory;
    const auto image = factory.host.shared<host::ObjectRef>(
        "NSImageZNT", "imageWithCGImage", factory.wrapper_of(new_cg_image()), 0.1, 0.7);
    EXPECT_EQ(factory.host.get<double>(image, "width"), static_cast<double>(0.1f));
}

TEST(ImageOfACGImage, OfNilRaises) {
    ImageWithCGImage factory;
    EXPECT_EQ(factory.size_of(nullptr), "none");
    EXPECT_EQ(factory.host.raised(), "NilObjectException: Image is nil");
}

TEST(ImageOfACGImage, OfAnEmptyWrapperRaises) {
    ImageWithCGImage factory;
    EXPECT_EQ(factory.size_of(factory.host.instance("CGImageZNT")), "none");
    EXPECT_EQ(factory.host.raised(), "NilObjectException: Image is nil");
}

constexpr const char* wrongClass = "IllegalCastException: CGImage must be a CGImageZNT!";

TEST(ImageOfACGImage, OfAnotherObjectRaises) {
    ImageWithCGImage factory;
    EXPECT_EQ(factory.size_of(factory.host.create("NSImageZNT", 5.0, 4.0)), "none");
    EXPECT_EQ(factory.host.raised(), wrongClass);
    EXPECT_EQ(factory.size_of(REALword{7}), "none") << "a Variant that is no object";
    EXPECT_EQ(factory.host.raised(), wrongClass);
}

TEST(ImageOfACGImage, RaisesWhereTheClassCannotBeLookedUp) {
    for (const char* service : {"pluginObjectType", "RuntimeObjectIsa"}) {
        SCOPED_TRACE(service);
        ImageWithCGImage factory({.without = {service}});
        EXPECT_EQ(factory.size_of(factory.wrapper_of(new_cg_image())), "none");
        EXPECT_EQ(factory.host.raised(), wrongClass);
    }
}

TEST(ImageOfACGImage, RaisesWithoutThePartThatHasTheClass) {
    ImageWithCGImage factory({.withoutBase = true});
    EXPECT_EQ(factory.size_of(factory.host.create("NSImageZNT", 5.0, 4.0)), "none");
    EXPECT_EQ(factory.host.raised(), wrongClass);
}

} // namespace
