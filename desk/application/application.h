#pragma once

class QApplication;

namespace desk {

/// The whole program: reads the command line, opens (or creates) the database, installs the host, loads the goods
/// module, and works until the window closes. The exit code of the process.
int Run(QApplication &application);

/// The same where no window can be shown: answers --help and a wrong command line, and refuses all else.
int RunWithoutDisplay();

} // namespace desk
