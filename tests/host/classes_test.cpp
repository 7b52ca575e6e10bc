#include "host/registered_class.h"
#include "support/host.h"

#include <gmock/gmock.h>

namespace {

using namespace REALservices;
using REALtables::method;
using REALtables::shared_method;
using testing::ElementsAre;

std::vector<std::string> journal;

void baseConstructor(REALobjectStruct*) { journal.emplace_back("base made"); }
void baseDestructor(REALobjectStruct*) { journal.emplace_back("base gone"); }
void derivedConstructor(REALobjectStruct*) { journal.emplace_back("derived made"); }
void derivedDestructor(REALobjectStruct*) { journal.emplace_back("derived gone"); }

REALword baseName(REALobjectStruct*) { return 1; }
REALword derivedName(REALobjectStruct*) { return 2; }
REALword byNumber(REALobjectStruct*, double) { return 3; }
REALword byText(REALobjectStruct*, REALstringStruct*) { return 4; }
REALword byBlock(REALobjectStruct*, REALmemoryBlockStruct*) { return 5; }
REALword byDefaults(REALobjectStruct*, REALword a, double b, REALstringStruct* c,
                    REALmemoryBlockStruct* d) {
    return a * 100 + static_cast<REALword>(b * 10) +
           static_cast<REALword>(host::bytesOf(c).size()) + (d ? 1000 : 0);
}
void construct(REALobjectStruct*) { journal.emplace_back("Constructor()"); }
void constructWith(REALobjectStruct*, REALword) { journal.emplace_back("Constructor(number)"); }

class Classes : public testing::Test {
protected:
    Classes() {
        journal.clear();
        base.registerAs();
        derived.registerAs();
    }

    ClassTables base{
        {.name = "Base",
         .instanceDataSize = 16,
         .constructor = baseConstructor,
         .destructor = baseDestructor},
        {REALtables::field("First", "Integer")},
        {
            method("Name() As Integer", baseName),
            method("Pick(value As Double) As Integer", byNumber),
            method("Pick(value As MemoryBlock) As Integer", byBlock),
            method("Fill(a As Integer, b As Double = 0.5, c As String = \"xyz\", d As MemoryBlock "
                   "= nil) As Integer",
                   byDefaults),
            method("Constructor", construct),
        },
        {},
        {REALtables::constant("Limit=5")}};
    ClassTables derived{{.name = "Derived",
                         .superclass = "Base",
                         .instanceDataSize = 16,
                         .constructor = derivedConstructor,
                         .destructor = derivedDestructor},
                        {REALtables::field("Second", "Integer")},
                        {
                            method("Name() As Integer", derivedName),
                            method("Pick(value As String) As Integer", byText),
                            method("Constructor(number As Integer)", constructWith),
                        }};
    Host host{{.bare = true}};
};

TEST_F(Classes, MakeTheBaseFirstAndDestroyItLast) {
    host.instance("Derived");
    EXPECT_THAT(journal, ElementsAre("base made", "derived made", "derived gone", "base gone"));
}

TEST_F(Classes, LieBehindTheirSuperclassInAnInstance) {
    const auto offset = [](const ClassTables& tables) {
        return static_cast<std::size_t>(tables.definition.systemUse);
    };
    EXPECT_EQ(offset(base), sizeof(REALobjectStruct));
    EXPECT_EQ(offset(derived), sizeof(REALobjectStruct) +
                                   4 * sizeof(REALword) *
                                       ((16 + 4 * sizeof(REALword) - 1) / (4 * sizeof(REALword))));
    const host::ObjectRef object = host.instance("Derived");
    host.set(object, "First", 11);
    host.set(object, "Second", 22);
    EXPECT_EQ(host.get<int>(object, "First"), 11);
    EXPECT_EQ(*reinterpret_cast<REALword*>(reinterpret_cast<char*>(object.get()) + offset(derived)),
              22);
}

TEST_F(Classes, StartWithZeroedData) {
    EXPECT_EQ(host.get<int>(host.instance("Derived"), "Second"), 0);
}

TEST_F(Classes, OverrideMethodsWithTheSameParameters) {
    EXPECT_EQ(host.call<int>(host.instance("Base"), "Name"), 1);
    EXPECT_EQ(host.call<int>(host.instance("Derived"), "NAME"), 2);
}

TEST_F(Classes, InheritMembersAndOverloads) {
    const host::ObjectRef object = host.instance("Derived");
    EXPECT_EQ(host.call<int>(object, "Pick", 1.5), 3);
    EXPECT_EQ(host.call<int>(object, "Pick", "text"), 4);
    EXPECT_EQ(host.call<int>(object, "Pick", host.memoryBlock("x")), 5);
    EXPECT_EQ(host.constant<int>("Derived", "limit"), 5);
}

TEST_F(Classes, PickTheOverloadThatConvertsLeast) {
    const host::ObjectRef object = host.instance("Base");
    EXPECT_EQ(host.call<int>(object, "Pick", 1), 3);
    EXPECT_EQ(host.call<int>(object, "Pick", nullptr), 5) << "Nil is an object";
    EXPECT_EQ(host.call<int>(object, "Pick", "text"), 5) << "text converts to a MemoryBlock";
}

TEST_F(Classes, FillDefaultsIn) {
    const host::ObjectRef object = host.instance("Base");
    EXPECT_EQ(host.call<int>(object, "Fill", 2), 208);
    EXPECT_EQ(host.call<int>(object, "Fill", 2, 0.0, "", host.memoryBlock("x")), 1200);
}

TEST_F(Classes, RunTheNearestConstructors) {
    host.create("Derived", 1);
    EXPECT_THAT(journal, testing::Contains("Constructor(number)"));
    journal.clear();
    host.create("Base");
    EXPECT_THAT(journal, testing::Contains("Constructor()"));
    const host::Class& type = *host.runtime().findClass("Derived");
    EXPECT_THROW(host.runtime().construct(type), host::CallError);
}

TEST_F(Classes, NameTheArgumentsThatNoOverloadTakes) {
    const auto candidates = host.runtime().findClass("Base")->findMethods("Pick");
    const std::vector<host::Value> arguments{host.folderItem("/"), 1.0};
    try {
        host::overloadFor("Pick", candidates, arguments);
        FAIL() << "an overload was found";
    } catch (const host::CallError& error) {
        EXPECT_STREQ(error.what(), "Pick does not take (FolderItem, Double)");
    }
}

TEST_F(Classes, ReportADestructorThatKeepsItsObject) {
    ClassTables keeping{{.name = "Keeping", .destructor = [](REALobjectStruct* object) {
                             service(LockObject)(object);
                         }}};
    keeping.registerAs();
    host.instance("Keeping");
    EXPECT_THAT(host.takeReports(), ElementsAre("the destructor of Keeping left the object with 1 "
                                                "reference"));
}

TEST_F(Classes, AllowADestructorToHandItsObjectAround) {
    ClassTables lending{{.name = "Lending", .destructor = [](REALobjectStruct* object) {
                             service(LockObject)(object);
                             service(UnlockObject)(object);
                         }}};
    lending.registerAs();
    host.instance("Lending");
    EXPECT_EQ(host.instances("Lending"), 0u);
}

TEST_F(Classes, AreListedInTheOrderOfTheirRegistration) {
    const auto& classes = host.runtime().classes();
    ASSERT_GE(classes.size(), 2u);
    EXPECT_EQ(classes[classes.size() - 2]->name(), "Base");
    EXPECT_EQ(classes.back()->name(), "Derived");
}

} // namespace
