#pragma once

/// What every CoreGraphics header builds on. C, C++ and Objective-C.
///
/// All CoreGraphics objects are Core Foundation objects (and so Objective-C objects): CFRetain and
/// CFRelease work on them. Functions with Create or Copy in their names return an object that the
/// caller owns, or null; Get functions return what stays the other object's. Every function takes a
/// null object and then does nothing or answers 0. Enumerations have a fixed size, so that a number
/// that is none of their values can be passed and is refused.

#include <CoreFoundation/CFBase.h>

#include <stddef.h>

#ifdef __cplusplus
#define CG_EXTERN extern "C" __attribute__((visibility("default")))
#else
#define CG_EXTERN extern __attribute__((visibility("default")))
#endif
#define CG_INLINE static inline

#ifndef CGFLOAT_IS_DOUBLE
#if defined(__LP64__) && __LP64__
#define CGFLOAT_IS_DOUBLE 1
#else
#define CGFLOAT_IS_DOUBLE 0
#endif
#endif
