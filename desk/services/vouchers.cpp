#include "desk/services/vouchers.h"

#include "desk/messages/catalogue.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"

namespace desk {

namespace {

// Amounts of vouchers have nineteen digits before the point.
constexpr long double GreatestTotal = 1e18L;

// Into the given voucher, else the latest open one, else a new one.
constexpr int IntoVoucher = 2;

} // namespace

Vouchers::Vouchers(const QSqlDatabase &connection, host::MessageService &messages)
    : connection_(connection), messages_(messages)
{}

bool Vouchers::IsVoucherApproved(int code, int kind, const QString &caption, const QString &voucherTitle)
{
    const bool approved =
        code != 0 && host::Exists(connection_, u"SELECT Code FROM Vouchers WHERE Code = %1 AND Kind = %2 AND "
                                               "Approved = 1"_qs.arg(code)
                                                   .arg(kind));
    if (approved)
        messages_.ShowMessage(MessageText(message::VoucherApproved, {caption, voucherTitle}),
                              host::MessageIcon::Warning);
    return approved;
}

bool Vouchers::IsConstStartPeriod()
{
    return host::Exists(connection_, u"SELECT ID FROM inf_co WHERE StartPeriodClosed = 1"_qs);
}

bool Vouchers::Validate_TotalCost(long double quantity, long double price, host::TSoftwarePart)
{
    const long double total = quantity * price;
    if (total < GreatestTotal && total > -GreatestTotal)
        return true;
    messages_.ShowMessage(MessageText(message::TotalOutOfRange), host::MessageIcon::Warning);
    return false;
}

void Vouchers::SaveInLineAutoVoucher(int goodCode)
{
    WriteVoucher(goodCode, 0, {});
}

void Vouchers::ChangeAutoVouchers(int goodCode, int voucherCode, const QString &date)
{
    WriteVoucher(goodCode, voucherCode, date);
}

void Vouchers::SaveAutoVouchersAgain(int goodCode)
{
    WriteVoucher(goodCode, 0, {});
}

void Vouchers::WriteVoucher(int goodCode, int voucherCode, const QString &date)
{
    const QString text =
        u"DECLARE @Voucher int EXEC @Voucher = AutoVoucherFirstPriodGoods @SaveType = %1, @SanadCode = %2, "
        "@SanadDate = %3, @Codes = '%4' SELECT @Voucher AS Voucher"_qs.arg(IntoVoucher)
            .arg(voucherCode)
            .arg(host::QuotedStr(date))
            .arg(goodCode);
    // Approved in the meantime: whoever saves must not go on.
    if (host::Scalar(connection_, text).toInt() < 0)
        throw host::DatabaseError(MessageText(message::VoucherApproved, {u"تغییر موجودی اول دوره"_qs, u"اول دوره"_qs}));
}

} // namespace desk
