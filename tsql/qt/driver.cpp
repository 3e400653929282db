#include "tsql/qt/driver.h"

#include "tsql/qt/qt_types.h"
#include "tsql/qt/result.h"
#include "tsql/run/connection.h"
#include "tsql/values/error.h"

#include <QDateTime>
#include <QSqlError>
#include <QSqlField>
#include <QSqlIndex>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace tsql {

Driver::Driver(QObject *parent) : QSqlDriver(parent)
{}

Driver::~Driver() = default;

bool Driver::hasFeature(DriverFeature feature) const
{
    switch (feature) {
    case Transactions:
    case BLOB:
    case Unicode:
    case LastInsertId:
    case MultipleResultSets:
    case LowPrecisionNumbers:
    case SimpleLocking:
    case FinishQuery:
        return true;
    case PreparedQueries: // bound values are written into the text by formatValue
    case NamedPlaceholders:
    case PositionalPlaceholders:
    case QuerySize:
    case BatchOperations:
    case EventNotifications:
    case CancelQuery:
        return false;
    }
    return false;
}

template <class Work> bool Driver::Attempt(const Work &work)
{
    try {
        if (!m_connection)
            throw Error(0);
        work(*m_connection);
        return true;
    } catch (const Error &error) {
        setLastError(SqlError(error, QSqlError::TransactionError));
        return false;
    }
}

bool Driver::open(const QString &database, const QString &, const QString &, const QString &, int, const QString &)
{
    close();
    try {
        m_connection = std::make_shared<Connection>(database);
    } catch (const Error &error) {
        setLastError(SqlError(error, QSqlError::ConnectionError));
        setOpenError(true);
        return false;
    }
    setOpen(true);
    setOpenError(false);
    return true;
}

void Driver::close()
{
    m_connection.reset();
    setOpen(false);
    setOpenError(false);
}

QSqlResult *Driver::createResult() const
{
    return new Result(this);
}

bool Driver::beginTransaction()
{
    return Attempt([](Connection &connection) { connection.BeginTransaction(); });
}

bool Driver::commitTransaction()
{
    return Attempt([](Connection &connection) { connection.Commit(); });
}

bool Driver::rollbackTransaction()
{
    return Attempt([](Connection &connection) { connection.Rollback(); });
}

bool Driver::Backup(const QString &path)
{
    return Attempt([&path](Connection &connection) { connection.Backup(path); });
}

QStringList Driver::tables(QSql::TableType type) const
{
    QStringList names;
    if (!m_connection || !(type & QSql::Tables))
        return names;
    for (const ObjectName &name : m_connection->Names().TableNames())
        names += name.Display();
    names.sort(Qt::CaseInsensitive);
    return names;
}

namespace {

std::shared_ptr<const Table> TableNamed(const Connection &connection, const QString &name)
{
    QString plain = name;
    plain.remove(u'[').remove(u']');
    ObjectName object;
    object.name = plain.section(u'.', -1);
    object.schema = plain.contains(u'.') ? plain.section(u'.', -2, -2) : QString();
    return connection.Names().FindTable(object);
}

} // namespace

QSqlRecord Driver::record(const QString &name) const
{
    QSqlRecord record;
    const auto table = m_connection ? TableNamed(*m_connection, name) : nullptr;
    if (!table)
        return record;
    for (const Column &column : table->columns)
        record.append(SqlField({column.name, column.type, column.nullable, name}));
    return record;
}

QSqlIndex Driver::primaryIndex(const QString &name) const
{
    QSqlIndex index(name);
    const auto table = m_connection ? TableNamed(*m_connection, name) : nullptr;
    if (!table)
        return index;
    for (const QString &column : table->primaryKey)
        index.append(record(name).field(column));
    return index;
}

QString Driver::escapeIdentifier(const QString &identifier, IdentifierType) const
{
    if (identifier.startsWith(u'[') && identifier.endsWith(u']'))
        return identifier;
    return u'[' + QString(identifier).replace(u']', u"]]"_s) + u']';
}

QString Driver::formatValue(const QSqlField &field, bool trimStrings) const
{
    if (field.isNull())
        return u"NULL"_s;
    const QVariant value = field.value();
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"1"_s : u"0"_s;
    case QMetaType::QByteArray:
        return u"0x"_s + QString::fromLatin1(value.toByteArray().toHex());
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'e', 16);
    case QMetaType::QDate:
        return value.toDate().toString(u"''yyyy-MM-dd''"_s);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(u"''yyyy-MM-dd hh:mm:ss.zzz''"_s);
    case QMetaType::QString: {
        QString text = value.toString();
        while (trimStrings && text.endsWith(u' '))
            text.chop(1);
        return u"N'"_s + text.replace(u'\'', u"''"_s) + u'\'';
    }
    default:
        return QSqlDriver::formatValue(field, trimStrings);
    }
}

} // namespace tsql
