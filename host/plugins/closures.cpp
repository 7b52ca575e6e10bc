#include "host/plugins/closures.h"

#include "host/objects/runtime.h"
#include "host/plugins/calls.h"
#include "host/plugins/ffi_types.h"

#include <cstring>
#include <memory>
#include <stdexcept>

namespace host {

namespace {

/// A method and the description of its C function.
struct Closure {
    Closure() = default;
    ~Closure() {
        if (memory) ffi_closure_free(memory);
    }
    Closure(const Closure&) = delete;
    Closure& operator=(const Closure&) = delete;

    const Method* method = nullptr;
    ffi_cif call{};
    std::vector<ffi_type*> types;
    ffi_closure* memory = nullptr;
    void* function = nullptr;
};

Native nativeAt(void* address, const Type& type) {
    Native native{};
    std::memcpy(&native, address, ffiType(type)->size);
    return native;
}

/// Hands a result to the plug-in, with a reference where it is one.
Native handedOver(const Value& value, const Type& type) {
    std::vector<ObjectRef> kept;
    const Native native = toNative(value, type, kept);
    if (type.kind == Kind::String && !type.isArray)
        StringRef::retain(value.string()).release();
    else if (type.isReference())
        ObjectRef::retain(static_cast<REALobjectStruct*>(native.pointer)).release();
    return native;
}

void store(const Native& native, const Type& type, void* result) {
    ffi_type* const described = ffiType(type);
    if (described == &ffi_type_void) return;
    // libffi wants integers that are narrower than its word widened.
    if (described == &ffi_type_uint8)
        *static_cast<ffi_arg*>(result) = native.boolean;
    else if (described == &ffi_type_sint32)
        *static_cast<ffi_sarg*>(result) = native.int32;
    else if (described == &ffi_type_uint32)
        *static_cast<ffi_arg*>(result) = native.uint32;
    else
        std::memcpy(result, &native, described->size);
}

Value performed(const Closure& closure, void** arguments) {
    Runtime& runtime = Runtime::current();
    const Method& method = *closure.method;
    REALobjectStruct* self = nullptr;
    std::size_t offset = 0;
    if (!method.isShared) {
        const Value object =
            fromNative(nativeAt(arguments[0], Kind::Object), Kind::Object, false, "the object");
        self = object.object();
        if (!self) return neutralValue(method.signature.result);
        offset = 1;
    }
    std::vector<Value> values;
    for (const Parameter& parameter : method.signature.parameters) {
        const Native native = nativeAt(arguments[offset++], parameter.type);
        values.push_back(fromNative(native, parameter.type, false, parameter.name));
    }
    try {
        const Value result = runtime.perform(method, self, values);
        return convert(result, method.signature.result)
            .value_or(neutralValue(method.signature.result));
    } catch (const Raised& raised) {
        runtime.setPending(raised.exception());
        return neutralValue(method.signature.result);
    }
}

void enter(ffi_cif*, void* result, void** arguments, void* data) {
    const auto& closure = *static_cast<const Closure*>(data);
    const Activity activity(closure.method->signature.name);
    const Type& type = closure.method->signature.result;
    store(handedOver(performed(closure, arguments), type), type, result);
}

std::shared_ptr<Closure> makeClosure(const Method& method) {
    auto closure = std::make_shared<Closure>();
    closure->method = &method;
    if (!method.isShared) closure->types.push_back(&ffi_type_pointer);
    for (const Parameter& parameter : method.signature.parameters)
        closure->types.push_back(ffiType(parameter.type));
    closure->memory =
        static_cast<ffi_closure*>(ffi_closure_alloc(sizeof(ffi_closure), &closure->function));
    if (!closure->memory ||
        ffi_prep_cif(&closure->call, FFI_DEFAULT_ABI, static_cast<unsigned>(closure->types.size()),
                     ffiType(method.signature.result), closure->types.data()) != FFI_OK ||
        ffi_prep_closure_loc(closure->memory, &closure->call, enter, closure.get(),
                             closure->function) != FFI_OK)
        throw std::runtime_error("no function can be made for " + method.signature.name);
    return closure;
}

} // namespace

void* functionOf(const Method& method) {
    if (!method.loaded) method.loaded = makeClosure(method);
    return static_cast<const Closure*>(method.loaded.get())->function;
}

} // namespace host
