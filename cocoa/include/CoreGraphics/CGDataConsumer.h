#pragma once

/// Where encoded bytes go. A consumer is held and passed on; no function here writes to one.

#include <CoreFoundation/CFData.h>
#include <CoreGraphics/CGBase.h>

typedef struct CGDataConsumer* CGDataConsumerRef;

/// Takes the bytes and answers how many it took.
typedef size_t (*CGDataConsumerPutBytesCallback)(void* info, const void* buffer, size_t count);
typedef void (*CGDataConsumerReleaseInfoCallback)(void* info);

typedef struct {
    CGDataConsumerPutBytesCallback putBytes;
    CGDataConsumerReleaseInfoCallback releaseConsumer; ///< null: nobody is told
} CGDataConsumerCallbacks;

CG_EXTERN CFTypeID CGDataConsumerGetTypeID(void);

/// Calls `releaseConsumer` with `info` when the consumer goes. Null without callbacks or without
/// one for the bytes.
CG_EXTERN CGDataConsumerRef CGDataConsumerCreate(void* info,
                                                 const CGDataConsumerCallbacks* callbacks);
/// Appends to the data, which it retains.
CG_EXTERN CGDataConsumerRef CGDataConsumerCreateWithCFData(CFMutableDataRef data);

CG_EXTERN CGDataConsumerRef CGDataConsumerRetain(CGDataConsumerRef consumer);
CG_EXTERN void CGDataConsumerRelease(CGDataConsumerRef consumer);
