#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <Foundation/Foundation.h>

#ifdef __cplusplus
#define APPKIT_EXTERN extern "C" __attribute__((visibility("default")))
#else
#define APPKIT_EXTERN extern __attribute__((visibility("default")))
#endif
