#include "host/plugins/calls.h"

#include "host/objects/array.h"
#include "host/objects/runtime.h"
#include "host/plugins/ffi_types.h"

#include <algorithm>
#include <cstring>

namespace host {

ffi_type* ffiType(const Type& type) {
    if (type.isReference()) return &ffi_type_pointer;
    switch (type.kind) {
    case Kind::Nothing:
        return &ffi_type_void;
    case Kind::Int32:
        return &ffi_type_sint32;
    case Kind::UInt32:
    case Kind::Color:
        return &ffi_type_uint32;
    case Kind::Int64:
    case Kind::Currency:
        return &ffi_type_sint64;
    case Kind::UInt64:
        return &ffi_type_uint64;
    case Kind::Single:
        return &ffi_type_float;
    case Kind::Double:
        return &ffi_type_double;
    case Kind::Boolean:
        return &ffi_type_uint8;
    default:
        return &ffi_type_pointer;
    }
}

Native toNative(const Value& value, const Type& type, std::vector<ObjectRef>& kept) {
    Native native{};
    if (type.kind == Kind::Variant && !type.isArray) {
        kept.push_back(boxed(value));
        native.pointer = kept.back().get();
        return native;
    }
    if (type.isReference()) {
        native.pointer = value.object();
        return native;
    }
    switch (type.kind) {
    case Kind::Int32:
        native.int32 = *value.get<std::int32_t>();
        break;
    case Kind::UInt32:
        native.uint32 = *value.get<std::uint32_t>();
        break;
    case Kind::Int64:
        native.int64 = *value.get<std::int64_t>();
        break;
    case Kind::UInt64:
        native.uint64 = *value.get<std::uint64_t>();
        break;
    case Kind::Single:
        native.single = *value.get<float>();
        break;
    case Kind::Double:
        native.real = *value.get<double>();
        break;
    case Kind::Boolean:
        native.boolean = *value.get<bool>();
        break;
    case Kind::String:
        native.pointer = value.string();
        break;
    case Kind::Color:
        native.uint32 = value.get<Color>()->rgb;
        break;
    case Kind::Currency:
        native.int64 = value.get<Currency>()->tenThousandths;
        break;
    case Kind::Pointer:
        native.pointer = *value.get<void*>();
        break;
    default:
        break;
    }
    return native;
}

namespace {

void refuse(std::string_view what, const std::string& seen, const Type& type) {
    Runtime::current().reportMisuse(std::string(what) + " is " + seen + " where " + type.name() +
                                    " is declared");
}

Value stringFrom(void* pointer, const Type& type, bool adopted, std::string_view what) {
    auto* const string = static_cast<REALstringStruct*>(pointer);
    if (!string) return StringRef();
    const Registry& registry = Runtime::current().registry();
    const Registry::Entry entry = registry.find(string);
    if (entry.kind != Registry::Kind::String || !entry.alive) {
        refuse(what, registry.describe(string), type);
        return StringRef();
    }
    return adopted ? StringRef::adopt(string) : StringRef::retain(string);
}

/// An array that a plug-in made holds objects of any kind; what it is declared as decides its type,
/// when all of its elements are of that.
bool retype(REALobjectStruct* object, const Type& elementType) {
    Array& array = *stateOf<Array>(object);
    if (array.elementType == elementType) return true;
    if (array.elementType.kind != Kind::Variant) return false;
    for (const Value& element : array.elements)
        if (!convert(element, elementType)) return false;
    for (Value& element : array.elements)
        element = *convert(element, elementType);
    setElementType(object, elementType);
    return true;
}

bool fits(const ObjectRef& object, const Type& type) {
    if (type.isArray) return stateOf<Array>(object) && retype(object.get(), type.element());
    if (type.kind == Kind::Variant || type.className.empty()) return true;
    return isA(object.get(), Runtime::current().findClass(type.className));
}

Value objectFrom(void* pointer, const Type& type, bool adopted, std::string_view what) {
    auto* const object = static_cast<REALobjectStruct*>(pointer);
    if (!object) return nullptr;
    const Registry& registry = Runtime::current().registry();
    const Registry::Entry entry = registry.find(object);
    if (entry.kind != Registry::Kind::Object || !entry.alive) {
        refuse(what, registry.describe(object), type);
        return nullptr;
    }
    ObjectRef reference = adopted ? ObjectRef::adopt(object) : ObjectRef::retain(object);
    if (!fits(reference, type)) {
        refuse(what, registry.describe(object), type);
        return nullptr;
    }
    return type.kind == Kind::Variant && !type.isArray ? unboxed(reference) : Value(reference);
}

} // namespace

Value fromNative(const Native& native, const Type& type, bool adopted, std::string_view what) {
    if (type.isReference()) return objectFrom(native.pointer, type, adopted, what);
    switch (type.kind) {
    case Kind::Int32:
        return native.int32;
    case Kind::UInt32:
        return native.uint32;
    case Kind::Int64:
        return native.int64;
    case Kind::UInt64:
        return native.uint64;
    case Kind::Single:
        return native.single;
    case Kind::Double:
        return native.real;
    case Kind::Boolean:
        return native.boolean != 0;
    case Kind::String:
        return stringFrom(native.pointer, type, adopted, what);
    case Kind::Color:
        return Color{native.uint32};
    case Kind::Currency:
        return Currency{native.int64};
    case Kind::Pointer:
        return native.pointer;
    default:
        return {};
    }
}

struct NativeFunction::Interface {
    ffi_cif call{};
    std::vector<ffi_type*> types;
};

NativeFunction::NativeFunction(void* function, std::vector<Parameter> parameters, Type result,
                               std::string name)
    : function_(function)
    , parameters_(std::move(parameters))
    , result_(std::move(result))
    , name_(std::move(name))
    , interface_(std::make_unique<Interface>()) {
    for (const Parameter& parameter : parameters_)
        interface_->types.push_back(parameter.isByRef ? &ffi_type_pointer
                                                      : ffiType(parameter.type));
    const auto count = static_cast<unsigned>(parameters_.size());
    if (ffi_prep_cif(&interface_->call, FFI_DEFAULT_ABI, count, ffiType(result_),
                     interface_->types.data()) != FFI_OK)
        throw std::logic_error("no call interface for " + name_);
}

NativeFunction::~NativeFunction() = default;

Value NativeFunction::operator()(std::span<Value> arguments) const {
    const Activity activity(name_);
    const std::size_t count = parameters_.size();
    std::vector<ObjectRef> kept;
    kept.reserve(count);
    std::vector<Native> values(count);
    std::vector<void*> references(count);
    std::vector<void*> addresses(count);
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = toNative(arguments[i], parameters_[i].type, kept);
        references[i] = &values[i];
        addresses[i] = parameters_[i].isByRef ? static_cast<void*>(&references[i])
                                              : static_cast<void*>(&values[i]);
    }
    // libffi widens results that are narrower than its own word.
    union {
        ffi_arg word;
        Native native;
    } result{};
    ffi_call(&interface_->call, FFI_FN(function_), &result, addresses.data());
    if (result_.kind == Kind::Boolean && !result_.isArray)
        result.native.boolean = static_cast<std::uint8_t>(result.word);
    else if (ffiType(result_)->size < sizeof(ffi_arg) && ffiType(result_)->type != FFI_TYPE_FLOAT &&
             ffiType(result_) != &ffi_type_void)
        result.native.uint32 = static_cast<std::uint32_t>(result.word);
    for (std::size_t i = 0; i < count; ++i) {
        if (!parameters_[i].isByRef) continue;
        // A reference that the function stored comes with it; the old one stays the caller's.
        const Type& type = parameters_[i].type;
        const bool isPointer = ffiType(type) == &ffi_type_pointer;
        const bool stored =
            isPointer && values[i].pointer != toNative(arguments[i], type, kept).pointer;
        arguments[i] = fromNative(values[i], type, stored, parameters_[i].name);
    }
    return fromNative(result.native, result_, true, "the result");
}

namespace {

Parameter objectParameter() { return {"self", Type(Kind::Pointer), {}}; }

std::vector<Parameter> withObject(bool isShared, std::vector<Parameter> parameters) {
    if (!isShared) parameters.insert(parameters.begin(), objectParameter());
    return parameters;
}

std::vector<Value> withObject(bool isShared, REALobjectStruct* self, std::vector<Value> arguments) {
    if (!isShared) arguments.insert(arguments.begin(), Value(static_cast<void*>(self)));
    return arguments;
}

std::shared_ptr<NativeFunction> prepared(void* function, std::vector<Parameter> parameters,
                                         const Type& result, std::string name) {
    return std::make_shared<NativeFunction>(function, std::move(parameters), result,
                                            std::move(name));
}

} // namespace

Method::Body methodBody(void* function, const Signature& signature, bool isShared,
                        std::string_view owner) {
    auto call = prepared(function, withObject(isShared, signature.parameters), signature.result,
                         std::string(owner) + "." + signature.name);
    return [call, isShared](REALobjectStruct* self, std::span<Value> arguments) {
        auto all = withObject(isShared, self, {arguments.begin(), arguments.end()});
        Value result = (*call)(all);
        std::ranges::move(all.begin() + (isShared ? 0 : 1), all.end(), arguments.begin());
        return result;
    };
}

Property::Getter getterOf(void* function, const Type& type, REALword parameter, bool isShared,
                          std::string name) {
    auto call = prepared(function, withObject(isShared, {{"parameter", Type::integer(), {}}}), type,
                         std::move(name));
    return [call, isShared, parameter](REALobjectStruct* self) {
        auto arguments = withObject(isShared, self, {parameter});
        return (*call)(arguments);
    };
}

Property::Setter setterOf(void* function, const Type& type, REALword parameter, bool isShared,
                          std::string name) {
    auto call = prepared(
        function, withObject(isShared, {{"parameter", Type::integer(), {}}, {"value", type, {}}}),
        Type(), std::move(name));
    return [call, isShared, parameter](REALobjectStruct* self, const Value& value) {
        auto arguments = withObject(isShared, self, {parameter, value});
        (*call)(arguments);
    };
}

Class::Hook hookOf(void* function, std::string name) {
    auto call = prepared(function, {objectParameter()}, Type(), std::move(name));
    return [call](REALobjectStruct* self) {
        std::vector<Value> arguments{static_cast<void*>(self)};
        (*call)(arguments);
    };
}

std::optional<std::size_t> fieldSize(const Type& type) {
    if (type.kind == Kind::Variant || type.kind == Kind::Nothing) return std::nullopt;
    return ffiType(type)->size;
}

Property::Getter fieldGetter(std::size_t offset, const Type& type, std::string name) {
    return [offset, type, name = std::move(name)](REALobjectStruct* self) {
        Native native{};
        std::memcpy(&native, reinterpret_cast<const char*>(self) + offset, *fieldSize(type));
        return fromNative(native, type, false, name);
    };
}

Property::Setter fieldSetter(std::size_t offset, const Type& type) {
    return [offset, type](REALobjectStruct* self, const Value& value) {
        std::vector<ObjectRef> kept;
        const Native native = toNative(value, type, kept);
        std::memcpy(reinterpret_cast<char*>(self) + offset, &native, *fieldSize(type));
    };
}

} // namespace host
