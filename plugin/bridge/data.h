#pragma once

/// Memory blocks and NSData. Both directions copy the bytes. An empty block and empty data are
/// nothing: nil and null.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// Autoreleased; nil for a null block, for size 0 and when the host does not give the bytes.
NSData* NewNSData(REALmemoryBlockStruct* block);

/// A new block for the caller; null for nil or empty data. When the host cannot make a block of
/// that size, an OutOfMemoryException is raised.
REALmemoryBlockStruct* NSDataRB(NSData* data);
