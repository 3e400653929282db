#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

[[noreturn]] void NullRefused(const Column &column, const Table &table, const QString &verb)
{
    throw Error(515, {column.name, table.name.Display(), verb});
}

} // namespace

void RefuseTwice(const QString &column, int line)
{
    throw Error(264, {column}, line);
}

std::shared_ptr<const Table> Writer::WritableTable(const ObjectName &name, int line) const
{
    if (std::shared_ptr<const Table> table = m_catalogue.FindTable(name))
        return table;
    if (name.name.startsWith(u'@'))
        throw Error(1087, {name.name}, line);
    if (m_catalogue.FindView(name))
        throw Error(4403, {name.Display()}, line);
    throw Error(208, {name.Display()}, line);
}

/// A value as the column stores it: converted, refused when too long, and never NULL where SQLite would put a
/// number of its own.
QString Writer::Assigned(Operand &operand, const Column &column, const Table &table, const QString &verb)
{
    if (operand.IsNull()) {
        if (!column.nullable)
            NullRefused(column, table, verb);
        return u"NULL"_s;
    }
    const bool constant = operand.pending && operand.pending->source != Parameter::Source::Variable;
    const QString sql = Convert(operand, {column.type, Conversion::Assign, table.name.Display(), column.name});
    const bool guarded = SameName(column.name, table.rowidColumn) && !constant;
    return guarded ? u"not_null(%1, %2, %3, '%4')"_s.arg(sql, QuotedText(table.name.Display()), QuotedText(column.name),
                                                         verb)
                   : sql;
}

QString Writer::DefaultText(const Column &column, const Table &table, const QString &verb)
{
    if (!column.defaultValue) {
        if (!column.nullable)
            NullRefused(column, table, verb);
        return u"NULL"_s;
    }
    const Constants constants(*this, true);
    static const Scope nowhere;
    Operand operand = WriteValue(*column.defaultValue, nowhere);
    return Assigned(operand, column, table, verb);
}

std::vector<const Column *> Writer::InsertColumns(const InsertStatement &statement, const Table &table) const
{
    const bool identityGiven = m_options.identityInsert.contains(table.name.KeyText());
    std::vector<const Column *> columns;
    if (statement.columns.empty()) {
        for (const Column &column : table.columns) {
            if (!column.identity)
                columns.push_back(&column);
        }
        return columns;
    }
    for (const QString &name : statement.columns) {
        const int index = table.IndexOf(name);
        if (index < 0)
            throw Error(207, {name}, statement.line);
        const Column &column = table.columns[static_cast<std::size_t>(index)];
        if (column.identity && !identityGiven)
            throw Error(544, {table.name.Display()}, statement.line);
        if (std::find(columns.begin(), columns.end(), &column) != columns.end())
            RefuseTwice(name, statement.line);
        columns.push_back(&column);
    }
    return columns;
}

/// The columns that are not given but get a value: those with a default. A column that may not stay empty is refused.
std::vector<const Column *> Writer::DefaultedColumns(const std::vector<const Column *> &given, const Table &table) const
{
    std::vector<const Column *> columns;
    for (const Column &column : table.columns) {
        if (column.identity || std::find(given.begin(), given.end(), &column) != given.end())
            continue;
        if (column.defaultValue)
            columns.push_back(&column);
        else if (!column.nullable)
            NullRefused(column, table, u"INSERT"_s);
    }
    return columns;
}

QString Writer::InsertRows(const InsertStatement &statement, const Table &table,
                           const std::vector<const Column *> &columns, const std::vector<const Column *> &defaults)
{
    static const Scope nowhere;
    const QString verb = u"INSERT"_s;
    QStringList rows;
    for (const std::vector<ExpressionPtr> &row : statement.rows) {
        if (row.size() != columns.size() && statement.columns.empty())
            throw Error(213, {}, statement.line);
        if (row.size() != columns.size())
            throw Error(row.size() < columns.size() ? 109 : 110, {}, statement.line);
        QStringList cells;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (row[i]->kind == ExpressionKind::Default) {
                cells += DefaultText(*columns[i], table, verb);
                continue;
            }
            Operand operand = WriteValue(*row[i], nowhere);
            cells += Assigned(operand, *columns[i], table, verb);
        }
        for (const Column *column : defaults)
            cells += DefaultText(*column, table, verb);
        rows += u'(' + cells.join(u", "_s) + u')';
    }
    return u"VALUES "_s + rows.join(u", "_s);
}

QString Writer::InsertQuery(const InsertStatement &statement, const Table &table,
                            const std::vector<const Column *> &columns, const std::vector<const Column *> &defaults,
                            const Scope &scope)
{
    std::vector<Target> targets;
    bool guards = false;
    for (const Column *column : columns) {
        targets.push_back({column->type, Conversion::Assign, table.name.Display(), column->name});
        guards = guards || SameName(column->name, table.rowidColumn);
    }
    QueryText text = WriteQuery(*statement.query, &scope, &targets);
    if (defaults.empty() && !guards)
        return text.sql;
    QStringList cells;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const QString cell = u"\"c%1\""_s.arg(i + 1);
        const bool guarded = SameName(columns[i]->name, table.rowidColumn);
        cells += guarded ? u"not_null(%1, %2, %3, 'INSERT')"_s.arg(cell, QuotedText(table.name.Display()),
                                                                   QuotedText(columns[i]->name))
                         : cell;
    }
    for (const Column *column : defaults)
        cells += DefaultText(*column, table, u"INSERT"_s);
    return u"SELECT %1 FROM (%2)"_s.arg(cells.join(u", "_s), text.sql);
}

void Writer::WriteInsert(const InsertStatement &statement)
{
    if (statement.execute)
        throw Error(wording::InsertedProcedure, {}, statement.line);
    const std::shared_ptr<const Table> table = WritableTable(statement.table, statement.line);
    Scope commons;
    const QString with = CommonTables(statement.with, commons);
    std::vector<const Column *> columns;
    if (!statement.defaultValues)
        columns = InsertColumns(statement, *table);
    const std::vector<const Column *> defaults = DefaultedColumns(columns, *table);
    QString body;
    if (statement.defaultValues) {
        QStringList cells;
        for (const Column *column : defaults)
            cells += DefaultText(*column, *table, u"INSERT"_s);
        body = defaults.empty() ? u"DEFAULT VALUES"_s : u"VALUES (%1)"_s.arg(cells.join(u", "_s));
    } else {
        body = statement.query ? InsertQuery(statement, *table, columns, defaults, commons)
                               : InsertRows(statement, *table, columns, defaults);
    }
    std::vector<QString> names;
    names.reserve(columns.size() + defaults.size());
    for (const Column *column : columns)
        names.push_back(column->name);
    for (const Column *column : defaults)
        names.push_back(column->name);
    const QString list = names.empty() ? QString() : u" (%1)"_s.arg(NameListText(names));
    m_out.sql = with + u"INSERT INTO %1%2 "_s.arg(table->sqliteName, list) + body +
                Returning(statement.output, *table, u"inserted"_s);
    m_out.writes = true;
    m_out.setsIdentity = table->IdentityColumn() != nullptr;
}

/// OUTPUT INSERTED.x, … as RETURNING.
QString Writer::Returning(const std::vector<SelectItem> &items, const Table &table, const QString &allowed)
{
    if (items.empty())
        return {};
    Scope scope;
    scope.sources.push_back(SourceOf(table, allowed, {}));
    QStringList list;
    for (const SelectItem &item : items) {
        const Expression &node = *item.value;
        const bool named = node.kind == ExpressionKind::Star || node.kind == ExpressionKind::Column;
        const bool before = named && allowed == u"inserted" && SameName(node.qualifier, u"deleted");
        if (before && m_out.writes)
            throw Error(wording::OutputOfFormerValues, {}, node.line);
        if (named && !SameName(node.qualifier, allowed))
            throw Error(4104, {node.qualifier, node.name}, node.line);
        if (node.kind == ExpressionKind::Star) {
            for (const SourceColumn &column : scope.sources.front().columns) {
                list += column.sql;
                m_out.columns.push_back({column.name, column.type, column.nullable, column.table});
            }
            continue;
        }
        const std::size_t read = m_read.size();
        Operand operand = WriteValue(node, scope);
        if (m_read.size() > read) // it would see the statement half done
            throw Error(10705, {}, node.line);
        const QString name = !item.alias.isEmpty()                 ? item.alias
                             : node.kind == ExpressionKind::Column ? node.name
                                                                   : QString();
        list += text(operand);
        m_out.columns.push_back({name, operand.type, operand.nullable, operand.table});
    }
    return u" RETURNING "_s + list.join(u", "_s);
}

} // namespace tsql
