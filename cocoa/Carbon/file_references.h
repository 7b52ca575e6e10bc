#pragma once

/// What the bytes of file references say.

#include <Carbon/Files.h>

#include <optional>
#include <string>

namespace cocoa {

/// The folder ID of an item that is no root folder, and the item of an ID. IDs of items that were
/// not asked about for long may be forgotten.
std::uint32_t nodeIDOf(const std::string& path);
std::optional<std::string> pathOfNode(std::uint32_t nodeID);

/// A reference to a path, which is absolute and has no links before its last component.
FSRef makeReference(const std::string& path);

/// The path; nothing for null and for bytes that are no reference. Whether there is such an item is
/// not looked at.
std::optional<std::string> pathOfReference(const FSRef* ref);

/// The item of a folder ID and a name, as an FSSpec has them.
FSSpec makeSpec(const std::string& path);
/// noErr, or why there is no such item.
OSErr pathOfSpec(const FSSpec& spec, std::string& path);

/// The result code for the present `errno` of a file call.
OSErr fileError();

} // namespace cocoa
