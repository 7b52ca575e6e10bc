#pragma once

#include "cocoa/CoreGraphics/filter_bank.h"
#include "cocoa/CoreGraphics/image.h"
#include "cocoa/CoreGraphics/row_source.h"

#include <memory>

namespace cocoa::cg {

/// How an image lies in what it is drawn into: mirrored, and at which place and size each axis.
struct Placement {
    bool flipX = false; ///< the image's left column comes last
    bool flipY = false;
    Axis x;
    Axis y;
    Filter filter = Filter::Lanczos3;
};

/// The pixels of an image, of its mask if that is finer.
struct PixelSize {
    int width = 0;
    int height = 0;
};
PixelSize pixelSize(const Image& image);

/// The wanted pixels of an image as working pixels for a bitmap of the space `target` (which may be
/// null), its mask applied. The image must live as long as the rows. Not for image masks.
std::unique_ptr<RowSource> colorRows(const Image& image, const ColorSpace* target,
                                     const Placement& placement);

/// What an image mask, or a gray image that serves as one, lets through: one channel.
std::unique_ptr<RowSource> coverageRows(const Image& mask, const Placement& placement);

/// The placement of a whole picture at its own size.
Placement unscaled(PixelSize size);

} // namespace cocoa::cg
