#include "companion/classes.h"
#include "companion/host_services.h"
#include "companion/time_objects.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace base_part {
namespace {

static_assert(sizeof(long) == sizeof(REALword));

template <typename Time>
Time& timeOf(REALobjectStruct* object) {
    return *static_cast<Time*>(REALfirstClassData(object));
}

/// The time of an argument; zeros for null.
template <typename Time>
Time timeOrZeros(REALobjectStruct* object) {
    return object ? timeOf<Time>(object) : Time{};
}

template <typename Time>
REALobjectStruct* newObject(const char* className, const Time& time) {
    REALobjectStruct* const object = newInstance(className);
    if (object) timeOf<Time>(object) = time;
    return object;
}

/// A property that copies one part of a whole out of it and into it.
template <auto part>
struct Part;
template <typename Whole, typename Time, Time Whole::*part>
struct Part<part> {
    static REALobjectStruct* get(REALobjectStruct* whole, REALword) {
        return newTimeObject(timeOf<Whole>(whole).*part);
    }
    static void set(REALobjectStruct* whole, REALword, REALobjectStruct* time) {
        timeOf<Whole>(whole).*part = timeOrZeros<Time>(time);
    }
};

void constructQTTime(REALobjectStruct* object, std::int64_t value, REALword scale, REALword flags) {
    timeOf<QTTime>(object) = {value, static_cast<long>(scale), static_cast<long>(flags)};
}

void constructCMTime(REALobjectStruct* object, std::int64_t value, std::int32_t scale,
                     std::uint32_t flags, std::int64_t epoch) {
    timeOf<CMTime>(object) = {value, scale, flags, epoch};
}

/// Of two parts of one type.
template <typename Whole, typename Time>
void construct(REALobjectStruct* object, REALobjectStruct* first, REALobjectStruct* second) {
    timeOf<Whole>(object) = {timeOrZeros<Time>(first), timeOrZeros<Time>(second)};
}

// clang-format off
REALproperty qtTimeProperties[] = {
    field("timeValue", "Int64", offsetof(QTTime, timeValue)),
    field("timeScale", "Integer", offsetof(QTTime, timeScale)),
    field("flags", "Integer", offsetof(QTTime, flags)),
};
REALmethod qtTimeMethods[] = {
    method("Constructor(timeValue as Int64 = 0, timeScale as Integer = 0, flags as Integer = 0)", constructQTTime),
};

REALproperty qtTimeRangeProperties[] = {
    property("time", "QTKitTimeZNT", Part<&QTTimeRange::time>::get, Part<&QTTimeRange::time>::set),
    property("duration", "QTKitTimeZNT", Part<&QTTimeRange::duration>::get, Part<&QTTimeRange::duration>::set),
};
REALmethod qtTimeRangeMethods[] = {
    method("Constructor(time as QTKitTimeZNT = nil, duration as QTKitTimeZNT = nil)", construct<QTTimeRange, QTTime>),
};

REALproperty cmTimeProperties[] = {
    field("value", "Int64", offsetof(CMTime, value)),
    field("timescale", "Int32", offsetof(CMTime, timescale)),
    field("flags", "UInt32", offsetof(CMTime, flags)),
    field("epoch", "Int64", offsetof(CMTime, epoch)),
};
REALmethod cmTimeMethods[] = {
    method("Constructor(value as Int64 = 0, timescale as Int32 = 0, flags as UInt32 = 0, epoch as Int64 = 0)", constructCMTime),
};

REALproperty cmTimeRangeProperties[] = {
    property("start", "CMTimeZNT", Part<&CMTimeRange::start>::get, Part<&CMTimeRange::start>::set),
    property("duration", "CMTimeZNT", Part<&CMTimeRange::duration>::get, Part<&CMTimeRange::duration>::set),
};
REALmethod cmTimeRangeMethods[] = {
    method("Constructor(start as CMTimeZNT = nil, duration as CMTimeZNT = nil)", construct<CMTimeRange, CMTime>),
};

REALproperty cmTimeMappingProperties[] = {
    property("source", "CMTimeRangeZNT", Part<&CMTimeMapping::source>::get, Part<&CMTimeMapping::source>::set),
    property("target", "CMTimeRangeZNT", Part<&CMTimeMapping::target>::get, Part<&CMTimeMapping::target>::set),
};
REALmethod cmTimeMappingMethods[] = {
    method("Constructor(source as CMTimeRangeZNT = nil, target as CMTimeRangeZNT = nil)", construct<CMTimeMapping, CMTimeRange>),
};
// clang-format on

} // namespace

REALobjectStruct* newTimeObject(const QTTime& time) { return newObject("QTKitTimeZNT", time); }

REALobjectStruct* newTimeObject(const QTTimeRange& range) {
    return newObject("QTKitTimeRangeZNT", range);
}

REALobjectStruct* newTimeObject(const CMTime& time) { return newObject("CMTimeZNT", time); }

REALobjectStruct* newTimeObject(const CMTimeRange& range) {
    return newObject("CMTimeRangeZNT", range);
}

REALobjectStruct* newTimeObject(const CMTimeMapping& mapping) {
    return newObject("CMTimeMappingZNT", mapping);
}

REALclassDefinition qtTimeClass = class_definition({
    .name = "QTKitTimeZNT",
    .instanceDataSize = sizeof(QTTime),
    .properties = qtTimeProperties,
    .methods = qtTimeMethods,
});

REALclassDefinition qtTimeRangeClass = class_definition({
    .name = "QTKitTimeRangeZNT",
    .instanceDataSize = sizeof(QTTimeRange),
    .properties = qtTimeRangeProperties,
    .methods = qtTimeRangeMethods,
});

REALclassDefinition cmTimeClass = class_definition({
    .name = "CMTimeZNT",
    .instanceDataSize = sizeof(CMTime),
    .properties = cmTimeProperties,
    .methods = cmTimeMethods,
});

REALclassDefinition cmTimeRangeClass = class_definition({
    .name = "CMTimeRangeZNT",
    .instanceDataSize = sizeof(CMTimeRange),
    .properties = cmTimeRangeProperties,
    .methods = cmTimeRangeMethods,
});

REALclassDefinition cmTimeMappingClass = class_definition({
    .name = "CMTimeMappingZNT",
    .instanceDataSize = sizeof(CMTimeMapping),
    .properties = cmTimeMappingProperties,
    .methods = cmTimeMappingMethods,
});

} // namespace base_part
