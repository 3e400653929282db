#include "tsql/qt/qt_types.h"

#include "tsql/run/sqlite_errors.h"
#include "tsql/values/dates.h"
#include "tsql/values/decimal.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace tsql {

QMetaType MetaType(const SqlType &type)
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

QSqlField SqlField(const ResultColumn &column)
{
    QSqlField field(column.name, MetaType(column.type), column.table);
    field.setRequired(!column.nullable);
    if (column.type.IsText() || column.type.IsBinary())
        field.setLength(column.type.length);
    if (column.type.IsDecimal()) {
        field.setLength(column.type.precision);
        field.setPrecision(column.type.scale);
    }
    return field;
}

namespace {

QVariant DateVariant(std::string_view stored, Kind kind)
{
    const Moment moment = MomentFromStorage(stored);
    const QDate date = QDate(1970, 1, 1).addDays(moment.day);
    const QTime time = QTime::fromMSecsSinceStartOfDay(int(moment.millisecond));
    if (kind == Kind::Date)
        return date;
    if (kind == Kind::Time)
        return time;
    return QDateTime(date, time);
}

QVariant DecimalVariant(const Decimal &value, QSql::NumericalPrecisionPolicy policy)
{
    switch (policy) {
    case QSql::LowPrecisionInt32:
        return int(value.ToInt());
    case QSql::LowPrecisionInt64:
        return qlonglong(value.ToInt());
    case QSql::LowPrecisionDouble:
        return value.ToDouble();
    default:
        return value.ToText();
    }
}

} // namespace

QVariant VariantOf(const Cell &cell, const SqlType &type, QSql::NumericalPrecisionPolicy policy)
{
    switch (cell.form) {
    case Value::Form::Null:
        return QVariant(MetaType(type));
    case Value::Form::Integer:
        if (type.kind == Kind::BigInt)
            return cell.integer;
        if (type.kind == Kind::Bit || type.kind == Kind::Condition)
            return cell.integer != 0;
        return int(cell.integer);
    case Value::Form::Real:
        return cell.real;
    case Value::Form::Text:
        if (type.IsDate())
            return DateVariant(cell.bytes, type.kind);
        return QString::fromUtf8(cell.bytes.data(), qsizetype(cell.bytes.size()));
    case Value::Form::Blob:
        if (type.IsDecimal())
            return DecimalVariant(Decimal::FromBlob(cell.bytes.data(), int(cell.bytes.size()), type.scale), policy);
        return QByteArray(cell.bytes.data(), qsizetype(cell.bytes.size()));
    }
    return {};
}

host::FedCell FedCell(const Cell &cell, const SqlType &type)
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
        else if (type.IsInteger())
            fed.form = Form::Integer;
        break;
    case Value::Form::Text:
        if (!type.IsDate()) {
            fed.form = Form::Utf8;
            fed.bytes = cell.bytes.data();
            fed.size = qsizetype(cell.bytes.size());
        }
        break;
    case Value::Form::Blob:
        if (type.IsDecimal() && Decimal::SmallUnits(cell.bytes, fed.number)) {
            fed.form = Form::Decimal;
            fed.scale = quint8(type.scale);
        }
        break;
    case Value::Form::Real:
        break;
    }
    return fed;
}

QSqlError SqlError(const Error &error, QSqlError::ErrorType type)
{
    if (error.Number() == DeviceErrorNumber || error.Number() == NoSpaceNumber)
        type = QSqlError::ConnectionError;
    const QString where = error.Line() > 0 ? u"Line %1"_s.arg(error.Line()) : QString();
    return {where, error.Text(), type, QString::number(error.Number())};
}

} // namespace tsql
