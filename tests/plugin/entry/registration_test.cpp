#include "plugin/probe/probe_host.h"

#include <iomanip>

namespace {

using host::RawDefinition;
using host::RawRecord;

const RawDefinition& flag_probe(Host& host) { return *host.runtime().findClass("FlagProbe")->raw; }

REALword flags_of(const std::vector<RawRecord>& methods, std::string_view name) {
    for (const RawRecord& method : methods)
        if (reinterpret_cast<const char*>(method[2]) == name) return method[3];
    ADD_FAILURE() << "no method " << name;
    return -1;
}

struct Flags {
    double version;
    REALword classFlags, console, flag8, every, property;
};

void PrintTo(const Flags& flags, std::ostream* stream) {
    *stream << std::setprecision(8) << flags.version;
}

class ConsoleFlags : public testing::TestWithParam<Flags> {};
INSTANTIATE_TEST_SUITE_P(FixConsoleFlags, ConsoleFlags,
                         testing::Values(Flags{2009.05, 0, 0, 0, 0x80, 2},
                                         Flags{2010.0289, 0, 0, 0, 0x80, 2},
                                         Flags{2010.029, 12, 4, 8, 0x8C, 6},
                                         Flags{2013.9, 12, 4, 8, 0x8C, 6}));

TEST_P(ConsoleFlags, ResolveTheRequestsByTheHostsVersion) {
    const Flags& expected = GetParam();
    Host host{with_probe({.version = expected.version, .withoutBase = true})};
    const RawDefinition& raw = flag_probe(host);
    EXPECT_EQ(raw.words[20], expected.classFlags);
    EXPECT_EQ(flags_of(raw.methods, "Plain"), 4);
    EXPECT_EQ(flags_of(raw.methods, "ConsoleOnNewHosts"), expected.console);
    EXPECT_EQ(flags_of(raw.methods, "Flag8OnNewHosts"), expected.flag8);
    EXPECT_EQ(flags_of(raw.methods, "Reserved"), 0);
    EXPECT_EQ(flags_of(raw.methods, "EveryRequest"), expected.every);
    EXPECT_EQ(flags_of(raw.sharedMethods, "SharedConsoleOnNewHosts"), expected.console);
    EXPECT_EQ(raw.properties.at(0)[3], expected.property);
    EXPECT_EQ(raw.sharedProperties.at(0)[3], expected.property);
}

TEST(Registration, RoundsTheInstanceDataUpToSixteenBytes) {
    Host host{with_probe({.withoutBase = true})};
    EXPECT_EQ(flag_probe(host).words[3], 32) << "of 17 bytes";
}

TEST(Registration, HandsNewHostsTheWholeRecords) {
    Host host{with_probe({.version = 2012.0, .withoutBase = true})};
    const RawDefinition& raw = flag_probe(host);
    EXPECT_EQ(raw.properties.at(0).at(10), 0x1111);
    EXPECT_EQ(raw.properties.at(0).at(11), 0x2222);
    EXPECT_EQ(raw.sharedProperties.at(0).at(11), 0x2222);
}

/// Each list is packed in the shorter records, so that an old host finds its second element.
TEST(Registration, ConvertsEveryListForOldHosts) {
    Host host{with_probe({.version = 2011.04, .withoutBase = true})};
    const RawDefinition& raw = flag_probe(host);
    ASSERT_EQ(raw.words.size(), 25u);
    const auto* const methods = reinterpret_cast<const REALword*>(raw.words[9]);
    EXPECT_STREQ(reinterpret_cast<const char*>(methods[4 + 2]), "ConsoleOnNewHosts");
    const auto* const constants = reinterpret_cast<const REALword*>(raw.words[18]);
    EXPECT_STREQ(reinterpret_cast<const char*>(constants[0]), "Answer=42");
    const auto* const events = reinterpret_cast<const REALword*>(raw.words[11]);
    EXPECT_STREQ(reinterpret_cast<const char*>(events[0]), "Happened(what as String)");
    EXPECT_STREQ(reinterpret_cast<const char*>(events[2]), "Ended");
    const auto* const sharedProperties = reinterpret_cast<const REALword*>(raw.words[21]);
    EXPECT_STREQ(reinterpret_cast<const char*>(sharedProperties[1]), "SharedAsking");
    EXPECT_EQ(raw.words[16], 0) << "no bindings";
    EXPECT_EQ(raw.words[17], 0);
}

} // namespace
