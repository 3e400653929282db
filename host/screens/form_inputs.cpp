#include "host/screens/form_inputs.h"

#include "host/controls/category_path.h"
#include "host/controls/display_edit.h"
#include "host/controls/entity_picker.h"
#include "host/controls/search_frame.h"
#include "host/controls/tags_panel.h"
#include "host/controls/toggle_switch.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabBar>

namespace host::inputs {
namespace {

/// An entry is kept by its data, which outlives a change of its caption; one without data by its text.
QVariant Chosen(const QComboBox &combo)
{
    const QVariant data = combo.currentData();
    return data.isValid() ? data : combo.currentText();
}

void Choose(QComboBox &combo, const QVariant &value)
{
    int entry = combo.findData(value);
    if (entry < 0 && value.typeId() == QMetaType::QString) // a code that is gone is no text
        entry = combo.findText(value.toString());
    if (entry >= 0)
        combo.setCurrentIndex(entry);
    else if (combo.isEditable())
        combo.setEditText(value.toString());
}

} // namespace

bool IsChoice(const QWidget *widget)
{
    return qobject_cast<const QCheckBox *>(widget) || qobject_cast<const QRadioButton *>(widget) ||
           qobject_cast<const ToggleSwitch *>(widget);
}

bool IsInner(const QWidget *widget, const QWidget *content)
{
    for (const QWidget *up = widget->parentWidget(); up && up != content; up = up->parentWidget())
        if (qobject_cast<const QComboBox *>(up) || qobject_cast<const EntityPicker *>(up) ||
            qobject_cast<const CategoryPath *>(up) || qobject_cast<const SearchFrame *>(up) ||
            qobject_cast<const QAbstractItemView *>(up))
            return true;
    return false;
}

bool TakesTyping(const QWidget *widget)
{
    if (const auto *edit = qobject_cast<const QLineEdit *>(widget))
        return !edit->isReadOnly();
    return !qobject_cast<const QTabBar *>(widget) && !qobject_cast<const QScrollArea *>(widget);
}

QVariant Value(const QWidget *input)
{
    if (const auto *edit = qobject_cast<const QLineEdit *>(input))
        return PlainText(*edit);
    if (const auto *combo = qobject_cast<const QComboBox *>(input))
        return Chosen(*combo);
    if (const auto *picker = qobject_cast<const EntityPicker *>(input))
        return picker->Code();
    if (const auto *path = qobject_cast<const CategoryPath *>(input))
        return path->Code();
    if (const auto *tags = qobject_cast<const TagsPanel *>(input))
        return tags->CodesText();
    if (IsChoice(input))
        return qobject_cast<const QAbstractButton *>(input)->isChecked();
    return {};
}

void SetValue(QWidget *input, const QVariant &value)
{
    if (auto *edit = qobject_cast<QLineEdit *>(input))
        edit->setText(value.toString());
    else if (auto *combo = qobject_cast<QComboBox *>(input))
        Choose(*combo, value);
    else if (auto *picker = qobject_cast<EntityPicker *>(input))
        picker->SetCode(value.toInt());
    else if (auto *path = qobject_cast<CategoryPath *>(input))
        path->SetCode(value.toInt());
    else if (auto *tags = qobject_cast<TagsPanel *>(input))
        tags->SetCodesText(value.toString());
    else if (IsChoice(input))
        qobject_cast<QAbstractButton *>(input)->setChecked(value.toBool());
}

} // namespace host::inputs
