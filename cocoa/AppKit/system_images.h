#pragma once

/// The images that AppKit has names for, from the icon theme of the machine.

#include "cocoa/AppKit/ownership.h"

#import <AppKit/NSImage.h>

namespace cocoa::appkit {

/// A new image, without the name yet: one representation for each size in pixels, the smallest
/// first. Nil for other names and where the theme has no icon that can be read.
Owned<NSImage*> makeSystemImage(NSString* name);

} // namespace cocoa::appkit
