#include "cocoa/CoreGraphics/bitmap_context.h"
#include "cocoa/CoreGraphics/support.h"

#include <limits>
#include <string>

using namespace cgtest;

namespace {

/// The arguments of CGBitmapContextCreate, right until one is changed.
struct Arguments {
    std::size_t width = 4;
    std::size_t height = 3;
    std::size_t bitsPerComponent = 8;
    std::size_t bytesPerRow = 0;
    CGColorSpaceModel model = kCGColorSpaceModelRGB;
    CGBitmapInfo info = kCGImageAlphaPremultipliedLast;

    bool works() const {
        const Context context = CGBitmapContextCreate(nullptr, width, height, bitsPerComponent,
                                                      bytesPerRow, spaceOf(model), info);
        return context != nullptr;
    }
};

TEST(BitmapContext, IsMadeInEveryOrderOfRGB) {
    for (const ByteOrder& order : rgbOrders) {
        EXPECT_TRUE(Arguments{.info = order.info}.works()) << order.name;
    }
}

TEST(BitmapContext, IsMadeOfGrayAndOfAlphaOnly) {
    EXPECT_TRUE(
        (Arguments{.model = kCGColorSpaceModelMonochrome, .info = kCGImageAlphaNone}.works()));
    EXPECT_TRUE((Arguments{.model = kCGColorSpaceModelUnknown, .info = kCGImageAlphaOnly}.works()));
    EXPECT_TRUE(
        (Arguments{.model = kCGColorSpaceModelMonochrome, .info = kCGImageAlphaOnly}.works()));
}

TEST(BitmapContext, IsNotMadeOfWhatCannotBeDrawnInto) {
    EXPECT_FALSE(Arguments{.info = kCGImageAlphaNone}.works()) << "24-bit RGB";
    EXPECT_FALSE(Arguments{.info = kCGImageAlphaLast}.works()) << "straight alpha";
    EXPECT_FALSE(Arguments{.info = kCGImageAlphaFirst}.works()) << "straight alpha";
    EXPECT_FALSE(Arguments{.info = kCGImageAlphaOnly}.works()) << "alpha only, with RGB";
    EXPECT_FALSE(Arguments{.model = kCGColorSpaceModelUnknown}.works()) << "RGB without space";
    EXPECT_FALSE(Arguments{.model = kCGColorSpaceModelMonochrome}.works()) << "gray with alpha";
    EXPECT_FALSE(Arguments{.bitsPerComponent = 5}.works());
    EXPECT_FALSE(Arguments{.info = kCGImageAlphaPremultipliedLast | 7U << 12}.works());
}

TEST(BitmapContext, IsNotMadeWithoutPixelsOrWithShortRows) {
    EXPECT_FALSE(Arguments{.width = 0}.works());
    EXPECT_FALSE(Arguments{.height = 0}.works());
    EXPECT_FALSE(Arguments{.bytesPerRow = 15}.works());
    EXPECT_TRUE(Arguments{.bytesPerRow = 16}.works());
}

TEST(BitmapContext, IsNotMadeOfMoreThanMemory) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    EXPECT_FALSE(Arguments{.width = most}.works());
    EXPECT_FALSE(Arguments{.height = most}.works());
    EXPECT_FALSE((Arguments{.width = 0x7FFFFFFF, .height = 0x7FFFFFFF}.works()));
    EXPECT_FALSE(Arguments{.bytesPerRow = most / 2}.works());
}

TEST(BitmapContext, AnswersWhatItWasMadeOf) {
    const Space space = deviceRGB();
    {
        std::array<std::uint8_t, 60> memory{};
        const CGBitmapInfo info = kCGImageAlphaPremultipliedFirst | little32;
        const Context context = CGBitmapContextCreate(memory.data(), 4, 3, 8, 20, space, info);
        EXPECT_EQ(CGBitmapContextGetData(context), memory.data());
        EXPECT_EQ(CGBitmapContextGetWidth(context), 4U);
        EXPECT_EQ(CGBitmapContextGetHeight(context), 3U);
        EXPECT_EQ(CGBitmapContextGetBitsPerComponent(context), 8U);
        EXPECT_EQ(CGBitmapContextGetBitsPerPixel(context), 32U);
        EXPECT_EQ(CGBitmapContextGetBytesPerRow(context), 20U);
        EXPECT_EQ(CGBitmapContextGetColorSpace(context), static_cast<CGColorSpaceRef>(space));
        EXPECT_EQ(CGBitmapContextGetAlphaInfo(context), kCGImageAlphaPremultipliedFirst);
        EXPECT_EQ(CGBitmapContextGetBitmapInfo(context), info);
        EXPECT_EQ(CFGetTypeID(context), CGContextGetTypeID());
        EXPECT_EQ(CFGetRetainCount(context), 1);
        EXPECT_EQ(CFGetRetainCount(space), 2);
    }
    EXPECT_EQ(CFGetRetainCount(space), 1);
}

TEST(BitmapContext, OfAlphaOnlyHasNoColourSpace) {
    const Context context = CGBitmapContextCreate(nullptr, 2, 2, 8, 0, nullptr, kCGImageAlphaOnly);
    EXPECT_EQ(CGBitmapContextGetColorSpace(context), nullptr);
    EXPECT_EQ(CGBitmapContextGetBitsPerPixel(context), 8U);
}

TEST(BitmapContext, ThatIsNullAnswersNothingAndDrawsNothing) {
    EXPECT_EQ(CGBitmapContextGetData(nullptr), nullptr);
    EXPECT_EQ(CGBitmapContextGetWidth(nullptr), 0U);
    EXPECT_EQ(CGBitmapContextCreateImage(nullptr), nullptr);
    CGContextSaveGState(nullptr);
    CGContextRestoreGState(nullptr);
    CGContextFillRect(nullptr, CGRectMake(0, 0, 1, 1));
    CGContextDrawImage(nullptr, CGRectMake(0, 0, 1, 1), fourColors());
    CGContextFlush(nullptr);
    CGContextRelease(nullptr);
}

TEST(BitmapContext, StartsTransparentInMemoryOfItsOwn) {
    const Bitmap bitmap(3, 2);
    EXPECT_THAT(bitmap.pixels(), testing::Each(clear));
    EXPECT_GE(CGBitmapContextGetBytesPerRow(bitmap), 12U);
}

TEST(BitmapContext, KeepsWhatIsInTheCallersMemoryAndBehindItsRows) {
    std::vector<std::uint8_t> memory(3 * 20, 7);
    const Context context = CGBitmapContextCreate(memory.data(), 4, 3, 8, 20, deviceRGB(),
                                                  kCGImageAlphaPremultipliedLast);
    CGContextSetRGBFillColor(context, 1, 0, 0, 1);
    CGContextFillRect(context, CGRectMake(0, 0, 4, 1));
    EXPECT_EQ(std::vector(memory.begin(), memory.begin() + 40), std::vector<std::uint8_t>(40, 7));
    EXPECT_THAT(std::vector(memory.begin() + 40, memory.begin() + 44),
                testing::ElementsAre(255, 0, 0, 255))
        << "the bottom row of the picture is the last one of the memory";
    EXPECT_THAT(std::vector(memory.begin() + 56, memory.end()), testing::Each(7));
}

struct Given {
    void* info = nullptr;
    void* data = nullptr;
    int times = 0;
};
Given given;

TEST(BitmapContext, GivesTheCallersMemoryBackWhenItGoes) {
    std::array<std::uint8_t, 16> memory{};
    CGContextRef context = CGBitmapContextCreateWithData(
        memory.data(), 2, 2, 8, 8, deviceRGB(), kCGImageAlphaPremultipliedLast,
        [](void* info, void* data) {
            given = {info, data, given.times + 1};
        },
        &given);
    CGContextRetain(context);
    CGContextRelease(context);
    EXPECT_EQ(given.times, 0);
    CGContextRelease(context);
    EXPECT_EQ(given.times, 1);
    EXPECT_EQ(given.info, &given);
    EXPECT_EQ(given.data, memory.data());
}

/// Rows and pixels that lie on no word.
TEST(BitmapContext, DrawsIntoMemoryOfAnyAlignment) {
    for (std::size_t offset = 0; offset < 4; ++offset) {
        std::vector<std::uint8_t> memory(offset + 2 * 13, 9);
        const Context context = CGBitmapContextCreate(memory.data() + offset, 3, 2, 8, 13,
                                                      deviceRGB(), kCGImageAlphaPremultipliedLast);
        CGContextSetRGBFillColor(context, 0, 0, 1, 1);
        CGContextFillRect(context, CGRectMake(2, 1, 1, 1));
        EXPECT_THAT(std::vector(memory.begin() + offset, memory.begin() + offset + 13),
                    testing::ElementsAre(9, 9, 9, 9, 9, 9, 9, 9, 0, 0, 255, 255, 9));
    }
}

TEST(BitmapContext, OfAlphaOnlyKeepsTheAlphaOfWhatIsDrawn) {
    std::array<std::uint8_t, 6> memory{};
    const Context context =
        CGBitmapContextCreate(memory.data(), 3, 2, 8, 3, nullptr, kCGImageAlphaOnly);
    CGContextSetBlendMode(context, kCGBlendModeCopy);
    const Image image = imageOf(3, 2,
                                {{0, 0, 0, 10},
                                 {20, 0, 0, 20},
                                 {30, 30, 30, 30},
                                 {0, 0, 0, 40},
                                 {0, 0, 0, 50},
                                 {60, 0, 0, 60}});
    CGContextDrawImage(context, CGRectMake(0, 0, 3, 2), image);
    EXPECT_THAT(memory, testing::ElementsAre(10, 20, 30, 40, 50, 60));
    CGContextSetBlendMode(context, kCGBlendModeNormal);
    CGContextSetGrayFillColor(context, 1, 0.5);
    CGContextFillRect(context, CGRectMake(0, 0, 1, 1));
    EXPECT_EQ(memory[3], 148); // 128 + 40 * 127 / 255, rounded
}

TEST(BitmapContext, OfGrayKeepsTheLuminanceOfWhatIsDrawn) {
    std::array<std::uint8_t, 4> memory{};
    const Context context =
        CGBitmapContextCreate(memory.data(), 2, 2, 8, 2, deviceGray(), kCGImageAlphaNone);
    CGContextDrawImage(context, CGRectMake(0, 0, 2, 2), fourColors());
    EXPECT_NEAR(memory[0], 0.30 * 255, 1);
    EXPECT_NEAR(memory[1], 0.59 * 255, 1);
    EXPECT_NEAR(memory[2], 0.11 * 255, 1);
    EXPECT_EQ(memory[3], 255);
    CGContextSetGrayFillColor(context, 100 / 255.0, 1);
    CGContextFillRect(context, CGRectMake(0, 0, 2, 2));
    EXPECT_THAT(memory, testing::Each(100));
}

/// Layouts of bitmap representations that the public function refuses.
Context drawnIntoRepresentation(std::vector<std::uint8_t>& memory, std::size_t bitsPerPixel,
                                CGColorSpaceModel model, CGBitmapInfo info) {
    const std::size_t bytesPerRow = 2 * bitsPerPixel / 8;
    memory.assign(2 * bytesPerRow, 9);
    Context context = cocoa::cg::createBitmapContext(
        memory.data(), 2, 2, 8, bitsPerPixel, bytesPerRow, spaceOf(model), info, nullptr, nullptr);
    if (context != nullptr) {
        CGContextDrawImage(context, CGRectMake(0, 0, 2, 2), fourColors());
        CGContextSetGrayFillColor(context, 1, 1);
        CGContextSetAlpha(context, 0.2);
        CGContextSetBlendMode(context, kCGBlendModeCopy);
        CGContextFillRect(context, CGRectMake(1, 0, 1, 1));
    }
    return context;
}

TEST(RepresentationContext, DrawsIntoRGBOf24Bits) {
    std::vector<std::uint8_t> memory;
    const Context context =
        drawnIntoRepresentation(memory, 24, kCGColorSpaceModelRGB, kCGImageAlphaNone);
    EXPECT_THAT(memory, testing::ElementsAre(255, 0, 0, 0, 255, 0, 0, 0, 255, 51, 51, 51));
    EXPECT_EQ(CGBitmapContextGetBitsPerPixel(context), 24U);
}

TEST(RepresentationContext, DrawsIntoRGBOf32BitsWithoutAlpha) {
    std::vector<std::uint8_t> memory;
    const Context context =
        drawnIntoRepresentation(memory, 32, kCGColorSpaceModelRGB, kCGImageAlphaNone);
    EXPECT_THAT(std::vector(memory.begin() + 4, memory.begin() + 7),
                testing::ElementsAre(0, 255, 0));
    EXPECT_THAT(std::vector(memory.begin() + 12, memory.begin() + 15), testing::Each(51));
}

TEST(RepresentationContext, DrawsIntoGrayWithAlphaBehindOrInFront) {
    std::vector<std::uint8_t> memory;
    const Context last = drawnIntoRepresentation(memory, 16, kCGColorSpaceModelMonochrome,
                                                 kCGImageAlphaPremultipliedLast);
    EXPECT_THAT(memory, testing::ElementsAre(77, 255, 150, 255, 28, 255, 51, 51));
    const Context first = drawnIntoRepresentation(memory, 16, kCGColorSpaceModelMonochrome,
                                                  kCGImageAlphaPremultipliedFirst);
    EXPECT_THAT(memory, testing::ElementsAre(255, 77, 255, 150, 255, 28, 51, 51));
}

TEST(RepresentationContext, IsNotMadeOfStraightAlphaNorOfOtherSamples) {
    std::vector<std::uint8_t> memory;
    EXPECT_EQ(static_cast<CGContextRef>(
                  drawnIntoRepresentation(memory, 32, kCGColorSpaceModelRGB, kCGImageAlphaLast)),
              nullptr);
    EXPECT_EQ(static_cast<CGContextRef>(
                  drawnIntoRepresentation(memory, 32, kCGColorSpaceModelCMYK, kCGImageAlphaNone)),
              nullptr);
    EXPECT_EQ(static_cast<CGContextRef>(drawnIntoRepresentation(memory, 40, kCGColorSpaceModelRGB,
                                                                kCGImageAlphaPremultipliedLast)),
              nullptr);
}

TEST(ImageOfContext, KeepsItsPixelsWhenTheContextIsDrawnInto) {
    Bitmap bitmap(2, 2);
    CGContextDrawImage(bitmap, bitmap.bounds(), fourColors());
    const Image image = CGBitmapContextCreateImage(bitmap);
    bitmap.fill(black);
    Bitmap copy(2, 2);
    CGContextDrawImage(copy, copy.bounds(), image);
    EXPECT_THAT(copy.pixels(), testing::ElementsAre(red, green, blue, white));
}

TEST(ImageOfContext, HasTheLayoutOfTheContext) {
    for (const ByteOrder& order : rgbOrders) {
        Bitmap bitmap(2, 2, order);
        CGContextDrawImage(bitmap, bitmap.bounds(), fourColors());
        const Image image = CGBitmapContextCreateImage(bitmap);
        EXPECT_EQ(CGImageGetBitmapInfo(image), order.info);
        EXPECT_EQ(CGImageGetBitsPerPixel(image), 32U);
        EXPECT_EQ(CGImageGetBytesPerRow(image), CGBitmapContextGetBytesPerRow(bitmap));
        Bitmap copy(2, 2);
        CGContextDrawImage(copy, copy.bounds(), image);
        EXPECT_THAT(copy.pixels(), testing::ElementsAre(red, green, blue, white)) << order.name;
    }
}

TEST(ImageOfContext, OfGrayAndOfAlphaOnlyKeepsTheirKind) {
    const Context gray = CGBitmapContextCreate(nullptr, 2, 2, 8, 2, deviceGray(), 0);
    EXPECT_EQ(CGColorSpaceGetModel(CGImageGetColorSpace(Image(CGBitmapContextCreateImage(gray)))),
              kCGColorSpaceModelMonochrome);
    const Context alpha = CGBitmapContextCreate(nullptr, 2, 2, 8, 2, nullptr, kCGImageAlphaOnly);
    const Image image = CGBitmapContextCreateImage(alpha);
    EXPECT_EQ(CGImageGetAlphaInfo(image), kCGImageAlphaOnly);
    EXPECT_EQ(CGImageGetColorSpace(image), nullptr);
}

TEST(ImageOfContext, ReadsNothingBehindTheLastPixel) {
    const std::vector<std::uint8_t> expected(20 + 16, 3);
    std::vector<std::uint8_t> memory = expected;
    const Context context = CGBitmapContextCreate(memory.data(), 4, 2, 8, 20, deviceRGB(),
                                                  kCGImageAlphaPremultipliedLast);
    const Image image = CGBitmapContextCreateImage(context);
    const Made<CFDataRef> data = CGDataProviderCopyData(CGImageGetDataProvider(image));
    EXPECT_EQ(CFDataGetLength(data), 36);
}

} // namespace
