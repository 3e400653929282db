#pragma once

#include "host/services/entity_service.h"

#include <QSqlDatabase>

namespace desk {

/// The number by which the working rows of this desk are told from those of others. It is reserved as codes are, so a
/// desk that was killed loses it after some minutes, and with it its rows.
class DetailDesk
{
public:
    DetailDesk(const QSqlDatabase &connection, host::EntityService &entities);

    /// Taken at the first call, which also removes the rows of desks that are gone. Throws host::DatabaseError.
    int Number();
    const QSqlDatabase &Connection() const { return m_connection; }

private:
    QSqlDatabase m_connection;
    host::EntityService &m_entities;
    int m_number = 0;
};

} // namespace desk
