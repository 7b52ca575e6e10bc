/// Runs every program beside this file and compares what it prints with the text of the same name.

#include "tests/host/language/run_program.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::filesystem::path folder() {
    return std::filesystem::path(PROJECT_SOURCE_DIR) / "tests/host/language/programs";
}

std::string contents(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> names() {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder()))
        if (entry.path().extension() == ".bas") found.push_back(entry.path().stem());
    std::sort(found.begin(), found.end());
    return found;
}

class Programs : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(Programs, PrintsWhatItShould) {
    const Ran ran = run(contents(folder() / (GetParam() + ".bas")));
    EXPECT_EQ(ran.error, "");
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.output, contents(folder() / (GetParam() + ".txt")));
}

INSTANTIATE_TEST_SUITE_P(Language, Programs, testing::ValuesIn(names()),
                         [](const auto& info) { return info.param; });
