#include "desk/services/detail_sql.h"

#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace desk::detail_sql {

namespace {

QString Number(size_t index)
{
    return QString::number(index + 1);
}

} // namespace

QString Amounts(const QString &prefix, const QString &sign)
{
    // The two measures tell of one piece: they have no direction.
    return u"%2%1Amount1, %2%1Amount2, %2%1TotalAmount, %1[Length], %1Width, %2%1Amount3"_s.arg(prefix, sign);
}

QString ExitAmounts(const QString &prefix, const QString &sign)
{
    return u"%2%1Amount1_Exit, %2%1Amount2_Exit, %2%1TotalAmount_Exit, %1Length_Exit, %1Width_Exit, %2%1Amount3_Exit"_s
        .arg(prefix, sign);
}

QString CameIn(const QString &prefix)
{
    return u"(%1Amount1 > 0 OR %1Amount2 > 0 OR %1Amount3 > 0)"_s.arg(prefix);
}

QString WentOut(const QString &prefix)
{
    return u"(%1Amount1 < 0 OR %1Amount2 < 0 OR %1Amount3 < 0)"_s.arg(prefix);
}

QString Pieces(const QString &prefix)
{
    return u"SUM(CASE WHEN %1Amount2 = 0 THEN %1Amount3 ELSE 0 END)"_s.arg(prefix);
}

bool IsPacked(const host::TDocumentLine &line)
{
    constexpr int Packed = 3;
    return line.UnitType == Packed;
}

QString Third(const host::TDocumentLine &line, const QString &column)
{
    return (IsPacked(line) ? u"MAX(ABS(%1))"_s : u"SUM(%1)"_s).arg(column);
}

QString Literals(const host::TAmounts &amounts)
{
    using host::DecimalLiteral;
    return QStringList{DecimalLiteral(amounts.Amount1),     DecimalLiteral(amounts.Amount2),
                       DecimalLiteral(amounts.TotalAmount), DecimalLiteral(amounts.Length),
                       DecimalLiteral(amounts.Width),       DecimalLiteral(amounts.Amount3)}
        .join(u", ");
}

QString SameLine(const host::TDocumentLine &line, const QString &prefix)
{
    return u"%1OperationType = %2 AND %1OperationCode = %3 AND %1OperationRow = %4"_s.arg(prefix)
        .arg(line.OperationType)
        .arg(line.OperationCode)
        .arg(line.OperationRow);
}

QString SameKey(const host::TDocumentLine &line, const QString &prefix)
{
    return SameLine(line, prefix) + u" AND %1StoreCode = %2"_s.arg(prefix).arg(line.StoreCode);
}

QString Silent(const QString &prefix)
{
    return u"%1SeenAt < DATEADD(minute, -10, GETDATE())"_s.arg(prefix);
}

QString HasDetails(const QString &id, const host::TDetailValues &details, size_t first)
{
    int count = 0;
    QString text;
    for (size_t i = first; i < details.Values.size(); ++i) {
        if (details.DetailIDs[i] == 0 || details.Values[i].isEmpty())
            continue;
        ++count;
        text += u" AND EXISTS (SELECT 1 FROM GoodDetailValueDetails AS e WHERE e.DetailValueID = %1 AND e.DetailID = "
                "%2 AND e.[Value] = %3)"_s.arg(id, QString::number(details.DetailIDs[i]),
                                               host::NQuotedStr(details.Values[i]));
    }
    const QString counted = first == 0 ? QString() : u" AND c.DetailID <> %1"_s.arg(details.DetailIDs[0]);
    return u"(SELECT COUNT(*) FROM GoodDetailValueDetails AS c WHERE c.DetailValueID = %1 AND c.[Value] <> N''%2) = %3"_s
               .arg(id, counted, QString::number(count)) +
           text;
}

QString Titles(const host::TDetailValues &details)
{
    QStringList titles;
    for (size_t i = 0; i < details.DetailIDs.size(); ++i)
        titles << (details.DetailIDs[i] == 0 ? u"NULL"_s : u"d%1.[Value]"_s.arg(Number(i)));
    return titles.join(u", ");
}

QString TitleJoins(const host::TDetailValues &details, const QString &id)
{
    QString joins;
    for (size_t i = 0; i < details.DetailIDs.size(); ++i) {
        if (details.DetailIDs[i] != 0)
            joins += u" LEFT JOIN GoodDetailValueDetails AS d%1 ON d%1.DetailValueID = %2 AND d%1.DetailID = %3"_s.arg(
                Number(i), id, QString::number(details.DetailIDs[i]));
    }
    return joins;
}

QString Returnable(const host::TDocumentLine &line, int desk)
{
    const int foreign = line.ForeignOperationCode;
    const QString good = u" AND k.GoodCode = %1"_s.arg(line.GoodCode);
    const QString sold = foreign == 0 ? QString() : u" AND k.OperationCode = %1"_s.arg(foreign);
    const QString returned = u" WHERE k.OperationType = %1"_s.arg(SaleReturn) + good +
                             (foreign == 0 ? QString() : u" AND k.ForeignOperationCode = %1"_s.arg(foreign));
    const QString rows = u"SELECT k.DetailValueID, -k.Amount1 AS Amount1, -k.Amount2 AS Amount2, -k.TotalAmount AS "
                         "TotalAmount, k.[Length], k.Width, -k.Amount3 AS Amount3 FROM "_s;
    // A line that a desk has kept counts with its kept rows, not with the saved ones.
    const QString kept =
        u" AND NOT EXISTS (SELECT 1 FROM GoodDetailKardexEnter_Temp AS m WHERE m.OperationType = k.OperationType AND "
        "m.OperationCode = k.OperationCode AND m.OperationRow = k.OperationRow AND (m.ComIndex = %1 OR m.DetailValueID "
        "> 0))"_s.arg(desk);
    return u"SELECT r.DetailValueID, SUM(r.Amount1) AS Amount1, SUM(r.Amount2) AS Amount2, SUM(r.TotalAmount) AS "
           "TotalAmount, MAX(r.[Length]) AS [Length], MAX(r.Width) AS Width, %1 AS Amount3 FROM ("_s.arg(
               Third(line, u"r.Amount3"_s)) +
           rows + u"GoodDetailKardex AS k WHERE k.OperationType = %1"_s.arg(Sale) + good + sold + u" UNION ALL "_s +
           rows + u"GoodDetailKardex AS k"_s + returned + u" AND NOT (%1)"_s.arg(SameLine(line, u"k."_s)) + kept +
           u" UNION ALL "_s + rows + u"GoodDetailKardexEnter_Temp AS k"_s + returned +
           u" AND k.DetailValueID > 0 AND NOT (%1 AND k.ComIndex = %2)"_s.arg(SameLine(line, u"k."_s)).arg(desk) +
           u") AS r GROUP BY r.DetailValueID"_s;
}

QStringList FillReturnable(const QString &workingTable, const host::TDocumentLine &line,
                           const host::TDetailValues &details, int desk)
{
    const QString set =
        u"UPDATE w SET Amount1_Ret = r.Amount1, Amount2_Ret = r.Amount2, Length_Ret = r.[Length], Width_Ret "
        "= r.Width, Amount3_Ret = r.Amount3 FROM %1 AS w INNER JOIN (%2) AS r ON %3 WHERE w.Amount1_Ret IS "
        "NULL"_s;
    const QString returnable = Returnable(line, desk);
    QStringList titles;
    QStringList groups;
    QString same = u"1 = 1"_s;
    for (size_t i = 1; i < details.DetailIDs.size(); ++i) {
        if (details.DetailIDs[i] == 0)
            continue;
        groups << u"ISNULL(d%1.[Value], N'')"_s.arg(Number(i));
        titles << groups.last() + u" AS T%1, "_s.arg(Number(i));
        same += u" AND ISNULL(w.DetailTitle%1, N'') = r.T%1"_s.arg(Number(i));
    }
    const QString combined =
        u"SELECT %1SUM(s.Amount1) AS Amount1, SUM(s.Amount2) AS Amount2, MAX(s.[Length]) AS [Length], MAX(s.Width) AS "
        "Width, %2 AS Amount3 FROM (%3) AS s%4%5"_s.arg(
            titles.join(QString()), Third(line, u"s.Amount3"_s), returnable, TitleJoins(details, u"s.DetailValueID"_s),
            groups.isEmpty() ? QString() : u" GROUP BY "_s + groups.join(u", "));
    return {set.arg(workingTable, returnable, u"r.DetailValueID = w.DetailValueID"_s),
            set.arg(workingTable, combined, same) +
                u" AND EXISTS (SELECT 1 FROM DetailTypes AS y WHERE y.ID = %1 AND y.DetailType = 3)"_s.arg(
                    details.DetailIDs[0])};
}

/// They take their places as they come: before their details are written one is as good as another. The table is
/// locked, so that those behind the last one are all of this batch.
QStringList MakeValues(const QString &table, const QString &isNew, const QString &good)
{
    const QString last = u"IF OBJECT_ID('tempdb..#DetailLast') IS NOT NULL DROP TABLE #DetailLast"_s;
    return {
        last,
        u"CREATE TABLE #DetailLast (ID int NOT NULL)"_s,
        u"INSERT INTO #DetailLast (ID) SELECT ISNULL(MAX(ID), 0) FROM GoodDetailValues WITH (TABLOCKX, HOLDLOCK)"_s,
        u"INSERT INTO GoodDetailValues (GoodCode) SELECT %1 FROM %2 WHERE %3 ORDER BY Place"_s.arg(good, table, isNew),
        u"UPDATE b SET ValueID = v.ID FROM %1 AS b INNER JOIN (SELECT Place, ROW_NUMBER() OVER (ORDER BY Place) AS N "
        "FROM %1 WHERE %2) AS p ON p.Place = b.Place INNER JOIN (SELECT ID, ROW_NUMBER() OVER (ORDER BY ID) AS N FROM "
        "GoodDetailValues WHERE ID > (SELECT ID FROM #DetailLast)) AS v ON v.N = p.N"_s.arg(table, isNew),
        last};
}

} // namespace desk::detail_sql
