#pragma once

/// Declarations in the host's language, as the class tables state them:
///
///     imageWithData(data as memoryblock) as NSImageZNT
///     Constructor(width as double, height as double = 0)
///     Value(key As Variant, Assigns _value As Variant)
///     representations as NSImageRepZNT()
///
/// The parser runs at compile time, where a plug-in's tables are checked against their functions,
/// and at run time, where the host reads what a plug-in hands over.

#include "sdk/types.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>

namespace REALdeclarations {

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

constexpr bool same_word(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (lower(a[i]) != lower(b[i])) return false;
    return true;
}

/// A type as it is written; an empty name stands for no result.
struct Type {
    std::string_view name;
    bool isArray = false;

    constexpr explicit operator bool() const { return !name.empty(); }
};

struct Parameter {
    std::string_view name;
    Type type;
    std::string_view defaultValue; ///< the literal as written; empty without a default
    bool isByRef = false;
    bool isAssigned = false; ///< takes the right side of an assignment to the method
    bool isOptional = false; ///< by word or by default
};

inline constexpr std::size_t maximumParameters = 16;

struct Declaration {
    std::string_view name;
    std::array<Parameter, maximumParameters> parameters;
    std::size_t parameterCount = 0;
    Type result;

    constexpr const Parameter* begin() const { return parameters.data(); }
    constexpr const Parameter* end() const { return parameters.data() + parameterCount; }
};

/// A constant's "Name=value".
struct Constant {
    std::string_view name;
    std::string_view value;
};

namespace detail {

class Scanner {
public:
    constexpr explicit Scanner(std::string_view text)
        : text_(text) {}

    constexpr bool at_end() {
        skip_blanks();
        return position_ == text_.size();
    }

    constexpr bool take(char c) {
        skip_blanks();
        if (position_ == text_.size() || text_[position_] != c) return false;
        ++position_;
        return true;
    }

    constexpr std::string_view peek_word() {
        skip_blanks();
        std::size_t end = position_;
        while (end < text_.size() && is_word(text_[end]))
            ++end;
        return text_.substr(position_, end - position_);
    }

    constexpr std::string_view take_word() {
        const std::string_view word = peek_word();
        position_ += word.size();
        return word;
    }

    constexpr bool take_word(std::string_view expected) {
        if (!same_word(peek_word(), expected)) return false;
        position_ += expected.size();
        return true;
    }

    /// A literal: everything up to a comma or a closing parenthesis outside quotes.
    constexpr std::string_view take_literal() {
        skip_blanks();
        const std::size_t start = position_;
        bool quoted = false;
        while (position_ < text_.size()) {
            const char c = text_[position_];
            if (c == '"') quoted = !quoted;
            if (!quoted && (c == ',' || c == ')')) break;
            ++position_;
        }
        std::size_t end = position_;
        while (end > start && is_blank(text_[end - 1]))
            --end;
        return quoted ? std::string_view{} : text_.substr(start, end - start);
    }

private:
    static constexpr bool is_blank(char c) { return c == ' ' || c == '\t'; }
    static constexpr bool is_word(char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_';
    }
    constexpr void skip_blanks() {
        while (position_ < text_.size() && is_blank(text_[position_]))
            ++position_;
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

constexpr bool is_identifier(std::string_view word) {
    return !word.empty() && !(word[0] >= '0' && word[0] <= '9');
}

constexpr bool scan_type(Scanner& scanner, Type& type) {
    type.name = scanner.take_word();
    if (!is_identifier(type.name)) return false;
    if (scanner.take('(')) {
        type.isArray = true;
        return scanner.take(')');
    }
    return true;
}

constexpr bool scan_parameter(Scanner& scanner, Parameter& parameter) {
    for (bool more = true; more;) {
        more = false;
        if (scanner.take_word("Assigns")) more = parameter.isAssigned = true;
        if (scanner.take_word("ByRef")) more = parameter.isByRef = true;
        if (scanner.take_word("Optional")) more = parameter.isOptional = true;
    }
    parameter.name = scanner.take_word();
    if (!is_identifier(parameter.name)) return false;
    if (scanner.take('(')) {
        if (!scanner.take(')')) return false;
        parameter.type.isArray = true;
    }
    const bool arrayByName = parameter.type.isArray;
    if (!scanner.take_word("as") || !scan_type(scanner, parameter.type)) return false;
    parameter.type.isArray = parameter.type.isArray || arrayByName;
    if (scanner.take('=')) {
        parameter.defaultValue = scanner.take_literal();
        parameter.isOptional = true;
        return !parameter.defaultValue.empty();
    }
    return true;
}

} // namespace detail

/// Nothing when the text is not a declaration.
constexpr std::optional<Declaration> parse(std::string_view text) {
    detail::Scanner scanner(text);
    Declaration declaration;
    // Older tables write the kind of routine in front.
    if (!scanner.take_word("Sub")) scanner.take_word("Function");
    declaration.name = scanner.take_word();
    if (!detail::is_identifier(declaration.name)) return std::nullopt;
    if (scanner.take('(') && !scanner.take(')')) {
        do {
            if (declaration.parameterCount == maximumParameters) return std::nullopt;
            if (!detail::scan_parameter(scanner,
                                        declaration.parameters[declaration.parameterCount++]))
                return std::nullopt;
        } while (scanner.take(','));
        if (!scanner.take(')')) return std::nullopt;
    }
    if (scanner.take_word("as") && !detail::scan_type(scanner, declaration.result))
        return std::nullopt;
    if (!scanner.at_end()) return std::nullopt;
    return declaration;
}

constexpr std::optional<Constant> parse_constant(std::string_view text) {
    detail::Scanner scanner(text);
    Constant constant{scanner.take_word(), {}};
    if (!detail::is_identifier(constant.name) || !scanner.take('=')) return std::nullopt;
    constant.value = scanner.take_literal();
    if (constant.value.empty() || !scanner.at_end()) return std::nullopt;
    return constant;
}

/// Whether a value of the written type crosses the interface as the C++ type `Value`.
template <typename Value>
constexpr bool passes_as(const Type& type) {
    const auto is = [&](std::string_view name) { return same_word(type.name, name); };
    if (!type) return std::is_void_v<Value>;
    if (type.isArray) return std::is_same_v<Value, REALarrayStruct*>;
    if (is("Integer")) return std::is_same_v<Value, REALword>;
    if (is("Int32")) return std::is_same_v<Value, std::int32_t>;
    if (is("UInt32") || is("Color")) return std::is_same_v<Value, std::uint32_t>;
    if (is("Int64") || is("Currency")) return std::is_same_v<Value, std::int64_t>;
    if (is("UInt64")) return std::is_same_v<Value, std::uint64_t>;
    if (is("Single")) return std::is_same_v<Value, float>;
    if (is("Double")) return std::is_same_v<Value, double>;
    if (is("Boolean")) return std::is_same_v<Value, bool>;
    if (is("Ptr")) return std::is_same_v<Value, void*>;
    if (is("String")) return std::is_same_v<Value, REALstringStruct*>;
    if (is("MemoryBlock")) return std::is_same_v<Value, REALmemoryBlockStruct*>;
    if (is("FolderItem")) return std::is_same_v<Value, REALfolderItemStruct*>;
    if (is("Picture")) return std::is_same_v<Value, REALpictureStruct*>;
    if (is("Graphics")) return std::is_same_v<Value, REALgraphicsStruct*>;
    if (is("Dictionary")) return std::is_same_v<Value, REALdictionaryStruct*>;
    if (is("Date")) return std::is_same_v<Value, REALdateStruct*>;
    return std::is_same_v<Value, REALobjectStruct*>; // Variant and every class
}

/// Whether a function of these parameters and result is what the declaration declares.
template <typename Result, typename... Arguments>
constexpr bool matches(const Declaration& declaration) {
    if (declaration.parameterCount != sizeof...(Arguments)) return false;
    [[maybe_unused]] std::size_t index = 0;
    const auto parameter_matches = [&]<typename Argument>(std::type_identity<Argument>) {
        const Parameter& parameter = declaration.parameters[index++];
        if (!parameter.isByRef) return passes_as<Argument>(parameter.type);
        if constexpr (std::is_pointer_v<Argument>)
            return passes_as<std::remove_pointer_t<Argument>>(parameter.type);
        else
            return false;
    };
    return (parameter_matches(std::type_identity<Arguments>{}) && ...) &&
           passes_as<Result>(declaration.result);
}

} // namespace REALdeclarations
