#include "tools/goods_sql/databases.h"

#include "tools/goods_sql/script_runner.h"
#include "tsql/qt/driver.h"

#include <QFile>
#include <QScopeGuard>
#include <QSqlError>

using namespace Qt::StringLiterals;

namespace {

// A text in plain quotes is stored in the database's own character set: this one holds all of Unicode.
constexpr char Collation[] = "Persian_100_CI_AI_SC_UTF8";

} // namespace

QString EmbeddedScript(const QString &name)
{
    QFile file(u":/database/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        throw ScriptError{u"%1: %2"_s.arg(name, file.errorString())};
    return QString::fromUtf8(file.readAll());
}

QSqlDatabase Target::Open(bool create, const QString &connectionName) const
{
    if (IsServer() && create)
        CreateOnServer();
    if (!IsServer() && !create && !QFile::exists(m_name))
        throw ScriptError{u"%1: there is no such database (make it with --init)"_s.arg(m_name)};
    return Connect(connectionName);
}

QSqlDatabase Target::Connect(const QString &connectionName) const
{
    QSqlDatabase database = IsServer() ? QSqlDatabase::addDatabase(u"QODBC"_s, connectionName)
                                       : QSqlDatabase::addDatabase(new tsql::Driver, connectionName);
    // The driver manager gives the last part of a connection string a zero behind its end: that part is empty here.
    database.setDatabaseName(IsServer() ? m_name + u';' : m_name);
    database.setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (!database.open())
        throw ScriptError{u"cannot open the database: %1"_s.arg(database.lastError().text())};
    return database;
}

QString Target::Part(const QString &key) const
{
    const QStringList parts = m_name.split(u';');
    for (const QString &part : parts) {
        if (part.section(u'=', 0, 0).trimmed().compare(key, Qt::CaseInsensitive) == 0)
            return part.section(u'=', 1).trimmed();
    }
    return {};
}

QString Target::Without(const QString &key) const
{
    QStringList parts = m_name.split(u';');
    parts.removeIf(
        [&](const QString &part) { return part.section(u'=', 0, 0).trimmed().compare(key, Qt::CaseInsensitive) == 0; });
    return parts.join(u';');
}

void Target::CreateOnServer() const
{
    // A list that is read in blocks must not hold up what its own desk writes.
    RunOnServer(u"IF DB_ID(N'%1') IS NULL\nBEGIN\n    CREATE DATABASE %2 COLLATE "_s + QLatin1String(Collation) +
                u"\n    ALTER DATABASE %2 SET READ_COMMITTED_SNAPSHOT ON\nEND"_s);
}

void Target::DropOnServer() const
{
    RunOnServer(u"IF DB_ID(N'%1') IS NOT NULL DROP DATABASE %2"_s);
}

/** %1 is the name of the database as it stands in a text, %2 as it stands elsewhere. */
void Target::RunOnServer(const QString &format) const
{
    const QString connection = u"goods-sql.server"_s;
    QString name = Part(u"Database"_s);
    if (name.isEmpty())
        return;
    const auto remove = qScopeGuard([&] { QSqlDatabase::removeDatabase(connection); });
    const QSqlDatabase server = Target(Without(u"Database"_s)).Connect(connection);
    const QString text = QString(name).replace(u'\'', u"''"_s);
    const QString quoted = u'[' + name.replace(u']', u"]]"_s) + u']';
    ScriptRunner(server, nullptr).Run(format.arg(text, quoted), u"server"_s);
}

namespace {

bool IsEmpty(const QSqlDatabase &database)
{
    if (qobject_cast<tsql::Driver *>(database.driver()))
        return database.tables().isEmpty();
    // QSqlDatabase::tables() keeps to itself that the server refused to tell.
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(u"SELECT COUNT(*) FROM INFORMATION_SCHEMA.TABLES"_s) || !query.next())
        throw ScriptError{query.lastError().text()};
    return query.value(0).toInt() == 0;
}

} // namespace

void Initialise(QSqlDatabase database, bool demo)
{
    if (!IsEmpty(database))
        throw ScriptError{u"the database is not empty: --init leaves it as it is (to begin anew, drop it or name "
                          "another one)"_s};
    // All or nothing: what fails half-way leaves an empty database, in which the next --init can begin again.
    if (!database.transaction())
        throw ScriptError{database.lastError().text()};
    auto takeBack = qScopeGuard([&] { database.rollback(); });
    QStringList scripts{u"schema.sql"_s, u"procedures.sql"_s};
    if (demo)
        scripts += u"demo.sql"_s;
    for (const QString &script : std::as_const(scripts))
        ScriptRunner(database, nullptr).Run(EmbeddedScript(script), script);
    if (!database.commit())
        throw ScriptError{database.lastError().text()};
    takeBack.dismiss();
}

void Backup(const QSqlDatabase &database, const QString &file)
{
    auto *driver = qobject_cast<tsql::Driver *>(database.driver());
    if (!driver)
        throw ScriptError{u"--backup is for the embedded database; a server has BACKUP DATABASE"_s};
    if (!driver->Backup(file))
        throw ScriptError{driver->lastError().databaseText()};
}
