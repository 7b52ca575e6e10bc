#include "host/objects/date.h"

#include "host/objects/host_classes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace host {

namespace {

using Seconds = std::int64_t;

constexpr Seconds minuteSeconds = 60;
constexpr Seconds hourSeconds = 60 * minuteSeconds;
constexpr Seconds daySeconds = 24 * hourSeconds;
/// From the start of 1904 to the start of 1970: 66 years with 17 leap days.
constexpr Seconds epochFrom1904 = (66 * 365 + 17) * daySeconds;
/// Within this, no sum of the fields leaves 64 bits and no year leaves 32.
constexpr std::int64_t largestField = 1'000'000'000;

struct Quotient {
    std::int64_t quotient;
    std::int64_t remainder; ///< never negative
};

constexpr Quotient floorDivide(std::int64_t dividend, std::int64_t divisor) {
    std::int64_t quotient = dividend / divisor;
    if (dividend % divisor < 0) --quotient;
    return {quotient, dividend - quotient * divisor};
}

// Days are counted from 1 March of year 0 in eras of 400 years; a year that starts in March has its
// leap day at the end, and its months begin at (153 * month + 2) / 5 days.
constexpr std::int64_t eraDays = 146097;
constexpr std::int64_t eraStartToEpoch = 719468;

/// Days since 1 January 1970 of the first of a month from 1 to 12.
constexpr std::int64_t daysFromMonth(std::int64_t year, std::int64_t month) {
    const Quotient era = floorDivide(month <= 2 ? year - 1 : year, 400);
    const std::int64_t monthFromMarch = (month + 9) % 12;
    const std::int64_t dayOfEra = era.remainder * 365 + era.remainder / 4 - era.remainder / 100 +
                                  (153 * monthFromMarch + 2) / 5;
    return era.quotient * eraDays + dayOfEra - eraStartToEpoch;
}

/// Year, month and day of a day since 1 January 1970.
constexpr DateFields fromDays(std::int64_t days) {
    const Quotient era = floorDivide(days + eraStartToEpoch, eraDays);
    const std::int64_t dayOfEra = era.remainder;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    DateFields fields;
    fields.month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    fields.year = era.quotient * 400 + yearOfEra + (fields.month <= 2 ? 1 : 0);
    fields.day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    return fields;
}

/// Wall-clock seconds since the start of 1970; every field may be out of its range.
constexpr Seconds secondsFrom(const DateFields& fields) {
    const Quotient years = floorDivide(fields.month - 1, 12);
    const std::int64_t days =
        daysFromMonth(fields.year + years.quotient, years.remainder + 1) + fields.day - 1;
    return days * daySeconds + fields.hour * hourSeconds + fields.minute * minuteSeconds +
           fields.second;
}

constexpr DateFields fieldsFrom(Seconds wallClock) {
    const Quotient days = floorDivide(wallClock, daySeconds);
    DateFields fields = fromDays(days.quotient);
    fields.hour = days.remainder / hourSeconds;
    fields.minute = days.remainder % hourSeconds / minuteSeconds;
    fields.second = days.remainder % minuteSeconds;
    return fields;
}

static_assert(secondsFrom({1904, 1, 1}) == -epochFrom1904);
static_assert(secondsFrom({2000, 14, 0, 24}) == secondsFrom({2001, 2, 1}));

/// Lets the C library follow TZ. It reads the zone's file each time that it is told so, so it is
/// told only when TZ has changed.
void followZone() {
    static std::optional<std::string> followed;
    const char* const zone = std::getenv("TZ");
    // No zone has this name.
    const std::string wanted = zone ? zone : "\n";
    if (followed == wanted) return;
    tzset();
    followed = wanted;
}

/// Seconds east of Greenwich at a moment; nothing where the system cannot tell.
std::optional<Seconds> offsetAt(Seconds moment) {
    if (moment < std::numeric_limits<std::time_t>::min() ||
        moment > std::numeric_limits<std::time_t>::max())
        return std::nullopt;
    const auto time = static_cast<std::time_t>(moment);
    std::tm local{};
    followZone();
    if (!localtime_r(&time, &local)) return std::nullopt;
    return local.tm_gmtoff;
}

/// The offset that is in force at a wall-clock time: where a clock is set back, the one before.
Seconds offsetOf(Seconds wallClock) {
    const Seconds before = offsetAt(wallClock - daySeconds).value_or(0);
    if (offsetAt(wallClock - before) == before) return before;
    return offsetAt(wallClock - before).value_or(before);
}

/// A time that the clock leaves out, as the clock that was not set forward would show it.
Seconds existing(Seconds wallClock) {
    const Seconds before = offsetAt(wallClock - daySeconds).value_or(0);
    const Seconds after = offsetAt(wallClock + daySeconds).value_or(before);
    const bool exists = offsetAt(wallClock - before).value_or(before) == before ||
                        offsetAt(wallClock - after).value_or(after) == after;
    return exists ? wallClock : wallClock - before + offsetAt(wallClock - before).value_or(before);
}

Date& dateOf(REALobjectStruct* self) { return *stateOf<Date>(self); }

std::int64_t bounded(const Value& value) {
    return std::clamp(value.toInt64(), -largestField, largestField);
}

std::string sqlDate(const DateFields& fields) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04lld-%02d-%02d", static_cast<long long>(fields.year),
                  static_cast<int>(fields.month), static_cast<int>(fields.day));
    return text.data();
}

void setSQL(REALobjectStruct* self, const Value& value) {
    const auto fields = parseSQLDate(value.utf8());
    if (!fields)
        raise("UnsupportedFormatException",
              "\"" + value.utf8() + "\" is no date such as 2000-02-29 10:20:30.");
    dateOf(self).assigned = *fields;
}

void addField(Class& type, std::string_view name, std::int64_t DateFields::*field) {
    type.addProperty(
        name, Type::integer(),
        [field](REALobjectStruct* self) -> Value {
            return static_cast<REALword>(dateOf(self).fields().*field);
        },
        [field](REALobjectStruct* self, const Value& value) {
            dateOf(self).assigned.*field = bounded(value);
        });
}

Value constructFromFields(REALobjectStruct* self, std::span<Value> arguments) {
    dateOf(self).assigned = {bounded(arguments[0]), bounded(arguments[1]), bounded(arguments[2]),
                             bounded(arguments[3]), bounded(arguments[4]), bounded(arguments[5])};
    return {};
}

Value constructFromDate(REALobjectStruct* self, std::span<Value> arguments) {
    const auto* const source = stateOf<Date>(arguments[0].object());
    if (!source) raise("NilObjectException", "There is no Date to copy.");
    dateOf(self).assigned = source->assigned;
    return {};
}

Value dayOfWeek(REALobjectStruct* self) {
    constexpr std::int64_t epochWeekday = 4; // 1 January 1970 was a Thursday
    const Seconds days = floorDivide(secondsFrom(dateOf(self).fields()), daySeconds).quotient;
    return static_cast<REALword>(floorDivide(days + epochWeekday, 7).remainder + 1);
}

Value dayOfYear(REALobjectStruct* self) {
    DateFields start = dateOf(self).fields();
    const Seconds now = secondsFrom(start);
    start = {.year = start.year};
    return static_cast<REALword>((now - secondsFrom(start)) / daySeconds + 1);
}

} // namespace

Date::Date() {
    const auto now = static_cast<Seconds>(std::time(nullptr));
    assigned = fieldsFrom(now + offsetAt(now).value_or(0));
}

DateFields Date::fields() const { return fieldsFrom(existing(secondsFrom(assigned))); }

std::int64_t Date::totalSeconds() const { return secondsFrom(fields()) + epochFrom1904; }

void Date::setTotalSeconds(double seconds) {
    // About thirty million years, which doubles still tell second by second.
    constexpr double limit = 1e15;
    if (std::isnan(seconds)) seconds = 0;
    const double whole = std::floor(std::clamp(seconds, -limit, limit));
    assigned = fieldsFrom(static_cast<Seconds>(whole) - epochFrom1904);
}

std::string Date::sqlDateTime() const {
    const DateFields named = fields();
    std::array<char, 64> time{};
    std::snprintf(time.data(), time.size(), " %02d:%02d:%02d", static_cast<int>(named.hour),
                  static_cast<int>(named.minute), static_cast<int>(named.second));
    return sqlDate(named) + time.data();
}

std::optional<DateFields> parseSQLDate(std::string_view text) {
    struct Part {
        std::int64_t DateFields::*field;
        char separator; ///< before the part
        std::int64_t least;
        std::int64_t most;
    };
    constexpr std::array<Part, 6> parts{{{&DateFields::year, 0, 0, 9999},
                                         {&DateFields::month, '-', 1, 12},
                                         {&DateFields::day, '-', 1, 31},
                                         {&DateFields::hour, ' ', 0, 23},
                                         {&DateFields::minute, ':', 0, 59},
                                         {&DateFields::second, ':', 0, 59}}};
    DateFields fields;
    const char* position = text.data();
    const char* const end = position + text.size();
    for (const Part& part : parts) {
        if (position == end && part.field == &DateFields::hour) break;
        if (part.separator && (position == end || *position++ != part.separator))
            return std::nullopt;
        const auto [next, error] = std::from_chars(position, end, fields.*part.field);
        if (error != std::errc() || fields.*part.field < part.least ||
            fields.*part.field > part.most)
            return std::nullopt;
        position = next;
    }
    const bool isDay = fieldsFrom(secondsFrom(fields)) == fields;
    return position == end && isDay ? std::optional(fields) : std::nullopt;
}

ObjectRef newDate(const DateFields& fields) {
    ObjectRef object = Runtime::current().newInstance("Date");
    if (auto* const date = stateOf<Date>(object)) date->assigned = fields;
    return object;
}

void defineDate(Runtime& runtime) {
    Class& type = defineClass(runtime, "Date");
    type.makeState = [] { return std::make_unique<Date>(); };
    type.addMethod("Constructor()",
                   [](REALobjectStruct*, std::span<Value>) -> Value { return {}; });
    type.addMethod("Constructor(source As Date)", constructFromDate);
    type.addMethod("Constructor(year As Integer, month As Integer = 1, day As Integer = 1, "
                   "hour As Integer = 0, minute As Integer = 0, second As Integer = 0)",
                   constructFromFields);
    addField(type, "Year", &DateFields::year);
    addField(type, "Month", &DateFields::month);
    addField(type, "Day", &DateFields::day);
    addField(type, "Hour", &DateFields::hour);
    addField(type, "Minute", &DateFields::minute);
    addField(type, "Second", &DateFields::second);
    type.addProperty("DayOfWeek", Type::integer(), dayOfWeek);
    type.addProperty("DayOfYear", Type::integer(), dayOfYear);
    type.addProperty(
        "TotalSeconds", Kind::Double,
        [](REALobjectStruct* self) -> Value {
            return static_cast<double>(dateOf(self).totalSeconds());
        },
        [](REALobjectStruct* self, const Value& seconds) {
            dateOf(self).setTotalSeconds(seconds.toDouble());
        });
    type.addProperty("GMTOffset", Kind::Double, [](REALobjectStruct* self) -> Value {
        return static_cast<double>(offsetOf(secondsFrom(dateOf(self).fields()))) / hourSeconds;
    });
    type.addProperty(
        "SQLDate", Kind::String,
        [](REALobjectStruct* self) -> Value { return sqlDate(dateOf(self).fields()); }, setSQL);
    type.addProperty(
        "SQLDateTime", Kind::String,
        [](REALobjectStruct* self) -> Value { return dateOf(self).sqlDateTime(); }, setSQL);
}

} // namespace host
