#pragma once

/// Host wrappers of Core Foundation objects. Unlike the wrappers of Cocoa objects they are made
/// anew at every call.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// A new wrapper for the caller, of the host class of the object's type or else of the general one,
/// which retains the object. Null when the host has neither, and when the class's instances are not
/// laid out so. The object must not be null.
REALobjectStruct* NewCFObjectZNT(CFTypeRef object);
