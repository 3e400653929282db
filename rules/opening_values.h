#pragma once

#include "host/data/quantity.h"

#include <QString>

namespace goods {

using host::Quantity;

/// The opening (first-period) stock of a good as one entry.
struct OpeningValues
{
    Quantity first = 0;  ///< in unit 1
    Quantity second = 0; ///< in unit 2
    Quantity price = 0;  ///< of one unit 1

    Quantity Amount() const { return first * price; }
};

/// How the opening quantities of a good are typed.
enum class OpeningEntry {
    OneUnit,     ///< quantity 1 alone
    TwoUnits,    ///< a quantity in each unit
    BigAndSmall, ///< whole big units and loose small ones; quantity and price of the row follow from them
};

/// A formula leads to big and small units, unless the ratio differs from piece to piece: then a good has a quantity in
/// each unit, as it has without a formula.
OpeningEntry OpeningEntryFor(bool twoUnitGoods, bool variableRatio, bool formulaOn);

/// Whether quantity 2 is what quantity 1 comes to by the formula, to the decimals that are kept, or the other way
/// round: below 1 the formula cannot be undone to the last of them.
bool SecondFollowsFirst(const OpeningValues &values, Quantity formula, bool wholeUnits);

/// What must become of the opening voucher when a good is saved.
enum class VoucherChange { None, Create, Change, Rebuild };

/// Nothing when the amount is what it was or the period is closed; a good without a voucher gets one; a voucher that
/// was emptied (amount 0) is built again; any other is changed.
VoucherChange OpeningVoucherChange(const OpeningValues &loaded, const OpeningValues &entered, int voucherCode,
                                   bool periodClosed);

} // namespace goods
