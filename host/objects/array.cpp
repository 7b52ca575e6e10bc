#include "host/objects/array.h"

#include "host/objects/runtime.h"

#include <algorithm>

namespace host {

ObjectRef newArray(const Type& elementType, std::int32_t upperBound) {
    Runtime& runtime = Runtime::current();
    ObjectRef object = runtime.newInstance(runtime.arrayClass());
    if (Array* const array = stateOf<Array>(object)) {
        array->elementType = elementType;
        const auto count = std::max<std::int64_t>(std::int64_t{upperBound} + 1, 0);
        array->elements.resize(static_cast<std::size_t>(count), neutralValue(elementType));
    }
    return object;
}

Array* arrayOf(const Value& value) { return stateOf<Array>(value.object()); }

} // namespace host
