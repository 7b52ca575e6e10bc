#pragma once

/// Calls of a plug-in's C functions with the signature that its declaration states.

#include "host/objects/class.h"

#include <memory>
#include <vector>

namespace host {

/// One value in the form in which it crosses the interface.
union Native {
    std::int32_t int32;
    std::uint32_t uint32;
    std::int64_t int64;
    std::uint64_t uint64;
    float single;
    double real;
    std::uint8_t boolean;
    void* pointer;
};

/// The value in its native form. `value` is of the type; a Variant's box is kept in `kept`, which
/// must outlive the native form. References stay the caller's.
Native toNative(const Value& value, const Type& type, std::vector<ObjectRef>& kept);

/// The value of a native form that came from a plug-in. References that it passes on (`adopted`)
/// are taken over, others are borrowed. What is no live object or string of the type is reported
/// as misuse of `what`, and becomes the neutral value.
Value fromNative(const Native& native, const Type& type, bool adopted, std::string_view what);

/// A C function, ready to be called.
class NativeFunction {
public:
    /// `parameters` are all parameters of the C function.
    NativeFunction(void* function, std::vector<Parameter> parameters, Type result,
                   std::string name);
    ~NativeFunction();
    NativeFunction(const NativeFunction&) = delete;
    NativeFunction& operator=(const NativeFunction&) = delete;

    /// `arguments` are values of the parameters' types; those ByRef receive the changed values.
    /// Foreign exceptions pass through.
    Value operator()(std::span<Value> arguments) const;

    const std::string& name() const { return name_; }

private:
    struct Interface;

    void* function_;
    std::vector<Parameter> parameters_;
    Type result_;
    std::string name_;
    std::unique_ptr<Interface> interface_;
};

/// Method bodies and accessors over a plug-in's functions. `owner` names the class in reports.
Method::Body methodBody(void* function, const Signature& signature, bool isShared,
                        std::string_view owner);
Property::Getter getterOf(void* function, const Type& type, REALword parameter, bool isShared,
                          std::string name);
Property::Setter setterOf(void* function, const Type& type, REALword parameter, bool isShared,
                          std::string name);
Class::Hook hookOf(void* function, std::string name);

/// Accessors of a field, `offset` bytes into an object. Whether a field of the type can be accessed
/// so is for `fieldSize` to say.
Property::Getter fieldGetter(std::size_t offset, const Type& type, std::string name);
Property::Setter fieldSetter(std::size_t offset, const Type& type);
/// Bytes of a field; nothing for a type that cannot be a field.
std::optional<std::size_t> fieldSize(const Type& type);

} // namespace host
