#pragma once

/// What the operators mean for values of any type.

#include "host/language/syntax.h"
#include "host/objects/value.h"

#include <optional>

namespace host::language {

/// The type of `left operation right`; nothing when there is no such operation.
std::optional<Type> resultType(BinaryOperator operation, const Type& left, const Type& right);
std::optional<Type> resultType(UnaryOperator operation, const Type& operand);

/// Raises TypeMismatchException when there is no such operation, and RuntimeException for `\` and
/// Mod by zero. Integers wrap around.
Value apply(BinaryOperator operation, const Value& left, const Value& right);
Value apply(UnaryOperator operation, const Value& operand);

/// As a program writes the operator.
const char* spelling(BinaryOperator operation);
const char* spelling(UnaryOperator operation);

/// The value as one of the type, as an assignment converts it; a Variant that is Nil becomes the
/// type's neutral value. Raises TypeMismatchException.
Value converted(const Value& value, const Type& type);

/// `\` and Mod of integers; by zero, they raise RuntimeException.
std::int64_t quotient(std::int64_t left, std::int64_t right);
std::int64_t remainder(std::int64_t left, std::int64_t right);

/// Integer bits cut to what the type holds.
inline std::int64_t wrapped(std::int64_t bits, Kind kind) {
    if (kind == Kind::Int32) return static_cast<std::int32_t>(bits);
    if (kind == Kind::UInt32) return static_cast<std::uint32_t>(bits);
    return bits;
}

} // namespace host::language
