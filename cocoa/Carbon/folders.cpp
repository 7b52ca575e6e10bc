#include <Carbon/Folders.h>

#include <cstdlib>

namespace {

const char* frameworksFolder() {
    const char* const chosen = std::getenv("COCOA_FRAMEWORKS_FOLDER");
    return chosen && *chosen ? chosen : "/System/Library/Frameworks";
}

} // namespace

OSErr FSFindFolder(FSVolumeRefNum volume, OSType folderType, Boolean, FSRef* foundRef) {
    if (!foundRef) return paramErr;
    if (volume != kSystemDomain || folderType != kFrameworksFolderType) return fnfErr;
    const auto* const path = reinterpret_cast<const UInt8*>(frameworksFolder());
    Boolean isDirectory = false;
    if (FSPathMakeRef(path, foundRef, &isDirectory) != noErr || !isDirectory) return fnfErr;
    return noErr;
}
