#pragma once

/// Drawings that are kept to be drawn again.

#include <CoreGraphics/CGContext.h>

typedef struct CGLayer* CGLayerRef;

CG_EXTERN CFTypeID CGLayerGetTypeID(void);
