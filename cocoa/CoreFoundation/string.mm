#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/retained.h"
#include "cocoa/CoreFoundation/text_encoding.h"
#include "cocoa/CoreFoundation/type_ids.h"
#include "cocoa/CoreFoundation/unit_string.h"

#include <cstdarg>
#include <cstring>
#include <limits>
#include <map>
#include <mutex>
#include <string>

using cocoa::Retained;

namespace {

NSString* stringOf(CFStringRef string) { return (NSString*)string; }
NSMutableString* mutableStringOf(CFMutableStringRef string) { return (NSMutableString*)string; }
NSRange rangeOf(CFRange range) {
    return NSMakeRange(static_cast<NSUInteger>(range.location),
                       static_cast<NSUInteger>(range.length));
}

/// Raises NSRangeException unless the range lies in the string.
void checkRange(NSString* string, CFRange range) {
    const auto length = static_cast<CFIndex>([string length]);
    if (range.location < 0 || range.length < 0 || range.location > length ||
        range.length > length - range.location)
        [NSException raise:NSRangeException
                    format:@"Range {%ld, %ld} in a string of %ld units", range.location,
                           range.length, length];
}

std::u16string unitsOf(NSString* string, CFRange range) {
    std::u16string units(static_cast<std::size_t>(range.length), u'\0');
    [string getCharacters:reinterpret_cast<unichar*>(units.data()) range:rangeOf(range)];
    return units;
}

/// Foundation's number of an encoding that is not built in; 0 when it has none.
NSStringEncoding foundationEncoding(CFStringEncoding encoding) {
    return static_cast<NSStringEncoding>(CFStringConvertEncodingToNSStringEncoding(encoding));
}

/// Encodes one character, also in the encodings that only Foundation knows.
std::string encode(char32_t character, std::u16string_view units, CFStringEncoding encoding) {
    if (cocoa::isBuiltInEncoding(encoding)) {
        const cocoa::EncodedCharacter encoded = cocoa::encodeCharacter(character, encoding);
        return {reinterpret_cast<const char*>(encoded.bytes.data()), encoded.count};
    }
    const NSStringEncoding known = foundationEncoding(encoding);
    if (!known) return {};
    const auto text = Retained<NSString*>::adopt(cocoa::newStringOfUnits(units));
    NSData* const data = [text.get() dataUsingEncoding:known allowLossyConversion:NO];
    return {static_cast<const char*>([data bytes]), [data length]};
}

std::string byteOrderMarkOf(CFStringEncoding encoding) {
    switch (encoding) {
    case kCFStringEncodingUTF16:
    case kCFStringEncodingUTF32:
        return encode(0xFEFF, u"\uFEFF", encoding);
    default:
        return {};
    }
}

struct Converted {
    CFIndex units = 0;
    CFIndex bytes = 0;
};

/// Converts whole characters as long as they fit; a null buffer fits everything.
Converted convert(const std::u16string& units, CFStringEncoding encoding, UInt8 lossByte,
                  bool withMark, UInt8* buffer, CFIndex bufferSize) {
    Converted converted;
    const auto put = [&](const std::string& bytes) {
        const auto count = static_cast<CFIndex>(bytes.size());
        if (buffer && count > bufferSize - converted.bytes) return false;
        if (buffer) std::memcpy(buffer + converted.bytes, bytes.data(), bytes.size());
        converted.bytes += count;
        return true;
    };
    if (withMark && !put(byteOrderMarkOf(encoding))) return converted;
    for (std::u16string_view rest = units; !rest.empty();) {
        const cocoa::ReadCharacter read = cocoa::readCharacter(rest);
        std::string bytes = encode(read.character, rest.substr(0, read.units), encoding);
        if (bytes.empty() && lossByte) bytes.assign(1, static_cast<char>(lossByte));
        if (bytes.empty() || !put(bytes)) break;
        converted.units += static_cast<CFIndex>(read.units);
        rest.remove_prefix(read.units);
    }
    return converted;
}

NSUInteger foundationOptions(CFStringCompareFlags options) {
    constexpr CFStringCompareFlags shared = kCFCompareCaseInsensitive | kCFCompareBackwards |
                                            kCFCompareAnchored | kCFCompareNumerically;
    // Foundation heeds digits only where it is not literal.
    const bool literal = !(options & kCFCompareNumerically);
    return (options & shared) | (literal ? NSLiteralSearch : 0);
}

} // namespace

CFTypeID CFStringGetTypeID(void) { return cocoa::typeOfString; }

CFStringRef CFStringMakeConstant(const char* text) {
    static std::mutex mutex;
    static auto& constants = *new std::map<std::string, CFStringRef, std::less<>>;
    const std::scoped_lock lock(mutex);
    auto found = constants.find(text);
    if (found == constants.end())
        found =
            constants.emplace(text, CFStringCreateWithCString(nullptr, text, kCFStringEncodingUTF8))
                .first;
    return found->second;
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation) {
    if (count < 0 || (!bytes && count)) return nullptr;
    const auto size = static_cast<std::size_t>(count);
    if (!cocoa::isBuiltInEncoding(encoding)) {
        const NSStringEncoding known = foundationEncoding(encoding);
        if (!known) return nullptr;
        return (CFStringRef)[[NSString alloc] initWithBytes:bytes ? bytes : (const UInt8*)""
                                                     length:size
                                                   encoding:known];
    }
    const auto units = cocoa::decodeText({bytes, size}, encoding, isExternalRepresentation);
    return units ? (CFStringRef)cocoa::newStringOfUnits(*units) : nullptr;
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                      CFStringEncoding encoding) {
    if (!text) return nullptr;
    return CFStringCreateWithBytes(allocator, reinterpret_cast<const UInt8*>(text),
                                   static_cast<CFIndex>(std::strlen(text)), encoding, false);
}

CFStringRef CFStringCreateWithPascalString(CFAllocatorRef allocator, ConstStringPtr text,
                                           CFStringEncoding encoding) {
    if (!text) return nullptr;
    return CFStringCreateWithBytes(allocator, text + 1, text[0], encoding, false);
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* characters, CFIndex count) {
    if (count < 0 || (!characters && count)) return nullptr;
    return (CFStringRef)cocoa::newStringOfUnits(
        {reinterpret_cast<const char16_t*>(characters), static_cast<std::size_t>(count)});
}

CFStringRef CFStringCreateCopy(CFAllocatorRef, CFStringRef string) {
    return (CFStringRef)[stringOf(string) copy];
}

CFStringRef CFStringCreateWithSubstring(CFAllocatorRef, CFStringRef string, CFRange range) {
    checkRange(stringOf(string), range);
    return (CFStringRef)cocoa::newStringOfUnits(unitsOf(stringOf(string), range));
}

CFStringRef CFStringCreateWithFormat(CFAllocatorRef, CFTypeRef, CFStringRef format, ...) {
    va_list arguments;
    va_start(arguments, format);
    NSString* const string = [[NSString alloc] initWithFormat:stringOf(format) arguments:arguments];
    va_end(arguments);
    return (CFStringRef)string;
}

CFStringRef CFStringCreateFromExternalRepresentation(CFAllocatorRef allocator, CFDataRef data,
                                                     CFStringEncoding encoding) {
    if (!data) return nullptr;
    return CFStringCreateWithBytes(allocator, CFDataGetBytePtr(data), CFDataGetLength(data),
                                   encoding, true);
}

CFDataRef CFStringCreateExternalRepresentation(CFAllocatorRef allocator, CFStringRef string,
                                               CFStringEncoding encoding, UInt8 lossByte) {
    const CFRange whole = CFRangeMake(0, CFStringGetLength(string));
    const std::u16string units = unitsOf(stringOf(string), whole);
    const Converted measured = convert(units, encoding, lossByte, true, nullptr, 0);
    if (measured.units < whole.length) return nullptr;
    CFMutableDataRef const data = CFDataCreateMutable(allocator, measured.bytes);
    CFDataSetLength(data, measured.bytes);
    convert(units, encoding, lossByte, true, CFDataGetMutableBytePtr(data), measured.bytes);
    return data;
}

CFMutableStringRef CFStringCreateMutable(CFAllocatorRef, CFIndex) {
    return (CFMutableStringRef)[[NSMutableString alloc] init];
}

CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef, CFIndex, CFStringRef string) {
    return (CFMutableStringRef)[stringOf(string) mutableCopy];
}

CFIndex CFStringGetLength(CFStringRef string) {
    return static_cast<CFIndex>([stringOf(string) length]);
}

UniChar CFStringGetCharacterAtIndex(CFStringRef string, CFIndex index) {
    checkRange(stringOf(string), CFRangeMake(index, 1));
    return [stringOf(string) characterAtIndex:static_cast<NSUInteger>(index)];
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
    checkRange(stringOf(string), range);
    [stringOf(string) getCharacters:buffer range:rangeOf(range)];
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding) {
    if (!string || !buffer || bufferSize < 1) return false;
    const CFRange whole = CFRangeMake(0, CFStringGetLength(string));
    const Converted converted = convert(unitsOf(stringOf(string), whole), encoding, 0, false,
                                        reinterpret_cast<UInt8*>(buffer), bufferSize - 1);
    const bool complete = converted.units == whole.length;
    buffer[complete ? converted.bytes : 0] = '\0';
    return complete;
}

Boolean CFStringGetPascalString(CFStringRef string, StringPtr buffer, CFIndex bufferSize,
                                CFStringEncoding encoding) {
    if (!string || !buffer || bufferSize < 1) return false;
    const CFRange whole = CFRangeMake(0, CFStringGetLength(string));
    const CFIndex room = bufferSize - 1 < 255 ? bufferSize - 1 : 255;
    const Converted converted =
        convert(unitsOf(stringOf(string), whole), encoding, 0, false, buffer + 1, room);
    const bool complete = converted.units == whole.length;
    buffer[0] = complete ? static_cast<UInt8>(converted.bytes) : 0;
    return complete;
}

const char* CFStringGetCStringPtr(CFStringRef, CFStringEncoding) { return nullptr; }

const UniChar* CFStringGetCharactersPtr(CFStringRef) { return nullptr; }

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean isExternalRepresentation, UInt8* buffer,
                         CFIndex bufferSize, CFIndex* usedLength) {
    checkRange(stringOf(string), range);
    const Converted converted = convert(unitsOf(stringOf(string), range), encoding, lossByte,
                                        isExternalRepresentation, buffer, bufferSize);
    if (usedLength) *usedLength = converted.bytes;
    return converted.units;
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding) {
    CFIndex bytesPerUnit = 1;
    switch (encoding) {
    case kCFStringEncodingUTF16:
    case kCFStringEncodingUTF16BE:
    case kCFStringEncodingUTF16LE:
    case kCFStringEncodingShiftJIS:
        bytesPerUnit = 2;
        break;
    case kCFStringEncodingUTF8:
    case kCFStringEncodingEUC_JP:
        bytesPerUnit = 3;
        break;
    case kCFStringEncodingUTF32:
    case kCFStringEncodingUTF32BE:
    case kCFStringEncodingUTF32LE:
        bytesPerUnit = 4;
        break;
    case kCFStringEncodingNonLossyASCII:
        bytesPerUnit = 6;
        break;
    default:
        break;
    }
    if (length < 0 || length > std::numeric_limits<CFIndex>::max() / bytesPerUnit)
        return kCFNotFound;
    return length * bytesPerUnit;
}

CFIndex CFStringGetMaximumSizeOfFileSystemRepresentation(CFStringRef string) {
    const CFIndex size =
        CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8);
    return size == kCFNotFound ? size : size + 1;
}

Boolean CFStringGetFileSystemRepresentation(CFStringRef string, char* buffer, CFIndex bufferSize) {
    return CFStringGetCString(string, buffer, bufferSize, kCFStringEncodingUTF8);
}

SInt32 CFStringGetIntValue(CFStringRef string) { return [stringOf(string) intValue]; }

double CFStringGetDoubleValue(CFStringRef string) { return [stringOf(string) doubleValue]; }

CFComparisonResult CFStringCompare(CFStringRef first, CFStringRef second,
                                   CFStringCompareFlags options) {
    const NSComparisonResult result = [stringOf(first) compare:stringOf(second)
                                                       options:foundationOptions(options)];
    return static_cast<CFComparisonResult>(result);
}

Boolean CFStringHasPrefix(CFStringRef string, CFStringRef prefix) {
    return CFStringGetLength(prefix) == 0 ||
           CFStringFind(string, prefix, kCFCompareAnchored).location == 0;
}

Boolean CFStringHasSuffix(CFStringRef string, CFStringRef suffix) {
    return CFStringGetLength(suffix) == 0 ||
           CFStringFind(string, suffix, kCFCompareAnchored | kCFCompareBackwards).length > 0;
}

CFRange CFStringFind(CFStringRef string, CFStringRef wanted, CFStringCompareFlags options) {
    const NSRange found = [stringOf(string) rangeOfString:stringOf(wanted)
                                                  options:foundationOptions(options)];
    if (found.location == NSNotFound || found.length == 0) return CFRangeMake(kCFNotFound, 0);
    return CFRangeMake(static_cast<CFIndex>(found.location), static_cast<CFIndex>(found.length));
}

void CFStringAppend(CFMutableStringRef string, CFStringRef appended) {
    [mutableStringOf(string) appendString:stringOf(appended)];
}

void CFStringAppendCharacters(CFMutableStringRef string, const UniChar* characters, CFIndex count) {
    const auto appended =
        Retained<CFStringRef>::adopt(CFStringCreateWithCharacters(nullptr, characters, count));
    if (appended) CFStringAppend(string, appended.get());
}

void CFStringAppendCString(CFMutableStringRef string, const char* text, CFStringEncoding encoding) {
    const auto appended =
        Retained<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, text, encoding));
    if (appended) CFStringAppend(string, appended.get());
}

void CFStringInsert(CFMutableStringRef string, CFIndex index, CFStringRef inserted) {
    CFStringReplace(string, CFRangeMake(index, 0), inserted);
}

void CFStringDelete(CFMutableStringRef string, CFRange range) {
    checkRange(stringOf(string), range);
    [mutableStringOf(string) deleteCharactersInRange:rangeOf(range)];
}

void CFStringReplace(CFMutableStringRef string, CFRange range, CFStringRef replacement) {
    checkRange(stringOf(string), range);
    [mutableStringOf(string) replaceCharactersInRange:rangeOf(range)
                                           withString:stringOf(replacement)];
}

void CFStringReplaceAll(CFMutableStringRef string, CFStringRef replacement) {
    [mutableStringOf(string) setString:stringOf(replacement)];
}

void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form) {
    // Text with unpaired surrogates has no normal form, and stays.
    const CFRange whole = CFRangeMake(0, CFStringGetLength(string));
    if (cocoa::hasUnpairedSurrogate(unitsOf(mutableStringOf(string), whole))) return;
    // Foundation raises where a short string grows to more than three times its length. Nothing
    // grows to more than eighteen times, so that letters behind it, which are taken off again, keep
    // the whole below that. A letter does not change with what stands before it.
    const std::size_t length = [mutableStringOf(string) length];
    const std::size_t padding = length < 1024 ? 8 * length + 8 : 0;
    NSMutableString* const text = [[mutableStringOf(string) mutableCopy] autorelease];
    [text appendString:[@"" stringByPaddingToLength:padding withString:@"x" startingAtIndex:0]];
    NSString* normalized = nil;
    switch (form) {
    case kCFStringNormalizationFormD:
        normalized = [text decomposedStringWithCanonicalMapping];
        break;
    case kCFStringNormalizationFormKD:
        normalized = [text decomposedStringWithCompatibilityMapping];
        break;
    case kCFStringNormalizationFormC:
        normalized = [text precomposedStringWithCanonicalMapping];
        break;
    case kCFStringNormalizationFormKC:
        normalized = [text precomposedStringWithCompatibilityMapping];
        break;
    }
    if (normalized)
        [mutableStringOf(string)
            setString:[normalized substringToIndex:[normalized length] - padding]];
}
