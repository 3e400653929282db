#include "desk/services/detail_divisions.h"
#include "desk/services/division_sql.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

// The parts of a source row while they are typed: Tmp 1.

namespace desk {

namespace {

using host::DecimalLiteral;
using host::TDivisionPart;

const QString Table = u"#GoodDetailDivisionDetailItemsTemp"_s;

QString Typed(int divisionRow, int operationRow = 0)
{
    return u" WHERE Tmp = 1 AND DivisionRow = %1"_s.arg(divisionRow) +
           (operationRow == 0 ? QString() : u" AND OperationRow = %1"_s.arg(operationRow));
}

QString WasteBit(bool waste)
{
    return waste ? u"1"_s : u"0"_s;
}

} // namespace

void DetailDivisions::GoodDetailDivisionDetailItemsTemp_Begin(int code, int divisionRow)
{
    const QString columns = u"DivisionCode, DivisionRow, Amount1, Amount2, [Length], Width, Amount3, OperationType, "
                            "OperationCode, OperationRow, Waste"_s;
    host::Transaction transaction(m_connection);
    GoodDetailDivisionDetailItemsTemp_Discard();
    Run(u"INSERT INTO %1 (%2, Tmp) SELECT %2, 1 FROM %1 WHERE Tmp = 0 AND DivisionCode = %3 AND DivisionRow = %4 ORDER "
        "BY OperationRow"_s.arg(Table, columns, QString::number(code), QString::number(divisionRow)));
    transaction.Commit();
}

void DetailDivisions::GoodDetailDivisionDetailItemsTemp_Discard()
{
    Run(u"DELETE FROM %1 WHERE Tmp = 1"_s.arg(Table));
}

int DetailDivisions::GoodDetailDivisionDetailItemsTempInsertRow(const TDivisionPart &part)
{
    const host::TAmounts &amounts = part.Amounts;
    return host::Scalar(
               m_connection,
               u"INSERT INTO %1 (DivisionCode, DivisionRow, Amount1, Amount2, [Length], Width, Amount3, OperationType, "
               "OperationCode, OperationRow, Tmp, Waste) OUTPUT INSERTED.OperationRow SELECT "_s.arg(Table) +
                   QStringList{QString::number(part.DivisionCode), QString::number(part.DivisionRow),
                               DecimalLiteral(amounts.Amount1), DecimalLiteral(amounts.Amount2),
                               DecimalLiteral(amounts.Length), DecimalLiteral(amounts.Width),
                               DecimalLiteral(amounts.Amount3), QString::number(division_sql::Entry),
                               QString::number(part.DivisionCode)}
                       .join(u", ") +
                   u", ISNULL(MAX(OperationRow), 0) + 1, 1, %1 FROM %2"_s.arg(WasteBit(part.Waste), Table))
        .toInt();
}

void DetailDivisions::GoodDetailDivisionDetailItemsTempUpdateRow(const TDivisionPart &part)
{
    const host::TAmounts &amounts = part.Amounts;
    Run(u"UPDATE %1 SET Amount1 = %2, Amount2 = %3, [Length] = %4, Width = %5, Amount3 = %6, Waste = %7"_s.arg(
            Table, DecimalLiteral(amounts.Amount1), DecimalLiteral(amounts.Amount2), DecimalLiteral(amounts.Length),
            DecimalLiteral(amounts.Width), DecimalLiteral(amounts.Amount3), WasteBit(part.Waste)) +
        Typed(part.DivisionRow, part.OperationRow));
}

void DetailDivisions::GoodDetailDivisionDetailItemsTempDeleteRow(int divisionRow, int operationRow)
{
    Run(u"DELETE FROM "_s + Table + Typed(divisionRow, operationRow));
}

void DetailDivisions::GoodDetailDivisionDetailItemsTempDeleteAllRow(int divisionRow)
{
    Run(u"DELETE FROM "_s + Table + Typed(divisionRow));
}

std::optional<TDivisionPart> DetailDivisions::GoodDetailDivisionDetailItemsTemp_Row(int divisionRow, int operationRow)
{
    const host::Query row(m_connection, u"SELECT * FROM "_s + Table + Typed(divisionRow, operationRow));
    if (row.IsEmpty())
        return std::nullopt;
    const host::TAmounts amounts{row.Number(u"Amount1"), row.Number(u"Amount2"), row.Number(u"Amount1"),
                                 row.Number(u"Length"),  row.Number(u"Width"),   row.Number(u"Amount3")};
    return TDivisionPart{row.Int(u"DivisionCode"), divisionRow, operationRow, amounts, row.Bool(u"Waste")};
}

host::Quantity DetailDivisions::TypedAmount(const QString &column, int operationRow)
{
    const host::Query sum(m_connection, u"SELECT SUM(%1) AS Amount FROM %2 WHERE Tmp = 1 AND OperationRow = %3"_s.arg(
                                            column, Table, QString::number(operationRow)));
    return sum.Number(u"Amount");
}

host::Quantity DetailDivisions::GoodDetailDivisionDetailItemsTemp_Get_Amount1_By_OperationRow(int operationRow)
{
    return TypedAmount(u"Amount1"_s, operationRow);
}

host::Quantity DetailDivisions::GoodDetailDivisionDetailItemsTemp_Get_Amount3_By_OperationRow(int operationRow)
{
    return TypedAmount(u"Amount3"_s, operationRow);
}

int DetailDivisions::TypedRow(int divisionRow, bool waste, const QString &measure)
{
    return host::Scalar(m_connection, u"SELECT MIN(OperationRow) FROM "_s + Table + Typed(divisionRow) +
                                          u" AND Waste = %1 AND "_s.arg(WasteBit(waste)) + measure)
        .toInt();
}

int DetailDivisions::GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amount3(int divisionRow,
                                                                                   host::Quantity amount3, bool waste)
{
    return TypedRow(divisionRow, waste, u"Amount3 = "_s + DecimalLiteral(amount3));
}

int DetailDivisions::GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_LengthWidth(int divisionRow,
                                                                                       host::Quantity length,
                                                                                       host::Quantity width, bool waste)
{
    return TypedRow(divisionRow, waste,
                    u"[Length] = %1 AND Width = %2"_s.arg(DecimalLiteral(length), DecimalLiteral(width)));
}

int DetailDivisions::GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amounts(int divisionRow,
                                                                                   host::Quantity amount1,
                                                                                   host::Quantity amount2, bool waste)
{
    const QString all = u"%1 = CAST(Amount3 * %2 AS decimal(23,9))"_s;
    return TypedRow(divisionRow, waste,
                    all.arg(u"Amount1"_s, DecimalLiteral(amount1)) + u" AND "_s +
                        all.arg(u"Amount2"_s, DecimalLiteral(amount2)));
}

host::TAmounts DetailDivisions::GoodDetailDivisionDetailItemsTemp_Sum(int divisionRow)
{
    const host::Query sums(m_connection, u"SELECT SUM(Amount1) AS Amount1, SUM(Amount2) AS Amount2, SUM(Amount3) AS "
                                         "Amount3 FROM "_s +
                                             Table + Typed(divisionRow));
    return {sums.Number(u"Amount1"), sums.Number(u"Amount2"), sums.Number(u"Amount1"), 0, 0, sums.Number(u"Amount3")};
}

void DetailDivisions::GoodDetailDivisionDetailItemsTemp_Update_Tmp(int divisionRow, int from, int to)
{
    const QString row = u" WHERE DivisionRow = %1 AND Tmp = "_s.arg(divisionRow);
    host::Transaction transaction(m_connection);
    Run(u"DELETE FROM "_s + Table + row + QString::number(to));
    Run(u"UPDATE %1 SET Tmp = %2"_s.arg(Table).arg(to) + row + QString::number(from));
    transaction.Commit();
}

} // namespace desk
