#include "cocoa/CoreGraphics/resample_x86.h"

#if defined(__x86_64__) || defined(__i386__)

#include <cstring>
#include <immintrin.h>

#define SSE2 __attribute__((target("sse2")))
#define SSSE3 __attribute__((target("ssse3")))
#define AVX2 __attribute__((target("avx2")))

namespace cocoa::cg {
namespace {

SSE2 inline __m128i load(const void* address) {
    return _mm_loadu_si128(static_cast<const __m128i*>(address));
}

SSE2 inline __m128i loadHalf(const void* address) {
    return _mm_loadl_epi64(static_cast<const __m128i*>(address));
}

/// Two weights, side by side in every 32 bits.
SSE2 inline __m128i pairOfWeights(const std::int16_t* weights) {
    std::int32_t pair;
    std::memcpy(&pair, weights, sizeof pair);
    return _mm_set1_epi32(pair);
}

SSE2 void horizontal4SSE2(const std::uint8_t* source, const FilterBank& bank, std::int16_t* mixed) {
    const int shift = bank.shift() - intermediateBits;
    const __m128i half = _mm_set1_epi32(1 << (shift - 1));
    const __m128i places = _mm_cvtsi32_si128(shift);
    const __m128i zero = _mm_setzero_si128();
    const int count = bank.count();
    const int taps = bank.taps();
    for (int i = 0; i < count; ++i, mixed += 4) {
        const std::uint8_t* pixels = source + static_cast<std::ptrdiff_t>(bank.start(i)) * 4;
        const std::int16_t* weights = bank.weights(i);
        __m128i sum = half;
        for (int tap = 0; tap < taps; tap += 4) {
            const __m128i four = load(pixels + tap * 4);
            const __m128i first = _mm_unpacklo_epi8(four, zero);
            const __m128i second = _mm_unpackhi_epi8(four, zero);
            const __m128i firstPairs = _mm_unpacklo_epi16(first, _mm_srli_si128(first, 8));
            const __m128i secondPairs = _mm_unpacklo_epi16(second, _mm_srli_si128(second, 8));
            sum = _mm_add_epi32(sum, _mm_madd_epi16(firstPairs, pairOfWeights(weights + tap)));
            sum = _mm_add_epi32(sum, _mm_madd_epi16(secondPairs, pairOfWeights(weights + tap + 2)));
        }
        sum = _mm_sra_epi32(sum, places);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(mixed), _mm_packs_epi32(sum, sum));
    }
}

SSSE3 void horizontal4SSSE3(const std::uint8_t* source, const FilterBank& bank,
                            std::int16_t* mixed) {
    const int shift = bank.shift() - intermediateBits;
    const __m128i half = _mm_set1_epi32(1 << (shift - 1));
    const __m128i places = _mm_cvtsi32_si128(shift);
    // The same channel of two neighbours side by side, widened to 16 bits.
    const __m128i firstTwo = _mm_setr_epi8(0, -1, 4, -1, 1, -1, 5, -1, 2, -1, 6, -1, 3, -1, 7, -1);
    const __m128i secondTwo =
        _mm_setr_epi8(8, -1, 12, -1, 9, -1, 13, -1, 10, -1, 14, -1, 11, -1, 15, -1);
    const int count = bank.count();
    const int taps = bank.taps();
    for (int i = 0; i < count; ++i, mixed += 4) {
        const std::uint8_t* pixels = source + static_cast<std::ptrdiff_t>(bank.start(i)) * 4;
        const std::int16_t* weights = bank.weights(i);
        __m128i sum = half;
        for (int tap = 0; tap < taps; tap += 4) {
            const __m128i four = load(pixels + tap * 4);
            const __m128i fourWeights = loadHalf(weights + tap);
            sum = _mm_add_epi32(sum, _mm_madd_epi16(_mm_shuffle_epi8(four, firstTwo),
                                                    _mm_shuffle_epi32(fourWeights, 0x00)));
            sum = _mm_add_epi32(sum, _mm_madd_epi16(_mm_shuffle_epi8(four, secondTwo),
                                                    _mm_shuffle_epi32(fourWeights, 0x55)));
        }
        sum = _mm_sra_epi32(sum, places);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(mixed), _mm_packs_epi32(sum, sum));
    }
}

AVX2 void horizontal4AVX2(const std::uint8_t* source, const FilterBank& bank, std::int16_t* mixed) {
    const int shift = bank.shift() - intermediateBits;
    const __m128i half = _mm_set1_epi32(1 << (shift - 1));
    const __m128i places = _mm_cvtsi32_si128(shift);
    // Pixels 0 and 1 in the low half, 2 and 3 in the high one.
    const __m256i two = _mm256_setr_epi8(0, -1, 4, -1, 1, -1, 5, -1, 2, -1, 6, -1, 3, -1, 7, -1, 8,
                                         -1, 12, -1, 9, -1, 13, -1, 10, -1, 14, -1, 11, -1, 15, -1);
    const __m256i spread = _mm256_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1);
    const int count = bank.count();
    const int taps = bank.taps();
    for (int i = 0; i < count; ++i, mixed += 4) {
        const std::uint8_t* pixels = source + static_cast<std::ptrdiff_t>(bank.start(i)) * 4;
        const std::int16_t* weights = bank.weights(i);
        __m256i sum = _mm256_setzero_si256();
        for (int tap = 0; tap < taps; tap += 4) {
            const __m256i four = _mm256_broadcastsi128_si256(load(pixels + tap * 4));
            const __m256i fourWeights = _mm256_permutevar8x32_epi32(
                _mm256_castsi128_si256(loadHalf(weights + tap)), spread);
            sum = _mm256_add_epi32(sum,
                                   _mm256_madd_epi16(_mm256_shuffle_epi8(four, two), fourWeights));
        }
        __m128i both = _mm_add_epi32(_mm256_castsi256_si128(sum), _mm256_extracti128_si256(sum, 1));
        both = _mm_sra_epi32(_mm_add_epi32(both, half), places);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(mixed), _mm_packs_epi32(both, both));
    }
}

/// The sums of 8 samples over all rows, from `offset` on.
SSE2 inline __m128i verticalEight(const std::int16_t* const* rows,
                                  std::span<const std::int16_t> weights, std::size_t offset,
                                  __m128i half, __m128i places) {
    __m128i low = half;
    __m128i high = half;
    for (std::size_t tap = 0; tap < weights.size(); tap += 2) {
        const __m128i first = load(rows[tap] + offset);
        const __m128i second = load(rows[tap + 1] + offset);
        const __m128i pair = pairOfWeights(weights.data() + tap);
        low = _mm_add_epi32(low, _mm_madd_epi16(_mm_unpacklo_epi16(first, second), pair));
        high = _mm_add_epi32(high, _mm_madd_epi16(_mm_unpackhi_epi16(first, second), pair));
    }
    return _mm_packs_epi32(_mm_sra_epi32(low, places), _mm_sra_epi32(high, places));
}

/// What is left of a row that is no whole number of vectors.
void verticalRest(const std::int16_t* const* rows, std::span<const std::int16_t> weights, int shift,
                  std::uint8_t* mixed, std::size_t samples, std::size_t done) {
    const int places = shift + intermediateBits;
    for (std::size_t i = done; i < samples; ++i) {
        std::int32_t sum = 1 << (places - 1);
        for (std::size_t tap = 0; tap < weights.size(); ++tap) {
            sum += rows[tap][i] * weights[tap];
        }
        sum >>= places;
        mixed[i] = static_cast<std::uint8_t>(sum < 0 ? 0 : sum > 255 ? 255 : sum);
    }
}

SSE2 void verticalSSE2(const std::int16_t* const* rows, std::span<const std::int16_t> weights,
                       int shift, std::uint8_t* mixed, std::size_t samples) {
    const __m128i half = _mm_set1_epi32(1 << (shift + intermediateBits - 1));
    const __m128i places = _mm_cvtsi32_si128(shift + intermediateBits);
    std::size_t i = 0;
    for (; i + 16 <= samples; i += 16) {
        const __m128i low = verticalEight(rows, weights, i, half, places);
        const __m128i high = verticalEight(rows, weights, i + 8, half, places);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(mixed + i), _mm_packus_epi16(low, high));
    }
    for (; i + 8 <= samples; i += 8) {
        const __m128i eight = verticalEight(rows, weights, i, half, places);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(mixed + i), _mm_packus_epi16(eight, eight));
    }
    verticalRest(rows, weights, shift, mixed, samples, i);
}

AVX2 inline __m256i loadWide(const void* address) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(address));
}

AVX2 void verticalAVX2(const std::int16_t* const* rows, std::span<const std::int16_t> weights,
                       int shift, std::uint8_t* mixed, std::size_t samples) {
    const __m256i half = _mm256_set1_epi32(1 << (shift + intermediateBits - 1));
    const __m128i places = _mm_cvtsi32_si128(shift + intermediateBits);
    std::size_t i = 0;
    for (; i + 32 <= samples; i += 32) {
        __m256i sums[4] = {half, half, half, half};
        for (std::size_t tap = 0; tap < weights.size(); tap += 2) {
            std::int32_t twoWeights;
            std::memcpy(&twoWeights, weights.data() + tap, sizeof twoWeights);
            const __m256i pair = _mm256_set1_epi32(twoWeights);
            for (int part = 0; part < 2; ++part) {
                const __m256i first = loadWide(rows[tap] + i + part * 16);
                const __m256i second = loadWide(rows[tap + 1] + i + part * 16);
                sums[part * 2] = _mm256_add_epi32(
                    sums[part * 2], _mm256_madd_epi16(_mm256_unpacklo_epi16(first, second), pair));
                sums[part * 2 + 1] =
                    _mm256_add_epi32(sums[part * 2 + 1],
                                     _mm256_madd_epi16(_mm256_unpackhi_epi16(first, second), pair));
            }
        }
        // Unpacking and packing both work within halves, so that 16-bit order is kept; packing to
        // bytes interleaves the halves of its two operands.
        const __m256i low = _mm256_packs_epi32(_mm256_sra_epi32(sums[0], places),
                                               _mm256_sra_epi32(sums[1], places));
        const __m256i high = _mm256_packs_epi32(_mm256_sra_epi32(sums[2], places),
                                                _mm256_sra_epi32(sums[3], places));
        const __m256i bytes = _mm256_permute4x64_epi64(_mm256_packus_epi16(low, high), 0xD8);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(mixed + i), bytes);
    }
    const __m128i narrowHalf = _mm256_castsi256_si128(half);
    for (; i + 8 <= samples; i += 8) {
        const __m128i eight = verticalEight(rows, weights, i, narrowHalf, places);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(mixed + i), _mm_packus_epi16(eight, eight));
    }
    verticalRest(rows, weights, shift, mixed, samples, i);
}

} // namespace

SSE2 void horizontal1SSE2(const std::uint8_t* source, const FilterBank& bank, std::int16_t* mixed) {
    const int shift = bank.shift() - intermediateBits;
    const __m128i half = _mm_set1_epi32(1 << (shift - 1));
    const __m128i places = _mm_cvtsi32_si128(shift);
    const __m128i zero = _mm_setzero_si128();
    const int count = bank.count();
    const int taps = bank.taps();
    for (int i = 0; i < count; ++i, ++mixed) {
        const std::uint8_t* pixels = source + bank.start(i);
        const std::int16_t* weights = bank.weights(i);
        __m128i sum = zero;
        for (int tap = 0; tap < taps; tap += 8) {
            const __m128i eight = _mm_unpacklo_epi8(loadHalf(pixels + tap), zero);
            sum = _mm_add_epi32(sum, _mm_madd_epi16(eight, load(weights + tap)));
        }
        sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, 0x4E));
        sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, 0xB1));
        sum = _mm_sra_epi32(_mm_add_epi32(sum, half), places);
        *mixed = static_cast<std::int16_t>(_mm_cvtsi128_si32(_mm_packs_epi32(sum, sum)));
    }
}

SSE2 void clampToAlphaSSE2(std::uint8_t* pixels, std::size_t count) {
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const __m128i four = load(pixels + i * 4);
        __m128i alpha = _mm_srli_epi32(four, 24);
        alpha = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 8));
        alpha = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 16));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels + i * 4), _mm_min_epu8(four, alpha));
    }
    scalarResampleKernels.clampToAlpha(pixels + i * 4, count - i);
}

const ResampleKernels sse2ResampleKernels = {"SSE2", horizontal4SSE2, horizontal1SSE2, verticalSSE2,
                                             clampToAlphaSSE2};
const ResampleKernels ssse3ResampleKernels = {"SSSE3", horizontal4SSSE3, horizontal1SSE2,
                                              verticalSSE2, clampToAlphaSSE2};
const ResampleKernels avx2ResampleKernels = {"AVX2", horizontal4AVX2, horizontal1SSE2, verticalAVX2,
                                             clampToAlphaSSE2};

} // namespace cocoa::cg

#endif
