#pragma once

#include "desk/tour/tour_player.h"
#include "desk/tour/tour_steps.h"

#include <Qt>

#include <memory>

namespace desk {

/// Collects steps; words for what they have in common. Held by a shared pointer: the steps keep it alive.
class TourScript : public std::enable_shared_from_this<TourScript>
{
public:
    /// `window` and `desk` outlive the steps.
    TourScript(MainWindow &window, DeskHost &desk, TakePicture picture, ReportFault fail);

    /// `act`, as soon as the front window shows this control.
    void When(const QString &name, const QString &control, std::function<void()> act);
    /// Triggers a command of the main window.
    void Command(const QString &name, const QString &action);
    /// A picture of the front window, when the texts that flash over it are gone.
    void Shot(const QString &name, const QString &control);
    void Key(const QString &name, const QString &control, Qt::Key key,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Puts the focus into a control and types over what it holds.
    void Fill(const QString &control, const QString &text);
    void Focus(const QString &control);
    /// Turns a switch of the settings, named as there, over.
    void Switch(const QString &setting);
    /// The question that stands is answered with Yes; a picture of it first, when that has a name.
    void AnswerYes(const QString &picture = {});
    /// The rows that the statement gives, as soon as no modal window stands.
    void Expect(const QString &name, const QString &statement, int rows);
    /// A label holds this text.
    void ExpectText(const QString &label, const QString &text);

    QList<TourStep> TakeSteps() { return std::exchange(m_steps, {}); }

private:
    MainWindow &m_window;
    DeskHost &m_desk;
    TakePicture m_picture;
    ReportFault m_fail;
    QList<TourStep> m_steps;
};

} // namespace desk
