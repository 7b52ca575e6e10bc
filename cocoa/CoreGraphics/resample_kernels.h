#pragma once

/// The inner loops of scaling, for every instruction set that the machine may have. All of them
/// give the same bits.
///
/// Sums are 32-bit integers. Between the two passes a sample of 0 to 255 is a signed 16-bit number
/// of 64ths, so that the filter's overshoots fit.

#include "cocoa/CoreGraphics/filter_bank.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace cocoa::cg {

/// How the banks of the passes must be made.
inline constexpr int horizontalTapMultiple4 = 4;
inline constexpr int horizontalTapMultiple1 = 8;
inline constexpr int verticalTapMultiple = 2;
inline constexpr int horizontalMaximumShift = 20;
inline constexpr int verticalMaximumShift = 15;
inline constexpr int intermediateBits = 6;

struct ResampleKernels {
    const char* name;
    /// Mixes pixels of a row. `source` has at least `bank.start(i) + bank.taps()` pixels for every
    /// i.
    void (*horizontal4)(const std::uint8_t* source, const FilterBank& bank, std::int16_t* mixed);
    void (*horizontal1)(const std::uint8_t* source, const FilterBank& bank, std::int16_t* mixed);
    /// Mixes rows of `samples` samples, one weight a row, `weights.size()` even.
    void (*vertical)(const std::int16_t* const* rows, std::span<const std::int16_t> weights,
                     int shift, std::uint8_t* mixed, std::size_t samples);
    /// Cuts the colours of premultiplied pixels to their alpha.
    void (*clampToAlpha)(std::uint8_t* pixels, std::size_t count);
};

extern const ResampleKernels scalarResampleKernels;

/// Those that this machine can run, the scalar ones first, the fastest last.
std::span<const ResampleKernels* const> availableResampleKernels();

} // namespace cocoa::cg
