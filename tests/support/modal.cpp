#include "tests/support/modal.h"

#include "tests/support/test_main.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPointer>
#include <QStackedWidget>
#include <QTimer>
#include <QtTest>

namespace test {
namespace {

constexpr int patienceMilliseconds = 5000;

void Fail(const QString &why)
{
    QTest::qFail(qPrintable(why), __FILE__, __LINE__);
}

/// Closes a screen without asking it, so that a failed test does not hang in its event loop.
void Force(QWidget *screen)
{
    if (auto *dialog = qobject_cast<QDialog *>(screen)) {
        dialog->QDialog::done(0);
        return;
    }
    screen->hide();
}

/// The toolkit's own dialogs are the toolkit's affair; a control that a test shows by itself stands in no screen.
void FailNameless(const QWidget &screen)
{
    const QStringList nameless = Nameless(screen);
    if (!nameless.isEmpty() && !screen.windowTitle().isEmpty() && !screen.inherits("QFileDialog") &&
        !screen.inherits("QPrintDialog"))
        Fail(u"without a name on %1: %2"_s.arg(screen.windowTitle(), nameless.join(u", ")));
}

/// Without a window manager nobody gives the keys back to the screen below one that closed.
void GiveKeysBack(QWidget *window)
{
    if (!window || !window->isVisible() || window->isActiveWindow())
        return;
    window->activateWindow();
    static_cast<void>(QTest::qWaitForWindowActive(window));
}

QWidget *Target()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    if (QWidget *focus = QApplication::focusWidget())
        return focus;
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

} // namespace

void Drive(const std::function<void()> &open, const std::function<void(QWidget *)> &drive)
{
    const QPointer<QWidget> before = QApplication::activeModalWidget();
    const QPointer<QWidget> from = QApplication::activeWindow();
    bool wasDriven = false;
    QElapsedTimer clock;
    clock.start();
    QTimer poll;
    poll.setInterval(5);
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        const QPointer<QWidget> screen = QApplication::activeModalWidget();
        // What shows the progress of a change goes by itself; a busy machine shows it now and then.
        if (!screen || screen == before || screen->objectName() == u"Bulk_PRG")
            return;
        if (!screen->isActiveWindow() && clock.elapsed() < patienceMilliseconds)
            return;
        poll.stop();
        wasDriven = true;
        driven << screen;
        const auto leave = qScopeGuard([] { driven.removeLast(); });
        FailNameless(*screen);
        try {
            drive(screen);
        } catch (const std::exception &error) {
            Fail(QString::fromUtf8(error.what()));
        }
        const bool failed = QTest::currentTestFailed();
        if (!failed && screen && screen->isVisible() &&
            QTest::qWaitFor([&] { return !screen || !screen->isVisible(); }, 500))
            return;
        if (screen && screen->isVisible()) {
            if (!failed)
                Fail(u"the screen was left open: "_s + screen->windowTitle());
            for (QWidget *modal = QApplication::activeModalWidget(); modal && modal != before;
                 modal = QApplication::activeModalWidget())
                Force(modal);
        }
    });
    poll.start();
    open();
    if (!wasDriven)
        Fail(u"no modal screen appeared"_s);
    if (QApplication::activeModalWidget() == before)
        GiveKeysBack(from);
}

void DriveMenu(const std::function<void()> &open, const std::function<void()> &drive)
{
    const QPointer<QWidget> from = QApplication::activeWindow();
    bool wasDriven = false;
    QTimer poll;
    poll.setInterval(5);
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (!QApplication::activePopupWidget())
            return;
        poll.stop();
        wasDriven = true;
        drive();
        if (QApplication::activePopupWidget())
            Fail(u"the menu was left open"_s);
        while (QWidget *menu = QApplication::activePopupWidget())
            menu->close();
    });
    poll.start();
    open();
    if (!wasDriven)
        Fail(u"no menu appeared"_s);
    GiveKeysBack(from);
}

void Press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (QWidget *target = Target())
        QTest::keyClick(target, key, modifiers);
    else
        Fail(u"no window takes keys"_s);
}

void Type(const QString &text)
{
    // A character beyond the first plane arrives in one piece, as from an input method.
    for (qsizetype at = 0; at < text.size();) {
        const QString c = text.mid(at, text.at(at).isHighSurrogate() ? 2 : 1);
        at += c.size();
        QWidget *target = Target();
        if (!target)
            return Fail(u"no window takes keys"_s);
        QTest::sendKeyEvent(QTest::Click, target, Qt::Key(c.at(0).toUpper().unicode()), c, Qt::NoModifier);
    }
}

void Focus(QWidget *screen, const QString &name)
{
    Find(screen, name).setFocus(Qt::TabFocusReason);
}

void Enter(QWidget *screen, const QString &name, const QString &text)
{
    Focus(screen, name);
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_Delete);
    Type(text);
}

QString Focused()
{
    const QWidget *widget = QApplication::focusWidget();
    while (widget && (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_") ||
                      widget->objectName() == u"PickerCode_EDT"))
        widget = widget->parentWidget();
    return widget ? widget->objectName() : QString();
}

QStringList TabRound()
{
    QStringList stops{Focused()};
    for (Press(Qt::Key_Tab); Focused() != stops.constFirst() && stops.size() < 40; Press(Qt::Key_Tab))
        stops << Focused();
    return stops;
}

QStringList State(QWidget *screen)
{
    QStringList state;
    for (QWidget *widget : screen->findChildren<QWidget *>()) {
        if (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_"))
            continue;
        QStringList parts{widget->objectName()};
        for (const char *property :
             {"text", "currentText", "plainText", "checked", "readOnly", "enabled", "currentIndex"})
            if (const QVariant value = widget->property(property); value.isValid())
                parts << value.toString().trimmed();
        if (const auto *view = qobject_cast<QAbstractItemView *>(widget); view && view->model())
            for (int row = 0; row < view->model()->rowCount(); ++row)
                for (int column = 0; column < view->model()->columnCount(); ++column)
                    parts << view->model()->index(row, column).data().toString();
        // Which page is in front is the tabs' own affair.
        if (widget->isHidden() && !qobject_cast<QStackedWidget *>(widget->parentWidget()))
            parts << u"hidden"_s;
        state << parts.join(u'|');
    }
    state.sort(); // children change places when their tab is shown
    return state;
}

QStringList Nameless(const QWidget &screen)
{
    QStringList nameless;
    for (QWidget *control : screen.findChildren<QWidget *>()) {
        if (!control->isVisible() || !(control->focusPolicy() & Qt::TabFocus) || control->focusProxy())
            continue;
        // Of a combo box the toolkit tells what it holds.
        const QString name = qobject_cast<QComboBox *>(control)
                                 ? control->accessibleName()
                                 : QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
        if (name.trimmed().size() < 2 || name.endsWith(u':') || name.startsWith(u'&'))
            nameless << u"%1 %2 \"%3\""_s.arg(QLatin1String(control->metaObject()->className()), control->objectName(),
                                              name);
    }
    return nameless;
}

bool RightOf(const QWidget &first, const QWidget &second)
{
    return first.mapToGlobal(QPoint(0, 0)).x() > second.mapToGlobal(QPoint(0, 0)).x();
}

void Show(QWidget &window)
{
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        Fail(u"the window does not become active"_s);
    FailNameless(window);
}

void Picture(QWidget &widget, const QString &name)
{
    const QString folder = qEnvironmentVariable("GOODS_PICTURES");
    if (!folder.isEmpty())
        widget.grab().save(QDir(folder).filePath(name + u".png"_s));
}

} // namespace test
