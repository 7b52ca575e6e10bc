#include "plugin/picture/unlock_pixels.h"

#include "plugin/entry/references.h"

namespace {

using Unlock = void (*)(PixMapHandle pixMap);

CFReference<CFURLRef> frameworks_folder() {
    FSRef folder = {};
    if (FSFindFolder(kSystemDomain, kFrameworksFolderType, true, &folder) != noErr) return {};
    return CFReference<CFURLRef>::adopt(CFURLCreateFromFSRef(nullptr, &folder));
}

CFReference<CFBundleRef> load_framework() {
    const auto folder = frameworks_folder();
    if (!folder) return {};
    const auto url = CFReference<CFURLRef>::adopt(CFURLCreateCopyAppendingPathComponent(
        nullptr, folder.get(), CFSTR("ApplicationServices.framework"), true));
    if (!url) return {};
    auto bundle = CFReference<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
    return bundle && CFBundleLoadExecutable(bundle.get()) ? std::move(bundle)
                                                          : CFReference<CFBundleRef>();
}

} // namespace

void UnlockPixels(PixMapHandle pixMap) {
    // Both are kept as long as the process lives, once they are there.
    static CFBundleRef framework = nullptr;
    static Unlock unlock = nullptr;
    if (!framework) framework = load_framework().leak();
    if (framework && !unlock)
        unlock = reinterpret_cast<Unlock>(
            CFBundleGetFunctionPointerForName(framework, CFSTR("UnlockPixels")));
    if (unlock) unlock(pixMap);
}
