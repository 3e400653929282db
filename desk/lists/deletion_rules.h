#pragma once

#include "host/services/types.h"

#include <QSqlDatabase>

#include <optional>

namespace desk {

/// Why an entity must not be deleted: the clause that completes "… قابل حذف نیست، زیرا …". Nothing when nothing in the
/// database uses it.
std::optional<QString> ReasonToKeep(const QSqlDatabase &connection, host::TSoftwarePart part, int code);

/// The same for a statement over many: a condition that something uses the entity whose code stands in the column.
QString UsedCondition(host::TSoftwarePart part, const QString &codeColumn);

} // namespace desk
