/// Part of sanitized builds only. Some Foundation classes allocate, when they are first used, what
/// they keep until the process ends without a pointer that the leak checker would see. They are
/// used here once, before it looks, so that what it reports later is a leak of ours.

#import <Foundation/Foundation.h>

#include <sanitizer/lsan_interface.h>

/// Called by cmake/leak_suppressions.cpp when a program starts.
extern "C" __attribute__((visibility("default"))) void useFoundationOnce();

void useFoundationOnce() {
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
