#include "tests/support/database.h"

#include "host/data/odbc_text.h"
#include "tools/goods_sql/databases.h"
#include "tools/goods_sql/script_runner.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTest>

#include <map>

using namespace Qt::StringLiterals;

namespace test {

namespace {

/// The databases made on a server and not dropped yet: a test that ends the program drops them as well.
QStringList &onServer()
{
    static QStringList names;
    return names;
}

void drop(const QString &name)
{
    try {
        Target(name).dropOnServer();
    } catch (const ScriptError &error) {
        qWarning("a database stays on the server: %s", qPrintable(error.text));
    }
}

void dropAll()
{
    for (const QString &name : std::exchange(onServer(), {}))
        drop(name);
}

[[noreturn]] void fail(const QString &text)
{
    const QStringList names = QSqlDatabase::connectionNames();
    for (const QString &name : names)
        QSqlDatabase::database(name, false).close();
    dropAll();
    qFatal("%s", qPrintable(text));
    std::abort();
}

/// Fails the running test with the driver's words.
void report(const QSqlQuery &query, const QString &text)
{
    const QString words = query.lastError().text() + u"\nin: "_s + text.left(400);
    QTest::qFail(qPrintable(words), __FILE__, __LINE__);
}

/// Runs every statement of a text; the query stands before the first row of the first result.
QSqlQuery run(const QSqlDatabase &connection, const QString &text)
{
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (!query.exec(text))
        return query;
    while (!query.isSelect() && query.nextResult()) {
    }
    return query;
}

void disconnect(const QString &name)
{
    QSqlDatabase::database(name, false).close();
    QSqlDatabase::removeDatabase(name);
}

void execute(const QSqlDatabase &connection, const QString &text)
{
    QSqlQuery query = run(connection, text);
    while (!query.lastError().isValid() && query.nextResult()) {
    }
    if (query.lastError().isValid())
        report(query, text);
}

/// Makes a database of this name with its content.
void make(const QString &name, Database::Content content)
{
    const QString connection = u"test.making"_s;
    try {
        initialise(Target(name).open(true, connection), content == Database::Content::Demo);
    } catch (const ScriptError &error) {
        fail(error.text);
    }
    disconnect(connection);
}

/// The file that every embedded database of this content is a copy of.
QString original(Database::Content content)
{
    static QTemporaryDir folder;
    static std::map<Database::Content, QString> made;
    QString &file = made[content];
    if (file.isEmpty()) {
        file = folder.filePath(content == Database::Content::Demo ? u"demo"_s : u"empty"_s);
        make(file, content);
    }
    return file;
}

/// A database that nobody else has.
QString nameOnServer()
{
    static int count = 0;
    return u"goods_test_%1_%2_%3"_s.arg(QCoreApplication::applicationPid())
        .arg(QDateTime::currentMSecsSinceEpoch())
        .arg(++count);
}

QString connectionTo(const QString &database)
{
    return qEnvironmentVariable("GOODS_TEST_CONNECTION") + u";Database="_s + database;
}

void makeOnServer(const QString &database, Database::Content content)
{
    onServer() << connectionTo(database);
    make(connectionTo(database), content);
}

/// Whether the server could copy a database. Not all can.
bool copyOnServer(const QString &database, const QString &source)
{
    const QString name = u"test.copying"_s;
    const auto remove = qScopeGuard([&] { disconnect(name); });
    QSqlDatabase server;
    try {
        server = Target(qEnvironmentVariable("GOODS_TEST_CONNECTION")).connect(name);
    } catch (const ScriptError &error) {
        fail(error.text);
    }
    const bool copied =
        !run(server, u"CREATE DATABASE [%1] AS COPY OF [%2]"_s.arg(database, source)).lastError().isValid();
    server = {};
    if (copied)
        onServer() << connectionTo(database);
    return copied;
}

/// Makes a database with this content on the server and gives its connection string. A copy of the first one is quicker
/// than the scripts.
QString newOnServer(Database::Content content)
{
    static bool copies = true;
    static std::map<Database::Content, QString> made;
    QString &source = made[content];
    if (source.isEmpty() && copies) {
        if (made.size() == 1)
            qAddPostRoutine(dropAll);
        source = nameOnServer();
        makeOnServer(source, content);
    }
    const QString name = nameOnServer();
    copies = copies && copyOnServer(name, source);
    if (!copies)
        makeOnServer(name, content);
    return connectionTo(name);
}

/// The first fields of the row that a query stands on, `count` of them; the same values whichever database they are
/// from. `record` was asked for before the row.
QVariantList valuesOf(const QSqlQuery &query, const QSqlRecord &record, int count)
{
    const host::OdbcText texts(query);
    QVariantList values;
    for (int i = 0; i < count; ++i) {
        const int type = record.field(i).metaType().id();
        QVariant value = texts.IsNeeded() && type == QMetaType::QString ? texts.Read(i) : query.value(i);
        // A server's driver calls a bit a whole number of one digit.
        const bool bit = type == QMetaType::Bool || (texts.IsNeeded() && record.field(i).length() == 1 &&
                                                     (type == QMetaType::Int || type == QMetaType::UInt));
        if (bit && !value.isNull())
            value.convert(QMetaType::fromType<bool>());
        values << value;
    }
    return values;
}

QString shown(const QVariant &value)
{
    if (value.isNull())
        return u"NULL"_s;
    QString text = value.toString();
    if (value.typeId() == QMetaType::QString && text.contains(u'.')) {
        // A server's driver leaves the zero before the point out.
        static const QRegularExpression decimal(u"^(-?)(\\d*)(?:\\.0+|(\\.\\d*?)0*)$"_s);
        const auto match = decimal.match(text);
        if (match.hasMatch())
            text = match.captured(1) + (match.captured(2).isEmpty() ? u"0"_s : match.captured(2)) + match.captured(3);
    }
    return text;
}

} // namespace

bool Database::OnServer()
{
    return !qEnvironmentVariableIsEmpty("GOODS_TEST_CONNECTION");
}

Database::Database(Content content)
{
    if (OnServer()) {
        m_name = newOnServer(content);
    } else {
        const QString source = original(content);
        m_name = m_folder.filePath(u"goods.db"_s);
        if (!QFile::copy(source, m_name))
            fail(u"cannot copy "_s + source);
    }
    m_main = Connect();
    m_goodsList = Connect();
    m_scales = Connect();
}

Database::~Database()
{
    for (const QString &name : std::as_const(m_names))
        disconnect(name);
    if (onServer().removeAll(m_name))
        drop(m_name);
}

QStringList Database::DeskArguments() const
{
    return {OnServer() ? u"--connection"_s : u"--database"_s, m_name};
}

QSqlDatabase Database::Connect(const QString &connectionName) const
{
    try {
        return Target(m_name).connect(connectionName);
    } catch (const ScriptError &error) {
        fail(error.text);
    }
}

QString Database::Connect()
{
    static int count = 0;
    m_names << u"test.%1"_s.arg(++count);
    Connect(m_names.last());
    return m_names.last();
}

QSqlDatabase Database::AnotherConnection()
{
    return QSqlDatabase::database(Connect());
}

void Database::Exec(const QString &text) const
{
    execute(Main(), text);
}

QVariant Database::Scalar(const QString &text) const
{
    QSqlQuery query = run(Main(), text);
    const QSqlRecord record = query.record();
    const QVariant value = query.next() ? valuesOf(query, record, 1).constFirst() : QVariant();
    if (query.lastError().isValid())
        report(query, text);
    return value;
}

QStringList Database::Rows(const QString &text) const
{
    QSqlQuery query = run(Main(), text);
    QStringList rows;
    const QSqlRecord record = query.record();
    while (query.next()) {
        QStringList fields;
        for (const QVariant &value : valuesOf(query, record, record.count()))
            fields << shown(value);
        rows << fields.join(u'|');
    }
    if (query.lastError().isValid())
        report(query, text);
    return rows;
}

QStringList Database::Columns(const QString &text) const
{
    const QSqlRecord record = run(Main(), text).record();
    QStringList names;
    for (int i = 0; i < record.count(); ++i)
        names << record.fieldName(i);
    return names;
}

QString Database::Refusal(const QString &text) const
{
    QSqlQuery query = run(Main(), text);
    while (!query.lastError().isValid() && query.nextResult()) {
    }
    return query.lastError().text();
}

} // namespace test
