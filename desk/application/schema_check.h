#pragma once

#include "desk/database/schema.h"

#include <QSqlDatabase>

namespace desk {

/// How the database stands to the tables and procedures that the desk works with. Throws DatabaseError when it cannot
/// be asked.
SchemaDifference CompareSchema(const QSqlDatabase &connection);

/// What to say of the database `name`, which the desk cannot work with; empty when it can, or could after an upgrade.
QString SchemaTrouble(const SchemaDifference &difference, const QString &name);

/// Brings a database of an earlier version to this one, in one transaction. Throws DatabaseError, and then it is as it
/// was.
void UpgradeSchema(const QSqlDatabase &connection, const std::function<void(int done, int total)> &progress = {});

} // namespace desk
