#pragma once

/// The pictures of icon files (.icns) as representations.

#import <AppKit/NSImage.h>

namespace cocoa::appkit {

/// The bitmaps of an icon, the smallest first, one of each size in pixels and points; nil when
/// there are none or the handle is no icon. Those in encodings that no codec reads are passed over.
NSArray* iconRepresentations(IconRef icon);

} // namespace cocoa::appkit
