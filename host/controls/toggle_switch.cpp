#include "host/controls/toggle_switch.h"

#include "host/look/theme.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace host {
namespace {

constexpr QSize track{36, 20};
constexpr int gap = 8;
constexpr int DarkLighter = 150; ///< percent, so that a deep colour is seen on a dark ground

} // namespace

ToggleSwitch::ToggleSwitch(QWidget *parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ToggleSwitch::sizeHint() const
{
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    const int beside = this->text().isEmpty() ? 0 : gap + text.width() + 2;
    return {track.width() + 4 + beside, qMax(track.height() + 6, text.height() + 2)};
}

QSize ToggleSwitch::minimumSizeHint() const
{
    return sizeHint();
}

void ToggleSwitch::SetStateCaptions(const QString &on, const QString &off)
{
    m_captionFollows = true;
    m_on = on;
    m_off = off;
    ShowState();
}

void ToggleSwitch::SetKnobColors(const QColor &on, const QColor &off)
{
    m_onKnob = on;
    m_offKnob = off;
    update();
}

void ToggleSwitch::ShowState()
{
    if (m_captionFollows)
        setText(QString(isChecked() ? m_on : m_off).replace(u"&"_s, u"&&"_s));
    update();
}

void ToggleSwitch::checkStateSet()
{
    QAbstractButton::checkStateSet();
    ShowState();
}

void ToggleSwitch::nextCheckState()
{
    QAbstractButton::nextCheckState();
    ShowState();
}

QColor ToggleSwitch::KnobColor() const
{
    const QColor &own = isChecked() ? m_onKnob : m_offKnob;
    if (own.isValid() && isEnabled())
        return theme::Surface().lightnessF() < 0.5F ? own.lighter(DarkLighter) : own;
    return isChecked() ? QColor(Qt::white) : theme::InkSoft();
}

void ToggleSwitch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect place =
        QStyle::visualRect(layoutDirection(), rect(), QRect(QPoint(2, (height() - track.height()) / 2), track));
    const QRectF body = QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor on = isEnabled() ? theme::Accent() : theme::Line();
    painter.setPen(QPen(isChecked() ? on : theme::InkSoft(), 1));
    // A coloured knob needs a quiet ground.
    const bool filled = isChecked() && !m_onKnob.isValid();
    painter.setBrush(filled ? on : (isEnabled() ? theme::Surface() : theme::Ground()));
    painter.drawRoundedRect(body, body.height() / 2, body.height() / 2);

    // "On" is at the trailing end: left on a right-to-left screen.
    const bool knobLeft = isChecked() == (layoutDirection() == Qt::RightToLeft);
    const double radius = body.height() / 2 - 3;
    const QPointF centre(knobLeft ? body.left() + radius + 3 : body.right() - radius - 3, body.center().y());
    painter.setPen(Qt::NoPen);
    painter.setBrush(KnobColor());
    painter.drawEllipse(centre, radius, radius);

    if (hasFocus()) {
        painter.setPen(QPen(theme::Accent(), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(body.adjusted(-2, -2, 2, 2), body.height() / 2 + 2, body.height() / 2 + 2);
    }
    if (!text().isEmpty()) {
        const QRect words =
            QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(track.width() + 2 + gap, 0, 0, 0));
        style()->drawItemText(&painter, words,
                              int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) | Qt::AlignVCenter |
                                  Qt::TextShowMnemonic,
                              palette(), isEnabled(), text(), QPalette::WindowText);
    }
}

void ToggleSwitch::changeEvent(QEvent *event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::FontChange)
        update();
}

} // namespace host
