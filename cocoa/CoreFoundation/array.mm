#include "cocoa/CoreFoundation/callback_array.h"
#include "cocoa/CoreFoundation/retained.h"
#include "cocoa/CoreFoundation/type_ids.h"

using cocoa::Retained;

namespace {

NSArray* arrayOf(CFArrayRef array) { return (NSArray*)array; }
NSMutableArray* mutableArrayOf(CFMutableArrayRef array) { return (NSMutableArray*)array; }

/// The array as one that Core Foundation made; nil when Foundation did.
CocoaCallbackArray* callbackArrayOf(CFArrayRef array) {
    NSArray* const candidate = arrayOf(array);
    return [candidate isKindOfClass:[CocoaCallbackArray class]] ? (CocoaCallbackArray*)candidate
                                                                : nil;
}

/// Raises NSRangeException unless the range lies in the array.
void checkRange(CFArrayRef array, CFRange range) {
    const CFIndex count = CFArrayGetCount(array);
    if (range.location < 0 || range.length < 0 || range.location > count ||
        range.length > count - range.location)
        [NSException raise:NSRangeException
                    format:@"Range {%ld, %ld} in an array of %ld values", range.location,
                           range.length, count];
}

} // namespace

CFTypeID CFArrayGetTypeID(void) { return cocoa::typeOfArray; }

CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                         const CFArrayCallBacks* callBacks) {
    if (count < 0 || (count && !values)) return nullptr;
    auto made =
        Retained<CFMutableArrayRef>::adopt(CFArrayCreateMutable(allocator, count, callBacks));
    for (CFIndex index = 0; index < count; ++index)
        CFArrayAppendValue(made.get(), values[index]);
    [callbackArrayOf(made.get()) makeImmutable];
    return made.leak();
}

CFArrayRef CFArrayCreateCopy(CFAllocatorRef, CFArrayRef array) {
    return (CFArrayRef)[arrayOf(array) copy];
}

CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex, const CFArrayCallBacks* callBacks) {
    return (CFMutableArrayRef)[[CocoaCallbackArray alloc] initWithCallBacks:callBacks];
}

CFMutableArrayRef CFArrayCreateMutableCopy(CFAllocatorRef, CFIndex, CFArrayRef array) {
    return (CFMutableArrayRef)[arrayOf(array) mutableCopy];
}

CFIndex CFArrayGetCount(CFArrayRef array) { return static_cast<CFIndex>([arrayOf(array) count]); }

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    checkRange(array, CFRangeMake(index, 1));
    return [arrayOf(array) objectAtIndex:static_cast<NSUInteger>(index)];
}

void CFArrayGetValues(CFArrayRef array, CFRange range, const void** values) {
    checkRange(array, range);
    for (CFIndex index = 0; index < range.length; ++index)
        values[index] = CFArrayGetValueAtIndex(array, range.location + index);
}

Boolean CFArrayContainsValue(CFArrayRef array, CFRange range, const void* value) {
    return CFArrayGetFirstIndexOfValue(array, range, value) != kCFNotFound;
}

CFIndex CFArrayGetFirstIndexOfValue(CFArrayRef array, CFRange range, const void* value) {
    checkRange(array, range);
    CocoaCallbackArray* const own = callbackArrayOf(array);
    for (CFIndex index = range.location; index < range.location + range.length; ++index) {
        const void* const candidate = CFArrayGetValueAtIndex(array, index);
        if (own ? [own isValue:candidate equalTo:value] : CFEqual(candidate, value)) return index;
    }
    return kCFNotFound;
}

void CFArrayApplyFunction(CFArrayRef array, CFRange range, CFArrayApplierFunction function,
                          void* context) {
    checkRange(array, range);
    for (CFIndex index = range.location; index < range.location + range.length; ++index)
        function(CFArrayGetValueAtIndex(array, index), context);
}

void CFArrayAppendValue(CFMutableArrayRef array, const void* value) {
    CFArrayInsertValueAtIndex(array, CFArrayGetCount(array), value);
}

void CFArrayInsertValueAtIndex(CFMutableArrayRef array, CFIndex index, const void* value) {
    checkRange(array, CFRangeMake(index, 0));
    const auto position = static_cast<NSUInteger>(index);
    if (CocoaCallbackArray* const own = callbackArrayOf(array))
        [own insertValue:value atIndex:position];
    else
        [mutableArrayOf(array) insertObject:(id)value atIndex:position];
}

void CFArraySetValueAtIndex(CFMutableArrayRef array, CFIndex index, const void* value) {
    if (index == CFArrayGetCount(array)) {
        CFArrayAppendValue(array, value);
        return;
    }
    checkRange(array, CFRangeMake(index, 1));
    const auto position = static_cast<NSUInteger>(index);
    if (CocoaCallbackArray* const own = callbackArrayOf(array))
        [own replaceValueAtIndex:position with:value];
    else
        [mutableArrayOf(array) replaceObjectAtIndex:position withObject:(id)value];
}

void CFArrayRemoveValueAtIndex(CFMutableArrayRef array, CFIndex index) {
    checkRange(array, CFRangeMake(index, 1));
    [mutableArrayOf(array) removeObjectAtIndex:static_cast<NSUInteger>(index)];
}

void CFArrayRemoveAllValues(CFMutableArrayRef array) { [mutableArrayOf(array) removeAllObjects]; }
