#pragma once

/// FolderItem: a path in the file system, whether or not anything is there.

#include "host/objects/object.h"

#include <filesystem>

namespace host {

struct FolderItem : State {
    std::filesystem::path path; ///< absolute, without a slash at its end
};

/// The item at the path, which may be relative to the working folder; empty for the working folder.
ObjectRef newFolderItem(const std::filesystem::path& path);

} // namespace host
