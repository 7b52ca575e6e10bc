#include "host/language/functions.h"
#include "host/language/operators.h"
#include "host/language/text.h"
#include "host/objects/array.h"
#include "host/objects/runtime.h"

#include <algorithm>
#include <charconv>

namespace host::language {
namespace {

const StringRef& text(const Value& value) { return *value.get<StringRef>(); }

/// A count that a program gave; less than nothing is nothing.
std::size_t count(const Value& value) {
    return static_cast<std::size_t>(std::max<std::int64_t>(value.toInt64(), 0));
}

Value left(const StringRef& source, std::size_t length) {
    return Characters(source).part(0, length);
}

Value right(const StringRef& source, std::size_t length) {
    const Characters characters(source);
    return characters.part(characters.count() - std::min(length, characters.count()));
}

/// Positions count from 1.
Value middle(const StringRef& source, std::int64_t start, std::size_t length) {
    return Characters(source).part(static_cast<std::size_t>(std::max<std::int64_t>(start, 1) - 1),
                                   length);
}

Value position(std::int64_t start, const StringRef& source, const StringRef& wanted) {
    const auto from = static_cast<std::size_t>(std::max<std::int64_t>(start, 1) - 1);
    const Characters characters(source);
    if (from > characters.count()) return std::int64_t{0};
    const std::size_t found = characters.find(Characters(wanted), from);
    return found == std::string::npos ? std::int64_t{0} : static_cast<std::int64_t>(found + 1);
}

Value replaced(const StringRef& source, const StringRef& wanted, const StringRef& replacement,
               bool all) {
    if (wanted.empty()) return source;
    const Characters characters(source);
    const Characters pattern(wanted);
    std::string bytes;
    const bool sameEncoding = replacement.empty() || replacement.encoding() == source.encoding();
    const std::string inserted =
        sameEncoding ? std::string(replacement.bytes()) : replacement.utf8();
    std::size_t at = 0;
    while (true) {
        const std::size_t found = characters.find(pattern, at);
        if (found == std::string::npos) break;
        bytes += characters.slice(at, found - at);
        bytes += inserted;
        at = found + pattern.count();
        if (!all) break;
    }
    if (at == 0) return source;
    bytes += characters.slice(at);
    return makeText(bytes, characters.encoding());
}

Value trimmed(const StringRef& source) {
    const Characters characters(source);
    const auto isBlank = [&](std::size_t index) {
        const char32_t character = characters.at(index);
        return character <= U' ' || character == 0xA0;
    };
    std::size_t start = 0;
    std::size_t end = characters.count();
    while (start < end && isBlank(start))
        ++start;
    while (end > start && isBlank(end - 1))
        --end;
    return characters.part(start, end - start);
}

/// The parts between the delimiters, which are compared byte by byte; without a delimiter, the
/// characters. Nothing has no parts.
std::vector<Value> parts(const StringRef& source, const StringRef& delimiter) {
    std::vector<Value> found;
    if (source.empty()) return found;
    if (delimiter.empty()) {
        const Characters characters(source);
        for (std::size_t i = 0; i < characters.count(); ++i)
            found.emplace_back(characters.part(i, 1));
        return found;
    }
    const Characters characters(source);
    const std::string_view bytes = characters.bytes();
    const bool sameEncoding = source.encoding() == delimiter.encoding();
    const std::string wanted = sameEncoding && source.encoding() != REALtextEncodingUTF16
                                   ? std::string(delimiter.bytes())
                                   : delimiter.utf8();
    std::size_t at = 0;
    while (true) {
        const std::size_t next = bytes.find(wanted, at);
        found.emplace_back(makeText(bytes.substr(at, next - at), characters.encoding()));
        if (next == std::string_view::npos) return found;
        at = next + wanted.size();
    }
}

Value splitText(const StringRef& source, const StringRef& delimiter) {
    ObjectRef array = newArray(Kind::String);
    arrayOf(array)->elements = parts(source, delimiter);
    return array;
}

Value joinedArray(const Value& value, const StringRef& delimiter) {
    const Array* const array = arrayOf(value);
    if (!array) raise("NilObjectException", "The array is Nil");
    std::string bytes;
    std::uint32_t encoding = REALtextEncodingUTF8;
    const auto isBytes = [](const Value& element) {
        return text(element).encoding() == REALtextEncodingNone;
    };
    // One part of no known encoding makes the whole a row of bytes.
    if (std::any_of(array->elements.begin(), array->elements.end(), isBytes))
        encoding = REALtextEncodingNone;
    const auto append = [&](const StringRef& part) {
        if (encoding == REALtextEncodingNone)
            bytes += part.bytes();
        else
            bytes += part.utf8();
    };
    for (std::size_t i = 0; i < array->elements.size(); ++i) {
        if (i > 0) append(delimiter);
        append(text(array->elements[i]));
    }
    return makeText(bytes, encoding);
}

Value field(const StringRef& source, const StringRef& separator, std::int64_t index) {
    const std::vector<Value> fields = parts(source, separator);
    if (index < 1 || static_cast<std::uint64_t>(index) > fields.size()) return "";
    return fields[static_cast<std::size_t>(index - 1)];
}

Value character(std::int64_t code) {
    if (code < 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        raise("OutOfBoundsException", "There is no character of code " + std::to_string(code));
    std::string bytes;
    appendUTF8(bytes, static_cast<char32_t>(code));
    return bytes;
}

Value byteCharacter(std::int64_t code) {
    if (code < 0 || code > 255)
        raise("OutOfBoundsException", "There is no byte of value " + std::to_string(code));
    const char byte = static_cast<char>(code);
    return StringRef(std::string_view(&byte, 1), REALtextEncodingNone);
}

/// The number that a text starts with; &h and &b are understood.
double numberIn(const Value& value) {
    const std::string source = value.utf8();
    const std::size_t start = source.find_first_not_of(" \t\r\n");
    if (start == std::string::npos) return 0;
    const std::string_view digits = std::string_view(source).substr(start);
    if (digits.size() < 3 || digits[0] != '&') return value.toDouble();
    const char letter = static_cast<char>(digits[1] | 0x20);
    if (letter != 'h' && letter != 'b') return 0;
    std::uint64_t number = 0;
    std::from_chars(digits.data() + 2, digits.data() + digits.size(), number,
                    letter == 'h' ? 16 : 2);
    return static_cast<double>(number);
}

Value textOf(const Value& value) { return converted(value, Kind::String); }

// clang-format off
constexpr FunctionEntry table[] = {
    {"Str(value As Variant) As String",
     [](std::span<Value> a) -> Value { return textOf(a[0]); }},
    {"Str(value As Double, pattern As String) As String",
     [](std::span<Value> a) -> Value { return formatNumber(a[0].toDouble(), a[1].utf8()); }},
    {"CStr(value As Variant) As String",
     [](std::span<Value> a) -> Value { return textOf(a[0]); }},
    {"Format(value As Double, pattern As String) As String",
     [](std::span<Value> a) -> Value { return formatNumber(a[0].toDouble(), a[1].utf8()); }},
    {"Val(source As String) As Double",
     [](std::span<Value> a) -> Value { return numberIn(a[0]); }},
    {"CDbl(value As String) As Double",
     [](std::span<Value> a) -> Value { return numberIn(a[0]); }},
    {"CDbl(value As Double) As Double",
     [](std::span<Value> a) -> Value { return a[0]; }},
    {"CDbl(value As Variant) As Double",
     [](std::span<Value> a) -> Value { return converted(a[0], Kind::Double); }},
    {"Len(source As String) As Integer",
     [](std::span<Value> a) -> Value { return static_cast<REALword>(Characters(text(a[0])).count()); }},
    {"Left(source As String, count As Int64) As String",
     [](std::span<Value> a) -> Value { return left(text(a[0]), count(a[1])); }},
    {"Right(source As String, count As Int64) As String",
     [](std::span<Value> a) -> Value { return right(text(a[0]), count(a[1])); }},
    {"Mid(source As String, start As Int64) As String",
     [](std::span<Value> a) -> Value { return middle(text(a[0]), a[1].toInt64(), std::string::npos); }},
    {"Mid(source As String, start As Int64, count As Int64) As String",
     [](std::span<Value> a) -> Value { return middle(text(a[0]), a[1].toInt64(), count(a[2])); }},
    {"InStr(source As String, wanted As String) As Int64",
     [](std::span<Value> a) -> Value { return position(1, text(a[0]), text(a[1])); }},
    {"InStr(start As Int64, source As String, wanted As String) As Int64",
     [](std::span<Value> a) -> Value { return position(a[0].toInt64(), text(a[1]), text(a[2])); }},
    {"Replace(source As String, wanted As String, replacement As String) As String",
     [](std::span<Value> a) -> Value { return replaced(text(a[0]), text(a[1]), text(a[2]), false); }},
    {"ReplaceAll(source As String, wanted As String, replacement As String) As String",
     [](std::span<Value> a) -> Value { return replaced(text(a[0]), text(a[1]), text(a[2]), true); }},
    {"Upper(source As String) As String",
     [](std::span<Value> a) -> Value { return mapped(text(a[0]), upperCase); }},
    {"Lower(source As String) As String",
     [](std::span<Value> a) -> Value { return mapped(text(a[0]), lowerCase); }},
    {"Trim(source As String) As String",
     [](std::span<Value> a) -> Value { return trimmed(text(a[0])); }},
    {"Split(source As String, delimiter As String = \" \") As String()",
     [](std::span<Value> a) -> Value { return splitText(text(a[0]), text(a[1])); }},
    {"Join(list() As String, delimiter As String = \" \") As String",
     [](std::span<Value> a) -> Value { return joinedArray(a[0], text(a[1])); }},
    {"NthField(source As String, separator As String, index As Int64) As String",
     [](std::span<Value> a) -> Value { return field(text(a[0]), text(a[1]), a[2].toInt64()); }},
    {"CountFields(source As String, separator As String) As Integer",
     [](std::span<Value> a) -> Value { return static_cast<REALword>(parts(text(a[0]), text(a[1])).size()); }},
    {"Chr(code As Int64) As String",
     [](std::span<Value> a) -> Value { return character(a[0].toInt64()); }},
    {"ChrB(code As Int64) As String",
     [](std::span<Value> a) -> Value { return byteCharacter(a[0].toInt64()); }},
    {"Asc(source As String) As Integer",
     [](std::span<Value> a) -> Value { return static_cast<REALword>(Characters(text(a[0])).at(0)); }},
};
// clang-format on

} // namespace

std::span<const FunctionEntry> textFunctions() { return table; }

} // namespace host::language
