#include "tsql/values/collation.h"
#include "tsql/values/error.h"
#include "tsql/write/storage.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/// The schema part of a SQLite name with its point ("temp."), spelt out for permanent tables too: without it,
/// sqlite_sequence is the one of the temporary tables.
QString SchemaOf(const Table &table)
{
    return table.sqliteName.startsWith(u'"') ? u"main."_s : table.sqliteName.section(u'.', 0, 0) + u'.';
}

/// The name of the table within its SQLite schema, quoted.
QString PlainName(const Table &table)
{
    return table.sqliteName.startsWith(u'"') ? table.sqliteName : table.sqliteName.section(u'.', 1);
}

/// Index names belong to their table; SQLite has one room for all of them.
QString IndexName(const Table &table, const QString &index)
{
    return SchemaOf(table) + QuotedName(StoredIndexName(table.name, index));
}

QString ActionText(const QString &event, KeyAction action)
{
    switch (action) {
    case KeyAction::NoAction:
        return {};
    case KeyAction::Cascade:
        return u" ON %1 CASCADE"_s.arg(event);
    case KeyAction::SetNull:
        return u" ON %1 SET NULL"_s.arg(event);
    case KeyAction::SetDefault:
        return u" ON %1 SET DEFAULT"_s.arg(event);
    }
    return {};
}

/// To the server two NULLs in a unique key are the same, to SQLite they differ. The rows that have one get a second
/// unique index, in which NULL is a value; it is empty as long as there are none. Nothing when no column of the key may
/// be NULL. `where` is the condition of a filtered index, or empty.
QString NullsIndex(const Table &table, const QString &index, const std::vector<QString> &columns,
                   const QString &where = {})
{
    QStringList keys;
    QStringList nulls;
    for (const QString &name : columns) {
        const QString column = QuotedName(name);
        if (!table.columns[static_cast<std::size_t>(table.IndexOf(name))].nullable) {
            keys += column;
            continue;
        }
        keys += u"ifnull(%1, 0) COLLATE TSQL_CI, %1 IS NULL"_s.arg(column);
        nulls += u"%1 IS NULL"_s.arg(column);
    }
    if (nulls.isEmpty())
        return {};
    QString condition = u'(' + nulls.join(u" OR "_s) + u')';
    if (!where.isEmpty())
        condition += u" AND (%1)"_s.arg(where);
    return u"CREATE UNIQUE INDEX %1 ON %2 (%3) WHERE %4"_s.arg(IndexName(table, index + QLatin1String(NullsSuffix)),
                                                               PlainName(table), keys.join(u", "_s), condition);
}

/// Columns compare as the database does.
void RefuseCollations(const std::vector<ColumnDefinition> &columns, int line)
{
    for (const ColumnDefinition &column : columns) {
        if (!column.collation.isEmpty() && CollationNamed(column.collation) != Collation::Plain)
            throw NotSupported(u"COLLATE %1 of a column"_s.arg(column.collation), line);
    }
}

/// The name of a unique key that may have been given none.
QString KeyName(const TableConstraint &constraint)
{
    return constraint.name.isEmpty() ? constraint.columns.front() : constraint.name;
}

} // namespace

bool IsReferenced(const Table &table, const Catalogue &catalogue, const QSet<QString> &dropped)
{
    const QString key = table.name.KeyText();
    for (const ObjectName &name : catalogue.TableNames()) {
        if (name.KeyText() == key || dropped.contains(name.KeyText()))
            continue;
        for (const Reference &reference : catalogue.FindTable(name)->references) {
            if (reference.key.table.KeyText() == key)
                return true;
        }
    }
    return false;
}

Scope Writer::ColumnScope(const Table &table) const
{
    Scope scope;
    scope.sources.push_back(SourceOf(table, {}, {}));
    return scope;
}

QString Writer::ColumnText(const Table &table, const Column &column, bool withDefault)
{
    QString text = QuotedName(column.name) + u' ' + StorageName(column.type);
    const bool rowid = SameName(column.name, table.rowidColumn);
    if (rowid)
        text += column.identity ? u" PRIMARY KEY AUTOINCREMENT"_s : u" PRIMARY KEY"_s;
    if (!column.nullable)
        text += u" NOT NULL"_s;
    // Inserts spell defaults out; SQLite needs one only to fill a new column of existing rows.
    if (withDefault && column.defaultValue && !column.nullable)
        text += u" DEFAULT %1"_s.arg(DefaultText(column, table, u"ALTER TABLE"_s));
    return text;
}

QString Writer::ForeignKeyText(const Table &table, const ForeignKey &key)
{
    const bool self = key.table.KeyText() == table.name.KeyText();
    const std::shared_ptr<const Table> referenced = m_catalogue.FindTable(key.table);
    if (!referenced && !self)
        throw Error(1767, {key.table.Display()});
    const Table &target = self ? table : *referenced;
    const std::vector<QString> &targets = key.targets.empty() ? target.primaryKey : key.targets;
    if (targets.size() != key.columns.size())
        throw Error(8139, {table.name.Display()});
    return u"FOREIGN KEY (%1) REFERENCES %2 (%3)%4%5"_s.arg(
        NameListText(key.columns), PlainName(target), NameListText(targets), ActionText(u"DELETE"_s, key.onDelete),
        ActionText(u"UPDATE"_s, key.onUpdate));
}

QString Writer::ConstraintText(const Table &table, const TableConstraint &constraint)
{
    switch (constraint.kind) {
    case TableConstraint::Kind::PrimaryKey:
        if (constraint.columns.size() == 1 && SameName(constraint.columns.front(), table.rowidColumn))
            return {};
        return u"UNIQUE (%1)"_s.arg(NameListText(constraint.columns));
    case TableConstraint::Kind::Unique:
        return u"UNIQUE (%1)"_s.arg(NameListText(constraint.columns));
    case TableConstraint::Kind::Check: {
        const Constants constants(*this, true);
        const Scope scope = ColumnScope(table);
        return u"CONSTRAINT %1 CHECK (%2)"_s.arg(QuotedName(CheckName(table.name, constraint)),
                                                 ConditionText(*constraint.value, scope));
    }
    case TableConstraint::Kind::ForeignKey:
        // Temporary tables carry no foreign keys; the server only warns.
        return table.name.IsTemporary() ? QString() : ForeignKeyText(table, constraint.foreignKey);
    case TableConstraint::Kind::Default:
        return {};
    }
    return {};
}

void Writer::WriteCreateTable(const CreateTableStatement &statement)
{
    if (!m_catalogue.HasSchema(statement.table.schema))
        throw Error(2760, {statement.table.schema}, statement.line);
    if (m_catalogue.FindTable(statement.table) || m_catalogue.FindView(statement.table))
        throw Error(2714, {statement.table.name}, statement.line);
    RefuseCollations(statement.columns, statement.line);
    const std::shared_ptr<Table> table = MakeTable(statement);
    for (const Column &column : table->columns) {
        if (column.defaultValue)
            DefaultText(column, *table, u"CREATE TABLE"_s); // refuses what could never be inserted
    }
    m_out = Compiled();
    m_inline = true;
    QStringList parts;
    for (const Column &column : table->columns)
        parts += ColumnText(*table, column, false);
    for (const TableConstraint &constraint : statement.constraints) {
        const QString text = ConstraintText(*table, constraint);
        if (!text.isEmpty())
            parts += text;
    }
    m_out.sql = u"CREATE TABLE %1 (%2)"_s.arg(table->sqliteName, parts.join(u", "_s));
    for (const TableConstraint &constraint : statement.constraints) {
        if (constraint.kind != TableConstraint::Kind::Unique)
            continue;
        const QString index = NullsIndex(*table, KeyName(constraint), constraint.columns);
        if (!index.isEmpty())
            m_out.then.push_back(index);
    }
    const Column *identity = table->IdentityColumn();
    if (identity != nullptr && identity->seed != 1)
        m_out.then.push_back(u"INSERT INTO %1sqlite_sequence(name, seq) VALUES (%2, %3)"_s.arg(
            SchemaOf(*table), QuotedText(PlainName(*table).sliced(1).chopped(1)), QString::number(identity->seed - 1)));
    m_out.writes = true;
    m_out.definition = true;
    m_out.cacheable = false;
    m_out.countsRows = false;
}

void Writer::WriteCreateIndex(const CreateIndexStatement &statement)
{
    const std::shared_ptr<const Table> table = WritableTable(statement.table, statement.line);
    m_inline = true;
    QStringList columns;
    std::vector<QString> names;
    for (const OrderItem &item : statement.columns) {
        if (table->IndexOf(item.value->name) < 0)
            throw Error(1911, {item.value->name}, statement.line);
        names.push_back(item.value->name);
        columns += QuotedName(item.value->name) + (item.descending ? u" DESC"_s : QString());
    }
    for (const QString &name : statement.include) {
        if (table->IndexOf(name) < 0)
            throw Error(1911, {name}, statement.line);
        // Included columns ride along at the end, where they decide nothing unless the index is unique.
        if (!statement.unique)
            columns += QuotedName(name);
    }
    QString where;
    if (statement.where) {
        const Constants constants(*this, true);
        const Scope scope = ColumnScope(*table);
        where = ConditionText(*statement.where, scope);
    }
    m_out.sql = u"CREATE %1INDEX %2 ON %3 (%4)"_s.arg(statement.unique ? u"UNIQUE "_s : QString(),
                                                      IndexName(*table, statement.name), PlainName(*table),
                                                      columns.join(u", "_s)) +
                (where.isEmpty() ? QString() : u" WHERE "_s + where);
    const QString nulls = statement.unique ? NullsIndex(*table, statement.name, names, where) : QString();
    if (!nulls.isEmpty())
        m_out.then.push_back(nulls);
    m_out.writes = true;
    m_out.definition = true;
    m_out.cacheable = false;
    m_out.countsRows = false;
}

/// ALTER TABLE … ADD of a key, as indexes; nothing for a default, which only the catalogue knows.
QStringList Writer::AddedConstraint(const Table &table, const TableConstraint &constraint) const
{
    using Kind = TableConstraint::Kind;
    if (constraint.kind == Kind::Default)
        return {};
    if (constraint.kind != Kind::Unique && constraint.kind != Kind::PrimaryKey)
        throw Error(wording::AddedConstraint);
    QStringList steps = {u"CREATE UNIQUE INDEX %1 ON %2 (%3)"_s.arg(
        IndexName(table, KeyName(constraint)), PlainName(table), NameListText(constraint.columns))};
    const QString nulls = NullsIndex(table, KeyName(constraint), constraint.columns);
    if (!nulls.isEmpty())
        steps += nulls;
    return steps;
}

void Writer::WriteAlterTable(const AlterTableStatement &statement)
{
    const std::shared_ptr<const Table> table = m_catalogue.FindTable(statement.table);
    if (!table)
        throw Error(4902, {statement.table.Display()}, statement.line);
    m_inline = true;
    m_out.writes = true;
    m_out.definition = true;
    m_out.cacheable = false;
    m_out.countsRows = false;
    RefuseCollations(statement.columns, statement.line);
    std::vector<QString> steps;
    if (statement.action == AlterTableStatement::Action::DropConstraint)
        throw Error(wording::DroppedConstraint, {}, statement.line);
    if (statement.action == AlterTableStatement::Action::DropColumn) {
        for (const QString &name : statement.names)
            steps.push_back(u"ALTER TABLE %1 DROP COLUMN %2"_s.arg(table->sqliteName, QuotedName(name)));
    }
    Catalogue changed = m_catalogue;
    changed.Apply(statement);
    const std::shared_ptr<const Table> after = changed.FindTable(statement.table);
    for (const ColumnDefinition &column : statement.columns) {
        if (column.identity)
            throw Error(wording::AddedIdentity, {}, statement.line);
        const Column &added = after->columns[static_cast<std::size_t>(after->IndexOf(column.name))];
        if (!added.nullable && !added.defaultValue)
            throw Error(4901, {column.name, table->name.Display()}, statement.line);
        steps.push_back(u"ALTER TABLE %1 ADD COLUMN %2"_s.arg(table->sqliteName, ColumnText(*after, added, true)));
    }
    for (const TableConstraint &constraint : statement.constraints) {
        for (const QString &step : AddedConstraint(*table, constraint))
            steps.push_back(step);
    }
    if (!steps.empty()) {
        m_out.sql = steps.front();
        m_out.then.assign(steps.begin() + 1, steps.end());
    }
}

void Writer::WriteDrop(const DropStatement &statement)
{
    using What = DropStatement::What;
    m_out.writes = true;
    m_out.definition = true;
    m_out.cacheable = false;
    m_out.countsRows = false;
    std::vector<QString> steps;
    if (statement.what == What::Table) {
        QSet<QString> dropped;
        for (const ObjectName &name : statement.names) {
            const std::shared_ptr<const Table> table = m_catalogue.FindTable(name);
            if (table && IsReferenced(*table, m_catalogue, dropped))
                throw Error(3726, {name.Display()}, statement.line);
            dropped.insert(name.KeyText());
            if (table)
                steps.push_back(u"DROP TABLE %1"_s.arg(table->sqliteName));
            else if (!statement.ifExists)
                throw Error(wording::NoTableToDrop, {name.Display()}, statement.line);
        }
    } else if (statement.what == What::Index) {
        const std::shared_ptr<const Table> table = WritableTable(statement.onTable, statement.line);
        for (const ObjectName &name : statement.names) {
            steps.push_back(u"DROP INDEX IF EXISTS "_s + IndexName(*table, name.name + QLatin1String(NullsSuffix)));
            steps.push_back((statement.ifExists ? u"DROP INDEX IF EXISTS "_s : u"DROP INDEX "_s) +
                            IndexName(*table, name.name));
        }
    } else {
        Catalogue changed = m_catalogue;
        changed.Apply(statement);
    }
    if (!steps.empty()) {
        m_out.sql = steps.front();
        m_out.then.assign(steps.begin() + 1, steps.end());
    }
}

/// Views, procedures, functions and schemas live in the catalogue only; a view has to make sense already.
void Writer::Module(const Statement &statement)
{
    Catalogue changed = m_catalogue;
    changed.Apply(statement);
    if (statement.kind == StatementKind::CreateView) {
        const auto &view = As<CreateViewStatement>(statement);
        RefuseOrder(view.query);
        const QueryText text = ModuleQuery(view.query, view.columns);
        for (const ResultColumn &column : text.columns) {
            if (column.name.isEmpty())
                throw Error(4511, {}, statement.line);
        }
    }
    if (statement.kind == StatementKind::CreateFunction)
        RefuseOrder(As<CreateFunctionStatement>(statement).query);
    m_out = Compiled();
    m_out.writes = true;
    m_out.definition = true;
    m_out.cacheable = false;
    m_out.countsRows = false;
}

} // namespace tsql
