#pragma once

/// Calls: of a program's own routines, of functions, and of the members of classes.

#include "host/language/machine.h"
#include "host/language/node.h"
#include "host/objects/array.h"
#include "host/objects/class.h"

#include <span>

namespace host::language {

/// One argument of a call: a value of the parameter's type, or for a ByRef parameter a place of
/// that type.
using ArgumentList = NodeList;

NodePointer makeRoutineCall(const RoutineNode& routine, ArgumentList arguments,
                            std::vector<bool> isReference);
/// A Delegate of a Sub, which takes the Thread that runs it, or nothing.
NodePointer makeDelegate(const RoutineNode& routine, bool takesThread);
/// Every parameter has an argument.
NodePointer makeFunctionCall(const Method& function, ArgumentList arguments);
/// `object` is null for a shared method. Trailing arguments may be left to their defaults.
NodePointer makeMethodCall(const Method& method, NodePointer object, ArgumentList arguments);
/// `object` is null for a shared property.
std::unique_ptr<Place> makeProperty(const Property& property, NodePointer object);
/// What a Variant of any kind shows through a property of the class Variant; neutral for Nil.
NodePointer makeVariantView(const Property& property, NodePointer variant);
/// `constructor` is null for a class that declares none.
NodePointer makeNew(const Class& type, const Method* constructor, ArgumentList arguments);
/// Raises IllegalCastException for an object of another class; Nil stays Nil.
NodePointer makeCast(const Class& type, NodePointer object);
NodePointer makeIsA(const Class& type, NodePointer object);

/// A member that every array has.
using ArrayBody = Value (*)(Array& array, std::span<Value> arguments);
NodePointer makeArrayCall(const Type& result, ArrayBody body, NodePointer array,
                          ArgumentList arguments);
NodePointer makeUpperBound(NodePointer array);
/// The function Array: its arguments are of the element type already.
NodePointer makeArray(const Type& elementType, ArgumentList elements);

} // namespace host::language
