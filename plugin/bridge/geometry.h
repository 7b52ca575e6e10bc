#pragma once

/// Sizes, points, rectangles and ranges, as the family's classes carry them at the start of their
/// data: NSSizeZNT and NSPointZNT two single-precision floats, NSRectZNT four (x, y, width,
/// height), NSRangeZNT two unsigned 32-bit integers (location, length).

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

// A new host object for the caller; null when the host cannot make one.
REALobjectStruct* NewNSSizeZNT(NSSize size);
REALobjectStruct* NewNSPointZNT(NSPoint point);
REALobjectStruct* NewNSRectZNT(NSRect rect);
REALobjectStruct* NewNSRangeZNT(NSRange range);

// What a host object carries; null gives zeros.
NSSize size_of(REALobjectStruct* hostSize);
NSPoint point_of(REALobjectStruct* hostPoint);
NSRect rect_of(REALobjectStruct* hostRect);
NSRange range_of(REALobjectStruct* hostRange);

/// Host programs give sizes in double precision, Cocoa takes them narrowed to single.
inline NSSize narrowed_size(double width, double height) {
    return NSMakeSize(static_cast<float>(width), static_cast<float>(height));
}
