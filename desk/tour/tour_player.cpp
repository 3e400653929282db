#include "desk/tour/tour_player.h"

#include "desk/tour/tour_check.h"

#include <QApplication>
#include <QDir>
#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace desk {

namespace {
constexpr int Interval = 60;     // milliseconds between looks; also lets a window settle before its picture
constexpr int Patience = 20'000; // milliseconds that a step may take to become ready
} // namespace

TourPlayer::TourPlayer(QWidget &window, QList<TourStep> steps, const QString &folder)
    : m_window(&window), m_steps(std::move(steps)), m_folder(folder)
{
    m_timer.setInterval(Interval);
    connect(&m_timer, &QTimer::timeout, this, &TourPlayer::Tick);
}

void TourPlayer::Start()
{
    if (!QDir().mkpath(m_folder)) {
        Fail(u"cannot make the folder "_s + m_folder);
        return;
    }
    m_waiting.start();
    m_timer.start();
}

void TourPlayer::Tick()
{
    if (m_finished || m_starting)
        return;
    if (m_next == m_steps.size()) {
        End();
        return;
    }
    const TourStep &step = m_steps.at(m_next);
    // Without a window manager nobody gives the keys back to the window below one that closed.
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *front = modal ? modal : m_window;
    if (!front->isActiveWindow())
        front->activateWindow();
    if (!front->isActiveWindow() || !step.ready()) {
        if (m_waiting.elapsed() > Patience) {
            m_running = step.name;
            Picture(FrontWindow(), u"stuck"_s);
            Fail(u"it was not ready in time"_s);
        }
        return;
    }
    ++m_next;
    m_running = step.name;
    m_waiting.restart();
    // A timer does not fire again while its own slot stands in a modal window: each step has a shot of its own.
    m_starting = true;
    QTimer::singleShot(0, this, [this, act = step.act] {
        m_starting = false;
        try {
            act();
        } catch (const std::exception &error) {
            Fail(QString::fromUtf8(error.what()));
        }
    });
}

void TourPlayer::Fail(const QString &what)
{
    if (m_trouble.isEmpty())
        m_trouble = m_running.isEmpty() ? what : m_running + u": "_s + what;
    End();
}

void TourPlayer::End()
{
    m_finished = true;
    m_timer.stop();
    // Ends the loops of modal windows that still stand, too; quit() would ask each of them whether it may close.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
}

void TourPlayer::Picture(QWidget *widget, const QString &name)
{
    const QString file = QDir(m_folder).filePath(name + u".png"_s);
    if (!widget || !widget->grab().save(file))
        Fail(u"no picture "_s + file);
    const QStringList hindrances = widget ? Hindrances(*widget) : QStringList();
    for (const QString &hindrance : hindrances)
        m_hindrances << name + u": "_s + hindrance;
}

QWidget *FrontWindow()
{
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

QWidget *Control(const QWidget *window, const QString &objectName)
{
    QWidget *control = window ? window->findChild<QWidget *>(objectName) : nullptr;
    return control && control->isVisible() ? control : nullptr;
}

namespace {

QWidget *Target()
{
    if (QWidget *menu = QApplication::activePopupWidget())
        return menu;
    QWidget *focus = QApplication::focusWidget();
    return focus ? focus : FrontWindow();
}

} // namespace

void Press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (QWidget *target = Target())
        QTest::keyClick(target, key, modifiers);
}

void Type(const QString &text)
{
    for (const QChar letter : text) {
        if (QWidget *target = Target())
            QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
}

} // namespace desk
