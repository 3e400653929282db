#include "screens/good_editor/levy_choice.h"

#include <QtWidgets/QRadioButton>

using goods::LevyState;

LevyChoice::LevyChoice(QRadioButton *globalSetting, QRadioButton *ownPercent, QRadioButton *exempt,
                       host::NumericEdit *percent, QObject *parent)
    : QObject(parent), globalSetting_(globalSetting), ownPercent_(ownPercent), exempt_(exempt), percent_(percent)
{
    for (QRadioButton *button : {globalSetting_, ownPercent_, exempt_})
        connect(button, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                Choose();
        });
    Choose();
}

void LevyChoice::Choose()
{
    percent_->setEnabled(ownPercent_->isChecked());
    if (!ownPercent_->isChecked())
        percent_->SetNumber(0);
    emit Changed();
}

void LevyChoice::Show(const goods::Levy &levy)
{
    switch (levy.state) {
    case LevyState::GlobalSetting:
        globalSetting_->setChecked(true);
        break;
    case LevyState::OwnPercent:
        ownPercent_->setChecked(true);
        break;
    case LevyState::Exempt:
        exempt_->setChecked(true);
        break;
    }
    percent_->SetNumber(levy.state == LevyState::OwnPercent ? levy.percent : 0);
}

goods::Levy LevyChoice::Value() const
{
    if (IsExempt())
        return {LevyState::Exempt, 0};
    if (ownPercent_->isChecked())
        return {LevyState::OwnPercent, percent_->Number()};
    return {};
}

bool LevyChoice::IsExempt() const
{
    return exempt_->isChecked();
}

goods::Refused LevyChoice::CheckPercent(const QString &caption) const
{
    if (!ownPercent_->isChecked() || percent_->Number() != 0)
        return {};
    return host::Refusal{percent_, [caption](host::MessageService &messages) { messages.NotZeroValue(caption); }};
}
