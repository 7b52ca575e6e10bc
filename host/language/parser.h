#pragma once

/// Turns a program's text into its tree.

#include "host/language/syntax.h"

#include <string_view>

namespace host::language {

/// Expressions and blocks nested deeper than this are refused, so that walking the tree cannot
/// exhaust the stack.
inline constexpr int maximumNesting = 250;

/// Throws SourceError at the first mistake.
SyntaxTree parse(std::string_view source);

} // namespace host::language
