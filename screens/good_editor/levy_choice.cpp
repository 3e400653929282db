#include "screens/good_editor/levy_choice.h"

#include <QRadioButton>

using goods::LevyState;

LevyChoice::LevyChoice(QRadioButton *globalSetting, QRadioButton *ownPercent, QRadioButton *exempt,
                       host::NumericEdit *percent, QObject *parent)
    : QObject(parent), m_globalSetting(globalSetting), m_ownPercent(ownPercent), m_exempt(exempt), m_percent(percent)
{
    for (QRadioButton *button : {m_globalSetting, m_ownPercent, m_exempt})
        connect(button, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                Choose();
        });
    Choose();
}

void LevyChoice::Choose()
{
    m_percent->setEnabled(m_ownPercent->isChecked());
    if (!m_ownPercent->isChecked())
        m_percent->SetNumber(0);
    emit Changed();
}

void LevyChoice::Show(const goods::Levy &levy)
{
    switch (levy.state) {
    case LevyState::GlobalSetting:
        m_globalSetting->setChecked(true);
        break;
    case LevyState::OwnPercent:
        m_ownPercent->setChecked(true);
        break;
    case LevyState::Exempt:
        m_exempt->setChecked(true);
        break;
    }
    m_percent->SetNumber(levy.state == LevyState::OwnPercent ? levy.percent : 0);
}

goods::Levy LevyChoice::Value() const
{
    if (IsExempt())
        return {LevyState::Exempt, 0};
    if (m_ownPercent->isChecked())
        return {LevyState::OwnPercent, m_percent->Number()};
    return {};
}

bool LevyChoice::IsExempt() const
{
    return m_exempt->isChecked();
}

host::Refused LevyChoice::CheckPercent(const QString &caption) const
{
    if (!m_ownPercent->isChecked() || m_percent->Number() != 0)
        return {};
    return host::Refusal{m_percent, [caption](host::MessageService &messages) { messages.NotZeroValue(caption); }};
}
