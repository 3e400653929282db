#include "rules/opening_row_text.h"

#include <QRegularExpression>
#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

/// Two decimals, halves away from zero.
QString Fixed(Quantity number)
{
    const QString digits = host::QuantityToText(std::round(number * 100) / 100);
    const qsizetype point = digits.indexOf(u'.');
    return point < 0 ? digits + u".00"_s : digits.leftJustified(point + 3, u'0');
}

} // namespace

QString PackOpeningRow(const OpeningRowOpening &opening)
{
    const OpeningGood &good = opening.good;
    return QStringList{QString::number(good.code),   good.name,           QString::number(good.unit1),
                       QString::number(good.unit2),  Fixed(good.formula), QString::number(good.twoUnits ? 1 : 0),
                       QString::number(opening.row), good.unit1Name,      good.unit2Name}
        .join(u';');
}

std::optional<OpeningRowOpening> ParseOpeningRow(const QString &text)
{
    // The name is as short as the numbers behind it allow.
    static const QRegularExpression format(
        u"\\A(\\d{1,9});(.*?);(\\d{1,9});(\\d{1,9});(-?\\d{1,14}(?:\\.\\d{1,9})?);(\\d);(\\d{1,9});([^;]*);(.*)\\z"_s,
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = format.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const auto number = [&match](int field) { return match.captured(field).toInt(); };
    OpeningRowOpening opening;
    opening.good = {
        number(1),      match.captured(2), number(3),        number(4), host::QuantityFromText(match.captured(5)),
        number(6) != 0, match.captured(8), match.captured(9)};
    opening.row = number(7);
    return opening;
}

} // namespace goods
