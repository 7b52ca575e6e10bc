#pragma once

/// What the family's base part adds to Cocoa. It may be absent, so each of these is asked for
/// before it is sent, but for the last of NSException.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>
#include <objc/runtime.h>

@interface NSException (BasePartZNT)

/// The process's live wrappers: Cocoa object, by identity, to host object. Neither is retained.
+ (CFMutableDictionaryRef)GetInstancesDictionaryZNT;

/// Makes the exception bridge ready.
+ (void)PrepareNSExceptionZNT;

/// A new host exception with one reference, or null.
+ (REALobjectStruct*)NewNSExceptionZNT:(NSException*)exception;

@end

/// The class ZNTREALobjectWrapper: host objects dressed as Cocoa objects.
@protocol ZNTREALobjectWrapping <NSObject>

/// Autoreleased; keeps the host object.
+ (NSObject*)wrap:(REALobjectStruct*)object;

/// The host object, with a reference for the caller.
- (REALobjectStruct*)unwrap;

@end

/// Nil without the base part.
inline Class<ZNTREALobjectWrapping> object_wrapper_class() {
    return objc_getClass("ZNTREALobjectWrapper");
}
