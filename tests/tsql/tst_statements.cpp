// Runs the statement files of this folder (*.test). Each file has a database of its own.
//
//   == title [connection]     a case; without [connection] it runs on the first one
//   statements …
//   -->                       then what comes back:
//   1 | ab | NULL             a line for each row; a line "---" before each further result set
//   error 8134 line 2: text   the refusal, "line n" where it matters
//
//   statement --> 1 | 2 // 3 | 4   a case on one line, its rows (or none) parted by //
//
// A case without --> must run and give nothing back. Lines that begin with ## are remarks.

#include "tests/support/test_main.h"
#include "tools/goods_sql/table_printer.h"
#include "tsql/qt/driver.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QtTest>

class TestStatements : public QObject
{
    Q_OBJECT

private slots:
    void files_data();
    void files();
    void sizes_data();
    void sizes();
    void everyFunctionHasACase();
};

namespace {

struct Case
{
    QString title;
    QString connection;
    QString statements;
    QStringList expected;
    int line = 0;
};

QList<Case> CasesIn(const QString &path)
{
    QFile file(path);
    QList<Case> cases;
    if (!file.open(QIODevice::ReadOnly))
        return cases;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    bool expecting = false;
    int number = 0;
    const auto isFresh = [&] { return !cases.isEmpty() && !expecting && cases.last().statements.trimmed().isEmpty(); };
    for (const QString &line : lines) {
        ++number;
        if (line.startsWith(u"##"_s))
            continue;
        if (line.startsWith(u"== "_s)) {
            const QString title = line.mid(3).trimmed();
            const qsizetype bracket = title.endsWith(u']') ? title.lastIndexOf(u'[') : -1;
            cases.append({title, bracket < 0 ? QString() : title.mid(bracket), {}, {}, number});
            expecting = false;
        } else if (line == u"-->"_s) {
            expecting = true;
        } else if (const qsizetype arrow = line.indexOf(u" -->"_s); arrow > 0) {
            const Case group = cases.isEmpty() ? Case() : cases.last();
            if (isFresh())
                cases.removeLast();
            const QString rows = line.mid(arrow + 5);
            cases.append({group.title, group.connection, line.left(arrow),
                          rows.isEmpty() ? QStringList() : rows.split(u" // "_s), number});
            expecting = true;
        } else if (!cases.isEmpty() && expecting) {
            if (!line.isEmpty())
                cases.last().expected += line;
        } else if (!cases.isEmpty()) {
            cases.last().statements += line + u'\n';
        }
    }
    return cases;
}

QStringList Answer(QSqlQuery &query, const QString &statements, bool withLine)
{
    QStringList lines;
    if (query.exec(statements)) {
        bool first = true;
        do {
            if (!query.isSelect())
                continue;
            if (!first)
                lines += u"---"_s;
            first = false;
            while (query.next()) {
                QStringList fields;
                for (int i = 0; i < query.record().count(); ++i)
                    fields += Printed(query.value(i), u"NULL"_s);
                lines += fields.join(u" | "_s);
            }
        } while (!query.lastError().isValid() && query.nextResult());
    }
    const QSqlError error = query.lastError();
    if (error.isValid())
        lines += u"error %1%2: %3"_s.arg(
            error.nativeErrorCode(), withLine ? u' ' + error.driverText().toLower() : QString(), error.databaseText());
    return lines;
}

class Connections
{
public:
    ~Connections()
    {
        for (const QString &name : std::as_const(m_names))
            QSqlDatabase::removeDatabase(name);
    }

    QSqlDatabase get(const QString &name)
    {
        const QString full = u"statements "_s + name;
        if (m_names.contains(full))
            return QSqlDatabase::database(full);
        QSqlDatabase database = QSqlDatabase::addDatabase(new tsql::Driver, full);
        m_names += full;
        database.setDatabaseName(m_folder.filePath(u"statements.db"_s));
        database.open();
        return database;
    }

private:
    QTemporaryDir m_folder;
    QStringList m_names;
};

} // namespace

void TestStatements::files_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QLatin1String(GOODS_SOURCES "/tests/tsql"));
    const QFileInfoList files = folder.entryInfoList({u"*.test"_s}, QDir::Files, QDir::Name);
    for (const QFileInfo &file : files)
        QTest::newRow(qPrintable(file.baseName())) << file.filePath();
    if (files.isEmpty())
        QFAIL("no statement files");
}

void TestStatements::files()
{
    QFETCH(QString, path);
    Connections connections;
    int failures = 0;
    const QList<Case> cases = CasesIn(path);
    QVERIFY(!cases.isEmpty());
    for (const Case &one : cases) {
        const QSqlDatabase database = connections.get(one.connection);
        QVERIFY2(database.isOpen(), qPrintable(database.lastError().text()));
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.setNumericalPrecisionPolicy(QSql::HighPrecision);
        const bool withLine = !one.expected.isEmpty() && one.expected.last().contains(u" line "_s);
        const QStringList given = Answer(query, one.statements, withLine);
        if (given == one.expected)
            continue;
        ++failures;
        qWarning().noquote() << u"%1:%2 %3\n  expected:\n    %4\n  given:\n    %5"_s.arg(
            QFileInfo(path).fileName(), QString::number(one.line), one.title, one.expected.join(u"\n    "_s),
            given.join(u"\n    "_s));
    }
    QCOMPARE(failures, 0);
}

void TestStatements::sizes_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("text"); // {x} stands for x that many times
    QTest::addColumn<QString>("expected");

    QTest::newRow("ints") << 999 << u"SELECT 1{+2}, 7{-1}*2, 5{|8}, 9000000000{+1}, 3{^1}"_s
                          << u"1999 | -993 | 13 | 9000000999 | 2"_s;
    QTest::newRow("an int beyond its range")
        << 999 << u"SELECT 2147483000{+1}"_s
        << u"error 8115: Arithmetic overflow error converting expression to data type int."_s;
    QTest::newRow("NULL in a sum") << 200 << u"SELECT 1{+1}+@n{+1}, 1.5{+1}+@n, 1e0{+1}+@n, N'x'{+'y'}+@t"_s
                                   << u"NULL | NULL | NULL | NULL"_s;
    QTest::newRow("ints that become decimals") << 300 << u"SELECT 1{+1}+@big{+2}+0.5{-1.25}"_s << u"527.50"_s;
    QTest::newRow("decimals") << 999 << u"SELECT @d{+0.25}, @d{+@d}, @d{/1.0}"_s << u"251.250 | 1500.000 | 1.500000"_s;
    QTest::newRow("reals") << 999 << u"SELECT 1e0{+0.5e0}, 1e0{*1e0}"_s << u"500.5 | 1"_s;
    QTest::newRow("texts") << 999 << u"SELECT LEN('a'{+'b'}), RIGHT(N'ا'{+'x'}+N'ب', 2)"_s << u"1000 | xب"_s;
    QTest::newRow("conditions") << 999 << u"SELECT Id FROM Many WHERE (Id = 0{ OR N = 20}) AND Id > 0{ AND N <> 10}"_s
                                << u"2"_s;
    const QString tooDeep = u"error 191: Some part of your SQL statement is nested too deeply. Rewrite the query or "
                            "break it up into smaller queries."_s;
    for (const int levels : {32, 60}) {
        const auto row = [levels](const char *name) -> QTestData & {
            return QTest::addRow("%d levels of %s", levels, name) << levels;
        };
        row("parentheses") << u"SELECT {(}N{+Id)} FROM Many WHERE {(}Id{*1)} = 2"_s << QString::number(20 + 2 * levels);
        row("ELSE CASE") << u"SELECT {CASE WHEN N < 20 THEN 'low' ELSE }'end'{ END} FROM Many ORDER BY Id"_s
                         << u"low\nend\nend"_s;
        row("THEN CASE") << u"SELECT Id FROM Many WHERE {CASE WHEN N > Id THEN }N{ ELSE 0 END} > 20"_s << u"3"_s;
        row("functions") << u"SELECT Id FROM Many WHERE {ISNULL(}CAST(Id AS decimal(9,2)){, N)} * 10 = N AND Id > 1"_s
                         << u"2\n3"_s;
        row("functions around sums") << u"SELECT SUM({ABS(0.5 + }Id{)}) FROM Many GROUP BY {ABS(1 + }N % 20{)}"_s
                                     << u"%1.0\n%2.0"_s.arg(2 + levels / 2).arg(4 + levels);
        row("derived tables") << u"SELECT Id, (SELECT MAX(y.Id) FROM {(SELECT Id FROM }(SELECT Id FROM Many WHERE "
                                 "Id < m.Id) y{) y} ) FROM {(SELECT * FROM }Many{) m} ORDER BY Id"_s
                              << u"1 | NULL\n2 | 1\n3 | 2"_s;
        row("both in an update") << u"UPDATE Many SET N = {(}N{+1)} OUTPUT INSERTED.N WHERE Id IN (SELECT Id FROM "
                                    "{(SELECT Id FROM }Many{) m} WHERE {(}Id{+0)} = 1)"_s
                                 << QString::number(10 + levels);
    }
    QTest::newRow("endless parentheses") << 5000 << u"SELECT {(}1{)}"_s << tooDeep;
    QTest::newRow("an endless sum") << 5000 << u"SELECT 1{+1}"_s << tooDeep;
    QTest::newRow("what doubles with each level") << 60 << u"SELECT {NULLIF(}Id{, 0)} FROM Many"_s << tooDeep;
    QTest::newRow("subqueries") << 60 << u"SELECT {(SELECT MAX(Id) FROM Many WHERE Id = }1{)}"_s << tooDeep;
    QTest::newRow("a deep definition") << 60 << u"CREATE TABLE Deep (a int CHECK ({(1+}a{)} > 0))"_s << tooDeep;
}

void TestStatements::sizes()
{
    QFETCH(int, count);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    for (qsizetype open = text.indexOf(u'{'); open >= 0; open = text.indexOf(u'{', open)) {
        const qsizetype length = text.indexOf(u'}', open) - open + 1;
        text.replace(open, length, text.mid(open + 1, length - 2).repeated(count));
    }
    Connections connections;
    QSqlQuery query(connections.get({}));
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    QVERIFY(query.exec(u"CREATE TABLE Many (Id int PRIMARY KEY, N int) "
                       "INSERT Many VALUES (1, 10), (2, 20), (3, 30)"_s));
    const QString declared = u"DECLARE @n int, @t nvarchar(5), @big bigint = 1, @d decimal(9,3) = 1.5 "_s;
    QCOMPARE(Answer(query, text.contains(u'@') ? declared + text : text, false).join(u'\n'), expected);
}

/// Whatever capital word of the engine's sources it takes for a function must stand in functions.test.
void TestStatements::everyFunctionHasACase()
{
    static const QRegularExpression word(u"\"([A-Z][A-Z_]+)\""_s);
    Connections connections;
    QSqlQuery query(connections.get({}));
    QFile cases(QLatin1String(GOODS_SOURCES "/tests/tsql") + u"/functions.test"_s);
    QVERIFY(cases.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(cases.readAll());
    QSet<QString> functions;
    QStringList missing;
    QDirIterator sources(QLatin1String(GOODS_SOURCES "/tsql"), {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        QFile file(sources.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (auto words = word.globalMatch(QString::fromUtf8(file.readAll())); words.hasNext();) {
            const QString name = words.next().captured(1);
            query.exec(u"SELECT %1()"_s.arg(name));
            static const QStringList notThese{u"102"_s, u"156"_s, u"195"_s}; // syntax, a keyword, no such function
            if (notThese.contains(query.lastError().nativeErrorCode()) || functions.contains(name))
                continue;
            functions << name;
            if (!text.contains(QRegularExpression(u"\\b%1\\b"_s.arg(name))))
                missing << name;
        }
    }
    QVERIFY2(functions.size() > 60, qPrintable(functions.values().join(u' ')));
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u' ')));
}

REGISTER_TEST(TestStatements)
#include "tst_statements.moc"
