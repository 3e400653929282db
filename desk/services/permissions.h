#pragma once

#include "host/services/message_service.h"
#include "host/services/permission_service.h"

#include <QList>
#include <QSqlDatabase>

namespace desk {

/// A right as the user reads it.
struct NamedPermission
{
    host::TPermission permission;
    QString name;
};

/// A feature area and the rights that mean something in it.
struct NamedPart
{
    host::TSoftwarePart part;
    QString name;
    QList<host::TPermission> permissions;
};

/// Every right that exists, in the order in which screens show them.
const QList<NamedPermission> &AllPermissions();
/// Every feature area that has rights.
const QList<NamedPart> &AllParts();

/// Rights out of the table UserRights: a row grants, no row refuses.
class Permissions : public host::PermissionService
{
public:
    Permissions(const QSqlDatabase &connection, host::MessageService &messages);

    bool HavePermission(const host::TUserInfo &user, host::TSoftwarePart part, host::TPermission permission,
                        bool inform, bool record, const QString &text) override;

    /// The rights of a user as rows of the table; for the screen of rights.
    bool IsGranted(int user, host::TSoftwarePart part, host::TPermission permission) const;
    /// Replaces all rights of a user in one transaction.
    void Replace(int user, const QList<std::pair<host::TSoftwarePart, host::TPermission>> &rights);

private:
    QSqlDatabase m_connection;
    host::MessageService &m_messages;
};

} // namespace desk
