#pragma once

#include "host/services/good_detail_records.h"

#include <QList>
#include <QString>

#include <array>

/// How the amounts of details are typed and shown, by the unit type of the good: one table for every screen of details.
///
/// What the amounts of a row mean:
/// - one unit: Amount1 and TotalAmount the amount.
/// - two units: Amount1 and TotalAmount in unit 1, Amount2 in unit 2.
/// - packed: Amount1 and TotalAmount in unit 1, Amount2 packages, Amount3 how much of unit 1 is in each.
/// - total and part: Amount1 in unit 1, TotalAmount in unit 2 with decimals.
/// - area: Amount1 and TotalAmount the whole area, Length and Width of one piece, Amount3 pieces.
namespace good_detail {

enum UnitType : quint8 { OneUnit = 1, TwoUnits = 2, Packed = 3, TotalAndPart = 4, Area = 5 };

/// What an input holds. Big and Small are the two parts of an amount of total and part.
enum class AmountPart { Amount1, Amount2, Length, Width, Amount3, Big, Small };

struct AmountInput
{
    AmountPart Part = AmountPart::Amount1;
    QString Caption; ///< with its shortcut and colon
};

struct AmountColumn
{
    QString Field; ///< of the working rows; those of what goes out have "_Exit" behind
    QString Title;
};

/// The inputs in their order; the first stands in `Amount1_EDT`, the second in `Amount2_EDT` …
QList<AmountInput> AmountInputsOf(int unitType, const QString &unit2);
/// The columns in their order; those of `AmountFields` that are not among them are hidden for good.
QList<AmountColumn> AmountColumnsOf(int unitType, const QString &unit, const QString &unit2);
/// All amount fields of a working row.
const QStringList &AmountFields();

/// A caption without shortcut and colon, for messages.
QString PlainCaption(const QString &caption);

} // namespace good_detail
