#pragma once

#include "host/host_export.h"

#include <QSqlDatabase>

#include <functional>

namespace host {

/// While it lives, a transaction of this thread that cannot begin because another desk is writing asks `wait` instead
/// of failing. `wait` calls `attempt` now and then, until it gives true: the transaction has begun, or waiting any
/// longer is of no use. It returns earlier when the user gives up, and the transaction is refused.
///
/// Nothing is done yet when a transaction begins, so `wait` may run an event loop.
class HOST_EXPORT LockWait
{
public:
    using Attempt = std::function<bool()>;

    explicit LockWait(std::function<void(const Attempt &attempt)> wait);
    ~LockWait();
    LockWait(const LockWait &) = delete;
    LockWait &operator=(const LockWait &) = delete;

    /// Begins a transaction, waiting as above; false leaves the refusal in `connection.lastError()`.
    static bool Begin(QSqlDatabase &connection);

private:
    std::function<void(const Attempt &)> m_wait;
    LockWait *m_outer;
};

} // namespace host
