#pragma once

/// GIF's compression: variable-length codes for strings of pixels, in blocks of up to 255 bytes.

#include "cocoa/codecs/output.h"

namespace cocoa::codecs {

/// Decodes exactly `pixels.size()` pixels of `codeBits` bits, one a byte. `blocks` are led by their
/// lengths. False when the data holds fewer or is broken, or memory runs out; what was decoded
/// until then is in `pixels`.
bool decode_gif_codes(Bytes blocks, int codeBits, std::span<std::uint8_t> pixels);

/// Encodes pixels below 2 to the `codeBits` (2 to 8), one a byte, as blocks with the empty one at
/// the end. Rows can be handed over piece by piece.
class GifCodeWriter {
public:
    GifCodeWriter(Output& output, int codeBits);

    void write(std::span<const std::uint8_t> pixels);
    /// False when memory ran out on the way.
    bool finish();

private:
    void put(std::uint32_t code);
    void clear_table();
    bool flush_blocks(bool all);

    static constexpr std::size_t slots = std::size_t{1} << 14;
    static constexpr std::uint32_t noCode = ~std::uint32_t{0};

    Output& output_;
    int codeBits_;
    std::uint32_t clearCode_;
    std::uint32_t nextCode_ = 0;
    int width_ = 0; ///< of a code, in bits
    std::uint32_t current_ = noCode;
    std::uint64_t bits_ = 0;
    int bitCount_ = 0;
    bool failed_ = false;
    std::vector<std::uint32_t> table_; ///< a string's last pixel, its prefix's code and its own
    std::vector<std::uint8_t> pending_;
    std::size_t pendingSize_ = 0;
};

} // namespace cocoa::codecs
