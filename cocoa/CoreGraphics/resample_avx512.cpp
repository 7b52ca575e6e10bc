#include "cocoa/CoreGraphics/resample_x86.h"

#if defined(__x86_64__) || defined(__i386__)

#include <algorithm>
#include <cstring>
#include <immintrin.h>

#define AVX512 __attribute__((target("avx2,avx512f,avx512bw,avx512vl,avx512vbmi,avx512vnni")))

namespace cocoa::cg {
namespace {

/// For every 128-bit part, the bytes of it that go where; -1 for none.
struct Places {
    alignas(64) std::int8_t bytes[64];
};

/// The same channel of two neighbours side by side, widened to 16 bits: of pixels 0 and 1, 4 and 5,
/// 2 and 3, 6 and 7, where the parts hold the first four, the last four, and both again.
constexpr Places pairsOfEight = {{0, -1, 4,  -1, 1, -1, 5,  -1, 2,  -1, 6,  -1, 3,  -1, 7,  -1,
                                  0, -1, 4,  -1, 1, -1, 5,  -1, 2,  -1, 6,  -1, 3,  -1, 7,  -1,
                                  8, -1, 12, -1, 9, -1, 13, -1, 10, -1, 14, -1, 11, -1, 15, -1,
                                  8, -1, 12, -1, 9, -1, 13, -1, 10, -1, 14, -1, 11, -1, 15, -1}};
constexpr Places weightsOfEight = {
    {0,  1,  2, 3, 0,  1,  2,  3,  0,  1,  2,  3,  0,  1,  2,  3,  8,  9,  10, 11, 8, 9,
     10, 11, 8, 9, 10, 11, 8,  9,  10, 11, 4,  5,  6,  7,  4,  5,  6,  7,  4,  5,  6, 7,
     4,  5,  6, 7, 12, 13, 14, 15, 12, 13, 14, 15, 12, 13, 14, 15, 12, 13, 14, 15}};
/// The same of four pixels, which every part holds.
constexpr Places pairsOfFour = {{0,  -1, 4,  -1, 1,  -1, 5,  -1, 2,  -1, 6,  -1, 3,  -1, 7,  -1,
                                 -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
                                 8,  -1, 12, -1, 9,  -1, 13, -1, 10, -1, 14, -1, 11, -1, 15, -1,
                                 -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1}};
constexpr Places weightsOfFour = {{0,  1,  2,  3,  0,  1,  2,  3,  0,  1,  2,  3,  0,  1,  2,  3,
                                   -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
                                   4,  5,  6,  7,  4,  5,  6,  7,  4,  5,  6,  7,  4,  5,  6,  7,
                                   -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1}};

AVX512 inline __m512i load(const Places& places) { return _mm512_load_si512(places.bytes); }

/// The sums of one mixed pixel: of each channel in the four 128-bit parts, which are to be added.
AVX512 inline __m512i mixPixel(const std::uint8_t* pixels, const std::int16_t* weights, int taps) {
    __m512i sum = _mm512_setzero_si512();
    for (; taps >= 8; taps -= 8, pixels += 32, weights += 8) {
        const __m512i eight =
            _mm512_broadcast_i64x4(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels)));
        const __m512i eightWeights =
            _mm512_broadcast_i32x4(_mm_loadu_si128(reinterpret_cast<const __m128i*>(weights)));
        sum = _mm512_dpwssd_epi32(sum, _mm512_shuffle_epi8(eight, load(pairsOfEight)),
                                  _mm512_shuffle_epi8(eightWeights, load(weightsOfEight)));
    }
    if (taps == 0) return sum;
    const __m512i four =
        _mm512_broadcast_i32x4(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels)));
    std::int64_t fourWeights;
    std::memcpy(&fourWeights, weights, sizeof fourWeights);
    return _mm512_dpwssd_epi32(
        sum, _mm512_shuffle_epi8(four, load(pairsOfFour)),
        _mm512_shuffle_epi8(_mm512_set1_epi64(fourWeights), load(weightsOfFour)));
}

AVX512 void horizontal4(const std::uint8_t* source, const FilterBank& bank, std::int16_t* mixed) {
    constexpr int pixelsAtOnce = 4;
    const int shift = bank.shift() - intermediateBits;
    const __m512i half = _mm512_set1_epi32(1 << (shift - 1));
    const __m128i places = _mm_cvtsi32_si128(shift);
    const int count = bank.count();
    const int taps = bank.taps();
    const auto pixel = [&](int i) AVX512 {
        i = std::min(i, count - 1);
        return mixPixel(source + static_cast<std::ptrdiff_t>(bank.start(i)) * 4, bank.weights(i),
                        taps);
    };
    for (int i = 0; i < count; i += pixelsAtOnce, mixed += pixelsAtOnce * 4) {
        const __m512i first = pixel(i);
        const __m512i second = pixel(i + 1);
        const __m512i third = pixel(i + 2);
        const __m512i fourth = pixel(i + 3);
        // Adds the parts of each, so that every pixel has a part of its own.
        const __m512i firstTwo = _mm512_add_epi32(_mm512_shuffle_i32x4(first, second, 0x44),
                                                  _mm512_shuffle_i32x4(first, second, 0xEE));
        const __m512i lastTwo = _mm512_add_epi32(_mm512_shuffle_i32x4(third, fourth, 0x44),
                                                 _mm512_shuffle_i32x4(third, fourth, 0xEE));
        const __m512i all = _mm512_add_epi32(_mm512_shuffle_i32x4(firstTwo, lastTwo, 0x88),
                                             _mm512_shuffle_i32x4(firstTwo, lastTwo, 0xDD));
        const __m256i narrow =
            _mm512_cvtsepi32_epi16(_mm512_sra_epi32(_mm512_add_epi32(all, half), places));
        if (i + pixelsAtOnce <= count)
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(mixed), narrow);
        else
            _mm256_mask_storeu_epi16(mixed, static_cast<__mmask16>((1U << (4 * (count - i))) - 1),
                                     narrow);
    }
}

/// The sums of 32 samples over all rows, as 16-bit numbers in the order of their parts. Only the
/// samples that `there` has are read.
AVX512 inline __m512i mixRows(const std::int16_t* const* rows,
                              std::span<const std::int16_t> weights, std::size_t offset,
                              __mmask32 there, __m512i half, __m128i places) {
    __m512i low = half;
    __m512i high = half;
    for (std::size_t tap = 0; tap < weights.size(); tap += 2) {
        std::int32_t twoWeights;
        std::memcpy(&twoWeights, weights.data() + tap, sizeof twoWeights);
        const __m512i pair = _mm512_set1_epi32(twoWeights);
        const __m512i first = _mm512_maskz_loadu_epi16(there, rows[tap] + offset);
        const __m512i second = _mm512_maskz_loadu_epi16(there, rows[tap + 1] + offset);
        low = _mm512_dpwssd_epi32(low, _mm512_unpacklo_epi16(first, second), pair);
        high = _mm512_dpwssd_epi32(high, _mm512_unpackhi_epi16(first, second), pair);
    }
    return _mm512_packs_epi32(_mm512_sra_epi32(low, places), _mm512_sra_epi32(high, places));
}

AVX512 void vertical(const std::int16_t* const* rows, std::span<const std::int16_t> weights,
                     int shift, std::uint8_t* mixed, std::size_t samples) {
    constexpr std::size_t samplesAtOnce = 64;
    const __m512i half = _mm512_set1_epi32(1 << (shift + intermediateBits - 1));
    const __m128i places = _mm_cvtsi32_si128(shift + intermediateBits);
    // Packing to bytes interleaves the parts of its two operands.
    const __m512i order = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
    for (std::size_t i = 0; i < samples; i += samplesAtOnce) {
        const std::size_t left = samples - i;
        const __mmask64 there =
            left < samplesAtOnce ? (std::uint64_t{1} << left) - 1 : ~__mmask64{};
        const __m512i low = mixRows(rows, weights, i, static_cast<__mmask32>(there), half, places);
        const __m512i high = mixRows(rows, weights, i + samplesAtOnce / 2,
                                     static_cast<__mmask32>(there >> 32), half, places);
        _mm512_mask_storeu_epi8(mixed + i, there,
                                _mm512_permutexvar_epi64(order, _mm512_packus_epi16(low, high)));
    }
}

} // namespace

const ResampleKernels avx512ResampleKernels = {"AVX-512", horizontal4, horizontal1SSE2, vertical,
                                               clampToAlphaSSE2};

} // namespace cocoa::cg

#endif
