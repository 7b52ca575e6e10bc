#pragma once

/// Conversions of rows between the layouts of memory and working pixels.

#include "cocoa/CoreGraphics/pixel_layout.h"

#include <cstddef>
#include <cstdint>

namespace cocoa::cg {

/// Reads whole pixels of a layout straight into working pixels.
using ReadKernel = void (*)(const std::uint8_t* pixels, std::size_t count, std::uint32_t* working);

/// The kernel for layouts of whole 8-bit samples in gray or RGB; null for the others, which are
/// read sample by sample.
ReadKernel readKernelFor(const PixelLayout& layout);

/// Samples side by side: those of the colour, then alpha if the layout has it. Samples of up to 8
/// bits fill 8, the others 16 bits.
template <typename Sample>
void unpackSamples(const PixelLayout& layout, const std::uint8_t* row, std::size_t first,
                   std::size_t count, Sample* samples);
extern template void unpackSamples(const PixelLayout&, const std::uint8_t*, std::size_t,
                                   std::size_t, std::uint8_t*);
extern template void unpackSamples(const PixelLayout&, const std::uint8_t*, std::size_t,
                                   std::size_t, std::uint16_t*);

/// From such samples to working pixels, without a profile.
template <typename Sample>
void packSamples(CGColorSpaceModel model, AlphaKind alpha, const Sample* samples, std::size_t count,
                 std::uint32_t* working);
extern template void packSamples(CGColorSpaceModel, AlphaKind, const std::uint8_t*, std::size_t,
                                 std::uint32_t*);
extern template void packSamples(CGColorSpaceModel, AlphaKind, const std::uint16_t*, std::size_t,
                                 std::uint32_t*);

} // namespace cocoa::cg
