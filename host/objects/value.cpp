#include "host/objects/value.h"

#include "host/objects/array.h"
#include "host/objects/memory_block.h"
#include "host/objects/runtime.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace host {

namespace {

constexpr double tenThousand = 10000;

/// Cut toward zero and kept within the range; NaN is 0.
template <typename Integer>
Integer integerFrom(double number) {
    using Limits = std::numeric_limits<Integer>;
    if (std::isnan(number)) return 0;
    // The limits are compared as doubles, where the upper one may round up to a power of two.
    if (number <= static_cast<double>(Limits::min())) return Limits::min();
    if (number >= static_cast<double>(Limits::max())) return Limits::max();
    return static_cast<Integer>(number);
}

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\r\n");
    return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

/// The number that the text starts with, as Val reads it; 0 when it starts with none.
double numberFrom(std::string_view text) {
    text = withoutBlanks(text);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double number = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::general);
    return result.ec == std::errc() && std::isfinite(number) ? number : 0;
}

std::string textFrom(double number) {
    if (std::isnan(number)) return "NaN";
    if (std::isinf(number)) return number > 0 ? "INF" : "-INF";
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.15g", number);
    return buffer.data();
}

/// Single-precision numbers show the digits that they have.
std::string textFrom(float number) {
    if (!std::isfinite(number)) return textFrom(static_cast<double>(number));
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.7g", static_cast<double>(number));
    return buffer.data();
}

std::string textFrom(Currency amount) {
    const std::int64_t value = amount.tenThousandths;
    const std::uint64_t magnitude = value < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(value)
                                              : static_cast<std::uint64_t>(value);
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%s%llu.%04llu", value < 0 ? "-" : "",
                  static_cast<unsigned long long>(magnitude / 10000),
                  static_cast<unsigned long long>(magnitude % 10000));
    std::string text = buffer.data();
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string textFrom(Color color) {
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "&h00%06X",
                  static_cast<unsigned>(color.rgb & 0xFFFFFF));
    return buffer.data();
}

template <typename... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
template <typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

} // namespace

Kind Value::kind() const {
    constexpr std::array kinds{Kind::Nothing, Kind::Int32,  Kind::UInt32,   Kind::Int64,
                               Kind::UInt64,  Kind::Single, Kind::Double,   Kind::Boolean,
                               Kind::String,  Kind::Color,  Kind::Currency, Kind::Pointer,
                               Kind::Object};
    static_assert(kinds.size() == std::variant_size_v<decltype(storage_)>);
    return kinds[storage_.index()];
}

Type Value::type() const {
    if (kind() != Kind::Object) return kind();
    REALobjectStruct* const held = object();
    if (!held) return Kind::Nil;
    if (const Array* const array = arrayOf(*this)) return array->elementType.array();
    return Type::object(classOf(held)->name());
}

bool Value::isNil() const { return kind() == Kind::Object && !object(); }

std::int64_t Value::toInt64() const {
    return std::visit(
        Overloaded{[](const auto&) { return std::int64_t{0}; },
                   [](std::int32_t number) { return std::int64_t{number}; },
                   [](std::uint32_t number) { return std::int64_t{number}; },
                   [](std::int64_t number) { return number; },
                   [](std::uint64_t number) { return static_cast<std::int64_t>(number); },
                   [](float number) { return integerFrom<std::int64_t>(double{number}); },
                   [](double number) { return integerFrom<std::int64_t>(number); },
                   [](bool flag) { return std::int64_t{flag}; },
                   [](Color color) { return std::int64_t{color.rgb}; },
                   [](Currency amount) { return amount.tenThousandths / 10000; },
                   [](void* address) {
                       return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(address));
                   },
                   [](const StringRef& text) {
                       const std::string utf8 = text.utf8();
                       const std::string_view digits = withoutBlanks(utf8);
                       std::int64_t number = 0;
                       const auto result =
                           std::from_chars(digits.data(), digits.data() + digits.size(), number);
                       const bool isWhole =
                           result.ec == std::errc() && result.ptr == digits.data() + digits.size();
                       return isWhole ? number : integerFrom<std::int64_t>(numberFrom(utf8));
                   }},
        storage_);
}

std::uint64_t Value::toUInt64() const {
    if (const auto* const number = get<float>()) return integerFrom<std::uint64_t>(*number);
    if (const auto* const number = get<double>()) return integerFrom<std::uint64_t>(*number);
    return static_cast<std::uint64_t>(toInt64());
}

double Value::toDouble() const {
    return std::visit(Overloaded{[this](const auto&) { return static_cast<double>(toInt64()); },
                                 [](std::uint64_t number) { return static_cast<double>(number); },
                                 [](float number) { return double{number}; },
                                 [](double number) { return number; },
                                 [](Currency amount) {
                                     return static_cast<double>(amount.tenThousandths) /
                                            tenThousand;
                                 },
                                 [](const StringRef& text) { return numberFrom(text.utf8()); }},
                      storage_);
}

bool Value::toBoolean() const {
    if (const auto* const flag = get<bool>()) return *flag;
    if (const auto* const text = get<StringRef>()) return sameName(text->utf8(), "true");
    return toDouble() != 0;
}

StringRef Value::toText() const {
    return std::visit(
        Overloaded{[](const auto&) { return StringRef(); },
                   [](std::int32_t number) { return StringRef(std::to_string(number)); },
                   [](std::uint32_t number) { return StringRef(std::to_string(number)); },
                   [](std::int64_t number) { return StringRef(std::to_string(number)); },
                   [](std::uint64_t number) { return StringRef(std::to_string(number)); },
                   [](float number) { return StringRef(textFrom(number)); },
                   [](double number) { return StringRef(textFrom(number)); },
                   [](bool flag) { return StringRef(flag ? "True" : "False"); },
                   [](Color color) { return StringRef(textFrom(color)); },
                   [](Currency amount) { return StringRef(textFrom(amount)); },
                   [](const StringRef& text) { return text; },
                   [](const ObjectRef& object) {
                       const auto* const block = stateOf<MemoryBlock>(object);
                       return block ? StringRef(block->view(), REALtextEncodingNone) : StringRef();
                   }},
        storage_);
}

REALobjectStruct* Value::object() const {
    const auto* const held = get<ObjectRef>();
    return held ? held->get() : nullptr;
}

REALstringStruct* Value::string() const {
    const auto* const held = get<StringRef>();
    return held ? held->get() : nullptr;
}

Value neutralValue(const Type& type) {
    if (type.isArray) return nullptr;
    switch (type.kind) {
    case Kind::Nothing:
        return {};
    case Kind::Int32:
        return std::int32_t{0};
    case Kind::UInt32:
        return std::uint32_t{0};
    case Kind::Int64:
        return std::int64_t{0};
    case Kind::UInt64:
        return std::uint64_t{0};
    case Kind::Single:
        return 0.0F;
    case Kind::Double:
        return 0.0;
    case Kind::Boolean:
        return false;
    case Kind::String:
        return StringRef();
    case Kind::Color:
        return Color{};
    case Kind::Currency:
        return Currency{};
    case Kind::Pointer:
        return static_cast<void*>(nullptr);
    case Kind::Nil:
    case Kind::Object:
    case Kind::Variant:
        return nullptr;
    }
    return {};
}

} // namespace host
