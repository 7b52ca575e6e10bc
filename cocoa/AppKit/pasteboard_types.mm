#include "cocoa/AppKit/pasteboard_types.h"

#include "cocoa/AppKit/ownership.h"

#import <AppKit/NSImage.h>

#include <string_view>

NSString* const NSStringPboardType = @"NSStringPboardType";
NSString* const NSFilenamesPboardType = @"NSFilenamesPboardType";
NSString* const NSTIFFPboardType = @"NeXT TIFF v4.0 pasteboard type";
NSString* const NSPDFPboardType = @"Apple PDF pasteboard type";
NSString* const NSURLPboardType = @"Apple URL pasteboard type";
NSString* const NSPasteboardTypeString = @"public.utf8-plain-text";
NSString* const NSPasteboardTypePNG = @"public.png";
NSString* const NSPasteboardTypeTIFF = @"public.tiff";
NSString* const NSPasteboardTypePDF = @"com.adobe.pdf";

using namespace cocoa::appkit;

namespace cocoa::appkit {

NSString* const fileURLType = @"public.file-url";

namespace {

NSString* const urlType = @"public.url";

struct Alias {
    NSString* classic;
    NSString* identifier;
};

const Alias aliases[] = {
    {NSTIFFPboardType, NSPasteboardTypeTIFF},
    {@"Apple PNG pasteboard type", NSPasteboardTypePNG},
    {NSPDFPboardType, NSPasteboardTypePDF},
    {NSStringPboardType, NSPasteboardTypeString},
};

} // namespace

NSString* canonicalType(NSString* type) {
    for (const Alias& alias : aliases)
        if ([alias.classic isEqual:type]) return alias.identifier;
    return type;
}

bool containsType(NSArray* types, NSString* type) {
    for (NSUInteger index = 0; index < [types count]; ++index)
        if ([canonicalType([types objectAtIndex:index]) isEqual:canonicalType(type)]) return true;
    return false;
}

void addTypes(NSMutableArray* types, NSArray* more) {
    for (NSUInteger index = 0; index < [more count]; ++index)
        if (!containsType(types, [more objectAtIndex:index]))
            [types addObject:[more objectAtIndex:index]];
}

NSString* firstAvailable(NSArray* wanted, NSArray* types) {
    for (NSUInteger index = 0; index < [wanted count]; ++index)
        if (containsType(types, [wanted objectAtIndex:index])) return [wanted objectAtIndex:index];
    return nil;
}

NSData* dataOfPropertyList(id propertyList) {
    if (!propertyList) return nil;
    return [NSPropertyListSerialization dataFromPropertyList:propertyList
                                                      format:NSPropertyListXMLFormat_v1_0
                                            errorDescription:nullptr];
}

id propertyListOfData(NSData* data) {
    // As XML or binary, which are all that is written to pasteboards. Base takes nearly any other
    // bytes for a list in the old style, and loses memory over them.
    const std::string_view text(static_cast<const char*>([data bytes]), [data length]);
    if (!text.starts_with("<?xml") && !text.starts_with("bplist")) return nil;
    @try {
        return [NSPropertyListSerialization propertyListFromData:data
                                                mutabilityOption:NSPropertyListImmutable
                                                          format:nullptr
                                                errorDescription:nullptr];
    } @catch (NSException*) {
        // Base raises for some of what is no property list, where Cocoa gives nil.
        return nil;
    }
}

NSString* stringOfData(NSData* data) {
    if (!data) return nil;
    return [[[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding] autorelease];
}

NSPasteboardItem* itemOfObject(id object, NSPasteboard* pasteboard) {
    if (![object respondsToSelector:@selector(writableTypesForPasteboard:)] ||
        ![object respondsToSelector:@selector(pasteboardPropertyListForType:)])
        return nil;
    NSPasteboardItem* item = [[[NSPasteboardItem alloc] init] autorelease];
    NSArray* types = [object writableTypesForPasteboard:pasteboard];
    for (NSUInteger index = 0; index < [types count]; ++index) {
        NSString* type = [types objectAtIndex:index];
        id content = [object pasteboardPropertyListForType:type];
        if ([content isKindOfClass:[NSData class]])
            [item setData:content forType:type];
        else if ([content isKindOfClass:[NSString class]])
            [item setString:content forType:type];
        else
            [item setPropertyList:content forType:type];
    }
    return [[item types] count] ? item : nil;
}

NSArray* readableTypes(Class reader, NSPasteboard* pasteboard) {
    return [reader respondsToSelector:@selector(readableTypesForPasteboard:)]
               ? [reader readableTypesForPasteboard:pasteboard]
               : nil;
}

id objectOfItem(NSPasteboardItem* item, NSArray* classes, NSPasteboard* pasteboard) {
    for (NSUInteger index = 0; index < [classes count]; ++index) {
        Class reader = [classes objectAtIndex:index];
        NSString* type = [item availableTypeFromArray:readableTypes(reader, pasteboard)];
        if (!type) continue;
        id object = [[[reader alloc] initWithPasteboardPropertyList:[item dataForType:type]
                                                             ofType:type] autorelease];
        if (object) return object;
    }
    return nil;
}

} // namespace cocoa::appkit

@implementation NSPasteboardItem

- (id)init {
    self = [super init];
    if (!self) return nil;
    _types = [[NSMutableArray alloc] init];
    _data = [[NSMutableDictionary alloc] init];
    return self;
}

- (void)dealloc {
    [_types release];
    [_data release];
    [super dealloc];
}

- (NSArray*)types {
    return [NSArray arrayWithArray:_types];
}

- (NSString*)availableTypeFromArray:(NSArray*)types {
    return firstAvailable(types, _types);
}

- (BOOL)setData:(NSData*)data forType:(NSString*)type {
    if (!data || !type) return NO;
    addTypes(_types, [NSArray arrayWithObject:type]);
    [_data setObject:Owned<NSData*>::adopt([data copy]) forKey:canonicalType(type)];
    return YES;
}

- (BOOL)setString:(NSString*)string forType:(NSString*)type {
    return [self setData:[string dataUsingEncoding:NSUTF8StringEncoding] forType:type];
}

- (BOOL)setPropertyList:(id)propertyList forType:(NSString*)type {
    return [self setData:dataOfPropertyList(propertyList) forType:type];
}

- (NSData*)dataForType:(NSString*)type {
    return type ? [[[_data objectForKey:canonicalType(type)] retain] autorelease] : nil;
}

- (NSString*)stringForType:(NSString*)type {
    return stringOfData([self dataForType:type]);
}

- (id)propertyListForType:(NSString*)type {
    return propertyListOfData([self dataForType:type]);
}

- (NSArray*)writableTypesForPasteboard:(NSPasteboard*)pasteboard {
    return [self types];
}

- (id)pasteboardPropertyListForType:(NSString*)type {
    return [self dataForType:type];
}

@end

// What lies on a pasteboard is data, so that is what the classes below are made from.

@interface NSImage (Pasteboard) <NSPasteboardWriting, NSPasteboardReading>
@end

@implementation NSImage (Pasteboard)

- (NSArray*)writableTypesForPasteboard:(NSPasteboard*)pasteboard {
    return [NSArray arrayWithObject:NSPasteboardTypeTIFF];
}

- (id)pasteboardPropertyListForType:(NSString*)type {
    return [canonicalType(type) isEqual:NSPasteboardTypeTIFF] ? [self TIFFRepresentation] : nil;
}

+ (NSArray*)readableTypesForPasteboard:(NSPasteboard*)pasteboard {
    return [[NSImage imagePasteboardTypes] arrayByAddingObject:fileURLType];
}

- (id)initWithPasteboardPropertyList:(id)propertyList ofType:(NSString*)type {
    if (![type isEqual:fileURLType]) return [self initWithData:propertyList];
    NSString* text = stringOfData(propertyList);
    return [self initWithContentsOfURL:text ? [NSURL URLWithString:text] : nil];
}

@end

@interface NSString (Pasteboard) <NSPasteboardWriting, NSPasteboardReading>
@end

@implementation NSString (Pasteboard)

- (NSArray*)writableTypesForPasteboard:(NSPasteboard*)pasteboard {
    return [NSArray arrayWithObject:NSPasteboardTypeString];
}

- (id)pasteboardPropertyListForType:(NSString*)type {
    return [canonicalType(type) isEqual:NSPasteboardTypeString] ? self : nil;
}

+ (NSArray*)readableTypesForPasteboard:(NSPasteboard*)pasteboard {
    return [NSArray arrayWithObject:NSPasteboardTypeString];
}

- (id)initWithPasteboardPropertyList:(id)propertyList ofType:(NSString*)type {
    return [self initWithData:propertyList encoding:NSUTF8StringEncoding];
}

@end

@interface NSURL (Pasteboard) <NSPasteboardWriting, NSPasteboardReading>
@end

@implementation NSURL (Pasteboard)

- (NSArray*)writableTypesForPasteboard:(NSPasteboard*)pasteboard {
    return [NSArray arrayWithObject:[self isFileURL] ? fileURLType : urlType];
}

- (id)pasteboardPropertyListForType:(NSString*)type {
    return [[self writableTypesForPasteboard:nil] containsObject:type] ? [self absoluteString]
                                                                       : nil;
}

+ (NSArray*)readableTypesForPasteboard:(NSPasteboard*)pasteboard {
    return [NSArray arrayWithObjects:fileURLType, urlType, nil];
}

- (id)initWithPasteboardPropertyList:(id)propertyList ofType:(NSString*)type {
    NSString* text = stringOfData(propertyList);
    if (text) return [self initWithString:text];
    [self release];
    return nil;
}

@end
