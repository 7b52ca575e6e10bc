#include "cocoa/Carbon/file_names.h"
#include "cocoa/Carbon/file_references.h"

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

using namespace cocoa;

namespace {

UTCDateTime carbonDate(const struct statx_timestamp& time) {
    constexpr std::int64_t from1904To1970 = 2082844800;
    const std::int64_t seconds = time.tv_sec + from1904To1970;
    if (seconds < 0) return {};
    return {static_cast<UInt16>(seconds >> 32), static_cast<UInt32>(seconds),
            static_cast<UInt16>(std::uint64_t{time.tv_nsec} * 65536 / 1000000000)};
}

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

UInt32 countItems(const std::string& folder) {
    const std::unique_ptr<DIR, CloseFolder> listing(opendir(folder.c_str()));
    UInt32 count = 0;
    while (const dirent* const entry = listing ? readdir(listing.get()) : nullptr)
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) ++count;
    return count;
}

/// Whether all of these bits are asked for.
class Wanted {
public:
    explicit Wanted(FSCatalogInfoBitmap bits)
        : bits_(bits) {}
    bool operator()(FSCatalogInfoBitmap bit) const { return (bits_ & bit) != 0; }

private:
    FSCatalogInfoBitmap bits_;
};

void describe(const std::string& path, const struct statx& status, Wanted wanted,
              FSCatalogInfo& info) {
    const bool isRoot = path == "/";
    const bool isFolder = S_ISDIR(status.stx_mode);
    if (wanted(kFSCatInfoTextEncoding)) info.textEncodingHint = 0;
    if (wanted(kFSCatInfoNodeFlags)) info.nodeFlags = isFolder ? kFSNodeIsDirectoryMask : 0;
    if (wanted(kFSCatInfoVolume)) info.volume = makeSpec("/").vRefNum;
    if (wanted(kFSCatInfoParentDirID))
        info.parentDirID = isRoot ? fsRtParID : nodeIDOf(splitPath(path).folder);
    if (wanted(kFSCatInfoNodeID)) info.nodeID = nodeIDOf(path);
    if (wanted(kFSCatInfoCreateDate))
        info.createDate =
            carbonDate(status.stx_mask & STATX_BTIME ? status.stx_btime : status.stx_mtime);
    if (wanted(kFSCatInfoContentMod)) info.contentModDate = carbonDate(status.stx_mtime);
    if (wanted(kFSCatInfoAttrMod)) info.attributeModDate = carbonDate(status.stx_ctime);
    if (wanted(kFSCatInfoAccessDate)) info.accessDate = carbonDate(status.stx_atime);
    if (wanted(kFSCatInfoBackupDate)) info.backupDate = {};
    if (wanted(kFSCatInfoPermissions)) {
        info.permissions = {};
        info.permissions.userID = status.stx_uid;
        info.permissions.groupID = status.stx_gid;
        info.permissions.mode = status.stx_mode;
    }
    if (wanted(kFSCatInfoFinderInfo)) std::ranges::fill(info.finderInfo, 0);
    if (wanted(kFSCatInfoFinderXInfo)) std::ranges::fill(info.extFinderInfo, 0);
    if (wanted(kFSCatInfoValence)) info.valence = isFolder ? countItems(path) : 0;
    if (wanted(kFSCatInfoDataSizes)) {
        info.dataLogicalSize = isFolder ? 0 : status.stx_size;
        info.dataPhysicalSize = isFolder ? 0 : std::uint64_t{status.stx_blocks} * 512;
    }
    if (wanted(kFSCatInfoRsrcSizes)) {
        info.rsrcLogicalSize = 0;
        info.rsrcPhysicalSize = 0;
    }
}

} // namespace

OSErr FSGetCatalogInfo(const FSRef* ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo* catalogInfo,
                       HFSUniStr255* outName, FSSpec* fsSpec, FSRef* parentRef) {
    const auto path = pathOfReference(ref);
    if (!path) return errFSBadFSRef;
    struct statx status;
    if (statx(AT_FDCWD, path->c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME,
              &status) != 0)
        return fileError();

    const bool isRoot = *path == "/";
    if (outName) {
        // The root folder is named as its volume is.
        const std::u16string name = isRoot ? u"/" : carbonName(splitPath(*path).leaf);
        if (name.size() > std::size(outName->unicode)) return errFSNameTooLong;
        outName->length = static_cast<UInt16>(name.size());
        std::ranges::copy(name, outName->unicode);
    }
    if (catalogInfo) describe(*path, status, Wanted(whichInfo), *catalogInfo);
    if (fsSpec) *fsSpec = makeSpec(*path);
    if (parentRef) *parentRef = isRoot ? FSRef{} : makeReference(splitPath(*path).folder);
    return noErr;
}
