#pragma once

/// How much of each pixel a shape covers.

#include "cocoa/CoreGraphics/matrix.h"
#include "cocoa/CoreGraphics/surface.h"

#include <array>
#include <memory>
#include <vector>

namespace cocoa::cg {

/// 0 to 255 for every pixel of an area. Rows are whole words, as compositing wants them.
class Coverage {
public:
    explicit Coverage(const PixelRect& area)
        : area(area)
        , stride((static_cast<std::size_t>(area.width()) + 3) / 4 * 4)
        , values(stride * static_cast<std::size_t>(area.height())) {}

    const PixelRect area;
    const std::size_t stride;

    std::uint8_t* row(int y) { return values.data() + offset(y); }
    const std::uint8_t* row(int y) const { return values.data() + offset(y); }
    /// From column `x` on, in the coordinates of the area.
    const std::uint8_t* at(int x, int y) const { return row(y) + (x - area.left); }

    /// The part in `smaller`, which lies within the area.
    std::unique_ptr<Coverage> cut(const PixelRect& smaller) const;
    /// Multiplies with another, whose area contains this one.
    void multiply(const Coverage& other);

private:
    std::size_t offset(int y) const { return static_cast<std::size_t>(y - area.top) * stride; }
    std::vector<std::uint8_t> values;
};

/// Pixels in a rectangle, all wholly covered when there is no coverage.
struct Region {
    PixelRect bounds;
    std::shared_ptr<const Coverage> coverage;

    bool isEmpty() const { return bounds.isEmpty(); }
};

/// The corners of a mapped rectangle in order around it, in pixels, y down.
using Quad = std::array<Point, 4>;

/// The pixels of `limits` that the quad covers. Edges within a 500th of a pixel border lie on it.
/// Without antialiasing a pixel is covered when its centre is, wholly.
Region covered(const Quad& quad, const PixelRect& limits, bool antialias);

Region intersection(const Region& first, const Region& second);
/// Where both cover a pixel in part, the parts are taken for the same, so that the larger one
/// counts.
Region unionOf(const Region& first, const Region& second);

/// An edge that hardly misses a pixel border is put onto it, so that rounding in a transform does
/// not make a blurred edge.
double snapped(double edge);

} // namespace cocoa::cg
