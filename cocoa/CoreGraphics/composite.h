#pragma once

/// Putting pixels into a surface.

#include "cocoa/CoreGraphics/coverage.h"
#include "cocoa/CoreGraphics/surface.h"

#include <CoreGraphics/CGContext.h>

namespace cocoa::cg {

/// Working pixels for an area, or one for all of it.
struct PixelSource {
    const std::uint32_t* pixels = nullptr; ///< the area's first pixel; null for a plain colour
    std::size_t stride = 0;                ///< in pixels
    std::uint32_t color = 0;
};

/// Where the coverage is below 255, what was there shows through in proportion, in every mode.
/// `area` lies within the surface and within the coverage's area (null: covered wholly).
void composite(const Surface& surface, const PixelRect& area, const PixelSource& source,
               CGBlendMode mode, const Coverage* coverage);

} // namespace cocoa::cg
