#include "screens/good_editor/leave_watch.h"

#include <QtGui/QFocusEvent>
#include <QtWidgets/QLineEdit>

namespace goods {

namespace {

/// Waits for one kind of focus event on a control.
class FocusWatch : public QObject
{
public:
    FocusWatch(QWidget *widget, QEvent::Type type, RuleTime time, std::function<void()> action)
        : QObject(widget), widget_(widget), type_(type), time_(time), action_(std::move(action))
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != type_)
            return false;
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
            reason == Qt::MenuBarFocusReason || !IsDue())
            return false;
        if (time_ == RuleTime::AtOnce)
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
        if (widget_->window()->isVisible())
            action_();
    }

    QWidget *widget_;
    QEvent::Type type_;
    RuleTime time_;
    std::function<void()> action_;
};

/// Waits for the leaving of an edit that was changed.
class ChangeWatch : public FocusWatch
{
public:
    ChangeWatch(QLineEdit *edit, RuleTime time, RuleRunner run, std::function<Refused()> rule)
        : FocusWatch(edit, QEvent::FocusOut, time, [this] { run_([this] { return Apply(); }); }), edit_(edit),
          run_(std::move(run)), rule_(std::move(rule))
    {}

    bool IsDue() const override { return edit_->isModified() && edit_->isEnabled() && !edit_->isReadOnly(); }

    Refused Apply() const
    {
        // Stays changed when the rule refuses or throws.
        edit_->setModified(true);
        Refused refused = rule_();
        edit_->setModified(refused.has_value());
        return refused;
    }

private:
    QLineEdit *edit_;
    RuleRunner run_;
    std::function<Refused()> rule_;
};

} // namespace

void OnChanged(QLineEdit *edit, RuleTime time, RuleRunner run, std::function<Refused()> rule)
{
    new ChangeWatch(edit, time, std::move(run), std::move(rule));
}

void OnChanged(QLineEdit *edit, RuleTime time, std::function<void()> rule)
{
    OnChanged(
        edit, time, [](const std::function<Refused()> &body) { body(); },
        [rule = std::move(rule)] {
            rule();
            return Refused();
        });
}

Refused LeaveNow(QLineEdit *edit)
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
