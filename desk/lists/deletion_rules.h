#pragma once

#include "host/services/types.h"

#include <QSqlDatabase>

#include <optional>

namespace desk {

/// Why an entity must not be deleted: the clause that completes "… قابل حذف نیست، زیرا …". Nothing when nothing in the
/// database uses it.
std::optional<QString> ReasonToKeep(const QSqlDatabase &connection, host::TSoftwarePart part, int code);

} // namespace desk
