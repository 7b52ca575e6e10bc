#pragma once

/// Resolves the names, types and overloads of a program.

#include "host/language/bound_program.h"
#include "host/language/scope.h"
#include "host/language/source_error.h"
#include "host/language/statement_nodes.h"
#include "host/language/syntax.h"

#include <span>
#include <string>
#include <vector>

namespace host::language {

class Binder {
public:
    /// Throws SourceError at the first mistake. The classes are those of the running host.
    std::unique_ptr<BoundProgram> bind(const SyntaxTree& tree);

private:
    using Overloads = std::vector<const Method*>;
    using Arguments = std::vector<ExpressionPointer>;

    /// What a member is looked up in: a class, by itself or by an object of it.
    struct Owner {
        const Class* type = nullptr;
        NodePointer object; ///< null for the class itself
    };

    // Program (binder.cpp)

    void declareRoutine(const Routine& routine);
    void bindRoutine(const Routine& routine, BoundRoutine& bound);
    void declareTopLevelConstants(const Block& main);
    Type resolve(const TypeName& name) const;
    const Class* findClass(const std::string& name) const;
    VariableSymbol declareVariable(const std::string& name, const Type& type, int line);
    /// A variable that no program can name.
    VariableSymbol makeHiddenVariable(const Type& type);
    void declareConstant(const ConstStatement& statement, int line);

    // Statements (statement_binder.cpp)

    /// A block with a scope of its own, whose variables go when it is left. `prepare` declares what
    /// belongs to the block and stands outside its text.
    template <typename Prepare>
    BlockNode bindBlock(const Block& block, Prepare prepare);
    BlockNode bindBlock(const Block& block);
    void bindStatements(const Block& block, std::vector<StatementPointer>& statements);
    void bindStatement(const Statement& statement, std::vector<StatementPointer>& statements);
    void bindDim(const DimStatement& dim, int line, std::vector<StatementPointer>& statements);
    StatementPointer bindAssignment(const AssignStatement& assign, int line);
    StatementPointer bindMemberAssignment(Owner owner, const std::string& name,
                                          const Arguments* arguments, NodePointer value, int line);
    StatementPointer bindCall(const CallStatement& call, int line);
    StatementPointer bindPrint(const PrintStatement& print, int line);
    StatementPointer bindRedim(const RedimStatement& redim, int line);
    StatementPointer bindIf(const IfStatement& statement, int line);
    StatementPointer bindSelect(const SelectStatement& select, int line);
    NodePointer bindTest(const SelectStatement::Test& test, const VariableSymbol& subject,
                         int line);
    StatementPointer bindFor(const ForStatement& loop, const void* identity, int line);
    StatementPointer bindForEach(const ForEachStatement& loop, const void* identity, int line);
    StatementPointer bindWhile(const WhileStatement& loop, const void* identity, int line);
    StatementPointer bindDo(const DoStatement& loop, const void* identity, int line);
    StatementPointer bindJump(Flow flow, LoopKind kind, int line);
    StatementPointer bindReturn(const ReturnStatement& statement, int line);
    StatementPointer bindTry(const TryStatement& statement, int line);
    StatementPointer bindRaise(const RaiseStatement& statement, int line);
    BlockNode bindLoopBody(const Block& body, LoopKind kind, const void* identity);
    NodePointer bindCondition(const Expression& expression);
    std::unique_ptr<Place> bindLoopVariable(const std::string& name,
                                            const std::optional<TypeName>& type, int line);
    /// Wraps what `bind` makes in a scope of its own.
    template <typename Bind>
    StatementPointer bindScoped(int line, Bind bind);

    // Expressions (expression_binder.cpp)

    /// May have no value, as the call of a Sub.
    NodePointer bindExpression(const Expression& expression);
    NodePointer bindValue(const Expression& expression);
    NodePointer bindAs(const Expression& expression, const Type& type);
    NodePointer bindInteger(const Expression& expression);
    NodePointer convertNode(NodePointer node, const Type& type, int line) const;
    NodePointer bindName(const NameExpression& name, int line);
    NodePointer bindUnary(const UnaryExpression& unary, int line);
    NodePointer bindBinary(const BinaryExpression& binary, int line);
    NodePointer combine(BinaryOperator operation, NodePointer left, NodePointer right,
                        int line) const;
    NodePointer bindNew(const NewExpression& created, int line);
    NodePointer bindIsA(const IsAExpression& test, int line);
    NodePointer bindSymbol(const NamedSymbol& symbol) const;

    // Calls and members (call_binder.cpp)

    NodePointer bindCallExpression(const CallExpression& call, int line);
    NodePointer bindNamedCall(const std::string& name, const Arguments& arguments, int line);
    NodePointer bindSpecialCall(const std::string& name, const Arguments& arguments, int line);
    NodePointer bindArrayFunction(const Arguments& arguments, int line);
    NodePointer bindCast(const Class& type, const Arguments& arguments, int line);
    NodePointer bindAddressOf(const std::string& name, int line);
    NodePointer bindRoutineCall(const std::string& name, const Arguments& arguments, int line);
    NodePointer bindElement(NodePointer array, const Arguments& arguments, int line);
    /// `arguments` is null where no parentheses were written.
    NodePointer bindMember(const MemberExpression& member, const Arguments* arguments, int line);
    NodePointer bindClassMember(Owner owner, const std::string& name, const Arguments* arguments,
                                int line);
    NodePointer bindArrayMember(NodePointer array, const std::string& name,
                                const Arguments* arguments, int line);
    NodePointer bindMethod(Owner owner, const std::string& name, const Overloads& candidates,
                           const Arguments* arguments, int line);
    Owner bindOwner(const Expression& expression);
    const Class& classOfObject(const Type& type, int line) const;
    NodeList bindArguments(const Arguments* arguments);
    const Method& select(const std::string& name, const Overloads& candidates,
                         const NodeList& arguments, int line) const;
    /// The arguments as the method takes them: converted, references checked.
    NodeList fit(const Method& method, NodeList arguments, int line) const;
    /// The same with an argument for every parameter.
    NodeList fitAll(const Method& method, NodeList arguments, int line) const;

    struct OpenLoop {
        LoopKind kind;
        const void* identity;
    };

    std::unique_ptr<BoundProgram> program_;
    Scope globals_;
    Scope* scope_ = &globals_;
    std::size_t* variableCount_ = nullptr; ///< of the routine being bound
    Storage storage_ = Storage::Global;
    bool inMain_ = true;
    Type result_; ///< of the routine being bound
    std::vector<OpenLoop> loops_;
};

} // namespace host::language
