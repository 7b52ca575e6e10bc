#include "host/called_services.h"
#include "support/host.h"
#include "support/temporary_folder.h"

#include <Carbon/Carbon.h>
#include <gmock/gmock.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

using namespace REALservices;
namespace fs = std::filesystem;

/// A folder of the test's own with the files a.txt ("abc") and B.txt (empty) and a folder named
/// sub.
class FolderItems : public testing::Test {
protected:
    FolderItems() {
        temporary.file("a.txt", "abc");
        temporary.file("B.txt", "");
        temporary.folder("sub");
    }

    host::ObjectRef item(const std::string& name) { return host.folderItem(folder / name); }
    host::ObjectRef parent(const host::ObjectRef& of) {
        return host.get<host::ObjectRef>(of, "Parent");
    }
    static REALfolderItemStruct* raw(const host::ObjectRef& item) {
        return static_cast<REALfolderItemStruct*>(item.get());
    }

    const TemporaryFolder temporary;
    const fs::path folder = temporary.path();
    Host host{{.bare = true}};
};

TEST_F(FolderItems, TellWhatIsThere) {
    const host::ObjectRef file = item("a.txt");
    EXPECT_EQ(host.get<std::string>(file, "Name"), "a.txt");
    EXPECT_EQ(host.get<std::string>(file, "NativePath"), (folder / "a.txt").string());
    EXPECT_TRUE(host.get<bool>(file, "Exists"));
    EXPECT_FALSE(host.get<bool>(file, "Directory"));
    EXPECT_EQ(host.get<int>(file, "Length"), 3);
    EXPECT_TRUE(host.get<bool>(item("sub"), "Directory"));
}

TEST_F(FolderItems, AreKnownToPluginsByTheirTrueItem) {
    using TrueItem = REALobjectStruct* (*)(REALobjectStruct*, REALword index);
    const char* const declaration = "TrueItem(Index as integer) as Folderitem";
    const host::ObjectRef top = host.folderItem(folder);
    const auto trueItem =
        reinterpret_cast<TrueItem>(service(LoadObjectMethod)(top.get(), declaration));
    ASSERT_NE(trueItem, nullptr);
    const auto first = host::ObjectRef::adopt(trueItem(top.get(), 1));
    EXPECT_EQ(host.path(parent(first)), folder.string());
    for (const char* const other : {"Date", "Dictionary", "RuntimeException"})
        EXPECT_EQ(service(LoadObjectMethod)(host.create(other).get(), declaration), nullptr);
}

TEST_F(FolderItems, TellWhatIsNotThere) {
    const host::ObjectRef missing = item("missing");
    EXPECT_FALSE(host.get<bool>(missing, "Exists"));
    EXPECT_EQ(host.get<int>(missing, "Length"), 0);
    EXPECT_EQ(host.get<int>(missing, "Count"), 0);
}

TEST_F(FolderItems, LeadToTheirChildrenByNameAndByIndexFromOne) {
    const host::ObjectRef top = host.folderItem(folder);
    EXPECT_EQ(host.get<int>(top, "Count"), 3);
    const auto name = [&](int index) {
        return host.get<std::string>(host.call<host::ObjectRef>(top, "Item", index), "Name");
    };
    EXPECT_EQ(name(1), "B.txt");
    EXPECT_EQ(name(3), "sub");
    EXPECT_EQ(host.path(host.call<host::ObjectRef>(top, "Child", "new.txt")), folder / "new.txt");
}

TEST_F(FolderItems, NoticeWhatComesAndGoesWhileTheyListAFolder) {
    const host::ObjectRef top = host.folderItem(folder);
    for (const auto age : {std::chrono::hours(0), std::chrono::hours(1)}) {
        fs::last_write_time(folder, fs::file_time_type::clock::now() - age);
        EXPECT_EQ(host.get<int>(top, "Count"), 3);
        std::ofstream(folder / "Added.txt");
        EXPECT_EQ(host.get<int>(top, "Count"), 4);
        EXPECT_EQ(host.path(host.call<host::ObjectRef>(top, "Item", 1)), folder / "Added.txt");
        fs::remove(folder / "Added.txt");
        EXPECT_EQ(host.path(host.call<host::ObjectRef>(top, "Item", 1)), folder / "B.txt");
    }
}

TEST_F(FolderItems, ListALargeFolderInATimeThatGrowsWithItsSize) {
    constexpr int count = 1500;
    for (int i = 0; i < count; ++i)
        std::ofstream(folder / "sub" / std::to_string(100000 + i));
    fs::last_write_time(folder / "sub", fs::file_time_type::clock::now() - std::chrono::hours(1));
    const host::ObjectRef large = item("sub");
    const auto timed = [&](int reads, const char* member) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 1; i <= reads; ++i)
            host.call(large, member, i);
        return std::chrono::steady_clock::now() - start;
    };
    const auto first = timed(1, "Item");
    EXPECT_LT(timed(count, "Item"), first * 300);
    EXPECT_EQ(host.path(host.call<host::ObjectRef>(large, "Item", count)),
              folder / "sub" / std::to_string(100000 + count - 1));
}

TEST_F(FolderItems, RaiseForIndexesWithoutAChild) {
    const host::ObjectRef top = host.folderItem(folder);
    host.call(top, "Item", 0);
    EXPECT_EQ(host.raised(), "OutOfBoundsException: Item 0 is not among the 3 of this folder.");
    host.call(top, "TrueItem", 4);
    EXPECT_EQ(host.raised(), "OutOfBoundsException: Item 4 is not among the 3 of this folder.");
}

TEST_F(FolderItems, RaiseForNamesThatAreNone) {
    const host::ObjectRef top = host.folderItem(folder);
    host.call(top, "Child", "../a.txt");
    EXPECT_EQ(host.raised(), "InvalidArgumentException: \"../a.txt\" is not the name of an item.");
    host.call(top, "Child", "");
    EXPECT_EQ(host.raised(), "InvalidArgumentException: \"\" is not the name of an item.");
}

TEST_F(FolderItems, LeadToTheirParents) {
    EXPECT_EQ(host.path(parent(item("a.txt"))), folder);
    EXPECT_EQ(host.path(parent(host.folderItem(folder.string() + "/"))), folder.parent_path());
    EXPECT_TRUE(host.get(host.folderItem("/"), "Parent").isNil());
}

TEST_F(FolderItems, AreFoundFromTheWorkingFolder) {
    EXPECT_EQ(host.path(host.folderItem("x.txt")), fs::current_path() / "x.txt");
    EXPECT_EQ(host.path(host.folderItem("")), fs::current_path());
}

TEST_F(FolderItems, ReadAndWriteWholeFiles) {
    EXPECT_EQ(host.bytes(host.call<host::ObjectRef>(item("a.txt"), "ReadAll")), "abc");
    host.call(item("new.bin"), "WriteAll", host.memoryBlock(std::string_view("x\0y", 3)));
    EXPECT_EQ(host.bytes(host.call<host::ObjectRef>(item("new.bin"), "ReadAll")),
              std::string("x\0y", 3));
    EXPECT_EQ(host.bytes(host.call<host::ObjectRef>(item("B.txt"), "ReadAll")), "");
}

TEST_F(FolderItems, RaiseWhatTheSystemSays) {
    host.call(item("missing"), "ReadAll");
    host::ObjectRef exception = host.takeRaised();
    ASSERT_TRUE(exception);
    EXPECT_EQ(host.get<int>(exception, "ErrorNumber"), ENOENT);
    host.call(item("missing/deep"), "WriteAll", host.memoryBlock("x"));
    EXPECT_EQ(host.raised(), "IOException: Cannot write " + (folder / "missing/deep").string() +
                                 ": No such file or directory.");
    host.call(item("sub"), "CreateAsFolder");
    host.call(item("missing"), "Delete");
    EXPECT_NE(host.raised(), "");
    host.call(item("a.txt"), "WriteAll", nullptr);
    EXPECT_EQ(host.raised(), "NilObjectException: There is nothing to write.");
}

TEST_F(FolderItems, CreateAndDelete) {
    host.call(item("made"), "CreateAsFolder");
    EXPECT_TRUE(fs::is_directory(folder / "made"));
    host.call(item("made"), "Delete");
    EXPECT_FALSE(fs::exists(folder / "made"));
}

TEST_F(FolderItems, BecomeFileReferencesWhenTheyExist) {
    FSRef ref{};
    const host::ObjectRef file = item("a.txt");
    ASSERT_EQ(service(FSRefFromFolderItem)(raw(file), &ref, nullptr), 1);
    char path[1024];
    ASSERT_EQ(FSRefMakePath(&ref, reinterpret_cast<UInt8*>(path), sizeof path), noErr);
    EXPECT_EQ(fs::path(path), fs::canonical(folder / "a.txt"));
    EXPECT_EQ(service(FSRefFromFolderItem)(raw(item("missing")), &ref, nullptr), 0);
}

TEST_F(FolderItems, BecomeAParentAndANameWhenTheyDoNotExist) {
    FSRef ref{};
    HFSUniStr255 name{};
    ASSERT_EQ(service(FSRefFromFolderItem)(raw(item("né w.txt")), &ref, &name), 1);
    ASSERT_EQ(name.length, 8);
    EXPECT_EQ(std::memcmp(name.unicode, u"né w.txt", 16), 0);
    const host::ObjectRef back =
        host::ObjectRef::adopt(service(FolderItemFromParentFSRef)(&ref, &name));
    ASSERT_TRUE(back);
    EXPECT_EQ(host.path(back), fs::canonical(folder) / "né w.txt");
}

TEST_F(FolderItems, InAFolderThatDoesNotExistHaveNoReference) {
    FSRef ref{};
    HFSUniStr255 name{};
    EXPECT_EQ(service(FSRefFromFolderItem)(raw(item("missing/deep")), &ref, &name), 0);
}

TEST_F(FolderItems, ThatExistAreFoundInAnyNormalisationForm) {
    std::ofstream(folder / "caf\u00e9") << "composed";
    FSRef ref{};
    HFSUniStr255 name{};
    ASSERT_EQ(service(FSRefFromFolderItem)(raw(item("x")), &ref, &name), 1);
    name.length = 5;
    std::memcpy(name.unicode, u"cafe\u0301", 10);
    const host::ObjectRef found =
        host::ObjectRef::adopt(service(FolderItemFromParentFSRef)(&ref, &name));
    ASSERT_TRUE(found);
    EXPECT_TRUE(host.get<bool>(found, "Exists"));
}

TEST_F(FolderItems, AreNotMadeOfNamelessOrParentlessReferences) {
    FSRef ref{};
    HFSUniStr255 name{};
    ASSERT_EQ(service(FSRefFromFolderItem)(raw(item("x")), &ref, &name), 1);
    name.length = 0;
    EXPECT_EQ(service(FolderItemFromParentFSRef)(&ref, &name), nullptr);
    const FSRef nowhere{};
    name.length = 1;
    EXPECT_EQ(service(FolderItemFromParentFSRef)(&nowhere, &name), nullptr);
}

TEST_F(FolderItems, GoThroughFSSpecAndBack) {
    FSSpec spec{};
    ASSERT_EQ(service(FSSpecFromFolderItem)(raw(item("a.txt")), &spec), 1);
    const host::ObjectRef back = host::ObjectRef::adopt(service(FolderItemFromFSSpec)(&spec));
    ASSERT_TRUE(back);
    EXPECT_EQ(host.path(back), fs::canonical(folder) / "a.txt");
    EXPECT_EQ(service(FSSpecFromFolderItem)(raw(item("missing")), &spec), 0);
}

} // namespace
