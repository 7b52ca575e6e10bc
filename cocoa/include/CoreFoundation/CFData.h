#pragma once

/// Bytes. CFDataRef is NSData*, CFMutableDataRef NSMutableData*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

CF_EXPORT CFTypeID CFDataGetTypeID(void);

/// Copies the bytes. Null when `bytes` is null with a length above 0, or the length is negative.
CF_EXPORT CFDataRef CFDataCreate(CFAllocatorRef allocator, const UInt8* bytes, CFIndex length);
/// Keeps the caller's buffer, and frees it when the data goes unless `bytesDeallocator` is
/// kCFAllocatorNull. On a null result the buffer is still the caller's.
CF_EXPORT CFDataRef CFDataCreateWithBytesNoCopy(CFAllocatorRef allocator, const UInt8* bytes,
                                                CFIndex length, CFAllocatorRef bytesDeallocator);
CF_EXPORT CFDataRef CFDataCreateCopy(CFAllocatorRef allocator, CFDataRef data);
/// `capacity` is a hint; 0 is no hint.
CF_EXPORT CFMutableDataRef CFDataCreateMutable(CFAllocatorRef allocator, CFIndex capacity);
CF_EXPORT CFMutableDataRef CFDataCreateMutableCopy(CFAllocatorRef allocator, CFIndex capacity,
                                                   CFDataRef data);

CF_EXPORT CFIndex CFDataGetLength(CFDataRef data);
/// Valid as long as the data is neither changed nor released.
CF_EXPORT const UInt8* CFDataGetBytePtr(CFDataRef data);
CF_EXPORT UInt8* CFDataGetMutableBytePtr(CFMutableDataRef data);
/// The range must lie in the data; raises NSRangeException otherwise.
CF_EXPORT void CFDataGetBytes(CFDataRef data, CFRange range, UInt8* buffer);

/// New bytes are zero.
CF_EXPORT void CFDataSetLength(CFMutableDataRef data, CFIndex length);
CF_EXPORT void CFDataIncreaseLength(CFMutableDataRef data, CFIndex extraLength);
CF_EXPORT void CFDataAppendBytes(CFMutableDataRef data, const UInt8* bytes, CFIndex length);
CF_EXPORT void CFDataReplaceBytes(CFMutableDataRef data, CFRange range, const UInt8* bytes,
                                  CFIndex length);
CF_EXPORT void CFDataDeleteBytes(CFMutableDataRef data, CFRange range);

CF_EXTERN_C_END
