#include "support/host.h"
#include "tests/plugin/classes/declarations.h"

#include <gmock/gmock.h>

#include <cstring>

namespace {

using host::Class;
using host::RawDefinition;
using host::RawRecord;

std::vector<const Class*> plugin_classes(Host& host) {
    std::vector<const Class*> found;
    for (const auto& type : host.runtime().classes())
        if (type->raw && type->plugin.find("NSImage.so") != std::string::npos)
            found.push_back(type.get());
    return found;
}

const RawDefinition& raw_of(Host& host, std::string_view className) {
    return *host.runtime().findClass(className)->raw;
}

std::string text_at(REALword word) {
    return word ? reinterpret_cast<const char*>(word) : std::string();
}

std::vector<std::string> texts_at(const std::vector<RawRecord>& records, std::size_t word) {
    std::vector<std::string> texts;
    for (const RawRecord& record : records)
        texts.push_back(text_at(record[word]));
    return texts;
}

// Positions in a class definition, in words.
enum Word {
    version,
    name,
    superclass,
    dataSize,
    systemUse,
    constructor,
    destructor,
    properties,
    propertyCount,
    methods,
    methodCount,
    events,
    eventCount,
    eventInstances,
    eventInstanceCount,
    interfaces,
    bindings,
    bindingCount,
    constants,
    constantCount,
    flags,
    sharedProperties,
    sharedPropertyCount,
    sharedMethods,
    sharedMethodCount,
};

constexpr REALword directAccess = -1;

TEST(ClassTables, RegisterTheSixClassesInTheirOrder) {
    Host host;
    std::vector<std::string> names;
    for (const Class* type : plugin_classes(host))
        names.push_back(type->name());
    EXPECT_THAT(names, testing::ElementsAre("NSImageZNT", "NSImageRepZNT", "NSPDFImageRepZNT",
                                            "NSEPSImageRepZNT", "NSPICTImageRepZNT",
                                            "NSBitmapImageRepZNT"));
}

class EveryHostVersion : public testing::TestWithParam<double> {};
INSTANTIATE_TEST_SUITE_P(ClassTables, EveryHostVersion,
                         testing::Values(2009.05, 2010.5, 2012.0, 2013.0, 2013.02, 2013.03,
                                         2013.9));

TEST_P(EveryHostVersion, SeesEveryDeclarationLetterForLetter) {
    Host host{{.version = GetParam()}};
    for (const DeclaredClass& declared : declaredClasses) {
        SCOPED_TRACE(declared.name);
        const RawDefinition& raw = raw_of(host, declared.name);
        EXPECT_EQ(text_at(raw.words[name]), declared.name);
        EXPECT_EQ(text_at(raw.words[superclass]), declared.superclass);
        EXPECT_EQ(texts_at(raw.methods, 2), declared.methods);
        EXPECT_EQ(texts_at(raw.sharedMethods, 2), declared.sharedMethods);
        EXPECT_EQ(texts_at(raw.constants, 0), declared.constants);
        ASSERT_EQ(raw.properties.size(), declared.properties.size());
        for (std::size_t i = 0; i < raw.properties.size(); ++i) {
            const RawRecord& property = raw.properties[i];
            EXPECT_EQ(property[0], 0) << "no group";
            EXPECT_EQ(text_at(property[1]), declared.properties[i].name);
            EXPECT_EQ(text_at(property[2]), declared.properties[i].type);
            EXPECT_NE(property[4], 0) << "every property has a getter";
            EXPECT_EQ(property[5] != 0, declared.properties[i].isWritable) << text_at(property[1]);
        }
    }
}

TEST_P(EveryHostVersion, SeesTheCountsAndPointersOfTheLists) {
    Host host{{.version = GetParam()}};
    for (const DeclaredClass& declared : declaredClasses) {
        SCOPED_TRACE(declared.name);
        const RawRecord& words = raw_of(host, declared.name).words;
        const auto expect_list = [&](Word list, Word count, std::size_t size) {
            EXPECT_EQ(words[count], static_cast<REALword>(size));
            EXPECT_EQ(words[list] != 0, size > 0) << "an empty list is null";
        };
        expect_list(properties, propertyCount, declared.properties.size());
        expect_list(methods, methodCount, declared.methods.size());
        expect_list(constants, constantCount, declared.constants.size());
        expect_list(sharedMethods, sharedMethodCount, declared.sharedMethods.size());
        for (const Word nothing :
             {events, eventCount, eventInstances, eventInstanceCount, interfaces, bindings,
              bindingCount, sharedProperties, sharedPropertyCount})
            EXPECT_EQ(words[nothing], 0) << "word " << nothing;
    }
}

TEST_P(EveryHostVersion, SeesConsoleSafeClassesAndMembers) {
    Host host{{.version = GetParam()}};
    for (const DeclaredClass& declared : declaredClasses) {
        SCOPED_TRACE(declared.name);
        const RawDefinition& raw = raw_of(host, declared.name);
        EXPECT_EQ(raw.words[flags], 4);
        for (const RawRecord& property : raw.properties)
            EXPECT_EQ(property[3], 6) << text_at(property[1]);
        for (const auto* list : {&raw.methods, &raw.sharedMethods})
            for (const RawRecord& method : *list) {
                const bool isEmptyConstructor =
                    declared.name == "NSImageRepZNT" && text_at(method[2]) == "Constructor";
                EXPECT_EQ(method[3], isEmptyConstructor ? 132 : 4) << text_at(method[2]);
                EXPECT_NE(method[0], 0) << text_at(method[2]);
                EXPECT_EQ(method[1], 0) << "no setter: " << text_at(method[2]);
            }
    }
}

TEST_P(EveryHostVersion, GivesTheTwoRootClassesOneRoundedFieldAndTheSubclassesNone) {
    Host host{{.version = GetParam()}};
    for (const DeclaredClass& declared : declaredClasses) {
        SCOPED_TRACE(declared.name);
        const RawDefinition& raw = raw_of(host, declared.name);
        const bool isRoot = declared.superclass.empty();
        EXPECT_EQ(raw.words[dataSize], isRoot ? 16 : 0);
        EXPECT_EQ(raw.words[constructor] != 0, isRoot);
        EXPECT_EQ(raw.words[destructor] != 0, isRoot);
        if (!isRoot) continue;
        const RawRecord& handle = raw.properties.front();
        EXPECT_EQ(handle[4], directAccess);
        EXPECT_EQ(handle[5], directAccess);
        EXPECT_EQ(handle[6], 0) << "at the start of the data";
    }
}

struct Layout {
    double hostVersion;
    int controlVersion;
    std::size_t definitionWords, propertyWords, methodWords, constantWords;
};

void PrintTo(const Layout& layout, std::ostream* stream) { *stream << layout.hostVersion; }

class Layouts : public testing::TestWithParam<Layout> {};
INSTANTIATE_TEST_SUITE_P(
    ClassTables, Layouts,
    testing::Values(Layout{2009.05, 9, 25, 10, 4, 3}, Layout{2010.5, 9, 25, 10, 4, 3},
                    Layout{2011.04, 9, 25, 10, 4, 3}, Layout{2012.0, 10, 29, 12, 6, 5},
                    Layout{2012.5, 10, 29, 12, 6, 5}, Layout{2013.0, 11, 29, 12, 6, 5},
                    Layout{2013.02, 11, 29, 12, 6, 5}, Layout{2013.03, 12, 29, 12, 6, 5}));

TEST_P(Layouts, FollowTheHostsVersion) {
    const Layout& expected = GetParam();
    Host host{{.version = expected.hostVersion}};
    ASSERT_EQ(plugin_classes(host).size(), 6u);
    for (const Class* type : plugin_classes(host)) {
        const RawDefinition& raw = *type->raw;
        EXPECT_EQ(raw.controlVersion, expected.controlVersion);
        EXPECT_EQ(raw.words[version], expected.controlVersion);
        EXPECT_EQ(raw.words.size(), expected.definitionWords);
        for (const RawRecord& property : raw.properties)
            EXPECT_EQ(property.size(), expected.propertyWords);
        for (const RawRecord& method : raw.methods)
            EXPECT_EQ(method.size(), expected.methodWords);
        for (const RawRecord& constant : raw.constants)
            EXPECT_EQ(constant.size(), expected.constantWords);
    }
}

TEST(ClassTables, DeclareTheWholeImageClass) {
    Host host;
    const RawDefinition& image = raw_of(host, "NSImageZNT");
    EXPECT_EQ(image.properties.size(), 24u);
    EXPECT_EQ(image.methods.size(), 46u);
    EXPECT_EQ(image.constants.size(), 9u);
    EXPECT_EQ(image.sharedMethods.size(), 79u);
}

TEST(ClassTables, UseTheOldestLayoutWhenTheHostDoesNotTellItsVersion) {
    Host host{{.without = {"REALGetRBVersion"}}};
    for (const Class* type : plugin_classes(host)) {
        EXPECT_EQ(type->raw->controlVersion, 9);
        EXPECT_EQ(type->raw->words[version], 9);
    }
}

/// Read straight from the memory that the pointers lead to, without the host's own decoding.
TEST(ClassTables, LieInMemoryAsAnOldHostReadsThem) {
    Host host{{.version = 2009.05}};
    const RawDefinition& raw = raw_of(host, "NSImageZNT");
    const auto* const property = reinterpret_cast<const REALword*>(raw.words[properties]);
    EXPECT_EQ(text_at(property[1]), "Handle");
    EXPECT_EQ(text_at(property[10 + 1]), "cacheMode");
    EXPECT_EQ(text_at(property[20 + 1]), "isTemplate");
    EXPECT_EQ(property[20 + 3], 6);
    const auto* const method = reinterpret_cast<const REALword*>(raw.words[methods]);
    EXPECT_EQ(text_at(method[2]), "Constructor");
    EXPECT_EQ(text_at(method[4 + 2]), "Constructor(data as memoryblock)");
    EXPECT_EQ(method[4 + 3], 4);
#if defined(__i386__)
    static_assert(sizeof(REALword) == 4);
#endif
}

TEST(ClassTables, AreNotRegisteredWithoutTheService) {
    Host host{{.without = {"PluginRegisterClass"}}};
    EXPECT_TRUE(plugin_classes(host).empty());
}

TEST(ClassTables, AreRegisteredByAHostThatTakesNoControlVersion) {
    Host host{{.without = {"RegisterPluginVersion"}}};
    EXPECT_EQ(host.lookups("RegisterPluginVersion") > 0, true);
}

TEST(ClassTables, GiveTheConstantsTheirValues) {
    Host host;
    EXPECT_EQ(host.constant<int>("NSImageZNT", "NSImageCacheNever"), 3);
    EXPECT_EQ(host.constant<int>("NSImageZNT", "NSImageLoadStatusReadError"), 4);
    EXPECT_EQ(host.constant<int>("NSImageRepZNT", "NSImageRepMatchesDevice"), 0);
    EXPECT_EQ(host.constant<int>("NSBitmapImageRepZNT", "NSTIFFCompressionOldJPEG"), 32865);
    EXPECT_EQ(host.constant<int>("NSBitmapImageRepZNT", "NSImageRepLoadStatusCompleted"), -6);
    EXPECT_EQ(host.constant<int>("NSBitmapImageRepZNT", "NSImageRepMatchesDevice"), 0)
        << "inherited";
}

TEST(EntryPoint, LooksTheStartUpServicesUpOnceForEachPart) {
    Host host{{.withoutBase = true}};
    EXPECT_EQ(host.lookups("RegisterPluginVersion"), 1);
    EXPECT_EQ(host.lookups("REALGetRBVersion"), 1);
    EXPECT_EQ(host.lookups("PluginRegisterClass"), 1);
    EXPECT_EQ(host.calls("PluginRegisterClass"), 6);
}

TEST(EntryPoint, IsAllThatTheLibraryExports) {
    const std::string command =
        "nm -D --defined-only " + Host::plugin("NSImage") + " | awk '{print $3}'";
    std::FILE* const pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    char output[4096] = {};
    const std::size_t size = std::fread(output, 1, sizeof output - 1, pipe);
    pclose(pipe);
    EXPECT_EQ(std::string(output, size), "REALPluginMain\n");
}

} // namespace
