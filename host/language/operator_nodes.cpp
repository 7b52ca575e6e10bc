#include "host/language/operator_nodes.h"

#include "host/language/operators.h"
#include "host/language/value_nodes.h"
#include "host/objects/runtime.h"

#include <functional>
#include <utility>

namespace host::language {
namespace {

class BinaryNode : public Node {
public:
    BinaryNode(const Type& type, NodePointer left, NodePointer right)
        : Node(type)
        , left_(std::move(left))
        , right_(std::move(right)) {}

protected:
    NodePointer left_;
    NodePointer right_;
};

/// An operation on values of any type.
class GeneralBinary final : public BinaryNode {
public:
    GeneralBinary(BinaryOperator operation, const Type& type, NodePointer left, NodePointer right)
        : BinaryNode(type, std::move(left), std::move(right))
        , operation_(operation) {}
    Value evaluate(Machine& machine) const override {
        const Value left = left_->evaluate(machine);
        return apply(operation_, left, right_->evaluate(machine));
    }

private:
    BinaryOperator operation_;
};

class GeneralUnary final : public Node {
public:
    GeneralUnary(UnaryOperator operation, const Type& type, NodePointer operand)
        : Node(type)
        , operation_(operation)
        , operand_(std::move(operand)) {}
    Value evaluate(Machine& machine) const override {
        return apply(operation_, operand_->evaluate(machine));
    }

private:
    UnaryOperator operation_;
    NodePointer operand_;
};

/// Integers to an integer. The operation works on bits, so that overflow wraps around.
template <typename Operation>
class IntegerBinary final : public BinaryNode {
public:
    using BinaryNode::BinaryNode;
    Value evaluate(Machine& machine) const override {
        return integerValue(integer(machine), type().kind);
    }
    std::int64_t integer(Machine& machine) const override {
        const auto left = static_cast<std::uint64_t>(left_->integer(machine));
        const auto right = static_cast<std::uint64_t>(right_->integer(machine));
        return wrapped(static_cast<std::int64_t>(Operation{}(left, right)), type().kind);
    }
    double number(Machine& machine) const override {
        if (type().kind == Kind::UInt64)
            return static_cast<double>(static_cast<std::uint64_t>(integer(machine)));
        return static_cast<double>(integer(machine));
    }
};

struct Quotient {
    std::int64_t operator()(std::int64_t left, std::int64_t right) const {
        return quotient(left, right);
    }
};
struct Remainder {
    std::int64_t operator()(std::int64_t left, std::int64_t right) const {
        return remainder(left, right);
    }
};

template <typename Operation>
class NumberBinary final : public BinaryNode {
public:
    using BinaryNode::BinaryNode;
    Value evaluate(Machine& machine) const override { return number(machine); }
    double number(Machine& machine) const override {
        const double left = left_->number(machine);
        return Operation{}(left, right_->number(machine));
    }
};

template <typename Operation>
class IntegerComparison final : public BinaryNode {
public:
    using BinaryNode::BinaryNode;
    Value evaluate(Machine& machine) const override { return truth(machine); }
    bool truth(Machine& machine) const override {
        const std::int64_t left = left_->integer(machine);
        return Operation{}(left, right_->integer(machine));
    }
};

template <typename Operation>
class NumberComparison final : public BinaryNode {
public:
    using BinaryNode::BinaryNode;
    Value evaluate(Machine& machine) const override { return truth(machine); }
    bool truth(Machine& machine) const override {
        const double left = left_->number(machine);
        return Operation{}(left, right_->number(machine));
    }
};

/// And, Or and Xor of Booleans; the right side is left alone when the left decides.
class Conjunction final : public BinaryNode {
public:
    using BinaryNode::BinaryNode;
    Value evaluate(Machine& machine) const override { return truth(machine); }
    bool truth(Machine& machine) const override {
        return left_->truth(machine) && right_->truth(machine);
    }
};
class Disjunction final : public BinaryNode {
public:
    using BinaryNode::BinaryNode;
    Value evaluate(Machine& machine) const override { return truth(machine); }
    bool truth(Machine& machine) const override {
        return left_->truth(machine) || right_->truth(machine);
    }
};
class ExclusiveDisjunction final : public BinaryNode {
public:
    using BinaryNode::BinaryNode;
    Value evaluate(Machine& machine) const override { return truth(machine); }
    bool truth(Machine& machine) const override {
        const bool left = left_->truth(machine);
        return left != right_->truth(machine);
    }
};

class Negation final : public Node {
public:
    explicit Negation(NodePointer operand)
        : Node(Kind::Boolean)
        , operand_(std::move(operand)) {}
    Value evaluate(Machine& machine) const override { return truth(machine); }
    bool truth(Machine& machine) const override { return !operand_->truth(machine); }

private:
    NodePointer operand_;
};

template <typename Wanted>
NodePointer make(const Type& type, NodePointer& left, NodePointer& right) {
    return std::make_unique<Wanted>(type, std::move(left), std::move(right));
}

template <template <typename> typename Wanted>
NodePointer makeComparison(BinaryOperator operation, NodePointer& left, NodePointer& right) {
    const Type type = Kind::Boolean;
    switch (operation) {
    case BinaryOperator::Equal:
        return make<Wanted<std::equal_to<>>>(type, left, right);
    case BinaryOperator::NotEqual:
        return make<Wanted<std::not_equal_to<>>>(type, left, right);
    case BinaryOperator::Less:
        return make<Wanted<std::less<>>>(type, left, right);
    case BinaryOperator::LessOrEqual:
        return make<Wanted<std::less_equal<>>>(type, left, right);
    case BinaryOperator::Greater:
        return make<Wanted<std::greater<>>>(type, left, right);
    case BinaryOperator::GreaterOrEqual:
        return make<Wanted<std::greater_equal<>>>(type, left, right);
    default:
        return nullptr;
    }
}

NodePointer makeIntegerOperation(BinaryOperator operation, const Type& type, NodePointer& left,
                                 NodePointer& right) {
    const bool isUnsigned = left->type().kind == Kind::UInt64 || right->type().kind == Kind::UInt64;
    switch (operation) {
    case BinaryOperator::Add:
        return make<IntegerBinary<std::plus<>>>(type, left, right);
    case BinaryOperator::Subtract:
        return make<IntegerBinary<std::minus<>>>(type, left, right);
    case BinaryOperator::Multiply:
        return make<IntegerBinary<std::multiplies<>>>(type, left, right);
    case BinaryOperator::And:
        return make<IntegerBinary<std::bit_and<>>>(type, left, right);
    case BinaryOperator::Or:
        return make<IntegerBinary<std::bit_or<>>>(type, left, right);
    case BinaryOperator::Xor:
        return make<IntegerBinary<std::bit_xor<>>>(type, left, right);
    default:
        break;
    }
    if (isUnsigned) return nullptr;
    if (operation == BinaryOperator::IntegerDivide)
        return make<IntegerBinary<Quotient>>(type, left, right);
    if (operation == BinaryOperator::Modulo)
        return make<IntegerBinary<Remainder>>(type, left, right);
    return makeComparison<IntegerComparison>(operation, left, right);
}

NodePointer makeNumberOperation(BinaryOperator operation, const Type& type, NodePointer& left,
                                NodePointer& right) {
    if (type.kind == Kind::Double) {
        switch (operation) {
        case BinaryOperator::Add:
            return make<NumberBinary<std::plus<>>>(type, left, right);
        case BinaryOperator::Subtract:
            return make<NumberBinary<std::minus<>>>(type, left, right);
        case BinaryOperator::Multiply:
            return make<NumberBinary<std::multiplies<>>>(type, left, right);
        case BinaryOperator::Divide:
            return make<NumberBinary<std::divides<>>>(type, left, right);
        default:
            return nullptr;
        }
    }
    const auto isFraction = [](const NodePointer& node) {
        return node->type().kind == Kind::Double || node->type().kind == Kind::Single;
    };
    if (!isFraction(left) && !isFraction(right)) return nullptr;
    return makeComparison<NumberComparison>(operation, left, right);
}

NodePointer makeBooleanOperation(BinaryOperator operation, NodePointer& left, NodePointer& right) {
    const Type type = Kind::Boolean;
    switch (operation) {
    case BinaryOperator::And:
        return make<Conjunction>(type, left, right);
    case BinaryOperator::Or:
        return make<Disjunction>(type, left, right);
    case BinaryOperator::Xor:
        return make<ExclusiveDisjunction>(type, left, right);
    default:
        return nullptr;
    }
}

/// The quick node for the operation; null when only the general one will do.
NodePointer makeSpecial(BinaryOperator operation, const Type& type, NodePointer& left,
                        NodePointer& right) {
    const Type& leftType = left->type();
    const Type& rightType = right->type();
    NodePointer node;
    if (leftType.isInteger() && rightType.isInteger())
        node = makeIntegerOperation(operation, type, left, right);
    if (!node && leftType.isNumber() && rightType.isNumber())
        node = makeNumberOperation(operation, type, left, right);
    if (!node && leftType == Type(Kind::Boolean) && rightType == Type(Kind::Boolean))
        node = makeBooleanOperation(operation, left, right);
    return node;
}

} // namespace

NodePointer makeBinary(BinaryOperator operation, NodePointer& left, NodePointer& right) {
    const std::optional<Type> type = resultType(operation, left->type(), right->type());
    if (!type) return nullptr;
    if (left->constant() && right->constant()) {
        try {
            return makeLiteral(apply(operation, *left->constant(), *right->constant()), *type);
        } catch (const Raised&) {
            // What raises an exception does so when the program gets there.
        }
    }
    if (NodePointer node = makeSpecial(operation, *type, left, right)) return node;
    return std::make_unique<GeneralBinary>(operation, *type, std::move(left), std::move(right));
}

NodePointer makeUnary(UnaryOperator operation, NodePointer& operand) {
    const std::optional<Type> type = resultType(operation, operand->type());
    if (!type) return nullptr;
    if (operand->constant()) return makeLiteral(apply(operation, *operand->constant()), *type);
    if (operation == UnaryOperator::Not && type->kind == Kind::Boolean)
        return std::make_unique<Negation>(std::move(operand));
    return std::make_unique<GeneralUnary>(operation, *type, std::move(operand));
}

} // namespace host::language
