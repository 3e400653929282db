#include "host/data/transaction.h"

#include "host/data/database_error.h"
#include "host/data/lock_wait.h"
#include "host/data/query.h"
#include "host/data/statement.h"

#include <QHash>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace host {

namespace {

struct Open
{
    int depth = 0;
    bool spoiled = false;
    bool byText = false; ///< begun and ended by statements, of which the first goes along with what comes next
    bool begun = false;  ///< as far as the database knows
    QStringList waiting; ///< what Run() was given and nobody has sent yet
    std::vector<std::function<void(bool committed)>> ended;
};

/// Open transactions by driver: copies of a QSqlDatabase share it. By thread, as connections are.
QHash<const QSqlDriver *, Open> &OpenTransactions()
{
    static thread_local QHash<const QSqlDriver *, Open> open;
    return open;
}

/// Over ODBC the driver begins a transaction by a request of its own and ends it by two: as texts the begin costs no
/// way to the server and the end one.
bool ByText(const QSqlDatabase &connection)
{
    return connection.driverName() == u"QODBC";
}

/// Neither counted nor watched, as those of a driver are not.
QSqlError SendEnd(const QSqlDatabase &connection, const QString &text)
{
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    return query.exec(text) ? QSqlError() : query.lastError();
}

void End(const QSqlDatabase &connection, bool committed)
{
    // Taken out first: what runs here may begin a transaction of its own.
    const Open last = OpenTransactions().take(connection.driver());
    for (const auto &ended : last.ended) {
        ended(committed);
    }
}

} // namespace

Transaction::Transaction(const QSqlDatabase &connection) : m_connection(connection)
{
    const bool byText = ByText(m_connection);
    if (!IsActive(m_connection) && !(byText ? m_connection.isOpen() : LockWait::Begin(m_connection))) {
        throw DatabaseError(m_connection.lastError(), u"BEGIN TRANSACTION"_s);
    }
    Open &open = OpenTransactions()[m_connection.driver()];
    open.byText = byText;
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
    if (!open.waiting.isEmpty()) {
        Exec(m_connection, open.waiting.takeLast()); // and with it those before it
    }
    QSqlError refused;
    if (!open.byText && !m_connection.commit()) {
        refused = m_connection.lastError();
    } else if (open.begun) {
        refused = SendEnd(m_connection, u"COMMIT TRANSACTION"_s);
    }
    if (refused.isValid()) {
        const DatabaseError error(refused, u"COMMIT"_s);
        Rollback();
        throw error;
    }
    m_open = false;
    End(m_connection, true);
}

void Transaction::WhenEnded(const QSqlDatabase &connection, std::function<void(bool committed)> ended)
{
    if (IsActive(connection)) {
        OpenTransactions()[connection.driver()].ended.push_back(std::move(ended));
    } else {
        ended(true);
    }
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
    // A connection that is gone has rolled back already; a failing rollback leaves nothing to do.
    if (!open.byText) {
        m_connection.rollback();
    } else if (open.begun) {
        SendEnd(m_connection, u"IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION"_s);
    }
    End(m_connection, false);
}

void Run(const QSqlDatabase &connection, const QString &text)
{
    if (Transaction::IsActive(connection)) {
        OpenTransactions()[connection.driver()].waiting += text;
    } else {
        Exec(connection, text);
    }
}

QString WithWaiting(const QSqlDatabase &connection, const QString &text)
{
    const auto open = OpenTransactions().find(connection.driver());
    if (open == OpenTransactions().end()) {
        return text;
    }
    QStringList texts = std::exchange(open->waiting, {}) << text;
    if (open->byText && !std::exchange(open->begun, true)) {
        texts.prepend(u"BEGIN TRANSACTION"_s);
    }
    return texts.join(u'\n');
}

bool Transaction::IsActive(const QSqlDatabase &connection)
{
    return OpenTransactions().contains(connection.driver());
}

} // namespace host
