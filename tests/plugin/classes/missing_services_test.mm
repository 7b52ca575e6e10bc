#include "plugin/classes/support/sweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <cstring>
#include <regex>

#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#define LEAKS_ON_PURPOSE() __lsan_disable()
#else
#define LEAKS_ON_PURPOSE() static_cast<void>(0)
#endif

namespace {

constexpr const char* scale =
    "imageByScalingToSize(width as double, height as double) as NSImageZNT";
constexpr const char* scaleWithFraction =
    "imageByScalingToSize(width as double, height as double, fraction as double) as NSImageZNT";
constexpr const char* scaleInFull =
    "imageByScalingToSize(width as double, height as double, fraction as double, flip as boolean, "
    "proportionally as boolean) as NSImageZNT";

const Answers onACompleteHost = {
    {"Constructor", "- ! UnsupportedOperationException: Constructor called too often. Object is "
                    "already initialized."},
    {"Constructor(data as memoryblock)", "-"},
    {"Constructor(file as folderitem)", "-"},
    {"Constructor(width as double, height as double)", "-"},
    {"BMPRepresentation", "MemoryBlock"},
    {"BMPRepresentationMT", "MemoryBlock"},
    {"EXIFData", "Dictionary"},
    {"GIFRepresentation", "MemoryBlock"},
    {"GIFRepresentationMT", "MemoryBlock"},
    {"JPEGRepresentation", "MemoryBlock"},
    {"JPEGRepresentationMT", "MemoryBlock"},
    {"JPEGRepresentationWithCompressionFactor", "MemoryBlock"},
    {"JPEGRepresentationWithCompressionFactorMT", "MemoryBlock"},
    {"MaximumPixelHeight", "3"},
    {"MaximumPixelWidth", "4"},
    {"MinimumPixelHeight", "3"},
    {"MinimumPixelWidth", "4"},
    {"NSImageNameInfo", "\"NSInfo\""},
    {"Name", "\"tree\""},
    {"PNGRepresentation", "MemoryBlock"},
    {"PNGRepresentationMT", "MemoryBlock"},
    {"RepresentationHeight", "3"},
    {"RepresentationWidth", "0 ! OutOfBoundsException: Parameter index to method "
                            "RepresentationWidth is too big. Range is 0 to 0, but value is 99."},
    {"RepresentationsCount", "0"},
    {"TIFFRepresentation", "MemoryBlock"},
    {"TIFFRepresentationMT", "MemoryBlock"},
    {"TIFFRepresentationUsingCompression", "MemoryBlock"},
    {"TIFFRepresentationUsingCompressionMT", "MemoryBlock"},
    {"accessibilityDescription", "\"a tree\""},
    {"backgroundColor", "NSColorZNT"},
    {"bitmapFormat", "0"},
    {"bitsPerPixel", "24"},
    {"bitsPerSample", "8"},
    {"cacheDepthMatchesImageDepth", "True"},
    {"cacheMode", "3"},
    {"canInitWithData", "True"},
    {"canInitWithPasteboard", "False"},
    {"colorSpaceName", "\"NSDeviceRGBColorSpace\""},
    {"hasAlpha", "False"},
    {"height", "6"},
    {"height of the bitmap", "3"},
    {"imageByFadingToFraction", "NSImageZNT"},
    {scale, "NSImageZNT"},
    {scaleWithFraction, "NSImageZNT"},
    {scaleInFull, "NSImageZNT"},
    {"imageFileTypes", "an array"},
    {"imagePasteboardTypes", "an array"},
    {"imageTypes", "an array"},
    {"imageUnfilteredFileTypes", "an array"},
    {"imageUnfilteredPasteboardTypes", "an array"},
    {"imageUnfilteredTypes", "an array"},
    {"imageNamed", "NSImageZNT"},
    {"imageWithCGImage", "NSImageZNT"},
    {"imageWithContentsOfFile", "NSImageZNT"},
    {"imageWithContentsOfFileMT", "NSImageZNT"},
    {"imageWithContentsOfPath", "NSImageZNT"},
    {"imageWithContentsOfPathMT", "NSImageZNT"},
    {"imageWithContentsOfPath of nothing", "nil ! NilObjectException: Path is empty"},
    {"imageWithContentsOfURL", "NSImageZNT"},
    {"imageWithContentsOfURLMT", "NSImageZNT"},
    {"imageWithData(data as memoryblock) as NSImageZNT", "NSImageZNT"},
    {"imageWithData(data as string) as NSImageZNT", "NSImageZNT"},
    {"imageWithDataMT(data as memoryblock) as NSImageZNT", "NSImageZNT"},
    {"imageWithDataMT(data as string) as NSImageZNT", "NSImageZNT"},
    {"initWithContentsOfURL(file as folderitem) as boolean", "True"},
    {"initWithContentsOfURL(url as string) as boolean", "True"},
    {"initWithData", "True"},
    {"initWithDataIgnoringOrientation", "True"},
    {"initWithIconRef", "False"},
    {"initWithPasteboard", "False"},
    {"initWithSize", "True"},
    {"isCachedSeparately", "True"},
    {"isDataRetained", "True"},
    {"isFlipped", "True"},
    {"isOpaque", "True"},
    {"isPlanar", "False"},
    {"isTemplate", "True"},
    {"isValid", "True"},
    {"matchesOnMultipleResolution", "True"},
    {"numberOfPlanes", "1"},
    {"pixelsHigh", "3"},
    {"pixelsWide", "4"},
    {"prefersColorMatch", "True"},
    {"representations", "an array"},
    {"samplesPerPixel", "3"},
    {"scalesWhenResized", "True"},
    {"setName", "True"},
    {"size", "NSSizeZNT"},
    {"size of the bitmap", "NSSizeZNT"},
    {"usesEPSOnResolutionMismatch", "True"},
    {"width", "8"},
    {"width after Constructor(data)", "4"},
    {"width after Constructor(file)", "4"},
    {"width after Constructor(size)", "9"},
    {"width of the bitmap", "4"},
};

Answers joined(std::vector<Answers> parts) {
    Answers all;
    for (Answers& part : parts)
        all.merge(part);
    return all;
}

const Answers noMessages = {
    {"Constructor", "- ! UnsupportedOperationException: "},
    {"RepresentationWidth", "0 ! OutOfBoundsException: "},
    {"imageWithContentsOfPath of nothing", "nil ! NilObjectException: "},
};
const Answers noExceptions = {
    {"Constructor", "-"},
    {"RepresentationWidth", "0"},
    {"imageWithContentsOfPath of nothing", "nil"},
};
const Answers noText = {
    {"NSImageNameInfo", "\"\""},
    {"Name", "\"\""},
    {"accessibilityDescription", "\"\""},
    {"colorSpaceName", "\"\""},
};
const Answers noNewObjects = {
    {"backgroundColor", "nil"},
    {"imageByFadingToFraction", "nil"},
    {scale, "nil"},
    {scaleWithFraction, "nil"},
    {scaleInFull, "nil"},
    {"imageWithContentsOfFile", "nil"},
    {"imageWithContentsOfFileMT", "nil"},
    {"imageWithContentsOfPath", "nil"},
    {"imageWithContentsOfPathMT", "nil"},
    {"imageWithContentsOfURL", "nil"},
    {"imageWithContentsOfURLMT", "nil"},
    {"imageNamed", "nil"},
    {"imageWithCGImage", "nil"},
    {"imageWithData(data as memoryblock) as NSImageZNT", "nil"},
    {"imageWithData(data as string) as NSImageZNT", "nil"},
    {"imageWithDataMT(data as memoryblock) as NSImageZNT", "nil"},
    {"imageWithDataMT(data as string) as NSImageZNT", "nil"},
    {"EXIFData", "nil"},
    {"size", "nil"},
    {"size of the bitmap", "nil"},
};
const Answers noDataFromBlocks = {
    {"canInitWithData", "False"},
    {"imageWithData(data as memoryblock) as NSImageZNT", "nil"},
    {"imageWithDataMT(data as memoryblock) as NSImageZNT", "nil"},
    {"initWithData", "False"},
    {"initWithDataIgnoringOrientation", "False"},
    {"width after Constructor(data)", "0"},
};
const Answers noFiles = {
    {"imageWithContentsOfFile", "nil"},
    {"imageWithContentsOfFileMT", "nil"},
    {"initWithContentsOfURL(file as folderitem) as boolean", "False"},
    {"width after Constructor(file)", "0"},
};
const Answers noDataOfStrings = {
    {"imageWithData(data as string) as NSImageZNT", "nil"},
    {"imageWithDataMT(data as string) as NSImageZNT", "nil"},
};
const Answers noClasses = {
    {"imageWithCGImage", "nil ! IllegalCastException: CGImage must be a CGImageZNT!"},
};

Answers every_encoder(const char* answer) {
    Answers answers;
    for (const char* encoder : {"GIFRepresentation", "BMPRepresentation", "PNGRepresentation",
                                "JPEGRepresentation", "JPEGRepresentationWithCompressionFactor",
                                "TIFFRepresentation", "TIFFRepresentationUsingCompression"})
        for (const char* thread : {"", "MT"})
            answers[std::string(encoder) + thread] = answer;
    return answers;
}
Answers every_array(const char* answer) {
    return {
        {"imageFileTypes", answer},       {"imagePasteboardTypes", answer},
        {"imageTypes", answer},           {"imageUnfilteredFileTypes", answer},
        {"imageUnfilteredTypes", answer}, {"imageUnfilteredPasteboardTypes", answer},
        {"representations", answer},
    };
}

struct Lack {
    std::vector<std::string> services;
    Answers differences = {};
    /// The host is left with what could not be given back.
    bool leaks = false;
    double version = 2013.9;
};

void PrintTo(const Lack& lack, std::ostream* stream) {
    for (const std::string& service : lack.services)
        *stream << service << " ";
    *stream << lack.version;
}

class OnAHostThatLacks : public testing::TestWithParam<Lack> {};
constexpr bool leaks = true;
INSTANTIATE_TEST_SUITE_P(
    EveryMember, OnAHostThatLacks,
    testing::Values(
        Lack{{"REALBuildString"}, joined({noText, noMessages})}, Lack{{"REALSetStringEncoding"}},
        Lack{{"REALGetStringCFString"}}, Lack{{"REALGetStringCFString", "REALGetStringEncoding"}},
        Lack{{"REALUnlockString"}, {}, leaks}, Lack{{"REALUnlockObject"}, {}, leaks},
        Lack{{"REALLockObject"}}, Lack{{"REALLockString"}, {}, false, 2009.05},
        Lack{{"PluginGetStringData"}}, Lack{{"PluginDisposeStringData"}},
        Lack{{"PluginGetStringData", "StringGetCString"}, noDataOfStrings},
        Lack{{"PluginGetStringData", "REALLoadGlobalMethod"}, noDataOfStrings},
        Lack{{"PluginNewInstance"}, joined({noNewObjects, noExceptions})},
        Lack{{"RuntimeRaiseException"}, noExceptions}, Lack{{"REALSetPropValueInt"}},
        Lack{{"REALSetPropValueString"}, noMessages},
        Lack{{"RuntimeArrayCreateSingleDimBoundedArray"}, every_array("nil")},
        Lack{{"RuntimeArrayDirectGetInsertProc"}, every_array("an empty array")},
        Lack{{"newMemoryBlock"},
             every_encoder("nil ! OutOfMemoryException: Failed to allocate a memoryblock with N "
                           "bytes in size.")},
        Lack{{"memoryBlockGetPtr"}, joined({noDataFromBlocks, every_encoder("nil")}), leaks},
        Lack{{"memoryBlockGetSize"}, noDataFromBlocks}, Lack{{"pluginObjectType"}, noClasses},
        Lack{{"RuntimeObjectIsa"}, noClasses}, Lack{{"REALFSRefFromFolderItem"}},
        Lack{{"REALFSRefFromFolderItem", "REALFSSpecFromFolderItem"}, noFiles}));

Answers without_sizes(Answers answers) {
    for (auto& [member, answer] : answers)
        answer = std::regex_replace(answer, std::regex("with \\d+ bytes"), "with N bytes");
    return answers;
}

/// Everything is asked twice: a service that was missing once is looked for again.
TEST_P(OnAHostThatLacks, AServiceGivesItsNeutralValueAndLooksItUpAtEveryUse) {
    const Lack& lack = GetParam();
    if (lack.leaks) LEAKS_ON_PURPOSE();
    Answers expected = lack.differences;
    expected.insert(onACompleteHost.begin(), onACompleteHost.end());

    testing::TestPartResultArray reports;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &reports);
        Host host{{.version = lack.version, .without = lack.services}};
        Sweep sweep(host);
        EXPECT_EQ(without_sizes(sweep.run()), expected);
        std::vector<int> lookups;
        for (const std::string& service : lack.services)
            lookups.push_back(host.lookups(service));
        EXPECT_EQ(without_sizes(sweep.run()), expected);
        for (std::size_t i = 0; i < lookups.size(); ++i) {
            EXPECT_GT(lookups[i], 0) << lack.services[i];
            EXPECT_GE(host.lookups(lack.services[i]), 2 * lookups[i] - 1) << lack.services[i];
        }
    }
    for (int i = 0; i < reports.size(); ++i) {
        const std::string report = reports.GetTestPartResult(i).message();
        const bool isLeak = report.find("still has") != std::string::npos ||
                            report.find("was not disposed of") != std::string::npos;
        EXPECT_TRUE(isLeak && lack.leaks) << report;
    }
    EXPECT_EQ(reports.size() > 0, lack.leaks);
}

TEST(EveryMember, AnswersOnACompleteHostAndLooksEachServiceUpOnce) {
    Host host{{.withoutBase = false}};
    Sweep sweep(host);
    EXPECT_EQ(sweep.run(), onACompleteHost);
    EXPECT_EQ(sweep.run(), onACompleteHost);
    // The base part's own lookups come on top of the plug-in's.
    for (const char* service :
         {"PluginGetStringData", "PluginDisposeStringData", "RuntimeArrayDirectGetInsertProc",
          "RuntimeArrayCreateSingleDimBoundedArray", "newMemoryBlock", "memoryBlockGetPtr",
          "memoryBlockGetSize", "REALFSRefFromFolderItem", "RuntimeRaiseException"})
        EXPECT_EQ(host.lookups(service), 1) << service;
}

TEST(EveryMember, AnswersTheSameOnAHostThatCannotYield) {
    Host host{{.without = {"REALYieldToRB"}}};
    EXPECT_EQ(Sweep(host).run(), onACompleteHost);
}

TEST(EveryMember, AnswersTheSameOnEveryKindOfHost) {
    Host host{{.version = 2009.05, .console = true}};
    EXPECT_EQ(Sweep(host).run(), onACompleteHost);
}

} // namespace
