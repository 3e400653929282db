#include "desk/documents/document_kinds.h"
#include "desk/services/detail_divisions.h"
#include "desk/services/detail_sql.h"
#include "desk/services/division_sql.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "host/services/serial_batch_service.h"

#include <QHash>

using namespace Qt::StringLiterals;

// A division as it is saved: header, rows and parts, and what they move in the detail ledger.

namespace desk {

namespace {

using division_sql::Entry;
using division_sql::Exit;
using host::TDetailRefusal;

/// Pieces of one part that get serials of their own.
constexpr int MostPieces = 9999;
constexpr int MostRefusals = 100;

const QString ExitTable = u"GoodDetailKardexExit_Temp"_s;
const QString EnterTable = u"GoodDetailKardexEnter_Temp"_s;
const QString Keys = QString::fromUtf16(detail_sql::KeyColumns);

/// Rows of the ledger as `k`.
QString Ledger(int type, int code)
{
    return u"k.OperationType = %1 AND k.OperationCode = %2"_s.arg(type).arg(code);
}

/// Whether two rows have the same amounts, those of the first times `sign`.
QString SameAmounts(const QString &a, const QString &b, const QString &sign = {})
{
    return u"%1Amount1 = %3%2Amount1 AND %1Amount2 = %3%2Amount2 AND %1[Length] = %2[Length] AND %1Width = %2Width AND "
           "%1Amount3 = %3%2Amount3"_s.arg(a, b, sign);
}

/// The serials and barcodes of the source `id`, as `d`.
QString OwnTexts(const QString &id)
{
    return u"GoodDetailValueDetails AS d ON d.DetailValueID = %1 AND d.[Value] <> N'' INNER JOIN DetailTypes AS t ON t.ID "
           "= d.DetailID AND t.DetailType IN (3, 6)"_s.arg(id);
}

/// Goods of total and part keep in TotalAmount what the amount comes to in the big unit; the others the amount.
QString TotalAmount(const QString &row, const QString &source)
{
    return u"CASE WHEN g.Meghdar_Formool > 0 AND EXISTS (SELECT 1 FROM GoodDetailKardex AS f WHERE f.DetailValueID = %2 AND "
           "f.TotalAmount <> f.Amount1) THEN CAST(%1Amount1 / g.Meghdar_Formool AS decimal(23,9)) ELSE %1Amount1 END"_s
               .arg(row, source);
}

/// Rows of the division's parts, `k`, with those of the same details in other operations, `u`.
QString UsedRows(int code)
{
    return u" FROM GoodDetailKardex AS k INNER JOIN GoodDetailKardex AS u ON u.DetailValueID = k.DetailValueID AND NOT "
           "(u.OperationType = %1 AND u.OperationCode = %2) WHERE "_s.arg(Entry)
               .arg(code) +
           Ledger(Entry, code);
}

QString PartsOf(int code, int operationRow, int part)
{
    if (part != 0)
        return u" AND k.OperationRow = %1"_s.arg(part);
    if (operationRow == 0)
        return {};
    return u" AND k.OperationRow IN (SELECT OperationRow FROM GoodDetailDivisionDetailItems WHERE DivisionCode = %1 AND "
           "DivisionRow = %2)"_s.arg(code)
               .arg(operationRow);
}

/// Those of parts that change or go.
QString ChangedRows(int code)
{
    return u"(k.OperationRow IN (SELECT OperationRow FROM #DivisionParts) OR k.OperationRow NOT IN (SELECT OperationRow "
           "FROM GoodDetailDivisionDetailItems WHERE DivisionCode = %1))"_s.arg(code);
}

QString DropTable(const QString &table)
{
    return u"IF OBJECT_ID('tempdb..%1') IS NOT NULL DROP TABLE %1"_s.arg(table);
}

} // namespace

bool DetailDivisions::CheckGoodDetailDivisionDelete(int code, int operationRow, int part)
{
    return !host::Exists(m_connection, u"SELECT TOP 1 u.ID"_s + UsedRows(code) + PartsOf(code, operationRow, part));
}

QList<TDetailRefusal> DetailDivisions::GoodDetailDivision_UsedParts(int code, int operationRow, int part)
{
    return Used(code, PartsOf(code, operationRow, part));
}

/// `which` narrows the rows of the parts in the ledger, as `k`.
QList<TDetailRefusal> DetailDivisions::Used(int code, const QString &which)
{
    QList<TDetailRefusal> refusals;
    QHash<int, QString> users;
    for (host::Query rows(
             m_connection,
             u"SELECT TOP %1 k.DetailValueID, k.GoodCode, k.StoreCode, u.OperationType, u.OperationCode"_s.arg(
                 MostRefusals) +
                 UsedRows(code) + which + u" ORDER BY k.OperationRow, k.ID, u.ID"_s);
         !rows.Eof(); rows.Next()) {
        const int value = rows.Int(u"DetailValueID");
        if (!users.contains(value))
            refusals << TDetailRefusal{
                TDetailRefusal::Reason::Used, value, rows.Int(u"GoodCode"), rows.Int(u"StoreCode"), {}};
        users[value] = OperationTitle(rows.Int(u"OperationType"), rows.Int(u"OperationCode"));
    }
    if (refusals.isEmpty())
        return refusals;
    m_movements.Describe(refusals);
    for (TDetailRefusal &refusal : refusals)
        refusal.Text = u"«%1»: %2"_s.arg(refusal.Text, users[refusal.DetailValueID]);
    return refusals;
}

/// What the parts of the division were, so that those that stay as they are keep their detail values.
void DetailDivisions::NoteBefore(int code)
{
    Run(DropTable(u"#DivisionBefore"_s));
    Run(u"CREATE TABLE #DivisionBefore (OperationRow int NOT NULL PRIMARY KEY, SourceID int NOT NULL, StoreCode int NOT "
        "NULL, Amount1 decimal(23,9) NOT NULL, Amount2 decimal(23,9) NOT NULL, [Length] decimal(23,9) NOT NULL, Width "
        "decimal(23,9) NOT NULL, Amount3 decimal(23,9) NOT NULL)"_s);
    Run(u"INSERT INTO #DivisionBefore (OperationRow, SourceID, StoreCode, Amount1, Amount2, [Length], Width, Amount3) "
        "SELECT p.OperationRow, s.DetailValueID, s.StoreCode, p.Amount1, p.Amount2, p.[Length], p.Width, p.Amount3 FROM "
        "GoodDetailDivisionDetailItems AS p INNER JOIN GoodDetailDivisionDetail AS s ON s.DivisionCode = p.DivisionCode "
        "AND s.OperationRow = p.DivisionRow WHERE p.DivisionCode = %1"_s.arg(code));
}

void DetailDivisions::InsertGoodDetailDivision(const host::TDivisionHeader &header, int status)
{
    host::Transaction transaction(m_connection);
    if (status == static_cast<int>(host::TFormMode::New))
        NoteBefore(header.Code);
    Run(u"INSERT INTO GoodDetailDivision (Code, [Date], Comment) VALUES (%1, %2, %3)"_s.arg(
        QString::number(header.Code), host::QuotedStr(header.Date), host::NQuotedStr(header.Comment)));
    transaction.Commit();
}

void DetailDivisions::DeleteGoodDetailDivision(int code)
{
    host::Transaction transaction(m_connection);
    NoteBefore(code);
    for (const QString &table : {u"GoodDetailDivisionDetailItems"_s, u"GoodDetailDivisionDetail"_s})
        Run(u"DELETE FROM %1 WHERE DivisionCode = %2"_s.arg(table).arg(code));
    Run(u"DELETE FROM GoodDetailDivision WHERE Code = %1"_s.arg(code));
    transaction.Commit();
}

QList<TDetailRefusal> DetailDivisions::InsertGoodDetailDivisionDetail(int code)
{
    m_desk.Begin();
    const QString columns =
        u"StoreCode, GoodCode, DetailValueID, Amount1, Amount2, [Length], Width, Amount3, Comment"_s;
    const QString same =
        u"k.OperationRow = s.OperationRow AND k.DetailValueID = s.DetailValueID AND k.StoreCode = s.StoreCode AND k.Amount1 "
        "= -s.Amount1 AND k.Amount2 = -s.Amount2 AND k.[Length] = s.[Length] AND k.Width = s.Width"_s;
    const QString number = QString::number(code);
    const QString desk = QString::number(m_desk.Number());
    host::Transaction transaction(m_connection);
    Run(u"INSERT INTO GoodDetailDivisionDetail (DivisionCode, OperationRow, %1) SELECT %2, OperationRow, %1 FROM "
        "#GoodDetailDivisionDetailTemp WHERE Tmp = 0 ORDER BY OperationRow"_s.arg(columns, number));
    Run(u"DELETE FROM %1 WHERE %2"_s.arg(ExitTable, Mine(host::TOperationType::DivisionExit, code)));
    Run(u"INSERT INTO %1 (StoreCode, GoodCode, %2, ComIndex, Tmp) SELECT DISTINCT k.StoreCode, k.GoodCode, "
        "k.OperationType, k.OperationCode, k.OperationRow, %3, 0 FROM GoodDetailKardex AS k WHERE %4 AND NOT EXISTS "
        "(SELECT 1 FROM GoodDetailDivisionDetail AS s WHERE s.DivisionCode = %5 AND %6)"_s.arg(
            ExitTable, Keys, desk, Ledger(Exit, code), number, same));
    // What a package holds, or a number of pieces, is known of the unit; of others it is no amount.
    const QString third =
        u"CASE WHEN EXISTS (SELECT 1 FROM GoodDetailKardex AS f WHERE f.DetailValueID = s.DetailValueID "
        "AND f.Amount3 <> 0) THEN s.Amount3 ELSE 0 END"_s;
    Run(u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, AnbarCode, %2, %3, ForeignOperationCode, ComIndex, "
        "Selected, Tmp) SELECT s.DetailValueID, s.StoreCode, s.GoodCode, s.StoreCode, s.Amount1, s.Amount2, %4, "
        "s.[Length], s.Width, %5, %6, s.DivisionCode, s.OperationRow, 0, %7, 1, 0 FROM GoodDetailDivisionDetail AS s "
        "INNER JOIN GoodInf AS g ON g.Code = s.GoodCode WHERE s.DivisionCode = %8 AND NOT EXISTS (SELECT 1 FROM "
        "GoodDetailKardex AS k WHERE %9 AND %10)"_s
            .arg(ExitTable, detail_sql::ExitAmounts(), Keys, TotalAmount(u"s."_s, u"s.DetailValueID"_s), third,
                 QString::number(Exit), desk, number, Ledger(Exit, code))
            .arg(same));
    auto refusals = m_movements.GoodDetailsOperation_Save(quint8(Exit), code);
    if (refusals.isEmpty())
        transaction.Commit();
    return refusals;
}

QList<TDetailRefusal> DetailDivisions::InsertGoodDetailDivisionDetailItems(int code)
{
    m_desk.Begin();
    host::Transaction transaction(m_connection);
    Run(u"INSERT INTO GoodDetailDivisionDetailItems (DivisionCode, DivisionRow, OperationRow, Amount1, Amount2, [Length], "
        "Width, Amount3, Waste) SELECT %1, DivisionRow, OperationRow, Amount1, Amount2, [Length], Width, Amount3, Waste "
        "FROM #GoodDetailDivisionDetailItemsTemp WHERE Tmp = 0 ORDER BY DivisionRow, OperationRow"_s.arg(code));
    ListChangedParts(code);
    QList<TDetailRefusal> refusals = Used(code, u" AND "_s + ChangedRows(code));
    if (!refusals.isEmpty())
        return refusals;
    ListPieces(code);
    NumberPieces();
    MakePieceValues();
    KeepPieces(code);
    refusals = m_movements.GoodDetailsOperation_Save(quint8(Entry), code);
    if (refusals.isEmpty())
        transaction.Commit();
    return refusals;
}

/// Parts that are new or other than they were, with how their amounts count: Kind 3 by packages, 5 by pieces, 1 not.
void DetailDivisions::ListChangedParts(int code)
{
    for (const QString &table :
         {u"#DivisionParts"_s, u"#DivisionPieces"_s, u"#DivisionNumbers"_s, u"#DivisionParents"_s})
        Run(DropTable(table));
    Run(u"CREATE TABLE #DivisionParts (OperationRow int NOT NULL PRIMARY KEY, SourceID int NOT NULL, StoreCode int NOT "
        "NULL, GoodCode int NOT NULL, Kind int NOT NULL, Pieces int NOT NULL DEFAULT 1, Amount1 decimal(23,9) NOT NULL, "
        "Amount2 decimal(23,9) NOT NULL, TotalAmount decimal(23,9) NOT NULL, [Length] decimal(23,9) NOT NULL, Width "
        "decimal(23,9) NOT NULL, Amount3 decimal(23,9) NOT NULL)"_s);
    Run(u"INSERT INTO #DivisionParts (OperationRow, SourceID, StoreCode, GoodCode, Kind, Amount1, Amount2, TotalAmount, "
        "[Length], Width, Amount3) SELECT p.OperationRow, s.DetailValueID, s.StoreCode, s.GoodCode, CASE WHEN EXISTS "
        "(SELECT 1 FROM GoodDetailKardex AS k WHERE k.DetailValueID = s.DetailValueID AND k.Amount3 <> 0 AND k.Amount2 <> "
        "0) THEN 3 WHEN EXISTS (SELECT 1 FROM GoodDetailKardex AS k WHERE k.DetailValueID = s.DetailValueID AND k.Amount3 "
        "<> 0) THEN 5 ELSE 1 END, p.Amount1, p.Amount2, %1, p.[Length], p.Width, p.Amount3 FROM "
        "GoodDetailDivisionDetailItems AS p INNER JOIN GoodDetailDivisionDetail AS s ON s.DivisionCode = p.DivisionCode "
        "AND s.OperationRow = p.DivisionRow INNER JOIN GoodInf AS g ON g.Code = s.GoodCode WHERE p.DivisionCode = %2 AND "
        "NOT EXISTS (SELECT 1 FROM #DivisionBefore AS b WHERE b.OperationRow = p.OperationRow AND b.SourceID = "
        "s.DetailValueID AND b.StoreCode = s.StoreCode AND %3)"_s.arg(
            TotalAmount(u"p."_s, u"s.DetailValueID"_s), QString::number(code), SameAmounts(u"b."_s, u"p."_s)));
}

/// Every piece that gets a detail value of its own. A changed part keeps the values that it had, as many as it needs.
void DetailDivisions::ListPieces(int code)
{
    Run(u"UPDATE p SET Pieces = CAST(c.Pieces AS int) FROM #DivisionParts AS p INNER JOIN (SELECT q.OperationRow, CASE "
        "q.Kind WHEN 3 THEN q.Amount2 ELSE q.Amount3 END AS Pieces FROM #DivisionParts AS q) AS c ON c.OperationRow = "
        "p.OperationRow WHERE c.Pieces BETWEEN 1 AND %1 AND c.Pieces = FLOOR(c.Pieces) AND EXISTS (SELECT 1 FROM "
        "GoodDetailValueDetails AS d INNER JOIN DetailTypes AS t ON t.ID = d.DetailID AND t.DetailType IN (3, 6) WHERE "
        "d.DetailValueID = p.SourceID AND d.[Value] <> N'')"_s.arg(MostPieces));
    Run(u"CREATE TABLE #DivisionNumbers (N int NOT NULL PRIMARY KEY)"_s);
    Run(u"INSERT INTO #DivisionNumbers (N) SELECT n.N FROM (%1) AS n WHERE n.N <= (SELECT MAX(Pieces) FROM "
        "#DivisionParts)"_s.arg(host::CountedText({1, MostPieces})));
    Run(u"CREATE TABLE #DivisionPieces (Place int IDENTITY(1,1) NOT NULL PRIMARY KEY, OperationRow int NOT NULL, Piece int "
        "NOT NULL, SourceID int NOT NULL, GoodCode int NOT NULL, Number int NULL, ValueID int NULL, IsNew bit NOT NULL "
        "DEFAULT 0)"_s);
    Run(u"INSERT INTO #DivisionPieces (OperationRow, Piece, SourceID, GoodCode) SELECT p.OperationRow, n.N, p.SourceID, "
        "p.GoodCode FROM #DivisionParts AS p INNER JOIN #DivisionNumbers AS n ON n.N <= p.Pieces ORDER BY p.OperationRow, "
        "n.N"_s);
    Run(u"UPDATE x SET ValueID = o.DetailValueID FROM #DivisionPieces AS x INNER JOIN (SELECT k.OperationRow, "
        "k.DetailValueID, b.SourceID, ROW_NUMBER() OVER (PARTITION BY k.OperationRow ORDER BY k.DetailValueID) AS Piece "
        "FROM GoodDetailKardex AS k INNER JOIN #DivisionBefore AS b ON b.OperationRow = k.OperationRow WHERE %1) AS o ON "
        "o.OperationRow = x.OperationRow AND o.SourceID = x.SourceID AND o.Piece = x.Piece"_s.arg(Ledger(Entry, code)));
    Run(u"UPDATE #DivisionPieces SET IsNew = 1 WHERE ValueID IS NULL"_s);
}

/// The parts of a source are numbered on behind those that it has ever had and that are still known.
void DetailDivisions::NumberPieces()
{
    const QString sources = u"(SELECT DISTINCT SourceID FROM #DivisionPieces WHERE IsNew = 1) AS f"_s;
    // The few texts between the two ends are found by them; the detail type, which a hundred thousand share, is no way
    // to look for them.
    Run(u"CREATE TABLE #DivisionParents (SourceID int NOT NULL PRIMARY KEY, LastNumber int NOT NULL)"_s);
    Run(u"INSERT INTO #DivisionParents (SourceID, LastNumber) SELECT u.SourceID, ISNULL(MAX(u.Number), 0) FROM (SELECT "
        "f.SourceID, 0 AS Number FROM %1 UNION ALL SELECT f.SourceID, TRY_CAST(SUBSTRING(c.[Value], LEN(d.[Value]) + 2, "
        "100) AS int) FROM %1 INNER JOIN %2 INNER JOIN GoodDetailValueDetails AS c ON c.DetailID - d.DetailID = 0 AND "
        "c.[Value] > d.[Value] + N'/' AND c.[Value] < d.[Value] + N'0' WHERE LEFT(c.[Value], LEN(d.[Value]) + 1) = "
        "d.[Value] + N'/') AS u GROUP BY u.SourceID"_s.arg(sources, OwnTexts(u"f.SourceID"_s)));
    Run(u"UPDATE x SET Number = q.LastNumber + r.N FROM #DivisionPieces AS x INNER JOIN #DivisionParents AS q ON "
        "q.SourceID = x.SourceID INNER JOIN (SELECT Place, ROW_NUMBER() OVER (PARTITION BY SourceID ORDER BY Place) AS N "
        "FROM #DivisionPieces WHERE IsNew = 1) AS r ON r.Place = x.Place"_s);
}

void DetailDivisions::MakePieceValues()
{
    for (const QString &text : detail_sql::MakeValues(u"#DivisionPieces"_s, u"IsNew = 1"_s, u"GoodCode"_s))
        Run(text);
    Run(u"INSERT INTO GoodDetailValueDetails (DetailValueID, DetailID, [Value]) SELECT x.ValueID, d.DetailID, CASE WHEN "
        "t.DetailType IN (3, 6) AND d.[Value] <> N'' THEN d.[Value] + N'/' + CAST(x.Number AS nvarchar(10)) ELSE "
        "d.[Value] END FROM #DivisionPieces AS x INNER JOIN GoodDetailValueDetails AS d ON d.DetailValueID = x.SourceID "
        "INNER JOIN DetailTypes AS t ON t.ID = d.DetailID WHERE x.IsNew = 1 ORDER BY x.Place, d.ID"_s);
}

/// What comes in, piece by piece; the last one takes what rounding leaves.
void DetailDivisions::KeepPieces(int code)
{
    const auto share = [](const QString &column) {
        const QString even = u"CAST(p.%1 / p.Pieces AS decimal(23,9))"_s.arg(column);
        return u"CASE WHEN p.Pieces = 1 THEN p.%1 WHEN x.Piece = p.Pieces THEN p.%1 - %2 * (p.Pieces - 1) ELSE %2 END"_s
            .arg(column, even);
    };
    const QString desk = QString::number(m_desk.Number());
    Run(u"DELETE FROM %1 WHERE %2"_s.arg(EnterTable, Mine(host::TOperationType::DivisionEntry, code)));
    Run(u"INSERT INTO %1 (StoreCode, GoodCode, %2, ComIndex, Tmp) SELECT DISTINCT k.StoreCode, k.GoodCode, "
        "k.OperationType, k.OperationCode, k.OperationRow, %3, 0 FROM GoodDetailKardex AS k WHERE %4 AND %5"_s.arg(
            EnterTable, Keys, desk, Ledger(Entry, code), ChangedRows(code)));
    Run(u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, %2, %3, ForeignOperationCode, ComIndex, Tmp) SELECT "
        "x.ValueID, p.StoreCode, p.GoodCode, "_s.arg(EnterTable, detail_sql::Amounts(), Keys) +
        QStringList{share(u"Amount1"_s), share(u"Amount2"_s), share(u"TotalAmount"_s), u"p.[Length]"_s, u"p.Width"_s,
                    u"CASE p.Kind WHEN 3 THEN p.Amount3 WHEN 5 THEN %1 ELSE 0 END"_s.arg(share(u"Amount3"_s)),
                    QString::number(Entry), QString::number(code), u"x.OperationRow"_s, u"0"_s, desk, u"0"_s}
            .join(u", ") +
        u" FROM #DivisionPieces AS x INNER JOIN #DivisionParts AS p ON p.OperationRow = x.OperationRow ORDER BY x.Place"_s);
    for (const QString &table : {u"#DivisionParts"_s, u"#DivisionPieces"_s, u"#DivisionNumbers"_s,
                                 u"#DivisionParents"_s, u"#DivisionBefore"_s})
        Run(DropTable(table));
    m_desk.Kept();
}

} // namespace desk
