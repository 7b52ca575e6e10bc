#pragma once

/// Where images and profiles get their bytes.

#include <CoreFoundation/CFData.h>
#include <CoreFoundation/CFURL.h>
#include <CoreGraphics/CGBase.h>

typedef struct CGDataProvider* CGDataProviderRef;

typedef void (*CGDataProviderReleaseDataCallback)(void* info, const void* data, size_t size);

CG_EXTERN CFTypeID CGDataProviderGetTypeID(void);

/// Keeps the caller's memory, which is neither copied nor freed: `releaseData` (null: nobody) is
/// called with `info` when nothing needs the memory any more. Null, without a call, when `data` is
/// null and `size` is not 0.
CG_EXTERN CGDataProviderRef CGDataProviderCreateWithData(
    void* info, const void* data, size_t size, CGDataProviderReleaseDataCallback releaseData);
/// Retains the data. It must not change while the provider lives.
CG_EXTERN CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data);
/// Reads the file at once; null when that fails.
CG_EXTERN CGDataProviderRef CGDataProviderCreateWithURL(CFURLRef url);
CG_EXTERN CGDataProviderRef CGDataProviderCreateWithFilename(const char* filename);

CG_EXTERN CGDataProviderRef CGDataProviderRetain(CGDataProviderRef provider);
CG_EXTERN void CGDataProviderRelease(CGDataProviderRef provider);

/// All its bytes. The caller owns the data.
CG_EXTERN CFDataRef CGDataProviderCopyData(CGDataProviderRef provider);
