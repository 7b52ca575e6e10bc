#pragma once

/// Date: a wall-clock time in the local time zone, to the second. It is counted in the Gregorian
/// calendar, also before that was introduced.

#include "host/objects/object.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host {

struct DateFields {
    std::int64_t year = 1904;
    std::int64_t month = 1;
    std::int64_t day = 1;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::int64_t second = 0;
    friend bool operator==(const DateFields&, const DateFields&) = default;
};

struct Date : State {
    Date(); ///< now

    /// As they were assigned, one at a time: a month of 2 beside a day of 31 may be on its way to
    /// another day. Kept within a thousand million of zero.
    DateFields assigned;

    /// The time that the fields name. What is too large or too small for its field is counted on
    /// from there; a time that the change to daylight-saving time leaves out is moved forward with
    /// the clock.
    DateFields fields() const;

    /// Wall-clock seconds since the start of 1904, every day having 24 hours.
    std::int64_t totalSeconds() const;
    void setTotalSeconds(double seconds);

    /// "2000-02-29 10:20:30"
    std::string sqlDateTime() const;
};

/// Reads "2000-02-29" or "2000-02-29 10:20:30"; nothing for anything else, such as a day that no
/// month has.
std::optional<DateFields> parseSQLDate(std::string_view text);

ObjectRef newDate(const DateFields& fields);

} // namespace host
