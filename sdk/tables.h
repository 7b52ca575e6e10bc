#pragma once

/// Entries of a plug-in's class tables. Each takes the declaration in the host's language and the
/// function; a function whose signature is not the declared one does not compile.

#include "sdk/declaration.h"
#include "sdk/records.h"

#include <span>

namespace REALtables {

namespace detail {

// Called, and so refused, at compile time only.
inline void declaration_does_not_match_its_function() {}
inline void constant_is_not_name_equals_value() {}
inline void property_type_does_not_match_its_accessor() {}

/// The declaration of a method whose C++ parameters, without the instance, are `Arguments`.
template <typename Result, typename... Arguments>
struct CheckedDeclaration {
    const char* text;
    consteval CheckedDeclaration(const char* declaration)
        : text(declaration) {
        const auto parsed = REALdeclarations::parse(declaration);
        if (!parsed || !REALdeclarations::matches<Result, Arguments...>(*parsed))
            declaration_does_not_match_its_function();
    }
};

template <typename Value>
struct CheckedType {
    const char* text;
    consteval CheckedType(const char* type)
        : text(type) {
        if (!REALdeclarations::passes_as<Value>({type, false}))
            property_type_does_not_match_its_accessor();
    }
};

struct CheckedConstant {
    const char* text;
    consteval CheckedConstant(const char* declaration)
        : text(declaration) {
        if (!REALdeclarations::parse_constant(declaration)) constant_is_not_name_equals_value();
    }
};

} // namespace detail

template <typename Result, typename... Arguments>
REALmethod
method(std::type_identity_t<detail::CheckedDeclaration<Result, Arguments...>> declaration,
       Result (*function)(REALobjectStruct*, Arguments...), REALword flags = REALconsoleSafe) {
    return {reinterpret_cast<void*>(function), nullptr, declaration.text, flags, 0, nullptr};
}

/// A method with a setter, which takes the assigned value behind the method's parameters.
template <typename Result, typename... Arguments>
REALmethod
method(std::type_identity_t<detail::CheckedDeclaration<Result, Arguments...>> declaration,
       Result (*function)(REALobjectStruct*, Arguments...),
       std::type_identity_t<void (*)(REALobjectStruct*, Arguments..., Result)> setter,
       REALword flags = REALconsoleSafe) {
    return {reinterpret_cast<void*>(function),
            reinterpret_cast<void*>(setter),
            declaration.text,
            flags,
            0,
            nullptr};
}

template <typename Result, typename... Arguments>
REALmethod
shared_method(std::type_identity_t<detail::CheckedDeclaration<Result, Arguments...>> declaration,
              Result (*function)(Arguments...), REALword flags = REALconsoleSafe) {
    return {reinterpret_cast<void*>(function), nullptr, declaration.text, flags, 0, nullptr};
}

template <typename Value>
REALproperty
property(const char* name, std::type_identity_t<detail::CheckedType<Value>> type,
         Value (*getter)(REALobjectStruct*, REALword),
         std::type_identity_t<void (*)(REALobjectStruct*, REALword, Value)> setter = nullptr) {
    return {nullptr,
            name,
            type.text,
            REALpropertyFlags,
            reinterpret_cast<void*>(getter),
            reinterpret_cast<void*>(setter),
            0,
            {}};
}

/// A field that the host reads and writes itself, `offset` bytes into the instance data.
inline REALproperty field(const char* name, const char* type, REALword offset = 0) {
    void* const direct = reinterpret_cast<void*>(REALdirectAccess);
    return {nullptr, name, type, REALpropertyFlags, direct, direct, offset, {}};
}

inline REALconstant constant(detail::CheckedConstant declaration) { return {declaration.text, {}}; }

/// A class, told by its tables.
struct ClassDescription {
    const char* name;
    const char* superclass = nullptr;
    REALword instanceDataSize = 0; ///< bytes
    void (*constructor)(REALobjectStruct*) = nullptr;
    void (*destructor)(REALobjectStruct*) = nullptr;
    std::span<REALproperty> properties = {};
    std::span<REALmethod> methods = {};
    std::span<REALconstant> constants = {};
    std::span<REALmethod> sharedMethods = {};
    REALword flags = REALconsoleSafe;
};

inline REALclassDefinition class_definition(const ClassDescription& description) {
    REALclassDefinition definition{};
    definition.version = 12;
    definition.name = description.name;
    definition.superclass = description.superclass;
    definition.instanceDataSize = description.instanceDataSize;
    definition.constructor = reinterpret_cast<void*>(description.constructor);
    definition.destructor = reinterpret_cast<void*>(description.destructor);
    definition.properties = description.properties.data();
    definition.propertyCount = static_cast<REALword>(description.properties.size());
    definition.methods = description.methods.data();
    definition.methodCount = static_cast<REALword>(description.methods.size());
    definition.constants = description.constants.data();
    definition.constantCount = static_cast<REALword>(description.constants.size());
    definition.flags = description.flags;
    definition.sharedMethods = description.sharedMethods.data();
    definition.sharedMethodCount = static_cast<REALword>(description.sharedMethods.size());
    return definition;
}

} // namespace REALtables
