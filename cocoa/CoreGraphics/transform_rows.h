#pragma once

#include "cocoa/CoreGraphics/filter_bank.h"
#include "cocoa/CoreGraphics/matrix.h"
#include "cocoa/CoreGraphics/pixel_buffer.h"
#include "cocoa/CoreGraphics/surface.h"

namespace cocoa::cg {

/// A picture seen through an affine map, sampled at every pixel of `bounds`. Beyond its edges the
/// outermost pixels are repeated. For pictures that are not made much smaller by the map.
class TransformedRows final : public RowSource {
public:
    /// `toBuffer` leads from the coordinates of `bounds` to those of the buffer.
    TransformedRows(PixelBuffer buffer, const Matrix& toBuffer, Filter filter,
                    const PixelRect& bounds);

    const std::uint8_t* row(int y, std::uint8_t* scratch) override;

private:
    std::uint32_t sample(double x, double y) const;

    PixelBuffer buffer;
    Matrix toBuffer;
    Filter filter;
    PixelRect bounds;
};

} // namespace cocoa::cg
