/// Programs that work with files, arguments and time.

#include "support/temporary_folder.h"
#include "tests/host/language/run_program.h"

TEST(Files, AProgramWritesReadsAndDeletes) {
    const TemporaryFolder folder;
    folder.file("a.txt", "abc");
    const Ran ran = run("Dim folder As FolderItem = GetFolderItem(Arguments(0))\n"
                        "Dim a As FolderItem = folder.Child(\"a.txt\")\n"
                        "Print a.Name & a.Exists & a.Length\n"
                        "Dim text As String = a.ReadAll\n"
                        "Dim b As FolderItem = folder.Child(\"b.txt\")\n"
                        "b.WriteAll(text + \"def\")\n"
                        "Print folder.Count\n"
                        "Print b.Parent.NativePath = folder.NativePath\n"
                        "a.Delete\n"
                        "Print a.Exists\n"
                        "Try\n"
                        "a.ReadAll.Byte(0) = 1\n"
                        "Catch e As IOException\n"
                        "Print \"gone\"\n"
                        "End Try\n",
                        {folder.path()});
    EXPECT_EQ(ran.error, "");
    EXPECT_EQ(ran.output, "a.txtTrue3\n2\nTrue\nFalse\ngone\n");
    EXPECT_EQ(folder.content("b.txt"), "abcdef");
}

TEST(Files, StdErrTakesWhatIsWrittenToIt) {
    const Ran ran = run("StdErr.WriteLine \"a\"\nStdErr.Write(\"b\")\nStdErr.WriteLine");
    EXPECT_EQ(ran.errorOutput, "a\nb\n");
    EXPECT_EQ(ran.output, "");
}

TEST(Files, TimeGoesForwardAndRandomNumbersStayInRange) {
    EXPECT_EQ(outputOf("Dim m As Double = Microseconds\nDim t As Integer = Ticks\n"
                       "For i As Integer = 1 To 1000\nDim r As Double = Rnd\n"
                       "If r < 0 Or r >= 1 Then Print r\nNext\n"
                       "Print Microseconds > m And Ticks >= t"),
              "True\n");
}

TEST(Files, AProgramCanBeRunAgain) {
    Host host{{.bare = true}};
    host::language::ProgramError error;
    {
        const auto program =
            host::language::Program::compile("Dim n As Integer\nn = n + 1\nQuit n", error);
        ASSERT_TRUE(program);
        EXPECT_EQ(program->run().status, 1);
        EXPECT_EQ(program->run().status, 1);
    }
}
