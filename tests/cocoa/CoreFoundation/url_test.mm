#include "support.h"

#include <Carbon/Files.h>

#include <array>

namespace {

class URLs : public InPool {};

URL url(const char* text) {
    return URL::adopt(CFURLCreateWithString(nullptr, string(text).get(), nullptr));
}

URL fileURL(std::string_view path, bool isDirectory = false) {
    return URL::adopt(CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()),
        isDirectory));
}

std::string text(const URL& url) { return url ? ::text(CFURLGetString(url.get())) : "(null)"; }

std::string path(const URL& url) {
    return ::text(String::adopt(CFURLCopyFileSystemPath(url.get(), kCFURLPOSIXPathStyle)));
}

std::string lastComponent(const URL& url) {
    return ::text(String::adopt(CFURLCopyLastPathComponent(url.get())));
}

std::string parent(const URL& url) {
    return text(URL::adopt(CFURLCreateCopyDeletingLastPathComponent(nullptr, url.get())));
}

std::string child(const URL& url, const char* name, bool isDirectory = false) {
    return text(URL::adopt(CFURLCreateCopyAppendingPathComponent(nullptr, url.get(),
                                                                 string(name).get(), isDirectory)));
}

TEST_F(URLs, AreFoundationsURLs) {
    const URL made = url("http://user@host:80/a%20b/c.png?q=1#f");
    EXPECT_TRUE([(NSURL*)made.get()
        isEqual:[NSURL URLWithString:@"http://user@host:80/a%20b/c.png?q=1#f"]]);
    EXPECT_EQ(CFGetTypeID(made.get()), CFURLGetTypeID());
    EXPECT_EQ(::text(String::adopt(CFURLCopyScheme(made.get()))), "http");
    EXPECT_EQ(::text(String::adopt(CFURLCopyHostName(made.get()))), "host");
    EXPECT_EQ(::text(String::adopt(CFURLCopyPath(made.get()))), "/a%20b/c.png");
    EXPECT_EQ(path(made), "/a b/c.png");
    EXPECT_EQ(lastComponent(made), "c.png");
    EXPECT_EQ(::text(String::adopt(CFURLCopyPathExtension(made.get()))), "png");
    EXPECT_EQ(CFGetRetainCount(made.get()), 1);
}

TEST_F(URLs, AreNullForTextThatIsNoURL) {
    for (const char* const invalid :
         {"", "http://a/b c", "http://a/é", "http://a/%zz", "http://a/%4", "http://a/<b>",
          "http://a/b#c#d", "a\\b", "a\"b", "{x}", "a\nb"})
        EXPECT_EQ(url(invalid).get(), nullptr) << invalid;
    EXPECT_EQ(CFURLCreateWithString(nullptr, nullptr, nullptr), nullptr);
    const String cut = string(std::string_view("http://a/\0b", 11));
    EXPECT_EQ(CFURLCreateWithString(nullptr, cut.get(), nullptr), nullptr);
}

TEST_F(URLs, AreTakenFromABase) {
    const URL base = url("http://host/folder/page");
    const URL made = URL::adopt(CFURLCreateWithString(nullptr, CFSTR("other"), base.get()));
    EXPECT_EQ(text(made), "other");
    EXPECT_EQ(CFURLGetBaseURL(made.get()), base.get());
    EXPECT_EQ(text(URL::adopt(CFURLCopyAbsoluteURL(made.get()))), "http://host/folder/other");
    EXPECT_EQ(lastComponent(made), "other");
}

TEST_F(URLs, AreMadeOfPaths) {
    EXPECT_EQ(text(fileURL("/a b/é#?%.png")), "file:///a%20b/%C3%A9%23%3F%25.png");
    EXPECT_EQ(text(fileURL("/a", true)), "file:///a/");
    EXPECT_EQ(text(fileURL("/a/", false)), "file:///a");
    EXPECT_EQ(text(fileURL("/", true)), "file:///");
    EXPECT_EQ(path(fileURL("/a b/é#?%.png")), "/a b/é#?%.png");
    EXPECT_EQ(path(fileURL("/a/", true)), "/a");
    EXPECT_EQ(path(fileURL("/", true)), "/");
    EXPECT_TRUE(CFURLHasDirectoryPath(fileURL("/a", true).get()));
    EXPECT_FALSE(CFURLHasDirectoryPath(fileURL("/a").get()));
    EXPECT_EQ(fileURL("").get(), nullptr);
    EXPECT_EQ(fileURL(std::string_view("/a\0b", 4)).get(), nullptr);
    const URL styled = URL::adopt(
        CFURLCreateWithFileSystemPath(nullptr, CFSTR("/tmp/x"), kCFURLPOSIXPathStyle, false));
    EXPECT_EQ(text(styled), "file:///tmp/x");
    EXPECT_EQ(CFURLCreateWithFileSystemPath(nullptr, CFSTR("Disk:x"), kCFURLHFSPathStyle, false),
              nullptr);
    EXPECT_EQ(CFURLCreateWithFileSystemPath(nullptr, CFSTR(""), kCFURLPOSIXPathStyle, false),
              nullptr);
}

TEST_F(URLs, AreTakenFromTheCurrentFolderForARelativePath) {
    const std::string folder = std::filesystem::current_path();
    EXPECT_EQ(path(fileURL("some file")), folder + "/some file");
}

TEST_F(URLs, KeepPathsThatAreNotUTF8) {
    const URL made = fileURL("/a\xFF");
    EXPECT_EQ(text(made), "file:///a%FF");
    EXPECT_EQ(CFURLCopyFileSystemPath(made.get(), kCFURLPOSIXPathStyle), nullptr);
    EXPECT_EQ(CFURLCopyLastPathComponent(made.get()), nullptr);
    std::array<UInt8, 8> buffer{};
    ASSERT_TRUE(CFURLGetFileSystemRepresentation(made.get(), true, buffer.data(), 8));
    EXPECT_STREQ(reinterpret_cast<const char*>(buffer.data()), "/a\xFF");
}

TEST_F(URLs, DoNotWriteTheirPathBeyondTheBuffer) {
    const URL made = fileURL("/abc");
    std::array<UInt8, 6> buffer;
    buffer.fill('#');
    EXPECT_FALSE(CFURLGetFileSystemRepresentation(made.get(), true, buffer.data(), 4));
    EXPECT_EQ(buffer[4], '#');
    EXPECT_TRUE(CFURLGetFileSystemRepresentation(made.get(), true, buffer.data(), 5));
    EXPECT_EQ(buffer[4], 0);
    EXPECT_FALSE(CFURLGetFileSystemRepresentation(url("http://a/b").get(), true, buffer.data(), 6));
}

TEST_F(URLs, GetAComponentAppended) {
    EXPECT_EQ(child(fileURL("/a", true), "b é.png"), "file:///a/b%20%C3%A9.png");
    EXPECT_EQ(child(fileURL("/a"), "b"), "file:///a/b");
    EXPECT_EQ(child(fileURL("/", true), "b", true), "file:///b/");
    EXPECT_EQ(child(url("http://h/a?q#f"), "b"), "http://h/a/b?q#f");
}

TEST_F(URLs, GetTheirLastComponentTakenAway) {
    EXPECT_EQ(parent(fileURL("/a/b")), "file:///a/");
    EXPECT_EQ(parent(fileURL("/a/b", true)), "file:///a/");
    EXPECT_EQ(parent(fileURL("/a")), "file:///");
    EXPECT_EQ(parent(fileURL("/", true)), "file:///../");
    EXPECT_EQ(parent(url("http://h/a/b?q")), "http://h/a/?q");
    EXPECT_EQ(CFURLCreateCopyDeletingLastPathComponent(nullptr, nullptr), nullptr);
}

TEST_F(URLs, TellTheirLastComponentDecoded) {
    EXPECT_EQ(lastComponent(fileURL("/a/b é%2F.png")), "b é%2F.png");
    EXPECT_EQ(lastComponent(fileURL("/a/b", true)), "b");
    EXPECT_EQ(lastComponent(fileURL("/", true)), "/");
    EXPECT_EQ(lastComponent(url("http://h")), "");
}

TEST_F(URLs, GetExtensionsAddedAndTakenAway) {
    const auto extended = [](const URL& url) {
        return text(
            URL::adopt(CFURLCreateCopyAppendingPathExtension(nullptr, url.get(), CFSTR("png"))));
    };
    const auto shortened = [](const URL& url) {
        return text(URL::adopt(CFURLCreateCopyDeletingPathExtension(nullptr, url.get())));
    };
    EXPECT_EQ(extended(fileURL("/a/b")), "file:///a/b.png");
    EXPECT_EQ(extended(fileURL("/a", true)), "file:///a.png/");
    EXPECT_EQ(shortened(fileURL("/a.b/c.png")), "file:///a.b/c");
    EXPECT_EQ(shortened(fileURL("/a.b/c")), "file:///a.b/c");
    EXPECT_EQ(shortened(fileURL("/a/.hidden")), "file:///a/.hidden");
    EXPECT_EQ(CFURLCopyPathExtension(fileURL("/a.b/c").get()), nullptr);
}

TEST_F(URLs, ReferToFiles) {
    const TemporaryFolder folder;
    const std::string file = folder.file("picture é.png");
    FSRef ref;
    ASSERT_TRUE(CFURLGetFSRef(fileURL(file).get(), &ref));
    EXPECT_EQ(path(URL::adopt(CFURLCreateFromFSRef(nullptr, &ref))), file);
    ASSERT_TRUE(CFURLGetFSRef(fileURL(folder.path(), true).get(), &ref));
    const URL back = URL::adopt(CFURLCreateFromFSRef(nullptr, &ref));
    EXPECT_EQ(path(back), folder.path());
    EXPECT_TRUE(CFURLHasDirectoryPath(back.get()));
}

TEST_F(URLs, ReferToFilesAlsoInCapitals) {
    const TemporaryFolder folder;
    const std::string file = folder.file("a.txt", "abc");
    const URL capitals = url(("FILE://" + file).c_str());
    EXPECT_TRUE([(NSURL*)capitals.get() isFileURL]);
    EXPECT_FALSE([(NSURL*)url("HTTP://host/file").get() isFileURL]);
    EXPECT_FALSE([(NSURL*)url("a/file").get() isFileURL]);
    FSRef ref;
    EXPECT_TRUE(CFURLGetFSRef(capitals.get(), &ref));
    EXPECT_TRUE([[NSData dataWithContentsOfURL:(NSURL*)capitals.get()]
        isEqual:[NSData dataWithBytes:"abc" length:3]]);
}

TEST_F(URLs, ReferToNothingWhereThereIsNothing) {
    const TemporaryFolder folder;
    FSRef ref;
    EXPECT_FALSE(CFURLGetFSRef(fileURL(folder.path() + "/missing").get(), &ref));
    EXPECT_FALSE(CFURLGetFSRef(fileURL("/" + std::string(5000, 'x')).get(), &ref));
    EXPECT_FALSE(CFURLGetFSRef(url("http://host/tmp").get(), &ref));
    EXPECT_FALSE(CFURLGetFSRef(nullptr, &ref));
    EXPECT_FALSE(CFURLGetFSRef(fileURL("/").get(), nullptr));
    const FSRef zeros{};
    EXPECT_EQ(CFURLCreateFromFSRef(nullptr, &zeros), nullptr);
    EXPECT_EQ(CFURLCreateFromFSRef(nullptr, nullptr), nullptr);
}

TEST_F(URLs, ReferToALinkItself) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("nowhere", folder.path() + "/link");
    FSRef ref;
    ASSERT_TRUE(CFURLGetFSRef(fileURL(folder.path() + "/link").get(), &ref));
    EXPECT_EQ(path(URL::adopt(CFURLCreateFromFSRef(nullptr, &ref))), folder.path() + "/link");
}

} // namespace
