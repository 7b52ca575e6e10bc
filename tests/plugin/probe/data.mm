#include "plugin/bridge/data.h"
#include "plugin/entry/frames.h"
#include "sdk/tables.h"
#include "tests/plugin/probe/probe.h"

using namespace REALtables;

/// Claims any length; there is only one byte.
@interface ClaimedData : NSObject {
    NSUInteger _length;
}
- (id)initWithLength:(NSUInteger)length;
- (const void*)bytes;
- (NSUInteger)length;
@end

@implementation ClaimedData
- (id)initWithLength:(NSUInteger)length {
    self = [super init];
    _length = length;
    return self;
}
- (const void*)bytes {
    return "x";
}
- (NSUInteger)length {
    return _length;
}
@end

namespace {

/// -1 for nil.
REALword length_of(REALmemoryBlockStruct* block) {
    return FullFrame([&]() -> REALword {
        NSData* const data = NewNSData(block);
        return data ? static_cast<REALword>([data length]) : -1;
    });
}

REALmemoryBlockStruct* copy(REALmemoryBlockStruct* block) {
    return FullFrame([&] { return NSDataRB(NewNSData(block)); });
}

/// What data that claims a length gives; nil data for a negative one.
REALmemoryBlockStruct* of_claimed_length(std::int64_t length) {
    return FullFrame([&] {
        id const data =
            [[[ClaimedData alloc] initWithLength:static_cast<NSUInteger>(length)] autorelease];
        return NSDataRB(length < 0 ? nil : data);
    });
}

REALmethod sharedMethods[] = {
    shared_method("LengthOf(block as MemoryBlock) as Integer", length_of),
    shared_method("Copy(block as MemoryBlock) as MemoryBlock", copy),
    shared_method("OfClaimedLength(length as Int64) as MemoryBlock", of_claimed_length),
};

} // namespace

REALclassDefinition DataProbe =
    class_definition({.name = "DataProbe", .sharedMethods = sharedMethods});
