/// Part of sanitized builds only. Some Foundation classes allocate, when they are first used, what
/// they keep until the process ends without a pointer that the leak checker would see. They are
/// used here once, before it looks, so that what it reports later is a leak of ours.

#import <Foundation/Foundation.h>

#include <sanitizer/lsan_interface.h>

namespace {

__attribute__((constructor)) void useFoundationOnce() {
    __lsan_disable();
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    [NSMutableArray array];
    [NSMutableDictionary dictionary];
    [NSMutableSet set];
    NSStringFromSize(NSZeroSize);
    [NSUserDefaults standardUserDefaults];
    [pool release];
    __lsan_enable();
}

} // namespace
