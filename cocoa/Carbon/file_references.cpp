#include "cocoa/Carbon/file_references.h"

#include "cocoa/Carbon/file_names.h"
#include "cocoa/Carbon/path_table.h"
#include "cocoa/CoreFoundation/text_encoding.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace cocoa {
namespace {

constexpr std::size_t rememberedPaths = 8192;
constexpr FSVolumeRefNum onlyVolume = -100;
constexpr std::size_t longestSpecName = 31;

PathTable& nodes() {
    static auto& table = *new PathTable(rememberedPaths);
    return table;
}

PathTable& longPaths() {
    static auto& table = *new PathTable(rememberedPaths);
    return table;
}

/// How an FSRef's bytes are used. The path stands in the reference itself where it fits; a length
/// of 0 means that `number` is one of `longPaths`.
struct ReferenceBytes {
    std::uint32_t mark = 0;
    std::uint32_t checksum = 0;
    std::uint32_t number = 0;
    std::uint8_t length = 0;
    char path[67] = {};

    static constexpr std::uint32_t expectedMark = 0x46535266;

    /// FNV-1a of all that follows the checksum.
    std::uint32_t computedChecksum() const {
        std::uint32_t hash = 2166136261U;
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(this);
        for (std::size_t at = offsetof(ReferenceBytes, number); at < sizeof *this; ++at)
            hash = (hash ^ bytes[at]) * 16777619U;
        return hash;
    }
};
static_assert(sizeof(ReferenceBytes) == sizeof(FSRef));

/// A name that fits an FSSpec and ends with the item's ID, before the extension.
std::string shortenedName(std::u16string_view name, std::uint32_t nodeID) {
    std::string readable;
    while (!name.empty()) {
        const ReadCharacter read = readCharacter(name);
        readable += macRomanName(name.substr(0, read.units)).value_or("_");
        name.remove_prefix(read.units);
    }
    char mark[16];
    std::snprintf(mark, sizeof mark, "#%X", nodeID);
    const std::size_t dot = readable.rfind('.');
    std::string extension = dot == std::string::npos || dot == 0 ? "" : readable.substr(dot);
    if (extension.size() > 5) extension.clear();
    const std::string tail = mark + extension;
    return readable.substr(
               0, std::min(readable.size() - extension.size(), longestSpecName - tail.size())) +
           tail;
}

/// The item whose ID a shortened name ends with.
std::optional<std::string> itemOfShortenedName(std::string_view name, const std::string& folder) {
    const std::size_t mark = name.rfind('#');
    if (mark == std::string_view::npos) return std::nullopt;
    std::uint32_t nodeID = 0;
    const auto parsed =
        std::from_chars(name.data() + mark + 1, name.data() + name.size(), nodeID, 16);
    if (parsed.ec != std::errc()) return std::nullopt;
    const auto path = nodes().pathOf(nodeID);
    return path && splitPath(*path).folder == folder ? path : std::nullopt;
}

} // namespace

std::uint32_t nodeIDOf(const std::string& path) {
    return path == "/" ? fsRtDirID : nodes().numberOf(path);
}

std::optional<std::string> pathOfNode(std::uint32_t nodeID) {
    return nodeID == fsRtDirID ? "/" : nodes().pathOf(nodeID);
}

FSRef makeReference(const std::string& path) {
    ReferenceBytes bytes;
    bytes.mark = ReferenceBytes::expectedMark;
    if (path.size() <= sizeof bytes.path) {
        bytes.length = static_cast<std::uint8_t>(path.size());
        std::ranges::copy(path, bytes.path);
    } else {
        bytes.number = longPaths().numberOf(path);
    }
    bytes.checksum = bytes.computedChecksum();
    FSRef ref;
    std::memcpy(&ref, &bytes, sizeof ref);
    return ref;
}

std::optional<std::string> pathOfReference(const FSRef* ref) {
    if (!ref) return std::nullopt;
    ReferenceBytes bytes;
    std::memcpy(&bytes, ref, sizeof bytes);
    if (bytes.mark != ReferenceBytes::expectedMark || bytes.checksum != bytes.computedChecksum())
        return std::nullopt;
    if (!bytes.length) return longPaths().pathOf(bytes.number);
    if (bytes.length > sizeof bytes.path || bytes.path[0] != '/') return std::nullopt;
    return std::string(bytes.path, bytes.length);
}

FSSpec makeSpec(const std::string& path) {
    const SplitPath split = splitPath(path);
    const std::u16string unicodeName = carbonName(split.leaf);
    const auto plainName = macRomanName(unicodeName);
    FSSpec spec{};
    spec.vRefNum = onlyVolume;
    std::string name;
    if (path == "/") {
        spec.parID = fsRtParID;
        name = path;
    } else {
        spec.parID = static_cast<SInt32>(nodeIDOf(split.folder));
        name = plainName && plainName->size() <= longestSpecName
                   ? *plainName
                   : shortenedName(unicodeName, nodeIDOf(path));
    }
    spec.name[0] = static_cast<unsigned char>(name.size());
    std::memcpy(spec.name + 1, name.data(), name.size());
    return spec;
}

OSErr pathOfSpec(const FSSpec& spec, std::string& path) {
    const std::size_t length = spec.name[0];
    if (length >= sizeof spec.name) return bdNamErr;
    if (spec.vRefNum != 0 && spec.vRefNum != onlyVolume) return fnfErr;
    if (spec.parID == fsRtParID) {
        path = "/";
        return noErr;
    }
    const auto folder =
        pathOfNode(spec.parID == 0 ? fsRtDirID : static_cast<std::uint32_t>(spec.parID));
    if (!folder) return dirNFErr;
    const std::string_view name(reinterpret_cast<const char*>(spec.name) + 1, length);
    auto found = name.empty() ? folder : findItem(*folder, fromMacRoman(name));
    if (!found) found = itemOfShortenedName(name, *folder);
    if (!found) return fnfErr;
    path = *found;
    return noErr;
}

OSErr fileError() {
    switch (errno) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
        return fnfErr;
    case ENAMETOOLONG:
        return pathTooLongErr;
    case EACCES:
    case EPERM:
        return afpAccessDenied;
    case ENOMEM:
        return memFullErr;
    default:
        return ioErr;
    }
}

} // namespace cocoa
