#include "host/objects/runtime.h"
#include "host/plugins/closures.h"
#include "host/services/arguments.h"
#include "host/services/exports.h"

#include <algorithm>
#include <type_traits>

namespace host::exports {

namespace {

Runtime& runtime() { return Runtime::current(); }

std::optional<Signature> signatureFrom(int number, const char* declaration) {
    if (!arguments::isGiven(number, declaration)) return std::nullopt;
    auto signature = Signature::parse(declaration);
    if (!signature)
        runtime().reportMisuse("argument " + std::to_string(number) + ": \"" + declaration +
                               "\" is no declaration");
    return signature;
}

bool sameTypes(const Signature& a, const Signature& b) {
    return a.result == b.result &&
           std::ranges::equal(a.parameters, b.parameters,
                              [](const Parameter& left, const Parameter& right) {
                                  return left.type == right.type && left.isByRef == right.isByRef &&
                                         left.isAssigned == right.isAssigned;
                              });
}

/// The function of the candidate that has exactly the declared types.
void* functionAmong(const std::vector<const Method*>& candidates, const Signature& wanted) {
    for (const Method* const method : candidates)
        if (sameTypes(method->signature, wanted)) return functionOf(*method);
    return nullptr;
}

/// Any object may be held in a Variant, and has a Variant's properties where its class has none of
/// the name.
const Property* propertyOf(REALobjectStruct* object, const char* name) {
    if (!arguments::isObject(1, object) || !arguments::isGiven(2, name)) return nullptr;
    const Property* const property = classOf(object)->findProperty(name);
    return property ? property : runtime().variantClass().findProperty(name);
}

/// Whether the services for the type reach a property of that type.
bool reaches(const Type& wanted, const Type& property) {
    if (wanted.isNumber()) return property.isNumber();
    if (wanted.kind == Kind::Object) return property.isReference();
    return wanted == property;
}

/// Reads a property of the type; nothing when there is none that is of it or converts to it.
std::optional<Value> read(REALobjectStruct* object, const char* name, const void* destination,
                          const Type& type) {
    if (!arguments::isGiven(3, destination)) return std::nullopt;
    const Property* const property = propertyOf(object, name);
    if (!property || !reaches(type, property->type)) return std::nullopt;
    try {
        return convert(runtime().get(*property, object), type);
    } catch (const Raised& raised) {
        runtime().setPending(raised.exception());
        return std::nullopt;
    }
}

template <typename Number>
std::uint8_t readNumber(REALobjectStruct* object, const char* name, Number* destination,
                        const Type& type) {
    const auto value = read(object, name, destination, type);
    if (!value) return 0;
    *destination = *value->template get<Number>();
    return 1;
}

std::uint8_t write(REALobjectStruct* object, const char* name, const Value& value) {
    const Property* const property = propertyOf(object, name);
    if (!property || !property->set || !reaches(value.kind(), property->type)) return 0;
    try {
        runtime().set(*property, object, value);
    } catch (const Raised& raised) {
        runtime().setPending(raised.exception());
        return 0;
    }
    return 1;
}

} // namespace

void* loadGlobalMethod(void*, const char* declaration) {
    const auto wanted = signatureFrom(2, declaration);
    return wanted ? functionAmong(runtime().findFunctions(wanted->name), *wanted) : nullptr;
}

void* loadObjectMethod(REALobjectStruct* object, const char* declaration) {
    if (!arguments::isObject(1, object)) return nullptr;
    const auto wanted = signatureFrom(2, declaration);
    return wanted ? functionAmong(classOf(object)->findMethods(wanted->name), *wanted) : nullptr;
}

std::uint8_t getInt32(REALobjectStruct* object, const char* name, std::int32_t* value) {
    return readNumber(object, name, value, Kind::Int32);
}

std::uint8_t getInt64(REALobjectStruct* object, const char* name, std::int64_t* value) {
    return readNumber(object, name, value, Kind::Int64);
}

std::uint8_t getSingle(REALobjectStruct* object, const char* name, float* value) {
    return readNumber(object, name, value, Kind::Single);
}

std::uint8_t getDouble(REALobjectStruct* object, const char* name, double* value) {
    return readNumber(object, name, value, Kind::Double);
}

std::uint8_t getBoolean(REALobjectStruct* object, const char* name, std::uint8_t* value) {
    const auto read = exports::read(object, name, value, Kind::Boolean);
    if (!read) return 0;
    *value = *read->get<bool>();
    return 1;
}

std::uint8_t getString(REALobjectStruct* object, const char* name, REALstringStruct** value) {
    auto read = exports::read(object, name, value, Kind::String);
    if (!read) return 0;
    *value = read->toText().release();
    return 1;
}

std::uint8_t getObject(REALobjectStruct* object, const char* name, REALobjectStruct** value) {
    const auto read = exports::read(object, name, value, Kind::Object);
    if (!read) return 0;
    *value = read->objectRef().release();
    return 1;
}

std::uint8_t setInt32(REALobjectStruct* object, const char* name, std::int32_t value) {
    return write(object, name, value);
}

std::uint8_t setString(REALobjectStruct* object, const char* name, REALstringStruct* value) {
    return arguments::isText(3, value) && write(object, name, StringRef::retain(value));
}

} // namespace host::exports
