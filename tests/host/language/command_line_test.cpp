#include "host/language/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace host::language;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

CommandLine parsed(const std::vector<std::string>& arguments) {
    std::string error;
    const std::optional<CommandLine> line = parseCommandLine(arguments, error);
    EXPECT_TRUE(line) << error;
    return line.value_or(CommandLine{});
}

std::string errorOf(const std::vector<std::string>& arguments) {
    std::string error = "no error";
    parseCommandLine(arguments, error);
    return error;
}

} // namespace

TEST(CommandLine, RunTakesAFileAndItsArguments) {
    const CommandLine line = parsed({"run", "a.bas", "x", "--console", "run"});
    EXPECT_EQ(line.command, CommandLine::Command::Run);
    EXPECT_EQ(line.file, "a.bas");
    EXPECT_THAT(line.arguments, ElementsAre("x", "--console", "run"));
    EXPECT_FALSE(line.options.console);
}

TEST(CommandLine, ListTakesAtMostOneClass) {
    EXPECT_EQ(parsed({"list"}).className, "");
    EXPECT_EQ(parsed({"list", "NSImageZNT"}).className, "NSImageZNT");
    EXPECT_EQ(errorOf({"list", "A", "B"}), "list takes one class, but B is a second");
}

TEST(CommandLine, OptionsStandBeforeOrBehindTheCommand) {
    const CommandLine line =
        parsed({"--console", "--plugin", "a.so", "--plugin", "b.so", "--without-base", "run",
                "--host-version", "2009.05", "--without-service", "REALLockObject",
                "--without-service", "newPicture", "--system-version", "10.6.8", "a.bas"});
    EXPECT_TRUE(line.options.console);
    EXPECT_TRUE(line.options.withoutBase);
    EXPECT_DOUBLE_EQ(line.options.version, 2009.05);
    EXPECT_THAT(line.plugins, ElementsAre("a.so", "b.so"));
    EXPECT_THAT(line.options.without, ElementsAre("REALLockObject", "newPicture"));
    EXPECT_EQ(line.options.systemVersion, "10.6.8");
    EXPECT_EQ(line.file, "a.bas");
}

TEST(CommandLine, WithoutOptionsTheHostIsTheDefaultOne) {
    const CommandLine line = parsed({"run", "a.bas"});
    EXPECT_DOUBLE_EQ(line.options.version, 2013.9);
    EXPECT_THAT(line.plugins, IsEmpty());
    EXPECT_THAT(line.options.without, IsEmpty());
}

TEST(CommandLine, HelpNeedsNothingElse) {
    EXPECT_EQ(parsed({"--help"}).command, CommandLine::Command::Help);
    EXPECT_EQ(parsed({"run", "--help"}).command, CommandLine::Command::Help);
}

TEST(CommandLine, SaysWhatItDoesNotUnderstand) {
    EXPECT_EQ(errorOf({}), "no command was given");
    EXPECT_EQ(errorOf({"--console"}), "no command was given");
    EXPECT_EQ(errorOf({"walk"}), "there is no command called walk");
    EXPECT_EQ(errorOf({"run"}), "run needs the file of a program");
    EXPECT_EQ(errorOf({"--fast", "run"}), "there is no option called --fast");
    EXPECT_EQ(errorOf({"run", "--plugin"}), "--plugin needs a value");
    EXPECT_EQ(errorOf({"--host-version", "new", "list"}),
              "--host-version needs a number such as 2013.03, but new is none");
    EXPECT_EQ(errorOf({"--host-version", "inf", "list"}),
              "--host-version needs a number such as 2013.03, but inf is none");
    for (const std::string version : {"", "ten", "10.", ".6", "10..6", "10.6.8.1"})
        EXPECT_EQ(errorOf({"--system-version", version, "list"}),
                  "--system-version needs a version such as 10.6.8, but " + version + " is none");
}
