#include "desk/services/good_details.h"

#include "desk/messages/catalogue.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

namespace desk {

namespace {

constexpr int OpeningVoucher = 1;

QString Where(int good, host::TOperationType operation)
{
    return u" WHERE GoodCode = %1 AND OperationType = %2"_qs.arg(good).arg(static_cast<int>(operation));
}

} // namespace

GoodDetails::GoodDetails(const QSqlDatabase &connection, host::MessageService &messages)
    : connection_(connection), messages_(messages)
{}

bool GoodDetails::ExistsGoodDetailInsertedForOperation(int goodCode, host::TOperationType operation)
{
    const QString where = Where(goodCode, operation);
    return host::Exists(connection_, u"SELECT ID FROM GoodDetailKardex"_qs + where) ||
           host::Exists(connection_, u"SELECT ID FROM GoodDetailKardexEnter_Temp"_qs + where);
}

void GoodDetails::EnterGoodDetailSave(int goodCode, host::TOperationType operation)
{
    const QString where = Where(goodCode, operation);
    const QString columns =
        u"DetailValueID, StoreCode, GoodCode, Amount1, Amount2, TotalAmount, [Length], Width, Amount3, "
        "OperationType, OperationCode, OperationRow, ForeignOperationCode"_qs;
    host::Transaction transaction(connection_);
    // The ledger knows an entry by operation, row and store: the other rows of the good keep theirs.
    host::Run(connection_, u"DELETE FROM GoodDetailKardex"_qs + where +
                               u" AND EXISTS (SELECT t.ID FROM GoodDetailKardexEnter_Temp AS t WHERE t.GoodCode = "
                               "GoodDetailKardex.GoodCode AND t.OperationType = GoodDetailKardex.OperationType AND "
                               "t.OperationCode = GoodDetailKardex.OperationCode AND t.OperationRow = "
                               "GoodDetailKardex.OperationRow AND t.StoreCode = GoodDetailKardex.StoreCode)"_qs);
    host::Run(connection_, u"INSERT INTO GoodDetailKardex ("_qs + columns + u") SELECT "_qs + columns +
                               u" FROM GoodDetailKardexEnter_Temp"_qs + where);
    host::Run(connection_, u"DELETE FROM GoodDetailKardexEnter_Temp"_qs + where);
    transaction.Commit();
}

bool GoodDetails::EnterGoodDetails_Get(int goodCode, host::TOperationType operation)
{
    return host::Exists(connection_, u"SELECT ID FROM GoodDetailKardex"_qs + Where(goodCode, operation));
}

bool GoodDetails::CheckBarcodeInGoodDetail(const QString &barcode)
{
    if (barcode.isEmpty())
        return false;
    return host::Exists(connection_, u"SELECT v.ID FROM GoodDetailValueDetails v INNER JOIN DetailTypes t ON t.ID = "
                                     "v.DetailID WHERE t.DetailType = 6 AND v.[Value] = "_qs +
                                         host::NQuotedStr(barcode));
}

bool GoodDetails::UniqueDetailCodeInUse(int goodCode)
{
    const bool used = host::Exists(
        connection_,
        u"SELECT TOP 1 l.ID FROM VoucherLines l INNER JOIN Vouchers v ON v.Code = l.VoucherCode INNER JOIN "
        "GoodInf g ON g.Code = l.GoodCode WHERE l.GoodCode = %1 AND v.Kind <> %2 AND "
        "ISNULL(g.DetailUniqueCode, N'') <> N''"_qs.arg(goodCode)
            .arg(OpeningVoucher));
    if (used)
        messages_.ShowMessage(MessageText(message::InUse, {u"کالای %1"_qs.arg(goodCode),
                                                           u"کد تفصیلی یکتای آن در سندها به کار رفته است"_qs}),
                              host::MessageIcon::Warning);
    return used;
}

} // namespace desk
