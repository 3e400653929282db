#include "tests/support/test_main.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QMetaMethod>
#include <QPointer>
#include <QTimer>
#include <QtTest>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace test {
namespace {

struct Entry
{
    const char *name;
    std::function<std::unique_ptr<QObject>()> make;
};

std::vector<Entry> &Entries()
{
    static std::vector<Entry> all;
    return all;
}

/// A window left open would answer the keys of the next test.
int WindowsLeft()
{
    int left = 0;
    const auto windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows)
        if (window->isVisible()) {
            std::fprintf(stderr, "FAIL!  : window left open: %s\n", window->metaObject()->className());
            ++left;
        }
    return left;
}

/// A modal screen that nobody drives would wait until the whole run is given up.
class Watchdog : public QTimer
{
public:
    Watchdog()
    {
        callOnTimeout(this, &Watchdog::Look);
        start(250);
    }

private:
    void Look()
    {
        constexpr qint64 patienceMilliseconds = 8000; // longer than that of whoever waits for a screen
        QWidget *screen = QApplication::activeModalWidget();
        if (!screen || screen != m_seen || driven.contains(screen)) {
            m_seen = screen;
            m_clock.start();
        } else if (m_clock.elapsed() > patienceMilliseconds) {
            const auto *box = qobject_cast<QMessageBox *>(screen);
            const QString words =
                u"a modal screen was left open: %1 %2"_s.arg(screen->windowTitle(), box ? box->text() : QString());
            QTest::qFail(qPrintable(words), __FILE__, __LINE__);
            m_seen = nullptr;
            if (auto *dialog = qobject_cast<QDialog *>(screen))
                dialog->QDialog::done(0); // unasked
            else
                screen->close();
        }
    }

    QPointer<QWidget> m_seen;
    QElapsedTimer m_clock;
};

/// The functions of a test class by name when some of them are left out, which are taken from `without`; nothing
/// otherwise.
QStringList Rest(const QObject &object, QStringList &without)
{
    const QMetaObject &type = *object.metaObject();
    QStringList rest;
    bool all = true;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QString name = QString::fromLatin1(type.method(i).name());
        static const QStringList around{u"initTestCase"_s, u"cleanupTestCase"_s, u"init"_s, u"cleanup"_s};
        if (type.method(i).access() != QMetaMethod::Private || name.endsWith(u"_data"_s) || around.contains(name))
            continue;
        if (without.removeAll(QLatin1String(type.className()) + u"::"_s + name))
            all = false;
        else
            rest << name;
    }
    return all ? QStringList() : rest;
}

} // namespace

bool Register(const char *name, std::function<std::unique_ptr<QObject>()> make)
{
    Entries().push_back({name, std::move(make)});
    return true;
}

} // namespace test

int main(int argc, char **argv)
{
    // The offscreen platform's own screen is smaller than the windows of the suite.
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen")
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" GOODS_SCREEN);
    QApplication application(argc, argv);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QApplication::setQuitOnLastWindowClosed(false);

    QStringList arguments = application.arguments();
    arguments << u"-nocrashhandler"_s; // it starts a debugger, which may wait for ever
    const auto known = [](const QString &name) {
        return std::any_of(test::Entries().begin(), test::Entries().end(),
                           [&](const test::Entry &entry) { return name == QLatin1String(entry.name); });
    };
    QString only;
    if (arguments.size() > 1 && known(arguments.at(1)))
        only = arguments.takeAt(1);
    QStringList without; // classes, and functions as "TestClass::function"
    if (const qsizetype at = arguments.indexOf(u"-without"_s); at > 0) {
        without = arguments.takeAt(at + 1).split(u',');
        arguments.removeAt(at);
    }

    const test::Watchdog watchdog;
    int failures = 0;
    for (const test::Entry &entry : test::Entries()) {
        if (without.removeAll(QLatin1String(entry.name)) || (!only.isEmpty() && only != QLatin1String(entry.name)))
            continue;
        const auto object = entry.make();
        failures += QTest::qExec(object.get(), arguments + test::Rest(*object, without));
        failures += test::WindowsLeft();
    }
    for (const QString &name : std::as_const(without)) {
        std::fprintf(stderr, "FAIL!  : nothing to leave out is called %s\n", qPrintable(name));
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}
