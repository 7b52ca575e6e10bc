#pragma once

#include "plugin/entry/cocoa_references.h"

#include <Cocoa/Cocoa.h>

/// Makes a CoreGraphics context the one that Cocoa draws into, for as long as this lives. Then its
/// state is what it was, it is flushed, and the former graphics context is current again.
class DrawingContext {
public:
    explicit DrawingContext(CGContextRef context)
        : graphics_([NSGraphicsContext graphicsContextWithGraphicsPort:context flipped:NO]) {
        if (!graphics_) return;
        [NSGraphicsContext setCurrentContext:graphics_];
        [graphics_ saveGraphicsState];
    }
    DrawingContext(const DrawingContext&) = delete;
    DrawingContext& operator=(const DrawingContext&) = delete;
    ~DrawingContext() {
        [graphics_ restoreGraphicsState];
        [graphics_ flushGraphics];
        [NSGraphicsContext setCurrentContext:former_.get()];
    }

    /// False when Cocoa has no graphics context for it.
    explicit operator bool() const { return graphics_ != nil; }

private:
    const CocoaReference<NSGraphicsContext*> former_ =
        CocoaReference<NSGraphicsContext*>::retain([NSGraphicsContext currentContext]);
    NSGraphicsContext* const graphics_;
};
