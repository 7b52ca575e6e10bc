/// The names of images. A name does not keep its image alive.

#import <AppKit/NSImage.h>

#include "cocoa/AppKit/image_state.h"
#include "cocoa/AppKit/system_images.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>

using namespace cocoa::appkit;

namespace {

std::mutex tableLock;

/// Only with the lock. Never destroyed: images may go when the process ends.
std::map<std::string, NSImage*>& table() {
    static auto* images = new std::map<std::string, NSImage*>;
    return *images;
}

/// The key of a name, which may be any string.
std::string keyOf(NSString* name) {
    NSData* text = [name dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    return {static_cast<const char*>([text bytes]), [text length]};
}

NSImage* registeredImage(const std::string& key) {
    const std::lock_guard guard(tableLock);
    const auto found = table().find(key);
    return found == table().end() ? nil : [[found->second retain] autorelease];
}

/// Only with the lock.
void strike(const std::string& key, NSImage* image) {
    const auto found = table().find(key);
    if (found != table().end() && found->second == image) table().erase(found);
}

/// The image of the icon theme, which is read once and kept for as long as it bears the name.
NSImage* systemImage(NSString* name, const std::string& key) {
    static std::mutex lock;
    static auto* kept = new std::map<std::string, Owned<NSImage*>>;
    const std::lock_guard guard(lock);
    // Another thread may have read it, or given the name away, meanwhile.
    if (NSImage* image = registeredImage(key)) return image;
    auto image = makeSystemImage(name);
    if (!image.get()) return nil;
    if (![image.get() setName:name]) return registeredImage(key);
    (*kept)[key] = image;
    return [[image.get() retain] autorelease];
}

std::atomic_ref<bool> isNamed(NSImageState* state) { return std::atomic_ref<bool>(state->isNamed); }

} // namespace

@implementation NSImage (NSImageNames)

+ (id)imageNamed:(NSString*)name {
    if (!name) return nil;
    const std::string key = keyOf(name);
    NSImage* image = registeredImage(key);
    return image ? image : systemImage(name, key);
}

- (BOOL)setName:(NSString*)string {
    NSImageState* state = [self state];
    auto name = Owned<NSString*>::adopt([string copy]);
    const std::string key = keyOf(string);
    const std::lock_guard guard(tableLock);
    if (string) {
        const auto found = table().find(key);
        if (found != table().end()) return found->second == self;
    }
    if (state->name) strike(keyOf(state->name), self);
    state->name = name;
    isNamed(state) = string != nil;
    if (string) table().emplace(key, self);
    return YES;
}

- (NSString*)name {
    const std::lock_guard guard(tableLock);
    return [[[self state]->name.get() retain] autorelease];
}

@end

@implementation NSImage (NamesPrivate)

- (void)forgetName {
    NSImageState* state = [self state];
    if (!state->name) return;
    const std::lock_guard guard(tableLock);
    strike(keyOf(state->name), self);
}

/// The last owner of a named image first takes it out of the table, so that nobody finds an image
/// that is on its way out.
- (oneway void)release {
    NSImageState* state = [self state];
    if (!state || !isNamed(state)) {
        [super release];
        return;
    }
    {
        const std::lock_guard guard(tableLock);
        if ([self retainCount] > 1) {
            [super release];
            return;
        }
        strike(keyOf(state->name), self);
    }
    [super release];
}

@end
