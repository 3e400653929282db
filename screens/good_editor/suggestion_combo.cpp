#include "screens/good_editor/suggestion_combo.h"

#include <QKeyEvent>
#include <QSignalBlocker>

SuggestionCombo::SuggestionCombo(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
}

void SuggestionCombo::showPopup()
{
    const QString typed = currentText();
    const QStringList texts = m_source ? m_source(typed) : QStringList();
    {
        const QSignalBlocker quiet(this);
        clear();
        addItems(texts);
        setCurrentIndex(-1);
        setEditText(typed);
    }
    if (!texts.isEmpty())
        QComboBox::showPopup();
}

/// The base steps through the list while it is closed, over what is typed; it holds what was offered the last time.
void SuggestionCombo::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Down:
        showPopup();
        break;
    case Qt::Key_Up:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        event->ignore();
        break;
    default:
        QComboBox::keyPressEvent(event);
    }
}
