/// Programs with threads. What they print is told in the order of their turns. Where that matters
/// threads are not started in a loop, whose rounds may end a turn on a slow machine.

#include "tests/host/language/run_program.h"

#include <chrono>

namespace {

/// Subs that the programs share.
constexpr std::string_view subs = R"(
Sub PrintThrice(sender As Thread)
  For i As Integer = 1 To 3
    Print sender.Tag & i
    App.YieldToNextThread
  Next
End Sub
Sub YieldForever()
  While True
    App.YieldToNextThread
  Wend
End Sub
Sub Nothing()
End Sub
)";

Ran runWithSubs(const std::string& source) { return run(source + std::string(subs)); }

/// The output, or the error when there was one.
std::string printed(const std::string& source) {
    const Ran ran = runWithSubs(source);
    return ran.error.empty() ? ran.output : ran.error;
}

} // namespace

TEST(Threads, TakeTurnsInTheOrderInWhichTheyStarted) {
    EXPECT_EQ(printed("Start \"a\"\nStart \"b\"\nStart \"c\"\nPrint \"main\"\n"
                      "App.YieldToNextThread\nPrint \"again\"\n"
                      "Sub Start(name As String)\nDim t As New Thread(AddressOf PrintThrice)\n"
                      "t.Tag = name\nt.Run\nEnd Sub\n"),
              "main\na1\nb1\nc1\nagain\na2\nb2\nc2\na3\nb3\nc3\n");
}

TEST(Threads, StartWhenItIsTheirTurn) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf PrintThrice)\nt.Run\nPrint t.State\n"
                      "Print 1\n"),
              "0\n1\n1\n2\n3\n");
}

TEST(Threads, LetTheProgramGoOnUntilAllHaveEnded) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf Outer)\nt.Run\nPrint \"main\"\n"
                      "Sub Outer()\nDim t As New Thread(AddressOf Inner)\nt.Run\n"
                      "Print \"outer\"\nEnd Sub\n"
                      "Sub Inner()\nApp.SleepCurrentThread(5)\nPrint \"inner\"\nEnd Sub\n"),
              "main\nouter\ninner\n");
}

TEST(Threads, LetLoopsThatDoNotYieldGiveOthersATurn) {
    EXPECT_EQ(printed("Dim isDone As Boolean\nDim t As New Thread(AddressOf Finish)\nt.Run\n"
                      "While Not isDone\nWend\nPrint \"seen\"\n"
                      "Sub Finish()\nisDone = True\nEnd Sub\n"),
              "seen\n");
}

TEST(Threads, KeepTheirOwnVariablesAndShareTheProgramsOwn) {
    EXPECT_EQ(printed("Dim total, ended As Integer\nFor i As Integer = 1 To 50\n"
                      "Dim t As New Thread(AddressOf Add)\nt.Tag = i\nt.Run\nNext\n"
                      "While ended < 50\nApp.YieldToNextThread\nWend\nPrint total\n"
                      "Sub Add(sender As Thread)\nDim own As Integer\n"
                      "For i As Integer = 1 To 20\nown = own + sender.Tag.IntegerValue\n"
                      "App.YieldToNextThread\nNext\ntotal = total + own\nended = ended + 1\n"
                      "End Sub\n"),
              std::to_string(20 * 50 * 51 / 2) + "\n");
}

TEST(Threads, MayYieldDeepInNestedCalls) {
    EXPECT_EQ(printed("For i As Integer = 1 To 3\nDim t As New Thread(AddressOf Count)\n"
                      "t.Tag = i\nt.Run\nNext\n"
                      "Sub Count(sender As Thread)\n"
                      "Print sender.Tag & \": \" & Depth(sender.Tag.IntegerValue * 100)\nEnd Sub\n"
                      "Function Depth(n As Integer) As Integer\nIf n = 0 Then Return 0\n"
                      "App.YieldToNextThread\nReturn Depth(n - 1) + 1\nEnd Function\n"),
              "1: 100\n2: 200\n3: 300\n");
}

TEST(Threads, SleepAsLongAsTheyAreTold) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(printed("For Each time As Integer In Array(60, 30, 0, -5)\n"
                      "Dim t As New Thread(AddressOf Wait)\nt.Tag = time\nt.Run\nNext\n"
                      "App.SleepCurrentThread(90)\nPrint \"main\"\n"
                      "Sub Wait(sender As Thread)\nApp.SleepCurrentThread(sender.Tag)\n"
                      "Print sender.Tag\nEnd Sub\n"),
              "0\n-5\n30\n60\nmain\n");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(90));
}

TEST(Threads, AreSuspendedUntilTheyAreResumed) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf PrintThrice)\nt.Tag = \"t\"\nt.Run\n"
                      "App.YieldToNextThread\nt.Suspend\nPrint t.State = Thread.Suspended\n"
                      "App.YieldToNextThread\nPrint \"main\"\nt.Resume\n"
                      "Print t.State = Thread.Running\nApp.YieldToNextThread\nPrint \"end\"\n"),
              "t1\nTrue\nmain\nTrue\nt2\nend\nt3\n");
}

TEST(Threads, MaySuspendThemselves) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf Pause)\nt.Run\nApp.YieldToNextThread\n"
                      "Print 2\nt.Resume\nApp.YieldToNextThread\nPrint 4\n"
                      "Sub Pause(sender As Thread)\nPrint 1\nsender.Suspend\nPrint 3\nEnd Sub\n"),
              "1\n2\n3\n4\n");
}

TEST(Threads, ThatNobodyWillResumeDoNotKeepTheProgram) {
    EXPECT_EQ(printed("For i As Integer = 1 To 2\nDim t As New Thread(AddressOf Pause)\nt.Run\n"
                      "Next\nSub Pause(sender As Thread)\nsender.Suspend\nPrint \"no\"\nEnd Sub\n"),
              "");
}

TEST(Threads, AreWokenByResume) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf Wait)\nt.Run\nApp.YieldToNextThread\n"
                      "Print t.State = Thread.Sleeping\nt.Resume\nApp.YieldToNextThread\n"
                      "Print t.State = Thread.NotRunning\n"
                      "Sub Wait()\nApp.SleepCurrentThread(1000000)\nPrint \"awake\"\nEnd Sub\n"),
              "True\nawake\nTrue\n");
}

TEST(Threads, CanBePutToSleepByOthers) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf PrintThrice)\nt.Tag = \"t\"\nt.Run\n"
                      "t.Sleep(20)\nApp.YieldToNextThread\nPrint t.State = Thread.Sleeping\n"),
              "True\nt1\nt2\nt3\n");
}

TEST(Threads, EndWhenTheyAreKilled) {
    EXPECT_EQ(printed("Dim sleeping As New Thread(AddressOf Wait)\nsleeping.Run\n"
                      "Dim yielding As New Thread(AddressOf YieldForever)\nyielding.Run\n"
                      "Dim fresh As New Thread(AddressOf PrintThrice)\n"
                      "Dim suspended As New Thread(AddressOf PrintThrice)\nsuspended.Run\n"
                      "suspended.Suspend\nApp.YieldToNextThread\nfresh.Run\n"
                      "For Each t As Thread In Array(sleeping, yielding, fresh, suspended)\n"
                      "t.Kill\nNext\nApp.YieldToNextThread\n"
                      "For Each t As Thread In Array(sleeping, yielding, fresh, suspended)\n"
                      "Print t.State = Thread.NotRunning\nNext\n"
                      "Sub Wait()\nTry\nApp.SleepCurrentThread(1000000)\nPrint \"no\"\n"
                      "Catch\nPrint \"no\"\nFinally\nPrint \"no\"\nEnd Try\nEnd Sub\n"),
              "True\nTrue\nTrue\nTrue\n");
}

TEST(Threads, MayKillThemselves) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf Leave)\nt.Run\nApp.YieldToNextThread\n"
                      "Print t.State = Thread.NotRunning\n"
                      "Sub Leave(sender As Thread)\nsender.Kill\nPrint \"no\"\nEnd Sub\n"),
              "True\n");
}

TEST(Threads, ThatDoNotRunIgnoreWhatIsForThoseThatDo) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf Nothing)\nt.Kill\nt.Suspend\nt.Resume\n"
                      "t.Sleep 5\nPrint t.State = Thread.NotRunning\n"),
              "True\n");
}

TEST(Threads, CanRunAgainWhenTheyHaveEnded) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf PrintThrice)\nt.Run\nTry\nt.Run\n"
                      "Catch e As ThreadAlreadyRunningException\nPrint e.Message\nEnd Try\n"
                      "While t.State <> Thread.NotRunning\nApp.YieldToNextThread\nWend\nt.Run\n"),
              "The Thread runs already.\n1\n2\n3\n1\n2\n3\n");
}

TEST(Threads, NeedASubToRun) {
    EXPECT_EQ(printed("Dim t As New Thread(Nil)\nt.Run\n"),
              "2: NilObjectException: The Thread has no Sub to run.");
}

TEST(Threads, KnowWhichOfThemIsAtWork) {
    EXPECT_EQ(printed("Print App.CurrentThread Is Nil\nDim t As New Thread(AddressOf Tell)\n"
                      "t.Run\nSub Tell(sender As Thread)\nPrint App.CurrentThread Is sender\n"
                      "End Sub\n"),
              "True\nTrue\n");
}

TEST(Threads, HaveAPriorityWithinBounds) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf Nothing)\nPrint t.Priority\n"
                      "For Each p As Integer In Array(8, 0, 1000)\nt.Priority = p\n"
                      "Print t.Priority\nNext\n"),
              "5\n8\n1\n100\n");
}

TEST(Threads, CatchTheirOwnExceptions) {
    EXPECT_EQ(printed("Dim a As New Thread(AddressOf Fail)\na.Tag = 1\na.Run\n"
                      "Dim b As New Thread(AddressOf Fail)\nb.Tag = 2\nb.Run\n"
                      "Sub Fail(sender As Thread)\nTry\nApp.YieldToNextThread\n"
                      "Raise New IOException(sender.Tag)\nCatch e As IOException\n"
                      "App.YieldToNextThread\nPrint e.Message\nFinally\nApp.YieldToNextThread\n"
                      "Print \"finally \" & sender.Tag\nEnd Try\nEnd Sub\n"),
              "1\n2\nfinally 1\nfinally 2\n");
}

TEST(Threads, WaitForTheirTurnsBehindThoseThatWaitedLonger) {
    EXPECT_EQ(printed("Dim a As New Thread(AddressOf Pause)\na.Tag = \"a\"\na.Run\n"
                      "App.YieldToNextThread\n"
                      "Dim b As New Thread(AddressOf PrintThrice)\nb.Tag = \"b\"\nb.Run\n"
                      "a.Resume\nApp.YieldToNextThread\nPrint \"main\"\n"
                      "Sub Pause(sender As Thread)\nsender.Suspend\nPrint \"resumed\"\nEnd Sub\n"),
              "b1\nresumed\nmain\nb2\nb3\n");
}

TEST(Threads, EndTheProgramWithAnExceptionThatTheyDoNotCatch) {
    const Ran ran = runWithSubs("Dim t As New Thread(AddressOf Fail)\nt.Run\n"
                                "Dim u As New Thread(AddressOf YieldForever)\nu.Run\nTry\n"
                                "App.YieldToNextThread\nPrint \"no\"\nFinally\nPrint \"no\"\n"
                                "End Try\nSub Fail()\nPrint \"yes\"\n\n"
                                "Raise New IOException(\"lost\")\nEnd Sub\n");
    EXPECT_EQ(ran.output, "yes\n");
    EXPECT_EQ(ran.error, "14: IOException: lost");
    EXPECT_EQ(ran.status, 1);
}

TEST(Threads, TellOnlyTheFirstOfManyExceptions) {
    EXPECT_EQ(printed("For i As Integer = 1 To 3\nDim t As New Thread(AddressOf Fail)\n"
                      "t.Tag = i\nt.Run\nNext\nApp.YieldToNextThread\n"
                      "Sub Fail(sender As Thread)\nRaise New IOException(sender.Tag)\nEnd Sub\n"),
              "8: IOException: 1");
}

TEST(Threads, EndTheProgramWithQuit) {
    const Ran ran = runWithSubs("Dim t As New Thread(AddressOf Leave)\nt.Run\nYieldForever\n"
                                "Sub Leave()\nPrint 1\nQuit 7\nPrint 2\nEnd Sub\n");
    EXPECT_EQ(ran.output, "1\n");
    EXPECT_EQ(ran.error, "");
    EXPECT_EQ(ran.status, 7);
}

TEST(Threads, EndWithTheProgramThatQuitsOrFails) {
    const std::string start = "For i As Integer = 1 To 4\n"
                              "Dim t As New Thread(AddressOf YieldForever)\nt.Run\n"
                              "If i = 2 Then t.Suspend\nIf i = 3 Then t.Sleep 1000000\n"
                              "If i <> 4 Then App.YieldToNextThread\nNext\n";
    EXPECT_EQ(runWithSubs(start + "Quit 3\n").status, 3);
    EXPECT_EQ(printed(start + "Raise New IOException(\"main\")\n"), "8: IOException: main");
}

TEST(Threads, MayNestTheirCallsUntilTheirStackIsFull) {
    EXPECT_EQ(printed("For i As Integer = 1 To 3\nDim t As New Thread(AddressOf Overflow)\n"
                      "t.Run\nNext\nSub Overflow()\nTry\nPrint Endless(1)\n"
                      "Catch e As StackOverflowException\nPrint \"full\"\nEnd Try\nEnd Sub\n"
                      "Function Endless(n As Integer) As Integer\nReturn Endless(n + 1) + 1\n"
                      "End Function\n"),
              "full\nfull\nfull\n");
}

TEST(Threads, ShareArraysAndDictionaries) {
    EXPECT_EQ(printed("Dim list() As Integer = Array(1, 2, 3)\nDim d As New Dictionary\n"
                      "d.Value(\"a\") = list\nDim t As New Thread(AddressOf Change)\nt.Run\n"
                      "For Each n As Integer In list\nPrint n\nApp.YieldToNextThread\nNext\n"
                      "For i As Integer = 0 To d.Count - 1\nPrint d.Key(i)\nNext\n"
                      "Sub Change()\nlist.Insert 0, 9\nlist.Append 4\nApp.YieldToNextThread\n"
                      "Redim list(3)\nd.Value(\"b\") = 1\nd.Remove \"a\"\nd.Value(\"c\") = 2\n"
                      "End Sub\n"),
              "1\n1\n2\n3\nb\nc\n");
}

TEST(Threads, WriteADictionaryAtOnce) {
    EXPECT_EQ(printed("Dim d As New Dictionary\nDim ended As Integer\n"
                      "For i As Integer = 0 To 9\nDim t As New Thread(AddressOf Fill)\n"
                      "t.Tag = i\nt.Run\nNext\nWhile ended < 10\nApp.YieldToNextThread\nWend\n"
                      "Print d.Count\nPrint d.Value(0) & \" \" & d.Value(999)\n"
                      "Sub Fill(sender As Thread)\nFor i As Integer = 0 To 99\n"
                      "d.Value(sender.Tag.IntegerValue * 100 + i) = i\n"
                      "If i Mod 10 = sender.Tag Then App.YieldToNextThread\nNext\n"
                      "ended = ended + 1\nEnd Sub\n"),
              "1000\n0 99\n");
}

TEST(ThreadReferences, AreThoseOfAnyObject) {
    Host host{{.bare = true}};
    const Ran ran = runInHost("Dim t As New Thread(AddressOf Work)\nt.Tag = New Dictionary\n"
                              "t.Run\nt = Nil\nApp.YieldToNextThread\nPrint \"main\"\n"
                              "Sub Work(sender As Thread)\nDim own As New Dictionary\n"
                              "own.Value(1) = sender.Tag\nPrint VarType(own.Value(1))\nEnd Sub\n");
    EXPECT_EQ(ran.output, "9\nmain\n");
    for (const char* const type : {"Thread", "Delegate", "Dictionary"})
        EXPECT_EQ(host.instances(type), 0u) << type;
}

TEST(ThreadReferences, ComeBackFromThreadsThatTheProgramEnds) {
    Host host{{.bare = true}};
    const Ran ran = runInHost("For i As Integer = 1 To 5\nDim t As New Thread(AddressOf Work)\n"
                              "t.Run\nNext\nApp.YieldToNextThread\nQuit\n"
                              "Sub Work(sender As Thread)\nDim own As New Dictionary\n"
                              "own.Value(sender) = sender\nsender.Tag = New MemoryBlock(10)\n"
                              "While True\nDim inner As New MemoryBlock(5)\n"
                              "App.SleepCurrentThread(1)\nWend\nEnd Sub\n");
    EXPECT_EQ(ran.error, "");
    for (const char* const type : {"Thread", "Dictionary", "MemoryBlock"})
        EXPECT_EQ(host.instances(type), 0u) << type;
}

TEST(AddressOf, NeedsASubThatAThreadCanRun) {
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf Missing)\n"),
              "1: SyntaxError: There is no Sub called Missing");
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf f)\nFunction f() As Integer\nEnd Function\n"),
              "1: SyntaxError: AddressOf needs a Sub without parameters, or with one that is a "
              "Thread");
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf f)\nSub f(n As Integer)\nEnd Sub\n"),
              "1: SyntaxError: AddressOf needs a Sub without parameters, or with one that is a "
              "Thread");
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf f)\nSub f()\nEnd Sub\nSub f(t As Thread)\n"
                      "End Sub\n"),
              "1: SyntaxError: AddressOf cannot choose: there are two Subs f");
    EXPECT_EQ(printed("Dim t As New Thread(AddressOf 5)\n"),
              "1: SyntaxError: Expected the name of a Sub after AddressOf but found \"5\"");
}

TEST(AddressOf, ChoosesTheSubThatFits) {
    EXPECT_EQ(printed("Dim d As Delegate = AddressOf f\nDim t As New Thread(d)\nt.Run\n"
                      "Sub f(n As Integer)\nPrint \"no\"\nEnd Sub\n"
                      "Sub f(t As Thread)\nPrint \"yes\"\nEnd Sub\n"),
              "yes\n");
}
