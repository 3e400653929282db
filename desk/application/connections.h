#pragma once

#include "desk/application/options.h"
#include "host/host.h"

namespace desk {

/// The desk's three connections, open for as long as this object lives. Made before the services that use them.
class OpenConnections
{
public:
    /// Opens the embedded database file or, when the options say so, a server through ODBC.
    /// Throws host::DatabaseError when that fails.
    explicit OpenConnections(const Options &options);
    ~OpenConnections();
    OpenConnections(const OpenConnections &) = delete;
    OpenConnections &operator=(const OpenConnections &) = delete;

    const host::Connections &Get() const { return m_connections; }

private:
    QSqlDatabase Open(const QString &name, const Options &options);
    void Close();

    host::Connections m_connections;
    QStringList m_names;
};

/// One connection to an embedded database file, under a name. Throws host::DatabaseError.
QSqlDatabase OpenEmbedded(const QString &file, const QString &name);

/// Whether Persian ی and ک come back from the database as they were sent, in the plain literals that statements hold.
bool KeepsPersianLetters(const QSqlDatabase &connection);

} // namespace desk
