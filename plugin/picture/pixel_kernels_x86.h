#pragma once

#include "plugin/picture/pixel_kernels.h"

#if defined(__x86_64__) || defined(__i386__)
extern const PixelKernels sse2PixelKernels;
extern const PixelKernels ssse3PixelKernels;
extern const PixelKernels avx2PixelKernels;
#endif

/// The plain loops, which also do what is left behind a vector's last multiple.
namespace plain_kernels {

/// Where R, G and B are within a pixel.
struct Places {
    int red, green, blue, other;
};

constexpr Places places_of(PixelOrder order) {
    switch (order) {
    case PixelOrder::RGBx:
        return {0, 1, 2, 3};
    case PixelOrder::xRGB:
        return {1, 2, 3, 0};
    case PixelOrder::BGRx:
        break;
    }
    return {2, 1, 0, 3};
}

template <PixelOrder order>
void copy_rgb(const std::uint8_t* pixels, std::size_t count, std::uint8_t* rgb) {
    constexpr Places at = places_of(order);
    for (std::size_t i = 0; i < count; ++i, pixels += 4, rgb += 3) {
        rgb[0] = pixels[at.red];
        rgb[1] = pixels[at.green];
        rgb[2] = pixels[at.blue];
    }
}

template <PixelOrder order, PixelOrder maskOrder>
void premultiply(const std::uint8_t* pixels, const std::uint8_t* mask, std::size_t count,
                 std::uint8_t* rgba) {
    constexpr Places at = places_of(order);
    constexpr int maskAt = places_of(maskOrder).red;
    for (std::size_t i = 0; i < count; ++i, pixels += 4, mask += 4, rgba += 4) {
        const unsigned alpha = 255U - mask[maskAt];
        rgba[0] = static_cast<std::uint8_t>(pixels[at.red] * alpha / 255);
        rgba[1] = static_cast<std::uint8_t>(pixels[at.green] * alpha / 255);
        rgba[2] = static_cast<std::uint8_t>(pixels[at.blue] * alpha / 255);
        rgba[3] = static_cast<std::uint8_t>(alpha);
    }
}

constexpr std::uint8_t opaque_of(PixelOrder order) { return order == PixelOrder::BGRx ? 0 : 255; }

template <PixelOrder order>
void write_mask(const std::uint8_t* alphas, std::size_t count, std::uint8_t* mask) {
    constexpr Places at = places_of(order);
    for (std::size_t i = 0; i < count; ++i, mask += 4) {
        const auto value = static_cast<std::uint8_t>(255 - alphas[i]);
        mask[at.red] = mask[at.green] = mask[at.blue] = value;
        mask[at.other] = opaque_of(order);
    }
}

} // namespace plain_kernels
