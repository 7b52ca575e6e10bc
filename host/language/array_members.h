#pragma once

/// The members that every array has.

#include "host/language/call_nodes.h"
#include "host/objects/class.h"

#include <optional>
#include <string_view>

namespace host::language {

struct ArrayMember {
    Method method; ///< the signature, for arrays of the element type
    ArrayBody body;
};

/// Nothing when arrays of this element type have no such member: Sort is for numbers and strings.
std::optional<ArrayMember> findArrayMember(std::string_view name, const Type& elementType);

} // namespace host::language
