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

/// What must become of the opening voucher when a good is saved.
enum class VoucherChange { None, Create, Change, Rebuild };

/// Nothing when the amount is what it was or the period is closed; a good without a voucher gets one; a voucher that
/// was emptied (amount 0) is built again; any other is changed.
VoucherChange OpeningVoucherChange(const OpeningValues &loaded, const OpeningValues &entered, int voucherCode,
                                   bool periodClosed);

} // namespace goods
