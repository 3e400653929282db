#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tsql {

StatementPtr Parser::statement()
{
    const Depth depth(*this);
    while (acceptSymbol(QLatin1String(";"))) {
    }
    const std::size_t first = m_pos;
    const int line = peek().line;
    m_maxRecursion = Statement::DefaultRecursion;
    StatementPtr result = statementBody();
    result->line = line;
    result->maxRecursion = std::exchange(m_maxRecursion, Statement::DefaultRecursion);
    result->text = textBetween(first);
    while (acceptSymbol(QLatin1String(";"))) {
    }
    return result;
}

/// Statements of the dialect that are not carried out are named, so that nobody looks for a slip of the pen.
void Parser::refuseUnsupported() const
{
    static const QSet<QString> known = {
        u"MERGE"_s, u"GOTO"_s,   u"WAITFOR"_s,     u"OPEN"_s,       u"FETCH"_s,   u"CLOSE"_s,  u"DEALLOCATE"_s,
        u"GRANT"_s, u"REVOKE"_s, u"DENY"_s,        u"BACKUP"_s,     u"RESTORE"_s, u"DBCC"_s,   u"USE"_s,
        u"BULK"_s,  u"KILL"_s,   u"RECONFIGURE"_s, u"CHECKPOINT"_s, u"DISABLE"_s, u"ENABLE"_s,
    };
    const QString word = peek().text.toUpper();
    if (peek().kind == TokenKind::Word && known.contains(word))
        unsupported(word);
}

StatementPtr Parser::statementBody()
{
    using Parse = StatementPtr (*)(Parser &);
    static const QHash<QString, Parse> table = {
        {u"SELECT"_s, [](Parser &p) { return p.selectStatement({}); }},
        {u"INSERT"_s, [](Parser &p) { return p.insertStatement({}); }},
        {u"UPDATE"_s, [](Parser &p) { return p.updateStatement({}); }},
        {u"DELETE"_s, [](Parser &p) { return p.deleteStatement({}); }},
        {u"WITH"_s, [](Parser &p) { return p.withStatement(); }},
        {u"TRUNCATE"_s, [](Parser &p) { return p.truncateStatement(); }},
        {u"DECLARE"_s, [](Parser &p) { return p.declareStatement(); }},
        {u"SET"_s, [](Parser &p) { return p.setStatement(); }},
        {u"IF"_s, [](Parser &p) { return p.ifStatement(); }},
        {u"WHILE"_s, [](Parser &p) { return p.whileStatement(); }},
        {u"BEGIN"_s, [](Parser &p) { return p.beginStatement(); }},
        {u"RETURN"_s, [](Parser &p) { return p.returnStatement(); }},
        {u"EXEC"_s, [](Parser &p) { return p.executeStatement(true); }},
        {u"EXECUTE"_s, [](Parser &p) { return p.executeStatement(true); }},
        {u"COMMIT"_s, [](Parser &p) { return p.transaction(StatementKind::Commit); }},
        {u"ROLLBACK"_s, [](Parser &p) { return p.transaction(StatementKind::Rollback); }},
        {u"SAVE"_s, [](Parser &p) { return p.transaction(StatementKind::SaveTransaction); }},
        {u"THROW"_s, [](Parser &p) { return p.throwStatement(); }},
        {u"RAISERROR"_s, [](Parser &p) { return p.raiseErrorStatement(); }},
        {u"PRINT"_s, [](Parser &p) { return p.printStatement(); }},
        {u"CREATE"_s, [](Parser &p) { return p.createStatement(); }},
        {u"ALTER"_s, [](Parser &p) { return p.alterStatement(); }},
        {u"DROP"_s, [](Parser &p) { return p.dropStatement(); }},
    };
    if (peek().kind != TokenKind::Word && !atSymbol(QLatin1String("(")))
        refuse();
    if (atSymbol(QLatin1String("(")))
        return selectStatement({});
    const QString word = peek().text.toUpper();
    if (word == u"BREAK" || word == u"CONTINUE") {
        take();
        return std::make_unique<PlainStatement>(word == u"BREAK" ? StatementKind::Break : StatementKind::Continue);
    }
    const auto found = table.constFind(word);
    if (found != table.cend())
        return (*found)(*this);
    refuseUnsupported();
    refuse();
}

bool Parser::atStatementEnd() const
{
    return atEnd() || atSymbol(QLatin1String(";")) || at(QLatin1String("END"));
}

std::vector<StatementPtr> Parser::statementsUntilEnd()
{
    std::vector<StatementPtr> statements;
    while (acceptSymbol(QLatin1String(";"))) {
    }
    while (!at(QLatin1String("END")))
        statements.push_back(statement());
    if (statements.empty())
        refuse();
    return statements;
}

StatementPtr Parser::withStatement()
{
    std::vector<CommonTable> tables = commonTables();
    if (at(QLatin1String("INSERT")))
        return insertStatement(std::move(tables));
    if (at(QLatin1String("UPDATE")))
        return updateStatement(std::move(tables));
    if (at(QLatin1String("DELETE")))
        return deleteStatement(std::move(tables));
    return selectStatement(std::move(tables));
}

StatementPtr Parser::selectStatement(std::vector<CommonTable> with)
{
    auto result = std::make_unique<SelectStatement>();
    result->query = query();
    if (!with.empty())
        result->query.with = std::move(with);
    return result;
}

/// The table that a statement changes, a table variable among them.
ObjectName Parser::changedTable()
{
    ObjectName result;
    if (peek().kind == TokenKind::Variable)
        result.name = take().text;
    else
        result = objectName();
    skipHints();
    return result;
}

/// Which rows an UPDATE or DELETE is about, and what it tells of them.
template <class Change> void Parser::changedRows(Change &change)
{
    change.output = outputClause();
    if (accept(QLatin1String("FROM")))
        change.from = tableSources();
    if (accept(QLatin1String("WHERE")))
        change.where = condition();
    skipOptionClause();
}

StatementPtr Parser::insertStatement(std::vector<CommonTable> with)
{
    auto result = std::make_unique<InsertStatement>();
    result->with = std::move(with);
    expect(QLatin1String("INSERT"));
    accept(QLatin1String("INTO"));
    result->table = changedTable();
    const bool nestedSelect = at(QLatin1String("SELECT"), 1) || at(QLatin1String("WITH"), 1);
    if (atSymbol(QLatin1String("(")) && !nestedSelect)
        result->columns = nameList();
    result->output = outputClause();
    if (accept(QLatin1String("VALUES"))) {
        result->rows = rowValues();
    } else if (accept(QLatin1String("DEFAULT"))) {
        expect(QLatin1String("VALUES"));
        result->defaultValues = true;
    } else if (at(QLatin1String("EXEC")) || at(QLatin1String("EXECUTE"))) {
        StatementPtr call = executeStatement(true);
        if (call->kind != StatementKind::Execute)
            unsupported(u"INSERT … EXEC ('…')"_s);
        result->execute.reset(static_cast<ExecuteStatement *>(call.release()));
    } else {
        result->query = std::make_unique<Query>(query());
    }
    return result;
}

StatementPtr Parser::updateStatement(std::vector<CommonTable> with)
{
    auto result = std::make_unique<UpdateStatement>();
    result->with = std::move(with);
    expect(QLatin1String("UPDATE"));
    result->top = topClause(nullptr);
    result->target = changedTable();
    expect(QLatin1String("SET"));
    do {
        Assignment assignment;
        if (peek().kind == TokenKind::Variable)
            unsupported(u"UPDATE … SET @variable"_s);
        assignment.column = name();
        if (acceptSymbol(QLatin1String(".")))
            assignment.column = name();
        const bool compound = peek().kind == TokenKind::Symbol && peek().text.size() == 2 &&
                              peek().text.endsWith(u'=') && QStringView(u"+-*/%&|^").contains(peek().text[0]);
        if (compound) {
            ExpressionPtr sum = make(ExpressionKind::Arithmetic);
            sum->name = take().text.left(1);
            ExpressionPtr column = make(ExpressionKind::Column);
            column->name = assignment.column;
            sum->args.push_back(std::move(column));
            sum->args.push_back(value());
            assignment.value = std::move(sum);
        } else {
            expectSymbol(QLatin1String("="));
            assignment.value = value();
        }
        result->assignments.push_back(std::move(assignment));
    } while (acceptSymbol(QLatin1String(",")));
    changedRows(*result);
    return result;
}

StatementPtr Parser::deleteStatement(std::vector<CommonTable> with)
{
    auto result = std::make_unique<DeleteStatement>();
    result->with = std::move(with);
    expect(QLatin1String("DELETE"));
    result->top = topClause(nullptr);
    accept(QLatin1String("FROM"));
    result->target = changedTable();
    changedRows(*result);
    return result;
}

StatementPtr Parser::truncateStatement()
{
    auto result = std::make_unique<TruncateStatement>();
    expect(QLatin1String("TRUNCATE"));
    expect(QLatin1String("TABLE"));
    result->table = objectName();
    return result;
}

} // namespace tsql
