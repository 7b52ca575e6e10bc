#include "tests/plugin/values/round_trips.h"

namespace {

class Collections : public RoundTrips {};

TEST_F(Collections, KeepKeysAndValuesOfEveryKind) {
    EXPECT_THAT(printed(R"(
        Dim source As New Dictionary
        Dim whole As Int32 = 7
        source.Value("text") = whole
        source.Value(whole) = "seven"
        source.Value(0.5) = 0.25
        source.Value(True) = False
        source.Value(New Date(2000, 2, 29)) = New Date(1904, 1, 1)
        Between source, "NSMutableDictionary"
        Dim result As Dictionary = Back(source)
        Print result Is source
        Print result.Count
        For Each key As Variant In source.Keys
          Print VarType(result.Value(key)) & " " & result.Value(key)
        Next
    )"),
                ElementsAre("True", "False", "5", "2 7", "8 seven", "5 0.25", "11 False",
                            "7 1904-01-01 00:00:00"));
}

TEST_F(Collections, WithoutEntriesStayDictionaries) {
    EXPECT_THAT(printed(R"(
        Dim result As Dictionary = Back(New Dictionary)
        Print result.Count
    )"),
                ElementsAre("0"));
}

TEST_F(Collections, KeepEntriesWithoutAValue) {
    EXPECT_THAT(printed(R"(
        Dim source As New Dictionary
        Dim amounts() As Currency
        source.Value("nil") = Nil
        source.Value("no bytes") = New MemoryBlock(0)
        source.Value("nothing in Cocoa") = amounts
        Dim result As Dictionary = Back(source)
        Print result.Count
        For Each value As Variant In result.Values
          Print value Is Nil
        Next
    )"),
                ElementsAre("3", "True", "True", "True"));
}

/// NSNull stands for what is nothing in Cocoa, and NSNull is Nil.
TEST_F(Collections, KeepAKeyThatIsNothingInCocoaAsNil) {
    EXPECT_THAT(printed(R"(
        Dim source As New Dictionary
        source.Value(New MemoryBlock(0)) = "kept"
        Dim result As Dictionary = Back(source)
        Print result.Count
        Print result.Key(0) Is Nil
        Print result.Value(Nil)
    )"),
                ElementsAre("1", "True", "kept"));
}

TEST_F(Collections, LeaveOutEntriesUnderNil) {
    EXPECT_THAT(printed(R"(
        Dim source As New Dictionary
        source.Value(Nil) = "lost"
        source.Value("key") = "kept"
        Dim result As Dictionary = Back(source)
        Print result.Count
        Print result.Value("key")
    )"),
                ElementsAre("1", "kept"));
}

/// One and True are equal as numbers of Cocoa. The last value wins.
TEST_F(Collections, JoinKeysThatAreEqualInCocoa) {
    EXPECT_THAT(printed(R"(
        Dim source As New Dictionary
        source.Value(1) = "one"
        source.Value(True) = "true"
        Dim result As Dictionary = Back(source)
        Print result.Count
        Print result.Value(1)
    )"),
                ElementsAre("1", "true"));
}

/// The order of the keys is Cocoa's; what they lead to is the same.
TEST_F(Collections, OfManyEntriesComeBackWhole) {
    EXPECT_THAT(printed(R"(
        Dim source As New Dictionary
        For i As Integer = 1 To 1000
          source.Value("key " & i) = i
          source.Value(i) = "value " & i
        Next
        Dim result As Dictionary = Back(source)
        Dim different As Integer
        For i As Integer = 1 To 1000
          If result.Value("key " & i) <> i Or result.Value(i) <> "value " & i Then
            different = different + 1
          End If
        Next
        Print result.Count & " " & different
    )"),
                ElementsAre("2000 0"));
}

TEST_F(Collections, WithinEachOtherComeBackFrom100Levels) {
    EXPECT_THAT(printed(R"(
        Dim level As Variant = "innermost"
        For i As Integer = 1 To 50
          Dim list() As Variant = Array(i, level)
          Dim outer As New Dictionary
          outer.Value("number") = i
          outer.Value("list") = list
          level = outer
        Next
        Dim sum, levels As Integer
        level = Back(level)
        While level IsA Dictionary
          Dim list() As Variant = Dictionary(level).Value("list")
          sum = sum + Dictionary(level).Value("number") + list(0)
          levels = levels + 2
          level = list(1)
        Wend
        Print levels & " " & sum & " " & level
    )"),
                ElementsAre("100 2550 innermost"));
}

/// The inner ones are converted in the midst of the outer one, as a key and as values.
TEST_F(Collections, KeepDictionariesApartThatAreKeysOfEachOther) {
    EXPECT_THAT(printed(R"(
        Dim inner As New Dictionary
        inner.Value("a") = 1
        inner.Value("b") = 2
        Dim source As New Dictionary
        source.Value("before") = "first"
        source.Value(inner) = inner
        source.Value("after") = inner
        Dim result As Dictionary = Back(source)
        Print result.Count & " " & result.Value("before")
        For Each key As Variant In result.Keys
          If key IsA Dictionary Then
            Print Dictionary(key).Value("a") & " " & Dictionary(result.Value(key)).Value("b")
          End If
        Next
        Print Dictionary(result.Value("after")).Count
    )"),
                ElementsAre("3 first", "1 2", "2"));
}

/// They come back as two, since Cocoa's collections know no host object.
TEST_F(Collections, AreCopiedAtEveryPlace) {
    EXPECT_THAT(printed(R"(
        Dim inner As New Dictionary
        Dim list() As Dictionary = Array(inner, inner)
        Dim result() As Variant = Back(list)
        Print result(0) Is result(1)
    )"),
                ElementsAre("False"));
}

TEST_F(Collections, OfSetsAndArraysOfCocoaAreArraysOfVariants) {
    EXPECT_THAT(printed(R"(
        Dim value As Variant = ValueProbe.ValueOfNested(3, True)
        Dim outer() As Variant = value
        Dim middle() As Variant = outer(0)
        Dim innermost() As Variant = middle(0)
        Print Hex(VarType(value)) & " " & UBound(outer) & UBound(middle) & UBound(innermost)
    )"),
                ElementsAre("1009 00-1"));
}

/// What holds itself has no end either.
class EndlessCollections : public RoundTrips {
protected:
    static constexpr const char* refused =
        "RuntimeException NSInvalidArgumentException: Collections are nested more than 1000 "
        "levels deep";

    /// The lines of a program that has these routines too:
    ///
    ///     Dictionaries(levels), Arrays(levels) As Variant   as many within each other
    ///     Outcome(value) As String                          of a round trip
    Lines outcomesOf(const std::string& program) {
        return printed(program + R"(
        Function Dictionaries(levels As Integer) As Variant
          Dim value As Variant = "innermost"
          For i As Integer = 1 To levels
            Dim outer As New Dictionary
            outer.Value("inner") = value
            value = outer
          Next
          Return value
        End Function
        Function Arrays(levels As Integer) As Variant
          Dim value As Variant = "innermost"
          For i As Integer = 1 To levels
            Dim outer() As Variant
            outer.Append value
            value = outer
          Next
          Return value
        End Function
        Function Outcome(value As Variant) As String
          Try
            Return "came back as " & Hex(VarType(Back(value)))
          Catch e As RuntimeException
            Return "RuntimeException " + e.Message
          End Try
        End Function
        )");
    }
};

TEST_F(EndlessCollections, OfTheHostRaiseBeyond1000Levels) {
    EXPECT_THAT(outcomesOf(R"(
        Print Outcome(Dictionaries(1000))
        Print Outcome(Dictionaries(1001))
        Print Outcome(Arrays(1000))
        Print Outcome(Arrays(1001))
        Print Outcome(Dictionaries(100000))
        Print Outcome(Dictionaries(1000))
    )"),
                ElementsAre("came back as 9", refused, "came back as 1009", refused, refused,
                            "came back as 9"));
}

TEST_F(EndlessCollections, OfTheHostThatHoldThemselvesRaise) {
    EXPECT_THAT(outcomesOf(R"(
        Dim itself As New Dictionary
        itself.Value("self") = itself
        Print Outcome(itself)
        itself.Clear
        itself.Value(itself) = 1
        Print Outcome(itself)
        itself.Clear
        Dim list() As Variant
        list.Append 1
        list.Append list
        Print Outcome(list)
        itself.Value("list") = list
        list(1) = itself
        Print Outcome(itself)
        Redim list(-1)
        Print Outcome(itself)
    )"),
                ElementsAre(refused, refused, refused, refused, "came back as 9"));
}

TEST_F(EndlessCollections, OfCocoaRaiseBeyond1000Levels) {
    EXPECT_THAT(printed(R"(
        Print Hex(VarType(ValueProbe.ValueOfNested(1000, True)))
        Print Outcome(1001, True)
        Print Hex(VarType(ValueProbe.ValueOfNested(1000, False)))
        Print Outcome(1001, False)
        Try
          Dim value As Variant = ValueProbe.ValueOfEndless
        Catch e As RuntimeException
          Print "RuntimeException " + e.Message
        End Try
        Function Outcome(levels As Integer, areArrays As Boolean) As String
          Try
            Dim value As Variant = ValueProbe.ValueOfNested(levels, areArrays)
          Catch e As RuntimeException
            Return "RuntimeException " + e.Message
          End Try
        End Function
    )"),
                ElementsAre("1009", refused, "9", refused, refused));
}

} // namespace
