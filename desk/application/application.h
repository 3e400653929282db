#pragma once

class QApplication;

namespace desk {

/// The whole program: reads the command line, opens (or creates) the database, installs the host, loads the goods
/// module, and works until the window closes. The exit code of the process.
int Run(QApplication &application);

} // namespace desk
