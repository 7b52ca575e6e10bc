#include "cocoa/Carbon/icons.h"
#include "cocoa/Carbon/path_table.h"
#include "support.h"

#include <sys/stat.h>

namespace {

using cocoa::iconFileBytes;
using cocoa::PathTable;

constexpr OSType creator = 0x74657374;
constexpr OSType type = 0x69636F31;

class Icons : public InPool {
protected:
    TemporaryFolder folder;

    FSRef file(std::string_view content) {
        const std::string path = folder.file("icon.icns", content);
        FSRef ref{};
        FSPathMakeRef(reinterpret_cast<const UInt8*>(path.c_str()), &ref, nullptr);
        return ref;
    }

    /// An icon file of 12 bytes, and one more that does not belong to it.
    FSRef goodFile() {
        return file({"icns\0\0\0\x0C"
                     "body"
                     "!",
                     13});
    }

    static std::size_t owners(IconRef icon) {
        UInt16 count = 0;
        GetIconRefOwners(icon, &count);
        return count;
    }
};

TEST_F(Icons, AreRegisteredFromAFile) {
    const FSRef ref = goodFile();
    IconRef icon = nullptr;
    ASSERT_EQ(RegisterIconRefFromFSRef(creator, type, &ref, &icon), noErr);
    EXPECT_TRUE(IsValidIconRef(icon));
    EXPECT_EQ(owners(icon), 2U);
    const auto bytes = iconFileBytes(icon);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(std::string(bytes->begin(), bytes->end()), std::string("icns\0\0\0\x0C"
                                                                     "body",
                                                                     12));
}

TEST_F(Icons, AreCounted) {
    const FSRef ref = goodFile();
    IconRef icon = nullptr;
    ASSERT_EQ(RegisterIconRefFromFSRef(creator, type, &ref, &icon), noErr);
    IconRef again = nullptr;
    ASSERT_EQ(GetIconRef(kOnSystemDisk, creator, type, &again), noErr);
    EXPECT_EQ(again, icon);
    EXPECT_EQ(owners(icon), 3U);
    EXPECT_EQ(AcquireIconRef(icon), noErr);
    EXPECT_EQ(owners(icon), 4U);
    for (int release = 0; release < 3; ++release)
        EXPECT_EQ(ReleaseIconRef(icon), noErr);
    EXPECT_TRUE(IsValidIconRef(icon));
    EXPECT_EQ(UnregisterIconRef(creator, type), noErr);
    EXPECT_FALSE(IsValidIconRef(icon));
    EXPECT_EQ(UnregisterIconRef(creator, type), noSuchIconErr);
    EXPECT_EQ(GetIconRef(kOnSystemDisk, creator, type, &again), noSuchIconErr);
}

TEST_F(Icons, StayValidWhileHeldAfterTheirRegistration) {
    const FSRef ref = goodFile();
    IconRef first = nullptr;
    IconRef second = nullptr;
    ASSERT_EQ(RegisterIconRefFromFSRef(creator, type, &ref, &first), noErr);
    ASSERT_EQ(RegisterIconRefFromFSRef(creator, type, &ref, &second), noErr);
    EXPECT_NE(first, second);
    EXPECT_EQ(owners(first), 1U);
    const auto bytes = iconFileBytes(first);
    EXPECT_EQ(ReleaseIconRef(first), noErr);
    EXPECT_FALSE(IsValidIconRef(first));
    EXPECT_EQ(bytes->size(), 12U);
}

TEST_F(Icons, AreNotEveryNumber) {
    const std::uintptr_t hostile[] = {0, 1, 0x1234, ~std::uintptr_t{0},
                                      reinterpret_cast<std::uintptr_t>(this)};
    for (const std::uintptr_t number : hostile) {
        const auto icon = reinterpret_cast<IconRef>(number);
        EXPECT_FALSE(IsValidIconRef(icon));
        EXPECT_EQ(AcquireIconRef(icon), invalidIconRefErr);
        EXPECT_EQ(ReleaseIconRef(icon), invalidIconRefErr);
        EXPECT_FALSE(iconFileBytes(icon));
        UInt16 count = 9;
        EXPECT_EQ(GetIconRefOwners(icon, &count), invalidIconRefErr);
        EXPECT_EQ(count, 0);
    }
}

TEST_F(Icons, AreNotMadeOfOtherFiles) {
    IconRef icon = nullptr;
    for (const std::string_view content :
         {std::string_view(""), std::string_view("icns"), std::string_view("jcns\0\0\0\x08", 8),
          std::string_view("icns\0\0\0\x07", 8),
          std::string_view("icns\0\0\0\x0D"
                           "body",
                           12),
          std::string_view("icns\xFF\xFF\xFF\xFF", 8)}) {
        const FSRef ref = file(content);
        EXPECT_EQ(RegisterIconRefFromFSRef(creator, type, &ref, &icon), noSuchIconErr);
    }
    const FSRef zeros{};
    EXPECT_EQ(RegisterIconRefFromFSRef(creator, type, &zeros, &icon), errFSBadFSRef);
    EXPECT_EQ(RegisterIconRefFromFSRef(creator, type, nullptr, &icon), paramErr);
    EXPECT_EQ(icon, nullptr);
}

TEST_F(Icons, DoNotWaitForAPipe) {
    const std::string pipe = folder.path() + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    FSRef ref;
    ASSERT_EQ(FSPathMakeRef(reinterpret_cast<const UInt8*>(pipe.c_str()), &ref, nullptr), noErr);
    IconRef icon = nullptr;
    EXPECT_EQ(RegisterIconRefFromFSRef(creator, type, &ref, &icon), noSuchIconErr);
}

TEST(PathTable, GivesEachPathOneNumber) {
    PathTable table(4);
    const std::uint32_t first = table.numberOf("/a");
    const std::uint32_t second = table.numberOf("/b");
    EXPECT_NE(first, second);
    EXPECT_GE(first, PathTable::firstNumber);
    EXPECT_EQ(table.numberOf("/a"), first);
    EXPECT_EQ(table.pathOf(first), "/a");
    EXPECT_EQ(table.pathOf(second), "/b");
    EXPECT_EQ(table.pathOf(99), std::nullopt);
}

TEST(PathTable, ForgetsThePathUsedLeastRecently) {
    PathTable table(2);
    const std::uint32_t first = table.numberOf("/a");
    const std::uint32_t second = table.numberOf("/b");
    EXPECT_EQ(table.pathOf(first), "/a");
    const std::uint32_t third = table.numberOf("/c");
    EXPECT_EQ(table.pathOf(first), "/a");
    EXPECT_EQ(table.pathOf(second), std::nullopt);
    EXPECT_EQ(table.pathOf(third), "/c");
    EXPECT_NE(table.numberOf("/b"), second);
}

} // namespace
