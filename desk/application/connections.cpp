#include "desk/application/connections.h"

#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "tsql/driver.h"

#include <QtSql/QSqlError>

namespace desk {

namespace {

QSqlDatabase OpenServer(const QString &connection, const QString &name)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QODBC"_qs, name);
    // The driver manager gives the last part of a connection string a zero behind its end: that part is empty here.
    database.setDatabaseName(connection + u';');
    database.setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (!database.open())
        throw host::DatabaseError(database.lastError(), u"connect"_qs);
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
        throw host::DatabaseError(database.lastError(), u"connect"_qs);
    host::Exec(database, u"SET LOCK_TIMEOUT %1"_qs.arg(SilentWait));
    return database;
}

OpenConnections::OpenConnections(const Options &options)
{
    try {
        connections_.ADOConnection1 = Open(u"desk.main"_qs, options);
        connections_.FDConnection1 = Open(u"desk.goods_list"_qs, options);
        connections_.DibalConnection = Open(u"desk.scales"_qs, options);
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
    names_ << name;
    return options.connection.isEmpty() ? OpenEmbedded(options.databaseFile, name)
                                        : OpenServer(options.connection, name);
}

void OpenConnections::Close()
{
    for (QSqlDatabase *each :
         {&connections_.ADOConnection1, &connections_.FDConnection1, &connections_.DibalConnection}) {
        each->close();
        *each = QSqlDatabase();
    }
    for (const QString &name : std::as_const(names_))
        QSqlDatabase::removeDatabase(name);
}

bool KeepsPersianLetters(const QSqlDatabase &connection)
{
    const QString letters = u"یک"_qs;
    return host::Scalar(connection, u"SELECT "_qs + host::QuotedStr(letters) + u" AS Letters"_qs).toString() == letters;
}

} // namespace desk
