#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CoreFoundation.h>

/// Only the addresses of these matter.
struct __CFAllocator {
    char name;
};

namespace {

constexpr __CFAllocator systemAllocator{'s'};
constexpr __CFAllocator mallocAllocator{'m'};
constexpr __CFAllocator nullAllocator{'0'};

id objectOf(CFTypeRef reference) { return (id)reference; }

} // namespace

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFAllocatorRef kCFAllocatorSystemDefault = &systemAllocator;
const CFAllocatorRef kCFAllocatorMalloc = &mallocAllocator;
const CFAllocatorRef kCFAllocatorNull = &nullAllocator;

CFTypeRef CFRetain(CFTypeRef object) { return [objectOf(object) retain]; }

void CFRelease(CFTypeRef object) { [objectOf(object) release]; }

CFIndex CFGetRetainCount(CFTypeRef object) {
    return static_cast<CFIndex>([objectOf(object) retainCount]);
}

Boolean CFEqual(CFTypeRef first, CFTypeRef second) {
    if (first == second) return true;
    if (!first || !second) return false;
    NSString* text = objectOf(first);
    NSString* otherText = objectOf(second);
    // Foundation's strings are equal when they look the same; Core Foundation's when their units
    // are.
    if ([text isKindOfClass:[NSString class]] && [otherText isKindOfClass:[NSString class]])
        return [text length] == [otherText length] &&
               [text compare:otherText options:NSLiteralSearch] == NSOrderedSame;
    return [objectOf(first) isEqual:objectOf(second)];
}

CFHashCode CFHash(CFTypeRef object) { return [objectOf(object) hash]; }

CFTypeID CFGetTypeID(CFTypeRef object) {
    id typed = objectOf(object);
    return [typed respondsToSelector:@selector(_cfTypeID)] ? [typed _cfTypeID]
                                                           : cocoa::typeOfNothing;
}

CFStringRef CFCopyDescription(CFTypeRef object) {
    return reinterpret_cast<CFStringRef>([[objectOf(object) description] copy]);
}

CFNullRef CFNullGetSharedInstance(void) { return reinterpret_cast<CFNullRef>([NSNull null]); }

CFTypeID CFNullGetTypeID(void) { return cocoa::typeOfNull; }

// The toll-free types. Numbers tell their type where they are defined.

#define TOLL_FREE(Class, type)                                                                     \
    @implementation Class (CoreFoundationType)                                                     \
    -(CFTypeID)_cfTypeID {                                                                         \
        return cocoa::type;                                                                        \
    }                                                                                              \
    @end

TOLL_FREE(NSNull, typeOfNull)
TOLL_FREE(NSString, typeOfString)
TOLL_FREE(NSData, typeOfData)
TOLL_FREE(NSArray, typeOfArray)
TOLL_FREE(NSDictionary, typeOfDictionary)
TOLL_FREE(NSDate, typeOfDate)
TOLL_FREE(NSURL, typeOfURL)
TOLL_FREE(NSSet, typeOfSet)
TOLL_FREE(NSAttributedString, typeOfAttributedString)
TOLL_FREE(NSError, typeOfError)
TOLL_FREE(NSTimeZone, typeOfTimeZone)
TOLL_FREE(NSCharacterSet, typeOfCharacterSet)

CFTypeID CFTimeZoneGetTypeID(void) { return cocoa::typeOfTimeZone; }
CFTypeID CFCharacterSetGetTypeID(void) { return cocoa::typeOfCharacterSet; }
CFTypeID CFAttributedStringGetTypeID(void) { return cocoa::typeOfAttributedString; }
