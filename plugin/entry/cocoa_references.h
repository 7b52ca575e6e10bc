#pragma once

#include "plugin/entry/references.h"

#include <Cocoa/Cocoa.h>

struct CocoaTraits {
    static bool retain(id object) { return [object retain] != nil; }
    static void release(id object) { [object release]; }
};

/// Owner of a Cocoa object, for example CocoaReference<NSImage*>.
template <typename Pointer>
using CocoaReference = Reference<Pointer, CocoaTraits>;
