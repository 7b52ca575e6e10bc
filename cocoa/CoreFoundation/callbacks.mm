#include "cocoa/CoreFoundation/callbacks.h"

namespace cocoa {

const void* retainObject(CFAllocatorRef, const void* value) { return CFRetain(value); }

void releaseObject(CFAllocatorRef, const void* value) { CFRelease(value); }

NSString* describe(CFStringRef (*copyDescription)(const void*), const void* value) {
    if (copyDescription) return [(NSString*)copyDescription(value) autorelease];
    return [NSString stringWithFormat:@"<%p>", value];
}

namespace {

const void* copyString(CFAllocatorRef allocator, const void* value) {
    return CFStringCreateCopy(allocator, static_cast<CFStringRef>(value));
}

} // namespace
} // namespace cocoa

const CFArrayCallBacks kCFTypeArrayCallBacks = {0, cocoa::retainObject, cocoa::releaseObject,
                                                CFCopyDescription, CFEqual};
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {
    0, cocoa::retainObject, cocoa::releaseObject, CFCopyDescription, CFEqual, CFHash};
const CFDictionaryKeyCallBacks kCFCopyStringDictionaryKeyCallBacks = {
    0, cocoa::copyString, cocoa::releaseObject, CFCopyDescription, CFEqual, CFHash};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {
    0, cocoa::retainObject, cocoa::releaseObject, CFCopyDescription, CFEqual};
