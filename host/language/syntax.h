#pragma once

/// The tree of a program, as written: names are not resolved, `f(x)` may be a call, an array
/// element or a cast.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace host::language {

struct Expression;
using ExpressionPointer = std::unique_ptr<Expression>;

/// A type as it is named; `isArray` for `T()`.
struct TypeName {
    std::string name;
    bool isArray = false;
    int line = 0;
};

struct NilLiteral {};
struct BooleanLiteral {
    bool value;
};
struct IntegerLiteral {
    std::uint64_t value;
};
struct NumberLiteral {
    double value;
};
struct StringLiteral {
    std::string value;
};
struct ColourLiteral {
    std::uint32_t value; ///< 0xRRGGBB
};

struct NameExpression {
    std::string name;
};
struct MemberExpression {
    ExpressionPointer object;
    std::string name;
};
struct CallExpression {
    ExpressionPointer callee;
    std::vector<ExpressionPointer> arguments;
};
/// A Sub by itself, not called.
struct AddressOfExpression {
    std::string routine;
};
struct NewExpression {
    TypeName type;
    std::vector<ExpressionPointer> arguments;
};

enum class UnaryOperator { Minus, Plus, Not };
struct UnaryExpression {
    UnaryOperator operation;
    ExpressionPointer operand;
};

enum class BinaryOperator {
    Power,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Add,
    Subtract,
    Join,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Is,
    And,
    Or,
    Xor,
};
struct BinaryExpression {
    BinaryOperator operation;
    ExpressionPointer left;
    ExpressionPointer right;
};
struct IsAExpression {
    ExpressionPointer operand;
    TypeName type;
};

struct Expression {
    int line = 0;
    int depth = 1; ///< of the tree under it
    std::variant<NilLiteral, BooleanLiteral, IntegerLiteral, NumberLiteral, StringLiteral,
                 ColourLiteral, NameExpression, MemberExpression, CallExpression, NewExpression,
                 AddressOfExpression, UnaryExpression, BinaryExpression, IsAExpression>
        node;
};

struct Statement;
using Block = std::vector<Statement>;

/// One name of a Dim. An array has bounds when `T()` was written with a number.
struct Declaration {
    std::string name;
    TypeName type;
    ExpressionPointer upperBound;
    ExpressionPointer initial; ///< `As New C(...)` is an initial value that is a NewExpression
};
struct DimStatement {
    std::vector<Declaration> declarations;
};
struct ConstStatement {
    std::string name;
    ExpressionPointer value;
};
struct AssignStatement {
    ExpressionPointer target;
    ExpressionPointer value;
};
struct CallStatement {
    ExpressionPointer call;
};
struct PrintStatement {
    ExpressionPointer value; ///< null prints an empty line
};
struct RedimStatement {
    ExpressionPointer array;
    ExpressionPointer upperBound;
};
struct IfStatement {
    struct Branch {
        ExpressionPointer condition;
        Block body;
        int line;
    };
    std::vector<Branch> branches;
    Block otherwise;
};
struct SelectStatement {
    /// `a`, `a To b`, or `Is < a`.
    struct Test {
        ExpressionPointer value;
        ExpressionPointer upper;
        BinaryOperator comparison = BinaryOperator::Equal;
    };
    struct Case {
        std::vector<Test> tests;
        Block body;
        int line;
    };
    ExpressionPointer subject;
    std::vector<Case> cases;
    Block otherwise;
};
struct ForStatement {
    std::string variable;
    std::optional<TypeName> type; ///< present when the loop declares its variable
    ExpressionPointer first;
    ExpressionPointer last;
    ExpressionPointer step;
    bool downwards = false;
    Block body;
};
struct ForEachStatement {
    std::string variable;
    std::optional<TypeName> type;
    ExpressionPointer list;
    Block body;
};
struct WhileStatement {
    ExpressionPointer condition;
    Block body;
};
struct DoStatement {
    struct Condition {
        ExpressionPointer expression;
        bool until = false;
    };
    std::optional<Condition> before;
    std::optional<Condition> after;
    Block body;
};

enum class LoopKind { Innermost, For, While, Do };
struct ExitStatement {
    LoopKind loop;
};
struct ContinueStatement {
    LoopKind loop;
};
/// `Return`, and `Exit Sub` and `Exit Function`.
struct ReturnStatement {
    ExpressionPointer value;
};
struct TryStatement {
    struct Catch {
        std::string variable; ///< may be empty
        std::optional<TypeName> type;
        Block body;
        int line;
    };
    Block body;
    std::vector<Catch> catches;
    std::optional<Block> finally;
};
struct RaiseStatement {
    ExpressionPointer exception;
};

struct Statement {
    int line = 0;
    std::variant<DimStatement, ConstStatement, AssignStatement, CallStatement, PrintStatement,
                 RedimStatement, IfStatement, SelectStatement, ForStatement, ForEachStatement,
                 WhileStatement, DoStatement, ExitStatement, ContinueStatement, ReturnStatement,
                 TryStatement, RaiseStatement>
        node;
};

struct Parameter {
    std::string name;
    TypeName type;
    bool byReference = false;
    bool optional = false; ///< may be left out; without a default it is the type's neutral value
    ExpressionPointer defaultValue;
};

struct Routine {
    int line = 0;
    std::string name;
    std::vector<Parameter> parameters;
    std::optional<TypeName> result; ///< present for a Function
    Block body;
};

struct SyntaxTree {
    std::vector<Routine> routines;
    Block main;
};

} // namespace host::language
