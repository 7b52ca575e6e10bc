#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CFSet.h>

namespace {

NSSet* setOf(CFSetRef set) { return (NSSet*)set; }

NSMutableSet* mutableSetOf(CFMutableSetRef set) { return (NSMutableSet*)set; }

} // namespace

CFTypeID CFSetGetTypeID(void) { return cocoa::typeOfSet; }

CFIndex CFSetGetCount(CFSetRef set) { return static_cast<CFIndex>([setOf(set) count]); }

Boolean CFSetContainsValue(CFSetRef set, const void* value) {
    return CFSetGetValue(set, value) != nullptr;
}

const void* CFSetGetValue(CFSetRef set, const void* value) {
    return value ? [setOf(set) member:(id)value] : nil;
}

void CFSetGetValues(CFSetRef set, const void** values) {
    if (!values) return;
    NSEnumerator* const objects = [setOf(set) objectEnumerator];
    while (id object = [objects nextObject])
        *values++ = object;
}

void CFSetAddValue(CFMutableSetRef set, const void* value) {
    [mutableSetOf(set) addObject:(id)value];
}

void CFSetRemoveValue(CFMutableSetRef set, const void* value) {
    if (value) [mutableSetOf(set) removeObject:(id)value];
}
