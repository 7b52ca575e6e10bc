#import <Foundation/Foundation.h>

#include <CoreFoundation/CFString.h>

#include "cocoa/CoreFoundation/text_encoding.h"

namespace {

struct EncodingPair {
    CFStringEncoding coreFoundation;
    unsigned long foundation;
};

constexpr EncodingPair encodings[] = {
    {kCFStringEncodingMacRoman, NSMacOSRomanStringEncoding},
    {kCFStringEncodingWindowsLatin1, NSWindowsCP1252StringEncoding},
    {kCFStringEncodingWindowsLatin2, NSWindowsCP1250StringEncoding},
    {kCFStringEncodingWindowsCyrillic, NSWindowsCP1251StringEncoding},
    {kCFStringEncodingWindowsGreek, NSWindowsCP1253StringEncoding},
    {kCFStringEncodingWindowsLatin5, NSWindowsCP1254StringEncoding},
    {kCFStringEncodingISOLatin1, NSISOLatin1StringEncoding},
    {kCFStringEncodingISOLatin2, NSISOLatin2StringEncoding},
    {kCFStringEncodingISOLatinCyrillic, NSISOCyrillicStringEncoding},
    {kCFStringEncodingISOLatinGreek, NSISOGreekStringEncoding},
    {kCFStringEncodingISOLatin9, NSISOLatin9StringEncoding},
    {kCFStringEncodingNextStepLatin, NSNEXTSTEPStringEncoding},
    {kCFStringEncodingASCII, NSASCIIStringEncoding},
    {kCFStringEncodingNonLossyASCII, NSNonLossyASCIIStringEncoding},
    {kCFStringEncodingShiftJIS, NSShiftJISStringEncoding},
    {kCFStringEncodingEUC_JP, NSJapaneseEUCStringEncoding},
    {kCFStringEncodingKOI8_R, NSKOI8RStringEncoding},
    {kCFStringEncodingUTF8, NSUTF8StringEncoding},
    {kCFStringEncodingUTF16, NSUTF16StringEncoding},
    {kCFStringEncodingUTF16BE, NSUTF16BigEndianStringEncoding},
    {kCFStringEncodingUTF16LE, NSUTF16LittleEndianStringEncoding},
    {kCFStringEncodingUTF32, NSUTF32StringEncoding},
    {kCFStringEncodingUTF32BE, NSUTF32BigEndianStringEncoding},
    {kCFStringEncodingUTF32LE, NSUTF32LittleEndianStringEncoding},
};

} // namespace

Boolean CFStringIsEncodingAvailable(CFStringEncoding encoding) {
    return cocoa::isBuiltInEncoding(encoding) ||
           CFStringConvertEncodingToNSStringEncoding(encoding) != 0;
}

CFStringEncoding CFStringGetSystemEncoding(void) { return kCFStringEncodingMacRoman; }

unsigned long CFStringConvertEncodingToNSStringEncoding(CFStringEncoding encoding) {
    for (const EncodingPair& pair : encodings)
        if (pair.coreFoundation == encoding) return pair.foundation;
    return 0;
}

CFStringEncoding CFStringConvertNSStringEncodingToEncoding(unsigned long encoding) {
    for (const EncodingPair& pair : encodings)
        if (pair.foundation == encoding) return pair.coreFoundation;
    return kCFStringEncodingInvalidId;
}
