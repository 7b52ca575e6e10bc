#include "host/objects/text.h"

#include "host/objects/runtime.h"

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <cwctype>
#include <limits>
#include <locale.h>

namespace host {

namespace {

bool isASCII(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Encodings whose first 128 characters are those of ASCII, one byte each.
bool extendsASCII(std::uint32_t encoding) {
    return encoding == REALtextEncodingASCII || encoding == REALtextEncodingUTF8 ||
           encoding == REALtextEncodingMacRoman;
}

locale_t unicodeLocale() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

} // namespace

StringRef::StringRef(std::string_view utf8)
    : StringRef(utf8, REALtextEncodingUTF8) {}

StringRef::StringRef(std::string_view bytes, std::uint32_t encoding) {
    if (Runtime::isRunning()) string_ = Runtime::current().registry().makeString(bytes, encoding);
}

StringRef::StringRef(const StringRef& other)
    : string_(other.string_) {
    if (string_ && Runtime::isRunning()) Runtime::current().registry().retain(string_);
}

StringRef::~StringRef() {
    if (string_ && Runtime::isRunning()) Runtime::current().registry().release(string_);
}

StringRef StringRef::adopt(REALstringStruct* string) {
    StringRef reference;
    reference.string_ = string;
    return reference;
}

StringRef StringRef::retain(REALstringStruct* string) {
    if (string && Runtime::isRunning()) Runtime::current().registry().retain(string);
    return adopt(string);
}

std::string_view StringRef::bytes() const { return bytesOf(string_); }

std::uint32_t StringRef::encoding() const {
    return string_ ? string_->encoding : static_cast<std::uint32_t>(REALtextEncodingUTF8);
}

std::string StringRef::utf8() const {
    const std::string stored(bytes());
    const auto read = [&](std::uint32_t as) {
        return convertText(stored, as, REALtextEncodingUTF8).value_or(stored);
    };
    if (encoding() != REALtextEncodingNone) return read(encoding());
    const bool isUTF8 =
        convertText(stored, REALtextEncodingUTF8, REALtextEncodingUTF16).has_value();
    return isUTF8 ? stored : read(REALtextEncodingMacRoman);
}

std::string_view bytesOf(const REALstringStruct* string) {
    // A string that was released too often has lost its buffer.
    if (!string || !string->buffer) return {};
    return {string->buffer + 1, static_cast<std::size_t>(string->length)};
}

std::optional<std::string> convertText(std::string_view bytes, std::uint32_t from,
                                       std::uint32_t to) {
    if (from == to || bytes.empty() || (extendsASCII(from) && extendsASCII(to) && isASCII(bytes)))
        return std::string(bytes);
    if (bytes.size() > std::numeric_limits<std::int32_t>::max() / 8) return std::nullopt;
    const CFStringRef text =
        CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(bytes.data()),
                                static_cast<CFIndex>(bytes.size()), from, false);
    if (!text) return std::nullopt;
    const CFRange all = CFRangeMake(0, CFStringGetLength(text));
    CFIndex size = 0;
    std::optional<std::string> converted;
    if (CFStringGetBytes(text, all, to, 0, false, nullptr, 0, &size) == all.length) {
        converted.emplace(static_cast<std::size_t>(size), '\0');
        CFStringGetBytes(text, all, to, 0, false, reinterpret_cast<UInt8*>(converted->data()), size,
                         &size);
    }
    CFRelease(text);
    return converted;
}

char32_t codePoint(std::string_view bytes) {
    if (bytes.empty()) return 0;
    const auto lead = static_cast<unsigned char>(bytes[0]);
    if (lead < 0x80) return lead;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (length == 1 || bytes.size() != length) return replacementCharacter;
    char32_t character = lead & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i)
        character = character << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3F);
    return character;
}

void appendUTF8(std::string& text, char32_t character) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | character >> 18);
        put(0x80 | (character >> 12 & 0x3F));
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    }
}

char32_t lowerCase(char32_t character) {
    if (character < 0x80 || !unicodeLocale())
        return character >= U'A' && character <= U'Z' ? character + 32 : character;
    return static_cast<char32_t>(towlower_l(static_cast<wint_t>(character), unicodeLocale()));
}

char32_t upperCase(char32_t character) {
    if (character < 0x80 || !unicodeLocale())
        return character >= U'a' && character <= U'z' ? character - 32 : character;
    return static_cast<char32_t>(towupper_l(static_cast<wint_t>(character), unicodeLocale()));
}

std::string foldedCase(std::string_view utf8) {
    std::string folded;
    folded.reserve(utf8.size());
    for (std::size_t start = 0; start < utf8.size();) {
        std::size_t end = start + 1;
        while (end < utf8.size() && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80)
            ++end;
        const std::string_view bytes = utf8.substr(start, end - start);
        const char32_t character = codePoint(bytes);
        if (character == replacementCharacter)
            folded += bytes;
        else
            appendUTF8(folded, lowerCase(character));
        start = end;
    }
    return folded;
}

} // namespace host
