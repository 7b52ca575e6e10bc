#pragma once

/// Literals, variables, array elements and conversions.

#include "host/language/node.h"
#include "host/objects/array.h"

namespace host::language {

/// Where variables live.
enum class Storage {
    Local,     ///< in the frame of the call
    Global,    ///< in the frame of the main program
    Reference, ///< a ByRef parameter, which refers to a variable elsewhere
};

NodePointer makeLiteral(Value value, const Type& type);
NodePointer makeLiteral(Value value);
std::unique_ptr<Place> makeVariable(Storage storage, std::size_t slot, const Type& type);
/// Raises NilObjectException and OutOfBoundsException.
std::unique_ptr<Place> makeElement(NodePointer array, NodePointer index);

/// The node's value as one of the type; there must be a conversion.
NodePointer makeConversion(NodePointer node, const Type& type);

/// An array while it is worked on.
class ArrayAccess {
public:
    /// Raises NilObjectException when it is Nil.
    ArrayAccess(const Node& node, Machine& machine);
    Array& array() const { return *array_; }
    const Value& value() const { return *value_; }

private:
    Value kept_;
    const Value* value_;
    Array* array_;
};

/// Raises OutOfBoundsException when there is no element of this index.
Value& elementAt(Array& array, std::int64_t index);

} // namespace host::language
