#include "desk/application/database_creation.h"

#include "desk/application/connections.h"
#include "desk/messages/catalogue.h"
#include "host/data/database_error.h"
#include "host/data/query.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString ConnectionName = u"desk.creation"_s;

void RemoveDatabase(const QString &file)
{
    for (const QString &tail : {QString(), u"-wal"_s, u"-shm"_s})
        QFile::remove(file + tail);
}

void RunBatches(const QString &file, const QStringList &batches, const CreationProgress &progress)
{
    const auto remove = qScopeGuard([] { QSqlDatabase::removeDatabase(ConnectionName); });
    QSqlDatabase database = OpenEmbedded(file, ConnectionName);
    const auto close = qScopeGuard([&database] { database.close(); });
    for (int i = 0; i < batches.size(); ++i) {
        if (progress)
            progress(i, static_cast<int>(batches.size()));
        host::Exec(database, batches.at(i));
    }
    if (progress)
        progress(static_cast<int>(batches.size()), static_cast<int>(batches.size()));
}

} // namespace

QString DatabaseScript(const QString &name)
{
    QFile file(u":/desk/database/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("missing script: " + name.toStdString());
    return QString::fromUtf8(file.readAll());
}

QStringList Batches(const QString &script)
{
    QStringList batches;
    QString batch;
    for (const QString &line : script.split(u'\n')) {
        if (line.trimmed().compare(u"GO", Qt::CaseInsensitive) != 0) {
            batch += line + u'\n';
            continue;
        }
        if (!batch.trimmed().isEmpty())
            batches << batch;
        batch.clear();
    }
    if (!batch.trimmed().isEmpty())
        batches << batch;
    return batches;
}

void CreateDatabase(const QString &file, bool demo, const CreationProgress &progress)
{
    QStringList batches = Batches(DatabaseScript(u"schema.sql"_s)) + Batches(DatabaseScript(u"procedures.sql"_s));
    if (demo)
        batches += Batches(DatabaseScript(u"demo.sql"_s));
    const QFileInfo place(file);
    if (!QDir().mkpath(place.absolutePath()))
        throw host::DatabaseError(MessageText(message::NotWritable, {place.absolutePath()}));

    const QString draft = u"%1.%2.new"_s.arg(place.absoluteFilePath()).arg(QCoreApplication::applicationPid());
    RemoveDatabase(draft);
    const auto sweep = qScopeGuard([&draft] { RemoveDatabase(draft); });
    RunBatches(draft, batches, progress);
    if (!QFile::rename(draft, place.absoluteFilePath()) && !place.exists())
        throw host::DatabaseError(MessageText(message::NotWritable, {place.absoluteFilePath()}));
}

} // namespace desk
