#pragma once

/// Keyed collections. CFDictionaryRef is NSDictionary*, CFMutableDictionaryRef
/// NSMutableDictionary*.
///
/// Keys and values are pointers; the callbacks say what they are. Null callbacks make them plain
/// pointers, compared by identity and not retained: such a dictionary must not be sent messages
/// that message its keys or values.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const void* (*CFDictionaryRetainCallBack)(CFAllocatorRef allocator, const void* value);
typedef void (*CFDictionaryReleaseCallBack)(CFAllocatorRef allocator, const void* value);
typedef CFStringRef (*CFDictionaryCopyDescriptionCallBack)(const void* value);
typedef Boolean (*CFDictionaryEqualCallBack)(const void* first, const void* second);
typedef CFHashCode (*CFDictionaryHashCallBack)(const void* value);

typedef struct {
    CFIndex version;
    CFDictionaryRetainCallBack retain;
    CFDictionaryReleaseCallBack release;
    CFDictionaryCopyDescriptionCallBack copyDescription;
    CFDictionaryEqualCallBack equal;
    CFDictionaryHashCallBack hash;
} CFDictionaryKeyCallBacks;

typedef struct {
    CFIndex version;
    CFDictionaryRetainCallBack retain;
    CFDictionaryReleaseCallBack release;
    CFDictionaryCopyDescriptionCallBack copyDescription;
    CFDictionaryEqualCallBack equal;
} CFDictionaryValueCallBacks;

/// For keys and values that are objects; the second keeps copies of its keys, which are strings.
CF_EXPORT const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
CF_EXPORT const CFDictionaryKeyCallBacks kCFCopyStringDictionaryKeyCallBacks;
CF_EXPORT const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;

typedef void (*CFDictionaryApplierFunction)(const void* key, const void* value, void* context);

CF_EXPORT CFTypeID CFDictionaryGetTypeID(void);

/// Where a key occurs twice, its first value is kept. Null when the count is negative, or `keys` or
/// `values` is null with a count above 0.
CF_EXPORT CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys,
                                             const void** values, CFIndex count,
                                             const CFDictionaryKeyCallBacks* keyCallBacks,
                                             const CFDictionaryValueCallBacks* valueCallBacks);
CF_EXPORT CFDictionaryRef CFDictionaryCreateCopy(CFAllocatorRef allocator,
                                                 CFDictionaryRef dictionary);
/// `capacity` is a hint; 0 is no hint.
CF_EXPORT CFMutableDictionaryRef CFDictionaryCreateMutable(
    CFAllocatorRef allocator, CFIndex capacity, const CFDictionaryKeyCallBacks* keyCallBacks,
    const CFDictionaryValueCallBacks* valueCallBacks);
CF_EXPORT CFMutableDictionaryRef CFDictionaryCreateMutableCopy(CFAllocatorRef allocator,
                                                               CFIndex capacity,
                                                               CFDictionaryRef dictionary);

CF_EXPORT CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
CF_EXPORT Boolean CFDictionaryContainsKey(CFDictionaryRef dictionary, const void* key);
CF_EXPORT Boolean CFDictionaryContainsValue(CFDictionaryRef dictionary, const void* value);
/// The value is borrowed; null when there is none.
CF_EXPORT const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);
/// `value` may be null, and is left alone when there is no such key.
CF_EXPORT Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void* key,
                                                const void** value);
/// Each array may be null; otherwise it has room for every entry. Both are in the same order.
CF_EXPORT void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys,
                                            const void** values);
/// The function must not change the dictionary.
CF_EXPORT void CFDictionaryApplyFunction(CFDictionaryRef dictionary,
                                         CFDictionaryApplierFunction function, void* context);

/// Adds only where the key is absent.
CF_EXPORT void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void* key,
                                    const void* value);
CF_EXPORT void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void* key,
                                    const void* value);
/// Replaces only where the key is present.
CF_EXPORT void CFDictionaryReplaceValue(CFMutableDictionaryRef dictionary, const void* key,
                                        const void* value);
CF_EXPORT void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void* key);
CF_EXPORT void CFDictionaryRemoveAllValues(CFMutableDictionaryRef dictionary);

CF_EXTERN_C_END
