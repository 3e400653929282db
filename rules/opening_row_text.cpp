#include "rules/opening_row_text.h"

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

} // namespace goods
