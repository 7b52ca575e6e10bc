#pragma once

/// Operations, as nodes.

#include "host/language/node.h"
#include "host/language/syntax.h"

namespace host::language {

/// Null when there is no such operation for the nodes' types; they are left untouched then.
NodePointer makeBinary(BinaryOperator operation, NodePointer& left, NodePointer& right);
NodePointer makeUnary(UnaryOperator operation, NodePointer& operand);

} // namespace host::language
