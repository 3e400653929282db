#include "desk/services/detail_divisions.h"

#include "desk/services/division_sql.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

// The working tables, and what the screens show of them.

namespace desk {

using division_sql::Entry;
using division_sql::Exit;

DetailDivisions::DetailDivisions(DetailDesk &desk, DetailMovements &movements)
    : m_desk(desk), m_movements(movements), m_connection(desk.Connection())
{}

void DetailDivisions::Run(const QString &text)
{
    host::Run(m_connection, text);
}

void DetailDivisions::DropGoodDetailDivisionDetailTempTable()
{
    Run(u"IF OBJECT_ID('tempdb..#GoodDetailDivisionDetailTemp') IS NOT NULL\n"
        "    DROP TABLE #GoodDetailDivisionDetailTemp"_s);
}

void DetailDivisions::DropGoodDetailDivisionDetailItemsTempTable()
{
    Run(u"IF OBJECT_ID('tempdb..#GoodDetailDivisionDetailItemsTemp') IS NOT NULL\n"
        "    DROP TABLE #GoodDetailDivisionDetailItemsTemp"_s);
}

void DetailDivisions::CreateGoodDetailDivisionDetailTempTable()
{
    DropGoodDetailDivisionDetailTempTable();
    Run(u"CREATE TABLE #GoodDetailDivisionDetailTemp(ID INT IDENTITY(1, 1) NOT NULL, StoreCode SMALLINT, StoreName "
        "NVARCHAR(100), GoodCode INT, GoodName NVARCHAR(100), DetailValueID INT, DetailTitle1 NVARCHAR(100), "
        "DetailTitle2 NVARCHAR(100), DetailTitle3 NVARCHAR(100), DetailTitle4 NVARCHAR(100), DetailTitle5 "
        "NVARCHAR(100), GoodDetail NVARCHAR(250), Amount1 DECIMAL(23, 9), Amount2 DECIMAL(23, 9), [Length] "
        "DECIMAL(23, 9), Width DECIMAL(23, 9), Amount3 DECIMAL(23, 9), Comment NVARCHAR(200), OperationType "
        "TINYINT, OperationCode INT, OperationRow INT, Tmp TINYINT)"_s);
}

void DetailDivisions::CreateGoodDetailDivisionDetailItemsTempTable()
{
    DropGoodDetailDivisionDetailItemsTempTable();
    Run(u"CREATE TABLE #GoodDetailDivisionDetailItemsTemp(ID INT IDENTITY(1, 1) NOT NULL, DivisionCode INT, DivisionRow "
        "INT, Amount1 DECIMAL(23, 9), Amount2 DECIMAL(23, 9), [Length] DECIMAL(23, 9), Width DECIMAL(23, 9), Amount3 "
        "DECIMAL(23, 9), OperationType TINYINT, OperationCode INT, OperationRow INT, Tmp TINYINT, Waste BIT NOT NULL "
        "DEFAULT 0)"_s);
}

void DetailDivisions::GoodDetailDivisionDetailTempInsert_Rows(int divisionCode)
{
    const QString code = QString::number(divisionCode);
    Run(u"INSERT INTO #GoodDetailDivisionDetailTemp (StoreCode, StoreName, GoodCode, GoodName, DetailValueID, "
        "DetailTitle1, DetailTitle2, DetailTitle3, DetailTitle4, DetailTitle5, GoodDetail, Amount1, Amount2, [Length], "
        "Width, Amount3, Comment, OperationType, OperationCode, OperationRow, Tmp) SELECT s.StoreCode, st.Name, "
        "s.GoodCode, LEFT(g.Name, 100), s.DetailValueID, v.T1, v.T2, v.T3, v.T4, v.T5, %1, s.Amount1, s.Amount2, "
        "s.[Length], s.Width, s.Amount3, s.Comment, %2, s.DivisionCode, s.OperationRow, 0 FROM "
        "GoodDetailDivisionDetail AS s INNER JOIN Stores AS st ON st.Code = s.StoreCode INNER JOIN GoodInf AS g ON "
        "g.Code = s.GoodCode LEFT JOIN (%3) AS v ON v.ID = s.DetailValueID WHERE s.DivisionCode = %4 ORDER BY "
        "s.OperationRow"_s.arg(
            division_sql::JoinedTitles, QString::number(Exit),
            division_sql::Titles(u"SELECT DetailValueID FROM GoodDetailDivisionDetail WHERE DivisionCode = "_s + code),
            code));
}

void DetailDivisions::GoodDetailDivisionDetailItemsTempInsert_Rows(int divisionCode)
{
    Run(u"INSERT INTO #GoodDetailDivisionDetailItemsTemp (DivisionCode, DivisionRow, Amount1, Amount2, [Length], Width, "
        "Amount3, OperationType, OperationCode, OperationRow, Tmp, Waste) SELECT DivisionCode, DivisionRow, Amount1, "
        "Amount2, [Length], Width, Amount3, %1, DivisionCode, OperationRow, 0, Waste FROM "
        "GoodDetailDivisionDetailItems WHERE DivisionCode = %2 ORDER BY DivisionRow, OperationRow"_s.arg(Entry)
            .arg(divisionCode));
}

void DetailDivisions::GoodDetailDivision_GetALL(host::Dataset &query, const host::TDayRange &days)
{
    QString parameters;
    if (!days.From.isEmpty())
        parameters = host::ADDParam(parameters, u"@FromDate", host::QuotedStr(days.From));
    if (!days.To.isEmpty())
        parameters = host::ADDParam(parameters, u"@ToDate", host::QuotedStr(days.To));
    query.Open(u"exec GoodDetail_Select_GoodDetailDivision"_s +
               (parameters.isEmpty() ? parameters : u' ' + parameters));
}

void DetailDivisions::GoodDetailDivisionDetail_Get(host::Dataset &query)
{
    query.Open(u"SELECT gdd.*, (SELECT u.Name FROM Units u WHERE u.Code = g.Unit)  AS Unit1\n"
               ", (SELECT u.Name FROM Units u WHERE u.Code = g.Unit2) AS Unit2\n"
               "FROM #GoodDetailDivisionDetailTemp gdd JOIN GoodInf g ON gdd.GoodCode = g.Code  WHERE Tmp IN (0) "_s);
}

void DetailDivisions::GoodDetailDivisionDetailItems_Get(host::Dataset &query, int divisionRow, int mode)
{
    query.Open(u"SELECT * FROM #GoodDetailDivisionDetailItemsTemp WHERE DivisionRow = %1 AND Tmp = %2 ORDER BY "
               "OperationRow"_s.arg(divisionRow)
                   .arg(mode));
}

std::optional<host::TDivisionHeader> DetailDivisions::GoodDetailDivision_Header(int code)
{
    const host::Query header(m_connection,
                             u"SELECT ID, Code, [Date], ISNULL(Comment, N'') AS Comment FROM GoodDetailDivision WHERE "
                             "Code = %1"_s.arg(code));
    if (header.IsEmpty())
        return std::nullopt;
    return host::TDivisionHeader{header.Int(u"Code"), header.Text(u"Date").trimmed(), header.Text(u"Comment"),
                                 header.Int(u"ID")};
}

} // namespace desk
