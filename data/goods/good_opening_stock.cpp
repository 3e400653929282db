#include "data/goods/good_opening_stock.h"

#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace goods {

OpeningStock::OpeningStock(const QSqlDatabase &main)
    : GoodFirstAsset_QRY(main), FirstAssetList_QRY(main), m_main(main), Temp_QRY(main)
{
    GoodFirstAsset_QRY.SetTable(u"GoodFirstAsset"_s, u"ID"_s);
    FirstAssetList_QRY.SetOrder(u"Radif"_s);
}

void OpeningStock::FirstAsset_DeleteTemp(int goodCode)
{
    host::Run(m_main, u"Delete from GoodFirstAsset where tmp=1 and GoodCode="_s + QString::number(goodCode));
}

void OpeningStock::FirstAsset_FillTemp(int goodCode)
{
    host::Transaction transaction(m_main);
    FirstAsset_DeleteTemp(goodCode);
    host::Run(m_main,
              u"Insert GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Amount2,Comment,Radif) Select "
              "GoodCode,StoreCode,1,Amount1,Amount2,Comment,Radif from GoodFirstAsset where tmp=0 and GoodCode="_s +
                  QString::number(goodCode));
    transaction.Commit();
}

bool OpeningStock::FirstAsset_NotIsMultiStore(int goodCode)
{
    int store = 0;
    return FirstAsset_NotIsMultiStore(goodCode, store);
}

bool OpeningStock::FirstAsset_NotIsMultiStore(int goodCode, int &store)
{
    Temp_QRY.Open(QString::asprintf("Select * from GoodFirstAsset where (GoodCode=%d) and (tmp=1)", goodCode));
    store = Temp_QRY.RecordCount() == 1 ? Temp_QRY.Int(u"StoreCode") : 0;
    return Temp_QRY.IsEmpty() || store == 1;
}

void OpeningStock::FirstAsset_MultiStore(int goodCode, const QString &store, host::Quantity amount1,
                                         host::Quantity amount2)
{
    const QString good = QString::number(goodCode);
    host::Transaction transaction(m_main);
    Temp_QRY.Open(u" SELECT * FROM GoodFirstAsset WHERE Tmp = 1 AND GoodCode = "_s + good);
    const int rows = Temp_QRY.RecordCount();
    const bool given = amount1 != 0 && !store.isEmpty();
    if (rows == 0 && given) {
        host::Exec(m_main, u" INSERT GoodFirstAsset(GoodCode, StoreCode, Tmp, Amount1, Amount2, Radif)  VALUES("_s +
                               good + u", "_s + host::CodeText(store) +
                               u", "
                               "1 "
                               ", "_s +
                               host::DecimalLiteral(amount1) + u", "_s + host::DecimalLiteral(amount2) +
                               u", "
                               "   1   )"_s);
    } else if (rows == 1 && given) {
        host::Exec(m_main, u" UPDATE GoodFirstAsset SET     Amount1 = "_s + host::DecimalLiteral(amount1) +
                               u"   ,Amount2 = "_s + host::DecimalLiteral(amount2) +
                               u" WHERE Tmp = 1 AND GoodCode = "_s + good);
    } else if (rows == 1 && amount1 == 0) {
        host::Exec(m_main, u" DELETE FROM GoodFirstAsset WHERE Tmp = 1 AND GoodCode = "_s + good);
    }
    transaction.Commit();
}

void OpeningStock::GoodFirstAsset(int goodCode, const QString &store, const QString &amount1, const QString &amount2)
{
    host::Run(m_main, u"Insert GoodFirstAsset(GoodCode,StoreCode,Amount1,Amount2,tmp,Radif)  Values("_s +
                          QString::number(goodCode) + u","_s + host::CodeText(store) + u","_s +
                          host::DecimalLiteral(QStringView(amount1)) + u","_s +
                          host::DecimalLiteral(QStringView(amount2)) + u",1,1)"_s);
}

void OpeningStock::GoodFirstAsset_GetAmount(int goodCode, host::Quantity &amount1, host::Quantity &amount2)
{
    Temp_QRY.Open(
        u"Select IsNull(Sum(Amount1),0) as SumAmount1,IsNull(Sum(Amount2),0) as SumAmount2 from GoodFirstAsset where "
        "tmp=1 and GoodCode="_s +
        QString::number(goodCode));
    amount1 = Temp_QRY.Number(u"SumAmount1");
    amount2 = Temp_QRY.Number(u"SumAmount2");
}

void OpeningStock::GoodFirstAsset_UpdateAllGoodCodes(int newCode, int oldCode)
{
    host::Run(m_main, u"Update GoodFirstAsset set GoodCode="_s + QString::number(newCode) +
                          u" where tmp=1 and GoodCode="_s + QString::number(oldCode));
}

void OpeningStock::GoodFirstAsset_GetAll(int goodCode, int unit1, int unit2, host::Quantity formula)
{
    const QStringList arguments{QString::number(unit1), QString::number(unit2), host::DecimalLiteral(formula)};
    FirstAssetList_QRY.Open(u"Select * from GoodFirstAssetList_FNC("_s + arguments.join(u',') +
                            u") where tmp=1 and GoodCode="_s + QString::number(goodCode));
}

int OpeningStock::GoodFirstAsset_GetNewCode(int goodCode)
{
    Temp_QRY.Open(u"Select IsNull(Max(Radif),0)+1 as Radif From GoodFirstAsset Where tmp=1 and GoodCode="_s +
                  QString::number(goodCode));
    return Temp_QRY.Int(u"Radif");
}

void OpeningStock::GoodFirstAsset_GetByID(int goodCode, int radif)
{
    GoodFirstAsset_QRY.Open(QString::asprintf(
        "select * from GoodFirstAsset Where Tmp = 1 AND GoodCode = %d AND Radif = %d ", goodCode, radif));
}

bool OpeningStock::GoodFirstAsset_GetByID(int goodCode, int radif, TGoodFirstAsset_Rec &rec)
{
    GoodFirstAsset_GetByID(goodCode, radif);
    const host::Dataset &row = GoodFirstAsset_QRY;
    if (row.IsEmpty()) {
        return false;
    }
    rec = {row.IntField(u"ID"),       row.IntField(u"GoodCode"),     row.IntField(u"StoreCode"),
           row.IntField(u"tmp"),      row.QuantityField(u"Amount1"), row.QuantityField(u"Amount2"),
           row.TextField(u"Comment"), row.IntField(u"Radif")};
    return true;
}

void OpeningStock::WriteFirstAsset(const TGoodFirstAsset_Rec &rec)
{
    const auto drop = qScopeGuard([this] { GoodFirstAsset_QRY.Cancel(); });
    GoodFirstAsset_QRY.SetField(u"GoodCode", rec.GoodCode);
    GoodFirstAsset_QRY.SetField(u"StoreCode", rec.StoreCode);
    GoodFirstAsset_QRY.SetField(u"Radif", rec.Radif);
    GoodFirstAsset_QRY.SetQuantity(u"Amount1", rec.Amount1);
    GoodFirstAsset_QRY.SetQuantity(u"Amount2", rec.Amount2);
    GoodFirstAsset_QRY.SetField(u"Comment", rec.Comment);
    GoodFirstAsset_QRY.Post();
}

bool OpeningStock::GoodFirstAsset_Insert(const TGoodFirstAsset_Rec &rec)
{
    if (!GoodFirstAsset_QRY.IsOpen()) {
        GoodFirstAsset_GetByID(rec.GoodCode, rec.Radif);
    }
    GoodFirstAsset_QRY.Append();
    WriteFirstAsset(rec);
    return true;
}

bool OpeningStock::GoodFirstAsset_Update(const TGoodFirstAsset_Rec &rec)
{
    GoodFirstAsset_QRY.Edit();
    WriteFirstAsset(rec);
    return true;
}

void OpeningStock::GoodFirstAsset_Delete(int radif)
{
    host::Exec(m_main, u"Delete from GoodFirstAsset where tmp=1 and Radif="_s + QString::number(radif));
}

int OpeningStock::GoodFirstAsset_RecordCount(int goodCode, int storeCode)
{
    Temp_QRY.Open(u"Select ID from GoodFirstAsset where tmp=1 and GoodCode="_s + QString::number(goodCode) +
                  u" and StoreCode="_s + QString::number(storeCode));
    return Temp_QRY.RecordCount();
}

bool OpeningStock::ValidateGoodFirstAsset_Insert(int goodCode, int storeCode, int radif)
{
    Temp_QRY.Open(u" SELECT     ID   FROM         GoodFirstAsset     WHERE     (GoodCode = "_s +
                  QString::number(goodCode) +
                  u") AND"
                  " (StoreCode = "_s +
                  QString::number(storeCode) + u") AND (tmp = 1) AND (Radif <> "_s + QString::number(radif) + u")"_s);
    return !Temp_QRY.IsEmpty();
}

void OpeningStock::FirstAsset_SaveTemp(int goodCode)
{
    const QString good = QString::number(goodCode);
    host::Transaction transaction(m_main);
    host::Run(m_main, u"Delete from GoodFirstAsset where tmp=0 and GoodCode="_s + good);
    host::Run(m_main, u"Update GoodFirstAsset set tmp=0 where tmp=1 and GoodCode="_s + good);
    transaction.Commit();
}

QList<TGoodFirstAsset_Rec> OpeningStock::FirstAsset_Rows(int goodCode, bool working)
{
    QList<TGoodFirstAsset_Rec> rows;
    Temp_QRY.Open(
        u"Select ID,GoodCode,StoreCode,tmp,Amount1,Amount2,Comment,Radif from GoodFirstAsset where tmp=%1 and "
        "GoodCode=%2 order by Radif,ID"_s.arg(working ? 1 : 0)
            .arg(goodCode));
    for (; !Temp_QRY.Eof(); Temp_QRY.Next())
        rows << TGoodFirstAsset_Rec{Temp_QRY.Int(u"ID"),       Temp_QRY.Int(u"GoodCode"),   Temp_QRY.Int(u"StoreCode"),
                                    Temp_QRY.Int(u"tmp"),      Temp_QRY.Number(u"Amount1"), Temp_QRY.Number(u"Amount2"),
                                    Temp_QRY.Text(u"Comment"), Temp_QRY.Int(u"Radif")};
    return rows;
}

QString OpeningStock::FirstAsset_RecoveryText(int id)
{
    return u"select ID from GoodFirstAsset where tmp=1 and ID="_s + QString::number(id);
}

int OpeningStock::AutoVoucherFirstPriodGoods(const FirstPeriodVoucher &voucher)
{
    const auto text = [](const QString &value) { return value.isNull() ? u"NULL"_s : host::QuotedStr(value); };
    const QString codes = voucher.Codes.isNull() ? QString() : host::CodeList(voucher.Codes);
    Temp_QRY.Open(u"declare @RETURN_VALUE int exec @RETURN_VALUE = AutoVoucherFirstPriodGoods @SaveType = "_s +
                  (voucher.SaveType ? QString::number(*voucher.SaveType) : u"NULL"_s) + u", @SanadCode = "_s +
                  QString::number(voucher.SanadCode) + u", @SanadDate = "_s + host::QuotedStr(voucher.SanadDate) +
                  u", @FromDate = "_s + text(voucher.FromDate) + u", @ToDate = "_s + text(voucher.ToDate) +
                  u", @FromCode = "_s + QString::number(voucher.FromCode) + u", @ToCode = "_s +
                  QString::number(voucher.ToCode) + u", @Codes = "_s + text(codes) +
                  u" select @RETURN_VALUE as RETURN_VALUE"_s);
    return Temp_QRY.Int(u"RETURN_VALUE");
}

QString OpeningStock::GetFirstPeriodVoucherDate()
{
    Temp_QRY.Open(u"SELECT TOP 1 DATE FROM inf_co"_s);
    return Temp_QRY.IsEmpty() ? QString() : Temp_QRY.Text(u"DATE");
}

} // namespace goods
