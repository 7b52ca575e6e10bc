#include "support/host.h"

#include <cmath>
#include <limits>

namespace {

using host::convert;
using host::Currency;
using host::Kind;
using host::Type;
using host::Value;

class Values : public testing::Test {
protected:
    Host host{{.bare = true}};
};

TEST_F(Values, ShowNumbersAsText) {
    EXPECT_EQ(Value(-12).utf8(), "-12");
    EXPECT_EQ(Value(UINT64_MAX).utf8(), "18446744073709551615");
    EXPECT_EQ(Value(0.1).utf8(), "0.1");
    EXPECT_EQ(Value(100.0).utf8(), "100");
    EXPECT_EQ(Value(0.1F).utf8(), "0.1");
    EXPECT_EQ(Value(true).utf8(), "True");
    EXPECT_EQ(Value(Currency{-12500}).utf8(), "-1.25");
    EXPECT_EQ(Value(Currency{INT64_MIN}).utf8(), "-922337203685477.5808");
    EXPECT_EQ(Value(std::nan("")).utf8(), "NaN");
}

TEST_F(Values, ReadNumbersFromText) {
    EXPECT_EQ(Value(" 12.5abc").toDouble(), 12.5);
    EXPECT_EQ(Value("9223372036854775807").toInt64(), INT64_MAX);
    EXPECT_EQ(Value("-3").toInt64(), -3);
    EXPECT_EQ(Value("abc").toDouble(), 0);
    EXPECT_EQ(Value("1e999").toDouble(), 0);
}

TEST_F(Values, KeepIntegersWithinTheirRange) {
    EXPECT_EQ(Value(1e300).toInt64(), INT64_MAX);
    EXPECT_EQ(Value(-1e300).toInt64(), INT64_MIN);
    EXPECT_EQ(Value(std::nan("")).toInt64(), 0);
    EXPECT_EQ(Value(-1.0).toUInt64(), 0u);
    EXPECT_EQ(Value(-2.9).toInt64(), -2);
}

TEST_F(Values, ConvertAmongNumbers) {
    EXPECT_EQ(*convert(3, Kind::Double)->get<double>(), 3);
    EXPECT_EQ(*convert(2.75, Kind::Int32)->get<std::int32_t>(), 2);
    EXPECT_EQ(*convert(-1, Kind::UInt32)->get<std::uint32_t>(), UINT32_MAX);
    EXPECT_EQ(convert(1.25, Kind::Currency)->get<Currency>()->tenThousandths, 12500);
    EXPECT_EQ(convert(Currency{12500}, Kind::Double)->toDouble(), 1.25);
    EXPECT_EQ(convert(0x1FFFFFF, Kind::Color)->get<host::Color>()->rgb, 0xFFFFFFu);
}

TEST_F(Values, ConvertToWhatAnObjectIs) {
    const host::ObjectRef exception = host.create("IOException");
    EXPECT_TRUE(convert(exception, Type::object("RuntimeException")));
    EXPECT_TRUE(convert(exception, Kind::Object));
    EXPECT_FALSE(convert(exception, Type::object("FolderItem")));
    EXPECT_FALSE(convert(exception, Type::object("NoSuchClass")));
    EXPECT_FALSE(convert(exception, Kind::String));
    EXPECT_FALSE(convert(exception, Kind::Double));
    EXPECT_FALSE(convert(5, Kind::Object));
}

TEST_F(Values, ConvertNilToEveryObject) {
    EXPECT_TRUE(convert(nullptr, Type::object("NoSuchClass"))->isNil());
    EXPECT_TRUE(convert(nullptr, Type(Kind::String).array())->isNil());
    EXPECT_EQ(*convert(nullptr, Kind::Pointer)->get<void*>(), nullptr);
    EXPECT_FALSE(convert(nullptr, Kind::Double));
    EXPECT_FALSE(convert(nullptr, Kind::String));
}

TEST_F(Values, DoNotConvertArraysOfOtherElements) {
    const host::ObjectRef array = host.arrayOf(Kind::Int32, {1});
    EXPECT_TRUE(convert(array, Type(Kind::Int32).array()));
    EXPECT_FALSE(convert(array, Type(Kind::Double).array()));
    EXPECT_FALSE(convert(host.memoryBlock("x"), Type(Kind::Int32).array()));
}

TEST_F(Values, KnowTheirTypes) {
    EXPECT_EQ(Value(nullptr).type(), Type(Kind::Nil));
    EXPECT_EQ(Value(host.memoryBlock("x")).type(), Type::object("memoryblock"));
    EXPECT_EQ(Value(host.arrayOf(Kind::String)).type().name(), "String()");
    EXPECT_EQ(Value(static_cast<REALword>(1)).type(), Type::integer());
    EXPECT_EQ(Type::integer().name(), "Integer");
    EXPECT_EQ(Type::named("nsimageznt").name(), "nsimageznt");
    EXPECT_EQ(Type::named("object"), Type(Kind::Object));
}

TEST_F(Values, AreReadFromLiterals) {
    const auto literal = [](std::string_view text) { return host::parseLiteral(text); };
    EXPECT_EQ(literal("-10000")->toInt64(), -10000);
    EXPECT_EQ(literal("0.5")->toDouble(), 0.5);
    EXPECT_EQ(literal("&hFF")->toInt64(), 255);
    EXPECT_EQ(literal("&b101")->toInt64(), 5);
    EXPECT_EQ(literal("&cFF8000")->get<host::Color>()->rgb, 0xFF8000u);
    EXPECT_EQ(literal("\"say \"\"hi\"\"\"")->utf8(), "say \"hi\"");
    EXPECT_TRUE(literal("true")->toBoolean());
    EXPECT_TRUE(literal("NIL")->isNil());
    for (const char* text : {"", "abc", "&h", "&hXY", "1.2.3", "\"open", "&c1234567", "12a"})
        EXPECT_FALSE(literal(text)) << text;
}

TEST_F(Values, CostLessToConvertTheCloserTheTypesAre) {
    const auto cost = [](const Type& from, const Type& to) {
        return host::conversionCost(from, to).value_or(1000);
    };
    EXPECT_EQ(cost(Kind::Int32, Kind::Int32), 0);
    EXPECT_LT(cost(Kind::Int32, Kind::Int64), cost(Kind::Int32, Kind::Double));
    EXPECT_LT(cost(Kind::Int32, Kind::Double), cost(Kind::Double, Kind::Int32));
    EXPECT_LT(cost(Type::object("IOException"), Type::object("RuntimeException")),
              cost(Type::object("IOException"), Kind::Object));
    EXPECT_LT(cost(Kind::String, Type::object("MemoryBlock")), cost(Kind::String, Kind::Variant));
    EXPECT_EQ(cost(Kind::String, Kind::Double), 1000);
    EXPECT_EQ(cost(Kind::Double, Kind::String), 1000);
    EXPECT_EQ(cost(Kind::Boolean, Kind::Int32), 1000);
    EXPECT_EQ(cost(Kind::Nil, Kind::String), 1000);
}

TEST_F(Values, OfDeclarationsAreReadWithTheirDefaults) {
    const auto signature = host::Signature::parse(
        "imageWithCGImage(CGImage as variant, width as double = 0, height as double = 0) as "
        "NSImageZNT");
    ASSERT_TRUE(signature);
    EXPECT_EQ(signature->requiredCount(), 1u);
    EXPECT_EQ(*signature->parameters[1].defaultValue->get<double>(), 0);
    EXPECT_EQ(signature->text(), "imageWithCGImage(CGImage As Variant, width As Double = 0, height "
                                 "As Double = 0) As NSImageZNT");
    EXPECT_FALSE(host::Signature::parse("f(a as FolderItem = 5)")) << "5 is no FolderItem";
    EXPECT_FALSE(host::Signature::parse("f(Assigns a as Integer, b as Integer)"));
}

} // namespace
