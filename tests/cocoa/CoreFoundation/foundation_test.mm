#include "support.h"

#include <ctime>
#include <tuple>

namespace {

class Exceptions : public InPool {};

TEST_F(Exceptions, HaveNoReasonThatTheyWereNotGiven) {
    NSException* const bare = [NSException exceptionWithName:@"Bare" reason:nil userInfo:nil];
    EXPECT_EQ([bare reason], nil);
    EXPECT_STREQ([[bare description] UTF8String], "Bare");
    NSException* const told = [NSException exceptionWithName:@"Told" reason:@"Rain" userInfo:nil];
    EXPECT_STREQ([[told reason] UTF8String], "Rain");
    EXPECT_STREQ([[told description] UTF8String], "Rain");
}

class GeometryValues : public InPool {};

TEST_F(GeometryValues, AreEncodedAsTheirStructures) {
    EXPECT_STREQ([[NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)] objCType], @encode(NSRect));
    EXPECT_STREQ([[NSValue valueWithSize:NSMakeSize(3, 4)] objCType], @encode(NSSize));
    EXPECT_STREQ([[NSValue valueWithRange:NSMakeRange(1, 2)] objCType], @encode(NSRange));
    EXPECT_STREQ([[NSValue valueWithPoint:NSMakePoint(1, 2)] objCType], @encode(NSPoint));
    if (sizeof(void*) == 4) {
        EXPECT_STREQ(@encode(NSRect), "{_NSRect={_NSPoint=ff}{_NSSize=ff}}");
        EXPECT_STREQ(@encode(NSSize), "{_NSSize=ff}");
        EXPECT_STREQ(@encode(NSRange), "{_NSRange=II}");
        EXPECT_STREQ(@encode(NSPoint), "{_NSPoint=ff}");
    }
}

TEST_F(GeometryValues, GiveTheStructureBack) {
    EXPECT_TRUE(NSEqualRects([[NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)] rectValue],
                             NSMakeRect(1, 2, 3, 4)));
    EXPECT_TRUE(
        NSEqualSizes([[NSValue valueWithSize:NSMakeSize(3, 4)] sizeValue], NSMakeSize(3, 4)));
    EXPECT_TRUE(NSEqualPoints([[NSValue valueWithPoint:NSMakePoint(-1, 2)] pointValue],
                              NSMakePoint(-1, 2)));
    EXPECT_TRUE(
        NSEqualRanges([[NSValue valueWithRange:NSMakeRange(7, 8)] rangeValue], NSMakeRange(7, 8)));
}

TEST_F(GeometryValues, AreTheSameMadeFromBytes) {
    const NSSize size = NSMakeSize(3, 4);
    NSValue* const value = [NSValue valueWithBytes:&size objCType:@encode(NSSize)];
    EXPECT_TRUE([value isEqual:[NSValue valueWithSize:size]]);
    EXPECT_EQ([value hash], [[NSValue valueWithSize:size] hash]);
    EXPECT_TRUE(NSEqualSizes([value sizeValue], size));
    EXPECT_FALSE([value isEqual:[NSValue valueWithPoint:NSMakePoint(3, 4)]]);
}

/// The local time zone is Berlin's, which changes to summer time on 2021-03-28 at 2:00 and back on
/// 2021-10-31 at 3:00.
class LocalDates : public InPool {
protected:
    LocalDates() { [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneWithName:@"Europe/Berlin"]]; }

    using WallClock = std::tuple<int, unsigned, unsigned, unsigned, unsigned, unsigned>;

    static NSCalendarDate* date(int year, unsigned month, unsigned day, unsigned hour,
                                unsigned minute, unsigned second) {
        return [NSCalendarDate dateWithYear:year
                                      month:month
                                        day:day
                                       hour:hour
                                     minute:minute
                                     second:second
                                   timeZone:[NSTimeZone localTimeZone]];
    }
    /// What a clock in the default time zone shows at the instant.
    static WallClock clock(NSTimeInterval sinceReferenceDate) {
        NSCalendarDate* const date = [[[NSCalendarDate alloc]
            initWithTimeIntervalSinceReferenceDate:sinceReferenceDate] autorelease];
        return {static_cast<int>([date yearOfCommonEra]),
                static_cast<unsigned>([date monthOfYear]),
                static_cast<unsigned>([date dayOfMonth]),
                static_cast<unsigned>([date hourOfDay]),
                static_cast<unsigned>([date minuteOfHour]),
                static_cast<unsigned>([date secondOfMinute])};
    }
    /// Seconds between an instant and 2001-01-01 00:00 UTC; from `date -u -d ... +%s`.
    static constexpr double sinceReferenceDate(double unixTime) { return unixTime - 978307200; }
};

TEST_F(LocalDates, AreTheInstantOfTheWallClock) {
    EXPECT_EQ([date(2000, 2, 29, 10, 20, 30) timeIntervalSinceReferenceDate],
              sinceReferenceDate(951816030)); // 09:20:30 UTC
    EXPECT_EQ([date(2021, 7, 1, 12, 0, 0) timeIntervalSinceReferenceDate],
              sinceReferenceDate(1625133600)); // 10:00 UTC
}

TEST_F(LocalDates, ComeBackAsTheyWere) {
    for (const WallClock& shown :
         {WallClock{2000, 2, 29, 10, 20, 30}, WallClock{2021, 3, 28, 1, 59, 59},
          WallClock{2021, 3, 28, 3, 0, 0}, WallClock{2021, 10, 31, 1, 59, 59},
          WallClock{2021, 10, 31, 2, 30, 0}, WallClock{2021, 10, 31, 3, 0, 0},
          WallClock{1904, 1, 1, 0, 0, 0}, WallClock{1969, 12, 31, 23, 59, 59},
          WallClock{2040, 12, 31, 23, 59, 59}, WallClock{3999, 12, 31, 23, 59, 59}})
        EXPECT_EQ(clock([std::apply(date, shown) timeIntervalSinceReferenceDate]), shown)
            << std::get<0>(shown);
}

TEST_F(LocalDates, OfTheHourThatIsSkippedLieAfterIt) {
    EXPECT_EQ(clock([date(2021, 3, 28, 2, 30, 0) timeIntervalSinceReferenceDate]),
              (WallClock{2021, 3, 28, 3, 30, 0}));
}

TEST_F(LocalDates, ShowTheHourThatComesTwiceTwice) {
    EXPECT_EQ(clock(sinceReferenceDate(1635640200)), (WallClock{2021, 10, 31, 2, 30, 0}));
    EXPECT_EQ(clock(sinceReferenceDate(1635643800)), (WallClock{2021, 10, 31, 2, 30, 0}));
}

TEST_F(LocalDates, CarryWhatIsTooLarge) {
    EXPECT_EQ(clock([date(2021, 2, 30, 0, 0, 0) timeIntervalSinceReferenceDate]),
              (WallClock{2021, 3, 2, 0, 0, 0}));
}

/// The year before the first is 0, a leap year.
TEST_F(LocalDates, ReachBeyondTheFirstYearAndFarIntoTheFuture) {
    [NSTimeZone setDefaultTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:0]];
    constexpr double firstYear = -63113904000;
    constexpr double leapDayOfYear0 = firstYear - (366 - 59) * 86400.0;
    constexpr double endOfYear9999 = 252423993599;
    EXPECT_EQ(clock(firstYear), (WallClock{1, 1, 1, 0, 0, 0}));
    EXPECT_EQ(clock(firstYear - 1), (WallClock{0, 12, 31, 23, 59, 59}));
    EXPECT_EQ(clock(leapDayOfYear0), (WallClock{0, 2, 29, 0, 0, 0}));
    EXPECT_EQ(clock(endOfYear9999), (WallClock{9999, 12, 31, 23, 59, 59}));
    EXPECT_EQ([date(0, 2, 29, 0, 0, 0) timeIntervalSinceReferenceDate], leapDayOfYear0);
    EXPECT_EQ([date(9999, 12, 31, 23, 59, 59) timeIntervalSinceReferenceDate], endOfYear9999);
    EXPECT_EQ(clock([date(-4713, 11, 24, 12, 0, 1) timeIntervalSinceReferenceDate]),
              (WallClock{-4713, 11, 24, 12, 0, 1}));
    EXPECT_EQ(std::get<0>(clock(-1e300)), std::get<0>(clock(-9e15)));
}

class CharacterSets : public InPool {};

TEST_F(CharacterSets, ReachBeyondTheFirstPlane) {
    NSCharacterSet* const letters = [NSCharacterSet letterCharacterSet];
    EXPECT_TRUE([letters longCharacterIsMember:0xE9]);
    EXPECT_TRUE([letters longCharacterIsMember:0x1D400]) << "a mathematical letter";
    EXPECT_FALSE([letters longCharacterIsMember:'1']);
}

TEST_F(CharacterSets, AreEqualByTheirMembers) {
    NSCharacterSet* const set = [NSCharacterSet characterSetWithCharactersInString:@"ab"];
    EXPECT_TRUE([set isEqual:[NSCharacterSet characterSetWithCharactersInString:@"ba"]]);
    EXPECT_FALSE([[set invertedSet] longCharacterIsMember:'a']);
    EXPECT_TRUE([[set invertedSet] longCharacterIsMember:'c']);
}

class TimeZones : public InPool {};

TEST_F(TimeZones, AreKnownByName) {
    NSTimeZone* const berlin = [NSTimeZone timeZoneWithName:@"Europe/Berlin"];
    EXPECT_STREQ([[berlin name] UTF8String], "Europe/Berlin");
    EXPECT_TRUE([berlin isEqual:[NSTimeZone timeZoneWithName:@"Europe/Berlin"]]);
    EXPECT_EQ([NSTimeZone timeZoneWithName:@"Nowhere/Town"], nil);
    EXPECT_EQ([NSTimeZone timeZoneWithName:@"../../etc/passwd"], nil);
}

TEST_F(TimeZones, AreKnownByTheirDistanceFromGreenwich) {
    EXPECT_EQ([[NSTimeZone timeZoneForSecondsFromGMT:-5400] secondsFromGMT], -5400);
    EXPECT_STREQ([[[NSTimeZone timeZoneForSecondsFromGMT:-5400] name] UTF8String], "GMT-0130");
}

class SystemTimeZone : public InPool {
protected:
    /// The zone's name when TZ has the value; null unsets it.
    static std::string zoneFor(const char* variable) {
        if (variable)
            setenv("TZ", variable, 1);
        else
            unsetenv("TZ");
        [NSTimeZone resetSystemTimeZone];
        return [[[NSTimeZone systemTimeZone] name] UTF8String];
    }
};

TEST_F(SystemTimeZone, IsTheOneThatTheEnvironmentNames) {
    EXPECT_EQ(zoneFor("America/New_York"), "America/New_York");
    EXPECT_EQ(zoneFor(":Europe/Berlin"), "Europe/Berlin");
    EXPECT_EQ(zoneFor("/usr/share/zoneinfo/Asia/Kolkata"), "Asia/Kolkata");
    EXPECT_EQ([[NSTimeZone localTimeZone] secondsFromGMT], 19800);
    EXPECT_EQ([[NSTimeZone defaultTimeZone] secondsFromGMT], 19800);
}

TEST_F(SystemTimeZone, IsTheCLibrarysForARuleAndForNonsense) {
    EXPECT_EQ(zoneFor("XYZ-5:30"), "GMT+0530");
    EXPECT_EQ(zoneFor("Nowhere/Town"), "GMT+0000");
    EXPECT_EQ(zoneFor(""), "GMT+0000");
    EXPECT_EQ(zoneFor("/etc/passwd"), "GMT+0000");
}

TEST_F(SystemTimeZone, IsTheMachinesWithoutAName) {
    EXPECT_NE(zoneFor(nullptr), "");
    const std::time_t summer = 1625133600;
    std::tm local{};
    tzset();
    localtime_r(&summer, &local);
    EXPECT_EQ([[NSTimeZone systemTimeZone]
                  secondsFromGMTForDate:[NSDate dateWithTimeIntervalSince1970:summer]],
              local.tm_gmtoff);
}

class OtherObjects : public InPool {};

TEST_F(OtherObjects, AreOfTheirClusters) {
    NSAttributedString* const plain =
        [[[NSAttributedString alloc] initWithString:@"x"] autorelease];
    NSAttributedString* const changing =
        [[[NSMutableAttributedString alloc] initWithString:@"x"] autorelease];
    EXPECT_TRUE([plain isKindOfClass:[NSAttributedString class]]);
    EXPECT_FALSE([plain isKindOfClass:[NSMutableAttributedString class]]);
    EXPECT_TRUE([changing isKindOfClass:[NSMutableAttributedString class]]);
    EXPECT_TRUE([[NSMutableCharacterSet letterCharacterSet] isKindOfClass:[NSCharacterSet class]]);
    EXPECT_TRUE([[NSTimeZone localTimeZone] isKindOfClass:[NSTimeZone class]]);
    EXPECT_TRUE([[NSLocale currentLocale] isKindOfClass:[NSLocale class]]);
    EXPECT_TRUE([[NSDate distantFuture] isKindOfClass:[NSDate class]]);
}

TEST_F(OtherObjects, SetsKeepOneOfEqualObjects) {
    NSSet* const set = [NSSet setWithObjects:@"a", @"b", @"a", nil];
    EXPECT_EQ([set count], 2U);
    EXPECT_EQ([[set allObjects] count], 2U);
    NSArray* const others = [NSArray arrayWithObjects:@"b", @"a", nil];
    EXPECT_TRUE([set isEqual:[NSMutableSet setWithArray:others]]);
}

TEST_F(OtherObjects, LocalesAreEqualByIdentifier) {
    NSLocale* const german = [[[NSLocale alloc] initWithLocaleIdentifier:@"de_DE"] autorelease];
    NSLocale* const other = [[[NSLocale alloc] initWithLocaleIdentifier:@"de_DE"] autorelease];
    EXPECT_STREQ([[german localeIdentifier] UTF8String], "de_DE");
    EXPECT_TRUE([german isEqual:other]);
}

TEST_F(OtherObjects, CollectionsRefuseNil) {
    EXPECT_EQ(raisedBy([] { [[NSMutableArray array] addObject:nil]; }),
              "NSInvalidArgumentException");
    EXPECT_EQ(raisedBy([] { [[NSMutableDictionary dictionary] setObject:@"x" forKey:nil]; }),
              "NSInvalidArgumentException");
}

} // namespace
