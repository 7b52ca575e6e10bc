#pragma once

/// Sizes, as the family's class NSSizeZNT carries them: two single-precision floats at the start of
/// its data, width and height.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// A new host object for the caller; null when the host cannot make one.
REALobjectStruct* NewNSSizeZNT(NSSize size);

/// The size that a host object carries; null gives 0 by 0.
NSSize size_of(REALobjectStruct* hostSize);

/// Host programs give sizes in double precision, Cocoa takes them narrowed to single.
inline NSSize narrowed_size(double width, double height) {
    return NSMakeSize(static_cast<float>(width), static_cast<float>(height));
}
