#include "data/goods/goods_import_rules.h"

#include "host/data/persian_text.h"
#include "host/data/quantity.h"
#include "host/data/sql_text.h"
#include "rules/barcode_text.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr qsizetype WholeDigits = 15; ///< what the edits of prices take
constexpr int LargestCode = 999999;

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

} // namespace

QString ImportText(QStringView cell)
{
    QString text;
    text.reserve(cell.size());
    for (const QChar c : cell) {
        switch (c.unicode()) {
        case u'\u064A': // Arabic yeh
        case u'\u0649':
            text += u'\u06CC';
            break;
        case u'\u0643': // Arabic kaf
            text += u'\u06A9';
            break;
        default:
            // Half-spaces are letters' business; marks of direction are not.
            if (c != u'\u200E' && c != u'\u200F' && c != u'\uFEFF' && (c < u'\u202A' || c > u'\u202E')) {
                text += c.isNull() ? u' ' : c;
            }
        }
    }
    return host::WholeCharacters(text).simplified();
}

QStringView WithoutGuard(QStringView cell)
{
    return cell.size() > 1 && cell.front() == u'\'' && u"=+-@\t\r"_s.contains(cell[1]) ? cell.sliced(1) : cell;
}

bool HasExponent(QStringView cell)
{
    static const QRegularExpression number(u"^[+-]?\\d+([.,/٫]\\d*)?[eE][+-]?\\d+$"_s);
    return number.match(host::FoldDigits(cell.trimmed())).hasMatch();
}

std::optional<QString> ImportNumber(QStringView cell)
{
    auto plain = host::NormalizeDecimal(cell);
    if (!plain || plain->startsWith(u'-') || plain->section(u'.', 0, 0).size() > WholeDigits) {
        return std::nullopt;
    }
    if (plain->section(u'.', 1).size() <= host::QuantityDecimals) {
        return plain;
    }
    return host::QuantityToText(host::QuantityFromText(*plain));
}

std::optional<int> ImportCode(QStringView cell)
{
    const auto plain = ImportNumber(cell);
    bool whole = false;
    const int code = plain ? plain->toInt(&whole) : 0;
    return whole && code >= 1 && code <= LargestCode ? std::optional(code) : std::nullopt;
}

QStringList ImportBarcodes(QStringView cell)
{
    static const QRegularExpression between(u"[;,،؛|\\n\\r\\t]"_s);
    const QString text = cell.toString();
    QStringList barcodes;
    const auto add = [&barcodes](const QString &typed) {
        const QString barcode = CleanBarcode(typed);
        if (!barcode.isEmpty() && !barcodes.contains(barcode, Qt::CaseInsensitive)) {
            barcodes += barcode;
        }
    };
    if (text.contains(BarcodeMark)) {
        for (const QString &barcode : UnpackBarcodes(text.trimmed())) {
            add(barcode);
        }
    } else {
        for (const QString &barcode : text.split(between)) {
            add(barcode);
        }
    }
    return barcodes;
}

bool CheckDigitFits(const QString &barcode)
{
    if ((barcode.size() != 8 && barcode.size() != 13) || !std::all_of(barcode.cbegin(), barcode.cend(), IsDigit)) {
        return true;
    }
    int sum = 0;
    for (qsizetype i = 1; i <= barcode.size(); ++i) { // from the end: 1, 3, 1, 3, …
        const int digit = barcode.at(barcode.size() - i).digitValue();
        sum += i % 2 == 0 ? 3 * digit : digit;
    }
    return sum % 10 == 0;
}

} // namespace goods
