#pragma once

#include "host/services/types.h"

#include <QString>

/// Pieces of statements that the files of DetailDivisions share.
namespace desk::division_sql {

constexpr int Exit = static_cast<int>(host::TOperationType::DivisionExit);
constexpr int Entry = static_cast<int>(host::TOperationType::DivisionEntry);

/// A row for each detail value among `ids` (a SELECT or a list of them): ID, and T1 … T5, its values, each in the place
/// that its detail has with the good.
QString Titles(const QString &ids);
/// Those of `v` as one text.
extern const QString JoinedTitles;

} // namespace desk::division_sql
