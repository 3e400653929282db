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

void DetailMovements::MarkKept(const QString &table, const TDocumentLine &line)
{
    Run(u"INSERT INTO %1 (StoreCode, GoodCode, %2, ComIndex, Tmp) VALUES (%3, %4, %5, %6, %7, %8, 0)"_s.arg(table, Keys)
            .arg(line.StoreCode)
            .arg(line.GoodCode)
            .arg(line.OperationType)
            .arg(line.OperationCode)
            .arg(line.OperationRow)
            .arg(m_desk.Number()));
}

void DetailMovements::EnterGoodDetails_Load(const QString &workingTable, const TDocumentLine &line)
{
    const QString into =
        u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, %2, %3, %4, ForeignOperationCode, Tmp) "_s.arg(
            workingTable, Titles, Amounts(), Keys);
    const host::TDetailValues details = m_values.DetailsOf(line.GoodCode);
    const QString kept = Mine(SameKey(line));
    host::Transaction transaction(m_connection);
    Run(into + u"SELECT DetailValueID, StoreCode, GoodCode, %1, %2, %3, ForeignOperationCode, 1 FROM %4 WHERE %5 AND "
               "DetailValueID IS NOT NULL ORDER BY ID"_s.arg(Titles, Amounts(), Keys, EnterTable, kept));
    Run(into + u"SELECT k.DetailValueID, k.StoreCode, k.GoodCode, %1, %2, %3, k.ForeignOperationCode, 1 FROM "
               "GoodDetailKardex AS k%4 WHERE %5 AND %6 AND NOT EXISTS (SELECT 1 FROM %7 WHERE %8) ORDER BY k.ID"_s.arg(
                   detail_sql::Titles(details), Amounts(u"k."_s), Keys,
                   detail_sql::TitleJoins(details, u"k.DetailValueID"_s), SameKey(line, u"k."_s), CameIn(u"k."_s),
                   EnterTable, kept));
    if (line.IsReturn)
        Run(u"UPDATE w SET Amount1_Ret = r.Amount1, Amount2_Ret = r.Amount2, Length_Ret = r.[Length], Width_Ret = "
            "r.Width, Amount3_Ret = r.Amount3 FROM %1 AS w INNER JOIN (%2) AS r ON r.DetailValueID = w.DetailValueID"_s
                .arg(workingTable, detail_sql::Returnable(line, m_desk.Number())));
    transaction.Commit();
}

void DetailMovements::EnterGoodDetails_Keep(const QString &workingTable, const TDocumentLine &line)
{
    const QString columns = u"DetailValueID, StoreCode, GoodCode, "_s + Titles + u", "_s + Amounts() + u", "_s + Keys +
                            u", ForeignOperationCode"_s;
    host::Transaction transaction(m_connection);
    Run(u"DELETE FROM %1 WHERE "_s.arg(EnterTable) + Mine(SameLine(line)));
    MarkKept(EnterTable, line);
    Run(u"INSERT INTO %1 (%2, ComIndex, Tmp) SELECT %2, %3, 0 FROM %4 ORDER BY ID"_s.arg(
        EnterTable, columns, QString::number(m_desk.Number()), workingTable));
    transaction.Commit();
}

/// What the store has for the line: the ledger without the line's own rows, and instead of rows that other lines of the
/// document have saved what they have kept since.
QString DetailMovements::OnHand(const TDocumentLine &line, int detailValueId)
{
    const QString sums = u"SUM(m.Amount1) AS Amount1, SUM(m.Amount2) AS Amount2, SUM(m.TotalAmount) AS TotalAmount, "
                         "MAX(m.[Length]) AS [Length], MAX(m.Width) AS Width, SUM(m.Amount3) AS Amount3"_s;
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
        u") AS m GROUP BY m.DetailValueID HAVING SUM(m.Amount1) > 0 OR SUM(m.Amount2) > 0 OR SUM(m.Amount3) > 0"_s;
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
           "SUM(l.TotalAmount) AS TotalAmount, SUM(l.Amount3) AS Amount3 FROM ("_s +
           left +
           u") AS l GROUP BY l.DetailValueID HAVING SUM(l.Amount1) > 0 OR SUM(l.Amount2) > 0 OR SUM(l.Amount3) > 0) AS n "
           "ON n.DetailValueID = h.DetailValueID"_s;
}

/// What the line takes: as it was kept, otherwise as it was saved.
QString DetailMovements::Chosen(const TDocumentLine &line)
{
    const QString kept = Mine(SameKey(line)) + u" AND Tmp = 0"_s;
    return u"SELECT DetailValueID, ForeignOperationCode, "_s +
           u"Amount1_Exit AS Amount1, Amount2_Exit AS Amount2, TotalAmount_Exit AS TotalAmount, Length_Exit AS "
           "[Length], Width_Exit AS Width, Amount3_Exit AS Amount3 FROM %1 WHERE DetailValueID IS NOT NULL AND %2 "
           "UNION ALL SELECT DetailValueID, MAX(ForeignOperationCode), -SUM(Amount1), -SUM(Amount2), "
           "-SUM(TotalAmount), MAX([Length]), MAX(Width), -SUM(Amount3) FROM GoodDetailKardex WHERE %3 AND %4 AND NOT "
           "EXISTS (SELECT 1 FROM %1 WHERE %2) GROUP BY DetailValueID"_s.arg(ExitTable, kept, SameKey(line),
                                                                             WentOut({}));
}

void DetailMovements::ExitGoodDetails_Fill(const TDocumentLine &line)
{
    const host::TDetailValues details = m_values.DetailsOf(line.GoodCode);
    const QString chosen = u"ISNULL(c.Amount1, 0), ISNULL(c.Amount2, 0), ISNULL(c.TotalAmount, 0), "
                           "ISNULL(c.[Length], 0), ISNULL(c.Width, 0), ISNULL(c.Amount3, 0)"_s;
    const QString numbers = u"%1, %2, %3"_s.arg(line.OperationType).arg(line.OperationCode).arg(line.OperationRow);
    const QString place = u"s.DetailValueID, %2, %1, %2"_s.arg(line.GoodCode).arg(line.StoreCode);
    host::Transaction transaction(m_connection);
    ExitGoodDetails_Clear(line);
    Run(u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, AnbarCode, %2, %3, %4, %5, ForeignOperationCode, "
        "ComIndex, Selected, Tmp) SELECT "_s.arg(ExitTable, Titles, Amounts(), ExitAmounts(), Keys) +
        place +
        u", %1, %2, %3, %4, ISNULL(c.ForeignOperationCode, %5), %6, "_s.arg(
            detail_sql::Titles(details), Amounts(u"s."_s), chosen, numbers, QString::number(line.ForeignOperationCode),
            QString::number(m_desk.Number())) +
        u"CASE WHEN c.DetailValueID IS NULL THEN 0 ELSE 1 END, 1 FROM (%1) AS s LEFT JOIN (%2) AS c ON "
        "c.DetailValueID = s.DetailValueID%3 ORDER BY s.DetailValueID"_s.arg(
            OnHand(line), Chosen(line), detail_sql::TitleJoins(details, u"s.DetailValueID"_s)));
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
    host::Transaction transaction(m_connection);
    ExitGoodDetails_DeleteAll(operationType, operationCode);
    KeepSavedExits(u"OperationType = %1 AND OperationCode = %2"_s.arg(operationType).arg(operationCode));
    transaction.Commit();
}

bool DetailMovements::ChangeStore(const TDocumentLine &line, int newStore)
{
    TDocumentLine moved = line;
    moved.StoreCode = newStore;
    const QString kept = Mine(SameLine(line));
    host::Transaction transaction(m_connection);
    const bool hadExits = host::Exists(
        m_connection,
        u"SELECT TOP 1 ID FROM %1 WHERE DetailValueID IS NOT NULL AND Selected = 1 AND %2 UNION ALL SELECT "
        "TOP 1 ID FROM GoodDetailKardex WHERE %3 AND %4"_s.arg(ExitTable, kept, SameLine(line), WentOut({})));
    if (hadExits) {
        Run(u"DELETE FROM %1 WHERE "_s.arg(ExitTable) + kept);
        MarkKept(ExitTable, moved);
    }
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
    Run(u"DELETE FROM %1 WHERE "_s.arg(EnterTable) +
        Mine(u"OperationType = %1 AND OperationCode = %2"_s.arg(operationType).arg(operationCode)));
    transaction.Commit();
}

} // namespace desk
