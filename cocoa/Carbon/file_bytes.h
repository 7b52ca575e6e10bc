#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cocoa {

/// The content of a regular file. Nothing for any other kind, which might never end or never begin,
/// for a file that cannot be read, and for one of more than `most` bytes.
std::optional<std::vector<std::uint8_t>> readFile(const std::string& path, std::size_t most);

} // namespace cocoa
