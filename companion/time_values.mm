#include "companion/time_values.h"

#include "companion/time_objects.h"

#include <cstring>

using namespace base_part;

namespace {

// Written out, since compilers encode a long as what it is as wide as.
#define QT_TIME "{?=qll}"
#define CM_TIME "{?=qiIq}"
#define CM_TIME_RANGE "{?=" CM_TIME CM_TIME "}"

template <typename Time>
const char* const encoding = nullptr;
template <>
const char* const encoding<QTTime> = QT_TIME;
template <>
const char* const encoding<QTTimeRange> = "{?=" QT_TIME QT_TIME "}";
template <>
const char* const encoding<CMTime> = CM_TIME;
template <>
const char* const encoding<CMTimeRange> = CM_TIME_RANGE;
template <>
const char* const encoding<CMTimeMapping> = "{?=" CM_TIME_RANGE CM_TIME_RANGE "}";

template <typename Time>
NSValue* valueOf(const Time& time) {
    return [NSValue valueWithBytes:&time objCType:encoding<Time>];
}

template <typename Time>
REALobjectStruct* newObjectOf(NSValue* value) {
    if (std::strcmp([value objCType], encoding<Time>) != 0) return nullptr;
    Time time{};
    [value getValue:&time];
    return newTimeObject(time);
}

} // namespace

@implementation NSValue (TimesZNT)

+ (NSValue*)valueWithQTTimeZNT:(QTTime)time {
    return valueOf(time);
}

+ (NSValue*)valueWithQTTimeRangeZNT:(QTTimeRange)range {
    return valueOf(range);
}

+ (NSValue*)valueWithCMTimeZNT:(CMTime)time {
    return valueOf(time);
}

+ (NSValue*)valueWithCMTimeRangeZNT:(CMTimeRange)range {
    return valueOf(range);
}

+ (NSValue*)valueWithCMTimeMappingZNT:(CMTimeMapping)mapping {
    return valueOf(mapping);
}

- (REALobjectStruct*)QTTimeValueZNT {
    return newObjectOf<QTTime>(self);
}

- (REALobjectStruct*)QTTimeRangeValueZNT {
    return newObjectOf<QTTimeRange>(self);
}

- (REALobjectStruct*)CMTimeValueZNT {
    return newObjectOf<CMTime>(self);
}

- (REALobjectStruct*)CMTimeRangeValueZNT {
    return newObjectOf<CMTimeRange>(self);
}

- (REALobjectStruct*)CMTimeMappingValueZNT {
    return newObjectOf<CMTimeMapping>(self);
}

@end
