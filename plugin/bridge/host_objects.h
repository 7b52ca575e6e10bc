#pragma once

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// The Cocoa object that a host object stands for, decided by the first of the known host classes
/// that it belongs to: autoreleased, or borrowed from a wrapper. A host object of no known class is
/// dressed as a Cocoa object; nil without the base part.
NSObject* NSObjectOfHostObject(REALobjectStruct* object);
