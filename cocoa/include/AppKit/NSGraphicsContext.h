#pragma once

#include <AppKit/AppKitDefines.h>
#include <AppKit/NSGraphics.h>

@class NSBitmapImageRep;

enum {
    NSImageInterpolationDefault = 0,
    NSImageInterpolationNone = 1,
    NSImageInterpolationLow = 2,
    NSImageInterpolationHigh = 3,
    NSImageInterpolationMedium = 4,
};
typedef NSUInteger NSImageInterpolation;

/// Where drawing goes. Every thread has its own current context, nil until one is set.
@interface NSGraphicsContext : NSObject {
@private
    struct NSGraphicsContextState* _state;
}

+ (NSGraphicsContext*)currentContext;
+ (void)setCurrentContext:(NSGraphicsContext*)context; ///< retains; nil for none

/// No context draws to a screen here.
+ (BOOL)currentContextDrawingToScreen;

/// A context that draws into a CGContext, which it retains. `flipped` tells drawing that y runs
/// down; it does not itself change the transform. Nil for a null port.
+ (NSGraphicsContext*)graphicsContextWithGraphicsPort:(void*)graphicsPort flipped:(BOOL)flipped;

/// A context that draws straight into the representation's pixels. One unit is one pixel. Nil for a
/// representation whose layout cannot be drawn into.
+ (NSGraphicsContext*)graphicsContextWithBitmapImageRep:(NSBitmapImageRep*)bitmapRep;

/// Save: keeps the current context and saves its state. Restore: brings both back. A restore
/// without a save does nothing.
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;

- (void)saveGraphicsState;
- (void)restoreGraphicsState;

- (void*)graphicsPort; ///< the CGContextRef
- (BOOL)isFlipped;
- (BOOL)isDrawingToScreen;
- (void)flushGraphics;

/// Part of the graphics state.
- (NSImageInterpolation)imageInterpolation;
- (void)setImageInterpolation:(NSImageInterpolation)interpolation;
- (NSCompositingOperation)compositingOperation;
- (void)setCompositingOperation:(NSCompositingOperation)operation;
- (BOOL)shouldAntialias;
- (void)setShouldAntialias:(BOOL)flag;

@end
