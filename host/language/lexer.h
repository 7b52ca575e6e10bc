#pragma once

/// Splits a program's text into tokens.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::language {

enum class TokenKind { EndOfFile, EndOfLine, Word, Integer, Number, String, Colour, Symbol };

/// The words that cannot name a variable. After a dot they are ordinary names.
enum class Keyword {
    None,
    AddressOf,
    And,
    As,
    ByRef,
    ByVal,
    Call,
    Case,
    Catch,
    Const,
    Continue,
    Dim,
    Do,
    DownTo,
    Each,
    Else,
    ElseIf,
    End,
    Exit,
    False,
    Finally,
    For,
    Function,
    If,
    In,
    Is,
    IsA,
    Loop,
    Mod,
    New,
    Next,
    Nil,
    Not,
    Optional,
    Or,
    Print,
    Raise,
    Redim,
    Return,
    Select,
    Step,
    Sub,
    Then,
    To,
    True,
    Try,
    Until,
    Wend,
    While,
    Xor,
};

enum class Symbol {
    None,
    LeftParenthesis,
    RightParenthesis,
    Comma,
    Dot,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Plus,
    Minus,
    Star,
    Slash,
    Backslash,
    Caret,
    Ampersand,
};

struct Token {
    TokenKind kind = TokenKind::EndOfFile;
    int line = 1;
    std::string text; ///< as written; for a string literal its value
    Keyword keyword = Keyword::None;
    Symbol symbol = Symbol::None;
    std::uint64_t integer = 0; ///< value of an integer literal; of a colour, 0xRRGGBB
    double number = 0;
};

/// The tokens of a text in UTF-8, ended by one EndOfLine and one EndOfFile token. Lines may end
/// with LF, CR or CRLF. Throws SourceError at the first thing that is no token.
std::vector<Token> tokenize(std::string_view source);

/// ASCII letters in lower case, everything else as it is: names are compared in this form.
std::string foldCase(std::string_view name);

} // namespace host::language
