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
QStringList &MadeOnServer()
{
    static QStringList names;
    return names;
}

void Drop(const QString &name)
{
    try {
        Target(name).DropOnServer();
    } catch (const ScriptError &error) {
        qWarning("a database stays on the server: %s", qPrintable(error.text));
    }
}

void DropAll()
{
    for (const QString &name : std::exchange(MadeOnServer(), {}))
        Drop(name);
}

[[noreturn]] void Fail(const QString &text)
{
    const QStringList names = QSqlDatabase::connectionNames();
    for (const QString &name : names)
        QSqlDatabase::database(name, false).close();
    DropAll();
    qFatal("%s", qPrintable(text));
    std::abort();
}

/// Fails the running test with the driver's words.
void Report(const QSqlQuery &query, const QString &text)
{
    const QString words = query.lastError().text() + u"\nin: "_s + text.left(400);
    QTest::qFail(qPrintable(words), __FILE__, __LINE__);
}

/// Runs every statement of a text; the query stands before the first row of the first result.
QSqlQuery Run(const QSqlDatabase &connection, const QString &text)
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

void Disconnect(const QString &name)
{
    QSqlDatabase::database(name, false).close();
    QSqlDatabase::removeDatabase(name);
}

void Execute(const QSqlDatabase &connection, const QString &text)
{
    QSqlQuery query = Run(connection, text);
    while (!query.lastError().isValid() && query.nextResult()) {
    }
    if (query.lastError().isValid())
        Report(query, text);
}

/// Makes a database of this name with its content.
void Make(const QString &name, Database::Content content)
{
    const QString connection = u"test.making"_s;
    try {
        Initialise(Target(name).Open(true, connection), content == Database::Content::Demo);
    } catch (const ScriptError &error) {
        Fail(error.text);
    }
    Disconnect(connection);
}

/// The file that every embedded database of this content is a copy of.
QString Original(Database::Content content)
{
    static QTemporaryDir folder;
    static std::map<Database::Content, QString> made;
    QString &file = made[content];
    if (file.isEmpty()) {
        file = folder.filePath(content == Database::Content::Demo ? u"demo"_s : u"empty"_s);
        Make(file, content);
    }
    return file;
}

/// A database that nobody else has.
QString NameOnServer()
{
    static int count = 0;
    return u"goods_test_%1_%2_%3"_s.arg(QCoreApplication::applicationPid())
        .arg(QDateTime::currentMSecsSinceEpoch())
        .arg(++count);
}

QString ConnectionTo(const QString &database)
{
    return qEnvironmentVariable("GOODS_TEST_CONNECTION") + u";Database="_s + database;
}

void MakeOnServer(const QString &database, Database::Content content)
{
    MadeOnServer() << ConnectionTo(database);
    Make(ConnectionTo(database), content);
}

/// Whether the server could copy a database. Not all can.
bool CopyOnServer(const QString &database, const QString &source)
{
    const QString name = u"test.copying"_s;
    const auto remove = qScopeGuard([&] { Disconnect(name); });
    QSqlDatabase server;
    try {
        server = Target(qEnvironmentVariable("GOODS_TEST_CONNECTION")).Connect(name);
    } catch (const ScriptError &error) {
        Fail(error.text);
    }
    const bool copied =
        !Run(server, u"CREATE DATABASE [%1] AS COPY OF [%2]"_s.arg(database, source)).lastError().isValid();
    server = {};
    if (copied)
        MadeOnServer() << ConnectionTo(database);
    return copied;
}

/// Makes a database with this content on the server and gives its connection string. A copy of the first one is quicker
/// than the scripts.
QString NewOnServer(Database::Content content)
{
    static bool copies = true;
    static std::map<Database::Content, QString> made;
    QString &source = made[content];
    if (source.isEmpty() && copies) {
        if (made.size() == 1)
            qAddPostRoutine(DropAll);
        source = NameOnServer();
        MakeOnServer(source, content);
    }
    const QString name = NameOnServer();
    copies = copies && CopyOnServer(name, source);
    if (!copies)
        MakeOnServer(name, content);
    return ConnectionTo(name);
}

/// The first fields of the row that a query stands on, `count` of them; the same values whichever database they are
/// from. `record` was asked for before the row.
QVariantList ValuesOf(const QSqlQuery &query, const QSqlRecord &record, int count)
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

QString Shown(const QVariant &value)
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
        m_name = NewOnServer(content);
    } else {
        const QString source = Original(content);
        m_name = m_folder.filePath(u"goods.db"_s);
        if (!QFile::copy(source, m_name))
            Fail(u"cannot copy "_s + source);
    }
    m_main = Connect();
    m_goodsList = Connect();
    m_scales = Connect();
}

Database::~Database()
{
    for (const QString &name : std::as_const(m_names))
        Disconnect(name);
    if (MadeOnServer().removeAll(m_name))
        Drop(m_name);
}

QStringList Database::DeskArguments() const
{
    return {OnServer() ? u"--connection"_s : u"--database"_s, m_name};
}

QSqlDatabase Database::Connect(const QString &connectionName) const
{
    try {
        return Target(m_name).Connect(connectionName);
    } catch (const ScriptError &error) {
        Fail(error.text);
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
    Execute(Main(), text);
}

QVariant Database::Scalar(const QString &text) const
{
    QSqlQuery query = Run(Main(), text);
    const QSqlRecord record = query.record();
    QVariant value = query.next() ? ValuesOf(query, record, 1).constFirst() : QVariant();
    if (query.lastError().isValid())
        Report(query, text);
    return value;
}

QStringList Database::Rows(const QString &text) const
{
    QSqlQuery query = Run(Main(), text);
    QStringList rows;
    const QSqlRecord record = query.record();
    while (query.next()) {
        QStringList fields;
        for (const QVariant &value : ValuesOf(query, record, record.count()))
            fields << Shown(value);
        rows << fields.join(u'|');
    }
    if (query.lastError().isValid())
        Report(query, text);
    return rows;
}

QStringList Database::Columns(const QString &text) const
{
    const QSqlRecord record = Run(Main(), text).record();
    QStringList names;
    for (int i = 0; i < record.count(); ++i)
        names << record.fieldName(i);
    return names;
}

QString Database::Refusal(const QString &text) const
{
    QSqlQuery query = Run(Main(), text);
    while (!query.lastError().isValid() && query.nextResult()) {
    }
    return query.lastError().text();
}

} // namespace test
