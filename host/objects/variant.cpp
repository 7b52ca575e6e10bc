#include "host/objects/array.h"
#include "host/objects/host_classes.h"
#include "host/objects/runtime.h"

namespace host {

namespace {

/// What a boxed Variant keeps.
struct Box : State {
    Value value;
};

/// The values that a program and a plug-in read from a Variant.
struct View {
    std::string_view name;
    Type type;
};

bool isDate(const Type& type) {
    const Runtime& runtime = Runtime::current();
    const Class* const held = runtime.findClass(type.className);
    return held && held->descendsFrom(*runtime.findClass("Date"));
}

void addTest(Class& variant, std::string_view name, bool (*test)(const Value& value)) {
    variant.addProperty(name, Kind::Boolean, [test](REALobjectStruct* self) -> Value {
        return test(unboxed(ObjectRef::retain(self)));
    });
}

} // namespace

std::int32_t varType(const Value& value) {
    constexpr std::int32_t arrayFlag = 0x1000;
    enum : std::int32_t {
        Nil = 0,
        Int32 = 2,
        Int64 = 3,
        Single = 4,
        Double = 5,
        Currency = 6,
        Date = 7,
        String = 8,
        Object = 9,
        Boolean = 11,
        Color = 16,
        Pointer = 26
    };
    const auto code = [](const Type& type) -> std::int32_t {
        switch (type.kind) {
        case Kind::Int32:
            return Int32;
        // Codes for unsigned numbers do not exist; 64 bits hold them all but the largest.
        case Kind::UInt32:
        case Kind::Int64:
        case Kind::UInt64:
            return Int64;
        case Kind::Single:
            return Single;
        case Kind::Double:
            return Double;
        case Kind::Currency:
            return Currency;
        case Kind::String:
            return String;
        case Kind::Boolean:
            return Boolean;
        case Kind::Color:
            return Color;
        case Kind::Pointer:
            return Pointer;
        case Kind::Object:
            return isDate(type) ? Date : Object;
        case Kind::Variant:
            return Object;
        case Kind::Nothing:
        case Kind::Nil:
            return Nil;
        }
        return Nil;
    };
    const Type type = value.type();
    return type.isArray ? arrayFlag + code(type.element()) : code(type);
}

ObjectRef boxed(const Value& value) {
    if (value.kind() == Kind::Object || value.kind() == Kind::Nothing) return value.objectRef();
    Runtime& runtime = Runtime::current();
    ObjectRef object = runtime.newInstance(runtime.variantClass());
    if (Box* const box = stateOf<Box>(object)) box->value = value;
    return object;
}

Value unboxed(const ObjectRef& object) {
    if (const Box* const box = stateOf<Box>(object)) return box->value;
    return object;
}

void defineVariant(Class& variant) {
    variant.makeState = [] { return std::make_unique<Box>(); };
    variant.addProperty("Type", Type::integer(), [](REALobjectStruct* self) {
        return Value(varType(unboxed(ObjectRef::retain(self))));
    });
    const View views[] = {
        {"IntegerValue", Type::integer()}, {"Int32Value", Kind::Int32},
        {"UInt32Value", Kind::UInt32},     {"Int64Value", Kind::Int64},
        {"LongValue", Kind::Int64},        {"UInt64Value", Kind::UInt64},
        {"SingleValue", Kind::Single},     {"DoubleValue", Kind::Double},
        {"CurrencyValue", Kind::Currency}, {"BooleanValue", Kind::Boolean},
        {"StringValue", Kind::String},     {"ColorValue", Kind::Color},
        {"ObjectValue", Kind::Object},     {"DateValue", Type::object("Date")},
    };
    for (const View& view : views)
        variant.addProperty(view.name, view.type, [type = view.type](REALobjectStruct* self) {
            const Value value = unboxed(ObjectRef::retain(self));
            return convert(value, type).value_or(neutralValue(type));
        });
    addTest(variant, "IsNull", [](const Value& value) { return value.isNil(); });
    addTest(variant, "IsArray", [](const Value& value) { return value.type().isArray; });
    addTest(variant, "IsNumeric", [](const Value& value) { return value.isNumber(); });
}

} // namespace host
