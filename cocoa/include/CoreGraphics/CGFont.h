#pragma once

/// Fonts. No text is drawn on this system, so that no object of the type exists.

#include <CoreGraphics/CGBase.h>

typedef struct CGFont* CGFontRef;

CG_EXTERN CFTypeID CGFontGetTypeID(void);
