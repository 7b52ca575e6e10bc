#pragma once

/// Time zones. CFTimeZoneRef is NSTimeZone*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFTimeZone* CFTimeZoneRef;

CF_EXPORT CFTypeID CFTimeZoneGetTypeID(void);

CF_EXTERN_C_END
