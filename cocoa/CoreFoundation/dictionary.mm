#include "cocoa/CoreFoundation/callback_dictionary.h"
#include "cocoa/CoreFoundation/retained.h"
#include "cocoa/CoreFoundation/type_ids.h"

#include <vector>

using cocoa::Retained;

namespace {

NSDictionary* dictionaryOf(CFDictionaryRef dictionary) { return (NSDictionary*)dictionary; }

NSMutableDictionary* mutableDictionaryOf(CFMutableDictionaryRef dictionary) {
    return (NSMutableDictionary*)dictionary;
}

/// The dictionary as one that Core Foundation made; nil when Foundation did.
CocoaCallbackDictionary* callbackDictionaryOf(CFDictionaryRef dictionary) {
    NSDictionary* const candidate = dictionaryOf(dictionary);
    return [candidate isKindOfClass:[CocoaCallbackDictionary class]]
               ? (CocoaCallbackDictionary*)candidate
               : nil;
}

struct Entry {
    const void* key;
    const void* value;
};

std::vector<Entry> entriesOf(CFDictionaryRef dictionary) {
    std::vector<Entry> entries;
    if (CocoaCallbackDictionary* const own = callbackDictionaryOf(dictionary)) {
        for (const auto& [key, value] : [own table])
            entries.push_back({key, value});
        return entries;
    }
    NSEnumerator* const keys = [dictionaryOf(dictionary) keyEnumerator];
    for (id key = [keys nextObject]; key; key = [keys nextObject])
        entries.push_back({key, [dictionaryOf(dictionary) objectForKey:key]});
    return entries;
}

} // namespace

CFTypeID CFDictionaryGetTypeID(void) { return cocoa::typeOfDictionary; }

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys, const void** values,
                                   CFIndex count, const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
    if (count < 0 || (count && (!keys || !values))) return nullptr;
    auto made = Retained<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(allocator, count, keyCallBacks, valueCallBacks));
    for (CFIndex index = 0; index < count; ++index)
        CFDictionaryAddValue(made.get(), keys[index], values[index]);
    [callbackDictionaryOf(made.get()) makeImmutable];
    return made.leak();
}

CFDictionaryRef CFDictionaryCreateCopy(CFAllocatorRef, CFDictionaryRef dictionary) {
    return (CFDictionaryRef)[dictionaryOf(dictionary) copy];
}

CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex,
                                                 const CFDictionaryKeyCallBacks* keyCallBacks,
                                                 const CFDictionaryValueCallBacks* valueCallBacks) {
    return (CFMutableDictionaryRef)
        [[CocoaCallbackDictionary alloc] initWithKeyCallBacks:keyCallBacks
                                               valueCallBacks:valueCallBacks];
}

CFMutableDictionaryRef CFDictionaryCreateMutableCopy(CFAllocatorRef, CFIndex,
                                                     CFDictionaryRef dictionary) {
    return (CFMutableDictionaryRef)[dictionaryOf(dictionary) mutableCopy];
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
    return static_cast<CFIndex>([dictionaryOf(dictionary) count]);
}

Boolean CFDictionaryContainsKey(CFDictionaryRef dictionary, const void* key) {
    return CFDictionaryGetValueIfPresent(dictionary, key, nullptr);
}

Boolean CFDictionaryContainsValue(CFDictionaryRef dictionary, const void* value) {
    CocoaCallbackDictionary* const own = callbackDictionaryOf(dictionary);
    for (const Entry& entry : entriesOf(dictionary))
        if (own ? [own isValue:entry.value equalTo:value] : CFEqual(entry.value, value))
            return true;
    return false;
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    const void* value = nullptr;
    CFDictionaryGetValueIfPresent(dictionary, key, &value);
    return value;
}

Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void* key,
                                      const void** value) {
    if (!dictionary) return false;
    if (CocoaCallbackDictionary* const own = callbackDictionaryOf(dictionary)) {
        const auto found = [own table].find(key);
        if (found == [own table].end()) return false;
        if (value) *value = found->second;
        return true;
    }
    id const object = [dictionaryOf(dictionary) objectForKey:(id)key];
    if (object && value) *value = object;
    return object != nil;
}

void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys,
                                  const void** values) {
    for (const Entry& entry : entriesOf(dictionary)) {
        if (keys) *keys++ = entry.key;
        if (values) *values++ = entry.value;
    }
}

void CFDictionaryApplyFunction(CFDictionaryRef dictionary, CFDictionaryApplierFunction function,
                               void* context) {
    for (const Entry& entry : entriesOf(dictionary))
        function(entry.key, entry.value, context);
}

void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void* key, const void* value) {
    if (!CFDictionaryContainsKey(dictionary, key)) CFDictionarySetValue(dictionary, key, value);
}

void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void* key, const void* value) {
    if (CocoaCallbackDictionary* const own = callbackDictionaryOf(dictionary))
        [own setValue:value forPointer:key];
    else
        [mutableDictionaryOf(dictionary) setObject:(id)value forKey:(id<NSCopying>)key];
}

void CFDictionaryReplaceValue(CFMutableDictionaryRef dictionary, const void* key,
                              const void* value) {
    if (CFDictionaryContainsKey(dictionary, key)) CFDictionarySetValue(dictionary, key, value);
}

void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void* key) {
    if (CocoaCallbackDictionary* const own = callbackDictionaryOf(dictionary))
        [own removePointer:key];
    else
        [mutableDictionaryOf(dictionary) removeObjectForKey:(id)key];
}

void CFDictionaryRemoveAllValues(CFMutableDictionaryRef dictionary) {
    [mutableDictionaryOf(dictionary) removeAllObjects];
}
