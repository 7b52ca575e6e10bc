#include "host/called_services.h"
#include "support/host.h"

#include <gmock/gmock.h>

#include <cstring>

namespace {

using namespace REALservices;

class MemoryBlocks : public testing::Test {
protected:
    Host host{{.bare = true}};
};

TEST_F(MemoryBlocks, StartWithZeros) {
    const host::ObjectRef block = host.create("MemoryBlock", 3);
    EXPECT_EQ(host.get<int>(block, "Size"), 3);
    EXPECT_EQ(host.bytes(block), std::string(3, '\0'));
}

TEST_F(MemoryBlocks, ReadAndWriteNumbersInTheirByteOrder) {
    const host::ObjectRef block = host.create("MemoryBlock", 8);
    host.assign(block, "Long", 2, 0x01020304);
    EXPECT_EQ(host.bytes(block), std::string("\0\0\4\3\2\1\0\0", 8));
    host.set(block, "LittleEndian", false);
    EXPECT_EQ(host.call<std::int64_t>(block, "Long", 2), 0x04030201);
    host.assign(block, "Short", 0, -2);
    EXPECT_EQ(host.bytes(block).substr(0, 2), "\xff\xfe");
    EXPECT_EQ(host.call<int>(block, "Short", 0), -2);
    EXPECT_EQ(host.call<int>(block, "UShort", 0), 0xFFFE);
    EXPECT_EQ(host.call<int>(block, "Byte", 1), 0xFE);
}

TEST_F(MemoryBlocks, ReadAndWriteFloatingPointAndWideNumbers) {
    const host::ObjectRef block = host.create("MemoryBlock", 8);
    host.assign(block, "DoubleValue", 0, 1.5);
    EXPECT_EQ(host.bytes(block), std::string("\0\0\0\0\0\0\xf8\x3f", 8));
    EXPECT_EQ(host.call<double>(block, "DoubleValue", 0), 1.5);
    host.assign(block, "SingleValue", 4, -2.0);
    EXPECT_EQ(host.bytes(block).substr(4), std::string("\0\0\0\xc0", 4));
    host.assign(block, "UInt64Value", 0, UINT64_MAX - 1);
    EXPECT_EQ(host.call<std::uint64_t>(block, "UInt64Value", 0), UINT64_MAX - 1);
    EXPECT_EQ(host.call<std::int64_t>(block, "Int64Value", 0), -2);
    EXPECT_EQ(host.call<std::uint32_t>(block, "UInt32Value", 4), UINT32_MAX);
    EXPECT_EQ(host.call<int>(block, "Int32Value", 4), -1);
}

TEST_F(MemoryBlocks, ReadAndWriteText) {
    const host::ObjectRef block = host.memoryBlock("abcdef");
    EXPECT_EQ(host.call<std::string>(block, "StringValue", 1, 3), "bcd");
    host.assign(block, "StringValue", 1, 4, "XY");
    EXPECT_EQ(host.bytes(block), std::string("aXY\0\0f", 6));
    host.assign(block, "StringValue", 0, 2, "long");
    EXPECT_EQ(host.bytes(block).substr(0, 3), "loY");
}

TEST_F(MemoryBlocks, RaiseOutsideOfTheirBytes) {
    const host::ObjectRef block = host.memoryBlock("abcd");
    for (const std::int64_t offset : {std::int64_t{-1}, std::int64_t{1}, std::int64_t{INT32_MAX}}) {
        host.call(block, "Long", offset);
        EXPECT_EQ(host.raised(), "OutOfBoundsException: Offset " + std::to_string(offset) +
                                     " with 4 bytes is outside a block of 4 bytes.");
    }
    EXPECT_NE(host.call<std::int64_t>(block, "Long", 0), 0);
    host.call(block, "StringValue", 0, -1);
    EXPECT_EQ(host.raised(), "OutOfBoundsException: Offset 0 with -1 bytes is outside a block of 4 "
                             "bytes.");
}

TEST_F(MemoryBlocks, ChangeTheirSize) {
    const host::ObjectRef block = host.memoryBlock("abcd");
    host.set(block, "Size", 6);
    EXPECT_EQ(host.bytes(block), std::string("abcd\0\0", 6));
    host.set(block, "Size", -1);
    EXPECT_EQ(host.raised(), "OutOfBoundsException: A MemoryBlock's size may not be negative.");
    EXPECT_EQ(host.get<int>(block, "Size"), 6);
}

TEST_F(MemoryBlocks, CannotBeLargerThanTheInterfaceCounts) {
    const host::ObjectRef block = host.memoryBlock("");
    host.set(block, "Size", std::int64_t{INT32_MAX} + 1);
    EXPECT_NE(host.raised(), "");
}

TEST_F(MemoryBlocks, ConvertFromAndToText) {
    const host::Value text = host.text("caf\xe9", REALtextEncodingNone);
    const auto block = host::convert(text, host::Type::object("MemoryBlock"));
    ASSERT_TRUE(block);
    EXPECT_EQ(host.bytes(block->objectRef()), "caf\xe9");
    const auto back = host::convert(*block, host::Kind::String);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->get<host::StringRef>()->bytes(), "caf\xe9");
}

TEST_F(MemoryBlocks, ShowPluginsTheirBytes) {
    const host::ObjectRef block = host::ObjectRef::adopt(service(NewMemoryBlock)(4));
    auto* const raw = static_cast<REALmemoryBlockStruct*>(block.get());
    ASSERT_EQ(service(MemoryBlockGetSize)(raw), 4);
    std::memcpy(service(MemoryBlockGetPtr)(raw), "wxyz", 4);
    EXPECT_EQ(host.bytes(block), "wxyz");
}

TEST_F(MemoryBlocks, AreNotMadeWithANegativeSize) {
    EXPECT_EQ(service(NewMemoryBlock)(-1), nullptr);
    EXPECT_THAT(host.takeReports(),
                testing::ElementsAre("newMemoryBlock: argument 1: a negative size"));
}

} // namespace
