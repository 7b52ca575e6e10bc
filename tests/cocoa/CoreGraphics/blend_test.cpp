/// Every blend mode against its formula.

#include "cocoa/CoreGraphics/support.h"

#include <algorithm>
#include <cmath>
#include <string>

using namespace cgtest;

namespace {

/// Premultiplied, 0 to 1.
struct Light {
    std::array<double, 3> color{};
    double alpha = 1;

    static Light of(const Pixel& p) {
        return {{p.red / 255.0, p.green / 255.0, p.blue / 255.0}, p.alpha / 255.0};
    }
    Pixel pixel() const {
        const auto sample = [](double value) {
            return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
        };
        return {sample(color[0]), sample(color[1]), sample(color[2]), sample(alpha)};
    }
};

using Color = std::array<double, 3>;

double luminosity(const Color& c) { return 0.3 * c[0] + 0.59 * c[1] + 0.11 * c[2]; }
double saturation(const Color& c) {
    return *std::max_element(c.begin(), c.end()) - *std::min_element(c.begin(), c.end());
}

Color withLuminosity(Color c, double wanted) {
    const double shift = wanted - luminosity(c);
    for (double& value : c)
        value += shift;
    const double l = luminosity(c);
    const double least = *std::min_element(c.begin(), c.end());
    const double most = *std::max_element(c.begin(), c.end());
    for (double& value : c) {
        if (least < 0) value = l + (value - l) * l / (l - least);
    }
    for (double& value : c) {
        if (most > 1) value = l + (value - l) * (1 - l) / (most - l);
    }
    return c;
}

Color withSaturation(const Color& c, double wanted) {
    const double least = *std::min_element(c.begin(), c.end());
    const double range = saturation(c);
    Color result{};
    for (std::size_t i = 0; i < 3; ++i) {
        result[i] = range > 0 ? (c[i] - least) * wanted / range : 0;
    }
    return result;
}

/// What a separable mode makes of a backdrop b and a source s, neither multiplied.
double separable(CGBlendMode mode, double b, double s) {
    switch (mode) {
    case kCGBlendModeMultiply:
        return b * s;
    case kCGBlendModeScreen:
        return b + s - b * s;
    case kCGBlendModeOverlay:
        return separable(kCGBlendModeHardLight, s, b);
    case kCGBlendModeDarken:
        return std::min(b, s);
    case kCGBlendModeLighten:
        return std::max(b, s);
    case kCGBlendModeColorDodge:
        return b == 0 ? 0 : s >= 1 ? 1 : std::min(1.0, b / (1 - s));
    case kCGBlendModeColorBurn:
        return b >= 1 ? 1 : s <= 0 ? 0 : 1 - std::min(1.0, (1 - b) / s);
    case kCGBlendModeHardLight:
        return s <= 0.5 ? b * 2 * s : separable(kCGBlendModeScreen, b, 2 * s - 1);
    case kCGBlendModeSoftLight: {
        if (s <= 0.5) return b - (1 - 2 * s) * b * (1 - b);
        const double d = b <= 0.25 ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
        return b + (2 * s - 1) * (d - b);
    }
    case kCGBlendModeDifference:
        return std::abs(b - s);
    case kCGBlendModeExclusion:
        return b + s - 2 * b * s;
    default:
        return s;
    }
}

Color blended(CGBlendMode mode, const Color& b, const Color& s) {
    switch (mode) {
    case kCGBlendModeHue:
        return withLuminosity(withSaturation(s, saturation(b)), luminosity(b));
    case kCGBlendModeSaturation:
        return withLuminosity(withSaturation(b, saturation(s)), luminosity(b));
    case kCGBlendModeColor:
        return withLuminosity(s, luminosity(b));
    case kCGBlendModeLuminosity:
        return withLuminosity(b, luminosity(s));
    default: {
        Color result{};
        for (std::size_t i = 0; i < 3; ++i)
            result[i] = separable(mode, b[i], s[i]);
        return result;
    }
    }
}

/// How much of the source and of the destination the Porter and Duff modes keep.
std::pair<double, double> shares(CGBlendMode mode, double sourceAlpha, double below) {
    switch (mode) {
    case kCGBlendModeClear:
        return {0, 0};
    case kCGBlendModeCopy:
        return {1, 0};
    case kCGBlendModeSourceIn:
        return {below, 0};
    case kCGBlendModeSourceOut:
        return {1 - below, 0};
    case kCGBlendModeSourceAtop:
        return {below, 1 - sourceAlpha};
    case kCGBlendModeDestinationOver:
        return {1 - below, 1};
    case kCGBlendModeDestinationIn:
        return {0, sourceAlpha};
    case kCGBlendModeDestinationOut:
        return {0, 1 - sourceAlpha};
    case kCGBlendModeDestinationAtop:
        return {1 - below, sourceAlpha};
    case kCGBlendModeXOR:
        return {1 - below, 1 - sourceAlpha};
    default:
        return {1, 1}; // plus lighter
    }
}

Light expected(CGBlendMode mode, const Light& s, const Light& d) {
    Light result;
    if (mode == kCGBlendModePlusDarker) {
        result.alpha = std::min(1.0, s.alpha + d.alpha);
        for (std::size_t i = 0; i < 3; ++i) {
            const double dark = (s.alpha - s.color[i]) + (d.alpha - d.color[i]);
            result.color[i] = std::max(0.0, result.alpha - dark);
        }
    } else if (mode < kCGBlendModeClear) {
        const auto straight = [](const Light& light) {
            Color color{};
            for (std::size_t i = 0; i < 3; ++i) {
                color[i] = light.alpha > 0 ? light.color[i] / light.alpha : 0;
            }
            return color;
        };
        const Color both = blended(mode, straight(d), straight(s));
        result.alpha = s.alpha + d.alpha * (1 - s.alpha);
        for (std::size_t i = 0; i < 3; ++i) {
            result.color[i] = s.color[i] * (1 - d.alpha) + d.color[i] * (1 - s.alpha) +
                              both[i] * s.alpha * d.alpha;
        }
    } else {
        const auto [above, below] = shares(mode, s.alpha, d.alpha);
        result.alpha = std::min(1.0, s.alpha * above + d.alpha * below);
        for (std::size_t i = 0; i < 3; ++i) {
            result.color[i] = std::min(1.0, s.color[i] * above + d.color[i] * below);
        }
    }
    return result;
}

constexpr Pixel samples[] = {
    {255, 0, 0, 255}, {10, 200, 90, 255}, {128, 128, 128, 255},
    {0, 0, 0, 255},   {255, 255, 255},    {64, 100, 20, 128},
    {30, 0, 40, 40},  {0, 0, 0, 0},       {200, 180, 10, 200},
};
constexpr int count = std::size(samples);

/// Every sample over every other one.
struct Pairs {
    Image sources;
    std::vector<Pixel> below;

    Pairs() {
        std::vector<Pixel> above;
        for (const Pixel& source : samples) {
            for (const Pixel& under : samples) {
                above.push_back(source);
                below.push_back(under);
            }
        }
        sources = imageOf(count, count, above);
    }
    void prepare(Bitmap& bitmap) const {
        CGContextSetBlendMode(bitmap, kCGBlendModeCopy);
        CGContextDrawImage(bitmap, bitmap.bounds(), imageOf(count, count, below));
    }
};

class BlendMode : public testing::TestWithParam<CGBlendMode> {
protected:
    /// The modes of sums of products are off by rounding; the others divide by small alphas.
    int tolerance() const {
        return GetParam() >= kCGBlendModeClear || GetParam() == kCGBlendModeNormal ? 1 : 2;
    }
    Pairs pairs;
};

TEST_P(BlendMode, FollowsItsFormula) {
    for (const ByteOrder& order : rgbOrders) {
        if (order.places[3] < 0) continue;
        Bitmap bitmap(count, count, order);
        pairs.prepare(bitmap);
        CGContextSetBlendMode(bitmap, GetParam());
        CGContextDrawImage(bitmap, bitmap.bounds(), pairs.sources);
        for (int y = 0; y < count; ++y) {
            for (int x = 0; x < count; ++x) {
                const Light result =
                    expected(GetParam(), Light::of(samples[y]), Light::of(samples[x]));
                EXPECT_THAT(bitmap.at(x, y), IsNear(result.pixel(), tolerance()))
                    << samples[y] << " onto " << samples[x] << " in " << order.name;
            }
        }
    }
}

TEST_P(BlendMode, TakesABitmapWithoutAlphaForOpaque) {
    Bitmap bitmap(count, count, rgbOrders[2]);
    pairs.prepare(bitmap);
    CGContextSetBlendMode(bitmap, GetParam());
    CGContextDrawImage(bitmap, bitmap.bounds(), pairs.sources);
    for (int y = 0; y < count; ++y) {
        for (int x = 0; x < count; ++x) {
            Pixel under = samples[x];
            under.alpha = 255;
            Pixel result = expected(GetParam(), Light::of(samples[y]), Light::of(under)).pixel();
            result.alpha = 255;
            EXPECT_THAT(bitmap.at(x, y), IsNear(result, tolerance()))
                << samples[y] << " onto " << under;
        }
    }
}

TEST_P(BlendMode, FillsWithItsFormula) {
    for (const Pixel& source : samples) {
        if (source.alpha != 255) continue;
        for (const Pixel& under : samples) {
            Bitmap bitmap(2, 2);
            bitmap.fill(under);
            const Pixel before = bitmap.at(0, 0);
            CGContextSetBlendMode(bitmap, GetParam());
            CGContextSetRGBFillColor(bitmap, source.red / 255.0, source.green / 255.0,
                                     source.blue / 255.0, 0.6);
            CGContextFillRect(bitmap, CGRectMake(0, 0, 1, 1));
            Light faint = Light::of(source);
            for (double& value : faint.color)
                value *= 0.6;
            faint.alpha = 0.6;
            const Light result = expected(GetParam(), faint, Light::of(before));
            EXPECT_THAT(bitmap.at(0, 1), IsNear(result.pixel(), 2)) << source << under;
            EXPECT_EQ(bitmap.at(1, 0), before) << "outside the rectangle";
        }
    }
}

TEST_P(BlendMode, LetsWhatWasThereShowThroughWhereAPixelIsHalfCovered) {
    for (const Pixel& source : samples) {
        for (const Pixel& under : samples) {
            Bitmap bitmap(2, 1);
            bitmap.fill(under);
            const Pixel before = bitmap.at(0, 0);
            CGContextSetBlendMode(bitmap, GetParam());
            CGContextClipToRect(bitmap, CGRectMake(0, 0, 0.5, 1));
            CGContextDrawImage(bitmap, CGRectMake(0, 0, 1, 1), imageOf(1, 1, {source}));
            const Light whole = expected(GetParam(), Light::of(source), Light::of(before));
            const Light old = Light::of(before);
            Light half{{}, (whole.alpha + old.alpha) / 2};
            for (std::size_t i = 0; i < 3; ++i) {
                half.color[i] = (whole.color[i] + old.color[i]) / 2;
            }
            EXPECT_THAT(bitmap.at(0, 0), IsNear(half.pixel(), 2)) << source << under;
            EXPECT_EQ(bitmap.at(1, 0), before);
        }
    }
}

std::vector<CGBlendMode> allModes() {
    std::vector<CGBlendMode> modes;
    for (int mode = kCGBlendModeNormal; mode <= kCGBlendModePlusLighter; ++mode) {
        modes.push_back(static_cast<CGBlendMode>(mode));
    }
    return modes;
}

INSTANTIATE_TEST_SUITE_P(All, BlendMode, testing::ValuesIn(allModes()), [](const auto& info) {
    return "Mode" + std::to_string(static_cast<int>(info.param));
});

TEST(BlendModes, WorkOnAlphaAlone) {
    for (const CGBlendMode mode : allModes()) {
        std::array<std::uint8_t, 1> memory = {100};
        const Context context =
            CGBitmapContextCreate(memory.data(), 1, 1, 8, 1, nullptr, kCGImageAlphaOnly);
        CGContextSetBlendMode(context, mode);
        CGContextDrawImage(context, CGRectMake(0, 0, 1, 1), imageOf(1, 1, {{10, 20, 30, 60}}));
        const Light result = expected(mode, Light{{}, 60 / 255.0}, Light{{}, 100 / 255.0});
        EXPECT_NEAR(memory[0], result.pixel().alpha, 1) << mode;
    }
}

TEST(BlendModes, ThatAreUnknownChangeNothing) {
    Bitmap bitmap(1, 1);
    CGContextSetBlendMode(bitmap, kCGBlendModeCopy);
    CGContextSetBlendMode(bitmap, static_cast<CGBlendMode>(99));
    bitmap.fill(white);
    CGContextDrawImage(bitmap, bitmap.bounds(), imageOf(1, 1, {clear}));
    EXPECT_EQ(bitmap.at(0, 0), clear);
}

} // namespace
