#pragma once

/// The functions that every program can call.

#include "host/objects/class.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host::language {

/// A function as its table states it: the declaration in the language, and what it does with
/// arguments of the declared types.
struct FunctionEntry {
    const char* declaration;
    Value (*body)(std::span<Value> arguments);
};

std::span<const FunctionEntry> textFunctions();
std::span<const FunctionEntry> numberFunctions();
std::span<const FunctionEntry> systemFunctions();

/// All of them.
class FunctionLibrary {
public:
    FunctionLibrary();

    /// The overloads of a function; none when there is no such function.
    std::vector<const Method*> find(std::string_view name) const;

private:
    std::vector<Method> functions_;
};

/// The number by the pattern of `#`, `0`, `.`, `,`, `%`, exponents and literal text; sections for
/// positive, negative and zero are separated by semicolons.
std::string formatNumber(double number, std::string_view pattern);

} // namespace host::language
