#include "cocoa/CoreGraphics/transform_rows.h"

#include "cocoa/CoreGraphics/arithmetic.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace cocoa::cg {
namespace {

constexpr int mostTaps = 6;

/// The weights of neighbouring pixels for positions between two of them, in 256 steps.
class PhaseTable {
public:
    PhaseTable(Filter filter, int taps)
        : taps(taps) {
        for (int phase = 0; phase <= steps; ++phase) {
            // Pixels of which the middle two enclose the position.
            const double position = taps / 2.0 - 0.5 + static_cast<double>(phase) / steps;
            const FilterBank bank(filter, taps, {0.5 - position, double(taps), 0, 1}, 1, 14);
            for (int tap = 0; tap < bank.taps(); ++tap) {
                const int index = bank.begin() + bank.start(0) + tap;
                if (index < taps) {
                    weights[static_cast<std::size_t>(phase)][static_cast<std::size_t>(index)] =
                        static_cast<float>(std::ldexp(bank.weights(0)[tap], -bank.shift()));
                }
            }
        }
    }

    static const PhaseTable& of(Filter filter) {
        static const PhaseTable linear(Filter::Linear, 2);
        static const PhaseTable cubic(Filter::Cubic, 4);
        static const PhaseTable lanczos(Filter::Lanczos3, 6);
        return filter == Filter::Linear ? linear : filter == Filter::Cubic ? cubic : lanczos;
    }

    const float* at(double fraction) const {
        return weights[static_cast<std::size_t>(std::lround(fraction * steps))].data();
    }

    const int taps;

private:
    static constexpr int steps = 256;
    std::array<std::array<float, mostTaps>, steps + 1> weights{};
};

std::uint32_t mix(const std::array<float, 4>& sums) {
    const auto sample = [&](int channel, long most) {
        const long value = std::lround(sums[static_cast<std::size_t>(channel)]);
        return static_cast<unsigned>(std::clamp(value, 0L, most));
    };
    const unsigned alpha = sample(3, 255);
    return pixel(alpha, sample(2, alpha), sample(1, alpha), sample(0, alpha));
}

} // namespace

TransformedRows::TransformedRows(PixelBuffer pixels, const Matrix& toBuffer, Filter filter,
                                 const PixelRect& bounds)
    : RowSource(bounds.width(), bounds.height(), 4)
    , buffer(std::move(pixels))
    , toBuffer(toBuffer)
    , filter(filter)
    , bounds(bounds) {}

std::uint32_t TransformedRows::sample(double x, double y) const {
    const auto inside = [](double value, int length) {
        return static_cast<int>(std::clamp(value, 0.0, length - 1.0));
    };
    if (filter == Filter::Nearest) {
        const int column = inside(std::floor(x), buffer.width());
        return buffer.row(inside(std::floor(y), buffer.height()))[column];
    }
    // Positions beyond the edges show what the edges do.
    x = std::clamp(x, 0.0, double(buffer.width())) - 0.5;
    y = std::clamp(y, 0.0, double(buffer.height())) - 0.5;
    const PhaseTable& table = PhaseTable::of(filter);
    const int before = table.taps / 2 - 1;
    const double left = std::floor(x);
    const double top = std::floor(y);
    const float* horizontal = table.at(x - left);
    const float* vertical = table.at(y - top);
    std::array<float, 4> sums{};
    for (int j = 0; j < table.taps; ++j) {
        const std::uint32_t* line = buffer.row(inside(top - before + j, buffer.height()));
        std::array<float, 4> rowSums{};
        for (int i = 0; i < table.taps; ++i) {
            const std::uint32_t value = line[inside(left - before + i, buffer.width())];
            for (unsigned channel = 0; channel < 4; ++channel) {
                rowSums[channel] +=
                    horizontal[i] * static_cast<float>(value >> (channel * 8) & 255);
            }
        }
        for (std::size_t channel = 0; channel < 4; ++channel) {
            sums[channel] += vertical[j] * rowSums[channel];
        }
    }
    return mix(sums);
}

const std::uint8_t* TransformedRows::row(int y, std::uint8_t* scratch) {
    auto* working = reinterpret_cast<std::uint32_t*>(scratch);
    for (int x = 0; x < width; ++x) {
        const Point at = toBuffer.apply({bounds.left + x + 0.5, bounds.top + y + 0.5});
        working[x] = sample(at.x, at.y);
    }
    return scratch;
}

} // namespace cocoa::cg
