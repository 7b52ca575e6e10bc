#include "plugin/picture/pictures.h"

#include "host/services/exports.h"
#include "plugin/probe/probe_host.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <dlfcn.h>

using testing::ElementsAre;

namespace {

/// What bitmap contexts claim to be laid out as; 0 for the truth. Hosts can have Pictures in
/// layouts that nothing draws into.
CGImageAlphaInfo claimedAlphaInfo = kCGImageAlphaNone;

} // namespace

/// Stands before the framework's own.
extern "C" __attribute__((visibility("default"))) CGImageAlphaInfo
CGBitmapContextGetAlphaInfo(CGContextRef context) {
    if (claimedAlphaInfo != kCGImageAlphaNone) return claimedAlphaInfo;
    static auto* const own = reinterpret_cast<CGImageAlphaInfo (*)(CGContextRef)>(
        dlsym(RTLD_NEXT, "CGBitmapContextGetAlphaInfo"));
    return own(context);
}

namespace {

class Access {
public:
    explicit Access(HostOptions options = {})
        : host(with_probe(std::move(options))) {}

    std::string edit(const host::ObjectRef& picture, bool reading, bool writing) {
        return host.shared<std::string>("PictureProbe", "Edit", picture, reading, writing);
    }
    std::string read(const host::ObjectRef& picture) { return edit(picture, true, false); }
    std::string write(const host::ObjectRef& picture) { return edit(picture, false, true); }
    bool own_copy(const host::ObjectRef& dest, const host::ObjectRef& source, int w, int h, int sw,
                  int sh) {
        return host.shared<bool>("PictureProbe", "OwnCopy", dest, source, w, h, sw, sh);
    }
    bool draw(const host::ObjectRef& dest, const host::ObjectRef& source, int w, int h) {
        return host.shared<bool>("PictureProbe", "Draw", dest, source, w, h);
    }

    Host host;
};

TEST(PictureEditors, TellWhatTheyLocked) {
    Access access({.pictureLayout = kCGImageAlphaNoneSkipLast});
    const host::ObjectRef picture = picture_of(access.host, 5, 3, colour_at);
    EXPECT_EQ(access.read(picture), "format 5, 5 x 3");
    EXPECT_EQ(access.write(picture), "format 5, 5 x 3");
    EXPECT_EQ(access.host.calls("REALPictureClearCache"), 1) << "writers only";
    EXPECT_EQ(access.host.references(picture), 1);
    EXPECT_EQ(state_of(picture).locks, 0);
}

TEST(PictureEditors, TellTheLayoutsOfAConsole) {
    Access access({.console = true});
    EXPECT_EQ(access.read(picture_of(access.host, 5, 3, colour_at)), "format 8, 5 x 3");
}

class PictureEditorsOf : public testing::TestWithParam<std::tuple<int, bool>> {};
INSTANTIATE_TEST_SUITE_P(Layout, PictureEditorsOf,
                         testing::Combine(testing::Range(0, 8), testing::Bool()));

/// With an alpha channel only the premultiplied layouts are taken, without one all that have 32
/// bits. By design the others stay locked.
TEST_P(PictureEditorsOf, TakeTheLayoutsThatTheyCanRead) {
    const auto& [layout, hasAlpha] = GetParam();
    Access access;
    const host::ObjectRef picture =
        hasAlpha ? access.host.create("Picture", 2, 1) : access.host.create("Picture", 2, 1, 32);
    claimedAlphaInfo = static_cast<CGImageAlphaInfo>(layout == 0 ? 8 : layout);
    const bool isTaken = layout >= 1 && layout <= (hasAlpha ? 2 : 6);
    const std::string expected =
        "format " + std::to_string(layout) + ", 2 x 1" + (hasAlpha ? ", alpha" : "");
    EXPECT_EQ(access.read(picture), isTaken ? expected : "none");
    EXPECT_EQ(state_of(picture).locks, isTaken ? 0 : 1);
    state_of(picture).locks = 0;
}

class PicturesClaimedToBe : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Layout, PicturesClaimedToBe,
                         testing::Values(kCGImageAlphaLast, kCGImageAlphaFirst));

/// Colours are read as they are stored, whatever the alpha says.
TEST_P(PicturesClaimedToBe, Straight) {
    const bool isFirst = GetParam() == kCGImageAlphaFirst;
    Access access({.systemVersion = "10.5", .pictureLayout = isFirst ? 6 : 5});
    const host::ObjectRef picture = picture_of(access.host, 5, 3, colour_at);
    const host::ObjectRef mask = picture_of(access.host, 5, 3, gray_at);
    claimedAlphaInfo = static_cast<CGImageAlphaInfo>(GetParam());
    const host::ObjectRef image = access.host.create("NSImageZNT", picture, nullptr);
    const host::ObjectRef masked = access.host.create("NSImageZNT", picture, mask);
    claimedAlphaInfo = kCGImageAlphaNone;
    EXPECT_EQ(rendered(image_in(access.host, image)), pattern(5, 3, colour_at));
    const Pixels expected = pattern(5, 3, [](int x, int y) {
        const std::uint32_t alpha = 255 - (gray_at(x, y) & 0xFF);
        const auto scaled = [&](int shift) {
            return (colour_at(x, y) >> shift & 0xFF) * alpha / 255 << shift;
        };
        return alpha << 24 | scaled(16) | scaled(8) | scaled(0);
    });
    EXPECT_EQ(rendered(image_in(access.host, masked)), expected);
}

TEST(PictureEditors, GiveBackWhatTheyHeldForNothing) {
    Access access;
    const host::ObjectRef first = picture_of(access.host, 2, 1, colour_at);
    EXPECT_FALSE(access.host.shared<bool>("PictureProbe", "EditAgain", first, nullptr));
    EXPECT_EQ(access.host.references(first), 1);
    EXPECT_EQ(state_of(first).locks, 0);
    EXPECT_EQ(access.host.calls("REALPictureClearCache"), 1);
}

TEST(PictureEditors, GiveBackWhatTheyHeldForAnother) {
    Access access;
    const host::ObjectRef first = picture_of(access.host, 2, 1, colour_at);
    const host::ObjectRef second = picture_of(access.host, 2, 1, colour_at);
    EXPECT_TRUE(access.host.shared<bool>("PictureProbe", "EditAgain", first, second));
    for (const host::ObjectRef* const picture : {&first, &second}) {
        EXPECT_EQ(access.host.references(*picture), 1);
        EXPECT_EQ(state_of(*picture).locks, 0);
    }
}

TEST(VectorPictures, AreReadFromACopyAndNotWritten) {
    Access access;
    const host::ObjectRef picture = picture_of(access.host, 5, 3, colour_at);
    state_of(picture).isVector = true;
    EXPECT_EQ(access.read(picture), "format 6, 5 x 3, a copy");
    EXPECT_EQ(access.write(picture), "none");
    EXPECT_EQ(access.edit(picture, true, true), "none");
    EXPECT_EQ(access.host.instances("Picture"), 1u) << "the copy is gone";
}

TEST(VectorPictures, WithAnAlphaChannelAreNotRead) {
    Access access;
    const host::ObjectRef picture = access.host.create("Picture", 2, 1);
    state_of(picture).isVector = true;
    EXPECT_EQ(access.read(picture), "none");
    EXPECT_EQ(access.host.calls("newPicture"), 0);
}

std::uint8_t tell_no_size(REALobjectStruct*, const char*, std::int32_t* value) {
    *value = 0;
    return 1;
}

TEST(VectorPictures, WithoutASizeAreNotCopied) {
    Access access;
    const host::ObjectRef picture = picture_of(access.host, 2, 1, colour_at);
    state_of(picture).isVector = true;
    access.host.replace(REALservices::GetPropValueInt32, tell_no_size);
    EXPECT_EQ(access.read(picture), "none");
    EXPECT_EQ(access.host.calls("newPicture"), 0);
}

TEST(VectorPictures, OfOlderHostsAreUnlockedThoughTheyCouldNotBeLocked) {
    Access access({.version = 2011.04});
    const host::ObjectRef picture = picture_of(access.host, 2, 1, colour_at);
    state_of(picture).isVector = true;
    EXPECT_EQ(access.read(picture), "format 6, 2 x 1, a copy");
    EXPECT_EQ(state_of(picture).locks, 0);
}

std::vector<std::string> askedClasses;
REALclassRef know_consoles(const char* name) {
    askedClasses.emplace_back(name);
    static int known;
    return std::string_view(name) == "ConsoleApplication" ? reinterpret_cast<REALclassRef>(&known)
                                                          : nullptr;
}

TEST(HostKinds, AreFoundOnceByTheClassOfTheApplication) {
    Access access({.console = true});
    const host::ObjectRef picture = picture_of(access.host, 2, 1, colour_at);
    access.host.replace(REALservices::GetClassRef, know_consoles);
    EXPECT_EQ(access.read(picture), "format 8, 2 x 1");
    EXPECT_EQ(access.read(picture), "format 8, 2 x 1");
    EXPECT_THAT(askedClasses, ElementsAre("Application", "WebApplication", "ConsoleApplication"));
    EXPECT_EQ(access.host.calls("REALLockPictureDescription"), 2)
        << "no bitmap context is asked for in a console";
}

REALclassRef know_nothing(const char*) { return nullptr; }

TEST(HostKinds, AreFoundByWhatCanBeLockedWhereNoClassTells) {
    Access access({.console = true});
    const host::ObjectRef picture = picture_of(access.host, 2, 1, colour_at);
    access.host.replace(REALservices::GetClassRef, know_nothing);
    EXPECT_EQ(access.write(picture), "format 8, 2 x 1");
}

TEST(HostKinds, ThatAreDesktopsHaveNoGDImages) {
    Access access;
    const host::ObjectRef picture = picture_of(access.host, 2, 1, colour_at);
    EXPECT_EQ(access.read(picture), "format 6, 2 x 1");
    access.host.fail(REALservices::LockPictureDescription);
    EXPECT_EQ(access.write(picture), "none");
    EXPECT_EQ(access.host.calls("REALLockPictureDescription"), 2) << "no gd image is asked for";
}

TEST(OwnCopies, AreOfGDImagesOfOneSize) {
    Access access({.console = true});
    const host::ObjectRef source = picture_of(access.host, 5, 3, colour_at);
    const host::ObjectRef dest = access.host.create("Picture", 5, 3, 32);
    EXPECT_TRUE(access.own_copy(dest, source, 5, 3, 5, 3));
    EXPECT_EQ(pixels_of(dest), pattern(5, 3, colour_at));
    EXPECT_EQ(access.host.calls("REALPictureClearCache"), 1);
    for (const host::ObjectRef& picture : {source, dest})
        EXPECT_EQ(state_of(picture).locks, 0);
}

TEST(OwnCopies, DoNotScaleAndThenLockNothing) {
    Access access({.console = true});
    const host::ObjectRef picture = picture_of(access.host, 5, 3, colour_at);
    EXPECT_FALSE(access.own_copy(picture, picture, 5, 3, 4, 3));
    EXPECT_FALSE(access.own_copy(picture, picture, 5, 3, 5, 2));
    EXPECT_FALSE(access.own_copy(nullptr, picture, 5, 3, 5, 3));
    EXPECT_FALSE(access.own_copy(picture, nullptr, 5, 3, 5, 3));
    EXPECT_EQ(access.host.calls("REALLockPictureDescription"), 0);
    EXPECT_EQ(access.host.calls("REALPictureClearCache"), 0);
}

TEST(OwnCopies, OfAnotherSizeCopyNothingAndClearTheCache) {
    Access access({.console = true});
    const host::ObjectRef source = picture_of(access.host, 5, 3, colour_at);
    const host::ObjectRef dest = access.host.create("Picture", 5, 4, 32);
    EXPECT_FALSE(access.own_copy(dest, source, 5, 3, 5, 3));
    EXPECT_EQ(access.host.calls("REALPictureClearCache"), 1);
}

TEST(OwnCopies, AreNotMadeOnADesktop) {
    Access access({.version = 2011.04});
    const host::ObjectRef source = picture_of(access.host, 2, 1, colour_at);
    const host::ObjectRef dest = access.host.create("Picture", 2, 1, 32);
    EXPECT_FALSE(access.own_copy(dest, source, 2, 1, 2, 1));
    EXPECT_EQ(state_of(source).locks, 0) << "an older host's failed lock was unlocked";
    EXPECT_EQ(access.host.calls("REALPictureClearCache"), 0);
}

TEST(DrawnPictures, GoThroughTheHost) {
    Access access;
    const host::ObjectRef source = picture_of(access.host, 5, 3, colour_at);
    const host::ObjectRef dest = access.host.create("Picture", 5, 3, 32);
    EXPECT_TRUE(access.draw(dest, source, 5, 3));
    EXPECT_EQ(pixels_of(dest), pattern(5, 3, colour_at));
    EXPECT_EQ(access.host.references(dest), 1);
    EXPECT_FALSE(access.draw(dest, nullptr, 5, 3));
}

class DrawnPicturesWithout : public testing::TestWithParam<std::tuple<const char*, double>> {};
INSTANTIATE_TEST_SUITE_P(Service, DrawnPicturesWithout,
                         testing::Combine(testing::Values("pluginPictureGraphicsGetter",
                                                          "REALLoadObjectMethod"),
                                          testing::Values(2011.04, 2013.9)));

TEST_P(DrawnPicturesWithout, AreCopiedWhereTheyAreGDImages) {
    const auto& [missing, version] = GetParam();
    Access access({.version = version, .console = true, .without = {missing}});
    const host::ObjectRef source = picture_of(access.host, 5, 3, colour_at);
    const host::ObjectRef dest = access.host.create("Picture", 5, 3, 32);
    EXPECT_TRUE(access.draw(dest, source, 5, 3));
    EXPECT_EQ(pixels_of(dest), pattern(5, 3, colour_at));
    const bool asksForOldDrawing =
        version < 2012 && std::string_view(missing) == "REALLoadObjectMethod";
    EXPECT_EQ(access.host.lookups("RuntimeGraphicsDrawPicture"), asksForOldDrawing ? 1 : 0);
}

// Images with masks

class MaskedImages : public testing::TestWithParam<const char*> {
protected:
    /// Premultiplied; nothing when there is no image.
    Pixels image_of(const host::ObjectRef& picture, const host::ObjectRef& mask) {
        auto* const image = reinterpret_cast<CGImageRef>(
            access.host.shared<REALword>("PictureProbe", "ImageOf", picture, mask));
        if (!image) return {};
        NSImage* const drawn = [[NSImage alloc]
            initWithCGImage:image
                       size:NSMakeSize(static_cast<CGFloat>(CGImageGetWidth(image)),
                                       static_cast<CGFloat>(CGImageGetHeight(image)))];
        CGImageRelease(image);
        Pixels pixels = rendered(drawn);
        [drawn release];
        return pixels;
    }
    bool is_new() const { return std::string_view(GetParam()) == "10.7"; }

    Access access{{.systemVersion = GetParam()}};
    const host::ObjectRef picture = picture_of(access.host, 5, 3, colour_at);
};
INSTANTIATE_TEST_SUITE_P(System, MaskedImages, testing::Values("10.6", "10.7"),
                         [](const auto& test) { return test.param[3] == '6' ? "Older" : "Newer"; });

TEST_P(MaskedImages, AreOpaqueWithoutAMask) {
    EXPECT_EQ(image_of(picture, nullptr), pattern(5, 3, colour_at));
}

TEST_P(MaskedImages, AreMadeOfPicturesOnly) { EXPECT_EQ(image_of(nullptr, picture), Pixels()); }

TEST_P(MaskedImages, ShowWhereTheMaskIsBlack) {
    const Pixels pixels = image_of(picture, picture_of(access.host, 5, 3, gray_at));
    ASSERT_EQ(pixels.size(), 15u);
    const Pixels expected =
        pattern(5, 3, [](int x, int y) { return 255 - (gray_at(x, y) & 0xFF); });
    for (std::size_t i = 0; i < pixels.size(); ++i)
        EXPECT_EQ(pixels[i] >> 24, expected[i]) << i;
}

/// Where the host draws the mask it need not be locked.
TEST_P(MaskedImages, AreOpaqueWhenTheMaskCannotBeLocked) {
    const host::ObjectRef mask = picture_of(access.host, 5, 3, gray_at);
    const Pixels expected = is_new() ? image_of(picture, mask) : pattern(5, 3, colour_at);
    state_of(mask).isVector = true;
    EXPECT_EQ(image_of(picture, mask), expected);
}

TEST_P(MaskedImages, AreReadFromPixelsWhereTheHostMakesNoPicture) {
    access.host.fail(REALservices::NewPicture);
    EXPECT_EQ(image_of(picture, nullptr), pattern(5, 3, colour_at));
}

TEST_P(MaskedImages, GiveEverythingBack) {
    const host::ObjectRef mask = picture_of(access.host, 5, 3, gray_at);
    image_of(picture, mask);
    for (const host::ObjectRef* const given : {&picture, &mask}) {
        EXPECT_EQ(access.host.references(*given), 1);
        EXPECT_EQ(state_of(*given).locks, 0);
    }
    EXPECT_EQ(access.host.instances("Picture"), 2u);
}

// Pixel maps

TEST(PixelMaps, AreUnlockedByTheSystemsOwnFunction) {
    setenv("COCOA_FRAMEWORKS_FOLDER", FRAMEWORKS_FOLDER, 1);
    Access access;
    void* pixMap = &access;
    access.host.shared("PictureProbe", "EditWithPixMap", picture_of(access.host, 1, 1, colour_at),
                       reinterpret_cast<REALword>(&pixMap));
    void* const framework =
        dlopen(FRAMEWORKS_FOLDER "/ApplicationServices.framework/ApplicationServices", RTLD_NOW);
    EXPECT_EQ(*static_cast<int*>(dlsym(framework, "unlockedCount")), 1);
    EXPECT_EQ(*static_cast<void**>(dlsym(framework, "unlockedLast")), &pixMap);
    dlclose(framework);
}

TEST(PixelMaps, AreLeftAloneWhereThereIsNoSuchFunction) {
    setenv("COCOA_FRAMEWORKS_FOLDER", "/nowhere", 1);
    Access access;
    const host::ObjectRef picture = picture_of(access.host, 1, 1, colour_at);
    access.host.shared("PictureProbe", "EditWithPixMap", picture, 8);
    EXPECT_EQ(access.host.references(picture), 1);
}

} // namespace
