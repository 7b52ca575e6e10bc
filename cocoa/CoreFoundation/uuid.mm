#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFUUID.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <sys/random.h>

/// What a CFUUIDRef is.
@interface CocoaUUID : NSObject <CoreFoundationTyped> {
@public
    CFUUIDBytes bytes;
}
@end

namespace {

CFUUIDRef makeUUID(const CFUUIDBytes& bytes) {
    CocoaUUID* const uuid = [[CocoaUUID alloc] init];
    if (uuid) uuid->bytes = bytes;
    return (CFUUIDRef)uuid;
}

const CFUUIDBytes& bytesOf(CFUUIDRef uuid) { return ((CocoaUUID*)uuid)->bytes; }

constexpr std::size_t textLength = 36;

bool hyphenFollows(std::size_t byteIndex) {
    return byteIndex == 3 || byteIndex == 5 || byteIndex == 7 || byteIndex == 9;
}

int digitValue(unsigned char digit) {
    return std::isdigit(digit) ? digit - '0' : std::tolower(digit) - 'a' + 10;
}

} // namespace

@implementation CocoaUUID

- (CFTypeID)_cfTypeID {
    return cocoa::typeOfUUID;
}

- (BOOL)isEqual:(id)other {
    return [other isKindOfClass:[CocoaUUID class]] &&
           std::memcmp(&bytes, &((CocoaUUID*)other)->bytes, sizeof bytes) == 0;
}

- (NSUInteger)hash {
    NSUInteger hash;
    std::memcpy(&hash, &bytes, sizeof hash);
    return hash;
}

- (NSString*)description {
    NSString* const text = [(NSString*)CFUUIDCreateString(nullptr, (CFUUIDRef)self) autorelease];
    return [NSString stringWithFormat:@"<CFUUID %p> %@", self, text];
}

@end

CFTypeID CFUUIDGetTypeID(void) { return cocoa::typeOfUUID; }

CFUUIDRef CFUUIDCreate(CFAllocatorRef) {
    CFUUIDBytes bytes;
    if (getrandom(&bytes, sizeof bytes, 0) != sizeof bytes) return nullptr;
    bytes.byte6 = (bytes.byte6 & 0x0F) | 0x40; // the version
    bytes.byte8 = (bytes.byte8 & 0x3F) | 0x80; // the variant
    return makeUUID(bytes);
}

CFUUIDRef CFUUIDCreateFromUUIDBytes(CFAllocatorRef, CFUUIDBytes bytes) { return makeUUID(bytes); }

CFUUIDRef CFUUIDCreateFromString(CFAllocatorRef, CFStringRef text) {
    char characters[textLength + 1];
    if (!text || !CFStringGetCString(text, characters, sizeof characters, kCFStringEncodingASCII))
        return nullptr;
    UInt8 bytes[sizeof(CFUUIDBytes)];
    const char* at = characters;
    for (std::size_t index = 0; index < sizeof bytes; ++index) {
        const auto high = static_cast<unsigned char>(at[0]);
        if (!std::isxdigit(high)) return nullptr;
        const auto low = static_cast<unsigned char>(at[1]);
        if (!std::isxdigit(low)) return nullptr;
        bytes[index] = static_cast<UInt8>(digitValue(high) << 4 | digitValue(low));
        at += 2;
        if (hyphenFollows(index) && *at++ != '-') return nullptr;
    }
    if (*at) return nullptr;
    CFUUIDBytes all;
    std::memcpy(&all, bytes, sizeof all);
    return makeUUID(all);
}

CFUUIDBytes CFUUIDGetUUIDBytes(CFUUIDRef uuid) { return uuid ? bytesOf(uuid) : CFUUIDBytes{}; }

CFStringRef CFUUIDCreateString(CFAllocatorRef, CFUUIDRef uuid) {
    if (!uuid) return nullptr;
    UInt8 bytes[sizeof(CFUUIDBytes)];
    std::memcpy(bytes, &bytesOf(uuid), sizeof bytes);
    char text[textLength + 1];
    char* at = text;
    for (std::size_t index = 0; index < sizeof bytes; ++index) {
        at += std::snprintf(at, 3, "%02X", bytes[index]);
        if (hyphenFollows(index)) *at++ = '-';
    }
    return CFStringCreateWithCString(nullptr, text, kCFStringEncodingASCII);
}
