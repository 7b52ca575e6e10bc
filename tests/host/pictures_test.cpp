#include "support/host.h"

#include "host/objects/picture.h"
#include "host/services/exports.h"
#include "sdk/gd_image.h"

#include <gmock/gmock.h>

#include <dlfcn.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

namespace services = host::exports;

REALpictureStruct* pictureIn(const host::ObjectRef& object) {
    return static_cast<REALpictureStruct*>(object.get());
}

/// 0xRRGGBB at the place.
std::uint32_t rgb(const host::ObjectRef& picture, int x, int y) {
    return host::stateOf<host::Picture>(picture)->pixels()->pixel(x, y) & 0xFFFFFF;
}

/// A host of either kind.
class PicturesOf : public testing::TestWithParam<bool> {
protected:
    Host host{{.console = GetParam(), .bare = true}};
};
INSTANTIATE_TEST_SUITE_P(Host, PicturesOf, testing::Bool(),
                         [](const auto& test) { return test.param ? "Console" : "Desktop"; });

TEST_P(PicturesOf, StartWhite) {
    const host::ObjectRef picture = host.create("Picture", 3, 2, 32);
    EXPECT_EQ(host.get<int>(picture, "Width"), 3);
    EXPECT_EQ(host.get<int>(picture, "Height"), 2);
    EXPECT_FALSE(host.get<bool>(picture, "HasAlphaChannel"));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(rgb(picture, x, y), 0xFFFFFFU) << x << "," << y;
}

TEST_P(PicturesOf, AreRefusedWithSidesThatNoPictureHas) {
    for (const auto& [width, height] : {std::pair(0, 1), {1, 0}, {-1, 5}, {32768, 1}}) {
        host.create("Picture", width, height, 32);
        EXPECT_THAT(host.raised(), HasSubstr("OutOfBoundsException")) << width << "x" << height;
    }
    host.create("Picture", 1, 1, 8);
    EXPECT_THAT(host.raised(), HasSubstr("UnsupportedOperationException"));
}

TEST_P(PicturesOf, AreDrawnIntoByPrograms) {
    const Host::Outcome outcome = host.run(R"(
Dim p As New Picture(6, 4, 32)
Dim g As Graphics = p.Graphics
g.ForeColor = &cFF0000
g.FillRect(-1, -1, 3, 2)
g.ForeColor = &c00FF00
g.DrawRect(2, 1, 3, 3)
g.ForeColor = &c0000FF
g.DrawLine(0, 3, 5, 3)
g.Pixel(5, 0) = &c123456
p.RGBSurface.Pixel(3, 2) = &cABCDEF
g.Pixel(6, 0) = &c000000
For y As Integer = 0 To 3
  Dim row As String
  For x As Integer = 0 To 5
    Dim pixel As Variant = p.RGBSurface.Pixel(x, y)
    row = row + " " + Hex(pixel.Int32Value)
  Next
  Print row
Next
)");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, " FF0000 FF0000 FFFFFF FFFFFF FFFFFF 123456\n"
                              " FFFFFF FFFFFF FF00 FF00 FF00 FFFFFF\n"
                              " FFFFFF FFFFFF FF00 ABCDEF FF00 FFFFFF\n"
                              " FF FF FF FF FF FF\n");
}

TEST_P(PicturesOf, HaveOneForeColor) {
    const Host::Outcome outcome = host.run(R"(
Dim p As New Picture(2, 1, 32)
p.Graphics.ForeColor = &c804020
p.Graphics.FillRect(0, 0, 1, 1)
Dim pixel As Variant = p.Graphics.Pixel(0, 0)
Print Hex(pixel.Int32Value)
)");
    EXPECT_EQ(outcome.output, "804020\n") << outcome.error;
}

TEST_P(PicturesOf, FillOvalsWithinTheirBounds) {
    const host::ObjectRef picture = host.create("Picture", 4, 4, 32);
    const host::ObjectRef graphics = host.get<host::ObjectRef>(picture, "Graphics");
    host.call(graphics, "FillOval", 0, 0, 4, 4);
    for (const auto& [x, y] : {std::pair(0, 0), {3, 0}, {0, 3}, {3, 3}})
        EXPECT_EQ(rgb(picture, x, y), 0xFFFFFFU) << x << "," << y;
    for (const auto& [x, y] : {std::pair(1, 0), {0, 1}, {3, 2}, {2, 3}, {1, 1}})
        EXPECT_EQ(rgb(picture, x, y), 0U) << x << "," << y;
}

TEST_P(PicturesOf, DrawEachOtherWithMasks) {
    const host::ObjectRef source = host.create("Picture", 2, 1, 32);
    const host::ObjectRef sourceGraphics = host.get<host::ObjectRef>(source, "Graphics");
    host.set(sourceGraphics, "ForeColor", host::Color{0x804020});
    host.call(sourceGraphics, "FillRect", 0, 0, 2, 1);
    const host::ObjectRef mask = host.get<host::ObjectRef>(source, "Mask");
    EXPECT_EQ(rgb(mask, 0, 0), 0U) << "a new mask shows all of the Picture";
    host.assign(host.get<host::ObjectRef>(mask, "Graphics"), "Pixel", 1, 0, host::Color{0xFFFFFF});

    const host::ObjectRef target = host.create("Picture", 4, 2, 32);
    const host::ObjectRef graphics = host.get<host::ObjectRef>(target, "Graphics");
    host.call(graphics, "DrawPicture", source, 1, 1);
    EXPECT_EQ(rgb(target, 1, 1), 0x804020U);
    EXPECT_EQ(rgb(target, 2, 1), 0xFFFFFFU) << "masked";
    EXPECT_EQ(rgb(target, 1, 0), 0xFFFFFFU);
}

TEST_P(PicturesOf, AreScaledIntoEachOther) {
    const host::ObjectRef source = host.create("Picture", 4, 2, 32);
    const host::ObjectRef sourceGraphics = host.get<host::ObjectRef>(source, "Graphics");
    host.call(sourceGraphics, "FillRect", 0, 0, 2, 2); // black on the left
    const host::ObjectRef target = host.create("Picture", 2, 1, 32);
    host.call(host.get<host::ObjectRef>(target, "Graphics"), "DrawPicture", source, 0, 0, 2, 1, 0,
              0, 4, 2);
    EXPECT_EQ(rgb(target, 0, 0), 0U);
    EXPECT_EQ(rgb(target, 1, 0), 0xFFFFFFU);
    host.call(host.get<host::ObjectRef>(target, "Graphics"), "DrawPicture", source, 0, 0, 1, 1, 0,
              0, 4, 2);
    EXPECT_EQ(rgb(target, 0, 0), 0x808080U) << "half black, half white";
    const host::ObjectRef far = host.create("Picture", 2, 2, 32);
    host.call(host.get<host::ObjectRef>(far, "Graphics"), "DrawPicture", source, -1000000, -1000000,
              1000001, 1000001, 0, 0, 4, 2);
    EXPECT_EQ(rgb(far, 0, 0), 0xFFFFFFU) << "the lower right corner of the source";
}

TEST_P(PicturesOf, KeepNoMoreReferencesThanTheyNeed) {
    const host::ObjectRef picture = host.create("Picture", 2, 2, 32);
    { const host::ObjectRef graphics = host.get<host::ObjectRef>(picture, "Graphics"); }
    EXPECT_EQ(host.references(picture), 1);
    const host::ObjectRef mask = host::maskOf(picture, true);
    EXPECT_EQ(host.references(mask), 2);
}

TEST(DesktopPictures, AreBitmapContextsForPlugins) {
    Host host{{.bare = true}};
    const host::ObjectRef picture = host.create("Picture", 3, 2, 32);
    REALpictureDescription description = {};
    ASSERT_TRUE(services::lockPictureDescription(pictureIn(picture), &description,
                                                 REALpictureCGBitmapContext));
    EXPECT_EQ(description.type, REALpictureCGBitmapContext);
    EXPECT_EQ(description.width, 3);
    EXPECT_EQ(description.height, 2);
    auto* const context = static_cast<CGContextRef>(description.data);
    EXPECT_EQ(CGBitmapContextGetAlphaInfo(context), kCGImageAlphaNoneSkipFirst);
    host::stateOf<host::Picture>(picture)->pixels()->setPixel(2, 1, 0xFF123456);
    const auto* const bytes = static_cast<const std::uint8_t*>(CGBitmapContextGetData(context)) +
                              CGBitmapContextGetBytesPerRow(context) + 8;
    EXPECT_THAT(std::vector(bytes + 1, bytes + 4), ElementsAre(0x12, 0x34, 0x56));
    services::unlockPictureDescription(pictureIn(picture));

    EXPECT_FALSE(
        services::lockPictureDescription(pictureIn(picture), &description, REALpictureGDImage));
    EXPECT_TRUE(services::lockPictureDescriptionOlder(pictureIn(picture), &description));
    EXPECT_EQ(description.type, REALpictureCGBitmapContext);
    services::unlockPictureDescription(pictureIn(picture));
}

TEST(DesktopPictures, HaveTheLayoutThatTheHostIsStartedWith) {
    Host host{{.bare = true, .pictureLayout = kCGImageAlphaNoneSkipLast}};
    const host::ObjectRef picture = host.create("Picture", 1, 1, 32);
    REALpictureDescription description = {};
    services::lockPictureDescription(pictureIn(picture), &description, REALpictureCGBitmapContext);
    EXPECT_EQ(CGBitmapContextGetAlphaInfo(static_cast<CGContextRef>(description.data)),
              kCGImageAlphaNoneSkipLast);
    services::unlockPictureDescription(pictureIn(picture));
    host::stateOf<host::Picture>(picture)->pixels()->setPixel(0, 0, 0xFF123456);
    EXPECT_EQ(rgb(picture, 0, 0), 0x123456U);
}

TEST(DesktopPictures, WithAnAlphaChannelStartTransparentAndHaveNoMask) {
    Host host{{.bare = true}};
    const host::ObjectRef picture = host.create("Picture", 2, 1);
    EXPECT_TRUE(host.get<bool>(picture, "HasAlphaChannel"));
    const auto* const pixels = host::stateOf<host::Picture>(picture)->pixels();
    EXPECT_EQ(pixels->pixel(0, 0), 0U);
    host.call(host.get<host::ObjectRef>(picture, "Graphics"), "FillRect", 0, 0, 1, 1);
    EXPECT_EQ(pixels->pixel(0, 0), 0xFF000000U);
    EXPECT_FALSE(host.get<host::ObjectRef>(picture, "Mask"));
}

TEST(DesktopPictures, ThatAreVectorsAreDrawnButNotLocked) {
    Host host{{.bare = true}};
    const host::ObjectRef picture = host.create("Picture", 2, 1, 32);
    host.call(host.get<host::ObjectRef>(picture, "Graphics"), "FillRect", 0, 0, 1, 1);
    host::stateOf<host::Picture>(picture)->isVector = true;
    REALpictureDescription description = {};
    EXPECT_FALSE(services::lockPictureDescription(pictureIn(picture), &description,
                                                  REALpictureCGBitmapContext));
    EXPECT_FALSE(services::lockPictureDescriptionOlder(pictureIn(picture), &description));
    const host::ObjectRef target = host.create("Picture", 2, 1, 32);
    host.call(host.get<host::ObjectRef>(target, "Graphics"), "DrawPicture", picture, 0, 0);
    EXPECT_EQ(rgb(target, 0, 0), 0U);
    EXPECT_EQ(rgb(target, 1, 0), 0xFFFFFFU);
}

TEST(DesktopPictures, GiveAnImageThatIsAsOldAsTheirCache) {
    Host host{{.bare = true}};
    const host::ObjectRef picture = host.create("Picture", 1, 1, 32);
    const auto red = [&]() -> int {
        CGImageRef const image = services::copyPictureCGImage(pictureIn(picture));
        CGDataProviderRef const provider = CGImageGetDataProvider(image);
        CFDataRef const bytes = CGDataProviderCopyData(provider);
        const int value = CFDataGetBytePtr(bytes)[1];
        CFRelease(bytes);
        CGImageRelease(image);
        return value;
    };
    EXPECT_EQ(red(), 255);
    host::stateOf<host::Picture>(picture)->pixels()->setPixel(0, 0, 0xFF000000);
    EXPECT_EQ(red(), 255) << "what a plug-in wrote shows when it says so";
    services::pictureClearCache(pictureIn(picture));
    EXPECT_EQ(red(), 0);
    host.call(host.get<host::ObjectRef>(picture, "Graphics"), "DrawPicture",
              host.create("Picture", 1, 1, 32), 0, 0);
    EXPECT_EQ(red(), 255) << "the host's own drawing shows at once";
}

TEST(DesktopPictures, GiveAnImageWithTheirMaskAsAlpha) {
    Host host{{.bare = true}};
    const host::ObjectRef picture = host.create("Picture", 2, 1, 32);
    const host::ObjectRef mask = host::maskOf(picture, true);
    host::stateOf<host::Picture>(mask)->pixels()->setPixel(1, 0, 0xFFFFFFFF);
    services::pictureClearCache(pictureIn(picture));
    CGImageRef const image = services::copyPictureCGImage(pictureIn(picture));
    EXPECT_EQ(CGImageGetAlphaInfo(image), kCGImageAlphaPremultipliedLast);
    CFDataRef const bytes = CGDataProviderCopyData(CGImageGetDataProvider(image));
    const UInt8* const start = CFDataGetBytePtr(bytes);
    EXPECT_THAT(std::vector(start, start + 8), ElementsAre(255, 255, 255, 255, 0, 0, 0, 0));
    CFRelease(bytes);
    CGImageRelease(image);
}

TEST(ConsolePictures, AreTrueColourImagesOfTheLibrary) {
    Host host{{.console = true, .bare = true}};
    const host::ObjectRef picture = host.create("Picture", 3, 2, 32);
    REALpictureDescription description = {};
    EXPECT_FALSE(services::lockPictureDescription(pictureIn(picture), &description,
                                                  REALpictureCGBitmapContext));
    ASSERT_TRUE(
        services::lockPictureDescription(pictureIn(picture), &description, REALpictureGDImage));
    auto* const image = static_cast<gdImageStruct*>(description.data);
    EXPECT_EQ(image->pixels, nullptr);
    EXPECT_EQ(image->sx, 3);
    EXPECT_EQ(image->sy, 2);
    EXPECT_NE(image->trueColor, 0);

    void* const library = dlopen("libgd.so.3", RTLD_NOW);
    ASSERT_NE(library, nullptr);
    auto* const setPixel = reinterpret_cast<void (*)(gdImageStruct*, int, int, int)>(
        dlsym(library, "gdImageSetPixel"));
    setPixel(image, 2, 1, 0x123456);
    EXPECT_EQ(image->tpixels[1][2], 0x123456) << "the record is laid out as the library's";
    EXPECT_EQ(rgb(picture, 2, 1), 0x123456U);
    services::unlockPictureDescription(pictureIn(picture));
    EXPECT_EQ(services::copyPictureCGImage(pictureIn(picture)), nullptr);
    dlclose(library);
}

TEST(PictureLocks, MustBalance) {
    Host host{{.bare = true}};
    host::ObjectRef picture = host.create("Picture", 1, 1, 32);
    services::unlockPictureDescription(pictureIn(picture));
    EXPECT_THAT(host.takeReports(), testing::Contains(HasSubstr("is not locked")));
    REALpictureDescription description = {};
    services::lockPictureDescriptionOlder(pictureIn(picture), &description);
    picture = nullptr;
    EXPECT_THAT(host.takeReports(), testing::Contains(HasSubstr("with its description locked")));
}

TEST(PictureLocks, ThatFailAreOwedInOlderHosts) {
    Host host{{.version = 2011.04, .bare = true}};
    const host::ObjectRef picture = host.create("Picture", 1, 1, 32);
    REALpictureDescription description = {};
    EXPECT_FALSE(
        services::lockPictureDescription(pictureIn(picture), &description, REALpictureGDImage));
    services::unlockPictureDescription(pictureIn(picture));
    EXPECT_THAT(host.runtime().misuse(), testing::IsEmpty());
}

TEST(PictureServices, RefuseWhatIsNoPicture) {
    Host host{{.bare = true}};
    const host::ObjectRef other = host.memoryBlock("x");
    auto* const wrong = static_cast<REALpictureStruct*>(other.get());
    REALpictureDescription description = {};
    EXPECT_FALSE(services::lockPictureDescription(wrong, &description, 8));
    EXPECT_EQ(services::getPictureGraphics(wrong), nullptr);
    EXPECT_EQ(services::getPictureMask(wrong, true), nullptr);
    EXPECT_EQ(services::copyPictureCGImage(nullptr), nullptr);
    EXPECT_EQ(services::newPicture(1, 1, 24), nullptr);
    EXPECT_EQ(host.runtime().misuse().size(), 5u);
    host.runtime().forgetMisuse();
    EXPECT_EQ(services::newPicture(0, 1, 32), nullptr);
}

} // namespace
