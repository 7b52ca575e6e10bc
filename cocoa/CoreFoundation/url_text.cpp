#include "cocoa/CoreFoundation/url_text.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace cocoa {
namespace {

bool isAlphanumeric(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

int hexadecimalDigit(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    if (character >= 'a' && character <= 'f') return character - 'a' + 10;
    if (character >= 'A' && character <= 'F') return character - 'A' + 10;
    return -1;
}

/// The byte of the escape that the text starts with; -1 when it is malformed.
int escapedByte(std::string_view text) {
    if (text.size() < 3 || text[0] != '%') return -1;
    const int high = hexadecimalDigit(text[1]);
    const int low = hexadecimalDigit(text[2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

bool isOneOf(char character, std::string_view characters) {
    return characters.find(character) != std::string_view::npos;
}

std::string escape(std::string_view text, std::string_view literal) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        if (isAlphanumeric(character) || isOneOf(character, literal)) {
            escaped.push_back(character);
            continue;
        }
        const auto byte = static_cast<std::uint8_t>(character);
        escaped += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return escaped;
}

} // namespace

bool isURLText(std::string_view text) {
    bool inFragment = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (character == '%') {
            if (escapedByte(text.substr(at)) < 0) return false;
        } else if (character == '#') {
            if (std::exchange(inFragment, true)) return false;
        } else if (!isAlphanumeric(character) && !isOneOf(character, "-_.!~*'();/?:@&=+$,[]")) {
            return false;
        }
    }
    return true;
}

std::string escapePathComponent(std::string_view component) {
    return escape(component, "-_.!~*'():@&=+$,");
}

std::string escapePath(std::string_view path) { return escape(path, "/-_.!~*'():@&=+$,"); }

std::optional<std::string> unescape(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (; !text.empty(); text.remove_prefix(1)) {
        if (text[0] != '%') {
            bytes.push_back(text[0]);
            continue;
        }
        const int byte = escapedByte(text);
        if (byte <= 0) return std::nullopt;
        bytes.push_back(static_cast<char>(byte));
        text.remove_prefix(2);
    }
    return bytes;
}

URLParts splitURL(std::string_view url) {
    std::size_t start = 0;
    const std::size_t colon = url.find_first_of(":/?#");
    if (colon != std::string_view::npos && url[colon] == ':') start = colon + 1;
    if (url.substr(start, 2) == "//")
        start = std::min(url.find_first_of("/?#", start + 2), url.size());
    const std::size_t end = std::min(url.find_first_of("?#", start), url.size());
    return {url.substr(0, start), url.substr(start, end - start), url.substr(end)};
}

std::string_view lastPathComponent(std::string_view path) {
    if (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
    if (path == "/") return path;
    return path.substr(path.rfind('/') + 1);
}

} // namespace cocoa
