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
using detail_sql::SameKey;
using detail_sql::SameLine;
using host::TDocumentLine;

constexpr int Packed = 3; // unit type

const QString Titles = u"DetailTitle1, DetailTitle2, DetailTitle3, DetailTitle4, DetailTitle5"_s;
const QString Keys = u"OperationType, OperationCode, OperationRow"_s;
const QString EnterTable = u"GoodDetailKardexEnter_Temp"_s;
const QString ExitTable = u"GoodDetailKardexExit_Temp"_s;

QString ExitAmounts(const QString &prefix = {}, const QString &sign = {})
{
    return u"%2%1Amount1_Exit, %2%1Amount2_Exit, %2%1TotalAmount_Exit, %1Length_Exit, %1Width_Exit, %2%1Amount3_Exit"_s
        .arg(prefix, sign);
}

/// The saved rows of a line that came in, or that went out.
QString CameIn(const QString &prefix)
{
    return u"(%1Amount1 > 0 OR %1Amount2 > 0 OR %1Amount3 > 0)"_s.arg(prefix);
}

QString WentOut(const QString &prefix)
{
    return u"(%1Amount1 < 0 OR %1Amount2 < 0 OR %1Amount3 < 0)"_s.arg(prefix);
}

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
QString DetailMovements::OnHand(const TDocumentLine &line)
{
    const QString sums = u"SUM(m.Amount1) AS Amount1, SUM(m.Amount2) AS Amount2, SUM(m.TotalAmount) AS TotalAmount, "
                         "MAX(m.[Length]) AS [Length], MAX(m.Width) AS Width, %1 AS Amount3"_s.arg(
                             line.UnitType == Packed ? u"MAX(m.Amount3)"_s : u"SUM(m.Amount3)"_s);
    const QString operation =
        u"OperationType = %1 AND OperationCode = %2"_s.arg(line.OperationType).arg(line.OperationCode);
    const QString kept = Mine(operation) + u" AND Tmp = 0"_s;
    const QString place = u" GoodCode = %1 AND StoreCode = %2"_s.arg(line.GoodCode).arg(line.StoreCode);
    return u"SELECT m.DetailValueID, "_s + sums + u" FROM (SELECT DetailValueID, "_s + Amounts() +
           u" FROM GoodDetailKardex WHERE"_s + place + u" AND NOT ("_s + operation + u" AND "_s + WentOut({}) +
           u" AND (OperationRow = %1 OR OperationRow IN (SELECT OperationRow FROM %2 WHERE %3)))"_s.arg(
               QString::number(line.OperationRow), ExitTable, kept) +
           u" UNION ALL SELECT DetailValueID, "_s + ExitAmounts({}, u"-"_s) + u" FROM %1 WHERE"_s.arg(ExitTable) +
           place + u" AND DetailValueID IS NOT NULL AND %1 AND OperationRow <> %2"_s.arg(kept).arg(line.OperationRow) +
           u") AS m GROUP BY m.DetailValueID HAVING SUM(m.Amount1) > 0 OR SUM(m.Amount2) > 0 OR "_s +
           detail_sql::Pieces(u"m."_s) + u" > 0"_s;
}

/// What the line takes, of each detail value: as it was kept, otherwise as it was saved.
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
    const QString desk = QString::number(m_desk.Number());
    const QString rows = u" FROM GoodDetailKardex WHERE OperationType = %1 AND OperationCode = %2 AND %3"_s.arg(
        QString::number(operationType), QString::number(operationCode), WentOut({}));
    const QString into =
        u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, AnbarCode, %2, %3, ForeignOperationCode, "
        "ComIndex, Selected, Tmp) SELECT "_s.arg(ExitTable, ExitAmounts(), Keys);
    host::Transaction transaction(m_connection);
    ExitGoodDetails_DeleteAll(operationType, operationCode);
    Run(into +
        u"DetailValueID, StoreCode, GoodCode, StoreCode, -Amount1, -Amount2, -TotalAmount, [Length], Width, "
        "-Amount3, %1, ForeignOperationCode, %2, 1, 0"_s.arg(Keys, desk) +
        rows);
    Run(into + u"DISTINCT NULL, StoreCode, GoodCode, StoreCode, 0, 0, 0, 0, 0, 0, %1, 0, %2, 0, 0"_s.arg(Keys, desk) +
        rows);
    transaction.Commit();
}

bool DetailMovements::ChangeStore(const TDocumentLine &line, int newStore)
{
    TDocumentLine moved = line;
    moved.StoreCode = newStore;
    const QString into = u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, %2, %3, %4, ForeignOperationCode, "
                         "ComIndex, Tmp) "_s.arg(EnterTable, Titles, Amounts(), Keys);
    const host::TDetailValues details = m_values.DetailsOf(line.GoodCode);
    const QString desk = QString::number(m_desk.Number());
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
        Run(into + u"SELECT k.DetailValueID, k.StoreCode, k.GoodCode, %1, %2, %3, k.ForeignOperationCode, %4, 0 FROM "
                   "GoodDetailKardex AS k%5 WHERE %6 AND %7 ORDER BY k.ID"_s.arg(
                       detail_sql::Titles(details), Amounts(u"k."_s), Keys, desk,
                       detail_sql::TitleJoins(details, u"k.DetailValueID"_s), SameLine(line, u"k."_s),
                       CameIn(u"k."_s)));
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
