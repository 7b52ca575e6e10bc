#include "tests/host/language/run_program.h"

#include <new>

namespace {

struct Mistake {
    const char* name;
    const char* source;
    const char* error; ///< "line: class: message"
};

void PrintTo(const Mistake& mistake, std::ostream* stream) { *stream << mistake.source; }

std::string nameOf(const testing::TestParamInfo<Mistake>& info) { return info.param.name; }

class UncaughtExceptions : public testing::TestWithParam<Mistake> {};
class SyntaxErrors : public testing::TestWithParam<Mistake> {};

const Mistake exceptions[] = {
    {"IndexPastTheEnd", "Dim a(2) As Integer\nPrint a(3)",
     "2: OutOfBoundsException: The index is 3, but the array has the elements 0 to 2"},
    {"NegativeIndex", "Dim a(2) As Integer\na(-1) = 0",
     "2: OutOfBoundsException: The index is -1, but the array has the elements 0 to 2"},
    {"IndexOfAnEmptyArray", "Dim a() As Integer\n\nPrint a(0)",
     "3: OutOfBoundsException: The index is 0, but the array is empty"},
    {"MissingKey", "Dim d As New Dictionary\nPrint d.Value(\"a\")",
     "2: KeyNotFoundException: The Dictionary has no key \"a\"."},
    {"PopOfAnEmptyArray", "Dim a() As Integer\na.Remove 0",
     "2: OutOfBoundsException: The index is 0, but the array is empty"},
    {"InsertPastTheEnd", "Dim a(1) As Integer\na.Insert 3, 1",
     "2: OutOfBoundsException: The index to insert at is 3, but must be from 0 to 2"},
    {"RedimBelowNothing", "Dim a() As Integer\nRedim a(-2)",
     "2: OutOfBoundsException: An array's upper bound cannot be -2; -1 makes it empty"},
    {"RedimBeyondMeasure", "Dim a() As Integer\nRedim a(2000000000)",
     "2: OutOfMemoryException: An array cannot have the upper bound 2000000000; it can have "
     "67108864 elements"},
    {"DateFromOtherText", "Dim v As Variant = \"soon\"\nDim d As Date = v",
     "2: TypeMismatchException: Expected Date but found String"},
    {"ArrayFromOtherElements",
     "Dim v() As Variant = Array(\"1\", New Dictionary)\nDim s() As Integer = v",
     "2: TypeMismatchException: Expected Integer() but found Variant()"},
    {"NilArray", "Dim a() As Integer = Nil\nPrint UBound(a)",
     "2: NilObjectException: The array is Nil"},
    {"NilArrayInALoop", "Dim a() As Integer = Nil\nFor Each i As Integer In a\nNext",
     "2: NilObjectException: The array is Nil"},
    {"PropertyOfNil", "Dim f As FolderItem\nPrint f.Name",
     "2: NilObjectException: Name of Nil was read."},
    {"MethodOfNil", "Dim f As FolderItem\nf.Delete",
     "2: NilObjectException: Delete was called on Nil."},
    {"RaiseOfNil", "Dim e As RuntimeException\nRaise e",
     "2: NilObjectException: The exception to raise is Nil"},
    {"DivisionByZero", "Dim zero As Integer\nPrint 1 \\ zero",
     "2: RuntimeException: An integer was divided by zero"},
    {"VariantOfAnotherClass", "Dim v As Variant = New MemoryBlock(1)\nDim f As FolderItem = v",
     "2: TypeMismatchException: Expected FolderItem but found MemoryBlock"},
    {"VariantsThatDoNotAdd", "Dim v As Variant = New MemoryBlock(1)\nPrint v + 1",
     "2: TypeMismatchException: There is no MemoryBlock + Integer"},
    {"CastToAnotherClass", "Dim o As Object = New MemoryBlock(1)\nPrint FolderItem(o).Name",
     "2: IllegalCastException: MemoryBlock cannot be cast to FolderItem"},
    {"CharacterThatDoesNotExist", "Print Chr(-1)",
     "1: OutOfBoundsException: There is no character of code -1"},
    {"ExceptionOfTheProgram", "\nRaise New UnsupportedOperationException(\"not here\")",
     "2: UnsupportedOperationException: not here"},
    {"ExceptionInARoutine", "Fail\nSub Fail()\nDim a() As Integer\na.Remove 1\nEnd Sub",
     "4: OutOfBoundsException: The index is 1, but the array is empty"},
    {"LineAfterACall",
     "Nothing\nPrint 1 \\ Zero()\nSub Nothing()\nEnd Sub\n"
     "Function Zero() As Integer\nReturn 0\nEnd Function",
     "2: RuntimeException: An integer was divided by zero"},
    {"LineOfALoopsCondition",
     "Dim a(1) As Boolean\nDim i As Integer\nDo\ni = i + 1\n\n\n"
     "Loop Until a(i)\nSub x()\nEnd Sub",
     "3: OutOfBoundsException: The index is 2, but the array has the elements 0 to 1"},
    {"LineOfAnElseIf", "Dim a() As Boolean\nIf False Then\nElseIf a(0) Then\nEnd If",
     "3: OutOfBoundsException: The index is 0, but the array is empty"},
    {"LineOfACase", "Dim a() As Integer\nSelect Case 1\nCase a(0)\nEnd Select",
     "3: OutOfBoundsException: The index is 0, but the array is empty"},
    {"LineThroughAFinally", "Try\nRaise New IOException(\"x\")\nFinally\nPrint 1\nEnd Try",
     "2: IOException: x"},
    {"LineOfAnExceptionRaisedAgain", "Try\nRaise New IOException(\"x\")\nCatch e\nRaise e\nEnd Try",
     "4: IOException: x"},
    {"UnmatchedCatch", "Try\nRaise New IOException(\"x\")\nCatch e As NilObjectException\nEnd Try",
     "2: IOException: x"},
    {"EndlessRecursion", "Sub f()\nf\nEnd Sub\nf",
     "2: StackOverflowException: The calls are nested too deep"},
};

const Mistake syntax[] = {
    {"BrokenStatement", "Print 1\nIf x",
     "2: SyntaxError: Expected \"Then\" but found the end of the line"},
    {"UnknownName", "Print 1\nPrint nothing", "2: SyntaxError: There is nothing called nothing"},
    {"UnknownFunction", "Print f(1)", "1: SyntaxError: There is nothing called f"},
    {"UnknownType", "Dim a As Whatever", "1: SyntaxError: There is no type called Whatever"},
    {"UnknownClass", "Print New Whatever", "1: SyntaxError: There is no class called Whatever"},
    {"UnknownMember", "Dim f As FolderItem\nPrint f.Colour",
     "2: SyntaxError: FolderItem has no member called Colour"},
    {"UnknownArrayMember", "Dim a() As Integer\na.Shuffle",
     "2: SyntaxError: Integer() has no member called Shuffle"},
    {"SortOfObjects", "Dim a() As FolderItem\na.Sort",
     "2: SyntaxError: FolderItem() has no member called Sort"},
    {"MemberOfANumber", "Dim a As Integer\nPrint a.Name", "2: SyntaxError: Integer has no members"},
    {"MemberOfAVariant", "Dim a As Variant\nPrint a.Name",
     "2: SyntaxError: A Variant has no Name; cast it to the class that has it"},
    {"AssignedMemberOfAVariant", "Dim a As Variant\na.StringValue = \"x\"",
     "2: SyntaxError: Nothing of a Variant can be assigned to; cast it to a class first"},
    {"OrderOfObjects", "Print New Date < New Dictionary",
     "1: SyntaxError: There is no Date < Dictionary"},
    {"DateAsText", "Dim s As String = New Date", "1: SyntaxError: Expected String but found Date"},
    {"WrongKeyOfADictionary", "Dim d As New Dictionary\nPrint d.Key(\"a\")",
     "2: SyntaxError: Dictionary.Key does not take (String), but: Key(index As Integer) As "
     "Variant"},
    {"AssignedKeyOfADictionary", "Dim d As New Dictionary\nd.Key(0) = 1",
     "2: SyntaxError: Dictionary.Key cannot be assigned to"},
    {"ObjectMemberOfAClass", "Print FolderItem.Name",
     "1: SyntaxError: Name is a member of the objects of FolderItem, not of the class"},
    {"VariableBeforeItsDim", "x = 1\nDim x As Integer",
     "1: SyntaxError: There is nothing called x"},
    {"VariableOfAnotherBlock", "If True Then\nDim x As Integer\nEnd If\nPrint x",
     "4: SyntaxError: There is nothing called x"},
    {"VariableNamedInItsOwnDim", "Dim x As Integer = x",
     "1: SyntaxError: There is nothing called x"},
    {"VariableDeclaredTwice", "Dim x As Integer\nDim X As String",
     "2: SyntaxError: X is declared already, in line 1"},
    {"RoutineDefinedTwice", "Sub f(a As Integer)\nEnd Sub\nSub F(b As Integer)\nEnd Sub",
     "3: SyntaxError: F(b As Integer) is defined already"},
    {"TextForANumber", "Dim x As Integer = \"5\"",
     "1: SyntaxError: Expected Integer but found String"},
    {"NumberForText", "Dim x As String\nx = 5",
     "2: SyntaxError: Expected String but found Integer"},
    {"NilForANumber", "Dim x As Integer = Nil", "1: SyntaxError: Expected Integer but found Nil"},
    {"AnotherClass", "Dim f As FolderItem = New MemoryBlock(1)",
     "1: SyntaxError: Expected FolderItem but found MemoryBlock"},
    {"SuperclassForItsSubclass", "Dim e As New RuntimeException\nDim i As IOException = e",
     "2: SyntaxError: Expected IOException but found RuntimeException"},
    {"AddingTextAndNumber", "Print \"a\" + 1", "1: SyntaxError: There is no String + Integer"},
    {"ComparingTextAndNumber", "Print \"a\" < 1", "1: SyntaxError: There is no String < Integer"},
    {"NegatingText", "Print -\"a\"", "1: SyntaxError: There is no - String"},
    {"ConditionThatIsNone", "If 1 Then Print 1",
     "1: SyntaxError: A condition must be a Boolean, but this is Integer"},
    {"TooManyArguments", "Print Upper(\"a\", 1)",
     "1: SyntaxError: Upper does not take (String, Integer), but: Upper(source As String) As "
     "String"},
    {"WrongArgument", "Dim m As New MemoryBlock(1)\nPrint m.Byte(\"a\")",
     "2: SyntaxError: MemoryBlock.Byte does not take (String), but: Byte(offset As Integer) As "
     "Integer"},
    {"MissingArgument", "f\nSub f(a As Integer, b As String = \"x\")\nEnd Sub",
     "1: SyntaxError: f needs arguments: f(a As Integer, b As String = \"x\")"},
    {"AmbiguousOverloads",
     "f Nil\nSub f(a As FolderItem)\nEnd Sub\nSub f(a As MemoryBlock)\nEnd Sub",
     "1: SyntaxError: More than one f takes (Nil): f(a As FolderItem); f(a As MemoryBlock)"},
    {"ValueByReference", "f 1\nSub f(ByRef a As Integer)\nEnd Sub",
     "1: SyntaxError: The ByRef parameter a of f needs a variable of the type Integer"},
    {"OtherTypeByReference", "Dim d As Double\nf d\nSub f(ByRef a As Integer)\nEnd Sub",
     "2: SyntaxError: The ByRef parameter a of f needs a variable of the type Integer"},
    {"ReadOnlyProperty", "Dim f As FolderItem\nf.Exists = True",
     "2: SyntaxError: FolderItem.Exists is read-only"},
    {"AssignmentToAMethod", "Dim f As FolderItem\nf.Delete = True",
     "2: SyntaxError: FolderItem.Delete cannot be assigned to"},
    {"AssignmentToAConstant", "Const c = 1\nc = 2",
     "2: SyntaxError: A constant cannot be assigned to"},
    {"AssignmentToACall", "Len(\"a\") = 2",
     "1: SyntaxError: What a call returns cannot be assigned to"},
    {"ConstantThatVaries", "Const c = Microseconds",
     "1: SyntaxError: The value of c is not constant"},
    {"ValueAlone", "Dim x As Integer\nx", "2: SyntaxError: A value alone is no statement"},
    {"SubAsAValue", "Print f\nSub f()\nEnd Sub",
     "1: SyntaxError: A Sub was called where a value is needed"},
    {"ElementOfANumber", "Dim x As Integer\nPrint x(1)",
     "2: SyntaxError: Only arrays have elements, but this is Integer"},
    {"TwoIndexes", "Dim x() As Integer\nPrint x(1, 2)",
     "2: SyntaxError: An element of an array is named by one number"},
    {"ExitOutsideALoop", "Exit", "1: SyntaxError: Exit stands in no such loop"},
    {"ContinueOfAnotherLoop", "Do\nContinue For\nLoop",
     "2: SyntaxError: Continue stands in no such loop"},
    {"ExitAcrossARoutine", "Do\nf\nLoop\nSub f()\nExit Do\nEnd Sub",
     "5: SyntaxError: Exit stands in no such loop"},
    {"ValueFromASub", "Sub f()\nReturn 1\nEnd Sub", "2: SyntaxError: A Sub returns no value"},
    {"ValueFromTheProgram", "Return 1", "1: SyntaxError: The program itself returns no value"},
    {"CatchOfNoException", "Try\nCatch e As FolderItem\nEnd Try",
     "2: SyntaxError: FolderItem is no class of exceptions"},
    {"RaiseOfNoException", "Raise New MemoryBlock(1)",
     "1: SyntaxError: Raise needs an exception but found MemoryBlock"},
    {"PrintOfAnObject", "Dim f As FolderItem\nPrint f",
     "2: SyntaxError: Print cannot show FolderItem"},
    {"ForEachOverNoArray", "For Each x As Integer In 5\nNext",
     "1: SyntaxError: For Each needs an array but found Integer"},
    {"ForEachOfAnotherType", "For Each x As FolderItem In Split(\"a\")\nNext",
     "1: SyntaxError: The array holds String, but x is FolderItem"},
    {"ForWithoutAVariable", "For i = 1 To 2\nNext",
     "1: SyntaxError: There is no variable called i"},
    {"ForWithText", "For s As String = \"a\" To \"b\"\nNext",
     "1: SyntaxError: For counts with a number, but s is String"},
    {"CastOfANumber", "Print FolderItem(5).Name",
     "1: SyntaxError: Only objects can be cast to FolderItem, but this is Integer"},
    {"ClassAsAValue", "Print FolderItem",
     "1: SyntaxError: FolderItem is a class; FolderItem(object) casts an object to it"},
    {"NewOfWhatCannotBeMade", "Dim a As New Application",
     "1: SyntaxError: No program can make a new Application"},
    {"IsOfNumbers", "Print 1 Is 2", "1: SyntaxError: There is no Integer Is Integer"},
    {"IsAOfANumber", "Print 1 IsA FolderItem",
     "1: SyntaxError: IsA needs an object but found Integer"},
};

} // namespace

TEST_P(UncaughtExceptions, EndTheProgramAndNameTheLine) {
    const Ran ran = run(GetParam().source);
    EXPECT_EQ(ran.error, GetParam().error);
    EXPECT_EQ(ran.status, 1);
}

INSTANTIATE_TEST_SUITE_P(Language, UncaughtExceptions, testing::ValuesIn(exceptions), nameOf);

TEST_P(SyntaxErrors, AreFoundBeforeTheProgramRuns) {
    const Ran ran = run(GetParam().source);
    EXPECT_EQ(ran.error, GetParam().error);
    EXPECT_EQ(ran.status, 2);
    EXPECT_EQ(ran.output, "");
}

INSTANTIATE_TEST_SUITE_P(Language, SyntaxErrors, testing::ValuesIn(syntax), nameOf);

/// As when nothing is left for what the statement needs.
static std::string outputWhereLongLinesFindNoMemory(std::string_view source) {
    Host host{{.bare = true}};
    std::string output;
    host::language::RunOptions options;
    options.output = [&](std::string_view text) {
        if (text.size() > 6) throw std::bad_alloc();
        output += text;
    };
    const host::language::RunResult result = host::language::runProgram(source, options);
    return result.error ? output + result.error->text("") : output;
}

/// This takes a gigabyte.
TEST(ArraysOfTheLargestSize, TakeNoFurtherElement) {
    EXPECT_EQ(outputOf("Dim a(67108863) As Boolean\nFor i As Integer = 1 To 2\nTry\n"
                       "If i = 1 Then a.Append True\nIf i = 2 Then a.Insert 0, True\n"
                       "Catch e As OutOfMemoryException\nPrint e.Message\nEnd Try\nNext\n"
                       "Print UBound(a)\nCall a.Pop\na.Append True\nPrint a(UBound(a))"),
              "An array cannot have more than 67108864 elements\n"
              "An array cannot have more than 67108864 elements\n67108863\nTrue\n");
}

TEST(MemoryThatRanOut, IsAnExceptionThatAProgramCanCatch) {
    EXPECT_EQ(outputWhereLongLinesFindNoMemory("Try\nPrint \"too long\"\n"
                                               "Catch e As OutOfMemoryException\nPrint \"short\"\n"
                                               "Finally\nPrint \"end\"\nEnd Try"),
              "short\nend\n");
}

TEST(MemoryThatRanOut, InAHandlerStillRunsWhatComesFinally) {
    EXPECT_EQ(outputWhereLongLinesFindNoMemory("Try\nRaise New IOException\nCatch\n"
                                               "Print \"too long\"\nFinally\nPrint \"end\"\n"
                                               "End Try"),
              "end\n:4: OutOfMemoryException: There is no memory left");
}

TEST(MemoryThatRanOut, EndsAProgramThatDoesNotCatchIt) {
    EXPECT_EQ(outputWhereLongLinesFindNoMemory("Print \"too long\""),
              ":1: OutOfMemoryException: There is no memory left");
}
