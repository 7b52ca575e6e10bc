#pragma once

/// Images rendered into new host Pictures, for the caller; null whenever there is nothing to render
/// or no Picture to render into. Sizes are the image's in points, cut to whole ones.

#include "sdk/types.h"

#include <Cocoa/Cocoa.h>

/// The colours of a rectangle, in the image's own coordinates: `y` counts from its lower edge. A
/// width or height below 1 is the image's, and what lies outside the image is cut off. The colour
/// space is accepted and not used.
REALpictureStruct* NSImageCopyPictureRect(NSImage* image, int x, int y, int w, int h,
                                          CGColorSpaceRef colorSpace);

/// The transparency: black where the image is opaque, white where there is nothing. Up to 32767
/// pixels in each direction.
REALpictureStruct* NSImageCopyPictureMask(NSImage* image);

/// The colours, with the transparency as the Picture's mask if a representation has any; an image
/// that has some never comes back without its mask.
REALpictureStruct* NSImageCopyPictureWithMask(NSImage* image);
