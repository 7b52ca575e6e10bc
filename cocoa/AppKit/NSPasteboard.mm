#import <AppKit/NSPasteboard.h>

#include "cocoa/AppKit/ownership.h"

#include <mutex>

using namespace cocoa::appkit;

NSString* const NSStringPboardType = @"NSStringPboardType";
NSString* const NSFilenamesPboardType = @"NSFilenamesPboardType";
NSString* const NSTIFFPboardType = @"NeXT TIFF v4.0 pasteboard type";
NSString* const NSPasteboardTypeString = @"public.utf8-plain-text";
NSString* const NSPasteboardTypePNG = @"public.png";
NSString* const NSPasteboardTypeTIFF = @"public.tiff";
NSString* const NSGeneralPboard = @"Apple CFPasteboard general";

namespace {

/// One name for the types that have two.
NSString* canonical(NSString* type) {
    if ([type isEqual:NSTIFFPboardType]) return NSPasteboardTypeTIFF;
    if ([type isEqual:NSStringPboardType]) return NSPasteboardTypeString;
    return type;
}

bool containsType(NSArray* types, NSString* type) {
    for (NSUInteger index = 0; index < [types count]; ++index)
        if ([canonical([types objectAtIndex:index]) isEqual:canonical(type)]) return true;
    return false;
}

std::mutex pasteboardsLock;

/// Only with the lock.
NSMutableDictionary* pasteboards() {
    static NSMutableDictionary* byName = [[NSMutableDictionary alloc] init];
    return byName;
}

} // namespace

@interface NSPasteboard (Making)
- (id)initWithName:(NSString*)name;
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
    return self;
}

- (void)dealloc {
    [_name release];
    [_types release];
    [_data release];
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
    for (NSUInteger index = 0; index < [newTypes count]; ++index)
        if (!containsType(_types, [newTypes objectAtIndex:index]))
            [_types addObject:[newTypes objectAtIndex:index]];
    if (newOwner) {
        [newOwner retain];
        [_owner release];
        _owner = newOwner;
    }
    return _changeCount;
}

- (NSArray*)types {
    return [NSArray arrayWithArray:_types];
}

- (NSString*)availableTypeFromArray:(NSArray*)types {
    for (NSUInteger index = 0; index < [types count]; ++index)
        if (containsType(_types, [types objectAtIndex:index])) return [types objectAtIndex:index];
    return nil;
}

- (BOOL)setData:(NSData*)data forType:(NSString*)dataType {
    if (!dataType || !containsType(_types, dataType)) return NO;
    if (data) {
        auto copy = Owned<NSData*>::adopt([data copy]);
        [_data setObject:copy forKey:canonical(dataType)];
    } else {
        [_data removeObjectForKey:canonical(dataType)];
    }
    return YES;
}

- (BOOL)setString:(NSString*)string forType:(NSString*)dataType {
    return [self setData:[string dataUsingEncoding:NSUTF8StringEncoding] forType:dataType];
}

- (BOOL)setPropertyList:(id)plist forType:(NSString*)dataType {
    if (!plist) return [self setData:nil forType:dataType];
    NSData* data = [NSPropertyListSerialization dataFromPropertyList:plist
                                                              format:NSPropertyListXMLFormat_v1_0
                                                    errorDescription:nullptr];
    return data && [self setData:data forType:dataType];
}

- (NSData*)dataForType:(NSString*)dataType {
    if (!dataType || !containsType(_types, dataType)) return nil;
    NSData* data = [_data objectForKey:canonical(dataType)];
    if (!data && [_owner respondsToSelector:@selector(pasteboard:provideDataForType:)]) {
        [_owner pasteboard:self provideDataForType:dataType];
        data = [_data objectForKey:canonical(dataType)];
    }
    return [[data retain] autorelease];
}

- (NSString*)stringForType:(NSString*)dataType {
    NSData* data = [self dataForType:dataType];
    if (!data) return nil;
    return [[[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding] autorelease];
}

- (id)propertyListForType:(NSString*)dataType {
    NSData* data = [self dataForType:dataType];
    if (!data) return nil;
    return [NSPropertyListSerialization propertyListFromData:data
                                            mutabilityOption:NSPropertyListImmutable
                                                      format:nullptr
                                            errorDescription:nullptr];
}

@end
