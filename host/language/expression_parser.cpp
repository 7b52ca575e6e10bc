#include "host/language/expression_parser.h"

#include "host/language/parser.h"
#include "host/language/source_error.h"

#include <algorithm>
#include <optional>

namespace host::language {
namespace {

/// How tightly operators bind, loosest first.
enum Level : int {
    LevelOr,
    LevelAnd,
    LevelNot,
    LevelComparison,
    LevelJoin,
    LevelSum,
    LevelProduct,
    LevelSign,
    LevelPower,
};

struct OperatorEntry {
    BinaryOperator operation;
    int level;
};

std::optional<OperatorEntry> binaryOperator(const Token& token) {
    switch (token.symbol) {
    case Symbol::Equal:
        return {{BinaryOperator::Equal, LevelComparison}};
    case Symbol::NotEqual:
        return {{BinaryOperator::NotEqual, LevelComparison}};
    case Symbol::Less:
        return {{BinaryOperator::Less, LevelComparison}};
    case Symbol::LessOrEqual:
        return {{BinaryOperator::LessOrEqual, LevelComparison}};
    case Symbol::Greater:
        return {{BinaryOperator::Greater, LevelComparison}};
    case Symbol::GreaterOrEqual:
        return {{BinaryOperator::GreaterOrEqual, LevelComparison}};
    case Symbol::Ampersand:
        return {{BinaryOperator::Join, LevelJoin}};
    case Symbol::Plus:
        return {{BinaryOperator::Add, LevelSum}};
    case Symbol::Minus:
        return {{BinaryOperator::Subtract, LevelSum}};
    case Symbol::Star:
        return {{BinaryOperator::Multiply, LevelProduct}};
    case Symbol::Slash:
        return {{BinaryOperator::Divide, LevelProduct}};
    case Symbol::Backslash:
        return {{BinaryOperator::IntegerDivide, LevelProduct}};
    case Symbol::Caret:
        return {{BinaryOperator::Power, LevelPower}};
    default:
        break;
    }
    switch (token.keyword) {
    case Keyword::Or:
        return {{BinaryOperator::Or, LevelOr}};
    case Keyword::Xor:
        return {{BinaryOperator::Xor, LevelOr}};
    case Keyword::And:
        return {{BinaryOperator::And, LevelAnd}};
    case Keyword::Is:
        return {{BinaryOperator::Is, LevelComparison}};
    case Keyword::Mod:
        return {{BinaryOperator::Modulo, LevelProduct}};
    default:
        return std::nullopt;
    }
}

} // namespace

const Token& ExpressionParser::peek(std::size_t ahead) const {
    return tokens_[std::min(position_ + ahead, tokens_.size() - 1)];
}

const Token& ExpressionParser::advance() {
    const Token& token = peek();
    if (position_ + 1 < tokens_.size()) ++position_;
    return token;
}

bool ExpressionParser::atName() const {
    return peek().kind == TokenKind::Word && peek().keyword == Keyword::None;
}

bool ExpressionParser::accept(Keyword keyword) {
    if (!at(keyword)) return false;
    advance();
    return true;
}

bool ExpressionParser::accept(Symbol symbol) {
    if (!at(symbol)) return false;
    advance();
    return true;
}

bool ExpressionParser::crossesLineSince(std::size_t start) const {
    return std::any_of(tokens_.begin() + static_cast<std::ptrdiff_t>(start),
                       tokens_.begin() + static_cast<std::ptrdiff_t>(position_),
                       [](const Token& token) { return token.kind == TokenKind::EndOfLine; });
}

void ExpressionParser::expect(Keyword keyword, const std::string& expected) {
    if (!accept(keyword)) fail(expected);
}

void ExpressionParser::expect(Symbol symbol, const std::string& expected) {
    if (!accept(symbol)) fail(expected);
}

std::string ExpressionParser::expectName(const std::string& expected) {
    if (!atName()) fail(expected);
    return advance().text;
}

void ExpressionParser::fail(const std::string& expected) const {
    const Token& token = peek();
    std::string found = "\"" + token.text + "\"";
    if (token.kind == TokenKind::EndOfFile) found = "the end of the program";
    if (token.kind == TokenKind::EndOfLine) found = "the end of the line";
    if (token.kind == TokenKind::String) found = "the string \"" + token.text + "\"";
    throw SourceError(token.line, "Expected " + expected + " but found " + found);
}

ExpressionParser::Nesting::Nesting(ExpressionParser& parser)
    : parser_(parser) {
    parser.checkDepth(parser.nesting_ + 1, maximumNesting, parser.peek().line);
    ++parser.nesting_;
}

void ExpressionParser::checkDepth(int depth, int limit, int line) const {
    if (depth > limit)
        throw SourceError(line, "The program is nested more than " + std::to_string(limit) +
                                    " levels deep here");
}

template <typename Node, typename... Children>
ExpressionPointer ExpressionParser::make(int line, Node node, const Children&... children) {
    auto expression = std::make_unique<Expression>();
    expression->line = line;
    expression->depth = 1 + std::max({0, children...});
    checkDepth(expression->depth, maximumTreeDepth, line);
    expression->node = std::move(node);
    return expression;
}

ExpressionPointer ExpressionParser::parseExpression() {
    const Nesting nesting(*this);
    return parseBinary(LevelOr);
}

ExpressionPointer ExpressionParser::parseBinary(int minimumLevel) {
    ExpressionPointer left = parseUnary(minimumLevel);
    while (true) {
        const int line = peek().line;
        if (at(Keyword::IsA) && minimumLevel <= LevelComparison) {
            advance();
            TypeName type = parseTypeName();
            const int depth = left->depth;
            left = make(line, IsAExpression{std::move(left), std::move(type)}, depth);
            continue;
        }
        const std::optional<OperatorEntry> entry = binaryOperator(peek());
        if (!entry || entry->level < minimumLevel) return left;
        advance();
        ExpressionPointer right = parseBinary(entry->level + 1);
        const int depth = std::max(left->depth, right->depth);
        left = make(line, BinaryExpression{entry->operation, std::move(left), std::move(right)},
                    depth);
    }
}

ExpressionPointer ExpressionParser::parseUnary(int level) {
    const int line = peek().line;
    std::optional<UnaryOperator> operation;
    int operandLevel = LevelSign;
    if (at(Symbol::Minus)) operation = UnaryOperator::Minus;
    if (at(Symbol::Plus)) operation = UnaryOperator::Plus;
    if (at(Keyword::Not)) {
        operation = UnaryOperator::Not;
        // `Not a = b` denies the comparison; behind an operator `Not` takes what follows it only.
        operandLevel = std::max<int>(level, LevelNot);
    }
    if (!operation) return parsePostfix(parsePrimary());
    advance();
    const Nesting nesting(*this);
    ExpressionPointer operand = parseBinary(operandLevel);
    const int depth = operand->depth;
    return make(line, UnaryExpression{*operation, std::move(operand)}, depth);
}

ExpressionPointer ExpressionParser::parsePrimary() {
    const Token& token = peek();
    const int line = token.line;
    switch (token.kind) {
    case TokenKind::Integer:
        return make(line, IntegerLiteral{advance().integer});
    case TokenKind::Number:
        return make(line, NumberLiteral{advance().number});
    case TokenKind::String:
        return make(line, StringLiteral{advance().text});
    case TokenKind::Colour:
        return make(line, ColourLiteral{static_cast<std::uint32_t>(advance().integer)});
    default:
        break;
    }
    if (accept(Symbol::LeftParenthesis)) {
        ExpressionPointer inner = parseExpression();
        expect(Symbol::RightParenthesis, "\")\"");
        return inner;
    }
    if (accept(Keyword::True)) return make(line, BooleanLiteral{true});
    if (accept(Keyword::False)) return make(line, BooleanLiteral{false});
    if (accept(Keyword::Nil)) return make(line, NilLiteral{});
    if (at(Keyword::New)) return parseNew();
    if (accept(Keyword::AddressOf))
        return make(line, AddressOfExpression{expectName("the name of a Sub after AddressOf")});
    return make(line, NameExpression{expectName("an expression")});
}

ExpressionPointer ExpressionParser::parseNew() {
    const int line = advance().line;
    NewExpression created;
    created.type.line = peek().line;
    created.type.name = expectName("the name of a class after New");
    created.arguments = parseOptionalArguments();
    int depth = 0;
    for (const ExpressionPointer& argument : created.arguments)
        depth = std::max(depth, argument->depth);
    return make(line, std::move(created), depth);
}

ExpressionPointer ExpressionParser::parsePostfix(ExpressionPointer base, std::size_t end) {
    while (position_ < end) {
        const int line = peek().line;
        if (accept(Symbol::Dot)) {
            if (peek().kind != TokenKind::Word) fail("the name of a member after the dot");
            std::string name = advance().text;
            const int depth = base->depth;
            base = make(line, MemberExpression{std::move(base), std::move(name)}, depth);
        } else if (at(Symbol::LeftParenthesis)) {
            base = makeCall(std::move(base), parseOptionalArguments(), line);
        } else {
            break;
        }
    }
    return base;
}

ExpressionPointer ExpressionParser::makeCall(ExpressionPointer callee,
                                             std::vector<ExpressionPointer> arguments, int line) {
    int depth = callee->depth;
    for (const ExpressionPointer& argument : arguments)
        depth = std::max(depth, argument->depth);
    return make(line, CallExpression{std::move(callee), std::move(arguments)}, depth);
}

ExpressionPointer ExpressionParser::parseDesignator(std::size_t end) {
    const Nesting nesting(*this);
    const int line = peek().line;
    return parsePostfix(make(line, NameExpression{expectName("a statement")}), end);
}

std::vector<ExpressionPointer> ExpressionParser::parseOptionalArguments() {
    std::vector<ExpressionPointer> arguments;
    if (!accept(Symbol::LeftParenthesis)) return arguments;
    if (accept(Symbol::RightParenthesis)) return arguments;
    arguments = parseExpressionList();
    expect(Symbol::RightParenthesis, "\",\" or \")\"");
    return arguments;
}

std::vector<ExpressionPointer> ExpressionParser::parseExpressionList() {
    std::vector<ExpressionPointer> list;
    do
        list.push_back(parseExpression());
    while (accept(Symbol::Comma));
    return list;
}

TypeName ExpressionParser::parseTypeName() {
    TypeName type;
    type.line = peek().line;
    type.name = expectName("the name of a type");
    if (at(Symbol::LeftParenthesis) && peek(1).symbol == Symbol::RightParenthesis) {
        advance();
        advance();
        type.isArray = true;
    }
    return type;
}

} // namespace host::language
