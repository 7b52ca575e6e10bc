/// Objects live exactly as long as something refers to them. Probes write their names when they are
/// made (+) and destroyed (-).

#include "tests/host/language/run_program.h"

namespace {

struct ProbeState : host::State {
    std::string name;
};

class Lifetimes : public testing::Test {
protected:
    Lifetimes() {
        auto probe = std::make_unique<host::Class>("Probe", host_.runtime().findClass("Object"));
        probe->makeState = [] { return std::make_unique<ProbeState>(); };
        probe->addMethod("Constructor(name As String)",
                         [this](REALobjectStruct* self, std::span<host::Value> arguments) {
                             const std::string name = arguments[0].utf8();
                             host::stateOf<ProbeState>(self)->name = name;
                             if (name == "bad") host::raise("IOException", "no probe");
                             log_ += "+" + name + " ";
                             return host::Value();
                         });
        probe->addMethod("Self() As Probe", [](REALobjectStruct* self, std::span<host::Value>) {
            return host::Value(host::ObjectRef::retain(self));
        });
        probe->addMethod("Fail()", [](REALobjectStruct*, std::span<host::Value>) -> host::Value {
            host::raise("IOException", "failed");
        });
        probe->destructor = [this](REALobjectStruct* self) {
            log_ += "-" + host::stateOf<ProbeState>(self)->name + " ";
        };
        host_.runtime().addClass(std::move(probe));
    }

    /// What the probes wrote while the program ran; its output is put between.
    std::string logOf(std::string_view source) {
        host::language::RunOptions options;
        options.output = [this](std::string_view text) {
            log_ += std::string(text.substr(0, text.size() - 1)) + " ";
        };
        const host::language::RunResult result = host::language::runProgram(source, options);
        if (result.error) log_ += result.error->className;
        EXPECT_EQ(host_.instances("Probe"), 0u);
        return log_;
    }

    std::string log_;
    Host host_{{.bare = true}};
};

} // namespace

TEST_F(Lifetimes, AnObjectGoesWhenItsLastVariableTakesAnother) {
    EXPECT_EQ(logOf("Dim a As New Probe(\"a\")\nDim b As Probe = a\na = Nil\nPrint 1\n"
                    "b = New Probe(\"b\")\nPrint 2"),
              "+a 1 +b -a 2 -b ");
}

TEST_F(Lifetimes, AnObjectThatNobodyKeepsGoesAtOnce) {
    EXPECT_EQ(logOf("Print (New Probe(\"a\")).Self Is Nil\nPrint 1"), "+a -a False 1 ");
}

TEST_F(Lifetimes, VariablesOfABlockGoAtItsEnd) {
    EXPECT_EQ(logOf("If True Then\nDim a As New Probe(\"a\")\nPrint 1\nEnd If\nPrint 2"),
              "+a 1 -a 2 ");
}

TEST_F(Lifetimes, VariablesOfALoopGoWithEachRound) {
    EXPECT_EQ(logOf("For i As Integer = 1 To 2\nDim a As New Probe(Str(i))\nNext\nPrint 3"),
              "+1 -1 +2 -2 3 ");
}

TEST_F(Lifetimes, LeavingALoopEarlyLetsItsVariablesGo) {
    EXPECT_EQ(logOf("While True\nDim a As New Probe(\"a\")\nDo\nDim b As New Probe(\"b\")\n"
                    "Exit While\nLoop\nWend\nPrint 1"),
              "+a +b -b -a 1 ");
}

TEST_F(Lifetimes, VariablesOfARoutineGoWhenItReturns) {
    EXPECT_EQ(logOf("Print f\nFunction f() As Integer\nFor i As Integer = 1 To 3\n"
                    "Dim a As New Probe(\"a\")\nReturn 1\nNext\nEnd Function"),
              "+a -a 1 ");
}

TEST_F(Lifetimes, AReturnedObjectOutlivesTheRoutine) {
    EXPECT_EQ(logOf("Dim p As Probe = f\nPrint 1\nFunction f() As Probe\n"
                    "Dim a As New Probe(\"a\")\nReturn a\nEnd Function"),
              "+a 1 -a ");
}

TEST_F(Lifetimes, AnExceptionLetsTheVariablesGoThatItPasses) {
    EXPECT_EQ(logOf("Try\nf\nCatch e\nPrint e.Message\nEnd Try\nPrint 1\nSub f()\n"
                    "Dim a As New Probe(\"a\")\nDim list() As Probe\nlist.Append New Probe(\"b\")\n"
                    "a.Fail\nEnd Sub"),
              "+a +b -a -b failed 1 ");
}

TEST_F(Lifetimes, AnObjectWhoseConstructorFailsGoes) {
    EXPECT_EQ(logOf("Try\nDim a As New Probe(\"bad\")\nCatch e As IOException\nPrint 1\nEnd Try"),
              "-bad 1 ");
}

TEST_F(Lifetimes, AnUncaughtExceptionLetsEverythingGo) {
    EXPECT_EQ(logOf("Dim a As New Probe(\"a\")\nDim list(1) As Probe\nlist(1) = a\n"
                    "For Each p As Probe In list\nIf p <> Nil Then p.Fail\nNext"),
              "+a -a IOException");
}

TEST_F(Lifetimes, QuitLetsEverythingGoAndPassesFinally) {
    EXPECT_EQ(
        logOf("Dim a As New Probe(\"a\")\nTry\nf(New Probe(\"b\"))\nFinally\nPrint 1\nEnd Try\n"
              "Sub f(p As Probe)\nDim c As New Probe(\"c\")\nQuit\nEnd Sub"),
        "+a +b +c -b -c -a ");
}

TEST_F(Lifetimes, ArraysKeepWhatTheyHold) {
    EXPECT_EQ(
        logOf("Dim list() As Probe\nlist.Append New Probe(\"a\")\nlist.Append New Probe(\"b\")\n"
              "list.Remove 0\nPrint 1\nDim p As Probe = list.Pop\nPrint 2\nRedim list(-1)\n"
              "p = Nil\nPrint 3"),
        "+a +b -a 1 2 -b 3 ");
}

TEST_F(Lifetimes, AnArrayOfAnotherTypeHoldsTheSameObjects) {
    EXPECT_EQ(logOf("Dim all() As Variant\nall.Append New Probe(\"a\")\nall.Append Nil\nDim p() As "
                    "Probe = all\n"
                    "Redim all(-1)\nPrint 1\nPrint UBound(p)\np.Remove 0\nPrint 2"),
              "+a 1 1 -a 2 ");
}

TEST_F(Lifetimes, ACaughtExceptionGoesAtTheEndOfItsCatch) {
    EXPECT_EQ(
        logOf("Dim kept As RuntimeException\nFor i As Integer = 1 To 3\nTry\n"
              "Raise New IOException(Str(i))\nCatch e\nIf i = 2 Then kept = e\nEnd Try\nNext\n"
              "Print kept.Message"),
        "2 ");
    EXPECT_EQ(host_.instances("IOException"), 0u);
}

TEST_F(Lifetimes, AByRefArgumentGivesItsOldObjectBack) {
    EXPECT_EQ(logOf("Dim p As New Probe(\"a\")\nf p\nPrint 1\nSub f(ByRef q As Probe)\n"
                    "q = New Probe(\"b\")\nEnd Sub"),
              "+a +b -a 1 -b ");
}

TEST_F(Lifetimes, TheSubjectOfASelectGoesWithIt) {
    EXPECT_EQ(
        logOf("Select Case New Probe(\"a\")\nCase Nil\nCase Else\nPrint 1\nEnd Select\nPrint 2"),
        "+a 1 -a 2 ");
}

TEST_F(Lifetimes, AnExceptionInAFinallyReplacesTheFirst) {
    EXPECT_EQ(logOf("Try\nTry\nRaise New IOException(\"a\")\nFinally\n"
                    "Raise New KeyNotFoundException(\"b\")\nEnd Try\nCatch e\nPrint e.Message\n"
                    "End Try"),
              "b ");
    EXPECT_EQ(host_.instances("IOException"), 0u);
}
