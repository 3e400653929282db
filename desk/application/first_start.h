#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace desk {

/// What a desk begins with that has no database yet.
struct Beginning
{
    bool demo = false;
    QString backup; ///< a copy that is brought back instead
};

/// Asks whoever starts the desk for the first time; nothing when they leave. `file` is where the database will be.
std::optional<Beginning> AskForBeginning(const QString &file);

/// Lets the user choose a copy of a database; empty when they leave.
QString ChooseBackup(QWidget *parent);

} // namespace desk
