#include "cocoa/codecs/png_filters.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace cocoa::codecs {

namespace {

enum Filter : std::uint8_t { None, Left, Above, Average, Paeth };

/// What a pixel is foretold to be from those to the left, above, and above to the left: whichever
/// is nearest to left + above - corner.
std::uint8_t paeth(std::uint8_t left, std::uint8_t above, std::uint8_t corner) {
    const auto fromLeft = static_cast<std::int16_t>(above - corner);
    const auto fromAbove = static_cast<std::int16_t>(left - corner);
    const auto fromCorner = static_cast<std::int16_t>(fromLeft + fromAbove);
    const auto size = [](std::int16_t value) {
        return static_cast<std::int16_t>(value < 0 ? -value : value);
    };
    const std::int16_t a = size(fromLeft);
    const std::int16_t b = size(fromAbove);
    const std::int16_t c = size(fromCorner);
    const std::uint8_t other = b <= c ? above : corner;
    return a <= b && a <= c ? left : other;
}

// The loops below go over whole rows with nothing carried from one byte to the next, so that the
// compiler makes vectors of them. `left` and `corner` point a pixel before `row` and `above`.

void differences(const std::uint8_t* __restrict row, const std::uint8_t* __restrict from,
                 std::size_t count, std::uint8_t* __restrict out) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<std::uint8_t>(row[i] - from[i]);
}

void average_differences(const std::uint8_t* __restrict row, const std::uint8_t* __restrict left,
                         const std::uint8_t* __restrict above, std::size_t count,
                         std::uint8_t* __restrict out) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<std::uint8_t>(row[i] - ((left[i] + above[i]) >> 1));
}

void paeth_differences(const std::uint8_t* __restrict row, const std::uint8_t* __restrict left,
                       const std::uint8_t* __restrict above, const std::uint8_t* __restrict corner,
                       std::size_t count, std::uint8_t* __restrict out) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<std::uint8_t>(row[i] - paeth(left[i], above[i], corner[i]));
}

/// The sum of the bytes' distances from 0, taken as signed.
std::uint64_t weight(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t total = 0;
    for (std::size_t at = 0; at < count;) {
        const std::size_t end = std::min<std::size_t>(count, at + (std::size_t{1} << 20));
        std::uint32_t sum = 0;
        for (; at < end; ++at)
            sum += std::min<std::uint8_t>(bytes[at], static_cast<std::uint8_t>(0 - bytes[at]));
        total += sum;
    }
    return total;
}

} // namespace

PngRowFilter::PngRowFilter(std::size_t rowBytes, std::size_t pixelBytes)
    : rowBytes_(rowBytes)
    , pixelBytes_(pixelBytes)
    , candidates_(new std::uint8_t[rowBytes * (kinds - 1)])
    , zeros_(new std::uint8_t[rowBytes]()) {}

void PngRowFilter::filter(const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out) {
    if (!above) above = zeros_.get();
    const std::size_t pixel = std::min(pixelBytes_, rowBytes_);
    const std::size_t rest = rowBytes_ - pixel;
    const auto candidate = [this](Filter kind) {
        return candidates_.get() + rowBytes_ * static_cast<std::size_t>(kind - 1);
    };
    // The first pixel has nothing to its left.
    std::memcpy(candidate(Left), row, pixel);
    differences(row, above, pixel, candidate(Paeth));
    for (std::size_t i = 0; i < pixel; ++i)
        candidate(Average)[i] = static_cast<std::uint8_t>(row[i] - (above[i] >> 1));

    differences(row + pixel, row, rest, candidate(Left) + pixel);
    differences(row, above, rowBytes_, candidate(Above));
    average_differences(row + pixel, row, above + pixel, rest, candidate(Average) + pixel);
    paeth_differences(row + pixel, row, above + pixel, above, rest, candidate(Paeth) + pixel);

    std::uint8_t best = None;
    std::uint64_t least = weight(row, rowBytes_);
    for (const Filter kind : {Left, Above, Average, Paeth}) {
        const std::uint64_t sum = weight(candidate(kind), rowBytes_);
        if (sum >= least) continue;
        least = sum;
        best = kind;
    }
    out[0] = best;
    std::memcpy(out + 1, best == None ? row : candidate(static_cast<Filter>(best)), rowBytes_);
}

namespace {

/// A pixel of a size that the compiler knows, so that it stays in registers.
template <std::size_t Size>
struct Unfilter {
    using Pixel = std::array<std::uint8_t, Size>;

    static Pixel load(const std::uint8_t* at) {
        Pixel pixel;
        std::memcpy(pixel.data(), at, Size);
        return pixel;
    }

    template <class Foretell>
    static void each(const std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
                     std::uint8_t* out, Foretell foretell) {
        Pixel left{};
        Pixel corner{};
        for (std::size_t at = 0; at + Size <= rowBytes; at += Size) {
            const Pixel over = above ? load(above + at) : Pixel{};
            Pixel pixel = load(row + at);
            for (std::size_t i = 0; i < Size; ++i)
                pixel[i] =
                    static_cast<std::uint8_t>(pixel[i] + foretell(left[i], over[i], corner[i]));
            std::memcpy(out + at, pixel.data(), Size);
            left = pixel;
            corner = over;
        }
    }

    static void left(const std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
                     std::uint8_t* out) {
        each(row, above, rowBytes, out,
             [](std::uint8_t left, std::uint8_t, std::uint8_t) { return left; });
    }
    static void average(const std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
                        std::uint8_t* out) {
        each(row, above, rowBytes, out, [](std::uint8_t left, std::uint8_t above, std::uint8_t) {
            return (left + above) >> 1;
        });
    }
    static void predicted(const std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
                          std::uint8_t* out) {
        each(row, above, rowBytes, out, paeth);
    }
};

void add_above(const std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
               std::uint8_t* out) {
    for (std::size_t i = 0; i < rowBytes; ++i)
        out[i] = static_cast<std::uint8_t>(row[i] + above[i]);
}

template <std::size_t Size>
bool unfilter(int filter, const std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
              std::uint8_t* out) {
    switch (filter) {
    case Left:
        Unfilter<Size>::left(row, above, rowBytes, out);
        return true;
    case Average:
        Unfilter<Size>::average(row, above, rowBytes, out);
        return true;
    case Paeth:
        Unfilter<Size>::predicted(row, above, rowBytes, out);
        return true;
    case Above:
        if (above) {
            add_above(row, above, rowBytes, out);
            return true;
        }
        [[fallthrough]];
    case None:
        std::memmove(out, row, rowBytes);
        return true;
    default:
        return false;
    }
}

} // namespace

bool unfilter_png_row(int filter, const std::uint8_t* row, const std::uint8_t* above,
                      std::size_t rowBytes, std::size_t pixelBytes, std::uint8_t* out) {
    switch (pixelBytes) {
    case 1:
        return unfilter<1>(filter, row, above, rowBytes, out);
    case 2:
        return unfilter<2>(filter, row, above, rowBytes, out);
    case 3:
        return unfilter<3>(filter, row, above, rowBytes, out);
    case 4:
        return unfilter<4>(filter, row, above, rowBytes, out);
    default:
        return false;
    }
}

} // namespace cocoa::codecs
