#include "host/plugins/definitions.h"
#include "host/registered_class.h"
#include "support/host.h"

#include <gmock/gmock.h>

#include <array>

namespace {

using namespace REALservices;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

REALword one(REALobjectStruct*, REALword) { return 1; }
REALword two(REALobjectStruct*, REALword) { return 2; }
REALword add(REALobjectStruct*, REALword value) { return value + 3; }
REALword shared() { return 4; }

REALword word(auto* pointer) { return reinterpret_cast<REALword>(pointer); }

/// The same class by hand in both layouts.
struct NewerRecords {
    std::array<REALword, 24> properties{
        0, word("A"), word("Integer"), 6, word(one), 0, 0, 0, 0, 0, 0, 0, //
        0, word("B"), word("Integer"), 6, word(two), 0, 0, 0, 0, 0, 0, 0};
    std::array<REALword, 6> methods{word(add), 0, word("Add(value As Integer) As Integer"),
                                    4,         0, 0};
    std::array<REALword, 10> constants{word("First=11"),    0, 0, 0, 0, //
                                       word("Second=&h10"), 0, 0, 0, 0};
    std::array<REALword, 6> sharedMethods{word(shared), 0, word("Shared() As Integer"), 132, 0, 0};
    std::array<REALword, 29> definition{12,
                                        word("Sample"),
                                        0,
                                        32,
                                        0,
                                        0,
                                        0,
                                        word(properties.data()),
                                        2,
                                        word(methods.data()),
                                        1,
                                        0,
                                        0,
                                        0,
                                        0,
                                        0,
                                        0,
                                        0,
                                        word(constants.data()),
                                        2,
                                        4,
                                        0,
                                        0,
                                        word(sharedMethods.data()),
                                        1,
                                        0,
                                        0,
                                        0,
                                        0};
};

struct OlderRecords {
    std::array<REALword, 20> properties{
        0, word("A"), word("Integer"), 6, word(one), 0, 0, 0, 0, 0, //
        0, word("B"), word("Integer"), 6, word(two), 0, 0, 0, 0, 0};
    std::array<REALword, 4> methods{word(add), 0, word("Add(value As Integer) As Integer"), 4};
    std::array<REALword, 6> constants{word("First=11"), 0, 0, word("Second=&h10"), 0, 0};
    std::array<REALword, 4> sharedMethods{word(shared), 0, word("Shared() As Integer"), 132};
    std::array<REALword, 25> definition{9,
                                        word("Sample"),
                                        0,
                                        32,
                                        0,
                                        0,
                                        0,
                                        word(properties.data()),
                                        2,
                                        word(methods.data()),
                                        1,
                                        0,
                                        0,
                                        0,
                                        0,
                                        0,
                                        0,
                                        0,
                                        word(constants.data()),
                                        2,
                                        4,
                                        0,
                                        0,
                                        word(sharedMethods.data()),
                                        1};
};

void registerWords(int version, REALword* words) {
    service(RegisterPluginVersion)(version);
    service(RegisterClass)(reinterpret_cast<REALclassDefinition*>(words));
}

template <typename Records>
void expectDecoded(Host& host, const Records& records) {
    const host::Class* const type = host.runtime().findClass("Sample");
    ASSERT_TRUE(type);
    const host::ObjectRef object = host.create("Sample");
    EXPECT_EQ(host.get<int>(object, "A"), 1);
    EXPECT_EQ(host.get<int>(object, "B"), 2);
    EXPECT_EQ(host.call<int>(object, "Add", 10), 13);
    EXPECT_EQ(host.shared<int>("Sample", "Shared"), 4);
    EXPECT_EQ(host.constant<int>("Sample", "First"), 11);
    EXPECT_EQ(host.constant<int>("Sample", "Second"), 16);
    EXPECT_EQ(type->findSharedMethods("Shared").front()->flags, 132);
    EXPECT_EQ(type->dataOffset, sizeof(REALobjectStruct));
    EXPECT_EQ(records.definition[4], static_cast<REALword>(sizeof(REALobjectStruct)))
        << "the system-use word tells the offset of the data";
}

TEST(Records, OfTheNewerLayoutAreDecoded) {
    NewerRecords records;
    Host host{{.version = 2013.9, .bare = true}};
    const auto before = records.definition;
    registerWords(12, records.definition.data());
    expectDecoded(host, records);
    const host::RawDefinition& raw = *host.runtime().findClass("Sample")->raw;
    EXPECT_EQ(raw.controlVersion, 12);
    EXPECT_THAT(raw.words, testing::ElementsAreArray(before));
    EXPECT_EQ(raw.properties[1][1], records.properties[13]);
    EXPECT_THAT(raw.properties, Each(testing::SizeIs(12)));
    EXPECT_THAT(raw.methods, Each(testing::SizeIs(6)));
    EXPECT_THAT(raw.constants, Each(testing::SizeIs(5)));
}

TEST(Records, OfTheOlderLayoutAreDecoded) {
    OlderRecords records;
    Host host{{.version = 2009.05, .bare = true}};
    const auto before = records.definition;
    registerWords(9, records.definition.data());
    expectDecoded(host, records);
    const host::RawDefinition& raw = *host.runtime().findClass("Sample")->raw;
    EXPECT_EQ(raw.controlVersion, 9);
    EXPECT_THAT(raw.words, testing::ElementsAreArray(before));
    EXPECT_EQ(raw.properties[1][1], records.properties[11]);
    EXPECT_THAT(raw.properties, Each(testing::SizeIs(10)));
    EXPECT_THAT(raw.methods, Each(testing::SizeIs(4)));
    EXPECT_THAT(raw.constants, Each(testing::SizeIs(3)));
}

TEST(Records, OfTheOlderLayoutAreReadByANewerHostThatWasToldSo) {
    OlderRecords records;
    Host host{{.version = 2013.9, .bare = true}};
    registerWords(9, records.definition.data());
    expectDecoded(host, records);
}

TEST(Records, SpeakForThemselvesWhereNoVersionCanBeDeclared) {
    OlderRecords records;
    Host host{{.version = 2009.05, .without = {"RegisterPluginVersion"}, .bare = true}};
    service(RegisterClass)(reinterpret_cast<REALclassDefinition*>(records.definition.data()));
    expectDecoded(host, records);
}

TEST(Records, AreNotReadBeforeTheirVersionIsDeclared) {
    NewerRecords records;
    Host host{{.bare = true}};
    service(RegisterClass)(reinterpret_cast<REALclassDefinition*>(records.definition.data()));
    EXPECT_FALSE(host.runtime().findClass("Sample"));
    EXPECT_THAT(host.takeReports(),
                ElementsAre("PluginRegisterClass: no control version was declared before the class "
                            "was registered"));
}

TEST(Records, TellTheNewestVersionThatAHostReads) {
    EXPECT_EQ(host::newestControlVersion(2013.9), 12);
    EXPECT_EQ(host::newestControlVersion(2013.03), 12);
    EXPECT_EQ(host::newestControlVersion(2013.02), 11);
    EXPECT_EQ(host::newestControlVersion(2012.5), 10);
    EXPECT_EQ(host::newestControlVersion(2011.04), 9);
}

/// A definition with one thing wrong, and what the host says of it.
struct Mistake {
    const char* name;
    void (*make)(NewerRecords&);
    const char* report;
    bool isClassKept;
};

void PrintTo(const Mistake& mistake, std::ostream* stream) { *stream << mistake.name; }

class MalformedRecords : public testing::TestWithParam<Mistake> {};

TEST_P(MalformedRecords, AreReported) {
    NewerRecords records;
    GetParam().make(records);
    Host host{{.bare = true}};
    registerWords(12, records.definition.data());
    EXPECT_THAT(host.takeReports(),
                ElementsAre(std::string("PluginRegisterClass: ") + GetParam().report));
    EXPECT_EQ(host.runtime().findClass("Sample") != nullptr, GetParam().isClassKept);
}

INSTANTIATE_TEST_SUITE_P(
    Records, MalformedRecords,
    testing::Values(
        Mistake{"version", [](NewerRecords& it) { it.definition[0] = 11; },
                "the version word is 11, but control version 12 was declared", false},
        Mistake{"nameless", [](NewerRecords& it) { it.definition[1] = 0; },
                "the class has no proper name", false},
        Mistake{"misnamed", [](NewerRecords& it) { it.definition[1] = word("A B"); },
                "the class has no proper name", false},
        Mistake{"superclass", [](NewerRecords& it) { it.definition[2] = word("Unknown"); },
                "class Sample: the superclass Unknown does not exist", false},
        Mistake{"size", [](NewerRecords& it) { it.definition[3] = -4; },
                "class Sample: the instance data size is -4", false},
        Mistake{"count", [](NewerRecords& it) { it.definition[10] = -1; },
                "class Sample: -1 methods", false},
        Mistake{"table", [](NewerRecords& it) { it.definition[7] = 0; },
                "class Sample: 2 properties without a table", false},
        Mistake{"requests", [](NewerRecords& it) { it.methods[3] = 0x40000; },
                "class Sample: the flags of Add(value As Integer) As Integer still hold the "
                "plug-in's own requests",
                true},
        Mistake{"declaration", [](NewerRecords& it) { it.methods[2] = word("Add("); },
                "class Sample: \"Add(\" is no declaration", true},
        Mistake{"function", [](NewerRecords& it) { it.methods[0] = 0; },
                "class Sample: Add(value As Integer) As Integer has no function", true},
        Mistake{"property type", [](NewerRecords& it) { it.properties[2] = word("Not a type"); },
                "class Sample: property A has no proper type", true},
        Mistake{"getter", [](NewerRecords& it) { it.properties[4] = 0; },
                "class Sample: property A has no getter", true},
        Mistake{"field",
                [](NewerRecords& it) {
                    it.properties[4] = it.properties[5] = -1;
                    it.properties[6] = 32;
                },
                "class Sample: property A is no field of the instance data", true},
        Mistake{"constant", [](NewerRecords& it) { it.constants[0] = word("First"); },
                "class Sample: \"First\" is no constant", true}),
    [](const auto& info) {
        std::string name = info.param.name;
        std::erase(name, ' ');
        return name;
    });

TEST(Records, OfAClassThatExistsAreReported) {
    NewerRecords first;
    NewerRecords second;
    Host host{{.bare = true}};
    registerWords(12, first.definition.data());
    registerWords(12, second.definition.data());
    EXPECT_THAT(host.takeReports(), ElementsAre("PluginRegisterClass: class Sample: a class of "
                                                "this name exists already"));
}

TEST(Records, InAConsoleShowOnlyWhatIsSafeThere) {
    NewerRecords records;
    records.methods[3] = 0;
    records.properties[3] = 2;
    Host host{{.console = true, .bare = true}};
    registerWords(12, records.definition.data());
    const host::Class& type = *host.runtime().findClass("Sample");
    EXPECT_THAT(type.findMethods("Add"), IsEmpty());
    EXPECT_FALSE(type.findProperty("A"));
    EXPECT_TRUE(type.findProperty("B"));
    EXPECT_EQ(type.raw->methods.size(), 1u) << "what was handed over stays readable";
}

TEST(Records, OfAnUnsafeClassMakeNoInstancesInAConsole) {
    NewerRecords records;
    records.definition[20] = 0;
    Host host{{.console = true, .bare = true}};
    registerWords(12, records.definition.data());
    EXPECT_EQ(service(NewInstance)("Sample"), nullptr);
}

} // namespace
