#include "host/language/binder.h"
#include "host/language/call_nodes.h"
#include "host/language/operators.h"
#include "host/objects/runtime.h"

#include <algorithm>
#include <utility>

namespace host::language {
namespace {

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

std::unique_ptr<Place> variableOf(const VariableSymbol& symbol) {
    return makeVariable(symbol.storage, symbol.slot, symbol.type);
}

/// The node as something that can be assigned to; null when it cannot.
std::unique_ptr<Place> asPlace(NodePointer node) {
    auto* const place = dynamic_cast<Place*>(node.get());
    if (place) static_cast<void>(node.release());
    return std::unique_ptr<Place>(place);
}

} // namespace

template <typename Prepare>
BlockNode Binder::bindBlock(const Block& block, Prepare prepare) {
    Scope scope(scope_);
    Scope* const outer = std::exchange(scope_, &scope);
    BlockNode node;
    node.firstVariable = *variableCount_;
    prepare();
    bindStatements(block, node.statements);
    node.variableCount = *variableCount_ - node.firstVariable;
    scope_ = outer;
    return node;
}

BlockNode Binder::bindBlock(const Block& block) {
    return bindBlock(block, [] {});
}

template <typename Bind>
StatementPointer Binder::bindScoped(int line, Bind bind) {
    Scope scope(scope_);
    Scope* const outer = std::exchange(scope_, &scope);
    BlockNode node;
    node.firstVariable = *variableCount_;
    StatementPointer statement = bind();
    node.variableCount = *variableCount_ - node.firstVariable;
    scope_ = outer;
    if (node.variableCount == 0) return statement;
    node.statements.push_back(std::move(statement));
    return makeBlock(line, std::move(node));
}

void Binder::bindStatements(const Block& block, std::vector<StatementPointer>& statements) {
    for (const Statement& statement : block)
        bindStatement(statement, statements);
}

void Binder::bindStatement(const Statement& statement, std::vector<StatementPointer>& statements) {
    const int line = statement.line;
    const void* const identity = &statement;
    const auto add = [&](StatementPointer node) { statements.push_back(std::move(node)); };
    std::visit(
        Overloaded{
            [&](const DimStatement& node) { bindDim(node, line, statements); },
            [&](const ConstStatement& node) {
                // Those at the top are known to the whole program already.
                if (scope_ != &globals_) declareConstant(node, line);
            },
            [&](const AssignStatement& node) { add(bindAssignment(node, line)); },
            [&](const CallStatement& node) { add(bindCall(node, line)); },
            [&](const PrintStatement& node) { add(bindPrint(node, line)); },
            [&](const RedimStatement& node) { add(bindRedim(node, line)); },
            [&](const IfStatement& node) { add(bindIf(node, line)); },
            [&](const SelectStatement& node) {
                add(bindScoped(line, [&] { return bindSelect(node, line); }));
            },
            [&](const ForStatement& node) {
                add(bindScoped(line, [&] { return bindFor(node, identity, line); }));
            },
            [&](const ForEachStatement& node) {
                add(bindScoped(line, [&] { return bindForEach(node, identity, line); }));
            },
            [&](const WhileStatement& node) { add(bindWhile(node, identity, line)); },
            [&](const DoStatement& node) { add(bindDo(node, identity, line)); },
            [&](const ExitStatement& node) { add(bindJump(Flow::Exit, node.loop, line)); },
            [&](const ContinueStatement& node) { add(bindJump(Flow::Continue, node.loop, line)); },
            [&](const ReturnStatement& node) { add(bindReturn(node, line)); },
            [&](const TryStatement& node) { add(bindTry(node, line)); },
            [&](const RaiseStatement& node) { add(bindRaise(node, line)); },
        },
        statement.node);
}

void Binder::bindDim(const DimStatement& dim, int line, std::vector<StatementPointer>& statements) {
    for (const Declaration& declaration : dim.declarations) {
        const Type type = resolve(declaration.type);
        // The initial value cannot name the variable itself.
        NodePointer initial = declaration.initial ? bindAs(*declaration.initial, type) : nullptr;
        NodePointer bound = declaration.upperBound ? bindInteger(*declaration.upperBound) : nullptr;
        const VariableSymbol symbol = declareVariable(declaration.name, type, line);
        if (initial && bound)
            throw SourceError(line, declaration.name + " has both an upper bound and a value");
        if (type.isArray && !initial) {
            statements.push_back(makeNewArray(line, variableOf(symbol), std::move(bound)));
            continue;
        }
        if (!initial) initial = makeLiteral(neutralValue(type), type);
        statements.push_back(makeAssign(line, variableOf(symbol), std::move(initial)));
    }
}

StatementPointer Binder::bindAssignment(const AssignStatement& assign, int line) {
    NodePointer value = bindValue(*assign.value);
    const Expression& target = *assign.target;
    if (const auto* member = std::get_if<MemberExpression>(&target.node))
        return bindMemberAssignment(bindOwner(*member->object), member->name, nullptr,
                                    std::move(value), line);
    if (const auto* call = std::get_if<CallExpression>(&target.node)) {
        if (const auto* member = std::get_if<MemberExpression>(&call->callee->node))
            return bindMemberAssignment(bindOwner(*member->object), member->name, &call->arguments,
                                        std::move(value), line);
    }
    NodePointer node = bindExpression(target);
    const bool isConstant = node->constant() != nullptr;
    std::unique_ptr<Place> place = asPlace(std::move(node));
    if (!place)
        throw SourceError(line, isConstant ? "A constant cannot be assigned to"
                                           : "What a call returns cannot be assigned to");
    value = convertNode(std::move(value), place->type(), line);
    return makeAssign(line, std::move(place), std::move(value));
}

StatementPointer Binder::bindMemberAssignment(Owner owner, const std::string& name,
                                              const Arguments* arguments, NodePointer value,
                                              int line) {
    if (!owner.type)
        throw SourceError(line, owner.object->type().name() + " has no member called " + name +
                                    " that can be assigned to");
    if (owner.object && owner.object->type() == Type(Kind::Variant))
        throw SourceError(line,
                          "Nothing of a Variant can be assigned to; cast it to a class first");
    const Class& type = *owner.type;
    const Property* property = type.findSharedProperty(name);
    if (!property && owner.object) property = type.findProperty(name);
    if (property) {
        const std::string fullName = type.name() + "." + property->name;
        std::unique_ptr<Place> place =
            makeProperty(*property, property->isShared ? nullptr : std::move(owner.object));
        if (arguments && !arguments->empty())
            place = asPlace(bindElement(std::move(place), *arguments, line));
        else if (!property->set)
            throw SourceError(line, fullName + " is read-only");
        value = convertNode(std::move(value), place->type(), line);
        return makeAssign(line, std::move(place), std::move(value));
    }
    Overloads setters = owner.object ? type.findMethods(name) : type.findSharedMethods(name);
    const bool exists = !setters.empty();
    std::erase_if(setters, [](const Method* method) { return !method->signature.isSetter(); });
    if (setters.empty())
        throw SourceError(line, type.name() + (exists ? "." + name + " cannot be assigned to"
                                                      : " has no member called " + name));
    NodeList nodes = bindArguments(arguments);
    nodes.push_back(std::move(value));
    const Method& setter = select(type.name() + "." + name, setters, nodes, line);
    return makeEvaluate(
        line, makeMethodCall(setter, std::move(owner.object), fit(setter, std::move(nodes), line)));
}

StatementPointer Binder::bindCall(const CallStatement& call, int line) {
    NodePointer node = bindExpression(*call.call);
    if (node->constant() || dynamic_cast<const Place*>(node.get()))
        throw SourceError(line, "A value alone is no statement");
    return makeEvaluate(line, std::move(node));
}

StatementPointer Binder::bindPrint(const PrintStatement& print, int line) {
    if (!print.value) return makePrint(line, nullptr);
    NodePointer value = bindValue(*print.value);
    const Type type = value->type();
    if (!resultType(BinaryOperator::Join, type, Kind::String))
        throw SourceError(line, "Print cannot show " + type.name());
    return makePrint(line, makeConversion(std::move(value), Kind::String));
}

StatementPointer Binder::bindRedim(const RedimStatement& redim, int line) {
    NodePointer array = bindValue(*redim.array);
    if (!array->type().isArray)
        throw SourceError(line, "Redim needs an array but found " + array->type().name());
    return makeRedim(line, std::move(array), bindInteger(*redim.upperBound));
}

NodePointer Binder::bindCondition(const Expression& expression) {
    NodePointer node = bindValue(expression);
    if (node->type() != Type(Kind::Boolean) && node->type() != Type(Kind::Variant))
        throw SourceError(expression.line,
                          "A condition must be a Boolean, but this is " + node->type().name());
    return makeConversion(std::move(node), Kind::Boolean);
}

StatementPointer Binder::bindIf(const IfStatement& statement, int line) {
    std::vector<Branch> branches;
    for (const IfStatement::Branch& branch : statement.branches) {
        NodePointer condition = bindCondition(*branch.condition);
        branches.push_back({branch.line, std::move(condition), bindBlock(branch.body)});
    }
    return makeIf(line, std::move(branches), bindBlock(statement.otherwise));
}

StatementPointer Binder::bindSelect(const SelectStatement& select, int line) {
    NodePointer subject = bindValue(*select.subject);
    const VariableSymbol variable = makeHiddenVariable(subject->type());
    StatementPointer keep = makeAssign(line, variableOf(variable), std::move(subject));
    std::vector<SelectBranch> branches;
    for (const SelectStatement::Case& entry : select.cases) {
        NodeList conditions;
        for (const SelectStatement::Test& test : entry.tests)
            conditions.push_back(bindTest(test, variable, entry.line));
        branches.push_back({entry.line, std::move(conditions), bindBlock(entry.body)});
    }
    return makeSelect(line, std::move(keep), std::move(branches), bindBlock(select.otherwise));
}

NodePointer Binder::bindTest(const SelectStatement::Test& test, const VariableSymbol& subject,
                             int line) {
    NodePointer value = bindValue(*test.value);
    if (!test.upper) return combine(test.comparison, variableOf(subject), std::move(value), line);
    NodePointer atLeast =
        combine(BinaryOperator::GreaterOrEqual, variableOf(subject), std::move(value), line);
    NodePointer atMost =
        combine(BinaryOperator::LessOrEqual, variableOf(subject), bindValue(*test.upper), line);
    return combine(BinaryOperator::And, std::move(atLeast), std::move(atMost), line);
}

std::unique_ptr<Place> Binder::bindLoopVariable(const std::string& name,
                                                const std::optional<TypeName>& type, int line) {
    if (type) return variableOf(declareVariable(name, resolve(*type), line));
    const NamedSymbol* const symbol = scope_->find(name);
    const auto* variable = symbol ? std::get_if<VariableSymbol>(&symbol->meaning) : nullptr;
    if (!variable) throw SourceError(line, "There is no variable called " + name);
    return variableOf(*variable);
}

BlockNode Binder::bindLoopBody(const Block& body, LoopKind kind, const void* identity) {
    loops_.push_back({kind, identity});
    BlockNode node = bindBlock(body);
    loops_.pop_back();
    return node;
}

StatementPointer Binder::bindFor(const ForStatement& loop, const void* identity, int line) {
    ForParts parts;
    NodePointer first = bindValue(*loop.first);
    NodePointer last = bindValue(*loop.last);
    NodePointer step = loop.step ? bindValue(*loop.step) : nullptr;
    parts.variable = bindLoopVariable(loop.variable, loop.type, line);
    const Type type = parts.variable->type();
    if (!type.isNumber())
        throw SourceError(line,
                          "For counts with a number, but " + loop.variable + " is " + type.name());
    parts.first = convertNode(std::move(first), type, line);
    parts.last = convertNode(std::move(last), type, line);
    if (step)
        parts.step =
            convertNode(std::move(step), type.isInteger() ? Kind::Int64 : Kind::Double, line);
    parts.downwards = loop.downwards;
    parts.body = bindLoopBody(loop.body, LoopKind::For, identity);
    return makeFor(line, identity, std::move(parts));
}

StatementPointer Binder::bindForEach(const ForEachStatement& loop, const void* identity, int line) {
    NodePointer list = bindValue(*loop.list);
    if (!list->type().isArray)
        throw SourceError(line, "For Each needs an array but found " + list->type().name());
    std::unique_ptr<Place> variable = bindLoopVariable(loop.variable, loop.type, line);
    const Type element = list->type().element();
    if (!conversionCost(element, variable->type()))
        throw SourceError(line, "The array holds " + element.name() + ", but " + loop.variable +
                                    " is " + variable->type().name());
    BlockNode body = bindLoopBody(loop.body, LoopKind::For, identity);
    return makeForEach(line, identity, std::move(variable), std::move(list), std::move(body));
}

StatementPointer Binder::bindWhile(const WhileStatement& loop, const void* identity, int line) {
    DoParts parts;
    parts.before = bindCondition(*loop.condition);
    parts.body = bindLoopBody(loop.body, LoopKind::While, identity);
    return makeDo(line, identity, std::move(parts));
}

StatementPointer Binder::bindDo(const DoStatement& loop, const void* identity, int line) {
    DoParts parts;
    if (loop.before) {
        parts.before = bindCondition(*loop.before->expression);
        parts.beforeUntil = loop.before->until;
    }
    parts.body = bindLoopBody(loop.body, LoopKind::Do, identity);
    if (loop.after) {
        parts.after = bindCondition(*loop.after->expression);
        parts.afterUntil = loop.after->until;
    }
    return makeDo(line, identity, std::move(parts));
}

StatementPointer Binder::bindJump(Flow flow, LoopKind kind, int line) {
    const auto loop = std::find_if(loops_.rbegin(), loops_.rend(), [&](const OpenLoop& open) {
        return kind == LoopKind::Innermost || open.kind == kind;
    });
    if (loop == loops_.rend())
        throw SourceError(line, std::string(flow == Flow::Exit ? "Exit" : "Continue") +
                                    " stands in no such loop");
    return makeJump(line, flow, loop->identity);
}

StatementPointer Binder::bindReturn(const ReturnStatement& statement, int line) {
    if (!statement.value) return makeReturn(line, nullptr, result_);
    if (result_.kind == Kind::Nothing)
        throw SourceError(line, inMain_ ? "The program itself returns no value"
                                        : "A Sub returns no value");
    return makeReturn(line, bindAs(*statement.value, result_), result_);
}

StatementPointer Binder::bindTry(const TryStatement& statement, int line) {
    TryParts parts;
    parts.body = bindBlock(statement.body);
    for (const TryStatement::Catch& handler : statement.catches) {
        CatchBranch branch;
        Type type = Type::object("RuntimeException");
        if (handler.type) {
            type = resolve(*handler.type);
            branch.type =
                type.kind == Kind::Object && !type.isArray ? findClass(type.className) : nullptr;
            if (!branch.type || !branch.type->descendsFrom(*findClass("RuntimeException")))
                throw SourceError(handler.line, type.name() + " is no class of exceptions");
        }
        branch.body = bindBlock(handler.body, [&] {
            if (!handler.variable.empty())
                branch.variable = variableOf(declareVariable(handler.variable, type, handler.line));
        });
        parts.catches.push_back(std::move(branch));
    }
    if (statement.finally) parts.finally = bindBlock(*statement.finally);
    return makeTry(line, std::move(parts));
}

StatementPointer Binder::bindRaise(const RaiseStatement& statement, int line) {
    NodePointer exception = bindValue(*statement.exception);
    const Type& type = exception->type();
    const Class& root = *findClass("RuntimeException");
    const Class* const given =
        type.kind == Kind::Object && !type.isArray ? findClass(type.className) : nullptr;
    if (!given || !given->descendsFrom(root))
        throw SourceError(line, "Raise needs an exception but found " + type.name());
    return makeRaise(line, std::move(exception));
}

} // namespace host::language
