#include "plugin/picture/pictures.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

/// Premultiplied, and transparent to different degrees.
std::uint32_t veiled_at(int x, int y) {
    const std::uint32_t alpha = static_cast<std::uint32_t>(255 - 60 * x - 10 * y);
    const auto colour = [&](std::uint32_t value) { return value * alpha / 255; };
    return alpha << 24 | colour(200) << 16 | colour(100) << 8 | colour(50);
}

std::uint32_t rgb_of(std::uint32_t pixel) { return pixel & 0xFFFFFF; }

Pixels colours_of(const host::ObjectRef& picture) {
    Pixels pixels = pixels_of(picture);
    std::ranges::transform(pixels, pixels.begin(), rgb_of);
    return pixels;
}

class CopiesIn : public testing::TestWithParam<int> {
protected:
    Host host{{.console = GetParam() == 0, .pictureLayout = GetParam()}};
};
INSTANTIATE_TEST_SUITE_P(Layout, CopiesIn, testing::Values(0, 1, 2, 5, 6), [](const auto& test) {
    return test.param == 0 ? "GD" : "Layout" + std::to_string(test.param);
});

TEST_P(CopiesIn, HaveThePixelsOfTheImage) {
    const host::ObjectRef image = image_of_pixels(host, 4, 3, pattern(4, 3, colour_at), false);
    const host::ObjectRef picture = host.call<host::ObjectRef>(image, "CopyPicture", nullptr);
    if (GetParam() == 0) {
        EXPECT_FALSE(picture) << "there is no context to draw into";
        return;
    }
    ASSERT_TRUE(picture);
    EXPECT_EQ(colours_of(picture),
              pattern(4, 3, [](int x, int y) { return rgb_of(colour_at(x, y)); }));
    EXPECT_EQ(host.references(picture), 1);
    EXPECT_EQ(state_of(picture).locks, 0);
    EXPECT_EQ(host.calls("REALPictureClearCache"), 1);
}

TEST_P(CopiesIn, HaveTheAlphaOfTheImageAsAMask) {
    const host::ObjectRef image = image_of_pixels(host, 4, 3, pattern(4, 3, veiled_at));
    const host::ObjectRef mask = host.call<host::ObjectRef>(image, "CopyMask");
    ASSERT_TRUE(mask);
    EXPECT_EQ(colours_of(mask), pattern(4, 3, [](int x, int y) {
                  const std::uint32_t value = 255 - (veiled_at(x, y) >> 24);
                  return value << 16 | value << 8 | value;
              }));
    EXPECT_EQ(host.references(mask), 1);
    EXPECT_EQ(state_of(mask).locks, 0);
}

class Copies : public testing::Test {
protected:
    host::ObjectRef rect(const host::ObjectRef& image, int x, int y, int w, int h) {
        return host.call<host::ObjectRef>(image, "CopyPictureRect", x, y, w, h, nullptr);
    }

    Host host{{}};
};

TEST_F(Copies, OfImagesWithoutTransparencyHaveABlackMask) {
    const host::ObjectRef mask = host.call<host::ObjectRef>(
        image_of_pixels(host, 3, 2, pattern(3, 2, colour_at), false), "CopyMask");
    EXPECT_EQ(colours_of(mask), Pixels(6, 0));
}

TEST_F(Copies, OfTransparentImagesHaveAWhiteMask) {
    const host::ObjectRef mask =
        host.call<host::ObjectRef>(image_of_pixels(host, 3, 2, Pixels(6, 0)), "CopyMask");
    EXPECT_EQ(colours_of(mask), Pixels(6, 0xFFFFFF));
}

TEST_F(Copies, OfRectanglesAreWhatABruteForceCutGives) {
    constexpr int width = 9, height = 7;
    const Pixels all = pattern(width, height, colour_at);
    for (const bool isFlipped : {false, true}) {
        const host::ObjectRef image = image_of_pixels(host, width, height, all, false);
        host.set(image, "isFlipped", isFlipped);
        std::mt19937 generator(7);
        const auto side = [&](int from, int to) {
            return std::uniform_int_distribution(from, to)(generator);
        };
        for (int i = 0; i < 2000; ++i) {
            const int x = side(-1, 11), y = side(-1, 9), w = side(-1, 12), h = side(-1, 10);
            const int right = std::min(x + (w == 0 ? width : w), width);
            const int top = std::min(y + (h == 0 ? height : h), height);
            const bool isRefused = x < 0 || y < 0 || w < 0 || h < 0 || right <= x || top <= y;
            const host::ObjectRef picture = rect(image, x, y, w, h);
            ASSERT_EQ(!picture, isRefused) << x << "," << y << " " << w << "x" << h;
            if (isRefused) continue;
            // y counts from the lower edge of the image.
            const Pixels expected = pattern(right - x, top - y, [&](int column, int row) {
                return rgb_of(colour_at(x + column, height - top + row));
            });
            ASSERT_EQ(colours_of(picture), expected)
                << x << "," << y << " " << w << "x" << h << (isFlipped ? " flipped" : "");
        }
    }
}

TEST_F(Copies, OfImagesWithBrokenPointsAreCutToWholeOnes) {
    const host::ObjectRef image = image_of_pixels(host, 11, 11, pattern(11, 11, colour_at), false);
    host.call(image, "setSize", 10.9, 10.9);
    const host::ObjectRef picture = host.call<host::ObjectRef>(image, "CopyPicture", nullptr);
    EXPECT_EQ(state_of(picture).width(), 10);
    EXPECT_EQ(state_of(picture).height(), 10);
}

TEST_F(Copies, OfImagesWithoutAnythingAreNone) {
    const host::ObjectRef empty = host.instance("NSImageZNT");
    const host::ObjectRef sizeless = host.create("NSImageZNT", 0.0, 0.0);
    for (const host::ObjectRef& image : {empty, sizeless}) {
        EXPECT_FALSE(host.call<host::ObjectRef>(image, "CopyPicture", nullptr));
        EXPECT_FALSE(host.call<host::ObjectRef>(image, "CopyMask"));
        EXPECT_FALSE(host.call<host::ObjectRef>(image, "CopyPictureWithMask", nullptr));
    }
}

TEST_F(Copies, OfImagesTooLargeForAPictureAreNoneAndTakeNoMemory) {
    const host::ObjectRef image = image_of_pixels(host, 1, 1, {0x80808080});
    host.call(image, "setSize", 32767.0, 1.0);
    EXPECT_TRUE(host.call<host::ObjectRef>(image, "CopyMask"));
    for (const auto& [width, height] :
         {std::pair(32768.0, 1.0), {1.0, 32768.0}, {65536.0, 65536.0}, {1e9, 1e9}, {1e30, 1.0}}) {
        host.call(image, "setSize", width, height);
        EXPECT_FALSE(host.call<host::ObjectRef>(image, "CopyMask")) << width << "x" << height;
    }
}

TEST_F(Copies, WithMaskCarryItWhenAnyRepresentationHasAlpha) {
    const host::ObjectRef image = image_of_pixels(host, 4, 3, pattern(4, 3, colour_at), false);
    const host::ObjectRef opaque =
        host.call<host::ObjectRef>(image, "CopyPictureWithMask", nullptr);
    EXPECT_FALSE(host::maskOf(opaque, false)) << "no representation has alpha";

    const host::ObjectRef veiled = image_of_pixels(host, 4, 3, pattern(4, 3, veiled_at));
    NSImageRep* const later = [[image_in(host, veiled) representations] lastObject];
    [image_in(host, image) addRepresentation:later];
    const host::ObjectRef masked =
        host.call<host::ObjectRef>(image, "CopyPictureWithMask", nullptr);
    ASSERT_TRUE(masked);
    EXPECT_TRUE(host::maskOf(masked, false));
    EXPECT_EQ(host.references(masked), 1);
}

TEST_F(Copies, WithMaskComeBackAsTheImageTheyWere) {
    const Pixels pixels = pattern(4, 3, veiled_at);
    const host::ObjectRef image = image_of_pixels(host, 4, 3, pixels);
    const host::ObjectRef picture =
        host.call<host::ObjectRef>(image, "CopyPictureWithMask", nullptr);
    const host::ObjectRef mask = host::maskOf(picture, false);
    ASSERT_TRUE(mask);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(state_of(mask).pixels()->pixel(x, y) & 0xFF, 255 - (veiled_at(x, y) >> 24));
}

TEST_F(Copies, TakeAnyColourSpace) {
    const host::ObjectRef image = image_of_pixels(host, 2, 1, Pixels(2, 0xFF102030));
    const host::ObjectRef space =
        host.shared<host::ObjectRef>("CGColorSpaceZNT", "CreateDeviceGray");
    for (const host::Value& given : {host::Value(space), host::Value("text"), host::Value(7)}) {
        const host::ObjectRef picture = host.call<host::ObjectRef>(image, "CopyPicture", given);
        EXPECT_EQ(colours_of(picture), Pixels(2, 0x102030));
    }
    EXPECT_EQ(host.references(space), 1);
}

class CopiesWithout : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Service, CopiesWithout,
                         testing::Values("newPicture", "lockPictureDescription",
                                         "REALLockPictureDescription", "REALGetPictureMask",
                                         "REALLoadObjectMethod"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(CopiesWithout, AreNoneWhereTheyNeedIt) {
    const std::string missing = GetParam();
    Host host{{.without = {missing}}};
    const host::ObjectRef image = image_of_pixels(host, 4, 3, pattern(4, 3, veiled_at));
    const bool hasRect = missing != "newPicture" && missing != "lockPictureDescription";
    const bool hasMask = missing != "newPicture" && missing != "REALLockPictureDescription";
    EXPECT_EQ(!!host.call<host::ObjectRef>(image, "CopyPicture", nullptr), hasRect);
    EXPECT_EQ(!!host.call<host::ObjectRef>(image, "CopyMask"), hasMask);
    EXPECT_FALSE(host.call<host::ObjectRef>(image, "CopyPictureWithMask", nullptr));
    EXPECT_EQ(host.instances("Picture"), 0u);
    // A description is unlocked whether or not it could be locked.
    if (missing == "lockPictureDescription") EXPECT_EQ(host.runtime().misuse().size(), 2u);
    host.runtime().forgetMisuse();
}

// Drawing into contexts

class DrawingIntoContexts : public testing::Test {
protected:
    ~DrawingIntoContexts() override {
        CGContextRelease(context);
        CGColorSpaceRelease(space);
    }
    REALword port() const { return reinterpret_cast<REALword>(context); }
    std::uint32_t at(int x, int y) const {
        const auto* const p = static_cast<const std::uint8_t*>(CGBitmapContextGetData(context)) +
                              static_cast<std::size_t>(y) * CGBitmapContextGetBytesPerRow(context) +
                              static_cast<std::size_t>(x) * 4;
        return std::uint32_t{p[3]} << 24 | std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 |
               p[2];
    }
    bool at_point(const host::ObjectRef& image, REALword into, double x, double y) {
        return host.call<bool>(image, "DrawIntoCGContextAtPoint", into, x, y, 0.0, 0.0, 2.0, 1.0, 2,
                               1.0);
    }
    bool at_rect(const host::ObjectRef& image, REALword into, double x, double y, double w,
                 double h) {
        return host.call<bool>(image, "DrawIntoCGContextAtRect", into, x, y, w, h, 0.0, 0.0, 2.0,
                               1.0, 2, 1.0);
    }

    Host host{{}};
    CGColorSpaceRef const space = CGColorSpaceCreateDeviceRGB();
    CGContextRef const context =
        CGBitmapContextCreate(nullptr, 6, 4, 8, 0, space, kCGImageAlphaPremultipliedLast);
    const host::ObjectRef image = image_of_pixels(host, 2, 1, {0xFF102030, 0xFF405060});
};

TEST_F(DrawingIntoContexts, DrawsAtAPointFromTheLowerLeft) {
    NSGraphicsContext* const before = [NSGraphicsContext currentContext];
    EXPECT_TRUE(at_point(image, port(), 1, 0));
    EXPECT_EQ(at(1, 3), 0xFF102030U);
    EXPECT_EQ(at(2, 3), 0xFF405060U);
    EXPECT_EQ(at(0, 3), 0U);
    EXPECT_EQ(at(1, 2), 0U);
    EXPECT_EQ([NSGraphicsContext currentContext], before);
}

TEST_F(DrawingIntoContexts, DrawsIntoARectangle) {
    NSGraphicsContext* const before = [NSGraphicsContext currentContext];
    EXPECT_TRUE(at_rect(image, port(), 4, 3, 2, 1));
    EXPECT_EQ(at(4, 0), 0xFF102030U);
    EXPECT_EQ(at(5, 0), 0xFF405060U);
    EXPECT_EQ(at(4, 1), 0U);
    EXPECT_TRUE(at_rect(image_of_pixels(host, 2, 1, Pixels(2, 0xFF708090)), port(), 0, 1, 4, 2));
    for (const auto& [x, y] : {std::pair(0, 1), {3, 1}, {0, 2}, {3, 2}})
        EXPECT_EQ(at(x, y), 0xFF708090U) << x << "," << y;
    EXPECT_EQ(at(0, 3), 0U);
    EXPECT_EQ(at(4, 1), 0U);
    EXPECT_EQ([NSGraphicsContext currentContext], before);
}

TEST_F(DrawingIntoContexts, RaisesForNoContext) {
    EXPECT_FALSE(at_point(image, 0, 0, 0));
    EXPECT_EQ(host.raised(), "NilObjectException: CGContext is nil");
    EXPECT_FALSE(at_rect(image, 0, 0, 0, 1, 1));
    EXPECT_EQ(host.raised(), "NilObjectException: CGContext is nil");
}

TEST_F(DrawingIntoContexts, DrawsNothingWithoutAnImage) {
    const host::ObjectRef empty = host.instance("NSImageZNT");
    EXPECT_FALSE(at_point(empty, port(), 0, 0));
    EXPECT_FALSE(at_rect(empty, port(), 0, 0, 1, 1));
    EXPECT_EQ(host.raised(), "");
    for (int x = 0; x < 6; ++x)
        EXPECT_EQ(at(x, 3), 0U);
}

TEST_F(DrawingIntoContexts, PassesAnEmptySourceOnAsTheWholeImage) {
    EXPECT_TRUE(host.call<bool>(image, "DrawIntoCGContextAtRect", port(), 0.0, 0.0, 2.0, 1.0, 0.0,
                                0.0, 0.0, 0.0, 2, 1.0));
    EXPECT_EQ(at(1, 3), 0xFF405060U);
}

} // namespace
