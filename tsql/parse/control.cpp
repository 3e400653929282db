#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace tsql {

StatementPtr Parser::declareStatement()
{
    expect(QLatin1String("DECLARE"));
    const std::size_t first = m_pos;
    auto result = std::make_unique<DeclareStatement>();
    do {
        if (peek().kind != TokenKind::Variable) {
            if (at(QLatin1String("CURSOR"), 1))
                unsupported(u"CURSOR"_s);
            refuse();
        }
        DeclareStatement::Variable variable;
        variable.name = take().text;
        accept(QLatin1String("AS"));
        if (at(QLatin1String("CURSOR")))
            unsupported(u"CURSOR"_s);
        if (at(QLatin1String("TABLE"))) {
            if (!result->variables.empty())
                refuse();
            take();
            auto declared = std::make_unique<DeclareTableStatement>();
            declared->table = std::make_unique<CreateTableStatement>();
            declared->table->line = peek().line;
            declared->table->table.name = variable.name;
            tableElements(*declared->table);
            declared->table->text = u"DECLARE "_s + textBetween(first);
            return declared;
        }
        variable.type = type();
        if ((variable.type.isText() || variable.type.isBinary()) && variable.type.length == 0)
            variable.type.length = 1;
        if (acceptSymbol(QLatin1String("=")))
            variable.value = value();
        result->variables.push_back(std::move(variable));
    } while (acceptSymbol(QLatin1String(",")));
    return result;
}

StatementPtr Parser::setIdentityInsert()
{
    auto result = std::make_unique<SetOptionStatement>();
    result->option = take().text.toUpper();
    result->table = objectName();
    if (!at(QLatin1String("ON")) && !at(QLatin1String("OFF")))
        refuse();
    result->value = take().text.toUpper();
    return result;
}

StatementPtr Parser::setVariable()
{
    auto result = std::make_unique<SetVariableStatement>();
    result->variable = take().text;
    const bool compound = peek().kind == TokenKind::Symbol && peek().text.size() == 2 && peek().text.endsWith(u'=') &&
                          QStringView(u"+-*/%&|^").contains(peek().text[0]);
    if (compound) {
        ExpressionPtr sum = make(ExpressionKind::Arithmetic);
        sum->name = take().text.left(1);
        ExpressionPtr variable = make(ExpressionKind::Variable);
        variable->name = result->variable;
        sum->args.push_back(std::move(variable));
        sum->args.push_back(value());
        result->value = std::move(sum);
    } else {
        expectSymbol(QLatin1String("="));
        result->value = value();
    }
    return result;
}

StatementPtr Parser::setStatement()
{
    expect(QLatin1String("SET"));
    if (peek().kind == TokenKind::Variable)
        return setVariable();
    if (at(QLatin1String("IDENTITY_INSERT")))
        return setIdentityInsert();
    return setOption();
}

StatementPtr Parser::setOption()
{
    static const QSet<QString> known = {
        u"NOCOUNT"_s,           u"XACT_ABORT"_s,
        u"ANSI_NULLS"_s,        u"QUOTED_IDENTIFIER"_s,
        u"ANSI_PADDING"_s,      u"ANSI_WARNINGS"_s,
        u"ARITHABORT"_s,        u"LOCK_TIMEOUT"_s,
        u"DATEFORMAT"_s,        u"LANGUAGE"_s,
        u"DATEFIRST"_s,         u"TRANSACTION"_s,
        u"TEXTSIZE"_s,          u"CONCAT_NULL_YIELDS_NULL"_s,
        u"ANSI_NULL_DFLT_ON"_s, u"NUMERIC_ROUNDABORT"_s,
    };
    auto result = std::make_unique<SetOptionStatement>();
    result->option = peek().text.toUpper();
    if (peek().kind != TokenKind::Word)
        refuse();
    if (!known.contains(result->option))
        unsupported(u"SET "_s + peek().text);
    take();
    if (result->option == u"TRANSACTION") {
        expect(QLatin1String("ISOLATION"));
        expect(QLatin1String("LEVEL"));
        result->value = take().text.toUpper();
        if (at(QLatin1String("COMMITTED")) || at(QLatin1String("UNCOMMITTED")) || at(QLatin1String("READ")))
            result->value += u' ' + take().text.toUpper();
        return result;
    }
    if (atStatementEnd())
        refuse();
    if (acceptSymbol(QLatin1String("-")))
        result->value = u"-"_s;
    if (peek().kind == TokenKind::Literal)
        m_fixed.push_back(peek().literal);
    result->value += take().text.toUpper();
    return result;
}

StatementPtr Parser::ifStatement()
{
    expect(QLatin1String("IF"));
    auto result = std::make_unique<IfStatement>();
    result->condition = condition();
    result->then = statement();
    if (accept(QLatin1String("ELSE")))
        result->otherwise = statement();
    return result;
}

StatementPtr Parser::whileStatement()
{
    expect(QLatin1String("WHILE"));
    auto result = std::make_unique<WhileStatement>();
    result->condition = condition();
    result->body = statement();
    return result;
}

StatementPtr Parser::beginStatement()
{
    if (at(QLatin1String("TRAN"), 1) || at(QLatin1String("TRANSACTION"), 1)) {
        take();
        return transaction(StatementKind::BeginTransaction);
    }
    if (at(QLatin1String("TRY"), 1))
        return tryStatement();
    expect(QLatin1String("BEGIN"));
    auto result = std::make_unique<BlockStatement>();
    result->statements = statementsUntilEnd();
    expect(QLatin1String("END"));
    return result;
}

StatementPtr Parser::tryStatement()
{
    const QLatin1String tryWord("TRY");
    const QLatin1String catchWord("CATCH");
    auto result = std::make_unique<TryCatchStatement>();
    expect(QLatin1String("BEGIN"));
    expect(tryWord);
    result->tried = statementsUntilEnd();
    expect(QLatin1String("END"));
    expect(tryWord);
    while (acceptSymbol(QLatin1String(";"))) {
    }
    expect(QLatin1String("BEGIN"));
    expect(catchWord);
    while (acceptSymbol(QLatin1String(";"))) {
    }
    while (!at(QLatin1String("END")))
        result->caught.push_back(statement());
    expect(QLatin1String("END"));
    expect(catchWord);
    return result;
}

StatementPtr Parser::returnStatement()
{
    expect(QLatin1String("RETURN"));
    auto result = std::make_unique<ReturnStatement>();
    const bool value = peek().kind == TokenKind::Literal || peek().kind == TokenKind::Variable ||
                       atSymbol(QLatin1String("(")) || atSymbol(QLatin1String("-")) || at(QLatin1String("CASE")) ||
                       at(QLatin1String("NULL")) || atSymbol(QLatin1String("("), 1);
    if (value)
        result->value = this->value();
    return result;
}

ExecuteArgument Parser::executeArgument()
{
    ExecuteArgument argument;
    if (peek().kind == TokenKind::Variable && atSymbol(QLatin1String("="), 1)) {
        argument.name = take().text;
        take();
    }
    const Token &token = peek();
    if (accept(QLatin1String("DEFAULT"))) {
        argument.useDefault = true;
        return argument;
    }
    // Constants and variables only; a bare word is a text.
    const bool plain = token.kind == TokenKind::Literal || token.kind == TokenKind::Variable ||
                       at(QLatin1String("NULL")) || atSymbol(QLatin1String("?"));
    if (plain) {
        argument.value = primary();
    } else if (atSymbol(QLatin1String("-")) || atSymbol(QLatin1String("+"))) {
        argument.value = unary();
        const Expression &number =
            argument.value->kind == ExpressionKind::Negate ? *argument.value->args[0] : *argument.value;
        if (number.kind != ExpressionKind::Literal)
            refuse();
    } else if (atName()) {
        argument.value = make(ExpressionKind::Literal);
        argument.value->value.kind = LiteralKind::Unicode;
        argument.value->value.text = take().text;
    } else {
        refuse();
    }
    if (accept(QLatin1String("OUTPUT")) || accept(QLatin1String("OUT"))) {
        if (argument.value->kind != ExpressionKind::Variable)
            throw Error(179, {}, token.line);
        argument.output = true;
    }
    return argument;
}

StatementPtr Parser::executeStatement(bool keyword)
{
    const int line = peek().line;
    const std::size_t first = m_pos;
    if (keyword)
        take();
    if (acceptSymbol(QLatin1String("("))) {
        auto text = std::make_unique<ExecuteTextStatement>();
        text->sql = value();
        expectSymbol(QLatin1String(")"));
        return text;
    }
    auto result = std::make_unique<ExecuteStatement>();
    if (peek().kind == TokenKind::Variable) {
        if (!atSymbol(QLatin1String("="), 1))
            unsupported(u"EXEC @variable"_s);
        result->returnVariable = take().text;
        take();
    }
    result->procedure = objectName();
    // "name;1" is the procedure with its group number.
    if (atSymbol(QLatin1String(";")) && peek(1).kind == TokenKind::Literal) {
        take();
        if (fixedInteger() != 1)
            unsupported(u"procedure groups"_s);
    }
    const auto atArgument = [this] {
        return peek().kind == TokenKind::Literal || peek().kind == TokenKind::Variable || at(QLatin1String("NULL")) ||
               at(QLatin1String("DEFAULT")) || atSymbol(QLatin1String("-")) || atSymbol(QLatin1String("+")) ||
               atSymbol(QLatin1String("?")) || (atName() && !at(QLatin1String("THROW")));
    };
    if (atArgument()) {
        do {
            result->arguments.push_back(executeArgument());
        } while (acceptSymbol(QLatin1String(",")));
    }
    result->line = line;
    result->text = textBetween(first);
    if (at(QLatin1String("WITH")))
        unsupported(u"EXEC … WITH"_s);
    while (!keyword && acceptSymbol(QLatin1String(";"))) {
    }
    return result;
}

StatementPtr Parser::transaction(StatementKind kind)
{
    auto result = std::make_unique<TransactionStatement>(kind);
    if (kind != StatementKind::BeginTransaction)
        take();
    const bool transactionWord = accept(QLatin1String("TRAN")) || accept(QLatin1String("TRANSACTION"));
    if (!transactionWord && kind == StatementKind::SaveTransaction)
        refuse();
    if (!transactionWord)
        accept(QLatin1String("WORK"));
    if (transactionWord && peek().kind == TokenKind::Variable)
        unsupported(u"transaction names in variables"_s);
    const bool nextStatement = at(QLatin1String("THROW"));
    if (transactionWord && atName() && !nextStatement)
        result->name = take().text;
    return result;
}

StatementPtr Parser::throwStatement()
{
    take();
    auto result = std::make_unique<RaiseStatement>(StatementKind::Throw);
    if (peek().kind != TokenKind::Literal && peek().kind != TokenKind::Variable)
        return result;
    for (int i = 0; i < 3; ++i) {
        if (i > 0)
            expectSymbol(QLatin1String(","));
        result->args.push_back(primary());
    }
    return result;
}

StatementPtr Parser::raiseErrorStatement()
{
    take();
    auto result = std::make_unique<RaiseStatement>(StatementKind::RaiseError);
    expectSymbol(QLatin1String("("));
    result->args = valueList();
    expectSymbol(QLatin1String(")"));
    if (result->args.size() < 3)
        refuse();
    if (accept(QLatin1String("WITH"))) {
        do {
            name();
        } while (acceptSymbol(QLatin1String(",")));
    }
    return result;
}

StatementPtr Parser::printStatement()
{
    take();
    auto result = std::make_unique<PrintStatement>();
    result->value = value();
    return result;
}

} // namespace tsql
