#include "desk/services/good_details.h"

#include "desk/messages/catalogue.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int OpeningVoucher = 1;

QString Where(int good, host::TOperationType operation)
{
    return u" WHERE GoodCode = %1 AND OperationType = %2"_s.arg(good).arg(static_cast<int>(operation));
}

} // namespace

GoodDetails::GoodDetails(const QSqlDatabase &connection, host::MessageService &messages,
                         host::DetailMovementService &movements)
    : m_connection(connection), m_messages(messages), m_movements(movements)
{}

bool GoodDetails::ExistsGoodDetailInsertedForOperation(int goodCode, host::TOperationType operation)
{
    const QString where = Where(goodCode, operation);
    return host::Exists(m_connection, u"SELECT ID FROM GoodDetailKardex"_s + where) ||
           host::Exists(m_connection, u"SELECT ID FROM GoodDetailKardexEnter_Temp"_s + where);
}

void GoodDetails::EnterGoodDetailSave(int goodCode, host::TOperationType operation)
{
    if (!host::Exists(m_connection, u"SELECT TOP 1 ID FROM GoodDetailKardexEnter_Temp"_s + Where(goodCode, operation)))
        return;
    QStringList units;
    for (const host::TDetailRefusal &refusal :
         m_movements.GoodDetailsOperation_Save(static_cast<quint8>(operation), goodCode))
        units << refusal.Text;
    if (!units.isEmpty())
        throw host::DatabaseError(
            u"کاربر گرامی این جزئیات خارج شده یا پیش از این وارد شده است و به این صورت قابل ذخیره نیست:\n"_s +
            units.join(u'\n'));
}

bool GoodDetails::EnterGoodDetails_Get(int goodCode, host::TOperationType operation)
{
    return host::Exists(m_connection, u"SELECT ID FROM GoodDetailKardex"_s + Where(goodCode, operation));
}

bool GoodDetails::CheckGoodDetailKardexExists(int goodCode)
{
    // What is being entered on an unsaved document becomes a movement with the document. The opening row is saved by
    // the editor that asks; what a desk that died has left of it would block the good for ever.
    return GoodDetailsSaved(goodCode) ||
           host::Exists(m_connection, u"SELECT TOP 1 ID FROM GoodDetailKardexEnter_Temp WHERE GoodCode = %1 AND "
                                      "OperationType <> %2"_s.arg(goodCode)
                                          .arg(static_cast<int>(host::TOperationType::OpeningStock)));
}

bool GoodDetails::GoodDetailsSaved(int goodCode)
{
    return host::Exists(m_connection,
                        u"SELECT TOP 1 ID FROM GoodDetailKardex WHERE GoodCode = "_s + QString::number(goodCode));
}

bool GoodDetails::CheckBarcodeInGoodDetail(const QString &barcode)
{
    if (barcode.isEmpty())
        return false;
    return host::Exists(m_connection, u"SELECT v.ID FROM GoodDetailValueDetails v INNER JOIN DetailTypes t ON t.ID = "
                                      "v.DetailID WHERE t.DetailType = 6 AND v.[Value] = "_s +
                                          host::NQuotedStr(barcode));
}

bool GoodDetails::UniqueDetailCodeInUse(int goodCode)
{
    const bool used = host::Exists(
        m_connection,
        u"SELECT TOP 1 l.ID FROM VoucherLines l INNER JOIN Vouchers v ON v.Code = l.VoucherCode INNER JOIN "
        "GoodInf g ON g.Code = l.GoodCode WHERE l.GoodCode = %1 AND v.Kind <> %2 AND "
        "ISNULL(g.DetailUniqueCode, N'') <> N''"_s.arg(goodCode)
            .arg(OpeningVoucher));
    if (used)
        m_messages.ShowMessage(MessageText(message::InUse, {u"کالای %1"_s.arg(goodCode),
                                                            u"کد تفصیلی یکتای آن در سندها به کار رفته است"_s}),
                               host::MessageIcon::Warning);
    return used;
}

} // namespace desk
