#pragma once

#include <AppKit/NSBitmapImageRep.h>
#include <AppKit/NSGraphics.h>

@class NSColor, NSGraphicsContext, NSImageRep, NSPasteboard;

typedef struct OpaqueIconRef* IconRef;

enum {
    NSImageCacheDefault = 0,
    NSImageCacheAlways = 1,
    NSImageCacheBySize = 2,
    NSImageCacheNever = 3,
};
typedef NSUInteger NSImageCacheMode;

enum {
    NSImageLoadStatusCompleted = 0,
    NSImageLoadStatusCancelled,
    NSImageLoadStatusInvalidData,
    NSImageLoadStatusUnexpectedEOF,
    NSImageLoadStatusReadError,
};
typedef NSUInteger NSImageLoadStatus;

APPKIT_EXTERN NSString* const NSImageCacheException;

/// A hint for drawing: NSNumber, an NSImageInterpolation that goes before the context's own.
APPKIT_EXTERN NSString* const NSImageHintInterpolation;

/// A picture in one or more representations. Size is in points; y runs up from the bottom left.
@interface NSImage : NSObject <NSCopying> {
@private
    struct NSImageState* _state;
}

- (id)init; ///< of zero size: the first representation then gives it its own
- (id)initWithSize:(NSSize)size;
- (void)setSize:(NSSize)size;
- (NSSize)size;
- (BOOL)isValid; ///< has a representation

- (NSArray*)representations;
- (void)addRepresentation:(NSImageRep*)imageRep;
- (void)addRepresentations:(NSArray*)imageReps;
- (void)removeRepresentation:(NSImageRep*)imageRep;
- (void)setBackgroundColor:(NSColor*)color; ///< drawn behind the picture; nil or clear: nothing
- (NSColor*)backgroundColor;                ///< clear until set
- (NSString*)accessibilityDescription;
- (void)setAccessibilityDescription:(NSString*)description;
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)isTemplate;

- (void)setFlipped:(BOOL)flag; ///< `lockFocus` then gives coordinates with y running down
- (BOOL)isFlipped;
- (void)setCacheMode:(NSImageCacheMode)mode;
- (NSImageCacheMode)cacheMode;
- (void)setScalesWhenResized:(BOOL)flag;
- (BOOL)scalesWhenResized;
- (void)setDataRetained:(BOOL)flag;
- (BOOL)isDataRetained;
- (void)setCachedSeparately:(BOOL)flag;
- (BOOL)isCachedSeparately;
- (void)setCacheDepthMatchesImageDepth:(BOOL)flag;
- (BOOL)cacheDepthMatchesImageDepth;
- (void)setUsesEPSOnResolutionMismatch:(BOOL)flag;
- (BOOL)usesEPSOnResolutionMismatch;
- (void)setPrefersColorMatch:(BOOL)flag;
- (BOOL)prefersColorMatch;
- (void)setMatchesOnMultipleResolution:(BOOL)flag;
- (BOOL)matchesOnMultipleResolution;
- (void)recache; ///< after pixels of a representation were changed in its memory
- (void)cancelIncrementalLoad;

@end

@interface NSImage (NSImageLoading)

/// Nil for data that is no whole image. An EXIF orientation is applied: the picture stands upright.
- (id)initWithData:(NSData*)data;
- (id)initWithDataIgnoringOrientation:(NSData*)data;
- (id)initWithContentsOfFile:(NSString*)fileName;
- (id)initWithContentsOfURL:(NSURL*)url;
/// Reads the file when the image is first asked about; `isValid` then tells whether it could.
- (id)initByReferencingFile:(NSString*)fileName;
- (id)initByReferencingURL:(NSURL*)url;
- (id)initWithPasteboard:(NSPasteboard*)pasteboard;
- (id)initWithIconRef:(IconRef)iconRef;
/// A size of zero is the image's own in pixels.
- (id)initWithCGImage:(CGImageRef)cgImage size:(NSSize)size;

/// One page for each bitmap; other representations are drawn first. Nil without representations.
- (NSData*)TIFFRepresentation;
- (NSData*)TIFFRepresentationUsingCompression:(NSTIFFCompression)comp factor:(float)factor;

+ (BOOL)canInitWithPasteboard:(NSPasteboard*)pasteboard;
/// As NSImageRep's.
+ (NSArray*)imageUnfilteredFileTypes;
+ (NSArray*)imageUnfilteredPasteboardTypes;
+ (NSArray*)imageUnfilteredTypes;
+ (NSArray*)imageFileTypes;
+ (NSArray*)imagePasteboardTypes;
+ (NSArray*)imageTypes;

@end

@interface NSImage (NSImageNames)

/// The image that bears the name now, which the name does not keep alive; else, for one of the names
/// below, the icon of the machine's icon theme, which then bears the name and stays. Nil when there
/// is neither, and for nil.
+ (id)imageNamed:(NSString*)name;
/// NO when another image bears the name; the receiver then keeps the one it has. Nil takes the
/// receiver's name away. An image that goes gives its name free.
- (BOOL)setName:(NSString*)string;
- (NSString*)name;

@end

@interface NSImage (NSImageDrawing)

/// `fromRect` is in the image's own points from its bottom left; NSZeroRect is all of it. `delta`
/// is the opacity, 0 to 1. Without a current context nothing is drawn.
- (void)drawAtPoint:(NSPoint)point
           fromRect:(NSRect)fromRect
          operation:(NSCompositingOperation)op
           fraction:(CGFloat)delta;
- (void)drawInRect:(NSRect)rect
          fromRect:(NSRect)fromRect
         operation:(NSCompositingOperation)op
          fraction:(CGFloat)delta;
- (void)drawInRect:(NSRect)dstSpacePortionRect
          fromRect:(NSRect)srcSpacePortionRect
         operation:(NSCompositingOperation)op
          fraction:(CGFloat)requestedAlpha
    respectFlipped:(BOOL)respectContextIsFlipped
             hints:(NSDictionary*)hints;
- (void)drawInRect:(NSRect)rect;
/// NO when the representation could not be drawn.
- (BOOL)drawRepresentation:(NSImageRep*)imageRep inRect:(NSRect)rect;

/// Upright whether or not the context is flipped, with the bottom left corner at the point.
- (void)compositeToPoint:(NSPoint)point operation:(NSCompositingOperation)op;
- (void)compositeToPoint:(NSPoint)point fromRect:(NSRect)rect operation:(NSCompositingOperation)op;
- (void)compositeToPoint:(NSPoint)point
               operation:(NSCompositingOperation)op
                fraction:(CGFloat)delta;
- (void)compositeToPoint:(NSPoint)point
                fromRect:(NSRect)rect
               operation:(NSCompositingOperation)op
                fraction:(CGFloat)delta;
- (void)dissolveToPoint:(NSPoint)point fraction:(CGFloat)delta;
- (void)dissolveToPoint:(NSPoint)point fromRect:(NSRect)rect fraction:(CGFloat)delta;

- (NSImageRep*)bestRepresentationForDevice:(NSDictionary*)deviceDescription;
- (NSImageRep*)bestRepresentationForRect:(NSRect)rect
                                 context:(NSGraphicsContext*)referenceContext
                                   hints:(NSDictionary*)hints;

/// Of the representation that fits best; autoreleased.
- (CGImageRef)CGImageForProposedRect:(NSRect*)proposedDestRect
                             context:(NSGraphicsContext*)referenceContext
                               hints:(NSDictionary*)hints;

@end

@interface NSImage (NSImageFocus)

/// Between lock and unlock the current context draws into the image. Afterwards its only
/// representation is a bitmap of 8-bit premultiplied RGBA, one pixel a point, of what it showed
/// with the drawing on top. Raises NSImageCacheException for an image without size or one too large
/// for memory.
- (void)lockFocus;
- (void)lockFocusFlipped:(BOOL)flipped;
- (void)unlockFocus;

@end

/// The images of the system. Those of the names that end in "Template" are templates: black, with
/// the picture in their alpha.
APPKIT_EXTERN NSString* const NSImageNameQuickLookTemplate;
APPKIT_EXTERN NSString* const NSImageNameBluetoothTemplate;
APPKIT_EXTERN NSString* const NSImageNameIChatTheaterTemplate;
APPKIT_EXTERN NSString* const NSImageNameSlideshowTemplate;
APPKIT_EXTERN NSString* const NSImageNameActionTemplate;
APPKIT_EXTERN NSString* const NSImageNameSmartBadgeTemplate;
APPKIT_EXTERN NSString* const NSImageNameIconViewTemplate;
APPKIT_EXTERN NSString* const NSImageNameListViewTemplate;
APPKIT_EXTERN NSString* const NSImageNameColumnViewTemplate;
APPKIT_EXTERN NSString* const NSImageNameFlowViewTemplate;
APPKIT_EXTERN NSString* const NSImageNamePathTemplate;
APPKIT_EXTERN NSString* const NSImageNameInvalidDataFreestandingTemplate;
APPKIT_EXTERN NSString* const NSImageNameLockLockedTemplate;
APPKIT_EXTERN NSString* const NSImageNameLockUnlockedTemplate;
APPKIT_EXTERN NSString* const NSImageNameGoRightTemplate;
APPKIT_EXTERN NSString* const NSImageNameGoLeftTemplate;
APPKIT_EXTERN NSString* const NSImageNameRightFacingTriangleTemplate;
APPKIT_EXTERN NSString* const NSImageNameLeftFacingTriangleTemplate;
APPKIT_EXTERN NSString* const NSImageNameAddTemplate;
APPKIT_EXTERN NSString* const NSImageNameRemoveTemplate;
APPKIT_EXTERN NSString* const NSImageNameRevealFreestandingTemplate;
APPKIT_EXTERN NSString* const NSImageNameFollowLinkFreestandingTemplate;
APPKIT_EXTERN NSString* const NSImageNameEnterFullScreenTemplate;
APPKIT_EXTERN NSString* const NSImageNameExitFullScreenTemplate;
APPKIT_EXTERN NSString* const NSImageNameStopProgressTemplate;
APPKIT_EXTERN NSString* const NSImageNameStopProgressFreestandingTemplate;
APPKIT_EXTERN NSString* const NSImageNameRefreshTemplate;
APPKIT_EXTERN NSString* const NSImageNameRefreshFreestandingTemplate;
APPKIT_EXTERN NSString* const NSImageNameBonjour;
APPKIT_EXTERN NSString* const NSImageNameComputer;
APPKIT_EXTERN NSString* const NSImageNameFolderBurnable;
APPKIT_EXTERN NSString* const NSImageNameFolderSmart;
APPKIT_EXTERN NSString* const NSImageNameFolder;
APPKIT_EXTERN NSString* const NSImageNameNetwork;
APPKIT_EXTERN NSString* const NSImageNameDotMac;
APPKIT_EXTERN NSString* const NSImageNameMobileMe;
APPKIT_EXTERN NSString* const NSImageNameMultipleDocuments;
APPKIT_EXTERN NSString* const NSImageNameUserAccounts;
APPKIT_EXTERN NSString* const NSImageNamePreferencesGeneral;
APPKIT_EXTERN NSString* const NSImageNameAdvanced;
APPKIT_EXTERN NSString* const NSImageNameInfo;
APPKIT_EXTERN NSString* const NSImageNameFontPanel;
APPKIT_EXTERN NSString* const NSImageNameColorPanel;
APPKIT_EXTERN NSString* const NSImageNameUser;
APPKIT_EXTERN NSString* const NSImageNameUserGroup;
APPKIT_EXTERN NSString* const NSImageNameEveryone;
APPKIT_EXTERN NSString* const NSImageNameUserGuest;
APPKIT_EXTERN NSString* const NSImageNameMenuOnStateTemplate;
APPKIT_EXTERN NSString* const NSImageNameMenuMixedStateTemplate;
APPKIT_EXTERN NSString* const NSImageNameApplicationIcon;
APPKIT_EXTERN NSString* const NSImageNameTrashEmpty;
APPKIT_EXTERN NSString* const NSImageNameTrashFull;
APPKIT_EXTERN NSString* const NSImageNameHomeTemplate;
APPKIT_EXTERN NSString* const NSImageNameBookmarksTemplate;
APPKIT_EXTERN NSString* const NSImageNameCaution;
APPKIT_EXTERN NSString* const NSImageNameStatusAvailable;
APPKIT_EXTERN NSString* const NSImageNameStatusPartiallyAvailable;
APPKIT_EXTERN NSString* const NSImageNameStatusUnavailable;
APPKIT_EXTERN NSString* const NSImageNameStatusNone;
APPKIT_EXTERN NSString* const NSImageNameShareTemplate;
