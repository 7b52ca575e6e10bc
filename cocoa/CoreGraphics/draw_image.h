#pragma once

#include "cocoa/CoreGraphics/context.h"
#include "cocoa/CoreGraphics/image.h"
#include "cocoa/CoreGraphics/matrix.h"

namespace cocoa::cg {

/// Draws an image over the unit square of `unit`, a map to pixels with y down; the image's top row
/// is at the square's y of 1.
void drawImage(Context& context, const Image& image, const Matrix& unit);

} // namespace cocoa::cg
