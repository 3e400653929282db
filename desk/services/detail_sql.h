#pragma once

#include "host/services/good_detail_records.h"

/// Pieces of statements that the services of good details share.
namespace desk::detail_sql {

/// The kinds of document that the ledger of the desk knows beside those of the module.
constexpr int Sale = 2;
constexpr int SaleReturn = 4;

/// Amount1, Amount2, TotalAmount, [Length], Width, Amount3; each behind `prefix`, "-" before those that count.
QString Amounts(const QString &prefix = {}, const QString &sign = {});
/// The sum of Amount3 where it counts pieces. Beside a second amount it is what a package holds, and has no sum.
QString Pieces(const QString &prefix = {});
/// Their values as literals.
QString Literals(const host::TAmounts &amounts);
/// OperationType, OperationCode and OperationRow of the line; each column behind `prefix`.
QString SameLine(const host::TDocumentLine &line, const QString &prefix = {});
/// The same and the store.
QString SameKey(const host::TDocumentLine &line, const QString &prefix = {});

/// Whether the detail value `id` (a column) has exactly these values, those before `first` left aside.
QString HasDetails(const QString &id, const host::TDetailValues &details, size_t first = 0);
/// d1.[Value], … for the details that the good has, NULL for the others; and the joins that they come from, `id` being
/// the column with the detail value.
QString Titles(const host::TDetailValues &details);
QString TitleJoins(const host::TDetailValues &details, const QString &id);

/// A row for each detail value of the good that was sold, on the line's foreign document when it names one: sold less
/// returned, without what the line itself and unsaved rows of it return.
QString Returnable(const host::TDocumentLine &line, int desk);

} // namespace desk::detail_sql
