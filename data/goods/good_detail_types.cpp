#include "data/goods/good_detail_types.h"

#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace goods {

namespace {

/// Detail types a good may carry.
constexpr int MostDetailTypes = 5;

} // namespace

GoodDetailTypes::GoodDetailTypes(const QSqlDatabase &main, const host::SettingsService &settings)
    : GoodDetails_QRY(main), m_main(main), m_settings(settings), Temp_QRY(main)
{}

void GoodDetailTypes::CreateGoodDetailTempTable()
{
    host::Run(m_main, u" IF OBJECT_ID('tempdb..#GoodDetails') IS NOT NULL "
                      "   DROP TABLE #GoodDetails "
                      " CREATE TABLE #GoodDetails(ID int IDENTITY(1,1) NOT NULL, "
                      "   GoodCode int, GoodDetailID int, GoodDetailTitle nvarchar(100)) "_s);
}

void GoodDetailTypes::FillGoodDetails(int goodCode)
{
    host::Transaction transaction(m_main);
    CreateGoodDetailTempTable();
    host::Run(
        m_main,
        u" INSERT INTO #GoodDetails(GoodCode, GoodDetailID, GoodDetailTitle)  SELECT gr.GoodCode, gr.DetailID, "
        "dt.Title FROM GoodDetailRelation gr INNER JOIN DetailTypes dt ON gr.DetailID = dt.ID WHERE gr.GoodCode = "_s +
            QString::number(goodCode) +
            u" ORDER BY CASE dt.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 END, gr.ID"_s);
    transaction.Commit();
}

void GoodDetailTypes::InsertDefaultDetailTypesSelectedListInNewGood(const QString &goodCode)
{
    host::Run(m_main, u" INSERT INTO #GoodDetails(GoodCode, GoodDetailID, GoodDetailTitle)  SELECT "_s +
                          host::CodeText(goodCode) +
                          u", dsd.Code, dt.Title "
                          " FROM DetailTypes_SelectedLists ds INNER JOIN DetailTypes_SelectedList_Detail dsd "
                          " ON ds.Code = dsd.SL_Code INNER JOIN DetailTypes dt ON dsd.Code = dt.ID WHERE "
                          "ds.DefaultSelectedList = 1"_s);
}

void GoodDetailTypes::GoodDetailTemp_GetAll()
{
    GoodDetails_QRY.Open(u" SELECT * FROM #GoodDetails ORDER BY ID "_s);
}

bool GoodDetailTypes::GoodDetailTemp_CheckExists()
{
    Temp_QRY.Open(u" SELECT * FROM #GoodDetails ORDER BY ID "_s);
    const bool exists = !Temp_QRY.IsEmpty();
    Temp_QRY.Close();
    return exists;
}

void GoodDetailTypes::GoodDetailTemp_Insert(QString idList, int goodCode)
{
    host::Transaction transaction(m_main);
    host::Dataset details(m_main);
    details.SetTable(u"#GoodDetails"_s, u"ID"_s);
    details.Open(u"SELECT * FROM #GoodDetails WHERE GoodCode = "_s + QString::number(goodCode) + u" ORDER BY ID"_s);
    while (!idList.isEmpty()) {
        const qsizetype comma = idList.indexOf(u',');
        if (comma < 0) {
            throw host::RefusedText(u"فهرست کدها با ویرگول پس از هر کد"_s, idList);
        }
        const int id = host::CodeText(QStringView(idList).left(comma)).toInt();
        if (!details.Locate(u"GoodDetailID", id) && details.RecordCount() < MostDetailTypes) {
            details.Append();
            details.SetField(u"GoodCode", goodCode);
            details.SetField(u"GoodDetailID", id);
            details.SetField(u"GoodDetailTitle", GetDetailTypeTitle(id));
            details.Post();
            details.Requery();
        }
        idList.remove(0, comma + 1);
    }
    transaction.Commit();
}

void GoodDetailTypes::GoodDetailTemp_Delete(const QString &ids)
{
    host::Run(m_main, u" DELETE FROM #GoodDetails WHERE ID IN ("_s + host::CodeList(ids) + u')');
}

void GoodDetailTypes::GoodDetailTemp_DeleteAll()
{
    host::Run(m_main, u" DELETE FROM #GoodDetails "_s);
}

void GoodDetailTypes::GoodDetailTemp_ChangeCode(int newCode, int oldCode)
{
    host::Run(m_main, u"IF OBJECT_ID('tempdb..#GoodDetails') IS NOT NULL UPDATE #GoodDetails SET GoodCode = "_s +
                          QString::number(newCode) + u" WHERE GoodCode = "_s + QString::number(oldCode));
}

QString GoodDetailTypes::DetailTypesTmp_GetCode()
{
    QString codes;
    Temp_QRY.Open(u"SELECT * FROM #GoodDetails ORDER BY ID"_s);
    for (; !Temp_QRY.Eof(); Temp_QRY.Next()) {
        codes += (codes.isEmpty() ? QString() : u","_s) + Temp_QRY.Text(u"GoodDetailID");
    }
    return codes.isEmpty() ? u"0"_s : codes;
}

QString GoodDetailTypes::GetDetailTypeTitle(int id)
{
    Temp_QRY.Open(u"SELECT * FROM DetailTypes dt WHERE dt.ID = "_s + QString::number(id));
    return Temp_QRY.IsEmpty() ? QString() : Temp_QRY.Text(u"Title");
}

bool GoodDetailTypes::GetGoodDetailTempID(int &d1, int &d2, int &d3, int &d4, int &d5)
{
    const std::array<int *, MostDetailTypes> details{&d1, &d2, &d3, &d4, &d5};
    for (int *detail : details) {
        *detail = 0;
    }
    if (!m_settings.SettingRecord().GoodDetails) {
        return false;
    }
    Temp_QRY.Open(
        u" SELECT G.ID, G.GoodCode, G.GoodDetailID FROM (     SELECT gd.ID, gd.GoodCode, gd.GoodDetailID FROM "
        u"#GoodDetails gd INNER JOIN DetailTypes dt     ON gd.GoodDetailID = dt.ID WHERE dt.DetailType = 3 "
        "    UNION ALL     SELECT gd.ID, gd.GoodCode, gd.GoodDetailID FROM #GoodDetails gd INNER JOIN DetailTypes dt   "
        "  ON gd.GoodDetailID = dt.ID WHERE dt.DetailType = 6 "
        "    UNION ALL     SELECT gd.ID, gd.GoodCode, gd.GoodDetailID FROM #GoodDetails gd INNER JOIN DetailTypes dt       ON gd.GoodDetailID = dt.ID WHERE dt.DetailType NOT IN (3, 6)    )G "_s);
    const bool exists = !Temp_QRY.IsEmpty();
    for (size_t i = 0; i < details.size() && !Temp_QRY.Eof(); ++i, Temp_QRY.Next()) {
        *details[i] = Temp_QRY.Int(u"GoodDetailID");
    }
    Temp_QRY.Close();
    return exists;
}

void GoodDetailTypes::InsertRelations(int goodCode, const std::array<int, 5> &details)
{
    for (const int detail : details) {
        if (detail > 0) {
            host::Run(m_main, u" INSERT INTO GoodDetailRelation(GoodCode, DetailID)  VALUES("_s +
                                  QString::number(goodCode) + u", "_s + QString::number(detail) + u')');
        }
    }
}

bool GoodDetailTypes::InsertGoodDetailRelation(int goodCode, int d1, int d2, int d3, int d4, int d5)
{
    host::Transaction transaction(m_main);
    InsertRelations(goodCode, {d1, d2, d3, d4, d5});
    transaction.Commit();
    return true;
}

bool GoodDetailTypes::UpdateGoodDetailRelation(int goodCode, int d1, int d2, int d3, int d4, int d5)
{
    host::Transaction transaction(m_main);
    host::Run(m_main, u"DELETE FROM GoodDetailRelation WHERE GoodCode = "_s + QString::number(goodCode));
    InsertRelations(goodCode, {d1, d2, d3, d4, d5});
    transaction.Commit();
    return true;
}

bool GoodDetailTypes::InsertGoodDetailTypesForGoods(const QString &goodCodes, const QString &detailIds, int scope)
{
    const QString details = host::CodeList(detailIds);
    const QString insert =
        u"INSERT INTO GoodDetailRelation(GoodCode, DetailID)  SELECT g.Code, d.ID FROM GoodInf g CROSS JOIN "
        "DetailTypes d WHERE "_s;
    host::Transaction transaction(m_main);
    if (scope < 2) {
        const QString goods = host::CodeList(goodCodes);
        host::Run(m_main, u"DELETE FROM GoodDetailRelation WHERE GoodCode IN ("_s + goods + u')');
        host::Run(m_main, insert + u"g.Code IN ("_s + goods + u") AND d.ID IN ("_s + details + u')');
    } else {
        host::Run(m_main, u"DELETE FROM GoodDetailRelation"_s);
        host::Run(m_main, insert + u"d.ID IN ("_s + details + u')');
    }
    transaction.Commit();
    return true;
}

} // namespace goods
