#include "screens/good_editor/leave_watch.h"

#include <QtGui/QFocusEvent>
#include <QtWidgets/QWidget>

namespace goods {

namespace {

class FocusWatch : public QObject
{
public:
    FocusWatch(QWidget *edit, QEvent::Type type, RuleTime time, std::function<void()> rule)
        : QObject(edit), edit_(edit), type_(type), time_(time), rule_(std::move(rule))
    {
        edit->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != type_)
            return false;
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason)
            return false;
        if (time_ == RuleTime::AtOnce)
            Run();
        else
            QMetaObject::invokeMethod(
                this, [this] { Run(); }, Qt::QueuedConnection);
        return false;
    }

private:
    void Run() const
    {
        if (edit_->window()->isVisible())
            rule_();
    }

    QWidget *edit_;
    QEvent::Type type_;
    RuleTime time_;
    std::function<void()> rule_;
};

} // namespace

void OnLeave(QWidget *edit, RuleTime time, std::function<void()> rule)
{
    new FocusWatch(edit, QEvent::FocusOut, time, std::move(rule));
}

void OnEnter(QWidget *edit, std::function<void()> rule)
{
    new FocusWatch(edit, QEvent::FocusIn, RuleTime::AtOnce, std::move(rule));
}

} // namespace goods
