#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CFData.h>

#include <cstdlib>
#include <limits>

namespace {

NSData* dataOf(CFDataRef data) { return (NSData*)data; }
NSMutableData* mutableDataOf(CFMutableDataRef data) { return (NSMutableData*)data; }

bool isBuffer(const UInt8* bytes, CFIndex length) { return length == 0 || (bytes && length > 0); }

/// Raises NSRangeException unless the range lies in the data.
NSRange checkedRange(CFDataRef data, CFRange range) {
    const CFIndex length = CFDataGetLength(data);
    if (range.location < 0 || range.length < 0 || range.location > length ||
        range.length > length - range.location)
        [NSException
             raise:NSRangeException
            format:@"Range {%ld, %ld} in data of %ld bytes", range.location, range.length, length];
    return NSMakeRange(static_cast<NSUInteger>(range.location),
                       static_cast<NSUInteger>(range.length));
}

} // namespace

CFTypeID CFDataGetTypeID(void) { return cocoa::typeOfData; }

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length) {
    if (!isBuffer(bytes, length)) return nullptr;
    return (CFDataRef)[[NSData alloc] initWithBytes:bytes length:static_cast<NSUInteger>(length)];
}

CFDataRef CFDataCreateWithBytesNoCopy(CFAllocatorRef, const UInt8* bytes, CFIndex length,
                                      CFAllocatorRef bytesDeallocator) {
    if (!isBuffer(bytes, length)) return nullptr;
    return (CFDataRef)[[NSData alloc] initWithBytesNoCopy:const_cast<UInt8*>(bytes)
                                                   length:static_cast<NSUInteger>(length)
                                             freeWhenDone:bytesDeallocator != kCFAllocatorNull];
}

CFDataRef CFDataCreateCopy(CFAllocatorRef, CFDataRef data) {
    return (CFDataRef)[dataOf(data) copy];
}

CFMutableDataRef CFDataCreateMutable(CFAllocatorRef, CFIndex) {
    return (CFMutableDataRef)[[NSMutableData alloc] init];
}

CFMutableDataRef CFDataCreateMutableCopy(CFAllocatorRef, CFIndex, CFDataRef data) {
    return (CFMutableDataRef)[dataOf(data) mutableCopy];
}

CFIndex CFDataGetLength(CFDataRef data) { return static_cast<CFIndex>([dataOf(data) length]); }

const UInt8* CFDataGetBytePtr(CFDataRef data) {
    return static_cast<const UInt8*>([dataOf(data) bytes]);
}

UInt8* CFDataGetMutableBytePtr(CFMutableDataRef data) {
    return static_cast<UInt8*>([mutableDataOf(data) mutableBytes]);
}

void CFDataGetBytes(CFDataRef data, CFRange range, UInt8* buffer) {
    [dataOf(data) getBytes:buffer range:checkedRange(data, range)];
}

void CFDataSetLength(CFMutableDataRef data, CFIndex length) {
    if (length < 0)
        [NSException raise:NSRangeException format:@"Data cannot have %ld bytes", length];
    [mutableDataOf(data) setLength:static_cast<NSUInteger>(length)];
}

void CFDataIncreaseLength(CFMutableDataRef data, CFIndex extraLength) {
    const CFIndex length = CFDataGetLength(data);
    if (extraLength > std::numeric_limits<CFIndex>::max() - length)
        [NSException raise:NSRangeException format:@"Data cannot grow by %ld bytes", extraLength];
    CFDataSetLength(data, length + extraLength);
}

void CFDataAppendBytes(CFMutableDataRef data, const UInt8* bytes, CFIndex length) {
    if (isBuffer(bytes, length))
        [mutableDataOf(data) appendBytes:bytes length:static_cast<NSUInteger>(length)];
}

void CFDataReplaceBytes(CFMutableDataRef data, CFRange range, const UInt8* bytes, CFIndex length) {
    const NSRange replaced = checkedRange(data, range);
    if (isBuffer(bytes, length))
        [mutableDataOf(data) replaceBytesInRange:replaced
                                       withBytes:bytes
                                          length:static_cast<NSUInteger>(length)];
}

void CFDataDeleteBytes(CFMutableDataRef data, CFRange range) {
    CFDataReplaceBytes(data, range, nullptr, 0);
}
