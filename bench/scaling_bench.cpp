/// High-quality scaling of a 12-megapixel photo against zimg, both with Lanczos of three lobes.
/// Both work in turn on pixels of four bytes, colours and premultiplied alpha. The counters tell
/// median milliseconds of the processor; `ratio`, ours to zimg's; `colors` and `planes`, zimg's
/// time for the colours alone and for planes that lie ready as it likes them; and how near each
/// comes to the filter computed in double precision, in decibels. The edges, beyond which each goes
/// on in its own way, are left out of that.

#include "bench/zimg_scaler.h"
#include "cocoa/CoreGraphics/resample.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <numbers>
#include <string>

using namespace cocoa::cg;
using bench::Size;

namespace {

using Pixels = std::vector<std::uint8_t>;

constexpr int pixelBytes = 4;
constexpr Size photoSize = {4000, 3000};
constexpr Size targets[] = {{2000, 1500}, {500, 375}};

std::size_t pixelCount(Size size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

/// Waves of several lengths in both directions, fine lines, edges, and the grain of a camera.
Pixels makePhoto() {
    const auto waves = [](int length, double phase) {
        std::vector<double> values;
        for (int i = 0; i < length; ++i)
            values.push_back(std::sin(i * 0.004 + phase) + 0.5 * std::sin(i * 0.05 - phase) +
                             0.25 * std::sin(i * 0.7 + 2 * phase));
        return values;
    };
    Pixels pixels(pixelCount(photoSize) * pixelBytes, 255);
    std::uint32_t random = 20090511;
    for (int channel = 0; channel < 3; ++channel) {
        const auto across = waves(photoSize.width, channel);
        const auto down = waves(photoSize.height, 1.5 - channel);
        std::size_t at = static_cast<std::size_t>(channel);
        for (int y = 0; y < photoSize.height; ++y)
            for (int x = 0; x < photoSize.width; ++x, at += pixelBytes) {
                random = random * 1664525 + 1013904223;
                const double grain = static_cast<double>(random >> 24) / 16 - 8;
                const double edge = (x / 37 + y / 53) % 2 ? 20 : -20;
                const double value =
                    125 +
                    28 * across[static_cast<std::size_t>(x)] * down[static_cast<std::size_t>(y)] +
                    edge + grain;
                pixels[at] = static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
            }
    }
    return pixels;
}

const Pixels& photo() {
    static const Pixels pixels = makePhoto();
    return pixels;
}

class PhotoRows final : public RowSource {
public:
    PhotoRows()
        : RowSource(photoSize.width, photoSize.height, pixelBytes) {}

    const std::uint8_t* row(int y, std::uint8_t*) override {
        return photo().data() + static_cast<std::size_t>(y) * rowBytes();
    }
};

void scaleByUs(Size to, Pixels& pixels) {
    const Axis x = {0, double(to.width), 0, to.width};
    const Axis y = {0, double(to.height), 0, to.height};
    ScaledRows rows(std::make_unique<PhotoRows>(),
                    horizontalBank(Filter::Lanczos3, photoSize.width, x, pixelBytes),
                    verticalBank(Filter::Lanczos3, photoSize.height, y));
    for (int line = 0; line < to.height; ++line) {
        std::uint8_t* target = pixels.data() + static_cast<std::size_t>(line) * rows.rowBytes();
        const std::uint8_t* row = rows.row(line, target);
        if (row != target) std::copy_n(row, rows.rowBytes(), target);
    }
}

/// The pixels of the source for one of the result, with their weights.
struct Mix {
    int first = 0;
    std::vector<double> weights;
};

Mix mixFor(int from, int to, int index) {
    const double step = static_cast<double>(from) / to;
    const double center = (index + 0.5) * step;
    const int first = static_cast<int>(std::ceil(center - 3 * step - 0.5));
    const int last = static_cast<int>(std::floor(center + 3 * step - 0.5));
    Mix mix{std::max(0, first), {}};
    double sum = 0;
    for (int source = mix.first; source <= std::min(last, from - 1); ++source) {
        const double distance = (source + 0.5 - center) / step;
        const double angle = std::numbers::pi * distance;
        const double weight =
            distance == 0 ? 1 : 3 * std::sin(angle) * std::sin(angle / 3) / (angle * angle);
        mix.weights.push_back(weight);
        sum += weight;
    }
    for (double& weight : mix.weights)
        weight /= sum;
    return mix;
}

/// The colours of the result by the filter's definition.
std::vector<double> exact(Size to) {
    const auto width = static_cast<std::size_t>(to.width) * 3;
    std::vector<Mix> columns;
    for (int x = 0; x < to.width; ++x)
        columns.push_back(mixFor(photoSize.width, to.width, x));
    std::vector<double> rows(width * static_cast<std::size_t>(photoSize.height));
    for (int y = 0; y < photoSize.height; ++y) {
        const auto row = static_cast<std::size_t>(y);
        const std::uint8_t* source =
            photo().data() + row * static_cast<std::size_t>(photoSize.width) * pixelBytes;
        for (std::size_t i = 0; i < width; ++i) {
            const Mix& mix = columns[i / 3];
            const std::uint8_t* first =
                source + static_cast<std::size_t>(mix.first) * pixelBytes + i % 3;
            for (std::size_t tap = 0; tap < mix.weights.size(); ++tap)
                rows[row * width + i] += mix.weights[tap] * first[tap * pixelBytes];
        }
    }
    std::vector<double> result(width * static_cast<std::size_t>(to.height));
    for (int y = 0; y < to.height; ++y) {
        const Mix mix = mixFor(photoSize.height, to.height, y);
        for (std::size_t tap = 0; tap < mix.weights.size(); ++tap) {
            const double* source = &rows[(static_cast<std::size_t>(mix.first) + tap) * width];
            double* target = &result[static_cast<std::size_t>(y) * width];
            for (std::size_t i = 0; i < width; ++i)
                target[i] += mix.weights[tap] * source[i];
        }
    }
    return result;
}

double noiseRatio(const Pixels& pixels, const std::vector<double>& wanted, Size size) {
    constexpr int margin = 4;
    double squares = 0;
    double count = 0;
    for (int y = margin; y < size.height - margin; ++y)
        for (int x = margin; x < size.width - margin; ++x)
            for (std::size_t channel = 0; channel < 3; ++channel) {
                const auto pixel =
                    static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) +
                    static_cast<std::size_t>(x);
                const double value = std::clamp(wanted[pixel * 3 + channel], 0.0, 255.0);
                squares += std::pow(pixels[pixel * pixelBytes + channel] - value, 2);
                ++count;
            }
    return 10 * std::log10(255 * 255 * count / squares);
}

/// Of the processor: the machine may be busy with other things.
double milliseconds(const auto& work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    };
    const double start = now();
    work();
    benchmark::ClobberMemory();
    return now() - start;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void compare(benchmark::State& state, Size to) {
    Pixels ours(pixelCount(to) * pixelBytes);
    Pixels theirs(ours.size());
    bench::ZimgScaler zimg(photoSize, to, bench::Channels::ColorsAndAlpha);
    bench::ZimgScaler colors(photoSize, to, bench::Channels::Colors);
    std::vector<double> oursTimes, theirTimes, colorsTimes, planesTimes;
    Pixels unused(ours.size());
    photo();
    for (auto _ : state) {
        oursTimes.push_back(milliseconds([&] { scaleByUs(to, ours); }));
        theirTimes.push_back(milliseconds([&] { zimg.scale(photo().data(), theirs.data()); }));
        colorsTimes.push_back(milliseconds([&] { colors.scale(photo().data(), unused.data()); }));
        planesTimes.push_back(milliseconds([&] { zimg.scalePlanes(); }));
        state.SetIterationTime(oursTimes.back() / 1000);
    }
    const std::vector<double> wanted = exact(to);
    state.counters["ours"] = median(oursTimes);
    state.counters["zimg"] = median(theirTimes);
    state.counters["colors"] = median(colorsTimes);
    state.counters["planes"] = median(planesTimes);
    state.counters["ratio"] = median(oursTimes) / median(theirTimes);
    state.counters["oursDb"] = noiseRatio(ours, wanted, to);
    state.counters["zimgDb"] = noiseRatio(theirs, wanted, to);
}

const bool registered = [] {
    for (const Size& to : targets) {
        const std::string name =
            "4000x3000 to " + std::to_string(to.width) + "x" + std::to_string(to.height);
        benchmark::RegisterBenchmark(name.c_str(), compare, to)
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime()
            ->Iterations(15);
    }
    return true;
}();

} // namespace
