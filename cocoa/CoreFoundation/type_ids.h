#pragma once

/// The Core Foundation types of all frameworks. An object answers its type to `-_cfTypeID`.

#include <CoreFoundation/CFBase.h>

namespace cocoa {

enum TypeID : CFTypeID {
    typeOfNothing = 0,
    typeOfNull,
    typeOfString,
    typeOfData,
    typeOfArray,
    typeOfDictionary,
    typeOfNumber,
    typeOfBoolean,
    typeOfDate,
    typeOfURL,
    typeOfCharacterSet,
    typeOfBundle,
    typeOfSet,
    typeOfBag,
    typeOfUUID,
    typeOfTimeZone,
    typeOfAttributedString,
    typeOfError,
    typeOfCGColorSpace,
    typeOfCGColor,
    typeOfCGImage,
    typeOfCGContext,
    typeOfCGDataProvider,
    typeOfCGDataConsumer,
    typeOfCGLayer,
    typeOfCGFont,
    typeOfCGPSConverter,
    typeOfCTFont,
    typeOfCTFontCollection,
    typeOfCTFrame,
    typeOfCTFramesetter,
    typeOfCTGlyphInfo,
    typeOfCTLine,
    typeOfCTParagraphStyle,
    typeOfCTRun,
    typeOfCTRunDelegate,
    typeOfCTTypesetter,
};

} // namespace cocoa

#ifdef __OBJC__
@protocol CoreFoundationTyped
- (CFTypeID)_cfTypeID;
@end
#endif
