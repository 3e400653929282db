#include "rules/opening_values.h"

#include "rules/unit_arithmetic.h"

namespace goods {

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
