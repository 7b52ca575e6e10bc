#include "plugin/bridge/dates.h"

#include "plugin/entry/host_services.h"

#include <cstddef>

namespace {

constexpr const char* dateParts[] = {"Year", "Month", "Day", "Hour", "Minute", "Second"};
constexpr std::size_t datePartCount = sizeof dateParts / sizeof *dateParts;

} // namespace

NSCalendarDate* NewNSDate(REALdateStruct* date) {
    if (!date) return nil;
    std::int32_t values[datePartCount] = {};
    for (std::size_t part = 0; part < datePartCount; ++part)
        if (!REALGetPropValueInt32(date, dateParts[part], &values[part])) return nil;
    const auto unsignedPart = [&](std::size_t part) {
        return static_cast<NSUInteger>(values[part]);
    };
    return [NSCalendarDate dateWithYear:values[0]
                                  month:unsignedPart(1)
                                    day:unsignedPart(2)
                                   hour:unsignedPart(3)
                                 minute:unsignedPart(4)
                                 second:unsignedPart(5)
                               timeZone:[NSTimeZone localTimeZone]];
}

REALdateStruct* NSDateRB(NSDate* date) {
    if (!date) return nullptr;
    NSCalendarDate* const calendarDate = [[[NSCalendarDate alloc]
        initWithTimeIntervalSinceReferenceDate:[date timeIntervalSinceReferenceDate]] autorelease];
    const NSInteger values[datePartCount] = {
        [calendarDate yearOfCommonEra], [calendarDate monthOfYear],  [calendarDate dayOfMonth],
        [calendarDate hourOfDay],       [calendarDate minuteOfHour], [calendarDate secondOfMinute]};

    auto* const hostDate = static_cast<REALdateStruct*>(REALnewInstance("Date"));
    if (!hostDate) return nullptr;
    for (std::size_t part = 0; part < datePartCount; ++part)
        REALSetPropValueInt32(hostDate, dateParts[part], static_cast<std::int32_t>(values[part]));
    return hostDate;
}
