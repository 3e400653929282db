#pragma once

#include "host/host_export.h"

#include <QSqlDatabase>

#include <functional>

namespace host {

/// A transaction by scope: what is not committed is rolled back. Begins with the write lock on the embedded database,
/// so that what is read inside it stays true until its end. On a server it begins with the first statement, which
/// throws when the connection is gone.
///
/// Transactions on one connection nest by depth: only the outermost one begins and ends in the database. An inner one
/// that ends without Commit() spoils the outer ones: their Commit() throws and everything is rolled back.
class HOST_EXPORT Transaction
{
public:
    /// Throws DatabaseError when the transaction cannot begin (connection gone, write lock not to be had in time nor by
    /// LockWait).
    explicit Transaction(const QSqlDatabase &connection);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// Makes the writes last. Throws DatabaseError when the database refuses or an inner transaction was rolled back;
    /// nothing is written then.
    void Commit();
    /// Undoes the writes now instead of at the end of the scope.
    void Rollback();

    /// Runs `ended` when the outermost transaction on the connection has ended and its outcome is known; at once, as
    /// committed, when none is open. What is remembered about the database must not run ahead of it. `ended` must not
    /// throw.
    static void WhenEnded(const QSqlDatabase &connection, std::function<void(bool committed)> ended);
    /// Whether a transaction is open on the connection.
    static bool IsActive(const QSqlDatabase &connection);

private:
    QSqlDatabase m_connection;
    bool m_open = true;
};

/// Runs a statement whose result nobody wants. Inside a transaction it waits and goes to the database in one text with
/// the next statement that is asked for a result, or before the commit: over a network each text costs a way there and
/// back. Its error comes then, and the transaction is lost by it as by any other. Throws DatabaseError.
HOST_EXPORT void Run(const QSqlDatabase &connection, const QString &text);

} // namespace host
