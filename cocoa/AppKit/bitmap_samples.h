#pragma once

/// Single samples of a bitmap in any layout.

#include "cocoa/AppKit/bitmap_layout.h"

#include <cstring>

namespace cocoa::appkit {

/// Reads the sample that starts at a bit of a row: first bits high, 16 and 32 in the machine's
/// order.
inline std::uint32_t readSample(const std::uint8_t* row, std::size_t bit, int bitsPerSample) {
    const std::uint8_t* byte = row + bit / 8;
    switch (bitsPerSample) {
    case 8:
        return *byte;
    case 16: {
        std::uint16_t value;
        std::memcpy(&value, byte, sizeof value);
        return value;
    }
    case 32: {
        std::uint32_t value;
        std::memcpy(&value, byte, sizeof value);
        return value;
    }
    default: {
        std::uint32_t value = 0;
        for (int index = 0; index < bitsPerSample; ++index, ++bit)
            value = value << 1 | (row[bit / 8] >> (7 - bit % 8) & 1U);
        return value;
    }
    }
}

inline void writeSample(std::uint8_t* row, std::size_t bit, int bitsPerSample,
                        std::uint32_t value) {
    std::uint8_t* byte = row + bit / 8;
    switch (bitsPerSample) {
    case 8:
        *byte = static_cast<std::uint8_t>(value);
        return;
    case 16: {
        const auto narrow = static_cast<std::uint16_t>(value);
        std::memcpy(byte, &narrow, sizeof narrow);
        return;
    }
    case 32:
        std::memcpy(byte, &value, sizeof value);
        return;
    default:
        for (int index = bitsPerSample - 1; index >= 0; --index, ++bit) {
            const auto mask = static_cast<std::uint8_t>(1U << (7 - bit % 8));
            if (value >> index & 1U)
                row[bit / 8] |= mask;
            else
                row[bit / 8] &= static_cast<std::uint8_t>(~mask);
        }
    }
}

/// Where a sample lies.
struct SamplePlace {
    std::size_t plane;
    std::size_t row; ///< in bytes from the plane's start
    std::size_t bit; ///< in the row
};

inline SamplePlace placeOf(const BitmapLayout& layout, std::uint32_t x, std::uint32_t y,
                           int sample) {
    const auto index = static_cast<std::size_t>(sample);
    const std::size_t pixelBit = std::size_t{x} * static_cast<std::size_t>(layout.bitsPerPixel);
    const std::size_t row = std::size_t{y} * layout.bytesPerRow;
    if (layout.planar) return {index, row, pixelBit};
    return {0, row, pixelBit + index * static_cast<std::size_t>(layout.bitsPerSample)};
}

} // namespace cocoa::appkit
