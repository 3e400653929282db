#pragma once

#include "host/services/good_detail_records.h"

/// Pieces of statements that the services of good details share.
namespace desk::detail_sql {

constexpr int Purchase = static_cast<int>(host::TOperationType::Purchase);
constexpr int Sale = static_cast<int>(host::TOperationType::Sale);
constexpr int SaleReturn = static_cast<int>(host::TOperationType::SaleReturn);
constexpr int PurchaseReturn = static_cast<int>(host::TOperationType::PurchaseReturn);

/// Amount1, Amount2, TotalAmount, [Length], Width, Amount3; each behind `prefix`, "-" before those that count.
QString Amounts(const QString &prefix = {}, const QString &sign = {});
/// The six amounts that a row of the exit screen takes.
QString ExitAmounts(const QString &prefix = {}, const QString &sign = {});
/// The sum of Amount3 where it counts pieces. Beside a second amount it is what a package holds, and has no sum.
QString Pieces(const QString &prefix = {});
/// Whether Amount3 of the line's good is what a package holds.
bool IsPacked(const host::TDocumentLine &line);
/// Several rows of one detail value in one: how many pieces, or for packed goods what a package holds. `column` has the
/// third amounts.
QString Third(const host::TDocumentLine &line, const QString &column);
/// Their values as literals.
QString Literals(const host::TAmounts &amounts);
/// OperationType, OperationCode and OperationRow of the line; each column behind `prefix`.
QString SameLine(const host::TDocumentLine &line, const QString &prefix = {});
/// The same and the store.
QString SameKey(const host::TDocumentLine &line, const QString &prefix = {});

/// Whether the desk of this row of DetailDesks has not been heard of for so long that its rows keep nothing from
/// others.
QString Silent(const QString &prefix = {});

/// The saved rows of a line that came in, or that went out.
QString CameIn(const QString &prefix = {});
QString WentOut(const QString &prefix = {});

/// DetailTitle1 … DetailTitle5 of the working tables; the three numbers of an operation's line.
inline constexpr auto TitleColumns = u"DetailTitle1, DetailTitle2, DetailTitle3, DetailTitle4, DetailTitle5";
inline constexpr auto KeyColumns = u"OperationType, OperationCode, OperationRow";

/// Whether the detail value `id` (a column) has exactly these values, those before `first` left aside.
QString HasDetails(const QString &id, const host::TDetailValues &details, size_t first = 0);
/// d1.[Value], … for the details that the good has, NULL for the others; and the joins that they come from, `id` being
/// the column with the detail value.
QString Titles(const host::TDetailValues &details);
QString TitleJoins(const host::TDetailValues &details, const QString &id);

/// A row for each detail value of the good that was sold, on the line's foreign document when it names one: sold less
/// returned, without what the line itself and unsaved rows of it return.
QString Returnable(const host::TDocumentLine &line, int desk);
/// Statements that fill the _Ret columns of working rows that have none: with what may be returned of the detail value,
/// and where a serial comes back that was not sold, of all that were and differ in their serial only.
QStringList FillReturnable(const QString &workingTable, const host::TDocumentLine &line,
                           const host::TDetailValues &details, int desk);

/// Statements that make a detail value for each row of a temporary table that `isNew` finds, in the order of Place, and
/// set its ValueID. `good` is a code or a column with it. What their details are is written afterwards.
QStringList MakeValues(const QString &table, const QString &isNew, const QString &good);

} // namespace desk::detail_sql
