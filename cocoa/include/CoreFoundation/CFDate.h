#pragma once

/// Instants. CFDateRef is NSDate*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

/// Seconds since 2001-01-01 00:00 UTC.
typedef double CFTimeInterval;
typedef CFTimeInterval CFAbsoluteTime;

CF_EXPORT CFAbsoluteTime CFAbsoluteTimeGetCurrent(void);

CF_EXPORT CFTypeID CFDateGetTypeID(void);
CF_EXPORT CFDateRef CFDateCreate(CFAllocatorRef allocator, CFAbsoluteTime time);
CF_EXPORT CFAbsoluteTime CFDateGetAbsoluteTime(CFDateRef date);
/// In seconds; negative when `date` is before `other`.
CF_EXPORT CFTimeInterval CFDateGetTimeIntervalSinceDate(CFDateRef date, CFDateRef other);
CF_EXPORT CFComparisonResult CFDateCompare(CFDateRef date, CFDateRef other, void* context);

CF_EXTERN_C_END
