#include "host/language/node.h"

#include "host/language/machine.h"

namespace host::language {

std::int64_t Node::integer(Machine& machine) const { return integerBits(evaluate(machine)); }

double Node::number(Machine& machine) const { return evaluate(machine).toDouble(); }

bool Node::truth(Machine& machine) const { return evaluate(machine).toBoolean(); }

Value integerValue(std::int64_t bits, Kind kind) {
    switch (kind) {
    case Kind::Int32:
        return static_cast<std::int32_t>(bits);
    case Kind::UInt32:
        return static_cast<std::uint32_t>(bits);
    case Kind::UInt64:
        return static_cast<std::uint64_t>(bits);
    default:
        return bits;
    }
}

std::int64_t integerBits(const Value& value) {
    if (const auto* number = value.get<std::int64_t>()) return *number;
    if (const auto* number = value.get<std::int32_t>()) return *number;
    return value.toInt64();
}

namespace {

/// Lets a block's variables go, whichever way the block is left.
class VariableScope {
public:
    VariableScope(std::vector<Value>& variables, std::size_t first, std::size_t count)
        : variables_(variables)
        , first_(first)
        , count_(count) {}
    ~VariableScope() {
        for (std::size_t i = first_; i < first_ + count_; ++i)
            variables_[i] = Value();
    }
    VariableScope(const VariableScope&) = delete;
    VariableScope& operator=(const VariableScope&) = delete;

private:
    std::vector<Value>& variables_;
    std::size_t first_;
    std::size_t count_;
};

} // namespace

Flow BlockNode::execute(Machine& machine) const {
    if (variableCount == 0) return executeStatements(machine);
    const VariableScope scope(machine.frame().variables, firstVariable, variableCount);
    return executeStatements(machine);
}

Flow BlockNode::executeStatements(Machine& machine) const {
    for (const StatementPointer& statement : statements) {
        machine.checkEnd();
        machine.line = statement->line;
        const Flow flow = statement->execute(machine);
        if (flow != Flow::Next) return flow;
    }
    return Flow::Next;
}

} // namespace host::language
