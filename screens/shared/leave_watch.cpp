#include "screens/shared/leave_watch.h"

#include <QFocusEvent>
#include <QLineEdit>

namespace goods {

namespace {

/// Waits for one kind of focus event on a control.
class FocusWatch : public QObject
{
public:
    FocusWatch(QWidget *widget, QEvent::Type type, RuleTime time, std::function<void()> action)
        : QObject(widget), m_widget(widget), m_type(type), m_time(time), m_action(std::move(action))
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != m_type)
            return false;
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
            reason == Qt::MenuBarFocusReason || !IsDue())
            return false;
        if (m_time == RuleTime::AtOnce)
            Run();
        else
            QMetaObject::invokeMethod(
                this, [this] { Run(); }, Qt::QueuedConnection);
        return false;
    }

protected:
    /// Whether the event is one to act upon, asked when it comes.
    virtual bool IsDue() const { return true; }

private:
    void Run() const
    {
        if (m_widget->window()->isVisible())
            m_action();
    }

    QWidget *m_widget;
    QEvent::Type m_type;
    RuleTime m_time;
    std::function<void()> m_action;
};

/// Waits for the leaving of an edit that was changed.
class ChangeWatch : public FocusWatch
{
public:
    ChangeWatch(QLineEdit *edit, RuleTime time, host::RuleRunner run, std::function<host::Refused()> rule)
        : FocusWatch(edit, QEvent::FocusOut, time, [this] { m_run([this] { return Apply(); }); }), m_edit(edit),
          m_run(std::move(run)), m_rule(std::move(rule))
    {}

    bool IsDue() const override { return m_edit->isModified() && m_edit->isEnabled() && !m_edit->isReadOnly(); }

    host::Refused Apply() const
    {
        // Stays changed when the rule refuses or throws.
        m_edit->setModified(true);
        host::Refused refused = m_rule();
        m_edit->setModified(refused.has_value());
        return refused;
    }

private:
    QLineEdit *m_edit;
    host::RuleRunner m_run;
    std::function<host::Refused()> m_rule;
};

} // namespace

void OnChanged(QLineEdit *edit, RuleTime time, host::RuleRunner run, std::function<host::Refused()> rule)
{
    new ChangeWatch(edit, time, std::move(run), std::move(rule));
}

void OnChanged(QLineEdit *edit, RuleTime time, std::function<void()> rule)
{
    OnChanged(
        edit, time, [](const std::function<host::Refused()> &body) { body(); },
        [rule = std::move(rule)] {
            rule();
            return host::Refused();
        });
}

host::Refused LeaveNow(QLineEdit *edit)
{
    for (QObject *child : edit->children())
        if (const auto *watch = dynamic_cast<ChangeWatch *>(child); watch != nullptr && watch->IsDue())
            return watch->Apply();
    return {};
}

void OnLeave(QWidget *widget, RuleTime time, std::function<void()> action)
{
    new FocusWatch(widget, QEvent::FocusOut, time, std::move(action));
}

void OnEnter(QWidget *widget, std::function<void()> action)
{
    new FocusWatch(widget, QEvent::FocusIn, RuleTime::AtOnce, std::move(action));
}

} // namespace goods
