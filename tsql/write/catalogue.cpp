#include "tsql/write/catalogue.h"

#include "tsql/parse/parser.h"
#include "tsql/values/error.h"
#include "tsql/write/storage.h"

#include <QMutex>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

QString Quoted(const QString &name)
{
    QString doubled = name;
    doubled.replace(u'"', QLatin1String("\"\""));
    return u'"' + doubled + u'"';
}

bool SameName(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString SqliteName(const ObjectName &name)
{
    if (name.IsGlobalTemporary())
        return QLatin1String(GlobalSchema) + u'.' + Quoted(name.KeyText());
    if (name.IsTemporary() || name.name.startsWith(u'@'))
        return u"temp."_s + Quoted(name.KeyText());
    return Quoted(name.Display());
}

/// What stands for an object of this name, in one process and the next.
int NumberOf(const QString &key)
{
    return static_cast<int>(qHash(key, 0) & 0x7fffffffU) | 1;
}

[[noreturn]] void AlreadyThere(const ObjectName &name)
{
    throw Error(2714, {name.name});
}

/// The single whole-number column of the primary key, or nothing.
QString IntegerKey(const Table &table)
{
    if (table.primaryKey.size() != 1)
        return {};
    const Column &key = table.columns[static_cast<std::size_t>(table.IndexOf(table.primaryKey.front()))];
    return key.type.IsInteger() ? key.name : QString();
}

void AddColumn(Table &table, ColumnDefinition &definition)
{
    if (table.IndexOf(definition.name) >= 0)
        throw Error(2705, {definition.name, table.name.Display()});
    if (definition.identity && table.IdentityColumn() != nullptr)
        throw Error(2744, {table.name.Display()});
    Column column;
    column.name = definition.name;
    column.type = definition.type;
    column.nullable = definition.nullable;
    column.identity = definition.identity;
    column.seed = definition.seed;
    column.defaultValue = std::move(definition.defaultValue);
    table.columns.push_back(std::move(column));
}

void AddConstraint(Table &table, TableConstraint &constraint)
{
    for (const QString &name : constraint.columns) {
        const int index = table.IndexOf(name);
        if (index < 0)
            throw Error(1911, {name});
        Column &column = table.columns[static_cast<std::size_t>(index)];
        if (constraint.kind == TableConstraint::Kind::PrimaryKey)
            column.nullable = false;
        if (constraint.kind == TableConstraint::Kind::Default)
            column.defaultValue = std::move(constraint.value);
    }
    if (constraint.kind == TableConstraint::Kind::PrimaryKey)
        table.primaryKey = constraint.columns;
    if (constraint.kind == TableConstraint::Kind::ForeignKey) {
        const ForeignKey &key = constraint.foreignKey;
        const QString name =
            constraint.name.isEmpty() ? u"FK__%1__%2"_s.arg(table.name.name, key.columns.front()) : constraint.name;
        table.references.push_back({name, key});
    }
    if (constraint.kind == TableConstraint::Kind::Check)
        table.checks.push_back(
            {CheckName(table.name, constraint), constraint.columns.empty() ? QString() : constraint.columns.front()});
}

} // namespace

QString CheckName(const ObjectName &table, const TableConstraint &constraint)
{
    if (!constraint.name.isEmpty())
        return constraint.name;
    return constraint.columns.empty() ? u"CK__"_s + table.name
                                      : u"CK__%1__%2"_s.arg(table.name, constraint.columns.front());
}

QString StoredIndexName(const ObjectName &table, const QString &index)
{
    return table.KeyText() + u'.' + index.toCaseFolded();
}

QString ObjectName::KeyText() const
{
    const bool plain = schema.isEmpty() || SameName(schema, u"dbo") || IsTemporary();
    return plain ? name.toCaseFolded() : schema.toCaseFolded() + u'.' + name.toCaseFolded();
}

QString ObjectName::Display() const
{
    const bool plain = schema.isEmpty() || SameName(schema, u"dbo") || IsTemporary();
    return plain ? name : schema + u'.' + name;
}

int Table::IndexOf(QStringView name) const
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (SameName(columns[i].name, name))
            return static_cast<int>(i);
    }
    return -1;
}

const Column *Table::IdentityColumn() const
{
    for (const Column &column : columns) {
        if (column.identity)
            return &column;
    }
    return nullptr;
}

std::shared_ptr<Table> MakeTable(const CreateTableStatement &statement)
{
    // The parts are taken from a syntax tree of its own, so that the statement stays whole.
    StatementPtr own = ParseDefinition(statement.text);
    auto &definition = own->kind == StatementKind::DeclareTable ? *static_cast<DeclareTableStatement &>(*own).table
                                                                : static_cast<CreateTableStatement &>(*own);
    auto table = std::make_shared<Table>();
    table->name = statement.table;
    table->sqliteName = SqliteName(statement.table);
    for (ColumnDefinition &column : definition.columns)
        AddColumn(*table, column);
    for (TableConstraint &constraint : definition.constraints)
        AddConstraint(*table, constraint);
    const Column *identity = table->IdentityColumn();
    table->rowidColumn = identity != nullptr ? identity->name : IntegerKey(*table);
    return table;
}

void Catalogue::Load(const std::vector<QString> &definitions)
{
    // The connections of a program mostly read the same definitions: what came of the last ones is shared.
    static QMutex mutex;
    static std::vector<QString> lastTexts;
    static Catalogue last;
    const QMutexLocker lock(&mutex);
    if (definitions != lastTexts) {
        Catalogue read;
        for (const QString &text : definitions)
            read.Apply(*ParseDefinition(text));
        last = std::move(read);
        lastTexts = definitions;
    }
    Map<Table> tables = last.m_tables;
    for (auto it = m_tables.cbegin(); it != m_tables.cend(); ++it) {
        if (it.key().startsWith(u'#') || it.key().startsWith(u'@'))
            tables.insert(it.key(), it.value());
    }
    m_tables = std::move(tables);
    m_views = last.m_views;
    m_functions = last.m_functions;
    m_procedures = last.m_procedures;
    m_schemas = last.m_schemas;
    ++m_version;
}

void Catalogue::AddTable(const std::shared_ptr<const Table> &table)
{
    const QString key = table->name.KeyText();
    if (m_tables.contains(key) || m_views.contains(key))
        AlreadyThere(table->name);
    m_tables.insert(key, table);
    ++m_version;
}

void Catalogue::RemoveTable(const ObjectName &name)
{
    m_tables.remove(name.KeyText());
    ++m_version;
}

std::shared_ptr<const Table> Catalogue::FindTable(const ObjectName &name) const
{
    return m_tables.value(name.KeyText());
}

std::shared_ptr<const CreateViewStatement> Catalogue::FindView(const ObjectName &name) const
{
    return m_views.value(name.KeyText());
}

std::shared_ptr<const CreateFunctionStatement> Catalogue::FindFunction(const ObjectName &name) const
{
    return m_functions.value(name.KeyText());
}

std::shared_ptr<const CreateProcedureStatement> Catalogue::FindProcedure(const ObjectName &name) const
{
    return m_procedures.value(name.KeyText());
}

bool Catalogue::HasSchema(const QString &name) const
{
    return name.isEmpty() || SameName(name, u"dbo") || m_schemas.contains(name.toCaseFolded());
}

void Catalogue::Apply(const Statement &definition)
{
    switch (definition.kind) {
    case StatementKind::CreateTable:
        AddTable(MakeTable(As<CreateTableStatement>(definition)));
        break;
    case StatementKind::AlterTable:
        Alter(As<AlterTableStatement>(definition));
        break;
    case StatementKind::CreateView:
    case StatementKind::CreateProcedure:
    case StatementKind::CreateFunction:
        AddModule(definition);
        break;
    case StatementKind::CreateSchema: {
        const QString name = As<CreateSchemaStatement>(definition).name;
        m_schemas.insert(name.toCaseFolded(), name);
        break;
    }
    case StatementKind::Drop:
        Drop(As<DropStatement>(definition));
        break;
    case StatementKind::Truncate:
    case StatementKind::CreateIndex:
    case StatementKind::DeclareTable:
        break; // nothing that the catalogue knows, or told to it by itself
    case StatementKind::Select:
    case StatementKind::Insert:
    case StatementKind::Update:
    case StatementKind::Delete:
    case StatementKind::Declare:
    case StatementKind::SetVariable:
    case StatementKind::SetOption:
    case StatementKind::If:
    case StatementKind::While:
    case StatementKind::Block:
    case StatementKind::Break:
    case StatementKind::Continue:
    case StatementKind::Return:
    case StatementKind::Execute:
    case StatementKind::ExecuteText:
    case StatementKind::BeginTransaction:
    case StatementKind::Commit:
    case StatementKind::Rollback:
    case StatementKind::SaveTransaction:
    case StatementKind::TryCatch:
    case StatementKind::Throw:
    case StatementKind::RaiseError:
    case StatementKind::Print:
        Q_ASSERT_X(false, "Catalogue::apply", "not a definition");
        break;
    }
    ++m_version;
}

void Catalogue::Alter(const AlterTableStatement &statement)
{
    const std::shared_ptr<const Table> current = FindTable(statement.table);
    if (!current)
        throw Error(4902, {statement.table.Display()});
    auto changed = std::make_shared<Table>();
    changed->name = current->name;
    changed->sqliteName = current->sqliteName;
    changed->columns = current->columns;
    changed->rowidColumn = current->rowidColumn;
    changed->primaryKey = current->primaryKey;
    StatementPtr own = ParseDefinition(statement.text);
    auto &parts = static_cast<AlterTableStatement &>(*own);
    for (ColumnDefinition &column : parts.columns)
        AddColumn(*changed, column);
    for (TableConstraint &constraint : parts.constraints)
        AddConstraint(*changed, constraint);
    if (parts.action == AlterTableStatement::Action::DropColumn) {
        for (const QString &name : parts.names)
            std::erase_if(changed->columns, [&](const Column &column) { return SameName(column.name, name); });
    }
    m_tables.insert(current->name.KeyText(), changed);
}

void Catalogue::AddModule(const Statement &definition)
{
    std::shared_ptr<const Statement> own = ParseDefinition(definition.text);
    const auto enter = [this](auto &map, auto module) {
        const QString key = module->name.KeyText();
        if (!module->replace && (map.contains(key) || m_tables.contains(key)))
            AlreadyThere(module->name);
        map.insert(key, module);
    };
    if (own->kind == StatementKind::CreateView)
        enter(m_views, std::static_pointer_cast<const CreateViewStatement>(own));
    else if (own->kind == StatementKind::CreateProcedure)
        enter(m_procedures, std::static_pointer_cast<const CreateProcedureStatement>(own));
    else
        enter(m_functions, std::static_pointer_cast<const CreateFunctionStatement>(own));
}

void Catalogue::Drop(const DropStatement &statement)
{
    using What = DropStatement::What;
    for (const ObjectName &name : statement.names) {
        bool known = true;
        switch (statement.what) {
        case What::Table:
            known = m_tables.remove(name.KeyText());
            break;
        case What::View:
            known = m_views.remove(name.KeyText());
            break;
        case What::Procedure:
            known = m_procedures.remove(name.KeyText());
            break;
        case What::Function:
            known = m_functions.remove(name.KeyText());
            break;
        case What::Schema:
            known = m_schemas.remove(name.name.toCaseFolded());
            break;
        case What::Index:
            break; // SQLite knows the indexes
        }
        if (!known && !statement.ifExists)
            throw Error(3701, {name.Display()});
    }
}

std::optional<int> Catalogue::ObjectId(const QString &name, const QString &kind) const
{
    // "tempdb..#t", "dbo.GoodInf", "[Market].[Product]"
    QStringList parts = name.split(u'.');
    for (QString &part : parts) {
        part = part.trimmed();
        if (part.startsWith(u'[') && part.endsWith(u']'))
            part = part.sliced(1, part.size() - 2);
    }
    ObjectName object;
    object.name = parts.takeLast();
    if (!parts.isEmpty())
        object.schema = parts.takeLast();
    const QString key = object.KeyText();
    const QString wanted = kind.trimmed().toUpper();
    const auto wants = [&](QStringView letter) { return wanted.isEmpty() || wanted == letter; };
    const bool found = (wants(u"U") && m_tables.contains(key)) || (wants(u"V") && m_views.contains(key)) ||
                       (wants(u"P") && m_procedures.contains(key)) || (wants(u"IF") && m_functions.contains(key));
    if (!found)
        return {};
    return NumberOf(key);
}

std::optional<ObjectName> Catalogue::TableOf(int objectId) const
{
    for (auto it = m_tables.cbegin(); it != m_tables.cend(); ++it) {
        if (NumberOf(it.key()) == objectId)
            return it.value()->name;
    }
    return {};
}

std::optional<int> Catalogue::SchemaId(const QString &name) const
{
    const QString key = name.trimmed().toCaseFolded();
    if (key.isEmpty() || !HasSchema(key))
        return {};
    return NumberOf(key);
}

namespace {

template <class Objects> std::vector<ObjectName> NamesOf(const Objects &objects)
{
    std::vector<ObjectName> names;
    for (const auto &object : objects)
        names.push_back(object->name);
    return names;
}

} // namespace

std::vector<ObjectName> Catalogue::TableNames() const
{
    return NamesOf(m_tables);
}

std::vector<ObjectName> Catalogue::ViewNames() const
{
    return NamesOf(m_views);
}

std::vector<ObjectName> Catalogue::ProcedureNames() const
{
    return NamesOf(m_procedures);
}

std::vector<ObjectName> Catalogue::FunctionNames() const
{
    return NamesOf(m_functions);
}

} // namespace tsql
