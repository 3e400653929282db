#pragma once

#include "desk/application/connections.h"

#include <memory>

namespace desk {

/// What people call the database: the name of its file, or of its server and of the database there.
QString DatabaseName(const Options &options);

/// Opens the database, which is made when it is a file that is missing (`demo`: with demo data), and looks whether it
/// is one of ours. One of an earlier version is brought up to date when its user wants that; before, a copy of the file
/// is put beside it. When that fails the user is told and asked again. Nothing when they leave.
/// Throws std::runtime_error, whose text is for the user, when the database cannot be worked with.
std::unique_ptr<OpenConnections> OpenDatabase(const Options &options, bool demo);

} // namespace desk
