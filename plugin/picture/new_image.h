#pragma once

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// An autoreleased image of a Picture and an optional mask Picture of the same size, black where
/// the image shows; nil when a Picture cannot be read. Without a mask, the Picture's own is taken.
NSImage* NewNSImage(REALpictureStruct* image, REALpictureStruct* mask);
