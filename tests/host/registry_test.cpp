#include "host/called_services.h"
#include "support/host.h"

#include <gmock/gmock.h>

#include <thread>

namespace {

using namespace REALservices;
using testing::ElementsAre;
using testing::IsEmpty;

class References : public testing::Test {
protected:
    REALmemoryBlockStruct* newBlock() { return service(NewMemoryBlock)(4); }
    REALstringStruct* newString() { return service(BuildString)("abc", 3); }

    /// A pointer of the plug-in's that is taken for another class than it is of.
    template <typename Wanted>
    static Wanted* mistaken(void* pointer) {
        return static_cast<Wanted*>(pointer);
    }

    Host host{{.bare = true}};
};

TEST_F(References, ThatComeBackAreNotReported) {
    REALobjectStruct* const block = newBlock();
    service(LockObject)(block);
    service(UnlockObject)(block);
    service(UnlockObject)(block);
    EXPECT_THAT(host.takeReports(), IsEmpty());
}

TEST_F(References, ToNilMayBeLockedAndUnlocked) {
    service(LockObject)(nullptr);
    service(UnlockObject)(nullptr);
    EXPECT_THAT(host.takeReports(), IsEmpty());
}

TEST_F(References, ToAnObjectGivenBackTwiceAreReported) {
    REALobjectStruct* const block = newBlock();
    service(UnlockObject)(block);
    service(UnlockObject)(block);
    EXPECT_THAT(host.takeReports(),
                ElementsAre("REALUnlockObject: argument 1: MemoryBlock already released"));
}

TEST_F(References, ToAStringGivenBackTwiceAreReported) {
    REALstringStruct* const string = newString();
    service(UnlockString)(string);
    service(UnlockString)(string);
    EXPECT_THAT(host.takeReports(),
                ElementsAre("REALUnlockString: argument 1: String already released"));
}

TEST_F(References, InAChainOfAnyLengthEndTogether) {
    host::ObjectRef outer;
    for (int link = 0; link < 1000000; ++link)
        outer = host.arrayOf(host::Kind::Variant, {outer});
    EXPECT_EQ(host.instances("Array"), 1000000U);
    outer = nullptr;
    EXPECT_EQ(host.instances("Array"), 0U);
}

TEST_F(References, ToADeadObjectAreReportedWhereTheyAreUsed) {
    REALmemoryBlockStruct* const block = newBlock();
    service(UnlockObject)(block);
    EXPECT_EQ(service(MemoryBlockGetSize)(block), 0);
    EXPECT_EQ(service(MemoryBlockGetPtr)(block), nullptr);
    EXPECT_THAT(host.takeReports(),
                ElementsAre("memoryBlockGetSize: argument 1: MemoryBlock already released",
                            "memoryBlockGetPtr: argument 1: MemoryBlock already released"));
}

TEST_F(References, ToAnObjectOfAnotherClassAreReported) {
    const host::ObjectRef block = host::ObjectRef::adopt(newBlock());
    auto* const item = mistaken<REALfolderItemStruct>(block.get());
    EXPECT_EQ(service(FSSpecFromFolderItem)(item, nullptr), 0);
    EXPECT_THAT(host.takeReports(),
                ElementsAre("REALFSSpecFromFolderItem: argument 1: MemoryBlock where FolderItem "
                            "is expected",
                            testing::_)); // the block itself is still alive
}

TEST_F(References, ToAStringAreNotTakenForObjects) {
    REALstringStruct* const string = newString();
    service(LockObject)(mistaken<REALobjectStruct>(string));
    service(UnlockString)(string);
    EXPECT_THAT(host.takeReports(), ElementsAre("REALLockObject: argument 1: String where an "
                                                "object is expected"));
}

TEST_F(References, ToAnObjectAreNotTakenForStrings) {
    REALobjectStruct* const block = newBlock();
    service(LockString)(mistaken<REALstringStruct>(block));
    service(UnlockObject)(block);
    EXPECT_THAT(host.takeReports(), ElementsAre("REALLockString: argument 1: MemoryBlock where a "
                                                "String is expected"));
}

TEST_F(References, ToWhatTheHostNeverMadeAreReported) {
    REALobjectStruct stranger{};
    service(LockObject)(&stranger);
    EXPECT_THAT(host.takeReports(),
                ElementsAre("REALLockObject: argument 1: neither an object nor a string of this "
                            "host where an object is expected"));
}

TEST_F(References, ThatDoNotComeBackAreReportedWithTheirMaker) {
    REALobjectStruct* const block = newBlock();
    REALstringStruct* const string = newString();
    service(LockString)(string);
    EXPECT_THAT(host.takeReports(),
                ElementsAre("MemoryBlock, made by newMemoryBlock, still has 1 reference",
                            "String \"abc\", made by REALBuildString, still has 2 references"));
    service(UnlockObject)(block);
    service(UnlockString)(string);
    service(UnlockString)(string);
}

TEST_F(References, OfAnOverReleasedObjectLeaveTheHostUnharmed) {
    host::ObjectRef block = host.memoryBlock("data");
    service(UnlockObject)(block.get());
    EXPECT_EQ(host::classOf(block.get()), nullptr);
    block = nullptr;
    EXPECT_THAT(host.takeReports(), ElementsAre("an object was released more often than it was "
                                                "locked: MemoryBlock already released"));
}

TEST_F(References, AreNotCountedOnOtherThreads) {
    const host::ObjectRef block = host.memoryBlock("data");
    auto* const lock = service(LockObject);
    std::thread([&] { lock(block.get()); }).join();
    EXPECT_EQ(host.references(block), 1);
    EXPECT_EQ(host.takeReports().front(), "REALLockObject was called on another thread");
}

TEST_F(References, OfManyStringsAreAllRemembered) {
    for (int i = 0; i < 100000; ++i)
        service(UnlockString)(newString());
    EXPECT_EQ(host.runtime().registry().liveStrings(), 0u);
}

} // namespace
