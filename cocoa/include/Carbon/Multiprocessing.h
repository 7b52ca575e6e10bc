#pragma once

/// The clock and sleeping.

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef struct UnsignedWide {
    UInt32 lo;
    UInt32 hi;
} UnsignedWide;

/// An instant on a clock that never goes back, in nanoseconds.
typedef UnsignedWide AbsoluteTime;

/// Milliseconds when positive, microseconds when negative.
typedef SInt32 Duration;

enum {
    durationMicrosecond = -1,
    durationMillisecond = 1,
    durationSecond = 1000,
    durationMinute = 1000 * 60,
    durationImmediate = 0,
    durationForever = 0x7FFFFFFF,
    kDurationImmediate = 0,
    kDurationMillisecond = 1,
    kDurationForever = 0x7FFFFFFF
};

CF_EXPORT AbsoluteTime UpTime(void);
/// The last instant there is, for durationForever and for sums beyond it.
CF_EXPORT AbsoluteTime AddDurationToAbsolute(Duration duration, AbsoluteTime time);
/// Milliseconds, or negated microseconds when they fit; 0 when `first` is not after `second`.
CF_EXPORT Duration AbsoluteDeltaToDuration(AbsoluteTime first, AbsoluteTime second);
CF_EXPORT UnsignedWide AbsoluteToNanoseconds(AbsoluteTime time);
CF_EXPORT AbsoluteTime NanosecondsToAbsolute(UnsignedWide nanoseconds);

/// Sleeps until the instant; returns at once when it has passed. paramErr for a null pointer.
CF_EXPORT OSStatus MPDelayUntil(AbsoluteTime* expirationTime);

CF_EXTERN_C_END
