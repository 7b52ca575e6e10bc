#include "host/objects/value.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

namespace host::exports {

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

} // namespace host::exports
