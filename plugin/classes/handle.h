#pragma once

/// The Cocoa object that a host object wraps: one retained pointer in its class data, which host
/// code sees as the property Handle.

#include "plugin/classes/definitions.h"
#include "plugin/entry/class_data.h"

#include <Cocoa/Cocoa.h>

#include <type_traits>

inline NSImage*& image_of(REALobjectStruct* object) {
    return *static_cast<NSImage**>(class_data(NSImageClass, object));
}

inline NSImageRep*& representation_of(REALobjectStruct* object) {
    return *static_cast<NSImageRep**>(class_data(NSImageRepClass, object));
}

/// The same, by the Cocoa class.
template <typename Wrapped>
Wrapped* handle_of(REALobjectStruct* object) {
    if constexpr (std::is_same_v<Wrapped*, NSImage*>)
        return image_of(object);
    else
        return static_cast<Wrapped*>(representation_of(object));
}
