#include "plugin/bridge/bridge.h"

#include "host/services/exports.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::ElementsAre;

namespace {

class DictionariesOn {
public:
    explicit DictionariesOn(std::vector<std::string> without = {})
        : bridge({.without = std::move(without)}) {}

    host::ObjectRef dictionary(std::vector<std::pair<host::Value, host::Value>> entries = {}) {
        host::ObjectRef made = bridge.host.create("Dictionary");
        for (const auto& [key, value] : entries)
            bridge.host.assign(made, "Value", key, value);
        return made;
    }
    int count(const host::ObjectRef& dictionary) {
        return bridge.host.get<int>(dictionary, "Count");
    }
    host::Value value(const host::ObjectRef& dictionary, const host::Value& key) {
        return bridge.host.call(dictionary, "Value", key);
    }

    Pool pool;
    Bridge bridge;
};

TEST(DictionariesToCocoa, HoldTheConvertedKeysAndValues) {
    DictionariesOn on;
    const host::ObjectRef host =
        on.dictionary({{"text", "Wert"}, {2, 2.5}, {true, on.bridge.host.memoryBlock("abc")}});
    const Held held = on.bridge.object_of(host);
    ASSERT_TRUE(held.is_kind_of([NSMutableDictionary class]));
    EXPECT_EQ([held.get() count], 3u);
    EXPECT_STREQ([[held.get() objectForKey:@"text"] UTF8String], "Wert");
    EXPECT_EQ([[held.get() objectForKey:[NSNumber numberWithLong:2]] doubleValue], 2.5);
    EXPECT_EQ([[held.get() objectForKey:[NSNumber numberWithBool:YES]] length], 3u);
    EXPECT_EQ(on.bridge.host.references(host), 1);
}

TEST(DictionariesToCocoa, AreImmutableWhenTheyAreEmpty) {
    DictionariesOn on;
    const Held held = on.bridge.object_of(on.dictionary());
    ASSERT_TRUE(held.is_kind_of([NSDictionary class]));
    EXPECT_EQ([held.get() count], 0u);
    EXPECT_FALSE(held.is_kind_of([NSMutableDictionary class]));
}

TEST(DictionariesToCocoa, HoldNullForValuesAndKeysThatCocoaHasNothingFor) {
    DictionariesOn on;
    const host::ObjectRef colors = on.bridge.host.arrayOf(host::Kind::Color, {host::Color{1}});
    const Held held = on.bridge.object_of(on.dictionary({{"nil", nullptr}, {"colors", colors}}));
    EXPECT_EQ([held.get() objectForKey:@"nil"], [NSNull null]);
    EXPECT_EQ([held.get() objectForKey:@"colors"], [NSNull null]);
    EXPECT_EQ([held.get() count], 2u);
    const Held keyed = on.bridge.object_of(on.dictionary({{colors, "value"}}));
    EXPECT_STREQ([[keyed.get() objectForKey:[NSNull null]] UTF8String], "value");
}

TEST(DictionariesToCocoa, LeaveOutAnEntryWhoseKeyIsNull) {
    DictionariesOn on;
    const Held held = on.bridge.object_of(on.dictionary({{nullptr, "lost"}, {"kept", 1}}));
    EXPECT_EQ([held.get() count], 1u);
    EXPECT_EQ([[held.get() objectForKey:@"kept"] intValue], 1);
}

TEST(DictionariesToCocoa, AreEmptyWhereTheHostDoesNotCount) {
    DictionariesOn on({"REALGetPropValueInt"});
    const Held held = on.bridge.object_of(on.dictionary({{"key", "value"}}));
    ASSERT_TRUE(held.is_kind_of([NSDictionary class]));
    EXPECT_EQ([held.get() count], 0u);
}

// A host that loads only some of the methods.

std::string refusedMethod;
std::vector<std::string> loadedMethods;

void* load_but_for_the_refused(REALobjectStruct* object, const char* declaration) {
    loadedMethods.emplace_back(declaration);
    return declaration == refusedMethod ? nullptr
                                        : host::exports::loadObjectMethod(object, declaration);
}

constexpr const char* setter = "Value(key As Variant, Assigns _value As Variant)";
constexpr const char* getter = "Value(key As Variant) As Variant";
constexpr const char* keyGetter = "Key(index As Integer) As Variant";

/// Loading of methods passes by here.
void watch_loading(Host& host) {
    host.replace(REALservices::LoadObjectMethod, load_but_for_the_refused);
}

TEST(DictionariesToCocoa, AreEmptyWithoutAGetterOfKeys) {
    DictionariesOn on;
    watch_loading(on.bridge.host);
    refusedMethod = keyGetter;
    const Held held = on.bridge.object_of(on.dictionary({{"key", "value"}, {nullptr, 1}}));
    ASSERT_TRUE(held.is_kind_of([NSMutableDictionary class]));
    EXPECT_EQ([held.get() count], 0u);
}

TEST(DictionariesToCocoa, HoldOnlyNullWithoutAGetterOfValues) {
    DictionariesOn on;
    watch_loading(on.bridge.host);
    refusedMethod = getter;
    const Held held = on.bridge.object_of(on.dictionary({{"key", "value"}}));
    EXPECT_EQ([held.get() objectForKey:@"key"], [NSNull null]);
}

TEST(DictionariesToCocoa, LoadTheMethodsOnceForEachConversion) {
    DictionariesOn on;
    const host::ObjectRef host = on.dictionary({{1, 1}, {2, 2}, {3, 3}});
    watch_loading(on.bridge.host);
    const std::string folderItemTest = "TrueItem(Index as integer) as Folderitem";
    on.bridge.object_of(host);
    EXPECT_THAT(loadedMethods, ElementsAre(folderItemTest, setter, getter, keyGetter));
    on.bridge.object_of(host);
    EXPECT_EQ(loadedMethods.size(), 8u) << "they are forgotten at the end of a conversion";
}

TEST(DictionariesToCocoa, LoadTheMethodsAgainBehindANestedDictionary) {
    DictionariesOn on;
    const host::ObjectRef inner = on.dictionary({{"i", 1}});
    const host::ObjectRef outer = on.dictionary({{"a", inner}, {"b", 2}});
    watch_loading(on.bridge.host);
    const Held held = on.bridge.object_of(outer);
    EXPECT_EQ([[[held.get() objectForKey:@"a"] objectForKey:@"i"] intValue], 1);
    EXPECT_EQ([[held.get() objectForKey:@"b"] intValue], 2);
    EXPECT_EQ(std::ranges::count(loadedMethods, std::string(keyGetter)), 3)
        << "for the outer, the inner, and the outer again";
}

TEST(DictionariesToCocoa, ForgetTheMethodsWhenAConversionFails) {
    DictionariesOn on;
    const host::ObjectRef nils = on.bridge.host.arrayOf(host::Kind::Variant, {nullptr});
    const host::ObjectRef host = on.dictionary({{"nils", nils}});
    EXPECT_FALSE(on.bridge.object_of(host));
    EXPECT_NE(on.bridge.host.raised(), "");
    watch_loading(on.bridge.host);
    EXPECT_FALSE(on.bridge.object_of(host));
    EXPECT_NE(on.bridge.host.raised(), "");
    EXPECT_THAT(loadedMethods, testing::Contains(keyGetter));
}

TEST(DictionariesFromCocoa, HoldTheConvertedKeysAndValues) {
    DictionariesOn on;
    NSDictionary* const source = [NSDictionary
        dictionaryWithObjectsAndKeys:@"Wert", @"text", [NSNumber numberWithBool:YES],
                                     [NSNumber numberWithInt:2], [NSNull null], @"nothing", nil];
    const host::ObjectRef made = on.bridge.value_of(source).objectRef();
    EXPECT_EQ(on.bridge.host.references(made), 1);
    EXPECT_EQ(on.count(made), 3);
    EXPECT_EQ(on.value(made, "text").utf8(), "Wert");
    EXPECT_EQ(on.value(made, 2).kind(), host::Kind::Boolean);
    EXPECT_TRUE(on.value(made, "nothing").isNil());
}

TEST(DictionariesFromCocoa, AreEmptyWhenTheyAreEmpty) {
    DictionariesOn on;
    EXPECT_EQ(on.count(on.bridge.value_of([NSDictionary dictionary]).objectRef()), 0);
}

TEST(DictionariesFromCocoa, AreEmptyWithoutASetter) {
    DictionariesOn on;
    watch_loading(on.bridge.host);
    refusedMethod = setter;
    EXPECT_EQ(
        on.count(
            on.bridge.value_of([NSDictionary dictionaryWithObject:@"v" forKey:@"k"]).objectRef()),
        0);
}

TEST(DictionariesFromCocoa, AreEmptyWhereTheHostLoadsNoMethods) {
    DictionariesOn on({"REALLoadObjectMethod"});
    EXPECT_EQ(
        on.count(
            on.bridge.value_of([NSDictionary dictionaryWithObject:@"v" forKey:@"k"]).objectRef()),
        0);
}

TEST(DictionariesFromCocoa, AreNilWhereTheHostMakesNone) {
    DictionariesOn on({"PluginNewInstance"});
    EXPECT_FALSE(on.bridge.value_of([NSDictionary dictionaryWithObject:@"v" forKey:@"k"]).object());
}

TEST(DictionariesFromCocoa, LoadTheMethodsOnceForEachConversion) {
    DictionariesOn on;
    watch_loading(on.bridge.host);
    on.bridge.value_of([NSDictionary dictionaryWithObjectsAndKeys:@"1", @"a", @"2", @"b", nil]);
    EXPECT_THAT(loadedMethods, ElementsAre(setter, getter, keyGetter));
}

TEST(DictionariesWithinThemselves, RaiseAndGiveEverythingBack) {
    DictionariesOn on;
    const host::ObjectRef endless = on.dictionary({{"number", 1}});
    on.bridge.host.assign(endless, "Value", "self", endless);
    EXPECT_FALSE(on.bridge.object_of(endless));
    EXPECT_THAT(on.bridge.host.raised(), testing::HasSubstr("nested more than 1000 levels deep"));

    NSMutableDictionary* const endlessSource = [NSMutableDictionary dictionary];
    [endlessSource setObject:endlessSource forKey:@"self"];
    EXPECT_FALSE(on.bridge.value_of(endlessSource).object());
    EXPECT_THAT(on.bridge.host.raised(), testing::HasSubstr("nested more than 1000 levels deep"));
    [endlessSource removeAllObjects];

    on.bridge.host.call(endless, "Clear");
    EXPECT_EQ([on.bridge.object_of(on.dictionary({{"a", 1}})).get() count], 1u)
        << "no level is left behind";
}

TEST(ArraysWithinThemselves, RaiseAndGiveEverythingBack) {
    DictionariesOn on;
    const host::ObjectRef endless = on.bridge.host.arrayOf(host::Kind::Variant);
    host::stateOf<host::Array>(endless.get())->elements.emplace_back(endless);
    EXPECT_FALSE(on.bridge.object_of(endless));
    EXPECT_THAT(on.bridge.host.raised(), testing::HasSubstr("nested more than 1000 levels deep"));
    host::stateOf<host::Array>(endless.get())->elements.clear();

    NSMutableArray* const endlessSource = [NSMutableArray array];
    [endlessSource addObject:endlessSource];
    EXPECT_FALSE(on.bridge.value_of(endlessSource).object());
    EXPECT_THAT(on.bridge.host.raised(), testing::HasSubstr("nested more than 1000 levels deep"));
    [endlessSource removeAllObjects];
}

} // namespace
