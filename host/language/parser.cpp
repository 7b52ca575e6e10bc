#include "host/language/parser.h"

#include "host/language/expression_parser.h"
#include "host/language/source_error.h"

#include <initializer_list>
#include <utility>

namespace host::language {
namespace {

class Parser : ExpressionParser {
public:
    explicit Parser(std::string_view source)
        : ExpressionParser(tokenize(source)) {}

    SyntaxTree run() {
        SyntaxTree tree;
        while (peek().kind != TokenKind::EndOfFile) {
            if (at(Keyword::Sub) || at(Keyword::Function))
                tree.routines.push_back(parseRoutine());
            else
                tree.main.push_back(parseStatement());
        }
        return tree;
    }

private:
    // Blocks

    /// Statements up to one of the words that can end the block; the word is not taken.
    Block parseBlock(std::initializer_list<Keyword> terminators, const std::string& opener,
                     int openerLine) {
        const Nesting nesting(*this);
        Block block;
        while (true) {
            for (const Keyword terminator : terminators)
                if (at(terminator)) return block;
            if (peek().kind == TokenKind::EndOfFile)
                throw SourceError(openerLine, opener + " is never closed");
            block.push_back(parseStatement());
        }
    }

    void endStatement() {
        if (peek().kind != TokenKind::EndOfLine) fail("the end of the line");
        advance();
    }

    void endBlock(Keyword keyword, const std::string& closer) {
        expect(Keyword::End, closer);
        expect(keyword, closer);
        endStatement();
    }

    // Routines

    Routine parseRoutine() {
        Routine routine;
        const bool isFunction = at(Keyword::Function);
        const std::string word = isFunction ? "Function" : "Sub";
        routine.line = advance().line;
        routine.name = expectName("the name of the " + word);
        if (accept(Symbol::LeftParenthesis) && !accept(Symbol::RightParenthesis)) {
            do
                routine.parameters.push_back(parseParameter());
            while (accept(Symbol::Comma));
            expect(Symbol::RightParenthesis, "\",\" or \")\"");
        }
        if (isFunction) {
            expect(Keyword::As, "\"As\" and the type of the Function's result");
            routine.result = parseTypeName();
        }
        endStatement();
        routine.body = parseBlock({Keyword::End, Keyword::Sub, Keyword::Function},
                                  word + " " + routine.name, routine.line);
        endBlock(isFunction ? Keyword::Function : Keyword::Sub, "\"End " + word + "\"");
        return routine;
    }

    Parameter parseParameter() {
        Parameter parameter;
        while (true) {
            if (accept(Keyword::ByRef))
                parameter.byReference = true;
            else if (accept(Keyword::Optional))
                parameter.optional = true;
            else if (!accept(Keyword::ByVal))
                break;
        }
        parameter.name = expectName("the name of a parameter");
        const bool isArray = acceptEmptyParentheses();
        expect(Keyword::As, "\"As\" and the type of the parameter " + parameter.name);
        parameter.type = parseTypeName();
        parameter.type.isArray |= isArray;
        if (accept(Symbol::Equal)) {
            parameter.optional = true;
            parameter.defaultValue = parseExpression();
        }
        return parameter;
    }

    bool acceptEmptyParentheses() {
        if (!at(Symbol::LeftParenthesis) || peek(1).symbol != Symbol::RightParenthesis)
            return false;
        advance();
        advance();
        return true;
    }

    // Statements

    Statement parseStatement() {
        Statement statement = parseSimpleOrBlock();
        endStatement();
        return statement;
    }

    /// Everything up to the end of the line that ends the statement.
    Statement parseSimpleOrBlock() {
        Statement statement;
        statement.line = peek().line;
        switch (peek().keyword) {
        case Keyword::Dim:
            statement.node = parseDim();
            break;
        case Keyword::Call:
            advance();
            statement.node = CallStatement{parseDesignator()};
            break;
        case Keyword::Const:
            statement.node = parseConst();
            break;
        case Keyword::Print:
            statement.node = parsePrint();
            break;
        case Keyword::Redim:
            statement.node = parseRedim();
            break;
        case Keyword::If:
            statement.node = parseIf();
            break;
        case Keyword::Select:
            statement.node = parseSelect();
            break;
        case Keyword::For:
            parseFor(statement);
            break;
        case Keyword::While:
            statement.node = parseWhile();
            break;
        case Keyword::Do:
            statement.node = parseDo();
            break;
        case Keyword::Exit:
            parseExit(statement);
            break;
        case Keyword::Continue:
            statement.node = parseContinue();
            break;
        case Keyword::Return:
            statement.node = parseReturn();
            break;
        case Keyword::Try:
            statement.node = parseTry();
            break;
        case Keyword::Raise:
            statement.node = parseRaise();
            break;
        case Keyword::Sub:
        case Keyword::Function:
            throw SourceError(peek().line, "A Sub or Function cannot stand inside another block");
        case Keyword::None:
            parseAssignmentOrCall(statement);
            break;
        default:
            fail("a statement");
        }
        return statement;
    }

    void parseAssignmentOrCall(Statement& statement) {
        const std::size_t start = position();
        ExpressionPointer target = parseDesignator();
        if (accept(Symbol::Equal)) {
            ExpressionPointer value = parseExpression();
            statement.node = AssignStatement{std::move(target), std::move(value)};
            return;
        }
        if (atEndOfSimpleStatement()) {
            statement.node = CallStatement{std::move(target)};
            return;
        }
        // `list.Append x`, and `list.Append (a) + b` whose parenthesis belongs to the argument.
        const auto* call = std::get_if<CallExpression>(&target->node);
        if (call) target = parseCalleeAgain(start);
        const int line = target->line;
        std::vector<ExpressionPointer> arguments = parseExpressionList();
        statement.node = CallStatement{makeCall(std::move(target), std::move(arguments), line)};
    }

    /// Reads the designator at `start` anew, up to its last call's parenthesis.
    ExpressionPointer parseCalleeAgain(std::size_t start) {
        const std::size_t end = position();
        std::size_t lastParenthesis = start;
        int open = 0;
        returnTo(start);
        while (position() < end) {
            if (at(Symbol::LeftParenthesis) && open++ == 0) lastParenthesis = position();
            if (at(Symbol::RightParenthesis)) --open;
            advance();
        }
        returnTo(start);
        return parseDesignator(lastParenthesis);
    }

    bool atEndOfSimpleStatement() const {
        return peek().kind == TokenKind::EndOfLine || at(Keyword::Else);
    }

    DimStatement parseDim() {
        advance();
        DimStatement dim;
        do {
            std::size_t first = dim.declarations.size();
            do
                dim.declarations.push_back(parseDeclaredName());
            while (accept(Symbol::Comma));
            expect(Keyword::As, "\",\" or \"As\" and a type");
            parseDeclaredType(dim, first);
        } while (accept(Symbol::Comma));
        return dim;
    }

    Declaration parseDeclaredName() {
        Declaration declaration;
        declaration.name = expectName("the name of a variable");
        if (acceptEmptyParentheses()) {
            declaration.type.isArray = true;
        } else if (accept(Symbol::LeftParenthesis)) {
            declaration.type.isArray = true;
            declaration.upperBound = parseExpression();
            if (at(Symbol::Comma)) throw SourceError(peek().line, "Arrays have one dimension only");
            expect(Symbol::RightParenthesis, "\")\"");
        }
        return declaration;
    }

    void parseDeclaredType(DimStatement& dim, std::size_t first) {
        const std::size_t start = position();
        for (std::size_t i = first; i < dim.declarations.size(); ++i) {
            Declaration& declaration = dim.declarations[i];
            const bool isArray = declaration.type.isArray;
            // Each variable of the list has the type, and a new object or initial value of its own.
            returnTo(start);
            if (at(Keyword::New)) {
                declaration.initial = parseExpression();
                const auto* created = std::get_if<NewExpression>(&declaration.initial->node);
                if (!created || isArray)
                    throw SourceError(peek().line, "\"As New\" takes the name of a class only");
                declaration.type = created->type;
                continue;
            }
            declaration.type = parseTypeName();
            declaration.type.isArray |= isArray;
            if (accept(Symbol::Equal)) declaration.initial = parseExpression();
        }
    }

    ConstStatement parseConst() {
        advance();
        ConstStatement constant;
        constant.name = expectName("the name of a constant");
        if (accept(Keyword::As)) parseTypeName();
        expect(Symbol::Equal, "\"=\" and the constant's value");
        constant.value = parseExpression();
        return constant;
    }

    PrintStatement parsePrint() {
        advance();
        if (atEndOfSimpleStatement()) return {};
        return {parseExpression()};
    }

    RedimStatement parseRedim() {
        advance();
        const int line = peek().line;
        ExpressionPointer target = parseDesignator();
        auto* call = std::get_if<CallExpression>(&target->node);
        if (!call || call->arguments.size() != 1)
            throw SourceError(line, "Redim needs an array with its new upper bound: Redim a(9)");
        ExpressionPointer bound = std::move(call->arguments.front());
        return {std::move(call->callee), std::move(bound)};
    }

    IfStatement parseIf() {
        const int line = advance().line;
        IfStatement statement;
        ExpressionPointer condition = parseExpression();
        expect(Keyword::Then, "\"Then\"");
        if (peek().kind != TokenKind::EndOfLine) return parseOneLineIf(std::move(condition), line);
        advance();
        parseBranch(statement, std::move(condition), line);
        while (at(Keyword::ElseIf)) {
            const int branchLine = advance().line;
            ExpressionPointer next = parseExpression();
            expect(Keyword::Then, "\"Then\"");
            endStatement();
            parseBranch(statement, std::move(next), branchLine);
        }
        if (accept(Keyword::Else)) {
            endStatement();
            statement.otherwise = parseBlock({Keyword::End}, "If", line);
        }
        expect(Keyword::End, "\"End If\"");
        expect(Keyword::If, "\"If\" after \"End\"");
        return statement;
    }

    void parseBranch(IfStatement& statement, ExpressionPointer condition, int line) {
        Block body = parseBlock({Keyword::ElseIf, Keyword::Else, Keyword::End}, "If", line);
        statement.branches.push_back({std::move(condition), std::move(body), line});
    }

    IfStatement parseOneLineIf(ExpressionPointer condition, int line) {
        const Nesting nesting(*this);
        IfStatement statement;
        Block body;
        body.push_back(parseStatementOnOneLine());
        statement.branches.push_back({std::move(condition), std::move(body), line});
        if (accept(Keyword::Else)) statement.otherwise.push_back(parseStatementOnOneLine());
        return statement;
    }

    Statement parseStatementOnOneLine() {
        const std::size_t start = position();
        Statement statement = parseSimpleOrBlock();
        if (crossesLineSince(start))
            throw SourceError(statement.line,
                              "A block of several lines cannot stand in an If of one line");
        return statement;
    }

    SelectStatement parseSelect() {
        const int line = advance().line;
        expect(Keyword::Case, "\"Case\" after \"Select\"");
        SelectStatement statement;
        statement.subject = parseExpression();
        endStatement();
        if (!at(Keyword::Case) && !at(Keyword::End)) fail("\"Case\" or \"End Select\"");
        while (at(Keyword::Case)) {
            const int caseLine = advance().line;
            if (accept(Keyword::Else)) {
                endStatement();
                statement.otherwise = parseBlock({Keyword::End}, "Select Case", line);
                break;
            }
            std::vector<SelectStatement::Test> tests;
            do
                tests.push_back(parseTest());
            while (accept(Symbol::Comma));
            endStatement();
            Block body = parseBlock({Keyword::Case, Keyword::End}, "Select Case", line);
            statement.cases.push_back({std::move(tests), std::move(body), caseLine});
        }
        expect(Keyword::End, "\"End Select\"");
        expect(Keyword::Select, "\"Select\" after \"End\"");
        return statement;
    }

    SelectStatement::Test parseTest() {
        SelectStatement::Test test;
        if (accept(Keyword::Is)) {
            switch (peek().symbol) {
            case Symbol::Equal:
                break;
            case Symbol::NotEqual:
                test.comparison = BinaryOperator::NotEqual;
                break;
            case Symbol::Less:
                test.comparison = BinaryOperator::Less;
                break;
            case Symbol::LessOrEqual:
                test.comparison = BinaryOperator::LessOrEqual;
                break;
            case Symbol::Greater:
                test.comparison = BinaryOperator::Greater;
                break;
            case Symbol::GreaterOrEqual:
                test.comparison = BinaryOperator::GreaterOrEqual;
                break;
            default:
                fail("a comparison after \"Is\"");
            }
            advance();
            test.value = parseExpression();
            return test;
        }
        test.value = parseExpression();
        if (accept(Keyword::To)) test.upper = parseExpression();
        return test;
    }

    void parseFor(Statement& statement) {
        const int line = advance().line;
        if (accept(Keyword::Each)) {
            statement.node = parseForEach(line);
            return;
        }
        ForStatement loop;
        loop.variable = expectName("the loop's variable");
        if (accept(Keyword::As)) loop.type = parseTypeName();
        expect(Symbol::Equal, "\"=\"");
        loop.first = parseExpression();
        loop.downwards = accept(Keyword::DownTo);
        if (!loop.downwards) expect(Keyword::To, "\"To\" or \"DownTo\"");
        loop.last = parseExpression();
        if (accept(Keyword::Step)) loop.step = parseExpression();
        endStatement();
        loop.body = parseBlock({Keyword::Next}, "For", line);
        endNext(loop.variable);
        statement.node = std::move(loop);
    }

    ForEachStatement parseForEach(int line) {
        ForEachStatement loop;
        loop.variable = expectName("the loop's variable");
        if (accept(Keyword::As)) loop.type = parseTypeName();
        expect(Keyword::In, "\"In\"");
        loop.list = parseExpression();
        endStatement();
        loop.body = parseBlock({Keyword::Next}, "For Each", line);
        endNext(loop.variable);
        return loop;
    }

    void endNext(const std::string& variable) {
        expect(Keyword::Next, "\"Next\"");
        if (!atName()) return;
        if (foldCase(peek().text) != foldCase(variable)) fail("\"Next " + variable + "\"");
        advance();
    }

    WhileStatement parseWhile() {
        const int line = advance().line;
        WhileStatement loop;
        loop.condition = parseExpression();
        endStatement();
        loop.body = parseBlock({Keyword::Wend}, "While", line);
        expect(Keyword::Wend, "\"Wend\"");
        return loop;
    }

    DoStatement parseDo() {
        const int line = advance().line;
        DoStatement loop;
        loop.before = parseLoopCondition();
        endStatement();
        loop.body = parseBlock({Keyword::Loop}, "Do", line);
        expect(Keyword::Loop, "\"Loop\"");
        loop.after = parseLoopCondition();
        return loop;
    }

    std::optional<DoStatement::Condition> parseLoopCondition() {
        const bool until = at(Keyword::Until);
        if (!until && !at(Keyword::While)) return std::nullopt;
        advance();
        return DoStatement::Condition{parseExpression(), until};
    }

    std::optional<LoopKind> acceptLoopKind() {
        if (accept(Keyword::For)) return LoopKind::For;
        if (accept(Keyword::While)) return LoopKind::While;
        if (accept(Keyword::Do)) return LoopKind::Do;
        if (atEndOfSimpleStatement()) return LoopKind::Innermost;
        return std::nullopt;
    }

    void parseExit(Statement& statement) {
        advance();
        if (accept(Keyword::Sub) || accept(Keyword::Function)) {
            statement.node = ReturnStatement{};
            return;
        }
        const std::optional<LoopKind> loop = acceptLoopKind();
        if (!loop) fail("\"For\", \"While\", \"Do\", \"Sub\" or \"Function\" after \"Exit\"");
        statement.node = ExitStatement{*loop};
    }

    ContinueStatement parseContinue() {
        advance();
        const std::optional<LoopKind> loop = acceptLoopKind();
        if (!loop) fail("\"For\", \"While\" or \"Do\" after \"Continue\"");
        return {*loop};
    }

    ReturnStatement parseReturn() {
        advance();
        if (atEndOfSimpleStatement()) return {};
        return {parseExpression()};
    }

    TryStatement parseTry() {
        const int line = advance().line;
        endStatement();
        TryStatement statement;
        statement.body = parseBlock({Keyword::Catch, Keyword::Finally, Keyword::End}, "Try", line);
        while (at(Keyword::Catch)) {
            TryStatement::Catch handler;
            handler.line = advance().line;
            if (atName()) {
                handler.variable = advance().text;
                if (accept(Keyword::As)) handler.type = parseTypeName();
            }
            endStatement();
            handler.body =
                parseBlock({Keyword::Catch, Keyword::Finally, Keyword::End}, "Try", line);
            statement.catches.push_back(std::move(handler));
        }
        if (accept(Keyword::Finally)) {
            endStatement();
            statement.finally = parseBlock({Keyword::End}, "Try", line);
        }
        expect(Keyword::End, "\"End Try\"");
        expect(Keyword::Try, "\"Try\" after \"End\"");
        return statement;
    }

    RaiseStatement parseRaise() {
        advance();
        return {parseExpression()};
    }
};

} // namespace

SyntaxTree parse(std::string_view source) { return Parser(source).run(); }

} // namespace host::language
