#include "host/called_services.h"
#include "support/host.h"

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace {

using namespace REALservices;

class Dates : public testing::Test {
protected:
    explicit Dates(const char* zone = "CET-1CEST,M3.5.0,M10.5.0/3") {
        setenv("TZ", zone, 1);
        tzset();
    }
    std::string shown(const host::ObjectRef& date) {
        return host.get<std::string>(date, "SQLDateTime");
    }

    Host host{{.bare = true}};
};

TEST_F(Dates, AreMadeOfTheirFields) {
    const host::ObjectRef date = host.create("Date", 2000, 2, 29, 10, 20, 30);
    EXPECT_EQ(host.get<int>(date, "Year"), 2000);
    EXPECT_EQ(host.get<int>(date, "Month"), 2);
    EXPECT_EQ(host.get<int>(date, "Day"), 29);
    EXPECT_EQ(host.get<int>(date, "Hour"), 10);
    EXPECT_EQ(host.get<int>(date, "Minute"), 20);
    EXPECT_EQ(host.get<int>(date, "Second"), 30);
    EXPECT_EQ(shown(date), "2000-02-29 10:20:30");
    EXPECT_EQ(host.get<std::string>(date, "SQLDate"), "2000-02-29");
    EXPECT_EQ(shown(host.create("Date", 1999)), "1999-01-01 00:00:00");
}

TEST_F(Dates, FollowAZoneThatChangesMeanwhile) {
    const host::ObjectRef date = host.create("Date", 2021, 7, 1);
    EXPECT_EQ(host.get<double>(date, "GMTOffset"), 2);
    setenv("TZ", "EST5", 1);
    EXPECT_EQ(host.get<double>(date, "GMTOffset"), -5);
}

TEST_F(Dates, AreNowUntilToldOtherwise) {
    const std::time_t before = std::time(nullptr);
    const host::ObjectRef date = host.create("Date");
    std::tm local{};
    localtime_r(&before, &local);
    const double expected =
        host.get<double>(host.create("Date", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                     local.tm_hour, local.tm_min, local.tm_sec),
                         "TotalSeconds");
    EXPECT_GE(host.get<double>(date, "TotalSeconds"), expected);
    EXPECT_LE(host.get<double>(date, "TotalSeconds"), expected + 10);
}

TEST_F(Dates, CopyOthers) {
    const host::ObjectRef date = host.create("Date", 2001, 2, 3);
    const host::ObjectRef copy = host.create("Date", date);
    host.set(date, "Year", 1999);
    EXPECT_EQ(shown(copy), "2001-02-03 00:00:00");
    host.create("Date", nullptr);
    EXPECT_EQ(host.raised(), "NilObjectException: There is no Date to copy.");
}

TEST_F(Dates, CountOnWhatIsOutOfItsRange) {
    EXPECT_EQ(shown(host.create("Date", 2023, 2, 29)), "2023-03-01 00:00:00");
    EXPECT_EQ(shown(host.create("Date", 2023, 14, 1)), "2024-02-01 00:00:00");
    EXPECT_EQ(shown(host.create("Date", 2024, 0, 0)), "2023-11-30 00:00:00");
    EXPECT_EQ(shown(host.create("Date", 2023, 12, 31, 23, 59, 60)), "2024-01-01 00:00:00");
    EXPECT_EQ(shown(host.create("Date", 2024, 3, 1, 0, 0, -1)), "2024-02-29 23:59:59");
    EXPECT_EQ(shown(host.create("Date", 1900, 2, 29)), "1900-03-01 00:00:00");
}

TEST_F(Dates, TakeTheirFieldsOneAtATime) {
    const host::ObjectRef date = host.create("Date", 2024, 1, 31);
    host.set(date, "Month", 2);
    host.set(date, "Day", 15);
    EXPECT_EQ(shown(date), "2024-02-15 00:00:00");
    host.set(date, "Day", 31);
    EXPECT_EQ(shown(date), "2024-03-02 00:00:00");
}

TEST_F(Dates, SurviveTheLargestNumbers) {
    const host::ObjectRef date = host.create("Date", 2000);
    for (const char* const field : {"Year", "Month", "Day", "Hour", "Minute", "Second"}) {
        host.set(date, field, std::numeric_limits<REALword>::max());
        EXPECT_GT(host.get<int>(date, "Year"), 2000) << field;
        host.set(date, field, std::numeric_limits<REALword>::min());
        EXPECT_LT(host.get<int>(date, "Year"), 2000) << field;
        host.set(date, field, 1);
        host.set(date, "Year", 2000);
    }
    host.set(date, "TotalSeconds", 1e300);
    EXPECT_GT(host.get<int>(date, "Year"), 30000000);
    host.set(date, "TotalSeconds", std::nan(""));
    EXPECT_EQ(shown(date), "1904-01-01 00:00:00");
}

TEST_F(Dates, CountSecondsFrom1904) {
    EXPECT_EQ(host.get<double>(host.create("Date", 1904), "TotalSeconds"), 0);
    const host::ObjectRef date = host.create("Date", 1970);
    EXPECT_EQ(host.get<double>(date, "TotalSeconds"), 2082844800);
    host.set(date, "TotalSeconds", 2082844800.0 + 2 * 86400);
    EXPECT_EQ(shown(date), "1970-01-03 00:00:00");
    host.set(date, "TotalSeconds", -0.5);
    EXPECT_EQ(shown(date), "1903-12-31 23:59:59");
}

TEST_F(Dates, ReachBeyondTheEndOf32BitTime) {
    const host::ObjectRef date = host.create("Date", 2100, 7, 1, 12);
    EXPECT_EQ(shown(date), "2100-07-01 12:00:00");
    EXPECT_EQ(host.get<double>(date, "GMTOffset"), 2);
}

TEST_F(Dates, MoveForwardWithTheClockWhereItLeavesTimesOut) {
    EXPECT_EQ(shown(host.create("Date", 2021, 3, 28, 1, 59, 59)), "2021-03-28 01:59:59");
    EXPECT_EQ(shown(host.create("Date", 2021, 3, 28, 2, 30)), "2021-03-28 03:30:00");
    EXPECT_EQ(shown(host.create("Date", 2021, 3, 28, 3)), "2021-03-28 03:00:00");
    EXPECT_EQ(shown(host.create("Date", 2021, 10, 31, 2, 30)), "2021-10-31 02:30:00");
}

TEST_F(Dates, TellTheOffsetOfTheirZone) {
    EXPECT_EQ(host.get<double>(host.create("Date", 2021, 1, 1), "GMTOffset"), 1);
    EXPECT_EQ(host.get<double>(host.create("Date", 2021, 3, 28, 1, 59), "GMTOffset"), 1);
    EXPECT_EQ(host.get<double>(host.create("Date", 2021, 3, 28, 3), "GMTOffset"), 2);
    EXPECT_EQ(host.get<double>(host.create("Date", 2021, 10, 31, 2), "GMTOffset"), 2);
    EXPECT_EQ(host.get<double>(host.create("Date", 2021, 10, 31, 3), "GMTOffset"), 1);
}

TEST_F(Dates, TellTheDayOfTheWeekAndOfTheYear) {
    const host::ObjectRef sunday = host.create("Date", 2024, 12, 29, 23);
    EXPECT_EQ(host.get<int>(sunday, "DayOfWeek"), 1);
    EXPECT_EQ(host.get<int>(sunday, "DayOfYear"), 364);
    const host::ObjectRef saturday = host.create("Date", 1904, 1, 2);
    EXPECT_EQ(host.get<int>(saturday, "DayOfWeek"), 7);
    EXPECT_EQ(host.get<int>(saturday, "DayOfYear"), 2);
}

TEST_F(Dates, AreReadFromSQL) {
    const host::ObjectRef date = host.create("Date");
    host.set(date, "SQLDateTime", "2000-02-29 10:20:30");
    EXPECT_EQ(shown(date), "2000-02-29 10:20:30");
    host.set(date, "SQLDate", "1999-12-31");
    EXPECT_EQ(shown(date), "1999-12-31 00:00:00");
    for (const char* const text : {"", "2000", "2000-02-30", "2000-13-01", "2000-01-01 24:00:00",
                                   "2000-01-01 10:20", "2000-01-01 10:20:30x", "next week"}) {
        host.set(date, "SQLDateTime", text);
        EXPECT_EQ(host.raised(), "UnsupportedFormatException: \"" + std::string(text) +
                                     "\" is no date such as 2000-02-29 10:20:30.");
    }
    EXPECT_EQ(shown(date), "1999-12-31 00:00:00");
}

TEST_F(Dates, AreSetByPluginsFieldByField) {
    const auto date = host::ObjectRef::adopt(service(NewInstance)("Date"));
    const std::pair<const char*, int> fields[] = {{"Year", 2000}, {"Month", 2},   {"Day", 29},
                                                  {"Hour", 10},   {"Minute", 20}, {"Second", 30}};
    for (const auto& [name, value] : fields)
        EXPECT_EQ(service(SetPropValueInt32)(date.get(), name, value), 1) << name;
    for (const auto& [name, value] : fields) {
        std::int32_t read = -1;
        EXPECT_EQ(service(GetPropValueInt32)(date.get(), name, &read), 1) << name;
        EXPECT_EQ(read, value) << name;
    }
    EXPECT_EQ(service(SetPropValueInt32)(date.get(), "DayOfWeek", 1), 0) << "read-only";
}

class DatesWithoutDaylightSaving : public Dates {
protected:
    DatesWithoutDaylightSaving()
        : Dates("IST-5:30") {}
};

TEST_F(DatesWithoutDaylightSaving, HaveOffsetsOfHalfHours) {
    EXPECT_EQ(host.get<double>(host.create("Date", 2021, 7, 1), "GMTOffset"), 5.5);
    EXPECT_EQ(shown(host.create("Date", 2021, 3, 28, 2, 30)), "2021-03-28 02:30:00");
}

} // namespace
