#include "plugin/picture/pixel_kernels.h"

#include "plugin/picture/pixel_kernels_x86.h"

#include <vector>

namespace {

using enum PixelOrder;
using namespace plain_kernels;

constexpr PixelKernels plainPixelKernels = {
    "plain",
    {copy_rgb<RGBx>, copy_rgb<xRGB>, copy_rgb<BGRx>},
    {{premultiply<RGBx, RGBx>, premultiply<RGBx, xRGB>, premultiply<RGBx, BGRx>},
     {premultiply<xRGB, RGBx>, premultiply<xRGB, xRGB>, premultiply<xRGB, BGRx>},
     {premultiply<BGRx, RGBx>, premultiply<BGRx, xRGB>, premultiply<BGRx, BGRx>}},
    {write_mask<RGBx>, write_mask<xRGB>, write_mask<BGRx>},
};

std::vector<const PixelKernels*> find_usable() {
    std::vector<const PixelKernels*> usable = {&plainPixelKernels};
#if defined(__x86_64__) || defined(__i386__)
    __builtin_cpu_init();
    if (__builtin_cpu_supports("sse2")) usable.push_back(&sse2PixelKernels);
    if (__builtin_cpu_supports("ssse3")) usable.push_back(&ssse3PixelKernels);
    if (__builtin_cpu_supports("avx2")) usable.push_back(&avx2PixelKernels);
#endif
    return usable;
}

} // namespace

std::span<const PixelKernels* const> usable_pixel_kernels() {
    static const std::vector<const PixelKernels*> usable = find_usable();
    return usable;
}

const PixelKernels& fastest_pixel_kernels() { return *usable_pixel_kernels().back(); }
