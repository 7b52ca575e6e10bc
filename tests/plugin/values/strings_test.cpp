#include "tests/plugin/values/round_trips.h"

namespace {

/// Each of these versions converts text in a way of its own.
class Strings : public RoundTripsOnEachHost {};

TEST_P(Strings, ComeBackInUTF8) {
    EXPECT_THAT(printed(R"(
        Show "Grün 5 €"
        Between "Grün", "NSString"
        Dim result As String = Back("Grün 5 €")
        Print Hex(ValueProbe.EncodingOf(result))
    )"),
                ElementsAre("- 8 Grün 5 €", "True", "8000100"));
}

TEST_P(Strings, ThatAreEmptyStayText) {
    EXPECT_THAT(printed(R"(
        Show ""
        Between "", "NSString"
        Print Back("") Is Nil
    )"),
                ElementsAre("- 8 ", "True", "False"));
}

/// From 100 UTF-16 units on, another buffer is used; each unit here has three bytes in UTF-8.
TEST_P(Strings, OfEveryLengthComeBackWhole) {
    EXPECT_THAT(printed(R"(
        For Each length As Integer In Array(1, 99, 100, 100000)
          Dim parts(0) As String
          Redim parts(length)
          Dim text As String = Join(parts, "→")
          Dim result As String = Back(text)
          Print Len(result) & " " & LenB(result) & " " & (result = text)
        Next
    )"),
                ElementsAre("1 3 True", "99 297 True", "100 300 True", "100000 300000 True"));
}

TEST_P(Strings, WithCharactersBeyond16BitsComeBackWhole) {
    EXPECT_THAT(printed(R"(
        Show "a😀𝄞é"
        Dim text As String
        For i As Integer = 1 To 50
          text = text + "😀"
        Next
        Dim result As String = Back(text)
        Print Len(result) & " " & LenB(result)
        Dim units As MemoryBlock = StringProbe.UnitsOf(text)
        Print units.Size
    )"),
                ElementsAre("- 8 a😀𝄞é", "50 200", "200"));
}

TEST_P(Strings, KeepTheirFormOfCombiningCharacters) {
    EXPECT_THAT(printed(R"(
        Print LenB(Back("é"))
        Print LenB(Back("e" + Chr(&h301)))
    )"),
                ElementsAre("2", "3"));
}

/// Cocoa has the whole text, but C strings lead back to the host.
TEST_P(Strings, LoseWhatStandsBehindANullCharacter) {
    EXPECT_THAT(printed(R"(
        Dim result As String = Back("ab" + Chr(0) + "cd")
        Print Len(result) & " " & result
        Dim long As String = "Behind ninety-nine characters another buffer is used for all of the " + _
                             "text, with the same rule. Thus far"
        result = Back(long + Chr(0) + long)
        Print Len(long) > 99
        Print result = long
        result = Back(Chr(0) + "a")
        Print Len(result)
    )"),
                ElementsAre("2 ab", "True", "True", "0"));
}

TEST_P(Strings, InMacRomanComeBackInUTF8) {
    EXPECT_THAT(printed(R"(
        Dim bytes As New MemoryBlock(3)
        bytes.Byte(0) = &h8A
        bytes.Byte(1) = &hDB
        bytes.Byte(2) = &h41
        Show ValueProbe.Tagged(bytes, 0)
        Print ValueProbe.EncodingOf(Back(ValueProbe.Tagged(bytes, 0))) = &h08000100
    )"),
                ElementsAre("- 8 ä€A", "True"));
}

TEST_P(Strings, OfNoEncodingAreReadAsMacRoman) {
    EXPECT_THAT(printed(R"(
        Show ChrB(&h8A) + ChrB(&hDB) + ChrB(&h41)
        Show ValueProbe.Tagged("plain", &hFFFF)
    )"),
                ElementsAre("- 8 ä€A", "- 8 plain"));
}

/// A grinning face is D83D DE00 in UTF-16.
TEST_P(Strings, InUTF16ComeBackInUTF8) {
    EXPECT_THAT(printed(R"(
        Dim bytes As New MemoryBlock(6)
        bytes.Byte(0) = &hAC
        bytes.Byte(1) = &h20
        bytes.Byte(2) = &h3D
        bytes.Byte(3) = &hD8
        bytes.Byte(4) = &h00
        bytes.Byte(5) = &hDE
        Dim text As String = ValueProbe.Tagged(bytes, &h100)
        Show text
        Print LenB(Back(text))
    )"),
                ElementsAre("- 8 €😀", "7"));
}

TEST_P(Strings, ThatAreBrokenAreEmptyText) {
    EXPECT_THAT(printed(R"(
        Dim broken As String = ValueProbe.Tagged(ChrB(&h61) + ChrB(&hC3), &h08000100)
        Dim half As String = ValueProbe.Tagged(ChrB(&h3D) + ChrB(&hD8), &h100)
        Show broken
        Show half
    )"),
                ElementsAre("- 8 ", "- 8 "));
}

INSTANTIATE_TEST_SUITE_P(Hosts, Strings, testing::Values(2009.05, 2012.0, 2013.0, 2013.9, 2014.0));

/// On a host that makes no Cocoa strings the plug-in reads the bytes, in one of two ways.
class StringsRead : public RoundTrips, public testing::WithParamInterface<double> {
protected:
    StringsRead() { host({.version = GetParam(), .without = {"REALGetStringCFString"}}); }
};

TEST_P(StringsRead, FromTheirBytesComeBackInUTF8) {
    EXPECT_THAT(printed(R"(
        Show "Grün 😀"
        Show ValueProbe.Tagged(ChrB(&h8A), 0)
        Show ValueProbe.Tagged(ChrB(&h8A), &hFFFF)
        Show ValueProbe.Tagged(ChrB(&hAC) + ChrB(&h20) + ChrB(&h21), &h100)
        Show "ab" + Chr(0) + "cd"
        Show ""
    )"),
                ElementsAre("- 8 Grün 😀", "- 8 ä", "- 8 ä", "- 8 €", "- 8 ab", "- 8 "));
}

INSTANTIATE_TEST_SUITE_P(Hosts, StringsRead, testing::Values(2009.05, 2013.0, 2013.9));

} // namespace
