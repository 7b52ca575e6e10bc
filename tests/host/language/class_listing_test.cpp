#include "host/language/class_listing.h"
#include "tests/support/host.h"

TEST(ClassListing, ShowsEveryKindOfMember) {
    const Host host{{.bare = true}};
    const host::Class root("Object");
    const host::Class shape("Shape", &root);
    host::Class type("Circle", &shape);
    type.flags = 0;
    type.addProperty("Radius", host::Kind::Double, {}, {});
    type.addProperty("Centre", host::Type::object("NSPointZNT"), {},
                     [](REALobjectStruct*, const host::Value&) {})
        .flags = 0;
    type.addMethod("Grow(factor As Double = 2)", {});
    type.addMethod("Points() As NSPointZNT()", {}).flags = 0;
    type.addConstant("Sides", REALword{0});
    type.addSharedMethod("Unit() As Circle", {});
    EXPECT_EQ(host::language::describe(type),
              "Class Circle Inherits Shape\n"
              "    Property Radius As Double  [read-only, console-safe]\n"
              "    Property Centre As NSPointZNT\n"
              "    Sub Grow(factor As Double = 2)  [console-safe]\n"
              "    Function Points() As NSPointZNT()\n"
              "    Const Sides = 0\n"
              "    Shared Function Unit() As Circle  [console-safe]\n");
}

TEST(ClassListing, QuotesConstantsOfText) {
    const Host host{{.bare = true}};
    host::Class type("Named");
    type.addConstant("Name", host::Value("x"));
    EXPECT_EQ(host::language::describe(type),
              "Class Named  [console-safe]\n    Const Name = \"x\"\n");
}

TEST(ClassListing, ShowsAPluginsMethodAsThePluginDeclaresIt) {
    const Host host{{.bare = true}};
    static const char declaration[] = "grow(factor as double=2)";
    int function = 0;
    host::Class type("Circle");
    host::Method& method = type.addMethod(declaration, {});
    method.function = &function;
    type.raw.emplace();
    type.raw->methods.push_back({reinterpret_cast<REALword>(&function), 0,
                                 reinterpret_cast<REALword>(declaration), REALconsoleSafe});
    EXPECT_EQ(host::language::describe(type), "Class Circle  [console-safe]\n"
                                              "    Sub grow(factor as double=2)  [console-safe]\n");
}
