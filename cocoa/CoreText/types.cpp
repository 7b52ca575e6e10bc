#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreText/CoreText.h>

CFTypeID CTFontGetTypeID(void) { return cocoa::typeOfCTFont; }

CFTypeID CTFontCollectionGetTypeID(void) { return cocoa::typeOfCTFontCollection; }

CFTypeID CTFrameGetTypeID(void) { return cocoa::typeOfCTFrame; }

CFTypeID CTFramesetterGetTypeID(void) { return cocoa::typeOfCTFramesetter; }

CFTypeID CTGlyphInfoGetTypeID(void) { return cocoa::typeOfCTGlyphInfo; }

CFTypeID CTLineGetTypeID(void) { return cocoa::typeOfCTLine; }

CFTypeID CTParagraphStyleGetTypeID(void) { return cocoa::typeOfCTParagraphStyle; }

CFTypeID CTRunGetTypeID(void) { return cocoa::typeOfCTRun; }

CFTypeID CTRunDelegateGetTypeID(void) { return cocoa::typeOfCTRunDelegate; }

CFTypeID CTTypesetterGetTypeID(void) { return cocoa::typeOfCTTypesetter; }
