#include "bench/floor.h"

#include <sqlite3.h>
#include <stdexcept>

namespace bench {

namespace {

struct Statement
{
    Statement(sqlite3 *database, const char *text)
    {
        if (sqlite3_prepare_v2(database, text, -1, &handle, nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string(sqlite3_errmsg(database)) + ": " + text);
    }
    ~Statement() { sqlite3_finalize(handle); }
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    sqlite3_stmt *handle = nullptr;
};

/// Keeps the reading of values from being optimised away.
volatile qint64 sink = 0;

} // namespace

Floor::Floor(const QString &file)
{
    constexpr int Flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX; // as the product does
    if (sqlite3_open_v2(file.toUtf8().constData(), &m_database, Flags, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_database));
    Run("PRAGMA journal_mode=WAL");
    Run("PRAGMA synchronous=FULL");
    // The product's collation folds; reading in key order never calls it.
    sqlite3_create_collation(m_database, "TSQL_CI", SQLITE_UTF8, nullptr,
                             [](void *, int, const void *, int, const void *) { return 0; });
}

Floor::~Floor()
{
    sqlite3_close(m_database);
}

void Floor::Run(const char *statement) const
{
    char *error = nullptr;
    if (sqlite3_exec(m_database, statement, nullptr, nullptr, &error) != SQLITE_OK) {
        const std::string text = error ? error : statement;
        sqlite3_free(error);
        throw std::runtime_error(text);
    }
}

int Floor::Read(const char *select) const
{
    const Statement statement(m_database, select);
    const int columns = sqlite3_column_count(statement.handle);
    int rows = 0;
    while (sqlite3_step(statement.handle) == SQLITE_ROW) {
        ++rows;
        for (int i = 0; i < columns; ++i) {
            if (sqlite3_column_type(statement.handle, i) == SQLITE_INTEGER)
                sink = sink + sqlite3_column_int64(statement.handle, i);
            else if (sqlite3_column_blob(statement.handle, i))
                sink = sink + sqlite3_column_bytes(statement.handle, i);
        }
    }
    return rows;
}

void Floor::InsertGoods(int count, int batch) const
{
    Run("CREATE TABLE IF NOT EXISTS g (Code INTEGER PRIMARY KEY, GrpCode, tags, Name, kala_name, kala_type, kala_index,"
        " AbbName, Unit, Store, SMSCode, MinAva, Comment, CreatedTime, CreatedDate, UserCreated)");
    Run("CREATE INDEX IF NOT EXISTS g_name ON g (Name)");
    Run("CREATE INDEX IF NOT EXISTS g_index ON g (kala_index)");
    Run("CREATE INDEX IF NOT EXISTS g_barcode ON g (AbbName)");
    Run("CREATE TABLE IF NOT EXISTS d (GoodCode INTEGER PRIMARY KEY, a, b, c, d, e, f, g, h, i, j)");
    const Statement good(m_database,
                         "INSERT INTO g VALUES (?1,1,'1',?2,?2,'a','b',?3,1,1,?1,0,'','10:00:00','1405/01/01','u')");
    const Statement price(m_database, "INSERT INTO d VALUES (?1,0,0,0,0,0,0,0,0,1,1)");
    for (int i = 1; i <= count; ++i) {
        if (i % batch == 1)
            Run("BEGIN IMMEDIATE");
        const QByteArray name = "good number " + QByteArray::number(i);
        const QByteArray barcode = "!626" + QByteArray::number(1000000000 + i) + '!';
        sqlite3_bind_int(price.handle, 1, i);
        sqlite3_step(price.handle);
        sqlite3_reset(price.handle);
        sqlite3_bind_int(good.handle, 1, i);
        sqlite3_bind_text(good.handle, 2, name.constData(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(good.handle, 3, barcode.constData(), static_cast<int>(barcode.size()), SQLITE_TRANSIENT);
        if (sqlite3_step(good.handle) != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(m_database));
        sqlite3_reset(good.handle);
        if (i % batch == 0 || i == count)
            Run("COMMIT");
    }
}

} // namespace bench
