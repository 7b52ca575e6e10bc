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
