#include "plugin/probe/probe_host.h"

namespace {

constexpr int asStored = 0xFFFF;
constexpr int utf8 = REALtextEncodingUTF8;
constexpr int utf16 = REALtextEncodingUTF16;
constexpr std::string_view terminator("\0\0\0\0", 4);

/// REALGetStringData, on a host that copies the bytes out itself or on one that does not.
class StringDataOn {
public:
    explicit StringDataOn(std::vector<std::string> without = {})
        : host(with_probe({.without = without, .withoutBase = true})) {}

    /// The bytes without the four zeros behind them; "(none)" when there are none.
    std::string copy(const host::Value& text, int encoding, int lengthOnEntry = 0) {
        const auto block =
            host.shared<host::ObjectRef>("StringProbe", "DataOf", text, encoding, lengthOnEntry);
        if (!block) return "(none)";
        std::string all = host.bytes(block);
        EXPECT_TRUE(all.ends_with(terminator));
        return all.substr(0, all.size() - terminator.size());
    }
    long record(std::string_view field) { return host.shared<long>("StringProbe", field); }

    Host host;
};

const std::vector<std::string> fallback = {"PluginGetStringData"};

TEST(StringData, IsCopiedByAHostThatOffersIt) {
    StringDataOn probe;
    EXPECT_EQ(probe.copy("gr\xC3\xBCn", utf8), "gr\xC3\xBCn");
    EXPECT_EQ(probe.record("DataLength"), 5);
    EXPECT_EQ(probe.host.lookups("PluginGetStringData"), 1);
    EXPECT_EQ(probe.host.lookups("StringGetCString"), 0);
}

TEST(StringData, IsCopiedAsStoredWhereTheHostDoesNot) {
    StringDataOn probe(fallback);
    EXPECT_EQ(probe.copy("gr\xC3\xBCn", asStored), "gr\xC3\xBCn");
    EXPECT_EQ(probe.record("DataLength"), 5);
    EXPECT_EQ(probe.record("DataEncoding"), asStored) << "the encoding that was asked for";
}

TEST(StringData, IsCopiedInItsOwnEncodingWhereTheHostDoesNot) {
    StringDataOn probe(fallback);
    EXPECT_EQ(probe.copy("gr\xC3\xBCn", utf8), "gr\xC3\xBCn");
    EXPECT_EQ(probe.record("DataEncoding"), utf8);
    EXPECT_EQ(probe.host.calls("REALConvertString"), 0);
}

TEST(StringData, IsConvertedWhereTheHostDoesNot) {
    StringDataOn probe(fallback);
    EXPECT_EQ(probe.copy(probe.host.text("gr\x9Fn", REALtextEncodingMacRoman), utf8),
              "gr\xC3\xBCn");
    EXPECT_EQ(probe.record("DataLength"), 5);
    EXPECT_EQ(probe.record("DataEncoding"), utf8);
}

TEST(StringData, KeepsTheConvertedStringNoLongerThanTheCopy) {
    StringDataOn probe(fallback);
    const host::StringRef text = probe.host.text("ab");
    EXPECT_EQ(probe.copy(text, utf16), std::string("a\0b\0", 4));
    EXPECT_EQ(probe.host.references(text), 1);
}

TEST(StringData, IsNoneForANullStringAndLeavesTheRecordAlone) {
    StringDataOn probe(fallback);
    EXPECT_EQ(probe.copy("", asStored, 99), "(none)");
    EXPECT_EQ(probe.record("DataLength"), 99);
    EXPECT_EQ(probe.record("DataEncoding"), 4711);
}

/// The buffer follows the length that the record had before, not the string's.
TEST(StringData, AsStoredHasRoomForTheLengthThatTheRecordHadOnEntry) {
    StringDataOn probe(fallback);
    EXPECT_EQ(probe.copy("ab", asStored, 5000), "ab");
    EXPECT_GE(probe.record("DataCapacity"), 5004);
    EXPECT_EQ(probe.copy("ab", utf8, 5000), "ab");
    EXPECT_LT(probe.record("DataCapacity"), 5004) << "in an encoding it follows the string";
}

TEST(StringData, AsStoredNeverOverflowsAnEntryLengthThatIsTooSmall) {
    StringDataOn probe(fallback);
    const std::string text(100000, 'x');
    EXPECT_EQ(probe.copy(text, asStored, 0), text);
}

struct MissingService {
    const char* service;
    const char* copied;
};

void PrintTo(const MissingService& missing, std::ostream* stream) { *stream << missing.service; }

class CopyingWithout : public testing::TestWithParam<MissingService> {};
INSTANTIATE_TEST_SUITE_P(StringData, CopyingWithout,
                         testing::Values(MissingService{"StringGetCString", "(none)"},
                                         MissingService{"REALLoadGlobalMethod", "(none)"},
                                         MissingService{"REALConvertString", "(none)"},
                                         MissingService{"PluginDisposeStringData", "gr\xC3\xBCn"}));

TEST_P(CopyingWithout, AServiceOfTheFallbackGivesNoneAndLooksItUpAgain) {
    StringDataOn probe({"PluginGetStringData", GetParam().service});
    const host::StringRef text = probe.host.text("gr\x9Fn", REALtextEncodingMacRoman);
    for (int i = 1; i <= 2; ++i) {
        EXPECT_EQ(probe.copy(text, utf8), GetParam().copied);
        EXPECT_EQ(probe.host.lookups(GetParam().service), i);
        EXPECT_EQ(probe.host.lookups("PluginGetStringData"), i);
    }
}

TEST(StringData, CountsTheBytesWithTheHostLanguagesOwnFunctionLoadedOnce) {
    StringDataOn probe(fallback);
    probe.copy("ab", asStored);
    probe.copy("abc", asStored);
    EXPECT_EQ(probe.host.calls("REALLoadGlobalMethod"), 1);
}

} // namespace
