#pragma once

/// Bundles of code: folders such as "ApplicationServices.framework" with an executable in them,
/// here a shared library of the bundle's name without the ending. NSBundle is a type of its own.

#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFURL.h>

CF_EXTERN_C_BEGIN

typedef struct __CFBundle* CFBundleRef;

CF_EXPORT CFTypeID CFBundleGetTypeID(void);

/// The bundle of a folder; null for anything else.
CF_EXPORT CFBundleRef CFBundleCreate(CFAllocatorRef allocator, CFURLRef bundleURL);

CF_EXPORT CFURLRef CFBundleCopyBundleURL(CFBundleRef bundle);

/// Loads the executable, which stays loaded as long as the process lives. False when there is none,
/// or when it cannot be loaded.
CF_EXPORT Boolean CFBundleLoadExecutable(CFBundleRef bundle);

/// A function of the executable, which is loaded if it is not; null when it has none of the name.
CF_EXPORT void* CFBundleGetFunctionPointerForName(CFBundleRef bundle, CFStringRef functionName);

CF_EXTERN_C_END
