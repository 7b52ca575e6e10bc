#include "cocoa/CoreFoundation/callback_array.h"

#include "cocoa/CoreFoundation/type_ids.h"

#include <utility>

@implementation CocoaCallbackArray

- (id)init {
    return [self initWithCallBacks:&kCFTypeArrayCallBacks];
}

- (id)initWithCapacity:(NSUInteger)capacity {
    return [self init];
}

- (id)initWithObjects:(const id*)objects count:(NSUInteger)count {
    self = [self init];
    for (NSUInteger index = 0; self && index < count; ++index)
        [self addObject:objects[index]];
    return self;
}

- (id)initWithCallBacks:(const CFArrayCallBacks*)given {
    self = [super init];
    if (self) {
        if (given) callBacks = *given;
        values = new std::vector<const void*>;
    }
    return self;
}

- (id)initWithValuesOf:(CocoaCallbackArray*)other {
    self = [self initWithCallBacks:&other->callBacks];
    if (self)
        for (const void* const value : *other->values)
            [self insertValue:value atIndex:values->size()];
    return self;
}

- (void)dealloc {
    if (values) {
        immutable = NO;
        [self removeAllObjects];
        delete values;
    }
    [super dealloc];
}

- (void)makeImmutable {
    immutable = YES;
}

- (CFTypeID)_cfTypeID {
    return cocoa::typeOfArray;
}

- (Class)classForCoder {
    return immutable ? [NSArray class] : [NSMutableArray class];
}

- (void)willChange {
    if (immutable)
        [NSException raise:NSInternalInconsistencyException
                    format:@"An immutable array cannot be changed"];
    ++mutations;
}

- (void)checkIndex:(NSUInteger)index below:(NSUInteger)limit {
    if (index >= limit)
        [NSException raise:NSRangeException
                    format:@"Index %ld in an array of %lu values", static_cast<long>(index),
                           static_cast<unsigned long>(values->size())];
}

- (void)insertValue:(const void*)value atIndex:(NSUInteger)index {
    [self willChange];
    [self checkIndex:index below:values->size() + 1];
    const void* const kept = cocoa::retainValue(callBacks, value);
    values->insert(values->begin() + static_cast<std::ptrdiff_t>(index), kept);
}

- (void)replaceValueAtIndex:(NSUInteger)index with:(const void*)value {
    [self willChange];
    [self checkIndex:index below:values->size()];
    const void* const kept = cocoa::retainValue(callBacks, value);
    cocoa::releaseValue(callBacks, std::exchange((*values)[index], kept));
}

- (BOOL)isValue:(const void*)value equalTo:(const void*)other {
    return cocoa::equalValues(callBacks, value, other);
}

- (NSUInteger)count {
    return values->size();
}

- (id)objectAtIndex:(NSUInteger)index {
    [self checkIndex:index below:values->size()];
    return (id)(*values)[index];
}

- (void)checkObject:(id)object {
    if (!object) [NSException raise:NSInvalidArgumentException format:@"An array cannot hold nil"];
}

- (void)addObject:(id)object {
    [self checkObject:object];
    [self insertValue:object atIndex:values->size()];
}

- (void)insertObject:(id)object atIndex:(NSUInteger)index {
    [self checkObject:object];
    [self insertValue:object atIndex:index];
}

- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(id)object {
    [self checkObject:object];
    [self replaceValueAtIndex:index with:object];
}

- (void)removeObjectAtIndex:(NSUInteger)index {
    [self willChange];
    [self checkIndex:index below:values->size()];
    const void* const removed = (*values)[index];
    values->erase(values->begin() + static_cast<std::ptrdiff_t>(index));
    cocoa::releaseValue(callBacks, removed);
}

- (void)removeLastObject {
    [self removeObjectAtIndex:values->size() - 1];
}

- (void)removeAllObjects {
    [self willChange];
    const std::vector<const void*> removed = std::exchange(*values, {});
    for (const void* const value : removed)
        cocoa::releaseValue(callBacks, value);
}

- (id)copyWithZone:(NSZone*)zone {
    if (immutable) return [self retain];
    CocoaCallbackArray* const copy =
        [[CocoaCallbackArray allocWithZone:zone] initWithValuesOf:self];
    [copy makeImmutable];
    return copy;
}

- (id)mutableCopyWithZone:(NSZone*)zone {
    return [[CocoaCallbackArray allocWithZone:zone] initWithValuesOf:self];
}

- (NSUInteger)hash {
    return values->size();
}

- (BOOL)isEqual:(id)other {
    if (other == self) return YES;
    if (![other isKindOfClass:[NSArray class]] || [other count] != values->size()) return NO;
    for (NSUInteger index = 0; index < values->size(); ++index)
        if (![self isValue:(*values)[index] equalTo:[other objectAtIndex:index]]) return NO;
    return YES;
}

- (BOOL)isEqualToArray:(NSArray*)other {
    return [self isEqual:other];
}

- (NSString*)description {
    NSMutableString* const text = [NSMutableString stringWithString:@"(\n"];
    for (const void* const value : *values)
        [text appendFormat:@"    %@,\n", cocoa::describe(callBacks.copyDescription, value)];
    [text appendString:@")"];
    return text;
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id[])buffer
                                    count:(NSUInteger)capacity {
    if (state->state) return 0;
    state->state = 1;
    state->itemsPtr = (id*)values->data();
    state->mutationsPtr = &mutations;
    return values->size();
}

@end
