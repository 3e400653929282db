#include "host/data/transaction.h"

#include "host/data/database_error.h"
#include "host/data/lock_wait.h"

#include <QHash>
#include <QSqlDriver>
#include <QSqlError>

namespace host {

namespace {

struct Open
{
    int depth = 0;
    bool spoiled = false;
};

/// Open transactions by driver: copies of a QSqlDatabase share it. By thread, as connections are.
QHash<const QSqlDriver *, Open> &OpenTransactions()
{
    static thread_local QHash<const QSqlDriver *, Open> open;
    return open;
}

} // namespace

Transaction::Transaction(const QSqlDatabase &connection) : connection_(connection)
{
    if (!IsActive(connection_) && !LockWait::Begin(connection_)) {
        throw DatabaseError(connection_.lastError(), QStringLiteral("BEGIN TRANSACTION"));
    }
    ++OpenTransactions()[connection_.driver()].depth;
}

Transaction::~Transaction()
{
    if (open_) {
        Rollback();
    }
}

void Transaction::Commit()
{
    Open &open = OpenTransactions()[connection_.driver()];
    if (open.depth > 1) {
        open_ = false;
        --open.depth;
        return;
    }
    if (open.spoiled) {
        Rollback();
        throw DatabaseError(QStringLiteral("تراکنش به دلیل خطای یک مرحله برگردانده شد."));
    }
    if (!connection_.commit()) {
        const DatabaseError error(connection_.lastError(), QStringLiteral("COMMIT"));
        Rollback();
        throw error;
    }
    open_ = false;
    OpenTransactions().remove(connection_.driver());
}

void Transaction::Rollback()
{
    if (!open_) {
        return;
    }
    open_ = false;
    Open &open = OpenTransactions()[connection_.driver()];
    if (--open.depth > 0) {
        open.spoiled = true;
        return;
    }
    OpenTransactions().remove(connection_.driver());
    // A connection that is gone has rolled back already; a failing rollback leaves nothing to do.
    connection_.rollback();
}

bool Transaction::IsActive(const QSqlDatabase &connection)
{
    return OpenTransactions().contains(connection.driver());
}

} // namespace host
