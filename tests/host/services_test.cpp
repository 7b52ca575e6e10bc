#include "host/called_services.h"
#include "support/host.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace REALservices;
using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

std::vector<std::string_view> listedServices() {
    std::vector<std::string_view> names;
#define APPEND_NAME(identifier, name, result, parameters) names.emplace_back(name);
    REAL_HOST_SERVICES(APPEND_NAME)
#undef APPEND_NAME
    return names;
}

TEST(Services, OfTheInterfaceAreEachOfferedOrForLater) {
    std::vector<std::string_view> known = host::Services::offered(2013.9);
    std::ranges::copy(host::Services::later(), std::back_inserter(known));
    EXPECT_THAT(known, UnorderedElementsAreArray(listedServices()));
}

TEST(Services, ThatAreOfferedHaveAddressesOfTheirOwn) {
    Host host{{.bare = true}};
    std::vector<void*> addresses;
    for (const std::string_view name : host::Services::offered(2013.9))
        addresses.push_back(host::Services::resolve(std::string(name).c_str()));
    EXPECT_THAT(addresses, testing::Not(testing::Contains(nullptr)));
    std::ranges::sort(addresses);
    EXPECT_EQ(std::ranges::adjacent_find(addresses), addresses.end());
}

TEST(Services, ForLaterAndUnknownOnesAreNotFound) {
    Host host{{.bare = true}};
    EXPECT_EQ(host::Services::resolve("REALBuildPictureFromBuffer"), nullptr);
    EXPECT_EQ(host::Services::resolve("NoSuchService"), nullptr);
    EXPECT_EQ(host::Services::resolve("reallockobject"), nullptr) << "names are exact";
}

TEST(Services, OfNewerHostsAreMissingInOlderOnes) {
    Host host{{.version = 2011.04, .bare = true}};
    EXPECT_EQ(host::Services::resolve("PluginGetStringData"), nullptr);
    EXPECT_EQ(host::Services::resolve("PluginDisposeStringData"), nullptr);
    EXPECT_NE(host::Services::resolve("REALGetStringCFString"), nullptr);
}

TEST(Services, CanBeLeftOutFromTheStart) {
    Host host{{.without = {"REALBuildString"}, .bare = true}};
    EXPECT_EQ(host::Services::resolve("REALBuildString"), nullptr);
    EXPECT_NE(host::Services::resolve("REALLockString"), nullptr);
}

TEST(Services, ThatAreLeftOutMustExist) {
    EXPECT_THROW(host::Runtime({.without = {"REALBuildStrings"}}), std::invalid_argument);
}

TEST(Services, CountTheirLookupsAlsoWhenTheyAreMissing) {
    Host host{{.without = {"REALBuildString"}, .bare = true}};
    for (int i = 0; i < 3; ++i)
        host::Services::resolve("REALBuildString");
    host.offer("REALBuildString");
    EXPECT_NE(host::Services::resolve("REALBuildString"), nullptr);
    EXPECT_EQ(host.lookups("REALBuildString"), 4);
    EXPECT_EQ(host.lookups("REALLockString"), 0);
}

TEST(Services, CountTheirCalls) {
    Host host{{.bare = true}};
    service(YieldToRB)();
    service(YieldToRB)();
    EXPECT_EQ(host.calls("REALYieldToRB"), 2);
    EXPECT_EQ(host.runtime().yields, 2u);
}

TEST(Services, FailAsOftenAsTold) {
    Host host{{.bare = true}};
    auto* const newBlock = service(NewMemoryBlock);
    host.fail(NewMemoryBlock, 2);
    EXPECT_EQ(newBlock(4), nullptr);
    EXPECT_EQ(newBlock(4), nullptr);
    EXPECT_TRUE(host::ObjectRef::adopt(newBlock(4)));
}

TEST(Services, CanBeReplacedBehindTheirAddress) {
    Host host{{.bare = true}};
    auto* const isDebugging = service(InDebugMode);
    EXPECT_EQ(isDebugging(), 0);
    host.replace(InDebugMode, [] { return std::uint8_t{1}; });
    EXPECT_EQ(isDebugging(), 1);
    host.replace(InDebugMode, nullptr);
    EXPECT_EQ(isDebugging(), 0);
}

TEST(Services, TellTheHostsVersion) {
    Host host{{.version = 2010.5, .bare = true}};
    EXPECT_EQ(service(GetRBVersion)(), 2010.5);
}

TEST(Services, TakeTheControlVersionsThatTheHostReads) {
    Host host{{.version = 2012.5, .bare = true}};
    service(RegisterPluginVersion)(10);
    EXPECT_EQ(host.runtime().controlVersion, 10);
    service(RegisterPluginVersion)(11);
    service(RegisterPluginVersion)(8);
    EXPECT_EQ(host.runtime().controlVersion, 10);
    EXPECT_THAT(host.takeReports(),
                ElementsAre("RegisterPluginVersion: control version 11 is not one of 9 to 10",
                            "RegisterPluginVersion: control version 8 is not one of 9 to 10"));
}

TEST(Services, ShowMessages) {
    Host host{{.bare = true}};
    service(MessageBox)(host.text("caf\x8e", REALtextEncodingMacRoman).get());
    EXPECT_THAT(host.runtime().messages, ElementsAre("café"));
}

TEST(Services, FindTheApplicationClassOfTheKindOfHost) {
    {
        Host host{{.bare = true}};
        EXPECT_NE(service(GetClassRef)("Application"), nullptr);
        EXPECT_EQ(service(GetClassRef)("ConsoleApplication"), nullptr);
    }
    Host host{{.console = true, .bare = true}};
    EXPECT_EQ(service(GetClassRef)("Application"), nullptr);
    EXPECT_NE(service(GetClassRef)("ConsoleApplication"), nullptr);
    EXPECT_EQ(service(GetClassRef)("WebApplication"), nullptr);
}

TEST(Services, TestObjectsForTheirClasses) {
    Host host{{.bare = true}};
    const host::ObjectRef exception = host.create("IOException");
    const auto isA = [&](const char* name) {
        return service(ObjectIsA)(exception.get(), service(GetClassRef)(name));
    };
    EXPECT_EQ(isA("IOException"), 1);
    EXPECT_EQ(isA("runtimeexception"), 1);
    EXPECT_EQ(isA("Object"), 1);
    EXPECT_EQ(isA("MemoryBlock"), 0);
    EXPECT_EQ(isA("NoSuchClass"), 0);
    EXPECT_EQ(service(ObjectIsA)(nullptr, service(GetClassRef)("Object")), 0);
}

TEST(Services, MakeInstancesByName) {
    Host host{{.bare = true}};
    const auto block = host::ObjectRef::adopt(service(NewInstance)("memoryblock"));
    ASSERT_TRUE(block);
    EXPECT_EQ(host.references(block), 1);
    EXPECT_EQ(service(NewInstance)("NoSuchClass"), nullptr);
    EXPECT_EQ(service(NewInstance)("Application"), nullptr);
    EXPECT_EQ(service(NewInstance)(nullptr), nullptr);
}

TEST(Services, RaiseExceptionsAndNothingElse) {
    Host host{{.bare = true}};
    {
        const host::ObjectRef exception = host.create("IOException", "why");
        service(RaiseException)(exception.get());
        EXPECT_EQ(host.references(exception), 2) << "the host keeps the exception";
    }
    EXPECT_STREQ(host::Raised(host.runtime().takePending()).what(), "IOException: why");
    const host::ObjectRef block = host.memoryBlock("x");
    service(RaiseException)(block.get());
    EXPECT_FALSE(host.runtime().hasPending());
    EXPECT_EQ(host.takeReports().front(), "RuntimeRaiseException: argument 1: MemoryBlock where "
                                          "RuntimeException is expected");
}

} // namespace
