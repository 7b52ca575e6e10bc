#pragma once

/// Folder items, strings and URLs. The way between folder items and file URLs are File Manager
/// references; an item that does not exist yet travels as its parent folder and its name, in
/// Unicode form D.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// Autoreleased; nil for a null item, or when no path can be made.
NSURL* NewNSURLfile(REALfolderItemStruct* item);

/// The URL that a string spells, autoreleased; nil for a null string and for one that is no URL.
NSURL* NewNSURL(REALstringStruct* string);

/// A new folder item for the caller; null for nil, or when no item can be made.
REALfolderItemStruct* NSURLRBFile(NSURL* url);
