#include "plugin/probe/probe_host.h"

#include <Cocoa/Cocoa.h>
#include <objc/runtime.h>

namespace {

class DataOn {
public:
    explicit DataOn(std::vector<std::string> without = {})
        : host(with_probe({.without = std::move(without), .withoutBase = true})) {}

    /// -1 for nil data.
    long length_of(const host::Value& block) {
        return host.shared<long>("DataProbe", "LengthOf", block);
    }
    host::ObjectRef copy_of(std::string_view bytes) {
        return host.shared<host::ObjectRef>("DataProbe", "Copy", host.memoryBlock(bytes));
    }
    host::ObjectRef of_claimed_length(std::int64_t length) {
        return host.shared<host::ObjectRef>("DataProbe", "OfClaimedLength", length);
    }

    Host host;
};

TEST(Data, CopiesTheBytesBothWays) {
    DataOn probe;
    const std::string bytes("\0\1\2three\0", 9);
    const host::ObjectRef copy = probe.copy_of(bytes);
    ASSERT_TRUE(copy);
    EXPECT_EQ(probe.host.bytes(copy), bytes);
    EXPECT_EQ(probe.host.references(copy), 1);
}

TEST(Data, OfANullOrEmptyBlockIsNil) {
    DataOn probe;
    EXPECT_EQ(probe.length_of(nullptr), -1);
    EXPECT_EQ(probe.length_of(probe.host.memoryBlock("")), -1);
    EXPECT_EQ(probe.length_of(probe.host.memoryBlock("x")), 1);
}

TEST(Data, ThatIsNilOrEmptyGivesNoBlockAndNoException) {
    DataOn probe;
    EXPECT_FALSE(probe.of_claimed_length(-1));
    EXPECT_FALSE(probe.of_claimed_length(0));
    EXPECT_EQ(probe.host.raised(), "");
}

TEST(Data, KeepsNoReferenceToTheBlock) {
    DataOn probe;
    const host::ObjectRef block = probe.host.memoryBlock("bytes");
    probe.length_of(block);
    EXPECT_EQ(probe.host.references(block), 1);
}

id throw_string(id, SEL, const void*, NSUInteger) { @throw @"no data today"; }

TEST(Data, GivesTheBlockBackWhenTheCopyThrows) {
    DataOn probe;
    const host::ObjectRef block = probe.host.memoryBlock("bytes");
    class_replaceMethod(object_getClass([NSData class]), @selector(dataWithBytes:length:),
                        (IMP)throw_string, "@@:^vL");
    bool thrown = false;
    @try {
        probe.length_of(block);
    } @catch (id) {
        thrown = true;
    }
    EXPECT_TRUE(thrown);
    EXPECT_EQ(probe.host.references(block), 1);
}

TEST(Data, OfTheGreatestLengthIsRefusedWithoutAskingTheHost) {
    DataOn probe;
    EXPECT_FALSE(probe.of_claimed_length(0x7FFFFFFF));
    EXPECT_EQ(probe.host.raised(), "OutOfMemoryException: Failed to allocate a memoryblock with "
                                   "2147483647 bytes in size.");
    EXPECT_EQ(probe.host.calls("newMemoryBlock"), 0);
}

TEST(Data, ThatTheHostHasNoMemoryForRaises) {
    DataOn probe;
    probe.host.fail(REALservices::NewMemoryBlock, 1);
    EXPECT_FALSE(probe.of_claimed_length(0x7FFFFFFE));
    EXPECT_EQ(probe.host.raised(), "OutOfMemoryException: Failed to allocate a memoryblock with "
                                   "2147483646 bytes in size.");
}

TEST(Data, OfALengthThatIsNegativeIn32BitsGivesNothing) {
    DataOn probe;
    EXPECT_FALSE(probe.of_claimed_length(0x80000000));
    EXPECT_EQ(probe.host.raised(), "");
}

TEST(DataWithout, NewMemoryBlockRaisesAndLooksItUpAgain) {
    DataOn probe({"newMemoryBlock"});
    for (int i = 1; i <= 2; ++i) {
        EXPECT_FALSE(probe.copy_of("hello"));
        EXPECT_EQ(probe.host.raised(),
                  "OutOfMemoryException: Failed to allocate a memoryblock with 5 bytes in size.");
        EXPECT_EQ(probe.host.lookups("newMemoryBlock"), i);
    }
}

class DataWithoutAReader : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Data, DataWithoutAReader,
                         testing::Values("memoryBlockGetSize", "memoryBlockGetPtr"));

TEST_P(DataWithoutAReader, IsNilAndLooksItUpAgain) {
    DataOn probe({GetParam()});
    EXPECT_EQ(probe.length_of(probe.host.memoryBlock("bytes")), -1);
    EXPECT_EQ(probe.length_of(probe.host.memoryBlock("bytes")), -1);
    EXPECT_EQ(probe.host.lookups(GetParam()), 2);
}

REALmemoryBlockStruct* blockMade = nullptr;

REALmemoryBlockStruct* make_block(std::int32_t size) {
    host::ObjectRef block = host::Runtime::current().construct(
        *host::Runtime::current().findClass("MemoryBlock"), {host::Value(size)});
    return blockMade = static_cast<REALmemoryBlockStruct*>(block.release());
}

void* no_bytes(REALmemoryBlockStruct*) { return nullptr; }

/// As designed: such a host keeps the block.
TEST(Data, LeavesABlockWithoutBytesToTheHost) {
    DataOn probe;
    const host::ObjectRef source = probe.host.memoryBlock("bytes");
    probe.host.replace(REALservices::NewMemoryBlock, make_block);
    probe.host.replace(REALservices::MemoryBlockGetPtr, no_bytes);
    EXPECT_FALSE(probe.of_claimed_length(1));
    ASSERT_NE(blockMade, nullptr);
    const host::ObjectRef kept = host::ObjectRef::adopt(blockMade);
    EXPECT_EQ(probe.host.references(kept), 1);
    EXPECT_EQ(probe.host.raised(), "");
}

} // namespace
