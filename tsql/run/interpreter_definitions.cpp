#include "tsql/run/interpreter.h"
#include "tsql/values/error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

bool IsTemporary(const ObjectName &name)
{
    return name.IsTemporary() || name.name.startsWith(u'@');
}

QString Bracketed(const ObjectName &name)
{
    const auto quoted = [](QString word) { return u'[' + word.replace(u']', u"]]"_s) + u']'; };
    return name.schema.isEmpty() ? quoted(name.name) : quoted(name.schema) + u'.' + quoted(name.name);
}

/** The text that repeats a DROP when the file is opened again; empty when only temporary tables go. */
QString PermanentPart(const DropStatement &drop)
{
    static const QHash<DropStatement::What, QString> words = {
        {DropStatement::What::Table, u"TABLE"_s},         {DropStatement::What::View, u"VIEW"_s},
        {DropStatement::What::Procedure, u"PROCEDURE"_s}, {DropStatement::What::Function, u"FUNCTION"_s},
        {DropStatement::What::Schema, u"SCHEMA"_s},
    };
    if (drop.what == DropStatement::What::Index)
        return IsTemporary(drop.onTable) ? QString() : drop.text;
    QStringList names;
    for (const ObjectName &name : drop.names) {
        if (!IsTemporary(name))
            names += Bracketed(name);
    }
    return names.isEmpty() ? QString() : u"DROP %1 IF EXISTS %2"_s.arg(words.value(drop.what), names.join(u", "_s));
}

/** What the file has to remember of a definition. */
QString PermanentText(const Statement &statement)
{
    switch (statement.kind) {
    case StatementKind::CreateTable:
        return IsTemporary(As<CreateTableStatement>(statement).table) ? QString() : statement.text;
    case StatementKind::AlterTable:
        return IsTemporary(As<AlterTableStatement>(statement).table) ? QString() : statement.text;
    case StatementKind::CreateIndex:
        return IsTemporary(As<CreateIndexStatement>(statement).table) ? QString() : statement.text;
    case StatementKind::Drop:
        return PermanentPart(As<DropStatement>(statement));
    case StatementKind::CreateView:
    case StatementKind::CreateProcedure:
    case StatementKind::CreateFunction:
    case StatementKind::CreateSchema:
        return statement.text;
    case StatementKind::Select:
    case StatementKind::Insert:
    case StatementKind::Update:
    case StatementKind::Delete:
    case StatementKind::Truncate:
    case StatementKind::Declare:
    case StatementKind::DeclareTable:
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
        return {};
    }
    Q_UNREACHABLE();
}

/** A table made by SELECT INTO, as a CREATE TABLE. */
QString DefinitionOf(const Table &table)
{
    QStringList columns;
    for (const Column &column : table.columns) {
        columns += u"[%1] %2%3%4"_s.arg(QString(column.name).replace(u']', u"]]"_s), TypeName(column.type),
                                        column.identity ? u" IDENTITY(1,1)"_s : QString(),
                                        column.nullable ? u" NULL"_s : u" NOT NULL"_s);
    }
    return u"CREATE TABLE %1 (%2)"_s.arg(Bracketed(table.name), columns.join(u", "_s));
}

/** A temporary table or table variable of the caller's is in the way of the text's own one. */
void RefuseSecond(const ObjectName &name, const Frame &frame, const Catalogue &catalogue)
{
    const bool own = std::any_of(frame.temporaryTables.begin(), frame.temporaryTables.end(),
                                 [&name](const ObjectName &one) { return one.KeyText() == name.KeyText(); });
    if (IsTemporary(name) && !name.IsGlobalTemporary() && !own && catalogue.FindTable(name))
        throw Error(wording::OwnTemporaryTable, {name.name});
}

} // namespace

void Interpreter::RunDefinition(const Statement &given, Frame &frame)
{
    const Statement &statement = given.kind == StatementKind::DeclareTable
                                     ? static_cast<const Statement &>(*As<DeclareTableStatement>(given).table)
                                     : given;
    Catalogue &catalogue = m_connection.m_catalogue;
    if (statement.kind == StatementKind::CreateTable && m_connection.m_session.nesting > 0)
        RefuseSecond(As<CreateTableStatement>(statement).table, frame, catalogue);
    const Compiled compiled = Compile(statement, catalogue, frame.plan.Variables(), m_connection.m_session.options);
    const SqliteHandle &handle = m_connection.m_main;
    const QString kept = PermanentText(statement);
    if (!kept.isEmpty())
        m_connection.RequireFile();
    const Catalogue before = catalogue;
    const bool definedBefore = m_connection.m_definedInTransaction;
    StatementScope scope(handle);
    try {
        if (!compiled.sql.isEmpty())
            handle.Execute(compiled.sql.toUtf8());
        for (const QString &sql : compiled.then)
            handle.Execute(sql.toUtf8());
        if (!kept.isEmpty())
            m_connection.KeepDefinition(kept);
        if (statement.kind == StatementKind::Drop)
            AfterDefinition(statement, frame);
        catalogue.Apply(statement);
        scope.Release();
    } catch (...) {
        catalogue = before;
        m_connection.m_plans.clear();
        m_connection.m_definedInTransaction = definedBefore;
        throw;
    }
    if (statement.kind == StatementKind::CreateTable)
        AfterDefinition(statement, frame);
    m_connection.AnnounceDefinitions();
}

/** Temporary tables: who drops them, and who else sees them. */
void Interpreter::AfterDefinition(const Statement &statement, Frame &frame)
{
    if (statement.kind == StatementKind::Drop) {
        const auto &drop = As<DropStatement>(statement);
        if (drop.what != DropStatement::What::Table)
            return;
        for (const ObjectName &name : drop.names) {
            std::erase_if(frame.temporaryTables,
                          [&](const ObjectName &own) { return own.KeyText() == name.KeyText(); });
            if (name.IsGlobalTemporary())
                m_connection.m_shared->RemoveTable(name);
        }
        return;
    }
    const ObjectName &name = As<CreateTableStatement>(statement).table;
    if (name.IsGlobalTemporary())
        m_connection.m_shared->AddTable(m_connection.m_catalogue.FindTable(name), &m_connection);
    else if (name.name.startsWith(u'@') || (name.IsTemporary() && m_connection.m_session.nesting > 0))
        frame.temporaryTables.push_back(name);
}

/** SELECT … INTO. */
void Interpreter::DefineInto(const Compiled &compiled, Frame &frame)
{
    const SqliteHandle &handle = m_connection.m_main;
    const Table &table = *compiled.into;
    const bool permanent = !IsTemporary(table.name);
    StatementScope scope(handle);
    handle.Execute(compiled.sql.toUtf8());
    const PreparedStatement insert = handle.Prepare(compiled.intoInsert.toUtf8());
    Bind(insert.get(), compiled, frame);
    handle.Step(insert.get());
    m_connection.m_session.rowCount = sqlite3_changes64(handle.Get());
    if (permanent)
        m_connection.KeepDefinition(DefinitionOf(table));
    scope.Release();
    m_connection.m_catalogue.AddTable(compiled.into);
    ReportCount(m_connection.m_session.rowCount);
    if (table.name.IsGlobalTemporary())
        m_connection.m_shared->AddTable(compiled.into, &m_connection);
    else if (!permanent && m_connection.m_session.nesting > 0)
        frame.temporaryTables.push_back(table.name);
    m_connection.AnnounceDefinitions();
}

/** Drops what a procedure made for itself; what the batch made stays until the connection closes. */
void Interpreter::DropTemporary(Frame &frame)
{
    for (const ObjectName &name : std::exchange(frame.temporaryTables, {})) {
        if (const auto table = m_connection.m_catalogue.FindTable(name)) {
            m_connection.m_main.Execute("DROP TABLE IF EXISTS " + table->sqliteName.toUtf8());
            m_connection.m_catalogue.RemoveTable(name);
        }
    }
}

} // namespace tsql
