#include "host/objects/array.h"

#include "host/objects/runtime.h"
#include "host/services/arrays.h"

#include <algorithm>

namespace host {

ObjectRef newArray(const Type& elementType, std::int32_t upperBound) {
    Runtime& runtime = Runtime::current();
    ObjectRef object = runtime.newInstance(runtime.arrayClass());
    if (Array* const array = stateOf<Array>(object)) {
        setElementType(object.get(), elementType);
        const auto count = std::max<std::int64_t>(std::int64_t{upperBound} + 1, 0);
        array->elements.resize(static_cast<std::size_t>(count), neutralValue(elementType));
    }
    return object;
}

void setElementType(REALobjectStruct* array, const Type& elementType) {
    stateOf<Array>(array)->elementType = elementType;
    static_cast<REALarrayStruct*>(array)->elementGetter = carriedElementGetter(elementType);
}

Array* arrayOf(const Value& value) { return stateOf<Array>(value.object()); }

} // namespace host
