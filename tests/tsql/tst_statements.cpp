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
#include "tsql/driver.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class TestStatements : public QObject
{
    Q_OBJECT

private slots:
    void files_data();
    void files();
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

QList<Case> casesIn(const QString &path)
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

QString shown(const QVariant &value)
{
    if (value.isNull())
        return u"NULL"_s;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"1"_s : u"0"_s;
    case QMetaType::QByteArray:
        return u"0x"_s + QString::fromLatin1(value.toByteArray().toHex().toUpper());
    case QMetaType::QDate:
        return value.toDate().toString(u"yyyy-MM-dd"_s);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(u"yyyy-MM-dd hh:mm:ss.zzz"_s);
    default:
        return value.toString();
    }
}

QStringList answer(QSqlQuery &query, const QString &statements, bool withLine)
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
                    fields += shown(query.value(i));
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
    const QDir folder(QLatin1String(GOODS_TEST_SOURCES));
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
    const QList<Case> cases = casesIn(path);
    QVERIFY(!cases.isEmpty());
    for (const Case &one : cases) {
        const QSqlDatabase database = connections.get(one.connection);
        QVERIFY2(database.isOpen(), qPrintable(database.lastError().text()));
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.setNumericalPrecisionPolicy(QSql::HighPrecision);
        const bool withLine = !one.expected.isEmpty() && one.expected.last().contains(u" line "_s);
        const QStringList given = answer(query, one.statements, withLine);
        if (given == one.expected)
            continue;
        ++failures;
        qWarning().noquote() << u"%1:%2 %3\n  expected:\n    %4\n  given:\n    %5"_s.arg(
            QFileInfo(path).fileName(), QString::number(one.line), one.title, one.expected.join(u"\n    "_s),
            given.join(u"\n    "_s));
    }
    QCOMPARE(failures, 0);
}

/// Whatever capital word of the engine's sources it takes for a function must stand in functions.test.
void TestStatements::everyFunctionHasACase()
{
    static const QRegularExpression word(u"\"([A-Z][A-Z_]+)\""_s);
    Connections connections;
    QSqlQuery query(connections.get({}));
    QFile cases(QLatin1String(GOODS_TEST_SOURCES) + u"/functions.test"_s);
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
