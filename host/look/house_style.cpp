#include "host/look/house_style.h"

#include "host/look/theme.h"

#include <QPainter>
#include <QProgressBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTextLayout>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace host {
namespace {

struct Caption
{
    QString text;
    qsizetype key = -1; ///< the letter to underline
};

Caption WithoutMark(const QString &marked)
{
    Caption caption;
    for (qsizetype i = 0; i < marked.size(); ++i) {
        if (marked[i] == u'&' && i + 1 < marked.size()) {
            ++i;
            if (marked[i] != u'&' && caption.key < 0)
                caption.key = caption.text.size();
        }
        caption.text += marked[i];
    }
    return caption;
}

void Underline(QPainter &painter, const QRect &textRect, const Caption &caption)
{
    QTextLayout layout(caption.text, painter.font(), painter.device());
    QTextOption option;
    option.setTextDirection(painter.layoutDirection());
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(QWIDGETSIZE_MAX);
    layout.endLayout();
    // The line is laid out at the far end of its width; what counts is where the letter stands within the text.
    const double origin = line.naturalTextRect().left();
    const double from = line.cursorToX(static_cast<int>(caption.key)) - origin;
    const double to = line.cursorToX(static_cast<int>(caption.key) + 1) - origin;
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double y = textRect.top() + metrics.ascent() + metrics.underlinePos() + 1;
    painter.fillRect(QRect(qRound(textRect.left() + qMin(from, to)), qRound(y), qRound(qAbs(to - from)), 1),
                     painter.pen().color());
}

void DrawIndicator(QPainter &painter, const QStyleOption &option, bool circle)
{
    const QRectF box = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
    const bool enabled = option.state & QStyle::State_Enabled;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(enabled ? theme::InkSoft() : theme::Line(), 1));
    painter.setBrush(theme::Surface());
    const double radius = circle ? box.width() / 2 : 2;
    painter.drawRoundedRect(box, radius, radius);
    const QColor mark = enabled ? theme::Accent() : theme::InkSoft();
    const auto at = [&box](double x, double y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.setPen(QPen(mark, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (option.state & QStyle::State_NoChange) {
        painter.drawLine(at(0.25, 0.5), at(0.75, 0.5));
    } else if (option.state & QStyle::State_On) {
        if (circle) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(mark);
            painter.drawEllipse(box.center(), box.width() / 4, box.height() / 4);
        } else {
            painter.drawPolyline(QPolygonF({at(0.22, 0.52), at(0.43, 0.74), at(0.8, 0.26)}));
        }
    }
    painter.restore();
}

} // namespace

HouseStyle::HouseStyle() : QProxyStyle(QStyleFactory::create(u"Fusion"_s))
{}

void HouseStyle::drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool enabled,
                              const QString &text, QPalette::ColorRole role) const
{
    if (!(flags & Qt::TextShowMnemonic) || !text.contains(u'&')) {
        QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, role);
        return;
    }
    const Caption caption = WithoutMark(text);
    const int plain = flags & ~(Qt::TextShowMnemonic | Qt::TextHideMnemonic);
    QProxyStyle::drawItemText(painter, rect, plain, palette, enabled, caption.text, role);
    if (caption.key < 0 || (flags & Qt::TextHideMnemonic) || caption.text.contains(u'\n'))
        return;
    painter->save();
    if (role != QPalette::NoRole)
        painter->setPen(palette.color(role));
    Underline(*painter, painter->boundingRect(rect, plain, caption.text), caption);
    painter->restore();
}

/// The boxes and circles of the base style are outlined darker than their ground, which on a dark one is not seen.
void HouseStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    const bool circle = element == PE_IndicatorRadioButton;
    const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    if ((circle || box) && theme::Surface().lightnessF() < 0.5F)
        DrawIndicator(*painter, *option, circle);
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void HouseStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QProgressBar *>(widget))
        widget->setLocale(QLocale(QLocale::Persian, QLocale::Iran));
}

int HouseStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *returned) const
{
    // A wheel that turns over a closed chooser is on its way to something else.
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_ComboBox_AllowWheelScrolling)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

} // namespace host
