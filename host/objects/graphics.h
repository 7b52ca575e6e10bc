#pragma once

/// Graphics, which draws into a Picture, and RGBSurface, which reads and writes its pixels one by
/// one. What lies outside of the Picture is cut off. Nothing is drawn with soft edges.

#include "host/objects/object.h"
#include "host/objects/pixel_store.h"

namespace host {

/// Draws into the Picture, which it keeps.
ObjectRef newGraphics(ObjectRef picture);
ObjectRef newRGBSurface(ObjectRef picture);

void fill(PixelStore& store, Pixel pixel);

} // namespace host
