#pragma once

/// Arrays: objects that hold values of one type.

#include "host/objects/value.h"

#include <vector>

namespace host {

struct Array : State {
    Type elementType; ///< changed by setElementType() only
    /// Each is of `elementType`; whoever stores converts.
    std::vector<Value> elements;

    std::int32_t upperBound() const { return static_cast<std::int32_t>(elements.size()) - 1; }
};

/// An array with elements 0 to `upperBound`, all neutral; none for -1.
ObjectRef newArray(const Type& elementType, std::int32_t upperBound = -1);

/// Makes an array one of another element type, which its elements must be of already.
void setElementType(REALobjectStruct* array, const Type& elementType);

/// The array that the value is; null for anything else.
Array* arrayOf(const Value& value);

} // namespace host
