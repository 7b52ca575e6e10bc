#pragma once

/// The types of the host's language.

#include "sdk/declaration.h"

#include <string>
#include <string_view>

namespace host {

enum class Kind : std::uint8_t {
    Nothing, ///< no result
    Nil,     ///< the type of the literal Nil: fits every object type and Variant
    Int32,
    UInt32,
    Int64,
    UInt64,
    Single,
    Double,
    Boolean,
    String,
    Color,
    Currency,
    Pointer,
    Object,
    Variant,
};

/// A type, or an array of it.
struct Type {
    Kind kind = Kind::Nothing;
    bool isArray = false;
    /// Of Kind::Object: the class as it was written; empty for Object. The class need not exist:
    /// a plug-in may declare members of classes that another part registers, or none does.
    std::string className;

    Type() = default;
    Type(Kind kind, bool isArray = false)
        : kind(kind)
        , isArray(isArray) {}

    /// The host's Integer: a machine word.
    static Type integer();
    static Type object(std::string_view className);
    /// Any identifier that is no built-in type names a class.
    static Type named(std::string_view name, bool isArray = false);
    static Type of(const REALdeclarations::Type& declared);

    Type element() const;
    Type array() const;
    bool isNumber() const;  ///< an integer, floating-point number, Currency
    bool isInteger() const; ///< one of the four integers
    /// Passed as an object reference: objects, Variants and arrays.
    bool isReference() const;
    /// As a program writes it, such as "Integer", "NSImageZNT" or "String()".
    std::string name() const;
};

/// Class names are compared without regard to case.
bool operator==(const Type& a, const Type& b);

/// Compares two names of the language, which ignores case.
inline bool sameName(std::string_view a, std::string_view b) {
    return REALdeclarations::same_word(a, b);
}
/// The key under which a name is stored.
std::string foldedName(std::string_view name);

} // namespace host
