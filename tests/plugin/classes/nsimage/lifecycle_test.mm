#include "plugin/classes/support/encoded.h"
#include "plugin/classes/support/images.h"

#include <filesystem>
#include <fstream>

namespace {

const std::string noImage = "this is no image";

class ImageLifecycle : public testing::Test {
protected:
    ~ImageLifecycle() override { std::filesystem::remove(path); }

    /// A file with a 4 by 3 image.
    std::string image_file() {
        std::ofstream(path, std::ios::binary) << plain_tiff(4, 3);
        return path;
    }
    /// Calls an init method and looks at what the object then holds: "3x2", or "none".
    std::string reading(const host::ObjectRef& image, std::string_view method, auto... arguments) {
        const bool succeeded = host.call<bool>(image, method, arguments...);
        NSImage* const held = image_in(host, image);
        EXPECT_EQ(succeeded, held != nil);
        if (!held) return "none";
        EXPECT_EQ(Host::wrapper(held), image.get());
        EXPECT_EQ(Host::retainCount(held), 1);
        return std::to_string(static_cast<int>([held size].width)) + "x" +
               std::to_string(static_cast<int>([held size].height));
    }

    const std::string path =
        std::filesystem::temp_directory_path() / ("lifecycle-" + std::to_string(getpid()) + ".tif");
    Host host;
};

TEST_F(ImageLifecycle, AnInstanceHasNoImageBeforeItsConstructor) {
    EXPECT_EQ(host.handle(host.instance("NSImageZNT")), nullptr);
}

TEST_F(ImageLifecycle, TheEmptyConstructorMakesAnEmptyImageAndRegistersIt) {
    const host::ObjectRef image = host.createBy("NSImageZNT", "Constructor");
    NSImage* const held = image_in(host, image);
    ASSERT_NE(held, nil);
    EXPECT_EQ(Host::retainCount(held), 1);
    EXPECT_EQ(Host::wrapper(held), image.get());
    EXPECT_EQ([held size].width, 0);
}

TEST_F(ImageLifecycle, TheEmptyConstructorRefusesASecondTimeAndKeepsTheFirstImage) {
    const host::ObjectRef image = host.createBy("NSImageZNT", "Constructor");
    const void* const first = host.handle(image);
    host.call(image, "Constructor");
    EXPECT_EQ(host.raised(), "UnsupportedOperationException: Constructor called too often. Object "
                             "is already initialized.");
    EXPECT_EQ(host.handle(image), first);
}

TEST_F(ImageLifecycle, TheConstructorsWithArgumentsMakeTheImage) {
    const auto size = [&](const host::ObjectRef& image) {
        return std::pair(host.get<double>(image, "width"), host.get<double>(image, "height"));
    };
    EXPECT_EQ(size(host.create("NSImageZNT", host.memoryBlock(plain_tiff(3, 2)))),
              std::pair(3.0, 2.0));
    EXPECT_EQ(size(host.create("NSImageZNT", 100.0, 50.0)), std::pair(100.0, 50.0));
    EXPECT_EQ(size(host.create("NSImageZNT", host.folderItem(image_file()))), std::pair(4.0, 3.0));
}

TEST_F(ImageLifecycle, TheConstructorsWithArgumentsReplaceAnImage) {
    const host::ObjectRef image = host.create("NSImageZNT", 100.0, 50.0);
    NSImage* const first = [image_in(host, image) retain];
    host.call(image, "Constructor(data as memoryblock)", host.memoryBlock(plain_tiff(3, 2)));
    EXPECT_EQ(host.raised(), "");
    EXPECT_EQ(host.get<double>(image, "width"), 3);
    EXPECT_EQ(Host::wrapper(first), nullptr);
    EXPECT_EQ(Host::retainCount(first), 1);
    [first release];
}

TEST_F(ImageLifecycle, TheConstructorsWithArgumentsLeaveNoImageForBadInput) {
    EXPECT_EQ(host.handle(host.create("NSImageZNT", host.memoryBlock(noImage))), nullptr);
    EXPECT_EQ(host.handle(host.createBy("NSImageZNT", "Constructor(data as memoryblock)", nullptr)),
              nullptr);
    EXPECT_EQ(host.handle(host.createBy("NSImageZNT", "Constructor(file as folderitem)", nullptr)),
              nullptr);
    EXPECT_EQ(host.raised(), "");
}

TEST_F(ImageLifecycle, TheInitMethodsReadWhatTheyAreGiven) {
    const host::ObjectRef image = host.instance("NSImageZNT");
    const host::ObjectRef data = host.memoryBlock(plain_tiff(3, 2));
    EXPECT_EQ(reading(image, "initWithData", data), "3x2");
    EXPECT_EQ(reading(image, "initWithDataIgnoringOrientation", data), "3x2");
    EXPECT_EQ(reading(image, "initWithSize", 7.0, 5.0), "7x5");
    EXPECT_EQ(reading(image, "initWithContentsOfURL", host.folderItem(image_file())), "4x3");
    EXPECT_EQ(reading(image, "initWithContentsOfURL", "file://" + image_file()), "4x3");
}

TEST_F(ImageLifecycle, TheInitMethodsLeaveNoImageForBadInputEvenWhereThereWasOne) {
    struct Failure {
        const char* method;
        host::Value argument;
    };
    const Failure failures[] = {
        {"initWithData(data as memoryblock) as boolean", host.memoryBlock(noImage)},
        {"initWithData(data as memoryblock) as boolean", host.memoryBlock("")},
        {"initWithData(data as memoryblock) as boolean", nullptr},
        {"initWithDataIgnoringOrientation(data as memoryblock) as boolean",
         host.memoryBlock(noImage)},
        {"initWithDataIgnoringOrientation(data as memoryblock) as boolean", nullptr},
        {"initWithContentsOfURL(file as folderitem) as boolean", nullptr},
        {"initWithContentsOfURL(file as folderitem) as boolean",
         host.folderItem("/no/such/file.tif")},
        {"initWithContentsOfURL(url as string) as boolean", ""},
        {"initWithContentsOfURL(url as string) as boolean", "no url at all <>"},
        {"initWithContentsOfURL(url as string) as boolean", "file:///no/such/file.tif"},
        {"initWithIconRef(IconHandle as integer) as boolean", REALword{0}},
        {"initWithIconRef(IconHandle as integer) as boolean", REALword{12345}},
    };
    for (const Failure& failure : failures) {
        SCOPED_TRACE(failure.method);
        const host::ObjectRef image = host.create("NSImageZNT", 2.0, 2.0);
        NSImage* const first = [image_in(host, image) retain];
        EXPECT_EQ(reading(image, failure.method, failure.argument), "none");
        EXPECT_EQ(host.raised(), "");
        EXPECT_EQ(Host::wrapper(first), nullptr);
        EXPECT_EQ(Host::retainCount(first), 1);
        [first release];
    }
}

TEST_F(ImageLifecycle, OnlyIgnoringTheOrientationLeavesATurnedPhotoLyingDown) {
    const host::ObjectRef photo = host.memoryBlock(oriented_jpeg(6, 4, 6));
    const host::ObjectRef image = host.instance("NSImageZNT");
    EXPECT_EQ(reading(image, "initWithData", photo), "4x6");
    EXPECT_EQ(reading(image, "initWithDataIgnoringOrientation", photo), "6x4");
}

TEST_F(ImageLifecycle, InitWithSizeNarrowsToSinglePrecision) {
    const host::ObjectRef image = host.create("NSImageZNT", 100.1, 50.7);
    EXPECT_EQ([image_in(host, image) size].width, 100.1f);
    EXPECT_EQ([image_in(host, image) size].height, 50.7f);
}

TEST_F(ImageLifecycle, InitWithPasteboardTakesWhatTheGeneralPasteboardHolds) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    NSPasteboard* const pasteboard = [NSPasteboard generalPasteboard];
    const host::ObjectRef image = host.instance("NSImageZNT");
    [pasteboard declareTypes:[NSArray array] owner:nil];
    EXPECT_EQ(reading(image, "initWithPasteboard"), "none");

    const std::string data = plain_tiff(5, 4);
    [pasteboard declareTypes:[NSArray arrayWithObject:NSTIFFPboardType] owner:nil];
    [pasteboard setData:[NSData dataWithBytes:data.data() length:data.size()]
                forType:NSTIFFPboardType];
    EXPECT_EQ(reading(image, "initWithPasteboard"), "5x4");
    [pool release];
}

TEST_F(ImageLifecycle, TheDestructorUnregistersAndReleases) {
    NSImage* held = nil;
    {
        const host::ObjectRef image = host.create("NSImageZNT", 2.0, 2.0);
        held = [image_in(host, image) retain];
        EXPECT_EQ(Host::wrapperCount(), 1);
    }
    EXPECT_EQ(Host::wrapperCount(), 0);
    EXPECT_EQ(Host::retainCount(held), 1);
    [held release];
    EXPECT_EQ(host.instances("NSImageZNT"), 0u);
}

TEST_F(ImageLifecycle, SetNameNamesTheImage) {
    const host::ObjectRef image = host.create("NSImageZNT", 2.0, 2.0);
    EXPECT_TRUE(host.call<bool>(image, "setName", "gr\xC3\xBCn"));
    EXPECT_EQ(host.get<std::string>(image, "Name"), "gr\xC3\xBCn");
    const host::ObjectRef other = host.create("NSImageZNT", 2.0, 2.0);
    EXPECT_FALSE(host.call<bool>(other, "setName", "gr\xC3\xBCn")) << "the name is taken";
    EXPECT_EQ(host.get<std::string>(other, "Name"), "");
    host.call(image, "setName", "");
    EXPECT_EQ(host.get<std::string>(image, "Name"), "");
}

TEST_F(ImageLifecycle, SetNameAndSetSizeDoNothingWithoutAnImage) {
    const host::ObjectRef image = host.instance("NSImageZNT");
    EXPECT_FALSE(host.call<bool>(image, "setName", "nobody"));
    host.call(image, "setSize", 3.0, 4.0);
    EXPECT_EQ(host.raised(), "");
    EXPECT_EQ(host.handle(image), nullptr);
}

TEST_F(ImageLifecycle, SetSizeNarrowsToSinglePrecision) {
    const host::ObjectRef image = host.create("NSImageZNT", 2.0, 2.0);
    host.call(image, "setSize", 100.1, 0.3);
    EXPECT_EQ([image_in(host, image) size].width, 100.1f);
    EXPECT_EQ([image_in(host, image) size].height, 0.3f);
}

TEST(ImageLifecycleWithoutBase, WorksWithoutTheSharedDictionary) {
    Host host{{.withoutBase = true}};
    const host::ObjectRef image = host.create("NSImageZNT", 2.0, 2.0);
    NSImage* const held = [image_in(host, image) retain];
    EXPECT_EQ(Host::wrapper(held), nullptr);
    EXPECT_TRUE(host.call<bool>(image, "initWithSize", 3.0, 3.0));
    EXPECT_EQ(Host::retainCount(held), 1);
    [held release];
}

} // namespace
