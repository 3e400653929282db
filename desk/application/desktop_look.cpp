#include "desk/application/desktop_look.h"

#include <QApplication>
#include <QDBusVariant>
#include <QEvent>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::theme::Look;

const QString Service = u"org.freedesktop.portal.Desktop"_s;
const QString Place = u"/org/freedesktop/portal/desktop"_s;
const QString Interface = u"org.freedesktop.portal.Settings"_s;
const QString Space = u"org.freedesktop.appearance"_s;
const QString Scheme = u"color-scheme"_s;
constexpr int Patience = 1000; // milliseconds

Look LookOf(QVariant value)
{
    while (value.canConvert<QDBusVariant>()) // older portals wrap it twice
        value = value.value<QDBusVariant>().variant();
    switch (value.toUInt()) {
    case 1:
        return Look::Dark;
    case 2:
        return Look::Light;
    default:
        return Look::Desktop;
    }
}

} // namespace

DesktopLook::DesktopLook(const QDBusConnection &bus, QObject *parent) : QObject(parent)
{
    qApp->installEventFilter(this);
    if (!bus.isConnected())
        return;
    QDBusConnection(bus).connect(Service, Place, Interface, u"SettingChanged"_s, this, SLOT(Take(QDBusMessage)));
    QDBusMessage question = QDBusMessage::createMethodCall(Service, Place, Interface, u"Read"_s);
    question << Space << Scheme;
    const QDBusMessage answer = bus.call(question, QDBus::Block, Patience);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
        m_wanted = LookOf(answer.arguments().constFirst());
}

void DesktopLook::Take(const QDBusMessage &said)
{
    const QVariantList setting = said.arguments();
    if (setting.value(0).toString() != Space || setting.value(1).toString() != Scheme)
        return;
    m_wanted = LookOf(setting.value(2));
    emit Changed(m_wanted);
}

bool DesktopLook::eventFilter(QObject *watched, QEvent *event)
{
    // Without a portal the colours of the new theme decide; they are in force when the event has gone its way.
    if (event->type() == QEvent::ThemeChange && watched->isWindowType() && m_wanted == Look::Desktop)
        QMetaObject::invokeMethod(
            this, [this] { emit Changed(m_wanted); }, Qt::QueuedConnection);
    return false;
}

} // namespace desk
