#pragma once

/// The host's types as libffi describes them.

#include "host/objects/type.h"

#include <ffi.h>

namespace host {

ffi_type* ffiType(const Type& type);

} // namespace host
