#include "support.h"

#include <Carbon/Carbon.h>

#include <algorithm>

namespace {

/// Files on their way between references, names and URLs, as programs take them that keep a parent
/// and a name for what does not exist yet.
class NewItems : public InPool {
protected:
    static URL fileURL(const std::string& path, bool isFolder = false) {
        return URL::adopt(CFURLCreateFromFileSystemRepresentation(
            nullptr, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()),
            isFolder));
    }
    static FSRef reference(const URL& url) {
        FSRef ref{};
        EXPECT_TRUE(CFURLGetFSRef(url.get(), &ref));
        return ref;
    }
    static URL parentOf(const URL& url) {
        return URL::adopt(CFURLCreateCopyDeletingLastPathComponent(nullptr, url.get()));
    }
    static String leafOf(const URL& url) {
        return String::adopt(CFURLCopyLastPathComponent(url.get()));
    }
    static String decomposed(std::u16string_view name) {
        const MutableString copy =
            MutableString::adopt(CFStringCreateMutableCopy(nullptr, 0, string16(name).get()));
        CFStringNormalize(copy.get(), kCFStringNormalizationFormD);
        return String::retain(copy.get());
    }
    URL newItem(std::u16string_view name) const {
        const FSRef parent = reference(fileURL(folder.path(), true));
        const URL parentURL = URL::adopt(CFURLCreateFromFSRef(nullptr, &parent));
        return URL::adopt(CFURLCreateCopyAppendingPathComponent(nullptr, parentURL.get(),
                                                                decomposed(name).get(), false));
    }

    TemporaryFolder folder;
};

TEST_F(NewItems, KeepTheirDecomposedName) {
    const URL url = newItem(u"Caf\u00E9 \u2603.png");
    EXPECT_EQ(units(leafOf(url).get()), u"Cafe\u0301 \u2603.png");
    FSRef ref{};
    EXPECT_FALSE(CFURLGetFSRef(url.get(), &ref));
}

TEST_F(NewItems, AreFoundFromTheirParentAndName) {
    const URL url = newItem(u"Caf\u00E9");
    const FSRef parent = reference(parentOf(url));
    const FSRef expected = reference(fileURL(folder.path(), true));
    EXPECT_EQ(FSCompareFSRefs(&parent, &expected), noErr);

    folder.file("Caf\u00E9"); // composed, as most programs name files here
    const std::u16string name = units(leafOf(url).get());
    FSRef found{};
    EXPECT_EQ(FSMakeFSRefUnicode(&parent, name.size(),
                                 reinterpret_cast<const UniChar*>(name.data()), 0, &found),
              noErr);
}

TEST_F(NewItems, CanHaveNamesLongerThanCarbonTakes) {
    const std::u16string name(300, u'n');
    const URL url = newItem(name);
    FSRef ref{};
    EXPECT_FALSE(CFURLGetFSRef(url.get(), &ref));
    EXPECT_EQ(CFStringGetLength(leafOf(url).get()), 300);
    const FSRef parent = reference(parentOf(url));
    EXPECT_EQ(
        FSMakeFSRefUnicode(&parent, 255, reinterpret_cast<const UniChar*>(name.data()), 0, &ref),
        fnfErr);
    EXPECT_EQ(
        FSMakeFSRefUnicode(&parent, 300, reinterpret_cast<const UniChar*>(name.data()), 0, &ref),
        errFSNameTooLong);
}

TEST_F(NewItems, OfMissingFoldersHaveNoParentReference) {
    const URL url = fileURL(folder.path() + "/missing/item");
    FSRef ref{};
    EXPECT_FALSE(CFURLGetFSRef(url.get(), &ref));
    EXPECT_FALSE(CFURLGetFSRef(parentOf(url).get(), &ref));
}

class LongestNames : public NewItems {};

TEST_F(LongestNames, FillTheNameRecord) {
    // 85 syllables are 255 bytes of UTF-8, the longest name of a file, and 255 letters decomposed.
    std::string name;
    for (int syllable = 0; syllable < 85; ++syllable)
        name += "\uD55C";
    const FSRef ref = reference(fileURL(folder.file(name)));
    HFSUniStr255 found{};
    ASSERT_EQ(FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, &found, nullptr, nullptr), noErr);
    EXPECT_EQ(found.length, 255);
    EXPECT_EQ(found.unicode[254], 0x11AB);
}

TEST_F(LongestNames, ThatDoNotFitHaveAnFSSpec) {
    // Each byte that is no UTF-8 takes three units.
    const FSRef ref = reference(fileURL(folder.file(std::string(100, '\xFF'))));
    HFSUniStr255 name{};
    FSSpec spec{};
    EXPECT_EQ(FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, &name, nullptr, nullptr),
              errFSNameTooLong);
    ASSERT_EQ(FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr), noErr);
    FSRef back{};
    ASSERT_EQ(FSpMakeFSRef(&spec, &back), noErr);
    EXPECT_EQ(FSCompareFSRefs(&ref, &back), noErr);
}

class RootFolder : public NewItems {};

TEST_F(RootFolder, ComesBackByItsFSSpecAlone) {
    const FSRef root = reference(fileURL("/", true));
    FSCatalogInfo information{};
    FSRef parent{};
    ASSERT_EQ(FSGetCatalogInfo(&root, kFSCatInfoNodeID, &information, nullptr, nullptr, &parent),
              noErr);
    EXPECT_EQ(information.nodeID, 2U);
    EXPECT_NE(FSGetCatalogInfo(&parent, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr), noErr)
        << "it has no parent";
    FSSpec spec{};
    ASSERT_EQ(FSGetCatalogInfo(&root, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr), noErr);
    FSRef back{};
    ASSERT_EQ(FSpMakeFSRef(&spec, &back), noErr);
    EXPECT_EQ(FSCompareFSRefs(&root, &back), noErr);
}

} // namespace
