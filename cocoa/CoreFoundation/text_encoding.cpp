#include "cocoa/CoreFoundation/text_encoding.h"

#include "cocoa/CoreFoundation/single_byte_tables.h"

#include <algorithm>
#include <bit>

namespace cocoa {
namespace {

constexpr char32_t lastCharacter = 0x10FFFF;
constexpr char32_t byteOrderMark = 0xFEFF;

constexpr bool isSurrogate(char32_t character) {
    return character >= 0xD800 && character <= 0xDFFF;
}

enum class Family { SingleByte, UTF8, UTF16, UTF32, None };

Family familyOf(CFStringEncoding encoding) {
    switch (encoding) {
    case kCFStringEncodingMacRoman:
    case kCFStringEncodingWindowsLatin1:
    case kCFStringEncodingISOLatin1:
    case kCFStringEncodingASCII:
        return Family::SingleByte;
    case kCFStringEncodingUTF8:
        return Family::UTF8;
    case kCFStringEncodingUTF16:
    case kCFStringEncodingUTF16BE:
    case kCFStringEncodingUTF16LE:
        return Family::UTF16;
    case kCFStringEncodingUTF32:
    case kCFStringEncodingUTF32BE:
    case kCFStringEncodingUTF32LE:
        return Family::UTF32;
    default:
        return Family::None;
    }
}

std::endian byteOrderOf(CFStringEncoding encoding) {
    switch (encoding) {
    case kCFStringEncodingUTF16BE:
    case kCFStringEncodingUTF32BE:
        return std::endian::big;
    case kCFStringEncodingUTF16LE:
    case kCFStringEncodingUTF32LE:
        return std::endian::little;
    default:
        return std::endian::native;
    }
}

void append(std::u16string& text, char32_t character) {
    if (character < 0x10000) {
        text.push_back(static_cast<char16_t>(character));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD7C0 + (character >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
}

const std::array<char16_t, 128>& upperHalfOf(CFStringEncoding encoding) {
    return encoding == kCFStringEncodingMacRoman ? macRomanUpperHalf : windowsLatin1UpperHalf;
}

std::optional<std::u16string> decodeSingleBytes(std::span<const std::uint8_t> bytes,
                                                CFStringEncoding encoding) {
    std::u16string text;
    text.reserve(bytes.size());
    for (const std::uint8_t byte : bytes) {
        char16_t unit = byte;
        if (byte >= 0x80 && encoding != kCFStringEncodingISOLatin1) {
            if (encoding == kCFStringEncodingASCII) return std::nullopt;
            unit = upperHalfOf(encoding)[byte - 0x80];
            if (!unit) return std::nullopt;
        }
        text.push_back(unit);
    }
    return text;
}

std::optional<std::u16string> decodeUTF8(std::span<const std::uint8_t> bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::uint8_t lead = bytes[at++];
        if (lead < 0x80) {
            text.push_back(lead);
            continue;
        }
        const int followers = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
        if (lead < 0xC2 || lead > 0xF4) return std::nullopt;
        char32_t character = lead & (0x3F >> followers);
        for (int follower = 0; follower < followers; ++follower) {
            if (at == bytes.size() || (bytes[at] & 0xC0) != 0x80) return std::nullopt;
            character = (character << 6) | (bytes[at++] & 0x3F);
        }
        constexpr std::array<char32_t, 4> least{0, 0x80, 0x800, 0x10000};
        if (character < least[followers] || character > lastCharacter || isSurrogate(character))
            return std::nullopt;
        append(text, character);
    }
    return text;
}

char32_t readUnit(std::span<const std::uint8_t> bytes, std::endian order) {
    char32_t unit = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index)
        unit = (unit << 8) | bytes[order == std::endian::big ? index : bytes.size() - 1 - index];
    return unit;
}

std::optional<std::u16string> decodeUnits(std::span<const std::uint8_t> bytes, std::size_t width,
                                          std::endian order, bool skipByteOrderMark) {
    if (bytes.size() % width) return std::nullopt;
    if (skipByteOrderMark && !bytes.empty()) {
        const auto first = bytes.first(width);
        for (const std::endian marked : {std::endian::big, std::endian::little})
            if (readUnit(first, marked) == byteOrderMark) {
                order = marked;
                bytes = bytes.subspan(width);
                break;
            }
    }
    std::u16string text;
    text.reserve(bytes.size() / 2);
    for (; !bytes.empty(); bytes = bytes.subspan(width)) {
        const char32_t unit = readUnit(bytes.first(width), order);
        if (width == 2) {
            text.push_back(static_cast<char16_t>(unit));
            continue;
        }
        if (unit > lastCharacter || isSurrogate(unit)) return std::nullopt;
        append(text, unit);
    }
    return text;
}

void appendUnit(EncodedCharacter& encoded, char32_t unit, std::size_t width, std::endian order) {
    for (std::size_t index = 0; index < width; ++index) {
        const std::size_t shift = 8 * (order == std::endian::big ? width - 1 - index : index);
        encoded.bytes[encoded.count++] = static_cast<std::uint8_t>(unit >> shift);
    }
}

EncodedCharacter encodeUTF8(char32_t character) {
    EncodedCharacter encoded;
    if (isSurrogate(character)) return encoded;
    if (character < 0x80) {
        appendUnit(encoded, character, 1, std::endian::native);
        return encoded;
    }
    const int followers = character >= 0x10000 ? 3 : character >= 0x800 ? 2 : 1;
    const char32_t lead = (0xFF << (7 - followers)) & 0xFF;
    appendUnit(encoded, lead | (character >> (6 * followers)), 1, std::endian::native);
    for (int follower = followers - 1; follower >= 0; --follower)
        appendUnit(encoded, 0x80 | ((character >> (6 * follower)) & 0x3F), 1, std::endian::native);
    return encoded;
}

EncodedCharacter encodeSingleByte(char32_t character, CFStringEncoding encoding) {
    EncodedCharacter encoded;
    if (character < 0x80 || (encoding == kCFStringEncodingISOLatin1 && character < 0x100)) {
        appendUnit(encoded, character, 1, std::endian::native);
    } else if (encoding == kCFStringEncodingMacRoman ||
               encoding == kCFStringEncodingWindowsLatin1) {
        const auto& upperHalf = upperHalfOf(encoding);
        const auto found = std::ranges::find(upperHalf, character);
        if (found != upperHalf.end())
            appendUnit(encoded, 0x80 + static_cast<char32_t>(found - upperHalf.begin()), 1,
                       std::endian::native);
    }
    return encoded;
}

} // namespace

bool isBuiltInEncoding(CFStringEncoding encoding) { return familyOf(encoding) != Family::None; }

std::optional<std::u16string> decodeText(std::span<const std::uint8_t> bytes,
                                         CFStringEncoding encoding, bool skipByteOrderMark) {
    const std::endian order = byteOrderOf(encoding);
    switch (familyOf(encoding)) {
    case Family::SingleByte:
        return decodeSingleBytes(bytes, encoding);
    case Family::UTF8: {
        constexpr std::array<std::uint8_t, 3> mark{0xEF, 0xBB, 0xBF};
        if (skipByteOrderMark && bytes.size() >= mark.size() &&
            std::ranges::equal(bytes.first(mark.size()), mark))
            bytes = bytes.subspan(mark.size());
        return decodeUTF8(bytes);
    }
    case Family::UTF16:
        return decodeUnits(bytes, 2, order, skipByteOrderMark);
    case Family::UTF32:
        return decodeUnits(bytes, 4, order, skipByteOrderMark);
    case Family::None:
        break;
    }
    return std::nullopt;
}

EncodedCharacter encodeCharacter(char32_t character, CFStringEncoding encoding) {
    EncodedCharacter encoded;
    const std::endian order = byteOrderOf(encoding);
    switch (familyOf(encoding)) {
    case Family::SingleByte:
        return encodeSingleByte(character, encoding);
    case Family::UTF8:
        return encodeUTF8(character);
    case Family::UTF16: {
        std::u16string units;
        append(units, character);
        for (const char16_t unit : units)
            appendUnit(encoded, unit, 2, order);
        break;
    }
    case Family::UTF32:
        if (!isSurrogate(character)) appendUnit(encoded, character, 4, order);
        break;
    case Family::None:
        break;
    }
    return encoded;
}

ReadCharacter readCharacter(std::u16string_view text) {
    const char32_t first = text[0];
    if (first >= 0xD800 && first <= 0xDBFF && text.size() > 1) {
        const char32_t second = text[1];
        if (second >= 0xDC00 && second <= 0xDFFF)
            return {0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00), 2};
    }
    return {first, 1};
}

bool hasUnpairedSurrogate(std::u16string_view text) {
    while (!text.empty()) {
        const ReadCharacter read = readCharacter(text);
        if (isSurrogate(read.character)) return true;
        text.remove_prefix(read.units);
    }
    return false;
}

} // namespace cocoa
