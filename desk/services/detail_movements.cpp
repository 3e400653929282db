#include "desk/services/detail_movements.h"

#include "desk/services/detail_sql.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

// The working rows of lines while a document is open.

namespace desk {

namespace {

using detail_sql::Amounts;
using detail_sql::CameIn;
using detail_sql::ExitAmounts;
using detail_sql::SameKey;
using detail_sql::SameLine;
using detail_sql::WentOut;
using host::TDocumentLine;

const QString Titles = QString::fromUtf16(detail_sql::TitleColumns);
const QString Keys = QString::fromUtf16(detail_sql::KeyColumns);
const QString EnterTable = u"GoodDetailKardexEnter_Temp"_s;
const QString ExitTable = u"GoodDetailKardexExit_Temp"_s;

} // namespace

DetailMovements::DetailMovements(DetailDesk &desk, host::DetailValueService &values)
    : m_desk(desk), m_values(values), m_connection(desk.Connection())
{}

void DetailMovements::Run(const QString &text)
{
    host::Run(m_connection, text);
}

QString DetailMovements::Mine(const QString &key)
{
    return u"ComIndex = %1 AND "_s.arg(m_desk.Number()) + key;
}

QString DetailMovements::Noted(const QString &key)
{
    return u"ComIndex = -%1 AND "_s.arg(m_desk.Number()) + key;
}

void DetailMovements::MarkKept(const QString &table, const TDocumentLine &line)
{
    Run(u"INSERT INTO %1 (StoreCode, GoodCode, %2, ComIndex, Tmp) VALUES (%3, %4, %5, %6, %7, %8, 0)"_s.arg(table, Keys)
            .arg(line.StoreCode)
            .arg(line.GoodCode)
            .arg(line.OperationType)
            .arg(line.OperationCode)
            .arg(line.OperationRow)
            .arg(m_desk.Number()));
    m_desk.Kept();
}

void DetailMovements::EnterGoodDetails_Load(const QString &workingTable, const TDocumentLine &line)
{
    m_desk.Begin();
    const QString into =
        u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, %2, %3, %4, ForeignOperationCode, Tmp) "_s.arg(
            workingTable, Titles, Amounts(), Keys);
    const host::TDetailValues details = m_values.DetailsOf(line.GoodCode);
    // The line may have had another good.
    const QString good = u" AND %1GoodCode = %2"_s;
    const QString kept = Mine(SameKey(line)) + good.arg(QString()).arg(line.GoodCode);
    host::Transaction transaction(m_connection);
    Run(into + u"SELECT DetailValueID, StoreCode, GoodCode, %1, %2, %3, ForeignOperationCode, 1 FROM %4 WHERE %5 AND "
               "DetailValueID IS NOT NULL ORDER BY ID"_s.arg(Titles, Amounts(), Keys, EnterTable, kept));
    Run(into + u"SELECT k.DetailValueID, k.StoreCode, k.GoodCode, %1, %2, %3, k.ForeignOperationCode, 1 FROM "
               "GoodDetailKardex AS k%4 WHERE %5 AND %6 AND NOT EXISTS (SELECT 1 FROM %7 WHERE %8) ORDER BY k.ID"_s.arg(
                   detail_sql::Titles(details), Amounts(u"k."_s), Keys,
                   detail_sql::TitleJoins(details, u"k.DetailValueID"_s),
                   SameKey(line, u"k."_s) + good.arg(u"k."_s).arg(line.GoodCode), CameIn(u"k."_s), EnterTable, kept));
    if (line.IsReturn)
        for (const QString &text : detail_sql::FillReturnable(workingTable, line, details, m_desk.Number()))
            Run(text);
    transaction.Commit();
}

void DetailMovements::EnterGoodDetails_Keep(const QString &workingTable, const TDocumentLine &line)
{
    m_desk.Begin();
    const QString columns = u"DetailValueID, StoreCode, GoodCode, "_s + Titles + u", "_s + Amounts() + u", "_s + Keys +
                            u", ForeignOperationCode"_s;
    host::Transaction transaction(m_connection);
    NoteDropped(Mine(SameLine(line)));
    Run(u"DELETE FROM %1 WHERE "_s.arg(EnterTable) + Mine(SameLine(line)));
    MarkKept(EnterTable, line);
    Run(u"INSERT INTO %1 (%2, ComIndex, Tmp) SELECT %2, %3, 0 FROM %4 ORDER BY ID"_s.arg(
        EnterTable, columns, QString::number(m_desk.Number()), workingTable));
    MakeMissingValues(line);
    DeleteDropped();
    transaction.Commit();
}

QHash<int, host::TAmounts> DetailMovements::EnterGoodDetails_Totals(quint8 operationType, int operationCode)
{
    const QString operation = u"OperationType = %1 AND OperationCode = %2"_s.arg(operationType).arg(operationCode);
    const QString kept = Mine(operation) + u" AND Tmp = 0"_s;
    host::Query rows(
        m_connection,
        u"SELECT m.OperationRow, SUM(m.Amount1) AS Amount1, SUM(m.Amount2) AS Amount2, SUM(m.TotalAmount) AS "
        "TotalAmount, MAX(m.[Length]) AS [Length], MAX(m.Width) AS Width, SUM(m.Amount3) AS Amount3 FROM (SELECT "
        "OperationRow, %1 FROM %2 WHERE DetailValueID IS NOT NULL AND %3 UNION ALL SELECT OperationRow, %1 FROM "
        "GoodDetailKardex WHERE %4 AND %5 AND OperationRow NOT IN (SELECT OperationRow FROM %2 WHERE %3)) AS m GROUP "
        "BY m.OperationRow"_s.arg(Amounts(), EnterTable, kept, operation, CameIn({})));
    QHash<int, host::TAmounts> totals;
    for (; !rows.Eof(); rows.Next())
        totals.insert(rows.Int(u"OperationRow"),
                      {rows.Number(u"Amount1"), rows.Number(u"Amount2"), rows.Number(u"TotalAmount"),
                       rows.Number(u"Length"), rows.Number(u"Width"), rows.Number(u"Amount3")});
    return totals;
}

void DetailMovements::EnterGoodDetails_Remember(const TDocumentLine &line)
{
    const QString columns =
        u"StoreCode, GoodCode, "_s + Titles + u", "_s + Amounts() + u", "_s + Keys + u", ForeignOperationCode"_s;
    host::Transaction transaction(m_connection);
    Run(u"DELETE FROM %1 WHERE "_s.arg(EnterTable) + Noted(SameLine(line)));
    Run(u"INSERT INTO %1 (DetailValueID, %2, ComIndex, Tmp) SELECT -DetailValueID, %2, -ComIndex, 0 FROM %1 WHERE %3 "
        "ORDER BY ID"_s.arg(EnterTable, columns, Mine(SameLine(line))));
    transaction.Commit();
}

void DetailMovements::EnterGoodDetails_Restore(const TDocumentLine &line)
{
    host::Transaction transaction(m_connection);
    NoteDropped(Mine(SameLine(line)));
    Run(u"DELETE FROM %1 WHERE "_s.arg(EnterTable) + Mine(SameLine(line)));
    DeleteDropped();
    Run(u"UPDATE %1 SET ComIndex = -ComIndex, DetailValueID = -DetailValueID WHERE "_s.arg(EnterTable) +
        Noted(SameLine(line)));
    transaction.Commit();
}

QString DetailMovements::OnHand(const TDocumentLine &line, int detailValueId)
{
    const QString sums = u"SUM(m.Amount1) AS Amount1, SUM(m.Amount2) AS Amount2, SUM(m.TotalAmount) AS TotalAmount, "
                         "MAX(m.[Length]) AS [Length], MAX(m.Width) AS Width, %1 AS Amount3"_s.arg(
                             detail_sql::Third(line, u"m.Amount3"_s));
    const QString operation =
        u"OperationType = %1 AND OperationCode = %2"_s.arg(line.OperationType).arg(line.OperationCode);
    const QString kept = Mine(operation) + u" AND Tmp = 0"_s;
    const QString value = detailValueId == 0 ? QString() : u" AND DetailValueID = %1"_s.arg(detailValueId);
    const QString place = u" GoodCode = %1 AND StoreCode = %2"_s.arg(line.GoodCode).arg(line.StoreCode) + value;
    const QString onHand =
        u"SELECT m.DetailValueID, "_s + sums + u" FROM (SELECT DetailValueID, "_s + Amounts() +
        u" FROM GoodDetailKardex WHERE"_s + place + u" AND NOT ("_s + operation + u" AND "_s + WentOut({}) +
        u" AND (OperationRow = %1 OR OperationRow IN (SELECT OperationRow FROM %2 WHERE %3)))"_s.arg(
            QString::number(line.OperationRow), ExitTable, kept) +
        u" UNION ALL SELECT DetailValueID, "_s + ExitAmounts({}, u"-"_s) + u" FROM %1 WHERE"_s.arg(ExitTable) + place +
        u" AND DetailValueID IS NOT NULL AND %1 AND OperationRow <> %2"_s.arg(kept).arg(line.OperationRow) +
        u") AS m GROUP BY m.DetailValueID HAVING SUM(m.Amount1) > 0 OR SUM(m.Amount2) > 0 OR "_s +
        detail_sql::Pieces(u"m."_s) + u" > 0"_s;
    return line.IsReturn && line.ForeignOperationCode != 0 ? OfNamedDocument(line, onHand) : onHand;
}

/// A return to the supplier that names its purchase takes no more than what is left of that: what it brought less what
/// other lines have returned of it.
QString DetailMovements::OfNamedDocument(const TDocumentLine &line, const QString &onHand)
{
    const QString good = u" GoodCode = %1"_s.arg(line.GoodCode);
    const QString foreign = u" AND ForeignOperationCode = %1"_s.arg(line.ForeignOperationCode);
    const QString operation =
        u"OperationType = %1 AND OperationCode = %2"_s.arg(line.OperationType).arg(line.OperationCode);
    const QString kept = Mine(operation) + u" AND Tmp = 0"_s;
    const QString left =
        u"SELECT DetailValueID, Amount1, Amount2, TotalAmount, Amount3 FROM GoodDetailKardex WHERE%1 AND OperationType = "
        "%2 AND OperationCode = %3 UNION ALL SELECT DetailValueID, Amount1, Amount2, TotalAmount, Amount3 FROM "
        "GoodDetailKardex WHERE%1%4 AND OperationType = %5 AND NOT (%6 AND (OperationRow = %7 OR OperationRow IN (SELECT "
        "OperationRow FROM %8 WHERE %9)))"_s.arg(
            good, QString::number(detail_sql::Purchase), QString::number(line.ForeignOperationCode), foreign,
            QString::number(line.OperationType), operation, QString::number(line.OperationRow), ExitTable, kept) +
        u" UNION ALL SELECT DetailValueID, -Amount1_Exit, -Amount2_Exit, -TotalAmount_Exit, -Amount3_Exit FROM %1 WHERE"
        "%2%3 AND DetailValueID IS NOT NULL AND %4 AND OperationRow <> %5"_s.arg(ExitTable, good, foreign, kept)
            .arg(line.OperationRow);
    const auto least = [](const QString &amount) {
        return u", CASE WHEN n.%1 < h.%1 THEN n.%1 ELSE h.%1 END AS %1"_s.arg(amount);
    };
    return u"SELECT h.DetailValueID, h.[Length], h.Width"_s + least(u"Amount1"_s) + least(u"Amount2"_s) +
           least(u"TotalAmount"_s) + least(u"Amount3"_s) + u" FROM ("_s + onHand +
           u") AS h INNER JOIN (SELECT l.DetailValueID, SUM(l.Amount1) AS Amount1, SUM(l.Amount2) AS Amount2, "
           "SUM(l.TotalAmount) AS TotalAmount, %1 AS Amount3 FROM ("_s.arg(detail_sql::Third(line, u"l.Amount3"_s)) +
           left +
           u") AS l GROUP BY l.DetailValueID HAVING SUM(l.Amount1) > 0 OR SUM(l.Amount2) > 0 OR %1 > 0) AS n ON "
           "n.DetailValueID = h.DetailValueID"_s.arg(detail_sql::Pieces(u"l."_s));
}

/// What the line takes, of each detail value: as it was kept, otherwise as it was saved.
QString DetailMovements::Chosen(const TDocumentLine &line)
{
    const QString good = u" AND GoodCode = %1"_s.arg(line.GoodCode);
    const QString kept = Mine(SameKey(line)) + good + u" AND Tmp = 0"_s;
    return u"SELECT t.DetailValueID, MAX(t.ForeignOperationCode) AS ForeignOperationCode, SUM(t.Amount1) AS Amount1, "
           "SUM(t.Amount2) AS Amount2, SUM(t.TotalAmount) AS TotalAmount, MAX(t.[Length]) AS [Length], MAX(t.Width) AS "
           "Width, %1 AS Amount3 FROM (SELECT DetailValueID, ForeignOperationCode, Amount1_Exit AS Amount1, "
           "Amount2_Exit AS Amount2, TotalAmount_Exit AS TotalAmount, Length_Exit AS [Length], Width_Exit AS Width, "
           "Amount3_Exit AS Amount3 FROM %2 WHERE DetailValueID IS NOT NULL AND %3 UNION ALL SELECT DetailValueID, "
           "ForeignOperationCode, -Amount1, -Amount2, -TotalAmount, [Length], Width, -Amount3 FROM GoodDetailKardex "
           "WHERE %4 AND %5 AND NOT EXISTS (SELECT 1 FROM %2 WHERE %3)) AS t GROUP BY t.DetailValueID"_s.arg(
               detail_sql::Third(line, u"t.Amount3"_s), ExitTable, kept, SameKey(line) + good, WentOut({}));
}

void DetailMovements::ExitGoodDetails_Fill(const TDocumentLine &line)
{
    m_desk.Begin();
    const host::TDetailValues details = m_values.DetailsOf(line.GoodCode);
    const QString numbers = u"%1, %2, %3"_s.arg(line.OperationType).arg(line.OperationCode).arg(line.OperationRow);
    const QString place = u"s.DetailValueID, %2, %1, %2"_s.arg(line.GoodCode).arg(line.StoreCode);
    host::Transaction transaction(m_connection);
    ExitGoodDetails_Clear(line);
    Run(u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, AnbarCode, %2, %3, %4, %5, ForeignOperationCode, "
        "ComIndex, Selected, Tmp) SELECT "_s.arg(ExitTable, Titles, Amounts(), ExitAmounts(), Keys) +
        place +
        u", %1, %2, 0, 0, 0, 0, 0, 0, %3, %4, %5, 0, 1 FROM (%6) AS s%7 ORDER BY s.DetailValueID"_s.arg(
            detail_sql::Titles(details), Amounts(u"s."_s), numbers, QString::number(line.ForeignOperationCode),
            QString::number(m_desk.Number()), OnHand(line), detail_sql::TitleJoins(details, u"s.DetailValueID"_s)));
    // Few of a hundred thousand rows are chosen: a step of its own costs less than a join of all.
    Run(u"UPDATE e SET Amount1_Exit = c.Amount1, Amount2_Exit = c.Amount2, TotalAmount_Exit = c.TotalAmount, "
        "Length_Exit = c.[Length], Width_Exit = c.Width, Amount3_Exit = c.Amount3, ForeignOperationCode = "
        "c.ForeignOperationCode, Selected = 1 FROM %1 AS e INNER JOIN (%2) AS c ON c.DetailValueID = e.DetailValueID "
        "WHERE %3"_s.arg(ExitTable, Chosen(line),
                         u"e.ComIndex = %1 AND "_s.arg(m_desk.Number()) + SameKey(line, u"e."_s) +
                             u" AND e.Tmp = 1"_s));
    transaction.Commit();
}

QString DetailMovements::ExitGoodDetails_Condition(const TDocumentLine &line)
{
    return Mine(SameKey(line)) + u" AND Tmp = 1"_s;
}

int DetailMovements::ExitGoodDetails_FindRow(const TDocumentLine &line, const QString &serial)
{
    return host::Scalar(m_connection, u"SELECT MIN(ID) FROM %1 WHERE "_s.arg(ExitTable) +
                                          ExitGoodDetails_Condition(line) + u" AND DetailTitle1 = "_s +
                                          host::NQuotedStr(host::SerialText(serial)))
        .toInt();
}

void DetailMovements::ExitGoodDetails_Keep(const TDocumentLine &line)
{
    m_desk.Begin();
    const QString rows = u" WHERE "_s + Mine(SameLine(line));
    const QString open = u" WHERE "_s + ExitGoodDetails_Condition(line);
    host::Transaction transaction(m_connection);
    Run(u"DELETE FROM %1"_s.arg(ExitTable) + rows + u" AND Tmp = 0"_s);
    Run(u"DELETE FROM %1"_s.arg(ExitTable) + open + u" AND Selected = 0"_s);
    Run(u"UPDATE %1 SET Tmp = 0"_s.arg(ExitTable) + open);
    MarkKept(ExitTable, line);
    transaction.Commit();
}

void DetailMovements::ExitGoodDetails_Clear(const TDocumentLine &line)
{
    Run(u"DELETE FROM %1 WHERE "_s.arg(ExitTable) + ExitGoodDetails_Condition(line));
}

void DetailMovements::ExitGoodDetails_DeleteAll(quint8 operationType, int operationCode)
{
    Run(u"DELETE FROM %1 WHERE "_s.arg(ExitTable) +
        Mine(u"OperationType = %1 AND OperationCode = %2"_s.arg(operationType).arg(operationCode)));
}

void DetailMovements::ExitGoodDetails_Edit(quint8 operationType, int operationCode)
{
    m_desk.Begin();
    host::Transaction transaction(m_connection);
    ExitGoodDetails_DeleteAll(operationType, operationCode);
    KeepSavedExits(u"OperationType = %1 AND OperationCode = %2"_s.arg(operationType).arg(operationCode));
    transaction.Commit();
}

bool DetailMovements::ChangeStore(const TDocumentLine &line, int newStore)
{
    m_desk.Begin();
    TDocumentLine moved = line;
    moved.StoreCode = newStore;
    const QString kept = Mine(SameLine(line));
    host::Transaction transaction(m_connection);
    const bool hadExits = host::Exists(
        m_connection,
        u"SELECT TOP 1 ID FROM %1 WHERE DetailValueID IS NOT NULL AND Selected = 1 AND %2 UNION ALL SELECT "
        "TOP 1 ID FROM GoodDetailKardex WHERE %3 AND %4 AND NOT EXISTS (SELECT 1 FROM %1 WHERE %2 AND Tmp = 0)"_s.arg(
            ExitTable, kept, SameLine(line), WentOut({})));
    if (hadExits) {
        Run(u"DELETE FROM %1 WHERE "_s.arg(ExitTable) + kept);
        MarkKept(ExitTable, moved);
    }
    Run(u"UPDATE %1 SET StoreCode = %2 WHERE DetailValueID IS NULL AND "_s.arg(ExitTable).arg(newStore) + kept);
    const bool hadEntries = host::Exists(
        m_connection,
        u"SELECT TOP 1 ID FROM GoodDetailKardex WHERE %1 AND %2 AND NOT EXISTS (SELECT 1 FROM %3 WHERE %4)"_s.arg(
            SameLine(line), CameIn({}), EnterTable, kept));
    if (hadEntries) {
        KeepSavedEntries(line, SameLine(line, u"k."_s));
        MarkKept(EnterTable, moved);
    }
    Run(u"UPDATE %1 SET StoreCode = %2 WHERE "_s.arg(EnterTable).arg(newStore) + kept);
    transaction.Commit();
    return hadExits;
}

void DetailMovements::GoodDetailsOperation_Discard(quint8 operationType, int operationCode)
{
    host::Transaction transaction(m_connection);
    ExitGoodDetails_DeleteAll(operationType, operationCode);
    const QString operation = u"OperationType = %1 AND OperationCode = %2"_s.arg(operationType).arg(operationCode);
    const QString rows = u"(%1 OR %2)"_s.arg(Mine(operation), Noted(operation));
    NoteDropped(rows);
    Run(u"DELETE FROM %1 WHERE "_s.arg(EnterTable) + rows);
    DeleteDropped();
    transaction.Commit();
    m_desk.Discarded();
}

} // namespace desk
