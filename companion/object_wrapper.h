#pragma once

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// A host object dressed as a Cocoa object, so that it can stand in collections, as a key too, and
/// come back. Two wrappers of one host object are equal.
@interface ZNTREALobjectWrapper : NSObject <NSCopying> {
@private
    REALobjectStruct* hostObject;
}

/// Autoreleased; holds a host reference as long as it lives. Nil for null.
+ (ZNTREALobjectWrapper*)wrap:(REALobjectStruct*)object;

/// The host object, with a reference for the caller.
- (REALobjectStruct*)unwrap;

@end
