#pragma once

/// Where a Picture keeps its pixels, as a plug-in gets to see them: a CoreGraphics bitmap context
/// on the desktop, a true-colour gd image in a console.

#include "sdk/types.h"

#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>
#include <memory>

namespace host {

/// 0xAARRGGBB, not premultiplied. Pictures without an alpha channel are opaque.
using Pixel = std::uint32_t;

class PixelStore {
public:
    PixelStore(int width, int height)
        : width_(width)
        , height_(height) {}
    PixelStore(const PixelStore&) = delete;
    PixelStore& operator=(const PixelStore&) = delete;
    virtual ~PixelStore() = default;

    int width() const { return width_; }
    int height() const { return height_; }

    // Coordinates count from the upper left corner and must lie within the Picture.
    virtual Pixel pixel(int x, int y) const = 0;
    virtual void setPixel(int x, int y, Pixel pixel) = 0;

    /// What a locked description says: REALpictureCGBitmapContext or REALpictureGDImage, and the
    /// context or the image itself.
    virtual std::uint32_t type() const = 0;
    virtual void* data() const = 0;

private:
    int width_;
    int height_;
};

/// A bitmap context whose pixels are laid out as the alpha info says, which must be of 32 bits;
/// null when there is no such context or no memory. It starts white, and transparent where its
/// alpha info is premultiplied.
std::unique_ptr<PixelStore> makeBitmapContext(int width, int height, CGImageAlphaInfo alphaInfo);

/// A gd image, which starts white; null without the gd library or memory.
std::unique_ptr<PixelStore> makeGDImage(int width, int height);

} // namespace host
