#include "desk/tour/tour_player.h"

#include <QtCore/QDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace desk {

namespace {
constexpr int Interval = 60;     // milliseconds between looks; also lets a window settle before its picture
constexpr int Patience = 20'000; // milliseconds that a step may take to become ready
} // namespace

TourPlayer::TourPlayer(QWidget &window, QList<TourStep> steps, const QString &folder)
    : window_(&window), steps_(std::move(steps)), folder_(folder)
{
    timer_.setInterval(Interval);
    connect(&timer_, &QTimer::timeout, this, &TourPlayer::Tick);
}

void TourPlayer::Start()
{
    if (!QDir().mkpath(folder_)) {
        Fail(u"cannot make the folder "_qs + folder_);
        return;
    }
    waiting_.start();
    timer_.start();
}

void TourPlayer::Tick()
{
    if (finished_ || starting_)
        return;
    if (next_ == steps_.size()) {
        End();
        return;
    }
    const TourStep &step = steps_.at(next_);
    // Without a window manager nobody gives the keys back to the window below one that closed.
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *front = modal ? modal : window_;
    if (!front->isActiveWindow())
        front->activateWindow();
    if (!front->isActiveWindow() || !step.ready()) {
        if (waiting_.elapsed() > Patience) {
            running_ = step.name;
            Picture(FrontWindow(), u"stuck"_qs);
            Fail(u"it was not ready in time"_qs);
        }
        return;
    }
    ++next_;
    running_ = step.name;
    waiting_.restart();
    // A timer does not fire again while its own slot stands in a modal window: each step has a shot of its own.
    starting_ = true;
    QTimer::singleShot(0, this, [this, act = step.act] {
        starting_ = false;
        try {
            act();
        } catch (const std::exception &error) {
            Fail(QString::fromUtf8(error.what()));
        }
    });
}

void TourPlayer::Fail(const QString &what)
{
    if (trouble_.isEmpty())
        trouble_ = running_.isEmpty() ? what : running_ + u": "_qs + what;
    End();
}

void TourPlayer::End()
{
    finished_ = true;
    timer_.stop();
    // Ends the loops of modal windows that still stand, too; quit() would ask each of them whether it may close.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
}

void TourPlayer::Picture(QWidget *widget, const QString &name)
{
    const QString file = QDir(folder_).filePath(name + u".png"_qs);
    if (!widget || !widget->grab().save(file))
        Fail(u"no picture "_qs + file);
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
