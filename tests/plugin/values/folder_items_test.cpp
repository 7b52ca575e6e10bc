#include "support/temporary_folder.h"
#include "tests/plugin/values/round_trips.h"

#include <filesystem>

namespace {

/// Programs find the path of a folder of the test's own in Arguments(0).
class FolderItems : public RoundTrips {
protected:
    Lines printedIn(std::string_view program) { return printed(program, {folder.path()}); }
    std::string in(std::string_view name) const { return folder.path(name); }

    TemporaryFolder folder;
};

TEST_F(FolderItems, ThatExistComeBack) {
    folder.file("a.txt");
    folder.folder("sub");
    EXPECT_THAT(printedIn(R"(
        Dim folder As FolderItem = GetFolderItem(Arguments(0))
        Between folder, "NSURL"
        For Each item As FolderItem In Array(folder, folder.Child("a.txt"), folder.Child("sub"))
          Dim result As FolderItem = Back(item)
          Print result.NativePath
          Print result.Exists And Not (result Is item)
        Next
    )"),
                ElementsAre("True", folder.path(), "True", in("a.txt"), "True", in("sub"), "True"));
}

TEST_F(FolderItems, ThatDoNotExistYetComeBack) {
    EXPECT_THAT(printedIn(R"(
        Dim result As FolderItem = Back(GetFolderItem(Arguments(0)).Child("new file #1 50%.txt"))
        Print result.NativePath
        Print result.Exists
        Print URLProbe.OfItem(result)
    )"),
                ElementsAre(in("new file #1 50%.txt"), "False",
                            "file://" + folder.path() + "/new%20file%20%231%2050%25.txt"));
}

TEST_F(FolderItems, InFoldersThatDoNotExistAreNothing) {
    EXPECT_THAT(printedIn(R"(
        Print Back(GetFolderItem(Arguments(0)).Child("none").Child("file")) Is Nil
    )"),
                ElementsAre("True"));
}

TEST_F(FolderItems, ThatAreRootsOfVolumesComeBack) {
    ASSERT_TRUE(std::filesystem::exists("/proc/self"));
    EXPECT_THAT(printed(R"(
        For Each path As String In Array("/", "/proc")
          Dim result As FolderItem = Back(GetFolderItem(path))
          Print result.NativePath
        Next
    )"),
                ElementsAre("/", "/proc"));
}

/// "é" is one character of two bytes, or an "e" with an accent of two bytes.
TEST_F(FolderItems, ThatExistKeepTheFormOfTheirNames) {
    folder.file("caf\u00E9");
    folder.file("the\u0301");
    EXPECT_THAT(printedIn(R"(
        Dim folder As FolderItem = GetFolderItem(Arguments(0))
        Dim composed As FolderItem = Back(folder.Child("caf" + Chr(&hE9)))
        Print LenB(composed.Name) & " " & composed.Exists
        Dim decomposed As FolderItem = Back(folder.Child("the" + Chr(&h301)))
        Print LenB(decomposed.Name) & " " & decomposed.Exists
    )"),
                ElementsAre("5 True", "5 True"));
}

TEST_F(FolderItems, ThatDoNotExistYetHaveTheirNamesDecomposed) {
    EXPECT_THAT(printedIn(R"(
        Dim result As FolderItem = Back(GetFolderItem(Arguments(0)).Child("caf" + Chr(&hE9)))
        Print result.NativePath
        Print URLProbe.OfItem(result)
    )"),
                ElementsAre(in("cafe\u0301"), "file://" + folder.path() + "/cafe%CC%81"));
}

TEST_F(FolderItems, WithNamesBeyond16BitsComeBack) {
    folder.file("😀.txt");
    EXPECT_THAT(printedIn(R"(
        Dim folder As FolderItem = GetFolderItem(Arguments(0))
        For Each name As String In Array("😀.txt", "new 😀.txt")
          Dim result As FolderItem = Back(folder.Child(name))
          Print result.NativePath
        Next
    )"),
                ElementsAre(in("😀.txt"), in("new 😀.txt")));
}

/// Names have at most 255 UTF-16 units; in decomposed form these have more.
TEST_F(FolderItems, WithNamesThatBecomeTooLongAreCutTo255Units) {
    EXPECT_THAT(printedIn(R"(
        Dim parts(200) As String
        Dim name As String = Join(parts, Chr(&hE9))
        Dim result As FolderItem = Back(GetFolderItem(Arguments(0)).Child(name))
        Print Len(name) & " " & Len(result.Name) & " " & Right(result.Name, 1)
        Print result.Parent.NativePath
    )"),
                ElementsAre("200 255 e", folder.path()));
}

TEST_F(FolderItems, WithNamesOf255UnitsComeBackAndLongerOnesAreNothing) {
    EXPECT_THAT(printedIn(R"(
        Dim parts(255) As String
        Dim name As String = Join(parts, "n")
        Dim folder As FolderItem = GetFolderItem(Arguments(0))
        Dim result As FolderItem = Back(folder.Child(name))
        Print result.Name = name
        Print Back(folder.Child(name + "n")) Is Nil
        result = URLProbe.ItemOf("file://" + folder.NativePath + "/" + name + "x")
        Print result.Name = name
    )"),
                ElementsAre("True", "True", "True"));
}

TEST_F(FolderItems, BehindLinksAreWhatTheLinksLeadTo) {
    folder.file("target");
    std::filesystem::create_symlink("target", in("link"));
    EXPECT_THAT(printedIn(R"(
        Dim result As FolderItem = Back(GetFolderItem(Arguments(0)).Child("link"))
        Print result.NativePath
    )"),
                ElementsAre(in("target")));
}

/// A URL that leads to no item of the host comes back as its text.
TEST_F(FolderItems, WithAColonInTheNameOfANewItemComeBackAsText) {
    EXPECT_THAT(printedIn(R"(
        Show GetFolderItem(Arguments(0)).Child("a:b")
    )"),
                ElementsAre("- 8 file://" + folder.path() + "/a/b"));
}

TEST_F(FolderItems, AreValuesInCollections) {
    folder.file("a.txt");
    EXPECT_THAT(printedIn(R"(
        Dim source As New Dictionary
        source.Value("items") = Array(GetFolderItem(Arguments(0)).Child("a.txt"))
        Dim items() As Variant = Dictionary(Back(source)).Value("items")
        Print FolderItem(items(0)).NativePath
    )"),
                ElementsAre(in("a.txt")));
}

} // namespace
