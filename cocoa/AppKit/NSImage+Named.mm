/// The names of images. A name does not keep its image alive.

#import <AppKit/NSImage.h>

#include "cocoa/AppKit/image_state.h"

#include <map>
#include <mutex>
#include <string>

using namespace cocoa::appkit;

namespace {

using Table = std::map<std::string, NSImage*>;

std::mutex tableLock;

/// Only with the lock. Never destroyed: images may go when the process ends.
Table& table() {
    static auto* images = new Table;
    return *images;
}

} // namespace

@implementation NSImage (NSImageNames)

+ (id)imageNamed:(NSString*)name {
    if (!name) return nil;
    const std::lock_guard guard(tableLock);
    const auto found = table().find([name UTF8String]);
    return found == table().end() ? nil : [[found->second retain] autorelease];
}

- (BOOL)setName:(NSString*)string {
    if (string) {
        const std::lock_guard guard(tableLock);
        const auto found = table().find([string UTF8String]);
        if (found != table().end()) return found->second == self;
    }
    [self forgetName];
    if (!string) return YES;
    [self state]->name = Owned<NSString*>::adopt([string copy]);
    const std::lock_guard guard(tableLock);
    table().emplace([string UTF8String], self);
    return YES;
}

- (NSString*)name {
    return [self state]->name;
}

@end

@implementation NSImage (NamesPrivate)

- (void)forgetName {
    NSImageState* state = [self state];
    if (!state->name) return;
    {
        const std::lock_guard guard(tableLock);
        const auto found = table().find([state->name UTF8String]);
        if (found != table().end() && found->second == self) table().erase(found);
    }
    state->name = {};
}

@end
