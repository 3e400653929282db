#include "desk/services/detail_values.h"

#include "desk/services/detail_sql.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::DetailOwner;
using host::NQuotedStr;

constexpr int SerialKind = 3;
constexpr int BarcodeKind = 6;

/// Without values of details that the good does not have.
host::TDetailValues Cleaned(const host::TDetailValues &details)
{
    host::TDetailValues cleaned = details;
    for (size_t i = 0; i < cleaned.Values.size(); ++i)
        if (cleaned.DetailIDs[i] == 0)
            cleaned.Values[i].clear();
    return cleaned;
}

/// No document, saved or not, refers to the row of GoodDetailValues.
QString Unused()
{
    QString unused;
    for (const QString &table : {u"GoodDetailKardex"_s, u"GoodDetailKardexEnter_Temp"_s, u"GoodDetailDivisionDetail"_s,
                                 u"GoodDetailDivisionDetailItems"_s})
        unused += u" AND NOT EXISTS (SELECT 1 FROM %1 AS u WHERE u.DetailValueID = GoodDetailValues.ID)"_s.arg(table);
    return unused;
}

QString FindText(int goodCode, const host::TDetailValues &details)
{
    const QString good = QString::number(goodCode);
    const auto given = std::find_if(details.Values.cbegin(), details.Values.cend(),
                                    [](const QString &value) { return !value.isEmpty(); });
    if (given == details.Values.cend())
        return u"SELECT MIN(v.ID) FROM GoodDetailValues AS v WHERE v.GoodCode = "_s + good + u" AND "_s +
               detail_sql::HasDetails(u"v.ID"_s, details);
    // From the first value, a serial where there is one, to its few owners; locked, so that nobody makes another.
    const auto place = static_cast<size_t>(given - details.Values.cbegin());
    return u"SELECT MIN(v.ID) FROM GoodDetailValueDetails AS d WITH (UPDLOCK, HOLDLOCK) INNER JOIN GoodDetailValues AS "
           "v ON v.ID = d.DetailValueID WHERE d.[Value] = %1 AND d.DetailID = %2 AND v.GoodCode = "_s.arg(
               NQuotedStr(*given), QString::number(details.DetailIDs[place])) +
           good + u" AND "_s + detail_sql::HasDetails(u"v.ID"_s, details);
}

} // namespace

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
    return host::Scalar(m_connection, FindText(goodCode, Cleaned(details))).toInt();
}

int DetailValues::ResolveDetailValue(int goodCode, const host::TDetailValues &details)
{
    const host::TDetailValues wanted = Cleaned(details);
    host::Transaction transaction(m_connection);
    int id = FindDetailValue(goodCode, wanted);
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
    return host::Exec(m_connection, u"DELETE FROM GoodDetailValues WHERE ID = %1"_s.arg(detailValueId) + Unused()) > 0;
}

void DetailValues::DeleteUnusedDetailValues(const QList<int> &detailValueIds)
{
    constexpr qsizetype InBlock = 1000;
    for (qsizetype at = 0; at < detailValueIds.size(); at += InBlock) {
        QStringList block;
        for (const int id : detailValueIds.mid(at, InBlock))
            block << QString::number(id);
        host::Run(m_connection, u"DELETE FROM GoodDetailValues WHERE ID IN (%1)"_s.arg(block.join(u',')) + Unused());
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
