#include "plugin/picture/pixel_kernels_x86.h"

#if defined(__x86_64__) || defined(__i386__)

#include <immintrin.h>

#define SSE2 __attribute__((target("sse2")))
#define SSSE3 __attribute__((target("ssse3")))
#define AVX2 __attribute__((target("avx2")))

namespace {

using enum PixelOrder;

SSE2 inline __m128i load(const std::uint8_t* address) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(address));
}
SSE2 inline void store(std::uint8_t* address, __m128i value) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(address), value);
}
AVX2 inline __m256i load_wide(const std::uint8_t* address) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(address));
}

/// Four pixels as R, G, B and a fourth byte of any value, in each 32 bits.
template <PixelOrder order>
SSE2 inline __m128i as_rgbx(__m128i pixels) {
    if constexpr (order == RGBx) return pixels;
    if constexpr (order == xRGB) return _mm_srli_epi32(pixels, 8);
    const __m128i lowByte = _mm_set1_epi32(0xFF);
    const __m128i red = _mm_and_si128(_mm_srli_epi32(pixels, 16), lowByte);
    const __m128i green = _mm_and_si128(pixels, _mm_set1_epi32(0xFF00));
    const __m128i blue = _mm_slli_epi32(_mm_and_si128(pixels, lowByte), 16);
    return _mm_or_si128(_mm_or_si128(red, green), blue);
}

/// Where the red byte of a pixel starts within its 32 bits.
template <PixelOrder order>
constexpr int redShift = order == RGBx   ? 0
                         : order == xRGB ? 8
                                         : 16;

// R, G, B without gaps: four pixels become the first 12 bytes of a vector, with zeros behind, and
// four such vectors three full ones.

template <PixelOrder order>
SSE2 inline __m128i twelve_bytes_sse2(const std::uint8_t* pixels) {
    const __m128i rgbx = as_rgbx<order>(load(pixels));
    // In each 64 bits: the first pixel's 24 bits, and the second's moved down to them.
    const __m128i first = _mm_and_si128(rgbx, _mm_set_epi32(0, 0xFFFFFF, 0, 0xFFFFFF));
    const __m128i second =
        _mm_srli_epi64(_mm_and_si128(rgbx, _mm_set_epi32(0xFFFFFF, 0, 0xFFFFFF, 0)), 8);
    const __m128i pairs = _mm_or_si128(first, second);
    const __m128i lowHalf = _mm_set_epi32(0, 0, -1, -1);
    return _mm_or_si128(_mm_and_si128(pairs, lowHalf),
                        _mm_srli_si128(_mm_andnot_si128(lowHalf, pairs), 2));
}

template <PixelOrder order>
SSSE3 inline __m128i twelve_bytes_ssse3(const std::uint8_t* pixels) {
    constexpr plain_kernels::Places at = plain_kernels::places_of(order);
    const __m128i wanted = _mm_setr_epi8(at.red, at.green, at.blue, 4 + at.red, 4 + at.green,
                                         4 + at.blue, 8 + at.red, 8 + at.green, 8 + at.blue,
                                         12 + at.red, 12 + at.green, 12 + at.blue, -1, -1, -1, -1);
    return _mm_shuffle_epi8(load(pixels), wanted);
}

SSE2 inline void store_48_bytes(std::uint8_t* rgb, __m128i first, __m128i second, __m128i third,
                                __m128i fourth) {
    store(rgb, _mm_or_si128(first, _mm_slli_si128(second, 12)));
    store(rgb + 16, _mm_or_si128(_mm_srli_si128(second, 4), _mm_slli_si128(third, 8)));
    store(rgb + 32, _mm_or_si128(_mm_srli_si128(third, 8), _mm_slli_si128(fourth, 4)));
}

template <PixelOrder order>
SSE2 void copy_rgb_sse2(const std::uint8_t* pixels, std::size_t count, std::uint8_t* rgb) {
    for (; count >= 16; count -= 16, pixels += 64, rgb += 48)
        store_48_bytes(rgb, twelve_bytes_sse2<order>(pixels), twelve_bytes_sse2<order>(pixels + 16),
                       twelve_bytes_sse2<order>(pixels + 32),
                       twelve_bytes_sse2<order>(pixels + 48));
    plain_kernels::copy_rgb<order>(pixels, count, rgb);
}

template <PixelOrder order>
SSSE3 void copy_rgb_ssse3(const std::uint8_t* pixels, std::size_t count, std::uint8_t* rgb) {
    for (; count >= 16; count -= 16, pixels += 64, rgb += 48)
        store_48_bytes(
            rgb, twelve_bytes_ssse3<order>(pixels), twelve_bytes_ssse3<order>(pixels + 16),
            twelve_bytes_ssse3<order>(pixels + 32), twelve_bytes_ssse3<order>(pixels + 48));
    plain_kernels::copy_rgb<order>(pixels, count, rgb);
}

// Premultiplied pixels. A product of two bytes is divided by 255, exactly as integers are, by the
// high half of its product with 0x8081, shifted by 7.

SSE2 inline __m128i scaled(__m128i samples, __m128i alphas) {
    const __m128i product = _mm_mullo_epi16(samples, alphas);
    return _mm_srli_epi16(_mm_mulhi_epu16(product, _mm_set1_epi16(static_cast<short>(0x8081))), 7);
}

AVX2 inline __m256i scaled_wide(__m256i samples, __m256i alphas) {
    const __m256i product = _mm256_mullo_epi16(samples, alphas);
    return _mm256_srli_epi16(
        _mm256_mulhi_epu16(product, _mm256_set1_epi16(static_cast<short>(0x8081))), 7);
}

template <PixelOrder order, PixelOrder maskOrder>
SSE2 void premultiply_sse2(const std::uint8_t* pixels, const std::uint8_t* mask, std::size_t count,
                           std::uint8_t* rgba) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i lowByte = _mm_set1_epi32(0xFF);
    // A fourth sample of 255 becomes the alpha itself.
    const __m128i opaque = _mm_set1_epi32(static_cast<int>(0xFF000000));
    for (; count >= 4; count -= 4, pixels += 16, mask += 16, rgba += 16) {
        const __m128i samples = _mm_or_si128(as_rgbx<order>(load(pixels)), opaque);
        const __m128i masked =
            _mm_and_si128(_mm_srli_epi32(load(mask), redShift<maskOrder>), lowByte);
        const __m128i alpha = _mm_xor_si128(masked, lowByte);
        const __m128i twice = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 16));
        const __m128i low =
            scaled(_mm_unpacklo_epi8(samples, zero), _mm_unpacklo_epi32(twice, twice));
        const __m128i high =
            scaled(_mm_unpackhi_epi8(samples, zero), _mm_unpackhi_epi32(twice, twice));
        store(rgba, _mm_packus_epi16(low, high));
    }
    plain_kernels::premultiply<order, maskOrder>(pixels, mask, count, rgba);
}

template <PixelOrder order, PixelOrder maskOrder>
AVX2 void premultiply_avx2(const std::uint8_t* pixels, const std::uint8_t* mask, std::size_t count,
                           std::uint8_t* rgba) {
    constexpr plain_kernels::Places at = plain_kernels::places_of(order);
    // In each half: the places of R, G and B, with a 0 to be made 255 behind them.
    const __m256i wanted = _mm256_setr_epi8(
        at.red, at.green, at.blue, -1, 4 + at.red, 4 + at.green, 4 + at.blue, -1, 8 + at.red,
        8 + at.green, 8 + at.blue, -1, 12 + at.red, 12 + at.green, 12 + at.blue, -1, at.red,
        at.green, at.blue, -1, 4 + at.red, 4 + at.green, 4 + at.blue, -1, 8 + at.red, 8 + at.green,
        8 + at.blue, -1, 12 + at.red, 12 + at.green, 12 + at.blue, -1);
    const __m256i zero = _mm256_setzero_si256();
    const __m256i lowByte = _mm256_set1_epi32(0xFF);
    const __m256i opaque = _mm256_set1_epi32(static_cast<int>(0xFF000000));
    for (; count >= 8; count -= 8, pixels += 32, mask += 32, rgba += 32) {
        const __m256i samples =
            _mm256_or_si256(_mm256_shuffle_epi8(load_wide(pixels), wanted), opaque);
        const __m256i masked =
            _mm256_and_si256(_mm256_srli_epi32(load_wide(mask), redShift<maskOrder>), lowByte);
        const __m256i alpha = _mm256_xor_si256(masked, lowByte);
        const __m256i twice = _mm256_or_si256(alpha, _mm256_slli_epi32(alpha, 16));
        const __m256i low =
            scaled_wide(_mm256_unpacklo_epi8(samples, zero), _mm256_unpacklo_epi32(twice, twice));
        const __m256i high =
            scaled_wide(_mm256_unpackhi_epi8(samples, zero), _mm256_unpackhi_epi32(twice, twice));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(rgba), _mm256_packus_epi16(low, high));
    }
    premultiply_sse2<order, maskOrder>(pixels, mask, count, rgba);
}

// Mask pixels: the inverted alpha three times, and the fourth byte before or behind.

template <PixelOrder order>
SSE2 void write_mask_sse2(const std::uint8_t* alphas, std::size_t count, std::uint8_t* mask) {
    const __m128i all = _mm_set1_epi8(-1);
    const __m128i other = order == BGRx ? _mm_setzero_si128() : all;
    for (; count >= 16; count -= 16, alphas += 16, mask += 64) {
        const __m128i value = _mm_xor_si128(load(alphas), all);
        const __m128i lowTwice = _mm_unpacklo_epi8(value, value);
        const __m128i highTwice = _mm_unpackhi_epi8(value, value);
        if constexpr (order == xRGB) {
            const __m128i low = _mm_unpacklo_epi8(other, value);
            const __m128i high = _mm_unpackhi_epi8(other, value);
            store(mask, _mm_unpacklo_epi16(low, lowTwice));
            store(mask + 16, _mm_unpackhi_epi16(low, lowTwice));
            store(mask + 32, _mm_unpacklo_epi16(high, highTwice));
            store(mask + 48, _mm_unpackhi_epi16(high, highTwice));
        } else {
            const __m128i low = _mm_unpacklo_epi8(value, other);
            const __m128i high = _mm_unpackhi_epi8(value, other);
            store(mask, _mm_unpacklo_epi16(lowTwice, low));
            store(mask + 16, _mm_unpackhi_epi16(lowTwice, low));
            store(mask + 32, _mm_unpacklo_epi16(highTwice, high));
            store(mask + 48, _mm_unpackhi_epi16(highTwice, high));
        }
    }
    plain_kernels::write_mask<order>(alphas, count, mask);
}

} // namespace

const PixelKernels sse2PixelKernels = {
    "SSE2",
    {copy_rgb_sse2<RGBx>, copy_rgb_sse2<xRGB>, copy_rgb_sse2<BGRx>},
    {{premultiply_sse2<RGBx, RGBx>, premultiply_sse2<RGBx, xRGB>, premultiply_sse2<RGBx, BGRx>},
     {premultiply_sse2<xRGB, RGBx>, premultiply_sse2<xRGB, xRGB>, premultiply_sse2<xRGB, BGRx>},
     {premultiply_sse2<BGRx, RGBx>, premultiply_sse2<BGRx, xRGB>, premultiply_sse2<BGRx, BGRx>}},
    {write_mask_sse2<RGBx>, write_mask_sse2<xRGB>, write_mask_sse2<BGRx>},
};

const PixelKernels ssse3PixelKernels = {
    "SSSE3",
    {copy_rgb_ssse3<RGBx>, copy_rgb_ssse3<xRGB>, copy_rgb_ssse3<BGRx>},
    {{premultiply_sse2<RGBx, RGBx>, premultiply_sse2<RGBx, xRGB>, premultiply_sse2<RGBx, BGRx>},
     {premultiply_sse2<xRGB, RGBx>, premultiply_sse2<xRGB, xRGB>, premultiply_sse2<xRGB, BGRx>},
     {premultiply_sse2<BGRx, RGBx>, premultiply_sse2<BGRx, xRGB>, premultiply_sse2<BGRx, BGRx>}},
    {write_mask_sse2<RGBx>, write_mask_sse2<xRGB>, write_mask_sse2<BGRx>},
};

const PixelKernels avx2PixelKernels = {
    "AVX2",
    {copy_rgb_ssse3<RGBx>, copy_rgb_ssse3<xRGB>, copy_rgb_ssse3<BGRx>},
    {{premultiply_avx2<RGBx, RGBx>, premultiply_avx2<RGBx, xRGB>, premultiply_avx2<RGBx, BGRx>},
     {premultiply_avx2<xRGB, RGBx>, premultiply_avx2<xRGB, xRGB>, premultiply_avx2<xRGB, BGRx>},
     {premultiply_avx2<BGRx, RGBx>, premultiply_avx2<BGRx, xRGB>, premultiply_avx2<BGRx, BGRx>}},
    {write_mask_sse2<RGBx>, write_mask_sse2<xRGB>, write_mask_sse2<BGRx>},
};

#endif
