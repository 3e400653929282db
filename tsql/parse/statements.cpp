#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tsql {

StatementPtr Parser::ParseStatement()
{
    const Depth depth(*this);
    while (AcceptSymbol(QLatin1String(";"))) {
    }
    const std::size_t first = m_pos;
    const int line = Peek().line;
    m_maxRecursion = Statement::DefaultRecursion;
    StatementPtr result = StatementBody();
    result->line = line;
    result->maxRecursion = std::exchange(m_maxRecursion, Statement::DefaultRecursion);
    result->text = TextBetween(first);
    while (AcceptSymbol(QLatin1String(";"))) {
    }
    return result;
}

/// Statements of the dialect that are not carried out are named, so that nobody looks for a slip of the pen.
void Parser::RefuseUnsupported() const
{
    static const QSet<QString> known = {
        u"MERGE"_s, u"GOTO"_s,   u"WAITFOR"_s,     u"OPEN"_s,       u"FETCH"_s,   u"CLOSE"_s,  u"DEALLOCATE"_s,
        u"GRANT"_s, u"REVOKE"_s, u"DENY"_s,        u"BACKUP"_s,     u"RESTORE"_s, u"DBCC"_s,   u"USE"_s,
        u"BULK"_s,  u"KILL"_s,   u"RECONFIGURE"_s, u"CHECKPOINT"_s, u"DISABLE"_s, u"ENABLE"_s,
    };
    const QString word = Peek().text.toUpper();
    if (Peek().kind == TokenKind::Word && known.contains(word))
        Unsupported(word);
}

StatementPtr Parser::StatementBody()
{
    using Parse = StatementPtr (*)(Parser &);
    static const QHash<QString, Parse> table = {
        {u"SELECT"_s, [](Parser &p) { return p.ParseSelectStatement({}); }},
        {u"INSERT"_s, [](Parser &p) { return p.ParseInsertStatement({}); }},
        {u"UPDATE"_s, [](Parser &p) { return p.ParseUpdateStatement({}); }},
        {u"DELETE"_s, [](Parser &p) { return p.ParseDeleteStatement({}); }},
        {u"WITH"_s, [](Parser &p) { return p.WithStatement(); }},
        {u"TRUNCATE"_s, [](Parser &p) { return p.ParseTruncateStatement(); }},
        {u"DECLARE"_s, [](Parser &p) { return p.ParseDeclareStatement(); }},
        {u"SET"_s, [](Parser &p) { return p.setStatement(); }},
        {u"IF"_s, [](Parser &p) { return p.ParseIfStatement(); }},
        {u"WHILE"_s, [](Parser &p) { return p.ParseWhileStatement(); }},
        {u"BEGIN"_s, [](Parser &p) { return p.BeginStatement(); }},
        {u"RETURN"_s, [](Parser &p) { return p.ParseReturnStatement(); }},
        {u"EXEC"_s, [](Parser &p) { return p.ParseExecuteStatement(true); }},
        {u"EXECUTE"_s, [](Parser &p) { return p.ParseExecuteStatement(true); }},
        {u"COMMIT"_s, [](Parser &p) { return p.Transaction(StatementKind::Commit); }},
        {u"ROLLBACK"_s, [](Parser &p) { return p.Transaction(StatementKind::Rollback); }},
        {u"SAVE"_s, [](Parser &p) { return p.Transaction(StatementKind::SaveTransaction); }},
        {u"THROW"_s, [](Parser &p) { return p.ThrowStatement(); }},
        {u"RAISERROR"_s, [](Parser &p) { return p.RaiseErrorStatement(); }},
        {u"PRINT"_s, [](Parser &p) { return p.ParsePrintStatement(); }},
        {u"CREATE"_s, [](Parser &p) { return p.CreateStatement(); }},
        {u"ALTER"_s, [](Parser &p) { return p.AlterStatement(); }},
        {u"DROP"_s, [](Parser &p) { return p.ParseDropStatement(); }},
    };
    if (Peek().kind != TokenKind::Word && !AtSymbol(QLatin1String("(")))
        Refuse();
    if (AtSymbol(QLatin1String("(")))
        return ParseSelectStatement({});
    const QString word = Peek().text.toUpper();
    if (word == u"BREAK" || word == u"CONTINUE") {
        Take();
        return std::make_unique<PlainStatement>(word == u"BREAK" ? StatementKind::Break : StatementKind::Continue);
    }
    const auto found = table.constFind(word);
    if (found != table.cend())
        return (*found)(*this);
    RefuseUnsupported();
    Refuse();
}

bool Parser::AtStatementEnd() const
{
    return AtEnd() || AtSymbol(QLatin1String(";")) || At(QLatin1String("END"));
}

std::vector<StatementPtr> Parser::StatementsUntilEnd()
{
    std::vector<StatementPtr> statements;
    while (AcceptSymbol(QLatin1String(";"))) {
    }
    while (!At(QLatin1String("END")))
        statements.push_back(ParseStatement());
    if (statements.empty())
        Refuse();
    return statements;
}

StatementPtr Parser::WithStatement()
{
    std::vector<CommonTable> tables = CommonTables();
    if (At(QLatin1String("INSERT")))
        return ParseInsertStatement(std::move(tables));
    if (At(QLatin1String("UPDATE")))
        return ParseUpdateStatement(std::move(tables));
    if (At(QLatin1String("DELETE")))
        return ParseDeleteStatement(std::move(tables));
    return ParseSelectStatement(std::move(tables));
}

StatementPtr Parser::ParseSelectStatement(std::vector<CommonTable> with)
{
    auto result = std::make_unique<SelectStatement>();
    result->query = ParseQuery();
    if (!with.empty())
        result->query.with = std::move(with);
    return result;
}

/// The table that a statement changes, a table variable among them.
ObjectName Parser::ChangedTable()
{
    ObjectName result;
    if (Peek().kind == TokenKind::Variable)
        result.name = Take().text;
    else
        result = ParseObjectName();
    SkipHints();
    return result;
}

/// Which rows an UPDATE or DELETE is about, and what it tells of them.
template <class Change> void Parser::ParseChangedRows(Change &change)
{
    change.output = OutputClause();
    if (Accept(QLatin1String("FROM")))
        change.from = TableSources();
    if (Accept(QLatin1String("WHERE")))
        change.where = Condition();
    SkipOptionClause();
}

StatementPtr Parser::ParseInsertStatement(std::vector<CommonTable> with)
{
    auto result = std::make_unique<InsertStatement>();
    result->with = std::move(with);
    Expect(QLatin1String("INSERT"));
    Accept(QLatin1String("INTO"));
    result->table = ChangedTable();
    const bool nestedSelect = At(QLatin1String("SELECT"), 1) || At(QLatin1String("WITH"), 1);
    if (AtSymbol(QLatin1String("(")) && !nestedSelect)
        result->columns = NameList();
    result->output = OutputClause();
    if (Accept(QLatin1String("VALUES"))) {
        result->rows = RowValues();
    } else if (Accept(QLatin1String("DEFAULT"))) {
        Expect(QLatin1String("VALUES"));
        result->defaultValues = true;
    } else if (At(QLatin1String("EXEC")) || At(QLatin1String("EXECUTE"))) {
        StatementPtr call = ParseExecuteStatement(true);
        if (call->kind != StatementKind::Execute)
            Unsupported(u"INSERT … EXEC ('…')"_s);
        result->execute.reset(static_cast<ExecuteStatement *>(call.release()));
    } else {
        result->query = std::make_unique<Query>(ParseQuery());
    }
    return result;
}

StatementPtr Parser::ParseUpdateStatement(std::vector<CommonTable> with)
{
    auto result = std::make_unique<UpdateStatement>();
    result->with = std::move(with);
    Expect(QLatin1String("UPDATE"));
    result->top = TopClause(nullptr);
    result->target = ChangedTable();
    Expect(QLatin1String("SET"));
    do {
        Assignment assignment;
        if (Peek().kind == TokenKind::Variable)
            Unsupported(u"UPDATE … SET @variable"_s);
        assignment.column = Name();
        if (AcceptSymbol(QLatin1String(".")))
            assignment.column = Name();
        const bool compound = Peek().kind == TokenKind::Symbol && Peek().text.size() == 2 &&
                              Peek().text.endsWith(u'=') && QStringView(u"+-*/%&|^").contains(Peek().text[0]);
        if (compound) {
            ExpressionPtr sum = Make(ExpressionKind::Arithmetic);
            sum->name = Take().text.left(1);
            ExpressionPtr column = Make(ExpressionKind::Column);
            column->name = assignment.column;
            sum->args.push_back(std::move(column));
            sum->args.push_back(ParseValue());
            assignment.value = std::move(sum);
        } else {
            ExpectSymbol(QLatin1String("="));
            assignment.value = ParseValue();
        }
        result->assignments.push_back(std::move(assignment));
    } while (AcceptSymbol(QLatin1String(",")));
    ParseChangedRows(*result);
    return result;
}

StatementPtr Parser::ParseDeleteStatement(std::vector<CommonTable> with)
{
    auto result = std::make_unique<DeleteStatement>();
    result->with = std::move(with);
    Expect(QLatin1String("DELETE"));
    result->top = TopClause(nullptr);
    Accept(QLatin1String("FROM"));
    result->target = ChangedTable();
    ParseChangedRows(*result);
    return result;
}

StatementPtr Parser::ParseTruncateStatement()
{
    auto result = std::make_unique<TruncateStatement>();
    Expect(QLatin1String("TRUNCATE"));
    Expect(QLatin1String("TABLE"));
    result->table = ParseObjectName();
    return result;
}

} // namespace tsql
