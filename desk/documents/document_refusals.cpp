#include "desk/documents/document_refusals.h"

#include "desk/documents/document_kinds.h"
#include "desk/messages/catalogue.h"
#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"

#include <QHash>

#include <functional>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using Reason = host::TDetailRefusal::Reason;

/// As many as a message shows; the others are counted.
constexpr qsizetype ShownRefusals = 5;

QString Shown(Quantity quantity)
{
    return host::DisplayNumber(host::QuantityToText(quantity));
}

} // namespace

QString DocumentRefusals::AnsweringTitles(int kind, int code, const QString &before) const
{
    const DocumentKind *answering = AnsweringKind(kind);
    if (!answering)
        return {};
    QStringList titles;
    for (host::Query rows(
             m_connection,
             u"SELECT Code FROM Documents WHERE Kind = %1 AND AnswersCode = %2"_s.arg(answering->Number()).arg(code) +
                 (before.isEmpty() ? QString() : u" AND [Date] < "_s + host::QuotedStr(before)) + u" ORDER BY Code"_s);
         !rows.Eof(); rows.Next())
        titles << answering->Title(rows.Int(u"Code"));
    return titles.join(u"، ");
}

void DocumentRefusals::NothingAnswers() const
{
    const QString titles = AnsweringTitles(m_document.Kind, m_document.Code);
    if (!titles.isEmpty())
        throw DocumentRefused(
            MessageText(message::DocumentAnswered, {DocumentKindOf(m_document.Kind).Title(m_document.Code), titles}));
}

void DocumentRefusals::ReturnsFit() const
{
    const DocumentKind &kind = DocumentKindOf(m_document.Kind);
    if (kind.answers == 0) {
        MovedCovers(m_document.Kind, m_document.Code);
        NotAfterReturns();
        return;
    }
    if (m_document.AnswersCode == 0)
        return;
    const host::Query answered(
        m_connection,
        u"SELECT [Date] FROM Documents WITH (UPDLOCK, HOLDLOCK) WHERE Kind = %1 AND Code = %2"_s.arg(kind.answers)
            .arg(m_document.AnswersCode));
    const QString title = DocumentKindOf(kind.answers).Title(m_document.AnswersCode);
    if (answered.IsEmpty())
        throw DocumentRefused(MessageText(message::EntityGone, {title}));
    const QString date = answered.Text(u"Date"); // another desk may have moved it since it was chosen
    if (m_document.Date < date)
        throw DocumentRefused(MessageText(message::BeforeAnswered, {title, host::PersianDigits(date)}));
    MovedCovers(kind.answers, m_document.AnswersCode);
}

/// Nothing comes back before it went. A new document has no returns yet.
void DocumentRefusals::NotAfterReturns() const
{
    const QString earlier =
        m_document.Revision == 0 ? QString() : AnsweringTitles(m_document.Kind, m_document.Code, m_document.Date);
    if (!earlier.isEmpty())
        throw DocumentRefused(
            MessageText(message::DatedAfterReturn, {DocumentKindOf(m_document.Kind).Title(m_document.Code),
                                                    host::PersianDigits(m_document.Date), earlier}));
}

void DocumentRefusals::MovedCovers(int kind, int code) const
{
    const DocumentKind *answering = AnsweringKind(kind);
    if (!answering)
        return;
    // A second amount that follows from the first by a ratio is not judged: it is rounded line by line.
    const host::Query beyond(
        m_connection,
        u"SELECT TOP 1 g.Name AS GoodName, SUM(m.Moved) AS Moved, SUM(m.Returned) AS Returned, SUM(m.Moved2) AS Moved2, "
        "SUM(m.Returned2) AS Returned2 FROM (SELECT GoodCode, Amount1 AS Moved, Amount2 AS Moved2, 0 AS Returned, 0 AS "
        "Returned2 FROM DocumentLines WHERE Kind = %1 AND Code = %2 UNION ALL SELECT l.GoodCode, 0, 0, l.Amount1, "
        "l.Amount2 FROM Documents AS d INNER JOIN DocumentLines AS l ON l.Kind = d.Kind AND l.Code = d.Code WHERE d.Kind "
        "= %3 AND d.AnswersCode = %2) AS m INNER JOIN GoodInf AS g ON g.Code = m.GoodCode GROUP BY m.GoodCode, g.Name, "
        "g.Meghdar_Formool HAVING SUM(m.Returned) > SUM(m.Moved) OR g.Meghdar_Formool = 0 AND SUM(m.Returned2) > "
        "SUM(m.Moved2)"_s.arg(kind)
            .arg(code)
            .arg(answering->Number()));
    if (beyond.IsEmpty())
        return;
    const bool first = beyond.Number(u"Returned") > beyond.Number(u"Moved");
    throw DocumentRefused(MessageText(message::ReturnedBeyond,
                                      {beyond.Text(u"GoodName").trimmed(), DocumentKindOf(kind).Title(code),
                                       Shown(beyond.Number(first ? u"Moved" : u"Moved2")), AnsweringTitles(kind, code),
                                       Shown(beyond.Number(first ? u"Returned" : u"Returned2"))}));
}

void DocumentRefusals::StockLasts(const QString &moves) const
{
    const QString goods = u" IN (SELECT GoodCode FROM #DocumentGoods)"_s;
    const QString days =
        u"SELECT m.GoodCode, m.StoreCode, m.Day, SUM(m.Amount) AS Amount, SUM(m.Change) AS Change FROM (SELECT Kala AS "
        "GoodCode, Anbar AS StoreCode, [Date] AS Day, Amount1 AS Amount, CASE WHEN %1 THEN Amount1 ELSE 0 END AS Change "
        "FROM Kardex WHERE Kala%2 UNION ALL SELECT GoodCode, StoreCode, '', Amount1, 0 FROM GoodFirstAsset WHERE tmp = 0 "
        "AND GoodCode%2 UNION ALL SELECT GoodCode, StoreCode, Day, 0, -Amount1 FROM #DocumentBefore) AS m GROUP BY "
        "m.GoodCode, m.StoreCode, m.Day"_s.arg(moves, goods);
    const QString running = u"SUM(a.%1) OVER (PARTITION BY a.GoodCode, a.StoreCode ORDER BY a.Day ROWS UNBOUNDED "
                            "PRECEDING) AS %1"_s;
    const host::Query fall(
        m_connection, u"SELECT TOP 1 g.Name AS GoodName, s.Name AS StoreName, b.Day, b.Amount FROM (SELECT "
                      "a.GoodCode, a.StoreCode, a.Day, %1, %2 FROM (%3) AS a) AS b INNER JOIN GoodInf AS g ON g.Code "
                      "= b.GoodCode INNER JOIN Stores AS s ON s.Code = b.StoreCode WHERE b.Amount < 0 AND b.Change < "
                      "0 ORDER BY b.Day, b.GoodCode"_s.arg(running.arg(u"Amount"), running.arg(u"Change"), days));
    if (!fall.IsEmpty())
        throw DocumentRefused(MessageText(message::StockMinusOnDay,
                                          {fall.Text(u"GoodName").trimmed(), fall.Text(u"StoreName"),
                                           host::PersianDigits(fall.Text(u"Day")), Shown(fall.Number(u"Amount"))}));
}

void DocumentRefusals::DetailsFitLines() const
{
    const DocumentKind &kind = DocumentKindOf(m_document.Kind);
    const bool demanded = m_host.settings.SettingRecord().GoodDetails;
    const QString ledger =
        u" FROM GoodDetailKardex WHERE OperationType = %1 AND OperationCode = %2"_s.arg(kind.Number())
            .arg(m_document.Code);
    const QString has = u"l.OperationRow IN (SELECT OperationRow%1)"_s.arg(ledger);
    const QString judged =
        demanded ? u"(l.GoodCode IN (SELECT GoodCode FROM GoodDetailRelation) OR %1)"_s.arg(has) : has;
    const host::Query lacking(
        m_connection,
        u"SELECT TOP 1 g.Name AS GoodName FROM #DocumentLines AS l INNER JOIN GoodInf AS g ON g.Code = l.GoodCode LEFT "
        "JOIN (SELECT OperationRow, GoodCode, StoreCode, SUM(Amount1) AS Amount1%1 GROUP BY OperationRow, GoodCode, StoreCode) AS k "
        "ON k.OperationRow = l.OperationRow AND k.GoodCode = l.GoodCode AND k.StoreCode = l.StoreCode WHERE ISNULL(k.Amount1, 0) <> %2 * l.Amount1 AND "
        "%3 AND NOT EXISTS (SELECT 1 FROM #DocumentBefore AS b WHERE b.OperationRow = l.OperationRow AND b.GoodCode = "
        "l.GoodCode AND ABS(b.Amount1) = l.Amount1 AND (b.StoreCode = l.StoreCode OR NOT %4)) ORDER BY l.OperationRow"_s
            .arg(ledger, QString::number(kind.direction), judged, has));
    if (!lacking.IsEmpty())
        throw DocumentRefused(MessageText(demanded ? message::DetailsMissing : message::DetailsSettingOff,
                                          {lacking.Text(u"GoodName").trimmed()}));
}

namespace {

/// The rows of the ledger that tell who has a refused detail value: those of other documents, the last one at the end.
struct LedgerRow
{
    int StoreCode = 0;
    int OperationType = 0;
    int OperationCode = 0;
    bool In = false;
};

QString LastTitle(const QList<LedgerRow> &rows, const std::function<bool(const LedgerRow &)> &wanted)
{
    for (auto row = rows.crbegin(); row != rows.crend(); ++row) {
        if (wanted(*row))
            return OperationTitle(row->OperationType, row->OperationCode);
    }
    return {};
}

QString RefusalLine(const Document &document, const host::TDetailRefusal &refusal, const QString &good,
                    const QString &store, const QList<LedgerRow> &rows)
{
    const auto isReturn = [](const LedgerRow &row) {
        const DocumentKind *kind = FindDocumentKind(row.OperationType);
        return kind && kind->answers != 0;
    };
    const QString what = u"«%1» (%2)"_s.arg(refusal.Text, good);
    switch (refusal.reason) {
    case Reason::Gone: {
        const QString title =
            LastTitle(rows, [&](const LedgerRow &row) { return !row.In && row.StoreCode == refusal.StoreCode; });
        return title.isEmpty() ? MessageText(message::DetailGone, {what, store})
                               : MessageText(message::DetailTaken, {what, store, title});
    }
    case Reason::Repeated:
        return MessageText(message::DetailRepeated,
                           {what, LastTitle(rows, [](const LedgerRow &row) { return row.In; })});
    case Reason::NotOfDocument: {
        const DocumentKind &kind = DocumentKindOf(document.Kind);
        return MessageText(message::DetailNotOfDocument,
                           {what, DocumentKindOf(kind.answers).Title(document.AnswersCode)});
    }
    case Reason::Returned:
        return MessageText(message::DetailReturned, {what, LastTitle(rows, isReturn)});
    case Reason::Used:
        break; // parts of divisions: no document's own
    }
    return what;
}

} // namespace

QString DetailRefusalText(host::Host &host, const Document &document, const QList<host::TDetailRefusal> &refusals)
{
    const QSqlDatabase &connection = host.DM.ADOConnection1;
    const QList<host::TDetailRefusal> shown = refusals.first(qMin(ShownRefusals, refusals.size()));
    QStringList ids;
    QStringList goods{u"0"_s};
    for (const host::TDetailRefusal &refusal : shown) {
        ids << QString::number(refusal.DetailValueID);
        goods << QString::number(refusal.GoodCode);
    }
    const QString own =
        u"OperationType IN (%1, %2) AND OperationCode = %3"_s.arg(document.Kind)
            .arg(DocumentKindOf(document.Kind).IsTransfer() ? static_cast<int>(host::TOperationType::TransferIn)
                                                            : document.Kind)
            .arg(document.Code);
    QHash<int, QList<LedgerRow>> ledger;
    for (host::Query rows(connection,
                          u"SELECT DetailValueID, StoreCode, OperationType, OperationCode, CASE WHEN Amount1 "
                          "> 0 OR Amount3 > 0 THEN 1 ELSE 0 END AS CameIn FROM GoodDetailKardex WHERE "
                          "DetailValueID IN (%1) AND NOT (%2) ORDER BY ID"_s.arg(ids.join(u','), own));
         !rows.Eof(); rows.Next())
        ledger[rows.Int(u"DetailValueID")] << LedgerRow{rows.Int(u"StoreCode"), rows.Int(u"OperationType"),
                                                        rows.Int(u"OperationCode"), rows.Int(u"CameIn") > 0};
    QHash<int, QString> names;
    for (host::Query rows(connection,
                          u"SELECT Code, Name FROM GoodInf WHERE Code IN (%1) UNION ALL SELECT -Code, Name FROM "
                          "Stores"_s.arg(goods.join(u',')));
         !rows.Eof(); rows.Next())
        names[rows.Int(u"Code")] = rows.Text(u"Name").trimmed();
    QStringList lines;
    for (const host::TDetailRefusal &refusal : shown)
        lines << RefusalLine(document, refusal, names.value(refusal.GoodCode), names.value(-refusal.StoreCode),
                             ledger.value(refusal.DetailValueID));
    if (refusals.size() > shown.size())
        lines << MessageText(message::MoreRefusals,
                             {host::PersianDigits(QString::number(refusals.size() - shown.size()))});
    return lines.join(u'\n');
}

} // namespace desk
