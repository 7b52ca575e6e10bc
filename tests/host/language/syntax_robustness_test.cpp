#include "host/language/parser.h"
#include "host/language/source_error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace host::language;

namespace {

constexpr std::string_view sample = R"(
Const Limit = 10 ' a comment
Dim a, b As Integer, list(-1) As String
Dim image As New NSImageZNT(100, &h50)
Function Twice(ByRef x As Double, Optional y As String = "say ""hi""") As Double
  If y = "" And Not (x < 2) Then Return x * 2 _
    + 1
  Select Case x
  Case 1, 2 To 5, Is > 7
    Return -x ^ 2
  Case Else
    Exit Function
  End Select
End Function
For i As Integer = Limit DownTo 0 Step 2
  Do Until image Is Nil Or a > &b101
    list.Append Str(i) & Twice(a)
    If i Mod 2 = 0 Then Continue For Else Exit Do
  Loop
Next
For Each s As String In list
  While image IsA NSImageZNT
    image.Value("k", 1)(2).Next = &c102030
  Wend
Next
Try
  Redim list(5)
  Raise New IOException
Catch e As IOException
  Print e.Message
Finally
  Print
End Try
)";

/// Whatever the text, the answer is a tree or an error with a line inside the text.
void parseAnything(const std::string& source) {
    try {
        parse(source);
    } catch (const SourceError& error) {
        const auto lines = 1 + std::count_if(source.begin(), source.end(),
                                             [](char c) { return c == '\n' || c == '\r'; });
        EXPECT_GE(error.line, 1);
        EXPECT_LE(error.line, lines);
        EXPECT_STRNE(error.what(), "");
    }
}

} // namespace

TEST(SyntaxRobustness, TheSampleItselfIsAProgram) { EXPECT_EQ(parse(sample).routines.size(), 1u); }

TEST(SyntaxRobustness, EveryPrefixOfAProgramGivesATreeOrAnError) {
    for (std::size_t length = 0; length < sample.size(); ++length)
        parseAnything(std::string(sample.substr(0, length)));
}

TEST(SyntaxRobustness, EveryProgramWithOneByteChangedGivesATreeOrAnError) {
    for (std::size_t at = 0; at < sample.size(); ++at) {
        for (const char replacement : {'(', '"', '&', '_', '\n', '\0', '\xFF'}) {
            std::string changed(sample);
            changed[at] = replacement;
            parseAnything(changed);
        }
    }
}

TEST(SyntaxRobustness, RandomSoupsOfTokensGiveATreeOrAnError) {
    static const char* const pieces[] = {
        "If",     "Then",     "Else",   "ElseIf", "End",  "For",   "Each",     "In",
        "To",     "DownTo",   "Next",   "Do",     "Loop", "Until", "While",    "Wend",
        "Dim",    "As",       "New",    "Sub",    "Try",  "Catch", "Function", "Finally",
        "Return", "Print",    "Select", "Case",   "Is",   "IsA",   "Not",      "And",
        "Redim",  "Const",    "Exit",   "x",      "y",    "1",     "2.5",      "\"s\"",
        "(",      ")",        ",",      ".",      "=",    "<>",    "+",        "-",
        "&",      "^",        "&hFF",   "\n",     "\n",   "\n",    "Raise",    "Optional",
        "ByRef",  "&c112233", "Nil",    "_\n",
    };
    std::mt19937 random(20100501);
    std::uniform_int_distribution<std::size_t> piece(0, std::size(pieces) - 1);
    for (int round = 0; round < 20000; ++round) {
        std::string soup;
        for (int i = 0; i < 30; ++i)
            soup += std::string(pieces[piece(random)]) + " ";
        parseAnything(soup);
    }
}

TEST(SyntaxRobustness, RandomBytesGiveATreeOrAnError) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes;
        for (int i = 0; i < 40; ++i)
            bytes += static_cast<char>(byte(random));
        parseAnything(bytes);
    }
}
