#pragma once

#include <QKeySequence>

#include <functional>

class QAction;
class QPushButton;
class QWidget;

namespace host {
class Grid;
}

/// A command on the list of one page of the editor: its button, its key as long as the focus is on the page, and its
/// entry in the menu of the grid.
struct PageCommand
{
    QPushButton *button = nullptr;
    QKeySequence key; ///< empty for a command without one
    QString caption;  ///< in the menu, which shows the key by itself
    std::function<void()> run;
};

/// Wires the command up; the page owns the action, which is to be enabled and hidden together with the button.
QAction *AddPageCommand(QWidget *page, host::Grid *grid, const PageCommand &command);
