/// The rbhost command as a user meets it.

#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class Command : public testing::Test {
protected:
    struct Result {
        int status;
        std::string output;
        std::string error;
    };

    Result rbhost(const std::string& arguments) {
        const std::string command =
            "cd '" + folder_.path() + "' && '" RBHOST "' " + arguments + " 2>error";
        std::FILE* const pipe = popen(command.c_str(), "r");
        Result result;
        std::array<char, 4096> buffer;
        while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe))
            result.output.append(buffer.data(), count);
        const int status = pclose(pipe);
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        result.error = folder_.content("error");
        return result;
    }

    /// Runs a program with a plug-in that registers nothing.
    Result run(const std::string& source, const std::string& arguments = "") {
        folder_.file("program.bas", source);
        return rbhost("--plugin '" SILENT_PART "' run program.bas " + arguments);
    }

    TemporaryFolder folder_;
};

} // namespace

TEST_F(Command, RunsAProgramWithItsArguments) {
    const Result result =
        run("For Each a As String In Arguments\nPrint a\nNext", "one 'two 3' --console");
    EXPECT_EQ(result.output, "one\ntwo 3\n--console\n");
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(Command, AnUncaughtExceptionEndsWithOneLineAndStatus1) {
    const Result result = run("Print 1\nDim f As FolderItem\nPrint f.Name\nPrint 2");
    EXPECT_EQ(result.output, "1\n");
    EXPECT_EQ(result.error, "program.bas:3: NilObjectException: Name of Nil was read.\n");
    EXPECT_EQ(result.status, 1);
}

TEST_F(Command, ASyntaxErrorEndsWithOneLineAndStatus2) {
    const Result result = run("Print 1\nPrint (2");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error,
              "program.bas:2: SyntaxError: Expected \")\" but found the end of the line\n");
    EXPECT_EQ(result.status, 2);
}

TEST_F(Command, QuitSetsTheStatus) {
    EXPECT_EQ(run("Print 1\nQuit 7\nPrint 2").status, 7);
    EXPECT_EQ(run("Quit").status, 0);
}

TEST_F(Command, StdErrIsStandardError) {
    const Result result = run("Print 1\nStdErr.WriteLine \"two\"\nStdErr.Write \"3\"");
    EXPECT_EQ(result.output, "1\n");
    EXPECT_EQ(result.error, "two\n3");
}

TEST_F(Command, AFileThatCannotBeReadIsNamed) {
    const Result missing = rbhost("run missing.bas");
    EXPECT_EQ(missing.error, "rbhost: cannot read missing.bas: No such file or directory\n");
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(rbhost("run .").error, "rbhost: . is a folder\n");
}

TEST_F(Command, APluginThatCannotBeLoadedIsNamed) {
    folder_.file("a.bas", "Print 1");
    const Result result = rbhost("--plugin ./none.so run a.bas");
    EXPECT_THAT(result.error, StartsWith("rbhost: "));
    EXPECT_THAT(result.error, HasSubstr("none.so"));
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 2);
}

TEST_F(Command, AReferenceThatAPluginKeepsIsReportedWithStatus3) {
    folder_.file("a.bas", "Print 1");
    const Result result = rbhost("--plugin '" LEAKY_PART "' run a.bas");
    EXPECT_EQ(result.output, "1\n");
    EXPECT_THAT(result.error, StartsWith("rbhost: "));
    EXPECT_THAT(result.error, HasSubstr("forgotten"));
    EXPECT_EQ(result.status, 3);
}

TEST_F(Command, WrongUseIsExplainedWithStatus2) {
    const Result result = rbhost("walk");
    EXPECT_EQ(result.error,
              "rbhost: there is no command called walk; rbhost --help tells how it is used\n");
    EXPECT_EQ(result.status, 2);
    const Result unknown = rbhost("--without-service NoSuchService list");
    EXPECT_THAT(unknown.error, HasSubstr("NoSuchService"));
    EXPECT_EQ(unknown.status, 2);
}

TEST_F(Command, HelpNamesEveryOption) {
    const Result result = rbhost("--help");
    EXPECT_EQ(result.status, 0);
    for (const char* const option : {"--plugin", "--host-version", "--console", "--without-base",
                                     "--without-service", "--system-version"})
        EXPECT_THAT(result.output, HasSubstr(option));
}

TEST_F(Command, ListShowsOneClassOfTheHost) {
    const Result result = rbhost("--plugin '" SILENT_PART "' list folderitem");
    EXPECT_THAT(result.output, StartsWith("Class FolderItem  [console-safe]\n"));
    EXPECT_THAT(result.output,
                HasSubstr("\n    Property Exists As Boolean  [read-only, console-safe]\n"));
    EXPECT_THAT(result.output,
                HasSubstr("\n    Function Child(name As String) As FolderItem  [console-safe]\n"));
    EXPECT_EQ(rbhost("--plugin '" SILENT_PART "' list").output, "");
    EXPECT_EQ(rbhost("--plugin '" SILENT_PART "' list Nothing").status, 2);
}
