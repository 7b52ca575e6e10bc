#include "tests/plugin/values/round_trips.h"

namespace {

/// Older hosts put the procedure that reads elements into the array, newer ones offer it.
class Arrays : public RoundTripsOnEachHost {};

TEST_P(Arrays, OfInt32ComeBack) {
    EXPECT_THAT(printed(R"(
        Dim list() As Int32
        Print Listed(list)
        list.Append -2147483648
        list.Append 2147483647
        Print Listed(list)
        Between list, "NSMutableArray"
    )"),
                ElementsAre("[]", "[2 -2147483648, 2 2147483647]", "True"));
}

TEST_P(Arrays, OfInt64ComeBack) {
    EXPECT_THAT(printed(R"(
        Dim list() As Int64
        Print Listed(list)
        list.Append -9223372036854775807
        list.Append 5
        Print Listed(list)
    )"),
                ElementsAre("[]", "[3 -9223372036854775807, 3 5]"));
}

/// They pass as Int64.
TEST_P(Arrays, OfUnsignedNumbersComeBackAsInt64) {
    EXPECT_THAT(printed(R"(
        Dim list() As UInt32
        Print Listed(list)
        list.Append 4294967295
        list.Append 0
        Print Listed(list)
        Dim longer() As UInt64
        longer.Append 18446744073709551615
        Print Listed(longer)
    )"),
                ElementsAre("[]", "[3 4294967295, 3 0]", "[3 -1]"));
}

TEST_P(Arrays, OfSingleComeBack) {
    EXPECT_THAT(printed(R"(
        Dim list() As Single
        Print Listed(list)
        list.Append 0.5
        list.Append -3.402823e38
        Print Listed(list)
    )"),
                ElementsAre("[]", "[4 0.5, 4 -3.402823e+38]"));
}

TEST_P(Arrays, OfDoubleComeBack) {
    EXPECT_THAT(printed(R"(
        Dim list() As Double
        Print Listed(list)
        list.Append 4.94065645841247e-324
        list.Append -0.1
        Print Listed(list)
    )"),
                ElementsAre("[]", "[5 4.94065645841247e-324, 5 -0.1]"));
}

TEST_P(Arrays, OfBooleanComeBack) {
    EXPECT_THAT(printed(R"(
        Dim list() As Boolean
        Print Listed(list)
        list.Append True
        list.Append False
        Print Listed(list)
    )"),
                ElementsAre("[]", "[11 True, 11 False]"));
}

TEST_P(Arrays, OfStringComeBack) {
    EXPECT_THAT(printed(R"(
        Dim list() As String
        Print Listed(list)
        list.Append "Grün"
        list.Append ""
        list.Append "😀"
        Print Listed(list)
        Dim texts() As String = Back(list)
        Print texts(2)
    )"),
                ElementsAre("[]", "[8 Grün, 8 , 8 😀]", "😀"));
}

TEST_P(Arrays, OfDateComeBack) {
    EXPECT_THAT(printed(R"(
        Dim list() As Date
        Print Listed(list)
        list.Append New Date(2000, 2, 29, 10, 20, 30)
        list.Append New Date(1904, 1, 1)
        Print Listed(list)
    )"),
                ElementsAre("[]", "[7 2000-02-29 10:20:30, 7 1904-01-01 00:00:00]"));
}

TEST_P(Arrays, OfObjectsComeBack) {
    EXPECT_THAT(printed(R"(
        Dim blocks() As MemoryBlock
        Print Listed(blocks)
        blocks.Append "abc"
        Dim results() As MemoryBlock = Back(blocks)
        Print results(0).StringValue(0, 3)
        Print results(0) Is blocks(0)
        Dim anything() As Object
        anything.Append New NSSizeZNT(3, 4)
        anything.Append New Date(2000, 2, 29)
        Dim things() As Variant = Back(anything)
        Print NSSizeZNT(things(0)).height
        Print things(1)
    )"),
                ElementsAre("[]", "abc", "False", "4", "2000-02-29 00:00:00"));
}

TEST_P(Arrays, OfVariantsKeepTheKindOfEach) {
    EXPECT_THAT(printed(R"(
        Dim list() As Variant
        Print Listed(list)
        Dim whole As Int32 = 7
        list.Append whole
        list.Append "seven"
        list.Append 0.5
        list.Append True
        list.Append New Date(2000, 2, 29)
        Print Listed(list)
    )"),
                ElementsAre("[]", "[2 7, 8 seven, 5 0.5, 11 True, 7 2000-02-29 00:00:00]"));
}

TEST_P(Arrays, ComeBackAsArraysOfVariants) {
    EXPECT_THAT(printed(R"(
        Dim list() As Int32
        Print Hex(VarType(list)) & " " & Hex(VarType(Back(list)))
        Print list Is Back(list)
    )"),
                ElementsAre("1002 1009", "False"));
}

TEST_P(Arrays, OfCurrencyAndOfColorHaveNothingInCocoa) {
    EXPECT_THAT(printed(R"(
        Dim amounts() As Currency
        Print Back(amounts) Is Nil
        amounts.Append 1.5
        Print Back(amounts) Is Nil
        Dim colours() As Color
        Print Back(colours) Is Nil
        colours.Append &cFF0000
        Print Back(colours) Is Nil
    )"),
                ElementsAre("True", "True", "True", "True"));
}

/// Cocoa's arrays hold no nil.
TEST_P(Arrays, WithNilRaise) {
    EXPECT_THAT(printed(R"(
        Dim dates() As Date
        dates.Append Nil
        Print Raised(dates)
        Dim values() As Variant
        values.Append Nil
        Print Raised(values)
        Dim blocks() As MemoryBlock
        blocks.Append New MemoryBlock(0)
        Print Raised(blocks)
        Function Raised(value As Variant) As String
          Try
            Return "came back " & VarType(Back(value))
          Catch e As RuntimeException
            Return Left(e.Message, 26)
          End Try
        End Function
    )"),
                ElementsAre("NSInvalidArgumentException", "NSInvalidArgumentException",
                            "NSInvalidArgumentException"));
}

INSTANTIATE_TEST_SUITE_P(Hosts, Arrays, testing::Values(2009.05, 2013.0, 2013.9, 2014.0));

} // namespace
