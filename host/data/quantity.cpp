#include "host/data/quantity.h"

#include "host/data/persian_text.h"
#include "host/data/sql_text.h"

#include <QByteArray>

#include <array>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace host {

namespace {

bool IsGroupMark(QChar c)
{
    return c == u',' || c == u'\u066C' || c == u'\u060C' || c == u'\'';
}

bool IsDecimalMark(QChar c)
{
    return c == u'.' || c == u'\u066B' || c == u'/';
}

bool IsDirectionMark(QChar c)
{
    return c.category() == QChar::Other_Format;
}

bool IsMinus(QChar c)
{
    return c == u'-' || c == u'\u2212';
}

} // namespace

QString TrimDecimal(QStringView decimalText)
{
    bool hasPoint = false;
    for (const QChar c : decimalText) {
        hasPoint = hasPoint || c == u'.';
        if (c == u'e' || c == u'E') {
            return decimalText.toString();
        }
    }
    if (!hasPoint) {
        return decimalText == u"-0" ? u"0"_s : decimalText.toString();
    }
    while (decimalText.endsWith(u'0')) {
        decimalText.chop(1);
    }
    if (decimalText.endsWith(u'.')) {
        decimalText.chop(1);
    }
    const bool negative = decimalText.startsWith(u'-');
    const QStringView digits = negative ? decimalText.mid(1) : decimalText;
    if (digits.isEmpty() || digits == u"0") {
        return u"0"_s;
    }
    // SQL Server's ODBC driver leaves the zero of 0.5 out.
    const QStringView zero = digits.startsWith(u'.') ? QStringView(u"0") : QStringView();
    return (negative ? u"-"_s : QString()) + zero.toString() + digits.toString();
}

std::optional<QString> NormalizeDecimal(QStringView userText)
{
    QString digits;
    bool negative = false;
    bool signSeen = false;
    bool pointSeen = false;
    int count = 0;
    for (const QChar c : userText) {
        if (c.isDigit() && c.digitValue() >= 0) {
            digits += QChar(u'0' + c.digitValue());
            ++count;
        } else if (IsDecimalMark(c) && !pointSeen) {
            digits += u'.';
            pointSeen = true;
        } else if ((IsMinus(c) || c == u'+') && !signSeen && digits.isEmpty()) {
            signSeen = true;
            negative = IsMinus(c);
        } else if (!c.isSpace() && !IsDirectionMark(c) && (pointSeen || !IsGroupMark(c))) {
            return std::nullopt;
        }
    }
    if (count == 0) {
        return std::nullopt;
    }
    while (digits.size() > 1 && digits[0] == u'0' && digits[1] != u'.') {
        digits.remove(0, 1);
    }
    return TrimDecimal(negative ? u'-' + digits : digits);
}

std::optional<Quantity> ParseQuantity(QStringView userText)
{
    const std::optional<QString> text = NormalizeDecimal(userText);
    if (!text) {
        return std::nullopt;
    }
    return QuantityFromText(*text);
}

Quantity QuantityFromText(QStringView text)
{
    const QByteArray ascii = text.trimmed().toLatin1();
    if (ascii.isEmpty()) {
        return 0;
    }
    Quantity value = 0;
    const char *end = ascii.constData() + ascii.size();
    const auto [stop, error] = std::from_chars(ascii.constData(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) {
        throw RefusedText(u"عدد"_s, text.toString());
    }
    return value;
}

QString QuantityToText(Quantity value, int decimals)
{
    if (!std::isfinite(value)) {
        throw RefusedText(u"عدد"_s, u"%1"_s.arg(static_cast<double>(value)));
    }
    if (std::fabs(value) < 1e15L && value == std::trunc(value)) {
        return QString::number(static_cast<qlonglong>(value));
    }
    // A digit is noise when neighbouring floats differ by more than it is worth.
    const Quantity gap = std::nextafter(std::fabs(value), LDBL_MAX) - std::fabs(value);
    Quantity worth = 1;
    int kept = 0;
    while (kept < decimals && gap <= worth / 10) {
        worth /= 10;
        ++kept;
    }
    std::array<char, 64> small{};
    QByteArray large;
    char *begin = small.data();
    char *end = begin + small.size();
    if (std::fabs(value) >= 1e30L) {
        large.resize(LDBL_MAX_10_EXP + 64);
        begin = large.data();
        end = begin + large.size();
    }
    const std::to_chars_result result = std::to_chars(begin, end, value, std::chars_format::fixed, kept);
    return TrimDecimal(QString::fromLatin1(begin, result.ptr - begin));
}

QString GroupDigits(QStringView decimalText)
{
    QString text = decimalText.toString();
    const qsizetype first = text.startsWith(u'-') ? 1 : 0;
    qsizetype point = text.indexOf(u'.');
    if (point < 0) {
        point = text.size();
    }
    for (qsizetype i = point - 3; i > first; i -= 3) {
        text.insert(i, u',');
    }
    return text;
}

} // namespace host
