#include "host/controls/display_edit.h"

#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

namespace host {

DisplayEdit::DisplayEdit(QWidget *parent) : QLineEdit(parent)
{
    // Numbers read from left to right also on a right-to-left screen; they stand at its leading edge.
    setLayoutDirection(Qt::LeftToRight);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

QString DisplayEdit::DisplayText() const
{
    return PersianDigits(text());
}

void DisplayEdit::paintEvent(QPaintEvent *event)
{
    if (hasFocus() || text().isEmpty()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QPainter painter(this);
    QStyleOptionFrame option;
    initStyleOption(&option);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    const QRect inside = style()
                             ->subElementRect(QStyle::SE_LineEditContents, &option, this)
                             .marginsRemoved(textMargins())
                             .adjusted(2, 0, -2, 0);
    style()->drawItemText(&painter, inside, int(alignment() | Qt::AlignAbsolute), option.palette, isEnabled(),
                          DisplayText(), QPalette::Text);
}

void DisplayEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::ReadOnlyChange)
        theme::Repolish(this);
}

} // namespace host
