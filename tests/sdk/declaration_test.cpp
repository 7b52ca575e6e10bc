#include "sdk/declaration.h"

#include <gtest/gtest.h>

#include <string>

using namespace REALdeclarations;

namespace {

TEST(Declaration, OfAMethodWithoutParametersHasItsResult) {
    const auto declaration = parse("representations as NSImageRepZNT()");
    ASSERT_TRUE(declaration);
    EXPECT_EQ(declaration->name, "representations");
    EXPECT_EQ(declaration->parameterCount, 0U);
    EXPECT_EQ(declaration->result.name, "NSImageRepZNT");
    EXPECT_TRUE(declaration->result.isArray);
}

TEST(Declaration, WithoutResultIsARoutine) {
    const auto declaration = parse("setSize(width as double, height as double)");
    ASSERT_TRUE(declaration);
    EXPECT_FALSE(declaration->result);
    ASSERT_EQ(declaration->parameterCount, 2U);
    EXPECT_EQ(declaration->parameters[1].name, "height");
    EXPECT_EQ(declaration->parameters[1].type.name, "double");
}

TEST(Declaration, KeepsDefaultsAsWritten) {
    const auto declaration =
        parse("f(a as Picture, b as picture = nil, c as double = -1.5, d as string = \"x, )\")");
    ASSERT_TRUE(declaration);
    EXPECT_FALSE(declaration->parameters[0].isOptional);
    EXPECT_EQ(declaration->parameters[1].defaultValue, "nil");
    EXPECT_EQ(declaration->parameters[2].defaultValue, "-1.5");
    EXPECT_EQ(declaration->parameters[3].defaultValue, "\"x, )\"");
    EXPECT_TRUE(declaration->parameters[3].isOptional);
}

TEST(Declaration, KnowsTheModifiersOfParameters) {
    const auto declaration = parse("Value(key As Variant, ByRef seen As Boolean, Optional more() "
                                   "As String, Assigns _value As Variant)");
    ASSERT_TRUE(declaration);
    EXPECT_TRUE(declaration->parameters[1].isByRef);
    EXPECT_TRUE(declaration->parameters[2].isOptional);
    EXPECT_TRUE(declaration->parameters[2].type.isArray);
    EXPECT_TRUE(declaration->parameters[3].isAssigned);
    EXPECT_EQ(declaration->parameters[3].name, "_value");
}

TEST(Declaration, MayHaveBlanksAroundEverything) {
    const auto declaration = parse(" LenB( s as string ) as integer ");
    ASSERT_TRUE(declaration);
    EXPECT_EQ(declaration->name, "LenB");
    EXPECT_EQ(declaration->parameters[0].name, "s");
    EXPECT_EQ(declaration->result.name, "integer");
}

TEST(Declaration, ThatIsBrokenIsNone) {
    for (const char* text : {"", "(", "f(", "f(a", "f(a as", "f(a as double", "f(a as double,)",
                             "f(a double)", "1f", "f as", "f as double x", "f(a as double = )",
                             "f(a as string = \"open)", "f(a as double()", "f(,)"})
        EXPECT_FALSE(parse(text)) << text;
}

TEST(Declaration, TakesNoMoreThanSixteenParameters) {
    std::string text = "f(p0 as double";
    for (int i = 1; i < 16; ++i)
        text += ", p" + std::to_string(i) + " as double";
    EXPECT_TRUE(parse(text + ")"));
    EXPECT_FALSE(parse(text + ", p16 as double)"));
}

TEST(Constant, IsANameAndAValue) {
    const auto spaced = parse_constant("NSImageRepMatchesDevice = 0");
    ASSERT_TRUE(spaced);
    EXPECT_EQ(spaced->name, "NSImageRepMatchesDevice");
    EXPECT_EQ(spaced->value, "0");
    EXPECT_EQ(parse_constant("NSImageRepLoadStatusUnknownType=-1")->value, "-1");
    EXPECT_FALSE(parse_constant("Name"));
    EXPECT_FALSE(parse_constant("Name="));
    EXPECT_FALSE(parse_constant("=1"));
}

TEST(PassesAs, MapsEachHostTypeToOneCType) {
    EXPECT_TRUE(passes_as<REALword>({"INTEGER"}));
    EXPECT_TRUE(passes_as<bool>({"boolean"}));
    EXPECT_TRUE(passes_as<float>({"Single"}));
    EXPECT_TRUE(passes_as<double>({"Double"}));
    EXPECT_TRUE(passes_as<std::int64_t>({"Int64"}));
    EXPECT_TRUE(passes_as<std::uint64_t>({"UInt64"}));
    EXPECT_TRUE(passes_as<REALstringStruct*>({"string"}));
    EXPECT_TRUE(passes_as<REALmemoryBlockStruct*>({"Memoryblock"}));
    EXPECT_TRUE(passes_as<REALfolderItemStruct*>({"folderitem"}));
    EXPECT_TRUE(passes_as<REALobjectStruct*>({"Variant"}));
    EXPECT_TRUE(passes_as<REALobjectStruct*>({"NSImageZNT"}));
    EXPECT_TRUE(passes_as<REALarrayStruct*>({"string", true}));
    EXPECT_TRUE(passes_as<void*>({"Ptr"}));
    EXPECT_TRUE(passes_as<void>({}));
    EXPECT_FALSE(passes_as<double>({"Single"}));
    EXPECT_FALSE(passes_as<std::int32_t>({"Boolean"}));
    EXPECT_FALSE(passes_as<REALobjectStruct*>({"string"}));
    EXPECT_FALSE(passes_as<REALstringStruct*>({"string", true}));
}

TEST(Matches, TakesPointersForParametersByReference) {
    const auto declaration = *parse("f(ByRef n as Integer) as Double");
    EXPECT_TRUE((matches<double, REALword*>(declaration)));
    EXPECT_FALSE((matches<double, REALword>(declaration)));
    EXPECT_FALSE((matches<float, REALword*>(declaration)));
    EXPECT_FALSE((matches<double>(declaration)));
}

} // namespace
