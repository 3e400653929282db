#pragma once

#include <QString>

struct sqlite3;

namespace bench {

/// The floor: SQLite's C API on a database file, with prepared statements and nothing else.
class Floor
{
public:
    /// Opens `file` as the product does (WAL, full synchronisation).
    explicit Floor(const QString &file);
    ~Floor();
    Floor(const Floor &) = delete;
    Floor &operator=(const Floor &) = delete;

    /// Reads every column of every row of a SELECT; the number of rows.
    int Read(const char *select) const;
    void Run(const char *statement) const;
    /// Inserts `count` goods with their price rows into two tables shaped like the product's, `batch` a transaction.
    void InsertGoods(int count, int batch) const;

private:
    sqlite3 *m_database = nullptr;
};

} // namespace bench
