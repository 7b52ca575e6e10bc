#include "tests/plugin/values/round_trips.h"

namespace {

class Scalars : public RoundTrips {};

TEST_F(Scalars, OfInt32KeepTheirExtremes) {
    EXPECT_THAT(printed(R"(
        Dim least As Int32 = -2147483648
        Dim most As Int32 = 2147483647
        Dim zero As Int32
        Show least
        Show most
        Show zero
    )"),
                ElementsAre("l 2 -2147483648", "l 2 2147483647", "l 2 0"));
}

TEST_F(Scalars, OfInt64KeepTheirExtremes) {
    EXPECT_THAT(printed(R"(
        Dim least As Int64 = -9223372036854775807
        Dim most As Int64 = 9223372036854775807
        Show least - 1
        Show most
    )"),
                ElementsAre("q 3 -9223372036854775808", "q 3 9223372036854775807"));
}

TEST_F(Scalars, OfTheHostsOwnIntegerKeepTheirExtremesInEachWordSize) {
    const Lines lines = printed(R"(
        Dim most As Integer = 9223372036854775807
        If LenB(Str(most)) < 19 Then most = 2147483647
        Show most
        Show -1 - most
    )");
    if (sizeof(REALword) == 8)
        EXPECT_THAT(lines, ElementsAre("q 3 9223372036854775807", "q 3 -9223372036854775808"));
    else
        EXPECT_THAT(lines, ElementsAre("l 2 2147483647", "l 2 -2147483648"));
}

/// There is no kind of their own for them: Int64 holds them.
TEST_F(Scalars, OfUInt32ComeBackAsInt64) {
    EXPECT_THAT(printed(R"(
        Dim most As UInt32 = 4294967295
        Show most
    )"),
                ElementsAre("q 3 4294967295"));
}

/// What is too large for Int64 keeps its bits, not its sign.
TEST_F(Scalars, OfUInt64ComeBackAsTheInt64OfTheSameBits) {
    EXPECT_THAT(printed(R"(
        Dim number As UInt64 = 9223372036854775807
        Show number
        number = number + 1
        Show number
        number = 18446744073709551615
        Show number
    )"),
                ElementsAre("q 3 9223372036854775807", "q 3 -9223372036854775808", "q 3 -1"));
}

/// Comparisons are exact where the printed digits are not.
TEST_F(Scalars, OfSingleKeepEveryBit) {
    EXPECT_THAT(printed(R"(
        For Each number As Single In Array(3.4028234663852886e38, 1.1754943508222875e-38, _
                                           1.401298464324817e-45, 0.1)
          Show number
          Dim result As Single = Back(number)
          Print result = number And result <> 0
        Next
        Dim nothing As Single
        Show -nothing
    )"),
                ElementsAre("f 4 3.402823e+38", "True", "f 4 1.175494e-38", "True",
                            "f 4 1.401298e-45", "True", "f 4 0.1", "True", "f 4 -0"));
}

TEST_F(Scalars, OfDoubleKeepEveryBit) {
    EXPECT_THAT(printed(R"(
        For Each number As Double In Array(1.7976931348623157e308, 2.2250738585072014e-308, _
                                           4.9406564584124654e-324, 0.1)
          Show number
          Dim result As Double = Back(number)
          Print result = number And result <> 0
        Next
        Dim nothing As Double
        Show -nothing
    )"),
                ElementsAre("d 5 1.79769313486232e+308", "True", "d 5 2.2250738585072e-308", "True",
                            "d 5 4.94065645841247e-324", "True", "d 5 0.1", "True", "d 5 -0"));
}

TEST_F(Scalars, ThatAreNoFiniteNumbersStaySo) {
    EXPECT_THAT(printed(R"(
        Dim infinite As Double = 1.7976931348623157e308
        infinite = infinite * 10
        Show infinite
        Show -infinite
        Show infinite - infinite
        Dim single As Single = infinite
        Show single
        Show -single
        Show single - single
    )"),
                ElementsAre("d 5 INF", "d 5 -INF", "d 5 NaN", "f 4 INF", "f 4 -INF", "f 4 NaN"));
}

TEST_F(Scalars, OfBooleanComeBackAsBooleans) {
    EXPECT_THAT(printed(R"(
        Show True
        Show False
        Between True, "NSNumber"
    )"),
                ElementsAre("c 11 True", "c 11 False", "True"));
}

/// Doubles hold no more than sixteen digits of them.
TEST_F(Scalars, OfCurrencyComeBackAsDoubles) {
    EXPECT_THAT(printed(R"(
        Dim largest As Currency = 922337203685477.5807
        Dim least As Currency = -0.0001
        Show largest
        Show least
        Dim result As Double = Back(largest)
        Print result = 922337203685477.625
    )"),
                ElementsAre("d 5 922337203685478", "d 5 -0.0001", "True"));
}

TEST_F(Scalars, OfColorComeBackAsTheColoursInteger) {
    EXPECT_THAT(printed(R"(
        Show &c000000
        Show &cFF8001
        Show &cFFFFFF
    )"),
                ElementsAre("l 2 0", "l 2 16744449", "l 2 16777215"));
}

TEST_F(Scalars, OfNothingAreNothing) {
    EXPECT_THAT(printed(R"(
        Dim nothing As Variant
        Print Back(nothing) Is Nil
        Print Back(Nil) Is Nil
    )"),
                ElementsAre("True", "True"));
}

/// A pointer is none of the kinds that Cocoa has something for.
TEST_F(Scalars, OfPtrAreNothingInCocoa) {
    EXPECT_THAT(printed(R"(
        Dim address As Ptr
        Dim value As Variant = address
        Print VarType(value)
        Print Back(value) Is Nil
    )"),
                ElementsAre("26", "True"));
}

/// The value of every kind of NSNumber whose bits are all ones, but for the first.
TEST_F(Scalars, OfCocoaBecomeTheKindOfTheirType) {
    EXPECT_THAT(printed(R"(
        For Each type As String In Array("C", "s", "S", "i", "I", "l", "L", "q")
          Dim value As Variant = ValueProbe.ValueOfNumber(type, -1)
          Print type & " " & VarType(value) & " " & value
        Next
    )"),
                ElementsAre("C 2 255", "s 2 -1", "S 2 65535", "i 2 -1", "I 3 4294967295", "l 2 -1",
                            "L 3 4294967295", "q 3 -1"));
}

TEST_F(Scalars, OfCocoaThatAreUnsigned64BitNumbersKeepTheLow32BitsOnPurpose) {
    EXPECT_THAT(printed(R"(
        Print ValueProbe.ValueOfNumber("Q", 5000000000)
        Print ValueProbe.ValueOfNumber("Q", 4294967295)
        Print ValueProbe.ValueOfNumber("Q", -1)
    )"),
                ElementsAre("705032704", "4294967295", "4294967295"));
}

TEST_F(Scalars, OfCocoaThatAreCharsAreTakenForBooleansOnPurpose) {
    EXPECT_THAT(printed(R"(
        For Each number As Int64 In Array(0, 1, 65)
          Dim value As Variant = ValueProbe.ValueOfNumber("c", number)
          Print VarType(value) & " " & value
        Next
    )"),
                ElementsAre("11 False", "11 True", "11 True"));
}

} // namespace
