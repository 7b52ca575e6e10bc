#pragma once

/// The element getters that arrays of older hosts carry.

#include "host/objects/type.h"

namespace host {

/// Arrays of hosts before this version carry their element getters; from then on they carry null.
inline constexpr double firstVersionWithBareArrays = 2013.0;
/// Behind this version a plug-in may not look at the word at all: what stands there reports that it
/// was called.
inline constexpr double lastVersionWithCarriedGetters = 2013.9;

/// What an array of this host has in its REALarrayStruct::elementGetter.
void* carriedElementGetter(const Type& elementType);

} // namespace host
