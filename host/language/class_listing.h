#pragma once

/// Classes as text, for people.

#include "host/objects/class.h"

#include <string>

namespace host::language {

/// The class, its superclass and the members that it declares, one a line.
std::string describe(const Class& type);

} // namespace host::language
