#include "host/data/lock_wait.h"

#include "host/data/database_error.h"

#include <QSqlError>

#include <utility>

namespace host {

namespace {

LockWait *&Innermost()
{
    static thread_local LockWait *innermost = nullptr;
    return innermost;
}

} // namespace

LockWait::LockWait(std::function<void(const Attempt &attempt)> wait)
    : m_wait(std::move(wait)), m_outer(std::exchange(Innermost(), this))
{}

LockWait::~LockWait()
{
    Innermost() = m_outer;
}

bool LockWait::Begin(QSqlDatabase &connection)
{
    const auto locked = [&connection] {
        return DatabaseError(connection.lastError(), {}).Fault() == DatabaseFault::Locked;
    };
    bool begun = connection.transaction();
    if (!begun && Innermost() && locked()) {
        Innermost()->m_wait([&] {
            begun = connection.transaction();
            return begun || !locked();
        });
    }
    return begun;
}

} // namespace host
