#include "tests/plugin/values/round_trips.h"

#include <cstdlib>

namespace {

class DatesIn : public RoundTrips {
protected:
    /// The zone must be set before anything asks for it.
    explicit DatesIn(const char* zone) {
        ::setenv("TZ", zone, 1);
        host();
    }
};

struct DatesInBerlin : DatesIn {
    DatesInBerlin()
        : DatesIn("Europe/Berlin") {}
};

/// Clocks went from 2:00 to 3:00 on 28 March 2021; the host reads the times in between an hour
/// later by itself.
TEST_F(DatesInBerlin, SkipTheHourThatIsLeftOut) {
    EXPECT_THAT(printed(R"(
        Show New Date(2021, 3, 28, 1, 59, 59)
        Show New Date(2021, 3, 28, 2, 30, 0)
        Show New Date(2021, 3, 28, 3, 0, 0)
        Print ValueProbe.DescriptionOf(New Date(2021, 3, 28, 1, 59, 59))
        Print ValueProbe.DescriptionOf(New Date(2021, 3, 28, 3, 0, 0))
    )"),
                ElementsAre("- 7 2021-03-28 01:59:59", "- 7 2021-03-28 03:30:00",
                            "- 7 2021-03-28 03:00:00", "2021-03-28 01:59:59 +0100",
                            "2021-03-28 03:00:00 +0200"));
}

/// Clocks went from 3:00 back to 2:00 on 31 October 2021.
TEST_F(DatesInBerlin, KeepTheirTimeInTheHourThatIsThereTwice) {
    EXPECT_THAT(printed(R"(
        Show New Date(2021, 10, 31, 1, 59, 59)
        Show New Date(2021, 10, 31, 2, 0, 0)
        Show New Date(2021, 10, 31, 2, 59, 59)
        Show New Date(2021, 10, 31, 3, 0, 0)
        Print ValueProbe.DescriptionOf(New Date(2021, 10, 31, 1, 59, 59))
        Print ValueProbe.DescriptionOf(New Date(2021, 10, 31, 3, 0, 0))
    )"),
                ElementsAre("- 7 2021-10-31 01:59:59", "- 7 2021-10-31 02:00:00",
                            "- 7 2021-10-31 02:59:59", "- 7 2021-10-31 03:00:00",
                            "2021-10-31 01:59:59 +0200", "2021-10-31 03:00:00 +0100"));
}

/// In May 1945 Berlin's clocks were two hours ahead of their winter time.
TEST_F(DatesInBerlin, FollowTheZonesHistory) {
    EXPECT_THAT(printed(R"(
        Show New Date(1945, 6, 1, 12)
        Print ValueProbe.DescriptionOf(New Date(1945, 6, 1, 12))
    )"),
                ElementsAre("- 7 1945-06-01 12:00:00", "1945-06-01 12:00:00 +0300"));
}

struct DatesInNewYork : DatesIn {
    DatesInNewYork()
        : DatesIn("America/New_York") {}
};

/// 14 March and 7 November 2021, both at 2:00.
TEST_F(DatesInNewYork, CrossBothChangesOfTheClock) {
    EXPECT_THAT(printed(R"(
        Show New Date(2021, 3, 14, 1, 59, 59)
        Show New Date(2021, 3, 14, 2, 30, 0)
        Show New Date(2021, 11, 7, 1, 30, 0)
        Show New Date(2021, 11, 7, 2, 0, 0)
        Print ValueProbe.DescriptionOf(New Date(2021, 3, 14, 1, 59, 59))
        Print ValueProbe.DescriptionOf(New Date(2021, 11, 7, 2, 0, 0))
    )"),
                ElementsAre("- 7 2021-03-14 01:59:59", "- 7 2021-03-14 03:30:00",
                            "- 7 2021-11-07 01:30:00", "- 7 2021-11-07 02:00:00",
                            "2021-03-14 01:59:59 -0500", "2021-11-07 02:00:00 -0500"));
}

/// In zones with one change of the clock or none, on both sides of Greenwich.
class Dates : public DatesIn, public testing::WithParamInterface<const char*> {
protected:
    Dates()
        : DatesIn(GetParam()) {}
};

TEST_P(Dates, KeepTheirWallClockTime) {
    EXPECT_THAT(printed(R"(
        Show New Date(1970, 1, 1)
        Show New Date(1999, 12, 31, 23, 59, 59)
        Show New Date(2000, 2, 29, 10, 20, 30)
        Show New Date(2037, 12, 31, 23, 59, 59)
        Between New Date(2000, 2, 29, 10, 20, 30), "NSCalendarDate"
    )"),
                ElementsAre("- 7 1970-01-01 00:00:00", "- 7 1999-12-31 23:59:59",
                            "- 7 2000-02-29 10:20:30", "- 7 2037-12-31 23:59:59", "True"));
}

TEST_P(Dates, ComeBackFromFarAway) {
    EXPECT_THAT(
        printed(R"(
        Show New Date(-5, 12, 31, 1)
        Show New Date(0, 2, 29)
        Show New Date(1, 1, 1)
        Show New Date(1582, 10, 10, 12)
        Show New Date(1600, 2, 29, 23, 59, 59)
        Show New Date(1880, 6, 1, 6)
        Show New Date(1904, 1, 1)
        Show New Date(2038, 1, 19, 3, 14, 8)
        Show New Date(2100, 7, 1, 18)
        Show New Date(9999, 12, 31, 23, 59, 59)
        Show New Date(292277, 5, 4)
    )"),
        ElementsAre("- 7 -005-12-31 01:00:00", "- 7 0000-02-29 00:00:00", "- 7 0001-01-01 00:00:00",
                    "- 7 1582-10-10 12:00:00", "- 7 1600-02-29 23:59:59", "- 7 1880-06-01 06:00:00",
                    "- 7 1904-01-01 00:00:00", "- 7 2038-01-19 03:14:08", "- 7 2100-07-01 18:00:00",
                    "- 7 9999-12-31 23:59:59", "- 7 292277-05-04 00:00:00"));
}

/// Day by day and at every quarter of an hour where the clocks change.
TEST_P(Dates, ComeBackThroughoutAYear) {
    EXPECT_THAT(printed(R"(
        Dim checked, different As Integer
        For day As Integer = 1 To 366
          For quarter As Integer = 0 To 95
            If quarter = 40 Or (quarter < 16 And (day = 74 Or day = 87 Or day = 304 Or day = 311)) Then
              Dim before As New Date(2021, 1, day, 0, quarter * 15, 0)
              Dim after As Date = Back(before)
              checked = checked + 1
              If after <> before Or after.SQLDateTime <> before.SQLDateTime Then
                different = different + 1
              End If
            End If
          Next
        Next
        Print checked & " " & different
    )"),
                ElementsAre("430 0"));
}

TEST_P(Dates, AreKeysAndValuesOfDictionaries) {
    EXPECT_THAT(printed(R"(
        Dim days As New Dictionary
        days.Value(New Date(2000, 2, 29)) = New Date(2021, 7, 1, 1, 2, 3)
        Dim result As Dictionary = Back(days)
        Dim value As Date = result.Value(New Date(2000, 2, 29))
        Print value.SQLDateTime
        Between days, "NSDictionary"
    )"),
                ElementsAre("2021-07-01 01:02:03", "True"));
}

INSTANTIATE_TEST_SUITE_P(Zones, Dates,
                         testing::Values("Europe/Berlin", "America/New_York", "UTC",
                                         "Pacific/Kiritimati"));

} // namespace
