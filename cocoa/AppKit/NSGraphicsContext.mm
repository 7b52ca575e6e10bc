#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSGraphicsContext.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/graphics.h"
#include "cocoa/AppKit/ownership.h"

#include <vector>

using namespace cocoa::appkit;

namespace {

struct Settings {
    NSImageInterpolation interpolation = NSImageInterpolationDefault;
    NSCompositingOperation operation = NSCompositeSourceOver;
    BOOL antialias = YES;
};

thread_local Owned<NSGraphicsContext*> current;
thread_local std::vector<Owned<NSGraphicsContext*>> savedContexts;

} // namespace

struct NSGraphicsContextState {
    OwnedRef<CGContextRef> port;
    CGAffineTransform base;
    BOOL flipped = NO;
    Settings settings;
    std::vector<Settings> saved;
};

@interface NSGraphicsContext (Making)
- (id)initWithPort:(CGContextRef)port flipped:(BOOL)flipped;
@end

@implementation NSGraphicsContext

+ (NSGraphicsContext*)currentContext {
    return [[current.get() retain] autorelease];
}

+ (void)setCurrentContext:(NSGraphicsContext*)context {
    current = Owned<NSGraphicsContext*>(context);
}

+ (BOOL)currentContextDrawingToScreen {
    return NO;
}

+ (NSGraphicsContext*)graphicsContextWithGraphicsPort:(void*)graphicsPort flipped:(BOOL)flipped {
    return [[[self alloc] initWithPort:static_cast<CGContextRef>(graphicsPort)
                               flipped:flipped] autorelease];
}

+ (NSGraphicsContext*)graphicsContextWithBitmapImageRep:(NSBitmapImageRep*)bitmapRep {
    const auto port = OwnedRef<CGContextRef>::adopt([bitmapRep newDrawingPort]);
    return [self graphicsContextWithGraphicsPort:port.get() flipped:NO];
}

+ (void)saveGraphicsState {
    [current.get() saveGraphicsState];
    savedContexts.push_back(current);
}

+ (void)restoreGraphicsState {
    if (savedContexts.empty()) return;
    current = std::move(savedContexts.back());
    savedContexts.pop_back();
    [current.get() restoreGraphicsState];
}

- (id)init {
    return [self initWithPort:nullptr flipped:NO];
}

- (void)dealloc {
    delete _state;
    [super dealloc];
}

- (void)saveGraphicsState {
    CGContextSaveGState(_state->port.get());
    _state->saved.push_back(_state->settings);
}

- (void)restoreGraphicsState {
    if (_state->saved.empty()) return;
    CGContextRestoreGState(_state->port.get());
    _state->settings = _state->saved.back();
    _state->saved.pop_back();
}

- (void*)graphicsPort {
    return _state->port.get();
}

- (BOOL)isFlipped {
    return _state->flipped;
}

- (BOOL)isDrawingToScreen {
    return NO;
}

- (void)flushGraphics {
    CGContextFlush(_state->port.get());
}

- (NSImageInterpolation)imageInterpolation {
    return _state->settings.interpolation;
}

- (void)setImageInterpolation:(NSImageInterpolation)interpolation {
    _state->settings.interpolation = interpolation;
    CGContextSetInterpolationQuality(_state->port.get(),
                                     static_cast<CGInterpolationQuality>(interpolation));
}

- (NSCompositingOperation)compositingOperation {
    return _state->settings.operation;
}

- (void)setCompositingOperation:(NSCompositingOperation)operation {
    CGContextSetBlendMode(_state->port.get(), blendMode(operation));
    _state->settings.operation = operation;
}

- (BOOL)shouldAntialias {
    return _state->settings.antialias;
}

- (void)setShouldAntialias:(BOOL)flag {
    _state->settings.antialias = flag ? YES : NO;
    CGContextSetShouldAntialias(_state->port.get(), flag);
}

@end

@implementation NSGraphicsContext (Making)

- (id)initWithPort:(CGContextRef)port flipped:(BOOL)flipped {
    self = [super init];
    if (!self || !port) {
        [self release];
        return nil;
    }
    _state = new NSGraphicsContextState;
    _state->port = OwnedRef<CGContextRef>::retain(port);
    _state->base = CGContextGetCTM(port);
    _state->flipped = flipped ? YES : NO;
    return self;
}

@end

@implementation NSGraphicsContext (Private)

- (CGAffineTransform)baseTransform {
    return _state->base;
}

+ (NSGraphicsContext*)contextWithBitmap:(NSBitmapImageRep*)bitmap
                                   size:(NSSize)size
                                flipped:(BOOL)flipped {
    const auto port = OwnedRef<CGContextRef>::adopt([bitmap newDrawingPort]);
    if (!port) return nil;
    const auto width = static_cast<CGFloat>(CGBitmapContextGetWidth(port.get()));
    const auto height = static_cast<CGFloat>(CGBitmapContextGetHeight(port.get()));
    if (flipped) {
        CGContextTranslateCTM(port.get(), 0, height);
        CGContextScaleCTM(port.get(), 1, -1);
    }
    CGContextScaleCTM(port.get(), width / size.width, height / size.height);
    return [self graphicsContextWithGraphicsPort:port.get() flipped:flipped];
}

@end
