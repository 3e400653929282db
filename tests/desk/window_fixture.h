#pragma once

#include "desk/application/goods_module.h"
#include "desk/window/main_window.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"

#include <QAction>
#include <QTabWidget>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace test {

/// The desk with its window and the module that it loads at run time.
struct DeskWindow
{
    Desk t;
    desk::GoodsModule module;
    std::unique_ptr<desk::MainWindow> window;
    QTabWidget *pages = nullptr;

    DeskWindow()
    {
        host::install(t.desk.host);
        if (!module.Load())
            qFatal("%s", qPrintable(module.ErrorText()));
        window = std::make_unique<desk::MainWindow>(t.desk, module, u"test"_s);
        pages = &Find<QTabWidget>(window.get(), u"Pages"_s);
        Show(*window);
    }
    ~DeskWindow()
    {
        window.reset();
        module.Unload();
    }
    DeskWindow(const DeskWindow &) = delete;
    DeskWindow &operator=(const DeskWindow &) = delete;

    void Run(const QString &command) const { window->Command(command)->trigger(); }
};

} // namespace test
