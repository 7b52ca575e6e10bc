#pragma once

/// The live wrappers of the whole family: from a Cocoa object, by identity, to the host object that
/// wraps it. Neither side is retained. Without the base part there is no dictionary, and then
/// nothing is found and nothing is kept.

#include "sdk/types.h"

#include <CoreFoundation/CoreFoundation.h>

/// Owned by the base part; null until CocoaInit has found it.
inline constinit CFMutableDictionaryRef instances = nullptr;

/// The wrapper of a Cocoa object, without a reference for the caller; null when there is none.
inline REALobjectStruct* find_instance(const void* cocoaObject) {
    if (!instances) return nullptr;
    return static_cast<REALobjectStruct*>(
        const_cast<void*>(CFDictionaryGetValue(instances, cocoaObject)));
}

inline void register_instance(const void* cocoaObject, REALobjectStruct* wrapper) {
    if (instances) CFDictionarySetValue(instances, cocoaObject, wrapper);
}

inline void unregister_instance(const void* cocoaObject) {
    if (instances) CFDictionaryRemoveValue(instances, cocoaObject);
}
