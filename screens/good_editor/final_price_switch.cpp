#include "screens/good_editor/final_price_switch.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolTip>

FinalPriceSwitch::FinalPriceSwitch(QAbstractButton *button, QLabel *label, QAbstractButton *information,
                                   QObject *parent)
    : QObject(parent), button_(button), label_(label), information_(information)
{
    information_->setToolTip(QStringLiteral("به دلیل غیر فعال بودن تنظیمات عوارض و مالیات و یا تخفیف سطری ، امکان "
                                            "استفاده از این امکان وجود ندارد"));
    label_->installEventFilter(this);
    // Whoever works by keys or by touch has no pointer to rest on it.
    connect(information_, &QAbstractButton::clicked, this, [this] {
        const QPoint below = information_->mapToGlobal(information_->rect().bottomLeft());
        QToolTip::showText(below, information_->toolTip(), information_);
    });
    connect(button_, &QAbstractButton::clicked, this, [this](bool on) {
        if (on)
            emit TurnedOn();
    });
}

bool FinalPriceSwitch::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == label_ && event->type() == QEvent::MouseButtonRelease && button_->isEnabled() &&
        static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton)
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
