#pragma once

/// Converters from PostScript to PDF. No object of the type exists on this system.

#include <CoreGraphics/CGBase.h>

typedef struct CGPSConverter* CGPSConverterRef;

CG_EXTERN CFTypeID CGPSConverterGetTypeID(void);
