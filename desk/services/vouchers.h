#pragma once

#include "host/services/message_service.h"
#include "host/services/voucher_service.h"

#include <QSqlDatabase>

namespace desk {

/// The opening vouchers of goods, in Vouchers and VoucherLines. The database writes them, by its procedure
/// AutoVoucherFirstPriodGoods, inside the transaction of whoever saves the good.
class Vouchers : public host::VoucherService
{
public:
    Vouchers(const QSqlDatabase &connection, host::MessageService &messages);

    bool IsVoucherApproved(int code, int kind, const QString &caption, const QString &voucherTitle) override;
    bool IsConstStartPeriod() override;
    bool Validate_TotalCost(long double quantity, long double price, host::TSoftwarePart part) override;
    void SaveInLineAutoVoucher(int goodCode) override;
    void ChangeAutoVouchers(int goodCode, int voucherCode, const QString &date) override;
    void SaveAutoVouchersAgain(int goodCode) override;

private:
    void WriteVoucher(int goodCode, int voucherCode, const QString &date);

    QSqlDatabase m_connection;
    host::MessageService &m_messages;
};

} // namespace desk
