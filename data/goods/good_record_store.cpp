#include "data/goods/good_record_store.h"

#include "data/goods/good_fields.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "rules/good_name.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace goods {

RecordStore::RecordStore(const QSqlDatabase &main, const QSqlDatabase &list, host::EntityService &entities)
    : GoodGet_QRY(main), Good_List_QRY(list), m_main(main), m_entities(entities), m_discounts(main), Temp_QRY(main)
{
    GoodGet_QRY.SetTable(u"GoodInf"_s, u"Code"_s);
    Good_List_QRY.ReadInBlocks();
}

void RecordStore::Good_GetByID(int code)
{
    m_read.reset();
    GoodGet_QRY.Open(QString::asprintf("select * from goodinf Where Code = %d ", code));
}

bool RecordStore::Good_GetByID(int code, TGoodInfoRec &rec)
{
    Good_GetByID(code);
    if (GoodGet_QRY.IsEmpty()) {
        return false;
    }
    TGoodInfoRec read;
    for (const GoodField &field : GoodFields()) {
        field.Set(read, GoodGet_QRY.Field(QString(field.column)));
    }
    m_discounts.Read(code, read.Price);
    rec = read;
    m_read = read;
    return true;
}

bool RecordStore::Good_IsNewRecordMode(int code)
{
    Temp_QRY.Open(QString::asprintf("select * from goodinf Where Code = %d ", code));
    return Temp_QRY.IsEmpty();
}

QString RecordStore::Good_RecoveryText(int code)
{
    return u"select Code from GoodInf where Code = "_s + QString::number(code);
}

bool RecordStore::Good_Insert(const TGoodInfoRec &rec)
{
    host::Transaction transaction(m_main);
    SaveDiscounts(rec);
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

bool RecordStore::Good_Update(const TGoodInfoRec &rec)
{
    host::Transaction transaction(m_main);
    SaveDiscounts(rec);
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

const TGoodInfoRec *RecordStore::Read(int code) const
{
    return m_read && m_read->Code == code ? &*m_read : nullptr;
}

void RecordStore::SaveDiscounts(const TGoodInfoRec &rec)
{
    const TGoodInfoRec *read = Read(rec.Code);
    m_discounts.Save(rec.Code, rec.Price, read ? &read->Price : nullptr);
}

void RecordStore::WriteFields(const TGoodInfoRec &rec, Writing writing)
{
    TGoodInfoRec written = rec;
    written.Name = ComposedName(rec.kala_name, rec.kala_type, rec.kala_index);
    const bool isNew = writing == Writing::Insert;
    const TGoodInfoRec *read = isNew ? nullptr : Read(rec.Code);
    const Written skipped = isNew ? Written::Update : Written::Insert;
    for (const GoodField &field : GoodFields()) {
        // The stamp is always written, so that a row that is gone is noticed.
        const bool kept = read && field.together != Together::Modified && !Differs(field, *read, written);
        if (field.written != skipped && !kept) {
            GoodGet_QRY.SetField(QString(field.column), field.Get(written));
        }
    }
}

bool RecordStore::Good_Delete(int code)
{
    return m_entities.Delete_Entity(host::TSoftwarePart::Goods, code, false) == 0;
}

void RecordStore::Good_GetAll(int manageType, int userCode, int slCode, int displayType,
                              const QString &requestedColumns)
{
    const QByteArray columns = host::QuotedStr(requestedColumns).toUtf8();
    Good_List_QRY.Open(QString::asprintf("Exec GoodInf_List_SP @ManageType = %d, @UserCode = %d, @SL_Code = %d, "
                                         "@Cost_Flag = 1, @DisplayType = %d, @RequestedCol= %s ",
                                         manageType, userCode, slCode, displayType, columns.constData()));
}

RecordStore::GoodCodes RecordStore::GetGoodCodes()
{
    Temp_QRY.Open(
        u"SELECT STUFF((SELECT ',' + CAST(gi.Code  AS VARCHAR) FROM GoodInf gi ORDER BY code FOR XML PATH('')), "
        "1, 1, '') AS GoodCodes, (SELECT COUNT(*) FROM GoodInf gi) AS GoodCount"_s);
    return {Temp_QRY.Text(u"GoodCodes"), Temp_QRY.Int(u"GoodCount")};
}

int RecordStore::Good_GetVoucherCode(int code)
{
    return host::Scalar(m_main, u"select VoucherCode from GoodInf where Code = "_s + QString::number(code)).toInt();
}

bool RecordStore::Good_HasGardesh(int code)
{
    Temp_QRY.Open(u"Select top 1 Code From Kardex Where Kala="_s + QString::number(code));
    return !Temp_QRY.IsEmpty();
}

bool RecordStore::Good_HasSanadDetail(int code)
{
    Temp_QRY.Open(u"select top 1 l.ID from VoucherLines as l inner join Vouchers as v on v.Code = l.VoucherCode "
                  "where v.Kind <> 1 and l.GoodCode = "_s +
                  QString::number(code));
    return !Temp_QRY.IsEmpty();
}

bool RecordStore::Good_FirstAssetHasSanad(int)
{
    return false;
}

bool RecordStore::GoodUsedInWebService(int code)
{
    Temp_QRY.Open(u"select Masterid from OnlineProduct where isdelete <> 1 AND Masterid = "_s + QString::number(code));
    if (!Temp_QRY.IsEmpty()) {
        return true;
    }
    Temp_QRY.Open(u"select ID from Market.Product where Deleted <> 1 AND VelakProductCode = "_s +
                  QString::number(code));
    return !Temp_QRY.IsEmpty();
}

} // namespace goods
