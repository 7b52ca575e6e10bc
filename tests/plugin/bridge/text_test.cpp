#include "plugin/probe/probe_host.h"

#include <cstdlib>
#include <cstring>

namespace {

/// The text with its NUL.
std::string terminated(std::string text) { return text + '\0'; }

class TextOn {
public:
    explicit TextOn(double version, std::vector<std::string> without = {})
        : host(with_probe(
              {.version = version, .without = std::move(without), .withoutBase = true})) {}

    std::string utf8(const host::Value& text) { return bytes("UTF8", text); }
    std::string known_utf8(const host::Value& text) { return bytes("KnownUTF8", text); }
    bool fails(const host::Value& text, bool isUTF8 = false) {
        return host.shared<bool>("StringProbe", "ConversionFails", text, isUTF8);
    }

    Host host;

private:
    std::string bytes(std::string_view method, const host::Value& text) {
        return host.bytes(host.shared<host::ObjectRef>("StringProbe", method, text));
    }
};

class TextOnEveryHost : public testing::TestWithParam<double> {
protected:
    TextOn probe{GetParam()};
};
// The host converts before 2012.0, and copies the converted bytes out after it.
INSTANTIATE_TEST_SUITE_P(Text, TextOnEveryHost, testing::Values(2009.05, 2011.99, 2012.0, 2013.9));

TEST_P(TextOnEveryHost, IsConvertedToUTF8) {
    EXPECT_EQ(probe.utf8(probe.host.text("gr\x9Fn", REALtextEncodingMacRoman)),
              terminated("gr\xC3\xBCn"));
    EXPECT_EQ(probe.utf8("gr\xC3\xBCn"), terminated("gr\xC3\xBCn"));
}

TEST_P(TextOnEveryHost, IsTakenAsItIsWhenItIsKnownToBeUTF8) {
    EXPECT_EQ(probe.known_utf8(probe.host.text("gr\xC3\xBCn", REALtextEncodingNone)),
              terminated("gr\xC3\xBCn"));
    EXPECT_EQ(probe.host.calls("REALConvertString"), 0);
}

TEST_P(TextOnEveryHost, IsEmptyAndNeverNullForANullString) {
    EXPECT_EQ(probe.utf8(""), terminated(""));
    EXPECT_EQ(probe.known_utf8(""), terminated(""));
    EXPECT_FALSE(probe.fails(""));
}

TEST_P(TextOnEveryHost, GivesEveryReferenceBack) {
    const host::StringRef text = probe.host.text("gr\x9Fn", REALtextEncodingMacRoman);
    probe.utf8(text);
    probe.known_utf8(text);
    EXPECT_EQ(probe.host.references(text), 1);
}

TEST(Text, IsEmptyWhenAnOldHostCannotConvert) {
    TextOn probe(2011.99, {"REALConvertString"});
    EXPECT_EQ(probe.utf8("lost"), terminated(""));
    EXPECT_TRUE(probe.fails("lost"));
    EXPECT_FALSE(probe.fails("kept", true)) << "read in place";
}

TEST(Text, IsEmptyWhenANewHostCannotCopyIt) {
    TextOn probe(2012.0);
    probe.host.fail(REALservices::GetStringData, 2);
    EXPECT_TRUE(probe.fails("lost"));
    EXPECT_TRUE(probe.fails("lost", true));
    EXPECT_EQ(probe.utf8("back"), terminated("back"));
}

std::uint8_t unterminated_data(REALstringStruct*, std::uint32_t encoding, REALstringData* data) {
    data->data = std::malloc(8);
    std::memcpy(data->data, "12345678", 8);
    data->length = 5;
    data->encoding = encoding;
    return 1;
}

void free_data(REALstringData* data) { std::free(data->data); }

TEST(Text, IsTerminatedWhereTheHostDidNot) {
    TextOn probe(2013.9);
    probe.host.replace(REALservices::GetStringData, unterminated_data);
    probe.host.replace(REALservices::DisposeStringData, free_data);
    EXPECT_EQ(probe.utf8("anything"), terminated("12345"));
}

} // namespace
