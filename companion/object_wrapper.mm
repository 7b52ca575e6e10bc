#include "companion/object_wrapper.h"

#include "companion/host_services.h"

#include <functional>

@implementation ZNTREALobjectWrapper

+ (ZNTREALobjectWrapper*)wrap:(REALobjectStruct*)object {
    if (!object) return nil;
    ZNTREALobjectWrapper* const wrapper = [[[self alloc] init] autorelease];
    lockObject(object);
    wrapper->hostObject = object;
    return wrapper;
}

- (void)dealloc {
    if (hostObject) unlockObject(hostObject);
    [super dealloc];
}

- (REALobjectStruct*)unwrap {
    if (hostObject) lockObject(hostObject);
    return hostObject;
}

/// Dictionaries copy their keys.
- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}

- (NSUInteger)hash {
    return std::hash<void*>()(hostObject);
}

- (BOOL)isEqual:(id)other {
    return [other isKindOfClass:[ZNTREALobjectWrapper class]] &&
           ((ZNTREALobjectWrapper*)other)->hostObject == hostObject;
}

@end
