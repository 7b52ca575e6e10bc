#pragma once

#include "cocoa/CoreGraphics/resample_kernels.h"

#if defined(__x86_64__) || defined(__i386__)
namespace cocoa::cg {
extern const ResampleKernels sse2ResampleKernels;
extern const ResampleKernels ssse3ResampleKernels;
extern const ResampleKernels avx2ResampleKernels;
} // namespace cocoa::cg
#endif
