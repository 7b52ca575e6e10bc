#pragma once

#include "cocoa/CoreGraphics/color_space.h"
#include "cocoa/CoreGraphics/data_provider.h"
#include "cocoa/CoreGraphics/pixel_layout.h"

#include <CoreGraphics/CGImage.h>

#include <vector>

namespace cocoa::cg {

/// Never changed once made.
class Image final : public Body {
public:
    PixelLayout layout;
    CGBitmapInfo bitmapInfo = 0;
    bool isMask = false;
    bool shouldInterpolate = false;
    CGColorRenderingIntent intent = kCGRenderingIntentDefault;
    Owned<CGColorSpaceRef> space;
    Owned<CGDataProviderRef> provider;
    std::vector<CGFloat> decode; ///< empty for none
    Owned<CGImageRef> mask;      ///< null for none

    const std::uint8_t* row(std::size_t y) const {
        return bodyOf(provider.get())->bytes().data() + y * layout.bytesPerRow;
    }
    const ColorSpace* colorSpace() const { return space ? bodyOf(space.get()) : nullptr; }
    std::unique_ptr<Image> copy() const;
};

inline Image* bodyOf(CGImageRef image) { return static_cast<Image*>(bodyOfObject(image)); }

inline CGImageRef makeImage(std::unique_ptr<Image> image) {
    return (CGImageRef)makeObject(Kind::Image, std::move(image));
}

} // namespace cocoa::cg
