#include "host/services/services.h"
#include "tests/plugin/values/round_trips.h"

namespace {

/// How much work conversions take, told by what they ask of the host.
class Growth : public RoundTrips {
protected:
    struct Asked {
        int calls = 0;
        int lookups = 0;
    };

    /// Of the host's services, while the program of Arguments(0) entries runs.
    Asked askedBy(std::string_view program, int entries) {
        const Asked before = askedSoFar();
        printed(program, {std::to_string(entries)});
        const Asked after = askedSoFar();
        return {after.calls - before.calls, after.lookups - before.lookups};
    }

    /// The same number of calls for each entry, and nothing looked up again.
    void expectSteadyGrowth(std::string_view program) {
        askedBy(program, 1);
        const Asked first = askedBy(program, 100);
        const Asked second = askedBy(program, 200);
        const Asked tenth = askedBy(program, 1000);
        const int forEachHundred = second.calls - first.calls;
        EXPECT_GE(forEachHundred, 100);
        EXPECT_EQ(tenth.calls - first.calls, 9 * forEachHundred);
        EXPECT_EQ(second.lookups, 0);
        EXPECT_EQ(tenth.lookups, 0);
    }

private:
    Asked askedSoFar() {
        Asked asked;
        for (const std::string_view service : host::Services::offered(2013.9)) {
            asked.calls += host().calls(service);
            asked.lookups += host().lookups(service);
        }
        return asked;
    }
};

TEST_F(Growth, OfDictionariesIsSteady) {
    expectSteadyGrowth(R"(
        Dim source As New Dictionary
        For i As Integer = 1 To Val(Arguments(0))
          source.Value("key " & i) = i
        Next
        Dim result As Dictionary = Back(source)
    )");
}

/// The methods of the outer dictionary are loaded anew behind each inner one.
TEST_F(Growth, OfDictionariesOfDictionariesIsSteady) {
    expectSteadyGrowth(R"(
        Dim source As New Dictionary
        For i As Integer = 1 To Val(Arguments(0))
          Dim inner As New Dictionary
          inner.Value("text") = "value " & i
          source.Value(i) = inner
        Next
        Dim result As Dictionary = Back(source)
    )");
}

TEST_F(Growth, OfArraysOfStringsIsSteady) {
    expectSteadyGrowth(R"(
        Dim source() As String
        For i As Integer = 1 To Val(Arguments(0))
          source.Append "text " & i
        Next
        Dim result() As Variant = Back(source)
    )");
}

TEST_F(Growth, OfArraysOfObjectsIsSteady) {
    expectSteadyGrowth(R"(
        Dim source() As Object
        For i As Integer = 1 To Val(Arguments(0))
          source.Append New NSSizeZNT(i, i)
          source.Append New RuntimeException("own")
          source.Append New Date(2000, 1, i)
        Next
        Dim result() As Variant = Back(source)
    )");
}

} // namespace
