#include "host/controls/display_edit.h"

#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QValidator>

namespace host {

/// Turns what comes in, from wherever, into what is shown.
class DigitsValidator : public QValidator
{
public:
    explicit DigitsValidator(DisplayEdit *edit) : QValidator(edit), m_edit(*edit) {}

    State validate(QString &input, int &) const override
    {
        input = m_edit.Shown(m_edit.Plain(input));
        return Acceptable;
    }

private:
    const DisplayEdit &m_edit;
};

DisplayEdit::DisplayEdit(QWidget *parent) : QLineEdit(parent)
{
    // Numbers read from left to right also on a right-to-left screen; they stand at its leading edge.
    setLayoutDirection(Qt::LeftToRight);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setValidator(new DigitsValidator(this));
    // A text that was turned into what is shown counts as set by the program.
    connect(this, &QLineEdit::textEdited, this, [this] { setModified(true); });
}

void DisplayEdit::setText(const QString &text)
{
    QLineEdit::setText(Shown(text));
}

QString DisplayEdit::Plain(const QString &shown) const
{
    return FoldDigits(shown);
}

QString DisplayEdit::Shown(const QString &plain) const
{
    return PersianDigits(plain);
}

QString DisplayEdit::DisplayText() const
{
    return QLineEdit::text();
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

void DisplayEdit::keyPressEvent(QKeyEvent *event)
{
    const QString chosen = selectedText();
    const bool copies = event->matches(QKeySequence::Copy) || event->matches(QKeySequence::Cut);
    // A digit that goes in as it will be shown can be taken back by Ctrl+Z.
    const QString shown = Shown(Plain(event->text()));
    if (copies || shown == event->text() || shown.isEmpty()) {
        QLineEdit::keyPressEvent(event);
    } else {
        QKeyEvent typed(event->type(), event->key(), event->modifiers(), shown, event->isAutoRepeat());
        QLineEdit::keyPressEvent(&typed);
        event->setAccepted(typed.isAccepted());
    }
    if (copies)
        CopyPlain(chosen);
}

void DisplayEdit::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(
        menu, &QMenu::triggered, this, [this, chosen = selectedText()] { CopyPlain(chosen); }, Qt::QueuedConnection);
    menu->popup(event->globalPos());
}

void DisplayEdit::CopyPlain(const QString &copied) const
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (!copied.isEmpty() && clipboard->text() == copied)
        clipboard->setText(Plain(copied));
}

QString PlainText(const QLineEdit &edit)
{
    const auto *display = qobject_cast<const DisplayEdit *>(&edit);
    return display ? display->text() : edit.text();
}

} // namespace host
