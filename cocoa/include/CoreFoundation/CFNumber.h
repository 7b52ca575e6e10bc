#pragma once

/// Numbers and Booleans. CFNumberRef and CFBooleanRef are NSNumber*.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef CFIndex CFNumberType;
enum {
    kCFNumberSInt8Type = 1,
    kCFNumberSInt16Type = 2,
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberFloat32Type = 5,
    kCFNumberFloat64Type = 6,
    kCFNumberCharType = 7,
    kCFNumberShortType = 8,
    kCFNumberIntType = 9,
    kCFNumberLongType = 10,
    kCFNumberLongLongType = 11,
    kCFNumberFloatType = 12,
    kCFNumberDoubleType = 13,
    kCFNumberCFIndexType = 14,
    kCFNumberNSIntegerType = 15,
    kCFNumberCGFloatType = 16
};

#define kCFBooleanTrue (CFBooleanGetTrue())
#define kCFBooleanFalse (CFBooleanGetFalse())
CF_EXPORT CFBooleanRef CFBooleanGetTrue(void);
CF_EXPORT CFBooleanRef CFBooleanGetFalse(void);
CF_EXPORT CFTypeID CFBooleanGetTypeID(void);
CF_EXPORT Boolean CFBooleanGetValue(CFBooleanRef boolean);

CF_EXPORT CFTypeID CFNumberGetTypeID(void);
/// Null for an unknown type or a null value pointer.
CF_EXPORT CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type,
                                     const void* value);
/// The fixed-size type that the number is kept in.
CF_EXPORT CFNumberType CFNumberGetType(CFNumberRef number);
CF_EXPORT CFIndex CFNumberGetByteSize(CFNumberRef number);
CF_EXPORT Boolean CFNumberIsFloatType(CFNumberRef number);
/// Writes the number as that type. False when this loses something.
CF_EXPORT Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);
CF_EXPORT CFComparisonResult CFNumberCompare(CFNumberRef first, CFNumberRef second, void* context);

CF_EXTERN_C_END
