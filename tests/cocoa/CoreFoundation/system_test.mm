#include "support.h"

#include <Carbon/Gestalt.h>
#include <Carbon/MacErrors.h>
#include <Carbon/Multiprocessing.h>

#include <chrono>

namespace {

class SystemVersion : public testing::Test {
protected:
    static SInt32 answer(OSType selector) {
        SInt32 response = -1;
        EXPECT_EQ(Gestalt(selector, &response), noErr);
        return response;
    }
    static void report(const char* version) { setenv("COCOA_SYSTEM_VERSION", version, 1); }
};

TEST_F(SystemVersion, IsThatOfTheLastHosts) {
    unsetenv("COCOA_SYSTEM_VERSION");
    EXPECT_EQ(answer(gestaltSystemVersionMajor), 10);
    EXPECT_EQ(answer(gestaltSystemVersionMinor), 9);
    EXPECT_EQ(answer(gestaltSystemVersionBugFix), 5);
    EXPECT_EQ(answer(gestaltSystemVersion), 0x1095);
}

TEST_F(SystemVersion, IsWhatTheEnvironmentSays) {
    report("10.6.8");
    EXPECT_EQ(answer(gestaltSystemVersion), 0x1068);
    EXPECT_EQ(answer(gestaltSystemVersionMinor), 6);
    EXPECT_EQ(answer(gestaltSystemVersionBugFix), 8);
    report("10.5");
    EXPECT_EQ(answer(gestaltSystemVersion), 0x1050);
    EXPECT_EQ(answer(gestaltSystemVersionBugFix), 0);
    report("10.11.12");
    EXPECT_EQ(answer(gestaltSystemVersion), 0x1099);
    EXPECT_EQ(answer(gestaltSystemVersionMinor), 11);
}

TEST_F(SystemVersion, IsNotChangedByNonsense) {
    for (const char* const nonsense : {"", "ten", "10.", "10.6.8.1", "10..6", "-1.2", "10.6x"}) {
        report(nonsense);
        EXPECT_EQ(answer(gestaltSystemVersion), 0x1095) << nonsense;
    }
}

TEST_F(SystemVersion, IsAllThatIsKnown) {
    SInt32 response = 77;
    EXPECT_EQ(Gestalt(0x6D616368, &response), gestaltUndefSelectorErr);
    EXPECT_EQ(response, 77);
    EXPECT_EQ(Gestalt(gestaltSystemVersion, nullptr), paramErr);
}

std::uint64_t nanoseconds(AbsoluteTime time) {
    const UnsignedWide wide = AbsoluteToNanoseconds(time);
    return (std::uint64_t{wide.hi} << 32) | wide.lo;
}

AbsoluteTime at(std::uint64_t nanoseconds) {
    return NanosecondsToAbsolute(
        {static_cast<UInt32>(nanoseconds), static_cast<UInt32>(nanoseconds >> 32)});
}

TEST(Clock, SleepsUntilAnInstant) {
    const auto before = std::chrono::steady_clock::now();
    AbsoluteTime instant = AddDurationToAbsolute(20 * durationMillisecond, UpTime());
    EXPECT_EQ(MPDelayUntil(&instant), noErr);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(19));
    EXPECT_GE(nanoseconds(UpTime()), nanoseconds(instant));
}

TEST(Clock, DoesNotSleepUntilThePast) {
    AbsoluteTime past = at(1);
    EXPECT_EQ(MPDelayUntil(&past), noErr);
    EXPECT_EQ(MPDelayUntil(nullptr), paramErr);
}

TEST(Clock, AddsMillisecondsAndMicroseconds) {
    EXPECT_EQ(nanoseconds(AddDurationToAbsolute(1, at(5))), 1000005U);
    EXPECT_EQ(nanoseconds(AddDurationToAbsolute(-3, at(5))), 3005U);
    EXPECT_EQ(nanoseconds(AddDurationToAbsolute(durationImmediate, at(5))), 5U);
    EXPECT_EQ(nanoseconds(AddDurationToAbsolute(durationForever, at(5))), ~std::uint64_t{0});
    EXPECT_EQ(nanoseconds(AddDurationToAbsolute(1, at(~std::uint64_t{0} - 1))), ~std::uint64_t{0});
    EXPECT_EQ(nanoseconds(AddDurationToAbsolute(-0x7FFFFFFF - 1, at(0))), 2147483648000U);
}

TEST(Clock, MeasuresDurations) {
    EXPECT_EQ(AbsoluteDeltaToDuration(at(5000), at(2000)), -3);
    EXPECT_EQ(AbsoluteDeltaToDuration(at(2000), at(5000)), 0);
    EXPECT_EQ(AbsoluteDeltaToDuration(at(10000000000000), at(0)), 10000000);
}

} // namespace
