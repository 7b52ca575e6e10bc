#include "plugin/classes/support/images.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

namespace {

/// The factories, on the calling thread and in the background.
struct Declarations {
    const char *string, *block, *file, *path, *url;
};

constexpr Declarations plain = {
    "imageWithData(data as string) as NSImageZNT",
    "imageWithData(data as memoryblock) as NSImageZNT",
    "imageWithContentsOfFile(file as folderitem) as NSImageZNT",
    "imageWithContentsOfPath(path as string) as NSImageZNT",
    "imageWithContentsOfURL(URL as string) as NSImageZNT",
};
constexpr Declarations background = {
    "imageWithDataMT(data as string) as NSImageZNT",
    "imageWithDataMT(data as memoryblock) as NSImageZNT",
    "imageWithContentsOfFileMT(file as folderitem) as NSImageZNT",
    "imageWithContentsOfPathMT(path as string) as NSImageZNT",
    "imageWithContentsOfURLMT(URL as string) as NSImageZNT",
};

class Factories {
public:
    explicit Factories(const HostOptions& options = {})
        : host(options) {}

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

    const TemporaryFolder folder;
    const std::string path = folder.file("image.tif", plain_tiff(4, 3));
    Host host;
};

class ImageFactories : public testing::TestWithParam<Declarations> {
protected:
    const Declarations& declared = GetParam();
};
INSTANTIATE_TEST_SUITE_P(Run, ImageFactories, testing::Values(plain, background),
                         [](const auto& run) {
                             return run.param.url == plain.url ? "OnTheCallingThread"
                                                               : "InTheBackground";
                         });

TEST_P(ImageFactories, ReadAnImageFromEverySource) {
    Factories factories;
    Host& host = factories.host;
    const std::string bytes = plain_tiff(3, 2);
    EXPECT_EQ(factories.size_of(factories.image(declared.string, host.text(bytes))), "3x2");
    EXPECT_EQ(factories.size_of(factories.image(declared.block, host.memoryBlock(bytes))), "3x2");
    EXPECT_EQ(factories.size_of(factories.image(declared.file, host.folderItem(factories.path))),
              "4x3");
    EXPECT_EQ(factories.size_of(factories.image(declared.path, factories.path)), "4x3");
    EXPECT_EQ(factories.size_of(factories.image(declared.url, "file://" + factories.path)), "4x3");
}

TEST_P(ImageFactories, RegisterTheImageWithItsWrapper) {
    Factories factories;
    const auto image =
        factories.image(declared.block, factories.host.memoryBlock(plain_tiff(3, 2)));
    EXPECT_EQ(Host::wrapper(factories.host.handle(image)), image.get());
}

TEST_P(ImageFactories, GiveNilWithoutAnExceptionForWhatIsNoImage) {
    Factories factories;
    Host& host = factories.host;
    const std::string truncated = plain_tiff(3, 2).substr(0, 20);
    const std::pair<const char*, host::Value> failures[] = {
        {declared.string, "this is no image"},
        {declared.string, host.text(truncated, REALtextEncodingNone)},
        {declared.block, host.memoryBlock("this is no image")},
        {declared.block, host.memoryBlock(truncated)},
        {declared.block, host.memoryBlock("")},
        {declared.file, host.folderItem("/no/such/file.tif")},
        {declared.file, host.folderItem("/no/such/folder/file.tif")},
        {declared.path, "/no/such/file.tif"},
        {declared.path, "/"},
        {declared.url, "file:///no/such/file.tif"},
        {declared.url, "no url at all <>"},
        {declared.url, "unknown:something"},
    };
    for (const auto& [method, argument] : failures) {
        EXPECT_FALSE(factories.image(method, argument)) << method;
        EXPECT_EQ(host.raised(), "") << method;
    }
    EXPECT_EQ(host.instances("NSImageZNT"), 0u);
}

TEST_P(ImageFactories, KeepNoReferenceToWhatTheyAreGiven) {
    Factories factories;
    const host::ObjectRef block = factories.host.memoryBlock(plain_tiff(3, 2));
    const host::ObjectRef item = factories.host.folderItem(factories.path);
    const host::StringRef path = factories.host.text(factories.path);
    factories.image(declared.block, block);
    factories.image(declared.file, item);
    factories.image(declared.path, path);
    EXPECT_EQ(factories.host.references(block), 1);
    EXPECT_EQ(factories.host.references(item), 1);
    EXPECT_EQ(factories.host.references(path), 1);
}

TEST_P(ImageFactories, YieldToTheHostInTheBackgroundOnly) {
    Factories factories;
    factories.image(declared.path, factories.path);
    if (declared.url == background.url)
        EXPECT_GE(factories.host.calls("REALYieldToRB"), 2) << "once before, once after";
    else
        EXPECT_EQ(factories.host.calls("REALYieldToRB"), 0);
}

// Messages

struct NilArgument {
    const char* name;
    const char* method;
    bool isString;
    const char* message;
};

class NilArgumentOf : public testing::TestWithParam<NilArgument> {};
INSTANTIATE_TEST_SUITE_P(
    ImageFactories, NilArgumentOf,
    testing::Values(
        NilArgument{"imageWithDataOfAString", plain.string, true, "String is empty"},
        NilArgument{"imageWithData", plain.block, false, "Memoryblock is nil"},
        NilArgument{"imageWithContentsOfFile", plain.file, false, "folderitem is nil"},
        NilArgument{"imageWithContentsOfPath", plain.path, true, "Path is empty"},
        NilArgument{"imageWithContentsOfURL", plain.url, true, "URL is empty"},
        NilArgument{"imageWithDataMTOfAString", background.string, true, "Data is empty"},
        NilArgument{"imageWithDataMT", background.block, false, "Memoryblock is nil"},
        NilArgument{"imageWithContentsOfFileMT", background.file, false, "Folderitem is nil"},
        NilArgument{"imageWithContentsOfPathMT", background.path, true, "Path is empty"},
        NilArgument{"imageWithContentsOfURLMT", background.url, true, "URL is empty"}),
    [](const auto& argument) { return argument.param.name; });

TEST_P(NilArgumentOf, RaisesItsOwnMessageAndGivesNilBeforeAnythingElse) {
    Factories factories;
    const host::Value argument = GetParam().isString ? host::Value("") : host::Value(nullptr);
    EXPECT_FALSE(factories.image(GetParam().method, argument));
    const host::ObjectRef raised = factories.host.takeRaised();
    EXPECT_EQ(host::Raised(raised).what(),
              std::string("NilObjectException: ") + GetParam().message);
    EXPECT_EQ(factories.host.get<int>(raised, "ErrorNumber"), 0);
    EXPECT_EQ(factories.host.calls("REALYieldToRB"), 0);
}

class ImageOfStringBytes : public testing::TestWithParam<std::tuple<double, const Declarations*>> {
};
// Read in place up to 2013.0, copied out after it.
INSTANTIATE_TEST_SUITE_P(ImageFactories, ImageOfStringBytes,
                         testing::Combine(testing::Values(2009.05, 2013.0, 2013.01, 2013.9),
                                          testing::Values(&plain, &background)));

TEST_P(ImageOfStringBytes, TakesTheBytesAsTheyAreWhateverTheirEncoding) {
    const auto& [version, declared] = GetParam();
    Factories factories({.version = version});
    for (const std::uint32_t encoding :
         {REALtextEncodingNone, REALtextEncodingMacRoman, REALtextEncodingUTF16}) {
        const host::StringRef data = factories.host.text(tiff_of({four_colors()}), encoding);
        const auto image = factories.image(declared->string, data);
        ASSERT_TRUE(image);
        EXPECT_THAT(pixels_of(image_in(factories.host, image)),
                    testing::ElementsAre(red, green, blue, white));
        EXPECT_EQ(factories.host.references(data), 1);
    }
}

} // namespace
