#pragma once

/// Where encoded bytes go.

#include <CoreFoundation/CFData.h>
#include <CoreFoundation/CFURL.h>
#include <CoreGraphics/CGBase.h>

typedef struct CGDataConsumer* CGDataConsumerRef;

CG_EXTERN CFTypeID CGDataConsumerGetTypeID(void);
