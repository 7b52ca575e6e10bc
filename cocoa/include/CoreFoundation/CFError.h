#pragma once

/// What went wrong: a domain, a code and further information. CFErrorRef is NSError*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef struct __CFError* CFErrorRef;

CF_EXPORT CFTypeID CFErrorGetTypeID(void);

CF_EXTERN_C_END
