#include "desk/application/application.h"

#include <QApplication>

#include <cstring>

namespace {

// Without this look the toolkit would end the program with a core dump.
bool MayShowWindows(int argc, char *argv[])
{
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            return true;
    }
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "-platform") == 0)
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    if (!MayShowWindows(argc, argv)) {
        const QCoreApplication application(argc, argv);
        return desk::RunWithoutDisplay();
    }
    QApplication application(argc, argv);
    return desk::Run(application);
}
