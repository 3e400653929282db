#include "tsql/run/shared_file.h"

#include <QFileInfo>

namespace tsql {

namespace {

QMutex registryMutex;
int filesSeen = 0;

QHash<QString, std::weak_ptr<SharedFile>> &Registry()
{
    static QHash<QString, std::weak_ptr<SharedFile>> files;
    return files;
}

} // namespace

std::shared_ptr<SharedFile> SharedFile::Of(const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QMutexLocker lock(&registryMutex);
    std::weak_ptr<SharedFile> &known = Registry()[canonical];
    std::shared_ptr<SharedFile> file = known.lock();
    if (!file) {
        file.reset(new SharedFile(++filesSeen));
        known = file;
    }
    return file;
}

std::shared_ptr<SharedFile> SharedFile::Alone()
{
    const QMutexLocker lock(&registryMutex);
    return std::shared_ptr<SharedFile>(new SharedFile(++filesSeen));
}

QByteArray SharedFile::TemporaryUri() const
{
    return "file:/tsql-shared-" + QByteArray::number(m_number) + "?vfs=memdb";
}

std::vector<std::shared_ptr<const Table>> SharedFile::AllTables() const
{
    const QMutexLocker lock(&m_mutex);
    std::vector<std::shared_ptr<const Table>> all;
    for (const Entry &entry : m_tables)
        all.push_back(entry.table);
    return all;
}

void SharedFile::AddTable(const std::shared_ptr<const Table> &table, const void *owner)
{
    const QMutexLocker lock(&m_mutex);
    m_tables.insert(table->name.KeyText(), {table, owner});
    ++m_tablesVersion;
}

void SharedFile::RestoreTable(const std::shared_ptr<const Table> &table, const void *owner)
{
    const QMutexLocker lock(&m_mutex);
    if (m_tables.contains(table->name.KeyText()))
        return;
    m_tables.insert(table->name.KeyText(), {table, owner});
    ++m_tablesVersion;
}

void SharedFile::RemoveTable(const ObjectName &name)
{
    const QMutexLocker lock(&m_mutex);
    if (m_tables.remove(name.KeyText()))
        ++m_tablesVersion;
}

std::vector<ObjectName> SharedFile::TablesOf(const void *owner) const
{
    const QMutexLocker lock(&m_mutex);
    std::vector<ObjectName> names;
    for (const Entry &entry : m_tables) {
        if (entry.owner == owner)
            names.push_back(entry.table->name);
    }
    return names;
}

} // namespace tsql
