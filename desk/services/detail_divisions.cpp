#include "desk/services/detail_divisions.h"

#include "host/data/transaction.h"
#include "host/services/types.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int Exit = static_cast<int>(host::TOperationType::DivisionExit);
constexpr int Entry = static_cast<int>(host::TOperationType::DivisionEntry);

/// The values of every detail value, each in the place that its detail has with the good.
const QString Titles =
    u"SELECT v.ID, MAX(CASE WHEN p.Place = 1 THEN d.[Value] END) AS T1, MAX(CASE WHEN p.Place = 2 THEN "
    "d.[Value] END) AS T2, MAX(CASE WHEN p.Place = 3 THEN d.[Value] END) AS T3, MAX(CASE WHEN p.Place "
    "= 4 THEN d.[Value] END) AS T4, MAX(CASE WHEN p.Place = 5 THEN d.[Value] END) AS T5 FROM "
    "GoodDetailDivisionDetail AS s INNER JOIN GoodDetailValues AS v ON v.ID = s.DetailValueID INNER "
    "JOIN GoodDetailValueDetails AS d ON d.DetailValueID = v.ID INNER JOIN (SELECT r.GoodCode, "
    "r.DetailID, ROW_NUMBER() OVER (PARTITION BY r.GoodCode ORDER BY CASE t.DetailType WHEN 3 THEN 0 "
    "WHEN 6 THEN 1 ELSE 2 END, r.ID) AS Place FROM GoodDetailRelation AS r INNER JOIN DetailTypes AS t "
    "ON t.ID = r.DetailID) AS p ON p.GoodCode = v.GoodCode AND p.DetailID = d.DetailID WHERE "
    "s.DivisionCode = %1 GROUP BY v.ID"_s;

} // namespace

void DetailDivisions::DropGoodDetailDivisionDetailTempTable()
{
    host::Run(m_connection, u"IF OBJECT_ID('tempdb..#GoodDetailDivisionDetailTemp') IS NOT NULL\n"
                            "    DROP TABLE #GoodDetailDivisionDetailTemp"_s);
}

void DetailDivisions::DropGoodDetailDivisionDetailItemsTempTable()
{
    host::Run(m_connection, u"IF OBJECT_ID('tempdb..#GoodDetailDivisionDetailItemsTemp') IS NOT NULL\n"
                            "    DROP TABLE #GoodDetailDivisionDetailItemsTemp"_s);
}

void DetailDivisions::CreateGoodDetailDivisionDetailTempTable()
{
    DropGoodDetailDivisionDetailTempTable();
    host::Run(
        m_connection,
        u"CREATE TABLE #GoodDetailDivisionDetailTemp(ID INT IDENTITY(1, 1) NOT NULL, StoreCode SMALLINT, StoreName "
        "NVARCHAR(100), GoodCode INT, GoodName NVARCHAR(100), DetailValueID INT, DetailTitle1 NVARCHAR(100), "
        "DetailTitle2 NVARCHAR(100), DetailTitle3 NVARCHAR(100), DetailTitle4 NVARCHAR(100), DetailTitle5 "
        "NVARCHAR(100), GoodDetail NVARCHAR(250), Amount1 DECIMAL(23, 9), Amount2 DECIMAL(23, 9), [Length] "
        "DECIMAL(23, 9), Width DECIMAL(23, 9), Amount3 DECIMAL(23, 9), Comment NVARCHAR(200), OperationType "
        "TINYINT, OperationCode INT, OperationRow INT, Tmp TINYINT)"_s);
}

void DetailDivisions::CreateGoodDetailDivisionDetailItemsTempTable()
{
    DropGoodDetailDivisionDetailItemsTempTable();
    host::Run(m_connection,
              u"CREATE TABLE #GoodDetailDivisionDetailItemsTemp(ID INT IDENTITY(1, 1) NOT NULL, DivisionCode INT, "
              "DivisionRow INT, Amount1 DECIMAL(23, 9), Amount2 DECIMAL(23, 9), [Length] DECIMAL(23, 9), Width "
              "DECIMAL(23, 9), Amount3 DECIMAL(23, 9), OperationType TINYINT, OperationCode INT, OperationRow INT, Tmp "
              "TINYINT)"_s);
}

void DetailDivisions::GoodDetailDivisionDetailTempInsert_Rows(int divisionCode)
{
    const QString code = QString::number(divisionCode);
    host::Run(
        m_connection,
        u"INSERT INTO #GoodDetailDivisionDetailTemp (StoreCode, StoreName, GoodCode, GoodName, DetailValueID, "
        "DetailTitle1, DetailTitle2, DetailTitle3, DetailTitle4, DetailTitle5, GoodDetail, Amount1, Amount2, "
        "[Length], Width, Amount3, Comment, OperationType, OperationCode, OperationRow, Tmp) SELECT s.StoreCode, "
        "st.Name, s.GoodCode, LEFT(g.Name, 100), s.DetailValueID, v.T1, v.T2, v.T3, v.T4, v.T5, "
        "LEFT(LTRIM(CONCAT(v.T1, N' ' + v.T2, N' ' + v.T3, N' ' + v.T4, N' ' + v.T5)), 250), s.Amount1, s.Amount2, "
        "s.[Length], s.Width, s.Amount3, s.Comment, %1, s.DivisionCode, s.OperationRow, 0 FROM "
        "GoodDetailDivisionDetail AS s INNER JOIN Stores AS st ON st.Code = s.StoreCode INNER JOIN GoodInf AS g ON "
        "g.Code = s.GoodCode LEFT JOIN (%2) AS v ON v.ID = s.DetailValueID WHERE s.DivisionCode = %3 ORDER BY "
        "s.OperationRow"_s.arg(QString::number(Exit), Titles.arg(code), code));
}

void DetailDivisions::GoodDetailDivisionDetailItemsTempInsert_Rows(int divisionCode)
{
    host::Run(m_connection,
              u"INSERT INTO #GoodDetailDivisionDetailItemsTemp (DivisionCode, DivisionRow, Amount1, Amount2, [Length], "
              "Width, Amount3, OperationType, OperationCode, OperationRow, Tmp) SELECT DivisionCode, DivisionRow, "
              "Amount1, Amount2, [Length], Width, Amount3, %1, DivisionCode, OperationRow, 0 FROM "
              "GoodDetailDivisionDetailItems WHERE DivisionCode = %2 ORDER BY DivisionRow, OperationRow"_s.arg(Entry)
                  .arg(divisionCode));
}

} // namespace desk
