#pragma once

/// The part of the parser that reads expressions; the statements' parser is built on it.

#include "host/language/lexer.h"
#include "host/language/syntax.h"

#include <string>
#include <vector>

namespace host::language {

class ExpressionParser {
protected:
    explicit ExpressionParser(std::vector<Token> tokens)
        : tokens_(std::move(tokens)) {}

    ExpressionPointer parseExpression();

    /// A name with members, calls and elements: what a statement may begin with. Nothing at or
    /// behind the token `end` is taken.
    ExpressionPointer parseDesignator(std::size_t end = std::string::npos);

    /// `(a, b)`; none when no parenthesis follows.
    std::vector<ExpressionPointer> parseOptionalArguments();
    /// At least one expression, separated by commas.
    std::vector<ExpressionPointer> parseExpressionList();
    TypeName parseTypeName();

    ExpressionPointer makeCall(ExpressionPointer callee, std::vector<ExpressionPointer> arguments,
                               int line);

    const Token& peek(std::size_t ahead = 0) const;
    const Token& advance();
    bool at(Keyword keyword) const { return peek().keyword == keyword; }
    bool at(Symbol symbol) const { return peek().symbol == symbol; }
    bool atName() const;
    bool accept(Keyword keyword);
    bool accept(Symbol symbol);
    /// `expected` says what should stand here, as the error names it.
    void expect(Keyword keyword, const std::string& expected);
    void expect(Symbol symbol, const std::string& expected);
    std::string expectName(const std::string& expected);
    [[noreturn]] void fail(const std::string& expected) const;

    std::size_t position() const { return position_; }
    bool crossesLineSince(std::size_t start) const;
    void returnTo(std::size_t position) { position_ = position; }

    /// Counts the nesting of expressions and blocks while it lives.
    class Nesting {
    public:
        explicit Nesting(ExpressionParser& parser);
        ~Nesting() { --parser_.nesting_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        ExpressionParser& parser_;
    };

private:
    ExpressionPointer parseBinary(int minimumLevel);
    ExpressionPointer parseUnary(int level);
    ExpressionPointer parsePrimary();
    ExpressionPointer parsePostfix(ExpressionPointer base, std::size_t end = std::string::npos);
    ExpressionPointer parseNew();

    template <typename Node, typename... Children>
    ExpressionPointer make(int line, Node node, const Children&... children);
    void checkDepth(int depth, int limit, int line) const;

    std::vector<Token> tokens_;
    std::size_t position_ = 0;
    int nesting_ = 0;
};

} // namespace host::language
