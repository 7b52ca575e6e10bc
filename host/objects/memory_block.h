#pragma once

/// MemoryBlock: bytes of any kind.

#include "host/objects/object.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace host {

struct MemoryBlock : State {
    std::vector<std::uint8_t> bytes;
    bool littleEndian = true;

    std::string_view view() const {
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }
};

/// A MemoryBlock with a copy of the bytes.
ObjectRef newMemoryBlock(std::string_view bytes);
/// A zeroed MemoryBlock; Nil for a negative size or when there is no memory.
ObjectRef newMemoryBlock(std::int64_t size);

} // namespace host
