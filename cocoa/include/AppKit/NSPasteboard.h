#pragma once

#include <AppKit/AppKitDefines.h>

/// The classic names of types.
APPKIT_EXTERN NSString* const NSStringPboardType;
APPKIT_EXTERN NSString* const NSFilenamesPboardType; ///< a property list: an array of paths
APPKIT_EXTERN NSString* const NSTIFFPboardType;
APPKIT_EXTERN NSString* const NSPDFPboardType;
APPKIT_EXTERN NSString* const NSURLPboardType;
/// Type identifiers.
APPKIT_EXTERN NSString* const NSPasteboardTypeString;
APPKIT_EXTERN NSString* const NSPasteboardTypePNG;
APPKIT_EXTERN NSString* const NSPasteboardTypeTIFF;
APPKIT_EXTERN NSString* const NSPasteboardTypePDF;
/// The pasteboard that copying and pasting use.
APPKIT_EXTERN NSString* const NSGeneralPboard;

/// A pasteboard of this process. The classic name and the type identifier of TIFF, PNG, PDF and
/// text are two names of one type.
@interface NSPasteboard : NSObject {
@private
    NSString* _name;
    NSMutableArray* _types;
    NSMutableDictionary* _data; // by type
    NSMutableArray* _items;
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

/// What an object that is written to a pasteboard answers. NSImage, NSString, NSURL and
/// NSPasteboardItem do.
@protocol NSPasteboardWriting <NSObject>
- (NSArray*)writableTypesForPasteboard:(NSPasteboard*)pasteboard;
- (id)pasteboardPropertyListForType:(NSString*)type; ///< NSData or a property list; nil for none
@end

/// What a class whose objects are read from a pasteboard answers. NSImage, NSString and NSURL do.
@protocol NSPasteboardReading <NSObject>
+ (NSArray*)readableTypesForPasteboard:(NSPasteboard*)pasteboard;
- (id)initWithPasteboardPropertyList:(id)propertyList ofType:(NSString*)type;
@end

/// One of the things on a pasteboard, in one or more types.
@interface NSPasteboardItem : NSObject <NSPasteboardWriting> {
@private
    NSMutableArray* _types;
    NSMutableDictionary* _data; // by type
}

- (NSArray*)types;
- (NSString*)availableTypeFromArray:(NSArray*)types; ///< the first of `types` that is there
- (BOOL)setData:(NSData*)data forType:(NSString*)type;
- (BOOL)setString:(NSString*)string forType:(NSString*)type;
- (BOOL)setPropertyList:(id)propertyList forType:(NSString*)type;
- (NSData*)dataForType:(NSString*)type;
- (NSString*)stringForType:(NSString*)type;
- (id)propertyListForType:(NSString*)type;

@end

@interface NSPasteboard (NSPasteboardItems)

/// Adds an item for each object to what is there; NO when one of them cannot be written, and then
/// none is.
- (BOOL)writeObjects:(NSArray*)objects;
- (NSArray*)pasteboardItems;
/// For each item an object of the first of the classes that reads one of its types; items that no
/// class reads are left out.
- (NSArray*)readObjectsForClasses:(NSArray*)classArray options:(NSDictionary*)options;
- (BOOL)canReadObjectForClasses:(NSArray*)classArray options:(NSDictionary*)options;

@end

@interface NSObject (NSPasteboardOwner)
- (void)pasteboard:(NSPasteboard*)sender provideDataForType:(NSString*)type;
- (void)pasteboardChangedOwner:(NSPasteboard*)sender;
@end
