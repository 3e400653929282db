#include "desk/documents/document_list_data.h"

#include "desk/documents/document_kinds.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

QString KindNames(const QString &kind, bool answered)
{
    QString text = u"CASE "_s + kind;
    for (const DocumentKind &each : AllDocumentKinds()) {
        const DocumentKind *named = answered ? FindDocumentKind(each.answers) : &each;
        if (named)
            text += u" WHEN %1 THEN "_s.arg(each.Number()) + host::NQuotedStr(named->name);
    }
    return text + u" END"_s;
}

} // namespace

QString DateLiteral(const QString &date)
{
    static const QRegularExpression stored(u"^\\d{4}/\\d{2}/\\d{2}$"_s);
    if (!stored.match(date).hasMatch())
        throw host::RefusedText(u"تاریخ"_s, date);
    return host::QuotedStr(date);
}

DocumentListData::DocumentListData(const QSqlDatabase &connection) : Documents_QRY(connection)
{
    Documents_QRY.ReadInBlocks();
}

void DocumentListData::Open(const DocumentFilter &filter)
{
    QStringList kinds{u"0"_s};
    for (const int kind : filter.Kinds)
        kinds << QString::number(kind);
    QString where = u" WHERE d.Kind IN (%1)"_s.arg(kinds.join(u','));
    if (!filter.FromDate.isEmpty())
        where += u" AND d.[Date] >= "_s + DateLiteral(filter.FromDate);
    if (!filter.ToDate.isEmpty())
        where += u" AND d.[Date] <= "_s + DateLiteral(filter.ToDate);
    const QString sums =
        u" INNER JOIN (SELECT Kind, Code, COUNT(*) AS Lines, SUM(Amount1) AS Amount1, SUM(CAST(Amount1 * Price AS "
        "decimal(38,9))) AS Total FROM DocumentLines GROUP BY Kind, Code) AS l ON l.Kind = d.Kind AND l.Code = d.Code"_s;
    Documents_QRY.Open(
        u"SELECT CAST(d.Kind AS nvarchar(3)) + N'-' + CAST(d.Code AS nvarchar(11)) AS DocumentKey, d.Kind, d.Code, "
        "d.[Date], s.Name AS StoreName, t.Name AS ToStoreName, d.AnswersCode, d.Comment, d.UserCreated, d.UserModified, "
        "l.Lines, l.Amount1, l.Total, "_s +
        KindNames(u"d.Kind"_s, false) + u" AS KindName, CASE WHEN d.AnswersCode <> 0 THEN "_s +
        KindNames(u"d.Kind"_s, true) +
        u" + N' ' + CAST(d.AnswersCode AS nvarchar(11)) END AS Answers FROM Documents AS d INNER JOIN Stores AS s ON "
        "s.Code = d.StoreCode LEFT JOIN Stores AS t ON t.Code = d.ToStoreCode"_s +
        sums + where + u" ORDER BY d.[Date] DESC, d.Kind, d.Code DESC"_s);
    if (Documents_QRY.FetchedAll())
        return;
    const host::Query all(Documents_QRY.Connection(),
                          u"SELECT COUNT(*) AS Documents, SUM(l.Total) AS Total FROM Documents AS d"_s + sums + where);
    Count = all.Int(u"Documents");
    Total = all.Number(u"Total");
}

} // namespace desk
