#include "host/objects/folder_item.h"

#include "host/objects/runtime.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits.h>
#include <optional>
#include <string>

namespace host::exports {

namespace {

namespace fs = std::filesystem;

FolderItem* itemFrom(REALfolderItemStruct* item) {
    return arguments::isObject(1, item, "FolderItem") ? stateOf<FolderItem>(item) : nullptr;
}

bool makeRef(const fs::path& path, FSRef* ref) {
    return FSPathMakeRef(reinterpret_cast<const UInt8*>(path.c_str()), ref, nullptr) == noErr;
}

std::optional<fs::path> pathOf(const FSRef* ref) {
    std::array<UInt8, PATH_MAX> path{};
    if (FSRefMakePath(ref, path.data(), path.size()) != noErr) return std::nullopt;
    return fs::path(reinterpret_cast<const char*>(path.data()));
}

/// In file-system names of this kind the roles of the colon and the slash are swapped.
std::string swappedSeparators(std::string name) {
    for (char& c : name)
        c = c == '/' ? ':' : c == ':' ? '/' : c;
    return name;
}

bool fillName(const std::string& fileName, HFSUniStr255* name) {
    const auto units =
        convertText(swappedSeparators(fileName), REALtextEncodingUTF8, REALtextEncodingUTF16);
    if (!units || units->size() > sizeof name->unicode) return false;
    *name = {};
    name->length = static_cast<UInt16>(units->size() / sizeof(UniChar));
    std::memcpy(name->unicode, units->data(), units->size());
    return true;
}

std::optional<std::string> fileNameFrom(const HFSUniStr255* name) {
    const std::size_t count = std::min<std::size_t>(name->length, std::size(name->unicode));
    if (count == 0) return std::nullopt;
    const auto text =
        convertText({reinterpret_cast<const char*>(name->unicode), count * sizeof(UniChar)},
                    REALtextEncodingUTF16, REALtextEncodingUTF8);
    if (!text || text->find('\0') != std::string::npos) return std::nullopt;
    return swappedSeparators(*text);
}

REALfolderItemStruct* itemAt(const fs::path& path) {
    return static_cast<REALfolderItemStruct*>(newFolderItem(path).release());
}

} // namespace

std::uint8_t fsRefFromFolderItem(REALfolderItemStruct* item, FSRef* ref, HFSUniStr255* name) {
    const FolderItem* const held = itemFrom(item);
    if (!held || !arguments::isGiven(2, ref)) return 0;
    if (!name) return makeRef(held->path, ref);
    return fillName(held->path.filename().string(), name) && makeRef(held->path.parent_path(), ref);
}

std::uint8_t fsSpecFromFolderItem(REALfolderItemStruct* item, FSSpec* spec) {
    const FolderItem* const held = itemFrom(item);
    FSRef ref{};
    if (!held || !arguments::isGiven(2, spec) || !makeRef(held->path, &ref)) return 0;
    return FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, spec, nullptr) == noErr;
}

REALfolderItemStruct* folderItemFromParentFSRef(const FSRef* parent, const HFSUniStr255* name) {
    if (!arguments::isGiven(1, parent) || !arguments::isGiven(2, name)) return nullptr;
    const auto folder = pathOf(parent);
    const auto fileName = fileNameFrom(name);
    if (!folder || !fileName) return nullptr;
    // An existing item may have its name in another normalisation form than the one asked for.
    FSRef existing{};
    if (FSMakeFSRefUnicode(parent, name->length, name->unicode, 0, &existing) == noErr)
        if (const auto path = pathOf(&existing)) return itemAt(*path);
    return itemAt(*folder / *fileName);
}

REALfolderItemStruct* folderItemFromFSSpec(const FSSpec* spec) {
    FSRef ref{};
    if (!arguments::isGiven(1, spec) || FSpMakeFSRef(spec, &ref) != noErr) return nullptr;
    const auto path = pathOf(&ref);
    return path ? itemAt(*path) : nullptr;
}

} // namespace host::exports
