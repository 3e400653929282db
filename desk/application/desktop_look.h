#pragma once

#include "host/look/theme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

namespace desk {

/// The look that the desktop wants of its programs, now and whenever it changes its mind. Most desktops say it through
/// the settings of their portal; where there is none, the colour of windows is left to tell.
class DesktopLook : public QObject
{
    Q_OBJECT

public:
    /// Asks the portal on `bus`, which takes a second at most.
    explicit DesktopLook(const QDBusConnection &bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    /// Look::Desktop when the portal has no opinion.
    host::theme::Look Wanted() const { return m_wanted; }

    /// A desktop that changed its theme is seen by its windows.
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void Changed(host::theme::Look wanted);

private slots:
    void Take(const QDBusMessage &said);

private:
    host::theme::Look m_wanted = host::theme::Look::Desktop;
};

} // namespace desk
