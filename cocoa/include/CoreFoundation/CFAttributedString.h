#pragma once

/// Text whose characters carry attributes. CFAttributedStringRef is NSAttributedString*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFAttributedString* CFAttributedStringRef;
typedef struct __CFAttributedString* CFMutableAttributedStringRef;

CF_EXPORT CFTypeID CFAttributedStringGetTypeID(void);

CF_EXTERN_C_END
