#include "division/part_amounts.h"

#include "rules/unit_arithmetic.h"

using namespace Qt::StringLiterals;

namespace division {

using good_detail::AmountPart;
using good_detail::TypedAmounts;
using good_detail::UnitRatio;
using goods::DividedBy;
using goods::DividedPieces;
using goods::RoundedQuantity;
using goods::UnitAmounts;
using host::TAmounts;

namespace {

/// The total is an input of its own; of other goods the amount of a piece is typed.
bool HasTotal(int unitType)
{
    return unitType == good_detail::Packed || unitType == good_detail::Area;
}

/// Where the count is typed.
size_t CountPlace(int unitType)
{
    switch (unitType) {
    case good_detail::TwoUnits:
    case good_detail::Area:
        return 2;
    case good_detail::TotalAndPart:
        return 3;
    default:
        return 1;
    }
}

} // namespace

DividedBy DividedByOf(int unitType)
{
    switch (unitType) {
    case good_detail::TwoUnits:
        return DividedBy::TwoAmounts;
    case good_detail::Packed:
        return DividedBy::Packages;
    case good_detail::Area:
        return DividedBy::Area;
    default:
        return DividedBy::Amount;
    }
}

goods::DividedStock StockOf(int unitType, const TAmounts &onHand)
{
    DividedPieces piece;
    piece.count = unitType == good_detail::Packed ? onHand.Amount2 : unitType == good_detail::Area ? onHand.Amount3 : 0;
    if (unitType == good_detail::Packed)
        piece.amount = onHand.Amount3;
    piece.length = onHand.Length;
    piece.width = onHand.Width;
    return {DividedByOf(unitType), piece, {onHand.Amount1, onHand.Amount2}};
}

TAmounts TakenOf(int unitType, const TAmounts &onHand, const UnitAmounts &typed, const UnitRatio &ratio)
{
    const goods::Quantity total = goods::TotalToDivide(StockOf(unitType, onHand), typed).first;
    switch (unitType) {
    case good_detail::Packed:
        return {total, typed.first, total, 0, 0, onHand.Amount3};
    case good_detail::Area:
        return {total, 0, total, onHand.Length, onHand.Width, typed.first};
    default:
        return AmountsOfPart(unitType, {typed.first, typed.second, 0, 0, 0}, ratio);
    }
}

UnitAmounts TypedTaken(int unitType, const TAmounts &taken)
{
    if (unitType == good_detail::Packed)
        return {taken.Amount2, 0};
    if (unitType == good_detail::Area)
        return {taken.Amount3, 0};
    return AmountsIn(unitType, taken);
}

UnitAmounts AmountsIn(int unitType, const TAmounts &amounts)
{
    return {amounts.Amount1, unitType == good_detail::TwoUnits ? amounts.Amount2 : 0};
}

TAmounts AmountsOfPart(int unitType, const DividedPieces &pieces, const UnitRatio &ratio)
{
    // What is taken of an amount is not counted.
    DividedPieces counted = pieces;
    if (!HasTotal(unitType) && counted.count == 0)
        counted.count = 1;
    const UnitAmounts all = goods::AmountOf(DividedByOf(unitType), counted);
    TAmounts part{all.first, all.second, all.first, pieces.length, pieces.width, pieces.count};
    if (unitType == good_detail::Packed) {
        part.Amount2 = pieces.count;
        part.Amount3 = pieces.amount;
    } else if (unitType == good_detail::TotalAndPart && ratio.Formula > 0) {
        part.TotalAmount = RoundedQuantity(all.first / ratio.Formula);
    }
    return part;
}

DividedPieces PiecesOf(int unitType, const TAmounts &part)
{
    switch (unitType) {
    case good_detail::Packed:
        return {part.Amount3, 0, 0, 0, part.Amount2};
    case good_detail::Area:
        return {0, 0, part.Length, part.Width, part.Amount3};
    default: {
        const goods::Quantity count = part.Amount3 > 0 ? part.Amount3 : 1;
        const UnitAmounts all = AmountsIn(unitType, part);
        return {RoundedQuantity(all.first / count), RoundedQuantity(all.second / count), 0, 0, count};
    }
    }
}

QList<good_detail::AmountInput> PartInputsOf(int unitType, const QString &unit2)
{
    QList<good_detail::AmountInput> inputs = good_detail::AmountInputsOf(unitType, unit2);
    if (HasTotal(unitType))
        return inputs;
    // The letter of "all" belongs to what is taken.
    if (unitType == good_detail::TotalAndPart)
        inputs.first().Caption.remove(u'&');
    return inputs << good_detail::AmountInput{AmountPart::Amount3, u"&تعداد :"_s};
}

AmountPart InputOf(int unitType, goods::PartField field)
{
    switch (field) {
    case goods::PartField::Length:
        return AmountPart::Length;
    case goods::PartField::Width:
        return AmountPart::Width;
    case goods::PartField::Count:
        return unitType == good_detail::Packed ? AmountPart::Amount2 : AmountPart::Amount3;
    case goods::PartField::Amount:
        return unitType == good_detail::Packed ? AmountPart::Amount3 : AmountPart::Amount1;
    case goods::PartField::Total:
        break;
    }
    return AmountPart::Amount1;
}

TypedAmounts TypedOf(int unitType, const DividedPieces &pieces, const UnitRatio &ratio)
{
    const TAmounts all = AmountsOfPart(unitType, pieces, ratio);
    if (HasTotal(unitType))
        return good_detail::TypedOf(unitType, all, ratio);
    TypedAmounts typed{pieces.amount, pieces.second};
    if (unitType == good_detail::TotalAndPart)
        typed = good_detail::Recomputed(unitType, {0, 0, pieces.amount}, 2, ratio);
    typed[CountPlace(unitType)] = pieces.count;
    return typed;
}

DividedPieces PiecesTyped(int unitType, const TypedAmounts &typed)
{
    const goods::Quantity count = typed[CountPlace(unitType)];
    switch (unitType) {
    case good_detail::Area:
        return {0, 0, typed[0], typed[1], count};
    case good_detail::TwoUnits:
        return {typed[0], typed[1], 0, 0, count};
    case good_detail::TotalAndPart:
        return {typed[2], 0, 0, 0, count};
    default:
        return {typed[0], 0, 0, 0, count};
    }
}

TypedAmounts Recomputed(int unitType, const TypedAmounts &typed, int changed, const UnitRatio &ratio)
{
    if (!HasTotal(unitType) && static_cast<size_t>(changed) == CountPlace(unitType))
        return typed;
    return good_detail::Recomputed(unitType, typed, changed, ratio);
}

} // namespace division
