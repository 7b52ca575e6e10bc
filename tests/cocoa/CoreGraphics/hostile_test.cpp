/// Arguments that nobody would choose, in great number.

#include "cocoa/CoreGraphics/support.h"

#include <limits>
#include <random>

#include <sys/mman.h>
#include <sys/resource.h>

using namespace cgtest;

namespace {

class Chance {
public:
    explicit Chance(unsigned seed)
        : engine(seed) {}

    std::size_t below(std::size_t end) { return engine() % end; }
    template <typename Value>
    Value of(std::initializer_list<Value> values) {
        return values.begin()[below(values.size())];
    }
    std::vector<std::uint8_t> bytes(std::size_t count) {
        std::vector<std::uint8_t> all(count);
        for (std::uint8_t& byte : all)
            byte = static_cast<std::uint8_t>(engine());
        return all;
    }
    /// Mostly something that is on the bitmap.
    CGFloat coordinate() {
        if (below(40) == 0) {
            return of<CGFloat>({std::numeric_limits<CGFloat>::infinity(),
                                std::numeric_limits<CGFloat>::quiet_NaN(), CGFloat(1e30),
                                CGFloat(-1e30), CGFloat(1e-30)});
        }
        return static_cast<CGFloat>(below(4000)) / 100 - 15;
    }
    CGRect rect() { return CGRectMake(coordinate(), coordinate(), coordinate(), coordinate()); }

private:
    std::mt19937 engine;
};

/// Often null: then the arguments did not fit together.
Image anyImage(Chance& chance) {
    const std::size_t width = chance.of<std::size_t>({1, 2, 7, 31});
    const std::size_t height = chance.of<std::size_t>({1, 2, 5, 19});
    const std::size_t bits = chance.of<std::size_t>({1, 2, 3, 4, 5, 7, 8, 8, 8, 11, 16, 32});
    const std::size_t samples = 1 + chance.below(5);
    const std::size_t bitsPerPixel = bits * samples + chance.of<std::size_t>({0, 0, 0, 1, 8});
    const std::size_t bytesPerRow = (width * bitsPerPixel + 7) / 8 + chance.below(4);
    const auto info = static_cast<CGBitmapInfo>(chance.below(9) | chance.below(6) << 12 |
                                                (bits == 32 ? floats : 0));
    const auto model = chance.of({kCGColorSpaceModelMonochrome, kCGColorSpaceModelRGB,
                                  kCGColorSpaceModelCMYK, kCGColorSpaceModelUnknown});
    const CGFloat decode[] = {1, 0, 0, CGFloat(0.5), 2, -1, 0, 1};
    // Exactly as many bytes as there must be, so that reading one more is noticed.
    const Provider provider =
        provide(chance.bytes((height - 1) * bytesPerRow + (width * bitsPerPixel + 31) / 32 * 4));
    if (chance.below(6) == 0) {
        return CGImageMaskCreate(width, height, bits, bits, bytesPerRow, provider, nullptr, true);
    }
    return CGImageCreate(width, height, bits, bitsPerPixel, bytesPerRow, spaceOf(model), info,
                         provider, chance.below(4) == 0 ? decode : nullptr, true,
                         kCGRenderingIntentDefault);
}

Image anyVariant(Chance& chance) {
    Image image = anyImage(chance);
    if (chance.below(3) == 0) image = CGImageCreateWithImageInRect(image, chance.rect());
    if (chance.below(3) == 0) {
        const Image mask = anyImage(chance);
        if (Image masked = CGImageCreateWithMask(image, mask)) return masked;
    }
    return image;
}

void drawAnything(Chance& chance, CGContextRef context) {
    CGContextSaveGState(context);
    CGContextSetBlendMode(context, static_cast<CGBlendMode>(chance.below(29)));
    CGContextSetInterpolationQuality(context, static_cast<CGInterpolationQuality>(chance.below(6)));
    CGContextSetAlpha(context, chance.coordinate());
    CGContextSetShouldAntialias(context, chance.below(4) != 0);
    if (chance.below(2) == 0) CGContextRotateCTM(context, chance.coordinate());
    if (chance.below(3) == 0) CGContextScaleCTM(context, chance.coordinate(), chance.coordinate());
    if (chance.below(3) == 0) CGContextClipToRect(context, chance.rect());
    CGContextSetRGBFillColor(context, chance.coordinate(), chance.coordinate(), 0.5, 0.5);
    if (chance.below(3) == 0) CGContextFillRect(context, chance.rect());
    CGContextDrawImage(context, chance.rect(), anyVariant(chance));
    CGContextRestoreGState(context);
}

class AnyDrawing : public testing::TestWithParam<unsigned> {};

TEST_P(AnyDrawing, LeavesPremultipliedPixelsInTheBitmapAndNothingBesideIt) {
    Chance chance(GetParam());
    for (const ByteOrder& order : rgbOrders) {
        constexpr std::size_t width = 23, height = 17;
        // Rows of whole words are drawn into directly.
        const std::size_t bytesPerRow = width * 4 + chance.of<std::size_t>({3, 4});
        std::vector<std::uint8_t> memory(bytesPerRow * height, 0);
        const Context context = CGBitmapContextCreate(memory.data(), width, height, 8, bytesPerRow,
                                                      deviceRGB(), order.info);
        for (int i = 0; i < 60; ++i)
            drawAnything(chance, context);
        for (std::size_t y = 0; y < height; ++y) {
            const std::uint8_t* row = memory.data() + y * bytesPerRow;
            for (std::size_t x = 0; x < width && order.places[3] >= 0; ++x) {
                for (std::size_t color = 0; color < 3; ++color) {
                    ASSERT_LE(row[x * 4 + order.places[color]], row[x * 4 + order.places[3]]);
                }
            }
            for (std::size_t i = width * 4; i < bytesPerRow; ++i)
                ASSERT_EQ(row[i], 0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, AnyDrawing, testing::Range(1U, 5U));

/// One row of grey pixels, whose memory is taken only where something is drawn.
class VeryWideBitmap : public testing::Test {
protected:
    static constexpr std::size_t width = std::size_t{1} << 24;

    void SetUp() override {
        ASSERT_NE(pixels, MAP_FAILED);
        context = CGBitmapContextCreate(pixels, width, 1, 8, width, deviceGray(), 0);
        ASSERT_NE(context, nullptr);
    }
    ~VeryWideBitmap() override { munmap(pixels, width); }

    static long mostKilobytes() {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    }

    void* const pixels = mmap(nullptr, width, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    Context context;
};

TEST_F(VeryWideBitmap, TakesNoMemoryForAClipAlongPixelBorders) {
    const long before = mostKilobytes();
    CGContextClipToRect(context, CGRectMake(1, 0, CGFloat(width - 2), 1));
    EXPECT_EQ(CGContextGetClipBoundingBox(context).size.width, CGFloat(width - 2));
    EXPECT_LT(mostKilobytes() - before, 10000);
}

// An allocator of the sanitizers ends the program where there is no memory.
#if !defined(__SANITIZE_ADDRESS__) && !__has_feature(address_sanitizer) &&                         \
    !__has_feature(thread_sanitizer)
TEST_F(VeryWideBitmap, LetsNothingThroughAClipThatThereIsNoMemoryFor) {
    rlimit whole{};
    getrlimit(RLIMIT_AS, &whole);
    const rlimit none{0, whole.rlim_max};
    const CGRect blurred = CGRectMake(CGFloat(0.5), 0, CGFloat(width - 1), 1);
    setrlimit(RLIMIT_AS, &none);
    CGContextFillRect(context, blurred);
    CGContextClearRect(context, blurred);
    CGContextClipToRect(context, blurred);
    setrlimit(RLIMIT_AS, &whole);
    EXPECT_TRUE(CGRectIsNull(CGContextGetClipBoundingBox(context)));
}
#endif

} // namespace
