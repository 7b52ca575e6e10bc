#include "plugin/bridge/bridge.h"

#include "host/objects/date.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace {

constexpr const char* parts[] = {"Year", "Month", "Day", "Hour", "Minute", "Second"};

/// A host in the time zone of that name.
class DatesIn {
public:
    explicit DatesIn(const char* zone, std::vector<std::string> without = {})
        : bridge({.without = std::move(without)}) {
        setenv("TZ", zone, 1);
        [NSTimeZone resetSystemTimeZone];
        [NSTimeZone
            setDefaultTimeZone:[NSTimeZone timeZoneWithName:[NSString stringWithUTF8String:zone]]];
    }

    /// "2000-02-29 10:20:30" of a host date.
    std::string told(const host::Value& date) {
        return date.object() ? host::stateOf<host::Date>(date.object())->sqlDateTime() : "(none)";
    }

    Pool pool;
    Bridge bridge;
};

TEST(DatesToCocoa, AreTheWallClockTimeInTheLocalTimeZone) {
    DatesIn dates("Europe/Berlin");
    const Held held = dates.bridge.object_of(host::newDate(
        {.year = 2000, .month = 2, .day = 29, .hour = 10, .minute = 20, .second = 30}));
    ASSERT_TRUE(held.is_kind_of([NSCalendarDate class]));
    NSCalendarDate* const date = held.get();
    EXPECT_EQ([date yearOfCommonEra], 2000);
    EXPECT_EQ([date monthOfYear], 2);
    EXPECT_EQ([date dayOfMonth], 29);
    EXPECT_EQ([date hourOfDay], 10);
    EXPECT_EQ([date minuteOfHour], 20);
    EXPECT_EQ([date secondOfMinute], 30);
    EXPECT_STREQ([[[date timeZone] name] UTF8String],
                 [[[NSTimeZone localTimeZone] name] UTF8String]);
    // An hour ahead of UTC, in which 2000-02-29 09:20:30 is second 951816030 of 1970's count.
    EXPECT_EQ([date timeIntervalSince1970], 951816030);
}

std::vector<std::string> propertiesRead;
int readsUntilFailure = 0;

std::uint8_t read_property(REALobjectStruct*, const char* name, std::int32_t* value) {
    propertiesRead.emplace_back(name);
    if (readsUntilFailure-- == 0) return 0;
    *value = 1;
    return 1;
}

TEST(DatesToCocoa, AreReadPartByPartInAFixedOrder) {
    DatesIn dates("UTC");
    dates.bridge.host.replace(REALservices::GetPropValueInt32, read_property);
    readsUntilFailure = 100;
    EXPECT_TRUE(dates.bridge.object_of(host::newDate({})));
    EXPECT_THAT(propertiesRead, testing::ElementsAreArray(parts));
}

TEST(DatesToCocoa, AreNilAtOnceWhenAPartCannotBeRead) {
    DatesIn dates("UTC");
    dates.bridge.host.replace(REALservices::GetPropValueInt32, read_property);
    for (std::size_t part = 0; part < std::size(parts); ++part) {
        propertiesRead.clear();
        readsUntilFailure = static_cast<int>(part);
        EXPECT_FALSE(dates.bridge.object_of(host::newDate({}))) << parts[part];
        EXPECT_EQ(propertiesRead.size(), part + 1);
    }
}

TEST(DatesToCocoa, AreNilWhereTheHostReadsNoIntegers) {
    DatesIn dates("UTC", {"REALGetPropValueInt"});
    EXPECT_FALSE(dates.bridge.object_of(host::newDate({})));
}

TEST(DatesFromCocoa, AreTheWallClockTimeInTheDefaultTimeZone) {
    DatesIn dates("America/New_York");
    // 2001-01-01 00:00:00 UTC, and what is 5 hours behind it.
    EXPECT_EQ(dates.told(dates.bridge.value_of([NSDate dateWithTimeIntervalSinceReferenceDate:0])),
              "2000-12-31 19:00:00");
}

TEST(DatesFromCocoa, LoseFractionsOfASecond) {
    DatesIn dates("UTC");
    NSDate* const date = [NSDate dateWithTimeIntervalSinceReferenceDate:59.999];
    EXPECT_EQ(dates.told(dates.bridge.value_of(date)), "2001-01-01 00:00:59");
}

TEST(DatesFromCocoa, OfOtherTimeZonesKeepTheirMomentNotTheirWallClockTime) {
    DatesIn dates("UTC");
    NSCalendarDate* const noonInTokyo =
        [NSCalendarDate dateWithYear:2010
                               month:6
                                 day:15
                                hour:12
                              minute:0
                              second:0
                            timeZone:[NSTimeZone timeZoneWithName:@"Asia/Tokyo"]];
    EXPECT_EQ(dates.told(dates.bridge.value_of(noonInTokyo)), "2010-06-15 03:00:00");
}

TEST(DatesFromCocoa, CarryOneReference) {
    DatesIn dates("UTC");
    const host::ObjectRef date = dates.bridge.value_of([NSDate date]).objectRef();
    EXPECT_EQ(dates.bridge.host.references(date), 1);
}

TEST(DatesFromCocoa, AreNilWhereTheHostMakesNone) {
    DatesIn dates("UTC", {"PluginNewInstance"});
    EXPECT_FALSE(dates.bridge.value_of([NSDate date]).object());
}

TEST(DatesFromCocoa, KeepTheTimeTheyWereMadeAtWhereTheHostSetsNoIntegers) {
    DatesIn dates("UTC", {"REALSetPropValueInt"});
    const host::ObjectRef date =
        dates.bridge.value_of([NSDate dateWithTimeIntervalSinceReferenceDate:0]).objectRef();
    ASSERT_EQ(Bridge::class_of(date), "Date");
    EXPECT_GT(dates.told(date), "2020-01-01 00:00:00");
    EXPECT_EQ(dates.bridge.host.references(date), 1);
}

std::vector<std::string> propertiesWritten;

std::uint8_t write_property(REALobjectStruct*, const char* name, std::int32_t value) {
    propertiesWritten.push_back(std::string(name) + " " + std::to_string(value));
    return 1;
}

TEST(DatesFromCocoa, AreWrittenPartByPartInAFixedOrder) {
    DatesIn dates("UTC");
    dates.bridge.host.replace(REALservices::SetPropValueInt32, write_property);
    dates.bridge.value_of([NSDate dateWithTimeIntervalSinceReferenceDate:86400 + 3723]);
    EXPECT_THAT(propertiesWritten, testing::ElementsAre("Year 2001", "Month 1", "Day 2", "Hour 1",
                                                        "Minute 2", "Second 3"));
}

} // namespace
