#include "tsql/run/interpreter.h"
#include "tsql/values/error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

bool isTemporary(const ObjectName &name)
{
    return name.isTemporary() || name.name.startsWith(u'@');
}

QString bracketed(const ObjectName &name)
{
    const auto quoted = [](QString word) { return u'[' + word.replace(u']', u"]]"_s) + u']'; };
    return name.schema.isEmpty() ? quoted(name.name) : quoted(name.schema) + u'.' + quoted(name.name);
}

/** The text that repeats a DROP when the file is opened again; empty when only temporary tables go. */
QString permanentPart(const DropStatement &drop)
{
    static const QHash<DropStatement::What, QString> words = {
        {DropStatement::What::Table, u"TABLE"_s},         {DropStatement::What::View, u"VIEW"_s},
        {DropStatement::What::Procedure, u"PROCEDURE"_s}, {DropStatement::What::Function, u"FUNCTION"_s},
        {DropStatement::What::Schema, u"SCHEMA"_s},
    };
    if (drop.what == DropStatement::What::Index)
        return isTemporary(drop.onTable) ? QString() : drop.text;
    QStringList names;
    for (const ObjectName &name : drop.names) {
        if (!isTemporary(name))
            names += bracketed(name);
    }
    return names.isEmpty() ? QString() : u"DROP %1 IF EXISTS %2"_s.arg(words.value(drop.what), names.join(u", "_s));
}

/** What the file has to remember of a definition. */
QString permanentText(const Statement &statement)
{
    switch (statement.kind) {
    case StatementKind::CreateTable:
        return isTemporary(as<CreateTableStatement>(statement).table) ? QString() : statement.text;
    case StatementKind::AlterTable:
        return isTemporary(as<AlterTableStatement>(statement).table) ? QString() : statement.text;
    case StatementKind::CreateIndex:
        return isTemporary(as<CreateIndexStatement>(statement).table) ? QString() : statement.text;
    case StatementKind::Drop:
        return permanentPart(as<DropStatement>(statement));
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
QString definitionOf(const Table &table)
{
    QStringList columns;
    for (const Column &column : table.columns) {
        columns += u"[%1] %2%3%4"_s.arg(QString(column.name).replace(u']', u"]]"_s), typeName(column.type),
                                        column.identity ? u" IDENTITY(1,1)"_s : QString(),
                                        column.nullable ? u" NULL"_s : u" NOT NULL"_s);
    }
    return u"CREATE TABLE %1 (%2)"_s.arg(bracketed(table.name), columns.join(u", "_s));
}

/** A temporary table or table variable of the caller's is in the way of the text's own one. */
void refuseSecond(const ObjectName &name, const Frame &frame, const Catalogue &catalogue)
{
    const bool own = std::any_of(frame.temporaryTables.begin(), frame.temporaryTables.end(),
                                 [&name](const ObjectName &one) { return one.key() == name.key(); });
    if (isTemporary(name) && !name.isGlobalTemporary() && !own && catalogue.table(name))
        throw Error(wording::OwnTemporaryTable, {name.name});
}

} // namespace

void Interpreter::runDefinition(const Statement &given, Frame &frame)
{
    const Statement &statement = given.kind == StatementKind::DeclareTable
                                     ? static_cast<const Statement &>(*as<DeclareTableStatement>(given).table)
                                     : given;
    Catalogue &catalogue = m_connection.m_catalogue;
    if (statement.kind == StatementKind::CreateTable && m_connection.m_session.nesting > 0)
        refuseSecond(as<CreateTableStatement>(statement).table, frame, catalogue);
    const Compiled compiled = compile(statement, catalogue, frame.plan.variables(), m_connection.m_session.options);
    const SqliteHandle &handle = m_connection.m_main;
    const QString kept = permanentText(statement);
    if (!kept.isEmpty())
        m_connection.requireFile();
    const Catalogue before = catalogue;
    const bool definedBefore = m_connection.m_definedInTransaction;
    StatementScope scope(handle);
    try {
        if (!compiled.sql.isEmpty())
            handle.execute(compiled.sql.toUtf8());
        for (const QString &sql : compiled.then)
            handle.execute(sql.toUtf8());
        if (!kept.isEmpty())
            m_connection.keepDefinition(kept);
        if (statement.kind == StatementKind::Drop)
            afterDefinition(statement, frame);
        catalogue.apply(statement);
        scope.release();
    } catch (...) {
        catalogue = before;
        m_connection.m_plans.clear();
        m_connection.m_definedInTransaction = definedBefore;
        throw;
    }
    if (statement.kind == StatementKind::CreateTable)
        afterDefinition(statement, frame);
    m_connection.announceDefinitions();
}

/** Temporary tables: who drops them, and who else sees them. */
void Interpreter::afterDefinition(const Statement &statement, Frame &frame)
{
    if (statement.kind == StatementKind::Drop) {
        const auto &drop = as<DropStatement>(statement);
        if (drop.what != DropStatement::What::Table)
            return;
        for (const ObjectName &name : drop.names) {
            std::erase_if(frame.temporaryTables, [&](const ObjectName &own) { return own.key() == name.key(); });
            if (name.isGlobalTemporary())
                m_connection.m_shared->removeTable(name);
        }
        return;
    }
    const ObjectName &name = as<CreateTableStatement>(statement).table;
    if (name.isGlobalTemporary())
        m_connection.m_shared->addTable(m_connection.m_catalogue.table(name), &m_connection);
    else if (name.name.startsWith(u'@') || (name.isTemporary() && m_connection.m_session.nesting > 0))
        frame.temporaryTables.push_back(name);
}

/** SELECT … INTO. */
void Interpreter::defineInto(const Compiled &compiled, Frame &frame)
{
    const SqliteHandle &handle = m_connection.m_main;
    const Table &table = *compiled.into;
    const bool permanent = !isTemporary(table.name);
    StatementScope scope(handle);
    handle.execute(compiled.sql.toUtf8());
    const PreparedStatement insert = handle.prepare(compiled.intoInsert.toUtf8());
    bind(insert.get(), compiled, frame);
    handle.step(insert.get());
    m_connection.m_session.rowCount = sqlite3_changes64(handle.get());
    if (permanent)
        m_connection.keepDefinition(definitionOf(table));
    scope.release();
    m_connection.m_catalogue.addTable(compiled.into);
    reportCount(m_connection.m_session.rowCount);
    if (table.name.isGlobalTemporary())
        m_connection.m_shared->addTable(compiled.into, &m_connection);
    else if (!permanent && m_connection.m_session.nesting > 0)
        frame.temporaryTables.push_back(table.name);
    m_connection.announceDefinitions();
}

/** Drops what a procedure made for itself; what the batch made stays until the connection closes. */
void Interpreter::dropTemporary(Frame &frame)
{
    for (const ObjectName &name : std::exchange(frame.temporaryTables, {})) {
        if (const auto table = m_connection.m_catalogue.table(name)) {
            m_connection.m_main.execute("DROP TABLE IF EXISTS " + table->sqliteName.toUtf8());
            m_connection.m_catalogue.removeTable(name);
        }
    }
}

} // namespace tsql
