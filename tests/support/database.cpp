#include "tests/support/database.h"

#include "tsql/driver.h"

#include <QFile>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <map>

namespace test {

namespace {

QStringList batches(const QString &script)
{
    QFile file(QStringLiteral(GOODS_SOURCES "/desk/database/") + script);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    QStringList all{QString()};
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (line.trimmed() == u"GO")
            all << QString();
        else
            all.last() += line + u'\n';
    }
    return all;
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

QString connect(const QString &file)
{
    static int count = 0;
    QString name = QStringLiteral("test.%1").arg(++count);
    QSqlDatabase connection = QSqlDatabase::addDatabase(new tsql::Driver, name);
    connection.setDatabaseName(file);
    connection.setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (!connection.open())
        qFatal("cannot open %s: %s", qPrintable(file), qPrintable(connection.lastError().text()));
    return name;
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
        qFatal("%s\nin: %s", qPrintable(query.lastError().text()), qPrintable(text.left(400)));
}

/// The file that every database of this content is a copy of.
QString original(Database::Content content)
{
    static QTemporaryDir folder;
    static std::map<Database::Content, QString> made;
    QString &file = made[content];
    if (!file.isEmpty())
        return file;
    QStringList scripts{QStringLiteral("schema.sql"), QStringLiteral("procedures.sql")};
    if (content == Database::Content::Demo)
        scripts << QStringLiteral("demo.sql");
    file = folder.filePath(content == Database::Content::Demo ? QStringLiteral("demo") : QStringLiteral("empty"));
    const QString name = connect(file);
    for (const QString &script : std::as_const(scripts))
        for (const QString &batch : batches(script))
            if (!batch.trimmed().isEmpty())
                execute(QSqlDatabase::database(name), batch);
    disconnect(name);
    return file;
}

QString shown(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("NULL");
    QString text = value.toString();
    if (value.typeId() == QMetaType::QString && text.contains(u'.')) {
        static const QRegularExpression decimal(QStringLiteral("^(-?\\d+)(?:\\.0*|(\\.\\d*?)0*)$"));
        const auto match = decimal.match(text);
        if (match.hasMatch())
            text = match.captured(1) + match.captured(2);
    }
    return text;
}

} // namespace

Database::Database(Content content) : file_(folder_.filePath(QStringLiteral("goods.db")))
{
    const QString source = original(content);
    if (!QFile::copy(source, file_))
        qFatal("cannot copy %s", qPrintable(source));
    main_ = Connect();
    goodsList_ = Connect();
    scales_ = Connect();
}

Database::~Database()
{
    for (const QString &name : std::as_const(names_))
        disconnect(name);
}

QString Database::Connect()
{
    names_ << connect(file_);
    return names_.last();
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
    if (query.lastError().isValid())
        qFatal("%s\nin: %s", qPrintable(query.lastError().text()), qPrintable(text));
    return query.next() ? query.value(0) : QVariant();
}

QStringList Database::Rows(const QString &text) const
{
    QSqlQuery query = run(Main(), text);
    QStringList rows;
    const int columns = query.record().count();
    while (query.next()) {
        QStringList fields;
        for (int i = 0; i < columns; ++i)
            fields << shown(query.value(i));
        rows << fields.join(u'|');
    }
    if (query.lastError().isValid())
        qFatal("%s\nin: %s", qPrintable(query.lastError().text()), qPrintable(text));
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
