#include "tsql/values/convert.h"

#include "tsql/values/dates.h"
#include "tsql/values/error.h"
#include "tsql/values/folding.h"

#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

std::string_view Trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return WithoutTrailingBlanks(text);
}

QString Quoted(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

struct Range
{
    qint64 low;
    qint64 high;
};

Range RangeOf(Kind kind)
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

[[noreturn]] void ThrowOverflow(const QString &from, Kind kind)
{
    throw Error(8115, {from, KindName(kind)});
}

[[noreturn]] void ThrowConversion(std::string_view text, Kind source, Kind kind)
{
    throw Error(245, {KindName(source), Quoted(text), KindName(kind)});
}

[[noreturn]] void ThrowConverting(Kind source, Kind kind)
{
    throw Error(8114, {KindName(source), KindName(kind)});
}

[[noreturn]] void ThrowTextOverflow(std::string_view text, Kind source, Kind kind)
{
    switch (kind) {
    case Kind::Int:
        throw Error(248, {KindName(source), Quoted(text)});
    case Kind::SmallInt:
    case Kind::TinyInt:
        throw Error(244, {KindName(source), Quoted(text), kind == Kind::SmallInt ? u"INT2"_s : u"INT1"_s});
    default:
        ThrowOverflow(u"expression"_s, kind);
    }
}

} // namespace

qint64 FitInteger(qint64 value, Kind kind, const char *from)
{
    if (kind == Kind::Bit)
        return value != 0;
    const Range range = RangeOf(kind);
    if (value >= range.low && value <= range.high)
        return value;
    if (kind == Kind::TinyInt || kind == Kind::SmallInt)
        throw Error(220, {KindName(kind), value});
    ThrowOverflow(QLatin1String(from), kind);
}

qint64 IntegerFromText(std::string_view text, Kind kind, Kind source)
{
    if (kind == Kind::Bit)
        return BitFromText(text, source);
    std::string_view digits = Trimmed(text);
    if (digits.empty())
        return 0;
    if (digits.front() == '+' && digits.size() > 1 && digits[1] != '-')
        digits.remove_prefix(1);
    qint64 value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc::invalid_argument || end != digits.data() + digits.size()) {
        if (kind == Kind::BigInt)
            ThrowConverting(source, kind);
        ThrowConversion(text, source, kind);
    }
    const Range range = RangeOf(kind);
    if (error == std::errc::result_out_of_range || value < range.low || value > range.high)
        ThrowTextOverflow(text, source, kind);
    return value;
}

qint64 IntegerFromReal(double value, Kind kind)
{
    if (kind == Kind::Bit)
        return value != 0.0;
    const double whole = std::trunc(value);
    if (!(whole >= -9223372036854775808.0 && whole < 9223372036854775808.0))
        ThrowOverflow(u"expression"_s, kind);
    return FitInteger(qint64(whole), kind);
}

qint64 IntegerFromDecimal(const Decimal &value, Kind kind)
{
    if (kind == Kind::Bit)
        return value.units != 0;
    const Decimal::Int whole = value.ToInt();
    const Range range = RangeOf(kind);
    if (whole < range.low || whole > range.high)
        ThrowOverflow(u"numeric"_s, kind);
    return qint64(whole);
}

qint64 BitFromText(std::string_view text, Kind source)
{
    const std::string_view word = Trimmed(text);
    if (CompareFolded(word, "true") == 0)
        return 1;
    if (word.empty() || CompareFolded(word, "false") == 0)
        return 0;
    bool any = false;
    for (const char c : word) {
        if (c < '0' || c > '9')
            ThrowConversion(text, source, Kind::Bit);
        any = any || c != '0';
    }
    return any;
}

double RealFromText(std::string_view text, Kind source)
{
    std::string_view number = Trimmed(text);
    if (number.empty())
        return 0;
    if (number.front() == '+')
        number.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc() || end != number.data() + number.size() || !std::isfinite(value))
        ThrowConverting(source, Kind::Float);
    return value;
}

Decimal DecimalFromText(std::string_view text, int precision, int scale, Kind source)
{
    bool ok = false;
    const Decimal value = Decimal::FromText(text, ok);
    if (!ok)
        ThrowConverting(source, Kind::Decimal);
    try {
        return value.Rescaled(precision, scale);
    } catch (const Error &) {
        ThrowOverflow(KindName(source), Kind::Decimal);
    }
}

Decimal DecimalFromInteger(qint64 value, int precision, int scale)
{
    try {
        return Decimal::FromInt(value).Rescaled(precision, scale);
    } catch (const Error &) {
        ThrowOverflow(u"int"_s, Kind::Decimal);
    }
}

Decimal DecimalFromReal(double value, int precision, int scale)
{
    try {
        return Decimal::FromDouble(value, scale).Rescaled(precision, scale);
    } catch (const Error &) {
        ThrowOverflow(u"float"_s, Kind::Decimal);
    }
}

std::string TextFromReal(double value)
{
    char buffer[32];
    const int length = std::snprintf(buffer, sizeof buffer, "%.6g", value);
    std::string text(buffer, size_t(length));
    const size_t exponent = text.find('e');
    if (exponent != std::string::npos && text.size() - exponent == 4)
        text.insert(exponent + 2, 1, '0');
    return text;
}

std::string TextFromBinary(std::string_view bytes)
{
    return "0x" + QByteArray::fromRawData(bytes.data(), qsizetype(bytes.size())).toHex().toUpper().toStdString();
}

std::string_view FitText(std::string_view text, int length, std::string_view table, std::string_view column)
{
    // A byte count within the limit needs no counting of characters.
    if (length == SqlType::Max || text.size() <= size_t(length) || Utf16Length(text) <= size_t(length))
        return text;
    const std::string_view cut = Utf16Prefix(text, size_t(length));
    if (WithoutTrailingBlanks(text).size() <= cut.size())
        return cut;
    throw Error(2628, {Quoted(table), Quoted(column), Quoted(cut)});
}

std::string_view CutText(std::string_view text, int length)
{
    return length == SqlType::Max || text.size() <= size_t(length) ? text : Utf16Prefix(text, size_t(length));
}

namespace {

std::string_view ViewOf(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

Decimal DecimalOf(const Value &value, const SqlType &type)
{
    return Decimal::FromBlob(value.bytes.constData(), int(value.bytes.size()), type.scale);
}

[[noreturn]] void ThrowClash(const SqlType &from, const SqlType &to)
{
    throw Error(206, {KindName(from.kind), KindName(to.kind)});
}

Value ToInteger(const Value &value, const SqlType &from, const SqlType &to)
{
    if (from.IsInteger())
        return Value::OfInteger(FitInteger(value.integer, to.kind));
    if (from.IsDecimal())
        return Value::OfInteger(IntegerFromDecimal(DecimalOf(value, from), to.kind));
    if (from.IsReal())
        return Value::OfInteger(IntegerFromReal(value.real, to.kind));
    if (from.IsText())
        return Value::OfInteger(IntegerFromText(ViewOf(value.bytes), to.kind, from.kind));
    ThrowClash(from, to);
}

Value ToDecimal(const Value &value, const SqlType &from, const SqlType &to)
{
    if (from.IsDecimal()) {
        if (from.scale == to.scale && from.precision <= to.precision)
            return value;
        return Value::OfBlob(DecimalOf(value, from).Rescaled(to.precision, to.scale).ToBlob());
    }
    if (from.IsInteger())
        return Value::OfBlob(DecimalFromInteger(value.integer, to.precision, to.scale).ToBlob());
    if (from.IsReal())
        return Value::OfBlob(DecimalFromReal(value.real, to.precision, to.scale).ToBlob());
    if (from.IsText())
        return Value::OfBlob(DecimalFromText(ViewOf(value.bytes), to.precision, to.scale, from.kind).ToBlob());
    ThrowClash(from, to);
}

Value ToReal(const Value &value, const SqlType &from, const SqlType &to)
{
    if (from.IsReal())
        return value;
    if (from.IsInteger())
        return Value::OfReal(double(value.integer));
    if (from.IsDecimal())
        return Value::OfReal(DecimalOf(value, from).ToDouble());
    if (from.IsText())
        return Value::OfReal(RealFromText(ViewOf(value.bytes), from.kind));
    ThrowClash(from, to);
}

QByteArray BytesOf(std::string_view text)
{
    return {text.data(), qsizetype(text.size())};
}

/** A number or date as text that has to fit whole: a number that is cut would be another number. */
QByteArray NumberText(const Value &value, const SqlType &from, const SqlType &to)
{
    QByteArray text = DisplayText(value, from);
    if (to.length == SqlType::Max || text.size() <= to.length)
        return text;
    if (from.IsDate())
        return text.left(to.length);
    if (from.IsInteger() && !to.IsUnicode())
        return "*";
    ThrowOverflow(from.IsInteger() ? u"expression"_s : KindName(from.kind), to.kind);
}

Value ToText(const Value &value, const SqlType &from, const Destination &to)
{
    QByteArray text;
    if (!from.IsText() && from.kind != Kind::UniqueIdentifier && !from.IsBinary()) {
        text = NumberText(value, from, to.type);
    } else if (to.assign) {
        const QByteArray table = to.table.toUtf8();
        const QByteArray column = to.column.toUtf8();
        const std::string_view fit = FitText(ViewOf(value.bytes), to.type.length, ViewOf(table), ViewOf(column));
        text = fit.size() == size_t(value.bytes.size()) ? value.bytes : BytesOf(fit);
    } else {
        const std::string_view cut = CutText(ViewOf(value.bytes), to.type.length);
        text = cut.size() == size_t(value.bytes.size()) ? value.bytes : BytesOf(cut);
    }
    if (to.type.IsFixedText()) {
        const auto units = qsizetype(Utf16Length(ViewOf(text)));
        if (units < to.type.length)
            text.append(to.type.length - units, ' ');
    }
    return Value::OfText(std::move(text));
}

Value ToBinary(const Value &value, const SqlType &from, const Destination &to)
{
    if (from.IsText() && to.assign)
        throw Error(257, {KindName(from.kind), KindName(to.type.kind)});
    QByteArray bytes = value.bytes;
    if (from.IsInteger()) {
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
    return Value::OfBlob(std::move(bytes));
}

Value ToDate(const Value &value, const SqlType &from, const SqlType &to)
{
    if (from.IsDate())
        return Value::OfText(BytesOf(StorageText(MomentFromStorage(ViewOf(value.bytes)), to.kind)));
    if (from.IsText())
        return Value::OfText(BytesOf(StorageText(MomentFromText(ViewOf(value.bytes), to.kind), to.kind)));
    if (from.kind == Kind::Int && to.kind != Kind::Date)
        return Value::OfText(
            BytesOf(StorageText(AddPart("day", value.integer, MomentFromText("1900-01-01")), to.kind)));
    ThrowClash(from, to);
}

} // namespace

Value Convert(const Value &value, const SqlType &from, const Destination &to)
{
    if (value.IsNull() || to.type.kind == Kind::Null)
        return value;
    if (to.type.IsInteger())
        return ToInteger(value, from, to.type);
    if (to.type.IsDecimal())
        return ToDecimal(value, from, to.type);
    if (to.type.IsReal())
        return ToReal(value, from, to.type);
    if (to.type.IsText())
        return ToText(value, from, to);
    if (to.type.IsDate())
        return from == to.type ? value : ToDate(value, from, to.type);
    if (to.type.IsBinary())
        return ToBinary(value, from, to);
    return value;
}

QByteArray DisplayText(const Value &value, const SqlType &type)
{
    switch (value.form) {
    case Value::Form::Null:
        return {};
    case Value::Form::Integer:
        return QByteArray::number(value.integer);
    case Value::Form::Real:
        return QByteArray::fromStdString(TextFromReal(value.real));
    case Value::Form::Text:
        return type.IsDate() ? BytesOf(StyledText(ViewOf(value.bytes), type.kind, 0)) : value.bytes;
    case Value::Form::Blob:
        break;
    }
    if (type.kind == Kind::Money)
        return DecimalOf(value, type).Rescaled(Decimal::MaxPrecision, 2).ToText().toLatin1();
    if (type.IsDecimal())
        return DecimalOf(value, type).ToText().toLatin1();
    return QByteArray::fromStdString(TextFromBinary(ViewOf(value.bytes)));
}

} // namespace tsql
