#include "desk/application/application.h"

#include <QtWidgets/QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    return desk::Run(application);
}
