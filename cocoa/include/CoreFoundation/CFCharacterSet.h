#pragma once

/// Sets of characters. CFCharacterSetRef is NSCharacterSet*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFCharacterSet* CFCharacterSetRef;
typedef struct __CFCharacterSet* CFMutableCharacterSetRef;

CF_EXPORT CFTypeID CFCharacterSetGetTypeID(void);

CF_EXTERN_C_END
