#import <AppKit/NSPasteboard.h>

#include "cocoa/AppKit/ownership.h"
#include "cocoa/AppKit/pasteboard_types.h"

#include <mutex>

using namespace cocoa::appkit;

NSString* const NSGeneralPboard = @"Apple CFPasteboard general";

namespace {

std::mutex pasteboardsLock;

/// Only with the lock.
NSMutableDictionary* pasteboards() {
    static NSMutableDictionary* byName = [[NSMutableDictionary alloc] init];
    return byName;
}

} // namespace

@interface NSPasteboard (Private)
- (id)initWithName:(NSString*)name;
- (NSData*)dataOfItemsForType:(NSString*)dataType;
@end

@implementation NSPasteboard

+ (NSPasteboard*)generalPasteboard {
    return [self pasteboardWithName:NSGeneralPboard];
}

+ (NSPasteboard*)pasteboardWithName:(NSString*)name {
    if (!name) return nil;
    const std::lock_guard guard(pasteboardsLock);
    NSPasteboard* pasteboard = [pasteboards() objectForKey:name];
    if (!pasteboard) {
        auto made = Owned<NSPasteboard*>::adopt([[NSPasteboard alloc] initWithName:name]);
        pasteboard = made;
        [pasteboards() setObject:pasteboard forKey:name];
    }
    return pasteboard;
}

+ (NSPasteboard*)pasteboardWithUniqueName {
    return [self pasteboardWithName:[[NSProcessInfo processInfo] globallyUniqueString]];
}

- (id)init {
    return [self initWithName:nil];
}

- (id)initWithName:(NSString*)name {
    self = [super init];
    if (!self) return nil;
    _name = [name copy];
    _types = [[NSMutableArray alloc] init];
    _data = [[NSMutableDictionary alloc] init];
    _items = [[NSMutableArray alloc] init];
    return self;
}

- (void)dealloc {
    [_name release];
    [_types release];
    [_data release];
    [_items release];
    [_owner release];
    [super dealloc];
}

- (NSString*)name {
    return _name;
}

- (NSInteger)changeCount {
    return _changeCount;
}

- (NSInteger)clearContents {
    auto owner = Owned<id>::adopt(_owner);
    _owner = nil;
    [_types removeAllObjects];
    [_data removeAllObjects];
    [_items removeAllObjects];
    ++_changeCount;
    if ([owner.get() respondsToSelector:@selector(pasteboardChangedOwner:)])
        [owner.get() pasteboardChangedOwner:self];
    return _changeCount;
}

- (NSInteger)declareTypes:(NSArray*)newTypes owner:(id)newOwner {
    [self clearContents];
    [self addTypes:newTypes owner:newOwner];
    return _changeCount;
}

- (NSInteger)addTypes:(NSArray*)newTypes owner:(id)newOwner {
    addTypes(_types, newTypes);
    if (newOwner) {
        [newOwner retain];
        [_owner release];
        _owner = newOwner;
    }
    return _changeCount;
}

- (NSArray*)types {
    NSMutableArray* types = [NSMutableArray arrayWithArray:_types];
    for (NSUInteger index = 0; index < [_items count]; ++index)
        addTypes(types, [[_items objectAtIndex:index] types]);
    if (containsType(types, fileURLType))
        addTypes(types, [NSArray arrayWithObject:NSFilenamesPboardType]);
    return types;
}

- (NSString*)availableTypeFromArray:(NSArray*)types {
    return firstAvailable(types, [self types]);
}

- (BOOL)setData:(NSData*)data forType:(NSString*)dataType {
    if (!dataType || !containsType(_types, dataType)) return NO;
    if (data) {
        auto copy = Owned<NSData*>::adopt([data copy]);
        [_data setObject:copy forKey:canonicalType(dataType)];
    } else {
        [_data removeObjectForKey:canonicalType(dataType)];
    }
    return YES;
}

- (BOOL)setString:(NSString*)string forType:(NSString*)dataType {
    return [self setData:[string dataUsingEncoding:NSUTF8StringEncoding] forType:dataType];
}

- (BOOL)setPropertyList:(id)plist forType:(NSString*)dataType {
    if (!plist) return [self setData:nil forType:dataType];
    NSData* data = dataOfPropertyList(plist);
    return data && [self setData:data forType:dataType];
}

- (NSData*)dataForType:(NSString*)dataType {
    if (!dataType) return nil;
    if (!containsType(_types, dataType)) return [self dataOfItemsForType:dataType];
    NSData* data = [_data objectForKey:canonicalType(dataType)];
    if (!data && [_owner respondsToSelector:@selector(pasteboard:provideDataForType:)]) {
        [_owner pasteboard:self provideDataForType:dataType];
        data = [_data objectForKey:canonicalType(dataType)];
    }
    return [[data retain] autorelease];
}

/// Of the first item that has it. The names of all files together are one property list.
- (NSData*)dataOfItemsForType:(NSString*)dataType {
    NSMutableArray* paths = [NSMutableArray array];
    for (NSUInteger index = 0; index < [_items count]; ++index) {
        NSPasteboardItem* item = [_items objectAtIndex:index];
        if (NSData* data = [item dataForType:dataType]) return data;
        NSString* file = [item stringForType:fileURLType];
        NSString* path = file ? [[NSURL URLWithString:file] path] : nil;
        if (path) [paths addObject:path];
    }
    return [dataType isEqual:NSFilenamesPboardType] && [paths count] ? dataOfPropertyList(paths)
                                                                     : nil;
}

- (NSString*)stringForType:(NSString*)dataType {
    return stringOfData([self dataForType:dataType]);
}

- (id)propertyListForType:(NSString*)dataType {
    return propertyListOfData([self dataForType:dataType]);
}

@end

@implementation NSPasteboard (NSPasteboardItems)

- (BOOL)writeObjects:(NSArray*)objects {
    NSMutableArray* items = [NSMutableArray array];
    for (NSUInteger index = 0; index < [objects count]; ++index) {
        NSPasteboardItem* item = itemOfObject([objects objectAtIndex:index], self);
        if (!item) return NO;
        [items addObject:item];
    }
    [_items addObjectsFromArray:items];
    return YES;
}

- (NSArray*)pasteboardItems {
    NSMutableArray* items = [NSMutableArray array];
    auto declared = Owned<NSPasteboardItem*>::adopt([[NSPasteboardItem alloc] init]);
    for (NSUInteger index = 0; index < [_types count]; ++index) {
        NSString* type = [_types objectAtIndex:index];
        [declared.get() setData:[self dataForType:type] forType:type];
    }
    if ([[declared.get() types] count]) [items addObject:declared];
    [items addObjectsFromArray:_items];
    return items;
}

- (NSArray*)readObjectsForClasses:(NSArray*)classArray options:(NSDictionary*)options {
    NSMutableArray* objects = [NSMutableArray array];
    NSArray* items = [self pasteboardItems];
    for (NSUInteger index = 0; index < [items count]; ++index) {
        id object = objectOfItem([items objectAtIndex:index], classArray, self);
        if (object) [objects addObject:object];
    }
    return objects;
}

- (BOOL)canReadObjectForClasses:(NSArray*)classArray options:(NSDictionary*)options {
    for (NSUInteger index = 0; index < [classArray count]; ++index)
        if ([self availableTypeFromArray:readableTypes([classArray objectAtIndex:index], self)])
            return YES;
    return NO;
}

@end
