// The look that the desktop wants, as its portal tells it on a bus of the test's own.

#include "desk/application/desktop_look.h"
#include "tests/support/test_main.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using host::theme::Look;

namespace {

/// The settings of a desktop; wraps its answer twice, as most portals do.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    uint scheme = 0;

public slots:
    QDBusVariant Read(const QString &space, const QString &key)
    {
        const bool known = space == u"org.freedesktop.appearance" && key == u"color-scheme";
        return QDBusVariant(known ? QVariant::fromValue(QDBusVariant(scheme)) : QVariant());
    }
};

} // namespace

class TestDesktopLook : public QObject
{
    Q_OBJECT

private slots:
    void followsThePortal();
};

void TestDesktopLook::followsThePortal()
{
    QProcess daemon;
    daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
    QVERIFY2(daemon.waitForReadyRead(), "dbus-daemon");
    const QString address = QString::fromUtf8(daemon.readLine()).trimmed();
    QDBusConnection desktop = QDBusConnection::connectToBus(address, u"desktop"_s);
    const QDBusConnection program = QDBusConnection::connectToBus(address, u"program"_s);
    QCOMPARE(desk::DesktopLook(program).Wanted(), Look::Desktop); // nobody answers

    Portal portal;
    QThread thread; // whoever asks waits for the answer
    const auto end = qScopeGuard([&] {
        thread.quit();
        thread.wait();
        for (const QString &name : {u"desktop"_s, u"program"_s})
            QDBusConnection::disconnectFromBus(name);
        daemon.kill();
        daemon.waitForFinished();
    });
    portal.scheme = 1;
    portal.moveToThread(&thread);
    thread.start();
    const QString place = u"/org/freedesktop/portal/desktop"_s;
    QVERIFY(desktop.registerService(u"org.freedesktop.portal.Desktop"_s));
    QVERIFY(desktop.registerObject(place, &portal, QDBusConnection::ExportAllSlots));
    desk::DesktopLook look(program);
    QCOMPARE(look.Wanted(), Look::Dark);

    QSignalSpy changes(&look, &desk::DesktopLook::Changed);
    const auto say = [&](const QString &key, uint value) {
        QDBusMessage told =
            QDBusMessage::createSignal(place, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        told << u"org.freedesktop.appearance"_s << key << QVariant::fromValue(QDBusVariant(value));
        desktop.send(told);
    };
    say(u"contrast"_s, 1);
    say(u"color-scheme"_s, 2);
    QTRY_COMPARE(changes.size(), 1);
    QCOMPARE(changes.first().first().value<Look>(), Look::Light);
}

REGISTER_TEST(TestDesktopLook)
#include "tst_desktop_look.moc"
