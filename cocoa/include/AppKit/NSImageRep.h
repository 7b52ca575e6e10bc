#pragma once

#include <AppKit/AppKitDefines.h>
#include <AppKit/NSGraphics.h>

@class NSGraphicsContext, NSPasteboard;

enum { NSImageRepMatchesDevice = 0 };

APPKIT_EXTERN NSString* const NSImageRepRegistryDidChangeNotification;

/// One form of an image: its size in points, its size in pixels, and the way to draw it.
/// Subclasses implement `draw`, or the pixels behind `CGImageForProposedRect:context:hints:`.
@interface NSImageRep : NSObject <NSCopying> {
@private
    NSSize _size;
    NSString* _colorSpaceName;
    NSInteger _bitsPerSample;
    NSInteger _pixelsWide;
    NSInteger _pixelsHigh;
    BOOL _alpha;
    BOOL _opaque;
}

/// Draws at the origin of the current coordinates, `size` large. NO when nothing could be drawn.
- (BOOL)draw;
- (BOOL)drawAtPoint:(NSPoint)point;
/// Scaled to fill `rect`.
- (BOOL)drawInRect:(NSRect)rect;
/// `srcRect` is in points of the receiver, from its bottom left; NSZeroRect is all of it. `delta`
/// is the opacity, 0 to 1. Unless `respectContextIsFlipped`, a flipped context shows the picture
/// upside down.
- (BOOL)drawInRect:(NSRect)dstRect
          fromRect:(NSRect)srcRect
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)delta
    respectFlipped:(BOOL)respectContextIsFlipped
             hints:(NSDictionary*)hints;

- (void)setSize:(NSSize)size;
- (NSSize)size;
- (void)setAlpha:(BOOL)flag;
- (BOOL)hasAlpha;
- (void)setOpaque:(BOOL)flag;
- (BOOL)isOpaque;
- (void)setColorSpaceName:(NSString*)name;
- (NSString*)colorSpaceName;
- (void)setBitsPerSample:(NSInteger)bits;
- (NSInteger)bitsPerSample;
- (void)setPixelsWide:(NSInteger)pixels;
- (NSInteger)pixelsWide;
- (void)setPixelsHigh:(NSInteger)pixels;
- (NSInteger)pixelsHigh;

/// The picture as it would be drawn into `*proposedDestRect` (null: at its own size); autoreleased.
- (CGImageRef)CGImageForProposedRect:(NSRect*)proposedDestRect
                             context:(NSGraphicsContext*)context
                               hints:(NSDictionary*)hints;

@end

@interface NSImageRep (NSImageRepRegistry)

/// The registry of classes that read images, asked in order of registration.
+ (void)registerImageRepClass:(Class)imageRepClass;
+ (void)unregisterImageRepClass:(Class)imageRepClass;
+ (NSArray*)registeredImageRepClasses;
+ (Class)imageRepClassForFileType:(NSString*)type; ///< an extension or a quoted HFS type
+ (Class)imageRepClassForPasteboardType:(NSString*)type;
+ (Class)imageRepClassForType:(NSString*)type; ///< a uniform type identifier
+ (Class)imageRepClassForData:(NSData*)data;

/// For NSImageRep itself: whether any registered class can. For a subclass: whether it can.
+ (BOOL)canInitWithData:(NSData*)data;
+ (BOOL)canInitWithPasteboard:(NSPasteboard*)pasteboard;

/// What the receiving class reads; for NSImageRep itself, what all registered classes read.
+ (NSArray*)imageUnfilteredFileTypes;
+ (NSArray*)imageUnfilteredPasteboardTypes;
+ (NSArray*)imageUnfilteredTypes;
+ (NSArray*)imageFileTypes;
+ (NSArray*)imagePasteboardTypes;
+ (NSArray*)imageTypes;

@end

@interface NSImageRep (NSImageRepLoading)

/// All the representations in a file, some data or the pasteboard; nil when there are none.
+ (NSArray*)imageRepsWithContentsOfFile:(NSString*)filename;
+ (NSArray*)imageRepsWithContentsOfURL:(NSURL*)url;
+ (NSArray*)imageRepsWithPasteboard:(NSPasteboard*)pasteboard;
/// The first of them; nil when there are none.
+ (id)imageRepWithContentsOfFile:(NSString*)filename;
+ (id)imageRepWithContentsOfURL:(NSURL*)url;
+ (id)imageRepWithPasteboard:(NSPasteboard*)pasteboard;

@end
