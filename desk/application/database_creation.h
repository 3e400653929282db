#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace desk {

/// A script of desk/database by its name.
QString DatabaseScript(const QString &name);

/// The batches of a script: what stands between lines that say GO.
QStringList Batches(const QString &script);

/// Told before each step; `done` of `total` batches have run.
using CreationProgress = std::function<void(int done, int total)>;

/// Makes an embedded database: tables and procedures, and demo data when wanted. The file appears under its name only
/// when it is complete; a file of that name that another desk made meanwhile is kept.
/// Throws host::DatabaseError.
void CreateDatabase(const QString &file, bool demo, const CreationProgress &progress = {});

} // namespace desk
