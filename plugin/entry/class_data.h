#pragma once

#include "sdk/records.h"

/// The data that a class has in an object of it or of one of its subclasses. The host wrote the
/// offset into the definition at registration.
inline void* class_data(const REALclassDefinition& definition, REALobjectStruct* object) {
    return reinterpret_cast<char*>(object) + definition.systemUse;
}
