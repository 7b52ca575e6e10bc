#include "cocoa/Carbon/file_names.h"
#include "cocoa/Carbon/file_references.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

using namespace cocoa;

namespace {

/// The path without links, except for a link at its end when it is not to be followed.
OSErr canonicalPath(const std::string& path, bool followLeaf, std::string& canonical) {
    const SplitPath split = splitPath(path);
    const bool named = !split.leaf.empty() && split.leaf != "." && split.leaf != "..";
    char resolved[PATH_MAX];
    if (followLeaf || !named) {
        if (!realpath(path.c_str(), resolved)) return fileError();
        canonical = resolved;
        return noErr;
    }
    if (!realpath(split.folder.c_str(), resolved)) return fileError();
    canonical = joinPath(resolved, split.leaf);
    struct stat status;
    return lstat(canonical.c_str(), &status) == 0 ? OSErr(noErr) : fileError();
}

/// The path and status of an item that exists.
OSErr findReference(const FSRef* ref, std::string& path, struct stat& status) {
    const auto found = pathOfReference(ref);
    if (!found) return errFSBadFSRef;
    path = *found;
    return lstat(path.c_str(), &status) == 0 ? OSErr(noErr) : fileError();
}

} // namespace

OSStatus FSPathMakeRef(const UInt8* path, FSRef* ref, Boolean* isDirectory) {
    return FSPathMakeRefWithOptions(path, kFSPathMakeRefDefaultOptions, ref, isDirectory);
}

OSStatus FSPathMakeRefWithOptions(const UInt8* path, OptionBits options, FSRef* ref,
                                  Boolean* isDirectory) {
    if (!path || !path[0] || !ref) return paramErr;
    std::string named = reinterpret_cast<const char*>(path);
    while (named.size() > 1 && named.back() == '/')
        named.pop_back();
    std::string canonical;
    const bool follow = !(options & kFSPathMakeRefDoNotFollowLeafSymlink);
    if (const OSErr error = canonicalPath(named, follow, canonical)) return error;
    struct stat status;
    if (lstat(canonical.c_str(), &status) != 0) return fileError();
    *ref = makeReference(canonical);
    if (isDirectory) *isDirectory = S_ISDIR(status.st_mode);
    return noErr;
}

OSStatus FSRefMakePath(const FSRef* ref, UInt8* path, UInt32 maximumPathSize) {
    if (!path) return paramErr;
    std::string found;
    struct stat status;
    if (const OSErr error = findReference(ref, found, status)) return error;
    if (found.size() >= maximumPathSize) return pathTooLongErr;
    std::memcpy(path, found.c_str(), found.size() + 1);
    return noErr;
}

OSErr FSMakeFSRefUnicode(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                         UInt32, FSRef* newRef) {
    if (!name || !newRef) return paramErr;
    if (nameLength == 0) return bdNamErr;
    if (nameLength > 255) return errFSNameTooLong;
    std::string folder;
    struct stat status;
    if (const OSErr error = findReference(parentRef, folder, status)) return error;
    if (!S_ISDIR(status.st_mode)) return dirNFErr;
    const auto found = findItem(folder, {reinterpret_cast<const char16_t*>(name), nameLength});
    if (!found) return fnfErr;
    *newRef = makeReference(*found);
    return noErr;
}

OSErr FSCompareFSRefs(const FSRef* first, const FSRef* second) {
    std::string path;
    struct stat firstStatus;
    struct stat secondStatus;
    if (const OSErr error = findReference(first, path, firstStatus)) return error;
    if (const OSErr error = findReference(second, path, secondStatus)) return error;
    const bool same =
        firstStatus.st_dev == secondStatus.st_dev && firstStatus.st_ino == secondStatus.st_ino;
    return same ? noErr : errFSRefsDifferent;
}

OSErr FSpMakeFSRef(const FSSpec* source, FSRef* newRef) {
    if (!source || !newRef) return paramErr;
    std::string path;
    if (const OSErr error = pathOfSpec(*source, path)) return error;
    struct stat status;
    if (lstat(path.c_str(), &status) != 0) return fileError();
    *newRef = makeReference(path);
    return noErr;
}
