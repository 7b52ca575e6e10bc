/// Whatever the text, the compiler gives a program or an error, and never more than that.

#include "tests/host/language/run_program.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

std::vector<std::string> programs() {
    std::vector<std::string> sources;
    const auto folder = std::filesystem::path(PROJECT_SOURCE_DIR) / "tests/host/language/programs";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".bas") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        sources.emplace_back(std::istreambuf_iterator<char>(file),
                             std::istreambuf_iterator<char>{});
    }
    return sources;
}

/// The words and signs of a text, so that a change breaks its sense and not only its spelling.
std::vector<std::string> wordsOf(const std::string& source) {
    std::vector<std::string> words;
    for (const char c : source) {
        const bool isWord = std::isalnum(static_cast<unsigned char>(c)) || c == '_';
        const bool goesOn = isWord && !words.empty() &&
                            (std::isalnum(static_cast<unsigned char>(words.back().back())) ||
                             words.back().back() == '_');
        if (goesOn)
            words.back() += c;
        else
            words.emplace_back(1, c);
    }
    return words;
}

void compileAnything(const std::vector<std::string>& words) {
    std::string source;
    for (const std::string& word : words)
        source += word;
    host::language::ProgramError error;
    const auto program = host::language::Program::compile(source, error);
    if (!program) {
        EXPECT_GE(error.line, 1) << source;
        EXPECT_NE(error.message, "") << source;
    }
}

} // namespace

TEST(CompileRobustness, ProgramsThatLackAWordGiveAProgramOrAnError) {
    const Host host{{.bare = true}};
    for (const std::string& source : programs()) {
        const std::vector<std::string> words = wordsOf(source);
        for (std::size_t i = 0; i < words.size(); ++i) {
            std::vector<std::string> changed = words;
            changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(i));
            compileAnything(changed);
        }
    }
}

TEST(CompileRobustness, ProgramsWithWordsSwappedGiveAProgramOrAnError) {
    const Host host{{.bare = true}};
    std::mt19937 random(20130301);
    for (const std::string& source : programs()) {
        const std::vector<std::string> words = wordsOf(source);
        std::uniform_int_distribution<std::size_t> any(0, words.size() - 1);
        for (int round = 0; round < 500; ++round) {
            std::vector<std::string> changed = words;
            for (int swaps = 0; swaps < 2; ++swaps)
                std::swap(changed[any(random)], changed[any(random)]);
            compileAnything(changed);
        }
    }
}

TEST(CompileRobustness, AnExpressionOfManyTermsRuns) {
    std::string sum = "Dim one As Integer = 1\nPrint one";
    for (int i = 1; i < 990; ++i)
        sum += " + one";
    EXPECT_EQ(outputOf(sum), "990\n");
}

TEST(CompileRobustness, BlocksNestedToTheLimitRun) {
    std::string source = "Dim n As Integer\n";
    for (int i = 0; i < 240; ++i)
        source += "If True Then\n";
    source += "n = " + std::string(9, '(') + "1" + std::string(9, ')') + "\n";
    for (int i = 0; i < 240; ++i)
        source += "End If\n";
    EXPECT_EQ(outputOf(source + "Print n"), "1\n");
}
