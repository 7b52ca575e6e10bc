#include "plugin/bridge/bridge.h"

#include "host/objects/date.h"

#include <gmock/gmock.h>

#include <limits>

using testing::ElementsAre;

namespace {

/// "l 42": the Objective-C type and the value of a number.
std::string number(const Held& held) {
    if (!held.is_kind_of([NSNumber class])) return held.class_name();
    NSNumber* const number = held.get();
    const std::string type = [number objCType];
    return type + " " + [[number stringValue] UTF8String];
}

std::string text(id object) {
    return [object isKindOfClass:[NSString class]] ? [object UTF8String] : "no text";
}

// VarType as a host would tell it that has kinds which this one lacks.

std::int32_t toldKind = 0;
std::int32_t tell_kind(REALobjectStruct*) { return toldKind; }
void* load_told_kind(void*, const char* declaration) {
    EXPECT_STREQ(declaration, "VarType(value As Variant) As Int32");
    return reinterpret_cast<void*>(tell_kind);
}

struct ScalarsInCocoa : testing::Test {
    /// Numbers of every kind, as they arrive.
    static void expect_numbers(Bridge& bridge) {
        EXPECT_EQ(number(bridge.object_of(42)), "l 42");
        EXPECT_EQ(number(bridge.object_of(std::numeric_limits<std::int32_t>::min())),
                  "l -2147483648");
        EXPECT_EQ(number(bridge.object_of(host::Color{0xFF0010})), "l 16711696");
        EXPECT_EQ(number(bridge.object_of(std::int64_t{1} << 40)), "q 1099511627776");
        EXPECT_EQ(number(bridge.object_of(0.5F)), "f 0.5");
        EXPECT_EQ(number(bridge.object_of(-1.25)), "d -1.25");
        EXPECT_EQ(number(bridge.object_of(host::Currency{12345})), "d 1.2345");
        EXPECT_EQ(number(bridge.object_of(true)), "c 1");
        EXPECT_EQ(number(bridge.object_of(false)), "c 0");
    }
};

TEST_F(ScalarsInCocoa, AreNumbersOfTheirKind) {
    Bridge bridge;
    expect_numbers(bridge);
}

TEST_F(ScalarsInCocoa, AreReadFromPropertiesWhereTheHostConvertsNone) {
    Bridge bridge({.without = {"VariantToInt32", "VariantToInt64", "VariantToSingle",
                               "VariantToDouble", "VariantToString"}});
    expect_numbers(bridge);
    EXPECT_EQ(text(bridge.object_of("äöü").get()), "äöü");
}

TEST_F(ScalarsInCocoa, AreNotReadFromPropertiesWhereTheHostConverts) {
    Bridge bridge;
    expect_numbers(bridge);
    for (const char* getter : {"REALGetPropValueInt", "REALGetPropValueInt64",
                               "REALGetPropValueSingle", "REALGetPropValueDouble"})
        EXPECT_EQ(bridge.host.calls(getter), 0) << getter;
}

TEST_F(ScalarsInCocoa, AreZeroWhereTheHostTellsNothing) {
    Bridge bridge(
        {.without = {"VariantToInt64", "REALGetPropValueInt64", "VariantToDouble",
                     "REALGetPropValueDouble", "VariantToString", "REALGetPropValueString"}});
    EXPECT_EQ(number(bridge.object_of(std::int64_t{1} << 40)), "q 0");
    EXPECT_EQ(number(bridge.object_of(2.5)), "d 0");
    EXPECT_EQ(text(bridge.object_of("text").get()), "");
}

TEST_F(ScalarsInCocoa, AreOfTheKindThatVarTypeTells) {
    Bridge bridge;
    bridge.host.replace(REALservices::LoadGlobalMethod, load_told_kind);
    toldKind = 5;
    EXPECT_EQ(number(bridge.object_of(42)), "d 42");
    toldKind = 16;
    EXPECT_EQ(number(bridge.object_of(42)), "l 42");
}

TEST_F(ScalarsInCocoa, AskForVarTypeOnlyOnce) {
    Bridge bridge;
    expect_numbers(bridge);
    EXPECT_EQ(bridge.host.calls("REALLoadGlobalMethod"), 1);
}

TEST_F(ScalarsInCocoa, TellTheirTypeByAPropertyWhereVarTypeCannotBeLoaded) {
    Bridge bridge({.without = {"REALLoadGlobalMethod"}});
    expect_numbers(bridge);
    EXPECT_EQ(number(bridge.object_of(7)), "l 7");
}

TEST_F(ScalarsInCocoa, AreNilWhereNothingTellsTheirKind) {
    Bridge bridge({.without = {"REALLoadGlobalMethod", "REALGetPropValueInt"}});
    EXPECT_FALSE(bridge.object_of(42));
}

std::int32_t convert_to_256(REALobjectStruct*) { return 256; }

TEST_F(ScalarsInCocoa, ThatAreBooleansAreTheLowByte) {
    Bridge bridge;
    bridge.host.replace(REALservices::VariantToInt32, convert_to_256);
    EXPECT_EQ(number(bridge.object_of(true)), "c 0");
}

TEST(NilInCocoa, IsNil) {
    Bridge bridge;
    EXPECT_FALSE(bridge.object_of(nullptr));
    EXPECT_EQ(bridge.host.calls("REALLoadGlobalMethod"), 0);
}

TEST(KindsThatCocoaHasNothingFor, AreNil) {
    Bridge bridge;
    bridge.host.replace(REALservices::LoadGlobalMethod, load_told_kind);
    for (const std::int32_t kind :
         {0, 1, 10, 12, 13, 14, 15, 17, 22, 24, 26, 0x1000, 0x1006, 0x100A, 0x100C, 0x1010, -1}) {
        toldKind = kind;
        EXPECT_FALSE(bridge.object_of(42)) << kind;
    }
}

TEST(TextInCocoa, IsAString) {
    Bridge bridge;
    const Held held = bridge.object_of("grün \U0001D11E");
    EXPECT_EQ(text(held.get()), "grün \U0001D11E");
    EXPECT_EQ([held.get() length], 7u) << "in UTF-16 units";
}

TEST(TextInCocoa, IsTheEmptyStringWhenThereIsNone) {
    Bridge bridge;
    EXPECT_EQ(text(bridge.object_of("").get()), "");
    EXPECT_EQ(text(bridge.object_of(bridge.host.text("\xFF\xFE\xFD")).get()), "")
        << "no UTF-8, though tagged so";
}

TEST(TextInCocoa, MayBeOfAnyOfTheKindsOfText) {
    Bridge bridge;
    bridge.host.replace(REALservices::LoadGlobalMethod, load_told_kind);
    for (const std::int32_t kind : {8, 18, 19, 20, 21, 23}) {
        toldKind = kind;
        EXPECT_EQ(text(bridge.object_of("text").get()), "text") << kind;
    }
}

TEST(DatesInCocoa, AreCalendarDates) {
    Bridge bridge;
    const Held held =
        bridge.object_of(host::newDate({.year = 2000, .month = 2, .day = 29, .hour = 10}));
    ASSERT_TRUE(held.is_kind_of([NSCalendarDate class])) << held.class_name();
    EXPECT_EQ([held.get() monthOfYear], 2);
    EXPECT_EQ([held.get() dayOfMonth], 29);
    EXPECT_EQ([held.get() hourOfDay], 10);
}

TEST(DatesInCocoa, AreNilWhereTheHostDoesNotGiveThem) {
    Bridge bridge({.without = {"REALGetPropValueObject"}});
    EXPECT_FALSE(bridge.object_of(host::newDate({})));
}

struct ArraysInCocoa : testing::Test {
    /// The elements of an array of numbers.
    static std::vector<std::string> numbers(const Held& held) {
        std::vector<std::string> all;
        if (!held.is_kind_of([NSMutableArray class])) return {held.class_name()};
        for (NSUInteger i = 0; i < [held.get() count]; ++i)
            all.push_back(number(Held([[held.get() objectAtIndex:i] retain])));
        return all;
    }

    static void expect_all_kinds(Bridge& bridge) {
        const auto filled = [&](const host::Type& type, std::vector<host::Value> elements) {
            return bridge.object_of(bridge.host.arrayOf(type, std::move(elements)));
        };
        EXPECT_THAT(numbers(filled(host::Kind::Int32, {1, -2, 3})),
                    ElementsAre("l 1", "l -2", "l 3"));
        EXPECT_THAT(numbers(filled(host::Kind::Int64, {std::int64_t{1} << 40})),
                    ElementsAre("q 1099511627776"));
        EXPECT_THAT(numbers(filled(host::Kind::Single, {0.5F, 2.0F})), ElementsAre("f 0.5", "f 2"));
        EXPECT_THAT(numbers(filled(host::Kind::Double, {0.25})), ElementsAre("d 0.25"));
        EXPECT_THAT(numbers(filled(host::Kind::Boolean, {true, false})), ElementsAre("c 1", "c 0"));

        const Held dates = filled(host::Type::object("Date"), {host::newDate({.year = 1999})});
        ASSERT_EQ([dates.get() count], 1u);
        EXPECT_EQ([[dates.get() lastObject] yearOfCommonEra], 1999);

        const Held strings = filled(host::Kind::String, {"eins", "", "drei"});
        ASSERT_EQ([strings.get() count], 3u);
        EXPECT_EQ(text([strings.get() objectAtIndex:0]), "eins");
        EXPECT_EQ(text([strings.get() objectAtIndex:1]), "");
        EXPECT_EQ(text([strings.get() objectAtIndex:2]), "drei");

        const Held objects = filled(host::Kind::Variant, {"x", 1, bridge.host.memoryBlock("ab")});
        ASSERT_EQ([objects.get() count], 3u);
        EXPECT_EQ(text([objects.get() objectAtIndex:0]), "x");
        EXPECT_EQ([[objects.get() objectAtIndex:1] intValue], 1);
        EXPECT_EQ([[objects.get() objectAtIndex:2] length], 2u);
    }

    static std::vector<host::Type> kinds_with_counterpart() {
        return {host::Kind::Int32,   host::Kind::Int64,         host::Kind::Single,
                host::Kind::Double,  host::Kind::Boolean,       host::Kind::String,
                host::Kind::Variant, host::Type::object("Date")};
    }
};

TEST_F(ArraysInCocoa, HoldTheirConvertedElements) {
    Bridge bridge({.version = 2013.9});
    expect_all_kinds(bridge);
}

TEST_F(ArraysInCocoa, AreReadByTheGetterThatOlderOnesCarry) {
    Bridge bridge({.version = 2009.05});
    expect_all_kinds(bridge);
    EXPECT_EQ(bridge.host.calls("RuntimeArrayDirectGetGetProc"), 0);
}

TEST_F(ArraysInCocoa, AreReadByTheHostsGetterWhereTheyCarryNone) {
    Bridge bridge({.version = 2013.5});
    expect_all_kinds(bridge);
    EXPECT_GT(bridge.host.calls("RuntimeArrayDirectGetGetProc"), 0);
}

/// On such hosts the word in the array is not a getter for plug-ins: the host reports its use.
TEST_F(ArraysInCocoa, AreNeverReadByWhatNewerOnesCarry) {
    Bridge bridge({.version = 2014.0});
    expect_all_kinds(bridge);
    EXPECT_GT(bridge.host.calls("RuntimeArrayDirectGetGetProc"), 0);
}

TEST_F(ArraysInCocoa, AreMutableAndEmptyWhenTheyAreEmpty) {
    Bridge bridge;
    for (const host::Type& kind : kinds_with_counterpart()) {
        const Held held = bridge.object_of(bridge.host.arrayOf(kind));
        ASSERT_TRUE(held.is_kind_of([NSMutableArray class])) << kind.name();
        EXPECT_EQ([held.get() count], 0u) << kind.name();
    }
}

TEST_F(ArraysInCocoa, AreNilWhenTheyAreOfCurrencyOrColor) {
    Bridge bridge;
    EXPECT_FALSE(bridge.object_of(bridge.host.arrayOf(host::Kind::Currency, {host::Currency{1}})));
    EXPECT_FALSE(bridge.object_of(bridge.host.arrayOf(host::Kind::Currency)));
    EXPECT_FALSE(bridge.object_of(bridge.host.arrayOf(host::Kind::Color, {host::Color{1}})));
}

TEST_F(ArraysInCocoa, AreNilWhereTheHostDoesNotTellTheirBound) {
    Bridge bridge({.without = {"RuntimeUBound"}});
    for (const host::Type& kind : kinds_with_counterpart())
        EXPECT_FALSE(bridge.object_of(bridge.host.arrayOf(kind))) << kind.name();
}

TEST_F(ArraysInCocoa, AreNilWhereTheHostDoesNotTellHowToReadThem) {
    Bridge bridge({.version = 2014.0, .without = {"RuntimeArrayDirectGetGetProc"}});
    EXPECT_FALSE(bridge.object_of(bridge.host.arrayOf(host::Kind::Int32, {1})));
    EXPECT_TRUE(bridge.object_of(bridge.host.arrayOf(host::Kind::Int32)))
        << "there is nothing to read";
}

TEST_F(ArraysInCocoa, RaiseForAnElementThatIsNil) {
    Bridge bridge;
    EXPECT_FALSE(bridge.object_of(bridge.host.arrayOf(host::Kind::Variant, {1, nullptr, 2})));
    EXPECT_THAT(bridge.host.raised(), testing::StartsWith("RuntimeException: NSInvalidArgument"));
    EXPECT_FALSE(bridge.object_of(bridge.host.arrayOf(host::Type::object("Date"), {nullptr})));
    EXPECT_THAT(bridge.host.raised(), testing::StartsWith("RuntimeException: NSInvalidArgument"));
}

TEST_F(ArraysInCocoa, MayLieInEachOther) {
    Bridge bridge;
    host::ObjectRef nested = bridge.host.arrayOf(host::Kind::Int32, {7});
    for (int level = 1; level < 100; ++level)
        nested = bridge.host.arrayOf(host::Kind::Variant, {nested});
    const Held held = bridge.object_of(nested);
    id innermost = held.get();
    int depth = 0;
    for (; [innermost isKindOfClass:[NSArray class]]; ++depth)
        innermost = [innermost lastObject];
    EXPECT_EQ(depth, 100);
    EXPECT_EQ([innermost intValue], 7);
}

} // namespace
