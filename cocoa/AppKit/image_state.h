#pragma once

/// What an NSImage holds, and how the parts of its implementation reach it.

#include "cocoa/AppKit/ownership.h"

#import <AppKit/NSColor.h>
#import <AppKit/NSImage.h>

struct NSImageState {
    NSSize size = NSZeroSize;
    bool sizeIsSet = false; ///< else the first representation's size is the image's
    cocoa::appkit::Owned<NSMutableArray*> representations;
    cocoa::appkit::Owned<NSURL*> reference; ///< where to read from when first asked; nil: done
    cocoa::appkit::Owned<NSString*> name;
    bool isNamed = false; ///< read without the lock of names
    cocoa::appkit::Owned<NSColor*> backgroundColor;
    cocoa::appkit::Owned<NSString*> accessibilityDescription;
    NSImageCacheMode cacheMode = NSImageCacheDefault;
    BOOL isTemplate = NO;
    BOOL flipped = NO;
    BOOL scalesWhenResized = NO;
    BOOL dataRetained = NO;
    BOOL cachedSeparately = NO;
    BOOL cacheDepthMatchesImageDepth = NO;
    BOOL usesEPSOnResolutionMismatch = NO;
    BOOL prefersColorMatch = YES;
    BOOL matchesOnMultipleResolution = YES;
};

@interface NSImage (Private)

- (NSImageState*)state;

/// The representations, read from the reference when that is still to be done.
- (NSMutableArray*)loadedRepresentations;

@end

@interface NSImage (LoadingPrivate)

/// Representations of all that data holds; nil when it is no image.
+ (NSArray*)representationsOfData:(NSData*)data upright:(BOOL)upright;

@end

@interface NSImage (NamesPrivate)

/// Takes the receiver out of the table of names.
- (void)forgetName;

@end
