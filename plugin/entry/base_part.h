#pragma once

/// What the family's base part adds to NSException. It may be absent, so each of these is asked for
/// before it is sent, but for the last.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

@interface NSException (BasePartZNT)

/// The process's live wrappers: Cocoa object, by identity, to host object. Neither is retained.
+ (CFMutableDictionaryRef)GetInstancesDictionaryZNT;

/// Makes the exception bridge ready.
+ (void)PrepareNSExceptionZNT;

/// A new host exception with one reference, or null.
+ (REALobjectStruct*)NewNSExceptionZNT:(NSException*)exception;

@end
