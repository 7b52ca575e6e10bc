#include "support/host.h"

#include <Cocoa/Cocoa.h>

#include <gmock/gmock.h>

namespace {

/// Empties the general pasteboard, which the whole process shares.
NSPasteboard* empty_pasteboard() {
    NSPasteboard* const pasteboard = [NSPasteboard generalPasteboard];
    [pasteboard declareTypes:[NSArray array] owner:nil];
    return pasteboard;
}

TEST(CanInitWithPasteboard, IsTrueWhileTheGeneralPasteboardHoldsAnImage) {
    Host host;
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    NSPasteboard* const pasteboard = empty_pasteboard();
    EXPECT_FALSE(host.shared<bool>("NSImageZNT", "canInitWithPasteboard"));
    [pasteboard declareTypes:[NSArray arrayWithObject:NSTIFFPboardType] owner:nil];
    [pasteboard setData:[NSData dataWithBytes:"II*" length:3] forType:NSTIFFPboardType];
    EXPECT_TRUE(host.shared<bool>("NSImageZNT", "canInitWithPasteboard"));
    empty_pasteboard();
    EXPECT_FALSE(host.shared<bool>("NSImageZNT", "canInitWithPasteboard"));
    [pool release];
}

std::vector<std::string> strings_of(NSArray* array) {
    std::vector<std::string> strings;
    for (NSUInteger i = 0; i < [array count]; ++i)
        strings.emplace_back([[array objectAtIndex:i] UTF8String]);
    return strings;
}

TEST(ImageTypeLists, AreCocoasOwnInTheirOrder) {
    Host host;
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    const std::pair<const char*, NSArray*> lists[] = {
        {"imageUnfilteredFileTypes", [NSImage imageUnfilteredFileTypes]},
        {"imageUnfilteredPasteboardTypes", [NSImage imageUnfilteredPasteboardTypes]},
        {"imageFileTypes", [NSImage imageFileTypes]},
        {"imagePasteboardTypes", [NSImage imagePasteboardTypes]},
        {"imageTypes", [NSImage imageTypes]},
        {"imageUnfilteredTypes", [NSImage imageUnfilteredTypes]},
    };
    for (const auto& [method, expected] : lists) {
        std::vector<std::string> types;
        for (const host::Value& type : host.elements(host.shared("NSImageZNT", method)))
            types.push_back(type.utf8());
        EXPECT_EQ(types, strings_of(expected)) << method;
        EXPECT_FALSE(types.empty()) << method;
    }
    [pool release];
}

TEST(ImageTypeLists, NameTheFormatsThatAreRead) {
    Host host;
    std::vector<std::string> types;
    for (const host::Value& type : host.elements(host.shared("NSImageZNT", "imageFileTypes")))
        types.push_back(type.utf8());
    for (const char* type : {"tiff", "png", "jpg"})
        EXPECT_THAT(types, testing::Contains(type));
}

} // namespace
