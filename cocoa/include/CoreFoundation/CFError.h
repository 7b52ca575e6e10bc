#pragma once

/// What went wrong: a domain, a code and further information. CFErrorRef is NSError*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef struct __CFError* CFErrorRef;

CF_EXPORT CFTypeID CFErrorGetTypeID(void);

/// `userInfo` may be null. Null without a domain.
CF_EXPORT CFErrorRef CFErrorCreate(CFAllocatorRef allocator, CFStringRef domain, CFIndex code,
                                   CFDictionaryRef userInfo);
/// Borrowed.
CF_EXPORT CFStringRef CFErrorGetDomain(CFErrorRef error);
CF_EXPORT CFIndex CFErrorGetCode(CFErrorRef error);
/// The caller owns both; an error without information gives an empty dictionary.
CF_EXPORT CFDictionaryRef CFErrorCopyUserInfo(CFErrorRef error);
CF_EXPORT CFStringRef CFErrorCopyDescription(CFErrorRef error);

CF_EXTERN_C_END
