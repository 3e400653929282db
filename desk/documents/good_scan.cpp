#include "desk/documents/good_scan.h"

#include "desk/documents/document_store.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/services/good_detail_records.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

/// Digits of the longest code.
constexpr int MostCodeDigits = 6;

constexpr int SerialDetail = 3;

/// "3*626…": the count before the star; 1 and the whole text without one.
std::pair<Quantity, QString> SplitCount(const QString &typed)
{
    const qsizetype star = typed.indexOf(u'*');
    const auto count = star > 0 ? host::ParseQuantity(typed.first(star)) : std::nullopt;
    if (!count || *count <= 0)
        return {1, typed};
    return {*count, typed.sliced(star + 1)};
}

bool IsCode(const QString &text)
{
    return !text.isEmpty() && text.size() <= MostCodeDigits &&
           std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// One row for each meaning, the first of which holds: Place, DetailValueID and the good. Two goods of a name cancel
/// out.
QString MeaningsText(const QString &text)
{
    const QString literal = host::NQuotedStr(text);
    const QString barcode = host::NQuotedStr(u"%!"_s + host::LikeText(text) + u"!%"_s);
    QString meanings =
        u"SELECT 2 AS Place, g.Code, 0 AS DetailValueID, 0 AS DetailType FROM GoodInf AS g WHERE g.AbbName LIKE %1 UNION ALL SELECT CASE "
        "WHEN ISNULL((SELECT SUM(k.Amount1) FROM GoodDetailKardex AS k WHERE k.DetailValueID = v.ID), 0) > 0 THEN 3 ELSE "
        "4 END, v.GoodCode, v.ID, t.DetailType FROM GoodDetailValueDetails AS d INNER JOIN DetailTypes AS t ON t.ID = d.DetailID AND "
        "t.DetailType IN (3, 6) INNER JOIN GoodDetailValues AS v ON v.ID = d.DetailValueID WHERE d.[Value] = %2 UNION "
        "ALL SELECT 5, MIN(g.Code), 0, 0 FROM GoodInf AS g WHERE g.Name LIKE %3 HAVING COUNT(*) = 1"_s.arg(
            barcode, literal, host::NQuotedStr(u"%"_s + host::LikeText(text) + u"%"_s));
    if (IsCode(text))
        meanings.prepend(
            u"SELECT 1 AS Place, g.Code, 0 AS DetailValueID, 0 AS DetailType FROM GoodInf AS g WHERE g.Code = %1 UNION ALL "_s
                .arg(text.toInt()));
    return meanings;
}

} // namespace

std::optional<GoodScan> ResolveScan(const QSqlDatabase &connection, const QString &typed)
{
    const auto [count, rest] = SplitCount(typed);
    const QString text = host::SerialText(rest);
    if (text.isEmpty())
        return std::nullopt;
    const host::Query row(connection,
                          u"SELECT TOP 1 m.Place, m.DetailValueID, m.DetailType, "_s + DocumentGoodText() +
                              u" FROM (%1) AS m INNER JOIN GoodInf AS g ON g.Code = m.Code LEFT JOIN Units "
                              "AS u1 ON u1.Code = g.Unit LEFT JOIN Units AS u2 ON u2.Code = g.Unit2 ORDER BY "
                              "m.Place, m.DetailValueID"_s.arg(MeaningsText(text)));
    if (row.IsEmpty())
        return std::nullopt;
    GoodScan scan;
    const int place = row.Int(u"Place");
    if (place == 2)
        scan.how = GoodScan::How::Barcode;
    else if (place == 3 || place == 4)
        scan.how = row.Int(u"DetailType") == SerialDetail ? GoodScan::How::Serial : GoodScan::How::Detail;
    scan.Good = DocumentGoodOf(row);
    scan.DetailValueID = row.Int(u"DetailValueID");
    scan.Count = count;
    return scan;
}

bool LineHasDetail(const QSqlDatabase &connection, const QString &details, int detailValueId)
{
    return host::Exists(connection, u"SELECT TOP 1 d.DetailValueID FROM (%1) AS d WHERE d.DetailValueID = %2"_s.arg(
                                        details, QString::number(detailValueId)));
}

Quantity ProposedPrice(const QSqlDatabase &connection, int side, int goodCode)
{
    if (side < 0)
        return 0;
    const host::Query price(connection,
                            u"Exec GetDefaultCostLevel @Side = %1, @GoodCode = %2"_s.arg(side).arg(goodCode));
    return price.IsEmpty() ? Quantity(0) : price.Number(u"cost");
}

} // namespace desk
