#include "companion/wrapping.h"

#include "companion/exception_bridge.h"

namespace base_part {

REALobjectStruct* newWrapper(id object, const char* className) {
    if (!object) return nullptr;
    CFMutableDictionaryRef const instances = [NSException GetInstancesDictionaryZNT];
    const void* live = nullptr;
    if (CFDictionaryGetValueIfPresent(instances, object, &live)) {
        auto* const wrapper = static_cast<REALobjectStruct*>(const_cast<void*>(live));
        lockObject(wrapper);
        return wrapper;
    }
    REALobjectStruct* const wrapper = newInstance(className);
    if (!wrapper) return nullptr;
    *static_cast<id*>(REALfirstClassData(wrapper)) = [object retain];
    CFDictionarySetValue(instances, object, wrapper);
    return wrapper;
}

void destroyWrapper(REALobjectStruct* wrapper) {
    inFrame([&] {
        id& object = *static_cast<id*>(REALfirstClassData(wrapper));
        if (!object) return;
        // The entry may be another wrapper's, where the same object was given to both by hand.
        CFMutableDictionaryRef const instances = [NSException GetInstancesDictionaryZNT];
        if (CFDictionaryGetValue(instances, object) == wrapper)
            CFDictionaryRemoveValue(instances, object);
        [object release];
        object = nil;
    });
}

REALword handle(REALobjectStruct* object, REALword) {
    return reinterpret_cast<REALword>(wrappedBy<void>(object));
}

} // namespace base_part
