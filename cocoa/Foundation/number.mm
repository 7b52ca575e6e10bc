#include "cocoa/Foundation/number.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <type_traits>

namespace cocoa {
namespace {

constexpr double signedLimit = 9223372036854775808.0;

} // namespace

long long WideNumber::cutSigned() const {
    if (std::isnan(fraction_)) return 0;
    if (fraction_ >= signedLimit) return std::numeric_limits<long long>::max();
    if (fraction_ < -signedLimit) return std::numeric_limits<long long>::min();
    return static_cast<long long>(fraction_);
}

unsigned long long WideNumber::cutUnsigned() const {
    if (fraction_ >= 2 * signedLimit) return std::numeric_limits<unsigned long long>::max();
    if (fraction_ >= signedLimit) return static_cast<unsigned long long>(fraction_);
    return static_cast<unsigned long long>(cutSigned());
}

} // namespace cocoa

namespace {

// On 64-bit systems the compiler writes a long as a long long.
constexpr const char* codeOfLong = "l";
constexpr const char* codeOfUnsignedLong = "L";

/// Calls the work with the type code of a number, which lives for ever, and a null pointer to its C
/// type. False when the code is not a number's.
template <typename Work>
bool withNumberType(const char* code, Work work) {
    bool known = false;
    const auto consider = [&](const char* candidate, auto* typed) {
        if (known || std::strcmp(code, candidate) != 0) return;
        known = true;
        work(candidate, typed);
    };
    consider(@encode(char), static_cast<char*>(nullptr));
    consider(@encode(unsigned char), static_cast<unsigned char*>(nullptr));
    consider(@encode(short), static_cast<short*>(nullptr));
    consider(@encode(unsigned short), static_cast<unsigned short*>(nullptr));
    consider(@encode(int), static_cast<int*>(nullptr));
    consider(@encode(unsigned int), static_cast<unsigned int*>(nullptr));
    consider(codeOfLong, static_cast<long*>(nullptr));
    consider(codeOfUnsignedLong, static_cast<unsigned long*>(nullptr));
    consider(@encode(long long), static_cast<long long*>(nullptr));
    consider(@encode(unsigned long long), static_cast<unsigned long long*>(nullptr));
    consider(@encode(float), static_cast<float*>(nullptr));
    consider(@encode(double), static_cast<double*>(nullptr));
    return known;
}

/// A long double holds every double and every 64-bit integer.
static_assert(std::numeric_limits<long double>::digits >= 64);

long double exactValue(NSNumber* number) {
    switch (*[number objCType]) {
    case 'f':
    case 'd':
        return [number doubleValue];
    case 'L':
    case 'Q':
        return [number unsignedLongLongValue];
    default:
        return [number longLongValue];
    }
}

/// What is no number stands below the positive numbers and above the negative ones.
NSComparisonResult compareExactly(long double first, long double second) {
    if (std::isnan(first) && std::isnan(second)) return NSOrderedSame;
    if (std::isnan(first)) return second < 0 ? NSOrderedDescending : NSOrderedAscending;
    if (std::isnan(second)) return first < 0 ? NSOrderedAscending : NSOrderedDescending;
    if (first < second) return NSOrderedAscending;
    return first > second ? NSOrderedDescending : NSOrderedSame;
}

} // namespace

@implementation CocoaNumber

+ (NSNumber*)boolean:(BOOL)value {
    static NSNumber* numbers[2];
    static std::once_flag made;
    std::call_once(made, [] {
        for (const char truth : {'\0', '\1'})
            numbers[static_cast<int>(truth)] = [CocoaNumber newNumberWithBytes:&truth
                                                                      objCType:@encode(char)];
    });
    return numbers[value ? 1 : 0];
}

+ (NSNumber*)newNumberWithBytes:(const void*)bytes objCType:(const char*)code {
    if (!bytes || !code) return nil;
    CocoaNumber* const number = [[CocoaNumber alloc] init];
    const bool known = withNumberType(code, [&](const char* type, auto* typed) {
        std::remove_pointer_t<decltype(typed)> given;
        std::memcpy(&given, bytes, sizeof given);
        number->type = type;
        number->value = cocoa::WideNumber(given);
    });
    if (known) return number;
    [number release];
    return nil;
}

- (BOOL)isBoolean {
    return self == [CocoaNumber boolean:YES] || self == [CocoaNumber boolean:NO];
}

- (const char*)objCType {
    return type;
}

- (void)getValue:(void*)buffer {
    withNumberType(type, [&](const char*, auto* typed) {
        const auto narrow = value.as<std::remove_pointer_t<decltype(typed)>>();
        std::memcpy(buffer, &narrow, sizeof narrow);
    });
}

- (BOOL)boolValue {
    return !value.isZero();
}

- (signed char)charValue {
    return value.as<signed char>();
}

- (unsigned char)unsignedCharValue {
    return value.as<unsigned char>();
}

- (short)shortValue {
    return value.as<short>();
}

- (unsigned short)unsignedShortValue {
    return value.as<unsigned short>();
}

- (int)intValue {
    return value.as<int>();
}

- (unsigned int)unsignedIntValue {
    return value.as<unsigned int>();
}

- (long)longValue {
    return value.as<long>();
}

- (unsigned long)unsignedLongValue {
    return value.as<unsigned long>();
}

- (long long)longLongValue {
    return value.as<long long>();
}

- (unsigned long long)unsignedLongLongValue {
    return value.as<unsigned long long>();
}

- (NSInteger)integerValue {
    return value.as<NSInteger>();
}

- (NSUInteger)unsignedIntegerValue {
    return value.as<NSUInteger>();
}

- (float)floatValue {
    return value.as<float>();
}

- (double)doubleValue {
    return value.as<double>();
}

- (NSComparisonResult)compare:(NSNumber*)other {
    if (other == self) return NSOrderedSame;
    if (!other)
        [NSException raise:NSInvalidArgumentException format:@"A number cannot be compared to nil"];
    if ([other isKindOfClass:[NSDecimalNumber class]]) {
        NSDecimal own = [self decimalValue];
        NSDecimal others = [other decimalValue];
        return NSDecimalCompare(&own, &others);
    }
    return compareExactly(exactValue(self), exactValue(other));
}

- (BOOL)isEqualToNumber:(NSNumber*)other {
    return other && [self compare:other] == NSOrderedSame;
}

- (BOOL)isEqual:(id)other {
    if (other == self) return YES;
    return [other isKindOfClass:[NSNumber class]] && [self isEqualToNumber:other];
}

- (BOOL)isEqualToValue:(NSValue*)other {
    return [self isEqual:other];
}

/// The same for equal numbers of all types, decimal ones of Foundation among them.
- (NSUInteger)hash {
    const double rounded = value.as<double>();
    if (!(std::fabs(rounded) < 9223372036854775808.0)) return 0;
    return static_cast<unsigned int>(static_cast<long long>(rounded));
}

- (NSString*)descriptionWithLocale:(id)locale {
    if (value.isFraction())
        return [[[NSString alloc] initWithFormat:*type == 'f' ? @"%0.7g" : @"%0.16g"
                                          locale:locale, value.as<double>()] autorelease];
    if (value.isUnsigned())
        return [NSString stringWithFormat:@"%llu", value.as<unsigned long long>()];
    return [NSString stringWithFormat:@"%lld", value.as<long long>()];
}

- (NSString*)description {
    return [self descriptionWithLocale:nil];
}

- (NSString*)stringValue {
    return [self descriptionWithLocale:nil];
}

- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}

- (Class)classForCoder {
    return [NSNumber class];
}

@end

// The methods that make numbers. Foundation's subclasses, and those of others, keep making their
// own.

#define MAKES_NUMBERS(Name, Type, Code)                                                            \
    +(NSNumber*)numberWith##Name : (Type)value {                                                   \
        if (self == [NSNumber class])                                                              \
            return [[CocoaNumber newNumberWithBytes:&value objCType:Code] autorelease];            \
        return [[[self alloc] initWithBytes:&value objCType:Code] autorelease];                    \
    }                                                                                              \
    -(id)initWith##Name : (Type)value {                                                            \
        [self release];                                                                            \
        return [CocoaNumber newNumberWithBytes:&value objCType:Code];                              \
    }

@implementation NSNumber (CocoaTypes)

MAKES_NUMBERS(Char, signed char, @encode(char))
MAKES_NUMBERS(UnsignedChar, unsigned char, @encode(unsigned char))
MAKES_NUMBERS(Short, short, @encode(short))
MAKES_NUMBERS(UnsignedShort, unsigned short, @encode(unsigned short))
MAKES_NUMBERS(Int, int, @encode(int))
MAKES_NUMBERS(UnsignedInt, unsigned int, @encode(unsigned int))
MAKES_NUMBERS(Long, long, codeOfLong)
MAKES_NUMBERS(UnsignedLong, unsigned long, codeOfUnsignedLong)
MAKES_NUMBERS(LongLong, long long, @encode(long long))
MAKES_NUMBERS(UnsignedLongLong, unsigned long long, @encode(unsigned long long))
MAKES_NUMBERS(Integer, NSInteger, @encode(NSInteger))
MAKES_NUMBERS(UnsignedInteger, NSUInteger, @encode(NSUInteger))
MAKES_NUMBERS(Float, float, @encode(float))
MAKES_NUMBERS(Double, double, @encode(double))

+ (NSNumber*)numberWithBool:(BOOL)value {
    if (self == [NSNumber class]) return [CocoaNumber boolean:value];
    return [[[self alloc] initWithBytes:&value objCType:@encode(BOOL)] autorelease];
}

- (id)initWithBool:(BOOL)value {
    [self release];
    return [[CocoaNumber boolean:value] retain];
}

- (id)initWithBytes:(const void*)bytes objCType:(const char*)code {
    [self release];
    return [CocoaNumber newNumberWithBytes:bytes objCType:code];
}

@end
