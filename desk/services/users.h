#pragma once

#include "host/services/entity_service.h"

#include <QList>
#include <QSqlDatabase>

namespace desk {

/// How a user is listed: the name and, in Persian digits, the code.
QString UserCaption(const host::Entity &user);

/// The people who sign in: the table Users. Everything throws DatabaseError.
class Users
{
public:
    static constexpr int NameLength = 50;

    explicit Users(const QSqlDatabase &connection) : m_connection(connection) {}

    /// All users by code.
    QList<host::Entity> All() const;
    /// True when somebody other than `except` has the name, spelled in any way.
    bool NameTaken(const QString &name, int except = 0) const;
    /// Adds a user who may do nothing yet; the new code.
    int Add(const QString &name);
    void Rename(int code, const QString &name);

private:
    QSqlDatabase m_connection;
};

} // namespace desk
