#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>

class QWidget;

namespace desk {

/// One step: when `ready` holds, `act` runs. A step that opens a modal window ends when that window closes, so the next
/// step waits for the window to appear.
struct TourStep
{
    QString name;
    std::function<bool()> ready;
    std::function<void()> act;
};

/// Plays steps one after another out of a timer, also while modal windows are open. Ends the application when all are
/// played, when one is not ready in time, or when one fails.
class TourPlayer : public QObject
{
    Q_OBJECT

public:
    /// `window` is the main window; pictures go to `folder`.
    TourPlayer(QWidget &window, QList<TourStep> steps, const QString &folder);

    void Start();
    /// What went wrong, and what keeps people from using the windows that were seen; empty when nothing does.
    QString Trouble() const { return (QStringList{m_trouble} + m_hindrances).join(u'\n').trimmed(); }
    bool Finished() const { return m_finished; }

    /// The step that is running fails: the tour ends.
    void Fail(const QString &what);
    /// Saves a picture of a window, and looks whether people can use it.
    void Picture(QWidget *widget, const QString &name);

private:
    void Tick();
    void End();

    QWidget *m_window;
    QList<TourStep> m_steps;
    QString m_folder;
    QString m_trouble;
    QString m_running;
    QStringList m_hindrances;
    QTimer m_timer;
    QElapsedTimer m_waiting;
    qsizetype m_next = 0;
    bool m_starting = false;
    bool m_finished = false;
};

/// The window that keys go to: the modal one when there is one.
QWidget *FrontWindow();
/// A visible control of a window by its object name; null when there is none.
QWidget *Control(const QWidget *window, const QString &objectName);
/// Presses a key where the focus is.
void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Types a text where the focus is, character by character.
void Type(const QString &text);

} // namespace desk
