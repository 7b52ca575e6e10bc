#include "host/language/functions.h"
#include "host/language/operators.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace host::language {
namespace {

Value hexadecimal(std::uint64_t bits) {
    char digits[20];
    std::snprintf(digits, sizeof digits, "%llX", static_cast<unsigned long long>(bits));
    return digits;
}

Value colour(const Value& red, const Value& green, const Value& blue) {
    const auto channel = [](const Value& value) {
        return static_cast<std::uint32_t>(std::clamp<std::int64_t>(value.toInt64(), 0, 255));
    };
    return Color{channel(red) << 16 | channel(green) << 8 | channel(blue)};
}

std::int64_t magnitude(std::int64_t number) {
    return number < 0 ? static_cast<std::int64_t>(0 - static_cast<std::uint64_t>(number)) : number;
}

// clang-format off
constexpr FunctionEntry table[] = {
    {"Abs(value As Int64) As Int64",
     [](std::span<Value> a) -> Value { return magnitude(a[0].toInt64()); }},
    {"Abs(value As Double) As Double",
     [](std::span<Value> a) -> Value { return std::fabs(a[0].toDouble()); }},
    {"Min(a As Int64, b As Int64) As Int64",
     [](std::span<Value> a) -> Value { return std::min(a[0].toInt64(), a[1].toInt64()); }},
    {"Min(a As Double, b As Double) As Double",
     [](std::span<Value> a) -> Value { return std::min(a[0].toDouble(), a[1].toDouble()); }},
    {"Max(a As Int64, b As Int64) As Int64",
     [](std::span<Value> a) -> Value { return std::max(a[0].toInt64(), a[1].toInt64()); }},
    {"Max(a As Double, b As Double) As Double",
     [](std::span<Value> a) -> Value { return std::max(a[0].toDouble(), a[1].toDouble()); }},
    {"Floor(value As Double) As Double",
     [](std::span<Value> a) -> Value { return std::floor(a[0].toDouble()); }},
    {"Ceil(value As Double) As Double",
     [](std::span<Value> a) -> Value { return std::ceil(a[0].toDouble()); }},
    // Halves go away from zero.
    {"Round(value As Double) As Double",
     [](std::span<Value> a) -> Value { return std::round(a[0].toDouble()); }},
    {"Sqrt(value As Double) As Double",
     [](std::span<Value> a) -> Value { return std::sqrt(a[0].toDouble()); }},
    {"Hex(value As Int32) As String",
     [](std::span<Value> a) -> Value { return hexadecimal(static_cast<std::uint32_t>(a[0].toInt64())); }},
    {"Hex(value As Int64) As String",
     [](std::span<Value> a) -> Value { return hexadecimal(static_cast<std::uint64_t>(a[0].toInt64())); }},
    {"Hex(value As UInt64) As String",
     [](std::span<Value> a) -> Value { return hexadecimal(a[0].toUInt64()); }},
    {"RGB(red As Int64, green As Int64, blue As Int64) As Color",
     [](std::span<Value> a) -> Value { return colour(a[0], a[1], a[2]); }},
};
// clang-format on

} // namespace

std::span<const FunctionEntry> numberFunctions() { return table; }

} // namespace host::language
