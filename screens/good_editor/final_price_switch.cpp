#include "screens/good_editor/final_price_switch.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMouseEvent>
#include <QToolTip>

using namespace Qt::StringLiterals;

FinalPriceSwitch::FinalPriceSwitch(QAbstractButton *button, QLabel *label, QAbstractButton *information,
                                   QObject *parent)
    : QObject(parent), m_button(button), m_label(label), m_information(information)
{
    m_information->setToolTip(
        u"به دلیل غیر فعال بودن تنظیمات عوارض و مالیات و یا تخفیف سطری ، امکان استفاده از این امکان وجود ندارد"_s);
    m_label->installEventFilter(this);
    // Whoever works by keys or by touch has no pointer to rest on it.
    connect(m_information, &QAbstractButton::clicked, this, [this] {
        const QPoint below = m_information->mapToGlobal(m_information->rect().bottomLeft());
        QToolTip::showText(below, m_information->toolTip(), m_information);
    });
    connect(m_button, &QAbstractButton::clicked, this, [this](bool on) {
        if (on)
            emit TurnedOn();
    });
}

bool FinalPriceSwitch::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_label && event->type() == QEvent::MouseButtonRelease && m_button->isEnabled() &&
        static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton)
        m_button->click();
    return false;
}

void FinalPriceSwitch::SetVisible(bool visible)
{
    m_visible = visible;
    m_button->setVisible(visible);
    m_label->setVisible(visible);
    m_information->setVisible(visible && !m_button->isEnabled());
}

void FinalPriceSwitch::Show(bool on)
{
    m_loadedOn = on;
    m_button->setChecked(on);
}

bool FinalPriceSwitch::IsOn() const
{
    return m_button->isChecked();
}

void FinalPriceSwitch::SetBothExempt(bool exempt, bool isNew)
{
    const bool closed = exempt && (isNew || !m_loadedOn);
    if (closed)
        m_button->setChecked(false);
    m_button->setEnabled(!closed);
    m_label->setEnabled(!closed);
    m_information->setVisible(m_visible && exempt);
}
