#include "gooddetail/scan_keeper.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

namespace good_detail {

ScanKeeper::ScanKeeper(QWidget *screen) : QObject(nullptr), m_screen(screen)
{
    qApp->installEventFilter(this);
}

ScanKeeper::~ScanKeeper()
{
    qApp->removeEventFilter(this);
}

void ScanKeeper::Over(QWidget *screen, const std::function<void()> &message,
                      std::function<void(const QStringList &, const QString &)> take)
{
    const QPointer<QWidget> place(screen);
    QStringList scans;
    QString begun;
    {
        const ScanKeeper keeper(screen);
        message();
        scans = keeper.Scans();
        begun = keeper.Begun();
    }
    if (place && (!scans.isEmpty() || !begun.isEmpty()))
        QMetaObject::invokeMethod(
            place.data(), [take = std::move(take), scans, begun] { take(scans, begun); }, Qt::QueuedConnection);
}

bool ScanKeeper::eventFilter(QObject *watched, QEvent *event)
{
    const auto *target = event->type() == QEvent::KeyPress ? qobject_cast<QWidget *>(watched) : nullptr;
    if (!target || target->window() == m_screen)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        if (!m_begun.isEmpty())
            m_scans << std::exchange(m_begun, {});
        return false;
    }
    if (key->key() == Qt::Key_Tab && !m_begun.isEmpty()) { // some scanners end with it
        m_scans << std::exchange(m_begun, {});
        return true;
    }
    const QString text = key->text();
    const bool command = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (command || text.isEmpty() || !text.front().isPrint() || (m_begun.isEmpty() && text.trimmed().isEmpty()))
        return false;
    m_begun += text;
    return true;
}

} // namespace good_detail
