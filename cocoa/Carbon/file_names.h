#pragma once

/// The names of files as Carbon writes them, and the files that such names mean.

#include <CoreFoundation/CFBase.h>

#include <optional>
#include <string>
#include <string_view>

namespace cocoa {

/// The Carbon name of a file: normalisation form D, "/" and ":" exchanged. A byte that is not UTF-8
/// is written as "%" and its hexadecimal digits.
std::u16string carbonName(std::string_view fileName);

/// The path of an item of a folder by its Carbon name, in any normalisation form; nothing when the
/// folder has no such item.
std::optional<std::string> findItem(const std::string& folder, std::u16string_view name);

/// A Carbon name in Mac Roman; nothing when it has characters that are not in there.
std::optional<std::string> macRomanName(std::u16string_view name);
std::u16string fromMacRoman(std::string_view name);

/// A folder and an item's name in it.
struct SplitPath {
    std::string folder;
    std::string leaf; ///< empty for "/"
};
SplitPath splitPath(const std::string& path);
std::string joinPath(const std::string& folder, std::string_view leaf);

} // namespace cocoa
