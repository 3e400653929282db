#include "screens/good_editor/suggestion_combo.h"

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
