#pragma once

#include "host/look/theme.h"

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace desk {

/// What the command line asks for.
struct Options
{
    QString databaseFile; ///< the embedded database; created when it is missing
    QString connection;   ///< an ODBC connection string; empty for the embedded database
    bool demo = false;    ///< a database that has to be created gets demo data
    int user = 1;         ///< code of the user who signs in
    QString tourFolder;   ///< where the tour leaves its pictures; empty for ordinary work
    host::theme::Look look = host::theme::Look::Desktop;
    bool help = false;
    bool version = false;
    bool usual = true; ///< no database was named: it is the user's own, which is offered when it is missing
};

/// A command line that cannot be followed; the text is for the person who typed it.
class OptionsError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Reads the arguments of the program, its name first. Throws OptionsError.
Options ReadOptions(const QStringList &arguments);

/// What --help prints.
QString HelpText();
/// What --version prints.
QString VersionText();

} // namespace desk
