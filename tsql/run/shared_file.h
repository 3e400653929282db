// What all connections of this process to one file have in common.
#pragma once

#include "tsql/write/catalogue.h"

#include <QMutex>

#include <atomic>

namespace tsql {

/** Global temporary tables live in an in-memory database of this name's making; the catalogue entries live here. */
class SharedFile
{
public:
    /** The one object of a file; it lives as long as somebody holds it. */
    static std::shared_ptr<SharedFile> Of(const QString &path);
    /** For a private database. */
    static std::shared_ptr<SharedFile> Alone();

    /** The URI to attach as GlobalSchema. */
    QByteArray TemporaryUri() const;

    /** Counts the definitions committed by any connection of this process. */
    std::atomic<quint64> definitions = 0;

    quint64 TablesVersion() const { return m_tablesVersion; }
    /** All global temporary tables. */
    std::vector<std::shared_ptr<const Table>> AllTables() const;
    /** `owner` is the connection whose end drops the table. */
    void AddTable(const std::shared_ptr<const Table> &table, const void *owner);
    /** Adds it unless it is there. */
    void RestoreTable(const std::shared_ptr<const Table> &table, const void *owner);
    void RemoveTable(const ObjectName &name);
    std::vector<ObjectName> TablesOf(const void *owner) const;

private:
    struct Entry
    {
        std::shared_ptr<const Table> table;
        const void *owner;
    };

    explicit SharedFile(int number) : m_number(number) {}

    const int m_number;
    std::atomic<quint64> m_tablesVersion = 0;
    mutable QMutex m_mutex;
    QHash<QString, Entry> m_tables;
};

} // namespace tsql
