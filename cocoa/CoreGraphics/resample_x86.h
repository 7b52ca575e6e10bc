#pragma once

#include "cocoa/CoreGraphics/resample_kernels.h"

#if defined(__x86_64__) || defined(__i386__)
namespace cocoa::cg {
extern const ResampleKernels sse2ResampleKernels;
extern const ResampleKernels ssse3ResampleKernels;
extern const ResampleKernels avx2ResampleKernels;
/// For processors that also have its extensions BW, VL, VBMI and VNNI.
extern const ResampleKernels avx512ResampleKernels;

/// What is as fast as memory, or rare, stays as it is on the newer ones.
void horizontal1SSE2(const std::uint8_t* source, const FilterBank& bank, std::int16_t* mixed);
void clampToAlphaSSE2(std::uint8_t* pixels, std::size_t count);
} // namespace cocoa::cg
#endif
