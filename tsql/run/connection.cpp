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

bool isPrivate(const QString &path)
{
    return path.isEmpty() || path == u":memory:"_s;
}

} // namespace

Connection::Connection(const QString &path) : m_path(path)
{
    m_main.open(isPrivate(path) ? u":memory:"_s : path, false);
    m_shared = isPrivate(path) ? SharedFile::alone() : SharedFile::of(path);
    registerFunctions(m_main.get(), &m_catalogue);
    m_main.execute("ATTACH '" + m_shared->temporaryUri() + "' AS " + GlobalSchema);
    m_main.execute(QByteArray("CREATE TABLE IF NOT EXISTS main.") + DefinitionTable +
                   "(id INTEGER PRIMARY KEY, text TEXT NOT NULL)");
    renewOrder();
    m_lock = m_main.prepare(QByteArray("UPDATE main.") + DefinitionTable + " SET id = id WHERE 0", true);
    m_readVersion = m_main.prepare("PRAGMA main.user_version", true);
    loadDefinitions();
}

Connection::~Connection()
{
    try {
        if (m_session.transactions > 0)
            rollback();
        for (const ObjectName &name : m_shared->tablesOf(this)) {
            if (const auto table = m_catalogue.table(name))
                m_main.execute("DROP TABLE IF EXISTS " + table->sqliteName.toUtf8());
            m_shared->removeTable(name);
        }
    } catch (const Error &error) {
        qWarning("closing the database: %s", error.what());
    }
    m_plans.clear();
}

Outcome Connection::execute(const QString &batch)
{
    Outcome outcome;
    execute(batch, outcome);
    return outcome;
}

void Connection::execute(const QString &batch, Outcome &outcome)
{
    syncCatalogue();
    Interpreter interpreter(*this, outcome);
    try {
        interpreter.runBatch(batch);
    } catch (const Error &) {
        noticeLostTransaction();
        if (m_session.abortOnError && m_session.transactions > 0)
            rollback();
        throw;
    }
}

/** Indexes that were built when texts had another order would be searched in vain: they are built anew, once. */
void Connection::renewOrder()
{
    const auto stale = [this] { return m_main.integer("PRAGMA main.application_id") != CollationVersion; };
    if (!stale())
        return;
    m_main.execute("BEGIN IMMEDIATE");
    try {
        if (stale()) { // nobody else was quicker
            m_main.execute("REINDEX TSQL_CI");
            m_main.execute("PRAGMA main.application_id = " + QByteArray::number(CollationVersion));
        }
        m_main.execute("COMMIT");
    } catch (const SqliteError &error) {
        sqlite3_exec(m_main.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        if (error.code() != SQLITE_CONSTRAINT_UNIQUE)
            throw;
        throw Error(1505, {m_path, error.message()});
    }
}

void Connection::loadDefinitions()
{
    const PreparedStatement statement =
        m_main.prepare(QByteArray("SELECT text FROM main.") + DefinitionTable + " ORDER BY id");
    std::vector<QString> definitions;
    while (m_main.step(statement.get()))
        definitions.push_back(QString::fromUtf8(columnValue(statement.get(), 0).bytes));
    m_definitionsSeen = m_shared->definitions;
    m_userVersion = m_main.integer("PRAGMA main.user_version");
    m_catalogue.load(definitions);
}

/** Brings the catalogue up to date with what other connections of this process have defined. */
void Connection::syncCatalogue()
{
    if (m_definitionsSeen != m_shared->definitions && m_session.transactions == 0)
        loadDefinitions();
    const quint64 version = m_shared->tablesVersion();
    if (m_sharedTablesSeen == version)
        return;
    for (const ObjectName &name : m_catalogue.tableNames()) {
        if (name.isGlobalTemporary())
            m_catalogue.removeTable(name);
    }
    for (const auto &table : m_shared->tables())
        m_catalogue.addTable(table);
    m_sharedTablesSeen = version;
}

/** True when another process has changed definitions since they were loaded; they are loaded anew then. */
bool Connection::definedElsewhere()
{
    if (m_session.transactions > 0)
        return false;
    const StatementUse use(m_readVersion.get());
    if (!m_main.step(m_readVersion.get()) || sqlite3_column_int64(m_readVersion.get(), 0) == m_userVersion)
        return false;
    sqlite3_reset(m_readVersion.get());
    loadDefinitions();
    return true;
}

/** Writes a definition down; the caller has an open transaction or savepoint. */
void Connection::keepDefinition(const QString &text)
{
    const PreparedStatement statement =
        m_main.prepare(QByteArray("INSERT INTO main.") + DefinitionTable + "(text) VALUES (?1)");
    bindValue(statement.get(), 1, Value::ofText(text));
    m_main.step(statement.get());
    ++m_userVersion;
    m_main.execute("PRAGMA main.user_version = " + QByteArray::number(m_userVersion));
    m_definedInTransaction = true;
}

/** Tells the other connections of this process, at once or when the transaction is committed. */
void Connection::announceDefinitions()
{
    if (m_session.transactions > 0 || !m_definedInTransaction)
        return;
    m_definedInTransaction = false;
    m_definitionsSeen = ++m_shared->definitions;
}

/** A file that was moved away would take the rows with it without a word. */
void Connection::requireFile() const
{
    if (!isPrivate(m_path) && m_main.fileIsGone())
        throw Error(wording::FileGone, {m_path});
}

std::shared_ptr<Reader> Connection::freeReader()
{
    if (isPrivate(m_path))
        return {};
    for (const auto &reader : m_readers) {
        if (!reader->busy)
            return reader;
    }
    if (m_readers.size() == MaxReaders)
        return {};
    auto reader = std::make_shared<Reader>();
    reader->handle.open(m_path, true);
    registerFunctions(reader->handle.get(), &m_catalogue);
    m_readers.push_back(reader);
    return reader;
}

void Connection::beginTransaction(const QString &name)
{
    if (m_session.transactions == 0) {
        requireFile();
        m_main.execute("BEGIN");
        try {
            // Waits for the other writer here, not in the middle of the work.
            const StatementUse use(m_lock.get());
            m_main.step(m_lock.get());
        } catch (...) {
            m_main.execute("ROLLBACK");
            throw;
        }
        Q_ASSERT_X(m_savepoints.empty(), "Connection", "savepoints outlived their transaction");
        m_catalogueAtBegin = m_catalogue;
        m_transactionName = name;
        m_definedInTransaction = false;
    }
    ++m_session.transactions;
}

void Connection::commit()
{
    if (m_session.transactions == 0)
        throw Error(3902);
    if (m_session.transactions > 1) {
        --m_session.transactions;
        return;
    }
    try {
        m_main.execute("COMMIT");
    } catch (const Error &) {
        noticeLostTransaction();
        throw;
    }
    endTransaction();
}

void Connection::rollback(const QString &savepoint)
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
        const std::vector<KeptTable> variables = tableVariables();
        m_main.execute("ROLLBACK TO tran" + QByteArray::number(qlonglong(position)));
        restoreCatalogue(m_savepoints[size_t(position)].catalogue);
        m_savepoints.erase(found, m_savepoints.end());
        restoreTableVariables(variables);
        return;
    }
    const std::vector<KeptTable> variables = tableVariables();
    m_main.execute("ROLLBACK");
    restoreCatalogue(m_catalogueAtBegin);
    m_definedInTransaction = false;
    endTransaction();
    restoreTableVariables(variables);
}

std::vector<KeptTable> Connection::tableVariables() const
{
    std::vector<KeptTable> kept;
    for (const ObjectName &name : m_catalogue.tableNames()) {
        if (!name.name.startsWith(u'@'))
            continue;
        KeptTable variable{m_catalogue.table(name), {}, {}};
        const PreparedStatement definitions = m_main.prepare(
            "SELECT sql FROM temp.sqlite_schema WHERE tbl_name = ?1 COLLATE NOCASE AND sql IS NOT NULL ORDER BY rowid");
        bindValue(definitions.get(), 1, Value::ofText(name.name));
        while (m_main.step(definitions.get()))
            variable.definitions.push_back(columnValue(definitions.get(), 0).bytes);
        const PreparedStatement rows = m_main.prepare("SELECT * FROM " + variable.table->sqliteName.toUtf8());
        while (m_main.step(rows.get())) {
            std::vector<Value> row;
            for (int i = 0; i < sqlite3_column_count(rows.get()); ++i)
                row.push_back(columnValue(rows.get(), i));
            variable.rows.push_back(std::move(row));
        }
        kept.push_back(std::move(variable));
    }
    return kept;
}

/** Those that were declared in the transaction are made again. */
void Connection::restoreTableVariables(const std::vector<KeptTable> &variables)
{
    for (const KeptTable &variable : variables) {
        const QByteArray name = variable.table->sqliteName.toUtf8();
        if (m_catalogue.table(variable.table->name)) {
            m_main.execute("DELETE FROM " + name);
        } else {
            for (QByteArray sql : variable.definitions) {
                if (sql.startsWith("CREATE TABLE"))
                    sql.replace(0, qstrlen("CREATE TABLE"), "CREATE TEMP TABLE");
                m_main.execute(sql);
            }
            m_catalogue.addTable(variable.table);
        }
        QByteArray marks;
        for (size_t i = 0; i < variable.table->columns.size(); ++i)
            marks += marks.isEmpty() ? "?" : ", ?";
        const PreparedStatement insert = m_main.prepare("INSERT INTO " + name + " VALUES (" + marks + ")");
        for (const std::vector<Value> &row : variable.rows) {
            const StatementUse use(insert.get());
            for (size_t i = 0; i < row.size(); ++i)
                bindValue(insert.get(), int(i) + 1, row[i]);
            m_main.step(insert.get());
        }
    }
}

void Connection::saveTransaction(const QString &name)
{
    if (m_session.transactions == 0)
        throw Error(628);
    m_main.execute("SAVEPOINT tran" + QByteArray::number(qlonglong(m_savepoints.size())));
    m_savepoints.push_back({name, m_catalogue});
}

void Connection::endTransaction()
{
    Q_ASSERT_X(!m_main.inTransaction(), "Connection", "SQLite's transaction goes on");
    m_session.transactions = 0;
    m_savepoints.clear();
    m_transactionName.clear();
    m_catalogueAtBegin = {};
    announceDefinitions();
}

/** A full disk or a broken file makes SQLite roll back by itself. */
void Connection::noticeLostTransaction()
{
    if (m_session.transactions == 0 || m_main.inTransaction())
        return;
    restoreCatalogue(m_catalogueAtBegin);
    m_definedInTransaction = false;
    endTransaction();
}

void Connection::restoreCatalogue(const Catalogue &picture)
{
    if (picture.version() == m_catalogue.version())
        return;
    m_catalogue = picture;
    m_plans.clear(); // versions start again from the picture's
    m_userVersion = m_main.integer("PRAGMA main.user_version");
    // Global tables made in the transaction are gone; those dropped in it are there again.
    const PreparedStatement exists = m_main.prepare(QByteArray("SELECT 1 FROM ") + GlobalSchema +
                                                    ".sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE");
    for (const ObjectName &name : m_shared->tablesOf(this)) {
        const StatementUse use(exists.get());
        bindValue(exists.get(), 1, Value::ofText(name.name));
        if (!m_main.step(exists.get()))
            m_shared->removeTable(name);
    }
    for (const ObjectName &name : m_catalogue.tableNames()) {
        if (name.isGlobalTemporary())
            m_shared->restoreTable(m_catalogue.table(name), this);
    }
}

void Connection::backup(const QString &path)
{
    if (QFileInfo::exists(path))
        throw Error(3033, {path});
    SqliteHandle target;
    target.open(path, false);
    sqlite3_backup *backup = sqlite3_backup_init(target.get(), "main", m_main.get(), "main");
    if (!backup)
        target.throwLastError();
    sqlite3_backup_step(backup, -1);
    if (sqlite3_backup_finish(backup) != SQLITE_OK)
        target.throwLastError();
}

} // namespace tsql
