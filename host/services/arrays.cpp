#include "host/objects/array.h"
#include "host/objects/runtime.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

#include <limits>

namespace host::exports {

namespace {

Array* arrayFrom(int number, REALarrayStruct* array) {
    return arguments::isObject(number, array, "Array") ? stateOf<Array>(array) : nullptr;
}

/// Makes room at the index, which may be one past the upper bound, and stores there.
void insertAt(REALarrayStruct* object, std::int32_t index, Value element) {
    Array* const array = arrayFrom(1, object);
    if (!array) return;
    const auto size = static_cast<std::int64_t>(array->elements.size());
    if (index < 0 || index > size) {
        Runtime::current().reportMisuse("argument 2: index " + std::to_string(index) +
                                        " in an array of " + std::to_string(size) + " elements");
        return;
    }
    auto converted = convert(element, array->elementType);
    if (!converted) {
        Runtime::current().reportMisuse("argument 3: " + element.type().name() + " where " +
                                        array->elementType.name() + " is expected");
        return;
    }
    array->elements.insert(array->elements.begin() + index, std::move(*converted));
}

/// Neutral for an index outside of the array.
Value elementAt(REALarrayStruct* object, std::int32_t index, const Type& type) {
    const Array* const array = arrayFrom(1, object);
    if (!array) return neutralValue(type);
    if (index < 0 || index > array->upperBound()) {
        Runtime::current().reportMisuse("argument 2: index " + std::to_string(index) +
                                        " in an array up to " +
                                        std::to_string(array->upperBound()));
        return neutralValue(type);
    }
    return convert(array->elements[static_cast<std::size_t>(index)], type)
        .value_or(neutralValue(type));
}

constexpr std::string_view inserting = "the array's insert procedure";
constexpr std::string_view getting = "the array's get procedure";

/// The two procedures for elements that pass as the C type `Element`.
template <typename Element, Kind kind>
struct Procedures {
    static void insert(REALarrayStruct* array, std::int32_t index, Element element) {
        const Activity activity(inserting);
        insertAt(array, index, element);
    }
    static Element get(REALarrayStruct* array, std::int32_t index) {
        const Activity activity(getting);
        return *elementAt(array, index, kind).template get<Element>();
    }
};

template <Kind kind>
struct Procedures<REALstringStruct*, kind> {
    static void insert(REALarrayStruct* array, std::int32_t index, REALstringStruct* element) {
        const Activity activity(inserting);
        if (arguments::isText(3, element)) insertAt(array, index, StringRef::retain(element));
    }
    static REALstringStruct* get(REALarrayStruct* array, std::int32_t index) {
        const Activity activity(getting);
        return elementAt(array, index, kind).toText().release();
    }
};

template <Kind kind>
struct Procedures<REALobjectStruct*, kind> {
    static void insert(REALarrayStruct* array, std::int32_t index, REALobjectStruct* element) {
        const Activity activity(inserting);
        if (!element || arguments::isObject(3, element))
            insertAt(array, index, unboxed(ObjectRef::retain(element)));
    }
    static REALobjectStruct* get(REALarrayStruct* array, std::int32_t index) {
        const Activity activity(getting);
        return boxed(elementAt(array, index, Kind::Variant)).release();
    }
};

struct Pair {
    void* insert = nullptr;
    void* get = nullptr;
};

template <typename Element, Kind kind>
Pair pair() {
    using Both = Procedures<Element, kind>;
    return {reinterpret_cast<void*>(&Both::insert), reinterpret_cast<void*>(&Both::get)};
}

Pair proceduresFor(const Type& elementType) {
    switch (elementType.kind) {
    case Kind::Int32:
        return pair<std::int32_t, Kind::Int32>();
    case Kind::UInt32:
        return pair<std::uint32_t, Kind::UInt32>();
    case Kind::Int64:
        return pair<std::int64_t, Kind::Int64>();
    case Kind::UInt64:
        return pair<std::uint64_t, Kind::UInt64>();
    case Kind::Single:
        return pair<float, Kind::Single>();
    case Kind::Double:
        return pair<double, Kind::Double>();
    case Kind::Boolean:
        return pair<bool, Kind::Boolean>();
    case Kind::String:
        return pair<REALstringStruct*, Kind::String>();
    case Kind::Object:
    case Kind::Variant:
        return pair<REALobjectStruct*, Kind::Object>();
    default:
        return {};
    }
}

} // namespace

std::int32_t arrayUBound(REALarrayStruct* array) {
    const Array* const held = arrayFrom(1, array);
    return held ? held->upperBound() : -1;
}

void* arrayInsertProc(REALarrayStruct* array) {
    const Array* const held = arrayFrom(1, array);
    return held ? proceduresFor(held->elementType).insert : nullptr;
}

void* arrayGetProc(REALarrayStruct* array) {
    const Array* const held = arrayFrom(1, array);
    return held ? proceduresFor(held->elementType).get : nullptr;
}

REALarrayStruct* createArray(std::int32_t elementType, std::int32_t upperBound) {
    Runtime& runtime = Runtime::current();
    if (elementType != REALarrayOfStrings && elementType != REALarrayOfObjects) {
        runtime.reportMisuse("argument 1: element type " + std::to_string(elementType) +
                             " is unknown");
        return nullptr;
    }
    if (upperBound < -1 || upperBound == std::numeric_limits<std::int32_t>::max()) {
        runtime.reportMisuse("argument 2: upper bound " + std::to_string(upperBound));
        return nullptr;
    }
    // Elements of an array of objects may be Variants, which are objects too.
    const Kind kind = elementType == REALarrayOfStrings ? Kind::String : Kind::Variant;
    return static_cast<REALarrayStruct*>(newArray(kind, upperBound).release());
}

} // namespace host::exports
