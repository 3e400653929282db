#include "rules/opening_values.h"

#include "rules/unit_arithmetic.h"

namespace goods {

OpeningEntry OpeningEntryFor(bool twoUnitGoods, bool variableRatio, bool formulaOn)
{
    if (!twoUnitGoods)
        return OpeningEntry::OneUnit;
    return formulaOn && !variableRatio ? OpeningEntry::BigAndSmall : OpeningEntry::TwoUnits;
}

bool SecondFollowsFirst(const OpeningValues &values, Quantity formula, bool wholeUnits)
{
    return SameQuantity(values.second, SecondQuantity(values.first, formula, wholeUnits)) ||
           (!wholeUnits && SameQuantity(values.first, FirstQuantity(values.second, formula)));
}

VoucherChange OpeningVoucherChange(const OpeningValues &loaded, const OpeningValues &entered, int voucherCode,
                                   bool periodClosed)
{
    if (periodClosed || SameQuantity(loaded.Amount(), entered.Amount()))
        return VoucherChange::None;
    if (voucherCode == 0)
        return VoucherChange::Create;
    return SameQuantity(loaded.Amount(), 0) ? VoucherChange::Rebuild : VoucherChange::Change;
}

} // namespace goods
