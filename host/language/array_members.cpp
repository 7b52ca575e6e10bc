#include "host/language/array_members.h"

#include "host/language/operators.h"
#include "host/language/text.h"
#include "host/language/value_nodes.h"
#include "host/objects/array.h"
#include "host/objects/date.h"
#include "host/objects/runtime.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace host::language {
namespace {

void checkRoomForOneMore(const Array& array) {
    if (array.elements.size() >= static_cast<std::size_t>(maximumElementCount))
        raise("OutOfMemoryException", "An array cannot have more than " +
                                          std::to_string(maximumElementCount) + " elements");
}

Value append(Array& array, std::span<Value> arguments) {
    checkRoomForOneMore(array);
    array.elements.push_back(std::move(arguments[0]));
    return {};
}

Value insert(Array& array, std::span<Value> arguments) {
    const std::int64_t index = arguments[0].toInt64();
    const auto count = static_cast<std::int64_t>(array.elements.size());
    if (index < 0 || index > count)
        raise("OutOfBoundsException", "The index to insert at is " + std::to_string(index) +
                                          ", but must be from 0 to " + std::to_string(count));
    checkRoomForOneMore(array);
    array.elements.insert(array.elements.begin() + index, std::move(arguments[1]));
    return {};
}

Value take(Array& array, std::int64_t index) {
    Value element = std::move(elementAt(array, index));
    array.elements.erase(array.elements.begin() + index);
    return element;
}

Value remove(Array& array, std::span<Value> arguments) {
    take(array, arguments[0].toInt64());
    return {};
}

Value pop(Array& array, std::span<Value>) { return take(array, array.upperBound()); }

Value indexOf(Array& array, std::span<Value> arguments) {
    const auto count = static_cast<std::int64_t>(array.elements.size());
    for (std::int64_t i = std::max<std::int64_t>(arguments[1].toInt64(), 0); i < count; ++i) {
        const Value& element = array.elements[static_cast<std::size_t>(i)];
        if (apply(BinaryOperator::Equal, element, arguments[0]).toBoolean())
            return static_cast<REALword>(i);
    }
    return REALword{-1};
}

Value upperBound(Array& array, std::span<Value>) {
    return static_cast<REALword>(array.upperBound());
}

bool canBeSorted(const Type& type) {
    const bool isDate = type.kind == Kind::Object && sameName(type.className, "Date");
    return type.isNumber() || type.kind == Kind::String || isDate;
}

/// Nil comes first.
bool isEarlier(const Value& left, const Value& right) {
    const auto* const leftDate = stateOf<Date>(left.object());
    const auto* const rightDate = stateOf<Date>(right.object());
    if (!leftDate || !rightDate) return !leftDate && rightDate;
    return leftDate->totalSeconds() < rightDate->totalSeconds();
}

bool isBefore(const Value& left, const Value& right) {
    if (left.kind() == Kind::Object) return isEarlier(left, right);
    if (left.kind() == Kind::String)
        return compareText(*left.get<StringRef>(), *right.get<StringRef>()) < 0;
    // What is no number comes last, so that there is an order.
    const bool leftIsNaN = std::isnan(left.toDouble());
    const bool rightIsNaN = std::isnan(right.toDouble());
    if (leftIsNaN || rightIsNaN) return !leftIsNaN && rightIsNaN;
    return apply(BinaryOperator::Less, left, right).toBoolean();
}

Value sort(Array& array, std::span<Value>) {
    std::stable_sort(array.elements.begin(), array.elements.end(), isBefore);
    return {};
}

struct Entry {
    const char* declaration; ///< with T for the element type
    ArrayBody body;
};

constexpr Entry table[] = {
    {"Append(value As T)", append},
    {"Insert(index As Int64, value As T)", insert},
    {"Remove(index As Int64)", remove},
    {"Pop() As T", pop},
    {"IndexOf(value As T, start As Int64 = 0) As Integer", indexOf},
    {"Ubound() As Integer", upperBound},
    {"Sort()", sort},
};

bool isElementPlaceholder(const Type& type) {
    return type.kind == Kind::Object && type.className == "T";
}

} // namespace

std::optional<ArrayMember> findArrayMember(std::string_view name, const Type& elementType) {
    for (const Entry& entry : table) {
        Signature signature = Signature::parse(entry.declaration).value();
        if (!sameName(signature.name, name)) continue;
        if (entry.body == sort && !canBeSorted(elementType)) return std::nullopt;
        if (isElementPlaceholder(signature.result)) signature.result = elementType;
        for (host::Parameter& parameter : signature.parameters)
            if (isElementPlaceholder(parameter.type)) parameter.type = elementType;
        ArrayMember member;
        member.method.signature = std::move(signature);
        member.method.isShared = true;
        member.body = entry.body;
        return member;
    }
    return std::nullopt;
}

} // namespace host::language
