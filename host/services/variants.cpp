#include "host/objects/value.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

namespace host::exports {

namespace {

/// What the Variant holds, as a value of the kind.
Value heldAs(Kind kind, REALobjectStruct* variant) {
    if (!variant || !arguments::isObject(1, variant)) return neutralValue(kind);
    return convert(unboxed(ObjectRef::retain(variant)), kind).value_or(neutralValue(kind));
}

} // namespace

REALobjectStruct* stringToVariant(REALstringStruct* value) {
    if (!arguments::isText(1, value)) return nullptr;
    return boxed(StringRef::retain(value)).release();
}

REALobjectStruct* int32ToVariant(std::int32_t value) { return boxed(value).release(); }
REALobjectStruct* uint32ToVariant(std::uint32_t value) { return boxed(value).release(); }
REALobjectStruct* int64ToVariant(std::int64_t value) { return boxed(value).release(); }
REALobjectStruct* uint64ToVariant(std::uint64_t value) { return boxed(value).release(); }
REALobjectStruct* singleToVariant(float value) { return boxed(value).release(); }
REALobjectStruct* doubleToVariant(double value) { return boxed(value).release(); }
REALobjectStruct* booleanToVariant(std::uint8_t value) { return boxed(value != 0).release(); }

std::int32_t variantToInt32(REALobjectStruct* value) {
    return *heldAs(Kind::Int32, value).get<std::int32_t>();
}
std::int64_t variantToInt64(REALobjectStruct* value) {
    return *heldAs(Kind::Int64, value).get<std::int64_t>();
}
float variantToSingle(REALobjectStruct* value) { return *heldAs(Kind::Single, value).get<float>(); }
double variantToDouble(REALobjectStruct* value) {
    return *heldAs(Kind::Double, value).get<double>();
}
REALstringStruct* variantToString(REALobjectStruct* value) {
    return heldAs(Kind::String, value).toText().release();
}

} // namespace host::exports
