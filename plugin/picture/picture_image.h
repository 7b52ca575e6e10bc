#pragma once

#include "sdk/types.h"

#include <Carbon/Carbon.h>

/// A CGImage of a Picture for the caller, with a mask Picture (black where the image shows) or
/// without one (null); null when there is none. A mask that cannot be read is left out.
CGImageRef CreateCGImageInternal(REALpictureStruct* picture, REALpictureStruct* mask);
