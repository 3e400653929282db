#pragma once

#include "host/host_export.h"

#include <QSqlDatabase>

namespace host {

/// A transaction by scope: what is not committed is rolled back. Begins with the write lock on the embedded database,
/// so that what is read inside it stays true until its end.
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

    /// Whether a transaction is open on the connection.
    static bool IsActive(const QSqlDatabase &connection);

private:
    QSqlDatabase connection_;
    bool open_ = true;
};

} // namespace host
