#pragma once

/// The types of text layout. No text is laid out on this system, so that no object of them exists.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CTFont* CTFontRef;
typedef const struct __CTFontCollection* CTFontCollectionRef;
typedef const struct __CTFrame* CTFrameRef;
typedef const struct __CTFramesetter* CTFramesetterRef;
typedef const struct __CTGlyphInfo* CTGlyphInfoRef;
typedef const struct __CTLine* CTLineRef;
typedef const struct __CTParagraphStyle* CTParagraphStyleRef;
typedef const struct __CTRun* CTRunRef;
typedef const struct __CTRunDelegate* CTRunDelegateRef;
typedef const struct __CTTypesetter* CTTypesetterRef;

CF_EXPORT CFTypeID CTFontGetTypeID(void);
CF_EXPORT CFTypeID CTFontCollectionGetTypeID(void);
CF_EXPORT CFTypeID CTFrameGetTypeID(void);
CF_EXPORT CFTypeID CTFramesetterGetTypeID(void);
CF_EXPORT CFTypeID CTGlyphInfoGetTypeID(void);
CF_EXPORT CFTypeID CTLineGetTypeID(void);
CF_EXPORT CFTypeID CTParagraphStyleGetTypeID(void);
CF_EXPORT CFTypeID CTRunGetTypeID(void);
CF_EXPORT CFTypeID CTRunDelegateGetTypeID(void);
CF_EXPORT CFTypeID CTTypesetterGetTypeID(void);

CF_EXTERN_C_END
