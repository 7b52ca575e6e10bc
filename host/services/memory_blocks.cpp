#include "host/objects/memory_block.h"

#include "host/objects/runtime.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

namespace host::exports {

namespace {

MemoryBlock* blockFrom(REALmemoryBlockStruct* block) {
    return arguments::isObject(1, block, "MemoryBlock") ? stateOf<MemoryBlock>(block) : nullptr;
}

} // namespace

REALmemoryBlockStruct* newMemoryBlock(std::int32_t size) {
    if (size < 0) {
        Runtime::current().reportMisuse("argument 1: a negative size");
        return nullptr;
    }
    return static_cast<REALmemoryBlockStruct*>(
        host::newMemoryBlock(static_cast<std::int64_t>(size)).release());
}

void* memoryBlockGetPtr(REALmemoryBlockStruct* block) {
    MemoryBlock* const held = blockFrom(block);
    return held ? held->bytes.data() : nullptr;
}

std::int32_t memoryBlockGetSize(REALmemoryBlockStruct* block) {
    const MemoryBlock* const held = blockFrom(block);
    return held ? static_cast<std::int32_t>(held->bytes.size()) : 0;
}

} // namespace host::exports
