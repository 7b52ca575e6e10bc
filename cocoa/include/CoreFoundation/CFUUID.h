#pragma once

/// Universally unique identifiers: 16 bytes. Objects of the same bytes are equal.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef const struct __CFUUID* CFUUIDRef;

typedef struct {
    UInt8 byte0;
    UInt8 byte1;
    UInt8 byte2;
    UInt8 byte3;
    UInt8 byte4;
    UInt8 byte5;
    UInt8 byte6;
    UInt8 byte7;
    UInt8 byte8;
    UInt8 byte9;
    UInt8 byte10;
    UInt8 byte11;
    UInt8 byte12;
    UInt8 byte13;
    UInt8 byte14;
    UInt8 byte15;
} CFUUIDBytes;

CF_EXPORT CFTypeID CFUUIDGetTypeID(void);

/// A random one (version 4). Null when the system has no random bytes.
CF_EXPORT CFUUIDRef CFUUIDCreate(CFAllocatorRef allocator);
CF_EXPORT CFUUIDRef CFUUIDCreateFromUUIDBytes(CFAllocatorRef allocator, CFUUIDBytes bytes);
/// From "68753A44-4D6F-1226-9C60-0050E4C00067", in either case. Null for every other text.
CF_EXPORT CFUUIDRef CFUUIDCreateFromString(CFAllocatorRef allocator, CFStringRef text);

CF_EXPORT CFUUIDBytes CFUUIDGetUUIDBytes(CFUUIDRef uuid);
/// In upper case. The caller owns the string.
CF_EXPORT CFStringRef CFUUIDCreateString(CFAllocatorRef allocator, CFUUIDRef uuid);

CF_EXTERN_C_END
