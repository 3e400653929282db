// Columns and rows: the engine's types and storage forms as the stream spells them.

#include "tests/tds/tokens.h"
#include "tsql/values/dates.h"
#include "tsql/values/decimal.h"

#include <QDate>
#include <QUuid>
#include <QtEndian>

namespace tds {

using tsql::Kind;
using tsql::SqlType;

namespace {

enum WireType : quint8 {
    Guid = 0x24,
    IntN = 0x26,
    DateN = 0x28,
    TimeN = 0x29,
    BitN = 0x68,
    DecimalN = 0x6A,
    FloatN = 0x6D,
    MoneyN = 0x6E,
    DateTimeN = 0x6F,
    VarBinary = 0xA5,
    VarChar = 0xA7,
    Char = 0xAF,
    NVarChar = 0xE7,
    NChar = 0xEF,
};

constexpr int LongestPlain = 8000; // bytes; what may be longer comes in chunks
constexpr quint16 InChunks = 0xFFFF;
constexpr int TimeDigits = 3; // behind the second
constexpr quint64 NullChunks = ~quint64(0);

int IntegerSize(Kind kind)
{
    switch (kind) {
    case Kind::TinyInt:
        return 1;
    case Kind::SmallInt:
        return 2;
    case Kind::BigInt:
        return 8;
    default:
        return 4;
    }
}

int DecimalSize(int precision)
{
    return precision <= 9 ? 5 : precision <= 19 ? 9 : precision <= 28 ? 13 : 17;
}

/** Bytes that a text or binary column announces; InChunks for those without a limit. */
quint16 AnnouncedLength(const SqlType &type)
{
    if (type.length == SqlType::Max)
        return InChunks;
    // A letter of a varchar takes up to four bytes.
    const int bytes = std::max(type.length, 1) * (type.IsBinary() ? 1 : type.IsUnicode() ? 2 : 4);
    return bytes > LongestPlain ? InChunks : quint16(bytes);
}

WireType TextType(Kind kind)
{
    switch (kind) {
    case Kind::Char:
        return Char;
    case Kind::NChar:
        return NChar;
    case Kind::NVarChar:
        return NVarChar;
    default:
        return VarChar;
    }
}

/** A column of fixed texts too long for it is announced as a varying one. */
void PutTextType(Wire &wire, const SqlType &type, const Collation &collation)
{
    const quint16 length = AnnouncedLength(type);
    if (type.IsBinary()) {
        wire.put(VarBinary);
        wire.put(length);
        return;
    }
    const Kind varying = type.IsUnicode() ? Kind::NVarChar : Kind::VarChar;
    wire.put(TextType(length == InChunks ? varying : type.kind));
    wire.put(length);
    wire.put(collation.bytes());
}

void PutType(Wire &wire, const SqlType &type, const Collation &collation)
{
    const auto sized = [&wire](WireType wireType, int size) {
        wire.put(wireType);
        wire.put(quint8(size));
    };
    switch (type.kind) {
    case Kind::Bit:
    case Kind::Condition:
        return sized(BitN, 1);
    case Kind::Decimal:
        sized(DecimalN, DecimalSize(type.precision));
        wire.put(quint8(type.precision));
        return wire.put(quint8(type.scale));
    case Kind::Money:
        return sized(MoneyN, 8);
    case Kind::Real:
        return sized(FloatN, 4);
    case Kind::Float:
        return sized(FloatN, 8);
    case Kind::Date:
        return wire.put(DateN);
    case Kind::Time:
        return sized(TimeN, TimeDigits);
    case Kind::SmallDateTime:
    case Kind::DateTime:
        return sized(DateTimeN, 8);
    case Kind::UniqueIdentifier:
        return sized(Guid, 16);
    default:
        if (type.IsText() || type.IsBinary())
            return PutTextType(wire, type, collation);
        return sized(IntN, IntegerSize(type.kind));
    }
}

void PutDecimal(Wire &wire, const tsql::Cell &cell, const SqlType &type)
{
    const auto value = tsql::Decimal::FromBlob(cell.bytes.data(), int(cell.bytes.size()), type.scale);
    const int size = DecimalSize(type.precision);
    const auto magnitude = static_cast<unsigned __int128>(value.units < 0 ? -value.units : value.units);
    wire.put(quint8(size));
    wire.put(quint8(value.units >= 0));
    wire.put(QByteArray(reinterpret_cast<const char *>(&magnitude), size - 1));
}

void PutMoney(Wire &wire, const tsql::Cell &cell)
{
    const auto units = qint64(tsql::Decimal::FromBlob(cell.bytes.data(), int(cell.bytes.size()), 4).units);
    wire.put(quint8(8));
    wire.put(qint32(units >> 32));
    wire.put(quint32(units));
}

void PutMoment(Wire &wire, std::string_view stored, Kind kind)
{
    static const qint64 epoch = QDate(1970, 1, 1).toJulianDay();
    const tsql::Moment moment = tsql::MomentFromStorage(stored);
    const auto time = quint32(moment.millisecond);
    if (kind == Kind::Date) {
        const auto days = quint32(moment.day + epoch - QDate(1, 1, 1).toJulianDay());
        wire.put(quint8(3));
        wire.put(QByteArray(reinterpret_cast<const char *>(&days), 3));
    } else if (kind == Kind::Time) {
        wire.put(quint8(4));
        wire.put(time);
    } else {
        wire.put(quint8(8));
        wire.put(qint32(moment.day + epoch - QDate(1900, 1, 1).toJulianDay()));
        wire.put(quint32((time * 3ULL + 5) / 10)); // three hundredths of a second
    }
}

void PutGuid(Wire &wire, std::string_view stored)
{
    const QUuid id = QUuid::fromString(QString::fromUtf8(stored.data(), qsizetype(stored.size())));
    wire.put(quint8(16));
    wire.put(quint32(id.data1));
    wire.put(quint16(id.data2));
    wire.put(quint16(id.data3));
    wire.put(QByteArray(reinterpret_cast<const char *>(id.data4), 8));
}

void PutBytes(Wire &wire, const QByteArray &bytes, bool inChunks)
{
    if (!inChunks) {
        wire.put(quint16(bytes.size()));
        return wire.put(bytes);
    }
    wire.put(quint64(bytes.size()));
    if (!bytes.isEmpty()) {
        wire.put(quint32(bytes.size()));
        wire.put(bytes);
    }
    wire.put(quint32(0));
}

QByteArray TextBytes(std::string_view utf8, const SqlType &type, const Collation &collation)
{
    if (type.IsBinary())
        return {utf8.data(), qsizetype(utf8.size())};
    if (!type.IsUnicode())
        return collation.encoded(utf8);
    const QString text = QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    return {reinterpret_cast<const char *>(text.utf16()), text.size() * 2};
}

void PutNull(Wire &wire, const SqlType &type)
{
    if (!type.IsText() && !type.IsBinary())
        wire.put(quint8(0));
    else if (AnnouncedLength(type) == InChunks)
        wire.put(NullChunks);
    else
        wire.put(InChunks);
}

void PutInteger(Wire &wire, qint64 value, int size)
{
    wire.put(quint8(size));
    wire.put(QByteArray(reinterpret_cast<const char *>(&value), size));
}

void PutCell(Wire &wire, const tsql::Cell &cell, const SqlType &type, const Collation &collation)
{
    if (cell.form == tsql::Value::Form::Null)
        return PutNull(wire, type);
    if (type.IsText() || type.IsBinary())
        return PutBytes(wire, TextBytes(cell.bytes, type, collation), AnnouncedLength(type) == InChunks);
    if (type.IsDate())
        return PutMoment(wire, cell.bytes, type.kind);
    switch (type.kind) {
    case Kind::Bit:
    case Kind::Condition:
        return PutInteger(wire, cell.integer, 1);
    case Kind::Decimal:
        return PutDecimal(wire, cell, type);
    case Kind::Money:
        return PutMoney(wire, cell);
    case Kind::Real:
        wire.put(quint8(4));
        return wire.put(float(cell.real));
    case Kind::Float:
        wire.put(quint8(8));
        return wire.put(cell.form == tsql::Value::Form::Integer ? double(cell.integer) : cell.real);
    case Kind::UniqueIdentifier:
        return PutGuid(wire, cell.bytes);
    default:
        return PutInteger(wire, cell.integer, IntegerSize(type.kind));
    }
}

} // namespace

void PutColumns(Wire &wire, const std::vector<tsql::ResultColumn> &columns, const Collation &collation)
{
    constexpr quint8 ColumnMetadata = 0x81;
    constexpr quint16 Nullable = 1;
    wire.put(ColumnMetadata);
    wire.put(quint16(columns.size()));
    for (const tsql::ResultColumn &column : columns) {
        wire.put(quint32(0)); // no type of the user's own
        wire.put(Nullable);
        PutType(wire, column.type, collation);
        wire.putShort(column.name);
    }
}

void PutRow(Wire &wire, const tsql::Cursor &cursor, const Collation &collation)
{
    constexpr quint8 Row = 0xD1;
    wire.put(Row);
    const auto &columns = cursor.Columns();
    for (size_t i = 0; i < columns.size(); ++i)
        PutCell(wire, cursor.CellAt(int(i)), columns[i].type, collation);
}

} // namespace tds
