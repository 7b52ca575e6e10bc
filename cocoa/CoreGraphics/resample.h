#pragma once

/// Scaling of pictures in two passes, first along the rows, then across them. Only as many rows are
/// held as the second pass mixes at a time.

#include "cocoa/CoreGraphics/filter_bank.h"
#include "cocoa/CoreGraphics/resample_kernels.h"
#include "cocoa/CoreGraphics/row_source.h"

#include <memory>
#include <vector>

namespace cocoa::cg {

/// The banks for a picture of `channels` channels.
FilterBank horizontalBank(Filter filter, int sourceLength, const Axis& axis, int channels);
FilterBank verticalBank(Filter filter, int sourceLength, const Axis& axis);

/// The wanted pixels of a scaled picture. `source` gives the part of the original that the banks
/// weigh: columns from `horizontal.begin()` to its end, rows likewise.
class ScaledRows final : public RowSource {
public:
    ScaledRows(std::unique_ptr<RowSource> source, FilterBank horizontal, FilterBank vertical,
               const ResampleKernels& kernels = *availableResampleKernels().back());

    const std::uint8_t* row(int y, std::uint8_t* scratch) override;

private:
    /// Row `y` of the source after the first pass.
    std::int16_t* held(int y) {
        return ring.data() + static_cast<std::size_t>(y % capacity) * samples;
    }
    void hold(int y);

    std::unique_ptr<RowSource> source;
    FilterBank horizontal;
    FilterBank vertical;
    const ResampleKernels& kernels;
    std::size_t samples; ///< of a row of the result
    int capacity;
    int next = 0; ///< the first row of the source that was not held yet
    std::vector<std::uint8_t> sourceRow;
    std::vector<std::int16_t> ring;
    std::vector<const std::int16_t*> rows;
};

} // namespace cocoa::cg
