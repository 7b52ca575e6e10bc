#pragma once

/// The host's strings: counted references to REALstringStruct records. The empty string is null.

#include "sdk/types.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace host {

/// Owns one reference to a host string, or is the empty string.
class StringRef {
public:
    StringRef() = default;
    /// A new string of UTF-8 text.
    explicit StringRef(std::string_view utf8);
    StringRef(std::string_view bytes, std::uint32_t encoding);
    StringRef(const StringRef& other);
    StringRef(StringRef&& other) noexcept
        : string_(std::exchange(other.string_, nullptr)) {}
    StringRef& operator=(StringRef other) noexcept {
        std::swap(string_, other.string_);
        return *this;
    }
    ~StringRef();

    /// Takes over the caller's reference.
    static StringRef adopt(REALstringStruct* string);
    /// Adds a reference.
    static StringRef retain(REALstringStruct* string);

    REALstringStruct* get() const { return string_; }
    /// Hands the reference to the caller.
    REALstringStruct* release() { return std::exchange(string_, nullptr); }

    bool empty() const { return string_ == nullptr; }
    /// The bytes in the string's own encoding; valid while the string lives.
    std::string_view bytes() const;
    std::uint32_t encoding() const;
    /// The text as UTF-8. Bytes of no known encoding are read as MacRoman when they are no UTF-8.
    std::string utf8() const;

private:
    REALstringStruct* string_ = nullptr;
};

/// The bytes of a host string; empty for null and for one that is dead.
std::string_view bytesOf(const REALstringStruct* string);

/// Stands for bytes that are no character.
inline constexpr char32_t replacementCharacter = 0xFFFD;
/// The code point that these bytes, one character of UTF-8, stand for.
char32_t codePoint(std::string_view character);
void appendUTF8(std::string& text, char32_t character);

char32_t lowerCase(char32_t character);
char32_t upperCase(char32_t character);
/// Equal for texts that the language holds equal, which ignores case.
std::string foldedCase(std::string_view utf8);

/// Text in another encoding; nothing when either encoding is unknown or the text has no such form.
std::optional<std::string> convertText(std::string_view bytes, std::uint32_t from,
                                       std::uint32_t to);

} // namespace host
