#pragma once

#include <AppKit/AppKitDefines.h>

APPKIT_EXTERN NSString* const NSStringPboardType;
APPKIT_EXTERN NSString* const NSFilenamesPboardType;
APPKIT_EXTERN NSString* const NSTIFFPboardType;
APPKIT_EXTERN NSString* const NSPasteboardTypeString;
APPKIT_EXTERN NSString* const NSPasteboardTypePNG;
APPKIT_EXTERN NSString* const NSPasteboardTypeTIFF;
APPKIT_EXTERN NSString* const NSGeneralPboard;

/// A pasteboard of this process. The classic name and the type identifier of TIFF and of text are
/// two names of one type.
@interface NSPasteboard : NSObject {
@private
    NSString* _name;
    NSMutableArray* _types;
    NSMutableDictionary* _data; // by type
    id _owner;
    NSInteger _changeCount;
}

+ (NSPasteboard*)generalPasteboard;
+ (NSPasteboard*)pasteboardWithName:(NSString*)name; ///< one object for each name
+ (NSPasteboard*)pasteboardWithUniqueName;

- (NSString*)name;
- (NSInteger)changeCount;

/// Empties the pasteboard and gives the new change count.
- (NSInteger)clearContents;
/// Clears it and declares `types`. `owner`, which is retained until the next declaration, is sent
/// `pasteboard:provideDataForType:` when data that was not set is asked for.
- (NSInteger)declareTypes:(NSArray*)newTypes owner:(id)newOwner;
- (NSInteger)addTypes:(NSArray*)newTypes owner:(id)newOwner;

- (NSArray*)types;
- (NSString*)availableTypeFromArray:(NSArray*)types; ///< the first of `types` that is there

/// NO for a type that was not declared.
- (BOOL)setData:(NSData*)data forType:(NSString*)dataType;
- (BOOL)setString:(NSString*)string forType:(NSString*)dataType;
- (BOOL)setPropertyList:(id)plist forType:(NSString*)dataType;
- (NSData*)dataForType:(NSString*)dataType;
- (NSString*)stringForType:(NSString*)dataType;
- (id)propertyListForType:(NSString*)dataType;

@end

@interface NSObject (NSPasteboardOwner)
- (void)pasteboard:(NSPasteboard*)sender provideDataForType:(NSString*)type;
- (void)pasteboardChangedOwner:(NSPasteboard*)sender;
@end
