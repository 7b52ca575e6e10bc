#include "plugin/classes/support/images.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace {

namespace declared {
constexpr const char* string = "imageWithData(data as string) as NSImageZNT";
constexpr const char* block = "imageWithData(data as memoryblock) as NSImageZNT";
constexpr const char* file = "imageWithContentsOfFile(file as folderitem) as NSImageZNT";
constexpr const char* path = "imageWithContentsOfPath(path as string) as NSImageZNT";
constexpr const char* url = "imageWithContentsOfURL(URL as string) as NSImageZNT";
} // namespace declared

class Factories {
public:
    explicit Factories(const HostOptions& options = {})
        : host(options) {
        std::ofstream(path, std::ios::binary) << plain_tiff(4, 3);
    }
    ~Factories() { std::filesystem::remove(path); }

    host::ObjectRef image(const char* method, const host::Value& argument) {
        return host.shared<host::ObjectRef>("NSImageZNT", method, argument);
    }
    /// "4x3", or "none".
    std::string size_of(const host::ObjectRef& image) {
        if (!image) return "none";
        EXPECT_EQ(host.references(image), 1);
        EXPECT_EQ(Host::retainCount(host.handle(image)), 1) << "the wrapper's";
        return std::to_string(static_cast<int>(host.get<double>(image, "width"))) + "x" +
               std::to_string(static_cast<int>(host.get<double>(image, "height")));
    }

    Host host;
    const std::string path =
        std::filesystem::temp_directory_path() / ("factories-" + std::to_string(getpid()) + ".tif");
};

TEST(ImageFactories, ReadAnImageFromEverySource) {
    Factories factories;
    Host& host = factories.host;
    const std::string bytes = plain_tiff(3, 2);
    EXPECT_EQ(factories.size_of(factories.image(declared::string, host.text(bytes))), "3x2");
    EXPECT_EQ(factories.size_of(factories.image(declared::block, host.memoryBlock(bytes))), "3x2");
    EXPECT_EQ(factories.size_of(factories.image(declared::file, host.folderItem(factories.path))),
              "4x3");
    EXPECT_EQ(factories.size_of(factories.image(declared::path, factories.path)), "4x3");
    EXPECT_EQ(factories.size_of(factories.image(declared::url, "file://" + factories.path)), "4x3");
}

TEST(ImageFactories, RegisterTheImageWithItsWrapper) {
    Factories factories;
    const auto image =
        factories.image(declared::block, factories.host.memoryBlock(plain_tiff(3, 2)));
    EXPECT_EQ(Host::wrapper(factories.host.handle(image)), image.get());
}

struct NilArgument {
    const char* method;
    host::Value (*argument)();
    const char* raised;
};

void PrintTo(const NilArgument& given, std::ostream* stream) { *stream << given.raised; }

host::Value nil_object() { return nullptr; }
host::Value empty_string() { return ""; }

class ImageFactoriesOfNil : public testing::TestWithParam<NilArgument> {};
INSTANTIATE_TEST_SUITE_P(
    Messages, ImageFactoriesOfNil,
    testing::Values(
        NilArgument{declared::string, empty_string, "NilObjectException: String is empty"},
        NilArgument{declared::block, nil_object, "NilObjectException: Memoryblock is nil"},
        NilArgument{declared::file, nil_object, "NilObjectException: folderitem is nil"},
        NilArgument{declared::path, empty_string, "NilObjectException: Path is empty"},
        NilArgument{declared::url, empty_string, "NilObjectException: URL is empty"}));

TEST_P(ImageFactoriesOfNil, RaiseTheirOwnMessageAndReturnNil) {
    Factories factories;
    EXPECT_FALSE(factories.image(GetParam().method, GetParam().argument()));
    EXPECT_EQ(factories.host.raised(), GetParam().raised);
}

TEST(ImageFactories, GiveNilWithoutAnExceptionForWhatIsNoImage) {
    Factories factories;
    Host& host = factories.host;
    const std::string truncated = plain_tiff(3, 2).substr(0, 20);
    const std::pair<const char*, host::Value> failures[] = {
        {declared::string, "this is no image"},
        {declared::string, host.text(truncated, REALtextEncodingNone)},
        {declared::block, host.memoryBlock("this is no image")},
        {declared::block, host.memoryBlock(truncated)},
        {declared::block, host.memoryBlock("")},
        {declared::file, host.folderItem("/no/such/file.tif")},
        {declared::file, host.folderItem("/no/such/folder/file.tif")},
        {declared::path, "/no/such/file.tif"},
        {declared::path, "/"},
        {declared::url, "file:///no/such/file.tif"},
        {declared::url, "no url at all <>"},
        {declared::url, "unknown:something"},
    };
    for (const auto& [method, argument] : failures) {
        EXPECT_FALSE(factories.image(method, argument)) << method;
        EXPECT_EQ(host.raised(), "") << method;
    }
    EXPECT_EQ(host.instances("NSImageZNT"), 0u);
}

class ImageOfStringBytes : public testing::TestWithParam<double> {};
// Read in place up to 2013.0, copied out after it.
INSTANTIATE_TEST_SUITE_P(ImageFactories, ImageOfStringBytes,
                         testing::Values(2009.05, 2013.0, 2013.01, 2013.9));

TEST_P(ImageOfStringBytes, TakesTheBytesAsTheyAreWhateverTheirEncoding) {
    Factories factories({.version = GetParam()});
    for (const std::uint32_t encoding :
         {REALtextEncodingNone, REALtextEncodingMacRoman, REALtextEncodingUTF16}) {
        const host::StringRef data = factories.host.text(tiff_of({four_colors()}), encoding);
        const auto image = factories.image(declared::string, data);
        ASSERT_TRUE(image);
        EXPECT_THAT(pixels_of(image_in(factories.host, image)),
                    testing::ElementsAre(red, green, blue, white));
        EXPECT_EQ(factories.host.references(data), 1);
    }
}

TEST(ImageFactories, KeepNoReferenceToWhatTheyAreGiven) {
    Factories factories;
    const host::ObjectRef block = factories.host.memoryBlock(plain_tiff(3, 2));
    const host::ObjectRef item = factories.host.folderItem(factories.path);
    factories.image(declared::block, block);
    factories.image(declared::file, item);
    EXPECT_EQ(factories.host.references(block), 1);
    EXPECT_EQ(factories.host.references(item), 1);
}

std::vector<std::string> strings_of(NSArray* array) {
    std::vector<std::string> strings;
    for (NSUInteger i = 0; i < [array count]; ++i)
        strings.emplace_back([[array objectAtIndex:i] UTF8String]);
    return strings;
}

TEST(ImageTypeLists, AreCocoasOwnInTheirOrder) {
    Host host;
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    const std::pair<const char*, NSArray*> lists[] = {
        {"imageUnfilteredFileTypes", [NSImage imageUnfilteredFileTypes]},
        {"imageUnfilteredPasteboardTypes", [NSImage imageUnfilteredPasteboardTypes]},
        {"imageFileTypes", [NSImage imageFileTypes]},
        {"imagePasteboardTypes", [NSImage imagePasteboardTypes]},
        {"imageTypes", [NSImage imageTypes]},
        {"imageUnfilteredTypes", [NSImage imageUnfilteredTypes]},
    };
    for (const auto& [method, expected] : lists) {
        std::vector<std::string> types;
        for (const host::Value& type : host.elements(host.shared("NSImageZNT", method)))
            types.push_back(type.utf8());
        EXPECT_EQ(types, strings_of(expected)) << method;
        EXPECT_FALSE(types.empty()) << method;
    }
    [pool release];
}

TEST(ImageTypeLists, NameTheFormatsThatAreRead) {
    Host host;
    std::vector<std::string> types;
    for (const host::Value& type : host.elements(host.shared("NSImageZNT", "imageFileTypes")))
        types.push_back(type.utf8());
    for (const char* type : {"tiff", "png", "jpg"})
        EXPECT_THAT(types, testing::Contains(type));
}

} // namespace
