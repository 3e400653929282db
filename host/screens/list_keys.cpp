#include "host/screens/list_keys.h"

#include <QAbstractItemView>
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

/// Offers below a field that is being typed into are no list that was opened: a command key means the screen.
void ListKeys::PutOffersAway(int key)
{
    const bool command = key >= Qt::Key_F1 && key <= Qt::Key_F12;
    if (auto *offers = qobject_cast<QAbstractItemView *>(QApplication::activePopupWidget()); offers && command)
        offers->hide();
}

bool ListKeys::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        PutOffersAway(static_cast<QKeyEvent *>(event)->key());
        m_taken = QApplication::activePopupWidget() != nullptr;
        if (m_taken)
            event->accept();
    }
    // The list closes before its key is delivered.
    return event->type() == QEvent::KeyPress && m_taken && !QApplication::activePopupWidget() &&
           static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel);
}

} // namespace host
