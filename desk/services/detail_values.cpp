#include "desk/services/detail_values.h"

#include "desk/services/detail_sql.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::DetailOwner;
using host::NQuotedStr;

constexpr int SerialKind = 3;
constexpr int BarcodeKind = 6;

/// The place of the first value that is given; behind the last when there is none.
size_t FirstGiven(const host::TDetailValues &details)
{
    const auto given = std::find_if(details.Values.cbegin(), details.Values.cend(),
                                    [](const QString &value) { return !value.isEmpty(); });
    return static_cast<size_t>(given - details.Values.cbegin());
}

QString FindText(int goodCode, const CleanedDetails &wanted)
{
    const auto &[details, hasOwnText] = wanted;
    // Locked, so that nobody makes another: the few owners of a serial, otherwise the values of the good.
    const QString from =
        hasOwnText ? u"GoodDetailValueDetails AS d WITH (UPDLOCK, HOLDLOCK) INNER JOIN GoodDetailValues AS v ON v.ID = "
                     "d.DetailValueID WHERE d.[Value] = %1 AND d.DetailID = %2 AND "_s.arg(
                         NQuotedStr(details.Values[FirstGiven(details)]),
                         QString::number(details.DetailIDs[FirstGiven(details)]))
                   : u"GoodDetailValues AS v WITH (UPDLOCK, HOLDLOCK) WHERE "_s;
    return u"SELECT MIN(v.ID) FROM "_s + from + u"v.GoodCode = %1 AND "_s.arg(goodCode) +
           detail_sql::HasDetails(u"v.ID"_s, details);
}

/// Parked and noted rows (DetailValueID below 0) need their values as well. What others are about to take out is not
/// looked for by an index: few rows are chosen at a time.
QString UnusedText(const QString &ids)
{
    const QString none = u" AND NOT EXISTS (SELECT 1 FROM %1 AS u WHERE u.DetailValueID %2)"_s;
    QString unused = none.arg(u"GoodDetailKardexEnter_Temp"_s, u"IN (GoodDetailValues.ID, -GoodDetailValues.ID)"_s);
    for (const QString &table : {u"GoodDetailKardex"_s, u"GoodDetailDivisionDetail"_s})
        unused += none.arg(table, u"= GoodDetailValues.ID"_s);
    return u"DELETE FROM GoodDetailValues WHERE ID IN (%1)"_s.arg(ids) + unused +
           u" AND ID NOT IN (SELECT x.DetailValueID FROM GoodDetailKardexExit_Temp AS x WHERE x.DetailValueID IS NOT "
           "NULL AND x.Selected = 1)"_s;
}

} // namespace

CleanedDetails CleanDetails(const QSqlDatabase &connection, const host::TDetailValues &details)
{
    CleanedDetails cleaned{details, false};
    auto &[ids, values] = cleaned.Details;
    QStringList asked;
    for (size_t i = 0; i < ids.size(); ++i) {
        if (ids[i] == 0)
            values[i].clear();
        asked << QString::number(ids[i]);
    }
    QSet<int> own;
    for (host::Query kinds(connection,
                           u"SELECT ID FROM DetailTypes WHERE DetailType IN (%1, %2) AND ID IN (%3)"_s.arg(
                               QString::number(SerialKind), QString::number(BarcodeKind), asked.join(u',')));
         !kinds.Eof(); kinds.Next())
        own << kinds.Int(u"ID");
    for (size_t i = 0; i < ids.size(); ++i)
        if (own.contains(ids[i]))
            values[i] = host::SerialText(values[i]);
    const size_t first = FirstGiven(cleaned.Details);
    cleaned.HasOwnText = first < ids.size() && own.contains(ids[first]);
    return cleaned;
}

DetailValues::DetailValues(const QSqlDatabase &connection, const host::SettingsService &settings)
    : m_connection(connection), m_settings(settings)
{}

host::TDetailValues DetailValues::DetailsOf(int goodCode)
{
    host::TDetailValues details;
    host::Query rows(
        m_connection,
        u"SELECT r.DetailID FROM GoodDetailRelation AS r INNER JOIN DetailTypes AS t ON t.ID = r.DetailID "
        "WHERE r.GoodCode = %1 ORDER BY CASE t.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 END, r.ID"_s.arg(
            goodCode));
    for (size_t i = 0; i < details.DetailIDs.size() && !rows.Eof(); ++i, rows.Next())
        details.DetailIDs[i] = rows.Int(u"DetailID");
    return details;
}

int DetailValues::FindDetailValue(int goodCode, const host::TDetailValues &details)
{
    return host::Scalar(m_connection, FindText(goodCode, CleanDetails(m_connection, details))).toInt();
}

int DetailValues::ResolveDetailValue(int goodCode, const host::TDetailValues &details)
{
    const CleanedDetails cleaned = CleanDetails(m_connection, details);
    const host::TDetailValues &wanted = cleaned.Details;
    host::Transaction transaction(m_connection);
    int id = host::Scalar(m_connection, FindText(goodCode, cleaned)).toInt();
    if (id == 0) {
        id = host::Scalar(m_connection,
                          u"INSERT INTO GoodDetailValues (GoodCode) OUTPUT INSERTED.ID VALUES (%1)"_s.arg(goodCode))
                 .toInt();
        QStringList rows;
        for (size_t i = 0; i < wanted.Values.size(); ++i)
            if (!wanted.Values[i].isEmpty())
                rows << u"(%1, %2, %3)"_s.arg(QString::number(id), QString::number(wanted.DetailIDs[i]),
                                              NQuotedStr(wanted.Values[i]));
        if (!rows.isEmpty())
            host::Run(m_connection, u"INSERT INTO GoodDetailValueDetails (DetailValueID, DetailID, [Value]) VALUES "_s +
                                        rows.join(u", "));
    }
    transaction.Commit();
    return id;
}

bool DetailValues::DeleteUnusedDetailValue(int detailValueId)
{
    return host::Exec(m_connection, UnusedText(QString::number(detailValueId))) > 0;
}

void DetailValues::DeleteUnusedDetailValuesAmong(const QString &ids)
{
    host::Run(m_connection, UnusedText(ids));
}

void DetailValues::DeleteUnusedDetailValues(const QList<int> &detailValueIds)
{
    constexpr qsizetype InBlock = 1000;
    for (qsizetype at = 0; at < detailValueIds.size(); at += InBlock) {
        QStringList block;
        for (const int id : detailValueIds.mid(at, InBlock))
            block << QString::number(id);
        DeleteUnusedDetailValuesAmong(block.join(u','));
    }
}

std::optional<host::TKnownDetail> DetailValues::FindByText(int goodCode, const QString &serialOrBarcode)
{
    const host::Query found(
        m_connection,
        u"SELECT TOP 1 v.ID, (SELECT ISNULL(SUM(k.Amount1), 0) FROM GoodDetailKardex AS k WHERE k.DetailValueID = "
        "v.ID) AS OnHand FROM GoodDetailValueDetails AS d INNER JOIN DetailTypes AS t ON t.ID = d.DetailID AND "
        "t.DetailType IN (3, 6) INNER JOIN GoodDetailValues AS v ON v.ID = d.DetailValueID WHERE v.GoodCode = %1 AND "
        "d.[Value] = %2 ORDER BY OnHand DESC, v.ID"_s.arg(QString::number(goodCode),
                                                          NQuotedStr(host::SerialText(serialOrBarcode))));
    if (found.IsEmpty())
        return std::nullopt;
    host::TKnownDetail known;
    known.DetailValueID = found.Int(u"ID");
    known.GoodCode = goodCode;
    known.OnHand = found.Number(u"OnHand");
    known.Details = DetailsOf(goodCode);
    for (host::Query values(
             m_connection,
             u"SELECT DetailID, [Value] AS Title FROM GoodDetailValueDetails WHERE DetailValueID = %1"_s.arg(
                 known.DetailValueID));
         !values.Eof(); values.Next()) {
        const auto &ids = known.Details.DetailIDs;
        const auto place = std::find(ids.cbegin(), ids.cend(), values.Int(u"DetailID"));
        if (place != ids.cend())
            known.Details.Values[static_cast<size_t>(place - ids.cbegin())] = values.Text(u"Title");
    }
    return known;
}

DetailOwner DetailValues::OwnerByValue(int goodCode, int kind, const QString &text)
{
    host::Query owners(m_connection,
                       u"SELECT DISTINCT v.GoodCode FROM GoodDetailValueDetails AS d INNER JOIN DetailTypes AS t ON "
                       "t.ID = d.DetailID AND t.DetailType = %1 INNER JOIN GoodDetailValues AS v ON v.ID = "
                       "d.DetailValueID WHERE d.[Value] = %2"_s.arg(QString::number(kind), NQuotedStr(text)));
    DetailOwner owner = DetailOwner::Nobody;
    for (; !owners.Eof(); owners.Next()) {
        if (owners.Int(u"GoodCode") != goodCode)
            return DetailOwner::OtherGood;
        owner = DetailOwner::ThisGood;
    }
    return owner;
}

DetailOwner DetailValues::SerialOwner(int goodCode, const QString &serial)
{
    const QString text = host::SerialText(serial);
    return text.isEmpty() ? DetailOwner::Nobody : OwnerByValue(goodCode, SerialKind, text);
}

DetailOwner DetailValues::BarcodeOwner(int goodCode, const QString &barcode)
{
    const QString text = host::SerialText(barcode);
    if (text.isEmpty())
        return DetailOwner::Nobody;
    const DetailOwner owner = OwnerByValue(goodCode, BarcodeKind, text);
    const QString among = u"%!"_s + host::LikeText(text) + u"!%"_s;
    if (owner == DetailOwner::OtherGood ||
        host::Exists(m_connection,
                     u"SELECT TOP 1 Code FROM GoodInf WHERE Code <> %1 AND (AbbName LIKE %2 OR AbbName = %3)"_s.arg(
                         QString::number(goodCode), NQuotedStr(among), NQuotedStr(text))))
        return DetailOwner::OtherGood;
    const auto &reserved = m_settings.SettingRecord().ReservedBarcodes;
    return std::find(reserved.cbegin(), reserved.cend(), text) == reserved.cend() ? owner
                                                                                  : DetailOwner::OperationBarcode;
}

} // namespace desk
