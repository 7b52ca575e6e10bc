#include "companion/base_host.h"

#include "companion/time_values.h"

#include <cstring>

namespace {

using host::ObjectRef;

constexpr QTTime quarter{600, 2400, 5};
constexpr QTTime later{-9000000000, 600, 0};
constexpr CMTime soon{3, 90000, 1, 7};
constexpr CMTime late{-9000000000, -1, 4000000000U, -2};

template <typename Time>
bool same(const Time& first, const Time& second) {
    return std::memcmp(&first, &second, sizeof first) == 0;
}

/// What a value of the time holds, and the time of the host object that the value makes.
template <typename Time>
void expectRoundTrip(BaseHost& host, const Time& time, NSValue* value, const char* encoding,
                     SEL reader, const char* className) {
    EXPECT_STREQ([value objCType], encoding);
    Time held{};
    [value getValue:&held];
    EXPECT_TRUE(same(held, time));

    const auto read =
        reinterpret_cast<REALobjectStruct* (*)(id, SEL)>([value methodForSelector:reader]);
    const ObjectRef object = ObjectRef::adopt(read(value, reader));
    ASSERT_TRUE(object) << className;
    EXPECT_EQ(host.instances(className), 1U);
    EXPECT_EQ(host.references(object), 1);
    EXPECT_TRUE(same(field<Time>(object, 0), time));

    NSValue* const other = [NSValue valueWithSize:NSMakeSize(1, 2)];
    EXPECT_EQ(read(other, reader), nullptr) << "a value of another type";
}

TEST(Times, TravelAsQTTimes) {
    BaseHost host;
    expectRoundTrip(host, quarter, [NSValue valueWithQTTimeZNT:quarter], "{?=qll}",
                    @selector(QTTimeValueZNT), "QTKitTimeZNT");
}

TEST(Times, TravelAsQTTimeRanges) {
    BaseHost host;
    const QTTimeRange range{quarter, later};
    expectRoundTrip(host, range, [NSValue valueWithQTTimeRangeZNT:range], "{?={?=qll}{?=qll}}",
                    @selector(QTTimeRangeValueZNT), "QTKitTimeRangeZNT");
}

TEST(Times, TravelAsCMTimes) {
    BaseHost host;
    expectRoundTrip(host, late, [NSValue valueWithCMTimeZNT:late], "{?=qiIq}",
                    @selector(CMTimeValueZNT), "CMTimeZNT");
}

TEST(Times, TravelAsCMTimeRanges) {
    BaseHost host;
    const CMTimeRange range{soon, late};
    expectRoundTrip(host, range, [NSValue valueWithCMTimeRangeZNT:range], "{?={?=qiIq}{?=qiIq}}",
                    @selector(CMTimeRangeValueZNT), "CMTimeRangeZNT");
}

TEST(Times, TravelAsCMTimeMappings) {
    BaseHost host;
    const CMTimeMapping mapping{{soon, late}, {late, soon}};
    expectRoundTrip(host, mapping, [NSValue valueWithCMTimeMappingZNT:mapping],
                    "{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}",
                    @selector(CMTimeMappingValueZNT), "CMTimeMappingZNT");
}

TEST(Times, MakeNoObjectWhenTheHostMakesNone) {
    BaseHost host{{.without = {"PluginNewInstance"}}};
    EXPECT_EQ([[NSValue valueWithQTTimeZNT:quarter] QTTimeValueZNT], nullptr);
}

TEST(Times, StandInTheInstanceDataForOtherParts) {
    BaseHost host;
    const ObjectRef qtTime = host.create("QTKitTimeZNT", std::int64_t{-9000000000}, 600, 0);
    EXPECT_TRUE(same(field<QTTime>(qtTime, 0), later));
    const ObjectRef cmTime = host.create("CMTimeZNT", std::int64_t{-9000000000}, std::int32_t{-1},
                                         std::uint32_t{4000000000U}, std::int64_t{-2});
    EXPECT_TRUE(same(field<CMTime>(cmTime, 0), late));
    EXPECT_TRUE(same(field<QTTimeRange>(host.instance("QTKitTimeRangeZNT"), 0), QTTimeRange{}));
}

TEST(Times, TakeTheirPartsByValue) {
    BaseHost host;
    const Host::Outcome outcome = host.run(R"(
Dim range As New CMTimeRangeZNT(New CMTimeZNT(5, 10, 1), Nil)
Dim start As CMTimeZNT = range.start
start.value = 6
Print Str(range.start.value) + " " + Str(range.start.timescale) + " " + Str(range.duration.timescale)
range.start = start
range.duration = New CMTimeZNT(7, 8, 9, 10)
Print Str(range.start.value) + " " + Str(range.duration.epoch)
Dim mapping As New CMTimeMappingZNT
mapping.target = range
Print Str(mapping.source.start.value) + " " + Str(mapping.target.duration.flags)
Dim movie As New QTKitTimeRangeZNT(New QTKitTimeZNT(1, 2, 3), New QTKitTimeZNT(4, 5, 6))
Print Str(movie.time.timeScale) + " " + Str(movie.duration.timeValue) + " " + Str(movie.duration.flags)
movie.duration = Nil
Print Str(movie.duration.timeValue)
)");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "5 10 0\n6 10\n0 9\n2 4 6\n0\n");
}

} // namespace
