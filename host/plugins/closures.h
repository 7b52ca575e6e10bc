#pragma once

/// C functions over members, for plug-ins that load a member by its declaration.

#include "host/objects/class.h"

namespace host {

/// A function of the method's C shape, with the object first unless it is shared. It lives as long
/// as the method, which must stay where it is, and is made once.
void* functionOf(const Method& method);

} // namespace host
