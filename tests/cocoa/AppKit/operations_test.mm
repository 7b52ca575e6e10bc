/// How images meet what is there, for every compositing operation.

#include "support.h"

#include <algorithm>
#include <cmath>

namespace appkit_test {
namespace {

struct Operation {
    const char* name;
    NSCompositingOperation value;
    /// Of premultiplied source and destination and their alphas, 0 to 1.
    double (*result)(double s, double d, double sa, double da);
};

void PrintTo(const Operation& operation, std::ostream* stream) { *stream << operation.name; }

const Operation operations[] = {
    {"Clear", 0, [](double, double, double, double) { return 0.0; }},
    {"Copy", 1, [](double s, double, double, double) { return s; }},
    {"SourceOver", 2, [](double s, double d, double sa, double) { return s + d * (1 - sa); }},
    {"SourceIn", 3, [](double s, double, double, double da) { return s * da; }},
    {"SourceOut", 4, [](double s, double, double, double da) { return s * (1 - da); }},
    {"SourceAtop", 5,
     [](double s, double d, double sa, double da) { return s * da + d * (1 - sa); }},
    {"DestinationOver", 6, [](double s, double d, double, double da) { return s * (1 - da) + d; }},
    {"DestinationIn", 7, [](double, double d, double sa, double) { return d * sa; }},
    {"DestinationOut", 8, [](double, double d, double sa, double) { return d * (1 - sa); }},
    {"DestinationAtop", 9,
     [](double s, double d, double sa, double da) { return s * (1 - da) + d * sa; }},
    {"XOR", 10,
     [](double s, double d, double sa, double da) { return s * (1 - da) + d * (1 - sa); }},
    {"Highlight", 12, [](double s, double d, double sa, double) { return s + d * (1 - sa); }},
    {"PlusLighter", 13, [](double s, double d, double, double) { return std::min(1.0, s + d); }},
};

class CompositingOperation : public testing::WithParamInterface<Operation>, public AppKitTest {
protected:
    static constexpr Pixel source{100, 50, 0, 200};
    static constexpr Pixel destination{0, 60, 120, 150};

    static Pixel expected(double fraction) {
        const auto channel = [fraction](int s, int d) {
            return static_cast<int>(
                std::lround(255 * GetParam().result(s / 255.0 * fraction, d / 255.0,
                                                    source.alpha / 255.0 * fraction,
                                                    destination.alpha / 255.0)));
        };
        return {channel(source.red, destination.red), channel(source.green, destination.green),
                channel(source.blue, destination.blue), channel(source.alpha, destination.alpha)};
    }

    /// The source drawn on the middle one of three pixels.
    static NSBitmapImageRep* draw(CGFloat fraction) {
        NSImage* image = makeImage(makeRGBA(3, 1, {destination, destination, destination}));
        [image lockFocus];
        [makeImage(makeRGBA(1, 1, {source})) drawInRect:NSMakeRect(1, 0, 1, 1)
                                               fromRect:NSZeroRect
                                              operation:GetParam().value
                                               fraction:fraction];
        [image unlockFocus];
        return bitmapOf(image);
    }
};

TEST_P(CompositingOperation, FollowsItsFormula) {
    EXPECT_THAT(pixelAt(draw(1), 1, 0), IsNear(expected(1), 1));
}

TEST_P(CompositingOperation, TakesTheFractionAsTheSourcesOpacity) {
    EXPECT_THAT(pixelAt(draw(0.4), 1, 0), IsNear(expected(0.4), 1));
}

TEST_P(CompositingOperation, ChangesNothingOutsideTheRectangle) {
    EXPECT_EQ(destination, pixelAt(draw(1), 0, 0));
    EXPECT_EQ(destination, pixelAt(draw(1), 2, 0));
}

TEST_P(CompositingOperation, FillsByTheSameFormula) {
    NSImage* image = makeImage(makeRGBA(1, 1, {destination}));
    [image lockFocus];
    [[NSColor colorWithDeviceRed:0.5 green:0.25 blue:0 alpha:source.alpha / 255.0] set];
    NSRectFillUsingOperation(NSMakeRect(0, 0, 1, 1), GetParam().value);
    [image unlockFocus];
    EXPECT_THAT(pixelAt(bitmapOf(image), 0, 0), IsNear(expected(1), 1));
}

INSTANTIATE_TEST_SUITE_P(AppKit, CompositingOperation, testing::ValuesIn(operations),
                         [](const auto& info) { return std::string(info.param.name); });

class Compositing : public AppKitTest {};

TEST_F(Compositing, OperationsHaveCocoasValues) {
    EXPECT_EQ(2, NSCompositeSourceOver);
    EXPECT_EQ(11, NSCompositePlusDarker);
    EXPECT_EQ(13, NSCompositePlusLighter);
    EXPECT_EQ(28, NSCompositeLuminosity);
}

TEST_F(Compositing, PlusDarkerAddsDarkness) {
    NSImage* image = makeImage(makeRGBA(1, 1, {{200, 100, 255, 255}}));
    [image lockFocus];
    [makeImage(makeRGBA(1, 1, {{100, 100, 50, 255}})) compositeToPoint:NSZeroPoint
                                                             operation:NSCompositePlusDarker];
    [image unlockFocus];
    EXPECT_THAT(pixelAt(bitmapOf(image), 0, 0), IsNear(Pixel{45, 0, 50}, 1));
}

TEST_F(Compositing, BlendsAsCoreGraphicsDoes) {
    constexpr Pixel source{200, 40, 90, 255};
    constexpr Pixel destination{60, 180, 120, 255};
    for (int index = 0; index < 15; ++index) {
        NSImage* image = makeImage(makeRGBA(1, 1, {destination}));
        [image lockFocus];
        [makeImage(makeRGBA(1, 1, {source})) compositeToPoint:NSZeroPoint
                                                    operation:NSCompositeMultiply + index];
        [image unlockFocus];
        NSBitmapImageRep* plain = makeRGBA(1, 1, {destination});
        auto* port = static_cast<CGContextRef>(
            [[NSGraphicsContext graphicsContextWithBitmapImageRep:plain] graphicsPort]);
        CGContextSetBlendMode(port, static_cast<CGBlendMode>(kCGBlendModeMultiply + index));
        CGContextDrawImage(port, CGRectMake(0, 0, 1, 1), [makeRGBA(1, 1, {source}) CGImage]);
        EXPECT_EQ(pixelAt(plain, 0, 0), pixelAt(bitmapOf(image), 0, 0)) << index;
        EXPECT_NE(destination, pixelAt(plain, 0, 0)) << index;
    }
}

TEST_F(Compositing, RefusesANumberThatIsNoOperation) {
    drawing(1, 1, [] {
        EXPECT_EQUAL_STRINGS(NSInvalidArgumentException, raisedBy([] {
                                 [makeImage(fourColors()) compositeToPoint:NSZeroPoint
                                                                 operation:29];
                             }));
    });
}

TEST_F(Compositing, CutsFractionsToWhatOpacityCanBe) {
    for (const auto& [fraction, expected] :
         {std::pair{-1.0, nothing}, {7.0, red}, {double{NAN}, nothing}}) {
        NSBitmapImageRep* drawn = drawing(1, 1, [&, fraction = fraction] {
            [makeImage(makeRGBA(1, 1, {red})) dissolveToPoint:NSZeroPoint
                                                     fraction:static_cast<CGFloat>(fraction)];
        });
        EXPECT_EQ(expected, pixelAt(drawn, 0, 0));
    }
}

} // namespace
} // namespace appkit_test
