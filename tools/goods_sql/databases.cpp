#include "tools/goods_sql/databases.h"

#include "tools/goods_sql/script_runner.h"
#include "tsql/driver.h"

#include <QFile>
#include <QSqlError>

namespace {

// A text in plain quotes is stored in the database's own character set: this one holds all of Unicode.
constexpr char Collation[] = "Persian_100_CI_AI_SC_UTF8";

QString scriptText(const QString &name)
{
    QFile file(u":/database/"_qs + name);
    if (!file.open(QIODevice::ReadOnly))
        throw ScriptError{u"%1: %2"_qs.arg(name, file.errorString())};
    return QString::fromUtf8(file.readAll());
}

} // namespace

QSqlDatabase Target::open(bool create) const
{
    if (isServer()) {
        if (create)
            createOnServer();
        return connect(m_name);
    }
    if (!create && !QFile::exists(m_name))
        throw ScriptError{u"%1: there is no such database (make it with --init)"_qs.arg(m_name)};
    return connect(m_name);
}

QSqlDatabase Target::connect(const QString &name) const
{
    QSqlDatabase database =
        isServer() ? QSqlDatabase::addDatabase(u"QODBC"_qs, name) : QSqlDatabase::addDatabase(new tsql::Driver, name);
    database.setDatabaseName(name);
    if (!database.open())
        throw ScriptError{u"cannot open the database: %1"_qs.arg(database.lastError().text())};
    return database;
}

QString Target::part(const QString &key) const
{
    const QStringList parts = m_name.split(u';');
    for (const QString &part : parts) {
        if (part.section(u'=', 0, 0).trimmed().compare(key, Qt::CaseInsensitive) == 0)
            return part.section(u'=', 1).trimmed();
    }
    return {};
}

QString Target::without(const QString &key) const
{
    QStringList parts = m_name.split(u';');
    parts.removeIf(
        [&](const QString &part) { return part.section(u'=', 0, 0).trimmed().compare(key, Qt::CaseInsensitive) == 0; });
    return parts.join(u';');
}

void Target::createOnServer() const
{
    QString name = part(u"Database"_qs);
    if (name.isEmpty())
        return;
    {
        const QSqlDatabase server = connect(without(u"Database"_qs));
        const QString text = QString(name).replace(u'\'', u"''"_qs);
        const QString quoted = u'[' + name.replace(u']', u"]]"_qs) + u']';
        ScriptRunner(server, nullptr)
            .run(
                u"IF DB_ID(N'%1') IS NULL CREATE DATABASE %2 COLLATE %3"_qs.arg(text, quoted, QLatin1String(Collation)),
                u"create database"_qs);
    }
    QSqlDatabase::removeDatabase(without(u"Database"_qs));
}

void initialise(const QSqlDatabase &database, bool demo)
{
    if (!database.tables().isEmpty())
        throw ScriptError{u"the database is not empty: --init leaves it as it is"_qs};
    ScriptRunner runner(database, nullptr);
    runner.run(scriptText(u"schema.sql"_qs), u"schema.sql"_qs);
    runner.run(scriptText(u"procedures.sql"_qs), u"procedures.sql"_qs);
    if (demo)
        runner.run(scriptText(u"demo.sql"_qs), u"demo.sql"_qs);
}

void backup(const QSqlDatabase &database, const QString &file)
{
    auto *driver = qobject_cast<tsql::Driver *>(database.driver());
    if (!driver)
        throw ScriptError{u"--backup is for the embedded database; a server has BACKUP DATABASE"_qs};
    if (!driver->backup(file))
        throw ScriptError{driver->lastError().databaseText()};
}
