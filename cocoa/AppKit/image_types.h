#pragma once

/// The names of what the codecs read: extensions and quoted HFS types, pasteboard types,
/// identifiers.

#import <Foundation/Foundation.h>

namespace cocoa::appkit {

NSArray* codecFileTypes();
NSArray* codecPasteboardTypes();
NSArray* codecTypeIdentifiers();

} // namespace cocoa::appkit
