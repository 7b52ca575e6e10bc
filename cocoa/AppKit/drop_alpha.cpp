#include "cocoa/AppKit/drop_alpha.h"

#include <cstring>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace cocoa::appkit {
namespace {

#if defined(__x86_64__) || defined(__i386__)

/// Whole groups of 16 pixels in which nothing makes it stop.
__attribute__((target("ssse3"))) std::size_t dropInGroups(const std::uint8_t* in, std::uint8_t* out,
                                                          std::size_t count, bool stopAtAlpha) {
    constexpr std::size_t group = 16;
    const __m128i order = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
    const __m128i alphas = _mm_set1_epi32(static_cast<int>(0xFF000000));
    std::size_t done = 0;
    for (; done + group <= count; done += group, in += group * 4, out += group * 3) {
        const auto* source = reinterpret_cast<const __m128i*>(in);
        const __m128i first = _mm_loadu_si128(source);
        const __m128i second = _mm_loadu_si128(source + 1);
        const __m128i third = _mm_loadu_si128(source + 2);
        const __m128i fourth = _mm_loadu_si128(source + 3);
        const __m128i all =
            _mm_and_si128(_mm_and_si128(first, second), _mm_and_si128(third, fourth));
        const __m128i opaque = _mm_cmpeq_epi32(_mm_and_si128(all, alphas), alphas);
        if (stopAtAlpha && _mm_movemask_epi8(opaque) != 0xFFFF) return done;
        const __m128i a = _mm_shuffle_epi8(first, order);
        const __m128i b = _mm_shuffle_epi8(second, order);
        const __m128i c = _mm_shuffle_epi8(third, order);
        const __m128i d = _mm_shuffle_epi8(fourth, order);
        auto* target = reinterpret_cast<__m128i*>(out);
        _mm_storeu_si128(target, _mm_or_si128(a, _mm_slli_si128(b, 12)));
        _mm_storeu_si128(target + 1, _mm_or_si128(_mm_srli_si128(b, 4), _mm_slli_si128(c, 8)));
        _mm_storeu_si128(target + 2, _mm_or_si128(_mm_srli_si128(c, 8), _mm_slli_si128(d, 4)));
    }
    return done;
}

bool hasGroups() {
    static const bool has = __builtin_cpu_supports("ssse3") != 0;
    return has;
}

#else

std::size_t dropInGroups(const std::uint8_t*, std::uint8_t*, std::size_t, bool) { return 0; }
bool hasGroups() { return false; }

#endif

} // namespace

std::size_t dropOpaqueAlpha(const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                            bool stopAtAlpha) {
    std::size_t done = hasGroups() ? dropInGroups(in, out, count, stopAtAlpha) : 0;
    for (; done < count; ++done) {
        if (stopAtAlpha && in[done * 4 + 3] != 255) return done;
        std::memcpy(out + done * 3, in + done * 4, 3);
    }
    return done;
}

} // namespace cocoa::appkit
