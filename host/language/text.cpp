#include "host/language/text.h"

#include "host/objects/runtime.h"

#include <algorithm>
#include <utility>

namespace host::language {
namespace {

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

bool isASCII(std::string_view bytes) {
    return std::none_of(bytes.begin(), bytes.end(),
                        [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

} // namespace

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
    return codePoint(character);
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
            if (character == replacementCharacter)
                bytes += characters.slice(i, 1);
            else
                appendUTF8(bytes, map(character));
        }
    }
    return makeText(bytes, characters.encoding());
}

} // namespace host::language
