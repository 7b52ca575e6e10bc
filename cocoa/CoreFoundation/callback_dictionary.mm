#include "cocoa/CoreFoundation/callback_dictionary.h"

#include "cocoa/CoreFoundation/type_ids.h"

#include <memory>
#include <utility>
#include <vector>

using cocoa::CallbackTable;

/// Walks the keys, or the values, that the dictionary had when it was asked.
@interface CocoaCallbackEnumerator : NSEnumerator {
@private
    CocoaCallbackDictionary* dictionary;
    std::vector<const void*>* pointers;
    std::size_t next;
}
- (id)initWithDictionary:(CocoaCallbackDictionary*)source pointers:(std::vector<const void*>)walked;
@end

@implementation CocoaCallbackEnumerator

- (id)initWithDictionary:(CocoaCallbackDictionary*)source
                pointers:(std::vector<const void*>)walked {
    self = [super init];
    if (self) {
        dictionary = [source retain];
        pointers = new std::vector<const void*>(std::move(walked));
    }
    return self;
}

- (void)dealloc {
    delete pointers;
    [dictionary release];
    [super dealloc];
}

- (id)nextObject {
    return next < pointers->size() ? (id)(*pointers)[next++] : nil;
}

@end

namespace {

std::vector<const void*> keysOf(const CallbackTable& table) {
    std::vector<const void*> keys;
    keys.reserve(table.size());
    for (const auto& [key, value] : table)
        keys.push_back(key);
    return keys;
}

std::vector<const void*> valuesOf(const CallbackTable& table) {
    std::vector<const void*> values;
    values.reserve(table.size());
    for (const auto& [key, value] : table)
        values.push_back(value);
    return values;
}

NSEnumerator* enumerate(CocoaCallbackDictionary* dictionary, std::vector<const void*> pointers) {
    return [[[CocoaCallbackEnumerator alloc] initWithDictionary:dictionary
                                                       pointers:std::move(pointers)] autorelease];
}

} // namespace

@implementation CocoaCallbackDictionary

- (id)init {
    return [self initWithKeyCallBacks:&kCFTypeDictionaryKeyCallBacks
                       valueCallBacks:&kCFTypeDictionaryValueCallBacks];
}

- (id)initWithCapacity:(NSUInteger)capacity {
    return [self init];
}

- (id)initWithObjects:(const id*)objects
              forKeys:(const id<NSCopying>*)keys
                count:(NSUInteger)count {
    self = [self init];
    for (NSUInteger index = 0; self && index < count; ++index)
        [self setObject:objects[index] forKey:keys[index]];
    return self;
}

- (id)initWithKeyCallBacks:(const CFDictionaryKeyCallBacks*)keys
            valueCallBacks:(const CFDictionaryValueCallBacks*)values {
    self = [super init];
    if (self) {
        if (keys) keyCallBacks = *keys;
        if (values) valueCallBacks = *values;
        table = new CallbackTable(0, cocoa::KeyHash{keyCallBacks}, cocoa::KeyEqual{keyCallBacks});
    }
    return self;
}

- (id)initWithTableOf:(CocoaCallbackDictionary*)other {
    self = [self initWithKeyCallBacks:&other->keyCallBacks valueCallBacks:&other->valueCallBacks];
    if (self)
        for (const auto& [key, value] : *other->table)
            [self setValue:value forPointer:key];
    return self;
}

- (void)dealloc {
    if (table) {
        immutable = NO;
        [self removeAllObjects];
        delete table;
    }
    [super dealloc];
}

- (void)makeImmutable {
    immutable = YES;
}

- (CFTypeID)_cfTypeID {
    return cocoa::typeOfDictionary;
}

- (Class)classForCoder {
    return immutable ? [NSDictionary class] : [NSMutableDictionary class];
}

- (const CallbackTable&)table {
    return *table;
}

- (void)willChange {
    if (immutable)
        [NSException raise:NSInternalInconsistencyException
                    format:@"An immutable dictionary cannot be changed"];
    ++mutations;
}

- (void)setValue:(const void*)value forPointer:(const void*)key {
    [self willChange];
    const void* const kept = cocoa::retainValue(valueCallBacks, value);
    const auto found = table->find(key);
    if (found == table->end()) {
        table->emplace(cocoa::retainValue(keyCallBacks, key), kept);
        return;
    }
    // The old value may go with its last reference, and run code that comes back here.
    cocoa::releaseValue(valueCallBacks, std::exchange(found->second, kept));
}

- (void)removePointer:(const void*)key {
    [self willChange];
    const auto node = table->extract(key);
    if (!node) return;
    cocoa::releaseValue(valueCallBacks, node.mapped());
    cocoa::releaseValue(keyCallBacks, node.key());
}

- (BOOL)isValue:(const void*)value equalTo:(const void*)other {
    return cocoa::equalValues(valueCallBacks, value, other);
}

- (NSUInteger)count {
    return table->size();
}

- (id)objectForKey:(id)key {
    const auto found = table->find(key);
    return found == table->end() ? nil : (id)found->second;
}

- (NSEnumerator*)keyEnumerator {
    return enumerate(self, keysOf(*table));
}

- (NSEnumerator*)objectEnumerator {
    return enumerate(self, valuesOf(*table));
}

- (void)setObject:(id)object forKey:(id)key {
    if (!object || !key)
        [NSException raise:NSInvalidArgumentException
                    format:@"A dictionary cannot hold nil (key %p, value %p)", key, object];
    if (!cocoa::holdsObjects(keyCallBacks)) {
        [self setValue:object forPointer:key];
        return;
    }
    [self setValue:object forPointer:[[(NSObject*)key copy] autorelease]];
}

- (void)removeObjectForKey:(id)key {
    [self removePointer:key];
}

- (void)removeAllObjects {
    [self willChange];
    CallbackTable removed(0, cocoa::KeyHash{keyCallBacks}, cocoa::KeyEqual{keyCallBacks});
    table->swap(removed);
    for (const auto& [key, value] : removed) {
        cocoa::releaseValue(valueCallBacks, value);
        cocoa::releaseValue(keyCallBacks, key);
    }
}

- (id)copyWithZone:(NSZone*)zone {
    if (immutable) return [self retain];
    CocoaCallbackDictionary* const copy =
        [[CocoaCallbackDictionary allocWithZone:zone] initWithTableOf:self];
    [copy makeImmutable];
    return copy;
}

- (id)mutableCopyWithZone:(NSZone*)zone {
    return [[CocoaCallbackDictionary allocWithZone:zone] initWithTableOf:self];
}

- (NSUInteger)hash {
    return table->size();
}

- (BOOL)isEqual:(id)other {
    if (other == self) return YES;
    if (![other isKindOfClass:[NSDictionary class]] || [other count] != table->size()) return NO;
    const bool objects = cocoa::holdsObjects(keyCallBacks);
    const BOOL isOfCallbacks = [other isKindOfClass:[CocoaCallbackDictionary class]];
    if (!objects && !isOfCallbacks) return NO;
    for (const auto& [key, value] : *table) {
        if (isOfCallbacks) {
            const CallbackTable& others = *((CocoaCallbackDictionary*)other)->table;
            const auto found = others.find(key);
            if (found == others.end() || ![self isValue:value equalTo:found->second]) return NO;
        } else {
            id const found = [other objectForKey:(id)key];
            if (!found || ![self isValue:value equalTo:found]) return NO;
        }
    }
    return YES;
}

- (BOOL)isEqualToDictionary:(NSDictionary*)other {
    return [self isEqual:other];
}

- (NSString*)description {
    NSMutableString* const text = [NSMutableString stringWithString:@"{\n"];
    for (const auto& [key, value] : *table)
        [text appendFormat:@"    %@ = %@;\n", cocoa::describe(keyCallBacks.copyDescription, key),
                           cocoa::describe(valueCallBacks.copyDescription, value)];
    [text appendString:@"}"];
    return text;
}

/// Hands out all keys at once, from a buffer that lives as long as the enclosing pool.
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id[])buffer
                                    count:(NSUInteger)capacity {
    if (state->state) return 0;
    const std::vector<const void*> keys = keysOf(*table);
    NSData* const held = [NSData dataWithBytes:keys.data()
                                        length:keys.size() * sizeof(const void*)];
    state->state = 1;
    state->itemsPtr = (id*)[held bytes];
    state->mutationsPtr = &mutations;
    return keys.size();
}

@end
