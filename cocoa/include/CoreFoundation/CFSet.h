#pragma once

/// Unordered collections of distinct objects. CFSetRef is NSSet*, CFMutableSetRef NSMutableSet*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFSet* CFSetRef;
typedef struct __CFSet* CFMutableSetRef;

CF_EXPORT CFTypeID CFSetGetTypeID(void);

CF_EXPORT CFIndex CFSetGetCount(CFSetRef set);
CF_EXPORT Boolean CFSetContainsValue(CFSetRef set, const void* value);
/// The equal object in the set, borrowed; null when there is none.
CF_EXPORT const void* CFSetGetValue(CFSetRef set, const void* value);
/// Writes as many values as the count. Borrowed.
CF_EXPORT void CFSetGetValues(CFSetRef set, const void** values);
/// Does nothing when an equal object is there already.
CF_EXPORT void CFSetAddValue(CFMutableSetRef set, const void* value);
CF_EXPORT void CFSetRemoveValue(CFMutableSetRef set, const void* value);

CF_EXTERN_C_END
