#include "tsql/values/convert.h"

#include "tsql/values/dates.h"
#include "tsql/values/error.h"
#include "tsql/values/folding.h"

#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return withoutTrailingBlanks(text);
}

QString quoted(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

struct Range
{
    qint64 low;
    qint64 high;
};

Range rangeOf(Kind kind)
{
    switch (kind) {
    case Kind::Bit:
        return {0, 1};
    case Kind::TinyInt:
        return {0, 255};
    case Kind::SmallInt:
        return {-32768, 32767};
    case Kind::Int:
        return {std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()};
    default:
        return {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()};
    }
}

[[noreturn]] void throwOverflow(const QString &from, Kind kind)
{
    throw Error(8115, {from, kindName(kind)});
}

[[noreturn]] void throwConversion(std::string_view text, Kind source, Kind kind)
{
    throw Error(245, {kindName(source), quoted(text), kindName(kind)});
}

[[noreturn]] void throwConverting(Kind source, Kind kind)
{
    throw Error(8114, {kindName(source), kindName(kind)});
}

[[noreturn]] void throwTextOverflow(std::string_view text, Kind source, Kind kind)
{
    switch (kind) {
    case Kind::Int:
        throw Error(248, {kindName(source), quoted(text)});
    case Kind::SmallInt:
    case Kind::TinyInt:
        throw Error(244, {kindName(source), quoted(text), kind == Kind::SmallInt ? u"INT2"_s : u"INT1"_s});
    default:
        throwOverflow(u"expression"_s, kind);
    }
}

} // namespace

qint64 fitInteger(qint64 value, Kind kind, const char *from)
{
    if (kind == Kind::Bit)
        return value != 0;
    const Range range = rangeOf(kind);
    if (value >= range.low && value <= range.high)
        return value;
    if (kind == Kind::TinyInt || kind == Kind::SmallInt)
        throw Error(220, {kindName(kind), value});
    throwOverflow(QLatin1String(from), kind);
}

qint64 integerFromText(std::string_view text, Kind kind, Kind source)
{
    if (kind == Kind::Bit)
        return bitFromText(text, source);
    std::string_view digits = trimmed(text);
    if (digits.empty())
        return 0;
    if (digits.front() == '+' && digits.size() > 1 && digits[1] != '-')
        digits.remove_prefix(1);
    qint64 value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc::invalid_argument || end != digits.data() + digits.size()) {
        if (kind == Kind::BigInt)
            throwConverting(source, kind);
        throwConversion(text, source, kind);
    }
    const Range range = rangeOf(kind);
    if (error == std::errc::result_out_of_range || value < range.low || value > range.high)
        throwTextOverflow(text, source, kind);
    return value;
}

qint64 integerFromReal(double value, Kind kind)
{
    if (kind == Kind::Bit)
        return value != 0.0;
    const double whole = std::trunc(value);
    if (!(whole >= -9223372036854775808.0 && whole < 9223372036854775808.0))
        throwOverflow(u"expression"_s, kind);
    return fitInteger(qint64(whole), kind);
}

qint64 integerFromDecimal(const Decimal &value, Kind kind)
{
    if (kind == Kind::Bit)
        return value.units != 0;
    const Decimal::Int whole = value.toInt();
    const Range range = rangeOf(kind);
    if (whole < range.low || whole > range.high)
        throwOverflow(u"numeric"_s, kind);
    return qint64(whole);
}

qint64 bitFromText(std::string_view text, Kind source)
{
    const std::string_view word = trimmed(text);
    if (compareFolded(word, "true") == 0)
        return 1;
    if (word.empty() || compareFolded(word, "false") == 0)
        return 0;
    bool any = false;
    for (const char c : word) {
        if (c < '0' || c > '9')
            throwConversion(text, source, Kind::Bit);
        any = any || c != '0';
    }
    return any;
}

double realFromText(std::string_view text, Kind source)
{
    std::string_view number = trimmed(text);
    if (number.empty())
        return 0;
    if (number.front() == '+')
        number.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc() || end != number.data() + number.size() || !std::isfinite(value))
        throwConverting(source, Kind::Float);
    return value;
}

Decimal decimalFromText(std::string_view text, int precision, int scale, Kind source)
{
    bool ok = false;
    const Decimal value = Decimal::fromText(text, ok);
    if (!ok)
        throwConverting(source, Kind::Decimal);
    try {
        return value.rescaled(precision, scale);
    } catch (const Error &) {
        throwOverflow(kindName(source), Kind::Decimal);
    }
}

Decimal decimalFromInteger(qint64 value, int precision, int scale)
{
    try {
        return Decimal::fromInt(value).rescaled(precision, scale);
    } catch (const Error &) {
        throwOverflow(u"int"_s, Kind::Decimal);
    }
}

Decimal decimalFromReal(double value, int precision, int scale)
{
    try {
        return Decimal::fromDouble(value, scale).rescaled(precision, scale);
    } catch (const Error &) {
        throwOverflow(u"float"_s, Kind::Decimal);
    }
}

std::string textFromReal(double value)
{
    char buffer[32];
    const int length = std::snprintf(buffer, sizeof buffer, "%.6g", value);
    std::string text(buffer, size_t(length));
    const size_t exponent = text.find('e');
    if (exponent != std::string::npos && text.size() - exponent == 4)
        text.insert(exponent + 2, 1, '0');
    return text;
}

std::string textFromBinary(std::string_view bytes)
{
    return "0x" + QByteArray::fromRawData(bytes.data(), qsizetype(bytes.size())).toHex().toUpper().toStdString();
}

std::string_view fitText(std::string_view text, int length, std::string_view table, std::string_view column)
{
    // A byte count within the limit needs no counting of characters.
    if (length == SqlType::Max || text.size() <= size_t(length) || utf16Length(text) <= size_t(length))
        return text;
    const std::string_view cut = utf16Prefix(text, size_t(length));
    if (withoutTrailingBlanks(text).size() <= cut.size())
        return cut;
    throw Error(2628, {quoted(table), quoted(column), quoted(cut)});
}

std::string_view cutText(std::string_view text, int length)
{
    return length == SqlType::Max || text.size() <= size_t(length) ? text : utf16Prefix(text, size_t(length));
}

namespace {

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

Decimal decimalOf(const Value &value, const SqlType &type)
{
    return Decimal::fromBlob(value.bytes.constData(), int(value.bytes.size()), type.scale);
}

[[noreturn]] void throwClash(const SqlType &from, const SqlType &to)
{
    throw Error(206, {kindName(from.kind), kindName(to.kind)});
}

Value toInteger(const Value &value, const SqlType &from, const SqlType &to)
{
    if (from.isInteger())
        return Value::ofInteger(fitInteger(value.integer, to.kind));
    if (from.isDecimal())
        return Value::ofInteger(integerFromDecimal(decimalOf(value, from), to.kind));
    if (from.isReal())
        return Value::ofInteger(integerFromReal(value.real, to.kind));
    if (from.isText())
        return Value::ofInteger(integerFromText(view(value.bytes), to.kind, from.kind));
    throwClash(from, to);
}

Value toDecimal(const Value &value, const SqlType &from, const SqlType &to)
{
    if (from.isDecimal()) {
        if (from.scale == to.scale && from.precision <= to.precision)
            return value;
        return Value::ofBlob(decimalOf(value, from).rescaled(to.precision, to.scale).toBlob());
    }
    if (from.isInteger())
        return Value::ofBlob(decimalFromInteger(value.integer, to.precision, to.scale).toBlob());
    if (from.isReal())
        return Value::ofBlob(decimalFromReal(value.real, to.precision, to.scale).toBlob());
    if (from.isText())
        return Value::ofBlob(decimalFromText(view(value.bytes), to.precision, to.scale, from.kind).toBlob());
    throwClash(from, to);
}

Value toReal(const Value &value, const SqlType &from, const SqlType &to)
{
    if (from.isReal())
        return value;
    if (from.isInteger())
        return Value::ofReal(double(value.integer));
    if (from.isDecimal())
        return Value::ofReal(decimalOf(value, from).toDouble());
    if (from.isText())
        return Value::ofReal(realFromText(view(value.bytes), from.kind));
    throwClash(from, to);
}

QByteArray bytesOf(std::string_view text)
{
    return {text.data(), qsizetype(text.size())};
}

/** A number or date as text that has to fit whole: a number that is cut would be another number. */
QByteArray numberText(const Value &value, const SqlType &from, const SqlType &to)
{
    QByteArray text = displayText(value, from);
    if (to.length == SqlType::Max || text.size() <= to.length)
        return text;
    if (from.isDate())
        return text.left(to.length);
    if (from.isInteger() && !to.isUnicode())
        return "*";
    throwOverflow(from.isInteger() ? u"expression"_s : kindName(from.kind), to.kind);
}

Value toText(const Value &value, const SqlType &from, const Destination &to)
{
    QByteArray text;
    if (!from.isText() && from.kind != Kind::UniqueIdentifier && !from.isBinary()) {
        text = numberText(value, from, to.type);
    } else if (to.assign) {
        const QByteArray table = to.table.toUtf8();
        const QByteArray column = to.column.toUtf8();
        const std::string_view fit = fitText(view(value.bytes), to.type.length, view(table), view(column));
        text = fit.size() == size_t(value.bytes.size()) ? value.bytes : bytesOf(fit);
    } else {
        const std::string_view cut = cutText(view(value.bytes), to.type.length);
        text = cut.size() == size_t(value.bytes.size()) ? value.bytes : bytesOf(cut);
    }
    if (to.type.isFixedText()) {
        const auto units = qsizetype(utf16Length(view(text)));
        if (units < to.type.length)
            text.append(to.type.length - units, ' ');
    }
    return Value::ofText(std::move(text));
}

Value toBinary(const Value &value, const SqlType &from, const Destination &to)
{
    if (from.isText() && to.assign)
        throw Error(257, {kindName(from.kind), kindName(to.type.kind)});
    QByteArray bytes = value.bytes;
    if (from.isInteger()) {
        const int width = from.kind == Kind::BigInt     ? 8
                          : from.kind == Kind::Int      ? 4
                          : from.kind == Kind::SmallInt ? 2
                                                        : 1;
        bytes.clear();
        for (int i = width; i-- > 0;)
            bytes.append(char(value.integer >> (8 * i)));
    }
    if (to.type.length != SqlType::Max && bytes.size() > to.type.length) {
        if (to.assign)
            throw Error(wording::BytesTruncated, {to.table, to.column});
        bytes.truncate(to.type.length);
    }
    if (to.type.kind == Kind::Binary && bytes.size() < to.type.length)
        bytes.append(to.type.length - bytes.size(), '\0');
    return Value::ofBlob(std::move(bytes));
}

Value toDate(const Value &value, const SqlType &from, const SqlType &to)
{
    if (from.isDate())
        return Value::ofText(bytesOf(storageText(momentFromStorage(view(value.bytes)), to.kind)));
    if (from.isText())
        return Value::ofText(bytesOf(storageText(momentFromText(view(value.bytes), to.kind), to.kind)));
    if (from.kind == Kind::Int && to.kind != Kind::Date)
        return Value::ofText(
            bytesOf(storageText(addPart("day", value.integer, momentFromText("1900-01-01")), to.kind)));
    throwClash(from, to);
}

} // namespace

Value convert(const Value &value, const SqlType &from, const Destination &to)
{
    if (value.isNull() || to.type.kind == Kind::Null)
        return value;
    if (to.type.isInteger())
        return toInteger(value, from, to.type);
    if (to.type.isDecimal())
        return toDecimal(value, from, to.type);
    if (to.type.isReal())
        return toReal(value, from, to.type);
    if (to.type.isText())
        return toText(value, from, to);
    if (to.type.isDate())
        return from == to.type ? value : toDate(value, from, to.type);
    if (to.type.isBinary())
        return toBinary(value, from, to);
    return value;
}

QByteArray displayText(const Value &value, const SqlType &type)
{
    switch (value.form) {
    case Value::Form::Null:
        return {};
    case Value::Form::Integer:
        return QByteArray::number(value.integer);
    case Value::Form::Real:
        return QByteArray::fromStdString(textFromReal(value.real));
    case Value::Form::Text:
        return type.isDate() ? bytesOf(styledText(view(value.bytes), type.kind, 0)) : value.bytes;
    case Value::Form::Blob:
        break;
    }
    if (type.kind == Kind::Money)
        return decimalOf(value, type).rescaled(Decimal::MaxPrecision, 2).toText().toLatin1();
    if (type.isDecimal())
        return decimalOf(value, type).toText().toLatin1();
    return QByteArray::fromStdString(textFromBinary(view(value.bytes)));
}

} // namespace tsql
