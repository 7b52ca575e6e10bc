#include "host/language/text.h"

#include "host/objects/runtime.h"

#include <algorithm>
#include <cwctype>
#include <locale.h>
#include <utility>

namespace host::language {
namespace {

constexpr char32_t replacement = 0xFFFD;

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

bool isASCII(std::string_view bytes) {
    return std::none_of(bytes.begin(), bytes.end(),
                        [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

/// The code point that these bytes, one character, stand for.
char32_t decode(std::string_view bytes) {
    if (bytes.empty()) return 0;
    const auto lead = static_cast<unsigned char>(bytes[0]);
    if (lead < 0x80) return lead;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (length == 1 || bytes.size() != length) return replacement;
    char32_t character = lead & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i)
        character = character << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3F);
    return character;
}

locale_t unicodeLocale() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

} // namespace

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

Characters::Characters(const StringRef& text)
    : kept_(text)
    , bytes_(kept_.bytes())
    , encoding_(kept_.encoding()) {
    if (encoding_ == REALtextEncodingUTF16) {
        converted_ = kept_.utf8();
        bytes_ = converted_;
        encoding_ = REALtextEncodingUTF8;
    }
    if (encoding_ != REALtextEncodingUTF8 || isASCII(bytes_)) return;
    for (std::size_t i = 0; i < bytes_.size(); ++i)
        if (i == 0 || !isContinuation(bytes_[i])) offsets_.push_back(static_cast<std::uint32_t>(i));
    offsets_.push_back(static_cast<std::uint32_t>(bytes_.size()));
}

std::string_view Characters::slice(std::size_t start, std::size_t length) const {
    const std::size_t size = count();
    start = std::min(start, size);
    const std::size_t end = start + std::min(length, size - start);
    return bytes_.substr(offset(start), offset(end) - offset(start));
}

StringRef Characters::part(std::size_t start, std::size_t length) const {
    if (start == 0 && length >= count() && converted_.empty()) return kept_;
    return makeText(slice(start, length), encoding_);
}

char32_t Characters::at(std::size_t index) const {
    const std::string_view character = slice(index, 1);
    if (encoding_ != REALtextEncodingUTF8)
        return character.empty() ? 0 : static_cast<unsigned char>(character[0]);
    return decode(character);
}

const std::u32string& Characters::folded() const {
    if (folded_.empty())
        for (std::size_t i = 0; i < count(); ++i)
            folded_ += lowerCase(at(i));
    return folded_;
}

std::size_t Characters::find(const Characters& wanted, std::size_t start) const {
    return folded().find(wanted.folded(), start);
}

StringRef makeText(std::string_view bytes, std::uint32_t encoding) {
    StringRef text(bytes, encoding);
    if (text.empty() && !bytes.empty())
        raise("OutOfMemoryException",
              "There is no memory for a String of " + std::to_string(bytes.size()) + " bytes");
    return text;
}

StringRef joinedText(const StringRef& left, const StringRef& right) {
    if (left.empty()) return right;
    if (right.empty()) return left;
    std::uint32_t encoding = left.encoding();
    if (encoding != right.encoding()) {
        const bool isBytes =
            encoding == REALtextEncodingNone || right.encoding() == REALtextEncodingNone;
        if (!isBytes) return makeText(left.utf8() + right.utf8());
        encoding = REALtextEncodingNone;
    }
    std::string bytes;
    bytes.reserve(left.bytes().size() + right.bytes().size());
    bytes.append(left.bytes()).append(right.bytes());
    return makeText(bytes, encoding);
}

namespace {

template <typename CharacterAt>
int compareCharacters(std::size_t leftCount, std::size_t rightCount, CharacterAt characterAt) {
    const std::size_t count = std::min(leftCount, rightCount);
    for (std::size_t i = 0; i < count; ++i) {
        const auto [left, right] = characterAt(i);
        if (left == right) continue;
        const char32_t foldedLeft = lowerCase(left);
        const char32_t foldedRight = lowerCase(right);
        if (foldedLeft != foldedRight) return foldedLeft < foldedRight ? -1 : 1;
    }
    if (leftCount == rightCount) return 0;
    return leftCount < rightCount ? -1 : 1;
}

} // namespace

int compareText(const StringRef& leftText, const StringRef& rightText) {
    const std::string_view a = leftText.bytes();
    const std::string_view b = rightText.bytes();
    const auto isPlain = [](const StringRef& text) {
        return text.encoding() != REALtextEncodingUTF16 && isASCII(text.bytes());
    };
    if (isPlain(leftText) && isPlain(rightText))
        return compareCharacters(a.size(), b.size(), [&](std::size_t i) {
            return std::pair(static_cast<char32_t>(a[i]), static_cast<char32_t>(b[i]));
        });
    const Characters left{StringRef(leftText.utf8())};
    const Characters right{StringRef(rightText.utf8())};
    return compareCharacters(left.count(), right.count(),
                             [&](std::size_t i) { return std::pair(left.at(i), right.at(i)); });
}

StringRef mapped(const StringRef& text, char32_t (*map)(char32_t)) {
    const Characters characters(text);
    std::string bytes;
    if (characters.encoding() != REALtextEncodingUTF8) {
        // Only ASCII letters are known in other encodings.
        for (const char byte : characters.bytes())
            bytes += static_cast<unsigned char>(byte) < 0x80
                         ? static_cast<char>(map(static_cast<unsigned char>(byte)))
                         : byte;
    } else {
        for (std::size_t i = 0; i < characters.count(); ++i) {
            const char32_t character = characters.at(i);
            if (character == replacement)
                bytes += characters.slice(i, 1);
            else
                appendUTF8(bytes, map(character));
        }
    }
    return makeText(bytes, characters.encoding());
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

} // namespace host::language
