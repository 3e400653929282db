#include "desk/help/help.h"

#include "desk/help/guide.h"
#include "desk/help/guide_window.h"

#include <QApplication>

namespace desk {

Help::Help() = default;

Help::~Help()
{
    delete m_window;
}

void Help::Show(const QString &screen)
{
    QWidget *owner = QApplication::activeWindow();
    if (owner != m_window && (!m_window || m_window->parentWidget() != owner)) {
        delete m_window; // below another screen, which may be modal, it would not take the keys
        m_window = new GuideWindow(owner);
    }
    m_window->Open(guide::PageOf(screen));
}

} // namespace desk
