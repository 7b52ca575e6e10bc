#include "cocoa/CoreFoundation/callbacks.h"
#include "cocoa/CoreFoundation/type_ids.h"

#include <CoreFoundation/CFBag.h>

#include <unordered_map>
#include <utility>

namespace {

struct ValueHash {
    CFBagCallBacks callBacks;
    std::size_t operator()(const void* value) const {
        return callBacks.hash ? callBacks.hash(value) : std::hash<const void*>()(value);
    }
};

struct ValueEqual {
    CFBagCallBacks callBacks;
    bool operator()(const void* first, const void* second) const {
        return cocoa::equalValues(callBacks, first, second);
    }
};

/// Each value that stands in the bag, and how often.
using Counts = std::unordered_map<const void*, CFIndex, ValueHash, ValueEqual>;

} // namespace

/// What a CFBagRef is.
@interface CocoaBag : NSObject <CoreFoundationTyped> {
@public
    CFBagCallBacks callBacks;
    Counts* counts;
    CFIndex total;
    BOOL immutable;
}
- (id)initWithCallBacks:(const CFBagCallBacks*)given;
- (void)willChange;
- (void)add:(const void*)value;
- (void)remove:(const void*)value;
- (void)removeAll;
@end

@implementation CocoaBag

- (id)initWithCallBacks:(const CFBagCallBacks*)given {
    self = [super init];
    if (self) {
        if (given) callBacks = *given;
        counts = new Counts(0, ValueHash{callBacks}, ValueEqual{callBacks});
    }
    return self;
}

- (void)dealloc {
    if (counts) [self removeAll];
    delete counts;
    [super dealloc];
}

- (void)willChange {
    if (immutable)
        [NSException raise:NSInternalInconsistencyException
                    format:@"An immutable bag cannot be changed"];
}

// Values that are equal are one object here, retained as often as it stands in the bag.

- (void)add:(const void*)value {
    const auto [entry, isNew] = counts->try_emplace(value, 0);
    cocoa::retainValue(callBacks, entry->first);
    ++entry->second;
    ++total;
}

- (void)remove:(const void*)value {
    const auto entry = counts->find(value);
    if (entry == counts->end()) return;
    const void* const kept = entry->first;
    --total;
    if (--entry->second == 0) counts->erase(entry);
    cocoa::releaseValue(callBacks, kept);
}

- (void)removeAll {
    Counts removed(0, ValueHash{callBacks}, ValueEqual{callBacks});
    std::swap(removed, *counts);
    total = 0;
    for (const auto& [value, count] : removed)
        for (CFIndex index = 0; index < count; ++index)
            cocoa::releaseValue(callBacks, value);
}

- (CFTypeID)_cfTypeID {
    return cocoa::typeOfBag;
}

- (NSUInteger)hash {
    return static_cast<NSUInteger>(total);
}

- (BOOL)isEqual:(id)object {
    if (object == self) return YES;
    if (![object isKindOfClass:[CocoaBag class]]) return NO;
    CocoaBag* const other = object;
    if (other->total != total || other->counts->size() != counts->size()) return NO;
    for (const auto& [value, count] : *counts)
        if (CFBagGetCountOfValue((CFBagRef)other, value) != count) return NO;
    return YES;
}

- (NSString*)description {
    NSMutableString* const text = [NSMutableString stringWithFormat:@"<CFBag %p> {\n", self];
    for (const auto& [value, count] : *counts)
        [text appendFormat:@"    %@ (%ld)\n", cocoa::describe(callBacks.copyDescription, value),
                           static_cast<long>(count)];
    [text appendString:@"}"];
    return text;
}

@end

namespace {

CocoaBag* bagOf(CFBagRef bag) { return (CocoaBag*)bag; }

} // namespace

const CFBagCallBacks kCFTypeBagCallBacks = {
    0, cocoa::retainObject, cocoa::releaseObject, CFCopyDescription, CFEqual, CFHash};

CFTypeID CFBagGetTypeID(void) { return cocoa::typeOfBag; }

CFBagRef CFBagCreate(CFAllocatorRef, const void** values, CFIndex count,
                     const CFBagCallBacks* callBacks) {
    if (count < 0 || (count > 0 && !values)) return nullptr;
    CocoaBag* const bag = [[CocoaBag alloc] initWithCallBacks:callBacks];
    for (CFIndex index = 0; bag && index < count; ++index)
        [bag add:values[index]];
    if (bag) bag->immutable = YES;
    return (CFBagRef)bag;
}

CFMutableBagRef CFBagCreateMutable(CFAllocatorRef, CFIndex, const CFBagCallBacks* callBacks) {
    return (CFMutableBagRef)[[CocoaBag alloc] initWithCallBacks:callBacks];
}

CFIndex CFBagGetCount(CFBagRef bag) { return bag ? bagOf(bag)->total : 0; }

CFIndex CFBagGetCountOfValue(CFBagRef bag, const void* value) {
    if (!bag) return 0;
    const Counts& counts = *bagOf(bag)->counts;
    const auto entry = counts.find(value);
    return entry == counts.end() ? 0 : entry->second;
}

Boolean CFBagContainsValue(CFBagRef bag, const void* value) {
    return CFBagGetCountOfValue(bag, value) > 0;
}

void CFBagGetValues(CFBagRef bag, const void** values) {
    const auto store = [](const void* value, void* context) {
        *(*static_cast<const void***>(context))++ = value;
    };
    if (values) CFBagApplyFunction(bag, store, &values);
}

void CFBagApplyFunction(CFBagRef bag, CFBagApplierFunction function, void* context) {
    if (!bag || !function) return;
    for (const auto& [value, count] : *bagOf(bag)->counts)
        for (CFIndex index = 0; index < count; ++index)
            function(value, context);
}

void CFBagAddValue(CFMutableBagRef bag, const void* value) {
    [bagOf(bag) willChange];
    [bagOf(bag) add:value];
}

void CFBagRemoveValue(CFMutableBagRef bag, const void* value) {
    [bagOf(bag) willChange];
    [bagOf(bag) remove:value];
}

void CFBagRemoveAllValues(CFMutableBagRef bag) {
    [bagOf(bag) willChange];
    [bagOf(bag) removeAll];
}
