#include "tsql/error.h"
#include "tsql/writer_impl.h"

namespace tsql {

/// The table in FROM that UPDATE or DELETE names by alias or by name.
const TableSource *Writer::findSource(const TableSource &source, const ObjectName &target)
{
    if (source.kind == TableSource::Kind::Join) {
        const TableSource *left = findSource(*source.left, target);
        return left != nullptr ? left : findSource(*source.right, target);
    }
    if (source.kind != TableSource::Kind::Named)
        return nullptr;
    const bool byAlias = target.schema.isEmpty() && sameName(source.alias, target.name);
    const bool byName = source.name.key() == target.key();
    return byAlias || byName ? &source : nullptr;
}

std::shared_ptr<const Table> Writer::targetTable(const ObjectName &target, const TableSource *from, QString &name) const
{
    const TableSource *found = from != nullptr ? findSource(*from, target) : nullptr;
    if (found == nullptr) {
        if (from != nullptr)
            throw Error(
                40517,
                u"A FROM clause that does not name the changed table is not supported in this version of the database."_qs,
                from->line);
        name = target.name;
        return writableTable(target, 0);
    }
    name = found->alias.isEmpty() ? found->name.name : found->alias;
    return writableTable(found->name, found->line);
}

/// WHERE for the first n rows that a condition meets.
QString Writer::rowsOfTop(const Expression &top, const Table &table, const QString &where, const Scope &scope)
{
    return u" WHERE _rowid_ IN (SELECT t0._rowid_ FROM %1 AS t0%2%3)"_qs.arg(table.sqliteName, where,
                                                                             limitText(top, scope));
}

QString Writer::assignment(const Assignment &assignment, const Table &table, const Scope &scope, QString &column)
{
    const int index = table.column(assignment.column);
    if (index < 0)
        throw Error(207, u"Invalid column name '%1'."_qs.arg(assignment.column), assignment.value->line);
    const Column &definition = table.columns[static_cast<std::size_t>(index)];
    if (definition.identity)
        throw Error(8102, u"Cannot update identity column '%1'."_qs.arg(definition.name), assignment.value->line);
    column = quotedName(definition.name);
    if (assignment.value->kind == ExpressionKind::Default)
        return defaultText(definition, table, u"UPDATE"_qs);
    Operand operand = value(*assignment.value, scope);
    return assigned(operand, definition, table, u"UPDATE"_qs);
}

void Writer::update(const UpdateStatement &statement)
{
    for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (sameName(statement.assignments[i].column, statement.assignments[j].column))
                refuseTwice(statement.assignments[i].column, statement.line);
        }
    }
    QString name;
    const std::shared_ptr<const Table> table = targetTable(statement.target, statement.from.get(), name);
    Scope scope;
    const QString with = commonTables(statement.with, scope);
    m_out.writes = true;
    if (statement.from && statement.from->kind != TableSource::Kind::Named) {
        if (statement.top)
            throw Error(40517, u"UPDATE TOP … FROM is not supported in this version of the database."_qs,
                        statement.line);
        updateJoined(statement, *table, name, scope);
        m_out.sql = with + m_out.sql + returning(statement.output, *table, u"inserted"_qs);
        return;
    }
    scope.sources.push_back(tableSource(*table, name, u"t0"_qs));
    QStringList list;
    for (const Assignment &item : statement.assignments) {
        QString column;
        const QString sql = assignment(item, *table, scope, column);
        list += column + u" = "_qs + sql;
    }
    QString where = statement.where ? u" WHERE "_qs + conditionText(*statement.where, scope) : QString();
    if (statement.top)
        where = rowsOfTop(*statement.top, *table, where, scope);
    m_out.target = table->sqliteName;
    m_out.sql = with + u"UPDATE %1 AS t0 SET %2"_qs.arg(table->sqliteName, list.join(u", "_qs)) + where +
                returning(statement.output, *table, u"inserted"_qs);
}

/// UPDATE … FROM a join: the rows and their new values are found first, then written by row number.
void Writer::updateJoined(const UpdateStatement &statement, const Table &table, const QString &name, Scope &scope)
{
    const QString from = source(*statement.from, scope, nullptr);
    QString alias;
    for (const Source &source : scope.sources) {
        if (sameName(source.name, name))
            alias = source.columns.front().sql.section(u'.', 0, 0);
    }
    QStringList list;
    QStringList values{alias + u"._rowid_ AS \"r\""_qs};
    for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
        QString column;
        const QString sql = assignment(statement.assignments[i], table, scope, column);
        values += u"%1 AS \"v%2\""_qs.arg(sql, QString::number(i));
        list += column + u" = s.\"v%1\""_qs.arg(i);
    }
    const QString where = statement.where ? u" WHERE "_qs + conditionText(*statement.where, scope) : QString();
    m_out.target = table.sqliteName;
    m_out.sql =
        u"UPDATE %1 AS t0 SET %2"_qs.arg(table.sqliteName, list.join(u", "_qs)) +
        u" FROM (SELECT %1 FROM %2%3) AS s WHERE t0._rowid_ = s.\"r\""_qs.arg(values.join(u", "_qs), from, where);
}

void Writer::remove(const DeleteStatement &statement)
{
    QString name;
    const std::shared_ptr<const Table> table = targetTable(statement.target, statement.from.get(), name);
    Scope scope;
    const QString with = commonTables(statement.with, scope);
    m_out.writes = true;
    QString where;
    if (statement.from && statement.from->kind != TableSource::Kind::Named) {
        if (statement.top)
            throw Error(40517, u"DELETE TOP … FROM is not supported in this version of the database."_qs,
                        statement.line);
        const QString from = source(*statement.from, scope, nullptr);
        QString alias;
        for (const Source &source : scope.sources) {
            if (sameName(source.name, name))
                alias = source.columns.front().sql.section(u'.', 0, 0);
        }
        const QString condition = statement.where ? u" WHERE "_qs + conditionText(*statement.where, scope) : QString();
        where = u" WHERE _rowid_ IN (SELECT %1._rowid_ FROM %2%3)"_qs.arg(alias, from, condition);
    } else {
        scope.sources.push_back(tableSource(*table, name, u"t0"_qs));
        where = statement.where ? u" WHERE "_qs + conditionText(*statement.where, scope) : QString();
        if (statement.top)
            where = rowsOfTop(*statement.top, *table, where, scope);
    }
    m_out.sql = with + u"DELETE FROM %1 AS t0"_qs.arg(table->sqliteName) + where +
                returning(statement.output, *table, u"deleted"_qs);
}

void Writer::truncate(const TruncateStatement &statement)
{
    const std::shared_ptr<const Table> table = writableTable(statement.table, statement.line);
    if (isReferenced(*table, m_catalogue, {}))
        throw Error(4712,
                    u"Cannot truncate table '%1' because it is being referenced by a FOREIGN KEY constraint."_qs.arg(
                        statement.table.display()),
                    statement.line);
    m_out.sql = u"DELETE FROM %1"_qs.arg(table->sqliteName);
    m_out.writes = true;
    m_out.countsRows = false;
    if (table->identityColumn() != nullptr) {
        const qsizetype point = table->sqliteName.startsWith(u'"') ? -1 : table->sqliteName.indexOf(u'.');
        const QString schema = point < 0 ? u"main."_qs : table->sqliteName.left(point + 1);
        const QString plain = point < 0 ? table->name.display() : table->name.key();
        m_out.then.push_back(u"UPDATE %1sqlite_sequence SET seq = %2 WHERE name = %3"_qs.arg(
            schema, QString::number(table->identityColumn()->seed - 1), quotedText(plain)));
    }
}

} // namespace tsql
