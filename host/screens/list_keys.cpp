#include "host/screens/list_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>

namespace host {

void ListKeys::Install()
{
    static QPointer<ListKeys> installed; // goes with the application
    if (installed)
        return;
    installed = new ListKeys(qApp);
    qApp->installEventFilter(installed);
}

bool ListKeys::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        m_taken = QApplication::activePopupWidget() != nullptr;
        if (m_taken)
            event->accept();
    }
    // The list closes before its key is delivered.
    return event->type() == QEvent::KeyPress && m_taken && !QApplication::activePopupWidget() &&
           static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel);
}

} // namespace host
