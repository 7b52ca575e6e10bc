#include "host/called_services.h"
#include "support/host.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

using namespace REALservices;
using testing::ElementsAre;

/// The functions that a plug-in loads from a Dictionary.
using Setter = void (*)(REALobjectStruct*, REALobjectStruct* key, REALobjectStruct* value);
using Getter = REALobjectStruct* (*)(REALobjectStruct*, REALobjectStruct* key);
using KeyGetter = REALobjectStruct* (*)(REALobjectStruct*, REALword index);

class Dictionaries : public testing::Test {
protected:
    void put(const host::Value& key, const host::Value& value) {
        host.assign(dictionary, "Value", key, value);
    }
    host::Value at(const host::Value& key) { return host.call(dictionary, "Value", key); }
    bool has(const host::Value& key) { return host.call<bool>(dictionary, "HasKey", key); }
    int count() { return host.get<int>(dictionary, "Count"); }
    std::vector<std::string> keys() {
        std::vector<std::string> texts;
        for (const host::Value& key : host.elements(host.call(dictionary, "Keys")))
            texts.push_back(key.utf8());
        return texts;
    }
    template <typename Function>
    Function loaded(const char* declaration) {
        return reinterpret_cast<Function>(service(LoadObjectMethod)(dictionary.get(), declaration));
    }

    Host host{{.bare = true}};
    host::ObjectRef dictionary = host.create("Dictionary");
};

TEST_F(Dictionaries, StartEmpty) {
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(keys().empty());
    EXPECT_FALSE(has("x"));
}

TEST_F(Dictionaries, KeepTheOrderInWhichKeysCame) {
    for (const char* const key : {"pear", "apple", "fig"})
        put(key, 1);
    put("apple", 2);
    EXPECT_THAT(keys(), ElementsAre("pear", "apple", "fig"));
    EXPECT_EQ(host.call(dictionary, "Key", 1).utf8(), "apple");
    EXPECT_EQ(at("apple").toInt64(), 2);
    host.call(dictionary, "Remove", "pear");
    put("pear", 3);
    EXPECT_THAT(keys(), ElementsAre("apple", "fig", "pear"));
    EXPECT_EQ(host.call(dictionary, "Key", 2).utf8(), "pear");
    EXPECT_EQ(at("fig").toInt64(), 1);
    const auto values = host.elements(host.call(dictionary, "Values"));
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[2].toInt64(), 3);
}

TEST_F(Dictionaries, FindTextWithoutRegardToCase) {
    put("Größe", 1);
    put("GRÖßE", 2);
    EXPECT_THAT(keys(), ElementsAre("Größe"));
    EXPECT_EQ(at("größe").toInt64(), 2);
    EXPECT_TRUE(has(host.text("Gr\x9A\xA7"
                              "e",
                              REALtextEncodingMacRoman)));
    EXPECT_FALSE(has("Grosse"));
}

TEST_F(Dictionaries, FindNumbersByTheirValueWhateverTheirType) {
    put(7, "seven");
    EXPECT_EQ(at(std::int64_t{7}).utf8(), "seven");
    EXPECT_EQ(at(7.0).utf8(), "seven");
    EXPECT_EQ(at(host::Currency{70000}).utf8(), "seven");
    EXPECT_FALSE(has(7.5));
    put(7.5, "more");
    EXPECT_EQ(at(7.5F).utf8(), "more");
    put(UINT64_MAX, "all ones");
    EXPECT_FALSE(has(-1));
    EXPECT_FALSE(has(0x1p64));
    put(INT64_MAX, "largest");
    EXPECT_FALSE(has(0x1p63)) << "a neighbour that is one larger";
    put(std::nan(""), "none");
    EXPECT_EQ(at(std::nan("")).utf8(), "none");
}

TEST_F(Dictionaries, TellTextNumbersBooleansAndColoursApart) {
    put("1", "text");
    put(1, "number");
    put(true, "Boolean");
    put(host::Color{1}, "Color");
    put(nullptr, "Nil");
    EXPECT_EQ(count(), 5);
    EXPECT_EQ(at("1").utf8(), "text");
    EXPECT_EQ(at(1).utf8(), "number");
    EXPECT_EQ(at(true).utf8(), "Boolean");
    EXPECT_EQ(at(host::Color{1}).utf8(), "Color");
    EXPECT_EQ(at(nullptr).utf8(), "Nil");
    EXPECT_FALSE(has(0));
}

TEST_F(Dictionaries, FindDatesByTheirTimeAndOtherObjectsByIdentity) {
    put(host.create("Date", 2000, 2, 29), "leap day");
    EXPECT_EQ(at(host.create("Date", 2000, 2, 29)).utf8(), "leap day");
    EXPECT_FALSE(has(host.create("Date", 2000, 3, 1)));
    const host::ObjectRef block = host.memoryBlock("x");
    put(block, "block");
    EXPECT_TRUE(has(block));
    EXPECT_FALSE(has(host.memoryBlock("x")));
}

TEST_F(Dictionaries, RaiseForKeysAndIndexesThatAreNotThere) {
    at("colour");
    EXPECT_EQ(host.raised(), "KeyNotFoundException: The Dictionary has no key \"colour\".");
    host.call(dictionary, "Remove", 12);
    EXPECT_EQ(host.raised(), "KeyNotFoundException: The Dictionary has no key 12.");
    put("a", 1);
    host.call(dictionary, "Key", 1);
    EXPECT_EQ(host.raised(),
              "OutOfBoundsException: The index is 1, but the Dictionary has 1 entries.");
    host.call(dictionary, "Key", -1);
    EXPECT_EQ(host.raised(),
              "OutOfBoundsException: The index is -1, but the Dictionary has 1 entries.");
}

TEST_F(Dictionaries, LookUpADefaultForAKeyThatIsNotThere) {
    put("a", 1);
    EXPECT_EQ(host.call(dictionary, "Lookup", "a", 5).toInt64(), 1);
    EXPECT_EQ(host.call(dictionary, "Lookup", "b", 5).toInt64(), 5);
    EXPECT_EQ(count(), 1);
}

TEST_F(Dictionaries, GiveBackWhatTheyHeld) {
    const host::ObjectRef block = host.memoryBlock("x");
    put(block, 1);
    put("a", block);
    put("b", block);
    EXPECT_EQ(host.references(block), 4);
    put("a", 1);
    EXPECT_EQ(host.references(block), 3);
    host.call(dictionary, "Remove", "b");
    EXPECT_EQ(host.references(block), 2);
    host.call(dictionary, "Clear");
    EXPECT_EQ(host.references(block), 1);
    EXPECT_EQ(count(), 0);
    EXPECT_FALSE(has(block));
}

TEST_F(Dictionaries, NestDeeply) {
    constexpr int depth = 1000;
    for (int i = 0; i < depth; ++i) {
        const host::ObjectRef outer = host.create("Dictionary");
        host.assign(outer, "Value", "inner", dictionary);
        dictionary = outer;
    }
    EXPECT_EQ(host.instances("Dictionary"), depth + 1u);
    dictionary = nullptr;
    EXPECT_EQ(host.instances("Dictionary"), 0u);
}

TEST_F(Dictionaries, StayInOrderWhereManyKeysGo) {
    constexpr int many = 20000;
    for (int i = 0; i < many; ++i)
        put(i, i);
    for (int i = 0; i < many; i += 2)
        host.call(dictionary, "Remove", i);
    ASSERT_EQ(count(), many / 2);
    for (int i = 0; i < many / 2; i += 999) {
        EXPECT_EQ(host.call(dictionary, "Key", i).toInt64(), 2 * i + 1);
        EXPECT_EQ(at(2 * i + 1).toInt64(), 2 * i + 1);
    }
}

TEST_F(Dictionaries, OfferThreeMethodsToPlugins) {
    const auto set = loaded<Setter>("Value(key As Variant, Assigns _value As Variant)");
    const auto get = loaded<Getter>("Value(key As Variant) As Variant");
    const auto keyAt = loaded<KeyGetter>("Key(index As Integer) As Variant");
    ASSERT_TRUE(set && get && keyAt);
    const auto key = host::ObjectRef::adopt(service(Int32ToVariant)(7));
    const host::ObjectRef block = host.memoryBlock("x");
    set(dictionary.get(), key.get(), block.get());
    EXPECT_EQ(host.references(key), 1);
    EXPECT_EQ(host.references(block), 2);
    EXPECT_EQ(host::ObjectRef::adopt(get(dictionary.get(), key.get())), block);
    const auto firstKey = host::ObjectRef::adopt(keyAt(dictionary.get(), 0));
    EXPECT_EQ(service(VariantToInt32)(firstKey.get()), 7);
    std::int32_t counted = 0;
    EXPECT_EQ(service(GetPropValueInt32)(dictionary.get(), "Count", &counted), 1);
    EXPECT_EQ(counted, 1);
}

TEST_F(Dictionaries, OfferNoMethodOfAnotherDeclaration) {
    EXPECT_EQ(loaded<void*>("Value(key As String) As Variant"), nullptr);
    EXPECT_EQ(loaded<void*>("Value(key As Variant, _value As Variant)"), nullptr);
    EXPECT_EQ(loaded<void*>("TrueItem(Index as integer) as Folderitem"), nullptr);
}

TEST_F(Dictionaries, GivePluginsNilForAKeyThatIsNotThere) {
    const auto get = loaded<Getter>("Value(key As Variant) As Variant");
    const auto key = host::ObjectRef::adopt(service(Int32ToVariant)(7));
    EXPECT_EQ(get(dictionary.get(), key.get()), nullptr);
    const host::ObjectRef raised = host.runtime().takePending();
    EXPECT_EQ(host.get<std::string>(raised, "Message"), "The Dictionary has no key 7.");
}

TEST_F(Dictionaries, AreMadeByPluginsToo) {
    const auto made = host::ObjectRef::adopt(service(NewInstance)("Dictionary"));
    EXPECT_EQ(service(ObjectIsA)(made.get(), service(GetClassRef)("Dictionary")), 1);
    EXPECT_EQ(host.get<int>(made, "Count"), 0);
}

} // namespace
