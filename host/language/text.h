#pragma once

/// Strings as the language's functions see them: rows of characters. A character of a UTF-8 string
/// is a code point; a string of no known encoding, or of a one-byte encoding, has a character for
/// every byte; UTF-16 is read as UTF-8.

#include "host/objects/text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::language {

class Characters {
public:
    explicit Characters(const StringRef& text);

    std::size_t count() const { return offsets_.empty() ? bytes_.size() : offsets_.size() - 1; }
    std::string_view bytes() const { return bytes_; }
    std::uint32_t encoding() const { return encoding_; }

    /// The bytes of `length` characters from the one at `start`, counted from 0; less at the end.
    std::string_view slice(std::size_t start, std::size_t length = std::string::npos) const;
    /// The same as a string of this encoding.
    StringRef part(std::size_t start, std::size_t length = std::string::npos) const;
    char32_t at(std::size_t index) const;

    /// Where `wanted` begins at or behind `start`, without regard to case; npos when nowhere.
    std::size_t find(const Characters& wanted, std::size_t start) const;

private:
    std::size_t offset(std::size_t index) const {
        return offsets_.empty() ? index : offsets_[index];
    }
    const std::u32string& folded() const;

    StringRef kept_;
    std::string converted_;
    std::string_view bytes_;
    std::uint32_t encoding_;
    std::vector<std::uint32_t> offsets_; ///< empty where every character is one byte
    mutable std::u32string folded_;
};

/// A new string. Raises OutOfMemoryException where there is no memory for it, or it is longer than
/// a host string can be.
StringRef makeText(std::string_view bytes, std::uint32_t encoding = REALtextEncodingUTF8);

/// One text behind the other. Of two encodings the result is UTF-8; with bytes of no known encoding
/// it is bytes.
StringRef joinedText(const StringRef& left, const StringRef& right);

/// Less than, equal to or greater than 0. Letters compare without regard to case.
int compareText(const StringRef& left, const StringRef& right);

/// Every character mapped; in the text's own encoding.
StringRef mapped(const StringRef& text, char32_t (*map)(char32_t));

} // namespace host::language
