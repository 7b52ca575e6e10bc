#pragma once

/// Rounded arithmetic on samples, and working pixels.

#include <cstdint>

namespace cocoa::cg {

/// first * second / 255, rounded to nearest.
constexpr unsigned multiply8(unsigned first, unsigned second) {
    const unsigned product = first * second + 128;
    return (product + (product >> 8)) >> 8;
}

constexpr unsigned narrow16(unsigned sample) { return (sample * 255 + 32767) / 65535; }

/// A working pixel: premultiplied, alpha in the highest byte, then red, green, blue.
constexpr std::uint32_t pixel(unsigned alpha, unsigned red, unsigned green, unsigned blue) {
    return alpha << 24 | red << 16 | green << 8 | blue;
}
constexpr unsigned alphaOf(std::uint32_t pixel) { return pixel >> 24; }
constexpr unsigned redOf(std::uint32_t pixel) { return pixel >> 16 & 255; }
constexpr unsigned greenOf(std::uint32_t pixel) { return pixel >> 8 & 255; }
constexpr unsigned blueOf(std::uint32_t pixel) { return pixel & 255; }

constexpr std::uint32_t premultiplied(unsigned alpha, unsigned red, unsigned green, unsigned blue) {
    return pixel(alpha, multiply8(red, alpha), multiply8(green, alpha), multiply8(blue, alpha));
}

/// Every channel of a working pixel times a coverage of 0 to 255.
constexpr std::uint32_t scaled(std::uint32_t value, unsigned coverage) {
    return pixel(multiply8(alphaOf(value), coverage), multiply8(redOf(value), coverage),
                 multiply8(greenOf(value), coverage), multiply8(blueOf(value), coverage));
}

/// The gray of a colour; white stays white and equal components stay what they are.
constexpr unsigned luminance(unsigned red, unsigned green, unsigned blue) {
    return (77 * red + 151 * green + 28 * blue + 128) >> 8;
}

} // namespace cocoa::cg
