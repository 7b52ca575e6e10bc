#include "host/services/arrays.h"

#include "host/objects/array.h"
#include "host/objects/runtime.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

#include <limits>

namespace host {

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

/// How elements of a kind pass: as which C type, and to and from a Value.
template <Kind kind, typename Element>
struct Passing {
    static Value in(Element element) { return element; }
    static Element out(const Value& value) { return *value.get<Element>(); }
    static bool accepts(Element) { return true; }
    static constexpr Kind as = kind;
};

template <>
struct Passing<Kind::Currency, std::int64_t> {
    static Value in(std::int64_t element) { return Currency{element}; }
    static std::int64_t out(const Value& value) { return value.get<Currency>()->tenThousandths; }
    static bool accepts(std::int64_t) { return true; }
    static constexpr Kind as = Kind::Currency;
};

template <>
struct Passing<Kind::Color, std::uint32_t> {
    static Value in(std::uint32_t element) { return Color{element & 0xFFFFFF}; }
    static std::uint32_t out(const Value& value) { return value.get<Color>()->rgb; }
    static bool accepts(std::uint32_t) { return true; }
    static constexpr Kind as = Kind::Color;
};

template <>
struct Passing<Kind::String, REALstringStruct*> {
    static Value in(REALstringStruct* element) { return StringRef::retain(element); }
    static REALstringStruct* out(const Value& value) { return value.toText().release(); }
    static bool accepts(REALstringStruct* element) { return arguments::isText(3, element); }
    static constexpr Kind as = Kind::String;
};

template <>
struct Passing<Kind::Object, REALobjectStruct*> {
    static Value in(REALobjectStruct* element) { return unboxed(ObjectRef::retain(element)); }
    static REALobjectStruct* out(const Value& value) { return boxed(value).release(); }
    static bool accepts(REALobjectStruct* element) {
        return !element || arguments::isObject(3, element);
    }
    static constexpr Kind as = Kind::Variant;
};

template <Kind kind, typename Element>
struct Procedures {
    using Pass = Passing<kind, Element>;

    static void insert(REALarrayStruct* array, std::int32_t index, Element element) {
        const Activity activity("the array's insert procedure");
        if (Pass::accepts(element)) insertAt(array, index, Pass::in(element));
    }
    static Element get(REALarrayStruct* array, std::int32_t index) {
        const Activity activity("the array's get procedure");
        return Pass::out(elementAt(array, index, Pass::as));
    }
    /// What stands in an array of a host that is too new for arrays to carry their getters.
    static Element outdatedGet(REALarrayStruct*, std::int32_t) {
        const Activity activity("the array's own getter");
        Runtime::current().reportMisuse("arrays carry none on hosts newer than 2013.9");
        return Pass::out(neutralValue(Pass::as));
    }
};

struct Addresses {
    void* insert = nullptr;
    void* get = nullptr;
    void* outdatedGet = nullptr;
};

template <Kind kind, typename Element>
Addresses addresses() {
    using All = Procedures<kind, Element>;
    return {reinterpret_cast<void*>(&All::insert), reinterpret_cast<void*>(&All::get),
            reinterpret_cast<void*>(&All::outdatedGet)};
}

/// By the kinds that VarType tells apart, which is all that a plug-in knows of an array.
Addresses proceduresFor(const Type& elementType) {
    switch (elementType.kind) {
    case Kind::Int32:
        return addresses<Kind::Int32, std::int32_t>();
    case Kind::UInt32:
    case Kind::Int64:
    case Kind::UInt64:
        return addresses<Kind::Int64, std::int64_t>();
    case Kind::Single:
        return addresses<Kind::Single, float>();
    case Kind::Double:
        return addresses<Kind::Double, double>();
    case Kind::Currency:
        return addresses<Kind::Currency, std::int64_t>();
    case Kind::Boolean:
        return addresses<Kind::Boolean, bool>();
    case Kind::Color:
        return addresses<Kind::Color, std::uint32_t>();
    case Kind::String:
        return addresses<Kind::String, REALstringStruct*>();
    case Kind::Object:
    case Kind::Variant:
        return addresses<Kind::Object, REALobjectStruct*>();
    default:
        return {};
    }
}

} // namespace

void* carriedElementGetter(const Type& elementType) {
    const Addresses procedures = proceduresFor(elementType);
    const double version = Runtime::current().options().version;
    if (version < firstVersionWithBareArrays) return procedures.get;
    return version > lastVersionWithCarriedGetters ? procedures.outdatedGet : nullptr;
}

namespace exports {

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

} // namespace exports

} // namespace host
