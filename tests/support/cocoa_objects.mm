#include "support/host.h"

#include <Cocoa/Cocoa.h>

@interface NSException (BasePart)
+ (CFMutableDictionaryRef)GetInstancesDictionaryZNT;
@end

namespace {

CFMutableDictionaryRef wrappers() {
    if (![NSException respondsToSelector:@selector(GetInstancesDictionaryZNT)]) return nullptr;
    return [NSException GetInstancesDictionaryZNT];
}

} // namespace

long Host::retainCount(const void* cocoaObject) {
    return static_cast<long>([(id)cocoaObject retainCount]);
}

REALobjectStruct* Host::wrapper(const void* cocoaObject) {
    const CFMutableDictionaryRef dictionary = wrappers();
    if (!dictionary) return nullptr;
    return static_cast<REALobjectStruct*>(
        const_cast<void*>(CFDictionaryGetValue(dictionary, cocoaObject)));
}

long Host::wrapperCount() {
    const CFMutableDictionaryRef dictionary = wrappers();
    return dictionary ? static_cast<long>(CFDictionaryGetCount(dictionary)) : 0;
}
