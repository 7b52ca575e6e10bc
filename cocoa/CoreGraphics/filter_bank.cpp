#include "cocoa/CoreGraphics/filter_bank.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace cocoa::cg {
namespace {

double sinc(double x) {
    if (x == 0) return 1;
    const double angle = x * std::numbers::pi;
    return std::sin(angle) / angle;
}

double lanczos3(double x) { return std::abs(x) < 3 ? sinc(x) * sinc(x / 3) : 0; }

double linear(double x) { return std::max(0.0, 1 - std::abs(x)); }

/// Catmull and Rom's spline.
double cubic(double x) {
    x = std::abs(x);
    if (x < 1) return (1.5 * x - 2.5) * x * x + 1;
    if (x < 2) return ((-0.5 * x + 2.5) * x - 4) * x + 2;
    return 0;
}

struct Kernel {
    double (*value)(double);
    double support;
};

Kernel kernelOf(Filter filter) {
    switch (filter) {
    case Filter::Linear:
        return {linear, 1};
    case Filter::Cubic:
        return {cubic, 2};
    default:
        return {lanczos3, 3};
    }
}

/// The weights of one wanted pixel before rounding.
struct Mix {
    int start = 0;
    std::vector<double> weights;

    int end() const { return start + static_cast<int>(weights.size()); }
};

/// Which pixel stands for one beyond the ends. A picture that shrinks goes on as if mirrored in the
/// middle of its outermost pixels: fine patterns, which are then mixed away, do not break off
/// there. One that does not shrink ends with its outermost pixels, whose colours the eye can tell.
long inside(long index, long last, double reduction) {
    if (reduction <= 1 || last == 0) return std::clamp(index, 0L, last);
    const long period = 2 * last;
    const long folded = std::abs(index) % period;
    return std::min(folded, period - folded);
}

Mix mixAround(double center, double reduction, const Kernel& kernel, int sourceLength) {
    const double support = kernel.support * reduction;
    // A pixel of the result never lies further out than that.
    const double last = sourceLength - 1;
    const auto low = static_cast<long>(std::floor(std::max(center - support, -support)));
    const auto high = static_cast<long>(std::ceil(std::min(center + support, last + support)));
    Mix mix;
    const double first = std::clamp(std::floor(center - support), 0.0, last);
    const double end = std::clamp(std::ceil(center + support), first, last);
    mix.start = static_cast<int>(first);
    mix.weights.assign(static_cast<std::size_t>(end - first) + 1, 0);
    double sum = 0;
    for (long i = low; i <= high; ++i) {
        const double weight = kernel.value((static_cast<double>(i) + 0.5 - center) / reduction);
        const long source = inside(i, sourceLength - 1, reduction);
        const auto index = std::clamp<long>(source, mix.start, mix.end() - 1) - mix.start;
        mix.weights[static_cast<std::size_t>(index)] += weight;
        sum += weight;
    }
    if (sum == 0) {
        const double nearest = std::clamp(std::floor(center), first, end);
        mix.weights[static_cast<std::size_t>(nearest - first)] = 1;
        return mix;
    }
    for (double& weight : mix.weights)
        weight /= sum;
    return mix;
}

void dropZeros(Mix& mix) {
    constexpr double nothing = 1e-9;
    const auto weighs = [](double weight) { return std::abs(weight) > nothing; };
    const auto first = std::find_if(mix.weights.begin(), mix.weights.end(), weighs);
    mix.start += static_cast<int>(first - mix.weights.begin());
    mix.weights.erase(mix.weights.begin(), first);
    const auto last = std::find_if(mix.weights.rbegin(), mix.weights.rend(), weighs);
    mix.weights.erase(last.base(), mix.weights.end());
}

/// Rounds so that the sum is exact. The remainder of a few weights goes to the largest; of many
/// small ones it is carried along, since it would make a spike there.
void quantize(const std::vector<double>& weights, int shift, std::int16_t* rounded) {
    constexpr std::size_t few = 64;
    const double one = std::ldexp(1, shift);
    if (weights.size() <= few) {
        long sum = 0;
        std::size_t largest = 0;
        for (std::size_t i = 0; i < weights.size(); ++i) {
            rounded[i] = static_cast<std::int16_t>(std::lround(weights[i] * one));
            sum += rounded[i];
            if (weights[i] > weights[largest]) largest = i;
        }
        rounded[largest] = static_cast<std::int16_t>(rounded[largest] + (1L << shift) - sum);
        return;
    }
    double exact = 0;
    long reached = 0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        exact += weights[i] * one;
        const long next = std::lround(exact);
        rounded[i] = static_cast<std::int16_t>(next - reached);
        reached = next;
    }
}

/// The most bits behind the point with which no weight leaves 16 bits.
int shiftFor(double largestWeight, int maximumShift) {
    constexpr double limit = 32000;
    int shift = maximumShift;
    while (shift > 1 && std::ldexp(largestWeight, shift) > limit)
        --shift;
    return shift;
}

} // namespace

FilterBank::FilterBank(Filter filter, int sourceLength, const Axis& axis, int tapMultiple,
                       int maximumShift) {
    const double perPixel = sourceLength / axis.length;
    std::vector<Mix> mixes(static_cast<std::size_t>(axis.count));
    identity = axis.length == sourceLength && axis.start == std::floor(axis.start);
    const Kernel kernel = kernelOf(filter);
    const double reduction = std::clamp(perPixel, 1.0, static_cast<double>(sourceLength));
    double largestWeight = 0;
    for (int i = 0; i < axis.count; ++i) {
        Mix& mix = mixes[static_cast<std::size_t>(i)];
        const double center = (axis.first + i + 0.5 - axis.start) * perPixel;
        if (identity || filter == Filter::Nearest) {
            mix.start = static_cast<int>(std::clamp(std::floor(center), 0.0, sourceLength - 1.0));
            mix.weights = {1};
        } else {
            mix = mixAround(center, reduction, kernel, sourceLength);
            dropZeros(mix);
        }
        for (const double weight : mix.weights) {
            largestWeight = std::max(largestWeight, std::abs(weight));
        }
    }

    sourceBegin = sourceLength;
    for (const Mix& mix : mixes) {
        sourceBegin = std::min(sourceBegin, mix.start);
        sourceEnd = std::max(sourceEnd, mix.end());
        tapCount = std::max(tapCount, static_cast<int>(mix.weights.size()));
    }
    tapCount = (tapCount + tapMultiple - 1) / tapMultiple * tapMultiple;
    fractionBits = shiftFor(largestWeight, maximumShift);
    starts.reserve(mixes.size());
    values.assign(mixes.size() * static_cast<unsigned>(tapCount), 0);
    for (std::size_t i = 0; i < mixes.size(); ++i) {
        const Mix& mix = mixes[i];
        // Weights of 0 are put in front where behind they would reach past the end.
        const int start = std::max(0, std::min(mix.start, sourceEnd - tapCount) - sourceBegin);
        starts.push_back(start);
        quantize(mix.weights, fractionBits,
                 values.data() + i * static_cast<unsigned>(tapCount) +
                     (mix.start - sourceBegin - start));
    }
}

} // namespace cocoa::cg
