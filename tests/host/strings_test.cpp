#include "host/called_services.h"
#include "support/host.h"

#include <CoreFoundation/CoreFoundation.h>
#include <gmock/gmock.h>

#include <cstring>

namespace {

using namespace REALservices;
using testing::ElementsAre;

constexpr std::uint32_t MacRoman = REALtextEncodingMacRoman;
constexpr std::uint32_t UTF8 = REALtextEncodingUTF8;
constexpr std::uint32_t UTF16 = REALtextEncodingUTF16;
constexpr std::uint32_t None = REALtextEncodingNone;

class Strings : public testing::Test {
protected:
    host::StringRef build(std::string_view bytes, std::uint32_t encoding = None) {
        auto* const string =
            service(BuildString)(bytes.data(), static_cast<std::int32_t>(bytes.size()));
        service(SetStringEncoding)(string, encoding);
        return host::StringRef::adopt(string);
    }
    host::StringRef convert(const host::StringRef& string, std::uint32_t encoding) {
        return host::StringRef::adopt(service(ConvertString)(string.get(), encoding));
    }

    Host host{{.bare = true}};
};

TEST_F(Strings, HoldTheirTextBehindALengthByteAndBeforeFourZeros) {
    const host::StringRef string = build("abc");
    ASSERT_NE(string.get(), nullptr);
    EXPECT_EQ(string.get()->length, 3);
    EXPECT_EQ(string.get()->useCount, 1);
    EXPECT_EQ(std::memcmp(string.get()->buffer, "\3abc\0\0\0\0", 8), 0);
}

TEST_F(Strings, OfNoBytesAreNull) {
    EXPECT_EQ(service(BuildString)("abc", 0), nullptr);
    EXPECT_EQ(service(BuildString)(nullptr, 0), nullptr);
}

TEST_F(Strings, KeepEveryByte) {
    const std::string bytes("a\0\xff", 3);
    EXPECT_EQ(build(bytes).bytes(), bytes);
}

TEST_F(Strings, OfANegativeCountAreRefused) {
    EXPECT_EQ(service(BuildString)("abc", -1), nullptr);
    EXPECT_THAT(host.takeReports(), ElementsAre("REALBuildString: argument 2: a negative count"));
}

TEST_F(Strings, CountTheirReferences) {
    const host::StringRef string = build("abc");
    service(LockString)(string.get());
    EXPECT_EQ(host.references(string), 2);
    service(UnlockString)(string.get());
    EXPECT_EQ(host.references(string), 1);
}

TEST_F(Strings, ThatAreEmptyMayBeLockedAndUnlocked) {
    service(LockString)(nullptr);
    service(UnlockString)(nullptr);
    EXPECT_EQ(service(GetStringEncoding)(nullptr), None);
}

TEST_F(Strings, StartWithoutAnEncodingAndTakeTheOneGiven) {
    const host::StringRef string = build("abc");
    EXPECT_EQ(service(GetStringEncoding)(string.get()), None);
    service(SetStringEncoding)(string.get(), UTF8);
    EXPECT_EQ(service(GetStringEncoding)(string.get()), UTF8);
}

TEST_F(Strings, ConvertFromMacRomanToUTF8) {
    const host::StringRef converted = convert(build("caf\x8e \xaa", MacRoman), UTF8);
    EXPECT_EQ(converted.bytes(), "café ™");
    EXPECT_EQ(converted.encoding(), UTF8);
}

TEST_F(Strings, ConvertFromUTF8ToMacRoman) {
    EXPECT_EQ(convert(build("café ™", UTF8), MacRoman).bytes(), "caf\x8e \xaa");
}

TEST_F(Strings, ConvertBetweenUTF8AndUTF16InHostByteOrder) {
    const char16_t units[] = u"é\U0001F600";
    const std::string_view bytes(reinterpret_cast<const char*>(units), 6);
    EXPECT_EQ(convert(build("é\U0001F600", UTF8), UTF16).bytes(), bytes);
    EXPECT_EQ(convert(build(bytes, UTF16), UTF8).bytes(), "é\U0001F600");
}

TEST_F(Strings, OfNoEncodingAreOnlyRetagged) {
    const host::StringRef converted = convert(build("caf\x8e"), UTF8);
    EXPECT_EQ(converted.bytes(), "caf\x8e");
    EXPECT_EQ(converted.encoding(), UTF8);
}

TEST_F(Strings, WithoutAFormInTheEncodingDoNotConvert) {
    EXPECT_TRUE(convert(build("日本", UTF8), MacRoman).empty());
    EXPECT_TRUE(convert(build("\xff\xfe", UTF8), UTF16).empty());
    EXPECT_TRUE(convert(build("abc", 0x7777), UTF8).empty());
}

TEST_F(Strings, BecomeCoreFoundationStringsOwnedByTheCaller) {
    const CFStringRef text = service(GetStringCFString)(build("caf\x8e", MacRoman).get(), 0);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(CFStringGetLength(text), 4);
    EXPECT_EQ(CFStringGetCharacterAtIndex(text, 3), 0xE9);
    EXPECT_EQ(Host::retainCount(text), 1);
    CFRelease(text);
}

TEST_F(Strings, OfNoEncodingAreMacRomanToCoreFoundation) {
    const CFStringRef text = service(GetStringCFString)(build("\x8e").get(), 0);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(CFStringGetCharacterAtIndex(text, 0), 0xE9);
    CFRelease(text);
}

TEST_F(Strings, ThatAreEmptyOrBrokenHaveNoCoreFoundationString) {
    EXPECT_EQ(service(GetStringCFString)(nullptr, 0), nullptr);
    EXPECT_EQ(service(GetStringCFString)(build("\xff", UTF8).get(), 0), nullptr);
}

TEST_F(Strings, HandOutTheirBytesWithFourZerosBehind) {
    REALstringData data{};
    ASSERT_EQ(service(GetStringData)(build("caf\x8e", MacRoman).get(), UTF8, &data), 1);
    EXPECT_EQ(data.length, 5u);
    EXPECT_EQ(data.encoding, UTF8);
    EXPECT_EQ(std::memcmp(data.data, "café\0\0\0\0", 9), 0);
    service(DisposeStringData)(&data);
    EXPECT_EQ(data.data, nullptr);
}

TEST_F(Strings, HandOutTheirBytesAsTheyAreWhenNoEncodingIsAskedFor) {
    REALstringData data{};
    ASSERT_EQ(service(GetStringData)(build("\xff\x80", UTF8).get(), None, &data), 1);
    EXPECT_EQ(data.length, 2u);
    EXPECT_EQ(data.encoding, UTF8);
    EXPECT_EQ(std::memcmp(data.data, "\xff\x80\0\0\0\0", 6), 0);
    service(DisposeStringData)(&data);
}

TEST_F(Strings, ThatAreEmptyHandOutNoBytes) {
    REALstringData data{};
    ASSERT_EQ(service(GetStringData)(nullptr, UTF8, &data), 1);
    EXPECT_EQ(data.length, 0u);
    ASSERT_NE(data.data, nullptr);
    service(DisposeStringData)(&data);
}

TEST_F(Strings, ThatDoNotConvertHandOutNothing) {
    REALstringData data{};
    EXPECT_EQ(service(GetStringData)(build("日本", UTF8).get(), MacRoman, &data), 0);
    EXPECT_EQ(data.data, nullptr);
}

TEST_F(Strings, WhoseBytesAreNotDisposedOfAreReported) {
    REALstringData data{};
    service(GetStringData)(build("abc", UTF8).get(), None, &data);
    EXPECT_THAT(host.takeReports(),
                ElementsAre("String data handed out by PluginGetStringData was not disposed of"));
    service(DisposeStringData)(&data);
}

TEST_F(Strings, WhoseBytesAreDisposedOfTwiceAreReported) {
    REALstringData data{};
    service(GetStringData)(build("abc", UTF8).get(), None, &data);
    REALstringData copy = data;
    service(DisposeStringData)(&data);
    service(DisposeStringData)(&copy);
    EXPECT_THAT(host.takeReports(), ElementsAre("PluginDisposeStringData: argument 1: data that "
                                                "this host did not hand out"));
}

TEST_F(Strings, ShowTheirBytesAsACString) {
    const host::StringRef string = build("abc");
    EXPECT_STREQ(service(StringGetCString)(string.get()), "abc");
    EXPECT_STREQ(service(StringGetCString)(nullptr), "");
}

TEST_F(Strings, ReadAsUTF8WhateverTheirEncoding) {
    EXPECT_EQ(build("caf\x8e", MacRoman).utf8(), "café");
    EXPECT_EQ(build("café", UTF8).utf8(), "café");
    EXPECT_EQ(build("café").utf8(), "café");
    EXPECT_EQ(build("caf\x8e").utf8(), "café");
    EXPECT_EQ(build(std::string_view("a\0b\0", 4), UTF16).utf8(), "ab");
}

} // namespace
