/// The classes that read images, and what they read.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSImageRep.h>
#import <AppKit/NSPasteboard.h>

#include "cocoa/AppKit/image_types.h"

#include <mutex>

using namespace cocoa::appkit;

NSString* const NSImageRepRegistryDidChangeNotification =
    @"NSImageRepRegistryDidChangeNotification";

namespace {

std::mutex registryLock;

/// Only with the lock. Never released: a client may ask as the process ends.
NSMutableArray* registry() {
    static NSMutableArray* classes =
        [[NSMutableArray alloc] initWithObjects:[NSBitmapImageRep class], nil];
    return classes;
}

void registryDidChange() {
    [[NSNotificationCenter defaultCenter]
        postNotificationName:NSImageRepRegistryDidChangeNotification
                      object:[NSImageRep class]];
}

/// What the registered classes answer to a message, each answer once.
NSArray* answersOfAll(SEL selector) {
    NSMutableArray* all = [NSMutableArray array];
    NSArray* classes = [NSImageRep registeredImageRepClasses];
    for (NSUInteger index = 0; index < [classes count]; ++index) {
        NSArray* own = [[classes objectAtIndex:index] performSelector:selector];
        for (NSUInteger item = 0; item < [own count]; ++item)
            if (![all containsObject:[own objectAtIndex:item]])
                [all addObject:[own objectAtIndex:item]];
    }
    return all;
}

/// The first registered class among whose answers the type is.
Class classAnswering(SEL selector, NSString* type) {
    NSArray* classes = [NSImageRep registeredImageRepClasses];
    for (NSUInteger index = 0; type && index < [classes count]; ++index) {
        Class candidate = [classes objectAtIndex:index];
        if ([[candidate performSelector:selector] containsObject:type]) return candidate;
    }
    return Nil;
}

} // namespace

@implementation NSImageRep (NSImageRepRegistry)

+ (void)registerImageRepClass:(Class)imageRepClass {
    if (!imageRepClass) return;
    {
        const std::lock_guard guard(registryLock);
        if ([registry() containsObject:imageRepClass]) return;
        [registry() addObject:imageRepClass];
    }
    registryDidChange();
}

+ (void)unregisterImageRepClass:(Class)imageRepClass {
    if (!imageRepClass) return;
    {
        const std::lock_guard guard(registryLock);
        [registry() removeObject:imageRepClass];
    }
    registryDidChange();
}

+ (NSArray*)registeredImageRepClasses {
    const std::lock_guard guard(registryLock);
    return [NSArray arrayWithArray:registry()];
}

+ (Class)imageRepClassForFileType:(NSString*)type {
    Class found = classAnswering(@selector(imageUnfilteredFileTypes), type);
    return found ? found
                 : classAnswering(@selector(imageUnfilteredFileTypes), [type lowercaseString]);
}

+ (Class)imageRepClassForPasteboardType:(NSString*)type {
    return classAnswering(@selector(imageUnfilteredPasteboardTypes), type);
}

+ (Class)imageRepClassForType:(NSString*)type {
    return classAnswering(@selector(imageUnfilteredTypes), type);
}

+ (Class)imageRepClassForData:(NSData*)data {
    NSArray* classes = [self registeredImageRepClasses];
    for (NSUInteger index = 0; data && index < [classes count]; ++index)
        if ([[classes objectAtIndex:index] canInitWithData:data])
            return [classes objectAtIndex:index];
    return Nil;
}

+ (BOOL)canInitWithData:(NSData*)data {
    if (self != [NSImageRep class]) return NO;
    return [self imageRepClassForData:data] != Nil;
}

+ (BOOL)canInitWithPasteboard:(NSPasteboard*)pasteboard {
    return [pasteboard availableTypeFromArray:[self imageUnfilteredPasteboardTypes]] != nil;
}

+ (NSArray*)imageUnfilteredFileTypes {
    return self == [NSImageRep class] ? answersOfAll(_cmd) : [NSArray array];
}

+ (NSArray*)imageUnfilteredPasteboardTypes {
    return self == [NSImageRep class] ? answersOfAll(_cmd) : [NSArray array];
}

+ (NSArray*)imageUnfilteredTypes {
    return self == [NSImageRep class] ? answersOfAll(_cmd) : [NSArray array];
}

// There are no filter services, which could add to the types.
+ (NSArray*)imageFileTypes {
    return [self imageUnfilteredFileTypes];
}
+ (NSArray*)imagePasteboardTypes {
    return [self imageUnfilteredPasteboardTypes];
}
+ (NSArray*)imageTypes {
    return [self imageUnfilteredTypes];
}

@end

@interface NSObject (ImageRepLoading)
+ (NSArray*)imageRepsWithData:(NSData*)data;
@end

@implementation NSImageRep (NSImageRepLoading)

+ (NSArray*)imageRepsWithContentsOfFile:(NSString*)filename {
    if (!filename) return nil;
    return [self representationsOfData:[NSData dataWithContentsOfFile:filename]];
}

+ (NSArray*)imageRepsWithContentsOfURL:(NSURL*)url {
    if (!url) return nil;
    return [self representationsOfData:[NSData dataWithContentsOfURL:url]];
}

+ (NSArray*)imageRepsWithPasteboard:(NSPasteboard*)pasteboard {
    NSString* type = [pasteboard availableTypeFromArray:[self imageUnfilteredPasteboardTypes]];
    return type ? [self representationsOfData:[pasteboard dataForType:type]] : nil;
}

+ (id)imageRepWithContentsOfFile:(NSString*)filename {
    NSArray* reps = [self imageRepsWithContentsOfFile:filename];
    return [reps count] ? [reps objectAtIndex:0] : nil;
}

+ (id)imageRepWithContentsOfURL:(NSURL*)url {
    NSArray* reps = [self imageRepsWithContentsOfURL:url];
    return [reps count] ? [reps objectAtIndex:0] : nil;
}

+ (id)imageRepWithPasteboard:(NSPasteboard*)pasteboard {
    NSArray* reps = [self imageRepsWithPasteboard:pasteboard];
    return [reps count] ? [reps objectAtIndex:0] : nil;
}

/// By the receiving class, or for NSImageRep by the one that can.
+ (NSArray*)representationsOfData:(NSData*)data {
    if (!data) return nil;
    Class reader = self == [NSImageRep class] ? [self imageRepClassForData:data] : self;
    return [reader respondsToSelector:@selector(imageRepsWithData:)]
               ? [reader imageRepsWithData:data]
               : nil;
}

@end

@implementation NSBitmapImageRep (Types)

+ (NSArray*)imageUnfilteredFileTypes {
    return codecFileTypes();
}

+ (NSArray*)imageUnfilteredPasteboardTypes {
    return codecPasteboardTypes();
}

+ (NSArray*)imageUnfilteredTypes {
    return codecTypeIdentifiers();
}

@end
