#include "screens/good_editor/page_command.h"

#include "host/controls/grid.h"

#include <QAction>
#include <QPushButton>

QAction *AddPageCommand(QWidget *page, host::Grid *grid, const PageCommand &command)
{
    QObject::connect(command.button, &QPushButton::clicked, page, command.run);
    auto *action = new QAction(command.caption, page);
    action->setShortcut(command.key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(action, &QAction::triggered, command.button, &QPushButton::click);
    page->addAction(action);
    grid->addAction(action);
    grid->setContextMenuPolicy(Qt::ActionsContextMenu);
    return action;
}
