#pragma once

/// Icon files (.icns): a table of pictures, each under a type of four characters.

#import <AppKit/NSImage.h>

namespace cocoa::appkit {

/// The bitmaps of an icon's members that are whole encoded pictures, the smallest first; nil when
/// there are none or the handle is no icon. The older members of bare samples are passed over.
NSArray* iconRepresentations(IconRef icon);

} // namespace cocoa::appkit
