// The data layer, goods-sql and the desk's connections on a server: Qt's ODBC driver, FreeTDS and the wire are real,
// the server behind them is tests/tds.

#include "bench/relay.h"
#include "desk/application/connections.h"
#include "host/data/database_error.h"
#include "host/data/dataset.h"
#include "host/data/query.h"
#include "host/data/transaction.h"
#include "tests/support/test_main.h"
#include "tools/goods_sql/databases.h"
#include "tools/goods_sql/script_runner.h"

#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace host;

namespace {

/// A server process and, on it, one database with connections.
class Server
{
public:
    Server()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, m_folder.path());
        m_process.setProcessEnvironment(environment);
        m_process.start(QString::fromUtf8(TDS_SERVER), QStringList());
        m_process.waitForReadyRead();
        m_port = m_process.readLine().trimmed();
        m_string = u"Driver=FreeTDS;Server=127.0.0.1;UID=test;PWD=test;TDS_Version=7.4;Port="_s;
        Target(String()).CreateOnServer();
        main = Connect();
    }
    ~Server()
    {
        main = QSqlDatabase();
        for (const QString &name : std::as_const(m_names)) {
            QSqlDatabase::removeDatabase(name);
        }
        Kill();
    }

    std::string Port() const { return m_port.toStdString(); }
    QString String(const QString &database = u"wire"_s) const { return StringAt(m_port, database); }
    QSqlDatabase Connect(const QString &database = u"wire"_s) { return ConnectTo(String(database)); }
    QSqlDatabase ConnectThrough(const bench::Relay &relay)
    {
        return ConnectTo(StringAt(QByteArray::number(relay.Port())));
    }
    void Kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    QSqlDatabase main;

private:
    QString StringAt(const QByteArray &port, const QString &database = u"wire"_s) const
    {
        return m_string + QString::fromLatin1(port) + u";Database="_s + database;
    }
    QSqlDatabase ConnectTo(const QString &string)
    {
        m_names << u"wire %1"_s.arg(m_names.size());
        return Target(string).Connect(m_names.last());
    }

    QTemporaryDir m_folder;
    QProcess m_process;
    QByteArray m_port;
    QString m_string;
    QStringList m_names;
};

/// What is thrown; a test fails where nothing is.
template <class Work> DatabaseError Refusal(const Work &work)
{
    try {
        work();
    } catch (const DatabaseError &error) {
        return error;
    }
    return DatabaseError(u"nothing was refused"_s);
}

QString Shown(const Query &query)
{
    QStringList fields;
    for (int column = 0; column < query.Rows().ColumnCount(); ++column) {
        const QVariant value = query.Value(column);
        fields << (value.isNull()                            ? u"NULL"_s
                   : value.typeId() == QMetaType::QByteArray ? QString::fromLatin1(value.toByteArray().toHex())
                                                             : value.toString());
    }
    return fields.join(u'|');
}

} // namespace

class TestWire : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_server = std::make_unique<Server>(); }
    void cleanup() { m_server.reset(); }
    void values_data();
    void values();
    void longTextsAndBytes();
    void everyResultOfABatch();
    void refusals_data();
    void refusals();
    void refusalAmongTheRows();
    void abandonedListFreesItsConnection();
    void killedServer();
    void killedWhileAListIsRead();
    void delays_data();
    void delays();
    void transactions_data();
    void transactions();
    void databases();
    void collationThatLosesLetters_data();
    void collationThatLosesLetters();
    void goodsSql();

private:
    std::unique_ptr<Server> m_server;
};

void TestWire::values_data()
{
    QTest::addColumn<QString>("select");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *name, const char *select, const char *value) {
        QTest::newRow(name) << QString::fromUtf8(select) << QString::fromUtf8(value);
    };
    row("unicode", "N'چای سبز ۵ کیلویی', N'🍵👨‍👩‍👧'",
        "چای سبز ۵ کیلویی|🍵👨‍👩‍👧");
    row("plain quotes", "'یک كيك', '', 'd''or'", "یک كيك||d'or");
    row("fixed text", "CAST('ی' AS char(3)), CAST(N'ab' AS nchar(4))", "ی  |ab  ");
    row("whole numbers",
        "CAST(255 AS tinyint), CAST(-32768 AS smallint), CAST(-2147483648 AS int), CAST(-9007199254740993 AS bigint)",
        "255|-32768|-2147483648|-9007199254740993");
    row("decimals", "12345678901234.123456789, CAST(-0.5 AS decimal(23,9)), CAST(0 AS decimal(5,2))",
        "12345678901234.123456789|-0.5|0");
    row("the widest decimal", "CAST('99999999999999999999999999999999999999' AS decimal(38,0)), CAST(12.5 AS money)",
        "99999999999999999999999999999999999999|12.5");
    row("bit", "CAST(1 AS bit), CAST(0 AS bit)", "1|0");
    row("dates",
        "CAST('1899-12-31' AS date), CAST('2026-03-21 23:59:59.997' AS datetime), CAST('1900-01-01' AS datetime)",
        "1899-12-31|2026-03-21T23:59:59.997|1900-01-01T00:00:00.000");
    row("bytes", "0x00FF27", "00ff27");
    row("nothing of each kind",
        "CAST(NULL AS int), CAST(NULL AS nvarchar(9)), CAST(NULL AS nvarchar(max)), CAST(NULL AS decimal(9,2)), "
        "CAST(NULL AS datetime), CAST(NULL AS bit), CAST(NULL AS varbinary(3)), NULL",
        "NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL");
}

void TestWire::values()
{
    QFETCH(QString, select);
    QTEST(Shown(Query(m_server->main, u"SELECT "_s + select)), "value");
}

void TestWire::longTextsAndBytes()
{
    Exec(
        m_server->main,
        u"CREATE TABLE Notes (Id int IDENTITY(1,1) PRIMARY KEY, Text nvarchar(max), Raw varbinary(max), Short nvarchar(50))"_s);
    Dataset notes(m_server->main);
    notes.SetTable(u"Notes"_s, u"Id"_s);
    notes.Open(u"SELECT * FROM Notes"_s);
    for (const int length : {1, 3999, 4000, 4001, 70'000}) {
        const QString text = QString(length - 1, u'ی') + u'ک';
        const QByteArray bytes = text.toUtf8();
        notes.Append();
        notes.SetField(u"Text", text);
        notes.SetField(u"Raw", bytes);
        notes.SetField(u"Short", text.right(50));
        notes.Post();
        const Query stored(m_server->main,
                           u"SELECT Text, Raw, Short FROM Notes WHERE Id = "_s + notes.TextField(u"Id"));
        QVERIFY2(stored.Text(u"Text") == text, qPrintable(QString::number(length)));
        QCOMPARE(notes.TextField(u"Short"), text.right(50));
        QCOMPARE(stored.Text(u"Short"), text.right(50));
        QVERIFY2(stored.Value(u"Raw").toByteArray() == bytes, qPrintable(QString::number(length)));
    }
}

/// Results and counts come one after the other; of a procedure that counts nothing only the rows.
void TestWire::everyResultOfABatch()
{
    Exec(m_server->main, u"CREATE TABLE T (A int)"_s);
    Exec(m_server->main,
         u"CREATE PROCEDURE Quiet AS SET NOCOUNT ON INSERT T VALUES (7) SELECT 'q' AS Q DELETE T WHERE A = 7"_s);
    QSqlQuery query(m_server->main);
    query.setForwardOnly(true);
    QVERIFY(query.exec(
        u"INSERT T VALUES (1), (2) SELECT A FROM T UPDATE T SET A = 3 WHERE A = 1 SELECT A FROM T WHERE A > 9"_s));
    QStringList results;
    do {
        QString result = query.isSelect() ? u"rows"_s : u"count %1"_s.arg(query.numRowsAffected());
        while (query.isSelect() && query.next()) {
            result += u' ' + query.value(0).toString();
        }
        results << result;
    } while (query.nextResult());
    QCOMPARE(results, (QStringList{u"count 2"_s, u"rows 1 2"_s, u"count 1"_s, u"rows"_s}));
    QCOMPARE(Exec(m_server->main, u"UPDATE T SET A = 1 SELECT 5 DELETE T WHERE A = 99"_s), 0);
    QCOMPARE(Scalar(m_server->main, u"INSERT T VALUES (8) EXEC Quiet"_s).toString(), u"q");
}

void TestWire::refusals_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("says");
    QTest::addColumn<bool>("key");
    const auto row = [](const char *name, const char *statement, const char *code, const char *says, bool key = false) {
        QTest::newRow(name) << QString::fromUtf8(statement) << QString::fromLatin1(code) << QString::fromUtf8(says)
                            << key;
    };
    row("duplicate key", "INSERT T VALUES (20006)", "2627", "یکی از مقدارها تکراری است", true);
    row("behind a first result", "SELECT 1 INSERT T VALUES (20006)", "2627", "یکی از مقدارها تکراری است", true);
    row("behind a count", "INSERT T VALUES (5) INSERT T VALUES (5)", "2627", "یکی از مقدارها تکراری است", true);
    row("a row that was asked back", "INSERT INTO T (A) OUTPUT INSERTED.* VALUES (20006)", "2627",
        "یکی از مقدارها تکراری است", true);
    row("column", "SELECT NoSuch FROM T", "207", "Invalid column name 'NoSuch'.");
    row("arithmetic", "SELECT 1/0", "8134", "Divide by zero error encountered.");
    row("in Persian", "RAISERROR(N'قفل است: %s', 16, 1, N'کالا')", "50000", "قفل است: کالا");
    row("that sounds like an end", "RAISERROR(N'Communication link failure', 16, 1)", "50000", "Communication link");
    row("procedure", "EXEC NoSuch 1", "2812", "Could not find stored procedure 'NoSuch'.");
    row("syntax", "SELEC 1 FROM", "", "");
}

void TestWire::refusals()
{
    Exec(m_server->main, u"CREATE TABLE T (A int NOT NULL CONSTRAINT PK_T PRIMARY KEY) INSERT T VALUES (20006)"_s);
    QFETCH(QString, statement);
    QFETCH(QString, code);
    QFETCH(QString, says);
    const DatabaseError error = Refusal([&] { Exec(m_server->main, statement); });
    QVERIFY2(error.Text().startsWith(says), qPrintable(error.Text()));
    QVERIFY2(code.isEmpty() || error.NativeCode() == code, qPrintable(error.NativeCode()));
    QVERIFY(!error.ConnectionLost());
    QTEST(error.KeyViolation(), "key");
    QCOMPARE(Scalar(m_server->main, u"SELECT 4"_s).toInt(), 4);
}

void TestWire::refusalAmongTheRows()
{
    Exec(m_server->main, u"CREATE TABLE T (A int NOT NULL PRIMARY KEY)"_s);
    Exec(m_server->main, u"INSERT T VALUES (1), (2), (3), (4)"_s);
    const DatabaseError error = Refusal([&] { Query(m_server->main, u"SELECT 12 / (3 - A) FROM T ORDER BY A"_s); });
    QVERIFY2(error.Text().startsWith(u"Divide by zero"), qPrintable(error.Text()));
    QVERIFY(!error.ConnectionLost());
    QCOMPARE(Scalar(m_server->main, u"SELECT COUNT(*) FROM T"_s).toInt(), 4);
}

void TestWire::abandonedListFreesItsConnection()
{
    Exec(m_server->main, u"CREATE TABLE T (A int, Name nvarchar(200))"_s);
    Exec(
        m_server->main,
        u"DECLARE @i int = 0 BEGIN TRAN WHILE @i < 20000 BEGIN SET @i = @i + 1 INSERT T VALUES "
        "(@i, N'نامی که چند بسته را پر می‌کند، چند صد بار پشت سر هم') END COMMIT"_s);
    {
        QSqlQuery list(m_server->main);
        list.setForwardOnly(true);
        QVERIFY(list.exec(u"SELECT * FROM T"_s));
        for (int i = 0; i < 10; ++i) {
            QVERIFY(list.next());
        }
    }
    QCOMPARE(Scalar(m_server->main, u"SELECT COUNT(*) FROM T"_s).toInt(), 20'000);

    Dataset blocks(m_server->main);
    blocks.SetBlockSize(1000);
    blocks.Open(u"SELECT * FROM T"_s);
    QCOMPARE(blocks.RecordCount(), 1000);
    QCOMPARE(Exec(m_server->main, u"DELETE T WHERE A = 20000"_s), 1);
    blocks.FetchAll();
    QCOMPARE(blocks.RecordCount(), 20'000);
}

void TestWire::killedServer()
{
    Exec(m_server->main,
         u"CREATE TABLE T (Id int IDENTITY(1,1) PRIMARY KEY, Name nvarchar(20)) INSERT T (Name) VALUES (N'چای')"_s);
    QSqlDatabase begins = m_server->Connect();
    QSqlDatabase commits = m_server->Connect();
    Dataset things(m_server->main);
    things.SetTable(u"T"_s, u"Id"_s);
    things.Open(u"SELECT * FROM T"_s);
    things.Edit();
    things.SetField(u"Name", u"قهوه"_s);
    Transaction open(commits);
    Exec(commits, u"UPDATE T SET Name = N'آب'"_s);
    m_server->Kill();

    const DatabaseError first = Refusal([&] { things.Post(); });
    QVERIFY2(first.ConnectionLost() && !first.KeyViolation(), qPrintable(first.LogText()));
    QCOMPARE(things.CurrentState(), Dataset::State::Edit);
    QCOMPARE(things.TextField(u"Name"), u"قهوه");
    const DatabaseError again = Refusal([&] { things.Post(); });
    QVERIFY2(again.ConnectionLost(), qPrintable(again.LogText()));
    for (int i = 0; i < 2; ++i) {
        const DatabaseError begun = Refusal([&] {
            const Transaction transaction(begins);
            Exec(begins, u"SELECT 1"_s);
        });
        QVERIFY2(begun.ConnectionLost(), qPrintable(begun.LogText()));
    }
    const DatabaseError committed = Refusal([&] { open.Commit(); });
    QVERIFY2(committed.ConnectionLost(), qPrintable(committed.LogText()));
    desk::Options options;
    options.connection = m_server->String();
    const DatabaseError opened = Refusal([&] { desk::OpenConnections connections(options); });
    QVERIFY2(opened.ConnectionLost(), qPrintable(opened.LogText()));
}

void TestWire::killedWhileAListIsRead()
{
    Exec(m_server->main, u"CREATE TABLE T (A int, Name nvarchar(200))"_s);
    Exec(
        m_server->main,
        u"DECLARE @i int = 0 BEGIN TRAN WHILE @i < 60000 BEGIN SET @i = @i + 1 INSERT T VALUES "
        "(@i, N'نامی که چند بسته را پر می‌کند، چند هزار بار پشت سر هم، تا هیچ میانگیری همه را نگیرد') END COMMIT"_s);
    Dataset blocks(m_server->main);
    blocks.SetBlockSize(1000);
    blocks.Open(u"SELECT * FROM T"_s);
    m_server->Kill();
    const DatabaseError error = Refusal([&] { blocks.FetchAll(); });
    QVERIFY2(error.ConnectionLost(), qPrintable(error.LogText()));
    QVERIFY(blocks.RecordCount() >= 1000 && blocks.RecordCount() < 60'000);
}

void TestWire::delays_data()
{
    QTest::addColumn<QString>("select");
    QTest::newRow("short") << u"SELECT 1"_s;
    QTest::newRow("many packets there") << u"SELECT LEN(N'%1')"_s.arg(QString(100000, u'ش'));
    QTest::newRow("many packets back") << u"SELECT N'%1' AS A"_s.arg(QString(3000, u'ش'));
}

void TestWire::delays()
{
    QFETCH(QString, select);
    constexpr int Delay = 40;
    bench::Relay relay("127.0.0.1", m_server->Port());
    const QSqlDatabase far = m_server->ConnectThrough(relay);
    relay.SetDelay(std::chrono::milliseconds(Delay));
    const long before = relay.RoundTrips();
    QElapsedTimer clock;
    clock.start();
    const Query asked(far, select);
    QCOMPARE(relay.RoundTrips() - before, 1);
    QVERIFY(clock.elapsed() >= Delay);
}

void TestWire::transactions_data()
{
    QTest::addColumn<QStringList>("inserts"); // of which the last is asked for its result
    QTest::addColumn<bool>("commits");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<int>("trips");
    QTest::newRow("written") << QStringList{u"1"_s, u"2"_s} << true << u"2"_s << 2;
    QTest::newRow("nothing to write") << QStringList() << true << u"0"_s << 0;
    QTest::newRow("taken back") << QStringList{u"1"_s} << false << u"0"_s << 2;
    QTest::newRow("refused half-way") << QStringList{u"1"_s, u"1"_s, u"3"_s} << true << u"0"_s << 2;
}

/// What costs a clerk time over a network: ways to the server, those of the transaction included.
void TestWire::transactions()
{
    QFETCH(QStringList, inserts);
    QFETCH(bool, commits);
    Exec(m_server->main, u"CREATE TABLE A (N int NOT NULL PRIMARY KEY)"_s);
    bench::Relay relay("127.0.0.1", m_server->Port());
    const QSqlDatabase far = m_server->ConnectThrough(relay);
    const long before = relay.RoundTrips();
    try {
        Transaction transaction(far);
        for (qsizetype i = 0; i < inserts.size(); ++i) {
            const QString text = u"INSERT A (N) VALUES (%1)"_s.arg(inserts.at(i));
            if (i + 1 < inserts.size())
                Run(far, text);
            else
                QCOMPARE(Exec(far, text), 1);
        }
        if (commits)
            transaction.Commit();
    } catch (const DatabaseError &error) {
        QVERIFY(error.KeyViolation());
    }
    QTEST(int(relay.RoundTrips() - before), "trips");
    QTEST(Scalar(m_server->main, u"SELECT COUNT(*) FROM A"_s).toString(), "kept");
    QCOMPARE(Scalar(far, u"SELECT @@TRANCOUNT"_s).toInt(), 0);
}

void TestWire::databases()
{
    const QString name = u"فروشگاه ]d'or["_s;
    const Target shop(m_server->String(name));
    QVERIFY_THROWS_EXCEPTION(ScriptError, m_server->Connect(name));
    shop.CreateOnServer();
    shop.CreateOnServer();
    {
        const QSqlDatabase inside = m_server->Connect(name);
        Exec(inside, u"CREATE TABLE Mine (A int)"_s);
        QVERIFY_THROWS_EXCEPTION(ScriptError, Initialise(inside, false)); // never into somebody's tables
        QVERIFY(Refusal([&] { Query(m_server->main, u"SELECT * FROM Mine"_s); }).Text().startsWith(u"Invalid object"));
        Exec(m_server->main, u"USE [فروشگاه ]]d'or[]"_s);
        QVERIFY(!Exists(m_server->main, u"SELECT * FROM Mine"_s));
        Exec(m_server->main, u"USE wire"_s);
    }
    QSqlDatabase::database(u"wire 2"_s).close();
    shop.DropOnServer();
    shop.DropOnServer();
    QVERIFY_THROWS_EXCEPTION(ScriptError, m_server->Connect(name));
}

void TestWire::collationThatLosesLetters_data()
{
    QTest::addColumn<QString>("collation");
    QTest::addColumn<bool>("keeps");
    QTest::newRow("UTF-8") << u"Persian_100_CI_AI_SC_UTF8"_s << true;
    QTest::newRow("code page 1256") << u"Persian_100_CI_AI"_s << false;
}

void TestWire::collationThatLosesLetters()
{
    QFETCH(QString, collation);
    Exec(m_server->main, u"CREATE DATABASE other COLLATE "_s + collation);
    const QSqlDatabase other = m_server->Connect(u"other"_s);
    QTEST(desk::KeepsPersianLetters(other), "keeps");
    QCOMPARE(Scalar(other, u"SELECT N'یک'"_s).toString(), u"یک");
}

void TestWire::goodsSql()
{
    const auto run = [this](const QStringList &arguments, const QByteArray &input = {}) {
        QProcess program;
        program.start(QString::fromUtf8(GOODS_SQL), QStringList{m_server->String(u"shop"_s)} + arguments);
        program.write(input);
        program.closeWriteChannel();
        program.waitForFinished();
        return QString::number(program.exitCode()) + u'\n' + QString::fromUtf8(program.readAllStandardOutput()) +
               QString::fromUtf8(program.readAllStandardError()).trimmed();
    };
    QCOMPARE(run({u"--init"_s, u"--demo"_s}), u"0\n");
    QVERIFY(run({u"--init"_s}).startsWith(u"1\n"));
    QCOMPARE(run({u"--csv"_s, u"-"_s}, "CREATE TABLE A (N nvarchar(9), D decimal(9,2))\nGO\n"
                                       "INSERT A VALUES (N'الف', 0.5)\nGO\nSELECT * FROM A\ngo\n"),
             u"0\nN,D\r\nالف,0.50\r\n");
    QCOMPARE(run({u"--csv"_s, u"-"_s}, "SELECT CAST(1.5 AS real) AS R, CAST('10:20:30.123' AS time) AS T, 0x0A AS B,"
                                       " CAST(NULL AS real) AS N"),
             u"0\nR,T,B,N\r\n1.5,10:20:30.123,0x0A,\r\n");
    // A text of two-byte letters that fills its column, and the longest negative number.
    const QString longText(200, u'ی');
    QCOMPARE(run({u"--csv"_s, u"-"_s}, "CREATE TABLE L (N nvarchar(200), D decimal(23,9))\nGO\nINSERT L VALUES (N'" +
                                           longText.toUtf8() + "', -12345678901234.123456789)\nGO\nSELECT * FROM L"),
             u"0\nN,D\r\n%1,-12345678901234.123456789\r\n"_s.arg(longText));
    const QString refused =
        run({u"-"_s}, "SELECT 1 AS A\nGO\nSELECT 2 AS B\nINSERT A VALUES (N'a', 1/0)\nGO\nSELECT 3");
    QCOMPARE(refused, u"1\nA\n-\n1\nB\n-\n2\ngoods-sql: input:3: error 8134: [FreeTDS][SQL Server]Divide by zero error "
                      "encountered.");
    QVERIFY(run({u"--backup"_s, u"x"_s}).startsWith(u"1\n"));
    QCOMPARE(Scalar(m_server->Connect(u"shop"_s), u"SELECT COUNT(*) FROM GoodInf WHERE Name LIKE N'%ی%'"_s).toInt() >
                 100,
             true);
}

REGISTER_TEST(TestWire)
#include "tst_wire.moc"
