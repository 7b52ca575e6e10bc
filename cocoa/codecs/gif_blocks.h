#pragma once

/// The blocks that a GIF consists of, found without decoding any pixel.

#include "cocoa/codecs/codec.h"

#include <array>

namespace cocoa::codecs {

using RGBColor = std::array<std::uint8_t, 3>;

/// What happens to a frame's area before the next one is shown.
enum class GifDisposal : std::uint8_t { Keep, Clear, Restore };

struct GifFrame {
    std::uint32_t left = 0;
    std::uint32_t top = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool interlaced = false;
    int transparentIndex = -1; ///< -1: every pixel is opaque
    GifDisposal disposal = GifDisposal::Keep;
    double duration = 0; ///< in seconds
    Bytes colorTable;    ///< red, green, blue; the file's where the frame has none of its own
    int codeBits = 0;    ///< of a pixel, 1 to 8
    Bytes blocks;        ///< the pixels: blocks led by their lengths, the empty one included
    std::uint64_t codeBytes = 0; ///< in those blocks

    std::uint64_t pixels() const { return std::uint64_t{width} * height; }
};

struct GifFile {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::optional<unsigned> repeats; ///< 0: for ever
    std::vector<GifFrame> frames;
};

/// The rows of a frame in the order in which they are stored.
std::vector<std::uint32_t> gif_row_order(std::uint32_t height, bool interlaced);

/// Nothing for data that is no whole GIF with at least one frame.
std::optional<GifFile> survey_gif(Bytes data);

} // namespace cocoa::codecs
