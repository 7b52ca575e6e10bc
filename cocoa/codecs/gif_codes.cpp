#include "cocoa/codecs/gif_codes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <new>

namespace cocoa::codecs {

namespace {

constexpr int longestCode = 12;
constexpr std::uint32_t mostCodes = 1 << longestCode;

/// The codes' bytes side by side, with room behind them to load whole words.
std::vector<std::uint8_t> joined(Bytes blocks) {
    constexpr std::size_t room = 8;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(blocks.size() + room);
    for (std::size_t at = 0; at < blocks.size() && blocks[at] != 0;) {
        const std::size_t size = std::min<std::size_t>(blocks[at], blocks.size() - at - 1);
        const auto first = blocks.begin() + static_cast<std::ptrdiff_t>(at + 1);
        bytes.insert(bytes.end(), first, first + static_cast<std::ptrdiff_t>(size));
        at += size + 1;
    }
    bytes.resize(bytes.size() + room);
    return bytes;
}

std::uint64_t little_endian_64(const std::uint8_t* bytes) {
    std::uint64_t value = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&value, bytes, sizeof value);
    } else {
        for (int i = 7; i >= 0; --i)
            value = value << 8 | bytes[i];
    }
    return value;
}

/// A string of pixels, by where it stands among those decoded already: what a code stands for is
/// the string before it and the pixel that follows there.
struct String {
    std::uint32_t start;
    std::uint32_t length;
};

} // namespace

bool decode_gif_codes(Bytes blocks, int codeBits, std::span<std::uint8_t> pixels) try {
    const auto bytes = joined(blocks);
    constexpr std::size_t room = 8;
    const std::uint64_t bitsInAll = std::uint64_t{bytes.size() - room} * 8;
    const std::uint32_t clearCode = std::uint32_t{1} << codeBits;
    const std::uint32_t endCode = clearCode + 1;

    std::array<String, mostCodes> strings;
    std::uint32_t nextCode = endCode + 1;
    int width = codeBits + 1;
    std::uint64_t bit = 0;
    bool first = true; // of the codes since the table was cleared
    String last{};
    std::uint8_t* const out = pixels.data();
    const std::size_t size = pixels.size();
    std::size_t done = 0;

    while (done < size) {
        if (bit + static_cast<unsigned>(width) > bitsInAll) return false;
        const std::uint64_t word = little_endian_64(&bytes[static_cast<std::size_t>(bit / 8)]);
        const auto code = static_cast<std::uint32_t>(word >> bit % 8) & ((1U << width) - 1);
        bit += static_cast<unsigned>(width);
        if (code == clearCode) {
            nextCode = endCode + 1;
            width = codeBits + 1;
            first = true;
            continue;
        }
        if (code == endCode) return false;

        const String previous = last;
        last.start = static_cast<std::uint32_t>(done);
        if (code < clearCode) {
            out[done++] = static_cast<std::uint8_t>(code);
            last.length = 1;
        } else {
            // The newest string is not known yet: it is the last one and its own first pixel.
            const bool unknown = code == nextCode && !first && nextCode < mostCodes;
            if (code >= nextCode && !unknown) return false;
            const String string =
                unknown ? String{previous.start, previous.length + 1} : strings[code];
            const std::size_t length = std::min<std::size_t>(string.length, size - done);
            const std::uint8_t* from = out + string.start;
            constexpr std::size_t stride = 8;
            if (length <= stride && size - done >= stride && done - string.start >= stride) {
                std::memcpy(out + done, from, stride);
            } else if (!unknown) {
                std::memcpy(out + done, from, length);
            } else {
                std::memcpy(out + done, from, std::min<std::size_t>(previous.length, length));
                if (length > previous.length) out[done + previous.length] = from[0];
            }
            done += length;
            last.length = static_cast<std::uint32_t>(length);
        }
        if (!first && nextCode < mostCodes) {
            strings[nextCode++] = {previous.start, previous.length + 1};
            if (nextCode == 1U << width && width < longestCode) ++width;
        }
        first = false;
    }
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

GifCodeWriter::GifCodeWriter(Output& output, int codeBits)
    : output_(output)
    , codeBits_(codeBits)
    , clearCode_(std::uint32_t{1} << codeBits)
    , table_(slots)
    , pending_(std::size_t{64} << 10) {
    const auto bits = static_cast<std::uint8_t>(codeBits);
    failed_ = !output_.append(&bits, 1);
    width_ = codeBits_ + 1;
    put(clearCode_);
    clear_table();
}

void GifCodeWriter::clear_table() {
    std::fill(table_.begin(), table_.end(), 0);
    nextCode_ = clearCode_ + 2;
    width_ = codeBits_ + 1;
}

inline void GifCodeWriter::put(std::uint32_t code) {
    bits_ |= std::uint64_t{code} << bitCount_;
    bitCount_ += width_;
    if (bitCount_ < 32) return;
    for (int i = 0; i < 4; ++i)
        pending_[pendingSize_++] = static_cast<std::uint8_t>(bits_ >> 8 * i);
    bits_ >>= 32;
    bitCount_ -= 32;
    if (pendingSize_ + 8 > pending_.size() && !flush_blocks(false)) failed_ = true;
}

/// Hands on what is pending: full blocks, and at the end the rest.
bool GifCodeWriter::flush_blocks(bool all) {
    constexpr std::size_t largest = 255;
    std::size_t at = 0;
    while (pendingSize_ - at >= largest || (all && at < pendingSize_)) {
        const auto size = static_cast<std::uint8_t>(std::min(largest, pendingSize_ - at));
        if (!output_.append(&size, 1) || !output_.append(&pending_[at], size)) return false;
        at += size;
    }
    std::memmove(pending_.data(), &pending_[at], pendingSize_ - at);
    pendingSize_ -= at;
    return true;
}

void GifCodeWriter::write(std::span<const std::uint8_t> pixels) {
    auto pixel = pixels.begin();
    if (pixel == pixels.end()) return;
    if (current_ == noCode) current_ = *pixel++;
    for (; pixel != pixels.end(); ++pixel) {
        // An entry is 20 bits of key over 12 bits of code, which is never 0.
        const std::uint32_t key = current_ << 8 | *pixel;
        std::size_t slot = (key * 0x9E3779B1U) >> 18;
        std::uint32_t entry = 0;
        while ((entry = table_[slot]) != 0 && entry >> longestCode != key)
            slot = (slot + 1) & (slots - 1);
        if (entry != 0) {
            current_ = entry & (mostCodes - 1);
            continue;
        }
        put(current_);
        current_ = *pixel;
        if (nextCode_ == mostCodes) {
            put(clearCode_);
            clear_table();
            continue;
        }
        table_[slot] = key << longestCode | nextCode_;
        // Readers learn a string one code later than writers.
        if (nextCode_ == 1U << width_) ++width_;
        ++nextCode_;
    }
}

bool GifCodeWriter::finish() {
    if (current_ != noCode) put(current_);
    // The reader has learnt one more string by now.
    if (current_ != noCode && nextCode_ == 1U << width_ && width_ < longestCode) ++width_;
    put(clearCode_ + 1);
    while (bitCount_ > 0) {
        pending_[pendingSize_++] = static_cast<std::uint8_t>(bits_);
        bits_ >>= 8;
        bitCount_ -= 8;
    }
    constexpr std::uint8_t noMore = 0;
    return !failed_ && flush_blocks(true) && output_.append(&noMore, 1);
}

} // namespace cocoa::codecs
