#include "desk/services/detail_movements.h"
#include "desk/services/detail_sql.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

#include <QHash>

using namespace Qt::StringLiterals;

// The ledger: documents saved and deleted, what was returned.

namespace desk {

namespace {

using detail_sql::SameLine;
using host::TDetailRefusal;
using host::TDocumentLine;

/// More than a message can show.
constexpr int MostRefusals = 100;

QString Operation(quint8 type, int code, const QString &prefix = {})
{
    return u"%1OperationType = %2 AND %1OperationCode = %3"_s.arg(prefix).arg(type).arg(code);
}

/// Later rows of returns that name this document.
QString ReturnedBy(const TDocumentLine &line)
{
    return u" FROM GoodDetailKardex AS k INNER JOIN GoodDetailKardex AS r ON r.DetailValueID = k.DetailValueID WHERE "_s +
           SameLine(line, u"k."_s) +
           u" AND r.ForeignOperationCode = %1 AND r.ForeignOperationCode <> 0 AND r.OperationType = CASE k.OperationType "
           "WHEN %2 THEN %3 WHEN %4 THEN %5 END AND (SIGN(r.Amount1) = -SIGN(k.Amount1) AND r.Amount1 <> 0 OR "
           "SIGN(r.Amount3) = -SIGN(k.Amount3) AND r.Amount3 <> 0)"_s.arg(line.OperationCode)
               .arg(detail_sql::Purchase)
               .arg(detail_sql::PurchaseReturn)
               .arg(detail_sql::Sale)
               .arg(detail_sql::SaleReturn);
}

const QString Columns = u"DetailValueID, StoreCode, GoodCode, Amount1, Amount2, TotalAmount, [Length], Width, Amount3, "
                        "OperationType, OperationCode, OperationRow, ForeignOperationCode"_s;

} // namespace

QList<int> DetailMovements::ReturnedDetailValues(const TDocumentLine &line)
{
    QList<int> values;
    for (host::Query rows(m_connection, u"SELECT DISTINCT k.DetailValueID"_s + ReturnedBy(line)); !rows.Eof();
         rows.Next())
        values << rows.Int(u"DetailValueID");
    return values;
}

bool DetailMovements::IsReturned(const TDocumentLine &line, int detailValueId)
{
    return host::Exists(m_connection,
                        u"SELECT TOP 1 k.ID"_s + ReturnedBy(line) + u" AND k.DetailValueID = %1"_s.arg(detailValueId));
}

std::optional<host::TAmounts> DetailMovements::Returnable(const TDocumentLine &line, int detailValueId)
{
    const host::Query sums(m_connection, u"SELECT * FROM ("_s + detail_sql::Returnable(line, m_desk.Number()) +
                                             u") AS s WHERE s.DetailValueID = %1"_s.arg(detailValueId));
    if (sums.IsEmpty())
        return std::nullopt;
    return host::TAmounts{sums.Number(u"Amount1"), sums.Number(u"Amount2"), sums.Number(u"TotalAmount"),
                          sums.Number(u"Length"),  sums.Number(u"Width"),   sums.Number(u"Amount3")};
}

/// Notes the detail values that are about to move, and keeps other desks from moving them until the transaction ends.
void DetailMovements::Touch(const QString &rows)
{
    Run(u"IF OBJECT_ID('tempdb..#DetailTouched') IS NOT NULL DROP TABLE #DetailTouched"_s);
    Run(u"CREATE TABLE #DetailTouched (DetailValueID int NOT NULL, StoreCode int NOT NULL, Had decimal(38,9) NOT NULL DEFAULT 0)"_s);
    Run(u"INSERT INTO #DetailTouched (DetailValueID, StoreCode) SELECT DISTINCT m.DetailValueID, m.StoreCode FROM (%1) "
        "AS m INNER JOIN GoodDetailValues AS v WITH (UPDLOCK, HOLDLOCK) ON v.ID = m.DetailValueID"_s.arg(rows));
    Run(u"UPDATE t SET Had = s.Amount1 FROM #DetailTouched AS t INNER JOIN (SELECT DetailValueID, SUM(Amount1) AS Amount1 "
        "FROM GoodDetailKardex WHERE DetailValueID IN (SELECT DetailValueID FROM #DetailTouched) GROUP BY "
        "DetailValueID) AS s ON s.DetailValueID = t.DetailValueID"_s);
}

/// Two desks may return the same sale under serials of their own: they meet at its rows.
void DetailMovements::HoldAnswered(quint8 operationType, const QString &entered, const QString &chosen)
{
    if (operationType != detail_sql::SaleReturn && operationType != detail_sql::PurchaseReturn)
        return;
    Run(u"IF OBJECT_ID('tempdb..#DetailAnswered') IS NOT NULL DROP TABLE #DetailAnswered"_s);
    Run(u"CREATE TABLE #DetailAnswered (ID int NOT NULL)"_s);
    Run(u"INSERT INTO #DetailAnswered (ID) SELECT ID FROM GoodDetailKardex WITH (UPDLOCK, HOLDLOCK) WHERE OperationType = "
        "%1 AND OperationCode IN (SELECT ForeignOperationCode%2 UNION ALL SELECT ForeignOperationCode%3)"_s.arg(
            QString::number(operationType == detail_sql::SaleReturn ? detail_sql::Sale : detail_sql::Purchase), entered,
            chosen));
}

/// What comes back of a sale under whatever serials: for each combination of the other details no more than it sold.
QString DetailMovements::ReturnsBeyondCombination(quint8 operationType, int operationCode)
{
    const bool isReturn = operationType == detail_sql::SaleReturn;
    if (!isReturn && operationType != detail_sql::Sale)
        return {};
    // Most sales are saved before anything comes back.
    if (!isReturn && !host::Exists(m_connection, u"SELECT TOP 1 ID FROM GoodDetailKardex WHERE OperationType = %1 AND "
                                                 "ForeignOperationCode = %2"_s.arg(detail_sql::SaleReturn)
                                                     .arg(operationCode)))
        return {};
    const QString named = isReturn ? u"SELECT DISTINCT ForeignOperationCode AS Code FROM GoodDetailKardex WHERE "
                                     "ForeignOperationCode <> 0 AND "_s +
                                         Operation(operationType, operationCode)
                                   : u"SELECT %1 AS Code"_s.arg(operationCode);
    // Told is what this return brings, not what another one has brought before.
    const QString own = isReturn ? u"CASE WHEN k.OperationType = %1 AND k.OperationCode = %2 THEN k.DetailValueID END"_s
                                       .arg(operationType)
                                       .arg(operationCode)
                                 : u"CAST(NULL AS int)"_s;
    const QString row = u"SELECT n.Code, k.DetailValueID, "_s + own +
                        u" AS Own, k.GoodCode, -k.Amount1 AS Amount1, -k.Amount2 AS Amount2, "
                        "-k.Amount3 AS Amount3 FROM (%1) AS n INNER JOIN GoodDetailKardex AS k ON k.OperationType = %2 "
                        "AND k.%3 = n.Code"_s;
    const QString rows = row.arg(named, QString::number(detail_sql::Sale), u"OperationCode"_s) + u" UNION ALL "_s +
                         row.arg(named, QString::number(detail_sql::SaleReturn), u"ForeignOperationCode"_s);
    QStringList keys;
    QStringList places;
    for (int place = 1; place <= host::MostDetails; ++place) {
        keys << u"c.T%1"_s.arg(place);
        places << u"MAX(CASE WHEN p.Place = %1 THEN d.[Value] END) AS T%1"_s.arg(place);
    }
    return u"SELECT TOP %1 %2 AS Reason, ISNULL(MAX(r.Own), MAX(r.DetailValueID)) AS DetailValueID, r.GoodCode, 0 AS StoreCode FROM (%3) AS r "
           "LEFT JOIN (SELECT d.DetailValueID, %4 FROM GoodDetailValueDetails AS d INNER JOIN GoodDetailValues AS v ON "
           "v.ID = d.DetailValueID INNER JOIN (SELECT o.GoodCode, o.DetailID, ROW_NUMBER() OVER (PARTITION BY o.GoodCode "
           "ORDER BY o.ID) AS Place FROM GoodDetailRelation AS o INNER JOIN DetailTypes AS t ON t.ID = o.DetailID AND "
           "t.DetailType <> 3) AS p ON p.GoodCode = v.GoodCode AND p.DetailID = d.DetailID WHERE d.DetailValueID IN "
           "(SELECT w.DetailValueID FROM (%3) AS w) GROUP BY d.DetailValueID) AS c ON c.DetailValueID = r.DetailValueID "
           "GROUP BY r.Code, r.GoodCode, %5 HAVING SUM(r.Amount1) < 0 OR SUM(r.Amount2) < 0 OR %6 < 0"_s.arg(
               QString::number(MostRefusals),
               QString::number(static_cast<int>(isReturn ? TDetailRefusal::Reason::NotOfDocument
                                                         : TDetailRefusal::Reason::Returned)),
               rows, places.join(u", "), keys.join(u", "), detail_sql::Pieces(u"r."_s));
}

/// Returns and the document that they name, whichever of them is being saved: a value that comes back more than it went
/// (or goes back more than it came). A sold good may come back under a new serial, which its sale does not know.
QString DetailMovements::ReturnsBeyondDocument(quint8 operationType, int operationCode)
{
    const bool ofSale = operationType == detail_sql::Sale || operationType == detail_sql::SaleReturn;
    const bool ofPurchase = operationType == detail_sql::Purchase || operationType == detail_sql::PurchaseReturn;
    if (!ofSale && !ofPurchase)
        return {};
    const int source = ofSale ? detail_sql::Sale : detail_sql::Purchase;
    const int answer = ofSale ? detail_sql::SaleReturn : detail_sql::PurchaseReturn;
    const bool isReturn = operationType == answer;
    const QString named =
        isReturn ? u"SELECT DISTINCT DetailValueID, ForeignOperationCode AS Code FROM GoodDetailKardex WHERE "
                   "ForeignOperationCode <> 0 AND "_s +
                       Operation(operationType, operationCode)
                 : u"SELECT DISTINCT DetailValueID, %1 AS Code FROM #DetailTouched"_s.arg(operationCode);
    const QString beyond = u"%1%2 < 0"_s;
    const QString sign = ofSale ? u"-"_s : QString();
    const auto rowsOf = [](int type) {
        return u" AND SUM(CASE WHEN k.OperationType = %1 THEN 1 ELSE 0 END) > 0"_s.arg(type);
    };
    const QString which = !isReturn ? rowsOf(answer) : ofSale ? rowsOf(source) : QString();
    return u"SELECT TOP %1 %2 AS Reason, k.DetailValueID, MAX(k.GoodCode) AS GoodCode, 0 AS StoreCode FROM (%3) AS n "
           "INNER JOIN GoodDetailKardex AS k ON k.DetailValueID = n.DetailValueID AND (k.OperationType = %4 AND "
           "k.OperationCode = n.Code OR k.OperationType = %5 AND k.ForeignOperationCode = n.Code) GROUP BY "
           "k.DetailValueID, n.Code HAVING ("_s.arg(
               QString::number(MostRefusals),
               QString::number(static_cast<int>(isReturn ? TDetailRefusal::Reason::NotOfDocument
                                                         : TDetailRefusal::Reason::Returned)),
               named, QString::number(source), QString::number(answer)) +
           QStringList{beyond.arg(sign, u"SUM(k.Amount1)"_s), beyond.arg(sign, u"SUM(k.Amount2)"_s),
                       beyond.arg(sign, detail_sql::Pieces(u"k."_s))}
               .join(u" OR ") +
           u')' + which;
}

QList<TDetailRefusal> DetailMovements::Refusals(quint8 operationType, int operationCode)
{
    // Reason, DetailValueID, GoodCode, StoreCode
    const QString gone =
        u"SELECT TOP %1 0 AS Reason, k.DetailValueID, MAX(k.GoodCode) AS GoodCode, k.StoreCode FROM #DetailTouched AS t "
        "INNER JOIN GoodDetailKardex AS k ON k.DetailValueID = t.DetailValueID AND k.StoreCode = t.StoreCode GROUP BY "
        "k.DetailValueID, k.StoreCode HAVING SUM(k.Amount1) < 0 OR SUM(k.Amount2) < 0 OR %2 < 0"_s.arg(
            QString::number(MostRefusals), detail_sql::Pieces(u"k."_s));
    // A serial is on hand once. One that has an amount (a roll) may come in again in parts, up to what one entry
    // brought.
    const QString repeated =
        u"SELECT TOP %1 1 AS Reason, s.DetailValueID, s.GoodCode, 0 AS StoreCode FROM (SELECT e.DetailValueID, "
        "MAX(e.GoodCode) AS GoodCode, SUM(e.Amount1) AS OnHand, MAX(e.Amount1) AS Most FROM (SELECT k.DetailValueID, "
        "MAX(k.GoodCode) AS GoodCode, SUM(k.Amount1) AS Amount1 FROM GoodDetailKardex AS k WHERE k.DetailValueID IN "
        "(SELECT DetailValueID FROM #DetailTouched) GROUP BY k.DetailValueID, k.OperationType, k.OperationCode, "
        "k.OperationRow) AS e GROUP BY e.DetailValueID) AS s INNER JOIN (SELECT DetailValueID, MAX(Had) AS Had FROM "
        "#DetailTouched GROUP BY DetailValueID) AS t ON t.DetailValueID = s.DetailValueID WHERE s.OnHand > t.Had AND "
        "s.OnHand > s.Most AND EXISTS (SELECT 1 FROM GoodDetailValueDetails AS d INNER JOIN DetailTypes AS y ON y.ID = "
        "d.DetailID AND y.DetailType = 3 WHERE d.DetailValueID = s.DetailValueID)"_s.arg(MostRefusals);
    QList<TDetailRefusal> refusals;
    QStringList texts{gone, repeated};
    if (const QString returns = ReturnsBeyondDocument(operationType, operationCode); !returns.isEmpty())
        texts.prepend(returns);
    // Only when its values are right by themselves: one fault is told once.
    texts << ReturnsBeyondCombination(operationType, operationCode);
    for (const QString &text : std::as_const(texts)) {
        if (text.isEmpty() || (text == texts.last() && !refusals.isEmpty()))
            continue;
        for (host::Query rows(m_connection, text); !rows.Eof(); rows.Next())
            refusals << TDetailRefusal{static_cast<TDetailRefusal::Reason>(rows.Int(u"Reason")),
                                       rows.Int(u"DetailValueID"),
                                       rows.Int(u"GoodCode"),
                                       rows.Int(u"StoreCode"),
                                       {}};
    }
    if (!refusals.isEmpty())
        Describe(refusals);
    return refusals;
}

void DetailMovements::Describe(QList<TDetailRefusal> &refusals)
{
    QStringList ids;
    for (const TDetailRefusal &refusal : std::as_const(refusals))
        ids << QString::number(refusal.DetailValueID);
    QHash<int, QStringList> texts;
    for (host::Query rows(
             m_connection,
             u"SELECT d.DetailValueID, d.[Value] AS Title FROM GoodDetailValueDetails AS d "
             "INNER JOIN DetailTypes AS t ON t.ID = d.DetailID WHERE d.DetailValueID IN (%1) "
             "ORDER BY CASE t.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 END, d.ID"_s.arg(ids.join(u',')));
         !rows.Eof(); rows.Next())
        texts[rows.Int(u"DetailValueID")] << rows.Text(u"Title");
    for (TDetailRefusal &refusal : refusals)
        refusal.Text = texts.value(refusal.DetailValueID).join(u' ');
}

QList<TDetailRefusal> DetailMovements::GoodDetailsOperation_Save(quint8 operationType, int operationCode)
{
    m_desk.Begin();
    const QString ledger = u"GoodDetailKardex WHERE "_s + Operation(operationType, operationCode);
    const QString kept = Mine(Operation(operationType, operationCode)) + u" AND Tmp = 0"_s;
    const QString lines = u" AND OperationRow IN (SELECT OperationRow FROM %1 WHERE "_s;
    const QString enterLines = lines.arg(u"GoodDetailKardexEnter_Temp"_s) + kept + u')';
    const QString exitLines = lines.arg(u"GoodDetailKardexExit_Temp"_s) + kept + u')';
    const QString entered = u" FROM GoodDetailKardexEnter_Temp WHERE DetailValueID IS NOT NULL AND "_s + kept;
    const QString chosen = u" FROM GoodDetailKardexExit_Temp WHERE DetailValueID IS NOT NULL AND "_s + kept;
    const QString value = u"SELECT DetailValueID, StoreCode"_s;
    host::Transaction transaction(m_connection);
    Touch(value + u" FROM "_s + ledger + enterLines + u" UNION ALL "_s + value + u" FROM "_s + ledger + exitLines +
          u" UNION ALL "_s + value + entered + u" UNION ALL "_s + value + chosen);
    HoldAnswered(operationType, entered, chosen);
    Run(u"DELETE FROM "_s + ledger + enterLines + u" AND (Amount1 > 0 OR Amount2 > 0 OR Amount3 > 0)"_s);
    Run(u"DELETE FROM "_s + ledger + exitLines + u" AND (Amount1 < 0 OR Amount2 < 0 OR Amount3 < 0)"_s);
    Run(u"INSERT INTO GoodDetailKardex ("_s + Columns + u") SELECT "_s + Columns + entered + u" AND "_s +
        detail_sql::CameIn() + u" ORDER BY ID"_s);
    Run(u"INSERT INTO GoodDetailKardex ("_s + Columns +
        u") SELECT DetailValueID, StoreCode, GoodCode, -Amount1_Exit, -Amount2_Exit, -TotalAmount_Exit, "
        "CASE WHEN Length_Exit > 0 THEN Length_Exit ELSE ISNULL([Length], 0) END, CASE WHEN Width_Exit > 0 THEN "
        "Width_Exit ELSE ISNULL(Width, 0) END, -Amount3_Exit, OperationType, OperationCode, OperationRow, "
        "ForeignOperationCode"_s +
        chosen + u" AND (Amount1_Exit > 0 OR Amount2_Exit > 0 OR Amount3_Exit > 0) ORDER BY ID"_s);
    GoodDetailsOperation_Discard(operationType, operationCode);
    m_values.DeleteUnusedDetailValuesAmong(u"SELECT DetailValueID FROM #DetailTouched"_s);
    QList<TDetailRefusal> refusals = Refusals(operationType, operationCode);
    if (refusals.isEmpty())
        transaction.Commit();
    return refusals;
}

QList<TDetailRefusal> DetailMovements::GoodDetailsOperation_Delete(quint8 operationType, int operationCode,
                                                                   int operationRow)
{
    const QString row = operationRow == 0 ? QString() : u" AND OperationRow = %1"_s.arg(operationRow);
    const QString ledger = u" FROM GoodDetailKardex WHERE "_s + Operation(operationType, operationCode) + row;
    host::Transaction transaction(m_connection);
    Touch(u"SELECT DetailValueID, StoreCode"_s + ledger);
    Run(u"DELETE"_s + ledger);
    for (const QString &table : {u"GoodDetailKardexEnter_Temp"_s, u"GoodDetailKardexExit_Temp"_s})
        Run(u"DELETE FROM %1 WHERE "_s.arg(table) + Mine(Operation(operationType, operationCode)) + row);
    m_values.DeleteUnusedDetailValuesAmong(u"SELECT DetailValueID FROM #DetailTouched"_s);
    QList<TDetailRefusal> refusals = Refusals(operationType, operationCode);
    if (refusals.isEmpty())
        transaction.Commit();
    return refusals;
}

} // namespace desk
