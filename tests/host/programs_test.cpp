#include "support/host.h"

namespace {

TEST(Programs, RunInAHostOfATest) {
    Host host{{.bare = true}};
    const Host::Outcome outcome = host.run("Print Arguments(0)\nPrint \"two\"", {"one"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "one\ntwo\n");
    EXPECT_EQ(outcome.error, "");
}

TEST(Programs, TellWhereTheyFail) {
    Host host{{.bare = true}};
    const Host::Outcome outcome = host.run("Print \"before\"\n"
                                           "Raise New IOException(\"no disk\")\n"
                                           "Print \"after\"");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "before\n");
    EXPECT_EQ(outcome.error, "program.bas:2: IOException: no disk\n");
}

} // namespace
