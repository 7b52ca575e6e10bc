#include "companion/classes.h"
#include "sdk/tables.h"

using namespace REALtables;

namespace base_part {
namespace {

struct Size {
    float width;
    float height;
};

struct Point {
    float x;
    float y;
};

struct Rect {
    Point origin;
    Size size;
};

struct Range {
    std::uint32_t location;
    std::uint32_t length;
};

template <typename Value>
Value& valueOf(REALobjectStruct* object) {
    return *static_cast<Value*>(REALfirstClassData(object));
}

/// The value of an argument; zeros for null.
template <typename Value>
Value valueOrZeros(REALobjectStruct* object) {
    return object ? valueOf<Value>(object) : Value{};
}

float narrow(double value) { return static_cast<float>(value); }

void constructSize(REALobjectStruct* object, double width, double height) {
    valueOf<Size>(object) = {narrow(width), narrow(height)};
}

void constructPoint(REALobjectStruct* object, double x, double y) {
    valueOf<Point>(object) = {narrow(x), narrow(y)};
}

void constructRect(REALobjectStruct* object, double x, double y, double width, double height) {
    valueOf<Rect>(object) = {{narrow(x), narrow(y)}, {narrow(width), narrow(height)}};
}

void constructRectOfParts(REALobjectStruct* object, REALobjectStruct* origin,
                          REALobjectStruct* size) {
    valueOf<Rect>(object) = {valueOrZeros<Point>(origin), valueOrZeros<Size>(size)};
}

void constructRange(REALobjectStruct* object, std::uint32_t location, std::uint32_t length) {
    valueOf<Range>(object) = {location, length};
}

// clang-format off
REALproperty sizeProperties[] = {
    field("width", "Single", offsetof(Size, width)),
    field("height", "Single", offsetof(Size, height)),
};
REALmethod sizeMethods[] = {
    method("Constructor(width as double = 0, height as double = 0)", constructSize),
};

REALproperty pointProperties[] = {
    field("x", "Single", offsetof(Point, x)),
    field("y", "Single", offsetof(Point, y)),
};
REALmethod pointMethods[] = {
    method("Constructor(x as double = 0, y as double = 0)", constructPoint),
};

REALproperty rectProperties[] = {
    field("x", "Single", offsetof(Rect, origin.x)),
    field("y", "Single", offsetof(Rect, origin.y)),
    field("width", "Single", offsetof(Rect, size.width)),
    field("height", "Single", offsetof(Rect, size.height)),
};
REALmethod rectMethods[] = {
    method("Constructor(x as double = 0, y as double = 0, width as double = 0, height as double = 0)", constructRect),
    method("Constructor(origin as NSPointZNT, size as NSSizeZNT)", constructRectOfParts),
};

REALproperty rangeProperties[] = {
    field("location", "UInt32", offsetof(Range, location)),
    field("length", "UInt32", offsetof(Range, length)),
};
REALmethod rangeMethods[] = {
    method("Constructor(location as UInt32 = 0, length as UInt32 = 0)", constructRange),
};
// clang-format on

} // namespace

REALclassDefinition sizeClass = class_definition({
    .name = "NSSizeZNT",
    .instanceDataSize = sizeof(Size),
    .properties = sizeProperties,
    .methods = sizeMethods,
});

REALclassDefinition pointClass = class_definition({
    .name = "NSPointZNT",
    .instanceDataSize = sizeof(Point),
    .properties = pointProperties,
    .methods = pointMethods,
});

REALclassDefinition rectClass = class_definition({
    .name = "NSRectZNT",
    .instanceDataSize = sizeof(Rect),
    .properties = rectProperties,
    .methods = rectMethods,
});

REALclassDefinition rangeClass = class_definition({
    .name = "NSRangeZNT",
    .instanceDataSize = sizeof(Range),
    .properties = rangeProperties,
    .methods = rangeMethods,
});

} // namespace base_part
