/// Images of icon files.

#include "files.h"

#include <Carbon/Carbon.h>

namespace appkit_test {
namespace {

using testing::ElementsAre;

ByteVector member(std::string_view type, const ByteVector& content) {
    ByteVector bytes = codecs_test::bytes_of(type);
    codecs_test::append_32(bytes, codecs_test::ByteOrder::Big,
                           static_cast<std::uint32_t>(content.size() + 8));
    codecs_test::append(bytes, content);
    return bytes;
}

class Icon : public AppKitTest {
protected:
    ~Icon() override {
        UnregisterIconRef('test', 'icon');
        if (icon_) ReleaseIconRef(icon_);
    }

    /// The image of an icon file with these members; nil for none.
    NSImage* imageOf(std::initializer_list<ByteVector> members) {
        ByteVector all;
        for (const ByteVector& one : members)
            codecs_test::append(all, one);
        const std::string path = folder_.write("test.icns", member("icns", all));
        FSRef file;
        EXPECT_EQ(noErr,
                  FSPathMakeRef(reinterpret_cast<const UInt8*>(path.c_str()), &file, nullptr));
        if (icon_) ReleaseIconRef(icon_);
        EXPECT_EQ(noErr, RegisterIconRefFromFSRef('test', 'icon', &file, &icon_));
        return [[[NSImage alloc] initWithIconRef:icon_] autorelease];
    }

private:
    codecs_test::TemporaryFolder folder_;
    IconRef icon_ = nullptr;
};

/// A plane of one value, as runs of 130 bytes, the longest there are.
ByteVector plainPlane(std::size_t count, std::uint8_t value) {
    ByteVector runs;
    for (; count >= 130; count -= 130)
        codecs_test::append(runs, {255, value});
    if (count > 0) codecs_test::append(runs, {static_cast<std::uint8_t>(count - 1)});
    runs.insert(runs.end(), count, value);
    return runs;
}

ByteVector plainColors(int side, const Pixel& pixel) {
    ByteVector runs;
    for (const int sample : {pixel.red, pixel.green, pixel.blue})
        codecs_test::append(runs, plainPlane(static_cast<std::size_t>(side * side),
                                             static_cast<std::uint8_t>(sample)));
    return runs;
}

NSBitmapImageRep* repOf(NSImage* image, NSUInteger index) {
    return [[image representations] objectAtIndex:index];
}

TEST_F(Icon, HasItsEncodedMembersBySize) {
    NSImage* image = imageOf({member("ic07", pngWithDensity(0, 0)), member("info", {1, 2, 3}),
                              member("icp4", fourColorPNG())});
    ASSERT_EQ(2U, [[image representations] count]);
    EXPECT_EQ(2, [repOf(image, 0) pixelsWide]);
    EXPECT_EQ(4, [repOf(image, 1) pixelsWide]);
}

TEST_F(Icon, HasTwoPixelsAPointInMembersForDenseScreens) {
    NSImage* image = imageOf({member("ic11", fourColorPNG()), member("icp4", fourColorPNG())});
    ASSERT_EQ(2U, [[image representations] count]);
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(2, 2), [repOf(image, 0) size]));
    EXPECT_TRUE(NSEqualSizes(NSMakeSize(1, 1), [repOf(image, 1) size]));
    EXPECT_EQ(2, [repOf(image, 1) pixelsWide]);
}

TEST_F(Icon, UnpacksRunsOfColours) {
    // The red plane is 0, 1, 2, then 253 times 9; green and blue are plain.
    ByteVector content{2, 0, 1, 2, 255, 9, 248, 9};
    codecs_test::append(content, plainPlane(256, 20));
    codecs_test::append(content, plainPlane(256, 30));
    NSBitmapImageRep* bitmap = bitmapOf(imageOf({member("is32", content)}));
    EXPECT_EQ(16, [bitmap pixelsWide]);
    EXPECT_FALSE([bitmap hasAlpha]);
    EXPECT_EQ((Pixel{0, 20, 30}), pixelAt(bitmap, 0, 0));
    EXPECT_EQ((Pixel{2, 20, 30}), pixelAt(bitmap, 2, 0));
    EXPECT_EQ((Pixel{9, 20, 30}), pixelAt(bitmap, 3, 0));
    EXPECT_EQ((Pixel{9, 20, 30}), pixelAt(bitmap, 15, 15));
}

TEST_F(Icon, TakesTheAlphaOfItsMask) {
    ByteVector alpha(1024, 255);
    alpha[1] = 64;
    NSBitmapImageRep* bitmap =
        bitmapOf(imageOf({member("l8mk", alpha), member("il32", plainColors(32, {200, 100, 50}))}));
    EXPECT_EQ(32, [bitmap pixelsWide]);
    EXPECT_TRUE([bitmap hasAlpha]);
    EXPECT_EQ(NSUInteger{NSAlphaNonpremultipliedBitmapFormat}, [bitmap bitmapFormat]);
    EXPECT_EQ((Pixel{200, 100, 50, 255}), pixelAt(bitmap, 0, 0));
    EXPECT_EQ((Pixel{200, 100, 50, 64}), pixelAt(bitmap, 1, 0));
}

TEST_F(Icon, TakesAMaskOfBitsWhereThereIsNoBetterOne) {
    ByteVector bits(64, 0);
    bits[0] = 0xFF;  // of the picture in black and white
    bits[32] = 0x40; // of the mask: the second pixel
    NSBitmapImageRep* bitmap =
        bitmapOf(imageOf({member("is32", plainColors(16, red)), member("ics#", bits)}));
    EXPECT_EQ(0, pixelAt(bitmap, 0, 0).alpha);
    EXPECT_EQ(red, pixelAt(bitmap, 1, 0));
    EXPECT_EQ(0, pixelAt(bitmap, 2, 0).alpha);
}

TEST_F(Icon, HasAllItsOldSizes) {
    ByteVector thumbnail(4, 0);
    codecs_test::append(thumbnail, plainColors(128, blue));
    NSImage* image = imageOf({member("it32", thumbnail), member("ih32", plainColors(48, green)),
                              member("is32", plainColors(16, red))});
    ASSERT_EQ(3U, [[image representations] count]);
    EXPECT_EQ(red, pixelAt(repOf(image, 0), 15, 15));
    EXPECT_EQ(green, pixelAt(repOf(image, 1), 47, 47));
    EXPECT_EQ(blue, pixelAt(repOf(image, 2), 127, 127));
}

TEST_F(Icon, TakesColoursThatAreNotPacked) {
    ByteVector content;
    for (int pixel = 0; pixel < 256; ++pixel)
        codecs_test::append(content, {0, 10, 20, static_cast<std::uint8_t>(pixel)});
    NSBitmapImageRep* bitmap = bitmapOf(imageOf({member("is32", content)}));
    EXPECT_EQ((Pixel{10, 20, 0}), pixelAt(bitmap, 0, 0));
    EXPECT_EQ((Pixel{10, 20, 255}), pixelAt(bitmap, 15, 15));
}

TEST_F(Icon, UnpacksAlphaAndColoursTogether) {
    ByteVector content = codecs_test::bytes_of("ARGB");
    codecs_test::append(content, plainPlane(256, 128));
    codecs_test::append(content, plainColors(16, {200, 100, 50}));
    NSBitmapImageRep* bitmap = bitmapOf(imageOf({member("ic04", content)}));
    EXPECT_EQ((Pixel{200, 100, 50, 128}), pixelAt(bitmap, 15, 15));
    EXPECT_EQ(2, [bitmapOf(imageOf({member("ic04", fourColorPNG())})) pixelsWide]);
}

TEST_F(Icon, PrefersAnEncodedMemberToSamplesOfItsSize) {
    const ByteVector encoded = toBytes([makeRGBA(16, 16, std::vector<Pixel>(256, green))
        representationUsingType:NSPNGFileType
                     properties:nil]);
    NSImage* image = imageOf({member("is32", plainColors(16, red)), member("icp4", encoded)});
    EXPECT_EQ(green, pixelAt(bitmapOf(image), 0, 0));
}

TEST_F(Icon, HasNoImageOfBrokenMembers) {
    const ByteVector whole = plainColors(16, red);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const ByteVector cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(nil, imageOf({member("is32", cut)})) << length;
    }
    ByteVector overrun{250, 1};
    for (int run = 0; run < 8; ++run)
        codecs_test::append(overrun, {255, 1});
    EXPECT_EQ(nil, imageOf({member("is32", overrun)}));
    EXPECT_EQ(nil, imageOf({member("it32", {0, 0, 0})}));
    EXPECT_EQ(nil, imageOf({member("ic04", codecs_test::bytes_of("ARGB"))}));
    EXPECT_EQ(nil, imageOf({member("ic04", codecs_test::bytes_of("ARG"))}));
    EXPECT_EQ(nil, imageOf({member("ic07", {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 1})}));
    EXPECT_EQ(nil, imageOf({}));
    EXPECT_EQ(nil, imageOf({codecs_test::bytes_of("is32")}));
    EXPECT_EQ(nil, imageOf({ByteVector{'i', 's', '3', '2', 0xFF, 0xFF, 0xFF, 0xFF, 1}}));
    EXPECT_EQ(nil, imageOf({ByteVector{'i', 's', '3', '2', 0, 0, 0, 0, 1}}));
}

TEST_F(Icon, NeedsAHandleThatIsOne) {
    EXPECT_EQ(nil, [[NSImage alloc] initWithIconRef:reinterpret_cast<IconRef>(0x1234)]);
    EXPECT_EQ(nil, [[NSImage alloc] initWithIconRef:nullptr]);
}

} // namespace
} // namespace appkit_test
