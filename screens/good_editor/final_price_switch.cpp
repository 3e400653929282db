#include "screens/good_editor/final_price_switch.h"

#include <QtCore/QEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

FinalPriceSwitch::FinalPriceSwitch(QAbstractButton *button, QLabel *label, QWidget *information, QObject *parent)
    : QObject(parent), button_(button), label_(label), information_(information)
{
    information_->setToolTip(QStringLiteral("به دلیل غیر فعال بودن تنظیمات عوارض و مالیات و یا تخفیف سطری ، امکان "
                                            "استفاده از این امکان وجود ندارد"));
    label_->installEventFilter(this);
    connect(button_, &QAbstractButton::clicked, this, [this](bool on) {
        if (on)
            emit TurnedOn();
    });
}

bool FinalPriceSwitch::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == label_ && event->type() == QEvent::MouseButtonRelease && button_->isEnabled())
        button_->click();
    return false;
}

void FinalPriceSwitch::SetVisible(bool visible)
{
    visible_ = visible;
    button_->setVisible(visible);
    label_->setVisible(visible);
    information_->setVisible(visible && !button_->isEnabled());
}

void FinalPriceSwitch::Show(bool on)
{
    loadedOn_ = on;
    button_->setChecked(on);
}

bool FinalPriceSwitch::IsOn() const
{
    return button_->isChecked();
}

void FinalPriceSwitch::SetBothExempt(bool exempt, bool isNew)
{
    const bool closed = exempt && (isNew || !loadedOn_);
    if (closed)
        button_->setChecked(false);
    button_->setEnabled(!closed);
    label_->setEnabled(!closed);
    information_->setVisible(visible_ && exempt);
}
