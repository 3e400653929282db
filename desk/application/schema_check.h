#pragma once

#include <QSqlDatabase>
#include <QStringList>

namespace desk {

/// One statement for each table of a script, which reads no row but names every column: `SELECT TOP 0 [a], [b] FROM t`.
QStringList ColumnProbes(const QString &script);

/// Throws DatabaseError, naming what is missing, when a table or column that the desk works with is not there: a
/// database of something else, or one that another version made.
void CheckSchema(const QSqlDatabase &connection);

} // namespace desk
