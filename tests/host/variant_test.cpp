#include "host/called_services.h"
#include "support/host.h"

#include <gmock/gmock.h>

namespace {

using namespace REALservices;

class Variants : public testing::Test {
protected:
    /// The value in a Variant that a service made.
    static host::Value held(REALobjectStruct* variant) {
        return host::unboxed(host::ObjectRef::adopt(variant));
    }

    Host host{{.bare = true}};
};

TEST_F(Variants, HoldWhatTheyWereMadeOf) {
    EXPECT_EQ(*held(service(Int32ToVariant)(-5)).get<std::int32_t>(), -5);
    EXPECT_EQ(*held(service(UInt32ToVariant)(UINT32_MAX)).get<std::uint32_t>(), UINT32_MAX);
    EXPECT_EQ(*held(service(Int64ToVariant)(INT64_MIN)).get<std::int64_t>(), INT64_MIN);
    EXPECT_EQ(*held(service(UInt64ToVariant)(UINT64_MAX)).get<std::uint64_t>(), UINT64_MAX);
    EXPECT_EQ(*held(service(SingleToVariant)(0.5F)).get<float>(), 0.5F);
    EXPECT_EQ(*held(service(DoubleToVariant)(0.1)).get<double>(), 0.1);
    EXPECT_TRUE(*held(service(BooleanToVariant)(1)).get<bool>());
    EXPECT_EQ(held(service(StringToVariant)(host.text("abc").get())).utf8(), "abc");
    EXPECT_EQ(held(service(StringToVariant)(nullptr)).kind(), host::Kind::String);
}

TEST_F(Variants, OfObjectsAreTheObjects) {
    const host::ObjectRef block = host.memoryBlock("x");
    EXPECT_EQ(host::boxed(block), block);
    EXPECT_EQ(host::unboxed(block).object(), block.get());
    EXPECT_FALSE(host::boxed(nullptr));
}

TEST_F(Variants, TellTheirType) {
    using host::varType;
    EXPECT_EQ(varType(nullptr), 0);
    EXPECT_EQ(varType(std::int32_t{1}), 2);
    EXPECT_EQ(varType(std::int64_t{1}), 3);
    EXPECT_EQ(varType(1.0F), 4);
    EXPECT_EQ(varType(1.0), 5);
    EXPECT_EQ(varType(host::Currency{10000}), 6);
    EXPECT_EQ(varType("text"), 8);
    EXPECT_EQ(varType(host.memoryBlock("x")), 9);
    EXPECT_EQ(varType(true), 11);
    EXPECT_EQ(varType(host::Color{0x123456}), 16);
    EXPECT_EQ(varType(host.arrayOf(host::Kind::Int32)), 0x1002);
    EXPECT_EQ(varType(host.arrayOf(host::Kind::String)), 0x1008);
    EXPECT_EQ(varType(host.arrayOf(host::Type::object("MemoryBlock"))), 0x1009);
    EXPECT_EQ(varType(host.arrayOf(host::Kind::Variant)), 0x1009);
}

TEST_F(Variants, ShowTheirValueThroughProperties) {
    const auto number = host::ObjectRef::adopt(service(Int32ToVariant)(42));
    std::int32_t code = 0;
    ASSERT_EQ(service(GetPropValueInt32)(number.get(), "Type", &code), 1);
    EXPECT_EQ(code, 2);
    std::int64_t wide = 0;
    ASSERT_EQ(service(GetPropValueInt64)(number.get(), "LongValue", &wide), 1);
    EXPECT_EQ(wide, 42);
    double real = 0;
    ASSERT_EQ(service(GetPropValueDouble)(number.get(), "DoubleValue", &real), 1);
    EXPECT_EQ(real, 42);
    float single = 0;
    ASSERT_EQ(service(GetPropValueSingle)(number.get(), "SingleValue", &single), 1);
    EXPECT_EQ(single, 42);
    REALstringStruct* text = nullptr;
    ASSERT_EQ(service(GetPropValueString)(number.get(), "StringValue", &text), 1);
    EXPECT_EQ(host::StringRef::adopt(text).bytes(), "42");
}

TEST_F(Variants, AreReadThroughServices) {
    const auto number = host::ObjectRef::adopt(service(DoubleToVariant)(-2.75));
    EXPECT_EQ(service(VariantToInt32)(number.get()), -2);
    EXPECT_EQ(service(VariantToInt64)(number.get()), -2);
    EXPECT_EQ(service(VariantToSingle)(number.get()), -2.75F);
    EXPECT_EQ(service(VariantToDouble)(number.get()), -2.75);
    EXPECT_EQ(host::StringRef::adopt(service(VariantToString)(number.get())).bytes(), "-2.75");
    const host::ObjectRef flag = host::boxed(true);
    EXPECT_EQ(service(VariantToInt32)(flag.get()), 1);
    const host::ObjectRef colour = host::boxed(host::Color{0x123456});
    EXPECT_EQ(service(VariantToInt32)(colour.get()), 0x123456);
    const host::ObjectRef amount = host::boxed(host::Currency{15000});
    EXPECT_EQ(service(VariantToDouble)(amount.get()), 1.5);
}

TEST_F(Variants, OfTextGiveTheStringItself) {
    const host::StringRef text = host.text("abc");
    const auto variant = host::ObjectRef::adopt(service(StringToVariant)(text.get()));
    const auto read = host::StringRef::adopt(service(VariantToString)(variant.get()));
    EXPECT_EQ(read.get(), text.get());
    EXPECT_EQ(host.references(text), 3);
}

TEST_F(Variants, OfDatesAreReadAsTextAndAsSeconds) {
    const host::ObjectRef date = host.create("Date", 1904, 1, 2);
    EXPECT_EQ(host::varType(date), 7);
    EXPECT_EQ(service(VariantToDouble)(date.get()), 86400);
    EXPECT_EQ(host::StringRef::adopt(service(VariantToString)(date.get())).bytes(),
              "1904-01-02 00:00:00");
    REALobjectStruct* read = nullptr;
    ASSERT_EQ(service(GetPropValueObject)(date.get(), "DateValue", &read), 1);
    EXPECT_EQ(host::ObjectRef::adopt(read), date);
    EXPECT_EQ(host.references(date), 1);
}

TEST_F(Variants, OfTextAreReadAsDatesWhereTheyNameOne) {
    const auto dateOf = [](std::string_view text) {
        REALobjectStruct* date = nullptr;
        const host::ObjectRef variant = host::boxed(text);
        EXPECT_EQ(service(GetPropValueObject)(variant.get(), "DateValue", &date), 1);
        return host::ObjectRef::adopt(date);
    };
    const auto sql = [&](std::string_view text) {
        const host::ObjectRef date = dateOf(text);
        return date ? host.get<std::string>(date, "SQLDateTime") : "Nil";
    };
    EXPECT_EQ(sql("2000-02-29 10:20:30"), "2000-02-29 10:20:30");
    EXPECT_EQ(sql("1904-01-02"), "1904-01-02 00:00:00");
    EXPECT_EQ(host.references(dateOf("1904-01-02")), 1);
    for (const char* const other :
         {"", "soon", "2001-02-29", "2000-02-29 10:20", "2000-02-29 24:00:00", "2000-02-29x", "42"})
        EXPECT_EQ(sql(other), "Nil") << other;
}

TEST_F(Variants, OfOtherKindsAreReadAsNeutralValues) {
    const host::ObjectRef dictionary = host.create("Dictionary");
    EXPECT_EQ(service(VariantToInt32)(dictionary.get()), 0);
    EXPECT_EQ(service(VariantToDouble)(dictionary.get()), 0);
    EXPECT_EQ(service(VariantToString)(dictionary.get()), nullptr);
    EXPECT_EQ(service(VariantToInt64)(nullptr), 0);
    REALobjectStruct* read = dictionary.get();
    ASSERT_EQ(service(GetPropValueObject)(dictionary.get(), "DateValue", &read), 1);
    EXPECT_EQ(read, nullptr);
    const auto word = host.text("x");
    service(VariantToInt32)(reinterpret_cast<REALobjectStruct*>(word.get()));
    EXPECT_EQ(host.takeReports().front(),
              "VariantToInt32: argument 1: String where an object is expected");
}

TEST_F(Variants, TellTheirTypeToPluginsThroughAFunction) {
    using VarType = std::int32_t (*)(REALobjectStruct*);
    const auto varType = reinterpret_cast<VarType>(
        service(LoadGlobalMethod)(nullptr, "VarType(value As Variant) As Int32"));
    ASSERT_NE(varType, nullptr);
    const host::ObjectRef dates = host.arrayOf(host::Type::object("Date"));
    EXPECT_EQ(varType(host::boxed(host::Currency{1}).get()), 6);
    EXPECT_EQ(varType(dates.get()), 0x1007);
    EXPECT_EQ(varType(nullptr), 0);
    EXPECT_EQ(host.references(dates), 1);
}

TEST_F(Variants, OfObjectsShowTheSameProperties) {
    const host::ObjectRef block = host.memoryBlock("x");
    std::int32_t code = 0;
    ASSERT_EQ(service(GetPropValueInt32)(block.get(), "Type", &code), 1);
    EXPECT_EQ(code, 9);
    REALobjectStruct* object = nullptr;
    ASSERT_EQ(service(GetPropValueObject)(block.get(), "ObjectValue", &object), 1);
    EXPECT_EQ(host::ObjectRef::adopt(object), block);
}

} // namespace
