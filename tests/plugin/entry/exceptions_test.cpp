#include "plugin/probe/probe_host.h"

namespace {

class RaisedExceptions : public testing::Test {
protected:
    void raise(std::string_view className, std::string_view message, int number = 0) {
        host.shared("ExceptionProbe", "Raise", className, message, number);
    }
    void raise_out_of_bounds(std::int64_t value, std::int64_t lower, std::int64_t count,
                             std::string_view method) {
        host.shared("ExceptionProbe", "RaiseOutOfBounds", value, lower, count, method);
    }

    Host host{with_probe({.withoutBase = true})};
};

TEST_F(RaisedExceptions, AreOfTheNamedClassAndCarryTheMessage) {
    raise("OutOfBoundsException", "a message");
    EXPECT_EQ(host.raised(), "OutOfBoundsException: a message");
}

TEST_F(RaisedExceptions, CarryTheErrorNumber) {
    raise("IOException", "no file", -43);
    const host::ObjectRef exception = host.takeRaised();
    ASSERT_TRUE(exception);
    EXPECT_EQ(host.get<int>(exception, "ErrorNumber"), -43);
}

TEST_F(RaisedExceptions, TagTheirMessageAsASCII) {
    raise("IOException", "no file");
    const host::ObjectRef exception = host.takeRaised();
    ASSERT_TRUE(exception);
    const host::Value message = host.get(exception, "Message");
    ASSERT_NE(message.string(), nullptr);
    EXPECT_EQ(message.get<host::StringRef>()->encoding(), 0x0600u);
}

TEST_F(RaisedExceptions, FallBackToRuntimeExceptionWithTheSameMessage) {
    raise("NoSuchException", "still told");
    EXPECT_EQ(host.raised(), "RuntimeException: still told");
}

TEST_F(RaisedExceptions, NeedNeitherClassNameNorMessage) {
    raise("", "");
    EXPECT_EQ(host.raised(), "RuntimeException: ");
}

TEST_F(RaisedExceptions, AreGivenBackWhenTheHostDropsThem) {
    raise("IOException", "gone");
    host.takeRaised();
    EXPECT_EQ(host.instances("IOException"), 0u);
}

TEST_F(RaisedExceptions, TellAValueBelowTheRange) {
    raise_out_of_bounds(-1, 0, 3, "RepresentationWidth");
    EXPECT_EQ(host.raised(),
              "OutOfBoundsException: Parameter index to method RepresentationWidth is too small. "
              "Range is 0 to 2, but value is -1.");
}

TEST_F(RaisedExceptions, TellAValueAboveTheRange) {
    raise_out_of_bounds(3, 0, 3, "RepresentationWidth");
    EXPECT_EQ(host.raised(),
              "OutOfBoundsException: Parameter index to method RepresentationWidth is too big. "
              "Range is 0 to 2, but value is 3.");
}

TEST_F(RaisedExceptions, TellAnEmptyRange) {
    raise_out_of_bounds(0, 0, 0, "RepresentationHeight");
    EXPECT_EQ(host.raised(),
              "OutOfBoundsException: Parameter index to method RepresentationHeight is too big. "
              "Range is 0 to -1, but value is 0.");
}

TEST_F(RaisedExceptions, TellAnUnknownMethodAndTheLargestNumbers) {
    raise_out_of_bounds(INT64_MIN, INT64_MAX, INT64_MAX, "");
    EXPECT_EQ(host.raised(), "OutOfBoundsException: Parameter index to method ? is too small. "
                             "Range is 9223372036854775807 to 9223372036854775806, but value is "
                             "-9223372036854775808.");
}

struct MissingService {
    const char* service;
    const char* raised;
};

void PrintTo(const MissingService& missing, std::ostream* stream) { *stream << missing.service; }

class RaisingWithout : public testing::TestWithParam<MissingService> {};
INSTANTIATE_TEST_SUITE_P(
    RaisedExceptions, RaisingWithout,
    testing::Values(MissingService{"REALBuildString", "IOException: "},
                    MissingService{"REALSetStringEncoding", "IOException: no file"},
                    MissingService{"PluginNewInstance", ""},
                    MissingService{"REALSetPropValueString", "IOException: "},
                    MissingService{"REALSetPropValueInt", "IOException: no file"},
                    MissingService{"RuntimeRaiseException", ""}));

TEST_P(RaisingWithout, AServiceSkipsItsStepAndLooksItUpAgainEachTime) {
    const MissingService& missing = GetParam();
    Host host{with_probe({.without = {missing.service}, .withoutBase = true})};
    const int before = host.lookups(missing.service);
    for (int i = 0; i < 3; ++i) {
        host.shared("ExceptionProbe", "Raise", "IOException", "no file", 7);
        EXPECT_EQ(host.raised(), missing.raised);
    }
    // An instance is asked for twice: of the named class, then of RuntimeException.
    const int lookupsEachTime = std::string_view(missing.service) == "PluginNewInstance" ? 2 : 1;
    EXPECT_EQ(host.lookups(missing.service) - before, 3 * lookupsEachTime);
}

TEST(RaisingAnException, LooksEachServiceUpOnce) {
    Host host{with_probe({.withoutBase = true})};
    for (int i = 0; i < 3; ++i) {
        host.shared("ExceptionProbe", "Raise", "IOException", "no file", 7);
        host.takeRaised();
    }
    for (const char* service :
         {"REALBuildString", "REALSetStringEncoding", "PluginNewInstance", "REALSetPropValueString",
          "REALSetPropValueInt", "RuntimeRaiseException", "REALUnlockObject", "REALUnlockString"})
        EXPECT_EQ(host.lookups(service), 1) << service;
}

} // namespace
