#pragma once

#include "tsql/parse/ast.h"

namespace tsql {

/// Parses one batch. Throws Error with the line and the offending text for anything that is not understood:
/// nothing of the batch is run then.
Batch ParseBatch(const QString &text);

/// The column, table and constraint parts of several statements refer to literals by index; this parses a
/// definition kept in the catalogue, whose literals belong to itself.
StatementPtr ParseDefinition(const QString &text);

} // namespace tsql
