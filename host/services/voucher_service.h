#pragma once

#include "host/services/types.h"

#include <QString>

namespace host {

/// The accounting vouchers behind the opening stock of goods.
class VoucherService
{
public:
    virtual ~VoucherService() = default;

    /// True when voucher `code` of `kind` is approved and must not change; the service then tells the user that
    /// `caption` is refused because of the voucher `voucherTitle`. Voucher 0 (none) is never approved.
    virtual bool IsVoucherApproved(int code, int kind, const QString &caption, const QString &voucherTitle) = 0;
    /// True when the opening period is closed: opening quantities and prices are fixed.
    virtual bool IsConstStartPeriod() = 0;
    /// False, having told the user, when quantity × price leaves the range that amounts of the suite can hold.
    virtual bool Validate_TotalCost(long double quantity, long double price, TSoftwarePart part) = 0;
    /// Makes the opening voucher of a good that has none.
    virtual void SaveInLineAutoVoucher(int goodCode) = 0;
    /// Changes the opening voucher `voucherCode` of a good, dated `date`.
    virtual void ChangeAutoVouchers(int goodCode, int voucherCode, const QString &date) = 0;
    /// Makes the opening voucher of a good anew after its row was lost or emptied.
    virtual void SaveAutoVouchersAgain(int goodCode) = 0;
};

} // namespace host
