#include "cocoa/CoreGraphics/resample.h"

#include "cocoa/CoreGraphics/resample_x86.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace cocoa::cg {

std::span<const ResampleKernels* const> availableResampleKernels() {
    struct List {
        std::array<const ResampleKernels*, 5> kernels{&scalarResampleKernels};
        std::size_t count = 1;

        List() {
#if defined(__x86_64__) || defined(__i386__)
            __builtin_cpu_init();
            if (__builtin_cpu_supports("sse2")) kernels[count++] = &sse2ResampleKernels;
            if (__builtin_cpu_supports("ssse3")) kernels[count++] = &ssse3ResampleKernels;
            if (__builtin_cpu_supports("avx2")) kernels[count++] = &avx2ResampleKernels;
            if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("avx512f") &&
                __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl") &&
                __builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512vnni"))
                kernels[count++] = &avx512ResampleKernels;
#endif
        }
    };
    static const List list;
    return {list.kernels.data(), list.count};
}

FilterBank horizontalBank(Filter filter, int sourceLength, const Axis& axis, int channels) {
    return {filter, sourceLength, axis,
            channels == 4 ? horizontalTapMultiple4 : horizontalTapMultiple1,
            horizontalMaximumShift};
}

FilterBank verticalBank(Filter filter, int sourceLength, const Axis& axis) {
    return {filter, sourceLength, axis, verticalTapMultiple, verticalMaximumShift};
}

ScaledRows::ScaledRows(std::unique_ptr<RowSource> original, FilterBank horizontalWeights,
                       FilterBank verticalWeights, const ResampleKernels& kernels)
    : RowSource(horizontalWeights.count(), verticalWeights.count(), original->channels)
    , source(std::move(original))
    , horizontal(std::move(horizontalWeights))
    , vertical(std::move(verticalWeights))
    , kernels(kernels)
    , samples(rowBytes())
    , capacity(vertical.taps()) {
    // Weights of 0 may lie on pixels past the end of a short row.
    const int readable = std::max(source->width, horizontal.taps());
    sourceRow.resize(static_cast<std::size_t>(readable) * static_cast<unsigned>(channels));
    ring.resize(static_cast<std::size_t>(capacity) * samples);
    rows.resize(static_cast<std::size_t>(capacity));
}

void ScaledRows::hold(int y) {
    const std::uint8_t* pixels = source->row(y, sourceRow.data());
    if (pixels != sourceRow.data() && source->width < horizontal.taps()) {
        std::memcpy(sourceRow.data(), pixels, source->rowBytes());
        pixels = sourceRow.data();
    }
    const auto mix = channels == 4 ? kernels.horizontal4 : kernels.horizontal1;
    mix(pixels, horizontal, held(y));
}

const std::uint8_t* ScaledRows::row(int y, std::uint8_t* scratch) {
    const int first = vertical.start(y);
    const int end = std::min(first + vertical.taps(), source->height);
    for (next = std::max(next, first); next < end; ++next)
        hold(next);
    for (int tap = 0; tap < vertical.taps(); ++tap) {
        // Past the last row the weights are 0; any row will do.
        rows[static_cast<std::size_t>(tap)] = held(std::min(first + tap, end - 1));
    }
    const std::span weights(vertical.weights(y), static_cast<std::size_t>(vertical.taps()));
    kernels.vertical(rows.data(), weights, vertical.shift(), scratch, samples);
    if (channels == 4) kernels.clampToAlpha(scratch, static_cast<std::size_t>(width));
    return scratch;
}

} // namespace cocoa::cg
