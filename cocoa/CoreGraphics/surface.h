#pragma once

/// The pixels that a context draws into.

#include <cstddef>
#include <cstdint>

namespace cocoa::cg {

/// A rectangle of whole pixels, y counted down from the top row; `right` and `bottom` are outside.
struct PixelRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool isEmpty() const { return right <= left || bottom <= top; }
};

PixelRect intersection(const PixelRect& first, const PixelRect& second);

/// Where the 8-bit samples of a pixel lie. Premultiplied where there is alpha.
struct SurfaceFormat {
    static constexpr std::int8_t absent = -1;

    std::int8_t bytes = 0;
    std::int8_t red = absent; ///< of gray, the gray; absent when there is only alpha
    std::int8_t green = absent;
    std::int8_t blue = absent;
    std::int8_t alpha = absent;

    bool isGray() const { return red != absent && red == green; }
    bool isOpaque() const { return alpha == absent; }
};

struct Surface {
    std::uint8_t* data = nullptr;
    int width = 0;
    int height = 0;
    std::size_t rowBytes = 0;
    SurfaceFormat format;

    PixelRect bounds() const { return {0, 0, width, height}; }
    std::uint8_t* at(int x, int y) const {
        return data + static_cast<std::size_t>(y) * rowBytes +
               static_cast<std::size_t>(x) * static_cast<unsigned>(format.bytes);
    }

    /// To and from working pixels. What has no alpha is opaque; colours become gray by luminance; a
    /// byte that is no sample is set to 255.
    void load(int x, int y, int count, std::uint32_t* working) const;
    void store(int x, int y, int count, const std::uint32_t* working) const;
};

} // namespace cocoa::cg
