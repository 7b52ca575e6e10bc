#include "host/language/lexer.h"

#include "host/language/source_error.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <unordered_map>
#include <utility>

namespace host::language {
namespace {

const std::unordered_map<std::string, Keyword>& keywords() {
    static const std::unordered_map<std::string, Keyword> table = {
        {"addressof", Keyword::AddressOf},
        {"and", Keyword::And},
        {"as", Keyword::As},
        {"byref", Keyword::ByRef},
        {"call", Keyword::Call},
        {"byval", Keyword::ByVal},
        {"case", Keyword::Case},
        {"catch", Keyword::Catch},
        {"const", Keyword::Const},
        {"continue", Keyword::Continue},
        {"dim", Keyword::Dim},
        {"do", Keyword::Do},
        {"downto", Keyword::DownTo},
        {"each", Keyword::Each},
        {"else", Keyword::Else},
        {"elseif", Keyword::ElseIf},
        {"end", Keyword::End},
        {"exit", Keyword::Exit},
        {"false", Keyword::False},
        {"finally", Keyword::Finally},
        {"for", Keyword::For},
        {"function", Keyword::Function},
        {"if", Keyword::If},
        {"in", Keyword::In},
        {"is", Keyword::Is},
        {"isa", Keyword::IsA},
        {"loop", Keyword::Loop},
        {"mod", Keyword::Mod},
        {"new", Keyword::New},
        {"next", Keyword::Next},
        {"nil", Keyword::Nil},
        {"not", Keyword::Not},
        {"optional", Keyword::Optional},
        {"or", Keyword::Or},
        {"print", Keyword::Print},
        {"raise", Keyword::Raise},
        {"redim", Keyword::Redim},
        {"return", Keyword::Return},
        {"select", Keyword::Select},
        {"step", Keyword::Step},
        {"sub", Keyword::Sub},
        {"then", Keyword::Then},
        {"to", Keyword::To},
        {"true", Keyword::True},
        {"try", Keyword::Try},
        {"until", Keyword::Until},
        {"wend", Keyword::Wend},
        {"while", Keyword::While},
        {"xor", Keyword::Xor},
    };
    return table;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isWordStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isWordPart(char c) { return isWordStart(c) || isDigit(c); }

bool isSpace(char c) { return c == ' ' || c == '\t'; }

bool isLineEnd(char c) { return c == '\n' || c == '\r'; }

class Lexer {
public:
    explicit Lexer(std::string_view source)
        : source_(source) {
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        if (source_.starts_with(byteOrderMark)) position_ = byteOrderMark.size();
    }

    std::vector<Token> run() {
        while (position_ < source_.size())
            readNext();
        endLine();
        emit(TokenKind::EndOfFile);
        return std::move(tokens_);
    }

private:
    char peek(std::size_t ahead = 0) const {
        return position_ + ahead < source_.size() ? source_[position_ + ahead] : '\0';
    }

    Token& emit(TokenKind kind, std::string text = {}) {
        Token& token = tokens_.emplace_back();
        token.kind = kind;
        token.line = line_;
        token.text = std::move(text);
        return token;
    }

    /// Blank lines give no token.
    void endLine() {
        if (!tokens_.empty() && tokens_.back().kind != TokenKind::EndOfLine)
            emit(TokenKind::EndOfLine);
    }

    void readNext() {
        const char c = peek();
        if (isSpace(c)) {
            ++position_;
        } else if (isLineEnd(c)) {
            endLine();
            skipLineEnd();
        } else if (c == '\'' || (c == '/' && peek(1) == '/')) {
            skipComment();
        } else if (c == '_' && continuesLine()) {
            skipComment();
            skipLineEnd();
        } else if (c == '"') {
            readString();
        } else if (isDigit(c) || (c == '.' && isDigit(peek(1)) && !followsOperand())) {
            readNumber();
        } else if (isWordStart(c)) {
            readWord();
        } else if (c == '&' && readPrefixedLiteral()) {
        } else {
            readSymbol();
        }
    }

    void skipLineEnd() {
        if (peek() == '\r' && peek(1) == '\n') ++position_;
        if (position_ == source_.size()) return;
        ++position_;
        ++line_;
    }

    void skipComment() {
        while (position_ < source_.size() && !isLineEnd(peek()))
            ++position_;
    }

    /// An underscore that stands alone, with nothing but a comment behind it.
    bool continuesLine() const {
        std::size_t at = position_ + 1;
        while (at < source_.size() && isSpace(source_[at]))
            ++at;
        if (at == source_.size() || isLineEnd(source_[at])) return true;
        const bool spaced = at > position_ + 1;
        return spaced && (source_[at] == '\'' || source_.substr(at).starts_with("//"));
    }

    /// `a.5` is no number behind a name: the dot then is member access.
    bool followsOperand() const {
        if (tokens_.empty()) return false;
        const Token& last = tokens_.back();
        return (last.kind == TokenKind::Word && last.keyword == Keyword::None) ||
               last.symbol == Symbol::RightParenthesis;
    }

    void readString() {
        std::string value;
        for (++position_;; ++position_) {
            if (position_ >= source_.size() || isLineEnd(peek()))
                throw SourceError(line_, "The string has no closing quote");
            if (peek() == '"') {
                ++position_;
                if (peek() != '"') break;
            }
            value += peek();
        }
        emit(TokenKind::String, std::move(value));
    }

    void readNumber() {
        const std::size_t start = position_;
        bool whole = true;
        while (isDigit(peek()))
            ++position_;
        if (peek() == '.' && isDigit(peek(1))) {
            whole = false;
            ++position_;
            while (isDigit(peek()))
                ++position_;
        }
        if ((peek() | 0x20) == 'e') {
            const std::size_t sign = peek(1) == '+' || peek(1) == '-' ? 2 : 1;
            if (isDigit(peek(sign))) {
                whole = false;
                position_ += sign;
                while (isDigit(peek()))
                    ++position_;
            }
        }
        if (isWordPart(peek())) {
            while (isWordPart(peek()))
                ++position_;
            throw SourceError(line_, "\"" + std::string(source_.substr(start, position_ - start)) +
                                         "\" is neither a number nor a name");
        }
        const std::string_view digits = source_.substr(start, position_ - start);
        if (whole) {
            Token& token = emit(TokenKind::Integer, std::string(digits));
            if (std::from_chars(digits.begin(), digits.end(), token.integer).ec != std::errc{})
                throw SourceError(line_, "The number " + token.text + " is too large");
            return;
        }
        Token& token = emit(TokenKind::Number, std::string(digits));
        if (std::from_chars(digits.begin(), digits.end(), token.number).ec != std::errc{})
            throw SourceError(line_, "The number " + token.text + " is too large or too small");
    }

    void readWord() {
        const std::size_t start = position_;
        while (isWordPart(peek()))
            ++position_;
        const std::string_view text = source_.substr(start, position_ - start);
        const std::string folded = foldCase(text);
        const bool isMember = !tokens_.empty() && tokens_.back().symbol == Symbol::Dot;
        if (folded == "rem" && !isMember) {
            skipComment();
            return;
        }
        Token& token = emit(TokenKind::Word, std::string(text));
        if (isMember) return;
        const auto found = keywords().find(folded);
        if (found != keywords().end()) token.keyword = found->second;
    }

    /// `&h`, `&b` and `&c` literals; false where the ampersand is the joining operator.
    bool readPrefixedLiteral() {
        std::size_t end = position_ + 1;
        while (end < source_.size() && isWordPart(source_[end]))
            ++end;
        if (end < position_ + 3) return false;
        const char letter = static_cast<char>(source_[position_ + 1] | 0x20);
        const std::string_view digits = source_.substr(position_ + 2, end - position_ - 2);
        const int base = letter == 'b' ? 2 : 16;
        if (letter != 'h' && letter != 'b' && letter != 'c') return false;
        if (letter == 'c' && digits.size() != 6) return false;
        std::uint64_t value = 0;
        const auto [last, error] = std::from_chars(digits.begin(), digits.end(), value, base);
        if (last != digits.end()) return false;
        const std::string text(source_.substr(position_, end - position_));
        if (error != std::errc{}) throw SourceError(line_, "The number " + text + " is too large");
        emit(letter == 'c' ? TokenKind::Colour : TokenKind::Integer, text).integer = value;
        position_ = end;
        return true;
    }

    void readSymbol() {
        static constexpr std::pair<std::string_view, Symbol> symbols[] = {
            {"<>", Symbol::NotEqual},
            {"<=", Symbol::LessOrEqual},
            {">=", Symbol::GreaterOrEqual},
            {"(", Symbol::LeftParenthesis},
            {")", Symbol::RightParenthesis},
            {",", Symbol::Comma},
            {".", Symbol::Dot},
            {"=", Symbol::Equal},
            {"<", Symbol::Less},
            {">", Symbol::Greater},
            {"+", Symbol::Plus},
            {"-", Symbol::Minus},
            {"*", Symbol::Star},
            {"/", Symbol::Slash},
            {"\\", Symbol::Backslash},
            {"^", Symbol::Caret},
            {"&", Symbol::Ampersand},
        };
        for (const auto& [text, symbol] : symbols) {
            if (!source_.substr(position_).starts_with(text)) continue;
            emit(TokenKind::Symbol, std::string(text)).symbol = symbol;
            position_ += text.size();
            return;
        }
        const char c = peek();
        if (c > ' ' && c < 0x7F)
            throw SourceError(line_,
                              std::string("The character \"") + c + "\" has no meaning here");
        throw SourceError(line_, "The text holds a control character of code " +
                                     std::to_string(static_cast<unsigned char>(c)));
    }

    std::string_view source_;
    std::size_t position_ = 0;
    int line_ = 1;
    std::vector<Token> tokens_;
};

} // namespace

std::vector<Token> tokenize(std::string_view source) { return Lexer(source).run(); }

std::string foldCase(std::string_view name) {
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    });
    return folded;
}

} // namespace host::language
