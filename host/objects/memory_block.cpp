#include "host/objects/memory_block.h"

#include "host/objects/host_classes.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <new>

namespace host {

namespace {

/// Sizes are 32-bit in the interface.
constexpr std::int64_t maximumSize = std::numeric_limits<std::int32_t>::max();

MemoryBlock& blockOf(REALobjectStruct* self) { return *stateOf<MemoryBlock>(self); }

bool resize(MemoryBlock& block, std::int64_t size) {
    if (size < 0 || size > maximumSize) return false;
    try {
        block.bytes.resize(static_cast<std::size_t>(size));
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

void resizeOrRaise(MemoryBlock& block, std::int64_t size) {
    if (size < 0) raise("OutOfBoundsException", "A MemoryBlock's size may not be negative.");
    if (!resize(block, size))
        raise("OutOfMemoryException",
              "A MemoryBlock of " + std::to_string(size) + " bytes cannot be made.");
}

/// The `count` bytes at the offset; raises when they are not all within the block.
std::uint8_t* bytesAt(REALobjectStruct* self, const Value& offset, std::int64_t count) {
    MemoryBlock& block = blockOf(self);
    const std::int64_t start = offset.toInt64();
    const auto size = static_cast<std::int64_t>(block.bytes.size());
    if (start < 0 || count < 0 || count > size || start > size - count)
        raise("OutOfBoundsException", "Offset " + std::to_string(start) + " with " +
                                          std::to_string(count) + " bytes is outside a block of " +
                                          std::to_string(size) + " bytes.");
    return block.bytes.data() + start;
}

template <typename Number>
Number inBlockOrder(REALobjectStruct* self, Number number) {
    constexpr bool nativeIsLittle = std::endian::native == std::endian::little;
    if (blockOf(self).littleEndian == nativeIsLittle) return number;
    auto* const bytes = reinterpret_cast<std::uint8_t*>(&number);
    std::reverse(bytes, bytes + sizeof number);
    return number;
}

/// A pair of methods `name(offset)` and `name(offset) = value` over numbers of one width.
template <typename Number>
void addNumber(Class& type, std::string_view name, std::string_view languageType) {
    const std::string start = std::string(name) + "(offset As Integer";
    type.addMethod(start + ") As " + std::string(languageType),
                   [](REALobjectStruct* self, std::span<Value> arguments) -> Value {
                       Number number{};
                       std::memcpy(&number, bytesAt(self, arguments[0], sizeof number),
                                   sizeof number);
                       return inBlockOrder(self, number);
                   });
    type.addMethod(start + ", Assigns value As " + std::string(languageType) + ")",
                   [](REALobjectStruct* self, std::span<Value> arguments) -> Value {
                       Number number{};
                       if constexpr (std::is_floating_point_v<Number>)
                           number = static_cast<Number>(arguments[1].toDouble());
                       else
                           number = static_cast<Number>(arguments[1].toInt64());
                       number = inBlockOrder(self, number);
                       std::memcpy(bytesAt(self, arguments[0], sizeof number), &number,
                                   sizeof number);
                       return {};
                   });
}

Value stringValue(REALobjectStruct* self, std::span<Value> arguments) {
    const std::int64_t count = arguments[1].toInt64();
    const auto* const start = bytesAt(self, arguments[0], count);
    return StringRef({reinterpret_cast<const char*>(start), static_cast<std::size_t>(count)},
                     REALtextEncodingNone);
}

/// Writes as much of the text as the stated size holds, and zeros behind a shorter one.
Value setStringValue(REALobjectStruct* self, std::span<Value> arguments) {
    const std::int64_t count = arguments[1].toInt64();
    auto* const start = bytesAt(self, arguments[0], count);
    const std::string_view text = arguments[2].get<StringRef>()->bytes();
    const auto copied = std::min<std::size_t>(text.size(), static_cast<std::size_t>(count));
    std::memcpy(start, text.data(), copied);
    std::memset(start + copied, 0, static_cast<std::size_t>(count) - copied);
    return {};
}

} // namespace

ObjectRef newMemoryBlock(std::int64_t size) {
    ObjectRef object = Runtime::current().newInstance("MemoryBlock");
    auto* const block = stateOf<MemoryBlock>(object);
    if (!block || !resize(*block, size)) return nullptr;
    return object;
}

ObjectRef newMemoryBlock(std::string_view bytes) {
    ObjectRef object = newMemoryBlock(static_cast<std::int64_t>(bytes.size()));
    if (auto* const block = stateOf<MemoryBlock>(object))
        std::ranges::copy(bytes, block->bytes.begin());
    return object;
}

void defineMemoryBlock(Runtime& runtime) {
    Class& type = defineClass(runtime, "MemoryBlock");
    type.makeState = [] { return std::make_unique<MemoryBlock>(); };
    type.addMethod("Constructor(size As Integer)",
                   [](REALobjectStruct* self, std::span<Value> arguments) -> Value {
                       resizeOrRaise(blockOf(self), arguments[0].toInt64());
                       return {};
                   });
    type.addProperty(
        "Size", Type::integer(),
        [](REALobjectStruct* self) -> Value {
            return static_cast<REALword>(blockOf(self).bytes.size());
        },
        [](REALobjectStruct* self, const Value& size) {
            resizeOrRaise(blockOf(self), size.toInt64());
        });
    type.addProperty(
        "LittleEndian", Kind::Boolean,
        [](REALobjectStruct* self) -> Value { return blockOf(self).littleEndian; },
        [](REALobjectStruct* self, const Value& flag) {
            blockOf(self).littleEndian = flag.toBoolean();
        });
    addNumber<std::uint8_t>(type, "Byte", "Integer");
    addNumber<std::int16_t>(type, "Short", "Integer");
    addNumber<std::uint16_t>(type, "UShort", "Integer");
    addNumber<std::int32_t>(type, "Long", "Integer");
    addNumber<std::int32_t>(type, "Int32Value", "Int32");
    addNumber<std::uint32_t>(type, "UInt32Value", "UInt32");
    addNumber<std::int64_t>(type, "Int64Value", "Int64");
    addNumber<std::uint64_t>(type, "UInt64Value", "UInt64");
    addNumber<float>(type, "SingleValue", "Single");
    addNumber<double>(type, "DoubleValue", "Double");
    type.addMethod("StringValue(offset As Integer, size As Integer) As String", stringValue);
    type.addMethod("StringValue(offset As Integer, size As Integer, Assigns value As String)",
                   setStringValue);
}

} // namespace host
