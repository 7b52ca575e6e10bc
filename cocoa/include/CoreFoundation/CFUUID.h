#pragma once

/// Universally unique identifiers: 16 bytes. Objects of the same bytes are equal.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFUUID* CFUUIDRef;

CF_EXPORT CFTypeID CFUUIDGetTypeID(void);

CF_EXTERN_C_END
