#import <AppKit/NSImage.h>
#import <AppKit/NSImageRep.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/image_state.h"

using namespace cocoa::appkit;

NSString* const NSImageCacheException = @"NSImageCacheException";
NSString* const NSImageHintInterpolation = @"NSImageHintInterpolation";

@implementation NSImage

- (id)init {
    return [self initWithSize:NSZeroSize];
}

- (id)initWithSize:(NSSize)size {
    self = [super init];
    if (!self) return nil;
    _state = new NSImageState;
    _state->size = size;
    _state->sizeIsSet = !NSEqualSizes(size, NSZeroSize);
    _state->representations = Owned<NSMutableArray*>::adopt([[NSMutableArray alloc] init]);
    return self;
}

- (void)dealloc {
    if (_state) [self forgetName];
    delete _state;
    [super dealloc];
}

/// The copy has copies of the representations, and no name.
- (id)copyWithZone:(NSZone*)zone {
    NSImage* copy = (NSImage*)NSCopyObject(self, 0, zone);
    copy->_state = new NSImageState(*_state);
    copy->_state->name = {};
    copy->_state->isNamed = false;
    copy->_state->representations = Owned<NSMutableArray*>::adopt([[NSMutableArray alloc] init]);
    for (NSUInteger index = 0; index < [_state->representations count]; ++index) {
        auto rep = Owned<NSImageRep*>::adopt(
            [[_state->representations objectAtIndex:index] copyWithZone:zone]);
        if (!rep.get()) { // not enough memory
            [copy release];
            return nil;
        }
        [copy->_state->representations addObject:rep];
    }
    return copy;
}

- (void)setSize:(NSSize)size {
    _state->size = size;
    _state->sizeIsSet = true;
}

- (NSSize)size {
    if (_state->sizeIsSet) return _state->size;
    NSArray* representations = [self loadedRepresentations];
    return [representations count] ? [[representations objectAtIndex:0] size] : NSZeroSize;
}

- (BOOL)isValid {
    return [[self loadedRepresentations] count] > 0;
}

- (NSArray*)representations {
    return [NSArray arrayWithArray:[self loadedRepresentations]];
}

- (void)addRepresentation:(NSImageRep*)imageRep {
    if (imageRep) [[self loadedRepresentations] addObject:imageRep];
}

- (void)addRepresentations:(NSArray*)imageReps {
    if (imageReps) [[self loadedRepresentations] addObjectsFromArray:imageReps];
}

- (void)removeRepresentation:(NSImageRep*)imageRep {
    if (imageRep) [[self loadedRepresentations] removeObjectIdenticalTo:imageRep];
}

- (void)setBackgroundColor:(NSColor*)color {
    _state->backgroundColor = color;
}

- (NSColor*)backgroundColor {
    // One object for all, so that asking changes nothing.
    static NSColor* const clear = [[NSColor clearColor] retain];
    return _state->backgroundColor.get() ? _state->backgroundColor.get() : clear;
}

- (NSString*)accessibilityDescription {
    return _state->accessibilityDescription;
}

- (void)setAccessibilityDescription:(NSString*)description {
    _state->accessibilityDescription = Owned<NSString*>::adopt([description copy]);
}

- (BOOL)isTemplate {
    return _state->isTemplate;
}
- (void)setTemplate:(BOOL)isTemplate {
    _state->isTemplate = isTemplate ? YES : NO;
}
- (void)setFlipped:(BOOL)flag {
    _state->flipped = flag ? YES : NO;
}
- (BOOL)isFlipped {
    return _state->flipped;
}
- (void)setCacheMode:(NSImageCacheMode)mode {
    _state->cacheMode = mode;
}
- (NSImageCacheMode)cacheMode {
    return _state->cacheMode;
}
- (void)setScalesWhenResized:(BOOL)flag {
    _state->scalesWhenResized = flag ? YES : NO;
}
- (BOOL)scalesWhenResized {
    return _state->scalesWhenResized;
}
- (void)setDataRetained:(BOOL)flag {
    _state->dataRetained = flag ? YES : NO;
}
- (BOOL)isDataRetained {
    return _state->dataRetained;
}
- (void)setCachedSeparately:(BOOL)flag {
    _state->cachedSeparately = flag ? YES : NO;
}
- (BOOL)isCachedSeparately {
    return _state->cachedSeparately;
}
- (void)setCacheDepthMatchesImageDepth:(BOOL)flag {
    _state->cacheDepthMatchesImageDepth = flag ? YES : NO;
}
- (BOOL)cacheDepthMatchesImageDepth {
    return _state->cacheDepthMatchesImageDepth;
}
- (void)setUsesEPSOnResolutionMismatch:(BOOL)flag {
    _state->usesEPSOnResolutionMismatch = flag ? YES : NO;
}
- (BOOL)usesEPSOnResolutionMismatch {
    return _state->usesEPSOnResolutionMismatch;
}
- (void)setPrefersColorMatch:(BOOL)flag {
    _state->prefersColorMatch = flag ? YES : NO;
}
- (BOOL)prefersColorMatch {
    return _state->prefersColorMatch;
}
- (void)setMatchesOnMultipleResolution:(BOOL)flag {
    _state->matchesOnMultipleResolution = flag ? YES : NO;
}
- (BOOL)matchesOnMultipleResolution {
    return _state->matchesOnMultipleResolution;
}

/// For changes that were made to the pixels behind a bitmap's back.
- (void)recache {
    for (NSUInteger index = 0; index < [_state->representations count]; ++index) {
        NSImageRep* rep = [_state->representations objectAtIndex:index];
        if ([rep isKindOfClass:[NSBitmapImageRep class]])
            if (NSBitmapState* bitmap = [(NSBitmapImageRep*)rep state]) bitmap->pixelsChange();
    }
}

/// Images are read whole when they are first asked about, so none is ever being loaded.
- (void)cancelIncrementalLoad {
}

- (NSString*)description {
    NSString* name =
        _state->name ? [NSString stringWithFormat:@" Name=%@", _state->name.get()] : @"";
    return [NSString stringWithFormat:@"<%@ %p%@ Size=%@ Reps=%@>", NSStringFromClass([self class]),
                                      self, name, NSStringFromSize([self size]),
                                      [self representations]];
}

@end

@implementation NSImage (Private)

- (NSImageState*)state {
    return _state;
}

- (NSMutableArray*)loadedRepresentations {
    if (_state->reference) {
        const auto url = std::move(_state->reference);
        _state->reference = {};
        NSArray* read = [NSImage representationsOfData:[NSData dataWithContentsOfURL:url]
                                               upright:YES];
        if (read) [_state->representations addObjectsFromArray:read];
    }
    return _state->representations;
}

@end
