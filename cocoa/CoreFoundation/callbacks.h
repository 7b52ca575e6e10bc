#pragma once

/// What collections do with their values, through the callbacks that they were made with. An absent
/// callback makes values plain pointers.

#import <Foundation/Foundation.h>

#include <CoreFoundation/CFArray.h>
#include <CoreFoundation/CFDictionary.h>

#include <cstddef>
#include <functional>

namespace cocoa {

/// The callbacks of values that are objects.
const void* retainObject(CFAllocatorRef allocator, const void* value);
void releaseObject(CFAllocatorRef allocator, const void* value);

/// The description of one element, for a collection's own. Autoreleased.
NSString* describe(CFStringRef (*copyDescription)(const void*), const void* value);

template <typename CallBacks>
const void* retainValue(const CallBacks& callBacks, const void* value) {
    return callBacks.retain ? callBacks.retain(nullptr, value) : value;
}

template <typename CallBacks>
void releaseValue(const CallBacks& callBacks, const void* value) {
    if (callBacks.release) callBacks.release(nullptr, value);
}

template <typename CallBacks>
bool equalValues(const CallBacks& callBacks, const void* first, const void* second) {
    return first == second || (callBacks.equal && callBacks.equal(first, second));
}

/// The values are objects, so that they may be sent messages.
template <typename CallBacks>
bool holdsObjects(const CallBacks& callBacks) {
    return callBacks.equal == CFEqual;
}

struct KeyHash {
    CFDictionaryKeyCallBacks callBacks;
    std::size_t operator()(const void* key) const {
        return callBacks.hash ? callBacks.hash(key) : std::hash<const void*>()(key);
    }
};

struct KeyEqual {
    CFDictionaryKeyCallBacks callBacks;
    bool operator()(const void* first, const void* second) const {
        return equalValues(callBacks, first, second);
    }
};

} // namespace cocoa
