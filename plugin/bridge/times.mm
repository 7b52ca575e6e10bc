#include "plugin/bridge/times.h"

#include <CoreMedia/CMTimeRange.h>
#include <QTKit/QTTimeRange.h>

@interface NSValue (TimesZNT)
+ (NSValue*)valueWithQTTimeZNT:(QTTime)time;
+ (NSValue*)valueWithQTTimeRangeZNT:(QTTimeRange)range;
+ (NSValue*)valueWithCMTimeZNT:(CMTime)time;
+ (NSValue*)valueWithCMTimeRangeZNT:(CMTimeRange)range;
+ (NSValue*)valueWithCMTimeMappingZNT:(CMTimeMapping)mapping;
- (REALobjectStruct*)QTTimeValueZNT;
- (REALobjectStruct*)QTTimeRangeValueZNT;
- (REALobjectStruct*)CMTimeValueZNT;
- (REALobjectStruct*)CMTimeRangeValueZNT;
- (REALobjectStruct*)CMTimeMappingValueZNT;
@end

namespace {

template <typename Time, typename Make>
NSValue* value_of(REALobjectStruct* holder, SEL selector, Make make) {
    if (![NSValue respondsToSelector:selector]) return nil;
    return make(*static_cast<const Time*>(REALfirstClassData(holder)));
}

template <typename Read>
REALobjectStruct* holder_of(NSValue* value, SEL selector, Read read) {
    return [value respondsToSelector:selector] ? read(value) : nullptr;
}

} // namespace

NSValue* NSValueOfQTTime(REALobjectStruct* time) {
    return value_of<QTTime>(time, @selector(valueWithQTTimeZNT:),
                            [](const QTTime& held) { return [NSValue valueWithQTTimeZNT:held]; });
}

NSValue* NSValueOfQTTimeRange(REALobjectStruct* range) {
    return value_of<QTTimeRange>(
        range, @selector(valueWithQTTimeRangeZNT:),
        [](const QTTimeRange& held) { return [NSValue valueWithQTTimeRangeZNT:held]; });
}

NSValue* NSValueOfCMTime(REALobjectStruct* time) {
    return value_of<CMTime>(time, @selector(valueWithCMTimeZNT:),
                            [](const CMTime& held) { return [NSValue valueWithCMTimeZNT:held]; });
}

NSValue* NSValueOfCMTimeRange(REALobjectStruct* range) {
    return value_of<CMTimeRange>(
        range, @selector(valueWithCMTimeRangeZNT:),
        [](const CMTimeRange& held) { return [NSValue valueWithCMTimeRangeZNT:held]; });
}

NSValue* NSValueOfCMTimeMapping(REALobjectStruct* mapping) {
    return value_of<CMTimeMapping>(
        mapping, @selector(valueWithCMTimeMappingZNT:),
        [](const CMTimeMapping& held) { return [NSValue valueWithCMTimeMappingZNT:held]; });
}

REALobjectStruct* NewQTTime(NSValue* value) {
    return holder_of(value, @selector(QTTimeValueZNT),
                     [](NSValue* time) { return [time QTTimeValueZNT]; });
}

REALobjectStruct* NewQTTimeRange(NSValue* value) {
    return holder_of(value, @selector(QTTimeRangeValueZNT),
                     [](NSValue* range) { return [range QTTimeRangeValueZNT]; });
}

REALobjectStruct* NewCMTime(NSValue* value) {
    return holder_of(value, @selector(CMTimeValueZNT),
                     [](NSValue* time) { return [time CMTimeValueZNT]; });
}

REALobjectStruct* NewCMTimeRange(NSValue* value) {
    return holder_of(value, @selector(CMTimeRangeValueZNT),
                     [](NSValue* range) { return [range CMTimeRangeValueZNT]; });
}

REALobjectStruct* NewCMTimeMapping(NSValue* value) {
    return holder_of(value, @selector(CMTimeMappingValueZNT),
                     [](NSValue* mapping) { return [mapping CMTimeMappingValueZNT]; });
}
