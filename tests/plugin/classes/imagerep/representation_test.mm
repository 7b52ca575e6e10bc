#include "plugin/classes/support/images.h"

namespace {

class RepresentationProperties : public testing::Test {
protected:
    /// The first representation of an image of these pages.
    host::ObjectRef representation(const std::vector<TIFFPage>& pages) {
        const host::ObjectRef image = new_image(host, pages);
        return host.elements(host.call(image, "representations")).at(0).objectRef();
    }
    NSImageRep* held(const host::ObjectRef& object) {
        return static_cast<NSImageRep*>(host.handle(object));
    }

    Host host;
    const host::ObjectRef none = host.create("NSImageRepZNT");
};

TEST_F(RepresentationProperties, TellThePixels) {
    const auto rep = representation({plain_page(5, 3)});
    EXPECT_EQ(host.get<int>(rep, "pixelsWide"), 5);
    EXPECT_EQ(host.get<int>(rep, "pixelsHigh"), 3);
    EXPECT_EQ(host.get<int>(rep, "bitsPerSample"), 8);
    EXPECT_FALSE(host.get<bool>(rep, "hasAlpha"));
    EXPECT_EQ(host.get<std::string>(rep, "colorSpaceName"),
              [[held(rep) colorSpaceName] UTF8String]);
    EXPECT_TRUE(host.get<bool>(representation({plain_page(1, 1, {1, 2, 3, 4})}), "hasAlpha"));
}

TEST_F(RepresentationProperties, TellTheSizeInPoints) {
    TIFFPage page = plain_page(100, 50);
    page.dotsPerInch = 144;
    const auto rep = representation({page});
    EXPECT_EQ(host.get<double>(rep, "width"), 50);
    EXPECT_EQ(host.get<double>(rep, "height"), 25);
    const auto size = host.get<host::ObjectRef>(rep, "size");
    EXPECT_EQ(host.get<double>(size, "width"), 50);
    EXPECT_EQ(host.get<double>(size, "height"), 25);
    EXPECT_NE(size, host.get<host::ObjectRef>(rep, "size")) << "a new object at every reading";
}

TEST_F(RepresentationProperties, AreSetOnAPlainRepresentation) {
    NSImageRep* const plain = [[NSImageRep alloc] init];
    host.set(none, "Handle", reinterpret_cast<REALword>(plain));
    for (const char* number : {"bitsPerSample", "pixelsWide", "pixelsHigh"}) {
        host.set(none, number, REALword{12});
        EXPECT_EQ(host.get<int>(none, number), 12) << number;
    }
    for (const char* flag : {"hasAlpha", "isOpaque"})
        for (const bool value : {true, false}) {
            host.set(none, flag, value);
            EXPECT_EQ(host.get<bool>(none, flag), value) << flag;
        }
    EXPECT_FALSE([plain hasAlpha]);
    host.set(none, "colorSpaceName", "NSDeviceRGBColorSpace");
    EXPECT_STREQ([[plain colorSpaceName] UTF8String], "NSDeviceRGBColorSpace");
    host.set(none, "colorSpaceName", "");
    EXPECT_EQ([plain colorSpaceName], nil);
    EXPECT_EQ(host.get(none, "colorSpaceName").string(), nullptr);
}

TEST_F(RepresentationProperties, TheSizeIsSetInSinglePrecision) {
    const auto rep = representation({plain_page(5, 3)});
    host.call(rep, "setSize", 100.1, 0.3);
    EXPECT_EQ(host.get<double>(rep, "width"), static_cast<double>(100.1f));
    EXPECT_EQ(host.get<double>(rep, "height"), static_cast<double>(0.3f));
    host.set(rep, "size", host.get(host.create("NSImageZNT", 7.5, 3.25), "size"));
    EXPECT_EQ(host.get<double>(rep, "width"), 7.5);
    EXPECT_EQ(host.get<double>(rep, "height"), 3.25);
}

TEST_F(RepresentationProperties, TheSizeSetToNilIsZero) {
    const auto rep = representation({plain_page(5, 3)});
    host.set(rep, "size", nullptr);
    EXPECT_EQ(host.raised(), "");
    EXPECT_EQ(host.get<double>(rep, "width"), 0);
    EXPECT_EQ(host.get<double>(rep, "height"), 0);
}

TEST_F(RepresentationProperties, AreNeutralWithoutARepresentation) {
    ASSERT_EQ(host.handle(none), nullptr);
    for (const char* number : {"bitsPerSample", "pixelsWide", "pixelsHigh"}) {
        host.set(none, number, REALword{12});
        EXPECT_EQ(host.get<int>(none, number), 0) << number;
    }
    for (const char* flag : {"hasAlpha", "isOpaque"}) {
        host.set(none, flag, true);
        EXPECT_FALSE(host.get<bool>(none, flag)) << flag;
    }
    EXPECT_EQ(host.get(none, "colorSpaceName").string(), nullptr);
    EXPECT_EQ(host.get<double>(none, "width"), 0);
    EXPECT_EQ(host.get<double>(none, "height"), 0);
    host.call(none, "setSize", 3.0, 4.0);
    const auto size = host.get<host::ObjectRef>(none, "size");
    ASSERT_TRUE(size) << "an image without size gives nil; a representation 0 by 0";
    EXPECT_EQ(host.get<double>(size, "width"), 0);
    EXPECT_EQ(host.raised(), "");
}

TEST_F(RepresentationProperties, EveryClassStartsWithoutARepresentation) {
    for (const char* type : {"NSImageRepZNT", "NSBitmapImageRepZNT", "NSPDFImageRepZNT",
                             "NSEPSImageRepZNT", "NSPICTImageRepZNT"}) {
        const host::ObjectRef object = host.instance(type);
        EXPECT_EQ(host.handle(object), nullptr) << type;
        EXPECT_EQ(host.get<int>(object, "pixelsWide"), 0) << type;
    }
}

TEST_F(RepresentationProperties, TheDestructorUnregistersAndReleases) {
    NSImageRep* const rep = [[NSImageRep alloc] init];
    {
        const host::ObjectRef object = host.create("NSImageRepZNT");
        host.set(object, "Handle", reinterpret_cast<REALword>([rep retain]));
    }
    EXPECT_EQ(Host::retainCount(rep), 1);
    [rep release];
}

TEST_F(RepresentationProperties, TheEmptyConstructorDoesNothing) {
    host.call(none, "Constructor");
    EXPECT_EQ(host.handle(none), nullptr);
    EXPECT_EQ(host.raised(), "");
}

TEST_F(RepresentationProperties, CanInitWithDataAsksCocoa) {
    const auto can = [&](const host::Value& block) {
        return host.shared<bool>("NSImageRepZNT", "canInitWithData", block);
    };
    EXPECT_TRUE(can(host.memoryBlock(plain_tiff(2, 2))));
    EXPECT_FALSE(can(host.memoryBlock("this is no image")));
    EXPECT_FALSE(can(host.memoryBlock("")));
    EXPECT_FALSE(can(nullptr));
    EXPECT_EQ(host.raised(), "");
}

TEST_F(RepresentationProperties, OfABitmapTellItsLayout) {
    const auto rep = representation({plain_page(5, 3, {1, 2, 3, 255})});
    NSBitmapImageRep* const bitmap = static_cast<NSBitmapImageRep*>(held(rep));
    EXPECT_EQ(host.get<int>(rep, "bitsPerPixel"), 32);
    EXPECT_GE(host.get<int>(rep, "bytesPerRow"), 20);
    EXPECT_EQ(host.get<int>(rep, "bytesPerRow"), [bitmap bytesPerRow]);
    EXPECT_EQ(host.get<int>(rep, "bytesPerPlane"), [bitmap bytesPerRow] * 3);
    EXPECT_EQ(host.get<int>(rep, "samplesPerPixel"), 4);
    EXPECT_FALSE(host.get<bool>(rep, "isPlanar"));
    EXPECT_EQ(host.get<int>(rep, "numberOfPlanes"), 1);
    EXPECT_EQ(host.get<int>(rep, "bitmapFormat"), static_cast<int>([bitmap bitmapFormat]));
}

TEST_F(RepresentationProperties, OfAPlanarBitmapTellItsPlanes) {
    NSBitmapImageRep* const planar =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:NULL
                                                pixelsWide:6
                                                pixelsHigh:4
                                             bitsPerSample:8
                                           samplesPerPixel:3
                                                  hasAlpha:NO
                                                  isPlanar:YES
                                            colorSpaceName:NSDeviceRGBColorSpace
                                               bytesPerRow:0
                                              bitsPerPixel:0];
    const host::ObjectRef object = host.instance("NSBitmapImageRepZNT");
    host.set(object, "Handle", reinterpret_cast<REALword>(planar));
    EXPECT_TRUE(host.get<bool>(object, "isPlanar"));
    EXPECT_EQ(host.get<int>(object, "numberOfPlanes"), 3);
    EXPECT_EQ(host.get<int>(object, "bitsPerPixel"), 8);
}

TEST_F(RepresentationProperties, OfABitmapAreNeutralWithoutARepresentation) {
    const host::ObjectRef empty = host.instance("NSBitmapImageRepZNT");
    for (const char* number : {"bitsPerPixel", "bytesPerRow", "bytesPerPlane", "samplesPerPixel",
                               "numberOfPlanes", "bitmapFormat"})
        EXPECT_EQ(host.get<int>(empty, number), 0) << number;
    EXPECT_FALSE(host.get<bool>(empty, "isPlanar"));
}

} // namespace
