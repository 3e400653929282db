#include "gooddetail/amount_entry.h"

#include "rules/quantity_entry.h"
#include "rules/unit_arithmetic.h"

namespace good_detail {

using goods::RoundedQuantity;
using host::Quantity;
using host::TAmounts;

TypedAmounts Recomputed(int unitType, TypedAmounts typed, int changed, const UnitRatio &ratio)
{
    switch (unitType) {
    case TwoUnits:
        if (changed == 0 && ratio.Formula > 0)
            typed[1] = goods::SecondQuantity(typed[0], ratio.Formula, ratio.WholeUnits);
        break;
    case Packed:
        if (changed < 2)
            typed[2] = RoundedQuantity(typed[0] * typed[1]);
        else if (typed[0] > 0)
            typed[1] = RoundedQuantity(typed[2] / typed[0]);
        break;
    case TotalAndPart:
        if (ratio.Formula <= 0)
            break;
        if (changed < 2) {
            typed[2] = goods::JoinQuantity({typed[0], typed[1]}, ratio.Formula);
        } else {
            const goods::SplitQuantity parts = goods::SplitTotal(typed[2], ratio.Formula);
            typed[0] = parts.big;
            typed[1] = parts.small;
        }
        break;
    case Area:
        if (changed < 3)
            typed[3] = RoundedQuantity(typed[0] * typed[1] * typed[2]);
        else if (typed[0] * typed[1] > 0)
            typed[2] = RoundedQuantity(typed[3] / (typed[0] * typed[1]));
        break;
    default:
        break;
    }
    return typed;
}

TAmounts AmountsOf(int unitType, const TypedAmounts &typed, const UnitRatio &ratio)
{
    switch (unitType) {
    case TwoUnits:
        return {typed[0], typed[1], typed[0]};
    case Packed:
        return {typed[2], typed[1], typed[2], 0, 0, typed[0]};
    case TotalAndPart: {
        const Quantity big = ratio.Formula > 0 ? RoundedQuantity(typed[2] / ratio.Formula) : typed[0];
        return {typed[2], 0, big};
    }
    case Area:
        return {typed[3], 0, typed[3], typed[0], typed[1], typed[2]};
    default:
        return {typed[0], 0, typed[0]};
    }
}

TypedAmounts TypedOf(int unitType, const TAmounts &amounts, const UnitRatio &ratio)
{
    switch (unitType) {
    case TwoUnits:
        return {amounts.Amount1, amounts.Amount2};
    case Packed:
        return {amounts.Amount3, amounts.Amount2, amounts.Amount1};
    case TotalAndPart:
        return Recomputed(unitType, {amounts.TotalAmount, 0, amounts.Amount1}, 2, ratio);
    case Area:
        return {amounts.Length, amounts.Width, amounts.Amount3, amounts.Amount1};
    default:
        return {amounts.Amount1};
    }
}

bool SameMeasures(int unitType, const TAmounts &a, const TAmounts &b)
{
    using goods::SameQuantity;
    if (unitType == Packed)
        return SameQuantity(a.Amount3, b.Amount3);
    return unitType != Area || (SameQuantity(a.Length, b.Length) && SameQuantity(a.Width, b.Width));
}

TAmounts Added(int unitType, const TAmounts &a, const TAmounts &b)
{
    TAmounts sum = a;
    sum.Amount1 = RoundedQuantity(a.Amount1 + b.Amount1);
    sum.Amount2 = RoundedQuantity(a.Amount2 + b.Amount2);
    sum.TotalAmount = RoundedQuantity(a.TotalAmount + b.TotalAmount);
    if (unitType == Area)
        sum.Amount3 = RoundedQuantity(a.Amount3 + b.Amount3);
    return sum;
}

void AmountTotals::Add(const TAmounts &row)
{
    if (m_rows++ == 0) {
        m_sum = row;
        return;
    }
    const auto common = [](Quantity &measure, Quantity other) {
        if (!goods::SameQuantity(measure, other))
            measure = 0;
    };
    m_sum = Added(m_unitType, m_sum, row);
    common(m_sum.Length, row.Length);
    common(m_sum.Width, row.Width);
    if (m_unitType == Packed)
        common(m_sum.Amount3, row.Amount3);
}

quint8 UnitTypeOf(const UnitTypeFacts &good)
{
    if (good.SquareMetres)
        return Area;
    if (!good.HasUnit2)
        return OneUnit;
    switch (goods::QuantityEntryFor(good.TwoUnitGoods, good.VariableRatio, good.HasFormula)) {
    case goods::QuantityEntry::OneUnit:
        return OneUnit;
    case goods::QuantityEntry::BigAndSmall:
        return TotalAndPart;
    case goods::QuantityEntry::TwoUnits:
        break;
    }
    return good.VariableRatio && !good.HasFormula ? Packed : TwoUnits;
}

} // namespace good_detail
