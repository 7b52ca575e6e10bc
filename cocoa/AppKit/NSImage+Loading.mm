/// Images from data, files, pasteboards, icons and CoreGraphics, and as TIFF.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSImage.h>
#import <AppKit/NSImageRep.h>
#import <AppKit/NSPasteboard.h>

#include "cocoa/AppKit/bitmap_state.h"
#include "cocoa/AppKit/icon_family.h"
#include "cocoa/AppKit/image_state.h"

using namespace cocoa::appkit;

@interface NSImage (LoadingHelpers)
- (id)initWithRepresentations:(NSArray*)representations;
- (NSArray*)bitmapRepresentations;
@end

@interface NSObject (ImageRepLoading)
+ (NSArray*)imageRepsWithData:(NSData*)data;
@end

@implementation NSImage (NSImageLoading)

- (id)initWithData:(NSData*)data {
    return [self initWithRepresentations:[NSImage representationsOfData:data upright:YES]];
}

- (id)initWithDataIgnoringOrientation:(NSData*)data {
    return [self initWithRepresentations:[NSImage representationsOfData:data upright:NO]];
}

- (id)initWithContentsOfFile:(NSString*)fileName {
    return [self initWithData:fileName ? [NSData dataWithContentsOfFile:fileName] : nil];
}

- (id)initWithContentsOfURL:(NSURL*)url {
    return [self initWithData:url ? [NSData dataWithContentsOfURL:url] : nil];
}

- (id)initByReferencingFile:(NSString*)fileName {
    return [self initByReferencingURL:fileName ? [NSURL fileURLWithPath:fileName] : nil];
}

- (id)initByReferencingURL:(NSURL*)url {
    if (!url) {
        [self release];
        return nil;
    }
    self = [self initWithSize:NSZeroSize];
    [self state]->reference = url;
    return self;
}

- (id)initWithPasteboard:(NSPasteboard*)pasteboard {
    NSString* type = [pasteboard availableTypeFromArray:[NSImage imagePasteboardTypes]];
    if (type) return [self initWithData:[pasteboard dataForType:type]];
    id files = [pasteboard propertyListForType:NSFilenamesPboardType];
    const bool named = [files isKindOfClass:[NSArray class]] && [files count] > 0 &&
                       [[files objectAtIndex:0] isKindOfClass:[NSString class]];
    return [self initWithContentsOfFile:named ? [files objectAtIndex:0] : nil];
}

- (id)initWithIconRef:(IconRef)iconRef {
    return [self initWithRepresentations:iconRepresentations(iconRef)];
}

- (id)initWithCGImage:(CGImageRef)cgImage size:(NSSize)size {
    auto rep = Owned<NSBitmapImageRep*>::adopt([[NSBitmapImageRep alloc] initWithCGImage:cgImage]);
    self = [self initWithRepresentations:rep.get() ? [NSArray arrayWithObject:rep] : nil];
    if (NSEqualSizes(size, NSZeroSize)) return self;
    [rep.get() setSize:size];
    [self setSize:size];
    return self;
}

- (NSData*)TIFFRepresentation {
    return [NSBitmapImageRep TIFFRepresentationOfImageRepsInArray:[self bitmapRepresentations]];
}

- (NSData*)TIFFRepresentationUsingCompression:(NSTIFFCompression)comp factor:(float)factor {
    return [NSBitmapImageRep TIFFRepresentationOfImageRepsInArray:[self bitmapRepresentations]
                                                 usingCompression:comp
                                                           factor:factor];
}

+ (BOOL)canInitWithPasteboard:(NSPasteboard*)pasteboard {
    if ([NSImageRep canInitWithPasteboard:pasteboard]) return YES;
    id files = [pasteboard propertyListForType:NSFilenamesPboardType];
    if (![files isKindOfClass:[NSArray class]] || ![files count]) return NO;
    id path = [files objectAtIndex:0];
    return [path isKindOfClass:[NSString class]] &&
           [NSImageRep imageRepClassForFileType:[path pathExtension]] != Nil;
}

+ (NSArray*)imageUnfilteredFileTypes {
    return [NSImageRep imageUnfilteredFileTypes];
}
+ (NSArray*)imageUnfilteredPasteboardTypes {
    return [NSImageRep imageUnfilteredPasteboardTypes];
}
+ (NSArray*)imageUnfilteredTypes {
    return [NSImageRep imageUnfilteredTypes];
}
+ (NSArray*)imageFileTypes {
    return [NSImageRep imageFileTypes];
}
+ (NSArray*)imagePasteboardTypes {
    return [NSImageRep imagePasteboardTypes];
}
+ (NSArray*)imageTypes {
    return [NSImageRep imageTypes];
}

@end

@implementation NSImage (LoadingPrivate)

+ (NSArray*)representationsOfData:(NSData*)data upright:(BOOL)upright {
    if (!data) return nil;
    Class reader = [NSImageRep imageRepClassForData:data];
    if (!reader) return nil;
    if ([reader isSubclassOfClass:[NSBitmapImageRep class]])
        return bitmapRepsOfData(reader, data, upright, false);
    return [reader respondsToSelector:@selector(imageRepsWithData:)]
               ? [reader imageRepsWithData:data]
               : nil;
}

@end

@implementation NSImage (LoadingHelpers)

/// Nil for none.
- (id)initWithRepresentations:(NSArray*)representations {
    if (![representations count]) {
        [self release];
        return nil;
    }
    self = [self initWithSize:NSZeroSize];
    [self addRepresentations:representations];
    return self;
}

/// The representations that are bitmaps, and those that are not drawn as such.
- (NSArray*)bitmapRepresentations {
    NSArray* representations = [self loadedRepresentations];
    NSMutableArray* bitmaps = [NSMutableArray array];
    for (NSUInteger index = 0; index < [representations count]; ++index) {
        NSImageRep* rep = [representations objectAtIndex:index];
        if ([rep isKindOfClass:[NSBitmapImageRep class]]) {
            [bitmaps addObject:rep];
            continue;
        }
        CGImageRef drawn = [rep CGImageForProposedRect:nullptr context:nil hints:nil];
        auto bitmap =
            Owned<NSBitmapImageRep*>::adopt([[NSBitmapImageRep alloc] initWithCGImage:drawn]);
        if (!bitmap.get()) continue;
        [bitmap.get() setSize:[rep size]];
        [bitmaps addObject:bitmap];
    }
    return bitmaps;
}

@end
