#include "support.h"

#include <Carbon/Files.h>

#include <array>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class FileReferences : public InPool {
protected:
    TemporaryFolder folder;
};

const UInt8* bytes(const std::string& path) { return reinterpret_cast<const UInt8*>(path.c_str()); }

FSRef reference(const std::string& path) {
    FSRef ref{};
    EXPECT_EQ(FSPathMakeRef(bytes(path), &ref, nullptr), noErr) << path;
    return ref;
}

/// The path, or the error's number.
std::string path(const FSRef& ref) {
    std::array<UInt8, 8192> buffer{};
    const OSStatus error = FSRefMakePath(&ref, buffer.data(), buffer.size());
    return error ? std::to_string(error) : reinterpret_cast<const char*>(buffer.data());
}

std::u16string name(const FSRef& ref) {
    HFSUniStr255 name;
    EXPECT_EQ(FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, &name, nullptr, nullptr), noErr);
    return {name.unicode, name.unicode + name.length};
}

FSSpec spec(const FSRef& ref) {
    FSSpec spec{};
    EXPECT_EQ(FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr), noErr);
    return spec;
}

std::string specName(const FSSpec& spec) {
    return {reinterpret_cast<const char*>(spec.name) + 1, spec.name[0]};
}

FSCatalogInfo info(const FSRef& ref, FSCatalogInfoBitmap which = kFSCatInfoGettableInfo) {
    FSCatalogInfo info{};
    EXPECT_EQ(FSGetCatalogInfo(&ref, which, &info, nullptr, nullptr, nullptr), noErr);
    return info;
}

OSErr child(const FSRef& parent, std::u16string_view name, FSRef& ref) {
    return FSMakeFSRefUnicode(&parent, name.size(), reinterpret_cast<const UniChar*>(name.data()),
                              0, &ref);
}

TEST_F(FileReferences, ComeFromPathsAndGiveThemBack) {
    const std::string file = folder.file("a.png");
    Boolean isDirectory = true;
    FSRef ref;
    ASSERT_EQ(FSPathMakeRef(bytes(file), &ref, &isDirectory), noErr);
    EXPECT_FALSE(isDirectory);
    EXPECT_EQ(path(ref), file);
    ASSERT_EQ(FSPathMakeRef(bytes(folder.path() + "/"), &ref, &isDirectory), noErr);
    EXPECT_TRUE(isDirectory);
    EXPECT_EQ(path(ref), folder.path());
    EXPECT_EQ(path(reference("/")), "/");
}

TEST_F(FileReferences, ArePlainBytes) {
    const FSRef ref = reference(folder.file("a.png"));
    FSRef copy;
    std::memcpy(&copy, &ref, sizeof copy);
    EXPECT_EQ(path(copy), path(ref));
    EXPECT_EQ(sizeof(FSRef), 80U);
}

TEST_F(FileReferences, ReachPathsLongerThanThemselves) {
    std::string deep = folder.path();
    for (int level = 0; level < 12; ++level) {
        deep += "/" + std::string(200, static_cast<char>('a' + level));
        std::filesystem::create_directory(deep);
    }
    const FSRef first = reference(deep);
    const FSRef second = reference(std::filesystem::path(deep).parent_path());
    EXPECT_EQ(path(first), deep);
    EXPECT_EQ(path(second), std::filesystem::path(deep).parent_path());
    const FSRef again = reference(deep);
    EXPECT_EQ(std::memcmp(&again, &first, sizeof first), 0);
}

TEST_F(FileReferences, TellMissingItems) {
    FSRef ref;
    EXPECT_EQ(FSPathMakeRef(bytes(folder.path() + "/missing"), &ref, nullptr), fnfErr);
    EXPECT_EQ(FSPathMakeRef(bytes(folder.file("plain") + "/inside"), &ref, nullptr), fnfErr);
    EXPECT_EQ(FSPathMakeRef(bytes("/" + std::string(300, 'x')), &ref, nullptr), pathTooLongErr);
    EXPECT_EQ(FSPathMakeRef(bytes("/" + std::string(100000, 'x')), &ref, nullptr), pathTooLongErr);
    EXPECT_EQ(FSPathMakeRef(bytes(""), &ref, nullptr), paramErr);
    EXPECT_EQ(FSPathMakeRef(nullptr, &ref, nullptr), paramErr);
    EXPECT_EQ(FSPathMakeRef(bytes("/"), nullptr, nullptr), paramErr);
    const std::string file = folder.file("gone");
    ref = reference(file);
    std::filesystem::remove(file);
    EXPECT_EQ(path(ref), std::to_string(fnfErr));
    EXPECT_EQ(FSGetCatalogInfo(&ref, 0, nullptr, nullptr, nullptr, nullptr), fnfErr);
}

TEST_F(FileReferences, RefuseBytesThatAreNoReference) {
    FSRef forged;
    UInt8 buffer[16];
    for (int fill = 0; fill < 256; ++fill) {
        std::memset(&forged, fill, sizeof forged);
        EXPECT_EQ(FSRefMakePath(&forged, buffer, sizeof buffer), errFSBadFSRef);
    }
    forged = reference(folder.path());
    for (std::size_t at = 0; at < sizeof forged; ++at) {
        FSRef damaged = forged;
        damaged.hidden[at] ^= 0x55;
        EXPECT_EQ(FSRefMakePath(&damaged, buffer, sizeof buffer), errFSBadFSRef) << at;
    }
    EXPECT_EQ(FSRefMakePath(nullptr, buffer, sizeof buffer), errFSBadFSRef);
    EXPECT_EQ(FSGetCatalogInfo(nullptr, 0, nullptr, nullptr, nullptr, nullptr), errFSBadFSRef);
}

TEST_F(FileReferences, DoNotWriteBeyondTheBuffer) {
    const FSRef ref = reference(folder.path());
    std::string buffer(folder.path().size() + 2, '#');
    auto* const out = reinterpret_cast<UInt8*>(buffer.data());
    EXPECT_EQ(FSRefMakePath(&ref, out, folder.path().size()), pathTooLongErr);
    EXPECT_EQ(buffer, std::string(buffer.size(), '#'));
    EXPECT_EQ(FSRefMakePath(&ref, out, folder.path().size() + 1), noErr);
    EXPECT_EQ(buffer, folder.path() + '\0' + '#');
    EXPECT_EQ(FSRefMakePath(&ref, out, 0), pathTooLongErr);
    EXPECT_EQ(FSRefMakePath(&ref, nullptr, 10), paramErr);
}

TEST_F(FileReferences, FollowLinksUnlessToldNotTo) {
    const std::string file = folder.file("target");
    const std::string inner = folder.folder("inner");
    std::filesystem::create_symlink(file, inner + "/link");
    std::filesystem::create_symlink(inner, folder.path() + "/way");
    EXPECT_EQ(path(reference(folder.path() + "/way/link")), file);
    FSRef ref;
    ASSERT_EQ(FSPathMakeRefWithOptions(bytes(folder.path() + "/way/link"),
                                       kFSPathMakeRefDoNotFollowLeafSymlink, &ref, nullptr),
              noErr);
    EXPECT_EQ(path(ref), inner + "/link");
    EXPECT_EQ(path(reference(inner + "/..")), folder.path());
    EXPECT_EQ(path(reference(inner + "/.")), inner);
}

TEST_F(FileReferences, NameTheRootFolderNodeTwo) {
    EXPECT_EQ(info(reference("/")).nodeID, 2U);
    EXPECT_EQ(info(reference("/")).parentDirID, 1U);
    EXPECT_NE(info(reference(folder.path())).nodeID, 2U);
    FSRef parent;
    std::memset(&parent, 7, sizeof parent);
    const FSRef root = reference("/");
    ASSERT_EQ(FSGetCatalogInfo(&root, 0, nullptr, nullptr, nullptr, &parent), noErr);
    const FSRef zeros{};
    EXPECT_EQ(std::memcmp(&parent, &zeros, sizeof zeros), 0);
    EXPECT_EQ(name(root), u"/");
}

TEST_F(FileReferences, TellParentAndName) {
    const FSRef ref = reference(folder.file("a.png"));
    FSRef parent;
    ASSERT_EQ(FSGetCatalogInfo(&ref, 0, nullptr, nullptr, nullptr, &parent), noErr);
    EXPECT_EQ(path(parent), folder.path());
    EXPECT_EQ(name(ref), u"a.png");
    EXPECT_EQ(info(ref).parentDirID, info(parent).nodeID);
    FSRef top;
    const FSRef tmp = reference(std::filesystem::path(folder.path()).root_path().string() + "etc");
    ASSERT_EQ(FSGetCatalogInfo(&tmp, 0, nullptr, nullptr, nullptr, &top), noErr);
    EXPECT_EQ(path(top), "/");
}

TEST_F(FileReferences, GiveNamesDecomposed) {
    EXPECT_EQ(name(reference(folder.file("\xC3\xA9.png"))), u"e\u0301.png");
    EXPECT_EQ(name(reference(folder.file("e\xCC\x81 2.png"))), u"e\u0301 2.png");
    EXPECT_EQ(name(reference(folder.file("a:b"))), u"a/b");
    EXPECT_EQ(name(reference(folder.file("bad\xFFname"))), u"bad%FFname");
}

TEST_F(FileReferences, RefuseNamesThatDoNotFit) {
    // Each of these characters has three parts and takes three bytes in UTF-8.
    std::string longName;
    for (int count = 0; count < 85; ++count)
        longName += "\xE1\xBE\x82";
    const FSRef ref = reference(folder.file(longName));
    HFSUniStr255 name;
    EXPECT_EQ(FSGetCatalogInfo(&ref, 0, nullptr, &name, nullptr, nullptr), errFSNameTooLong);
}

TEST_F(FileReferences, AreFoundByFolderAndName) {
    const FSRef parent = reference(folder.path());
    const std::string composed = folder.file("\xC3\xA9.png");
    const std::string decomposed = folder.file("u\xCC\x88.png");
    const std::string colon = folder.file("a:b");
    const std::string invalid = folder.file("bad\xFFname");
    FSRef ref;
    EXPECT_EQ(child(parent, u"e\u0301.png", ref), noErr);
    EXPECT_EQ(path(ref), composed);
    EXPECT_EQ(child(parent, u"\u00E9.png", ref), noErr);
    EXPECT_EQ(path(ref), composed);
    EXPECT_EQ(child(parent, u"\u00FC.png", ref), noErr);
    EXPECT_EQ(path(ref), decomposed);
    EXPECT_EQ(child(parent, u"a/b", ref), noErr);
    EXPECT_EQ(path(ref), colon);
    EXPECT_EQ(child(parent, u"bad%FFname", ref), noErr);
    EXPECT_EQ(path(ref), invalid);
}

TEST_F(FileReferences, AreNotFoundByANameThatIsNoItems) {
    const FSRef parent = reference(folder.path());
    const FSRef file = reference(folder.file("plain"));
    FSRef ref;
    EXPECT_EQ(child(parent, u"missing", ref), fnfErr);
    EXPECT_EQ(child(parent, u".", ref), fnfErr);
    EXPECT_EQ(child(parent, u"..", ref), fnfErr);
    EXPECT_EQ(child(parent, u"..:etc", ref), fnfErr);
    EXPECT_EQ(child(parent, std::u16string(1, u'\0'), ref), fnfErr);
    EXPECT_EQ(child(parent, std::u16string(1, char16_t{0xD800}), ref), fnfErr);
    EXPECT_EQ(child(parent, u"", ref), bdNamErr);
    EXPECT_EQ(child(parent, std::u16string(256, u'x'), ref), errFSNameTooLong);
    EXPECT_EQ(child(parent, std::u16string(255, u'\u20AC'), ref), fnfErr);
    EXPECT_EQ(child(file, u"x", ref), dirNFErr);
    EXPECT_EQ(child(FSRef{}, u"x", ref), errFSBadFSRef);
    EXPECT_EQ(FSMakeFSRefUnicode(&parent, 1, nullptr, 0, &ref), paramErr);
}

TEST_F(FileReferences, AreCompared) {
    const FSRef first = reference(folder.file("a"));
    const FSRef second = reference(folder.file("b"));
    EXPECT_EQ(FSCompareFSRefs(&first, &first), noErr);
    EXPECT_EQ(FSCompareFSRefs(&first, &second), errFSRefsDifferent);
    std::filesystem::create_hard_link(folder.path() + "/a", folder.path() + "/c");
    const FSRef same = reference(folder.path() + "/c");
    EXPECT_EQ(FSCompareFSRefs(&first, &same), noErr);
}

TEST_F(FileReferences, TellCatalogInformation) {
    const std::string file = folder.file("a.png", "12345");
    std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now());
    struct stat status;
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    const FSCatalogInfo told = info(reference(file));
    EXPECT_EQ(told.nodeFlags & kFSNodeIsDirectoryMask, 0);
    EXPECT_EQ(told.dataLogicalSize, 5U);
    EXPECT_EQ(told.rsrcLogicalSize, 0U);
    EXPECT_EQ(told.permissions.userID, status.st_uid);
    EXPECT_EQ(told.permissions.mode, status.st_mode);
    const auto modified =
        (std::uint64_t{told.contentModDate.highSeconds} << 32) | told.contentModDate.lowSeconds;
    // 66 years, 17 of them leap years, lie between 1904 and 1970.
    EXPECT_EQ(modified, static_cast<std::uint64_t>(status.st_mtime) + (66 * 365 + 17) * 86400ULL);

    folder.file("b.png");
    const FSCatalogInfo inner = info(reference(folder.path()));
    EXPECT_EQ(inner.nodeFlags & kFSNodeIsDirectoryMask, kFSNodeIsDirectoryMask);
    EXPECT_EQ(inner.valence, 2U);
}

TEST_F(FileReferences, TellOnlyWhatIsAskedFor) {
    const FSRef ref = reference(folder.file("a.png", "12345"));
    const FSCatalogInfo told = info(ref, kFSCatInfoDataSizes);
    EXPECT_EQ(told.dataLogicalSize, 5U);
    EXPECT_EQ(told.nodeID, 0U);
    EXPECT_EQ(told.permissions.mode, 0U);
}

TEST_F(FileReferences, AreFoundByFSSpec) {
    for (const char* const leaf :
         {"a.png", "\xC3\xA9.png", "e\xCC\x81 2.png", "a:b", "\xF0\x9F\x8E\xA8.png",
          "a name that is longer than thirty-one.png", "bad\xFFname",
          "another name of more than thirty-one.png", "no-extension-but-more-than-31-characters",
          ".a hidden file with quite a long name"}) {
        const std::string file = folder.file(leaf);
        const FSSpec made = spec(reference(file));
        EXPECT_LE(made.name[0], 31);
        FSRef back;
        ASSERT_EQ(FSpMakeFSRef(&made, &back), noErr) << leaf;
        EXPECT_EQ(path(back), file);
    }
}

TEST_F(FileReferences, HaveReadableFSSpecs) {
    EXPECT_EQ(specName(spec(reference(folder.file("e\xCC\x81.png")))), "\x8E.png");
    const std::string shortened =
        specName(spec(reference(folder.file("a name that is longer than thirty-one.png"))));
    EXPECT_TRUE(shortened.starts_with("a name that")) << shortened;
    EXPECT_TRUE(shortened.ends_with(".png")) << shortened;
    EXPECT_NE(shortened.find('#'), std::string::npos);
}

TEST_F(FileReferences, OfTheRootFolderHaveAnFSSpec) {
    const FSSpec root = spec(reference("/"));
    EXPECT_EQ(SInt32{root.parID}, fsRtParID);
    FSRef back;
    ASSERT_EQ(FSpMakeFSRef(&root, &back), noErr);
    EXPECT_EQ(path(back), "/");
}

TEST_F(FileReferences, AreNotMadeOfAWrongFSSpec) {
    const FSSpec good = spec(reference(folder.file("a.png")));
    FSRef ref;
    FSSpec bad = good;
    bad.name[0] = 255;
    EXPECT_EQ(FSpMakeFSRef(&bad, &ref), bdNamErr);
    bad = good;
    bad.parID = 0x7FFFFFFF;
    EXPECT_EQ(FSpMakeFSRef(&bad, &ref), dirNFErr);
    bad = good;
    bad.vRefNum = 12;
    EXPECT_EQ(FSpMakeFSRef(&bad, &ref), fnfErr);
    bad = good;
    bad.name[1] = 'z';
    EXPECT_EQ(FSpMakeFSRef(&bad, &ref), fnfErr);
    bad = good;
    std::memcpy(bad.name, "\4#ZZZ", 5);
    EXPECT_EQ(FSpMakeFSRef(&bad, &ref), fnfErr);
    EXPECT_EQ(FSpMakeFSRef(nullptr, &ref), paramErr);
    EXPECT_EQ(FSpMakeFSRef(&good, nullptr), paramErr);
    bad = good;
    bad.name[0] = 0;
    ASSERT_EQ(FSpMakeFSRef(&bad, &ref), noErr);
    EXPECT_EQ(path(ref), folder.path());
}

} // namespace
