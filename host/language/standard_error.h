#pragma once

/// `StdErr`: the object through which a program writes to standard error.

#include "host/language/execution.h"
#include "host/objects/class.h"

namespace host::language {

/// Defined in the running host on first use.
const Class& standardErrorClass();
ObjectRef newStandardError(TextSink sink);

} // namespace host::language
