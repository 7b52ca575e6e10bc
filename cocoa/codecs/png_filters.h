#pragma once

/// PNG's filters: rows as differences from their neighbours, which deflate better.

#include <cstddef>
#include <cstdint>
#include <memory>

namespace cocoa::codecs {

/// Filters rows of one size one after the other, each in the way that leaves the smallest
/// differences.
class PngRowFilter {
public:
    /// `pixelBytes` from 1 to 8. Throws std::bad_alloc.
    PngRowFilter(std::size_t rowBytes, std::size_t pixelBytes);

    /// `above` is the row before, null for the first. `out` takes the filter's number and the row.
    void filter(const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out);

private:
    static constexpr int kinds = 5;

    std::size_t rowBytes_;
    std::size_t pixelBytes_;
    std::unique_ptr<std::uint8_t[]> candidates_; ///< the row by every filter
    std::unique_ptr<std::uint8_t[]> zeros_;      ///< what is above the first row
};

/// Turns a filtered row back in place of `out`, which may be the same memory. `above` is null for
/// the first row. False for a number of no filter.
bool unfilter_png_row(int filter, const std::uint8_t* row, const std::uint8_t* above,
                      std::size_t rowBytes, std::size_t pixelBytes, std::uint8_t* out);

} // namespace cocoa::codecs
