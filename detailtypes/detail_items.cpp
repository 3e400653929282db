#include "detailtypes/detail_items.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>

namespace {

constexpr int LongestDefault = 50; // the column's width

} // namespace

DetailItems::DetailItems(QLineEdit &next, QListWidget &list, QComboBox &defaultValue, QObject *parent)
    : QObject(parent), next_(next), list_(list), default_(defaultValue)
{
    default_.setInsertPolicy(QComboBox::NoInsert);
}

QStringList DetailItems::Items() const
{
    QStringList items;
    for (int row = 0; row < list_.count(); ++row)
        items << list_.item(row)->text();
    return items;
}

void DetailItems::SetItems(const QStringList &items)
{
    list_.clear();
    list_.addItems(items);
    RebuildDefault();
}

void DetailItems::SetPickOnly(bool pickOnly)
{
    if (default_.isEditable() != pickOnly)
        return;
    const QString text = DefaultText();
    default_.setEditable(!pickOnly);
    if (!pickOnly) {
        default_.setCompleter(nullptr); // what is typed stays as it is typed
        default_.lineEdit()->setMaxLength(LongestDefault);
    }
    RebuildDefault(text);
}

int DetailItems::DefaultItem() const
{
    return default_.currentIndex();
}

void DetailItems::SetDefaultItem(int position)
{
    default_.setCurrentIndex(position < default_.count() ? position : -1);
}

QString DetailItems::DefaultText() const
{
    return default_.currentText();
}

void DetailItems::SetDefaultText(const QString &text)
{
    default_.setEditText(text);
}

DetailItems::Added DetailItems::Add()
{
    const QString text = next_.text();
    if (text.trimmed().isEmpty())
        return Added::Blank;
    if (Items().contains(text))
        return Added::Repeated;
    list_.addItem(text);
    list_.scrollToBottom();
    RebuildDefault();
    next_.clear();
    emit Changed();
    return Added::Yes;
}

void DetailItems::Move(int places)
{
    const int from = list_.currentRow();
    const int to = from + places;
    if (from < 0 || to < 0 || to >= list_.count())
        return;
    list_.insertItem(to, list_.takeItem(from));
    list_.setCurrentRow(to);
    RebuildDefault();
    emit Changed();
}

void DetailItems::Remove()
{
    const int row = list_.currentRow();
    if (row < 0)
        return;
    delete list_.takeItem(row);
    RebuildDefault();
    emit Changed();
}

void DetailItems::RebuildDefault()
{
    RebuildDefault(DefaultText());
}

void DetailItems::RebuildDefault(const QString &text)
{
    const QStringList items = Items();
    default_.clear();
    default_.addItems(items);
    default_.setCurrentIndex(static_cast<int>(items.indexOf(text)));
    if (default_.isEditable())
        default_.setEditText(text);
}
