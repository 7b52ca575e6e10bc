#include "companion/base_host.h"

namespace {

using host::ObjectRef;

TEST(Geometry, StandsInTheInstanceDataForOtherParts) {
    BaseHost host;
    const ObjectRef size = host.create("NSSizeZNT", 10.5, 20.0);
    EXPECT_EQ(field<float>(size, 0), 10.5F);
    EXPECT_EQ(field<float>(size, 1), 20.0F);
    const ObjectRef point = host.create("NSPointZNT", -1.0, 2.0);
    EXPECT_EQ(field<float>(point, 0), -1.0F);
    EXPECT_EQ(field<float>(point, 1), 2.0F);
    const ObjectRef rect = host.create("NSRectZNT", 1.0, 2.0, 3.0, 4.0);
    for (std::size_t index = 0; index < 4; ++index)
        EXPECT_EQ(field<float>(rect, index), static_cast<float>(index + 1));
    const ObjectRef range = host.create("NSRangeZNT", 7, 4000000000U);
    EXPECT_EQ(field<std::uint32_t>(range, 0), 7U);
    EXPECT_EQ(field<std::uint32_t>(range, 1), 4000000000U);
}

TEST(Geometry, IsReadAndWrittenByPrograms) {
    BaseHost host;
    struct Member {
        const char* className;
        std::vector<const char*> names;
    };
    for (const Member& member :
         {Member{"NSSizeZNT", {"width", "height"}}, Member{"NSPointZNT", {"x", "y"}},
          Member{"NSRectZNT", {"x", "y", "width", "height"}}}) {
        const ObjectRef object = host.create(member.className);
        for (std::size_t index = 0; index < member.names.size(); ++index) {
            EXPECT_EQ(host.get<double>(object, member.names[index]), 0);
            field<float>(object, index) = static_cast<float>(index) + 0.5F;
            EXPECT_EQ(host.get<double>(object, member.names[index]), index + 0.5);
            host.set(object, member.names[index], 2.25F);
            EXPECT_EQ(field<float>(object, index), 2.25F);
        }
    }
    const ObjectRef range = host.create("NSRangeZNT");
    host.set(range, "length", std::uint32_t{4000000000U});
    EXPECT_EQ(field<std::uint32_t>(range, 1), 4000000000U);
    EXPECT_EQ(host.get<std::int64_t>(range, "length"), 4000000000);
    EXPECT_EQ(host.get<std::int64_t>(range, "location"), 0);
}

TEST(Geometry, OfARectangleComesFromAPointAndASize) {
    BaseHost host;
    const ObjectRef rect = host.create("NSRectZNT", host.create("NSPointZNT", 1.0, 2.0),
                                       host.create("NSSizeZNT", 3.0, 4.0));
    EXPECT_EQ(host.get<double>(rect, "y"), 2);
    EXPECT_EQ(host.get<double>(rect, "height"), 4);
    const ObjectRef empty = host.createBy(
        "NSRectZNT", "Constructor(origin as NSPointZNT, size as NSSizeZNT)", nullptr, nullptr);
    EXPECT_EQ(host.get<double>(empty, "width"), 0);
}

TEST(Geometry, IsZeroInAnInstanceThatAnotherPartMakes) {
    BaseHost host;
    const ObjectRef rect = host.instance("NSRectZNT");
    for (std::size_t index = 0; index < 4; ++index)
        EXPECT_EQ(field<float>(rect, index), 0);
}

TEST(Geometry, ServesPrograms) {
    BaseHost host;
    const Host::Outcome outcome = host.run(R"(
Dim r As New NSRectZNT(1, 2, 3, 4)
r.width = r.width * 2.5
Print Str(r.x) + " " + Str(r.y) + " " + Str(r.width) + " " + Str(r.height)
Dim s As New NSSizeZNT
s.height = 7
Print Str(s.width) + " " + Str(s.height)
Dim g As New NSRangeZNT(5, 6)
Print Str(g.location + g.length)
)");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "1 2 7.5 4\n0 7\n11\n");
}

} // namespace
