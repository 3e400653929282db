#include "data/goods/good_dm.h"
#include "data/goods/good_fields.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "rules/good_name.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

QString DiscountField(QLatin1String side, size_t number)
{
    return u"Discount_"_s + side + u'_' + QString::number(number + 1);
}

} // namespace

void TGood_DM::Good_GetByID(int code)
{
    m_read.reset();
    GoodGet_QRY.Open(QString::asprintf("select * from goodinf Where Code = %d ", code));
}

bool TGood_DM::Good_GetByID(int code, TGoodInfoRec &rec)
{
    Good_GetByID(code);
    if (GoodGet_QRY.IsEmpty()) {
        return false;
    }
    TGoodInfoRec read;
    for (const goods::GoodField &field : goods::GoodFields()) {
        field.Set(read, GoodGet_QRY.Field(QString(field.column)));
    }
    ReadDiscounts(code, read.Price);
    rec = read;
    m_read = read;
    return true;
}

bool TGood_DM::Good_IsNewRecordMode(int code)
{
    Temp_QRY.Open(QString::asprintf("select * from goodinf Where Code = %d ", code));
    return Temp_QRY.IsEmpty();
}

bool TGood_DM::Good_Insert(const TGoodInfoRec &rec)
{
    host::Transaction transaction(m_main);
    SaveDiscounts(rec.Code, rec.Price);
    if (!GoodGet_QRY.IsOpen()) {
        Good_GetByID(rec.Code);
    }
    GoodGet_QRY.Cancel();
    GoodGet_QRY.ClearRows();
    GoodGet_QRY.Append();
    const auto drop = qScopeGuard([this] { GoodGet_QRY.Cancel(); });
    WriteFields(rec, Writing::Insert);
    GoodGet_QRY.Post();
    transaction.Commit();
    return true;
}

bool TGood_DM::Good_Update(const TGoodInfoRec &rec)
{
    host::Transaction transaction(m_main);
    SaveDiscounts(rec.Code, rec.Price);
    if (!GoodGet_QRY.IsOpen() || GoodGet_QRY.IsEmpty() || GoodGet_QRY.IntField(u"Code") != rec.Code) {
        Good_GetByID(rec.Code);
    }
    if (GoodGet_QRY.IsEmpty()) {
        throw host::RowGone(u"کالا"_s);
    }
    GoodGet_QRY.Edit();
    const auto drop = qScopeGuard([this] { GoodGet_QRY.Cancel(); });
    WriteFields(rec, Writing::Update);
    GoodGet_QRY.Post();
    // A save that is taken back later is tried again with the same comparison.
    host::Transaction::WhenEnded(m_main, [this](bool committed) {
        if (committed) {
            m_read.reset();
        }
    });
    transaction.Commit();
    return true;
}

const TGoodInfoRec *TGood_DM::Read(int code) const
{
    return m_read && m_read->Code == code ? &*m_read : nullptr;
}

void TGood_DM::WriteFields(const TGoodInfoRec &rec, Writing writing)
{
    TGoodInfoRec written = rec;
    written.Name = goods::ComposedName(rec.kala_name, rec.kala_type, rec.kala_index);
    const bool isNew = writing == Writing::Insert;
    const TGoodInfoRec *read = isNew ? nullptr : Read(rec.Code);
    const goods::Written skipped = isNew ? goods::Written::Update : goods::Written::Insert;
    for (const goods::GoodField &field : goods::GoodFields()) {
        // The stamp is always written, so that a row that is gone is noticed.
        const bool kept = read && field.together != goods::Together::Modified && !goods::Differs(field, *read, written);
        if (field.written != skipped && !kept) {
            GoodGet_QRY.SetField(QString(field.column), field.Get(written));
        }
    }
}

void TGood_DM::SaveDiscounts(int code, const TGoodPrice_Rec &price)
{
    host::Dataset &discounts = GoodCostDiscount_QRY;
    const auto drop = qScopeGuard([&discounts] { discounts.Cancel(); });
    discounts.Open(QString::asprintf("select * from GoodCostDiscount Where GoodCode = %d ", code));
    const bool isNew = discounts.IsEmpty();
    if (isNew) {
        discounts.Append();
        discounts.SetField(u"GoodCode", code);
        // No level of a fresh row has a price yet, so none can be the default.
        discounts.SetField(u"Default_CostLevel_Sell_Number", 0);
        discounts.SetField(u"Default_CostLevel_Buy_Number", 0);
    } else {
        discounts.Edit();
    }
    const TGoodInfoRec *read = isNew ? nullptr : Read(code);
    const auto write = [&](const QString &field, const QVariant &value, const QVariant &before) {
        if (!read || value != before) {
            discounts.SetField(field, value);
        }
    };
    const TGoodPrice_Rec before = read ? read->Price : TGoodPrice_Rec();
    for (size_t i = 0; i < price.Discount_Sell.size(); ++i) {
        write(DiscountField("Sell"_L1, i), host::QuantityToText(price.Discount_Sell[i]),
              host::QuantityToText(before.Discount_Sell[i]));
        write(DiscountField("Buy"_L1, i), host::QuantityToText(price.Discount_Buy[i]),
              host::QuantityToText(before.Discount_Buy[i]));
    }
    write(u"Default_Discount_Sell_Number"_s, price.Default_Discount_Sell_Number, before.Default_Discount_Sell_Number);
    write(u"Default_Discount_Buy_Number"_s, price.Default_Discount_Buy_Number, before.Default_Discount_Buy_Number);
    discounts.Post();
}

void TGood_DM::ReadDiscounts(int code, TGoodPrice_Rec &price)
{
    Temp_QRY.Open(QString::asprintf("select * from GoodCostDiscount Where GoodCode = %d ", code));
    if (Temp_QRY.IsEmpty()) {
        return;
    }
    for (size_t i = 0; i < price.Discount_Sell.size(); ++i) {
        price.Discount_Sell[i] = Temp_QRY.Number(DiscountField("Sell"_L1, i));
        price.Discount_Buy[i] = Temp_QRY.Number(DiscountField("Buy"_L1, i));
    }
    price.Default_Discount_Sell_Number = Temp_QRY.Int(u"Default_Discount_Sell_Number");
    price.Default_Discount_Buy_Number = Temp_QRY.Int(u"Default_Discount_Buy_Number");
}

bool TGood_DM::Good_Delete(int code)
{
    return m_entities.Delete_Entity(host::TSoftwarePart::Goods, code, false) == 0;
}

void TGood_DM::Good_GetAll(int manageType, int userCode, int slCode, int displayType, const QString &requestedColumns)
{
    const QByteArray columns = host::QuotedStr(requestedColumns).toUtf8();
    Good_List_QRY.Open(QString::asprintf("Exec GoodInf_List_SP @ManageType = %d, @UserCode = %d, @SL_Code = %d, "
                                         "@Cost_Flag = 1, @DisplayType = %d, @RequestedCol= %s ",
                                         manageType, userCode, slCode, displayType, columns.constData()));
}

TGood_DM::GoodCodes TGood_DM::GetGoodCodes()
{
    Temp_QRY.Open(
        u"SELECT STUFF((SELECT ',' + CAST(gi.Code  AS VARCHAR) FROM GoodInf gi ORDER BY code FOR XML PATH('')), "
        "1, 1, '') AS GoodCodes, (SELECT COUNT(*) FROM GoodInf gi) AS GoodCount"_s);
    return {Temp_QRY.Text(u"GoodCodes"), Temp_QRY.Int(u"GoodCount")};
}

void TGood_DM::Good_UpdateDaraiGoodType(int goodType, const QString &codes)
{
    host::Exec(m_main, u"update GoodInf set DaraiGoodType = "_s + QString::number(goodType) + u" where code in ("_s +
                           host::CodeList(codes) + u')');
}

int TGood_DM::Good_GetVoucherCode(int code)
{
    return host::Scalar(m_main, u"select VoucherCode from GoodInf where Code = "_s + QString::number(code)).toInt();
}

bool TGood_DM::Good_HasGardesh(int code)
{
    Temp_QRY.Open(u"Select top 1 Code From Kardex Where Kala="_s + QString::number(code));
    return !Temp_QRY.IsEmpty();
}

bool TGood_DM::Good_HasSanadDetail(int code)
{
    Temp_QRY.Open(u"select top 1 l.ID from VoucherLines as l inner join Vouchers as v on v.Code = l.VoucherCode "
                  "where v.Kind <> 1 and l.GoodCode = "_s +
                  QString::number(code));
    return !Temp_QRY.IsEmpty();
}

bool TGood_DM::Good_FirstAssetHasSanad(int)
{
    return false;
}

bool TGood_DM::GoodUsedInWebService(int code)
{
    Temp_QRY.Open(u"select Masterid from OnlineProduct where isdelete <> 1 AND Masterid = "_s + QString::number(code));
    if (!Temp_QRY.IsEmpty()) {
        return true;
    }
    Temp_QRY.Open(u"select ID from Market.Product where Deleted <> 1 AND VelakProductCode = "_s +
                  QString::number(code));
    return !Temp_QRY.IsEmpty();
}
