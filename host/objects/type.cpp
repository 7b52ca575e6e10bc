#include "host/objects/type.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace host {

namespace {

constexpr Kind integerKind = sizeof(REALword) == 4 ? Kind::Int32 : Kind::Int64;

constexpr std::array<std::pair<std::string_view, Kind>, 15> builtInTypes{{
    {"Integer", integerKind},
    {"Int32", Kind::Int32},
    {"UInt32", Kind::UInt32},
    {"Int64", Kind::Int64},
    {"UInt64", Kind::UInt64},
    {"Single", Kind::Single},
    {"Double", Kind::Double},
    {"Boolean", Kind::Boolean},
    {"String", Kind::String},
    {"Color", Kind::Color},
    {"Currency", Kind::Currency},
    {"Ptr", Kind::Pointer},
    {"Object", Kind::Object},
    {"Variant", Kind::Variant},
    {"Nil", Kind::Nil},
}};

} // namespace

std::string foldedName(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    std::ranges::transform(name, std::back_inserter(folded), REALdeclarations::lower);
    return folded;
}

Type Type::integer() { return integerKind; }

Type Type::object(std::string_view className) {
    Type type(Kind::Object);
    if (!sameName(className, "Object")) type.className = className;
    return type;
}

Type Type::named(std::string_view name, bool isArray) {
    for (const auto& [builtIn, kind] : builtInTypes)
        if (sameName(builtIn, name)) return Type(kind, isArray);
    Type type = object(name);
    type.isArray = isArray;
    return type;
}

Type Type::of(const REALdeclarations::Type& declared) {
    return declared ? named(declared.name, declared.isArray) : Type();
}

Type Type::element() const {
    Type type = *this;
    type.isArray = false;
    return type;
}

Type Type::array() const {
    Type type = *this;
    type.isArray = true;
    return type;
}

bool Type::isInteger() const {
    return !isArray && (kind == Kind::Int32 || kind == Kind::UInt32 || kind == Kind::Int64 ||
                        kind == Kind::UInt64);
}

bool Type::isNumber() const {
    return isInteger() ||
           (!isArray && (kind == Kind::Single || kind == Kind::Double || kind == Kind::Currency));
}

bool Type::isReference() const {
    return isArray || kind == Kind::Object || kind == Kind::Variant || kind == Kind::Nil;
}

std::string Type::name() const {
    std::string name = className;
    if (name.empty()) {
        const auto found =
            std::ranges::find(builtInTypes, kind, &std::pair<std::string_view, Kind>::second);
        if (found != builtInTypes.end()) name = found->first;
    }
    return isArray ? name + "()" : name;
}

bool operator==(const Type& a, const Type& b) {
    return a.kind == b.kind && a.isArray == b.isArray && sameName(a.className, b.className);
}

} // namespace host
