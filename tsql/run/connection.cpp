#include "tsql/run/connection.h"

#include "tsql/functions/functions.h"
#include "tsql/run/interpreter.h"
#include "tsql/run/sqlite_errors.h"
#include "tsql/values/collation.h"
#include "tsql/write/storage.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

bool IsPrivate(const QString &path)
{
    return path.isEmpty() || path == u":memory:"_s;
}

} // namespace

Connection::Connection(const QString &path) : m_path(path)
{
    m_main.Open(IsPrivate(path) ? u":memory:"_s : path, false);
    m_shared = IsPrivate(path) ? SharedFile::Alone() : SharedFile::Of(path);
    RegisterFunctions(m_main.Get(), &m_catalogue);
    m_main.Execute("ATTACH '" + m_shared->TemporaryUri() + "' AS " + GlobalSchema);
    m_main.Execute(QByteArray("CREATE TABLE IF NOT EXISTS main.") + DefinitionTable +
                   "(id INTEGER PRIMARY KEY, text TEXT NOT NULL)");
    RenewOrder();
    m_lock = m_main.Prepare(QByteArray("UPDATE main.") + DefinitionTable + " SET id = id WHERE 0", true);
    m_readVersion = m_main.Prepare("PRAGMA main.user_version", true);
    LoadDefinitions();
}

Connection::~Connection()
{
    try {
        if (m_session.transactions > 0)
            Rollback();
        for (const ObjectName &name : m_shared->TablesOf(this)) {
            if (const auto table = m_catalogue.FindTable(name))
                m_main.Execute("DROP TABLE IF EXISTS " + table->sqliteName.toUtf8());
            m_shared->RemoveTable(name);
        }
    } catch (const Error &error) {
        qWarning("closing the database: %s", error.what());
    }
    m_plans.clear();
}

Outcome Connection::Execute(const QString &batch)
{
    Outcome outcome;
    Execute(batch, outcome);
    return outcome;
}

void Connection::Execute(const QString &batch, Outcome &outcome)
{
    SyncCatalogue();
    Interpreter interpreter(*this, outcome);
    try {
        interpreter.RunBatch(batch);
    } catch (const Error &) {
        NoticeLostTransaction();
        if (m_session.abortOnError && m_session.transactions > 0)
            Rollback();
        throw;
    }
}

/** Indexes that were built when texts had another order would be searched in vain: they are built anew, once. */
void Connection::RenewOrder()
{
    const auto stale = [this] { return m_main.ScalarInteger("PRAGMA main.application_id") != CollationVersion; };
    if (!stale())
        return;
    m_main.Execute("BEGIN IMMEDIATE");
    try {
        if (stale()) { // nobody else was quicker
            m_main.Execute("REINDEX TSQL_CI");
            m_main.Execute("PRAGMA main.application_id = " + QByteArray::number(CollationVersion));
        }
        m_main.Execute("COMMIT");
    } catch (const SqliteError &error) {
        sqlite3_exec(m_main.Get(), "ROLLBACK", nullptr, nullptr, nullptr);
        if (error.Code() != SQLITE_CONSTRAINT_UNIQUE)
            throw;
        throw Error(1505, {m_path, error.Text()});
    }
}

void Connection::LoadDefinitions()
{
    const PreparedStatement statement =
        m_main.Prepare(QByteArray("SELECT text FROM main.") + DefinitionTable + " ORDER BY id");
    std::vector<QString> definitions;
    while (m_main.Step(statement.get()))
        definitions.push_back(QString::fromUtf8(ColumnValue(statement.get(), 0).bytes));
    m_definitionsSeen = m_shared->definitions;
    m_userVersion = m_main.ScalarInteger("PRAGMA main.user_version");
    m_catalogue.Load(definitions);
}

/** Brings the catalogue up to date with what other connections of this process have defined. */
void Connection::SyncCatalogue()
{
    if (m_definitionsSeen != m_shared->definitions && m_session.transactions == 0)
        LoadDefinitions();
    const quint64 version = m_shared->TablesVersion();
    if (m_sharedTablesSeen == version)
        return;
    for (const ObjectName &name : m_catalogue.TableNames()) {
        if (name.IsGlobalTemporary())
            m_catalogue.RemoveTable(name);
    }
    for (const auto &table : m_shared->AllTables())
        m_catalogue.AddTable(table);
    m_sharedTablesSeen = version;
}

/** True when another process has changed definitions since they were loaded; they are loaded anew then. */
bool Connection::DefinedElsewhere()
{
    if (m_session.transactions > 0)
        return false;
    const StatementUse use(m_readVersion.get());
    if (!m_main.Step(m_readVersion.get()) || sqlite3_column_int64(m_readVersion.get(), 0) == m_userVersion)
        return false;
    sqlite3_reset(m_readVersion.get());
    LoadDefinitions();
    return true;
}

/** Writes a definition down; the caller has an open transaction or savepoint. */
void Connection::KeepDefinition(const QString &text)
{
    const PreparedStatement statement =
        m_main.Prepare(QByteArray("INSERT INTO main.") + DefinitionTable + "(text) VALUES (?1)");
    BindValue(statement.get(), 1, Value::OfText(text));
    m_main.Step(statement.get());
    ++m_userVersion;
    m_main.Execute("PRAGMA main.user_version = " + QByteArray::number(m_userVersion));
    m_definedInTransaction = true;
}

/** Tells the other connections of this process, at once or when the transaction is committed. */
void Connection::AnnounceDefinitions()
{
    if (m_session.transactions > 0 || !m_definedInTransaction)
        return;
    m_definedInTransaction = false;
    m_definitionsSeen = ++m_shared->definitions;
}

/** A file that was moved away would take the rows with it without a word. */
void Connection::RequireFile() const
{
    if (!IsPrivate(m_path) && m_main.FileIsGone())
        throw Error(wording::FileGone, {m_path});
}

std::shared_ptr<Reader> Connection::FreeReader()
{
    if (IsPrivate(m_path))
        return {};
    for (const auto &reader : m_readers) {
        if (!reader->busy)
            return reader;
    }
    if (m_readers.size() == MaxReaders)
        return {};
    auto reader = std::make_shared<Reader>();
    reader->handle.Open(m_path, true);
    RegisterFunctions(reader->handle.Get(), &m_catalogue);
    m_readers.push_back(reader);
    return reader;
}

void Connection::BeginTransaction(const QString &name)
{
    if (m_session.transactions == 0) {
        RequireFile();
        m_main.Execute("BEGIN");
        try {
            // Waits for the other writer here, not in the middle of the work.
            const StatementUse use(m_lock.get());
            m_main.Step(m_lock.get());
        } catch (...) {
            m_main.Execute("ROLLBACK");
            throw;
        }
        Q_ASSERT_X(m_savepoints.empty(), "Connection", "savepoints outlived their transaction");
        m_catalogueAtBegin = m_catalogue;
        m_transactionName = name;
        m_definedInTransaction = false;
    }
    ++m_session.transactions;
}

void Connection::Commit()
{
    if (m_session.transactions == 0)
        throw Error(3902);
    if (m_session.transactions > 1) {
        --m_session.transactions;
        return;
    }
    try {
        m_main.Execute("COMMIT");
    } catch (const Error &) {
        NoticeLostTransaction();
        throw;
    }
    EndTransaction();
}

void Connection::Rollback(const QString &savepoint)
{
    if (m_session.transactions == 0)
        throw Error(3903);
    if (!savepoint.isEmpty() && savepoint.compare(m_transactionName, Qt::CaseInsensitive) != 0) {
        auto found = m_savepoints.end();
        while (found != m_savepoints.begin() && std::prev(found)->name.compare(savepoint, Qt::CaseInsensitive) != 0)
            --found;
        if (found == m_savepoints.begin())
            throw Error(6401, {savepoint});
        const auto position = std::prev(found) - m_savepoints.begin();
        const std::vector<KeptTable> variables = TableVariables();
        m_main.Execute("ROLLBACK TO tran" + QByteArray::number(qlonglong(position)));
        RestoreCatalogue(m_savepoints[size_t(position)].catalogue);
        m_savepoints.erase(found, m_savepoints.end());
        RestoreTableVariables(variables);
        return;
    }
    const std::vector<KeptTable> variables = TableVariables();
    m_main.Execute("ROLLBACK");
    RestoreCatalogue(m_catalogueAtBegin);
    m_definedInTransaction = false;
    EndTransaction();
    RestoreTableVariables(variables);
}

std::vector<KeptTable> Connection::TableVariables() const
{
    std::vector<KeptTable> kept;
    for (const ObjectName &name : m_catalogue.TableNames()) {
        if (!name.name.startsWith(u'@'))
            continue;
        KeptTable variable{m_catalogue.FindTable(name), {}, {}};
        const PreparedStatement definitions = m_main.Prepare(
            "SELECT sql FROM temp.sqlite_schema WHERE tbl_name = ?1 COLLATE NOCASE AND sql IS NOT NULL ORDER BY rowid");
        BindValue(definitions.get(), 1, Value::OfText(name.name));
        while (m_main.Step(definitions.get()))
            variable.definitions.push_back(ColumnValue(definitions.get(), 0).bytes);
        const PreparedStatement rows = m_main.Prepare("SELECT * FROM " + variable.table->sqliteName.toUtf8());
        const int columns = sqlite3_column_count(rows.get());
        while (m_main.Step(rows.get())) {
            std::vector<Value> row;
            row.reserve(static_cast<std::size_t>(columns));
            for (int i = 0; i < columns; ++i)
                row.push_back(ColumnValue(rows.get(), i));
            variable.rows.push_back(std::move(row));
        }
        kept.push_back(std::move(variable));
    }
    return kept;
}

/** Those that were declared in the transaction are made again. */
void Connection::RestoreTableVariables(const std::vector<KeptTable> &variables)
{
    for (const KeptTable &variable : variables) {
        const QByteArray name = variable.table->sqliteName.toUtf8();
        if (m_catalogue.FindTable(variable.table->name)) {
            m_main.Execute("DELETE FROM " + name);
        } else {
            for (QByteArray sql : variable.definitions) {
                if (sql.startsWith("CREATE TABLE"))
                    sql.replace(0, qstrlen("CREATE TABLE"), "CREATE TEMP TABLE");
                m_main.Execute(sql);
            }
            m_catalogue.AddTable(variable.table);
        }
        QByteArray marks;
        for (size_t i = 0; i < variable.table->columns.size(); ++i)
            marks += marks.isEmpty() ? "?" : ", ?";
        const PreparedStatement insert = m_main.Prepare("INSERT INTO " + name + " VALUES (" + marks + ")");
        for (const std::vector<Value> &row : variable.rows) {
            const StatementUse use(insert.get());
            for (size_t i = 0; i < row.size(); ++i)
                BindValue(insert.get(), int(i) + 1, row[i]);
            m_main.Step(insert.get());
        }
    }
}

void Connection::SaveTransaction(const QString &name)
{
    if (m_session.transactions == 0)
        throw Error(628);
    m_main.Execute("SAVEPOINT tran" + QByteArray::number(qlonglong(m_savepoints.size())));
    m_savepoints.push_back({name, m_catalogue});
}

void Connection::EndTransaction()
{
    Q_ASSERT_X(!m_main.InTransaction(), "Connection", "SQLite's transaction goes on");
    m_session.transactions = 0;
    m_savepoints.clear();
    m_transactionName.clear();
    m_catalogueAtBegin = {};
    AnnounceDefinitions();
}

/** A full disk or a broken file makes SQLite roll back by itself. */
void Connection::NoticeLostTransaction()
{
    if (m_session.transactions == 0 || m_main.InTransaction())
        return;
    RestoreCatalogue(m_catalogueAtBegin);
    m_definedInTransaction = false;
    EndTransaction();
}

void Connection::RestoreCatalogue(const Catalogue &picture)
{
    if (picture.Version() == m_catalogue.Version())
        return;
    m_catalogue = picture;
    m_plans.clear(); // versions start again from the picture's
    m_userVersion = m_main.ScalarInteger("PRAGMA main.user_version");
    // Global tables made in the transaction are gone; those dropped in it are there again.
    const PreparedStatement exists = m_main.Prepare(QByteArray("SELECT 1 FROM ") + GlobalSchema +
                                                    ".sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE");
    for (const ObjectName &name : m_shared->TablesOf(this)) {
        const StatementUse use(exists.get());
        BindValue(exists.get(), 1, Value::OfText(name.name));
        if (!m_main.Step(exists.get()))
            m_shared->RemoveTable(name);
    }
    for (const ObjectName &name : m_catalogue.TableNames()) {
        if (name.IsGlobalTemporary())
            m_shared->RestoreTable(m_catalogue.FindTable(name), this);
    }
}

void Connection::Backup(const QString &path)
{
    if (QFileInfo::exists(path))
        throw Error(3033, {path});
    SqliteHandle target;
    target.Open(path, false);
    sqlite3_backup *backup = sqlite3_backup_init(target.Get(), "main", m_main.Get(), "main");
    if (!backup)
        target.ThrowLastError();
    sqlite3_backup_step(backup, -1);
    if (sqlite3_backup_finish(backup) != SQLITE_OK)
        target.ThrowLastError();
}

} // namespace tsql
