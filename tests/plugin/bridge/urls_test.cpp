#include "plugin/probe/probe_host.h"

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

constexpr const char* composed = "gr\xC3\xBCn.png";
constexpr const char* decomposed = "gru\xCC\x88n.png";

/// A folder of this test's own, with one file.
class Folder {
public:
    Folder()
        : path(fs::canonical(fs::temp_directory_path()) / ("urls-" + std::to_string(getpid()))) {
        fs::create_directory(path);
        std::ofstream(path / "there.txt") << "content";
    }
    ~Folder() { fs::remove_all(path); }

    const fs::path path;
};

class URLsOn {
public:
    explicit URLsOn(std::vector<std::string> without = {})
        : host(with_probe({.without = std::move(without), .withoutBase = true})) {}

    std::string of_item(const fs::path& path) {
        return host.shared<std::string>("URLProbe", "OfItem", host.folderItem(path.string()));
    }
    /// The path of the folder item; empty for none.
    std::string item_of(const std::string& url) {
        const auto item = host.shared<host::ObjectRef>("URLProbe", "ItemOf", url);
        return item ? host.path(item) : "";
    }

    Host host;
};

std::string file_url(const std::string& path) { return "file://" + path; }

/// Without the host that a file URL may name.
std::string path_part(const std::string& url) {
    const std::string localhost = "file://localhost";
    return url.starts_with(localhost) ? url.substr(localhost.size())
                                      : url.substr(std::min(url.size(), file_url("").size()));
}

TEST(FolderItemToURL, GivesTheURLOfAnExistingItem) {
    Folder folder;
    URLsOn probe;
    EXPECT_EQ(path_part(probe.of_item(folder.path / "there.txt")),
              (folder.path / "there.txt").string());
}

TEST(FolderItemToURL, GivesNothingForNil) {
    URLsOn probe;
    EXPECT_EQ(probe.host.shared<std::string>("URLProbe", "OfItem", nullptr), "");
}

TEST(FolderItemToURL, NamesANewItemInFormD) {
    Folder folder;
    URLsOn probe;
    EXPECT_EQ(path_part(probe.of_item(folder.path / composed)),
              folder.path.string() + "/gru%CC%88n.png");
}

TEST(FolderItemToURL, GivesNothingForAnItemInNoFolder) {
    URLsOn probe;
    EXPECT_EQ(probe.of_item("/no/such/folder/file.txt"), "");
}

TEST(FolderItemToURL, FallsBackToTheOlderSpecification) {
    Folder folder;
    URLsOn probe({"REALFSRefFromFolderItem"});
    EXPECT_EQ(path_part(probe.of_item(folder.path / "there.txt")),
              (folder.path / "there.txt").string());
    EXPECT_EQ(probe.host.lookups("REALFSRefFromFolderItem"), 2);
}

TEST(FolderItemToURL, GivesNothingWithoutBothServices) {
    Folder folder;
    URLsOn probe({"REALFSRefFromFolderItem", "REALFSSpecFromFolderItem"});
    EXPECT_EQ(probe.of_item(folder.path / "there.txt"), "");
}

TEST(URLToFolderItem, GivesTheExistingItem) {
    Folder folder;
    URLsOn probe;
    EXPECT_EQ(probe.item_of(file_url((folder.path / "there.txt").string())),
              (folder.path / "there.txt").string());
}

TEST(URLToFolderItem, GivesTheRootFolder) {
    URLsOn probe;
    EXPECT_EQ(probe.item_of("file:///"), "/");
}

TEST(URLToFolderItem, GivesANewItemOfTheSameParentAndName) {
    Folder folder;
    URLsOn probe;
    const std::string path = probe.item_of(probe.of_item(folder.path / composed));
    EXPECT_EQ(fs::path(path).parent_path(), folder.path);
    const std::string name = fs::path(path).filename();
    EXPECT_TRUE(name == composed || name == decomposed) << name;
}

TEST(URLToFolderItem, CutsANewNameTo255Units) {
    Folder folder;
    URLsOn probe;
    const std::string path =
        probe.item_of(file_url((folder.path / std::string(300, 'n')).string()));
    EXPECT_EQ(fs::path(path).filename().string(), std::string(255, 'n'));
}

TEST(URLToFolderItem, GivesNothingForANewItemInNoFolderAndForOtherURLs) {
    URLsOn probe;
    EXPECT_EQ(probe.item_of("file:///no/such/folder/file.txt"), "");
    EXPECT_EQ(probe.item_of("http://localhost/there.txt"), "");
    EXPECT_EQ(probe.item_of("no url at all <>"), "");
    EXPECT_EQ(probe.item_of(""), "");
}

TEST(URLToFolderItem, GivesNothingWithoutTheService) {
    Folder folder;
    URLsOn probe({"REALFolderItemFromParentFSRef"});
    EXPECT_EQ(probe.item_of(file_url((folder.path / "there.txt").string())), "");
    EXPECT_EQ(probe.item_of(file_url((folder.path / "new.txt").string())), "");
    EXPECT_EQ(probe.host.lookups("REALFolderItemFromParentFSRef"), 2);
}

TEST(URLToFolderItem, GivesTheRootThroughTheOlderSpecification) {
    URLsOn probe({"FolderItemFromFSSpec"});
    EXPECT_EQ(probe.item_of("file:///"), "");
    EXPECT_EQ(probe.host.lookups("FolderItemFromFSSpec"), 1);
}

} // namespace
