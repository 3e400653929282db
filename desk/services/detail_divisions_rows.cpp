#include "desk/services/detail_divisions.h"
#include "desk/services/detail_sql.h"
#include "desk/services/division_sql.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

// The units that are divided, and the source rows that take of them.

namespace desk {

namespace division_sql {

const QString JoinedTitles = u"LEFT(LTRIM(CONCAT(v.T1, N' ' + v.T2, N' ' + v.T3, N' ' + v.T4, N' ' + v.T5)), 250)"_s;

QString Titles(const QString &ids)
{
    return u"SELECT v.ID, MAX(CASE WHEN p.Place = 1 THEN d.[Value] END) AS T1, MAX(CASE WHEN p.Place = 2 THEN d.[Value] "
           "END) AS T2, MAX(CASE WHEN p.Place = 3 THEN d.[Value] END) AS T3, MAX(CASE WHEN p.Place = 4 THEN d.[Value] "
           "END) AS T4, MAX(CASE WHEN p.Place = 5 THEN d.[Value] END) AS T5 FROM GoodDetailValues AS v INNER JOIN "
           "GoodDetailValueDetails AS d ON d.DetailValueID = v.ID INNER JOIN (SELECT r.GoodCode, r.DetailID, "
           "ROW_NUMBER() OVER (PARTITION BY r.GoodCode ORDER BY CASE t.DetailType WHEN 3 THEN 0 WHEN 6 THEN 1 ELSE 2 "
           "END, r.ID) AS Place FROM GoodDetailRelation AS r INNER JOIN DetailTypes AS t ON t.ID = r.DetailID WHERE "
           "r.GoodCode IN (SELECT w.GoodCode FROM GoodDetailValues AS w WHERE w.ID IN (%1))) AS p ON p.GoodCode = "
           "v.GoodCode AND p.DetailID = d.DetailID WHERE v.ID IN (%1) GROUP BY v.ID"_s.arg(ids);
}

} // namespace division_sql

namespace {

using division_sql::Exit;
using host::NQuotedStr;
using host::TAmounts;
using host::TDivisionSource;

/// More than a choice can show.
constexpr int MostUnits = 200;
constexpr qsizetype NameLength = 100;
constexpr qsizetype DetailLength = 250;
constexpr qsizetype CommentLength = 200;

const QString Columns = u"h.Amount1, h.Amount2, h.TotalAmount, h.[Length], h.Width, h.Amount3, v.T1, v.T2, v.T3, v.T4, "
                        "v.T5, "_s +
                        division_sql::JoinedTitles + u" AS GoodDetail"_s;

TAmounts ReadAmounts(const host::Query &row)
{
    return {row.Number(u"Amount1"), row.Number(u"Amount2"), row.Number(u"TotalAmount"),
            row.Number(u"Length"),  row.Number(u"Width"),   row.Number(u"Amount3")};
}

void ReadTitles(const host::Query &row, QStringView column, TDivisionSource &source)
{
    for (size_t i = 0; i < source.DetailTitle.size(); ++i)
        source.DetailTitle[i] = row.Text(u"%1%2"_s.arg(column).arg(i + 1));
    source.GoodDetail = row.Text(u"GoodDetail");
}

/// How the ledger knows packed goods: packages beside what each holds.
quint8 UnitTypeOf(const TAmounts &taken)
{
    return taken.Amount2 != 0 && taken.Amount3 != 0 ? 3 : 1;
}

QString WorkingRow(int operationRow)
{
    return u" FROM #GoodDetailDivisionDetailTemp WHERE Tmp = 0 AND OperationRow = %1"_s.arg(operationRow);
}

} // namespace

QString DetailDivisions::Mine(host::TOperationType type, int code)
{
    return u"ComIndex = %1 AND OperationType = %2 AND OperationCode = %3"_s.arg(m_desk.Number())
        .arg(static_cast<int>(type))
        .arg(code);
}

std::optional<TDivisionSource> DetailDivisions::GoodDetailDivision_Source(const host::TDocumentLine &line,
                                                                          int detailValueId)
{
    const host::Query unit(
        m_connection,
        u"SELECT %1 FROM (%2) AS h LEFT JOIN (%3) AS v ON v.ID = h.DetailValueID"_s.arg(
            Columns, m_movements.OnHand(line, detailValueId), division_sql::Titles(QString::number(detailValueId))));
    if (unit.IsEmpty())
        return std::nullopt;
    TDivisionSource source{detailValueId, line.StoreCode, line.GoodCode, {}, {}, ReadAmounts(unit)};
    ReadTitles(unit, u"T", source);
    return source;
}

QList<TDivisionSource> DetailDivisions::GoodDetailDivision_FindUnits(const QString &serialOrBarcode)
{
    const QString text = host::SerialText(serialOrBarcode);
    if (text.isEmpty())
        return {};
    const QString found =
        u"SELECT d.DetailValueID, %1 AS Place FROM GoodDetailValueDetails AS d INNER JOIN DetailTypes "
        "AS t ON t.ID = d.DetailID AND t.DetailType IN (3, 6) WHERE d.[Value] %2"_s;
    const QString either = found.arg(u"0"_s, u"= "_s + NQuotedStr(text)) + u" UNION ALL "_s +
                           found.arg(u"1"_s, u"LIKE "_s + NQuotedStr(host::LikeText(text) + u"/%"_s));
    const QString ids = u"SELECT f.DetailValueID FROM (%1) AS f"_s.arg(either);
    const QString onHand =
        u"SELECT k.DetailValueID, k.StoreCode, k.GoodCode, SUM(k.Amount1) AS Amount1, SUM(k.Amount2) AS Amount2, "
        "SUM(k.TotalAmount) AS TotalAmount, MAX(k.[Length]) AS [Length], MAX(k.Width) AS Width, CASE WHEN "
        "MAX(ABS(k.Amount2)) > 0 THEN MAX(ABS(k.Amount3)) ELSE SUM(k.Amount3) END AS Amount3 FROM GoodDetailKardex AS k "
        "WHERE k.DetailValueID IN (%1) GROUP BY k.DetailValueID, k.StoreCode, k.GoodCode HAVING SUM(k.Amount1) > 0"_s
            .arg(ids);
    QList<TDivisionSource> units;
    for (host::Query rows(
             m_connection,
             u"SELECT TOP %1 h.DetailValueID, h.StoreCode, h.GoodCode, %2 FROM (%3) AS h INNER JOIN "
             "(SELECT e.DetailValueID, MIN(e.Place) AS Place FROM (%4) AS e GROUP BY e.DetailValueID) AS n "
             "ON n.DetailValueID = h.DetailValueID LEFT JOIN (%5) AS v ON v.ID = h.DetailValueID ORDER BY "
             "n.Place, h.DetailValueID, h.StoreCode"_s.arg(QString::number(MostUnits), Columns, onHand, either,
                                                           division_sql::Titles(ids)));
         !rows.Eof(); rows.Next()) {
        units << TDivisionSource{rows.Int(u"DetailValueID"), rows.Int(u"StoreCode"), rows.Int(u"GoodCode"), {}, {},
                                 ReadAmounts(rows)};
        ReadTitles(rows, u"T", units.last());
    }
    return units;
}

int DetailDivisions::GetOperationRow()
{
    return host::Scalar(m_connection, u"SELECT ISNULL(MAX(OperationRow), 0) + 1 FROM #GoodDetailDivisionDetailTemp"_s)
        .toInt();
}

void DetailDivisions::InsertGoodDetailDivisionDetailTemp_Row(const host::TDivisionRow &row)
{
    const TDivisionSource &source = row.Source;
    QStringList values{QString::number(source.StoreCode), NQuotedStr(row.StoreName.left(NameLength)),
                       QString::number(source.GoodCode), NQuotedStr(row.GoodName.left(NameLength)),
                       QString::number(source.DetailValueID)};
    for (const QString &title : source.DetailTitle)
        values << NQuotedStr(title);
    values << NQuotedStr(source.GoodDetail.left(DetailLength));
    for (const host::Quantity amount :
         {row.Taken.Amount1, row.Taken.Amount2, row.Taken.Length, row.Taken.Width, row.Taken.Amount3})
        values << host::DecimalLiteral(amount);
    values << NQuotedStr(row.Comment.left(CommentLength)) << QString::number(Exit) << QString::number(row.DivisionCode)
           << QString::number(row.OperationRow) << u"0"_s;
    host::Exec(m_connection,
               u"INSERT INTO #GoodDetailDivisionDetailTemp (StoreCode, StoreName, GoodCode, GoodName, DetailValueID, "
               "DetailTitle1, DetailTitle2, DetailTitle3, DetailTitle4, DetailTitle5, GoodDetail, Amount1, Amount2, "
               "[Length], Width, Amount3, Comment, OperationType, OperationCode, OperationRow, Tmp) VALUES ("_s +
                   values.join(u", ") + u')');
}

std::optional<host::TDivisionRow> DetailDivisions::GoodDetailDivisionDetailTemp_Row(int operationRow)
{
    const host::Query kept(m_connection, u"SELECT *, Amount1 AS TotalAmount"_s + WorkingRow(operationRow));
    if (kept.IsEmpty())
        return std::nullopt;
    host::TDivisionRow row{kept.Int(u"OperationCode"), operationRow,           {},
                           kept.Text(u"StoreName"),    kept.Text(u"GoodName"), ReadAmounts(kept),
                           kept.Text(u"Comment")};
    row.Source = {kept.Int(u"DetailValueID"), kept.Int(u"StoreCode"), kept.Int(u"GoodCode"), {}, {}, {}};
    ReadTitles(kept, u"DetailTitle", row.Source);
    host::TDocumentLine line;
    line.GoodCode = row.Source.GoodCode;
    line.StoreCode = row.Source.StoreCode;
    line.UnitType = UnitTypeOf(row.Taken);
    line.OperationType = quint8(Exit);
    line.OperationCode = row.DivisionCode;
    line.OperationRow = operationRow;
    const host::Query onHand(m_connection, m_movements.OnHand(line, row.Source.DetailValueID));
    if (!onHand.IsEmpty())
        row.Source.OnHand = ReadAmounts(onHand);
    return row;
}

QString DetailDivisions::GoodDetailDivisionDetailTemp_Get_Comment(int operationRow)
{
    return host::Scalar(m_connection, u"SELECT Comment"_s + WorkingRow(operationRow)).toString();
}

void DetailDivisions::GoodDetailDivisionDetailTempDelete(int code, int operationRow)
{
    Run(u"DELETE"_s + WorkingRow(operationRow) + u" AND OperationCode = %1"_s.arg(code));
}

void DetailDivisions::GoodDetailDivisionDetailItemsTempDelete(int code, int operationRow)
{
    Run(u"DELETE FROM #GoodDetailDivisionDetailItemsTemp WHERE Tmp = 0 AND DivisionCode = %1 AND DivisionRow = %2"_s
            .arg(code)
            .arg(operationRow));
}

void DetailDivisions::Insert_GoodDetailKardexExit_Temp_Row(const host::TDivisionRow &row)
{
    m_desk.Begin();
    const TDivisionSource &source = row.Source;
    const QString store = QString::number(source.StoreCode);
    host::Transaction transaction(m_connection);
    Run(u"DELETE FROM GoodDetailKardexExit_Temp WHERE %1 AND OperationRow = %2"_s.arg(
        Mine(host::TOperationType::DivisionExit, row.DivisionCode), QString::number(row.OperationRow)));
    Run(u"INSERT INTO GoodDetailKardexExit_Temp (DetailValueID, StoreCode, GoodCode, AnbarCode, %1, %2, %3, "
        "ForeignOperationCode, ComIndex, Selected, Tmp) VALUES ("_s.arg(
            detail_sql::Amounts(), detail_sql::ExitAmounts(), QString::fromUtf16(detail_sql::KeyColumns)) +
        QStringList{QString::number(source.DetailValueID), store, QString::number(source.GoodCode), store,
                    detail_sql::Literals(source.OnHand), detail_sql::Literals(row.Taken), QString::number(Exit),
                    QString::number(row.DivisionCode), QString::number(row.OperationRow), u"0"_s,
                    QString::number(m_desk.Number()), u"1, 0"_s}
            .join(u", ") +
        u')');
    transaction.Commit();
    m_desk.Kept();
}

void DetailDivisions::Delete_GoodDetailKardexTemp(host::TOperationType type, int code, int operationRow)
{
    m_desk.Begin();
    const QString row = u" AND OperationRow = %1"_s.arg(operationRow);
    host::Transaction transaction(m_connection);
    Run(u"DELETE FROM GoodDetailKardexExit_Temp WHERE "_s + Mine(type, code) + row);
    // What the saved row takes is there for other rows from now on: a mark without a detail value tells so.
    Run(u"INSERT INTO GoodDetailKardexExit_Temp (StoreCode, GoodCode, %1, ComIndex, Tmp) SELECT DISTINCT StoreCode, "
        "GoodCode, %1, %2, 0 FROM GoodDetailKardex WHERE OperationType = %3 AND OperationCode = %4%5"_s.arg(
            QString::fromUtf16(detail_sql::KeyColumns), QString::number(m_desk.Number()),
            QString::number(static_cast<int>(type)), QString::number(code), row));
    transaction.Commit();
    m_desk.Kept();
}

} // namespace desk
