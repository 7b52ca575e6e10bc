#pragma once

/// Class definitions as plug-ins register them.

#include "host/objects/runtime.h"

namespace host {

inline constexpr int oldestControlVersion = 9;

/// The newest layout of class definitions that a host of the version reads.
int newestControlVersion(double hostVersion);

/// Reads a definition in the layout that the plug-in declared, adds its class, and writes the
/// offset of the class's data into the definition. What is malformed is reported as misuse: the
/// member is left out, or the whole class when the definition itself cannot be read.
void readDefinition(Runtime& runtime, REALclassDefinition* definition);

} // namespace host
