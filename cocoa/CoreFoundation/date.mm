#import <Foundation/Foundation.h>

#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CFDate.h>

namespace {

NSDate* dateOf(CFDateRef date) { return (NSDate*)date; }

} // namespace

CFAbsoluteTime CFAbsoluteTimeGetCurrent(void) { return [NSDate timeIntervalSinceReferenceDate]; }

CFTypeID CFDateGetTypeID(void) { return cocoa::typeOfDate; }

CFDateRef CFDateCreate(CFAllocatorRef, CFAbsoluteTime time) {
    return (CFDateRef)[[NSDate alloc] initWithTimeIntervalSinceReferenceDate:time];
}

CFAbsoluteTime CFDateGetAbsoluteTime(CFDateRef date) {
    return [dateOf(date) timeIntervalSinceReferenceDate];
}

CFTimeInterval CFDateGetTimeIntervalSinceDate(CFDateRef date, CFDateRef other) {
    return [dateOf(date) timeIntervalSinceDate:dateOf(other)];
}

CFComparisonResult CFDateCompare(CFDateRef date, CFDateRef other, void*) {
    return static_cast<CFComparisonResult>([dateOf(date) compare:dateOf(other)]);
}
