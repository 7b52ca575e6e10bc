#include "companion/base_host.h"

namespace {

constexpr const char* classNames[] = {"NSSizeZNT",         "NSPointZNT",
                                      "NSRectZNT",         "NSRangeZNT",
                                      "QTKitTimeZNT",      "QTKitTimeRangeZNT",
                                      "CMTimeZNT",         "CMTimeRangeZNT",
                                      "CMTimeMappingZNT",  "NSColorSpaceZNT",
                                      "NSColorZNT",        "CGImageZNT",
                                      "NSObjectZNT",       "NSAttributedStringZNT",
                                      "NSCharacterSetZNT", "NSErrorZNT",
                                      "NSLocaleZNT",       "NSTimeZoneZNT",
                                      "CFObjectZNT",       "CFErrorZNT",
                                      "CFUUIDZNT",         "CGColorZNT",
                                      "CGColorSpaceZNT"};

TEST(BasePart, RegistersItsClasses) {
    BaseHost host;
    for (const char* const name : classNames)
        EXPECT_TRUE(host.runtime().findClass(name)) << name;
}

struct Layout {
    double hostVersion;
    int controlVersion;
    std::size_t words, propertyWords, methodWords, constantWords;
};

void PrintTo(const Layout& layout, std::ostream* stream) { *stream << layout.hostVersion; }

class BasePartLayout : public testing::TestWithParam<Layout> {};
INSTANTIATE_TEST_SUITE_P(Hosts, BasePartLayout,
                         testing::Values(Layout{2009.05, 9, 25, 10, 4, 3},
                                         Layout{2010.5, 9, 25, 10, 4, 3},
                                         Layout{2012.0, 10, 29, 12, 6, 5},
                                         Layout{2013.0, 11, 29, 12, 6, 5},
                                         Layout{2013.03, 12, 29, 12, 6, 5}));

TEST_P(BasePartLayout, IsTheOneThatTheHostKnows) {
    const Layout& expected = GetParam();
    BaseHost host{{.version = expected.hostVersion}};
    const host::RawDefinition& raw = *host.runtime().findClass("NSColorSpaceZNT")->raw;
    EXPECT_EQ(raw.controlVersion, expected.controlVersion);
    EXPECT_EQ(raw.words.size(), expected.words);
    EXPECT_EQ(raw.words[0], expected.controlVersion);
    EXPECT_EQ(raw.words[3], 16) << "the data size, rounded up";
    EXPECT_EQ(raw.properties.at(0).size(), expected.propertyWords);
    EXPECT_EQ(raw.sharedMethods.at(0).size(), expected.methodWords);
    EXPECT_EQ(raw.constants.at(0).size(), expected.constantWords);
    EXPECT_EQ(raw.constants.size(), 8U);
}

TEST_P(BasePartLayout, LeavesTheMembersWorking) {
    BaseHost host{{.version = GetParam().hostVersion}};
    const host::ObjectRef size = host.create("NSSizeZNT", 3.0, 4.0);
    EXPECT_EQ(host.get<double>(size, "height"), 4);
    const auto color = host.shared<host::ObjectRef>("NSColorZNT", "colorWithDeviceWhite", 0.5);
    EXPECT_EQ(host.get<double>(color, "whiteComponent"), 0.5);
}

class WithoutService : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(BasePart, WithoutService,
                         testing::Values("RegisterPluginVersion", "REALGetRBVersion",
                                         "PluginRegisterClass", "REALLockObject",
                                         "PluginNewInstance", "pluginObjectType",
                                         "RuntimeObjectIsa", "RuntimeRaiseException",
                                         "REALSetPropValueInt", "REALSetPropValueString",
                                         "REALBuildString", "REALSetStringEncoding"));

TEST_P(WithoutService, EveryMemberAnswers) {
    BaseHost host{{.without = {GetParam()}}};
    host.tolerateLeaks();
    const host::Class* const type = host.runtime().findClass("NSColorZNT");
    if (!type) {
        EXPECT_STREQ(GetParam(), "PluginRegisterClass");
        return;
    }
    for (const host::Method& maker : type->sharedMethods) {
        if (maker.signature.requiredCount() > 0) continue;
        const auto color = host.shared<host::ObjectRef>("NSColorZNT", maker.signature.name);
        EXPECT_EQ(!color, std::string_view(GetParam()) == "PluginNewInstance");
        if (!color) continue;
        for (const host::Property& property : type->properties) {
            host.get(color, property.name);
            host.takeRaised();
        }
    }
}

} // namespace
