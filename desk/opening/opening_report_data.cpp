#include "desk/opening/opening_report_data.h"

#include "host/data/query.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString From =
    u" FROM GoodFirstAsset AS a INNER JOIN GoodInf AS g ON g.Code = a.GoodCode LEFT JOIN Stores AS s ON "
    "s.Code = a.StoreCode"_s;

} // namespace

OpeningReportData::OpeningReportData(const QSqlDatabase &connection) : Rows_QRY(connection), m_connection(connection)
{
    Rows_QRY.ReadInBlocks();
}

void OpeningReportData::Open(int store)
{
    const QString where = store == 0 ? QString() : u" AND a.StoreCode = %1"_s.arg(store);
    Rows_QRY.Open(
        u"SELECT a.ID, a.StoreCode, s.Name AS StoreName, a.GoodCode, g.Name AS GoodName, a.Amount1, u.Name AS "
        "Unit1, a.Amount2, v.Name AS Unit2, g.CostBgPrd, CAST(a.Amount1 * g.CostBgPrd AS decimal(28,9)) AS "
        "[Value], a.Comment"_s +
        From + u" LEFT JOIN Units AS u ON u.Code = g.Unit LEFT JOIN Units AS v ON v.Code = g.Unit2 WHERE a.tmp = 0"_s +
        where + u" ORDER BY a.StoreCode, a.GoodCode, a.Radif"_s);
}

QList<OpeningReportData::StoreTotal> OpeningReportData::Totals() const
{
    QList<StoreTotal> totals;
    for (host::Query rows(m_connection,
                          u"SELECT a.StoreCode, MAX(s.Name) AS Name, COUNT(*) AS Number, SUM(CAST(a.Amount1 "
                          "* g.CostBgPrd AS decimal(28,9))) AS [Value]"_s +
                              From + u" WHERE a.tmp = 0 GROUP BY a.StoreCode ORDER BY a.StoreCode"_s);
         !rows.Eof(); rows.Next())
        totals << StoreTotal{rows.Int(u"StoreCode"), rows.Text(u"Name").trimmed(), rows.Int(u"Number"),
                             rows.Number(u"Value")};
    return totals;
}

} // namespace desk
