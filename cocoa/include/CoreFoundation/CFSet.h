#pragma once

/// Unordered collections of distinct objects. CFSetRef is NSSet*, CFMutableSetRef NSMutableSet*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFSet* CFSetRef;
typedef struct __CFSet* CFMutableSetRef;

CF_EXPORT CFTypeID CFSetGetTypeID(void);

CF_EXTERN_C_END
