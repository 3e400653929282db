#include "rules/quantity_entry.h"

#include "rules/unit_arithmetic.h"

namespace goods {

bool SameAmounts(const UnitAmounts &a, const UnitAmounts &b)
{
    return SameQuantity(a.first, b.first) && SameQuantity(a.second, b.second);
}

QuantityEntry QuantityEntryFor(bool twoUnitGoods, bool variableRatio, bool formulaOn)
{
    if (!twoUnitGoods)
        return QuantityEntry::OneUnit;
    return formulaOn && !variableRatio ? QuantityEntry::BigAndSmall : QuantityEntry::TwoUnits;
}

bool SecondFollowsFirst(const UnitAmounts &amounts, Quantity formula, bool wholeUnits)
{
    return SameQuantity(amounts.second, SecondQuantity(amounts.first, formula, wholeUnits)) ||
           (!wholeUnits && SameQuantity(amounts.first, FirstQuantity(amounts.second, formula)));
}

} // namespace goods
