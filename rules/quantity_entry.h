#pragma once

#include "host/data/quantity.h"

/// How much of a good there is, told in its two units.
namespace goods {

using host::Quantity;

struct UnitAmounts
{
    Quantity first = 0;  ///< in unit 1
    Quantity second = 0; ///< in unit 2
};

/// Whether both are the same to the database.
bool SameAmounts(const UnitAmounts &a, const UnitAmounts &b);

/// How the quantities of a good are typed.
enum class QuantityEntry {
    OneUnit,     ///< quantity 1 alone
    TwoUnits,    ///< a quantity in each unit
    BigAndSmall, ///< whole big units and loose small ones; both quantities follow from them
};

/// A formula leads to big and small units, unless the ratio differs from piece to piece: then a good has a quantity in
/// each unit, as it has without a formula.
QuantityEntry QuantityEntryFor(bool twoUnitGoods, bool variableRatio, bool formulaOn);

/// Whether quantity 2 is what quantity 1 comes to by the formula, to the decimals that are kept, or the other way
/// round: below 1 the formula cannot be undone to the last of them. Formula above 0.
bool SecondFollowsFirst(const UnitAmounts &amounts, Quantity formula, bool wholeUnits);

} // namespace goods
