#include "plugin/probe/probe_host.h"

namespace {

class StringArrays {
public:
    explicit StringArrays(std::vector<std::string> without = {})
        : host(with_probe({.without = std::move(without), .withoutBase = true})) {}

    host::Value of(int count) { return host.shared("StringProbe", "Strings", count); }

    Host host;
};

TEST(StringArray, HoldsTheStringsInTheirOrderAndEmptyOnesAsNull) {
    StringArrays probe;
    const std::vector<host::Value> elements = probe.host.elements(probe.of(3));
    ASSERT_EQ(elements.size(), 3u);
    EXPECT_EQ(elements[0].utf8(), "text 0");
    EXPECT_EQ(elements[1].string(), nullptr);
    EXPECT_EQ(elements[2].utf8(), "text 2");
}

TEST(StringArray, HoldsTheOnlyReferenceToEachString) {
    StringArrays probe;
    const host::Value array = probe.of(1);
    const host::Value element = probe.host.elements(array).at(0);
    EXPECT_EQ(probe.host.references(*element.get<host::StringRef>()), 2) << "and this test's own";
}

TEST(StringArray, OfAnEmptyListIsEmpty) {
    StringArrays probe;
    EXPECT_TRUE(probe.host.elements(probe.of(0)).empty());
}

TEST(StringArray, AsksForTheInsertProcedureForEachElement) {
    StringArrays probe;
    probe.of(5);
    EXPECT_EQ(probe.host.calls("RuntimeArrayDirectGetInsertProc"), 5);
}

TEST(StringArray, StaysEmptyWhereTheHostDoesNotTellHowToInsert) {
    StringArrays probe({"RuntimeArrayDirectGetInsertProc"});
    EXPECT_TRUE(probe.host.elements(probe.of(3)).empty());
    EXPECT_EQ(probe.host.lookups("RuntimeArrayDirectGetInsertProc"), 3);
}

TEST(StringArray, IsNilWhereTheHostDoesNotMakeArrays) {
    StringArrays probe({"RuntimeArrayCreateSingleDimBoundedArray"});
    EXPECT_TRUE(probe.of(3).isNil());
    EXPECT_TRUE(probe.of(3).isNil());
    EXPECT_EQ(probe.host.lookups("RuntimeArrayCreateSingleDimBoundedArray"), 2);
}

} // namespace
