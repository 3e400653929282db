// SQLite's C API with owners.
#pragma once

#include "tsql/values/value.h"

#include <QString>

#include <memory>
#include <sqlite3.h>

namespace tsql {

struct StatementDeleter
{
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using PreparedStatement = std::unique_ptr<sqlite3_stmt, StatementDeleter>;

/** Resets a statement when its use ends, so that no lock outlives it. */
class StatementUse
{
public:
    explicit StatementUse(sqlite3_stmt *statement) : m_statement(statement) {}
    ~StatementUse()
    {
        if (m_statement)
            sqlite3_reset(m_statement);
    }
    StatementUse(const StatementUse &) = delete;
    StatementUse &operator=(const StatementUse &) = delete;

private:
    sqlite3_stmt *m_statement;
};

/** One SQLite handle. Failures are thrown as Error with the server's number and text. */
class SqliteHandle
{
public:
    /** How long a statement waits for another writer before it is refused, unless set otherwise, in milliseconds. */
    static constexpr int BusyTimeout = 30'000;

    SqliteHandle() = default;
    ~SqliteHandle() { Close(); }
    SqliteHandle(const SqliteHandle &) = delete;
    SqliteHandle &operator=(const SqliteHandle &) = delete;

    /** Opens (and makes, unless `readOnly`) the file with a write-ahead log that is safe against a power cut. */
    void Open(const QString &path, bool readOnly);
    void Close();
    bool IsOpen() const { return m_db != nullptr; }
    void WaitForLocks(int milliseconds) const { sqlite3_busy_timeout(m_db, milliseconds); }
    sqlite3 *Get() const { return m_db; }

    void Execute(const char *sql) const;
    void Execute(const QByteArray &sql) const { Execute(sql.constData()); }
    /** `keep` for statements that will be run again. */
    PreparedStatement Prepare(const QByteArray &sql, bool keep = false) const;
    /** True for a row, false at the end. */
    bool Step(sqlite3_stmt *statement) const;
    /** The first column of the first row, 0 without rows. */
    qint64 ScalarInteger(const char *sql) const;
    bool InTransaction() const { return sqlite3_get_autocommit(m_db) == 0; }
    /** True when the file was removed or renamed behind our back. */
    bool FileIsGone() const;

    /** Throws what the handle last complained about. */
    [[noreturn]] void ThrowLastError() const;

private:
    sqlite3 *m_db = nullptr;
};

/** Several SQLite statements that take effect together or not at all, inside or outside of a transaction. */
class StatementScope
{
public:
    explicit StatementScope(const SqliteHandle &handle) : m_handle(handle) { m_handle.Execute("SAVEPOINT statement"); }
    ~StatementScope();
    StatementScope(const StatementScope &) = delete;
    StatementScope &operator=(const StatementScope &) = delete;

    /** Without this call everything is undone. */
    void Release();

private:
    const SqliteHandle &m_handle;
    bool m_done = false;
};

void BindValue(sqlite3_stmt *statement, int index, const Value &value);
Value ColumnValue(sqlite3_stmt *statement, int column);

} // namespace tsql
