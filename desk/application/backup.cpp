#include "desk/application/backup.h"

#include "desk/application/connections.h"
#include "desk/application/schema_check.h"
#include "desk/messages/catalogue.h"
#include "host/data/database_error.h"
#include "tsql/qt/driver.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString ConnectionName = u"desk.backup"_s;

QString DraftOf(const QString &file)
{
    return u"%1.%2.new"_s.arg(file).arg(QCoreApplication::applicationPid());
}

void RemoveFiles(const QString &file)
{
    for (const QString &tail : {QString(), u"-wal"_s, u"-shm"_s})
        QFile::remove(file + tail);
}

void CopyInto(const QSqlDatabase &connection, const QString &draft)
{
    RemoveFiles(draft);
    auto *driver = dynamic_cast<tsql::Driver *>(connection.driver());
    if (!driver || !driver->Backup(draft))
        throw host::DatabaseError(driver ? driver->lastError().databaseText() : MessageText(message::NoBackupOfServer));
}

} // namespace

void BackUp(const QSqlDatabase &connection, const QString &file)
{
    const QString draft = DraftOf(file);
    const auto sweep = qScopeGuard([&draft] { RemoveFiles(draft); });
    CopyInto(connection, draft);
    CheckBackup(draft);
    QFile::remove(file);
    if (!QFile::rename(draft, file))
        throw host::DatabaseError(MessageText(message::NotWritable, {file}));
}

void CheckBackup(const QString &file)
{
    const QString name = QFileInfo(file).fileName();
    QString trouble;
    try {
        const auto remove = qScopeGuard([] { QSqlDatabase::removeDatabase(ConnectionName); });
        QSqlDatabase database = OpenEmbedded(file, ConnectionName);
        const auto close = qScopeGuard([&database] { database.close(); });
        trouble = SchemaTrouble(CompareSchema(database), name);
    } catch (const host::DatabaseError &error) {
        trouble = MessageText(message::AnotherSchema, {name, error.Text().simplified()});
    }
    if (!trouble.isEmpty())
        throw host::DatabaseError(trouble);
}

QString Restore(const QString &backup, const QString &file)
{
    CheckBackup(backup);
    const QString draft = DraftOf(file);
    const auto sweep = qScopeGuard([&draft] { RemoveFiles(draft); });
    {
        // Through the database, not the file system: the copy may have a journal of its own that is not written yet.
        const auto remove = qScopeGuard([] { QSqlDatabase::removeDatabase(ConnectionName); });
        QSqlDatabase source = OpenEmbedded(backup, ConnectionName);
        const auto close = qScopeGuard([&source] { source.close(); });
        CopyInto(source, draft);
    }
    // Whoever closes a database last takes its journal away.
    if (QFileInfo::exists(file + u"-wal"_s))
        throw host::DatabaseError(MessageText(message::DatabaseInUse, {QFileInfo(file).fileName()}));
    QString former;
    if (QFileInfo::exists(file)) {
        former = CopyBeside(file);
        if (!QFile::rename(file, former))
            throw host::DatabaseError(MessageText(message::NotWritable, {file}));
    }
    if (!QFile::rename(draft, file)) {
        if (!former.isEmpty())
            QFile::rename(former, file);
        throw host::DatabaseError(MessageText(message::NotWritable, {file}));
    }
    return former;
}

} // namespace desk
