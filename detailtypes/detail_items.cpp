#include "detailtypes/detail_items.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

DetailItems::DetailItems(QLineEdit &next, QListWidget &list, QComboBox &defaultValue, QObject *parent)
    : QObject(parent), m_next(next), m_list(list), m_default(defaultValue)
{
    m_default.setInsertPolicy(QComboBox::NoInsert);
}

QStringList DetailItems::Items() const
{
    QStringList items;
    for (int row = 0; row < m_list.count(); ++row)
        items << m_list.item(row)->text();
    return items;
}

void DetailItems::SetItems(const QStringList &items)
{
    m_list.clear();
    m_list.addItems(items);
    RebuildDefault();
}

void DetailItems::SetPickOnly(bool pickOnly)
{
    if (m_default.isEditable() != pickOnly)
        return;
    const QString text = DefaultText();
    m_default.setEditable(!pickOnly);
    if (!pickOnly)
        m_default.setCompleter(nullptr); // what is typed stays as it is typed
    RebuildDefault(text);
}

int DetailItems::DefaultItem() const
{
    return m_default.currentIndex();
}

void DetailItems::SetDefaultItem(int position)
{
    m_default.setCurrentIndex(position < m_default.count() ? position : -1);
}

QString DetailItems::DefaultText() const
{
    return m_default.currentText();
}

void DetailItems::SetDefaultText(const QString &text)
{
    m_default.setEditText(text);
}

DetailItems::Added DetailItems::Add()
{
    const QString text = m_next.text();
    if (text.trimmed().isEmpty())
        return Added::Blank;
    if (Items().contains(text))
        return Added::Repeated;
    m_list.addItem(text);
    m_list.scrollToBottom();
    RebuildDefault();
    m_next.clear();
    emit Changed();
    return Added::Yes;
}

void DetailItems::Move(int places)
{
    const int from = m_list.currentRow();
    const int to = from + places;
    if (from < 0 || to < 0 || to >= m_list.count())
        return;
    m_list.insertItem(to, m_list.takeItem(from));
    m_list.setCurrentRow(to);
    RebuildDefault();
    emit Changed();
}

void DetailItems::Remove()
{
    const int row = m_list.currentRow();
    if (row < 0)
        return;
    delete m_list.takeItem(row);
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
    m_default.clear();
    m_default.addItems(items);
    m_default.setCurrentIndex(static_cast<int>(items.indexOf(text)));
    if (m_default.isEditable())
        m_default.setEditText(text);
}
