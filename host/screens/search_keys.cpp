#include "host/screens/search_keys.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace host {

SearchKeys::SearchKeys(QLineEdit *edit, QWidget *list, std::function<void()> take)
    : QObject(edit), m_edit(edit), m_list(list), m_take(std::move(take))
{
    edit->installEventFilter(this);
}

bool SearchKeys::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Down:
        m_list->setFocus();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_take();
        return true;
    case Qt::Key_Escape:
        if (m_edit->text().isEmpty())
            return false;
        m_edit->clear();
        return true;
    default:
        return false;
    }
}

} // namespace host
