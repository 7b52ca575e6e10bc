#pragma once

/// Host dictionaries and NSDictionary. Keys and values are converted as Variants are; nested
/// dictionaries too.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// Autoreleased; nil for null. An entry whose key is null is left out; what has no counterpart in
/// Cocoa is NSNull.
NSDictionary* NewNSDictionary(REALdictionaryStruct* dictionary);

/// A new host dictionary for the caller; null for nil and when the host makes none.
REALdictionaryStruct* NSDictionaryRB(NSDictionary* dictionary);
