#include "host/controls/switch_interface.h"

#include "host/controls/toggle_switch.h"

#include <QAccessibleWidget>

namespace host {
namespace {

class SwitchInterface : public QAccessibleWidget
{
public:
    explicit SwitchInterface(ToggleSwitch *toggle) : QAccessibleWidget(toggle, QAccessible::CheckBox), m_toggle(toggle)
    {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = m_toggle->isChecked();
        return state;
    }

    QStringList actionNames() const override { return QStringList{toggleAction()} + QAccessibleWidget::actionNames(); }

    void doAction(const QString &name) override
    {
        if (name == toggleAction())
            m_toggle->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    ToggleSwitch *m_toggle; ///< outlives its interface
};

} // namespace

QAccessibleInterface *SwitchInterfaceFor(const QString &, QObject *object)
{
    auto *toggle = qobject_cast<ToggleSwitch *>(object);
    return toggle ? new SwitchInterface(toggle) : nullptr;
}

} // namespace host
