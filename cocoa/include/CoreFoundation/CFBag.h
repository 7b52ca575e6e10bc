#pragma once

/// Unordered collections in which a value can stand more than once.
///
/// Values are pointers; the callbacks say what they are. Null callbacks make them plain pointers,
/// compared by identity and not retained.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFBag* CFBagRef;
typedef struct __CFBag* CFMutableBagRef;

typedef const void* (*CFBagRetainCallBack)(CFAllocatorRef allocator, const void* value);
typedef void (*CFBagReleaseCallBack)(CFAllocatorRef allocator, const void* value);
typedef CFStringRef (*CFBagCopyDescriptionCallBack)(const void* value);
typedef Boolean (*CFBagEqualCallBack)(const void* first, const void* second);
typedef CFHashCode (*CFBagHashCallBack)(const void* value);

typedef struct {
    CFIndex version;
    CFBagRetainCallBack retain;
    CFBagReleaseCallBack release;
    CFBagCopyDescriptionCallBack copyDescription;
    CFBagEqualCallBack equal;
    CFBagHashCallBack hash;
} CFBagCallBacks;

/// For values that are objects.
CF_EXPORT const CFBagCallBacks kCFTypeBagCallBacks;

typedef void (*CFBagApplierFunction)(const void* value, void* context);

CF_EXPORT CFTypeID CFBagGetTypeID(void);

/// Null when the count is negative, or `values` is null with a count above 0.
CF_EXPORT CFBagRef CFBagCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                               const CFBagCallBacks* callBacks);
/// `capacity` is a hint; 0 is no hint.
CF_EXPORT CFMutableBagRef CFBagCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                             const CFBagCallBacks* callBacks);

/// Of all values, each as often as it stands in the bag.
CF_EXPORT CFIndex CFBagGetCount(CFBagRef bag);
CF_EXPORT CFIndex CFBagGetCountOfValue(CFBagRef bag, const void* value);
CF_EXPORT Boolean CFBagContainsValue(CFBagRef bag, const void* value);
/// Writes as many values as the count, those that are equal one after the other. Borrowed.
CF_EXPORT void CFBagGetValues(CFBagRef bag, const void** values);
CF_EXPORT void CFBagApplyFunction(CFBagRef bag, CFBagApplierFunction function, void* context);

// A bag that was made by CFBagCreate raises NSInternalInconsistencyException.
CF_EXPORT void CFBagAddValue(CFMutableBagRef bag, const void* value);
/// Once, where it stands more than once. Does nothing when the value is not there.
CF_EXPORT void CFBagRemoveValue(CFMutableBagRef bag, const void* value);
CF_EXPORT void CFBagRemoveAllValues(CFMutableBagRef bag);

CF_EXTERN_C_END
