#pragma once

/// The types of what lies on pasteboards.

#import <AppKit/NSPasteboard.h>

namespace cocoa::appkit {

extern NSString* const fileURLType;

/// One name for the types that have two.
NSString* canonicalType(NSString* type);
bool containsType(NSArray* types, NSString* type);
/// Adds those that are not there yet.
void addTypes(NSMutableArray* types, NSArray* more);
/// The first of `wanted` that is among `types`, in the words of `wanted`; nil for none.
NSString* firstAvailable(NSArray* wanted, NSArray* types);

/// Nil for what is no property list.
NSData* dataOfPropertyList(id propertyList);
id propertyListOfData(NSData* data);
NSString* stringOfData(NSData* data);

/// What the object writes, or nil when it writes nothing.
NSPasteboardItem* itemOfObject(id object, NSPasteboard* pasteboard);
/// The types that a class reads; nil when it reads none.
NSArray* readableTypes(Class reader, NSPasteboard* pasteboard);
/// An object of the first class that reads one of the item's types; nil for none.
id objectOfItem(NSPasteboardItem* item, NSArray* classes, NSPasteboard* pasteboard);

} // namespace cocoa::appkit
