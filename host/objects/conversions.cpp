#include "host/objects/array.h"
#include "host/objects/date.h"
#include "host/objects/memory_block.h"
#include "host/objects/runtime.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace host {

namespace {

bool isMemoryBlock(const Type& type) {
    return type.kind == Kind::Object && sameName(type.className, "MemoryBlock");
}

template <typename Integer>
Value integerOf(const Value& value) {
    return static_cast<Integer>(
        std::is_signed_v<Integer> ? static_cast<std::uint64_t>(value.toInt64()) : value.toUInt64());
}

Value currencyOf(const Value& value) {
    if (value.kind() == Kind::Currency) return value;
    const Value scaled = std::round(value.toDouble() * 10000);
    return Currency{scaled.toInt64()};
}

bool isDate(const Type& type) {
    return type.kind == Kind::Object && sameName(type.className, "Date");
}

std::optional<Value> convertToObject(const Value& value, const Type& type) {
    if (value.kind() == Kind::String && isMemoryBlock(type))
        return newMemoryBlock(value.get<StringRef>()->bytes());
    if (value.kind() == Kind::String && isDate(type)) {
        const auto fields = parseSQLDate(value.utf8());
        return fields ? std::optional<Value>(newDate(*fields)) : std::nullopt;
    }
    if (value.kind() != Kind::Object) return std::nullopt;
    if (value.isNil() || type.className.empty()) return value;
    const Class* const wanted = Runtime::current().findClass(type.className);
    if (!isA(value.object(), wanted)) return std::nullopt;
    return value;
}

std::optional<Value> convertToArray(const Value& value, const Type& type) {
    if (value.isNil()) return value;
    const Array* const array = arrayOf(value);
    if (!array) return std::nullopt;
    const Type wanted = type.element();
    if (array->elementType == wanted) return value;
    if (array->elementType != Type(Kind::Variant)) return std::nullopt;
    std::vector<Value> elements;
    elements.reserve(array->elements.size());
    for (const Value& element : array->elements) {
        // As a single Variant that is Nil becomes a number or text.
        auto converted = element.isNil() ? neutralValue(wanted) : convert(element, wanted);
        if (!converted) return std::nullopt;
        elements.push_back(std::move(*converted));
    }
    ObjectRef copy = newArray(wanted);
    arrayOf(copy)->elements = std::move(elements);
    return copy;
}

/// Whether text, numbers and the like can be read as each other, as a Variant reads what it holds.
bool isScalar(const Value& value) {
    return value.kind() != Kind::Object && value.kind() != Kind::Nothing;
}

int integerRank(Kind kind) { return kind == Kind::Int32 || kind == Kind::UInt32 ? 32 : 64; }

std::optional<int> numberCost(Kind from, Kind to) {
    enum Cost : int { Widening = 1, SignChange = 2, ToDouble = 4, ToSingle = 5, Losing = 8 };
    const bool fromInteger = Type(from).isInteger();
    const bool toInteger = Type(to).isInteger();
    if (fromInteger && toInteger) {
        const bool fromSigned = from == Kind::Int32 || from == Kind::Int64;
        const bool toSigned = to == Kind::Int32 || to == Kind::Int64;
        if (integerRank(from) > integerRank(to)) return Losing;
        if (fromSigned == toSigned) return Widening;
        return !fromSigned && integerRank(from) < integerRank(to) ? Widening + 1 : SignChange + 1;
    }
    if (to == Kind::Double) return from == Kind::Single ? Widening : ToDouble;
    if (to == Kind::Single) return from == Kind::Double ? SignChange : ToSingle;
    if (to == Kind::Currency) return ToSingle + 1;
    return Losing;
}

std::optional<int> objectCost(const Type& from, const Type& to) {
    enum Cost : int { ToRoot = 20, Text = 15 };
    if (from.kind == Kind::String)
        return isMemoryBlock(to) ? std::optional<int>(Text) : std::nullopt;
    if (from.kind != Kind::Object) return std::nullopt;
    if (to.className.empty()) return ToRoot;
    if (from.className.empty()) return std::nullopt;
    int distance = 1;
    const Class* ancestor = Runtime::current().findClass(from.className);
    for (ancestor = ancestor ? ancestor->superclass() : nullptr; ancestor;
         ancestor = ancestor->superclass(), ++distance)
        if (sameName(ancestor->name(), to.className)) return distance;
    return std::nullopt;
}

} // namespace

std::optional<Value> convert(const Value& value, const Type& type) {
    if (type.isArray) return convertToArray(value, type);
    switch (type.kind) {
    case Kind::Nothing:
        return Value();
    case Kind::Variant:
        return value.isNothing() ? Value(nullptr) : value;
    case Kind::Nil:
    case Kind::Object:
        return convertToObject(value, type);
    case Kind::String:
        if (isScalar(value) || stateOf<MemoryBlock>(value.object())) return value.toText();
        if (const auto* const date = stateOf<Date>(value.object())) return date->sqlDateTime();
        return std::nullopt;
    case Kind::Pointer:
        if (value.kind() == Kind::Pointer) return value;
        if (value.isNil()) return static_cast<void*>(nullptr);
        if (!value.type().isInteger()) return std::nullopt;
        return reinterpret_cast<void*>(static_cast<std::intptr_t>(value.toInt64()));
    default:
        break;
    }
    if (const auto* const date = stateOf<Date>(value.object()); date && type.isNumber())
        return convert(static_cast<double>(date->totalSeconds()), type);
    if (!isScalar(value)) return std::nullopt;
    if (value.kind() == type.kind) return value;
    switch (type.kind) {
    case Kind::Int32:
        return integerOf<std::int32_t>(value);
    case Kind::UInt32:
        return integerOf<std::uint32_t>(value);
    case Kind::Int64:
        return integerOf<std::int64_t>(value);
    case Kind::UInt64:
        return integerOf<std::uint64_t>(value);
    case Kind::Single:
        return static_cast<float>(value.toDouble());
    case Kind::Double:
        return value.toDouble();
    case Kind::Boolean:
        return value.toBoolean();
    case Kind::Color:
        return Color{static_cast<std::uint32_t>(value.toInt64()) & 0xFFFFFF};
    case Kind::Currency:
        return currencyOf(value);
    default:
        return std::nullopt;
    }
}

std::optional<int> conversionCost(const Type& from, const Type& to) {
    enum Cost : int {
        NilToObject = 1,
        NilToVariant = 2,
        BlockToText = 15,
        FromVariant = 25,
        FromVariantArray = 26,
        ToVariant = 30
    };
    if (from == to) return 0;
    if (from.kind == Kind::Nil) {
        if (to.kind == Kind::Variant && !to.isArray) return NilToVariant;
        if (to.isReference() || to.kind == Kind::Pointer) return NilToObject;
        return std::nullopt;
    }
    if (to.kind == Kind::Variant && !to.isArray) return ToVariant;
    if (from.kind == Kind::Variant && !from.isArray) return FromVariant;
    if (from.isArray && to.isArray && from.kind == Kind::Variant) return FromVariantArray;
    if (from.isArray || to.isArray) return std::nullopt;
    if (from.isNumber() && to.isNumber()) return numberCost(from.kind, to.kind);
    if (to.kind == Kind::Object) return objectCost(from, to);
    if (to.kind == Kind::String && isMemoryBlock(from)) return BlockToText;
    return std::nullopt;
}

std::optional<Value> parseLiteral(std::string_view literal) {
    if (sameName(literal, "Nil")) return Value(nullptr);
    if (sameName(literal, "True")) return Value(true);
    if (sameName(literal, "False")) return Value(false);
    if (literal.size() >= 2 && literal.front() == '"' && literal.back() == '"') {
        std::string text;
        for (std::size_t i = 1; i + 1 < literal.size(); ++i) {
            text += literal[i];
            if (literal[i] == '"') ++i; // a doubled quotation mark stands for one
        }
        return Value(text);
    }
    const auto whole = [&](std::string_view digits, auto& number, auto... base) {
        const char* const end = digits.data() + digits.size();
        const auto result = std::from_chars(digits.data(), end, number, base...);
        return !digits.empty() && result.ec == std::errc() && result.ptr == end;
    };
    std::uint64_t bits = 0;
    if (literal.size() > 2 && literal.front() == '&') {
        const char prefix = REALdeclarations::lower(literal[1]);
        const std::string_view digits = literal.substr(2);
        if (prefix == 'c' && whole(digits, bits, 16) && bits <= 0xFFFFFF)
            return Value(Color{static_cast<std::uint32_t>(bits)});
        if ((prefix == 'h' && whole(digits, bits, 16)) || (prefix == 'b' && whole(digits, bits, 2)))
            return Value(static_cast<std::int64_t>(bits));
        return std::nullopt;
    }
    std::int64_t number = 0;
    if (whole(literal, number)) {
        if (number >= std::numeric_limits<REALword>::min() &&
            number <= std::numeric_limits<REALword>::max())
            return Value(static_cast<REALword>(number));
        return Value(number);
    }
    double real = 0;
    if (whole(literal, real)) return Value(real);
    return std::nullopt;
}

} // namespace host
