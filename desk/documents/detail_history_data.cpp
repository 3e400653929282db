#include "desk/documents/detail_history_data.h"

#include "desk/documents/document_kinds.h"
#include "host/data/sql_text.h"
#include "host/services/good_detail_records.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int MostValues = 500;
constexpr int MostKin = 1000;
/// Parts of parts that are followed; a serial has no room for more.
constexpr int MostDegrees = 50;

/// The values of a detail joined by blanks. The path of a document of marks writes three characters in its own way.
const QString Joined =
    u"REPLACE(REPLACE(REPLACE(STUFF((SELECT N' ' + d.[Value] FROM GoodDetailValueDetails AS d INNER JOIN DetailTypes AS t "
    "ON t.ID = d.DetailID WHERE d.DetailValueID = v.ID AND d.[Value] <> N'' ORDER BY CASE t.DetailType WHEN 3 THEN 0 WHEN "
    "6 THEN 1 ELSE 2 END, d.ID FOR XML PATH('')), 1, 1, N''), N'&lt;', N'<'), N'&gt;', N'>'), N'&amp;', N'&')"_s;

/// `ids` is a SELECT with ID and Place, by which the rows are ordered.
QString ValuesText(const QString &ids)
{
    return u"SELECT TOP %1 v.ID AS DetailValueID, g.Code AS GoodCode, g.Name AS GoodName, %2 AS Details, ISNULL((SELECT "
           "SUM(k.Amount1) FROM GoodDetailKardex AS k WHERE k.DetailValueID = v.ID), 0) AS OnHand FROM (SELECT ID, "
           "MIN(Place) AS Place FROM (%3) AS i GROUP BY ID) AS f INNER JOIN GoodDetailValues AS v ON v.ID = f.ID LEFT JOIN "
           "GoodInf AS g ON g.Code = v.GoodCode ORDER BY f.Place, v.ID"_s.arg(QString::number(MostValues), Joined, ids);
}

QString KindNames()
{
    QString text = u"CASE k.OperationType"_s;
    for (const DocumentKind &kind : AllDocumentKinds())
        text += u" WHEN %1 THEN "_s.arg(kind.Number()) + host::NQuotedStr(kind.name);
    const std::pair<host::TOperationType, QString> others[] = {
        {host::TOperationType::TransferIn, u"انتقال بین انبارها"_s},
        {host::TOperationType::OpeningStock, u"موجودی اول دوره"_s},
        {host::TOperationType::DivisionExit, u"تقسیم جزئیات"_s},
        {host::TOperationType::DivisionEntry, u"تقسیم جزئیات"_s}};
    for (const auto &[type, name] : others)
        text += u" WHEN %1 THEN "_s.arg(static_cast<int>(type)) + host::NQuotedStr(name);
    return text + u" ELSE N'سند نوع ' + CAST(k.OperationType AS nvarchar(3)) END"_s;
}

/// Recursive tables `up` (ID, Degree: 0, -1, -2 …) and `down` (ID, Degree: 0, 1 …, Path, by which a tree is in order).
QString KinTables(int detailValueId)
{
    const QString start = u"FROM GoodDetailValues AS v WHERE v.ID = %1"_s.arg(detailValueId);
    const QString parts =
        u"INNER JOIN (SELECT k.DetailValueID AS PartID, s.DetailValueID AS SourceID FROM GoodDetailKardex AS k INNER JOIN "
        "GoodDetailDivisionDetailItems AS p ON p.DivisionCode = k.OperationCode AND p.OperationRow = k.OperationRow INNER "
        "JOIN GoodDetailDivisionDetail AS s ON s.DivisionCode = p.DivisionCode AND s.OperationRow = p.DivisionRow WHERE "
        "k.OperationType = %1) AS e ON e."_s.arg(static_cast<int>(host::TOperationType::DivisionEntry));
    return u"WITH up AS (SELECT v.ID, 0 AS Degree %1 UNION ALL SELECT e.SourceID, u.Degree - 1 FROM up AS u %2PartID = "
           "u.ID WHERE u.Degree > -%3), down AS (SELECT v.ID, 0 AS Degree, CAST(N'' AS nvarchar(900)) AS Path %1 UNION "
           "ALL SELECT e.PartID, u.Degree + 1, CAST(u.Path + RIGHT(N'000000000' + CAST(e.PartID AS nvarchar(10)), 10) AS "
           "nvarchar(900)) FROM down AS u %2SourceID = u.ID WHERE u.Degree < %3) "_s.arg(start, parts,
                                                                                         QString::number(MostDegrees));
}

} // namespace

void DetailHistoryData::Find(const QString &serialOrBarcode)
{
    const QString text = host::SerialText(serialOrBarcode);
    const QString from =
        u"SELECT d.DetailValueID AS ID, %1 AS Place FROM GoodDetailValueDetails AS d INNER JOIN DetailTypes "
        "AS t ON t.ID = d.DetailID AND t.DetailType IN (3, 6) WHERE d.[Value] %2"_s;
    Values_QRY.Open(ValuesText(from.arg(u"1"_s, u"= "_s + host::NQuotedStr(text)) + u" UNION ALL "_s +
                               from.arg(u"2"_s, u"LIKE "_s + host::NQuotedStr(u'%' + host::LikeText(text) + u'%'))));
}

void DetailHistoryData::OfLine(const QString &details)
{
    Values_QRY.Open(ValuesText(u"SELECT DetailValueID AS ID, 1 AS Place FROM (%1) AS d"_s.arg(details)));
}

void DetailHistoryData::Of(int detailValueId)
{
    OfLine(u"SELECT %1 AS DetailValueID"_s.arg(detailValueId));
}

void DetailHistoryData::Kin(int detailValueId)
{
    const QString known = u"%1, %2, %3"_s.arg(static_cast<int>(host::TOperationType::Purchase))
                              .arg(static_cast<int>(host::TOperationType::OpeningStock))
                              .arg(static_cast<int>(host::TOperationType::DivisionEntry));
    Kin_QRY.Open(
        KinTables(detailValueId) +
        u"SELECT TOP %1 f.ID AS DetailValueID, f.Degree, CASE WHEN f.Degree < 0 THEN N'بریده شده از' WHEN f.Degree = 0 "
        "THEN N'این واحد' ELSE N'قسمت' END AS Relation, REPLICATE(N'\u2003', f.Degree - m.Top1) + %2 AS Details, %3 AS Kind, "
        "CASE WHEN k.OperationType <> %4 THEN k.OperationCode END AS Number, k.Amount1 AS Amount, ISNULL((SELECT "
        "SUM(h.Amount1) FROM GoodDetailKardex AS h WHERE h.DetailValueID = f.ID), 0) AS OnHand, CASE WHEN p.Waste = 1 "
        "THEN N'ضایعات' END AS Waste FROM (SELECT ID, Degree, N'' AS Path FROM up WHERE Degree < 0 UNION ALL SELECT ID, "
        "Degree, Path FROM down) AS f CROSS JOIN (SELECT MIN(Degree) AS Top1 FROM up) AS m INNER JOIN GoodDetailValues AS "
        "v ON v.ID = f.ID LEFT JOIN GoodDetailKardex AS k ON k.ID = (SELECT TOP 1 o.ID FROM GoodDetailKardex AS o WHERE "
        "o.DetailValueID = f.ID AND o.Amount1 > 0 ORDER BY CASE WHEN o.OperationType IN (%5) THEN 0 ELSE 1 END, o.ID) "
        "LEFT JOIN GoodDetailDivisionDetailItems AS p ON k.OperationType = %6 AND p.DivisionCode = k.OperationCode AND "
        "p.OperationRow = k.OperationRow ORDER BY CASE WHEN f.Degree < 0 THEN f.Degree ELSE 0 END, f.Path"_s.arg(
            QString::number(MostKin), Joined, KindNames(),
            QString::number(static_cast<int>(host::TOperationType::OpeningStock)), known,
            QString::number(static_cast<int>(host::TOperationType::DivisionEntry))));
}

void DetailHistoryData::Movements(int detailValueId)
{
    // The opening stock comes first, whatever its date.
    const QString order = u"m.Later, m.Day, m.ID"_s;
    const QString running = u"SUM(m.Amount1) OVER (%1ORDER BY "_s + order + u" ROWS UNBOUNDED PRECEDING)"_s;
    Movements_QRY.Open(
        u"SELECT ROW_NUMBER() OVER (ORDER BY %9) AS Radif, m.Day AS [Date], m.Kind, CASE WHEN m.OperationType <> 3 THEN m.OperationCode END AS Number, "
        "s.Name AS StoreName, CASE WHEN m.Amount1 > 0 THEN m.Amount1 END AS In1, CASE WHEN m.Amount1 < 0 THEN -m.Amount1 "
        "END AS Out1, %1 AS StoreBalance, %2 AS Balance FROM (SELECT k.ID, k.StoreCode, k.OperationType, k.OperationCode, k.Amount1, CASE WHEN "
        "k.OperationType = 3 THEN 0 ELSE 1 END AS Later, %3 AS Kind, COALESCE(d.[Date], v.[Date], (SELECT TOP 1 [DATE] FROM inf_co)) AS Day FROM GoodDetailKardex AS k LEFT JOIN "
        "Documents AS d ON d.Kind = CASE k.OperationType WHEN %4 THEN %5 ELSE k.OperationType END AND d.Code = "
        "k.OperationCode LEFT JOIN GoodDetailDivision AS v ON k.OperationType IN (%6, %7) AND v.Code = k.OperationCode "
        "WHERE k.DetailValueID = %8) AS m INNER JOIN Stores AS s ON s.Code = m.StoreCode ORDER BY %9"_s.arg(
            running.arg(u"PARTITION BY m.StoreCode "_s), running.arg(QString()), KindNames(),
            QString::number(static_cast<int>(host::TOperationType::TransferIn)),
            QString::number(static_cast<int>(host::TOperationType::TransferOut)),
            QString::number(static_cast<int>(host::TOperationType::DivisionExit)),
            QString::number(static_cast<int>(host::TOperationType::DivisionEntry)), QString::number(detailValueId),
            order));
}

} // namespace desk
