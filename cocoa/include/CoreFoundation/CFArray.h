#pragma once

/// Ordered collections. CFArrayRef is NSArray*, CFMutableArrayRef NSMutableArray*.
///
/// Values are pointers; the callbacks say what they are. Null callbacks make them plain pointers,
/// compared by identity and not retained: such an array must not be sent messages that message its
/// elements.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const void* (*CFArrayRetainCallBack)(CFAllocatorRef allocator, const void* value);
typedef void (*CFArrayReleaseCallBack)(CFAllocatorRef allocator, const void* value);
typedef CFStringRef (*CFArrayCopyDescriptionCallBack)(const void* value);
typedef Boolean (*CFArrayEqualCallBack)(const void* first, const void* second);

typedef struct {
    CFIndex version;
    CFArrayRetainCallBack retain;
    CFArrayReleaseCallBack release;
    CFArrayCopyDescriptionCallBack copyDescription;
    CFArrayEqualCallBack equal;
} CFArrayCallBacks;

/// For values that are objects.
CF_EXPORT const CFArrayCallBacks kCFTypeArrayCallBacks;

typedef void (*CFArrayApplierFunction)(const void* value, void* context);

CF_EXPORT CFTypeID CFArrayGetTypeID(void);

/// Null when the count is negative, or `values` is null with a count above 0.
CF_EXPORT CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                                   const CFArrayCallBacks* callBacks);
CF_EXPORT CFArrayRef CFArrayCreateCopy(CFAllocatorRef allocator, CFArrayRef array);
/// `capacity` is a hint; 0 is no hint.
CF_EXPORT CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                                 const CFArrayCallBacks* callBacks);
CF_EXPORT CFMutableArrayRef CFArrayCreateMutableCopy(CFAllocatorRef allocator, CFIndex capacity,
                                                     CFArrayRef array);

CF_EXPORT CFIndex CFArrayGetCount(CFArrayRef array);
/// The value is borrowed. Raises NSRangeException outside of the array.
CF_EXPORT const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
/// The range must lie in the array, here and below.
CF_EXPORT void CFArrayGetValues(CFArrayRef array, CFRange range, const void** values);
CF_EXPORT Boolean CFArrayContainsValue(CFArrayRef array, CFRange range, const void* value);
/// kCFNotFound when the value is not in the range.
CF_EXPORT CFIndex CFArrayGetFirstIndexOfValue(CFArrayRef array, CFRange range, const void* value);
CF_EXPORT void CFArrayApplyFunction(CFArrayRef array, CFRange range,
                                    CFArrayApplierFunction function, void* context);

CF_EXPORT void CFArrayAppendValue(CFMutableArrayRef array, const void* value);
CF_EXPORT void CFArrayInsertValueAtIndex(CFMutableArrayRef array, CFIndex index, const void* value);
/// An index equal to the count appends.
CF_EXPORT void CFArraySetValueAtIndex(CFMutableArrayRef array, CFIndex index, const void* value);
CF_EXPORT void CFArrayRemoveValueAtIndex(CFMutableArrayRef array, CFIndex index);
CF_EXPORT void CFArrayRemoveAllValues(CFMutableArrayRef array);

CF_EXTERN_C_END
