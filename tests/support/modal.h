#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <stdexcept>

/// Driving screens as a user does: by keys, into whatever has the focus.
namespace test {

/// Runs `open`, which blocks in a modal screen, and `drive` once that screen is active. `drive` must bring the screen
/// to close; when it does not, or a check inside it failed, the test fails and every modal screen above is closed.
/// Nested screens are driven by a nested Drive whose `open` is the key that opens them. Afterwards the window that had
/// the keys before has them again.
void Drive(const std::function<void()> &open, const std::function<void(QWidget *screen)> &drive);

/// Runs `open`, which blocks in a menu, and `drive` once the menu stands. A menu that `drive` leaves open fails the
/// test and is closed.
void DriveMenu(const std::function<void()> &open, const std::function<void()> &drive);

/// Presses a key in the control that has the focus.
void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Types a text, Persian or not, into the control that has the focus.
void Type(const QString &text);
/// Puts the focus into a control, selects what it holds and types over it.
void Enter(QWidget *screen, const QString &name, const QString &text);
/// Puts the focus into a control.
void Focus(QWidget *screen, const QString &name);

/// The control of this object name; throws (which fails the test inside Drive) when there is none.
template <typename Control = QWidget> Control &Find(QWidget *screen, const QString &name)
{
    auto *control = screen->findChild<Control *>(name);
    if (!control)
        throw std::runtime_error("no control is called " + name.toStdString());
    return *control;
}

/// The object name of the control with the focus; the picker's or combo box's own name when the focus is inside one.
QString Focused();

/// The controls that Tab leads through, from the one with the focus until it is met again.
QStringList TabRound();

/// Everything that a screen shows, sorted: texts, choices, the rows of lists, each with what is locked or hidden. Two
/// openings of a screen are compared by it.
QStringList State(QWidget *screen);

/// True when `first` lies to the right of `second` on the screen: what comes first, on a right-to-left screen.
bool RightOf(const QWidget &first, const QWidget &second);

/// The controls of a screen that a screen reader would say nothing of, or a caption as it is drawn: with its colon or
/// the mark of its key. Drive and Show fail the test for each of them.
QStringList Nameless(const QWidget &screen);

/// Shows a window that is not modal and waits until it takes keys.
void Show(QWidget &window);

/// Renders a widget for looking at it, when GOODS_PICTURES names a folder; nothing otherwise.
void Picture(QWidget &widget, const QString &name);

} // namespace test
