#pragma once

/// Host values of any kind and the Cocoa objects that carry them best. Both directions convert what
/// lies in collections too, and raise an NSException for collections nested without end. Host
/// exceptions are raised by neither, but for memory blocks that the host cannot make.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// Autoreleased, or borrowed from the wrapper that was given; nil for null and for values that
/// Cocoa has nothing for.
NSObject* GetVariantAsNSObject(REALobjectStruct* value);

/// A Variant or an object for the caller; null for nil, NSNull and what the host has no class for.
REALobjectStruct* NewVariantFromNSObject(NSObject* object);
