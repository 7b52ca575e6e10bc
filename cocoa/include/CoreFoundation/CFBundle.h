#pragma once

/// Bundles of code and resources. Programs on this system have none, so that no object of the type
/// exists; NSBundle is a type of its own.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef struct __CFBundle* CFBundleRef;

CF_EXPORT CFTypeID CFBundleGetTypeID(void);

CF_EXTERN_C_END
