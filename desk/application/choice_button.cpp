#include "desk/application/choice_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace desk {

namespace {

constexpr int Pad = 12;
constexpr int LineGap = 2;
constexpr int IconWidth = 24;

} // namespace

QSize ChoiceButton::sizeHint() const
{
    const int height = 2 * fontMetrics().height() + LineGap + 2 * Pad;
    return {QCommandLinkButton::sizeHint().width() + 2 * Pad, height};
}

void ChoiceButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = {};
    painter.drawControl(QStyle::CE_PushButton, option);

    // Laid out from the left, then turned round.
    const QRect inside = rect().adjusted(Pad, Pad, -Pad, -Pad);
    const auto turned = [&](const QRect &place) { return QStyle::visualRect(layoutDirection(), rect(), place); };
    icon().paint(&painter, turned({inside.left(), inside.top(), IconWidth, inside.height()}));
    QRect line = inside.adjusted(IconWidth + Pad, 0, 0, 0);
    line.setHeight(fontMetrics().height());
    const auto write = [&](const QString &text, int flags) {
        style()->drawItemText(&painter, turned(line),
                              int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) | flags, palette(),
                              isEnabled(), text, QPalette::ButtonText);
        line.translate(0, line.height() + LineGap);
    };
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    write(text(), int(Qt::AlignVCenter) | int(Qt::TextShowMnemonic));
    painter.setFont(font());
    write(description(), Qt::AlignVCenter);
}

} // namespace desk
