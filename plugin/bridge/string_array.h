#pragma once

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// Inserts the strings of `list` from index 0 on into a new host array; an empty string is inserted
/// as null. Nothing happens when either is null. The elements must be NSStrings.
void FillStringArray(REALarrayStruct* array, NSArray* list);
