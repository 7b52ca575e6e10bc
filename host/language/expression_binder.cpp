#include "host/language/binder.h"
#include "host/language/call_nodes.h"
#include "host/language/operator_nodes.h"
#include "host/language/operators.h"
#include "host/objects/runtime.h"

#include <limits>
#include <utility>

namespace host::language {
namespace {

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

/// An Integer where it fits, otherwise the 64-bit integer that it fits.
Value integerLiteral(std::uint64_t value) {
    if (value <= static_cast<std::uint64_t>(std::numeric_limits<REALword>::max()))
        return static_cast<REALword>(value);
    if (value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return static_cast<std::int64_t>(value);
    return value;
}

} // namespace

NodePointer Binder::bindExpression(const Expression& expression) {
    const int line = expression.line;
    return std::visit(
        Overloaded{
            [](const NilLiteral&) { return makeLiteral(nullptr, Kind::Nil); },
            [](const BooleanLiteral& node) { return makeLiteral(node.value); },
            [](const IntegerLiteral& node) { return makeLiteral(integerLiteral(node.value)); },
            [](const NumberLiteral& node) { return makeLiteral(node.value); },
            [](const StringLiteral& node) { return makeLiteral(node.value); },
            [](const ColourLiteral& node) { return makeLiteral(Color{node.value}); },
            [&](const NameExpression& node) { return bindName(node, line); },
            [&](const MemberExpression& node) { return bindMember(node, nullptr, line); },
            [&](const CallExpression& node) { return bindCallExpression(node, line); },
            [&](const NewExpression& node) { return bindNew(node, line); },
            [&](const AddressOfExpression& node) { return bindAddressOf(node.routine, line); },
            [&](const UnaryExpression& node) { return bindUnary(node, line); },
            [&](const BinaryExpression& node) { return bindBinary(node, line); },
            [&](const IsAExpression& node) { return bindIsA(node, line); },
        },
        expression.node);
}

NodePointer Binder::bindValue(const Expression& expression) {
    NodePointer node = bindExpression(expression);
    if (node->type().kind == Kind::Nothing)
        throw SourceError(expression.line, "A Sub was called where a value is needed");
    return node;
}

NodePointer Binder::bindAs(const Expression& expression, const Type& type) {
    return convertNode(bindValue(expression), type, expression.line);
}

NodePointer Binder::bindInteger(const Expression& expression) {
    return bindAs(expression, Kind::Int64);
}

NodePointer Binder::convertNode(NodePointer node, const Type& type, int line) const {
    if (!conversionCost(node->type(), type))
        throw SourceError(line, "Expected " + type.name() + " but found " + node->type().name());
    return makeConversion(std::move(node), type);
}

NodePointer Binder::bindSymbol(const NamedSymbol& symbol) const {
    if (const auto* variable = std::get_if<VariableSymbol>(&symbol.meaning))
        return makeVariable(variable->storage, variable->slot, variable->type);
    const auto& constant = std::get<ConstantSymbol>(symbol.meaning);
    return makeLiteral(constant.value, constant.type);
}

NodePointer Binder::bindName(const NameExpression& name, int line) {
    if (const NamedSymbol* symbol = scope_->find(name.name)) return bindSymbol(*symbol);
    return bindNamedCall(name.name, {}, line);
}

NodePointer Binder::bindUnary(const UnaryExpression& unary, int line) {
    NodePointer operand = bindValue(*unary.operand);
    NodePointer node = makeUnary(unary.operation, operand);
    if (!node)
        throw SourceError(line, std::string("There is no ") + spelling(unary.operation) + " " +
                                    operand->type().name());
    return node;
}

NodePointer Binder::bindBinary(const BinaryExpression& binary, int line) {
    NodePointer left = bindValue(*binary.left);
    return combine(binary.operation, std::move(left), bindValue(*binary.right), line);
}

NodePointer Binder::combine(BinaryOperator operation, NodePointer left, NodePointer right,
                            int line) const {
    // A literal beside a UInt64 is one too, where it can be.
    const auto adapt = [](NodePointer& node, const NodePointer& other) {
        const Value* const value = node->constant();
        if (value && node->type().isInteger() && other->type() == Type(Kind::UInt64) &&
            value->toInt64() >= 0)
            node = makeConversion(std::move(node), Kind::UInt64);
    };
    adapt(left, right);
    adapt(right, left);
    NodePointer node = makeBinary(operation, left, right);
    if (!node)
        throw SourceError(line, "There is no " + left->type().name() + " " + spelling(operation) +
                                    " " + right->type().name());
    return node;
}

NodePointer Binder::bindNew(const NewExpression& created, int line) {
    const Class* const type = findClass(created.type.name);
    if (!type) throw SourceError(line, "There is no class called " + created.type.name);
    if (!type->canBeInstantiated)
        throw SourceError(line, "No program can make a new " + type->name());
    NodeList arguments = bindArguments(&created.arguments);
    const Overloads constructors = type->constructors();
    if (constructors.empty() && arguments.empty()) return makeNew(*type, nullptr, {});
    if (constructors.empty())
        throw SourceError(line, "New " + type->name() + " takes no arguments");
    const Method& constructor = select("New " + type->name(), constructors, arguments, line);
    return makeNew(*type, &constructor, fit(constructor, std::move(arguments), line));
}

NodePointer Binder::bindIsA(const IsAExpression& test, int line) {
    NodePointer operand = bindValue(*test.operand);
    const Class* const type = findClass(test.type.name);
    if (!type || test.type.isArray)
        throw SourceError(line, "There is no class called " + test.type.name);
    if (!operand->type().isReference())
        throw SourceError(line, "IsA needs an object but found " + operand->type().name());
    return makeIsA(*type, std::move(operand));
}

} // namespace host::language
