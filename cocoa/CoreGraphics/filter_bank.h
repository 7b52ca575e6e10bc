#pragma once

/// The weights with which pixels along one axis of a picture are mixed into those of another size.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cocoa::cg {

enum class Filter { Nearest, Linear, Cubic, Lanczos3 };

/// The axis of a destination whose pixel i covers i to i + 1: the whole source is stretched over
/// `start` to `start + length`, and the pixels from `first` on are wanted.
struct Axis {
    double start = 0;
    double length = 0; ///< above 0
    int first = 0;
    int count = 0;
};

/// Weights are the filter's values at the distances between pixel centres, the filter widened by
/// the reduction, so that every source pixel counts for its area. Beyond the ends a reduced source
/// is mirrored in the middle of its outermost pixel, any other has that pixel repeated; either way
/// edges keep their brightness. Every wanted pixel has the same number of weights, which add up to
/// `1 << shift`.
class FilterBank {
public:
    /// `tapMultiple`: the number of weights a pixel is rounded up to a multiple of it.
    /// `maximumShift`: the most bits behind the point that leave room for the sums.
    FilterBank(Filter filter, int sourceLength, const Axis& axis, int tapMultiple,
               int maximumShift);

    /// No pixel is mixed: wanted pixel i is source pixel `begin() + i`.
    bool isIdentity() const { return identity; }
    /// The range of source pixels that have any weight.
    int begin() const { return sourceBegin; }
    int end() const { return sourceEnd; }

    int count() const { return static_cast<int>(starts.size()); }
    int taps() const { return tapCount; }
    int shift() const { return fractionBits; }
    /// The first weighted pixel, counted from `begin()`. Weights of 0 may reach past `end()` when
    /// there are fewer source pixels than taps.
    int start(int index) const { return starts[static_cast<std::size_t>(index)]; }
    const std::int16_t* weights(int index) const {
        return values.data() + static_cast<std::size_t>(index) * static_cast<unsigned>(tapCount);
    }

private:
    bool identity = false;
    int sourceBegin = 0;
    int sourceEnd = 0;
    int tapCount = 0;
    int fractionBits = 0;
    std::vector<int> starts;
    std::vector<std::int16_t> values;
};

} // namespace cocoa::cg
