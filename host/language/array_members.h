#pragma once

/// The members that every array has.

#include "host/language/call_nodes.h"
#include "host/objects/class.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace host::language {

/// What the elements of an array can be made to number: a gigabyte on a 64-bit host.
constexpr std::int64_t maximumElementCount = std::int64_t{1} << 26;

struct ArrayMember {
    Method method; ///< the signature, for arrays of the element type
    ArrayBody body;
};

/// Nothing when arrays of this element type have no such member: Sort is for numbers, strings
/// and Dates.
std::optional<ArrayMember> findArrayMember(std::string_view name, const Type& elementType);

} // namespace host::language
