#include "support.h"

#include <cmath>
#include <limits>

namespace {

class NumberTypes : public InPool {};

std::string typeOf(NSNumber* number) { return [number objCType]; }

TEST_F(NumberTypes, KeepTheTypeThatTheyWereMadeWith) {
    EXPECT_EQ(typeOf([NSNumber numberWithBool:YES]), "c");
    EXPECT_EQ(typeOf([NSNumber numberWithChar:5]), "c");
    EXPECT_EQ(typeOf([NSNumber numberWithUnsignedChar:5]), "C");
    EXPECT_EQ(typeOf([NSNumber numberWithShort:5]), "s");
    EXPECT_EQ(typeOf([NSNumber numberWithUnsignedShort:5]), "S");
    EXPECT_EQ(typeOf([NSNumber numberWithInt:5]), "i");
    EXPECT_EQ(typeOf([NSNumber numberWithUnsignedInt:5]), "I");
    EXPECT_EQ(typeOf([NSNumber numberWithLong:5]), "l");
    EXPECT_EQ(typeOf([NSNumber numberWithUnsignedLong:5]), "L");
    EXPECT_EQ(typeOf([NSNumber numberWithLongLong:5]), "q");
    EXPECT_EQ(typeOf([NSNumber numberWithUnsignedLongLong:5]), "Q");
    EXPECT_EQ(typeOf([NSNumber numberWithFloat:5]), "f");
    EXPECT_EQ(typeOf([NSNumber numberWithDouble:5]), "d");
    EXPECT_EQ(typeOf([NSNumber numberWithInteger:5]), @encode(NSInteger));
    EXPECT_EQ(typeOf([NSNumber numberWithUnsignedInteger:5]), @encode(NSUInteger));
}

TEST_F(NumberTypes, AreKeptByInitializersToo) {
    EXPECT_EQ(typeOf([[[NSNumber alloc] initWithBool:NO] autorelease]), "c");
    EXPECT_EQ(typeOf([[[NSNumber alloc] initWithLong:5] autorelease]), "l");
    EXPECT_EQ(typeOf([[[NSNumber alloc] initWithUnsignedLongLong:5] autorelease]), "Q");
    const float half = 0.5;
    EXPECT_EQ(typeOf([[[NSNumber alloc] initWithBytes:&half objCType:@encode(float)] autorelease]),
              "f");
}

TEST_F(NumberTypes, AreKeptByCopies) {
    NSNumber* const copy = [[[NSNumber numberWithLong:7] copy] autorelease];
    EXPECT_EQ(typeOf(copy), "l");
    EXPECT_EQ([copy longValue], 7);
}

TEST_F(NumberTypes, HaveOneTrueAndOneFalse) {
    EXPECT_EQ([NSNumber numberWithBool:YES], [NSNumber numberWithBool:1]);
    EXPECT_NE([NSNumber numberWithBool:YES], [NSNumber numberWithBool:NO]);
    EXPECT_EQ((CFBooleanRef)[NSNumber numberWithBool:YES], kCFBooleanTrue);
    EXPECT_EQ((CFBooleanRef)[NSNumber numberWithBool:NO], kCFBooleanFalse);
}

TEST_F(NumberTypes, AreNotMadeOfOtherTypes) {
    const NSPoint point = NSMakePoint(1, 2);
    EXPECT_EQ([[NSNumber alloc] initWithBytes:&point objCType:@encode(NSPoint)], nil);
}

TEST_F(NumberTypes, GiveTheValueInTheirOwnTypeToGetValue) {
    long value = 0;
    [[NSNumber numberWithLong:-6] getValue:&value];
    EXPECT_EQ(value, -6);
    float fraction = 0;
    [[NSNumber numberWithFloat:2.5] getValue:&fraction];
    EXPECT_EQ(fraction, 2.5F);
}

TEST_F(NumberTypes, ConvertAsCastsDo) {
    NSNumber* const big = [NSNumber numberWithUnsignedLongLong:5000000000ULL];
    EXPECT_EQ([big unsignedIntValue], 705032704U);
    EXPECT_EQ([big longLongValue], 5000000000LL);
    EXPECT_EQ([big doubleValue], 5e9);
    NSNumber* const minus = [NSNumber numberWithInt:-1];
    EXPECT_EQ([minus unsignedLongLongValue], 18446744073709551615ULL);
    EXPECT_EQ([minus unsignedCharValue], 255);
    EXPECT_EQ([minus charValue], -1);
    EXPECT_EQ([minus floatValue], -1.0F);
    EXPECT_TRUE([minus boolValue]);
    NSNumber* const fraction = [NSNumber numberWithDouble:-2.75];
    EXPECT_EQ([fraction intValue], -2);
    EXPECT_EQ([fraction shortValue], -2);
    EXPECT_EQ([fraction integerValue], -2);
    EXPECT_FALSE([[NSNumber numberWithDouble:0] boolValue]);
    EXPECT_TRUE([[NSNumber numberWithDouble:0.25] boolValue]);
}

TEST_F(NumberTypes, DoNotOverflowFromFractionsToIntegers) {
    NSNumber* const huge = [NSNumber numberWithDouble:1e300];
    EXPECT_EQ([huge longLongValue], std::numeric_limits<long long>::max());
    EXPECT_EQ([huge unsignedLongLongValue], std::numeric_limits<unsigned long long>::max());
    EXPECT_EQ([[NSNumber numberWithDouble:-1e300] longLongValue],
              std::numeric_limits<long long>::min());
    EXPECT_EQ([[NSNumber numberWithDouble:1e19] unsignedLongLongValue], 10000000000000000000ULL);
    EXPECT_EQ([[NSNumber numberWithDouble:NAN] intValue], 0);
}

TEST_F(NumberTypes, CompareByValueAcrossTypes) {
    NSNumber* const fives[] = {
        [NSNumber numberWithChar:5],   [NSNumber numberWithLong:5],
        [NSNumber numberWithDouble:5], [NSNumber numberWithUnsignedLongLong:5],
        [NSNumber numberWithFloat:5],  [NSDecimalNumber decimalNumberWithString:@"5"],
    };
    for (NSNumber* const first : fives)
        for (NSNumber* const second : fives) {
            EXPECT_TRUE([first isEqual:second]);
            EXPECT_TRUE([first isEqualToNumber:second]);
            EXPECT_EQ([first hash], [second hash]);
            EXPECT_EQ([first compare:second], NSOrderedSame);
        }
    EXPECT_FALSE([[NSNumber numberWithInt:5] isEqual:@"5"]);
    EXPECT_FALSE([[NSNumber numberWithInt:5] isEqual:nil]);
}

TEST_F(NumberTypes, CompareWithoutLosingDigits) {
    // Both are 2^53 as doubles.
    NSNumber* const odd = [NSNumber numberWithLongLong:9007199254740993LL];
    NSNumber* const even = [NSNumber numberWithDouble:9007199254740992.0];
    EXPECT_EQ([odd compare:even], NSOrderedDescending);
    EXPECT_EQ([even compare:odd], NSOrderedAscending);
    EXPECT_FALSE([odd isEqual:even]);
    NSNumber* const top = [NSNumber numberWithUnsignedLongLong:~0ULL];
    EXPECT_EQ([top compare:[NSNumber numberWithInt:-1]], NSOrderedDescending);
    EXPECT_EQ([[NSNumber numberWithInt:-1] compare:top], NSOrderedAscending);
}

TEST_F(NumberTypes, OrderWhatIsNoNumber) {
    NSNumber* const none = [NSNumber numberWithDouble:NAN];
    EXPECT_TRUE([none isEqual:[NSNumber numberWithFloat:NAN]]);
    EXPECT_EQ([none compare:[NSNumber numberWithInt:1]], NSOrderedAscending);
    EXPECT_EQ([none compare:[NSNumber numberWithInt:-1]], NSOrderedDescending);
    EXPECT_EQ([[NSNumber numberWithInt:-1] compare:none], NSOrderedAscending);
}

TEST_F(NumberTypes, RaiseWhenComparedToNil) {
    EXPECT_EQ(raisedBy([] { (void)[[NSNumber numberWithInt:1] compare:nil]; }),
              "NSInvalidArgumentException");
}

TEST_F(NumberTypes, DescribeThemselves) {
    const auto described = [](NSNumber* number) {
        EXPECT_TRUE([[number stringValue] isEqual:[number description]]);
        return std::string([[number description] UTF8String]);
    };
    EXPECT_EQ(described([NSNumber numberWithBool:YES]), "1");
    EXPECT_EQ(described([NSNumber numberWithInt:-12]), "-12");
    EXPECT_EQ(described([NSNumber numberWithUnsignedLongLong:~0ULL]), "18446744073709551615");
    EXPECT_EQ(described([NSNumber numberWithDouble:0.1]), "0.1");
    EXPECT_EQ(described([NSNumber numberWithFloat:0.1F]), "0.1");
    EXPECT_EQ(described([NSNumber numberWithDouble:5]), "5");
    EXPECT_EQ(described([NSNumber numberWithDouble:1e300]), "1e+300");
}

TEST_F(NumberTypes, AreKeysOfDictionaries) {
    NSDictionary* const names = [NSDictionary dictionaryWithObject:@"five"
                                                            forKey:[NSNumber numberWithLong:5]];
    EXPECT_TRUE([[names objectForKey:[NSNumber numberWithDouble:5]] isEqual:@"five"]);
    EXPECT_EQ([names objectForKey:[NSNumber numberWithInt:6]], nil);
}

TEST_F(NumberTypes, ArePropertyListsThatComeBackEqual) {
    NSArray* const list =
        [NSArray arrayWithObjects:[NSNumber numberWithBool:YES], [NSNumber numberWithBool:NO],
                                  [NSNumber numberWithLong:-5], [NSNumber numberWithDouble:5.25],
                                  [NSNumber numberWithLongLong:5000000000LL], nil];
    for (const NSPropertyListFormat format :
         {NSPropertyListXMLFormat_v1_0, NSPropertyListBinaryFormat_v1_0}) {
        NSData* const data = [NSPropertyListSerialization dataWithPropertyList:list
                                                                        format:format
                                                                       options:0
                                                                         error:nullptr];
        NSArray* const back = [NSPropertyListSerialization propertyListWithData:data
                                                                        options:0
                                                                         format:nullptr
                                                                          error:nullptr];
        EXPECT_TRUE([back isEqual:list]);
        EXPECT_EQ([back objectAtIndex:0], [NSNumber numberWithBool:YES]);
        EXPECT_EQ([back objectAtIndex:1], [NSNumber numberWithBool:NO]);
    }
}

TEST_F(NumberTypes, AreWrittenToXMLByTheirKind) {
    const auto written = [](NSNumber* number) {
        NSData* const data =
            [NSPropertyListSerialization dataWithPropertyList:number
                                                       format:NSPropertyListXMLFormat_v1_0
                                                      options:0
                                                        error:nullptr];
        return std::string(static_cast<const char*>([data bytes]), [data length]);
    };
    EXPECT_NE(written([NSNumber numberWithBool:YES]).find("<true/>"), std::string::npos);
    EXPECT_NE(written([NSNumber numberWithLong:7]).find("<integer>7</integer>"), std::string::npos);
    EXPECT_NE(written([NSNumber numberWithDouble:0.5]).find("<real>0.5</real>"), std::string::npos);
}

TEST_F(NumberTypes, AreJSON) {
    NSArray* const list =
        [NSArray arrayWithObjects:[NSNumber numberWithBool:YES], [NSNumber numberWithLong:5],
                                  [NSNumber numberWithDouble:5.25], nil];
    NSData* const data = [NSJSONSerialization dataWithJSONObject:list options:0 error:nullptr];
    EXPECT_EQ(std::string(static_cast<const char*>([data bytes]), [data length]), "[true,5,5.25]");
}

TEST_F(NumberTypes, SurviveArchives) {
    NSNumber* const numbers[] = {
        [NSNumber numberWithBool:YES],  [NSNumber numberWithLong:5],
        [NSNumber numberWithFloat:0.5], [NSNumber numberWithDouble:-5.25],
        [NSNumber numberWithShort:-3],  [NSNumber numberWithUnsignedLongLong:5000000000ULL],
    };
    for (NSNumber* const number : numbers) {
        NSNumber* const plain =
            [NSUnarchiver unarchiveObjectWithData:[NSArchiver archivedDataWithRootObject:number]];
        EXPECT_TRUE([plain isEqual:number]) << [[number description] UTF8String];
        EXPECT_EQ(typeOf(plain), typeOf(number));
        NSNumber* const keyed = [NSKeyedUnarchiver
            unarchiveObjectWithData:[NSKeyedArchiver archivedDataWithRootObject:number]];
        EXPECT_TRUE([keyed isEqual:number]) << [[number description] UTF8String];
    }
}

TEST_F(NumberTypes, LeaveDecimalNumbersAlone) {
    EXPECT_TRUE([[NSDecimalNumber numberWithInt:5] isKindOfClass:[NSDecimalNumber class]]);
    NSDecimalNumber* const tenth = [NSDecimalNumber decimalNumberWithString:@"0.1"];
    EXPECT_TRUE([[[tenth decimalNumberByAdding:tenth] description] isEqual:@"0.2"]);
    NSDecimal five = [[NSNumber numberWithLong:5] decimalValue];
    EXPECT_TRUE([[NSDecimalNumber decimalNumberWithDecimal:five]
        isEqual:[NSDecimalNumber decimalNumberWithString:@"5"]]);
}

TEST_F(NumberTypes, AreGivenByKeyValueCoding) {
    NSArray* const pair = [NSArray arrayWithObjects:@"a", @"b", nil];
    NSNumber* const count = [pair valueForKeyPath:@"@count"];
    EXPECT_EQ([count intValue], 2);
}

} // namespace
