#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/// The sources of FROM that bear the name: as alias, or as the table they stand for.
void SourcesNamed(const TableSource &source, const ObjectName &target, bool byAlias,
                  std::vector<const TableSource *> &found)
{
    if (source.kind == TableSource::Kind::Join) {
        SourcesNamed(*source.left, target, byAlias, found);
        SourcesNamed(*source.right, target, byAlias, found);
        return;
    }
    const bool named = source.kind == TableSource::Kind::Named;
    const bool alias = target.schema.isEmpty() && SameName(source.alias, target.name);
    if (byAlias ? alias : named && source.name.KeyText() == target.KeyText())
        found.push_back(&source);
}

/// The source in FROM that UPDATE or DELETE changes; null when FROM does not name the table.
const TableSource *SourceNamed(const TableSource *from, const ObjectName &target, int line)
{
    if (from == nullptr)
        return nullptr;
    std::vector<const TableSource *> found;
    SourcesNamed(*from, target, true, found);
    if (found.empty())
        SourcesNamed(*from, target, false, found);
    if (found.size() > 1)
        throw Error(8154, {target.Display()}, line);
    return found.empty() ? nullptr : found.front();
}

const CommonTable *CommonNamed(const std::vector<CommonTable> &with, const ObjectName &name)
{
    const auto found = std::find_if(with.begin(), with.end(), [&name](const CommonTable &table) {
        return name.schema.isEmpty() && SameName(table.name, name.name);
    });
    return found == with.end() ? nullptr : &*found;
}

} // namespace

/// What UPDATE or DELETE changes, and the text that its rows are looked for in when it is more than the table.
template <class Change> ChangedRows Writer::FindChangedRows(const Change &statement, Scope &scope)
{
    const TableSource *from = statement.from.get();
    const TableSource *found = SourceNamed(from, statement.target, statement.line);
    const ObjectName &name =
        found != nullptr && found->kind == TableSource::Kind::Named ? found->name : statement.target;
    const bool derived = found != nullptr && found->kind == TableSource::Kind::Derived;
    const CommonTable *common = derived ? nullptr : CommonNamed(statement.with, name);
    if (derived || common != nullptr) {
        if (from != nullptr && from->kind == TableSource::Kind::Join)
            throw Error(wording::ChangedQueryInJoin, {statement.target.name}, statement.line);
        return derived ? RowsOfQuery(*found->query, found->columnAliases, found->alias, scope)
                       : RowsOfQuery(*common->query, common->columns,
                                     found != nullptr && !found->alias.isEmpty() ? found->alias : common->name, scope);
    }
    if (found != nullptr && found->kind != TableSource::Kind::Named)
        throw Error(wording::ChangedRowsOf, {statement.target.name}, statement.line);
    ChangedRows rows;
    rows.table = WritableTable(name, found != nullptr ? found->line : statement.line);
    const QString alias = found != nullptr ? found->alias : QString();
    if (from != nullptr && from != found)
        rows.from = WriteSource(*from, scope, nullptr);
    if (found != nullptr && from != found) {
        for (const Source &source : scope.sources) {
            if (SameName(source.name, alias.isEmpty() ? name.name : alias))
                rows.rowid = source.columns.front().sql.section(u'.', 0, 0) + u"._rowid_"_s;
        }
        return rows;
    }
    if (from != nullptr && found == nullptr) {
        // A table that FROM leaves out is joined to it; WHERE says how.
        const QString own = NextAlias();
        AddSource(scope, SourceOf(*rows.table, {}, own), statement.line);
        rows.from += u" JOIN %1 AS %2"_s.arg(rows.table->sqliteName, own);
        rows.rowid = own + u"._rowid_"_s;
        return rows;
    }
    scope.sources.push_back(SourceOf(*rows.table, alias, u"t0"_s));
    return rows;
}

/// The rows of the one table that a common or derived table selects from, found through that query.
ChangedRows Writer::RowsOfQuery(const Query &query, const std::vector<QString> &names, const QString &alias,
                                Scope &scope)
{
    const SelectCore *core = query.body->core.get();
    const bool plain = core != nullptr && core->from && core->from->kind == TableSource::Kind::Named &&
                       !FindCommon(core->from->name.name, scope) && m_catalogue.FindTable(core->from->name) &&
                       !core->distinct && core->groupBy.empty() && !core->having && !query.forXml &&
                       std::none_of(core->items.begin(), core->items.end(),
                                    [](const SelectItem &item) { return HasAggregate(*item.value); });
    if (!plain)
        throw Error(wording::ChangedQuery, {alias}, query.line);
    ChangedRows rows;
    rows.table = m_catalogue.FindTable(core->from->name);
    rows.throughQuery = true;
    m_rowidCore = core;
    QueryText text = this->WriteQuery(query, &scope);
    m_rowidCore = nullptr;
    text.columns.pop_back();
    RenameColumns(text.columns, names, alias, query.line);
    for (std::size_t i = 0; i < text.columns.size(); ++i)
        rows.columns.insert(text.columns[i].name.toCaseFolded(), m_rowidColumns[i]);
    const QString own = NextAlias();
    AddSource(scope, ShapeSource(text.columns, own, alias), query.line);
    rows.from = u"(%1) AS %2"_s.arg(text.sql, own);
    rows.rowid = u"%1.\"c%2\""_s.arg(own).arg(text.columns.size() + 1);
    return rows;
}

/// Whether a query of the statement looks at what the statement changes: at the table, or at one whose keys follow.
bool Writer::LooksAtChanges(const Table &table) const
{
    return std::any_of(m_read.begin(), m_read.end(), [&table](const std::shared_ptr<const Table> &read) {
        const auto follows = [](const Reference &reference) {
            return reference.key.onUpdate != KeyAction::NoAction || reference.key.onDelete != KeyAction::NoAction;
        };
        return read->sqliteName == table.sqliteName ||
               std::any_of(read->references.begin(), read->references.end(), follows);
    });
}

/// WHERE for rows that are looked for before the first is changed: `limit` of those that a condition meets.
QString Writer::RowsFoundFirst(const Table &table, const QString &where, const QString &limit)
{
    return u" WHERE _rowid_ IN (SELECT t0._rowid_ FROM %1 AS t0%2%3)"_s.arg(table.sqliteName, where, limit);
}

QString Writer::WriteAssignment(const Assignment &assignment, const ChangedRows &rows, const Scope &scope,
                                QString &column)
{
    const Table &table = *rows.table;
    const QString key = assignment.column.toCaseFolded();
    const int index = table.IndexOf(rows.throughQuery ? rows.columns.value(key) : assignment.column);
    if (index < 0 && rows.columns.contains(key))
        throw Error(4406, {scope.sources.front().name}, assignment.value->line);
    if (index < 0)
        throw Error(207, {assignment.column}, assignment.value->line);
    const Column &definition = table.columns[static_cast<std::size_t>(index)];
    if (definition.identity)
        throw Error(8102, {definition.name}, assignment.value->line);
    column = QuotedName(definition.name);
    if (assignment.value->kind == ExpressionKind::Default)
        return DefaultText(definition, table, u"UPDATE"_s);
    Operand operand = WriteValue(*assignment.value, scope);
    return Assigned(operand, definition, table, u"UPDATE"_s);
}

void Writer::WriteUpdate(const UpdateStatement &statement)
{
    for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (SameName(statement.assignments[i].column, statement.assignments[j].column))
                RefuseTwice(statement.assignments[i].column, statement.line);
        }
    }
    Scope scope;
    const QString with = CommonTables(statement.with, scope);
    const Compiled before = m_out;
    ChangedRows rows = FindChangedRows(statement, scope);
    const Table &table = *rows.table;
    if (statement.top && statement.from && statement.from->kind == TableSource::Kind::Join)
        throw NotSupported(u"UPDATE TOP … FROM"_s, statement.line);
    QString sql = rows.from.isEmpty() ? UpdateInPlace(statement, rows, scope) : UpdateFound(statement, rows, scope);
    if (rows.from.isEmpty() && LooksAtChanges(table)) {
        m_out = before;
        FindAlone(rows, scope);
        sql = UpdateFound(statement, rows, scope);
    }
    m_out.writes = true;
    m_out.target = table.sqliteName;
    m_out.sql = with + u"UPDATE %1 AS t0 SET "_s.arg(table.sqliteName) + sql +
                Returning(statement.output, table, u"inserted"_s);
}

/// SET and WHERE of an update that meets its rows one by one.
QString Writer::UpdateInPlace(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope)
{
    QStringList list;
    for (const Assignment &item : statement.assignments) {
        QString column;
        const QString sql = WriteAssignment(item, rows, scope, column);
        list += column + u" = "_s + sql;
    }
    QString where = statement.where ? u" WHERE "_s + ConditionText(*statement.where, scope) : QString();
    if (statement.top)
        where = RowsFoundFirst(*rows.table, where, LimitText(*statement.top, scope));
    return list.join(u", "_s) + where;
}

/// The table under an alias of its own, for rows that are found before they are changed.
void Writer::FindAlone(ChangedRows &rows, Scope &scope)
{
    const QString own = NextAlias();
    scope.sources = {SourceOf(*rows.table, scope.sources.front().name, own)};
    rows.from = u"%1 AS %2"_s.arg(rows.table->sqliteName, own);
    rows.rowid = own + u"._rowid_"_s;
}

/// The query of the rows (r) and their new values (v0, v1 …).
QString Writer::FoundValues(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope,
                            QStringList &columns)
{
    QStringList values{rows.rowid + u" AS \"r\""_s};
    for (std::size_t i = 0; i < statement.assignments.size(); ++i) {
        QString column;
        const QString sql = WriteAssignment(statement.assignments[i], rows, scope, column);
        values += u"%1 AS \"v%2\""_s.arg(sql, QString::number(i));
        columns += column;
    }
    const QString where = statement.where ? u" WHERE "_s + ConditionText(*statement.where, scope) : QString();
    const QString limit = statement.top ? LimitText(*statement.top, scope) : QString();
    return u"SELECT %1 FROM %2%3%4"_s.arg(values.join(u", "_s), rows.from, where, limit);
}

/// SET and FROM of an update whose rows and new values are all found first, then written by row number.
QString Writer::UpdateFound(const UpdateStatement &statement, const ChangedRows &rows, const Scope &scope)
{
    QStringList columns;
    const QString query = FoundValues(statement, rows, scope, columns);
    QStringList list;
    for (const QString &column : columns)
        list += column + u" = s.\"v%1\""_s.arg(list.size());
    return u"%1 FROM (%2) AS s WHERE t0._rowid_ = s.\"r\""_s.arg(list.join(u", "_s), query);
}

Compiled Writer::NewValues(const UpdateStatement &statement)
{
    Scope scope;
    const QString with = CommonTables(statement.with, scope);
    ChangedRows rows = FindChangedRows(statement, scope);
    if (rows.from.isEmpty())
        FindAlone(rows, scope);
    QStringList columns;
    m_out.sql = with + FoundValues(statement, rows, scope, columns);
    for (const QString &column : columns)
        m_out.columns.push_back({column.sliced(1).chopped(1).replace(u"\"\""_s, u"\""_s), {}, true, {}});
    m_out.target = rows.table->sqliteName;
    return std::move(m_out);
}

void Writer::Remove(const DeleteStatement &statement)
{
    Scope scope;
    const QString with = CommonTables(statement.with, scope);
    const ChangedRows rows = FindChangedRows(statement, scope);
    if (statement.top && statement.from && statement.from->kind == TableSource::Kind::Join)
        throw NotSupported(u"DELETE TOP … FROM"_s, statement.line);
    QString where = statement.where ? u" WHERE "_s + ConditionText(*statement.where, scope) : QString();
    const QString limit = statement.top ? LimitText(*statement.top, scope) : QString();
    if (!rows.from.isEmpty())
        where = u" WHERE _rowid_ IN (SELECT %1 FROM %2%3%4)"_s.arg(rows.rowid, rows.from, where, limit);
    else if (statement.top || LooksAtChanges(*rows.table))
        where = RowsFoundFirst(*rows.table, where, limit);
    m_out.writes = true;
    m_out.sql = with + u"DELETE FROM %1 AS t0"_s.arg(rows.table->sqliteName) + where +
                Returning(statement.output, *rows.table, u"deleted"_s);
}

void Writer::WriteTruncate(const TruncateStatement &statement)
{
    const std::shared_ptr<const Table> table = WritableTable(statement.table, statement.line);
    if (IsReferenced(*table, m_catalogue, {}))
        throw Error(4712, {statement.table.Display()}, statement.line);
    m_out.sql = u"DELETE FROM %1"_s.arg(table->sqliteName);
    m_out.writes = true;
    m_out.countsRows = false;
    if (table->IdentityColumn() != nullptr) {
        const qsizetype point = table->sqliteName.startsWith(u'"') ? -1 : table->sqliteName.indexOf(u'.');
        const QString schema = point < 0 ? u"main."_s : table->sqliteName.left(point + 1);
        const QString plain = point < 0 ? table->name.Display() : table->name.KeyText();
        m_out.then.push_back(u"UPDATE %1sqlite_sequence SET seq = %2 WHERE name = %3"_s.arg(
            schema, QString::number(table->IdentityColumn()->seed - 1), QuotedText(plain)));
    }
}

} // namespace tsql
