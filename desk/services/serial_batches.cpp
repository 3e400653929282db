#include "desk/services/serial_batches.h"

#include "desk/services/detail_sql.h"
#include "desk/services/detail_values.h"
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

void DropTables(const QSqlDatabase &connection)
{
    for (const QString &table : {u"#SerialBatch"_s, u"#SerialKnown"_s, u"#SerialReturn"_s, u"#SerialCombination"_s})
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
    const TSerialBatch cleaned = Cleaned(batch);
    const std::function<void()> steps[] = {[&] { Judge(cleaned); }, [&] { MakeValues(cleaned); },
                                           [&] { MakeRows(cleaned); }, [&] { result = Read(); }};
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
    Judge(Cleaned(batch));
    result = Read();
    transaction.Commit();
    return result;
}

TSerialBatch SerialBatches::Cleaned(const TSerialBatch &batch)
{
    TSerialBatch cleaned = batch;
    cleaned.Details = CleanDetails(m_connection, batch.Details).Details;
    return cleaned;
}

void SerialBatches::Judge(const TSerialBatch &batch)
{
    m_desk.Begin();
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
    Run(u"CREATE TABLE #SerialBatch (Place int NOT NULL PRIMARY KEY, Text nvarchar(100) COLLATE DATABASE_DEFAULT NOT NULL, "
        "Known bit NOT NULL DEFAULT 0, ValueID int NULL, OnHand decimal(38,9) NOT NULL DEFAULT 0, Elsewhere "
        "decimal(38,9) NOT NULL DEFAULT 0, Most decimal(38,9) NULL, InLine bit NOT NULL "
        "DEFAULT 0, LineRow int NULL, Fate tinyint NULL)"_s);
    const QString into = u"INSERT INTO #SerialBatch (Place, Text) "_s;
    if (!batch.Range) {
        const QString &serial = batch.Details.Values[0];
        if (!serial.isEmpty())
            Run(into + u"VALUES (1, "_s + NQuotedStr(serial) + u')');
    } else if (!batch.Range->IsEmpty()) {
        Run(into +
            u"SELECT n.Place + 1, CAST(n.N AS nvarchar(20)) FROM (%1) AS n"_s.arg(host::CountedText(*batch.Range)));
    }
}

/// Every detail value that has one of the serials, of whichever good; nobody else makes one meanwhile.
void SerialBatches::FindKnown(const TSerialBatch &batch)
{
    Run(u"CREATE TABLE #SerialKnown (Place int NOT NULL, ValueID int NOT NULL, Same bit NOT NULL DEFAULT 0)"_s);
    Run(u"INSERT INTO #SerialKnown (Place, ValueID) SELECT b.Place, d.DetailValueID FROM #SerialBatch AS b INNER JOIN "
        "GoodDetailValueDetails AS d WITH (UPDLOCK, HOLDLOCK) ON d.[Value] = b.Text INNER JOIN DetailTypes AS t ON "
        "t.ID = d.DetailID AND t.DetailType = 3"_s);
    Run(u"CREATE INDEX IX_SerialKnown ON #SerialKnown (ValueID)"_s);
    Run(u"UPDATE #SerialKnown SET Same = 1 WHERE EXISTS (SELECT 1 FROM GoodDetailValues AS v WHERE v.ID = "
        "#SerialKnown.ValueID AND v.GoodCode = "_s +
        QString::number(batch.Line.GoodCode) + u") AND "_s +
        detail_sql::HasDetails(u"#SerialKnown.ValueID"_s, batch.Details, 1));
    Run(u"UPDATE b SET Known = 1, ValueID = k.ValueID FROM #SerialBatch AS b INNER JOIN (SELECT Place, MIN(CASE WHEN Same "
        "= 1 THEN ValueID END) AS ValueID FROM #SerialKnown GROUP BY Place) AS k ON k.Place = b.Place"_s);
}

void SerialBatches::FindInLine(const TSerialBatch &batch)
{
    Run(u"UPDATE b SET InLine = 1, LineRow = w.LineRow FROM #SerialBatch AS b INNER JOIN (SELECT k.Place, MIN(CASE WHEN "
        "k.Same = 1 THEN e.ID END) AS LineRow FROM #SerialKnown AS k INNER JOIN %1 AS e ON e.DetailValueID = k.ValueID "
        "GROUP BY k.Place) AS w ON w.Place = b.Place"_s.arg(batch.WorkingTable));
}

/// On hand, and on the way in with documents that are not saved. What the line itself has brought or brings is among
/// its rows, or has been taken out of them.
void SerialBatches::AddUp(const TSerialBatch &batch)
{
    const QString own = detail_sql::SameLine(batch.Line, u"m."_s);
    const QString sum =
        u"SELECT k.Place, k.Same, m.Amount1 FROM #SerialKnown AS k INNER JOIN %1 AS m ON m.DetailValueID = "
        "k.ValueID WHERE NOT (%2)"_s;
    Run(u"UPDATE b SET OnHand = s.Amount, Elsewhere = s.Elsewhere FROM #SerialBatch AS b INNER JOIN (SELECT u.Place, "
        "SUM(u.Amount1) AS Amount, SUM(CASE WHEN u.Same = 1 THEN 0 ELSE u.Amount1 END) AS Elsewhere FROM ("_s +
        sum.arg(u"GoodDetailKardex"_s, own) + u" UNION ALL "_s +
        sum.arg(u"GoodDetailKardexEnter_Temp"_s, own + u" AND ISNULL(m.ComIndex, %1) = %1"_s.arg(m_desk.Number())) +
        u") AS u GROUP BY u.Place) AS s ON s.Place = b.Place"_s);
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
    Run(u"CREATE TABLE #SerialCombination (Sold int NOT NULL, Amount1 decimal(38,9) NOT NULL, Amount2 decimal(38,9) NOT "
        "NULL, Amount3 decimal(38,9) NOT NULL)"_s);
    Run(u"INSERT INTO #SerialCombination (Sold, Amount1, Amount2, Amount3) SELECT ISNULL(SUM(c.Sold), 0), "
        "ISNULL(SUM(c.Amount1), 0), ISNULL(SUM(c.Amount2), 0), ISNULL(SUM(c.Amount3), 0) FROM (SELECT 1 AS Sold, "
        "r.Amount1, r.Amount2, r.Amount3 FROM #SerialReturn AS r WHERE "_s +
        detail_sql::HasDetails(u"r.DetailValueID"_s, batch.Details, 1) +
        u" UNION ALL SELECT 0, -w.Amount1, -w.Amount2, -w.Amount3 FROM "_s + batch.WorkingTable + u" AS w WHERE "_s +
        detail_sql::HasDetails(u"w.DetailValueID"_s, batch.Details, 1) + u") AS c"_s);
    Run(u"UPDATE b SET Most = s.Most FROM #SerialBatch AS b INNER JOIN (SELECT e.DetailValueID, MAX(e.Amount1) AS Most FROM "
        "(SELECT k.DetailValueID, SUM(k.Amount1) AS Amount1 FROM GoodDetailKardex AS k WHERE k.DetailValueID IN (SELECT "
        "ValueID FROM #SerialKnown WHERE Same = 1) GROUP BY k.DetailValueID, k.OperationType, k.OperationCode, "
        "k.OperationRow) AS e GROUP BY e.DetailValueID) AS s ON s.DetailValueID = b.ValueID"_s);
}

void SerialBatches::DecideReturn(const TSerialBatch &batch)
{
    // An amount that the good's units do not use is 0 on both sides; what a package holds is none.
    const bool packed = detail_sql::IsPacked(batch.Line);
    const QString amount = host::DecimalLiteral(batch.Amounts.Amount1);
    const QString second = host::DecimalLiteral(batch.Amounts.Amount2);
    const QString third = host::DecimalLiteral(packed ? 0 : batch.Amounts.Amount3);
    // A serial cannot come back beyond what one entry brought of it: the whole of a piece, the length of a roll.
    Run(u"UPDATE b SET Fate = CASE WHEN c.Sold = 0 THEN %1 WHEN b.Known = 1 AND b.ValueID IS NULL THEN %2 WHEN b.InLine "
        "= 1 THEN %3 WHEN b.Elsewhere > 0 OR b.OnHand > 0 AND b.OnHand >= b.Most OR b.ValueID IS NOT NULL AND "
        "r.DetailValueID IS NULL THEN %4 WHEN r.Amount1 <= 0 OR c.Amount1 <= 0 THEN %5 WHEN r.Amount1 < %6 OR r.Amount2 "
        "< %7 OR r.Amount3 < %8 THEN %9 WHEN b.OnHand + %6 > b.Most THEN %4 WHEN b.ValueID IS NOT NULL THEN %10 ELSE %11 "
        "END FROM #SerialBatch AS b CROSS JOIN #SerialCombination AS c LEFT JOIN #SerialReturn AS r ON r.DetailValueID = "
        "b.ValueID"_s
            .arg(Fate(TSerialFate::NotSold), Fate(TSerialFate::OtherValues), Fate(TSerialFate::InLine),
                 Fate(TSerialFate::NotReturnable), Fate(TSerialFate::NothingOnHand), amount, second, third,
                 Fate(TSerialFate::NotSoldAmount))
            .arg(Fate(TSerialFate::Known), Fate(TSerialFate::New)));
    Run(u"UPDATE b SET Fate = %1 FROM #SerialBatch AS b INNER JOIN (SELECT Place, ROW_NUMBER() OVER (ORDER BY Place) AS "
        "N FROM #SerialBatch WHERE %2) AS p ON p.Place = b.Place WHERE EXISTS (SELECT 1 FROM #SerialCombination AS c "
        "WHERE p.N * %3 > c.Amount1 OR p.N * %4 > c.Amount2 OR p.N * %5 > %6)"_s.arg(
            Fate(TSerialFate::MoreThanOnHand), Written(), amount, second, third, packed ? u"0"_s : u"c.Amount3"_s));
}

void SerialBatches::MakeValues(const TSerialBatch &batch)
{
    const QString isNew = u"Fate = "_s + Fate(TSerialFate::New);
    for (const QString &text : detail_sql::MakeValues(u"#SerialBatch"_s, isNew, QString::number(batch.Line.GoodCode)))
        Run(text);
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
    Run(u"INSERT INTO "_s + batch.WorkingTable +
        u" (DetailValueID, StoreCode, GoodCode, DetailTitle1, DetailTitle2, DetailTitle3, DetailTitle4, DetailTitle5, "_s +
        detail_sql::Amounts() + u", OperationType, OperationCode, OperationRow, ForeignOperationCode, Tmp"_s +
        u") SELECT b.ValueID, %1, %2, b.Text, "_s.arg(line.StoreCode).arg(line.GoodCode) + titles.join(u", ") +
        u", "_s + detail_sql::Literals(batch.Amounts) +
        u", %1, %2, %3, %4, 1"_s.arg(line.OperationType)
            .arg(line.OperationCode)
            .arg(line.OperationRow)
            .arg(line.ForeignOperationCode) +
        u" FROM #SerialBatch AS b WHERE b."_s + Written() + u" ORDER BY b.Place"_s);
    if (line.IsReturn)
        for (const QString &text : detail_sql::FillReturnable(batch.WorkingTable, line, batch.Details, m_desk.Number()))
            Run(text);
}

TSerialBatchResult SerialBatches::Read()
{
    TSerialBatchResult result;
    result.Written = host::Scalar(m_connection, u"SELECT COUNT(*) FROM #SerialBatch WHERE "_s + Written()).toInt();
    for (host::Query rows(m_connection, u"SELECT Text AS Serial, Fate, ISNULL(LineRow, 0) AS LineRow FROM #SerialBatch "
                                        "WHERE NOT ("_s +
                                            Written() + u") ORDER BY Place"_s);
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
