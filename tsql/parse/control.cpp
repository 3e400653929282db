#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace tsql {

StatementPtr Parser::ParseDeclareStatement()
{
    Expect(QLatin1String("DECLARE"));
    const std::size_t first = m_pos;
    auto result = std::make_unique<DeclareStatement>();
    do {
        if (Peek().kind != TokenKind::Variable) {
            if (At(QLatin1String("CURSOR"), 1))
                Unsupported(u"CURSOR"_s);
            Refuse();
        }
        DeclareStatement::Variable variable;
        variable.name = Take().text;
        Accept(QLatin1String("AS"));
        if (At(QLatin1String("CURSOR")))
            Unsupported(u"CURSOR"_s);
        if (At(QLatin1String("TABLE"))) {
            if (!result->variables.empty())
                Refuse();
            Take();
            auto declared = std::make_unique<DeclareTableStatement>();
            declared->table = std::make_unique<CreateTableStatement>();
            declared->table->line = Peek().line;
            declared->table->table.name = variable.name;
            TableElements(*declared->table);
            declared->table->text = u"DECLARE "_s + TextBetween(first);
            return declared;
        }
        variable.type = Type();
        if ((variable.type.IsText() || variable.type.IsBinary()) && variable.type.length == 0)
            variable.type.length = 1;
        if (AcceptSymbol(QLatin1String("=")))
            variable.value = ParseValue();
        result->variables.push_back(std::move(variable));
    } while (AcceptSymbol(QLatin1String(",")));
    return result;
}

StatementPtr Parser::setIdentityInsert()
{
    auto result = std::make_unique<SetOptionStatement>();
    result->option = Take().text.toUpper();
    result->table = ParseObjectName();
    if (!At(QLatin1String("ON")) && !At(QLatin1String("OFF")))
        Refuse();
    result->value = Take().text.toUpper();
    return result;
}

StatementPtr Parser::setVariable()
{
    auto result = std::make_unique<SetVariableStatement>();
    result->variable = Take().text;
    const bool compound = Peek().kind == TokenKind::Symbol && Peek().text.size() == 2 && Peek().text.endsWith(u'=') &&
                          QStringView(u"+-*/%&|^").contains(Peek().text[0]);
    if (compound) {
        ExpressionPtr sum = Make(ExpressionKind::Arithmetic);
        sum->name = Take().text.left(1);
        ExpressionPtr variable = Make(ExpressionKind::Variable);
        variable->name = result->variable;
        sum->args.push_back(std::move(variable));
        sum->args.push_back(ParseValue());
        result->value = std::move(sum);
    } else {
        ExpectSymbol(QLatin1String("="));
        result->value = ParseValue();
    }
    return result;
}

StatementPtr Parser::setStatement()
{
    Expect(QLatin1String("SET"));
    if (Peek().kind == TokenKind::Variable)
        return setVariable();
    if (At(QLatin1String("IDENTITY_INSERT")))
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
    result->option = Peek().text.toUpper();
    if (Peek().kind != TokenKind::Word)
        Refuse();
    if (!known.contains(result->option))
        Unsupported(u"SET "_s + Peek().text);
    Take();
    if (result->option == u"TRANSACTION") {
        Expect(QLatin1String("ISOLATION"));
        Expect(QLatin1String("LEVEL"));
        result->value = Take().text.toUpper();
        if (At(QLatin1String("COMMITTED")) || At(QLatin1String("UNCOMMITTED")) || At(QLatin1String("READ")))
            result->value += u' ' + Take().text.toUpper();
        return result;
    }
    if (AtStatementEnd())
        Refuse();
    if (AcceptSymbol(QLatin1String("-")))
        result->value = u"-"_s;
    if (Peek().kind == TokenKind::Literal)
        m_fixed.push_back(Peek().literal);
    result->value += Take().text.toUpper();
    return result;
}

StatementPtr Parser::ParseIfStatement()
{
    Expect(QLatin1String("IF"));
    auto result = std::make_unique<IfStatement>();
    result->condition = Condition();
    result->then = ParseStatement();
    if (Accept(QLatin1String("ELSE")))
        result->otherwise = ParseStatement();
    return result;
}

StatementPtr Parser::ParseWhileStatement()
{
    Expect(QLatin1String("WHILE"));
    auto result = std::make_unique<WhileStatement>();
    result->condition = Condition();
    result->body = ParseStatement();
    return result;
}

StatementPtr Parser::BeginStatement()
{
    if (At(QLatin1String("TRAN"), 1) || At(QLatin1String("TRANSACTION"), 1)) {
        Take();
        return Transaction(StatementKind::BeginTransaction);
    }
    if (At(QLatin1String("TRY"), 1))
        return TryStatement();
    Expect(QLatin1String("BEGIN"));
    auto result = std::make_unique<BlockStatement>();
    result->statements = StatementsUntilEnd();
    Expect(QLatin1String("END"));
    return result;
}

StatementPtr Parser::TryStatement()
{
    const QLatin1String tryWord("TRY");
    const QLatin1String catchWord("CATCH");
    auto result = std::make_unique<TryCatchStatement>();
    Expect(QLatin1String("BEGIN"));
    Expect(tryWord);
    result->tried = StatementsUntilEnd();
    Expect(QLatin1String("END"));
    Expect(tryWord);
    while (AcceptSymbol(QLatin1String(";"))) {
    }
    Expect(QLatin1String("BEGIN"));
    Expect(catchWord);
    while (AcceptSymbol(QLatin1String(";"))) {
    }
    while (!At(QLatin1String("END")))
        result->caught.push_back(ParseStatement());
    Expect(QLatin1String("END"));
    Expect(catchWord);
    return result;
}

StatementPtr Parser::ParseReturnStatement()
{
    Expect(QLatin1String("RETURN"));
    auto result = std::make_unique<ReturnStatement>();
    const bool value = Peek().kind == TokenKind::Literal || Peek().kind == TokenKind::Variable ||
                       AtSymbol(QLatin1String("(")) || AtSymbol(QLatin1String("-")) || At(QLatin1String("CASE")) ||
                       At(QLatin1String("NULL")) || AtSymbol(QLatin1String("("), 1);
    if (value)
        result->value = this->ParseValue();
    return result;
}

ExecuteArgument Parser::ParseExecuteArgument()
{
    ExecuteArgument argument;
    if (Peek().kind == TokenKind::Variable && AtSymbol(QLatin1String("="), 1)) {
        argument.name = Take().text;
        Take();
    }
    const Token &token = Peek();
    if (Accept(QLatin1String("DEFAULT"))) {
        argument.useDefault = true;
        return argument;
    }
    // Constants and variables only; a bare word is a text.
    const bool plain = token.kind == TokenKind::Literal || token.kind == TokenKind::Variable ||
                       At(QLatin1String("NULL")) || AtSymbol(QLatin1String("?"));
    if (plain) {
        argument.value = Primary();
    } else if (AtSymbol(QLatin1String("-")) || AtSymbol(QLatin1String("+"))) {
        argument.value = Unary();
        const Expression &number =
            argument.value->kind == ExpressionKind::Negate ? *argument.value->args[0] : *argument.value;
        if (number.kind != ExpressionKind::Literal)
            Refuse();
    } else if (AtName()) {
        argument.value = Make(ExpressionKind::Literal);
        argument.value->value.kind = LiteralKind::Unicode;
        argument.value->value.text = Take().text;
    } else {
        Refuse();
    }
    if (Accept(QLatin1String("OUTPUT")) || Accept(QLatin1String("OUT"))) {
        if (argument.value->kind != ExpressionKind::Variable)
            throw Error(179, {}, token.line);
        argument.output = true;
    }
    return argument;
}

StatementPtr Parser::ParseExecuteStatement(bool keyword)
{
    const int line = Peek().line;
    const std::size_t first = m_pos;
    if (keyword)
        Take();
    if (AcceptSymbol(QLatin1String("("))) {
        auto text = std::make_unique<ExecuteTextStatement>();
        text->sql = ParseValue();
        ExpectSymbol(QLatin1String(")"));
        return text;
    }
    auto result = std::make_unique<ExecuteStatement>();
    if (Peek().kind == TokenKind::Variable) {
        if (!AtSymbol(QLatin1String("="), 1))
            Unsupported(u"EXEC @variable"_s);
        result->returnVariable = Take().text;
        Take();
    }
    result->procedure = ParseObjectName();
    // "name;1" is the procedure with its group number.
    if (AtSymbol(QLatin1String(";")) && Peek(1).kind == TokenKind::Literal) {
        Take();
        if (FixedInteger() != 1)
            Unsupported(u"procedure groups"_s);
    }
    const auto atArgument = [this] {
        return Peek().kind == TokenKind::Literal || Peek().kind == TokenKind::Variable || At(QLatin1String("NULL")) ||
               At(QLatin1String("DEFAULT")) || AtSymbol(QLatin1String("-")) || AtSymbol(QLatin1String("+")) ||
               AtSymbol(QLatin1String("?")) || (AtName() && !At(QLatin1String("THROW")));
    };
    if (atArgument()) {
        do {
            result->arguments.push_back(ParseExecuteArgument());
        } while (AcceptSymbol(QLatin1String(",")));
    }
    result->line = line;
    result->text = TextBetween(first);
    if (At(QLatin1String("WITH")))
        Unsupported(u"EXEC … WITH"_s);
    while (!keyword && AcceptSymbol(QLatin1String(";"))) {
    }
    return result;
}

StatementPtr Parser::Transaction(StatementKind kind)
{
    auto result = std::make_unique<TransactionStatement>(kind);
    if (kind != StatementKind::BeginTransaction)
        Take();
    const bool transactionWord = Accept(QLatin1String("TRAN")) || Accept(QLatin1String("TRANSACTION"));
    if (!transactionWord && kind == StatementKind::SaveTransaction)
        Refuse();
    if (!transactionWord)
        Accept(QLatin1String("WORK"));
    if (transactionWord && Peek().kind == TokenKind::Variable)
        Unsupported(u"transaction names in variables"_s);
    const bool nextStatement = At(QLatin1String("THROW"));
    if (transactionWord && AtName() && !nextStatement)
        result->name = Take().text;
    return result;
}

StatementPtr Parser::ThrowStatement()
{
    Take();
    auto result = std::make_unique<RaiseStatement>(StatementKind::Throw);
    if (Peek().kind != TokenKind::Literal && Peek().kind != TokenKind::Variable)
        return result;
    for (int i = 0; i < 3; ++i) {
        if (i > 0)
            ExpectSymbol(QLatin1String(","));
        result->args.push_back(Primary());
    }
    return result;
}

StatementPtr Parser::RaiseErrorStatement()
{
    Take();
    auto result = std::make_unique<RaiseStatement>(StatementKind::RaiseError);
    ExpectSymbol(QLatin1String("("));
    result->args = ValueList();
    ExpectSymbol(QLatin1String(")"));
    if (result->args.size() < 3)
        Refuse();
    if (Accept(QLatin1String("WITH"))) {
        do {
            Name();
        } while (AcceptSymbol(QLatin1String(",")));
    }
    return result;
}

StatementPtr Parser::ParsePrintStatement()
{
    Take();
    auto result = std::make_unique<PrintStatement>();
    result->value = ParseValue();
    return result;
}

} // namespace tsql
