#pragma once

/// The text of URLs: percent escapes and parts. All text is bytes; a URL itself is ASCII.

#include <optional>
#include <string>
#include <string_view>

namespace cocoa {

/// Whether the text holds only what may stand in a URL, with two hexadecimal digits after each "%"
/// and no second "#".
bool isURLText(std::string_view text);

/// Escapes what may not stand literally in one component of a URL's path.
std::string escapePathComponent(std::string_view component);

/// The same for a whole path, whose slashes stay.
std::string escapePath(std::string_view path);

/// The bytes behind the escapes. Nothing when an escape is malformed or stands for a NUL.
std::optional<std::string> unescape(std::string_view text);

/// A URL cut at its path: "http://host", "/path/of/it" and "?query#fragment".
struct URLParts {
    std::string_view beforePath;
    std::string_view path;
    std::string_view afterPath;
};

URLParts splitURL(std::string_view url);

/// The last component of a path, which may end with a slash: "b" of "/a/b" and "/a/b/", "/" of "/".
std::string_view lastPathComponent(std::string_view path);

} // namespace cocoa
