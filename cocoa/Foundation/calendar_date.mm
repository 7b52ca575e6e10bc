#import <Foundation/Foundation.h>

#include <cmath>
#include <cstdint>
#include <objc/runtime.h>

namespace {

constexpr std::int64_t daySeconds = 86400;
/// The calendar repeats itself after so many years.
constexpr std::int64_t cycleYears = 400;
constexpr std::int64_t cycleDays = 146097;
/// From 1 March of year 0, where leap days end years, to 1 January 2001.
constexpr std::int64_t cycleStartToReference = 730791;

struct Fields {
    std::int64_t year;
    int month;
    int day;
    int second; ///< of the day
};

std::int64_t floorDivide(std::int64_t dividend, std::int64_t divisor) {
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

/// The wall-clock time of a date in its zone.
Fields fieldsOf(NSCalendarDate* date) {
    // Beyond this, doubles do not tell one second from the next.
    constexpr double farthest = 9e15;
    const double seconds = std::fmin(
        std::fmax(std::floor([date timeIntervalSinceReferenceDate]), -farthest), farthest);
    const std::int64_t wallClock =
        static_cast<std::int64_t>(seconds) + [[date timeZone] secondsFromGMTForDate:date];
    const std::int64_t days = floorDivide(wallClock, daySeconds);
    const std::int64_t fromStart = days + cycleStartToReference;
    const std::int64_t cycle = floorDivide(fromStart, cycleDays);
    const std::int64_t dayOfCycle = fromStart - cycle * cycleDays;
    const std::int64_t yearOfCycle =
        (dayOfCycle - dayOfCycle / 1460 + dayOfCycle / 36524 - dayOfCycle / 146096) / 365;
    const std::int64_t dayOfYear =
        dayOfCycle - (365 * yearOfCycle + yearOfCycle / 4 - yearOfCycle / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    Fields fields{};
    fields.month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    fields.year = cycle * cycleYears + yearOfCycle + (fields.month <= 2 ? 1 : 0);
    fields.day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    fields.second = static_cast<int>(wallClock - days * daySeconds);
    return fields;
}

Ivar variableNamed(const char* name) {
    return class_getInstanceVariable([NSCalendarDate class], name);
}

} // namespace

/// Cocoa's calendar reaches as far as seconds do. Without this, the search for a year before the
/// first has no end, and 32-bit systems know no date before the year 1 or after the year 4001.
@implementation NSCalendarDate (CocoaBehaviour)

+ (id)dateWithYear:(NSInteger)year
             month:(NSUInteger)month
               day:(NSUInteger)day
              hour:(NSUInteger)hour
            minute:(NSUInteger)minute
            second:(NSUInteger)second
          timeZone:(NSTimeZone*)zone {
    // Years before the first are those of a later cycle of the calendar, moved back.
    const NSInteger cycles = year < 1 ? (cycleYears - year) / cycleYears : 0;
    NSCalendarDate* const date =
        [[[self alloc] initWithYear:year + cycles * static_cast<NSInteger>(cycleYears)
                              month:month
                                day:day
                               hour:hour
                             minute:minute
                             second:second
                           timeZone:zone] autorelease];
    if (cycles == 0) return date;
    const double cycleSeconds = static_cast<double>(cycleDays * daySeconds);
    NSCalendarDate* const moved = [[[self alloc]
        initWithTimeIntervalSinceReferenceDate:[date timeIntervalSinceReferenceDate] -
                                               static_cast<double>(cycles) * cycleSeconds]
        autorelease];
    [moved setTimeZone:[date timeZone]];
    return moved;
}

- (id)initWithTimeIntervalSinceReferenceDate:(NSTimeInterval)seconds {
    if (std::isnan(seconds))
        [NSException raise:NSInvalidArgumentException format:@"A date needs a number of seconds"];
    static const Ivar sinceReference = variableNamed("_seconds_since_ref");
    static const Ivar format = variableNamed("_calendar_format");
    static const Ivar zone = variableNamed("_time_zone");
    auto* const start = reinterpret_cast<char*>(self);
    *reinterpret_cast<NSTimeInterval*>(start + ivar_getOffset(sinceReference)) = seconds;
    if (!object_getIvar(self, format)) object_setIvar(self, format, @"%Y-%m-%d %H:%M:%S %z");
    if (!object_getIvar(self, zone))
        object_setIvar(self, zone, [[NSTimeZone localTimeZone] retain]);
    return self;
}

- (NSInteger)yearOfCommonEra {
    return static_cast<NSInteger>(fieldsOf(self).year);
}

- (NSInteger)monthOfYear {
    return fieldsOf(self).month;
}

- (NSInteger)dayOfMonth {
    return fieldsOf(self).day;
}

- (NSInteger)hourOfDay {
    return fieldsOf(self).second / 3600;
}

- (NSInteger)minuteOfHour {
    return fieldsOf(self).second / 60 % 60;
}

- (NSInteger)secondOfMinute {
    return fieldsOf(self).second % 60;
}

@end
