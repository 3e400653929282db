#include "tsql/connection.h"

#include "tsql/functions.h"
#include "tsql/interpreter.h"
#include "tsql/sqlite_errors.h"
#include "tsql/storage.h"

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
        throw Error(DeviceErrorNumber, u"The database file \"%1\" is no longer there."_s.arg(m_path));
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
        m_catalogueAtBegin = m_catalogue;
        m_transactionName = name;
        m_definedInTransaction = false;
    }
    ++m_session.transactions;
}

void Connection::commit()
{
    if (m_session.transactions == 0)
        throw Error(3902, u"The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."_s);
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
        throw Error(3903, u"The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."_s);
    if (!savepoint.isEmpty() && savepoint.compare(m_transactionName, Qt::CaseInsensitive) != 0) {
        auto found = m_savepoints.end();
        while (found != m_savepoints.begin() && std::prev(found)->name.compare(savepoint, Qt::CaseInsensitive) != 0)
            --found;
        if (found == m_savepoints.begin())
            throw Error(6401,
                        u"Cannot roll back %1. No transaction or savepoint of that name was found."_s.arg(savepoint));
        const auto position = std::prev(found) - m_savepoints.begin();
        m_main.execute("ROLLBACK TO tran" + QByteArray::number(qlonglong(position)));
        restoreCatalogue(m_savepoints[size_t(position)].catalogue);
        m_savepoints.erase(found, m_savepoints.end());
        return;
    }
    m_main.execute("ROLLBACK");
    restoreCatalogue(m_catalogueAtBegin);
    m_definedInTransaction = false;
    endTransaction();
}

void Connection::saveTransaction(const QString &name)
{
    if (m_session.transactions == 0)
        throw Error(628, u"Cannot issue SAVE TRANSACTION when there is no active transaction."_s);
    m_main.execute("SAVEPOINT tran" + QByteArray::number(qlonglong(m_savepoints.size())));
    m_savepoints.push_back({name, m_catalogue});
}

void Connection::endTransaction()
{
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
        throw Error(3033, u"The file \"%1\" exists already."_s.arg(path));
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
