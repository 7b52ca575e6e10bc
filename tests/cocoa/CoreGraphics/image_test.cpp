#include "cocoa/CoreGraphics/support.h"

#include <limits>

using namespace cgtest;
using testing::ElementsAre;

namespace {

/// The arguments of CGImageCreate, right until one is changed.
struct Arguments {
    std::size_t width = 3;
    std::size_t height = 2;
    std::size_t bitsPerComponent = 8;
    std::size_t bitsPerPixel = 32;
    std::size_t bytesPerRow = 16;
    CGColorSpaceModel model = kCGColorSpaceModelRGB;
    CGBitmapInfo info = kCGImageAlphaLast;
    std::size_t providedBytes = 28; // the last row without its padding

    Image make() const {
        return CGImageCreate(width, height, bitsPerComponent, bitsPerPixel, bytesPerRow,
                             spaceOf(model), info,
                             provide(std::vector<std::uint8_t>(providedBytes)), nullptr, false,
                             kCGRenderingIntentSaturation);
    }
    bool works() const { return make() != nullptr; }
};

TEST(Image, AnswersWhatItWasMadeOf) {
    const Space space = deviceRGB();
    const Provider provider = provide(std::vector<std::uint8_t>(32));
    const CGFloat decode[] = {1, 0, 0, 1, 0, 1};
    {
        const Image image = CGImageCreate(3, 2, 8, 32, 16, space, kCGImageAlphaFirst | little32,
                                          provider, decode, true, kCGRenderingIntentPerceptual);
        EXPECT_EQ(CGImageGetWidth(image), 3U);
        EXPECT_EQ(CGImageGetHeight(image), 2U);
        EXPECT_EQ(CGImageGetBitsPerComponent(image), 8U);
        EXPECT_EQ(CGImageGetBitsPerPixel(image), 32U);
        EXPECT_EQ(CGImageGetBytesPerRow(image), 16U);
        EXPECT_EQ(CGImageGetColorSpace(image), static_cast<CGColorSpaceRef>(space));
        EXPECT_EQ(CGImageGetAlphaInfo(image), kCGImageAlphaFirst);
        EXPECT_EQ(CGImageGetBitmapInfo(image), kCGImageAlphaFirst | little32);
        EXPECT_EQ(CGImageGetDataProvider(image), static_cast<CGDataProviderRef>(provider));
        EXPECT_EQ(CGImageGetDecode(image)[0], 1);
        EXPECT_TRUE(CGImageGetShouldInterpolate(image));
        EXPECT_EQ(CGImageGetRenderingIntent(image), kCGRenderingIntentPerceptual);
        EXPECT_FALSE(CGImageIsMask(image));
        EXPECT_EQ(CFGetTypeID(image), CGImageGetTypeID());
        EXPECT_EQ(CFGetRetainCount(image), 1);
        EXPECT_EQ(CFGetRetainCount(space), 2);
        EXPECT_EQ(CFGetRetainCount(provider), 2);
    }
    EXPECT_EQ(CFGetRetainCount(space), 1);
    EXPECT_EQ(CFGetRetainCount(provider), 1);
}

TEST(Image, IsRetainedAndReleased) {
    const Image image = fourColors();
    EXPECT_EQ(CGImageRetain(image), static_cast<CGImageRef>(image));
    EXPECT_EQ(CFGetRetainCount(image), 2);
    CGImageRelease(image);
    EXPECT_EQ(CFGetRetainCount(image), 1);
}

TEST(Image, ThatIsNullAnswersZeros) {
    EXPECT_EQ(CGImageRetain(nullptr), nullptr);
    CGImageRelease(nullptr);
    EXPECT_EQ(CGImageGetWidth(nullptr), 0U);
    EXPECT_EQ(CGImageGetHeight(nullptr), 0U);
    EXPECT_EQ(CGImageGetColorSpace(nullptr), nullptr);
    EXPECT_EQ(CGImageGetDataProvider(nullptr), nullptr);
    EXPECT_EQ(CGImageGetDecode(nullptr), nullptr);
    EXPECT_EQ(CGImageCreateCopy(nullptr), nullptr);
    EXPECT_EQ(CGImageCreateWithImageInRect(nullptr, CGRectMake(0, 0, 1, 1)), nullptr);
    EXPECT_EQ(CGImageCreateWithMask(nullptr, fourColors()), nullptr);
    EXPECT_EQ(CGImageCreateWithMask(fourColors(), nullptr), nullptr);
}

TEST(Image, IsMadeOfArgumentsThatFitTogether) {
    EXPECT_TRUE(Arguments{}.works());
    EXPECT_TRUE((Arguments{
        .bitsPerComponent = 16, .bitsPerPixel = 64, .bytesPerRow = 24, .providedBytes = 48}
                     .works()));
    EXPECT_TRUE(
        (Arguments{.bitsPerComponent = 5, .bitsPerPixel = 16, .info = kCGImageAlphaNoneSkipFirst}
             .works()));
    EXPECT_TRUE((Arguments{.bitsPerComponent = 1,
                           .bitsPerPixel = 1,
                           .bytesPerRow = 1,
                           .model = kCGColorSpaceModelMonochrome,
                           .info = kCGImageAlphaNone,
                           .providedBytes = 2}
                     .works()));
    EXPECT_TRUE(
        (Arguments{.bitsPerPixel = 8, .model = kCGColorSpaceModelUnknown, .info = kCGImageAlphaOnly}
             .works()));
}

TEST(Image, IsNotMadeWithoutPixels) {
    EXPECT_FALSE(Arguments{.width = 0}.works());
    EXPECT_FALSE(Arguments{.height = 0}.works());
}

TEST(Image, IsNotMadeOfPixelsTooSmallForTheirSamples) {
    EXPECT_FALSE(Arguments{.bitsPerPixel = 24}.works());
    EXPECT_FALSE(Arguments{.bitsPerPixel = 0}.works());
    EXPECT_FALSE(Arguments{.bitsPerComponent = 0}.works());
    EXPECT_FALSE((Arguments{.bitsPerComponent = 17, .bitsPerPixel = 80}.works()));
    EXPECT_FALSE((Arguments{.bitsPerComponent = 5, .bitsPerPixel = 16}.works()));
}

TEST(Image, IsNotMadeOfRowsTooShortForTheirPixels) {
    EXPECT_FALSE(Arguments{.bytesPerRow = 11}.works());
    EXPECT_TRUE(Arguments{.bytesPerRow = 12}.works());
}

TEST(Image, IsNotMadeOfTooFewBytes) {
    EXPECT_FALSE(Arguments{.providedBytes = 27}.works());
    EXPECT_FALSE((Arguments{.width = 60000, .height = 60000, .bytesPerRow = 240000}.works()));
    EXPECT_FALSE((Arguments{.height = std::numeric_limits<std::size_t>::max() / 8}.works()));
    EXPECT_FALSE(
        (Arguments{.height = 0x7FFFFFFF, .bytesPerRow = std::numeric_limits<std::size_t>::max() / 4}
             .works()));
}

TEST(Image, IsNotMadeOfUnknownFlags) {
    EXPECT_FALSE(Arguments{.info = 8}.works());
    EXPECT_FALSE((Arguments{.info = kCGImageAlphaLast | 7U << 12}.works()));
    EXPECT_FALSE((Arguments{.info = kCGImageAlphaLast | 1U << 20}.works()));
    EXPECT_FALSE((Arguments{.info = kCGImageAlphaLast | floats}.works()));
}

TEST(Image, NeedsAColourSpaceUnlessItIsAlphaOnly) {
    EXPECT_FALSE(Arguments{.model = kCGColorSpaceModelUnknown}.works());
    EXPECT_FALSE((Arguments{.info = kCGImageAlphaOnly}.works()));
}

TEST(Image, NeedsAProviderAndFiniteDecodeValues) {
    const Space space = deviceRGB();
    EXPECT_EQ(CGImageCreate(1, 1, 8, 32, 4, space, kCGImageAlphaLast, nullptr, nullptr, false,
                            kCGRenderingIntentDefault),
              nullptr);
    const CGFloat decode[] = {0, std::numeric_limits<CGFloat>::infinity(), 0, 1, 0, 1};
    EXPECT_EQ(static_cast<CGImageRef>(makeImage(1, 1, {}, {1, 2, 3, 4}, decode)), nullptr);
}

std::vector<Pixel> drawn(CGImageRef image) {
    Bitmap bitmap(static_cast<int>(CGImageGetWidth(image)),
                  static_cast<int>(CGImageGetHeight(image)));
    CGContextDrawImage(bitmap, bitmap.bounds(), image);
    return bitmap.pixels();
}

std::vector<Pixel> part(const std::vector<Pixel>& pixels, int stride, int x, int y, int width,
                        int height) {
    std::vector<Pixel> result;
    for (int row = y; row < y + height; ++row) {
        const auto first = pixels.begin() + row * stride + x;
        result.insert(result.end(), first, first + width);
    }
    return result;
}

TEST(ImageInRect, IsThePartCountedFromTheTop) {
    const auto pixels = gradient(47, 33);
    const Image whole = imageOf(47, 33, pixels);
    const Image cut = CGImageCreateWithImageInRect(whole, CGRectMake(5, 2, 11, 7));
    EXPECT_EQ(CGImageGetWidth(cut), 11U);
    EXPECT_EQ(CGImageGetHeight(cut), 7U);
    EXPECT_EQ(drawn(cut), part(pixels, 47, 5, 2, 11, 7));
    const Image again = CGImageCreateWithImageInRect(cut, CGRectMake(1, 1, 2, 3));
    EXPECT_EQ(drawn(again), part(pixels, 47, 6, 3, 2, 3));
}

TEST(ImageInRect, IsMadeIntegralAndCutToTheImage) {
    const auto pixels = gradient(10, 8);
    const Image whole = imageOf(10, 8, pixels);
    const Image grown = CGImageCreateWithImageInRect(whole, CGRectMake(1.5, 2.5, 2, 2));
    EXPECT_EQ(drawn(grown), part(pixels, 10, 1, 2, 3, 3));
    const Image corner = CGImageCreateWithImageInRect(whole, CGRectMake(8, 7, 100, 100));
    EXPECT_EQ(drawn(corner), part(pixels, 10, 8, 7, 2, 1));
    EXPECT_EQ(CGImageCreateWithImageInRect(whole, CGRectMake(10, 0, 5, 5)), nullptr);
    EXPECT_EQ(CGImageCreateWithImageInRect(whole, CGRectNull), nullptr);
}

TEST(ImageInRect, OutlivesTheWholeImage) {
    Image cut;
    {
        const Image whole = imageOf(2, 2, {red, green, blue, white});
        cut = CGImageCreateWithImageInRect(whole, CGRectMake(0, 1, 2, 1));
    }
    EXPECT_THAT(drawn(cut), ElementsAre(blue, white));
    const Made<CFDataRef> data = CGDataProviderCopyData(CGImageGetDataProvider(cut));
    EXPECT_EQ(CFDataGetLength(data), 8) << "the provider has the part's own rows";
}

TEST(ImageInRect, MayStartWithinAByte) {
    // 1 0 1 1 0 0 1 0 | 1 1
    const Layout bits = {1, 1, kCGImageAlphaNone, kCGColorSpaceModelMonochrome};
    const Image whole = makeImage(10, 1, bits, {0xB2, 0xC0});
    const Image cut = CGImageCreateWithImageInRect(whole, CGRectMake(3, 0, 6, 1));
    EXPECT_THAT(drawn(cut), ElementsAre(white, black, black, white, black, white));
}

TEST(ImageInRect, MayStartWithinASwappedWord) {
    // Gray bytes 10 20 30 40 50 60 .. with every four the other way round.
    const Layout layout = {8, 8, kCGImageAlphaNone | little32, kCGColorSpaceModelMonochrome};
    const Image whole = makeImage(8, 1, layout, {40, 30, 20, 10, 80, 70, 60, 50});
    const Image cut = CGImageCreateWithImageInRect(whole, CGRectMake(3, 0, 3, 1));
    EXPECT_THAT(drawn(cut), ElementsAre(Pixel{40, 40, 40}, Pixel{50, 50, 50}, Pixel{60, 60, 60}));
}

Image maskOf(std::size_t width, std::size_t height, std::vector<std::uint8_t> samples,
             const CGFloat* decode = nullptr) {
    return CGImageMaskCreate(width, height, 8, 8, width, provide(std::move(samples)), decode, true);
}

Image grayOf(std::size_t width, std::size_t height, std::vector<std::uint8_t> samples) {
    return makeImage(width, height, {8, 8, kCGImageAlphaNone, kCGColorSpaceModelMonochrome},
                     std::move(samples));
}

TEST(MaskedImage, HidesWhereAnImageMaskIsHigh) {
    const Image masked = CGImageCreateWithMask(fourColors(), maskOf(2, 2, {0, 255, 51, 0}));
    EXPECT_THAT(drawn(masked), ElementsAre(red, clear, Pixel{0, 0, 204, 204}, white));
}

TEST(MaskedImage, HidesWhereAGrayImageIsBlack) {
    const Image masked = CGImageCreateWithMask(fourColors(), grayOf(2, 2, {255, 0, 204, 255}));
    EXPECT_THAT(drawn(masked), ElementsAre(red, clear, Pixel{0, 0, 204, 204}, white));
}

TEST(MaskedImage, MultipliesItsOwnAlphaToo) {
    const Image half = imageOf(1, 1, {{128, 0, 0, 128}});
    const Image masked = CGImageCreateWithMask(half, grayOf(1, 1, {128}));
    EXPECT_THAT(drawn(masked), ElementsAre(Pixel{64, 0, 0, 64}));
}

TEST(MaskedImage, IsAsFineAsItsMask) {
    const Image one = imageOf(1, 1, {red});
    const Image masked = CGImageCreateWithMask(one, grayOf(2, 2, {255, 0, 0, 255}));
    Bitmap bitmap(2, 2);
    CGContextDrawImage(bitmap, bitmap.bounds(), masked);
    EXPECT_THAT(bitmap.pixels(), ElementsAre(red, clear, clear, red));
}

TEST(MaskedImage, StretchesACoarserMask) {
    const Image masked = CGImageCreateWithMask(imageOf(4, 4, gradient(4, 4)), grayOf(1, 1, {0}));
    EXPECT_THAT(drawn(masked), testing::Each(clear));
}

TEST(MaskedImage, CutsItsMaskWithItself) {
    const Image masked = CGImageCreateWithMask(fourColors(), grayOf(2, 2, {255, 0, 204, 255}));
    const Image row = CGImageCreateWithImageInRect(masked, CGRectMake(0, 1, 2, 1));
    EXPECT_THAT(drawn(row), ElementsAre(Pixel{0, 0, 204, 204}, white));
}

TEST(MaskedImage, RetainsImageAndMask) {
    const Image mask = grayOf(1, 1, {0});
    {
        const Image masked = CGImageCreateWithMask(fourColors(), mask);
        EXPECT_EQ(CFGetRetainCount(mask), 2);
    }
    EXPECT_EQ(CFGetRetainCount(mask), 1);
}

TEST(MaskedImage, TakesNoColouredMaskAndNoImageMaskAsImage) {
    EXPECT_EQ(CGImageCreateWithMask(fourColors(), fourColors()), nullptr);
    EXPECT_EQ(CGImageCreateWithMask(maskOf(1, 1, {0}), maskOf(1, 1, {0})), nullptr);
}

TEST(ImageMask, PaintsTheFillColourWhereItIsLow) {
    const Image mask = maskOf(2, 1, {0, 255});
    EXPECT_TRUE(CGImageIsMask(mask));
    EXPECT_EQ(CGImageGetColorSpace(mask), nullptr);
    Bitmap bitmap(2, 1);
    bitmap.fill(white);
    CGContextSetRGBFillColor(bitmap, 0, 0, 1, 1);
    CGContextDrawImage(bitmap, bitmap.bounds(), mask);
    EXPECT_THAT(bitmap.pixels(), ElementsAre(blue, white));
}

TEST(ImageMask, LeavesWhatItHidesInEveryMode) {
    Bitmap bitmap(2, 1);
    bitmap.fill(white);
    CGContextSetRGBFillColor(bitmap, 0, 0, 1, 1);
    CGContextSetAlpha(bitmap, 0.4);
    CGContextSetBlendMode(bitmap, kCGBlendModeCopy);
    CGContextDrawImage(bitmap, bitmap.bounds(), maskOf(2, 1, {0, 255}));
    EXPECT_THAT(bitmap.pixels(), ElementsAre(Pixel{0, 0, 102, 102}, white));
}

TEST(ImageMask, IsTurnedRoundByItsDecodeArray) {
    const CGFloat decode[] = {1, 0};
    Bitmap bitmap(2, 1);
    CGContextSetRGBFillColor(bitmap, 1, 0, 0, 1);
    CGContextDrawImage(bitmap, bitmap.bounds(), maskOf(2, 1, {0, 255}, decode));
    EXPECT_THAT(bitmap.pixels(), ElementsAre(clear, red));
}

TEST(ImageMask, HasOneTwoFourOrEightBits) {
    const Provider bytes = provide({0x50});
    for (const std::size_t bits : {1U, 2U, 4U, 8U}) {
        EXPECT_NE(static_cast<CGImageRef>(
                      Image(CGImageMaskCreate(1, 1, bits, bits, 1, bytes, nullptr, false))),
                  nullptr);
    }
    EXPECT_EQ(CGImageMaskCreate(1, 1, 3, 3, 1, bytes, nullptr, false), nullptr);
    EXPECT_EQ(CGImageMaskCreate(1, 1, 16, 16, 2, bytes, nullptr, false), nullptr);
    EXPECT_EQ(CGImageMaskCreate(9, 1, 1, 1, 1, bytes, nullptr, false), nullptr);
    EXPECT_EQ(CGImageMaskCreate(1, 1, 1, 1, 1, nullptr, nullptr, false), nullptr);
}

TEST(DecodeArray, InvertsGray) {
    const CGFloat decode[] = {1, 0};
    const Layout layout = {8, 8, kCGImageAlphaNone, kCGColorSpaceModelMonochrome};
    EXPECT_THAT(drawn(makeImage(3, 1, layout, {0, 100, 255}, decode)),
                ElementsAre(white, Pixel{155, 155, 155}, black));
}

TEST(DecodeArray, MapsEveryColourByItself) {
    const CGFloat decode[] = {0, 0.5, 1, 1, 0.2, 0};
    const Layout layout = {8, 24, kCGImageAlphaNone, kCGColorSpaceModelRGB};
    EXPECT_THAT(drawn(makeImage(1, 1, layout, {255, 7, 0}, decode)),
                ElementsAre(Pixel{128, 255, 51}));
}

TEST(ImageCopy, IsAnotherObjectWithTheSamePixels) {
    const Image image = fourColors();
    const Image copy = CGImageCreateCopy(image);
    EXPECT_NE(static_cast<CGImageRef>(copy), static_cast<CGImageRef>(image));
    EXPECT_EQ(drawn(copy), drawn(image));
}

TEST(ImageCopy, TakesItsSamplesForColoursOfAnotherSpace) {
    const Space space = CGColorSpaceCreateWithName(kCGColorSpaceSRGB);
    const Image copy = CGImageCreateCopyWithColorSpace(fourColors(), space);
    EXPECT_EQ(CGImageGetColorSpace(copy), static_cast<CGColorSpaceRef>(space));
    EXPECT_EQ(drawn(copy), drawn(fourColors()));
    EXPECT_EQ(CGImageCreateCopyWithColorSpace(fourColors(), deviceGray()), nullptr);
    EXPECT_EQ(CGImageCreateCopyWithColorSpace(maskOf(1, 1, {0}), deviceGray()), nullptr);
}

} // namespace
