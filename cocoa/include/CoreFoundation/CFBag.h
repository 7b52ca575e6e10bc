#pragma once

/// Unordered collections in which a value can stand more than once.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFBag* CFBagRef;
typedef struct __CFBag* CFMutableBagRef;

CF_EXPORT CFTypeID CFBagGetTypeID(void);

CF_EXTERN_C_END
