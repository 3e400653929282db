#pragma once

#include <QSqlDatabase>
#include <QString>

namespace desk {

/// Copies the open embedded database to `file`, which appears, or is replaced, only when the copy is complete. Others
/// may go on working meanwhile. Throws host::DatabaseError.
void BackUp(const QSqlDatabase &connection, const QString &file);

/// Whether `file` holds a database of this program, be it of an earlier version. Throws host::DatabaseError, whose text
/// names the file and says why not.
void CheckBackup(const QString &file);

/// Puts a copy of `backup` in the place of the database `file`, which no desk has open. What stood there stays beside
/// it, with the time in its name: that name is the answer, empty when there was nothing. Throws host::DatabaseError,
/// and then everything is as before.
QString Restore(const QString &backup, const QString &file);

} // namespace desk
