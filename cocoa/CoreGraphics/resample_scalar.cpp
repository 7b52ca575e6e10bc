#include "cocoa/CoreGraphics/resample_kernels.h"

#include <algorithm>

namespace cocoa::cg {
namespace {

template <int channels>
void horizontal(const std::uint8_t* source, const FilterBank& bank, std::int16_t* mixed) {
    const int shift = bank.shift() - intermediateBits;
    for (int i = 0; i < bank.count(); ++i) {
        const std::uint8_t* pixels = source + static_cast<std::ptrdiff_t>(bank.start(i)) * channels;
        const std::int16_t* weights = bank.weights(i);
        for (int channel = 0; channel < channels; ++channel) {
            std::int32_t sum = 1 << (shift - 1);
            for (int tap = 0; tap < bank.taps(); ++tap) {
                sum += pixels[tap * channels + channel] * weights[tap];
            }
            *mixed++ = static_cast<std::int16_t>(std::clamp(sum >> shift, -32768, 32767));
        }
    }
}

void vertical(const std::int16_t* const* rows, std::span<const std::int16_t> weights, int shift,
              std::uint8_t* mixed, std::size_t samples) {
    const int places = shift + intermediateBits;
    for (std::size_t i = 0; i < samples; ++i) {
        std::int32_t sum = 1 << (places - 1);
        for (std::size_t tap = 0; tap < weights.size(); ++tap) {
            sum += rows[tap][i] * weights[tap];
        }
        mixed[i] = static_cast<std::uint8_t>(std::clamp(sum >> places, 0, 255));
    }
}

void clampToAlpha(std::uint8_t* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, pixels += 4) {
        for (int channel = 0; channel < 3; ++channel) {
            pixels[channel] = std::min(pixels[channel], pixels[3]);
        }
    }
}

} // namespace

const ResampleKernels scalarResampleKernels = {"scalar", horizontal<4>, horizontal<1>, vertical,
                                               clampToAlpha};

} // namespace cocoa::cg
