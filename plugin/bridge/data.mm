#include "plugin/bridge/data.h"

#include "plugin/entry/exceptions.h"
#include "plugin/entry/references.h"

#include <cstdio>
#include <cstring>

NSData* NewNSData(REALmemoryBlockStruct* block) {
    if (!block) return nil;
    const HostObject kept = HostObject::retain(block);
    const std::int32_t size = REALMemoryBlockGetSize(block);
    const void* const bytes = REALMemoryBlockGetPtr(block);
    if (size <= 0 || !bytes) return nil;
    return [NSData dataWithBytes:bytes length:static_cast<NSUInteger>(size)];
}

REALmemoryBlockStruct* NSDataRB(NSData* data) {
    constexpr std::int32_t longestBlock = 0x7FFFFFFE;
    const void* const bytes = [data bytes];
    const std::int32_t length = static_cast<std::int32_t>([data length]);
    if (!bytes || length < 1) return nullptr;

    REALmemoryBlockStruct* const block =
        length <= longestBlock ? REALNewMemoryBlockOriginal(length) : nullptr;
    if (!block) {
        char message[200];
        std::snprintf(message, sizeof message,
                      "Failed to allocate a memoryblock with %lld bytes in size.",
                      static_cast<long long>(length));
        RaiseException("OutOfMemoryException", message);
        return nullptr;
    }
    // A host that makes blocks but does not show their bytes keeps this one.
    void* const target = REALMemoryBlockGetPtr(block);
    if (!target) return nullptr;
    std::memcpy(target, bytes, static_cast<std::size_t>(length));
    return block;
}
