#include "desk/services/vouchers.h"

#include "desk/messages/catalogue.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

// Amounts of vouchers have nineteen digits before the point.
constexpr long double GreatestTotal = 1e18L;

// Into the given voucher, else the latest open one, else a new one.
constexpr int IntoVoucher = 2;

} // namespace

Vouchers::Vouchers(const QSqlDatabase &connection, host::MessageService &messages)
    : m_connection(connection), m_messages(messages)
{}

bool Vouchers::IsVoucherApproved(int code, int kind, const QString &caption, const QString &voucherTitle)
{
    const bool approved =
        code != 0 && host::Exists(m_connection, u"SELECT Code FROM Vouchers WHERE Code = %1 AND Kind = %2 AND "
                                                "Approved = 1"_s.arg(code)
                                                    .arg(kind));
    if (approved)
        m_messages.ShowMessage(MessageText(message::VoucherApproved, {caption, voucherTitle}),
                               host::MessageIcon::Warning);
    return approved;
}

bool Vouchers::IsConstStartPeriod()
{
    return host::Exists(m_connection, u"SELECT ID FROM inf_co WHERE StartPeriodClosed = 1"_s);
}

bool Vouchers::Validate_TotalCost(long double quantity, long double price, host::TSoftwarePart)
{
    const long double total = quantity * price;
    if (total < GreatestTotal && total > -GreatestTotal)
        return true;
    m_messages.ShowMessage(MessageText(message::TotalOutOfRange), host::MessageIcon::Warning);
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
        "@SanadDate = %3, @Codes = '%4' SELECT @Voucher AS Voucher"_s.arg(IntoVoucher)
            .arg(voucherCode)
            .arg(host::QuotedStr(date))
            .arg(goodCode);
    // Approved in the meantime: whoever saves must not go on.
    if (host::Scalar(m_connection, text).toInt() < 0)
        throw host::DatabaseError(MessageText(message::VoucherApproved, {u"تغییر موجودی اول دوره"_s, u"اول دوره"_s}));
}

} // namespace desk
