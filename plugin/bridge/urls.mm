#include "plugin/bridge/urls.h"

#include "plugin/bridge/strings.h"

#include <Carbon/Carbon.h>

#include <algorithm>

namespace {

/// The node that a volume's root directory has.
constexpr UInt32 rootDirectoryNode = 2;
constexpr CFIndex longestName = 255;

CFReference<CFURLRef> url_of(const FSRef& reference) {
    return CFReference<CFURLRef>::adopt(CFURLCreateFromFSRef(nullptr, &reference));
}

/// The name in Unicode form D, or as it is when it cannot be copied.
CFReference<CFStringRef> decomposed(CFReference<CFStringRef> name) {
    CFMutableStringRef const copy =
        name ? CFStringCreateMutableCopy(nullptr, 0, name.get()) : nullptr;
    if (!copy) return name;
    CFStringNormalize(copy, kCFStringNormalizationFormD);
    return CFReference<CFStringRef>::adopt(copy);
}

CFReference<CFURLRef> url_of_new_item(const FSRef& parent, const HFSUniStr255& name) {
    const CFReference<CFURLRef> folder = url_of(parent);
    const CFReference<CFStringRef> leaf = decomposed(CFReference<CFStringRef>::adopt(
        CFStringCreateWithCharacters(nullptr, name.unicode, name.length)));
    if (!folder || !leaf) return {};
    return CFReference<CFURLRef>::adopt(
        CFURLCreateCopyAppendingPathComponent(nullptr, folder.get(), leaf.get(), false));
}

CFReference<CFURLRef> url_of_item(REALfolderItemStruct* item) {
    FSRef reference = {};
    if (REALFSRefFromFolderItem(item, &reference, nullptr))
        if (CFReference<CFURLRef> url = url_of(reference)) return url;

    HFSUniStr255 name = {};
    if (REALFSRefFromFolderItem(item, &reference, &name) && name.length > 0)
        return url_of_new_item(reference, name);

    FSSpec fileSpec = {};
    if (REALFSSpecFromFolderItem(item, &fileSpec) && FSpMakeFSRef(&fileSpec, &reference) == noErr)
        return url_of(reference);
    return {};
}

REALfolderItemStruct* item_of_existing(const FSRef& reference) {
    FSCatalogInfo information = {};
    FSRef parent = {};
    if (FSGetCatalogInfo(&reference, kFSCatInfoNodeID, &information, nullptr, nullptr, &parent) ==
        noErr) {
        if (information.nodeID == rootDirectoryNode) parent = FSRef{};
        HFSUniStr255 name = {};
        if (FSGetCatalogInfo(&reference, kFSCatInfoNone, nullptr, &name, nullptr, nullptr) ==
                noErr &&
            FSGetCatalogInfo(&parent, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr) == noErr)
            return REALFolderItemFromParentFSRef(&parent, &name);
    }
    FSSpec fileSpec = {};
    if (FSGetCatalogInfo(&reference, kFSCatInfoNone, nullptr, nullptr, &fileSpec, nullptr) != noErr)
        return nullptr;
    return REALFolderItemFromFSSpec(&fileSpec);
}

REALfolderItemStruct* item_of_new(CFURLRef url) {
    const auto folder =
        CFReference<CFURLRef>::adopt(CFURLCreateCopyDeletingLastPathComponent(nullptr, url));
    FSRef parent = {};
    if (!folder || !CFURLGetFSRef(folder.get(), &parent)) return nullptr;
    const CFReference<CFStringRef> leaf =
        decomposed(CFReference<CFStringRef>::adopt(CFURLCopyLastPathComponent(url)));
    if (!leaf) return nullptr;
    HFSUniStr255 name = {};
    const CFIndex length = std::clamp<CFIndex>(CFStringGetLength(leaf.get()), 0, longestName);
    name.length = static_cast<UInt16>(length);
    CFStringGetCharacters(leaf.get(), CFRangeMake(0, length), name.unicode);
    return REALFolderItemFromParentFSRef(&parent, &name);
}

} // namespace

NSURL* NewNSURLfile(REALfolderItemStruct* item) {
    return item ? [(NSURL*)url_of_item(item).leak() autorelease] : nil;
}

NSURL* NewNSURL(REALstringStruct* string) {
    const auto text = CFReference<CFStringRef>::adopt(RBString2CFString(string));
    if (!text) return nil;
    return [(NSURL*)CFURLCreateWithString(nullptr, text.get(), nullptr) autorelease];
}

REALfolderItemStruct* NSURLRBFile(NSURL* url) {
    if (!url) return nullptr;
    CFURLRef const file = (CFURLRef)url;
    FSRef reference = {};
    return CFURLGetFSRef(file, &reference) ? item_of_existing(reference) : item_of_new(file);
}
