#include "screens/good_editor/leave_watch.h"

#include <QFocusEvent>
#include <QWidget>

namespace goods {

namespace {

class FocusWatch : public QObject
{
public:
    FocusWatch(QWidget *edit, QEvent::Type type, RuleTime time, std::function<void()> rule)
        : QObject(edit), m_edit(edit), m_type(type), m_time(time), m_rule(std::move(rule))
    {
        edit->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != m_type)
            return false;
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason)
            return false;
        if (m_time == RuleTime::AtOnce)
            Run();
        else
            QMetaObject::invokeMethod(
                this, [this] { Run(); }, Qt::QueuedConnection);
        return false;
    }

private:
    void Run() const
    {
        if (m_edit->window()->isVisible())
            m_rule();
    }

    QWidget *m_edit;
    QEvent::Type m_type;
    RuleTime m_time;
    std::function<void()> m_rule;
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
