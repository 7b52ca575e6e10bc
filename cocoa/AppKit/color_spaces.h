#pragma once

/// What the named colour spaces stand for.

#include "cocoa/AppKit/bitmap_layout.h"
#include "cocoa/AppKit/ownership.h"

#import <AppKit/NSColorSpace.h>
#import <AppKit/NSGraphics.h>

#include <optional>

namespace cocoa::appkit {

struct NamedSpace {
    ColorModel model = ColorModel::RGB;
    bool zeroIsWhite = false; ///< the black spaces: 0 is white
    bool calibrated = false;
};

/// Nothing for nil and for names of no fixed components.
std::optional<NamedSpace> namedSpace(NSString* name);

/// The name that pixels of a model bear when a file says nothing else.
NSString* defaultSpaceName(ColorModel model);

/// The space object of a name; nil for an unknown one.
NSColorSpace* colorSpaceOfName(NSString* name);

OwnedRef<CGColorSpaceRef> deviceSpace(ColorModel model);

/// Nothing for spaces of other kinds.
std::optional<ColorModel> modelOf(CGColorSpaceRef space);

} // namespace cocoa::appkit
