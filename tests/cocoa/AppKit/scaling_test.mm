/// How well images are scaled when they are drawn with high interpolation, against the definition
/// of the filter in double precision.

#include "support.h"

#include <numbers>

namespace appkit_test {
namespace {

using testing::Each;

/// Premultiplied RGBA in double precision.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<double> samples;

    Picture(int width, int height)
        : width(width)
        , height(height)
        , samples(static_cast<std::size_t>(width * height * 4)) {}

    double& at(int x, int y, int channel) {
        return samples[static_cast<std::size_t>((y * width + x) * 4 + channel)];
    }
    double at(int x, int y, int channel) const {
        return const_cast<Picture*>(this)->at(x, y, channel);
    }
};

template <class Value>
Picture makePicture(int width, int height, const Value& value) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int channel = 0; channel < 4; ++channel)
                picture.at(x, y, channel) = std::round(value(x, y, channel));
    return picture;
}

/// Smooth, with fine lines, an edge and no symmetry.
Picture photo(int width, int height) {
    return makePicture(width, height, [](int x, int y, int channel) {
        if (channel == 3) return 255.0;
        const double smooth =
            100 + 60 * std::sin(x * 0.13 + channel) * std::cos(y * 0.09 - channel);
        return smooth + (2 * x > 3 * y ? 50 : 0) + (x % 7 == 0 ? 30 : 0);
    });
}

double lanczos(double x) {
    if (x == 0) return 1;
    if (std::abs(x) >= 3) return 0;
    const double angle = std::numbers::pi * x;
    return 3 * std::sin(angle) * std::sin(angle / 3) / (angle * angle);
}

/// The pixel that stands for one beyond the ends: as in a mirror in the middle of the outermost one
/// where the picture shrinks, else the outermost one.
int inside(int index, int count, bool shrinks) {
    while (shrinks && (index < 0 || index >= count))
        index = index < 0 ? -index : 2 * (count - 1) - index;
    return std::clamp(index, 0, count - 1);
}

/// The weights of the source's pixels for one of the result.
std::vector<double> weights(int from, int to, int index) {
    const double step = static_cast<double>(from) / to;
    const double stretch = std::max(1.0, step);
    const double center = (index + 0.5) * step;
    std::vector<double> all(static_cast<std::size_t>(from));
    double sum = 0;
    for (int source = static_cast<int>(std::floor(center - 3 * stretch));
         source <= static_cast<int>(std::ceil(center + 3 * stretch)); ++source) {
        const double weight = lanczos((source + 0.5 - center) / stretch);
        all[static_cast<std::size_t>(inside(source, from, step > 1))] += weight;
        sum += weight;
    }
    for (double& weight : all)
        weight /= sum;
    return all;
}

/// Clamped to what a premultiplied pixel can be.
Picture reference(const Picture& from, int width, int height) {
    Picture rows(width, from.height);
    for (int x = 0; x < width; ++x) {
        const auto row = weights(from.width, width, x);
        for (int y = 0; y < from.height; ++y)
            for (int channel = 0; channel < 4; ++channel)
                for (int source = 0; source < from.width; ++source)
                    rows.at(x, y, channel) +=
                        row[static_cast<std::size_t>(source)] * from.at(source, y, channel);
    }
    Picture result(width, height);
    for (int y = 0; y < height; ++y) {
        const auto column = weights(from.height, height, y);
        for (int x = 0; x < width; ++x) {
            for (int source = 0; source < from.height; ++source)
                for (int channel = 0; channel < 4; ++channel)
                    result.at(x, y, channel) +=
                        column[static_cast<std::size_t>(source)] * rows.at(x, source, channel);
            result.at(x, y, 3) = std::clamp(result.at(x, y, 3), 0.0, 255.0);
            for (int channel = 0; channel < 3; ++channel)
                result.at(x, y, channel) =
                    std::clamp(result.at(x, y, channel), 0.0, result.at(x, y, 3));
        }
    }
    return result;
}

NSImage* imageOf(const Picture& picture) {
    ByteVector rows;
    for (const double sample : picture.samples)
        rows.push_back(static_cast<std::uint8_t>(sample));
    return makeImage(makeBitmap(
        {.width = picture.width, .height = picture.height, .samples = 4, .alpha = true}, rows));
}

NSBitmapImageRep* scaled(NSImage* image, int width, int height) {
    return drawing(width, height, [=] {
        [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationHigh];
        const NSSize size = [image size];
        [image drawInRect:NSMakeRect(0, 0, width, height)
                 fromRect:NSMakeRect(0, 0, size.width, size.height)
                operation:NSCompositeCopy
                 fraction:1];
    });
}

double noiseRatio(NSBitmapImageRep* drawn, const Picture& exact) {
    const ByteVector rows = rowsOf(drawn);
    EXPECT_EQ(exact.samples.size(), rows.size());
    double squares = 0;
    for (std::size_t index = 0; index < rows.size(); ++index)
        squares += std::pow(rows[index] - exact.samples[index], 2);
    return 10 * std::log10(255 * 255 * static_cast<double>(rows.size()) / squares);
}

struct Size {
    int width, height;
};

constexpr Size sizes[] = {{60, 45}, {40, 30}, {37, 71}, {90, 20}, {7, 5}, {121, 91}, {200, 130}};

class Scaling : public AppKitTest {};

// Rounding to whole samples alone leaves 59 dB: an error of 1/12 squared on average.
constexpr double wantedRatio = 54;

TEST_F(Scaling, FollowsTheFilterInEverySize) {
    const Picture picture = photo(120, 90);
    for (const auto& [width, height] : sizes)
        EXPECT_GT(
            noiseRatio(scaled(imageOf(picture), width, height), reference(picture, width, height)),
            wantedRatio)
            << width << " by " << height;
}

TEST_F(Scaling, FollowsTheFilterWithAlpha) {
    const Picture picture = makePicture(90, 80, [](int x, int y, int channel) {
        const double alpha = 127 + 127 * std::sin(x * 0.2) * std::cos(y * 0.3);
        return channel == 3 ? alpha : alpha * (channel + 1) / 4;
    });
    for (const auto& [width, height] : sizes)
        EXPECT_GT(
            noiseRatio(scaled(imageOf(picture), width, height), reference(picture, width, height)),
            wantedRatio)
            << width << " by " << height;
}

TEST_F(Scaling, RingsNoMoreThanTheFilter) {
    const Picture step = makePicture(64, 64, [](int x, int, int channel) {
        return channel == 3 ? 255 : x < 32 ? 60 : 190;
    });
    for (const int width : {40, 32, 20, 100}) {
        const Picture exact = reference(step, width, width);
        const ByteVector rows = rowsOf(scaled(imageOf(step), width, width));
        for (std::size_t index = 0; index < rows.size(); ++index)
            ASSERT_NEAR(exact.samples[index], rows[index], 1) << width << ", sample " << index;
    }
}

TEST_F(Scaling, OfACheckerboardToHalfGivesFlatGreyUpToTheEdges) {
    const Picture board = makePicture(
        64, 48, [](int x, int y, int channel) { return channel == 3 || (x + y) % 2 ? 255 : 0; });
    EXPECT_THAT(pixelsOf(scaled(imageOf(board), 32, 24)), Each(IsNear(Pixel{128, 128, 128}, 1)));
}

TEST_F(Scaling, KeepsTheEdgesOfAnOpaqueImage) {
    const Picture plain =
        makePicture(50, 40, [](int, int, int channel) { return channel == 1 ? 200 : 255; });
    for (const auto& [width, height] : sizes)
        EXPECT_THAT(pixelsOf(scaled(imageOf(plain), width, height)), Each(Pixel{255, 200, 255}))
            << width << " by " << height;
}

TEST_F(Scaling, LetsNoColourOutOfTransparentPixels) {
    // Columns of opaque red and of green that cannot be seen.
    ByteVector rows;
    for (int pixel = 0; pixel < 16 * 16; ++pixel)
        codecs_test::append(rows,
                            pixel % 2 ? ByteVector{255, 0, 0, 255} : ByteVector{0, 255, 0, 0});
    NSBitmapImageRep* straight = makeBitmap({.width = 16,
                                             .height = 16,
                                             .samples = 4,
                                             .alpha = true,
                                             .format = NSAlphaNonpremultipliedBitmapFormat},
                                            rows);
    for (const Pixel& pixel : pixelsOf(scaled(makeImage(straight), 8, 8))) {
        EXPECT_EQ(0, pixel.green);
        EXPECT_EQ(0, pixel.blue);
        EXPECT_EQ(pixel.alpha, pixel.red);
        EXPECT_NEAR(128, pixel.alpha, 1);
    }
}

TEST_F(Scaling, WithAFractionMultipliesOnce) {
    const Picture plain = makePicture(8, 8, [](int, int, int) { return 255; });
    NSBitmapImageRep* drawn = drawing(4, 4, [&plain] {
        [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationHigh];
        [imageOf(plain) drawInRect:NSMakeRect(0, 0, 4, 4)
                          fromRect:NSMakeRect(0, 0, 8, 8)
                         operation:NSCompositeCopy
                          fraction:0.5];
    });
    EXPECT_THAT(pixelsOf(drawn), Each(IsNear(Pixel{128, 128, 128, 128}, 1)));
}

TEST_F(Scaling, IntoAFlippedImageIsTheSameUpsideDown) {
    NSImage* image = imageOf(photo(30, 20));
    NSBitmapImageRep* upright = scaled(image, 15, 10);
    NSImage* target = [[[NSImage alloc] initWithSize:NSMakeSize(15, 10)] autorelease];
    [target setFlipped:YES];
    [target lockFocus];
    [[NSGraphicsContext currentContext] setImageInterpolation:NSImageInterpolationHigh];
    [image drawInRect:NSMakeRect(0, 0, 15, 10)
             fromRect:NSMakeRect(0, 0, 30, 20)
            operation:NSCompositeCopy
             fraction:1];
    [target unlockFocus];
    for (NSInteger y = 0; y < 10; ++y)
        for (NSInteger x = 0; x < 15; ++x)
            EXPECT_THAT(pixelAt(bitmapOf(target), x, 9 - y), IsNear(pixelAt(upright, x, y), 1));
}

} // namespace
} // namespace appkit_test
