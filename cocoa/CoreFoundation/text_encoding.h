#pragma once

/// Conversion between UTF-16 and the encodings that Core Foundation always has: UTF-8, UTF-16 and
/// UTF-32 of both byte orders, ASCII, ISO Latin 1, Mac Roman and Windows Latin 1.

#include <CoreFoundation/CFString.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace cocoa {

bool isBuiltInEncoding(CFStringEncoding encoding);

/// Nothing when the bytes are not valid in the encoding, which must be built in. With
/// `skipByteOrderMark` a mark at the start is obeyed and dropped.
std::optional<std::u16string> decodeText(std::span<const std::uint8_t> bytes,
                                         CFStringEncoding encoding, bool skipByteOrderMark);

/// The bytes of one character.
struct EncodedCharacter {
    std::array<std::uint8_t, 4> bytes{};
    std::size_t count = 0; ///< 0 when the encoding lacks the character
};

/// `encoding` must be built in.
EncodedCharacter encodeCharacter(char32_t character, CFStringEncoding encoding);

/// The character at a position of UTF-16 text and the units that it takes.
struct ReadCharacter {
    char32_t character = 0;
    std::size_t units = 1;
};

/// An unpaired surrogate is read as itself, which no encoding but UTF-16 has. `text` is not empty.
ReadCharacter readCharacter(std::u16string_view text);

bool hasUnpairedSurrogate(std::u16string_view text);

} // namespace cocoa
