#pragma once

#include "cocoa/codecs/codec.h"

namespace cocoa::codecs {

/// Encoded bytes as they grow, in `malloc` memory. Nothing in here throws, so that the libraries'
/// callbacks can write to it.
class Output {
public:
    /// Makes room ahead of writing, to save copies where the size can be guessed.
    bool reserve(std::size_t capacity);
    bool append(const void* source, std::size_t count) { return write_at(size_, source, count); }
    /// Writes over or past the end; a gap in between is filled with zeros.
    bool write_at(std::size_t offset, const void* source, std::size_t count);

    /// `capacity` bytes of room behind the end, for a library to fill; `grow_by` takes them in.
    std::uint8_t* room(std::size_t capacity);
    void grow_by(std::size_t count) { size_ += count; }

    const std::uint8_t* data() const { return bytes_.get(); }
    std::size_t size() const { return size_; }

    /// Gives up the bytes, cut to their size.
    Encoded take();

private:
    std::unique_ptr<std::uint8_t, Encoded::Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace cocoa::codecs
