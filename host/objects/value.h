#pragma once

/// A value of the host's language. A Variant is a value too: its own type is what it holds.

#include "host/objects/object.h"
#include "host/objects/text.h"
#include "host/objects/type.h"

#include <concepts>
#include <variant>

namespace host {

struct Color {
    std::uint32_t rgb = 0; ///< 0x00RRGGBB
    friend bool operator==(Color, Color) = default;
};

/// A fixed-point number of four decimal places.
struct Currency {
    std::int64_t tenThousandths = 0;
    friend bool operator==(Currency, Currency) = default;
};

class Value {
public:
    /// No value: the result of a Sub.
    Value() = default;
    Value(std::nullptr_t)
        : storage_(ObjectRef()) {}
    template <std::integral Number>
    Value(Number number);
    Value(float number)
        : storage_(number) {}
    Value(double number)
        : storage_(number) {}
    Value(StringRef text)
        : storage_(std::move(text)) {}
    /// UTF-8 text.
    Value(std::string_view text)
        : storage_(StringRef(text)) {}
    Value(const std::string& text)
        : Value(std::string_view(text)) {}
    Value(const char* text)
        : Value(std::string_view(text)) {}
    Value(Color color)
        : storage_(color) {}
    Value(Currency amount)
        : storage_(amount) {}
    /// A Ptr.
    Value(void* address)
        : storage_(address) {}
    Value(ObjectRef object)
        : storage_(std::move(object)) {}

    /// Object for Nil and for arrays.
    Kind kind() const;
    /// The type that the value has by itself: for an object its class, for an array object its
    /// element type's array, Nil for a null object.
    Type type() const;

    bool isNothing() const { return kind() == Kind::Nothing; }
    bool isNil() const;
    bool isNumber() const { return Type(kind()).isNumber(); }

    template <typename Held>
    const Held* get() const {
        return std::get_if<Held>(&storage_);
    }

    /// Numbers, numeric strings, colours and Booleans as a number; anything else is 0. A
    /// floating-point number is cut toward zero and kept within the range.
    std::int64_t toInt64() const;
    std::uint64_t toUInt64() const;
    double toDouble() const;
    bool toBoolean() const;
    /// The text that the language's Str and automatic conversions give.
    StringRef toText() const;
    std::string utf8() const { return toText().utf8(); }
    /// Null for anything that is no object.
    REALobjectStruct* object() const;
    ObjectRef objectRef() const { return ObjectRef::retain(object()); }
    REALstringStruct* string() const;

private:
    std::variant<std::monostate, std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, float,
                 double, bool, StringRef, Color, Currency, void*, ObjectRef>
        storage_;
};

template <std::integral Number>
Value::Value(Number number) {
    if constexpr (std::same_as<Number, bool>)
        storage_ = number;
    else if constexpr (sizeof(Number) < 4)
        storage_ = static_cast<std::int32_t>(number);
    else if constexpr (sizeof(Number) == 4 && std::signed_integral<Number>)
        storage_ = static_cast<std::int32_t>(number);
    else if constexpr (sizeof(Number) == 4)
        storage_ = static_cast<std::uint32_t>(number);
    else if constexpr (std::signed_integral<Number>)
        storage_ = static_cast<std::int64_t>(number);
    else
        storage_ = static_cast<std::uint64_t>(number);
}

/// The zero, empty string or Nil that a variable of the type starts with.
Value neutralValue(const Type& type);

/// The value as one of the type, as an assignment converts it; nothing when the language has no
/// such conversion (an object of another class, text to an object, ...). Text and MemoryBlocks
/// convert into each other, everything converts to Variant, and Variants into what they hold; a
/// Variant's Date is read as text by its SQLDateTime and as a number by its TotalSeconds, and its
/// text as a Date where it has that form. A Variant() gives a copy as an array of another type when
/// each of its elements converts.
std::optional<Value> convert(const Value& value, const Type& type);

/// How far a type is from another, for choosing among overloads: 0 for the same type; nothing when
/// there is no conversion.
std::optional<int> conversionCost(const Type& from, const Type& to);

/// A literal of a declaration: a number (&h too), True, False, Nil, "text" or &cRRGGBB.
std::optional<Value> parseLiteral(std::string_view literal);

/// The host's VarType code: 0 Nil, 2 Int32, 3 Int64, 4 Single, 5 Double, 6 Currency, 7 Date,
/// 8 String, 9 Object, 11 Boolean, 16 Color, arrays 0x1000 plus the element's.
std::int32_t varType(const Value& value);

/// A Variant as plug-ins see it: an object that holds the value. An object is its own Variant.
ObjectRef boxed(const Value& value);
/// The value that such an object holds; the object itself when it is no box.
Value unboxed(const ObjectRef& object);

} // namespace host
