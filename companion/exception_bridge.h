#pragma once

/// What this part adds to NSException, for itself and for the other parts of the family.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

@interface NSException (BasePartZNT)

/// The live wrappers of all parts: from a Cocoa object, by identity, to the host object that wraps
/// it. Neither is retained. One dictionary for the life of the process.
+ (CFMutableDictionaryRef)GetInstancesDictionaryZNT;

/// Looks up what the bridge needs, before an exception is there.
+ (void)PrepareNSExceptionZNT;

/// A new host exception with one reference for the caller: of the host class that is named as the
/// Cocoa exception is, where the host has such an exception class, otherwise a RuntimeException.
/// Its Message is "name: reason", its ErrorNumber 0. Null when the host can make neither, and for
/// nil.
+ (REALobjectStruct*)NewNSExceptionZNT:(NSException*)exception;

@end
