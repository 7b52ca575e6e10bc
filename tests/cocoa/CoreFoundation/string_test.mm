#include "support.h"

#include <array>
#include <limits>

namespace {

class Strings : public InPool {};

String decoded(const char* bytes, CFStringEncoding encoding) {
    return String::adopt(CFStringCreateWithCString(nullptr, bytes, encoding));
}

/// The C string, or "(fails)".
std::string encoded(const String& string, CFStringEncoding encoding, CFIndex size = 64) {
    std::array<char, 64> buffer{};
    return CFStringGetCString(string.get(), buffer.data(), size, encoding) ? buffer.data()
                                                                           : "(fails)";
}

TEST_F(Strings, AreFoundationsStrings) {
    const String made = string("Grüße");
    EXPECT_TRUE([(NSString*)made.get() isEqual:[NSString stringWithUTF8String:"Grüße"]]);
    EXPECT_EQ(CFStringGetLength((CFStringRef) @"abc"), 3);
    EXPECT_EQ(CFGetTypeID(@"abc"), CFStringGetTypeID());
    EXPECT_EQ(CFGetRetainCount(made.get()), 1);
}

TEST_F(Strings, DecodeEachEncoding) {
    EXPECT_EQ(text(decoded("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8E\xA8", kCFStringEncodingUTF8)),
              "café € 🎨");
    EXPECT_EQ(text(decoded("caf\x8E \xDB", kCFStringEncodingMacRoman)), "café €");
    EXPECT_EQ(text(decoded("caf\xE9", kCFStringEncodingISOLatin1)), "café");
    EXPECT_EQ(text(decoded("caf\xE9 \x80", kCFStringEncodingWindowsLatin1)), "café €");
    EXPECT_EQ(text(decoded("cafe", kCFStringEncodingASCII)), "cafe");
    EXPECT_EQ(text(decoded("\xE6", kCFStringEncodingISOLatin2)), "ć");
}

TEST_F(Strings, AreNullForBytesThatTheEncodingDoesNotHave) {
    for (const char* const invalid :
         {"\xFF", "\xC0\x80", "\xC1\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
          "abc\xE2\x82", "\xE2\x82z", "\x80", "\xE0\x80\xAF", "\xF0\x80\x80\xAF"})
        EXPECT_EQ(decoded(invalid, kCFStringEncodingUTF8).get(), nullptr);
    EXPECT_EQ(decoded("caf\xE9", kCFStringEncodingASCII).get(), nullptr);
    EXPECT_EQ(decoded("\x81", kCFStringEncodingWindowsLatin1).get(), nullptr);
}

TEST_F(Strings, AreNullForNoTextAndUnknownEncodings) {
    EXPECT_EQ(CFStringCreateWithCString(nullptr, nullptr, kCFStringEncodingUTF8), nullptr);
    EXPECT_EQ(decoded("abc", 0xFFFF).get(), nullptr);
    EXPECT_EQ(CFStringCreateWithCharacters(nullptr, nullptr, 1), nullptr);
    EXPECT_EQ(CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar*>(u"a"), -1),
              nullptr);
    EXPECT_EQ(CFStringCreateWithBytes(nullptr, nullptr, 3, kCFStringEncodingUTF8, false), nullptr);
    EXPECT_EQ(text(String::adopt(CFStringCreateWithCharacters(nullptr, nullptr, 0))), "");
}

TEST_F(Strings, DecodeTheLastValidCharactersOfUTF8) {
    EXPECT_EQ(units(decoded("\xF4\x8F\xBF\xBF", kCFStringEncodingUTF8).get()), u"\U0010FFFF");
    EXPECT_EQ(units(decoded("\xEF\xBF\xBF", kCFStringEncodingUTF8).get()), u"\uFFFF");
    EXPECT_EQ(units(decoded("\xDF\xBF", kCFStringEncodingUTF8).get()), u"\u07FF");
}

TEST_F(Strings, ReadAByteOrderMarkOnlyInExternalText) {
    const auto fromBytes = [](std::string_view bytes, CFStringEncoding encoding, bool external) {
        return units(String::adopt(CFStringCreateWithBytes(
                                       nullptr, reinterpret_cast<const UInt8*>(bytes.data()),
                                       static_cast<CFIndex>(bytes.size()), encoding, external))
                         .get());
    };
    using namespace std::string_view_literals;
    EXPECT_EQ(fromBytes("\xFE\xFF\x00\x41"sv, kCFStringEncodingUTF16, true), u"A");
    EXPECT_EQ(fromBytes("\xFF\xFE\x41\x00"sv, kCFStringEncodingUTF16, true), u"A");
    EXPECT_EQ(fromBytes("\xFF\xFE\x41\x00"sv, kCFStringEncodingUTF16, false), u"\uFEFF\u0041");
    EXPECT_EQ(fromBytes("\x00\x41"sv, kCFStringEncodingUTF16BE, false), u"A");
    EXPECT_EQ(fromBytes("\x41\x00"sv, kCFStringEncodingUTF16LE, false), u"A");
    EXPECT_EQ(fromBytes("\x00\x01\xF3\xA8"sv, kCFStringEncodingUTF32BE, false), u"\U0001F3A8");
    EXPECT_EQ(fromBytes("\xEF\xBB\xBF"
                        "A"sv,
                        kCFStringEncodingUTF8, true),
              u"A");
    EXPECT_EQ(fromBytes("\xEF\xBB\xBF"
                        "A"sv,
                        kCFStringEncodingUTF8, false),
              u"\uFEFF\u0041");
}

TEST_F(Strings, AreNullForHalfAUnit) {
    const UInt8 three[] = {0x41, 0, 0x42};
    EXPECT_EQ(CFStringCreateWithBytes(nullptr, three, 3, kCFStringEncodingUTF16, false), nullptr);
}

TEST_F(Strings, GiveTheirTextInEachEncoding) {
    const String word = string("café €");
    EXPECT_EQ(encoded(word, kCFStringEncodingUTF8), "café €");
    EXPECT_EQ(encoded(word, kCFStringEncodingMacRoman), "caf\x8E \xDB");
    EXPECT_EQ(encoded(word, kCFStringEncodingWindowsLatin1), "caf\xE9 \x80");
    EXPECT_EQ(encoded(word, kCFStringEncodingISOLatin1), "(fails)");
    EXPECT_EQ(encoded(word, kCFStringEncodingASCII), "(fails)");
    EXPECT_EQ(encoded(string("ć"), kCFStringEncodingISOLatin2), "\xE6");
    EXPECT_EQ(encoded(string("é"), kCFStringEncodingISOLatin1), "\xE9");
}

TEST_F(Strings, HoldHalfASurrogatePair) {
    const std::u16string half = {u'a', char16_t{0xD83C}, u'b'};
    const String made = string16(half);
    ASSERT_EQ(CFStringGetLength(made.get()), 3);
    EXPECT_EQ(units(made.get()), half);
    const MutableString copy =
        MutableString::adopt(CFStringCreateMutableCopy(nullptr, 0, made.get()));
    EXPECT_EQ(units(copy.get()), half);
    EXPECT_TRUE(CFEqual(copy.get(), made.get()));
    CFStringNormalize(copy.get(), kCFStringNormalizationFormD);
    EXPECT_EQ(units(copy.get()), half);
}

TEST_F(Strings, FailToEncodeHalfASurrogatePair) {
    EXPECT_EQ(encoded(string16(std::u16string(1, char16_t{0xD83C})), kCFStringEncodingUTF8),
              "(fails)");
}

TEST_F(Strings, NeverWriteBeyondTheBuffer) {
    const String word = string("né");
    std::array<char, 6> buffer;
    for (CFIndex size = 0; size < 4; ++size) {
        buffer.fill('#');
        EXPECT_FALSE(CFStringGetCString(word.get(), buffer.data(), size, kCFStringEncodingUTF8));
        for (auto at = static_cast<std::size_t>(size); at < buffer.size(); ++at)
            EXPECT_EQ(buffer[at], '#');
        if (size) EXPECT_EQ(buffer[0], '\0');
    }
    EXPECT_TRUE(CFStringGetCString(word.get(), buffer.data(), 4, kCFStringEncodingUTF8));
    EXPECT_STREQ(buffer.data(), "né");
    EXPECT_EQ(buffer[4], '#');
    EXPECT_FALSE(CFStringGetCString(word.get(), nullptr, 10, kCFStringEncodingUTF8));
    EXPECT_FALSE(CFStringGetCString(word.get(), buffer.data(), -1, kCFStringEncodingUTF8));
}

TEST_F(Strings, KeepNULsInTheMiddle) {
    const String made = string(std::string_view("a\0b", 3));
    EXPECT_EQ(CFStringGetLength(made.get()), 3);
    std::array<char, 8> buffer{};
    EXPECT_TRUE(CFStringGetCString(made.get(), buffer.data(), 8, kCFStringEncodingUTF8));
    EXPECT_EQ(std::string(buffer.data(), 4), std::string("a\0b\0", 4));
}

TEST_F(Strings, GivePascalStrings) {
    std::array<UInt8, 256> buffer{};
    EXPECT_TRUE(
        CFStringGetPascalString(string("né").get(), buffer.data(), 256, kCFStringEncodingMacRoman));
    EXPECT_EQ(buffer[0], 2);
    EXPECT_EQ(buffer[2], 0x8E);
    EXPECT_EQ(text(String::adopt(CFStringCreateWithPascalString(nullptr, buffer.data(),
                                                                kCFStringEncodingMacRoman))),
              "né");
    EXPECT_FALSE(CFStringGetPascalString(string(std::string(256, 'x')).get(), buffer.data(), 256,
                                         kCFStringEncodingMacRoman));
    EXPECT_EQ(buffer[0], 0);
}

TEST_F(Strings, GiveUnits) {
    const String made = string("a€🎨");
    EXPECT_EQ(CFStringGetLength(made.get()), 4);
    EXPECT_EQ(CFStringGetCharacterAtIndex(made.get(), 1), 0x20AC);
    EXPECT_EQ(units(made.get()), u"a€🎨");
    std::array<UniChar, 2> middle{};
    CFStringGetCharacters(made.get(), CFRangeMake(1, 2), middle.data());
    EXPECT_EQ(middle[1], 0xD83C);
}

TEST_F(Strings, RaiseOutsideOfThemselves) {
    const String made = string("abc");
    UniChar buffer[4];
    EXPECT_EQ(raisedBy([&] { CFStringGetCharacterAtIndex(made.get(), 3); }), "NSRangeException");
    EXPECT_EQ(raisedBy([&] { CFStringGetCharacterAtIndex(made.get(), -1); }), "NSRangeException");
    EXPECT_EQ(raisedBy([&] { CFStringGetCharacters(made.get(), CFRangeMake(2, 2), buffer); }),
              "NSRangeException");
    EXPECT_EQ(raisedBy([&] {
                  CFStringGetCharacters(
                      made.get(), CFRangeMake(1, std::numeric_limits<CFIndex>::max()), buffer);
              }),
              "NSRangeException");
}

TEST_F(Strings, ConvertAsMuchAsFits) {
    const String made = string("aé€");
    std::array<UInt8, 8> buffer{};
    CFIndex used = 0;
    EXPECT_EQ(CFStringGetBytes(made.get(), CFRangeMake(0, 3), kCFStringEncodingUTF8, 0, false,
                               buffer.data(), 5, &used),
              2);
    EXPECT_EQ(used, 3);
    EXPECT_EQ(CFStringGetBytes(made.get(), CFRangeMake(0, 3), kCFStringEncodingUTF8, 0, false,
                               nullptr, 0, &used),
              3);
    EXPECT_EQ(used, 6);
    EXPECT_EQ(CFStringGetBytes(made.get(), CFRangeMake(1, 2), kCFStringEncodingASCII, '?', false,
                               buffer.data(), 8, &used),
              2);
    EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + used), "??");
    EXPECT_EQ(CFStringGetBytes(made.get(), CFRangeMake(0, 3), kCFStringEncodingASCII, 0, false,
                               buffer.data(), 8, &used),
              1);
}

TEST_F(Strings, HaveExternalRepresentations) {
    using Data = cocoa::Retained<CFDataRef>;
    const Data data = Data::adopt(CFStringCreateExternalRepresentation(nullptr, string("a€").get(),
                                                                       kCFStringEncodingUTF16, 0));
    ASSERT_EQ(CFDataGetLength(data.get()), 6);
    EXPECT_EQ(text(String::adopt(CFStringCreateFromExternalRepresentation(nullptr, data.get(),
                                                                          kCFStringEncodingUTF16))),
              "a€");
    EXPECT_EQ(
        CFStringCreateExternalRepresentation(nullptr, string("€").get(), kCFStringEncodingASCII, 0),
        nullptr);
    const Data lossy = Data::adopt(CFStringCreateExternalRepresentation(
        nullptr, string("a€").get(), kCFStringEncodingASCII, '?'));
    EXPECT_EQ(CFDataGetBytePtr(lossy.get())[1], '?');
}

TEST_F(Strings, StateTheMostBytesThatTheyCanTake) {
    EXPECT_EQ(CFStringGetMaximumSizeForEncoding(10, kCFStringEncodingUTF8), 30);
    EXPECT_EQ(CFStringGetMaximumSizeForEncoding(10, kCFStringEncodingUTF16), 20);
    EXPECT_EQ(CFStringGetMaximumSizeForEncoding(10, kCFStringEncodingMacRoman), 10);
    EXPECT_EQ(CFStringGetMaximumSizeForEncoding(std::numeric_limits<CFIndex>::max(),
                                                kCFStringEncodingUTF8),
              kCFNotFound);
}

TEST_F(Strings, AreNormalizedInPlace) {
    const auto normalized = [](std::u16string_view given, CFStringNormalizationForm form) {
        const MutableString copy =
            MutableString::adopt(CFStringCreateMutableCopy(nullptr, 0, string16(given).get()));
        CFStringNormalize(copy.get(), form);
        return units(copy.get());
    };
    EXPECT_EQ(normalized(u"\u00E9\u1E69", kCFStringNormalizationFormD), u"e\u0301s\u0323\u0307");
    EXPECT_EQ(normalized(u"e\u0301", kCFStringNormalizationFormC), u"\u00E9");
    EXPECT_EQ(normalized(u"\uD55C", kCFStringNormalizationFormD), u"\u1112\u1161\u11AB");
    EXPECT_EQ(normalized(u"\uFB01", kCFStringNormalizationFormKD), u"fi");
    EXPECT_EQ(normalized(u"\uFB01", kCFStringNormalizationFormD), u"\uFB01");
    EXPECT_EQ(normalized(u"\uFF21e\u0301", kCFStringNormalizationFormKC), u"A\u00E9");
    EXPECT_EQ(normalized(u"", kCFStringNormalizationFormD), u"");
    EXPECT_EQ(normalized(u"\u1F82", kCFStringNormalizationFormD), u"\u03B1\u0313\u0300\u0345");
    EXPECT_EQ(normalized(std::u16string(3000, u'\u1F82'), kCFStringNormalizationFormD).size(),
              12000U);
    // The longest decomposition there is.
    EXPECT_EQ(normalized(u"\uFDFA", kCFStringNormalizationFormKD).size(), 18U);
}

TEST_F(Strings, AreComparedUnitByUnit) {
    const String composed = string16(u"\u00E9");
    const String decomposed = string16(u"e\u0301");
    EXPECT_FALSE(CFEqual(composed.get(), decomposed.get()));
    EXPECT_NE(CFStringCompare(composed.get(), decomposed.get(), 0), kCFCompareEqualTo);
    EXPECT_EQ(CFStringCompare(CFSTR("a"), CFSTR("b"), 0), kCFCompareLessThan);
    EXPECT_EQ(CFStringCompare(CFSTR("B"), CFSTR("a"), 0), kCFCompareLessThan);
    EXPECT_EQ(CFStringCompare(CFSTR("B"), CFSTR("a"), kCFCompareCaseInsensitive),
              kCFCompareGreaterThan);
    EXPECT_EQ(CFStringCompare(CFSTR("a10"), CFSTR("a9"), kCFCompareNumerically),
              kCFCompareGreaterThan);
    EXPECT_TRUE(CFEqual(CFSTR("abc"), string("abc").get()));
    EXPECT_EQ(CFHash(CFSTR("abc")), CFHash(string("abc").get()));
}

TEST_F(Strings, AreSearched) {
    EXPECT_EQ(CFStringFind(CFSTR("banana"), CFSTR("an"), 0).location, 1);
    EXPECT_EQ(CFStringFind(CFSTR("banana"), CFSTR("an"), kCFCompareBackwards).location, 3);
    EXPECT_EQ(CFStringFind(CFSTR("banana"), CFSTR("x"), 0).location, kCFNotFound);
    EXPECT_EQ(CFStringFind(CFSTR("banana"), CFSTR("AN"), kCFCompareCaseInsensitive).location, 1);
    EXPECT_TRUE(CFStringHasPrefix(CFSTR("banana"), CFSTR("ban")));
    EXPECT_FALSE(CFStringHasPrefix(CFSTR("banana"), CFSTR("an")));
    EXPECT_TRUE(CFStringHasSuffix(CFSTR("banana"), CFSTR("nana")));
    EXPECT_FALSE(CFStringHasSuffix(CFSTR("banana"), CFSTR("ban")));
    EXPECT_TRUE(CFStringHasPrefix(CFSTR("banana"), CFSTR("")));
}

TEST_F(Strings, AreChanged) {
    const MutableString made = MutableString::adopt(CFStringCreateMutable(nullptr, 0));
    CFStringAppend(made.get(), CFSTR("one"));
    CFStringAppendCString(made.get(), " tw\xC3\xB6", kCFStringEncodingUTF8);
    CFStringAppendCString(made.get(), "\xFF", kCFStringEncodingUTF8);
    CFStringAppendCharacters(made.get(), reinterpret_cast<const UniChar*>(u" 3!"), 2);
    EXPECT_EQ(text(made.get()), "one twö 3");
    CFStringDelete(made.get(), CFRangeMake(3, 4));
    CFStringInsert(made.get(), 0, CFSTR("<"));
    CFStringReplace(made.get(), CFRangeMake(1, 3), CFSTR("ONE"));
    EXPECT_EQ(text(made.get()), "<ONE 3");
    CFStringReplaceAll(made.get(), CFSTR("new"));
    EXPECT_EQ(text(made.get()), "new");
    EXPECT_EQ(raisedBy([&] { CFStringDelete(made.get(), CFRangeMake(2, 2)); }), "NSRangeException");
    EXPECT_EQ(raisedBy([&] { CFStringInsert(made.get(), 4, CFSTR("x")); }), "NSRangeException");
}

TEST_F(Strings, AreCopied) {
    const MutableString original =
        MutableString::adopt(CFStringCreateMutableCopy(nullptr, 0, CFSTR("abc")));
    const String copy = String::adopt(CFStringCreateCopy(nullptr, original.get()));
    CFStringAppend(original.get(), CFSTR("d"));
    EXPECT_EQ(text(copy), "abc");
    EXPECT_EQ(text(String::adopt(
                  CFStringCreateWithSubstring(nullptr, original.get(), CFRangeMake(1, 2)))),
              "bc");
    EXPECT_EQ(CFGetRetainCount(original.get()), 1);
}

TEST_F(Strings, AreFormatted) {
    EXPECT_EQ(text(String::adopt(
                  CFStringCreateWithFormat(nullptr, nullptr, CFSTR("%@ has %d"), CFSTR("it"), 7))),
              "it has 7");
}

TEST_F(Strings, AreReadAsNumbers) {
    EXPECT_EQ(CFStringGetIntValue(CFSTR("-12abc")), -12);
    EXPECT_EQ(CFStringGetDoubleValue(CFSTR("2.5")), 2.5);
}

TEST_F(Strings, ConstantsAreOneObjectEach) {
    EXPECT_EQ(CFStringMakeConstant("Gru\xC3\x9F"), CFStringMakeConstant("Gru\xC3\x9F"));
    EXPECT_NE(CFStringMakeConstant("a"), CFStringMakeConstant("b"));
}

TEST_F(Strings, KnowFoundationsEncodings) {
    EXPECT_EQ(CFStringConvertEncodingToNSStringEncoding(kCFStringEncodingUTF8),
              static_cast<unsigned long>(NSUTF8StringEncoding));
    EXPECT_EQ(CFStringConvertEncodingToNSStringEncoding(kCFStringEncodingMacRoman),
              static_cast<unsigned long>(NSMacOSRomanStringEncoding));
    EXPECT_EQ(CFStringConvertNSStringEncodingToEncoding(NSWindowsCP1252StringEncoding),
              CFStringEncoding{kCFStringEncodingWindowsLatin1});
    EXPECT_EQ(CFStringConvertNSStringEncodingToEncoding(12345), kCFStringEncodingInvalidId);
    EXPECT_EQ(CFStringConvertEncodingToNSStringEncoding(0xFFFF), 0UL);
    EXPECT_TRUE(CFStringIsEncodingAvailable(kCFStringEncodingShiftJIS));
    EXPECT_FALSE(CFStringIsEncodingAvailable(0xFFFF));
}

TEST_F(Strings, AreFileNames) {
    std::array<char, 16> buffer{};
    EXPECT_TRUE(CFStringGetFileSystemRepresentation(string("é").get(), buffer.data(), 16));
    EXPECT_STREQ(buffer.data(), "é");
    EXPECT_EQ(CFStringGetMaximumSizeOfFileSystemRepresentation(CFSTR("abc")), 10);
}

TEST_F(Strings, OfAMillionUnitsAreConverted) {
    const std::string lots(1000000, 'x');
    std::string buffer(lots.size() + 1, '#');
    ASSERT_TRUE(CFStringGetCString(string(lots).get(), buffer.data(),
                                   static_cast<CFIndex>(buffer.size()), kCFStringEncodingUTF8));
    EXPECT_EQ(buffer.substr(0, lots.size()), lots);
}

} // namespace
