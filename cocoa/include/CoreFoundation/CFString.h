#pragma once

/// Strings of UTF-16 units. CFStringRef is NSString*, CFMutableStringRef NSMutableString*.
///
/// Functions with Create or Copy in their names return an object that the caller owns, or null.

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFData.h>

CF_EXTERN_C_BEGIN

typedef UInt32 CFStringEncoding;

enum {
    kCFStringEncodingInvalidId = 0xFFFFFFFFU,
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingISOLatin1 = 0x0201,
    kCFStringEncodingISOLatin2 = 0x0202,
    kCFStringEncodingISOLatinCyrillic = 0x0205,
    kCFStringEncodingISOLatinGreek = 0x0207,
    kCFStringEncodingISOLatin9 = 0x020F,
    kCFStringEncodingWindowsLatin2 = 0x0501,
    kCFStringEncodingWindowsCyrillic = 0x0502,
    kCFStringEncodingWindowsGreek = 0x0503,
    kCFStringEncodingWindowsLatin5 = 0x0504,
    kCFStringEncodingNextStepLatin = 0x0B01,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingShiftJIS = 0x0A01,
    kCFStringEncodingKOI8_R = 0x0A02,
    kCFStringEncodingEUC_JP = 0x0920,
    kCFStringEncodingUnicode = 0x0100,
    kCFStringEncodingUTF16 = 0x0100,
    kCFStringEncodingUTF16BE = 0x10000100,
    kCFStringEncodingUTF16LE = 0x14000100,
    kCFStringEncodingUTF8 = 0x08000100,
    kCFStringEncodingUTF32 = 0x0C000100,
    kCFStringEncodingUTF32BE = 0x18000100,
    kCFStringEncodingUTF32LE = 0x1C000100,
    kCFStringEncodingNonLossyASCII = 0x0BFF
};

typedef CFIndex CFStringNormalizationForm;
enum {
    kCFStringNormalizationFormD = 0,
    kCFStringNormalizationFormKD,
    kCFStringNormalizationFormC,
    kCFStringNormalizationFormKC
};

enum {
    kCFCompareCaseInsensitive = 1,
    kCFCompareBackwards = 4,
    kCFCompareAnchored = 8,
    kCFCompareNumerically = 64
};
typedef CFOptionFlags CFStringCompareFlags;

#ifdef __OBJC__
#define CFSTR(text) ((CFStringRef) @text)
#else
/// A constant string of ASCII text; one object for each text, which lives as long as the process.
#define CFSTR(text) CFStringMakeConstant("" text "")
#endif
CF_EXPORT CFStringRef CFStringMakeConstant(const char* text);

CF_EXPORT CFTypeID CFStringGetTypeID(void);

/// Null when the text is null, not valid in the encoding, or the encoding is unknown.
CF_EXPORT CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                                CFStringEncoding encoding);
/// A first byte with the length, then as many bytes of text.
CF_EXPORT CFStringRef CFStringCreateWithPascalString(CFAllocatorRef allocator, ConstStringPtr text,
                                                     CFStringEncoding encoding);
/// Null when `characters` is null with a count above 0, or the count is negative.
CF_EXPORT CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator,
                                                   const UniChar* characters, CFIndex count);
/// With `isExternalRepresentation`, a byte order mark at the start is read and not kept.
CF_EXPORT CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes,
                                              CFIndex count, CFStringEncoding encoding,
                                              Boolean isExternalRepresentation);
CF_EXPORT CFStringRef CFStringCreateCopy(CFAllocatorRef allocator, CFStringRef string);
CF_EXPORT CFStringRef CFStringCreateWithSubstring(CFAllocatorRef allocator, CFStringRef string,
                                                  CFRange range);
CF_EXPORT CFStringRef CFStringCreateWithFormat(CFAllocatorRef allocator, CFTypeRef formatOptions,
                                               CFStringRef format, ...);
CF_EXPORT CFStringRef CFStringCreateFromExternalRepresentation(CFAllocatorRef allocator,
                                                               CFDataRef data,
                                                               CFStringEncoding encoding);
/// A `lossByte` of 0 makes characters that the encoding lacks a failure.
CF_EXPORT CFDataRef CFStringCreateExternalRepresentation(CFAllocatorRef allocator,
                                                         CFStringRef string,
                                                         CFStringEncoding encoding, UInt8 lossByte);
/// `maximumLength` 0 sets no limit, and no other value is a limit either.
CF_EXPORT CFMutableStringRef CFStringCreateMutable(CFAllocatorRef allocator, CFIndex maximumLength);
CF_EXPORT CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator,
                                                       CFIndex maximumLength, CFStringRef string);

/// In UTF-16 units.
CF_EXPORT CFIndex CFStringGetLength(CFStringRef string);
/// Raises NSRangeException outside of the string.
CF_EXPORT UniChar CFStringGetCharacterAtIndex(CFStringRef string, CFIndex index);
/// Copies the units of the range, which must lie in the string.
CF_EXPORT void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer);
/// The text with its terminator. False when it does not fit or the encoding lacks a character; the
/// buffer, if it has room for it, then starts with a NUL. Never writes past `bufferSize`.
CF_EXPORT Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize,
                                     CFStringEncoding encoding);
CF_EXPORT Boolean CFStringGetPascalString(CFStringRef string, StringPtr buffer, CFIndex bufferSize,
                                          CFStringEncoding encoding);
/// Direct access to the text where the string happens to offer it: always null here, which every
/// caller has to be ready for.
CF_EXPORT const char* CFStringGetCStringPtr(CFStringRef string, CFStringEncoding encoding);
CF_EXPORT const UniChar* CFStringGetCharactersPtr(CFStringRef string);
/// Converts as many whole characters of the range as fit and returns how many units it converted.
/// A null `buffer` only measures. `usedLength`, in bytes, may be null.
CF_EXPORT CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                                   UInt8 lossByte, Boolean isExternalRepresentation, UInt8* buffer,
                                   CFIndex bufferSize, CFIndex* usedLength);
/// The most bytes, without a terminator, that so many units can take; kCFNotFound when that does
/// not fit a CFIndex.
CF_EXPORT CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
/// Room for the path with its terminator.
CF_EXPORT CFIndex CFStringGetMaximumSizeOfFileSystemRepresentation(CFStringRef string);
CF_EXPORT Boolean CFStringGetFileSystemRepresentation(CFStringRef string, char* buffer,
                                                      CFIndex bufferSize);
CF_EXPORT SInt32 CFStringGetIntValue(CFStringRef string);
CF_EXPORT double CFStringGetDoubleValue(CFStringRef string);

CF_EXPORT CFComparisonResult CFStringCompare(CFStringRef first, CFStringRef second,
                                             CFStringCompareFlags options);
CF_EXPORT Boolean CFStringHasPrefix(CFStringRef string, CFStringRef prefix);
CF_EXPORT Boolean CFStringHasSuffix(CFStringRef string, CFStringRef suffix);
/// {kCFNotFound, 0} when there is none.
CF_EXPORT CFRange CFStringFind(CFStringRef string, CFStringRef wanted,
                               CFStringCompareFlags options);

CF_EXPORT void CFStringAppend(CFMutableStringRef string, CFStringRef appended);
CF_EXPORT void CFStringAppendCharacters(CFMutableStringRef string, const UniChar* characters,
                                        CFIndex count);
/// Appends nothing when the text is not valid in the encoding.
CF_EXPORT void CFStringAppendCString(CFMutableStringRef string, const char* text,
                                     CFStringEncoding encoding);
CF_EXPORT void CFStringInsert(CFMutableStringRef string, CFIndex index, CFStringRef inserted);
CF_EXPORT void CFStringDelete(CFMutableStringRef string, CFRange range);
CF_EXPORT void CFStringReplace(CFMutableStringRef string, CFRange range, CFStringRef replacement);
CF_EXPORT void CFStringReplaceAll(CFMutableStringRef string, CFStringRef replacement);
CF_EXPORT void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form);

CF_EXPORT Boolean CFStringIsEncodingAvailable(CFStringEncoding encoding);
CF_EXPORT CFStringEncoding CFStringGetSystemEncoding(void);
/// 0 for an encoding that Foundation does not know.
CF_EXPORT unsigned long CFStringConvertEncodingToNSStringEncoding(CFStringEncoding encoding);
/// kCFStringEncodingInvalidId for an encoding that Core Foundation does not know.
CF_EXPORT CFStringEncoding CFStringConvertNSStringEncodingToEncoding(unsigned long encoding);

CF_EXTERN_C_END
