#pragma once

/// What the header of a BMP says.

#include "cocoa/codecs/codec.h"

#include <array>

namespace cocoa::codecs {

/// The bits of a pixel that hold one channel: `mask` has them side by side; 0 for no such channel.
struct BmpChannel {
    std::uint32_t mask = 0;

    int shift() const;
    int bits() const;
    bool contiguous() const;
};

struct BmpHeader {
    enum class Coding : std::uint8_t { Plain, Runs4, Runs8 };

    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool topDown = false;
    int bitsPerPixel = 0; ///< 1, 2, 4, 8, 16, 24 or 32
    Coding coding = Coding::Plain;
    std::array<BmpChannel, 4> channels{}; ///< red, green, blue, alpha, of 16 and 32 bits a pixel
    std::vector<std::array<std::uint8_t, 3>> palette; ///< red, green, blue; of up to 8 bits
    Bytes pixels;                                     ///< from their start to the file's end
    std::uint32_t dotsPerMeterX = 0;
    std::uint32_t dotsPerMeterY = 0;
    Bytes iccProfile;

    bool has_alpha() const { return channels[3].mask != 0; }
    /// Rows are filled up to 4 bytes.
    std::uint64_t row_bytes() const {
        return (std::uint64_t{width} * static_cast<unsigned>(bitsPerPixel) + 31) / 32 * 4;
    }
};

/// Nothing for data that is no BMP, of a kind that is not decoded, or lacks some of its pixels.
std::optional<BmpHeader> read_bmp_header(Bytes data);

} // namespace cocoa::codecs
