#include "tsql/qt/qt_types.h"

#include "tsql/run/sqlite_errors.h"
#include "tsql/values/dates.h"
#include "tsql/values/decimal.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace tsql {

QMetaType metaType(const SqlType &type)
{
    switch (type.kind) {
    case Kind::Bit:
    case Kind::Condition:
        return QMetaType::fromType<bool>();
    case Kind::TinyInt:
    case Kind::SmallInt:
    case Kind::Int:
        return QMetaType::fromType<int>();
    case Kind::BigInt:
        return QMetaType::fromType<qlonglong>();
    case Kind::Real:
    case Kind::Float:
        return QMetaType::fromType<double>();
    case Kind::Date:
        return QMetaType::fromType<QDate>();
    case Kind::Time:
        return QMetaType::fromType<QTime>();
    case Kind::SmallDateTime:
    case Kind::DateTime:
        return QMetaType::fromType<QDateTime>();
    case Kind::Binary:
    case Kind::VarBinary:
        return QMetaType::fromType<QByteArray>();
    default:
        return QMetaType::fromType<QString>();
    }
}

QSqlField sqlField(const ResultColumn &column)
{
    QSqlField field(column.name, metaType(column.type), column.table);
    field.setRequired(!column.nullable);
    if (column.type.isText() || column.type.isBinary())
        field.setLength(column.type.length);
    if (column.type.isDecimal()) {
        field.setLength(column.type.precision);
        field.setPrecision(column.type.scale);
    }
    return field;
}

namespace {

QVariant dateVariant(std::string_view stored, Kind kind)
{
    const Moment moment = momentFromStorage(stored);
    const QDate date = QDate(1970, 1, 1).addDays(moment.day);
    const QTime time = QTime::fromMSecsSinceStartOfDay(int(moment.millisecond));
    if (kind == Kind::Date)
        return date;
    if (kind == Kind::Time)
        return time;
    return QDateTime(date, time);
}

QVariant decimalVariant(const Decimal &value, QSql::NumericalPrecisionPolicy policy)
{
    switch (policy) {
    case QSql::LowPrecisionInt32:
        return int(value.toInt());
    case QSql::LowPrecisionInt64:
        return qlonglong(value.toInt());
    case QSql::LowPrecisionDouble:
        return value.toDouble();
    default:
        return value.toText();
    }
}

} // namespace

QVariant variantOf(const Cell &cell, const SqlType &type, QSql::NumericalPrecisionPolicy policy)
{
    switch (cell.form) {
    case Value::Form::Null:
        return QVariant(metaType(type));
    case Value::Form::Integer:
        if (type.kind == Kind::BigInt)
            return cell.integer;
        if (type.kind == Kind::Bit || type.kind == Kind::Condition)
            return cell.integer != 0;
        return int(cell.integer);
    case Value::Form::Real:
        return cell.real;
    case Value::Form::Text:
        if (type.isDate())
            return dateVariant(cell.bytes, type.kind);
        return QString::fromUtf8(cell.bytes.data(), qsizetype(cell.bytes.size()));
    case Value::Form::Blob:
        if (type.isDecimal())
            return decimalVariant(Decimal::fromBlob(cell.bytes.data(), int(cell.bytes.size()), type.scale), policy);
        return QByteArray(cell.bytes.data(), qsizetype(cell.bytes.size()));
    }
    return {};
}

host::FedCell fedCell(const Cell &cell, const SqlType &type)
{
    using Form = host::FedCell::Form;
    host::FedCell fed;
    fed.form = Form::Other;
    switch (cell.form) {
    case Value::Form::Null:
        fed.form = Form::Null;
        break;
    case Value::Form::Integer:
        fed.number = cell.integer;
        if (type.kind == Kind::Bit || type.kind == Kind::Condition)
            fed.form = Form::Boolean;
        else if (type.isInteger())
            fed.form = Form::Integer;
        break;
    case Value::Form::Text:
        if (!type.isDate()) {
            fed.form = Form::Utf8;
            fed.bytes = cell.bytes.data();
            fed.size = qsizetype(cell.bytes.size());
        }
        break;
    case Value::Form::Blob:
        if (type.isDecimal() && Decimal::smallUnits(cell.bytes, fed.number)) {
            fed.form = Form::Decimal;
            fed.scale = quint8(type.scale);
        }
        break;
    case Value::Form::Real:
        break;
    }
    return fed;
}

QSqlError sqlError(const Error &error, QSqlError::ErrorType type)
{
    if (error.number() == DeviceErrorNumber || error.number() == NoSpaceNumber)
        type = QSqlError::ConnectionError;
    const QString where = error.line() > 0 ? u"Line %1"_s.arg(error.line()) : QString();
    return {where, error.message(), type, QString::number(error.number())};
}

} // namespace tsql
