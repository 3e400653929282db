// The administrator's command line on a file: what it prints, where it stops, and copies while somebody writes.

#include "tests/support/test_main.h"
#include "tsql/qt/driver.h"

#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

class TestGoodsSql : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void runs_data();
    void runs();
    void createsOnce();
    void createsAllOrNothing();
    void copiesWhileRowsAreWritten();
    void checksForFaults();
    void upgrades();
    void upgradesAsAWhole();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    /// The exit code, what was printed and what was complained of, one after the other.
    QString run(const QStringList &arguments, const QByteArray &input = {}) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

QString TestGoodsSql::run(const QStringList &arguments, const QByteArray &input) const
{
    QProcess program;
    program.setWorkingDirectory(m_folder->path());
    program.start(QString::fromUtf8(GOODS_SQL), arguments);
    program.write(input);
    program.closeWriteChannel();
    if (!program.waitForFinished() || program.exitStatus() != QProcess::NormalExit)
        return u"it did not end: "_s + program.errorString();
    return QString::number(program.exitCode()) + u'\n' + QString::fromUtf8(program.readAllStandardOutput()) +
           QString::fromUtf8(program.readAllStandardError());
}

void TestGoodsSql::runs_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("said");
    const QByteArray table = "CREATE TABLE G (Code int, Name nvarchar(30), Cost decimal(9,2), Tags varbinary(4))\ngo\n"
                             "INSERT G VALUES (7, N'شِیر', 12.5, NULL), (120, N'a,\"b\"', NULL, 0x0aFF)\nGO\n";
    QTest::newRow("aligned, numbers to the right, a vowel sign over its letter")
        << QStringList{} << table + "SELECT * FROM G\nGO\nSELECT Name AS N FROM G WHERE 1 = 0"
        << u"0\nCode Name   Cost Tags\n---- ----- ----- ------\n   7 شِیر   12.50 NULL\n 120 a,\"b\"  NULL 0x0AFF\n"
           "N\n-\n"_s;
    QTest::newRow("comma-separated") << QStringList{u"--csv"_s} << table + "SELECT * FROM G"
                                     << u"0\nCode,Name,Cost,Tags\r\n7,شِیر,12.50,\r\n120,\"a,\"\"b\"\"\",,0x0AFF\r\n"_s;
    QTest::newRow("an error in the middle of a later batch")
        << QStringList{u"--csv"_s} << QByteArray("SELECT 1 AS A\n\nGO\n\nSELECT 2 AS B\nSELECT 1/0\nGO\nSELECT 3 AS C")
        << u"1\nA\r\n1\r\nB\r\n2\r\ngoods-sql: input:6: error 8134: Divide by zero error encountered.\n"_s;
    QTest::newRow("messages between the rows, and before an error")
        << QStringList{}
        << QByteArray("PRINT N'شروع' SELECT 1 AS A PRINT 2 + 3 RAISERROR('%d left', 5, 1, 7)\nSELECT 1/0")
        << u"1\nشروع\nA\n-\n1\n5\n7 left\ngoods-sql: input:2: error 8134: Divide by zero error encountered.\n"_s;
    QTest::newRow("messages beside comma-separated values")
        << QStringList{u"--csv"_s} << QByteArray("PRINT 'begin' SELECT 1 AS A") << u"0\nA\r\n1\r\nbegin\n"_s;
    QTest::newRow("what an administrator looks up")
        << QStringList{}
        << QByteArray(
               "CREATE TABLE G (Code int NOT NULL, Name nvarchar(30), Cost decimal(9,2))\nGO\n"
               "SELECT TABLE_NAME AS T FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME = 'g'\n"
               "SELECT COLUMN_NAME AS C, DATA_TYPE AS T, IS_NULLABLE AS N, CHARACTER_MAXIMUM_LENGTH AS L,"
               " NUMERIC_PRECISION AS P, NUMERIC_SCALE AS S\n"
               "FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_NAME = 'G' ORDER BY ORDINAL_POSITION\n"
               "SELECT ROUTINE_TYPE AS R FROM INFORMATION_SCHEMA.ROUTINES WHERE ROUTINE_NAME = 'GoodInf_List_SP'")
        << u"0\nT\n-\nG\nC    T        N      L    P    S\n---- -------- --- ---- ---- ----\n"
           "Code int      NO  NULL   10    0\nName nvarchar YES   30 NULL NULL\nCost decimal  YES NULL    9    2\n"
           "R\n---------\nPROCEDURE\n"_s;
    QTest::newRow("what statements become, none of them run")
        << QStringList{u"--explain"_s}
        << QByteArray("CREATE TABLE G (Code int)\nGO\nDECLARE @n int = 3\n"
                      "IF @n > 2 UPDATE G SET Code = @n + 1 WHERE Code = 7\nEXEC Nothing @n\nSELECT Nmae FROM G")
        << u"1\nCREATE TABLE \"G\" (\"Code\" INTEGER)\nSELECT ?1\n  -- ?1 = 3 as int\n"
           "SELECT CASE WHEN (?1 > ?2) THEN 1 ELSE 0 END\n  -- ?1 = @n as int\n  -- ?2 = 2 as int\n"
           "UPDATE \"G\" AS t0 SET \"Code\" = int_fit(?1 + ?2, 4) WHERE (t0.\"Code\" = ?3)\n"
           "  -- ?1 = @n as int\n  -- ?2 = 1 as int\n  -- ?3 = 7 as int\n-- EXEC Nothing @n\n"
           "goods-sql: input:6: error 207: Invalid column name 'Nmae'.\n"_s;
    QTest::newRow("a statement of a server's administrator")
        << QStringList{} << QByteArray("BACKUP DATABASE goods TO DISK = 'x'")
        << u"1\ngoods-sql: input:1: error 40517: Keyword or statement option 'BACKUP' is not supported in this version of the database.\n"_s;
    QTest::newRow("what cannot be read")
        << QStringList{} << QByteArray("SELECT 1 AS A\nGO\n\nSELECT 'a")
        << u"1\nA\n-\n1\ngoods-sql: input:4: error 105: Unclosed quotation mark after the character "
           "string 'a'.\n"_s;
    QTest::newRow("a batch that nobody knows, after one that counted")
        << QStringList{} << table + "\nMERGE G USING H ON 1 = 1"
        << u"1\ngoods-sql: input:6: error 40517: Keyword or statement option 'MERGE' is not supported in this version of the database.\n"_s;
}

void TestGoodsSql::runs()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, script);
    QFETCH(QString, said);
    QCOMPARE(run({u"--init"_s, u"a.db"_s}), u"0\n");
    QCOMPARE(run(options + QStringList{u"a.db"_s, u"-"_s}, script), said);
}

void TestGoodsSql::createsOnce()
{
    const QString absent = run({u"a.db"_s, u"-c"_s, u"SELECT 1"_s});
    QVERIFY2(absent.startsWith(u"1\ngoods-sql: "), qPrintable(absent));
    QVERIFY(!QFile::exists(path(u"a.db"_s)));
    QCOMPARE(run({u"--init"_s, u"--demo"_s, u"a.db"_s, u"--csv"_s, u"-c"_s, u"SELECT COUNT(*) AS n FROM Stores"_s}),
             u"0\nn\r\n4\r\n");
    const QString again = run({u"--init"_s, u"a.db"_s});
    QVERIFY2(again.startsWith(u"1\ngoods-sql: the database is not empty: --init leaves it as it is"),
             qPrintable(again));
}

/// What an interrupted --init leaves behind is no obstacle to the next one.
void TestGoodsSql::createsAllOrNothing()
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(new tsql::Driver, u"half"_s);
        database.setDatabaseName(path(u"a.db"_s));
        QVERIFY(database.open());
        QSqlQuery(database).exec(u"CREATE PROCEDURE GoodInf_List_SP AS SELECT 1"_s);
    }
    QSqlDatabase::removeDatabase(u"half"_s);
    const QString half = run({u"--init"_s, u"a.db"_s});
    QVERIFY2(half.startsWith(u"1\ngoods-sql: procedures.sql:") && half.contains(u": error 2714"), qPrintable(half));
    QCOMPARE(run({u"a.db"_s, u"-c"_s, u"DROP PROCEDURE GoodInf_List_SP"_s}), u"0\n");
    QCOMPARE(run({u"--init"_s, u"a.db"_s}), u"0\n");
}

/// A desk goes on saving while copies are taken: each copy is whole, and stands on the border of two transactions.
void TestGoodsSql::copiesWhileRowsAreWritten()
{
    QCOMPARE(run({u"--init"_s, u"a.db"_s, u"-c"_s, u"CREATE TABLE J (N int, Part int, Note nvarchar(max))"_s}), u"0\n");
    const auto remove = qScopeGuard([] { QSqlDatabase::removeDatabase(u"desk"_s); });
    QSqlDatabase desk = QSqlDatabase::addDatabase(new tsql::Driver, u"desk"_s);
    desk.setDatabaseName(path(u"a.db"_s));
    QVERIFY(desk.open());
    QSqlQuery query(desk);
    int written = 0;
    const auto save = [&] {
        for (const QString &text : {u"BEGIN TRAN INSERT J VALUES (%1, 1, REPLICATE(N'سند ', 900))"_s,
                                    u"INSERT J VALUES (%1, 2, NULL) COMMIT"_s})
            QVERIFY2(query.exec(text.arg(written)), qPrintable(query.lastError().text()));
        ++written;
    };
    save();
    for (int copy = 0; copy < 3; ++copy) {
        const int before = written;
        const QString name = u"copy%1.db"_s.arg(copy);
        QProcess program;
        program.start(QString::fromUtf8(GOODS_SQL), {path(u"a.db"_s), u"--backup"_s, path(name)});
        do
            save();
        while (!program.waitForFinished(1) && written < before + 100000);
        QCOMPARE(program.exitCode(), 0);
        const QString counts =
            run({name, u"--csv"_s, u"-c"_s, u"SELECT COUNT(*) / 2, MAX(N) + 1, COUNT(*) % 2 FROM J"_s});
        const QStringList numbers = counts.section(u"\r\n"_s, 1, 1).split(u',');
        QCOMPARE(numbers.size(), 3);
        const int whole = numbers[0].toInt();
        QVERIFY2(whole >= before && whole <= written, qPrintable(counts));
        QCOMPARE(numbers, (QStringList{numbers[0], numbers[0], u"0"_s}));
    }
    desk = {};
    query = QSqlQuery();
}

void TestGoodsSql::checksForFaults()
{
    QCOMPARE(run({u"--init"_s, u"--demo"_s, u"--check"_s, path(u"g.db"_s)}), u"0\n"_s);
    run({path(u"g.db"_s), u"-c"_s, u"UPDATE GoodStock SET Amount1 = 99 WHERE GoodCode = 110001"_s});
    QCOMPARE(run({u"--check"_s, path(u"g.db"_s)}),
             u"3\nstock of a good differs from that of its stores: GoodCode 110001, Kept 99.000000000, Stores "
             "12.000000000\n"_s);
}

void TestGoodsSql::upgrades()
{
    const QString file = path(u"g.db"_s);
    QCOMPARE(run({u"--init"_s, u"--demo"_s, u"--upgrade"_s, file}), u"0\nthe database is of this version\n"_s);
    run({file, u"-c"_s, u"DROP TABLE GoodStock DROP PROCEDURE GoodInf_Delete ALTER TABLE Units DROP COLUMN Comment"_s});
    const QString said = run({u"--upgrade"_s, u"--check"_s, file});
    const QString copy = said.section(u'\n', 1, 1).section(u' ', 1);
    QCOMPARE(said, u"0\ncopy: %1\nbrought up to date\n"_s.arg(copy));
    QCOMPARE(run({copy, u"--csv"_s, u"-c"_s, u"SELECT CASE WHEN OBJECT_ID('GoodStock') IS NULL THEN 'old' END AS a"_s}),
             u"0\na\r\nold\r\n"_s);
    run({file, u"-c"_s, u"ALTER TABLE Units DROP COLUMN Name"_s});
    QCOMPARE(run({u"--upgrade"_s, file}),
             u"1\ngoods-sql: the database is left as it is; missing or of another type: Units.Name\n"_s);
}

/// One that is killed has brought everything or nothing.
void TestGoodsSql::upgradesAsAWhole()
{
    const QString file = path(u"g.db"_s);
    run({u"--init"_s, u"--demo"_s, file});
    for (unsigned long wait = 0; wait < 80; wait += 20) {
        run({file, u"-c"_s, u"DROP TABLE IF EXISTS GoodStock DELETE FROM Settings WHERE Name = 'DatabaseVersion'"_s});
        QProcess program;
        program.start(QString::fromUtf8(GOODS_SQL), {u"--upgrade"_s, file});
        QVERIFY(program.waitForReadyRead()); // the copy stands
        QThread::msleep(wait);
        program.kill();
        program.waitForFinished();
        const QString left =
            run({file, u"--csv"_s, u"-c"_s,
                 u"SELECT CASE WHEN OBJECT_ID('GoodStock') IS NULL THEN 0 ELSE 1 END AS a, COUNT(*) AS "
                 "b FROM Settings WHERE Name = 'DatabaseVersion'"_s});
        QVERIFY2(left.endsWith(u"\n0,0\r\n") || left.endsWith(u"\n1,1\r\n"), qPrintable(left));
    }
}

REGISTER_TEST(TestGoodsSql)
#include "tst_goods_sql.moc"
