#pragma once

/// FolderItem: a path in the file system, whether or not anything is there.

#include "host/objects/object.h"

#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// The names of what a folder holds, in their order. They are kept, so that going through a large
/// folder by index does not read all of it again for each item.
class FolderContents {
public:
    /// As they are now; none for what is no readable folder. Good until the next call.
    const std::vector<std::string>& names(const std::filesystem::path& folder);

private:
    using Time = std::filesystem::file_time_type;

    std::vector<std::string> names_;
    Time changed_{};         ///< when the folder had last changed
    bool isSettled_ = false; ///< whether a later change would show in that time
};

struct FolderItem : State {
    std::filesystem::path path; ///< absolute, without a slash at its end
    FolderContents contents;
};

/// The item at the path, which may be relative to the working folder; empty for the working folder.
ObjectRef newFolderItem(const std::filesystem::path& path);

} // namespace host
