#include "plugin/picture/pictures.h"

#include <gmock/gmock.h>

#include <tuple>

namespace {

constexpr const char* initWithPicture =
    "initWithPicture(img as picture, mask as picture = nil) as boolean";

enum class Mask { None, Explicit, Own };

/// A host, its system, and what it lacks; 0 is the layout of a console's gd images.
using Cell = std::tuple<int, Mask, double, const char*, bool>;

std::string name_of(const testing::TestParamInfo<Cell>& info) {
    const auto& [layout, mask, version, system, hasCopy] = info.param;
    static constexpr const char* masks[] = {"NoMask", "Mask", "OwnMask"};
    std::string name = layout == 0 ? "GD" : "Layout" + std::to_string(layout);
    name += "_" + std::string(masks[static_cast<int>(mask)]);
    name += "_Host" + std::to_string(static_cast<int>(version * 100));
    name += "_System" + std::string(system);
    std::ranges::replace(name, '.', '_');
    return name + (hasCopy ? "" : "_WithoutCopy");
}

class PicturesToImages : public testing::TestWithParam<Cell> {};
INSTANTIATE_TEST_SUITE_P(Every, PicturesToImages,
                         testing::Combine(testing::Values(0, 1, 2, 5, 6),
                                          testing::Values(Mask::None, Mask::Explicit, Mask::Own),
                                          testing::Values(2009.05, 2011.0, 2012.0, 2013.0, 2013.9),
                                          testing::Values("10.5", "10.6", "10.7"), testing::Bool()),
                         name_of);

TEST_P(PicturesToImages, KeepEveryPixel) {
    const auto& [layout, mask, version, system, hasCopy] = GetParam();
    HostOptions options{.version = version,
                        .console = layout == 0,
                        .systemVersion = system,
                        .pictureLayout = layout};
    if (!hasCopy) options.without = {"REALCopyPictureCGImage"};
    Host host{options};
    constexpr int width = 5, height = 3;
    const host::ObjectRef picture = picture_of(host, width, height, colour_at);
    host::ObjectRef maskPicture;
    if (mask == Mask::Explicit) maskPicture = picture_of(host, width, height, gray_at);
    if (mask == Mask::Own) {
        set_pixels(host::maskOf(picture, true), pattern(width, height, gray_at));
        state_of(picture).changed();
    }

    const host::ObjectRef image = host.instance("NSImageZNT");
    ASSERT_TRUE(host.call<bool>(image, initWithPicture, picture, maskPicture));

    // The host's own images are rounded, what is read from pixels is cut.
    const bool isMadeByHost =
        mask != Mask::Explicit && layout != 0 && hasCopy && std::string_view(system) != "10.5";
    const bool isMasked = mask != Mask::None;
    const Pixels expected = pattern(width, height, [&](int x, int y) {
        const std::uint32_t colour = colour_at(x, y);
        if (!isMasked) return colour;
        const std::uint32_t alpha = 255 - (gray_at(x, y) & 0xFF);
        const auto scaled = [&](int shift) {
            return ((colour >> shift & 0xFF) * alpha + (isMadeByHost ? 127 : 0)) / 255 << shift;
        };
        return alpha << 24 | scaled(16) | scaled(8) | scaled(0);
    });
    EXPECT_EQ(rendered(image_in(host, image)), expected);
    EXPECT_EQ(host.references(picture), 1);
}

class PictureImages : public testing::Test {
protected:
    Host host{{.systemVersion = "10.5"}};
    const host::ObjectRef image = host.instance("NSImageZNT");

    bool init(const host::ObjectRef& picture, const host::ObjectRef& mask = nullptr) {
        return host.call<bool>(image, initWithPicture, picture, mask);
    }
};

TEST_F(PictureImages, OfNothingAreNone) {
    EXPECT_FALSE(init(nullptr));
    EXPECT_FALSE(init(nullptr, picture_of(host, 2, 2, gray_at)));
    EXPECT_EQ(host.handle(image), nullptr);
}

TEST_F(PictureImages, HaveThreeSamplesWithoutAMaskAndFourWithOne) {
    const host::ObjectRef picture = picture_of(host, 3, 2, colour_at);
    ASSERT_TRUE(init(picture));
    NSBitmapImageRep* bitmap = [[image_in(host, image) representations] lastObject];
    EXPECT_EQ([bitmap samplesPerPixel], 3);
    EXPECT_FALSE([bitmap hasAlpha]);
    EXPECT_TRUE([[bitmap colorSpaceName] isEqual:NSCalibratedRGBColorSpace]);
    EXPECT_TRUE(NSEqualSizes([image_in(host, image) size], NSMakeSize(3, 2)));

    host::maskOf(picture, true);
    ASSERT_TRUE(init(picture));
    bitmap = [[image_in(host, image) representations] lastObject];
    EXPECT_EQ([bitmap samplesPerPixel], 4);
    EXPECT_TRUE([bitmap hasAlpha]);
}

TEST_F(PictureImages, OfWhiteMaskPixelsAreNothingAtAll) {
    const host::ObjectRef picture = picture_of(host, 1, 1, colour_at);
    const auto white = [](int, int) { return 0xFFFFFFFFU; };
    ASSERT_TRUE(init(picture, picture_of(host, 1, 1, white)));
    NSBitmapImageRep* const bitmap = [[image_in(host, image) representations] lastObject];
    EXPECT_THAT(std::vector([bitmap bitmapData], [bitmap bitmapData] + 4),
                testing::ElementsAre(0, 0, 0, 0));
}

TEST_F(PictureImages, WithAMaskOfAnotherSizeAreNone) {
    const host::ObjectRef picture = picture_of(host, 4, 2, colour_at);
    EXPECT_FALSE(init(picture, picture_of(host, 3, 2, gray_at)));
    EXPECT_FALSE(init(picture, picture_of(host, 4, 3, gray_at)));
    EXPECT_EQ(host.references(picture), 1);
}

TEST_F(PictureImages, ComeFromTheConstructorToo) {
    const host::ObjectRef made = host.create("NSImageZNT", picture_of(host, 3, 2, colour_at));
    EXPECT_EQ(rendered(image_in(host, made)), pattern(3, 2, colour_at));
    const host::ObjectRef masked = host.create("NSImageZNT", picture_of(host, 3, 2, colour_at),
                                               picture_of(host, 3, 2, gray_at));
    EXPECT_EQ(rendered(image_in(host, masked)).at(1) >> 24, 255U - 53U);
}

TEST_F(PictureImages, ReplaceAnImageThatWasThere) {
    ASSERT_TRUE(init(picture_of(host, 3, 2, colour_at)));
    EXPECT_FALSE(init(nullptr));
    EXPECT_EQ(host.handle(image), nullptr);
}

TEST_F(PictureImages, OfVectorPicturesAreOfACopy) {
    const host::ObjectRef picture = picture_of(host, 3, 2, colour_at);
    state_of(picture).isVector = true;
    ASSERT_TRUE(init(picture));
    EXPECT_EQ(rendered(image_in(host, image)), pattern(3, 2, colour_at));
}

class PictureImagesWithout : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Service, PictureImagesWithout,
                         testing::Values("REALLockPictureDescription", "newPicture",
                                         "pluginPictureGraphicsGetter", "REALGetPictureMask",
                                         "REALGetPropValueBool", "REALGetPropValueInt",
                                         "pluginObjectType", "REALLoadObjectMethod"),
                         [](const auto& test) { return std::string(test.param); });

/// Only reading pixels needs the lock; all else has another way, or is not needed.
TEST_P(PictureImagesWithout, AreMadeWhereverPixelsCanBeLocked) {
    Host host{{.without = {GetParam()}, .systemVersion = "10.5"}};
    const host::ObjectRef picture = picture_of(host, 3, 2, colour_at);
    const host::ObjectRef image = host.instance("NSImageZNT");
    const bool canLock = std::string_view(GetParam()) != "REALLockPictureDescription";
    EXPECT_EQ(host.call<bool>(image, initWithPicture, picture, nullptr), canLock);
    if (canLock) EXPECT_EQ(rendered(image_in(host, image)), pattern(3, 2, colour_at));
    EXPECT_EQ(host.references(picture), 1);
}

class PicturesWithAlphaOf : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Layout, PicturesWithAlphaOf,
                         testing::Values(kCGImageAlphaPremultipliedLast,
                                         kCGImageAlphaPremultipliedFirst));

TEST_P(PicturesWithAlphaOf, AreReadWithoutTheirAlpha) {
    Host host{{.systemVersion = "10.5", .pictureLayout = GetParam()}};
    const host::ObjectRef picture = host.create("Picture", 3, 2);
    set_pixels(picture, pattern(3, 2, colour_at));
    const host::ObjectRef image = host.instance("NSImageZNT");
    ASSERT_TRUE(host.call<bool>(image, initWithPicture, picture, nullptr));
    EXPECT_EQ(rendered(image_in(host, image)), pattern(3, 2, colour_at));
}

/// As designed: the description of a refused layout stays locked.
TEST(PicturesWithAlpha, AreRefusedInOtherLayoutsAndStayLocked) {
    Host host{{.systemVersion = "10.5", .pictureLayout = kCGImageAlphaNoneSkipFirst}};
    host::ObjectRef picture = host.create("Picture", 3, 2);
    const host::ObjectRef image = host.instance("NSImageZNT");
    EXPECT_FALSE(host.call<bool>(image, initWithPicture, picture, nullptr));
    EXPECT_EQ(state_of(picture).locks, 1);
    picture = nullptr;
    EXPECT_THAT(host.runtime().misuse(), testing::SizeIs(1));
    host.runtime().forgetMisuse();
}

/// A host that locks no Picture at all is not asked for copies of copies without end.
TEST(PicturesThatCannotBeLocked, AreCopiedOnce) {
    Host host{{.without = {"REALCopyPictureCGImage"}}};
    const host::ObjectRef picture = picture_of(host, 3, 2, colour_at);
    host.fail(REALservices::LockPictureDescription, 1000);
    EXPECT_FALSE(host.call<bool>(host.instance("NSImageZNT"), initWithPicture, picture, nullptr));
    EXPECT_EQ(host.calls("newPicture"), 1);
}

} // namespace
