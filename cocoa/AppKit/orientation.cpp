#include "cocoa/AppKit/orientation.h"

#include "cocoa/AppKit/bitmap_samples.h"

#include <algorithm>
#include <utility>

namespace cocoa::appkit {
namespace {

/// Where the upright picture's pixel at (x, y) is stored.
struct Source {
    std::uint32_t x;
    std::uint32_t y;
};

Source sourceOf(std::uint32_t x, std::uint32_t y, const codecs::PixelLayout& stored,
                int orientation) {
    const std::uint32_t right = stored.width - 1;
    const std::uint32_t bottom = stored.height - 1;
    switch (orientation) {
    case 2:
        return {right - x, y};
    case 3:
        return {right - x, bottom - y};
    case 4:
        return {x, bottom - y};
    case 5:
        return {y, x};
    case 6:
        return {y, bottom - x};
    case 7:
        return {right - y, bottom - x};
    case 8:
        return {right - y, x};
    default:
        return {x, y};
    }
}

/// Calls `copy(x, y)` for every pixel, in squares that keep both pictures' rows in the cache.
template <class Copy>
void forEachPixel(std::uint32_t width, std::uint32_t height, Copy copy) {
    constexpr std::uint32_t side = 32;
    for (std::uint32_t top = 0; top < height; top += side)
        for (std::uint32_t left = 0; left < width; left += side)
            for (std::uint32_t y = top; y < std::min(height, top + side); ++y)
                for (std::uint32_t x = left; x < std::min(width, left + side); ++x)
                    copy(x, y);
}

template <std::size_t size>
void turnBytes(const codecs::PixelLayout& stored, const std::uint8_t* in, int orientation,
               std::uint8_t* out) {
    const auto upright = uprightLayout(stored, orientation);
    const std::size_t inRow = std::size_t{stored.width} * size;
    const std::size_t outRow = std::size_t{upright.width} * size;
    forEachPixel(upright.width, upright.height, [&](std::uint32_t x, std::uint32_t y) {
        const Source source = sourceOf(x, y, stored, orientation);
        std::memcpy(out + y * outRow + x * size, in + source.y * inRow + source.x * size, size);
    });
}

void turnBits(const codecs::PixelLayout& stored, const std::uint8_t* in, int orientation,
              std::uint8_t* out) {
    const auto upright = uprightLayout(stored, orientation);
    const int bits = stored.bitsPerPixel();
    const auto inRow = static_cast<std::size_t>(stored.packedRowBytes());
    const auto outRow = static_cast<std::size_t>(upright.packedRowBytes());
    forEachPixel(upright.width, upright.height, [&](std::uint32_t x, std::uint32_t y) {
        const Source source = sourceOf(x, y, stored, orientation);
        const auto step = static_cast<std::size_t>(bits);
        writeSample(out + y * outRow, x * step, bits,
                    readSample(in + source.y * inRow, source.x * step, bits));
    });
}

} // namespace

codecs::PixelLayout uprightLayout(codecs::PixelLayout stored, int orientation) {
    if (exchangesSides(orientation)) std::swap(stored.width, stored.height);
    return stored;
}

void turnUpright(const codecs::PixelLayout& stored, const std::uint8_t* in, int orientation,
                 std::uint8_t* out) {
    switch (stored.bitsPerPixel()) {
    case 8:
        return turnBytes<1>(stored, in, orientation, out);
    case 16:
        return turnBytes<2>(stored, in, orientation, out);
    case 24:
        return turnBytes<3>(stored, in, orientation, out);
    case 32:
        return turnBytes<4>(stored, in, orientation, out);
    case 40:
        return turnBytes<5>(stored, in, orientation, out);
    case 48:
        return turnBytes<6>(stored, in, orientation, out);
    case 64:
        return turnBytes<8>(stored, in, orientation, out);
    case 80:
        return turnBytes<10>(stored, in, orientation, out);
    default:
        return turnBits(stored, in, orientation, out);
    }
}

} // namespace cocoa::appkit
