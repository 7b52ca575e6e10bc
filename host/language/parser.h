#pragma once

/// Turns a program's text into its tree.

#include "host/language/syntax.h"

#include <string_view>

namespace host::language {

/// Parentheses, signs and blocks nested deeper than this are refused, as is an expression whose
/// tree is deeper than `maximumTreeDepth` (a sum of that many terms), so that walking the tree
/// cannot exhaust the stack.
inline constexpr int maximumNesting = 250;
inline constexpr int maximumTreeDepth = 1000;

/// Throws SourceError at the first mistake.
SyntaxTree parse(std::string_view source);

} // namespace host::language
