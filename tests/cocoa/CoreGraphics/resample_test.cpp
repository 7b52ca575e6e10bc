#include "cocoa/CoreGraphics/resample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <ostream>
#include <random>
#include <string>
#include <vector>

using namespace cocoa::cg;

namespace {

/// A picture in memory, samples side by side.
struct Picture {
    int width = 0;
    int height = 0;
    int channels = 4;
    std::vector<std::uint8_t> samples;

    Picture(int width, int height, int channels)
        : width(width)
        , height(height)
        , channels(channels)
        , samples(static_cast<std::size_t>(width) * height * channels) {}

    std::uint8_t& at(int x, int y, int channel) {
        return samples[(static_cast<std::size_t>(y) * width + x) * channels + channel];
    }
    std::uint8_t at(int x, int y, int channel) const {
        return const_cast<Picture*>(this)->at(x, y, channel);
    }

    template <typename Value>
    static Picture make(int width, int height, int channels, const Value& value) {
        Picture picture(width, height, channels);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                for (int channel = 0; channel < channels; ++channel) {
                    picture.at(x, y, channel) = static_cast<std::uint8_t>(value(x, y, channel));
                }
            }
        }
        return picture;
    }

    static Picture noise(int width, int height, int channels) {
        std::mt19937 random(1);
        Picture picture = make(width, height, channels, [&](int, int, int) { return random(); });
        if (channels == 4) picture.limitToAlpha();
        return picture;
    }

    /// As a photograph is: mostly smooth, with an edge.
    static Picture photo(int width, int height, int channels) {
        return make(width, height, channels, [&](int x, int y, int channel) {
            if (channels == 4 && channel == 3) return 255.0;
            const double wave = std::sin(x * 0.21 + channel) * std::cos(y * 0.13 - channel);
            return std::clamp(110 + 90 * wave + (x > y ? 40 : 0), 0.0, 255.0);
        });
    }

    void limitToAlpha() {
        for (std::size_t i = 0; i < samples.size(); i += 4) {
            for (std::size_t channel = 0; channel < 3; ++channel) {
                samples[i + channel] = std::min(samples[i + channel], samples[i + 3]);
            }
        }
    }
};

/// Gives the rows of a part of a picture, and checks how they are asked for.
class PictureRows final : public RowSource {
public:
    PictureRows(const Picture& picture, int left, int top, int width, int height)
        : RowSource(width, height, picture.channels)
        , picture(picture)
        , left(left)
        , top(top) {}

    const std::uint8_t* row(int y, std::uint8_t* scratch) override {
        EXPECT_GT(y, last) << "rows must be asked for from the top down";
        EXPECT_LT(y, height);
        last = y;
        const auto* first =
            &picture.samples[(static_cast<std::size_t>(top + y) * picture.width + left) *
                             picture.channels];
        std::copy_n(first, rowBytes(), scratch);
        return scratch;
    }

private:
    const Picture& picture;
    int left;
    int top;
    int last = -1;
};

struct Scaling {
    Filter filter = Filter::Lanczos3;
    Axis x;
    Axis y;

    static Scaling to(int width, int height, Filter filter = Filter::Lanczos3) {
        return {filter, {0, double(width), 0, width}, {0, double(height), 0, height}};
    }
};

Picture scaled(const Picture& picture, const Scaling& scaling,
               const ResampleKernels& kernels = *availableResampleKernels().back()) {
    FilterBank horizontal =
        horizontalBank(scaling.filter, picture.width, scaling.x, picture.channels);
    FilterBank vertical = verticalBank(scaling.filter, picture.height, scaling.y);
    auto part = std::make_unique<PictureRows>(picture, horizontal.begin(), vertical.begin(),
                                              horizontal.end() - horizontal.begin(),
                                              vertical.end() - vertical.begin());
    ScaledRows rows(std::move(part), std::move(horizontal), std::move(vertical), kernels);
    Picture result(scaling.x.count, scaling.y.count, picture.channels);
    for (int y = 0; y < result.height; ++y) {
        std::vector<std::uint8_t> scratch(rows.rowBytes());
        std::copy_n(rows.row(y, scratch.data()), rows.rowBytes(), &result.at(0, y, 0));
    }
    return result;
}

/// The same from the definition, in double precision and in no particular hurry.
class Reference {
public:
    Reference(const Picture& picture, const Scaling& scaling)
        : picture(picture)
        , scaling(scaling) {}

    double at(int x, int y, int channel) const {
        double sum = 0;
        double weights = 0;
        const auto columns = around(scaling.x, picture.width, x);
        const auto rows = around(scaling.y, picture.height, y);
        for (int row = rows.first; row <= rows.second; ++row) {
            const double rowWeight = weight(scaling.y, picture.height, y, row);
            for (int column = columns.first; column <= columns.second; ++column) {
                const double both = rowWeight * weight(scaling.x, picture.width, x, column);
                sum += both * picture.at(inside(scaling.x, picture.width, column),
                                         inside(scaling.y, picture.height, row), channel);
                weights += both;
            }
        }
        return sum / weights;
    }

private:
    static double lanczos(double x) {
        if (x == 0) return 1;
        if (std::abs(x) >= 3) return 0;
        const double angle = std::numbers::pi * x;
        return 3 * std::sin(angle) * std::sin(angle / 3) / (angle * angle);
    }
    static double reduction(const Axis& axis, int length) {
        return std::max(1.0, length / axis.length);
    }
    /// Mirrored in the outermost pixels when the picture shrinks, else ending with them.
    static int inside(const Axis& axis, int length, int index) {
        while (reduction(axis, length) > 1 && length > 1 && (index < 0 || index >= length)) {
            index = index < 0 ? -index : 2 * (length - 1) - index;
        }
        return std::clamp(index, 0, length - 1);
    }
    static double center(const Axis& axis, int length, int index) {
        return (axis.first + index + 0.5 - axis.start) * length / axis.length;
    }
    static double weight(const Axis& axis, int length, int index, int source) {
        return lanczos((source + 0.5 - center(axis, length, index)) / reduction(axis, length));
    }
    static std::pair<int, int> around(const Axis& axis, int length, int index) {
        const double middle = center(axis, length, index);
        const double support = 3 * reduction(axis, length);
        return {static_cast<int>(std::floor(middle - support)),
                static_cast<int>(std::ceil(middle + support))};
    }

    const Picture& picture;
    const Scaling& scaling;
};

double noiseRatio(const Picture& picture, const Scaling& scaling) {
    const Picture result = scaled(picture, scaling);
    const Reference reference(picture, scaling);
    double squares = 0;
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            for (int channel = 0; channel < result.channels; ++channel) {
                const double exact = std::clamp(reference.at(x, y, channel), 0.0, 255.0);
                const double error = result.at(x, y, channel) - exact;
                squares += error * error;
            }
        }
    }
    return 10 * std::log10(255 * 255 * static_cast<double>(result.samples.size()) / squares);
}

struct Sizes {
    int fromWidth, fromHeight, toWidth, toHeight;

    friend std::ostream& operator<<(std::ostream& out, const Sizes& s) {
        return out << s.fromWidth << "x" << s.fromHeight << "_to_" << s.toWidth << "x"
                   << s.toHeight;
    }
};

const Sizes allSizes[] = {{47, 33, 23, 16},  {47, 33, 47, 16}, {47, 33, 100, 70}, {47, 33, 1, 1},
                          {1, 1, 5, 7},      {2, 3, 61, 1},    {640, 40, 64, 4},  {3, 200, 3, 9},
                          {250, 250, 7, 11}, {64, 64, 63, 65}};

class Scaled : public testing::TestWithParam<Sizes> {
protected:
    Picture noise(int channels) const {
        return Picture::noise(GetParam().fromWidth, GetParam().fromHeight, channels);
    }
    Scaling scaling(Filter filter = Filter::Lanczos3) const {
        return Scaling::to(GetParam().toWidth, GetParam().toHeight, filter);
    }
};

TEST_P(Scaled, IsTheSameToTheBitOnEveryInstructionSet) {
    for (const Filter filter : {Filter::Nearest, Filter::Linear, Filter::Cubic, Filter::Lanczos3}) {
        for (const int channels : {1, 4}) {
            const Picture picture = noise(channels);
            const Picture expected = scaled(picture, scaling(filter), scalarResampleKernels);
            for (const ResampleKernels* kernels : availableResampleKernels()) {
                EXPECT_EQ(scaled(picture, scaling(filter), *kernels).samples, expected.samples)
                    << kernels->name;
            }
        }
    }
}

TEST_P(Scaled, KeepsAPlainColour) {
    for (const int channels : {1, 4}) {
        const Picture plain =
            Picture::make(GetParam().fromWidth, GetParam().fromHeight, channels,
                          [](int, int, int channel) { return 90 + 40 * channel; });
        const Picture result = scaled(plain, scaling());
        for (std::size_t i = 0; i < result.samples.size(); ++i) {
            ASSERT_EQ(result.samples[i], plain.samples[i % static_cast<unsigned>(channels)]);
        }
    }
}

TEST_P(Scaled, FollowsTheDefinitionOfTheFilter) {
    for (const int channels : {1, 4}) {
        const Picture photo = Picture::photo(GetParam().fromWidth, GetParam().fromHeight, channels);
        // Rounding to whole samples alone gives 58.9 dB on the average of many, and 54.2 at worst.
        const bool isAverage = GetParam().toWidth * GetParam().toHeight > 16;
        EXPECT_GT(noiseRatio(photo, scaling()), isAverage ? 56 : 54);
    }
}

TEST_P(Scaled, NeverHasAColourAboveItsAlpha) {
    const Picture result = scaled(noise(4), scaling());
    for (std::size_t i = 0; i < result.samples.size(); i += 4) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            ASSERT_LE(result.samples[i + channel], result.samples[i + 3]);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Scaled, testing::ValuesIn(allSizes),
                         testing::PrintToStringParamName());

TEST(Scaling, ToTheSameSizeKeepsEveryPixel) {
    const Picture picture = Picture::noise(47, 33, 4);
    EXPECT_EQ(scaled(picture, Scaling::to(47, 33)).samples, picture.samples);
    const FilterBank bank = verticalBank(Filter::Lanczos3, 47, {5, 47, 5, 47});
    EXPECT_TRUE(bank.isIdentity());
    EXPECT_FALSE(verticalBank(Filter::Lanczos3, 47, {5.5, 47, 5, 47}).isIdentity());
}

TEST(Scaling, OfACheckerboardToHalfGivesFlatGray) {
    const Picture board = Picture::make(
        64, 64, 4, [](int x, int y, int c) { return c == 3 || (x + y) % 2 == 0 ? 255 : 0; });
    const Picture half = scaled(board, Scaling::to(32, 32));
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            ASSERT_NEAR(half.at(x, y, 0), 127.5, 0.5) << x << ' ' << y;
            ASSERT_EQ(half.at(x, y, 3), 255);
        }
    }
}

TEST(Scaling, LeavesTheEdgesOfAnOpaquePictureOpaque) {
    const Picture opaque = Picture::photo(50, 40, 4);
    for (const auto& [width, height] : {std::pair{13, 11}, {149, 97}, {50, 3}}) {
        const Picture result = scaled(opaque, Scaling::to(width, height));
        for (std::size_t i = 3; i < result.samples.size(); i += 4) {
            ASSERT_EQ(result.samples[i], 255);
        }
    }
}

TEST(Scaling, CanLieBetweenPixels) {
    const Picture photo = Picture::photo(40, 40, 4);
    const Scaling shifted = {Filter::Lanczos3, {0.25, 39.5, 0, 40}, {-3.75, 57.3, 2, 30}};
    EXPECT_GT(noiseRatio(photo, shifted), 57);
}

TEST(Scaling, OfAPartGivesThatPartOfTheWhole) {
    const Picture noise = Picture::noise(90, 70, 4);
    const Picture whole = scaled(noise, Scaling::to(60, 40));
    const Picture part = scaled(noise, {Filter::Lanczos3, {0, 60, 21, 17}, {0, 40, 5, 30}});
    for (int y = 0; y < part.height; ++y) {
        for (int x = 0; x < part.width; ++x) {
            for (int channel = 0; channel < 4; ++channel) {
                // Weights are rounded with as many bits as the largest of the part allows.
                ASSERT_NEAR(part.at(x, y, channel), whole.at(x + 21, y + 5, channel), 1);
            }
        }
    }
}

TEST(Scaling, ByTheNearestPixelRepeatsPixels) {
    const Picture picture = Picture::noise(3, 2, 4);
    const Picture large = scaled(picture, Scaling::to(9, 4, Filter::Nearest));
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 9; ++x) {
            for (int channel = 0; channel < 4; ++channel) {
                ASSERT_EQ(large.at(x, y, channel), picture.at(x / 3, y / 2, channel));
            }
        }
    }
}

TEST(Scaling, OfAGreatLengthToOnePixelIsItsMeanWeighted) {
    const Picture ramp =
        Picture::make(60000, 1, 1, [](int x, int, int) { return x * 255 / 59999; });
    EXPECT_NEAR(scaled(ramp, Scaling::to(1, 1)).at(0, 0, 0), 127.5, 1);
    // A hair's breadth is no reason to leave pixels out or to run for ever.
    const Scaling sliver = {Filter::Lanczos3, {0, 1e-5, 0, 1}, {0, 1, 0, 1}};
    const Picture result = scaled(ramp, sliver);
    EXPECT_GT(result.at(0, 0, 0), 0);
}

TEST(FilterBank, WeighsEveryPixelByWholeSums) {
    for (const double length : {3.0, 17.5, 100.0, 1000.0}) {
        const int count = static_cast<int>(std::ceil(length));
        const FilterBank bank = verticalBank(Filter::Lanczos3, 100, {0, length, 0, count});
        for (int i = 0; i < bank.count(); ++i) {
            int sum = 0;
            for (int tap = 0; tap < bank.taps(); ++tap)
                sum += bank.weights(i)[tap];
            ASSERT_EQ(sum, 1 << bank.shift());
            ASSERT_GE(bank.start(i), 0);
            ASSERT_GE(bank.begin(), 0);
            ASSERT_LE(bank.end(), 100);
        }
    }
}

} // namespace
