#include "screens/good_editor/suggestion_combo.h"

#include <QtCore/QSignalBlocker>

SuggestionCombo::SuggestionCombo(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
}

void SuggestionCombo::showPopup()
{
    const QString typed = currentText();
    const QStringList texts = source_ ? source_(typed) : QStringList();
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
