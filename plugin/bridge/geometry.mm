#include "plugin/bridge/geometry.h"

#include "plugin/entry/host_services.h"

namespace {

struct SizeData {
    float width;
    float height;
};

struct PointData {
    float x;
    float y;
};

struct RectData {
    PointData origin;
    SizeData size;
};

struct RangeData {
    std::uint32_t location;
    std::uint32_t length;
};

SizeData data_of(NSSize size) {
    return {static_cast<float>(size.width), static_cast<float>(size.height)};
}

PointData data_of(NSPoint point) {
    return {static_cast<float>(point.x), static_cast<float>(point.y)};
}

template <typename Data>
REALobjectStruct* new_holder(const char* className, const Data& data) {
    REALobjectStruct* const holder = REALnewInstance(className);
    if (holder) *static_cast<Data*>(REALfirstClassData(holder)) = data;
    return holder;
}

template <typename Data>
Data held_by(REALobjectStruct* holder) {
    return holder ? *static_cast<const Data*>(REALfirstClassData(holder)) : Data{};
}

} // namespace

REALobjectStruct* NewNSSizeZNT(NSSize size) { return new_holder("NSSizeZNT", data_of(size)); }

REALobjectStruct* NewNSPointZNT(NSPoint point) { return new_holder("NSPointZNT", data_of(point)); }

REALobjectStruct* NewNSRectZNT(NSRect rect) {
    return new_holder("NSRectZNT", RectData{data_of(rect.origin), data_of(rect.size)});
}

REALobjectStruct* NewNSRangeZNT(NSRange range) {
    return new_holder("NSRangeZNT", RangeData{static_cast<std::uint32_t>(range.location),
                                              static_cast<std::uint32_t>(range.length)});
}

NSSize size_of(REALobjectStruct* hostSize) {
    const auto data = held_by<SizeData>(hostSize);
    return NSMakeSize(data.width, data.height);
}

NSPoint point_of(REALobjectStruct* hostPoint) {
    const auto data = held_by<PointData>(hostPoint);
    return NSMakePoint(data.x, data.y);
}

NSRect rect_of(REALobjectStruct* hostRect) {
    const auto data = held_by<RectData>(hostRect);
    return NSMakeRect(data.origin.x, data.origin.y, data.size.width, data.size.height);
}

NSRange range_of(REALobjectStruct* hostRange) {
    const auto data = held_by<RangeData>(hostRange);
    // Not by NSMakeRange, which may refuse what does not fit in a string.
    return NSRange{data.location, data.length};
}
