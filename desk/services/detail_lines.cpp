#include "desk/services/detail_movements.h"
#include "desk/services/detail_sql.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

// Lines of a document that change without their screen: a scanned unit more, a line less, the second half of a
// transfer.

namespace desk {

namespace {

using detail_sql::Amounts;
using detail_sql::ExitAmounts;
using detail_sql::SameKey;
using detail_sql::WentOut;
using host::TAmounts;
using host::TDocumentLine;

const QString Titles = QString::fromUtf16(detail_sql::TitleColumns);
const QString Keys = QString::fromUtf16(detail_sql::KeyColumns);
const QString EnterTable = u"GoodDetailKardexEnter_Temp"_s;
const QString ExitTable = u"GoodDetailKardexExit_Temp"_s;

QString Operation(quint8 type, int code)
{
    return u"OperationType = %1 AND OperationCode = %2"_s.arg(type).arg(code);
}

} // namespace

bool DetailMovements::IsKept(const QString &table, const TDocumentLine &line)
{
    return host::Exists(m_connection,
                        u"SELECT TOP 1 ID FROM %1 WHERE "_s.arg(table) + Mine(SameKey(line)) + u" AND Tmp = 0"_s);
}

/// Keeps saved rows that went out, each line with its mark.
void DetailMovements::KeepSavedExits(const QString &condition)
{
    const QString desk = QString::number(m_desk.Number());
    const QString rows = u" FROM GoodDetailKardex WHERE %1 AND %2"_s.arg(condition, WentOut());
    const QString into =
        u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, AnbarCode, %2, %3, ForeignOperationCode, "
        "ComIndex, Selected, Tmp) SELECT "_s.arg(ExitTable, ExitAmounts(), Keys);
    Run(into +
        u"DetailValueID, StoreCode, GoodCode, StoreCode, -Amount1, -Amount2, -TotalAmount, [Length], Width, "
        "-Amount3, %1, ForeignOperationCode, %2, 1, 0"_s.arg(Keys, desk) +
        rows);
    Run(into + u"DISTINCT NULL, StoreCode, GoodCode, StoreCode, 0, 0, 0, 0, 0, 0, %1, 0, %2, 0, 0"_s.arg(Keys, desk) +
        rows);
}

/// Keeps saved rows that came in, without a mark. `condition` is about the ledger as `k`.
void DetailMovements::KeepSavedEntries(const TDocumentLine &line, const QString &condition)
{
    const host::TDetailValues details = m_values.DetailsOf(line.GoodCode);
    Run(u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, %2, %3, %4, ForeignOperationCode, ComIndex, Tmp) SELECT "
        "k.DetailValueID, k.StoreCode, k.GoodCode, "_s.arg(EnterTable, Titles, Amounts(), Keys) +
        u"%1, %2, %3, k.ForeignOperationCode, %4, 0 FROM GoodDetailKardex AS k%5 WHERE %6 AND %7 ORDER BY k.ID"_s.arg(
            detail_sql::Titles(details), Amounts(u"k."_s), Keys, QString::number(m_desk.Number()),
            detail_sql::TitleJoins(details, u"k.DetailValueID"_s), condition, detail_sql::CameIn(u"k."_s)));
}

std::optional<TAmounts> DetailMovements::KeptAmounts(const QString &table, const TDocumentLine &line)
{
    const QString tail = table == ExitTable ? u"_Exit"_s : QString();
    const host::Query sums(m_connection,
                           u"SELECT SUM(Amount1%1) AS Amount1, SUM(Amount2%1) AS Amount2, SUM(TotalAmount%1) AS "
                           "TotalAmount, %2 AS Amount3 FROM %3 WHERE %4 AND Tmp = 0"_s.arg(
                               tail, detail_sql::Third(line, u"Amount3"_s + tail), table, Mine(SameKey(line))));
    return TAmounts{sums.Number(u"Amount1"), sums.Number(u"Amount2"), sums.Number(u"TotalAmount"), 0, 0,
                    sums.Number(u"Amount3")};
}

std::optional<TAmounts> DetailMovements::ExitGoodDetails_Take(const TDocumentLine &line, int detailValueId)
{
    host::Transaction transaction(m_connection);
    if (!IsKept(ExitTable, line)) {
        KeepSavedExits(SameKey(line));
        MarkKept(ExitTable, line);
    }
    const QString onHand = OnHand(line, detailValueId);
    const int taken = host::Exec(
        m_connection,
        u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, AnbarCode, %2, %3, %4, ForeignOperationCode, ComIndex, "
        "Selected, Tmp) SELECT s.DetailValueID, "_s.arg(ExitTable, Amounts(), ExitAmounts(), Keys) +
            u"%2, %1, %2, "_s.arg(line.GoodCode).arg(line.StoreCode) + Amounts(u"s."_s) + u", "_s + Amounts(u"s."_s) +
            u", %1, %2, %3, %4, %5, 1, 0 FROM ("_s.arg(line.OperationType)
                .arg(line.OperationCode)
                .arg(line.OperationRow)
                .arg(line.ForeignOperationCode)
                .arg(m_desk.Number()) +
            onHand +
            u") AS s WHERE NOT EXISTS (SELECT 1 FROM %1 WHERE DetailValueID = %2 AND Tmp = 0 AND %3)"_s.arg(
                ExitTable, QString::number(detailValueId), Mine(SameKey(line))));
    const auto amounts = taken > 0 ? KeptAmounts(ExitTable, line) : std::nullopt;
    transaction.Commit();
    return amounts;
}

std::optional<TAmounts> DetailMovements::EnterGoodDetails_Return(const TDocumentLine &line, int detailValueId)
{
    host::Transaction transaction(m_connection);
    if (!IsKept(EnterTable, line)) {
        KeepSavedEntries(line, SameKey(line, u"k."_s));
        MarkKept(EnterTable, line);
    }
    const host::TDetailValues details = m_values.DetailsOf(line.GoodCode);
    // What the line has of it already is not taken off what may be returned: it is refused by itself.
    const int taken = host::Exec(
        m_connection,
        u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, %2, %3, %4, ForeignOperationCode, ComIndex, Tmp) SELECT "
        "s.DetailValueID, "_s.arg(EnterTable, Titles, Amounts(), Keys) +
            u"%2, %1, "_s.arg(line.GoodCode).arg(line.StoreCode) + detail_sql::Titles(details) + u", "_s +
            Amounts(u"s."_s) +
            u", %1, %2, %3, %4, %5, 0 FROM ("_s.arg(line.OperationType)
                .arg(line.OperationCode)
                .arg(line.OperationRow)
                .arg(line.ForeignOperationCode)
                .arg(m_desk.Number()) +
            detail_sql::Returnable(line, m_desk.Number()) + u") AS s"_s +
            detail_sql::TitleJoins(details, u"s.DetailValueID"_s) +
            u" WHERE s.DetailValueID = %1 AND s.Amount1 > 0 AND NOT EXISTS (SELECT 1 FROM %2 WHERE DetailValueID = %1 "
            "AND Tmp = 0 AND %3)"_s.arg(QString::number(detailValueId), EnterTable, Mine(SameKey(line))));
    const auto amounts = taken > 0 ? KeptAmounts(EnterTable, line) : std::nullopt;
    transaction.Commit();
    return amounts;
}

int DetailMovements::RowsOfLine(const TDocumentLine &line)
{
    return host::Scalar(m_connection, u"SELECT COUNT(*) FROM (%1) AS u"_s.arg(DetailsOfLine(line))).toInt();
}

QString DetailMovements::DetailsOfLine(const TDocumentLine &line)
{
    const QString kept = Mine(SameKey(line)) + u" AND Tmp = 0"_s;
    return u"SELECT DetailValueID FROM %1 WHERE DetailValueID IS NOT NULL AND %3 UNION ALL SELECT DetailValueID FROM %2 "
           "WHERE DetailValueID IS NOT NULL AND %3 UNION ALL SELECT DetailValueID FROM GoodDetailKardex WHERE %4 AND NOT "
           "EXISTS (SELECT 1 FROM %1 WHERE %3) AND NOT EXISTS (SELECT 1 FROM %2 WHERE %3)"_s.arg(EnterTable, ExitTable,
                                                                                                 kept, SameKey(line));
}

void DetailMovements::GoodDetailsOperation_KeepLines(quint8 operationType, int operationCode, const QString &rows)
{
    const QString operation = Operation(operationType, operationCode);
    const QString other =
        u" AND NOT EXISTS (SELECT 1 FROM (%2) AS r WHERE r.OperationRow = %1.OperationRow AND r.GoodCode "
        "= %1.GoodCode)"_s;
    const QString ledger = u"GoodDetailKardex"_s;
    host::Transaction transaction(m_connection);
    for (const QString &table : {EnterTable, ExitTable}) {
        Run(u"DELETE FROM %1 WHERE "_s.arg(table) + Mine(operation) + other.arg(table, rows));
        Run(u"INSERT INTO %1 (StoreCode, GoodCode, %2, ComIndex, Tmp) SELECT DISTINCT StoreCode, GoodCode, %2, %3, 0 "
            "FROM %4 WHERE "_s.arg(table, Keys, QString::number(m_desk.Number()), ledger) +
            operation + other.arg(ledger, rows));
    }
    transaction.Commit();
}

QList<host::TDetailRefusal> DetailMovements::GoodDetailsOperation_Transfer(quint8 outType, quint8 inType,
                                                                           int operationCode, int toStore)
{
    const QString numbers = u"%1, OperationCode, OperationRow"_s.arg(inType);
    const QString into = u"INSERT INTO %1 (DetailValueID, StoreCode, GoodCode, %2, %3, ComIndex, Tmp, "
                         "ForeignOperationCode) SELECT "_s.arg(EnterTable, Amounts(), Keys);
    const QString desk = QString::number(m_desk.Number());
    const QString out = Operation(outType, operationCode);
    host::Transaction transaction(m_connection);
    Run(u"DELETE FROM %1 WHERE "_s.arg(EnterTable) + Mine(Operation(inType, operationCode)));
    Run(into +
        u"DISTINCT NULL, %1, GoodCode, 0, 0, 0, 0, 0, 0, %2, %3, 0, 0 FROM GoodDetailKardex WHERE %4 OR %5"_s.arg(
            QString::number(toStore), numbers, desk, out, Operation(inType, operationCode)));
    Run(into + u"DetailValueID, %1, GoodCode, %2, %3, %4, 0, 0 FROM GoodDetailKardex WHERE %5 AND %6 ORDER BY ID"_s.arg(
                   QString::number(toStore), Amounts({}, u"-"_s), numbers, desk, out, WentOut()));
    QList<host::TDetailRefusal> refusals = GoodDetailsOperation_Save(inType, operationCode);
    if (refusals.isEmpty())
        transaction.Commit();
    return refusals;
}

} // namespace desk
