#include "host/data/transaction.h"

#include "host/data/database_error.h"

#include <QHash>
#include <QSqlDriver>
#include <QSqlError>

using namespace Qt::StringLiterals;

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

Transaction::Transaction(const QSqlDatabase &connection) : m_connection(connection)
{
    Open &open = OpenTransactions()[m_connection.driver()];
    if (open.depth == 0) {
        open.spoiled = false;
        if (!m_connection.transaction()) {
            OpenTransactions().remove(m_connection.driver());
            throw DatabaseError(m_connection.lastError(), u"BEGIN TRANSACTION"_s);
        }
    }
    ++open.depth;
}

Transaction::~Transaction()
{
    if (m_open) {
        Rollback();
    }
}

void Transaction::Commit()
{
    Open &open = OpenTransactions()[m_connection.driver()];
    if (open.depth > 1) {
        m_open = false;
        --open.depth;
        return;
    }
    if (open.spoiled) {
        Rollback();
        throw DatabaseError(u"تراکنش به دلیل خطای یک مرحله برگردانده شد."_s);
    }
    if (!m_connection.commit()) {
        const DatabaseError error(m_connection.lastError(), u"COMMIT"_s);
        Rollback();
        throw error;
    }
    m_open = false;
    OpenTransactions().remove(m_connection.driver());
}

void Transaction::Rollback()
{
    if (!m_open) {
        return;
    }
    m_open = false;
    Open &open = OpenTransactions()[m_connection.driver()];
    if (--open.depth > 0) {
        open.spoiled = true;
        return;
    }
    OpenTransactions().remove(m_connection.driver());
    // A connection that is gone has rolled back already; a failing rollback leaves nothing to do.
    m_connection.rollback();
}

bool Transaction::IsActive(const QSqlDatabase &connection)
{
    return OpenTransactions().contains(connection.driver());
}

} // namespace host
