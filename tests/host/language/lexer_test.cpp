#include "host/language/lexer.h"
#include "host/language/source_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace host::language;
using testing::ElementsAre;

namespace {

std::vector<std::string> textsOf(std::string_view source) {
    std::vector<std::string> texts;
    for (const Token& token : tokenize(source)) {
        if (token.kind == TokenKind::EndOfFile) continue;
        texts.push_back(token.kind == TokenKind::EndOfLine ? "|" : token.text);
    }
    return texts;
}

Token only(std::string_view source) {
    const std::vector<Token> tokens = tokenize(source);
    EXPECT_EQ(tokens.size(), 3u) << "one token, the end of the line and of the file";
    return tokens.front();
}

std::string errorOf(std::string_view source) {
    try {
        tokenize(source);
        return "no error";
    } catch (const SourceError& error) {
        return std::to_string(error.line) + ": " + error.what();
    }
}

} // namespace

TEST(Lexer, SplitsAStatementIntoItsWordsAndSymbols) {
    EXPECT_THAT(textsOf("a.b(1)<=c<>d&\"x\""),
                ElementsAre("a", ".", "b", "(", "1", ")", "<=", "c", "<>", "d", "&", "x", "|"));
}

TEST(Lexer, KnowsKeywordsInAnyCase) {
    EXPECT_EQ(only("DOWNTO").keyword, Keyword::DownTo);
    EXPECT_EQ(only("isa").keyword, Keyword::IsA);
    EXPECT_EQ(only("isab").keyword, Keyword::None);
}

TEST(Lexer, TakesAKeywordBehindADotForAName) {
    const std::vector<Token> tokens = tokenize("a.Next");
    EXPECT_EQ(tokens[2].text, "Next");
    EXPECT_EQ(tokens[2].keyword, Keyword::None);
}

TEST(Lexer, ReadsWholeNumbersInEveryBase) {
    EXPECT_EQ(only("12").integer, 12u);
    EXPECT_EQ(only("18446744073709551615").integer, 18446744073709551615u);
    EXPECT_EQ(only("&hFF").integer, 255u);
    EXPECT_EQ(only("&Hffffffffffffffff").integer, 0xFFFFFFFFFFFFFFFFu);
    EXPECT_EQ(only("&b101").integer, 5u);
}

TEST(Lexer, ReadsFractionsAndExponents) {
    EXPECT_DOUBLE_EQ(only("1.5").number, 1.5);
    EXPECT_DOUBLE_EQ(only(".25").number, 0.25);
    EXPECT_DOUBLE_EQ(only("1e3").number, 1000);
    EXPECT_DOUBLE_EQ(only("2.5E-2").number, 0.025);
    EXPECT_EQ(only("1e3").kind, TokenKind::Number);
}

TEST(Lexer, ReadsColours) {
    const Token colour = only("&c102030");
    EXPECT_EQ(colour.kind, TokenKind::Colour);
    EXPECT_EQ(colour.integer, 0x102030u);
}

TEST(Lexer, TakesAnAmpersandBeforeANameForTheJoinOperator) {
    EXPECT_THAT(textsOf("a&b"), ElementsAre("a", "&", "b", "|"));
    EXPECT_THAT(textsOf("a&hello"), ElementsAre("a", "&", "hello", "|"));
    EXPECT_THAT(textsOf("a&cat"), ElementsAre("a", "&", "cat", "|"));
    EXPECT_THAT(textsOf("a&b102"), ElementsAre("a", "&", "b102", "|"));
}

TEST(Lexer, ReadsDoubledQuotesInAStringAsOne) {
    EXPECT_EQ(only("\"say \"\"hi\"\"\"").text, "say \"hi\"");
    EXPECT_EQ(only("\"\"").text, "");
    EXPECT_EQ(only("\"it's // no comment\"").text, "it's // no comment");
}

TEST(Lexer, SkipsTheThreeKindsOfComment) {
    EXPECT_THAT(textsOf("a ' x\nb // y\nRem z \"\nc"), ElementsAre("a", "|", "b", "|", "c", "|"));
    EXPECT_THAT(textsOf("remainder"), ElementsAre("remainder", "|"));
}

TEST(Lexer, GoesOnBehindAContinuedLineAndStillCountsIt) {
    const std::vector<Token> tokens = tokenize("a _\n+ _ ' why\r\nb\nc");
    EXPECT_THAT(textsOf("a _\n+ _ ' why\r\nb\nc"), ElementsAre("a", "+", "b", "|", "c", "|"));
    EXPECT_EQ(tokens[2].line, 3);
    EXPECT_EQ(tokens[4].line, 4);
}

TEST(Lexer, CountsEveryKindOfLineEnd) {
    const std::vector<Token> tokens = tokenize("a\r\rb\r\nc\nd");
    EXPECT_EQ(tokens[2].text, "b");
    EXPECT_EQ(tokens[2].line, 3);
    EXPECT_EQ(tokens[6].line, 5);
}

TEST(Lexer, IgnoresAByteOrderMark) {
    EXPECT_THAT(textsOf("\xEF\xBB\xBFprint"), ElementsAre("print", "|"));
}

TEST(Lexer, NamesWhatIsWrongAndItsLine) {
    EXPECT_EQ(errorOf("a\n\"open"), "2: The string has no closing quote");
    EXPECT_EQ(errorOf("a = 12abc"), "1: \"12abc\" is neither a number nor a name");
    EXPECT_EQ(errorOf("18446744073709551616"), "1: The number 18446744073709551616 is too large");
    EXPECT_EQ(errorOf("1e999"), "1: The number 1e999 is too large or too small");
    EXPECT_EQ(errorOf("a $ b"), "1: The character \"$\" has no meaning here");
    EXPECT_EQ(errorOf(std::string_view("a\0b", 3)),
              "1: The text holds a control character of code 0");
}
