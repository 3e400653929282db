#include "desk/services/serial_batches.h"

#include "desk/services/detail_sql.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::NQuotedStr;
using host::TSerialBatch;
using host::TSerialBatchResult;
using host::TSerialFate;

QString Fate(TSerialFate fate)
{
    return QString::number(static_cast<int>(fate));
}

/// The fates whose serials are written.
QString Written()
{
    return u"Fate IN (%1, %2)"_s.arg(Fate(TSerialFate::Known), Fate(TSerialFate::New));
}

/// 0, 1, 2 … in column N: as many as `digits` digits count.
QString Counting(int digits)
{
    QStringList terms;
    QStringList tables;
    qint64 weight = 1;
    for (int i = 0; i < digits; ++i, weight *= 10) {
        terms << u"d%1.D * %2"_s.arg(i).arg(weight);
        tables
            << u"(SELECT 0 AS D UNION ALL SELECT 1 UNION ALL SELECT 2 UNION ALL SELECT 3 UNION ALL SELECT 4 UNION ALL "
               "SELECT 5 UNION ALL SELECT 6 UNION ALL SELECT 7 UNION ALL SELECT 8 UNION ALL SELECT 9) AS d%1"_s.arg(i);
    }
    return u"SELECT "_s + terms.join(u" + ") + u" AS N FROM "_s + tables.join(u" CROSS JOIN ");
}

void DropTables(const QSqlDatabase &connection)
{
    for (const QString &table :
         {u"#SerialBatch"_s, u"#SerialKnown"_s, u"#SerialReturn"_s, u"#SerialCombination"_s, u"#SerialLast"_s})
        host::Run(connection, u"IF OBJECT_ID('tempdb..%1') IS NOT NULL DROP TABLE %1"_s.arg(table));
}

} // namespace

SerialBatches::SerialBatches(DetailDesk &desk, host::DetailMovementService &movements)
    : m_desk(desk), m_movements(movements), m_connection(desk.Connection())
{}

void SerialBatches::Run(const QString &text)
{
    host::Run(m_connection, text);
}

TSerialBatchResult SerialBatches::EnterSerials(const TSerialBatch &batch)
{
    TSerialBatchResult result;
    result.TooLong = batch.Range && batch.Range->IsTooLong();
    if (result.TooLong)
        return result;
    const std::function<void()> steps[] = {[&] { Judge(batch); }, [&] { MakeValues(batch); }, [&] { MakeRows(batch); },
                                           [&] { result = Read(); }};
    host::Transaction transaction(m_connection);
    int done = 0;
    for (const auto &step : steps) {
        step();
        if (!batch.Progress)
            continue;
        host::Exec(m_connection, u"SELECT 1"_s); // sends what waits for the next statement
        if (!batch.Progress(++done, int(std::size(steps)))) {
            result = {};
            result.Cancelled = true;
            return result;
        }
    }
    transaction.Commit();
    return result;
}

TSerialBatchResult SerialBatches::JudgeSerials(const TSerialBatch &batch)
{
    TSerialBatchResult result;
    result.TooLong = batch.Range && batch.Range->IsTooLong();
    if (result.TooLong)
        return result;
    host::Transaction transaction(m_connection);
    Judge(batch);
    result = Read();
    transaction.Commit();
    return result;
}

void SerialBatches::Judge(const TSerialBatch &batch)
{
    DropTables(m_connection);
    List(batch);
    FindKnown(batch);
    FindInLine(batch);
    AddUp(batch);
    if (!batch.Line.IsReturn) {
        Decide();
        return;
    }
    FindReturnable(batch);
    DecideReturn(batch);
}

/// One row for each serial. Known: it is on record; ValueID: with the details of the batch.
void SerialBatches::List(const TSerialBatch &batch)
{
    Run(u"CREATE TABLE #SerialBatch (Row int NOT NULL PRIMARY KEY, Text nvarchar(100) COLLATE DATABASE_DEFAULT NOT NULL, "
        "Known bit NOT NULL DEFAULT 0, ValueID int NULL, OnHand decimal(38,9) NOT NULL DEFAULT 0, InLine bit NOT NULL "
        "DEFAULT 0, LineRow int NULL, Fate tinyint NULL)"_s);
    const QString into = u"INSERT INTO #SerialBatch (Row, Text) "_s;
    if (!batch.Range) {
        const QString serial = host::SerialText(batch.Details.Values[0]);
        if (!serial.isEmpty())
            Run(into + u"VALUES (1, "_s + NQuotedStr(serial) + u')');
    } else if (!batch.Range->IsEmpty()) {
        const QString last = QString::number(batch.Range->Distance());
        Run(into +
            u"SELECT n.N + 1, CAST(CAST(%1 AS bigint) + n.N AS nvarchar(20)) FROM (%2) AS n WHERE n.N <= %3"_s.arg(
                QString::number(batch.Range->From), Counting(static_cast<int>(last.size())), last));
    }
}

/// Every detail value that has one of the serials, of whichever good; nobody else makes one meanwhile.
void SerialBatches::FindKnown(const TSerialBatch &batch)
{
    Run(u"CREATE TABLE #SerialKnown (Row int NOT NULL, ValueID int NOT NULL, Same bit NOT NULL DEFAULT 0)"_s);
    Run(u"INSERT INTO #SerialKnown (Row, ValueID) SELECT b.Row, d.DetailValueID FROM #SerialBatch AS b INNER JOIN "
        "GoodDetailValueDetails AS d WITH (UPDLOCK, HOLDLOCK) ON d.[Value] = b.Text INNER JOIN DetailTypes AS t ON "
        "t.ID = d.DetailID AND t.DetailType = 3"_s);
    Run(u"CREATE INDEX IX_SerialKnown ON #SerialKnown (ValueID)"_s);
    Run(u"UPDATE #SerialKnown SET Same = 1 WHERE EXISTS (SELECT 1 FROM GoodDetailValues AS v WHERE v.ID = "
        "#SerialKnown.ValueID AND v.GoodCode = "_s +
        QString::number(batch.Line.GoodCode) + u") AND "_s +
        detail_sql::HasDetails(u"#SerialKnown.ValueID"_s, batch.Details, 1));
    Run(u"UPDATE b SET Known = 1, ValueID = k.ValueID FROM #SerialBatch AS b INNER JOIN (SELECT Row, MIN(CASE WHEN Same "
        "= 1 THEN ValueID END) AS ValueID FROM #SerialKnown GROUP BY Row) AS k ON k.Row = b.Row"_s);
}

void SerialBatches::FindInLine(const TSerialBatch &batch)
{
    Run(u"UPDATE b SET InLine = 1, LineRow = w.LineRow FROM #SerialBatch AS b INNER JOIN (SELECT k.Row, MIN(CASE WHEN "
        "k.Same = 1 THEN e.ID END) AS LineRow FROM #SerialKnown AS k INNER JOIN %1 AS e ON e.DetailValueID = k.ValueID "
        "GROUP BY k.Row) AS w ON w.Row = b.Row"_s.arg(batch.WorkingTable));
}

/// On hand, and on the way in with documents that are not saved. What the line itself has brought or brings is among
/// its rows, or has been taken out of them.
void SerialBatches::AddUp(const TSerialBatch &batch)
{
    const QString own = detail_sql::SameLine(batch.Line, u"m."_s);
    const QString sum = u"SELECT k.Row, m.Amount1 FROM #SerialKnown AS k INNER JOIN %1 AS m ON m.DetailValueID = "
                        "k.ValueID WHERE NOT (%2)"_s;
    Run(u"UPDATE b SET OnHand = s.Amount FROM #SerialBatch AS b INNER JOIN (SELECT u.Row, SUM(u.Amount1) AS Amount FROM "
        "("_s +
        sum.arg(u"GoodDetailKardex"_s, own) + u" UNION ALL "_s +
        sum.arg(u"GoodDetailKardexEnter_Temp"_s, own + u" AND ISNULL(m.ComIndex, %1) = %1"_s.arg(m_desk.Number())) +
        u") AS u GROUP BY u.Row) AS s ON s.Row = b.Row"_s);
}

void SerialBatches::Decide()
{
    Run(u"UPDATE #SerialBatch SET Fate = CASE WHEN InLine = 1 THEN %1 WHEN OnHand > 0 THEN %2 WHEN Known = 1 AND "
        "ValueID IS NULL THEN %3 WHEN ValueID IS NOT NULL THEN %4 ELSE %5 END"_s.arg(
            Fate(TSerialFate::InLine), Fate(TSerialFate::InStock), Fate(TSerialFate::OtherValues),
            Fate(TSerialFate::Known), Fate(TSerialFate::New)));
}

/// What was sold and has not come back: by detail value, and of all values that differ in their serial only, less what
/// the line has entered of them.
void SerialBatches::FindReturnable(const TSerialBatch &batch)
{
    Run(u"CREATE TABLE #SerialReturn (DetailValueID int NOT NULL PRIMARY KEY, Amount1 decimal(38,9), Amount2 "
        "decimal(38,9), [Length] decimal(38,9), Width decimal(38,9), Amount3 decimal(38,9))"_s);
    Run(u"INSERT INTO #SerialReturn SELECT s.DetailValueID, s.Amount1, s.Amount2, s.[Length], s.Width, s.Amount3 FROM "
        "("_s +
        detail_sql::Returnable(batch.Line, m_desk.Number()) + u") AS s"_s);
    Run(u"CREATE TABLE #SerialCombination (Sold int NOT NULL, Amount1 decimal(38,9) NOT NULL)"_s);
    Run(u"INSERT INTO #SerialCombination (Sold, Amount1) SELECT ISNULL(SUM(c.Sold), 0), ISNULL(SUM(c.Amount1), 0) FROM "
        "(SELECT 1 AS Sold, r.Amount1 FROM #SerialReturn AS r WHERE "_s +
        detail_sql::HasDetails(u"r.DetailValueID"_s, batch.Details, 1) + u" UNION ALL SELECT 0, -w.Amount1 FROM "_s +
        batch.WorkingTable + u" AS w WHERE "_s + detail_sql::HasDetails(u"w.DetailValueID"_s, batch.Details, 1) +
        u") AS c"_s);
}

void SerialBatches::DecideReturn(const TSerialBatch &batch)
{
    const QString amount = host::DecimalLiteral(batch.Amounts.Amount1);
    Run(u"UPDATE b SET Fate = CASE WHEN c.Sold = 0 THEN %1 WHEN b.Known = 1 AND b.ValueID IS NULL THEN %2 WHEN b.InLine "
        "= 1 THEN %3 WHEN b.OnHand > 0 OR b.ValueID IS NOT NULL AND r.DetailValueID IS NULL THEN %4 WHEN r.Amount1 <= 0 "
        "OR c.Amount1 <= 0 THEN %5 WHEN r.Amount1 < %6 THEN %7 WHEN b.ValueID IS NOT NULL THEN %8 ELSE %9 END FROM "
        "#SerialBatch AS b CROSS JOIN #SerialCombination AS c LEFT JOIN #SerialReturn AS r ON r.DetailValueID = "
        "b.ValueID"_s.arg(Fate(TSerialFate::NotSold), Fate(TSerialFate::OtherValues), Fate(TSerialFate::InLine),
                          Fate(TSerialFate::NotReturnable), Fate(TSerialFate::NothingOnHand), amount,
                          Fate(TSerialFate::NotSoldAmount), Fate(TSerialFate::Known), Fate(TSerialFate::New)));
    Run(u"UPDATE b SET Fate = %1 FROM #SerialBatch AS b INNER JOIN (SELECT Row, ROW_NUMBER() OVER (ORDER BY Row) AS "
        "Place FROM #SerialBatch WHERE %2) AS p ON p.Row = b.Row WHERE p.Place * %3 > (SELECT Amount1 FROM "
        "#SerialCombination)"_s.arg(Fate(TSerialFate::MoreThanOnHand), Written(), amount));
}

/// The new values take their places as they come: before their details are written one is as good as another. The
/// table is locked, so that those behind the last one are all of this batch.
void SerialBatches::MakeValues(const TSerialBatch &batch)
{
    const QString isNew = u"Fate = "_s + Fate(TSerialFate::New);
    Run(u"CREATE TABLE #SerialLast (ID int NOT NULL)"_s);
    Run(u"INSERT INTO #SerialLast (ID) SELECT ISNULL(MAX(ID), 0) FROM GoodDetailValues WITH (TABLOCKX, HOLDLOCK)"_s);
    Run(u"INSERT INTO GoodDetailValues (GoodCode) SELECT %1 FROM #SerialBatch WHERE %2 ORDER BY Row"_s.arg(
        QString::number(batch.Line.GoodCode), isNew));
    Run(u"UPDATE b SET ValueID = v.ID FROM #SerialBatch AS b INNER JOIN (SELECT Row, ROW_NUMBER() OVER (ORDER BY Row) AS "
        "Place FROM #SerialBatch WHERE %1) AS p ON p.Row = b.Row INNER JOIN (SELECT ID, ROW_NUMBER() OVER (ORDER BY ID) "
        "AS Place FROM GoodDetailValues WHERE ID > (SELECT ID FROM #SerialLast)) AS v ON v.Place = p.Place"_s.arg(
            isNew));
    const auto &[ids, values] = batch.Details;
    QString details = u"INSERT INTO GoodDetailValueDetails (DetailValueID, DetailID, [Value]) SELECT ValueID, %1, Text "
                      "FROM #SerialBatch WHERE %2"_s.arg(QString::number(ids[0]), isNew);
    for (size_t i = 1; i < ids.size(); ++i) {
        if (ids[i] != 0 && !values[i].isEmpty())
            details += u" UNION ALL SELECT ValueID, %1, %2 FROM #SerialBatch WHERE %3"_s.arg(
                QString::number(ids[i]), NQuotedStr(values[i]), isNew);
    }
    Run(details);
}

void SerialBatches::MakeRows(const TSerialBatch &batch)
{
    const host::TDocumentLine &line = batch.Line;
    QStringList titles;
    for (size_t i = 1; i < batch.Details.Values.size(); ++i)
        titles << NQuotedStr(batch.Details.DetailIDs[i] == 0 ? QString() : batch.Details.Values[i]);
    const QString returns =
        line.IsReturn ? u", Amount1_Ret, Amount2_Ret, Length_Ret, Width_Ret, Amount3_Ret"_s : QString();
    const QString returned =
        line.IsReturn ? u", ISNULL(r.Amount1, c.Amount1), r.Amount2, r.[Length], r.Width, r.Amount3"_s : QString();
    const QString joins = line.IsReturn ? u" CROSS JOIN #SerialCombination AS c LEFT JOIN #SerialReturn AS r ON "
                                          "r.DetailValueID = b.ValueID"_s
                                        : QString();
    Run(u"INSERT INTO "_s + batch.WorkingTable +
        u" (DetailValueID, StoreCode, GoodCode, DetailTitle1, DetailTitle2, DetailTitle3, DetailTitle4, DetailTitle5, "_s +
        detail_sql::Amounts() + u", OperationType, OperationCode, OperationRow, ForeignOperationCode, Tmp"_s + returns +
        u") SELECT b.ValueID, %1, %2, b.Text, "_s.arg(line.StoreCode).arg(line.GoodCode) + titles.join(u", ") +
        u", "_s + detail_sql::Literals(batch.Amounts) +
        u", %1, %2, %3, %4, 1"_s.arg(line.OperationType)
            .arg(line.OperationCode)
            .arg(line.OperationRow)
            .arg(line.ForeignOperationCode) +
        returned + u" FROM #SerialBatch AS b"_s + joins + u" WHERE b."_s + Written() + u" ORDER BY b.Row"_s);
}

TSerialBatchResult SerialBatches::Read()
{
    TSerialBatchResult result;
    result.Written = host::Scalar(m_connection, u"SELECT COUNT(*) FROM #SerialBatch WHERE "_s + Written()).toInt();
    for (host::Query rows(m_connection, u"SELECT Text AS Serial, Fate, ISNULL(LineRow, 0) AS LineRow FROM #SerialBatch "
                                        "WHERE NOT ("_s +
                                            Written() + u") ORDER BY Row"_s);
         !rows.Eof(); rows.Next())
        result.left << TSerialBatchResult::Left{rows.Text(u"Serial"), static_cast<TSerialFate>(rows.Int(u"Fate")),
                                                rows.Int(u"LineRow")};
    DropTables(m_connection);
    return result;
}

std::optional<int> SerialBatches::ChooseSerials(const host::TDocumentLine &line, const host::TSerialRange &range,
                                                const host::TAmounts &amounts)
{
    if (range.IsTooLong())
        return std::nullopt;
    const QString number = u"TRY_CAST(DetailTitle1 AS bigint)"_s;
    const bool any = amounts.Amount1 > 0 || amounts.Amount2 > 0 || amounts.TotalAmount > 0 || amounts.Length > 0 ||
                     amounts.Width > 0 || amounts.Amount3 > 0;
    QString set;
    QString enough;
    const std::pair<QString, host::Quantity> columns[] = {
        {u"Amount1"_s, amounts.Amount1}, {u"Amount2"_s, amounts.Amount2}, {u"TotalAmount"_s, amounts.TotalAmount},
        {u"Length"_s, amounts.Length},   {u"Width"_s, amounts.Width},     {u"Amount3"_s, amounts.Amount3}};
    for (const auto &[column, amount] : columns) {
        const QString literal = host::DecimalLiteral(amount);
        set += u"%1_Exit = %2, "_s.arg(column, literal);
        if (column != u"TotalAmount")
            enough += u" AND [%1] >= %2"_s.arg(column, literal);
    }
    return host::Exec(
        m_connection,
        u"UPDATE GoodDetailKardexExit_Temp SET %1Selected = %2, ForeignOperationCode = %3 WHERE %4 AND %5 "
        "BETWEEN %6 AND %7 AND DetailTitle1 = CAST(%5 AS nvarchar(20))%8"_s.arg(
            set, QString::number(any ? 1 : 0), QString::number(line.ForeignOperationCode),
            m_movements.ExitGoodDetails_Condition(line), number, QString::number(range.From), QString::number(range.To),
            enough));
}

} // namespace desk
