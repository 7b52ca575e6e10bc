#pragma once

/// A picture that is asked for row by row, so that a chain of conversions never holds all of it.

#include <cstdint>
#include <memory>

namespace cocoa::cg {

/// Working pixels of 4 channels are premultiplied 32-bit words, alpha in the highest byte, then
/// red, green and blue, in the machine's byte order. Pictures of 1 channel are coverage or alpha.
class RowSource {
public:
    RowSource(int width, int height, int channels)
        : width(width)
        , height(height)
        , channels(channels) {}
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;
    virtual ~RowSource() = default;

    const int width;
    const int height;
    const int channels;

    std::size_t rowBytes() const { return static_cast<std::size_t>(width) * channels; }

    /// Row 0 is the top one. Rows are asked for from the top down, each once; rows may be left out.
    /// The row is either in `scratch`, which has room for `rowBytes`, or in memory that stays as it
    /// is until the next call.
    virtual const std::uint8_t* row(int y, std::uint8_t* scratch) = 0;
};

} // namespace cocoa::cg
