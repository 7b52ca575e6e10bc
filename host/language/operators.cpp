#include "host/language/operators.h"

#include "host/language/node.h"
#include "host/language/text.h"
#include "host/objects/date.h"
#include "host/objects/runtime.h"

#include <cmath>
#include <compare>
#include <utility>

namespace host::language {
namespace {

bool isComparison(BinaryOperator operation) {
    return operation >= BinaryOperator::Equal && operation <= BinaryOperator::GreaterOrEqual;
}

bool isEquality(BinaryOperator operation) {
    return operation == BinaryOperator::Equal || operation == BinaryOperator::NotEqual;
}

bool isVariant(const Type& type) { return type.kind == Kind::Variant && !type.isArray; }

bool isPlain(const Type& type, Kind kind) { return type.kind == kind && !type.isArray; }

/// What `&` turns into text.
bool hasText(const Type& type) {
    if (type.isArray) return false;
    return type.isNumber() || conversionCost(type, Kind::String).has_value() ||
           type.kind == Kind::Boolean || type.kind == Kind::Color;
}

/// Of two integers: the wider; of mixed sign, Int64.
Kind commonInteger(Kind left, Kind right) {
    if (left == right) return left;
    const auto isUnsigned = [](Kind kind) { return kind == Kind::UInt32 || kind == Kind::UInt64; };
    return isUnsigned(left) && isUnsigned(right) ? Kind::UInt64 : Kind::Int64;
}

std::optional<Type> arithmeticType(const Type& left, const Type& right) {
    if (isVariant(left) && (isVariant(right) || right.isNumber())) return left;
    if (isVariant(right) && left.isNumber()) return right;
    if (!left.isNumber() || !right.isNumber()) return std::nullopt;
    if (left.isInteger() && right.isInteger()) return commonInteger(left.kind, right.kind);
    const auto isFraction = [](Kind kind) { return kind == Kind::Single || kind == Kind::Double; };
    if (isFraction(left.kind) || isFraction(right.kind))
        return left.kind == right.kind ? left : Type(Kind::Double);
    return Kind::Currency;
}

bool isDate(const Type& type) {
    return isPlain(type, Kind::Object) && sameName(type.className, "Date");
}

std::optional<Type> comparisonType(BinaryOperator operation, const Type& left, const Type& right) {
    const Type boolean = Kind::Boolean;
    const bool comparable = isVariant(left) || isVariant(right) ||
                            (left.isNumber() && right.isNumber()) ||
                            (isPlain(left, Kind::String) && isPlain(right, Kind::String)) ||
                            (isDate(left) && isDate(right));
    if (comparable) return boolean;
    if (!isEquality(operation)) return std::nullopt;
    if (left.isReference() && right.isReference()) return boolean;
    if (left == right) return boolean;
    if (isPlain(left, Kind::Pointer) && right.kind == Kind::Nil) return boolean;
    if (isPlain(right, Kind::Pointer) && left.kind == Kind::Nil) return boolean;
    return std::nullopt;
}

std::optional<Type> logicType(const Type& left, const Type& right) {
    if (isPlain(left, Kind::Boolean) && isPlain(right, Kind::Boolean)) return left;
    if (left.isInteger() && right.isInteger()) return Type(commonInteger(left.kind, right.kind));
    const auto fits = [](const Type& type) {
        return isVariant(type) || type.isInteger() || isPlain(type, Kind::Boolean);
    };
    if (fits(left) && fits(right) && (isVariant(left) || isVariant(right)))
        return Type(Kind::Variant);
    return std::nullopt;
}

[[noreturn]] void raiseMismatch(const char* operation, const Value& left, const Value& right) {
    raise("TypeMismatchException", std::string("There is no ") + left.type().name() + " " +
                                       operation + " " + right.type().name());
}

std::partial_ordering order(const Value& left, const Value& right) {
    const Type leftType = left.type();
    const Type rightType = right.type();
    if (leftType.isInteger() && rightType.isInteger()) {
        const std::int64_t leftBits = integerBits(left);
        const std::int64_t rightBits = integerBits(right);
        const bool leftUnsigned = leftType.kind == Kind::UInt64;
        const bool rightUnsigned = rightType.kind == Kind::UInt64;
        if (leftUnsigned && rightUnsigned)
            return static_cast<std::uint64_t>(leftBits) <=> static_cast<std::uint64_t>(rightBits);
        // What does not fit a signed number is larger than all of them.
        if (leftUnsigned && leftBits < 0) return std::partial_ordering::greater;
        if (rightUnsigned && rightBits < 0) return std::partial_ordering::less;
        return leftBits <=> rightBits;
    }
    if (const auto* a = left.get<Currency>(), *b = right.get<Currency>(); a && b)
        return a->tenThousandths <=> b->tenThousandths;
    return left.toDouble() <=> right.toDouble();
}

bool holds(BinaryOperator operation, std::partial_ordering order) {
    switch (operation) {
    case BinaryOperator::Equal:
        return std::is_eq(order);
    case BinaryOperator::NotEqual:
        return std::is_neq(order);
    case BinaryOperator::Less:
        return std::is_lt(order);
    case BinaryOperator::LessOrEqual:
        return std::is_lteq(order);
    case BinaryOperator::Greater:
        return std::is_gt(order);
    default:
        return std::is_gteq(order);
    }
}

bool compare(BinaryOperator operation, const Value& left, const Value& right) {
    const Kind leftKind = left.kind();
    const Kind rightKind = right.kind();
    if (left.isNumber() && right.isNumber()) return holds(operation, order(left, right));
    // Two Dates are compared by their times; only Is asks whether they are one object.
    const auto* const leftDate = stateOf<Date>(left.object());
    const auto* const rightDate = stateOf<Date>(right.object());
    if (leftDate && rightDate)
        return holds(operation, leftDate->totalSeconds() <=> rightDate->totalSeconds());
    const bool leftObject = leftKind == Kind::Object;
    const bool rightObject = rightKind == Kind::Object;
    if (!leftObject && !rightObject && (leftKind == Kind::String || rightKind == Kind::String))
        return holds(operation, compareText(left.toText(), right.toText()) <=> 0);
    if (!isEquality(operation)) raiseMismatch(spelling(operation), left, right);
    bool equal = false;
    if (leftObject && rightObject)
        equal = left.object() == right.object();
    else if (leftKind == Kind::Pointer && rightObject)
        equal = right.isNil() && !left.toInt64();
    else if (rightKind == Kind::Pointer && leftObject)
        equal = left.isNil() && !right.toInt64();
    else if (leftKind == rightKind)
        equal = left.toInt64() == right.toInt64();
    return equal == (operation == BinaryOperator::Equal);
}

std::uint64_t bits(const Value& value) { return static_cast<std::uint64_t>(integerBits(value)); }

Value currencyArithmetic(BinaryOperator operation, const Value& left, const Value& right) {
    const Value a = converted(left, Kind::Currency);
    const Value b = converted(right, Kind::Currency);
    const auto x = static_cast<std::uint64_t>(a.get<Currency>()->tenThousandths);
    const auto y = static_cast<std::uint64_t>(b.get<Currency>()->tenThousandths);
    if (operation == BinaryOperator::Add) return Currency{static_cast<std::int64_t>(x + y)};
    if (operation == BinaryOperator::Subtract) return Currency{static_cast<std::int64_t>(x - y)};
    return converted(left.toDouble() * right.toDouble(), Kind::Currency);
}

Value arithmetic(BinaryOperator operation, const Value& left, const Value& right) {
    const std::optional<Type> type = arithmeticType(left.type(), right.type());
    if (!type) raiseMismatch(spelling(operation), left, right);
    if (type->kind == Kind::Currency) return currencyArithmetic(operation, left, right);
    if (type->isInteger()) {
        const std::uint64_t a = bits(left);
        const std::uint64_t b = bits(right);
        const std::uint64_t answer = operation == BinaryOperator::Add        ? a + b
                                     : operation == BinaryOperator::Subtract ? a - b
                                                                             : a * b;
        return integerValue(static_cast<std::int64_t>(answer), type->kind);
    }
    const double a = left.toDouble();
    const double b = right.toDouble();
    const double answer = operation == BinaryOperator::Add        ? a + b
                          : operation == BinaryOperator::Subtract ? a - b
                                                                  : a * b;
    if (type->kind == Kind::Single) return static_cast<float>(answer);
    return answer;
}

Value divideIntegers(BinaryOperator operation, const Value& left, const Value& right) {
    const auto kindOf = [](const Value& value) {
        return value.type().isInteger() ? value.kind() : Kind::Int64;
    };
    const Kind kind = commonInteger(kindOf(left), kindOf(right));
    const bool isModulo = operation == BinaryOperator::Modulo;
    if (kind == Kind::UInt64) {
        const std::uint64_t divisor = right.toUInt64();
        if (divisor != 0) return isModulo ? left.toUInt64() % divisor : left.toUInt64() / divisor;
    }
    const std::int64_t answer = isModulo ? remainder(left.toInt64(), right.toInt64())
                                         : quotient(left.toInt64(), right.toInt64());
    return integerValue(answer, kind);
}

Value logic(BinaryOperator operation, const Value& left, const Value& right) {
    const std::optional<Type> type = logicType(left.type(), right.type());
    if (!type) raiseMismatch(spelling(operation), left, right);
    const std::uint64_t a = bits(left);
    const std::uint64_t b = bits(right);
    const std::uint64_t answer = operation == BinaryOperator::And  ? a & b
                                 : operation == BinaryOperator::Or ? a | b
                                                                   : a ^ b;
    if (type->kind == Kind::Boolean) return answer != 0;
    return integerValue(static_cast<std::int64_t>(answer), type->kind);
}

/// A Variant that is Nil counts as zero.
Value numeric(const Value& value) { return value.isNil() ? Value(0) : value; }

} // namespace

const char* spelling(BinaryOperator operation) {
    static constexpr const char* spellings[] = {
        "^",  "*", "/",  "\\", "Mod", "+",  "-",   "&",  "=",
        "<>", "<", "<=", ">",  ">=",  "Is", "And", "Or", "Xor"};
    return spellings[static_cast<int>(operation)];
}

const char* spelling(UnaryOperator operation) {
    static constexpr const char* spellings[] = {"-", "+", "Not"};
    return spellings[static_cast<int>(operation)];
}

std::optional<Type> resultType(BinaryOperator operation, const Type& left, const Type& right) {
    if (isComparison(operation)) return comparisonType(operation, left, right);
    const bool anyVariant = isVariant(left) || isVariant(right);
    const bool numbers = arithmeticType(left, right).has_value();
    switch (operation) {
    case BinaryOperator::Join:
        if (hasText(left) && hasText(right)) return Type(Kind::String);
        return std::nullopt;
    case BinaryOperator::Is:
        if (left.isReference() && right.isReference()) return Type(Kind::Boolean);
        return std::nullopt;
    case BinaryOperator::And:
    case BinaryOperator::Or:
    case BinaryOperator::Xor:
        return logicType(left, right);
    case BinaryOperator::Add:
        if (isPlain(left, Kind::String) && isPlain(right, Kind::String)) return left;
        if (anyVariant && (isPlain(left, Kind::String) || isPlain(right, Kind::String)))
            return Type(Kind::Variant);
        [[fallthrough]];
    case BinaryOperator::Subtract:
    case BinaryOperator::Multiply:
        return arithmeticType(left, right);
    case BinaryOperator::Divide:
    case BinaryOperator::Power:
        if (numbers) return Type(Kind::Double);
        return std::nullopt;
    case BinaryOperator::IntegerDivide:
    case BinaryOperator::Modulo: {
        if (!numbers) return std::nullopt;
        if (anyVariant) return Type(Kind::Variant);
        const auto kindOf = [](const Type& type) {
            return type.isInteger() ? type.kind : Kind::Int64;
        };
        return Type(commonInteger(kindOf(left), kindOf(right)));
    }
    default:
        return std::nullopt;
    }
}

std::optional<Type> resultType(UnaryOperator operation, const Type& operand) {
    if (isVariant(operand)) return operand;
    if (operation == UnaryOperator::Not) {
        if (isPlain(operand, Kind::Boolean) || operand.isInteger()) return operand;
        return std::nullopt;
    }
    if (!operand.isNumber()) return std::nullopt;
    return operand;
}

Value apply(BinaryOperator operation, const Value& leftValue, const Value& rightValue) {
    if (isComparison(operation)) return compare(operation, leftValue, rightValue);
    if (operation == BinaryOperator::Is) {
        const bool objects = leftValue.kind() == Kind::Object && rightValue.kind() == Kind::Object;
        return objects && leftValue.object() == rightValue.object();
    }
    if (operation == BinaryOperator::Join)
        return joinedText(*converted(leftValue, Kind::String).get<StringRef>(),
                          *converted(rightValue, Kind::String).get<StringRef>());
    if (operation == BinaryOperator::Add && leftValue.kind() == Kind::String &&
        rightValue.kind() == Kind::String)
        return joinedText(*leftValue.get<StringRef>(), *rightValue.get<StringRef>());

    const Value left = numeric(leftValue);
    const Value right = numeric(rightValue);
    switch (operation) {
    case BinaryOperator::And:
    case BinaryOperator::Or:
    case BinaryOperator::Xor:
        return logic(operation, left, right);
    case BinaryOperator::Add:
    case BinaryOperator::Subtract:
    case BinaryOperator::Multiply:
        return arithmetic(operation, left, right);
    default:
        break;
    }
    if (!left.isNumber() || !right.isNumber()) raiseMismatch(spelling(operation), left, right);
    switch (operation) {
    case BinaryOperator::Divide:
        return left.toDouble() / right.toDouble();
    case BinaryOperator::Power:
        return std::pow(left.toDouble(), right.toDouble());
    default:
        return divideIntegers(operation, left, right);
    }
}

Value apply(UnaryOperator operation, const Value& operandValue) {
    Value operand = numeric(operandValue);
    const std::optional<Type> type = resultType(operation, operand.type());
    if (!type)
        raise("TypeMismatchException",
              std::string("There is no ") + spelling(operation) + " " + operand.type().name());
    if (operation == UnaryOperator::Plus) return operand;
    if (operation == UnaryOperator::Not) {
        if (type->kind == Kind::Boolean) return !operand.toBoolean();
        return integerValue(~integerBits(operand), type->kind);
    }
    if (type->isInteger())
        return integerValue(static_cast<std::int64_t>(0 - bits(operand)), type->kind);
    if (type->kind == Kind::Currency)
        return Currency{static_cast<std::int64_t>(
            0 - static_cast<std::uint64_t>(operand.get<Currency>()->tenThousandths))};
    if (type->kind == Kind::Single) return -*operand.get<float>();
    return -operand.toDouble();
}

Value converted(const Value& value, const Type& type) {
    if (value.isNil() && !type.isReference()) return neutralValue(type);
    if (std::optional<Value> result = convert(value, type)) return *std::move(result);
    raise("TypeMismatchException", "Expected " + type.name() + " but found " + value.type().name());
}

namespace {

[[noreturn]] void raiseDivisionByZero() {
    raise("RuntimeException", "An integer was divided by zero");
}

} // namespace

std::int64_t quotient(std::int64_t left, std::int64_t right) {
    if (right == 0) raiseDivisionByZero();
    // The one quotient that does not fit wraps around.
    if (right == -1) return static_cast<std::int64_t>(0 - static_cast<std::uint64_t>(left));
    return left / right;
}

std::int64_t remainder(std::int64_t left, std::int64_t right) {
    if (right == 0) raiseDivisionByZero();
    return right == -1 ? 0 : left % right;
}

} // namespace host::language
