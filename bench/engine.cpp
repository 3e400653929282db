#include "bench/engine.h"

#include "bench/report.h"
#include "host/data/dataset.h"
#include "host/data/query.h"
#include "tsql/qt/driver.h"

#include <QStringBuilder>
#include <QTemporaryDir>
#include <QtSql>

#include <cstdio>
#include <sqlite3.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Rows = 200000;
constexpr int Lists = 1000;
constexpr int ListRows = 200;

/// Keeps what is read from being optimised away.
volatile qint64 sink = 0;

/// Spreads the lookups over the table.
int CodeAt(int i)
{
    return static_cast<int>(i * 7919LL % Rows) + 1;
}

class Product
{
public:
    explicit Product(const QString &file)
    {
        m_database = QSqlDatabase::addDatabase(new tsql::Driver, u"engine"_s);
        m_database.setDatabaseName(file);
        m_database.setNumericalPrecisionPolicy(QSql::HighPrecision);
        if (!m_database.open())
            throw std::runtime_error(m_database.lastError().text().toStdString());
        m_query = QSqlQuery(m_database);
        m_query.setForwardOnly(true);
        Run(u"CREATE TABLE g (Code int PRIMARY KEY, Name nvarchar(50), Cost decimal(23,9), Unit int)"_s);
    }
    ~Product()
    {
        m_query = QSqlQuery();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(u"engine"_s);
    }
    Product(const Product &) = delete;
    Product &operator=(const Product &) = delete;

    void Insert()
    {
        Run(u"BEGIN TRAN"_s);
        for (int i = 1; i <= Rows; ++i) {
            const QString number = QString::number(i);
            Run(u"INSERT INTO g (Code, Name, Cost, Unit) VALUES ("_s % number % u", N'good number "_s % number %
                u"', "_s % number % u".25, 3)"_s);
        }
        Run(u"COMMIT"_s);
    }

    void LookUp()
    {
        for (int i = 1; i <= Rows; ++i)
            Read(u"SELECT Name, Cost FROM g WHERE Code = "_s + QString::number(CodeAt(i)), 2);
    }

    /// As the program reads its lists.
    void List()
    {
        host::Query rows(m_database);
        for (int i = 1; i <= Lists; ++i) {
            const int first = CodeAt(i);
            rows.Open(u"SELECT Code, Name, Cost, Unit FROM g WHERE Code BETWEEN "_s + QString::number(first) +
                      u" AND "_s + QString::number(first + ListRows - 1));
            sink = sink + rows.RecordCount();
        }
    }

    void ReadAll()
    {
        host::Dataset rows(m_database);
        rows.Open(u"SELECT Code, Name, Cost, Unit FROM g"_s);
        rows.FetchAll();
        sink = sink + rows.RecordCount();
    }

private:
    void Run(const QString &text)
    {
        if (!m_query.exec(text))
            throw std::runtime_error(m_query.lastError().text().toStdString());
    }

    void Read(const QString &text, int columns)
    {
        Run(text);
        while (m_query.next()) {
            for (int i = 0; i < columns; ++i)
                sink = sink + !m_query.value(i).isNull();
        }
    }

    QSqlDatabase m_database;
    QSqlQuery m_query;
};

/// The same texts through the driver that comes with Qt: SQLite parses each of them.
class QtSqlite
{
public:
    explicit QtSqlite(const QString &file)
    {
        m_database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"qtsqlite"_s);
        m_database.setDatabaseName(file);
        if (!m_database.open())
            throw std::runtime_error(m_database.lastError().text().toStdString());
        m_query = QSqlQuery(m_database);
        m_query.setForwardOnly(true);
        for (const char *text : {"PRAGMA journal_mode = WAL", "PRAGMA synchronous = FULL",
                                 "CREATE TABLE g (Code INTEGER PRIMARY KEY, Name TEXT, Cost BLOB, Unit INTEGER)"})
            Run(QLatin1String(text));
    }
    ~QtSqlite()
    {
        m_query = QSqlQuery();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(u"qtsqlite"_s);
    }
    QtSqlite(const QtSqlite &) = delete;
    QtSqlite &operator=(const QtSqlite &) = delete;

    void Insert()
    {
        Run(u"BEGIN"_s);
        for (int i = 1; i <= Rows; ++i) {
            const QString number = QString::number(i);
            Run(u"INSERT INTO g (Code, Name, Cost, Unit) VALUES ("_s % number % u", 'good number "_s % number %
                u"', x'86010203040506', 3)"_s);
        }
        Run(u"COMMIT"_s);
    }

private:
    void Run(const QString &text)
    {
        if (!m_query.exec(text))
            throw std::runtime_error(m_query.lastError().text().toStdString());
    }

    QSqlDatabase m_database;
    QSqlQuery m_query;
};

class CApi
{
public:
    explicit CApi(const QString &file)
    {
        constexpr int Flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX; // as the product does
        if (sqlite3_open_v2(file.toUtf8().constData(), &m_database, Flags, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_database));
        Run("PRAGMA journal_mode = WAL");
        Run("PRAGMA synchronous = FULL");
        Run("CREATE TABLE g (Code INTEGER PRIMARY KEY, Name TEXT, Cost BLOB, Unit INTEGER)");
    }
    ~CApi() { sqlite3_close(m_database); }
    CApi(const CApi &) = delete;
    CApi &operator=(const CApi &) = delete;

    void Insert()
    {
        sqlite3_stmt *statement = Prepare("INSERT INTO g (Code, Name, Cost, Unit) VALUES (?1, ?2, ?3, 3)");
        Run("BEGIN");
        for (int i = 1; i <= Rows; ++i) {
            const QByteArray name = "good number " + QByteArray::number(i);
            sqlite3_bind_int(statement, 1, i);
            sqlite3_bind_text(statement, 2, name.constData(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
            sqlite3_bind_blob(statement, 3, "\x86\x01\x02\x03\x04\x05\x06", 7, SQLITE_STATIC);
            Read(statement);
        }
        sqlite3_finalize(statement);
        Run("COMMIT");
    }

    void LookUp()
    {
        sqlite3_stmt *statement = Prepare("SELECT Name, Cost FROM g WHERE Code = ?1");
        for (int i = 1; i <= Rows; ++i) {
            sqlite3_bind_int(statement, 1, CodeAt(i));
            Read(statement);
        }
        sqlite3_finalize(statement);
    }

    void List()
    {
        sqlite3_stmt *statement = Prepare("SELECT Code, Name, Cost, Unit FROM g WHERE Code BETWEEN ?1 AND ?2");
        for (int i = 1; i <= Lists; ++i) {
            sqlite3_bind_int(statement, 1, CodeAt(i));
            sqlite3_bind_int(statement, 2, CodeAt(i) + ListRows - 1);
            Read(statement);
        }
        sqlite3_finalize(statement);
    }

    void ReadAll()
    {
        sqlite3_stmt *statement = Prepare("SELECT Code, Name, Cost, Unit FROM g");
        Read(statement);
        sqlite3_finalize(statement);
    }

private:
    void Run(const char *text)
    {
        if (sqlite3_exec(m_database, text, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_database));
    }

    sqlite3_stmt *Prepare(const char *text)
    {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_database, text, -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_database));
        return statement;
    }

    void Read(sqlite3_stmt *statement)
    {
        const int columns = sqlite3_column_count(statement);
        int code = sqlite3_step(statement);
        for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
            for (int i = 0; i < columns; ++i) {
                if (sqlite3_column_type(statement, i) == SQLITE_INTEGER)
                    sink = sink + sqlite3_column_int64(statement, i);
                else if (sqlite3_column_blob(statement, i))
                    sink = sink + sqlite3_column_bytes(statement, i);
            }
        }
        if (code != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(m_database));
        sqlite3_reset(statement);
    }

    sqlite3 *m_database = nullptr;
};

} // namespace

void MeasureEngine(Report &report)
{
    const QTemporaryDir folder;
    Product product(folder.filePath(u"product.db"_s));
    CApi floor(folder.filePath(u"floor.db"_s));
    const auto add = [&report](const QString &what, int statements, void (Product::*work)(), void (CApi::*same)(),
                               Product &ours, CApi &theirs) {
        Line line{what, Timed([&] { (ours.*work)(); }), {}, {}, static_cast<double>(statements)};
        line.floor = Timed([&] { (theirs.*same)(); });
        report.Add(line);
        return line.floor;
    };
    const auto inserts =
        add(u"engine: %1 single-row inserts"_s.arg(Rows), Rows, &Product::Insert, &CApi::Insert, product, floor);
    if (QSqlDatabase::isDriverAvailable(u"QSQLITE"_s)) {
        QtSqlite driver(folder.filePath(u"qtsqlite.db"_s));
        report.Add({u"engine: the same inserts, Qt's own SQLite driver"_s,
                    Timed([&] { driver.Insert(); }),
                    inserts,
                    {},
                    Rows});
    } else {
        std::fputs("Qt's own SQLite driver is not installed: its row is left out.\n", stderr);
    }
    add(u"engine: %1 point selects"_s.arg(Rows), Rows, &Product::LookUp, &CApi::LookUp, product, floor);
    add(u"engine: %1 lists of %2 rows"_s.arg(Lists).arg(ListRows), Lists, &Product::List, &CApi::List, product, floor);
    add(u"engine: %1 rows into a data set"_s.arg(Rows), 1, &Product::ReadAll, &CApi::ReadAll, product, floor);
}

} // namespace bench
