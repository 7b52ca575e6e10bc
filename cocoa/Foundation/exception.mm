#import <Foundation/Foundation.h>

#include <objc/runtime.h>

/// Cocoa's exceptions answer no reason when they were given none, and are described by it.
@implementation NSException (CocoaBehaviour)

- (NSString*)reason {
    static const Ivar given = class_getInstanceVariable([NSException class], "_e_reason");
    return object_getIvar(self, given);
}

- (NSString*)description {
    NSString* const reason = [self reason];
    return reason ? reason : [self name];
}

@end
