#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

[[noreturn]] void nullRefused(const Column &column, const Table &table, const QString &verb)
{
    throw Error(515, {column.name, table.name.display(), verb});
}

} // namespace

void refuseTwice(const QString &column, int line)
{
    throw Error(264, {column}, line);
}

std::shared_ptr<const Table> Writer::writableTable(const ObjectName &name, int line) const
{
    if (std::shared_ptr<const Table> table = m_catalogue.table(name))
        return table;
    if (name.name.startsWith(u'@'))
        throw Error(1087, {name.name}, line);
    if (m_catalogue.view(name))
        throw Error(4403, {name.display()}, line);
    throw Error(208, {name.display()}, line);
}

/// A value as the column stores it: converted, refused when too long, and never NULL where SQLite would put a
/// number of its own.
QString Writer::assigned(Operand &operand, const Column &column, const Table &table, const QString &verb)
{
    if (operand.isNull()) {
        if (!column.nullable)
            nullRefused(column, table, verb);
        return u"NULL"_s;
    }
    const bool constant = operand.pending && operand.pending->source != Parameter::Source::Variable;
    const QString sql = convert(operand, {column.type, Conversion::Assign, table.name.display(), column.name});
    const bool guarded = sameName(column.name, table.rowidColumn) && !constant;
    return guarded ? u"not_null(%1, %2, %3, '%4')"_s.arg(sql, quotedText(table.name.display()), quotedText(column.name),
                                                         verb)
                   : sql;
}

QString Writer::defaultText(const Column &column, const Table &table, const QString &verb)
{
    if (!column.defaultValue) {
        if (!column.nullable)
            nullRefused(column, table, verb);
        return u"NULL"_s;
    }
    const Constants constants(*this, true);
    static const Scope nowhere;
    Operand operand = value(*column.defaultValue, nowhere);
    return assigned(operand, column, table, verb);
}

std::vector<const Column *> Writer::insertColumns(const InsertStatement &statement, const Table &table) const
{
    const bool identityGiven = m_options.identityInsert.contains(table.name.key());
    std::vector<const Column *> columns;
    if (statement.columns.empty()) {
        for (const Column &column : table.columns) {
            if (!column.identity)
                columns.push_back(&column);
        }
        return columns;
    }
    for (const QString &name : statement.columns) {
        const int index = table.column(name);
        if (index < 0)
            throw Error(207, {name}, statement.line);
        const Column &column = table.columns[static_cast<std::size_t>(index)];
        if (column.identity && !identityGiven)
            throw Error(544, {table.name.display()}, statement.line);
        if (std::find(columns.begin(), columns.end(), &column) != columns.end())
            refuseTwice(name, statement.line);
        columns.push_back(&column);
    }
    return columns;
}

/// The columns that are not given but get a value: those with a default. A column that may not stay empty is refused.
std::vector<const Column *> Writer::defaultedColumns(const std::vector<const Column *> &given, const Table &table) const
{
    std::vector<const Column *> columns;
    for (const Column &column : table.columns) {
        if (column.identity || std::find(given.begin(), given.end(), &column) != given.end())
            continue;
        if (column.defaultValue)
            columns.push_back(&column);
        else if (!column.nullable)
            nullRefused(column, table, u"INSERT"_s);
    }
    return columns;
}

QString Writer::insertRows(const InsertStatement &statement, const Table &table,
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
                cells += defaultText(*columns[i], table, verb);
                continue;
            }
            Operand operand = value(*row[i], nowhere);
            cells += assigned(operand, *columns[i], table, verb);
        }
        for (const Column *column : defaults)
            cells += defaultText(*column, table, verb);
        rows += u'(' + cells.join(u", "_s) + u')';
    }
    return u"VALUES "_s + rows.join(u", "_s);
}

QString Writer::insertQuery(const InsertStatement &statement, const Table &table,
                            const std::vector<const Column *> &columns, const std::vector<const Column *> &defaults,
                            const Scope &scope)
{
    std::vector<Target> targets;
    bool guards = false;
    for (const Column *column : columns) {
        targets.push_back({column->type, Conversion::Assign, table.name.display(), column->name});
        guards = guards || sameName(column->name, table.rowidColumn);
    }
    QueryText text = query(*statement.query, &scope, &targets);
    if (defaults.empty() && !guards)
        return text.sql;
    QStringList cells;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const QString cell = u"\"c%1\""_s.arg(i + 1);
        const bool guarded = sameName(columns[i]->name, table.rowidColumn);
        cells += guarded ? u"not_null(%1, %2, %3, 'INSERT')"_s.arg(cell, quotedText(table.name.display()),
                                                                   quotedText(columns[i]->name))
                         : cell;
    }
    for (const Column *column : defaults)
        cells += defaultText(*column, table, u"INSERT"_s);
    return u"SELECT %1 FROM (%2)"_s.arg(cells.join(u", "_s), text.sql);
}

void Writer::insert(const InsertStatement &statement)
{
    if (statement.execute)
        throw Error(wording::InsertedProcedure, {}, statement.line);
    const std::shared_ptr<const Table> table = writableTable(statement.table, statement.line);
    Scope commons;
    const QString with = commonTables(statement.with, commons);
    std::vector<const Column *> columns;
    if (!statement.defaultValues)
        columns = insertColumns(statement, *table);
    const std::vector<const Column *> defaults = defaultedColumns(columns, *table);
    QString body;
    if (statement.defaultValues) {
        QStringList cells;
        for (const Column *column : defaults)
            cells += defaultText(*column, *table, u"INSERT"_s);
        body = defaults.empty() ? u"DEFAULT VALUES"_s : u"VALUES (%1)"_s.arg(cells.join(u", "_s));
    } else {
        body = statement.query ? insertQuery(statement, *table, columns, defaults, commons)
                               : insertRows(statement, *table, columns, defaults);
    }
    std::vector<QString> names;
    names.reserve(columns.size() + defaults.size());
    for (const Column *column : columns)
        names.push_back(column->name);
    for (const Column *column : defaults)
        names.push_back(column->name);
    const QString list = names.empty() ? QString() : u" (%1)"_s.arg(nameListText(names));
    m_out.sql = with + u"INSERT INTO %1%2 "_s.arg(table->sqliteName, list) + body +
                returning(statement.output, *table, u"inserted"_s);
    m_out.writes = true;
    m_out.setsIdentity = table->identityColumn() != nullptr;
}

/// OUTPUT INSERTED.x, … as RETURNING.
QString Writer::returning(const std::vector<SelectItem> &items, const Table &table, const QString &allowed)
{
    if (items.empty())
        return {};
    Scope scope;
    scope.sources.push_back(tableSource(table, allowed, {}));
    QStringList list;
    for (const SelectItem &item : items) {
        const Expression &node = *item.value;
        const bool named = node.kind == ExpressionKind::Star || node.kind == ExpressionKind::Column;
        const bool before = named && allowed == u"inserted" && sameName(node.qualifier, u"deleted");
        if (before && m_out.writes)
            throw Error(wording::OutputOfFormerValues, {}, node.line);
        if (named && !sameName(node.qualifier, allowed))
            throw Error(4104, {node.qualifier, node.name}, node.line);
        if (node.kind == ExpressionKind::Star) {
            for (const SourceColumn &column : scope.sources.front().columns) {
                list += column.sql;
                m_out.columns.push_back({column.name, column.type, column.nullable, column.table});
            }
            continue;
        }
        const std::size_t read = m_read.size();
        Operand operand = value(node, scope);
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
