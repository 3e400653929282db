#include "desk/services/detail_movements.h"
#include "desk/services/detail_sql.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

// Detail values that come and go with the rows of lines: a serial that was given up may be entered with other values,
// and one that another desk gave up meanwhile is there again when it is kept.

namespace desk {

namespace {

const QString EnterTable = u"GoodDetailKardexEnter_Temp"_s;

} // namespace

/// Notes the detail values of rows that are about to be deleted. Those under the desk's negative number have them
/// negative.
void DetailMovements::NoteDropped(const QString &rows)
{
    Run(u"IF OBJECT_ID('tempdb..#DetailDropped') IS NOT NULL DROP TABLE #DetailDropped"_s);
    Run(u"CREATE TABLE #DetailDropped (DetailValueID int NOT NULL)"_s);
    Run(u"INSERT INTO #DetailDropped (DetailValueID) SELECT DISTINCT ABS(DetailValueID) FROM %1 WHERE DetailValueID IS NOT "
        "NULL AND %2"_s.arg(EnterTable, rows));
}

void DetailMovements::DeleteDropped()
{
    m_values.DeleteUnusedDetailValuesAmong(u"SELECT DetailValueID FROM #DetailDropped"_s);
}

void DetailMovements::MakeMissingValues(const host::TDocumentLine &line)
{
    const QString missing =
        u" FROM %1 AS w WHERE w.DetailValueID IS NOT NULL AND w.ComIndex = %2 AND %3 AND NOT EXISTS (SELECT 1 FROM "
        "GoodDetailValues AS v WITH (UPDLOCK, HOLDLOCK) WHERE v.ID = w.DetailValueID)"_s.arg(
            EnterTable, QString::number(m_desk.Number()), detail_sql::SameLine(line, u"w."_s));
    if (!host::Exists(m_connection, u"SELECT TOP 1 w.ID"_s + missing))
        return;
    const host::TDetailValues details = m_values.DetailsOf(line.GoodCode);
    QStringList columns;
    QStringList titles;
    QStringList values;
    QString same = u"1 = 1"_s;
    QString written;
    for (size_t i = 0; i < details.DetailIDs.size(); ++i) {
        const QString number = QString::number(i + 1);
        columns << u"T%1"_s.arg(number);
        titles << u"ISNULL(w.DetailTitle%1, N'') AS T%1"_s.arg(number);
        if (details.DetailIDs[i] == 0)
            continue;
        values << u", ISNULL(d%1.[Value], N'') AS T%1"_s.arg(number);
        same += u" AND m.T%1 = x.T%1"_s.arg(number);
        written += u"%1SELECT ValueID, %2, T%3 FROM #DetailMissing WHERE IsNew = 1 AND T%3 <> N''"_s.arg(
            written.isEmpty() ? QString() : u" UNION ALL "_s, QString::number(details.DetailIDs[i]), number);
    }
    Run(u"IF OBJECT_ID('tempdb..#DetailMissing') IS NOT NULL DROP TABLE #DetailMissing"_s);
    Run(u"CREATE TABLE #DetailMissing (Place int IDENTITY(1,1) NOT NULL, T1 nvarchar(100) COLLATE DATABASE_DEFAULT, T2 "
        "nvarchar(100) COLLATE DATABASE_DEFAULT, T3 nvarchar(100) COLLATE DATABASE_DEFAULT, T4 nvarchar(100) COLLATE "
        "DATABASE_DEFAULT, T5 nvarchar(100) COLLATE DATABASE_DEFAULT, ValueID int NULL, IsNew bit NOT NULL DEFAULT 0)"_s);
    Run(u"INSERT INTO #DetailMissing (%1) SELECT DISTINCT %2"_s.arg(columns.join(u", "), titles.join(u", ")) + missing);
    // Another desk may have made the same meanwhile.
    Run(u"UPDATE m SET ValueID = x.ID FROM #DetailMissing AS m INNER JOIN (SELECT v.ID%1 FROM GoodDetailValues AS v%2 WHERE "
        "v.GoodCode = %3) AS x ON %4"_s.arg(values.join(QString()), detail_sql::TitleJoins(details, u"v.ID"_s),
                                            QString::number(line.GoodCode), same));
    Run(u"UPDATE #DetailMissing SET IsNew = 1 WHERE ValueID IS NULL"_s);
    for (const QString &text :
         detail_sql::MakeValues(u"#DetailMissing"_s, u"IsNew = 1"_s, QString::number(line.GoodCode)))
        Run(text);
    if (!written.isEmpty())
        Run(u"INSERT INTO GoodDetailValueDetails (DetailValueID, DetailID, [Value]) "_s + written);
    QString match;
    for (const QString &column : std::as_const(columns))
        match += u" AND ISNULL(w.DetailTitle%1, N'') = m.%2"_s.arg(column.sliced(1), column);
    Run(u"UPDATE w SET DetailValueID = m.ValueID FROM %1 AS w INNER JOIN #DetailMissing AS m ON w.ComIndex = %2 AND %3%4 "
        "WHERE w.DetailValueID IS NOT NULL AND NOT EXISTS (SELECT 1 FROM GoodDetailValues AS v WHERE v.ID = "
        "w.DetailValueID)"_s.arg(EnterTable, QString::number(m_desk.Number()), detail_sql::SameLine(line, u"w."_s),
                                 match));
}

} // namespace desk
