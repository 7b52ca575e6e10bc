#include "plugin/probe/probe_host.h"

namespace {

std::string bytes_of_units(std::u16string_view units) {
    return {reinterpret_cast<const char*>(units.data()), units.size() * sizeof(char16_t)};
}

std::u16string units_of_bytes(const std::string& bytes) {
    return {reinterpret_cast<const char16_t*>(bytes.data()), bytes.size() / sizeof(char16_t)};
}

class StringsOn {
public:
    explicit StringsOn(double version = 2013.9, std::vector<std::string> without = {})
        : host(with_probe(
              {.version = version, .without = std::move(without), .withoutBase = true})) {}

    /// The string in Cocoa; a mark for none at all.
    std::u16string to_cocoa(const host::Value& text) {
        const auto block = host.shared<host::ObjectRef>("StringProbe", "UnitsOf", text);
        return block ? units_of_bytes(host.bytes(block)) : u"(none)";
    }
    host::Value to_host(std::u16string_view units) {
        return host.shared("StringProbe", "StringOf", host.memoryBlock(bytes_of_units(units)));
    }

    Host host;
};

const std::vector<std::string> withoutCFStrings = {"REALGetStringCFString"};

// To Cocoa

TEST(HostStringToCocoa, GivesNothingForANullString) {
    StringsOn probe;
    EXPECT_EQ(probe.to_cocoa(""), u"(none)");
}

TEST(HostStringToCocoa, TakesTheHostsOwnConversionWhenThereIsOne) {
    StringsOn probe;
    EXPECT_EQ(probe.to_cocoa("gr\xC3\xBCn"), u"gr\u00FCn");
    EXPECT_EQ(probe.host.calls("REALGetStringCFString"), 1);
    EXPECT_EQ(probe.host.calls("PluginGetStringData"), 0);
}

TEST(HostStringToCocoa, AsksANewHostTwiceBeforeItConvertsItself) {
    StringsOn probe(2012.0);
    probe.host.fail(REALservices::GetStringCFString, 2);
    EXPECT_EQ(probe.to_cocoa("gr\xC3\xBCn"), u"gr\u00FCn");
    EXPECT_EQ(probe.host.calls("REALGetStringCFString"), 2);
    probe.host.fail(REALservices::GetStringCFString, 1);
    EXPECT_EQ(probe.to_cocoa("gr\xC3\xBCn"), u"gr\u00FCn") << "from the second slot";
    EXPECT_EQ(probe.host.calls("REALGetStringCFString"), 4);
}

TEST(HostStringToCocoa, AsksAnOldHostOnce) {
    StringsOn probe(2011.04);
    probe.host.fail(REALservices::GetStringCFString, 1);
    EXPECT_EQ(probe.to_cocoa("gr\xC3\xBCn"), u"gr\u00FCn");
    EXPECT_EQ(probe.host.calls("REALGetStringCFString"), 1);
}

TEST(HostStringToCocoa, LooksAMissingConversionUpForEachSlotAtEachUse) {
    StringsOn probe(2013.9, withoutCFStrings);
    probe.to_cocoa("a");
    probe.to_cocoa("b");
    EXPECT_EQ(probe.host.lookups("REALGetStringCFString"), 4);
}

class OwnConversion : public testing::TestWithParam<double> {
protected:
    StringsOn probe{GetParam(), withoutCFStrings};
};
// In place up to 2013.0, copied out after it.
INSTANTIATE_TEST_SUITE_P(HostStringToCocoa, OwnConversion,
                         testing::Values(2009.05, 2012.0, 2013.0, 2013.01, 2013.9));

TEST_P(OwnConversion, ReadsUTF8) {
    EXPECT_EQ(probe.to_cocoa("gr\xC3\xBCn \xF0\x9F\x8C\xB2"), u"gr\u00FCn \U0001F332");
}

TEST_P(OwnConversion, ReadsBytesOfNoEncodingAsMacRoman) {
    EXPECT_EQ(probe.to_cocoa(probe.host.text("gr\x9Fn", REALtextEncodingNone)), u"gr\u00FCn");
}

TEST_P(OwnConversion, ReadsUTF16AsHalfAsManyUnits) {
    const std::string bytes("\xFC\x00\x32\xD8\x00\xDC", 6);
    EXPECT_EQ(probe.to_cocoa(probe.host.text(bytes, REALtextEncodingUTF16)), u"\u00FC\xD832\xDC00");
    EXPECT_EQ(probe.to_cocoa(probe.host.text(bytes.substr(0, 3), REALtextEncodingUTF16)), u"\u00FC")
        << "an odd byte is left out";
}

TEST_P(OwnConversion, GivesNothingForBytesThatAreNotInTheirEncoding) {
    EXPECT_EQ(probe.to_cocoa(probe.host.text("\xC3(", REALtextEncodingUTF8)), u"(none)");
}

TEST_P(OwnConversion, KeepsNoReferenceToTheString) {
    const host::StringRef text = probe.host.text("kept once");
    probe.to_cocoa(text);
    EXPECT_EQ(probe.host.references(text), 1);
}

TEST(HostStringToCocoa, GivesNothingWhenANewHostDoesNotCopyTheBytesOut) {
    StringsOn probe(2013.9, withoutCFStrings);
    probe.host.fail(REALservices::GetStringData, 1);
    EXPECT_EQ(probe.to_cocoa("lost"), u"(none)");
}

TEST(HostStringToCocoa, ReadsAStringOfUnknownEncodingAsMacRomanWhenTheHostDoesNotTellIt) {
    StringsOn probe(2013.9, {"REALGetStringCFString", "REALGetStringEncoding"});
    EXPECT_EQ(probe.to_cocoa(probe.host.text("gr\x9Fn")), u"gr\u00FCn");
}

// To the host

class CocoaStringToHost : public testing::Test {
protected:
    std::string text_of(std::u16string_view units) { return probe.to_host(units).utf8(); }

    StringsOn probe;
};

TEST_F(CocoaStringToHost, GivesTheNullStringForNothingAndForAnEmptyString) {
    EXPECT_EQ(probe.host.shared("StringProbe", "StringOf", nullptr).string(), nullptr);
    EXPECT_EQ(probe.to_host(u"").string(), nullptr);
}

TEST_F(CocoaStringToHost, TagsEveryStringAsUTF8) {
    const host::Value text = probe.to_host(u"gr\u00FCn \U0001F332");
    ASSERT_NE(text.get<host::StringRef>(), nullptr);
    EXPECT_EQ(text.get<host::StringRef>()->bytes(), "gr\xC3\xBCn \xF0\x9F\x8C\xB2");
    EXPECT_EQ(text.get<host::StringRef>()->encoding(), 0x08000100u);
    EXPECT_EQ(probe.host.references(*text.get<host::StringRef>()), 1);
}

TEST_F(CocoaStringToHost, ConvertsTheLongestShortAndTheShortestLongString) {
    for (const std::size_t length : {1u, 98u, 99u, 100u, 101u, 100000u}) {
        std::string expected;
        for (std::size_t i = 0; i < length; ++i)
            expected += "\xE2\x82\xAC";
        EXPECT_EQ(text_of(std::u16string(length, u'\u20AC')), expected) << length << " units";
    }
}

TEST_F(CocoaStringToHost, DropsTheTextBehindAnEmbeddedNUL) {
    EXPECT_EQ(text_of(std::u16string_view(u"before\0behind", 13)), "before");
    EXPECT_EQ(probe.to_host(std::u16string_view(u"\0behind", 7)).string(), nullptr);
    EXPECT_EQ(text_of(std::u16string(200, u'x') + u'\0' + u"behind"), std::string(200, 'x'));
}

TEST_F(CocoaStringToHost, GivesTheNullStringForTextThatHasNoUTF8Form) {
    EXPECT_EQ(probe.to_host(u"half a pair \xD83C").string(), nullptr);
    EXPECT_EQ(probe.to_host(std::u16string(200, u'\xD83C')).string(), nullptr);
}

TEST(CocoaStringToHostWithout, BuildStringGivesTheNullStringAndLooksItUpAgain) {
    StringsOn probe(2013.9, {"REALBuildString"});
    EXPECT_EQ(probe.to_host(u"lost").string(), nullptr);
    EXPECT_EQ(probe.to_host(u"lost").string(), nullptr);
    EXPECT_EQ(probe.host.lookups("REALBuildString"), 2);
}

TEST(CocoaStringToHostWithout, SetStringEncodingGivesAnUntaggedString) {
    StringsOn probe(2013.9, {"REALSetStringEncoding"});
    const host::Value text = probe.to_host(u"plain");
    ASSERT_NE(text.get<host::StringRef>(), nullptr);
    EXPECT_EQ(text.get<host::StringRef>()->bytes(), "plain");
    EXPECT_NE(text.get<host::StringRef>()->encoding(), 0x08000100u);
}

} // namespace
