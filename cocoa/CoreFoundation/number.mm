#include "cocoa/Foundation/number.h"

#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CFNumber.h>

#include <cstring>

namespace {

NSNumber* numberOf(CFNumberRef number) { return (NSNumber*)number; }

/// What Core Foundation knows about a type of numbers.
struct NumberType {
    CFNumberType type;
    CFNumberType fixedType; ///< the type of its size
    const char* code;
};

constexpr CFNumberType integerOfSize(unsigned long size) {
    return size == 8 ? kCFNumberSInt64Type : kCFNumberSInt32Type;
}

const NumberType numberTypes[] = {
    {kCFNumberSInt8Type, kCFNumberSInt8Type, @encode(char)},
    {kCFNumberSInt16Type, kCFNumberSInt16Type, @encode(short)},
    {kCFNumberSInt32Type, kCFNumberSInt32Type, @encode(int)},
    {kCFNumberSInt64Type, kCFNumberSInt64Type, @encode(long long)},
    {kCFNumberFloat32Type, kCFNumberFloat32Type, @encode(float)},
    {kCFNumberFloat64Type, kCFNumberFloat64Type, @encode(double)},
    {kCFNumberCharType, kCFNumberSInt8Type, @encode(char)},
    {kCFNumberShortType, kCFNumberSInt16Type, @encode(short)},
    {kCFNumberIntType, kCFNumberSInt32Type, @encode(int)},
    {kCFNumberLongType, integerOfSize(sizeof(long)), @encode(long)},
    {kCFNumberLongLongType, kCFNumberSInt64Type, @encode(long long)},
    {kCFNumberFloatType, kCFNumberFloat32Type, @encode(float)},
    {kCFNumberDoubleType, kCFNumberFloat64Type, @encode(double)},
    {kCFNumberCFIndexType, integerOfSize(sizeof(CFIndex)), @encode(CFIndex)},
    {kCFNumberNSIntegerType, integerOfSize(sizeof(NSInteger)), @encode(NSInteger)},
    {kCFNumberCGFloatType, sizeof(CGFloat) == 8 ? kCFNumberFloat64Type : kCFNumberFloat32Type,
     @encode(CGFloat)},
};

const NumberType* findType(CFNumberType type) {
    for (const NumberType& candidate : numberTypes)
        if (candidate.type == type) return &candidate;
    return nullptr;
}

/// Writes the number as the target's type, and says whether that kept its value.
template <typename Target>
bool writeValue(NSNumber* number, Target value, NSNumber* asTarget, void* buffer) {
    std::memcpy(buffer, &value, sizeof value);
    return [number isEqualToNumber:asTarget];
}

} // namespace

CFBooleanRef CFBooleanGetTrue(void) { return (CFBooleanRef)[CocoaNumber boolean:YES]; }

CFBooleanRef CFBooleanGetFalse(void) { return (CFBooleanRef)[CocoaNumber boolean:NO]; }

CFTypeID CFBooleanGetTypeID(void) { return cocoa::typeOfBoolean; }

Boolean CFBooleanGetValue(CFBooleanRef boolean) { return [(NSNumber*)boolean boolValue]; }

CFTypeID CFNumberGetTypeID(void) { return cocoa::typeOfNumber; }

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
    const NumberType* const known = findType(type);
    if (!known) return nullptr;
    return (CFNumberRef)[CocoaNumber newNumberWithBytes:value objCType:known->code];
}

CFNumberType CFNumberGetType(CFNumberRef number) {
    switch (*[numberOf(number) objCType]) {
    case 'c':
        return kCFNumberSInt8Type;
    case 'C':
    case 's':
        return kCFNumberSInt16Type;
    case 'S':
    case 'i':
        return kCFNumberSInt32Type;
    case 'l':
        return integerOfSize(sizeof(long));
    case 'f':
        return kCFNumberFloat32Type;
    case 'd':
        return kCFNumberFloat64Type;
    default:
        return kCFNumberSInt64Type;
    }
}

CFIndex CFNumberGetByteSize(CFNumberRef number) {
    switch (CFNumberGetType(number)) {
    case kCFNumberSInt8Type:
        return 1;
    case kCFNumberSInt16Type:
        return 2;
    case kCFNumberSInt32Type:
    case kCFNumberFloat32Type:
        return 4;
    default:
        return 8;
    }
}

Boolean CFNumberIsFloatType(CFNumberRef number) {
    const CFNumberType type = CFNumberGetType(number);
    return type == kCFNumberFloat32Type || type == kCFNumberFloat64Type;
}

Boolean CFNumberGetValue(CFNumberRef reference, CFNumberType type, void* value) {
    const NumberType* const known = findType(type);
    NSNumber* const number = numberOf(reference);
    if (!known || !number || !value) return false;
    switch (known->fixedType) {
    case kCFNumberSInt8Type:
        return writeValue(number, [number charValue], [NSNumber numberWithChar:[number charValue]],
                          value);
    case kCFNumberSInt16Type:
        return writeValue(number, [number shortValue],
                          [NSNumber numberWithShort:[number shortValue]], value);
    case kCFNumberSInt32Type:
        return writeValue(number, [number intValue], [NSNumber numberWithInt:[number intValue]],
                          value);
    case kCFNumberFloat32Type:
        return writeValue(number, [number floatValue],
                          [NSNumber numberWithFloat:[number floatValue]], value);
    case kCFNumberFloat64Type:
        return writeValue(number, [number doubleValue],
                          [NSNumber numberWithDouble:[number doubleValue]], value);
    default:
        return writeValue(number, [number longLongValue],
                          [NSNumber numberWithLongLong:[number longLongValue]], value);
    }
}

CFComparisonResult CFNumberCompare(CFNumberRef first, CFNumberRef second, void*) {
    return static_cast<CFComparisonResult>([numberOf(first) compare:numberOf(second)]);
}

@implementation NSNumber (CoreFoundationType)

- (CFTypeID)_cfTypeID {
    return cocoa::typeOfNumber;
}

@end

@implementation CocoaNumber (CoreFoundationType)

- (CFTypeID)_cfTypeID {
    return [self isBoolean] ? cocoa::typeOfBoolean : cocoa::typeOfNumber;
}

@end
