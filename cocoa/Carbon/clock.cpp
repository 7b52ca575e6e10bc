#include <Carbon/MacErrors.h>
#include <Carbon/Multiprocessing.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <limits>

namespace {

constexpr std::uint64_t nanosecondsPerSecond = 1000000000;
constexpr std::uint64_t lastInstant = std::numeric_limits<std::uint64_t>::max();

std::uint64_t wideOf(UnsignedWide value) { return (std::uint64_t{value.hi} << 32) | value.lo; }

UnsignedWide split(std::uint64_t value) {
    return {static_cast<UInt32>(value), static_cast<UInt32>(value >> 32)};
}

std::uint64_t now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * nanosecondsPerSecond +
           static_cast<std::uint64_t>(time.tv_nsec);
}

std::uint64_t nanosecondsOf(Duration duration) {
    if (duration == durationForever) return lastInstant;
    if (duration >= 0) return static_cast<std::uint64_t>(duration) * 1000000;
    return static_cast<std::uint64_t>(-std::int64_t{duration}) * 1000;
}

} // namespace

AbsoluteTime UpTime(void) { return split(now()); }

AbsoluteTime AddDurationToAbsolute(Duration duration, AbsoluteTime time) {
    const std::uint64_t added = nanosecondsOf(duration);
    const std::uint64_t start = wideOf(time);
    return split(added > lastInstant - start ? lastInstant : start + added);
}

Duration AbsoluteDeltaToDuration(AbsoluteTime first, AbsoluteTime second) {
    if (wideOf(first) <= wideOf(second)) return durationImmediate;
    const std::uint64_t difference = wideOf(first) - wideOf(second);
    constexpr std::uint64_t largest = std::numeric_limits<Duration>::max();
    if (difference / 1000 <= largest) return -static_cast<Duration>(difference / 1000);
    return static_cast<Duration>(std::min(difference / 1000000, largest));
}

UnsignedWide AbsoluteToNanoseconds(AbsoluteTime time) { return time; }

AbsoluteTime NanosecondsToAbsolute(UnsignedWide nanoseconds) { return nanoseconds; }

OSStatus MPDelayUntil(AbsoluteTime* expirationTime) {
    if (!expirationTime) return paramErr;
    const std::uint64_t instant = wideOf(*expirationTime);
    constexpr auto lastSecond = static_cast<std::uint64_t>(std::numeric_limits<time_t>::max());
    timespec time{};
    time.tv_sec = static_cast<time_t>(std::min(instant / nanosecondsPerSecond, lastSecond));
    time.tv_nsec = static_cast<long>(instant % nanosecondsPerSecond);
    while (now() < instant) {
        const int result = clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr);
        if (result != 0 && result != EINTR) return paramErr;
    }
    return noErr;
}
