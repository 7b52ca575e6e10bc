#pragma once

/// The pixel loops between host Pictures and Cocoa's bitmaps, over rows of 32-bit pixels. There is
/// a plain version of each that says what it does, and faster ones of the same results for the
/// instruction sets that a machine may have.

#include <cstddef>
#include <cstdint>
#include <span>

/// The order of the bytes of a Picture's pixel in memory; `x` is not read.
enum class PixelOrder { RGBx, xRGB, BGRx };
inline constexpr std::size_t pixelOrderCount = 3;

/// Rows need no alignment; source and target must not overlap.
struct PixelKernels {
    const char* name;

    /// R, G, B of each pixel, without gaps. By the order of the pixels.
    using CopyRGB = void (*)(const std::uint8_t* pixels, std::size_t count, std::uint8_t* rgb);
    CopyRGB copyRGB[pixelOrderCount];

    /// Premultiplied R, G, B, A of each pixel: A is 255 less the red of the mask's pixel, the
    /// colours are multiplied with A and divided by 255, which truncates. By the order of the
    /// pixels and that of the mask's.
    using Premultiply = void (*)(const std::uint8_t* pixels, const std::uint8_t* mask,
                                 std::size_t count, std::uint8_t* rgba);
    Premultiply premultiply[pixelOrderCount][pixelOrderCount];

    /// Mask pixels of alphas: R, G and B are 255 less the alpha; `x` is 255, or 0 in BGRx, where it
    /// counts from opaque. By the order of the mask's pixels.
    using WriteMask = void (*)(const std::uint8_t* alphas, std::size_t count, std::uint8_t* mask);
    WriteMask writeMask[pixelOrderCount];
};

/// The fastest kernels that this machine runs.
const PixelKernels& fastest_pixel_kernels();

/// All that this machine runs; the plain ones are the first, the fastest the last.
std::span<const PixelKernels* const> usable_pixel_kernels();
