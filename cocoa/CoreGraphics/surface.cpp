#include "cocoa/CoreGraphics/surface.h"

#include "cocoa/CoreGraphics/arithmetic.h"

#include <algorithm>
#include <cstring>

namespace cocoa::cg {

PixelRect intersection(const PixelRect& first, const PixelRect& second) {
    return {std::max(first.left, second.left), std::max(first.top, second.top),
            std::min(first.right, second.right), std::min(first.bottom, second.bottom)};
}

void Surface::load(int x, int y, int count, std::uint32_t* working) const {
    const std::uint8_t* from = at(x, y);
    const bool colored = format.red != SurfaceFormat::absent;
    for (int i = 0; i < count; ++i, from += format.bytes) {
        const unsigned alpha = format.isOpaque() ? 255 : from[format.alpha];
        working[i] = colored ? pixel(alpha, from[format.red], from[format.green], from[format.blue])
                             : pixel(alpha, 0, 0, 0);
    }
}

void Surface::store(int x, int y, int count, const std::uint32_t* working) const {
    std::uint8_t* to = at(x, y);
    const bool colored = format.red != SurfaceFormat::absent;
    for (int i = 0; i < count; ++i, to += format.bytes) {
        const std::uint32_t value = working[i];
        if (format.bytes == 4 && format.isOpaque()) std::memset(to, 255, 4);
        if (format.isGray()) {
            to[format.red] =
                static_cast<std::uint8_t>(luminance(redOf(value), greenOf(value), blueOf(value)));
        } else if (colored) {
            to[format.red] = static_cast<std::uint8_t>(redOf(value));
            to[format.green] = static_cast<std::uint8_t>(greenOf(value));
            to[format.blue] = static_cast<std::uint8_t>(blueOf(value));
        }
        if (!format.isOpaque()) to[format.alpha] = static_cast<std::uint8_t>(alphaOf(value));
    }
}

} // namespace cocoa::cg
