#pragma once

/// Checks of what a plug-in passes to a service. An argument that is not what the service needs is
/// reported with the service's name and the argument's number, and the service does nothing.

#include "sdk/types.h"

#include <string_view>

namespace host::arguments {

/// Whether the object is alive and, when a class is named, of that class. Nil is not.
bool isObject(int number, REALobjectStruct* object, std::string_view className = {});
/// Whether the string is alive. The empty string, null, is not.
bool isString(int number, REALstringStruct* string);
/// True of the empty string too.
bool isText(int number, REALstringStruct* string);
/// Whether a place for a result, or other plain memory, was given.
bool isGiven(int number, const void* pointer);

} // namespace host::arguments
