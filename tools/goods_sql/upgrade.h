// Databases of an earlier version.
#pragma once

#include "tools/goods_sql/databases.h"

#include <QTextStream>

/**
 * Brings a database of an earlier version to this one, all or nothing, and says so; one of this version stays as it is.
 * A file is copied beside itself first, a server has backups of its own. Throws ScriptError, and then the database is
 * as it was.
 */
void Upgrade(QSqlDatabase database, const Target &target, QTextStream &out);
