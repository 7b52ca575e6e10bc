#include "host/language/parser.h"
#include "host/language/source_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace host::language;

namespace {

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

std::string show(const ExpressionPointer& expression);

std::string show(const std::vector<ExpressionPointer>& list) {
    std::string text;
    for (const ExpressionPointer& entry : list)
        text += (text.empty() ? "" : ", ") + show(entry);
    return "(" + text + ")";
}

/// The tree with every operation in brackets.
std::string show(const ExpressionPointer& expression) {
    if (!expression) return "nothing";
    static const char* const unary[] = {"-", "+", "not "};
    static const char* const binary[] = {"^",  "*", "/",  "\\", "mod", "+",  "-",   "&",  "=",
                                         "<>", "<", "<=", ">",  ">=",  "is", "and", "or", "xor"};
    return std::visit(
        Overloaded{
            [](const NilLiteral&) -> std::string { return "nil"; },
            [](const BooleanLiteral& node) -> std::string { return node.value ? "true" : "false"; },
            [](const IntegerLiteral& node) { return std::to_string(node.value); },
            [](const NumberLiteral& node) { return std::to_string(node.value); },
            [](const StringLiteral& node) { return "'" + node.value + "'"; },
            [](const ColourLiteral& node) { return "#" + std::to_string(node.value); },
            [](const NameExpression& node) { return node.name; },
            [](const MemberExpression& node) { return show(node.object) + "." + node.name; },
            [](const CallExpression& node) { return show(node.callee) + show(node.arguments); },
            [](const AddressOfExpression& e) { return "AddressOf " + e.routine; },
            [](const NewExpression& node) {
                return "new " + node.type.name + show(node.arguments);
            },
            [](const UnaryExpression& node) {
                return "[" + std::string(unary[static_cast<int>(node.operation)]) +
                       show(node.operand) + "]";
            },
            [](const BinaryExpression& node) {
                return "[" + show(node.left) + " " + binary[static_cast<int>(node.operation)] +
                       " " + show(node.right) + "]";
            },
            [](const IsAExpression& node) {
                return "[" + show(node.operand) + " isa " + node.type.name + "]";
            },
        },
        expression->node);
}

std::string expression(const std::string& text) {
    const SyntaxTree tree = parse("x = " + text);
    return show(std::get<AssignStatement>(tree.main.at(0).node).value);
}

template <typename Node>
Node first(std::string_view source) {
    SyntaxTree tree = parse(source);
    return std::move(std::get<Node>(tree.main.at(0).node));
}

std::string errorOf(std::string_view source) {
    try {
        parse(source);
        return "no error";
    } catch (const SourceError& error) {
        return std::to_string(error.line) + ": " + error.what();
    }
}

} // namespace

TEST(Parser, BindsOperatorsInTheirOrder) {
    EXPECT_EQ(expression("1 + 2 * 3 ^ 2"), "[1 + [2 * [3 ^ 2]]]");
    EXPECT_EQ(expression("-2 ^ 2"), "[-[2 ^ 2]]");
    EXPECT_EQ(expression("2 ^ -1 * 3"), "[[2 ^ [-1]] * 3]");
    EXPECT_EQ(expression("10 - 4 - 3"), "[[10 - 4] - 3]");
    EXPECT_EQ(expression("7 \\ 2 mod 3 / 4"), "[[[7 \\ 2] mod 3] / 4]");
    EXPECT_EQ(expression("\"n\" & 1 + 2"), "['n' & [1 + 2]]");
    EXPECT_EQ(expression("a & b = c"), "[[a & b] = c]");
    EXPECT_EQ(expression("a < b and c >= d or e"), "[[[a < b] and [c >= d]] or e]");
    EXPECT_EQ(expression("a xor b or c"), "[[a xor b] or c]");
}

TEST(Parser, DeniesAWholeComparison) {
    EXPECT_EQ(expression("not a is nil and b"), "[[not [a is nil]] and b]");
    EXPECT_EQ(expression("not a isa C"), "[not [a isa C]]");
    EXPECT_EQ(expression("a = not b"), "[a = [not b]]");
}

TEST(Parser, ReadsMembersCallsAndElementsFromLeftToRight) {
    EXPECT_EQ(expression("a.b(1, 2)(3).c"), "a.b(1, 2)(3).c");
    EXPECT_EQ(expression("New Point(1, 2)"), "new Point(1, 2)");
    EXPECT_EQ(expression("f()"), "f()");
    EXPECT_EQ(expression("m.Next.End"), "m.Next.End");
}

TEST(Parser, ReadsEachVariableOfADimWithItsOwnType) {
    const DimStatement dim = first<DimStatement>("Dim a, b As Integer, c(3) As String = x");
    ASSERT_EQ(dim.declarations.size(), 3u);
    EXPECT_EQ(dim.declarations[0].type.name, "Integer");
    EXPECT_EQ(dim.declarations[1].name, "b");
    EXPECT_TRUE(dim.declarations[2].type.isArray);
    EXPECT_EQ(show(dim.declarations[2].upperBound), "3");
    EXPECT_EQ(show(dim.declarations[2].initial), "x");
}

TEST(Parser, GivesEachVariableOfAsNewAnObjectOfItsOwn) {
    const DimStatement dim = first<DimStatement>("Dim a, b As New C(1)");
    ASSERT_EQ(dim.declarations.size(), 2u);
    EXPECT_EQ(show(dim.declarations[0].initial), "new C(1)");
    EXPECT_EQ(show(dim.declarations[1].initial), "new C(1)");
}

TEST(Parser, ReadsACallWithoutParentheses) {
    EXPECT_EQ(show(first<CallStatement>("list.Append x + 1").call), "list.Append([x + 1])");
    EXPECT_EQ(show(first<CallStatement>("f -1, 2").call), "f([-1], 2)");
    EXPECT_EQ(show(first<CallStatement>("f (a) + b").call), "f([a + b])");
    EXPECT_EQ(show(first<CallStatement>("f(0).g (a), b").call), "f(0).g(a, b)");
    EXPECT_EQ(show(first<CallStatement>("Beep").call), "Beep");
    EXPECT_EQ(show(first<CallStatement>("Call f(1)").call), "f(1)");
}

TEST(Parser, ReadsAnAssignmentToAnythingThatCanBeNamed) {
    EXPECT_EQ(show(first<AssignStatement>("d.Value(\"k\") = 1").target), "d.Value('k')");
    EXPECT_EQ(show(first<AssignStatement>("a = b = c").value), "[b = c]");
}

TEST(Parser, ReadsAnIfWithItsBranches) {
    const auto block = first<IfStatement>("If a Then\nf\nElseIf b Then\ng\nh\nElse\ni\nEnd If");
    ASSERT_EQ(block.branches.size(), 2u);
    EXPECT_EQ(block.branches[1].body.size(), 2u);
    EXPECT_EQ(block.branches[1].line, 3);
    EXPECT_EQ(block.otherwise.size(), 1u);

    const auto line = first<IfStatement>("If a Then f Else If b Then g Else h");
    EXPECT_EQ(line.branches.size(), 1u);
    EXPECT_EQ(std::get<IfStatement>(line.otherwise.at(0).node).otherwise.size(), 1u);
}

TEST(Parser, ReadsTheTestsOfACase) {
    const auto select = first<SelectStatement>(
        "Select Case x\nCase 1, 2 To 5\nf\nCase Is >= 7\nCase Else\ng\nEnd Select");
    ASSERT_EQ(select.cases.size(), 2u);
    EXPECT_EQ(show(select.cases[0].tests[1].upper), "5");
    EXPECT_EQ(select.cases[1].tests[0].comparison, BinaryOperator::GreaterOrEqual);
    EXPECT_EQ(select.otherwise.size(), 1u);
}

TEST(Parser, ReadsEveryLoop) {
    const auto counted = first<ForStatement>("For i As Integer = 9 DownTo 1 Step 2\nf\nNext i");
    EXPECT_TRUE(counted.downwards);
    EXPECT_EQ(counted.type->name, "Integer");
    EXPECT_EQ(show(counted.step), "2");
    EXPECT_EQ(show(first<ForEachStatement>("For Each x In a.b\nNext").list), "a.b");
    EXPECT_EQ(show(first<WhileStatement>("While a\nf\nWend").condition), "a");
    EXPECT_TRUE(first<DoStatement>("Do Until a\nLoop").before->until);
    EXPECT_FALSE(first<DoStatement>("Do\nLoop While a").after->until);
    EXPECT_FALSE(first<DoStatement>("Do\nExit Do\nLoop").after.has_value());
}

TEST(Parser, ReadsATryWithItsHandlers) {
    const auto tried = first<TryStatement>(
        "Try\nf\nCatch e As IOException\ng\nCatch e\nCatch\nFinally\nh\nEnd Try");
    ASSERT_EQ(tried.catches.size(), 3u);
    EXPECT_EQ(tried.catches[0].type->name, "IOException");
    EXPECT_FALSE(tried.catches[1].type.has_value());
    EXPECT_EQ(tried.catches[2].variable, "");
    EXPECT_EQ(tried.finally->size(), 1u);
}

TEST(Parser, ReadsRoutinesAnywhere) {
    const SyntaxTree tree = parse("f\nFunction g(ByRef a As Integer, Optional b() As String, "
                                  "c As Double = 1.5) As String()\nReturn x\nEnd Function\nh");
    EXPECT_EQ(tree.main.size(), 2u);
    const Routine& routine = tree.routines.at(0);
    EXPECT_EQ(routine.line, 2);
    EXPECT_TRUE(routine.result->isArray);
    ASSERT_EQ(routine.parameters.size(), 3u);
    EXPECT_TRUE(routine.parameters[0].byReference);
    EXPECT_TRUE(routine.parameters[1].optional);
    EXPECT_TRUE(routine.parameters[1].type.isArray);
    EXPECT_EQ(show(routine.parameters[2].defaultValue), "1.500000");
}

TEST(Parser, SaysWhatItExpectedAndWhatItFound) {
    EXPECT_EQ(errorOf("x ="), "1: Expected an expression but found the end of the line");
    EXPECT_EQ(errorOf("x = (1 + 2"), "1: Expected \")\" but found the end of the line");
    EXPECT_EQ(errorOf("f\nIf a\nEnd If"), "2: Expected \"Then\" but found the end of the line");
    EXPECT_EQ(errorOf("Dim a Integer"),
              "1: Expected \",\" or \"As\" and a type but found \"Integer\"");
    EXPECT_EQ(errorOf("Dim If As Integer"), "1: Expected the name of a variable but found \"If\"");
    EXPECT_EQ(errorOf("f(1) = 2 3"), "1: Expected the end of the line but found \"3\"");
    EXPECT_EQ(errorOf("For i = 1\nNext"),
              "1: Expected \"To\" or \"DownTo\" but found the end of the line");
    EXPECT_EQ(errorOf("For i = 1 To 2\nNext j"), "2: Expected \"Next i\" but found \"j\"");
    EXPECT_EQ(errorOf("End If"), "1: Expected a statement but found \"End\"");
    EXPECT_EQ(errorOf("5 = a"), "1: Expected a statement but found \"5\"");
    EXPECT_EQ(errorOf("a.5"), "1: Expected the name of a member after the dot but found \"5\"");
    EXPECT_EQ(errorOf("Select Case a\nf\nEnd Select"),
              "2: Expected \"Case\" or \"End Select\" but found \"f\"");
}

TEST(Parser, NamesTheLineWhereAnUnclosedBlockBegins) {
    EXPECT_EQ(errorOf("f\nIf a Then\ng"), "2: If is never closed");
    EXPECT_EQ(errorOf("While a\n"), "1: While is never closed");
    EXPECT_EQ(errorOf("Sub s\nf"), "1: Sub s is never closed");
    EXPECT_EQ(errorOf("Try\nf"), "1: Try is never closed");
}

TEST(Parser, RefusesWhatCannotStandWhereItStands) {
    EXPECT_EQ(errorOf("If a Then\nSub s\nEnd Sub\nEnd If"),
              "2: A Sub or Function cannot stand inside another block");
    EXPECT_EQ(errorOf("If a Then While b\nWend"),
              "1: A block of several lines cannot stand in an If of one line");
    EXPECT_EQ(errorOf("Dim a(1, 2) As Integer"), "1: Arrays have one dimension only");
    EXPECT_EQ(errorOf("Dim a() As New C"), "1: \"As New\" takes the name of a class only");
    EXPECT_EQ(errorOf("Redim a"), "1: Redim needs an array with its new upper bound: Redim a(9)");
}

TEST(Parser, RefusesProgramsNestedTooDeep) {
    const std::string message = "1: The program is nested more than 250 levels deep here";
    EXPECT_EQ(errorOf("x = " + std::string(100000, '(')), message);
    EXPECT_EQ(errorOf("x = " + std::string(100000, '-') + "1"), message);
    std::string sum = "x = 1";
    for (int i = 0; i < 5000; ++i)
        sum += "+1";
    EXPECT_EQ(errorOf(sum), "1: The program is nested more than 1000 levels deep here");
    std::string loops;
    for (int i = 0; i < 5000; ++i)
        loops += "Do\n";
    EXPECT_EQ(errorOf(loops), "252: The program is nested more than 250 levels deep here");
}
