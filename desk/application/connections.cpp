#include "desk/application/connections.h"

#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "tsql/qt/driver.h"

#include <QSqlError>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

QSqlDatabase OpenServer(const QString &connection, const QString &name)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QODBC"_s, name);
    // The driver manager gives the last part of a connection string a zero behind its end: that part is empty here.
    database.setDatabaseName(connection + u';');
    database.setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (!database.open())
        throw host::DatabaseError(database.lastError(), u"connect"_s);
    return database;
}

/// How long a command waits for another desk's writing before the user sees it, in milliseconds.
constexpr int SilentWait = 2000;

} // namespace

QSqlDatabase OpenEmbedded(const QString &file, const QString &name)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(new tsql::Driver, name);
    database.setDatabaseName(file);
    database.setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (!database.open())
        throw host::DatabaseError(database.lastError(), u"connect"_s);
    host::Exec(database, u"SET LOCK_TIMEOUT %1"_s.arg(SilentWait));
    return database;
}

OpenConnections::OpenConnections(const Options &options)
{
    try {
        m_connections.ADOConnection1 = Open(u"desk.main"_s, options);
        m_connections.FDConnection1 = Open(u"desk.goods_list"_s, options);
        m_connections.DibalConnection = Open(u"desk.scales"_s, options);
    } catch (...) {
        Close();
        throw;
    }
}

OpenConnections::~OpenConnections()
{
    Close();
}

QSqlDatabase OpenConnections::Open(const QString &name, const Options &options)
{
    m_names << name;
    return options.connection.isEmpty() ? OpenEmbedded(options.databaseFile, name)
                                        : OpenServer(options.connection, name);
}

void OpenConnections::Close()
{
    for (QSqlDatabase *each :
         {&m_connections.ADOConnection1, &m_connections.FDConnection1, &m_connections.DibalConnection}) {
        each->close();
        *each = QSqlDatabase();
    }
    for (const QString &name : std::as_const(m_names))
        QSqlDatabase::removeDatabase(name);
}

bool KeepsPersianLetters(const QSqlDatabase &connection)
{
    const QString letters = u"یک"_s;
    return host::Scalar(connection, u"SELECT "_s + host::QuotedStr(letters) + u" AS Letters"_s).toString() == letters;
}

} // namespace desk
